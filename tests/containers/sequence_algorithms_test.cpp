// tests/containers/sequence_algorithms_test.cpp
//
// The cursor sequence and the algorithms written once on it, exercised on the array and the lists
// over a trivially copyable and a counted element type. Where the containers differ (the cursor
// past the end: an array stands at the length, a list wraps to -1; a list's ReAllocate only
// grows) the expectations say so.
#include <gtest/gtest.h>

#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/containers.h"
#include "tests/support/tracked.h"
#include "zt/containers/array.h"
#include "zt/containers/dlist.h"
#include "zt/containers/dyn_array.h"
#include "zt/containers/list.h"
#include "zt/containers/xlist.h"

namespace zt::test {
namespace {

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
  static std::vector<E> V(std::initializer_list<int> values) {
    return {values.begin(), values.end()};
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
  EXPECT_EQ(s.GetLength(), 0);
  EXPECT_EQ(s.GetCur(), -1);
  EXPECT_EQ(s.GetMaxIndex(), -1);
  EXPECT_TRUE(s.IsBegin() && s.IsOut() && s.IsEmpty());
  EXPECT_FALSE(s.IsEnd());
  s.MoveToFirst();
  EXPECT_TRUE(s.IsOut());
  EXPECT_EQ(s.GetCur(), this->End(0));
}

TYPED_TEST(SequenceTest, InsertionsAndDeletionsPlaceTheCursor) {
  using E = typename TestFixture::E;
  auto s = this->Make({1, 2, 3, 4});
  EXPECT_EQ(s.Append(E(5)), 4);
  EXPECT_EQ(s.GetCur(), 4);
  s.InsertHead(E(0));
  EXPECT_EQ(s.GetCur(), 0);
  s.Insert(3, E(9));
  EXPECT_EQ(Values(s), this->V({0, 1, 2, 9, 3, 4, 5}));
  EXPECT_EQ(s.GetCur(), 3);
  s.DelHead();
  EXPECT_EQ(s.GetCur(), -1);
  s.DelTail();
  EXPECT_EQ(s.GetCur(), 4);
  s.Del(2);
  EXPECT_EQ(Values(s), this->V({1, 2, 3, 4}));
  EXPECT_EQ(BackwardValues(s), Values(s));
  EXPECT_EQ(s.GetCur(), 1);
  s.MoveToLast();
  s.MoveToNext();
  EXPECT_EQ(s.GetCur(), this->End(4));  // not stopped at the end
}

TYPED_TEST(SequenceTest, SubscriptGrowsAndMovesTheCursorConstSubscriptDoesNot) {
  using E = typename TestFixture::E;
  auto s = this->Make({1, 2, 3});
  const auto& cs = s;
  EXPECT_EQ(cs[1], E(2));
  EXPECT_EQ(s.GetCur(), 2);
  s[7] = E(8);
  EXPECT_EQ(s.GetLength(), 8);
  EXPECT_EQ(s.GetCur(), 7);
  EXPECT_EQ(s.GetTo(-1), nullptr);
  EXPECT_EQ(s.GetTo(8), nullptr);
  EXPECT_EQ(*s.GetTo(7), E(8));
}

TYPED_TEST(SequenceTest, MovePutsTheElementBeforeTheTargetIndex) {
  using E = typename TestFixture::E;
  struct Case {
    ZtLong from, to;
    std::vector<int> result;
    ZtLong cursor;
  };
  for (const Case& c :
       {Case{0, 3, {2, 3, 1, 4}, 2}, Case{3, 0, {4, 1, 2, 3}, 0}, Case{1, 4, {1, 3, 4, 2}, 3}}) {
    auto s = this->Make({1, 2, 3, 4});
    EXPECT_TRUE(s.Move(c.from, c.to));
    EXPECT_EQ(Values(s), std::vector<E>(c.result.begin(), c.result.end()));
    EXPECT_EQ(s.GetCur(), c.cursor);
  }
  auto s = this->Make({1, 2, 3, 4});
  s.MoveTo(1);
  for (auto [from, to] : {std::pair{2, 2}, {2, 3}, {-1, 2}, {0, 9}}) EXPECT_FALSE(s.Move(from, to));
  EXPECT_EQ(Values(s), this->V({1, 2, 3, 4}));
  EXPECT_EQ(s.GetCur(), 1);
}

TYPED_TEST(SequenceTest, ExchangeSetAllAndSizeChanges) {
  using E = typename TestFixture::E;
  auto s = this->Make({1, 2, 3});
  s.Exchange(0, 2);
  EXPECT_EQ(Values(s), this->V({3, 2, 1}));
  EXPECT_EQ(s.GetCur(), 0);
  s.Exchange(1, 4);  // grows to cover index 4 first
  EXPECT_EQ(s.GetLength(), 5);
  EXPECT_EQ(s[4], E(2));
  s.Exchange(-1, 0);  // ignored
  s.SetLength(2, true);
  s.SetAll(E(7));
  EXPECT_EQ(Values(s), this->V({7, 7}));
  EXPECT_EQ(s.GetCur(), this->End(2));
  s.IncreaseSize(3);
  EXPECT_EQ(s.GetLength(), 5);
  EXPECT_EQ(s[1], E(7));
  s.DecreaseSize(2);
  EXPECT_EQ(s.GetLength(), this->kIsList ? 5 : 3);
  s.DecreaseSize(9);
  EXPECT_EQ(s.GetLength(), this->kIsList ? 5 : 0);
  auto t = this->Make({1, 2, 3});
  t.ZtDynArrayBase<E>::Reset();  // the base body, deleting from the tail
  EXPECT_EQ(t.GetLength(), 0);
  EXPECT_EQ(t.GetCur(), -1);
}

TYPED_TEST(SequenceTest, FindClampsTheRangeAndReturnsTheFirstHit) {
  using E = typename TestFixture::E;
  const auto s = this->Make({0, 5, 1, 5});
  const E x(5);
  EXPECT_EQ(s.Find(x, 0, -1), 1);
  EXPECT_EQ(s.Find(x, 2, -1), 3);
  EXPECT_EQ(s.Find(x, 2, 2), -1);
  EXPECT_EQ(s.Find(x, 0, 99), 1);
  EXPECT_EQ(s.Find(x, 3, -7), 3);
  EXPECT_EQ(s.Find(x, 4, -1), -1);
  EXPECT_EQ(s.Find(x, -1, -1), -1);
}

TYPED_TEST(SequenceTest, FindAllPushesAscendingAndCountsWhatTheQueueHolds) {
  using E = typename TestFixture::E;
  const auto s = this->Make({0, 5, 1, 5});
  ZtListQuene<ZtLong> hits;
  EXPECT_EQ(s.Find(E(5), hits, 0, -1), 2);
  EXPECT_EQ(Items(hits), (std::vector<ZtLong>{1, 3}));
  EXPECT_EQ(s.Find(E(5), hits, 0, -7), 2);  // -7 is an empty range, not the end
  EXPECT_EQ(s.Find(E(9), hits), 2);
  EXPECT_EQ(s.Find(E(5), hits, 2, 99), 3);
  ZtListQuene<ZtLong> bounded(1);
  EXPECT_EQ(s.Find(E(5), bounded), 1);  // the refused index is lost
  EXPECT_EQ(Items(bounded), (std::vector<ZtLong>{1}));
}

TYPED_TEST(SequenceTest, CursorSearchesAndDeletionByValue) {
  using E = typename TestFixture::E;
  auto s = this->Make({5, 0, 5});
  EXPECT_TRUE(s.FindTo(E(5), 1));
  EXPECT_EQ(s.GetCur(), 2);
  EXPECT_FALSE(s.FindTo(E(7), 0));
  EXPECT_EQ(s.GetCur(), this->End(3));
  EXPECT_EQ(s.FindOrAppend(E(7)), 3);
  EXPECT_EQ(s.FindOrAppend(E(7)), 3);
  s.MoveTo(1);
  EXPECT_EQ(s.FindOrAppend(E(0)), 1);
  EXPECT_EQ(s.GetCur(), 1);
  s.FindOrInsertHead(E(9));
  s.FindOrInsertHead(E(9));
  EXPECT_EQ(Values(s), this->V({9, 5, 0, 5, 7}));
  EXPECT_EQ(s.GetCur(), 0);
  auto d = this->Make({5, 5, 1, 5});
  EXPECT_EQ(d.FindDel(E(5)), 3);
  EXPECT_EQ(Values(d), this->V({1}));
  EXPECT_EQ(d.FindDel(E(5)), 0);
}

TYPED_TEST(SequenceTest, BinarySearchAndInsertionPoint) {
  using E = typename TestFixture::E;
  auto s = this->Make({1, 3, 5, 7});
  EXPECT_EQ(s.BFind(E(5)), 2);
  EXPECT_EQ(s.BFind(E(0)), -1);
  EXPECT_EQ(s.BFind(E(9)), -1);
  EXPECT_EQ(s.BFind(E(4)), -1);
  EXPECT_EQ(this->Make({}).BFind(E(1)), -1);
  struct Case {
    int v;
    bool found;
    ZtLong cursor;
  };
  for (const Case& c : {Case{4, false, 2}, Case{9, false, this->End(4)}, Case{0, false, 0},
                        Case{7, true, 3}, Case{2, false, 1}, Case{6, false, 3}, Case{1, true, 0}}) {
    EXPECT_EQ(s.BFindTo(E(c.v)), c.found) << c.v;
    EXPECT_EQ(s.GetCur(), c.cursor) << c.v;
  }
  auto empty = this->Make({});
  EXPECT_FALSE(empty.BFindTo(E(1)));
  EXPECT_EQ(empty.GetCur(), this->End(0));
  EXPECT_FALSE(s.BFindTo(E(8), -5, 99));  // out-of-range ends are clamped
  EXPECT_EQ(s.GetCur(), this->End(4));
}

TYPED_TEST(SequenceTest, SortIntoKeepsOrderAndArrivalOfEquals) {
  using E = typename TestFixture::E;
  auto s = this->Make({1, 3, 5});
  EXPECT_TRUE(s.SortInto(E(4), false));
  EXPECT_EQ(Values(s), this->V({1, 3, 4, 5}));
  EXPECT_EQ(s.GetCur(), 2);
  EXPECT_FALSE(s.SortInto(E(3), false));
  EXPECT_EQ(s.GetCur(), 1);
  EXPECT_TRUE(s.SortInto(E(3), true));
  EXPECT_EQ(Values(s), this->V({1, 3, 3, 4, 5}));
  EXPECT_EQ(s.GetCur(), 2);
  auto one = this->Make({9});
  EXPECT_TRUE(one.SortInto(E(9), true));
  EXPECT_EQ(Values(one), this->V({9, 9}));
  EXPECT_EQ(one.GetCur(), 1);
}

TYPED_TEST(SequenceTest, ReverseSwapsThroughTheGrowingSubscriptAndSortOrders) {
  using E = typename TestFixture::E;
  auto s = this->Make({1, 2, 3, 4, 5});
  s.Reverse(0, -1);
  EXPECT_EQ(Values(s), this->V({5, 4, 3, 2, 1}));
  EXPECT_EQ(s.GetCur(), 3);
  s.Reverse(1, 3);
  EXPECT_EQ(Values(s), this->V({5, 2, 3, 4, 1}));
  EXPECT_EQ(s.GetCur(), 3);
  s.MoveTo(0);
  s.Reverse(2, 2);
  s.Reverse(3, 1);
  s.Reverse(-2, 1);
  EXPECT_EQ(Values(s), this->V({5, 2, 3, 4, 1}));
  EXPECT_EQ(s.GetCur(), 0);
  s.MoveTo(1);
  s.Sort(false);
  EXPECT_EQ(Values(s), this->V({5, 4, 3, 2, 1}));
  EXPECT_EQ(s.GetCur(), this->kIsList ? -1 : 1);  // a list's sorts end off the list
  s.Reverse(4, 5);                                // extends to 6 elements, then swaps
  EXPECT_EQ(s.GetLength(), 6);
  EXPECT_EQ(s[5], E(1));
}

TYPED_TEST(SequenceTest, SlicesReplaceTheTargetAndClampTheirRange) {
  const auto s = this->Make({1, 2, 3});
  auto out = this->Make({8, 8, 8, 8});
  s.Right(2, out);
  EXPECT_EQ(Values(out), this->V({2, 3}));
  EXPECT_TRUE(out.IsOut());
  s.Mid(1, 1, out);
  EXPECT_EQ(Values(out), this->V({2}));
  s.Left(0, out);
  EXPECT_TRUE(out.IsEmpty());
  s.Left(9, out);
  EXPECT_EQ(Values(out), this->V({1, 2, 3}));
  s.Mid(-4, 7, out);
  EXPECT_EQ(Values(out), this->V({1, 2, 3}));
  auto self = this->Make({1, 2, 3, 4});
  self.Right(3, self);
  self.Mid(1, 1, self);
  EXPECT_EQ(Values(self), this->V({3}));
}

TYPED_TEST(SequenceTest, CopiesAndAppendsOfWholeSequences) {
  using E = typename TestFixture::E;
  auto a = this->Make({1, 2});
  a << this->Make({3});
  EXPECT_EQ(Values(a), this->V({1, 2, 3}));
  EXPECT_TRUE(a.IsOut());
  a << a;
  EXPECT_EQ(Values(a), this->V({1, 2, 3, 1, 2, 3}));
  a.MoveTo(2);
  a.DeepCopy(a);
  EXPECT_EQ(Values(a), this->V({1, 2, 3, 1, 2, 3}));
  EXPECT_EQ(a.GetCur(), 2);
  ZtArray<E> fixed(this->Make({4, 5}));
  a.DeepCopy(fixed);
  EXPECT_EQ(Values(a), this->V({4, 5}));
  EXPECT_EQ(a.GetCur(), this->End(2));
  a << fixed;
  EXPECT_EQ(Values(a), this->V({4, 5, 4, 5}));
}

TYPED_TEST(SequenceTest, EqualityComparesElementsOrderingComparesLengths) {
  EXPECT_TRUE(this->Make({1, 2}) == this->Make({1, 2}));
  EXPECT_TRUE(this->Make({1, 2}) != this->Make({1, 3}));
  EXPECT_FALSE(this->Make({1}) == this->Make({1, 2}));
  EXPECT_TRUE(this->Make({}) == this->Make({}));
  EXPECT_TRUE(this->Make({9}) < this->Make({1, 2}));
  EXPECT_FALSE(this->Make({1, 2}) < this->Make({9, 9}));
  EXPECT_FALSE(this->Make({1, 2}) > this->Make({9, 9}));
}

}  // namespace
}  // namespace zt::test
