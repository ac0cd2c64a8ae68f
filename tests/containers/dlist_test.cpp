// tests/containers/dlist_test.cpp
//
// ZtDList: one-step moves back, walks from the cursor, back links kept by every relinking, the
// backward insertion sort, and splicing refused between singly and doubly linked lists.
#include "zt/containers/dlist.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/containers.h"
#include "tests/support/fault_injection.h"
#include "tests/support/keyed.h"
#include "tests/support/tracked.h"

namespace zt::test {
namespace {

using Ints = std::vector<int>;

template <class A, class B, class = void>
struct CanConbine : std::false_type {};
template <class A, class B>
struct CanConbine<A, B, decltype(void(std::declval<A&>().Conbine(std::declval<B&>(), 0)))>
    : std::true_type {};
static_assert(CanConbine<ZtDList<int>, ZtDList<int>>::value);
static_assert(!CanConbine<ZtList<int>, ZtDList<int>>::value);

ZtDList<int> MakeDList(int n) {
  ZtDList<int> l;
  for (int i = 0; i < n; ++i) l.Append(i);
  return l;
}

TEST(DList, StepsBackAndWalksFromTheCursor) {
  auto l = MakeDList(100);
  l.MoveTo(-1);
  l.MoveToPre();
  EXPECT_EQ(l.GetCurData(), 99);
  l.MoveTo(90);
  const int* before = l.GetTo(30);
  EXPECT_EQ(l.GetCur(), 90);
  l.MoveTo(1);
  EXPECT_EQ(l.GetCurData(), 1);
  EXPECT_EQ(&l.GetAt(30), before);
  l.MoveToPre();
  l.MoveToPre();
  EXPECT_EQ(l.GetCur(), -1);
  EXPECT_EQ(l.GetPre(l.GetFirst()), nullptr);
  EXPECT_EQ(*l.GetPre(l.GetLast()), 98);
  ZtDList<int> empty;
  empty.MoveToPre();
  EXPECT_EQ(empty.GetCur(), -1);
}

TEST(DList, BackLinksFollowEveryRelinking) {
  auto a = MakeDList(5);
  auto b = MakeDList(4);
  a.DelTail();
  a.MoveTo(1);
  a.InsertCur(7);
  a.DelHead();
  EXPECT_EQ(BackwardValues(a), Values(a));
  EXPECT_EQ(a.Conbine(b, 2), 6);
  EXPECT_EQ(Values(a), (Ints{7, 1, 2, 3, 2, 3}));
  EXPECT_EQ(BackwardValues(a), Values(a));
  EXPECT_EQ(BackwardValues(b), (Ints{0, 1}));
  a.ReverseList();
  EXPECT_EQ(BackwardValues(a), (Ints{3, 2, 3, 2, 1, 7}));
  a.Rotate(4, 1);
  EXPECT_EQ(BackwardValues(a), (Ints{2, 1, 7, 3, 2, 3}));
  a.SplitAt(3, b);
  EXPECT_EQ(BackwardValues(a), (Ints{2, 1, 7}));
  EXPECT_EQ(BackwardValues(b), (Ints{0, 1, 3, 2, 3}));
  ZtList<int> single;
  single.Append(5);
  ZtList<int>& asSingle = a;
  EXPECT_EQ(a.Conbine(single, 0), 3);  // refused both ways
  EXPECT_EQ(single.Conbine(asSingle, 0), 1);
  EXPECT_EQ(BackwardValues(a), (Ints{2, 1, 7}));
}

TEST(DList, BackwardInsertionSortIsStableAndLinearOnSortedInput) {
  ZtDList<Keyed> l;
  for (int key : {2, 1, 2, 0, 5, 1}) l.Append(Keyed{key, l.GetLength()});
  g_keyComparisons = 0;
  l.Sort(CountingByKey);
  EXPECT_EQ(Tags(l), (Ints{3, 1, 5, 0, 2, 4}));
  EXPECT_EQ(g_keyComparisons, 13);  // 2 + 1 + 4 + 1 + 5: a mover meets its first blocker twice
  EXPECT_EQ(l.GetCur(), -1);
  g_keyComparisons = 0;
  l.Sort(CountingByKey);
  EXPECT_EQ(g_keyComparisons, 5);
  l.Sort(false);
  EXPECT_EQ(Tags(l), (Ints{4, 0, 2, 1, 5, 3}));
}

TEST(DList, FailedInsertionsAndSplicesLeaveNoTrace) {
  auto l = MakeDList(4);
  l.MoveTo(2);
  auto state = [](auto& x) { return std::make_tuple(x.GetCur(), BackwardValues(x), Values(x)); };
  ExpectStrongGuarantee(
      l, [](auto& x) { x.InsertCur(9); }, state);
  ExpectStrongGuarantee(
      l, [](auto& x) { x.SetLength(9, true); }, state);
  {
    ZtDList<Tracked> t(3);
    ZtDList<Tracked> u(t);
    t.Conbine(u, 1);
    t.Sort(true);
    u = t;
  }
  EXPECT_EQ(Tracked::Live(), 0);
}

}  // namespace
}  // namespace zt::test
