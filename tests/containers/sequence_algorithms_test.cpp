// tests/containers/sequence_algorithms_test.cpp
//
// The cursor sequence and the algorithms written once on it, exercised on the array and the lists
// over a trivially copyable and a counted element type. Where the containers differ (the cursor
// past the end: an array stands at the length, a list wraps to -1; a list's ReAllocate only
// grows) the expectations say so.
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/containers.h"
#include "tests/support/tracked.h"
#include "zt/containers/array.h"
#include "zt/containers/dlist.h"
#include "zt/containers/dyn_array.h"
#include "zt/containers/dyn_parray.h"
#include "zt/containers/list.h"
#include "zt/containers/pdlist.h"
#include "zt/containers/xlist.h"

namespace zt::test {
namespace {

using Longs = std::vector<ZtLong>;

template <class T>
T ElementOf(const ZtDynArrayBase<T>&);

/// A grouped list with groups of two, so that the index changes with nearly every edit.
template <class T>
class GroupsOfTwo : public ZtXList<T> {
 public:
  GroupsOfTwo() : ZtXList<T>(0, 2) {}
};

template <class S>
class SequenceTest : public ::testing::Test {
 protected:
  using Seq = S;
  using E = decltype(ElementOf(std::declval<S>()));
  static constexpr bool kIsList = std::is_base_of_v<ZtList<E>, S>;
  void TearDown() override { EXPECT_EQ(Tracked::Live(), m_live) << "elements leaked or lost"; }
  static Seq Make(std::initializer_list<int> values) {
    Seq s;
    for (int v : values) s.Append(E(v));
    return s;
  }
  static std::vector<E> V(std::vector<int> values) { return {values.begin(), values.end()}; }
  /// An edit and the contents and cursor it must leave.
  struct Step {
    std::function<void(Seq&)> edit;
    std::vector<int> values;
    ZtLong cursor;
  };
  /// Runs the steps in order on s, checking the contents and the cursor after each.
  static void Steps(Seq& s, std::initializer_list<Step> steps) {
    for (const Step& step : steps) {
      step.edit(s);
      EXPECT_EQ(Values(s), V(step.values)) << "step " << &step - steps.begin();
      EXPECT_EQ(s.GetCur(), step.cursor) << "step " << &step - steps.begin();
    }
  }
  /// The cursor after stepping past the last element of a sequence of this length.
  static ZtLong End(ZtLong length) { return kIsList ? -1 : length; }
  long m_live = Tracked::Live();
};
using SequenceTypes = ::testing::Types<ZtDynArray<int>, ZtDynArray<Tracked>, ZtList<int>,
                                       ZtList<Tracked>, ZtDList<Tracked>, GroupsOfTwo<int>>;
TYPED_TEST_SUITE(SequenceTest, SequenceTypes);

TYPED_TEST(SequenceTest, NewSequenceStandsBeforeTheStart) {
  typename TestFixture::Seq s;
  EXPECT_EQ((Longs{s.GetLength(), s.GetCur(), s.GetMaxIndex()}), (Longs{0, -1, -1}));
  EXPECT_TRUE(s.IsBegin() && s.IsOut() && s.IsEmpty() && !s.IsEnd());
  s.MoveToFirst();
  EXPECT_TRUE(s.IsOut());
  EXPECT_EQ(s.GetCur(), this->End(0));
}

TYPED_TEST(SequenceTest, InsertionsAndDeletionsPlaceTheCursor) {
  auto s = this->Make({1, 2, 3, 4});
  this->Steps(s, {
                     {[](auto& x) { EXPECT_EQ(x.Append(5), 4); }, {1, 2, 3, 4, 5}, 4},
                     {[](auto& x) { x.InsertHead(0); }, {0, 1, 2, 3, 4, 5}, 0},
                     {[](auto& x) { x.Insert(3, 9); }, {0, 1, 2, 9, 3, 4, 5}, 3},
                     {[](auto& x) { x.DelHead(); }, {1, 2, 9, 3, 4, 5}, -1},
                     {[](auto& x) { x.DelTail(); }, {1, 2, 9, 3, 4}, 4},
                     {[](auto& x) { x.Del(2); }, {1, 2, 3, 4}, 1},
                     // Not stopped at the end.
                     {[](auto& x) { x.MoveToLast(), x.MoveToNext(); }, {1, 2, 3, 4}, this->End(4)},
                 });
  EXPECT_EQ(BackwardValues(s), Values(s));
}

TYPED_TEST(SequenceTest, SubscriptGrowsAndMovesTheCursorConstSubscriptDoesNot) {
  using E = typename TestFixture::E;
  auto s = this->Make({1, 2, 3});
  const auto& cs = s;
  EXPECT_EQ(cs[1], E(2));
  EXPECT_EQ(s.GetCur(), 2);
  s[7] = E(8);
  EXPECT_EQ(Both(s.GetLength(), s.GetCur()), Both(8, 7));
  EXPECT_TRUE(s.GetTo(-1) == nullptr && s.GetTo(8) == nullptr && *s.GetTo(7) == E(8));
}

TYPED_TEST(SequenceTest, MovePutsTheElementBeforeTheTargetIndex) {
  for (auto [from, to, values, cursor] : {std::tuple{0, 3, std::vector{2, 3, 1, 4}, 2},
                                          {3, 0, {4, 1, 2, 3}, 0},
                                          {1, 4, {1, 3, 4, 2}, 3}}) {
    auto s = this->Make({1, 2, 3, 4});
    EXPECT_TRUE(s.Move(from, to));
    EXPECT_EQ(Values(s), this->V(values));
    EXPECT_EQ(s.GetCur(), cursor);
  }
  auto s = this->Make({1, 2, 3, 4});
  s.MoveTo(1);
  constexpr ZtLong kMin = std::numeric_limits<ZtLong>::min();
  constexpr ZtLong kMax = std::numeric_limits<ZtLong>::max();
  for (auto [from, to] : {std::pair{2, 2},
                          {2, 3},
                          {-1, 2},
                          {0, 9},
                          {0, kMin},
                          {kMax, kMin},
                          {kMin, kMax},
                          {kMin, kMin + 1}}) {
    EXPECT_FALSE(s.Move(from, to));  // without overflow at the extremes
  }
  EXPECT_EQ(Values(s), this->V({1, 2, 3, 4}));
  EXPECT_EQ(s.GetCur(), 1);
}

TYPED_TEST(SequenceTest, ExchangeSetAllAndSizeChanges) {
  using E = typename TestFixture::E;
  auto s = this->Make({1, 2, 3});
  this->Steps(s, {{[](auto& x) { x.Exchange(0, 2); }, {3, 2, 1}, 0}});
  s.Exchange(1, 4);  // grows to cover index 4 first
  EXPECT_EQ(Both(s.GetLength(), s[4] == E(2)), Both(5, true));
  s.Exchange(-1, 0);  // ignored
  this->Steps(s, {{[](auto& x) { x.SetLength(2, true), x.SetAll(7); }, {7, 7}, this->End(2)}});
  s.IncreaseSize(3);
  EXPECT_EQ(Both(s.GetLength(), s[1] == E(7)), Both(5, true));
  s.DecreaseSize(2);
  EXPECT_EQ(s.GetLength(), this->kIsList ? 5 : 3);  // a list's ReAllocate only grows
  s.DecreaseSize(9);
  EXPECT_EQ(s.GetLength(), this->kIsList ? 5 : 0);
  // A length past 2^31 - 1 cannot be allocated.
  EXPECT_THROW(s.DecreaseSize(std::numeric_limits<ZtLong>::min()), std::bad_alloc);
  auto t = this->Make({1, 2, 3});
  t.ZtDynArrayBase<E>::Reset();  // the base body, deleting from the tail
  EXPECT_EQ(Both(t.GetLength(), t.GetCur()), Both(0, -1));
}

TYPED_TEST(SequenceTest, FindReturnsTheFirstHitAndFindAllPushesAscending) {
  using E = typename TestFixture::E;
  const auto s = this->Make({0, 5, 1, 5});
  const E x(5);
  EXPECT_EQ((Longs{s.Find(x, 0, -1), s.Find(x, 2, -1), s.Find(x, 2, 2), s.Find(x, 0, 99),
                   s.Find(x, 3, -7), s.Find(x, 4, -1), s.Find(x, -1, -1)}),
            (Longs{1, 3, -1, 1, 3, -1, -1}));  // clamped ranges
  ZtListQuene<ZtLong> hits;
  EXPECT_EQ(s.Find(x, hits, 0, -1), 2);
  EXPECT_EQ(Items(hits), (Longs{1, 3}));
  // Counts what the queue holds; -7 is an empty range here, not the end.
  EXPECT_EQ((Longs{s.Find(x, hits, 0, -7), s.Find(E(9), hits), s.Find(x, hits, 2, 99)}),
            (Longs{2, 2, 3}));
  ZtListQuene<ZtLong> bounded(1);
  EXPECT_EQ(s.Find(x, bounded), 1);  // the refused index is lost
  EXPECT_EQ(Items(bounded), (Longs{1}));
}

TYPED_TEST(SequenceTest, CursorSearchesAndDeletionByValue) {
  auto s = this->Make({5, 0, 5});
  this->Steps(s, {
                     {[](auto& x) { EXPECT_TRUE(x.FindTo(5, 1)); }, {5, 0, 5}, 2},
                     {[](auto& x) { EXPECT_FALSE(x.FindTo(7, 0)); }, {5, 0, 5}, this->End(3)},
                     {[](auto& x) { EXPECT_EQ(x.FindOrAppend(7), 3); }, {5, 0, 5, 7}, 3},
                     {[](auto& x) { EXPECT_EQ(x.FindOrAppend(7), 3); }, {5, 0, 5, 7}, 3},
                     {[](auto& x) { x.MoveTo(1), x.FindOrAppend(0); }, {5, 0, 5, 7}, 1},
                     {[](auto& x) { x.FindOrInsertHead(9); }, {9, 5, 0, 5, 7}, 0},
                     {[](auto& x) { x.FindOrInsertHead(9); }, {9, 5, 0, 5, 7}, 0},
                 });
  auto d = this->Make({5, 5, 1, 5});
  EXPECT_EQ((Longs{d.FindDel(5), d.FindDel(5)}), (Longs{3, 0}));
  EXPECT_EQ(Values(d), this->V({1}));
}

TYPED_TEST(SequenceTest, BinarySearchAndInsertionPoint) {
  using E = typename TestFixture::E;
  auto s = this->Make({1, 3, 5, 7});
  EXPECT_EQ((Longs{s.BFind(E(5)), s.BFind(E(0)), s.BFind(E(9)), s.BFind(E(4))}),
            (Longs{2, -1, -1, -1}));
  EXPECT_EQ(this->Make({}).BFind(E(1)), -1);
  for (auto [v, from, to, found, cursor] : {std::tuple{4, 0, -1, false, 2},
                                            {9, 0, -1, false, this->End(4)},
                                            {0, 0, -1, false, 0},
                                            {7, 0, -1, true, 3},
                                            {2, 0, -1, false, 1},
                                            {6, 0, -1, false, 3},
                                            {1, 0, -1, true, 0},
                                            // `from` above `to`: before `from`, or after `to`
                                            {4, 3, 1, false, 3},
                                            {9, 3, 1, false, 2}}) {
    EXPECT_EQ((Longs{s.BFindTo(E(v), from, to), s.GetCur()}), (Longs{found, cursor})) << v;
  }
  auto empty = this->Make({});
  EXPECT_FALSE(empty.BFindTo(E(1)));
  EXPECT_EQ(empty.GetCur(), this->End(0));
  EXPECT_FALSE(s.BFindTo(E(8), -5, 99));  // out-of-range ends are clamped
  EXPECT_EQ(s.GetCur(), this->End(4));
}

TYPED_TEST(SequenceTest, SortIntoKeepsOrderAndArrivalOfEquals) {
  auto s = this->Make({1, 3, 5});
  this->Steps(s, {
                     {[](auto& x) { EXPECT_TRUE(x.SortInto(4, false)); }, {1, 3, 4, 5}, 2},
                     {[](auto& x) { EXPECT_FALSE(x.SortInto(3, false)); }, {1, 3, 4, 5}, 1},
                     {[](auto& x) { EXPECT_TRUE(x.SortInto(3, true)); }, {1, 3, 3, 4, 5}, 2},
                 });
  auto one = this->Make({9});
  this->Steps(one, {{[](auto& x) { EXPECT_TRUE(x.SortInto(9, true)); }, {9, 9}, 1}});
}

TYPED_TEST(SequenceTest, ReverseSwapsThroughTheGrowingSubscriptAndSortOrders) {
  auto s = this->Make({1, 2, 3, 4, 5});
  this->Steps(
      s, {
             {[](auto& x) { x.Reverse(0, -1); }, {5, 4, 3, 2, 1}, 3},
             {[](auto& x) { x.Reverse(1, 3); }, {5, 2, 3, 4, 1}, 3},
             {[](auto& x) { x.MoveTo(0), x.Reverse(2, 2), x.Reverse(3, 1), x.Reverse(-2, 1); },
              {5, 2, 3, 4, 1},
              0},
             // A list's sorts end off the list.
             {[](auto& x) { x.MoveTo(1), x.Sort(false); }, {5, 4, 3, 2, 1}, this->kIsList ? -1 : 1},
         });
  s.Reverse(4, 5);  // extends to 6 elements, then swaps
  EXPECT_EQ(Both(s.GetLength(), s[5] == typename TestFixture::E(1)), Both(6, true));
}

TYPED_TEST(SequenceTest, SlicesReplaceTheTargetAndClampTheirRange) {
  const auto s = this->Make({1, 2, 3});
  auto out = this->Make({8, 8, 8, 8});
  this->Steps(out, {
                       {[&](auto& x) { s.Right(2, x); }, {2, 3}, this->End(2)},
                       {[&](auto& x) { s.Mid(1, 1, x); }, {2}, this->End(1)},
                       {[&](auto& x) { s.Left(0, x); }, {}, this->End(0)},
                       {[&](auto& x) { s.Left(9, x); }, {1, 2, 3}, this->End(3)},
                       {[&](auto& x) { s.Mid(-4, 7, x); }, {1, 2, 3}, this->End(3)},
                   });
  auto self = this->Make({1, 2, 3, 4});
  self.Right(3, self);
  self.Mid(1, 1, self);
  EXPECT_EQ(Values(self), this->V({3}));
}

TYPED_TEST(SequenceTest, CopiesAppendsAndComparisonsOfWholeSequences) {
  using E = typename TestFixture::E;
  auto a = this->Make({1, 2});
  const ZtArray<E> fixed(this->Make({4, 5}));
  this->Steps(a, {
                     {[this](auto& x) { x << this->Make({3}); }, {1, 2, 3}, this->End(3)},
                     {[](auto& x) { x << x; }, {1, 2, 3, 1, 2, 3}, this->End(6)},
                     {[](auto& x) { x.MoveTo(2), x.DeepCopy(x); }, {1, 2, 3, 1, 2, 3}, 2},
                     {[&](auto& x) { x.DeepCopy(fixed); }, {4, 5}, this->End(2)},
                     {[&](auto& x) { x << fixed; }, {4, 5, 4, 5}, this->End(4)},
                 });
  // Equality compares the elements, the orderings only the lengths.
  const auto m = [this](std::initializer_list<int> v) { return this->Make(v); };
  EXPECT_TRUE(m({1, 2}) == m({1, 2}) && m({1, 2}) != m({1, 3}) && m({}) == m({}));
  EXPECT_FALSE(m({1}) == m({1, 2}) || m({1, 2}) < m({9, 9}) || m({1, 2}) > m({9, 9}));
  EXPECT_TRUE(m({9}) < m({1, 2}));
}

/// Counts the calls that inherited bodies make to slots a client class overrides.
template <class Base>
struct CountsSlots : Base {
  void MoveToFirst() override { ++first, Base::MoveToFirst(); }
  void MoveToPre() override { ++pre, Base::MoveToPre(); }
  void DelCur() override { ++del, Base::DelCur(); }
  int first = 0, pre = 0, del = 0;
};
struct CountsReleases : ZtDynPArray<Tracked> {
  void ReleaseCur() override { ++released, ZtDynPArray<Tracked>::ReleaseCur(); }
  int released = 0;
};

TEST(Sequence, InheritedBodiesCallTheSlotsAClientOverrides) {
  CountsSlots<ZtDynArray<int>> array;
  array.InsertHead(1);  // MoveToFirst, then InsertCur
  CountsSlots<ZtDList<int>> list;
  for (int i = 0; i < 100; ++i) list.Append(i);
  list.MoveTo(90);
  list.pre = 0;
  list.MoveTo(1);  // steps back one element at a time
  CountsSlots<ZtPDList<Tracked>> owning;
  owning.Append(new Tracked(1));
  delete owning.TakeOffHead();  // removes the emptied element through DelCur
  CountsReleases releases;
  releases << new Tracked(1) << nullptr;
  releases.ReleaseAll();  // ReleaseCur on every slot
  EXPECT_EQ((std::vector<int>{array.first, list.pre, owning.del, releases.released}),
            (std::vector<int>{1, 89, 1, 2}));
}

}  // namespace
}  // namespace zt::test
