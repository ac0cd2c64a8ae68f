// tests/containers/list_test.cpp
//
// ZtList, ZtDList and ZtXList through one set of typed tests: the wrapping cursor, positional
// insertion, splicing, reversal, rotation, the insertion sorts, harmless out-of-contract calls and
// all-or-nothing insertion. After the edits the back links mirror the next links and the grouped
// list's index holds exactly the nodes a walk from the head reaches. Then the grouped list alone.
#include <gtest/gtest.h>

#include <functional>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/containers.h"
#include "tests/support/fault_injection.h"
#include "tests/support/keyed.h"
#include "zt/containers/dlist.h"
#include "zt/containers/list.h"
#include "zt/containers/xlist.h"

namespace zt::test {
namespace {

using Ints = std::vector<int>;
using Longs = std::vector<ZtLong>;

/// The contents and the cursor, compared in one check.
std::pair<Ints, long long> At(const ZtDynArrayBase<int>& l) { return {Values(l), l.GetCur()}; }
std::pair<Ints, long long> At(Ints values, ZtLong cursor) { return {std::move(values), cursor}; }
using Probe = IndexProbe<ZtXList<int>>;

/// A grouped list with groups of two, so that the index changes with nearly every edit.
class Grouped : public Probe {
 public:
  Grouped() : Probe(0, 2) {}
};

template <class L>
class ListTest : public ::testing::Test {
 protected:
  static constexpr bool kGrouped = std::is_same_v<L, Grouped>;
  static constexpr bool kDoubly = std::is_base_of_v<ZtDList<int>, L>;
  static L Make(std::initializer_list<int> values) {
    L l;
    return Fill(l, values);
  }
  /// The back links and the grouped list's index agree with a walk from the head.
  static void Check(L& l) {
    EXPECT_EQ(BackwardValues(l), Values(l));
    if constexpr (kGrouped) ExpectIndexExact(l);
  }
  /// Where a rebuild of the index leaves the cursor on a grouped list: the last group start.
  static ZtLong Rebuilt(ZtLong cursor, ZtLong length) {
    return kGrouped ? (length - 1) / 2 * 2 : cursor;
  }
};
using ListTypes = ::testing::Types<ZtList<int>, ZtDList<int>, Grouped>;
TYPED_TEST_SUITE(ListTest, ListTypes);

TYPED_TEST(ListTest, CursorWrapsThroughTheSentinel) {
  TypeParam empty;
  EXPECT_TRUE(empty.GetFirst() == nullptr && empty.GetLast() == nullptr);
  auto* sentinel = empty.GetCurPos();
  empty.MoveToFirst();
  empty.MoveToPre();
  EXPECT_EQ(empty.GetCurPos(), sentinel);
  TypeParam l;
  for (int i = 0; i < 100; ++i) l.Append(i);
  l.MoveTo(-1);
  l.MoveToPre();
  EXPECT_EQ(Both(l.GetCur(), l.GetCurData()), Both(99, 99));
  l.MoveToNext();
  EXPECT_EQ(l.GetCur(), -1);
  l.MoveToNext();
  EXPECT_EQ(l.GetCurData(), 0);
  l.MoveToPre();
  l.MoveToPre();
  const int* at30 = l.GetTo(30);  // reads without moving
  EXPECT_EQ(l.GetCur(), 99);
  l.MoveTo(1);
  EXPECT_EQ(&l.GetAt(30), at30);
  l.MoveTo(100);  // a scratch value: the sentinel is never handed out
  EXPECT_EQ(Both(l.GetCur(), l.GetCurData()), Both(-1, 0));
  l.SetCurData(9);
  l.DelCur();  // ignored on the sentinel
  EXPECT_EQ(Both(l.GetLength(), l.GetAt(105)), Both(100, 0));
  EXPECT_EQ(*l.GetPre(l.GetLast()), 98);
  EXPECT_EQ(l.GetPre(l.GetFirst()), nullptr);
  this->Check(l);
}

TYPED_TEST(ListTest, InsertionPlacesAndDeletionStepsBack) {
  auto l = this->Make({1, 2});
  l.MoveTo(-1);
  l.InsertCur(3);  // appends from -1
  l.MoveTo(1);
  l.InsertCur(4);
  EXPECT_EQ(At(l), At({1, 4, 2, 3}, 1));
  l.Insert(9, 5);  // past the end: becomes the first element
  l.Insert(5, 6);
  l.DelTail();
  EXPECT_EQ(l.GetCur(), 4);
  l.Append(7);  // the new tail follows the old one
  EXPECT_EQ(Values(l), (Ints{5, 1, 4, 2, 3, 7}));
  l.MoveTo(2);
  l.DecreaseSize(3);  // a list's ReAllocate only grows
  l.IncreaseSize(1);
  EXPECT_EQ(Both(l.GetLength(), l.GetCur()), Both(7, 2));
  this->Check(l);
  l.SetLength(2, false);
  EXPECT_EQ(Values(l), (Ints{5, 1}));
  this->Check(l);
}

TYPED_TEST(ListTest, ConbineAndSplitMoveNodesNotValues) {
  auto a = this->Make({1});
  auto b = this->Make({7, 8, 9});
  const int* moved = b.GetTo(1);
  a.MoveTo(0);
  EXPECT_EQ(a.Conbine(b, 1), 3);
  EXPECT_EQ(At(a), At({1, 8, 9}, this->kGrouped ? 2 : 0));  // grouped: the last new group start
  EXPECT_EQ(a.GetTo(1), moved);
  EXPECT_EQ(At(b), At({7}, 0));
  EXPECT_EQ((Longs{a.Conbine(b, 1), a.Conbine(a, 0)}), (Longs{3, 3}));  // past other's end, itself
  this->Check(a);
  a.SplitAt(1, b);
  EXPECT_EQ(std::make_pair(Values(a), Values(b)), std::make_pair(Ints{1}, Ints{7, 8, 9}));
  b.Append(10);  // the spliced tail is b's tail
  this->Check(a);
  this->Check(b);
  b.MoveTo(-1);
  b.SplitAtCur(a);
  EXPECT_EQ(b.GetLength(), 4);
  if constexpr (std::is_same_v<TypeParam, ZtList<int>>) {
    std::vector<ZtListNode<int>*> chain;
    for (auto* n = b.GetCurPos()->next; chain.size() < 4; n = n->next) chain.push_back(n);
    b.Detach();
    EXPECT_TRUE(b.IsEmpty());
    for (ZtListNode<int>* n : chain) delete n;  // the detached chain is the caller's
  }
}

TYPED_TEST(ListTest, ReverseKeepsTheCursorOnItsNodeAndRotateLandsOnZero) {
  auto l = this->Make({1, 2, 3, 4, 5});
  l.MoveTo(1);
  l.ReverseList();
  EXPECT_EQ(At(l), At({5, 4, 3, 2, 1}, this->Rebuilt(3, 5)));
  this->Check(l);
  l.Rotate(3, 0);
  EXPECT_EQ(At(l), At({2, 1, 5, 4, 3}, this->Rebuilt(0, 5)));
  this->Check(l);
  l.Rotate(0, 1);
  EXPECT_EQ(Values(l), (Ints{3, 2, 1, 5, 4}));
  l.MoveTo(2);
  for (auto [a, b] : {std::pair{1, 1}, {-1, 2}, {0, 5}, {7, 2}}) l.Rotate(a, b);
  EXPECT_EQ(At(l), At({3, 2, 1, 5, 4}, this->Rebuilt(2, 5)));  // grouped: rebuilt when refused
  TypeParam empty;
  empty.Rotate(0, 1);
  empty.ReverseList();
  EXPECT_EQ(At(empty), At({}, -1));
}

TYPED_TEST(ListTest, InsertionSortsAreStable) {
  ZtList<Keyed> singly;
  ZtDList<Keyed> doubly;
  ZtList<Keyed>& l = this->kDoubly ? doubly : singly;
  for (int key : {2, 1, 2, 0, 5, 1}) l.Append(Keyed{key, l.GetLength()});
  g_keyComparisons = 0;
  l.Sort(CountingByKey);
  EXPECT_EQ(Tags(l), (Ints{3, 1, 5, 0, 2, 4}));
  // The forward sort scans from the head; the backward sort meets a mover's first blocker twice.
  EXPECT_EQ(Both(g_keyComparisons, l.GetCur()), Both(this->kDoubly ? 13 : 11, -1));
  g_keyComparisons = 0;
  l.Sort(CountingByKey);  // already sorted
  EXPECT_EQ(g_keyComparisons, this->kDoubly ? 5 : 6 * 5 / 2);
  l.Sort(false);
  EXPECT_EQ(Tags(l), (Ints{4, 0, 2, 1, 5, 3}));
}

TYPED_TEST(ListTest, FailedInsertionsLeaveTheListUnchanged) {
  auto l = this->Make({1, 2, 3, 4});
  l.MoveTo(2);
  const auto state = [](TypeParam& x) {
    return std::make_tuple(x.GetCur(), x.GetCurPos(), Values(x), BackwardValues(x));
  };
  const auto strong = [&](auto op) { ExpectStrongGuarantee(l, op, state); };
  strong([](auto& x) { x.InsertCur(9); });
  strong([](auto& x) { x.Insert(2, 9); });
  strong([](auto& x) { x.Append(9); });
  strong([](auto& x) { x.SetLength(9, true); });
  strong([](auto& x) { x[12] = 5; });
}

TEST(List, SplicesRefuseTheOtherKindOfList) {
  ZtList<int> single;
  ZtDList<int> doubly;
  ZtDList<int> other;
  ZtList<int>& asSingle = Fill(doubly, {1});
  Fill(single, {5});
  EXPECT_EQ((Longs{asSingle.Conbine(single, 0), single.Conbine(doubly, 0)}), (Longs{1, 1}));
  ZtList<int>& otherAsList = Fill(other, {2});  // doubly linked behind a ZtList<int>&: accepted
  EXPECT_EQ(doubly.Conbine(otherAsList, 0), 2);
  EXPECT_EQ(BackwardValues(doubly), (Ints{1, 2}));
}

TEST(XList, EveryChangeKeepsTheIndexExact) {
  using Step = std::pair<const char*, std::function<void(Probe&, Probe&)>>;
  const std::vector<Step> steps = {
      {"append",
       [](Probe& l, Probe&) {
         Fill(l, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
       }},
      {"insert head", [](Probe& l, Probe&) { l.InsertHead(-1); }},
      {"insert middle", [](Probe& l, Probe&) { l.Insert(5, -2); }},
      {"insert cur", [](Probe& l, Probe&) { l.MoveToLast(), l.InsertCur(-3); }},
      {"delete head", [](Probe& l, Probe&) { l.DelHead(); }},
      {"delete middle", [](Probe& l, Probe&) { l.Del(4); }},
      {"delete tail", [](Probe& l, Probe&) { l.DelTail(); }},
      {"conbine",
       [](Probe& l, Probe& o) {
         l.Conbine(Fill(o, {7, 7, 7, 7, 7, 7, 7}), 2);
       }},
      {"split", [](Probe& l, Probe& o) { l.SplitAt(8, o); }},
      {"reverse", [](Probe& l, Probe&) { l.ReverseList(); }},
      {"rotate", [](Probe& l, Probe&) { l.Rotate(6, 1); }},
      {"sort", [](Probe& l, Probe&) { l.Sort(true); }},
      {"shrink and grow", [](Probe& l, Probe&) { l.SetLength(5, true), l.IncreaseSize(4); }},
      {"assign", [](Probe& l, Probe& o) { l = o; }},
      {"reset", [](Probe& l, Probe&) { l.Reset(), l.Append(1); }},
  };
  for (ZtLong size : {1, 3, 25}) {
    Probe l(0, size, 0);
    Probe other(0, size == 3 ? 2 : 3);
    for (const Step& step : steps) {
      SCOPED_TRACE(testing::Message() << step.first << ", groups of " << size);
      step.second(l, other);
      ExpectIndexExact(l);
      ExpectIndexExact(other);
      Probe copy(l);
      ExpectIndexExact(copy);
    }
  }
  Probe empty(0, 0);  // group size taken as 1
  EXPECT_EQ(empty.GroupSize(), 1);
}

TEST(XList, GrowingTheIndexFailsBeforeTheListChanges) {
  Probe l(6, 3, 0);  // no spare index entries: opening a group allocates
  l.MoveTo(2);
  auto state = [](Probe& x) { return std::make_tuple(x.GetCur(), Values(x), x.Index()); };
  Probe o(5);
  for (const auto& op : {std::function<void(Probe&)>([](auto& x) { x.InsertCur(9); }),
                         std::function<void(Probe&)>([&o](auto& x) { x.Conbine(o, 1); })}) {
    ExpectStrongGuarantee(l, op, state);
    ExpectIndexExact(l);
  }
}

}  // namespace
}  // namespace zt::test
