// tests/containers/list_test.cpp
//
// ZtList: the wrapping cursor, positional insertion, splicing between lists, reversal, rotation,
// the forward insertion sort, harmless out-of-contract calls and all-or-nothing insertion.
#include "zt/containers/list.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/containers.h"
#include "tests/support/fault_injection.h"
#include "tests/support/keyed.h"
#include "tests/support/tracked.h"

namespace zt::test {
namespace {

using Ints = std::vector<int>;

ZtList<int> MakeList(std::initializer_list<int> values) {
  ZtList<int> l;
  return Fill(l, values);
}

/// Length, cursor, cursor node and contents.
auto ListState(ZtList<int>& l) {
  return std::make_tuple(l.GetLength(), l.GetCur(), l.GetCurPos(), Values(l));
}

TEST(List, CursorWrapsThroughTheSentinel) {
  ZtList<int> empty;
  EXPECT_EQ(empty.GetFirst(), nullptr);
  EXPECT_EQ(empty.GetLast(), nullptr);
  ZtListNode<int>* sentinel = empty.GetCurPos();
  empty.MoveToFirst();
  empty.MoveToPre();
  EXPECT_EQ(empty.GetCur(), -1);
  EXPECT_EQ(empty.GetCurPos(), sentinel);

  auto l = MakeList({1, 2, 3});
  l.MoveToLast();
  l.MoveToNext();
  EXPECT_EQ(l.GetCur(), -1);
  l.MoveToNext();
  EXPECT_EQ(l.GetCurData(), 1);
  l.MoveToPre();
  l.MoveToPre();
  EXPECT_EQ(l.GetCur(), 2);
  l.MoveTo(3);
  EXPECT_EQ(l.GetCur(), -1);
  EXPECT_EQ(l.GetCurData(), 0);  // scratch value, the sentinel is never handed out
  l.SetCurData(9);
  l.DelCur();  // ignored on the sentinel
  EXPECT_EQ(Values(l), (Ints{1, 2, 3}));
  EXPECT_EQ(l.GetAt(5), 0);
  EXPECT_EQ(*l.GetPre(l.GetLast()), 2);
  EXPECT_EQ(l.GetPre(l.GetFirst()), nullptr);
}

TEST(List, InsertionPlacesAndDeletionStepsBack) {
  auto l = MakeList({1, 2});
  l.MoveTo(-1);
  l.InsertCur(3);  // appends from -1
  l.MoveTo(1);
  l.InsertCur(4);
  EXPECT_EQ(Values(l), (Ints{1, 4, 2, 3}));
  EXPECT_EQ(l.GetCur(), 1);
  l.Insert(9, 5);  // past the end: becomes the first element
  l.Insert(5, 6);
  EXPECT_EQ(Values(l), (Ints{5, 1, 4, 2, 3, 6}));
  l.DelTail();
  EXPECT_EQ(*l.GetLast(), 3);
  EXPECT_EQ(l.GetCur(), 4);
  l.Append(7);  // the new tail follows the old one
  EXPECT_EQ(Values(l), (Ints{5, 1, 4, 2, 3, 7}));
  l.MoveTo(2);
  l.DecreaseSize(3);  // a list's ReAllocate only grows
  l.IncreaseSize(1);
  EXPECT_EQ(l.GetLength(), 7);
  EXPECT_EQ(l.GetCur(), 2);
  l.SetLength(2, false);
  EXPECT_EQ(Values(l), (Ints{5, 1}));
}

TEST(List, ConbineAndSplitMoveNodesNotValues) {
  auto a = MakeList({1});
  auto b = MakeList({7, 8, 9});
  const int* moved = b.GetTo(1);
  a.MoveTo(0);
  EXPECT_EQ(a.Conbine(b, 1), 3);
  EXPECT_EQ(Values(a), (Ints{1, 8, 9}));
  EXPECT_EQ(a.GetTo(1), moved);
  EXPECT_EQ(a.GetCur(), 0);
  EXPECT_EQ(Values(b), (Ints{7}));
  EXPECT_EQ(b.GetCur(), 0);
  EXPECT_EQ(a.Conbine(b, 1), 3);  // pos past other's end
  EXPECT_EQ(a.Conbine(a, 0), 3);  // itself
  a.SplitAt(1, b);
  EXPECT_EQ(Values(a), (Ints{1}));
  EXPECT_EQ(Values(b), (Ints{7, 8, 9}));
  b.Append(10);  // the spliced tail is b's tail
  EXPECT_EQ(Values(b), (Ints{7, 8, 9, 10}));
  b.MoveTo(-1);
  b.SplitAtCur(a);
  EXPECT_EQ(b.GetLength(), 4);

  std::vector<ZtListNode<int>*> chain;
  for (ZtListNode<int>* n = b.GetCurPos()->next; chain.size() < 4; n = n->next) chain.push_back(n);
  b.Detach();
  EXPECT_TRUE(b.IsEmpty());
  for (ZtListNode<int>* n : chain) delete n;  // the detached chain is the caller's
}

TEST(List, ReverseKeepsTheCursorOnItsNodeAndRotateLandsOnZero) {
  auto l = MakeList({1, 2, 3, 4, 5});
  l.MoveTo(1);
  l.ReverseList();
  EXPECT_EQ(Values(l), (Ints{5, 4, 3, 2, 1}));
  EXPECT_EQ(l.GetCur(), 3);
  EXPECT_EQ(l.GetCurData(), 2);
  EXPECT_EQ(*l.GetLast(), 1);
  l.Append(0);  // the tail is right
  l.DelTail();
  l.Rotate(3, 0);
  EXPECT_EQ(Values(l), (Ints{2, 1, 5, 4, 3}));
  EXPECT_EQ(l.GetCur(), 0);
  l.Rotate(0, 1);
  EXPECT_EQ(Values(l), (Ints{3, 2, 1, 5, 4}));
  l.MoveTo(2);
  for (auto [a, b] : {std::pair{1, 1}, {-1, 2}, {0, 5}, {7, 2}}) l.Rotate(a, b);
  EXPECT_EQ(Values(l), (Ints{3, 2, 1, 5, 4}));
  EXPECT_EQ(l.GetCur(), 2);
  ZtList<int> empty;
  empty.Rotate(0, 1);
  empty.ReverseList();
  EXPECT_TRUE(empty.IsEmpty());
}

TEST(List, ForwardInsertionSortIsStableAndScansFromTheHead) {
  ZtList<Keyed> l;
  for (int key : {3, 1, 2, 1, 3, 0}) l.Append(Keyed{key, l.GetLength()});
  l.Sort(true);
  EXPECT_EQ(Tags(l), (Ints{5, 1, 3, 2, 0, 4}));
  EXPECT_EQ(l.GetCur(), -1);
  l.Sort(false);
  EXPECT_EQ(Tags(l), (Ints{0, 4, 2, 1, 3, 5}));
  l.Sort(true);
  g_keyComparisons = 0;
  l.Sort(CountingByKey);  // already sorted: every element meets all before it
  EXPECT_EQ(g_keyComparisons, 6 * 5 / 2);
}

TEST(List, EveryNodeIsFreed) {
  {
    ZtList<Tracked> l(3);
    l.Append(Tracked(4));
    ZtList<Tracked> copy(l);
    copy.Sort(false);
    copy = l;
    l.Reset();
    copy.DelHead();
  }
  EXPECT_EQ(Tracked::Live(), 0);
}

TEST(ListFaults, FailedInsertionsLeaveTheListUnchanged) {
  auto l = MakeList({1, 2, 3});
  l.MoveTo(1);
  ExpectStrongGuarantee(
      l, [](auto& x) { x.InsertCur(9); }, ListState);
  ExpectStrongGuarantee(
      l, [](auto& x) { x.Insert(2, 9); }, ListState);
  ExpectStrongGuarantee(
      l, [](auto& x) { x.Append(9); }, ListState);
  ExpectStrongGuarantee(
      l, [](auto& x) { x.IncreaseSize(4); }, ListState);
  ExpectStrongGuarantee(
      l, [](auto& x) { x[12] = 5; }, ListState);
}

}  // namespace
}  // namespace zt::test
