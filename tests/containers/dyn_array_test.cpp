// tests/containers/dyn_array_test.cpp
//
// ZtDynArray's storage rules (growth by the allocation unit, exact sizing), buffer hand-over, the
// rank sort, copies, and the strong guarantee of everything that allocates.
#include "zt/containers/dyn_array.h"
#include "zt/containers/list_quene.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "tests/support/containers.h"
#include "tests/support/fault_injection.h"
#include "tests/support/keyed.h"
#include "tests/support/tracked.h"

namespace zt::test {
namespace {

// The capacity after each of `count` appends.
std::vector<ZtLong> CapacitiesWhileAppending(ZtDynArray<int>& a, int count) {
  std::vector<ZtLong> caps(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i)
    caps[static_cast<std::size_t>(i)] = (a.Append(i), a.GetSpaceSize());
  return caps;
}

TEST(DynArray, GrowthAddsTheAllocationUnitBeyondTheNewLength) {
  ZtDynArray<int> a;
  EXPECT_EQ(Both(a.GetSpaceSize(), a.GetAllocUnit()), Both(0, 10));
  EXPECT_EQ(a.GetFirst(), nullptr);
  std::vector<ZtLong> caps(11, 11);
  caps.push_back(22);
  EXPECT_EQ(CapacitiesWhileAppending(a, 12), caps);
  ZtDynArray<int> b(5, 3);
  EXPECT_EQ(CapacitiesWhileAppending(b, 6), (std::vector<ZtLong>{5, 5, 5, 5, 5, 9}));
  b.SetAllocUnit(0);
  b.IncreaseSize(4);
  EXPECT_EQ(b.GetSpaceSize(), 10);
}

TEST(DynArray, ExactSizingAndReleasingCapacity) {
  ZtDynArray<int> a;
  Fill(a, {1, 2, 3, 4, 5, 6});
  a.MoveTo(1);
  a.ReAllocate(2);
  EXPECT_EQ(a.GetLength(), 2);
  EXPECT_EQ(a.GetSpaceSize(), 11);
  a.ReAllocate(6);
  a.SetLength(4, true);
  EXPECT_EQ(Values(a), (std::vector<int>{1, 2, 3, 4}));
  EXPECT_EQ(a.GetSpaceSize(), 4);
  EXPECT_EQ(a.GetCur(), 1);
  a.SetLength(4, false);  // same capacity: nothing reallocated, contents kept
  a.SetLength(6, true);
  EXPECT_EQ(Both(a.GetSpaceSize(), a[3]), Both(6, 4));
  EXPECT_FALSE(a.SetSpaceSize(5));
  a.SetLength(3, true);
  a.Append(9);  // capacity 3 + 1 + 10
  EXPECT_TRUE(a.SetSpaceSize(4));
  EXPECT_EQ(a.GetSpaceSize(), 4);
  EXPECT_EQ(Values(a), (std::vector<int>{1, 2, 3, 9}));
  a.SetLength(0, true);
  EXPECT_EQ(a.GetSpaceSize(), 0);
  EXPECT_EQ(a.GetFirst(), nullptr);
}

TEST(DynArray, AttachDetachAndResetHandTheBufferOver) {
  ZtDynArray<int> a;
  Fill(a, {1, 2, 3});
  a.MoveTo(1);
  a.Attach(3, new int[3]{7, 8, 9});
  EXPECT_EQ(Values(a), (std::vector<int>{7, 8, 9}));
  EXPECT_EQ(Both(a.GetSpaceSize(), a.GetCur()), Both(3, 1));
  std::unique_ptr<int[]> p(a.Detach());
  EXPECT_EQ(p[2], 9);
  EXPECT_EQ(DynArrayState(a), DynArrayState(ZtDynArray<int>()));

  Fill(a, {1, 2});
  a.Reset();
  EXPECT_EQ(a.GetCur(), -1);
  const long live = LiveAllocations();
  a.Append(5);  // the kept buffer takes it
  EXPECT_EQ(LiveAllocations(), live);
  EXPECT_EQ(a.GetSpaceSize(), 11);
}

int AllEqual(const Keyed& /*a*/, const Keyed& /*b*/) { return 0; }

TEST(DynArray, RankSortIsStableAndMakesExactlyHalfNSquaredComparisons) {
  ZtDynArray<char> bytes;
  Fill(bytes, {'\5', '\xff', '\3', '\xff'});
  bytes.MoveTo(2);
  bytes.Sort(true);
  EXPECT_EQ(Values(bytes), (std::vector<char>{'\xff', '\xff', '\3', '\5'}));  // signed
  EXPECT_EQ(bytes.GetCur(), 2);
  bytes.Sort(false);
  EXPECT_EQ(Values(bytes), (std::vector<char>{'\5', '\3', '\xff', '\xff'}));

  ZtDynArray<Keyed> k;
  for (int i = 0; i < 40; ++i) k.Append(Keyed{(i * 7) % 5, i});
  g_keyComparisons = 0;
  k.Sort(CountingByKey);
  EXPECT_EQ(g_keyComparisons, 40 * 39 / 2);
  for (ZtLong i = 1; i < k.GetLength(); ++i) {
    const Keyed& prev = k[i - 1];
    const Keyed& cur = k[i];
    EXPECT_TRUE(prev.key < cur.key || (prev.key == cur.key && prev.tag < cur.tag)) << i;
  }
  const std::vector<int> tags = Tags(k);
  k.Sort(AllEqual);
  for (ZtLong i = 0; i < k.GetLength(); ++i) EXPECT_EQ(k[i].tag, tags[i]);

  int cells[3] = {};
  ZtDynArray<int*> ptrs;
  Fill(ptrs, {&cells[2], &cells[0], &cells[1]});
  ptrs.Sort(true);  // by address
  EXPECT_EQ(Values(ptrs), (std::vector<int*>{&cells[0], &cells[1], &cells[2]}));
}

TEST(DynArray, CopiesAreExactSizeWithTheCursorAtTheEnd) {
  ZtDynArray<Tracked> a(0, 4);
  Fill(a, {1, 2, 3});
  a.MoveTo(1);
  ZtDynArray<Tracked> copy(a);
  EXPECT_EQ(copy, a);
  EXPECT_EQ(copy.GetSpaceSize(), 3);
  EXPECT_EQ(copy.GetCur(), 3);
  EXPECT_EQ(copy.GetAllocUnit(), 10);
  ZtDynArray<Tracked> b(0, 7);
  b = a;
  EXPECT_EQ(b.GetAllocUnit(), 7);
  const auto& alias = b;
  b = alias;
  EXPECT_EQ(Values(b), (std::vector<Tracked>{1, 2, 3}));
  a.SetLength(4, true);  // full
  a.Append(a[0]);        // the argument lives in the buffer being replaced
  EXPECT_EQ(a[4], Tracked(1));
}

TEST(DynArray, OutOfContractAccessStaysInsideTheBuffer) {
  ZtDynArray<Tracked> a;
  Fill(a, {1, 2});
  a.MoveTo(5);
  EXPECT_EQ(a.GetCurData(), Tracked());
  a.SetCurData(9);
  a.InsertCur(9);
  a.DelCur();
  a.MoveTo(-1);
  a.DelCur();
  a.Insert(-3, 9);
  EXPECT_EQ(a.GetAt(7), Tracked());
  EXPECT_EQ(Values(a), (std::vector<Tracked>{1, 2}));
  EXPECT_TRUE(a.GetNext(nullptr) == nullptr && a.GetPre(nullptr) == nullptr);
  a.ReAllocate(-4);
  EXPECT_EQ(a.GetLength(), 0);
}

// An array whose walk skips every other element and whose GetAt reads back to front.
class Skipping : public ZtDynArray<int> {
 public:
  const int* GetNext(const int* p) const override {
    const int* q = ZtDynArray<int>::GetNext(p);
    return q != nullptr ? ZtDynArray<int>::GetNext(q) : nullptr;
  }
  const int& GetAt(ZtLong i) const override { return ZtDynArray<int>::GetAt(m_length - 1 - i); }
};

// The searches read a plain array's block directly; a derived array's own slots must still
// decide what they see.
TEST(DynArray, SearchesGoThroughTheSlotsOfADerivedArray) {
  ZtDynArray<int> plain;
  Skipping derived;
  Fill(plain, {9, 7, 5, 3, 1});
  Fill(derived, {9, 7, 5, 3, 1});
  EXPECT_EQ(Both(plain.Find(3), derived.Find(3)), Both(3, -1));        // derived: from the 1 on
  EXPECT_EQ(Both(plain.Find(7, 1), derived.Find(7, 1)), Both(1, -1));  // 3, then past the end
  EXPECT_EQ(Both(plain.BFind(7), derived.BFind(7)), Both(-1, 3));      // derived reads 1 3 5 7 9
  ZtListQuene<ZtLong> plainHits;
  ZtListQuene<ZtLong> derivedHits;
  plain.Find(9, plainHits);
  derived.Find(9, derivedHits);
  EXPECT_EQ(Both(plainHits.GetCount(), derivedHits.GetCount()), Both(1, 0));
}

TEST(DynArrayFaults, EveryGrowthLeavesTheArrayUnchangedWhenAllocationFails) {
  ZtDynArray<Tracked> other;
  Fill(other, {7, 8, 9, 10, 11, 12, 13, 14, 15});
  const auto onFullArray = [](auto op) {
    ZtDynArray<Tracked> a(0, 3);
    Fill(a, {1, 2, 3, 4});  // capacity 4: the next insertion must grow
    ExpectStrongGuarantee(a, op, DynArrayState<Tracked>);
  };
  onFullArray([](auto& x) { x.Append(5); });
  onFullArray([](auto& x) { x.InsertHead(0); });
  onFullArray([](auto& x) { x.SetLength(2, true); });
  onFullArray([](auto& x) { x.SetSpaceSize(40); });
  onFullArray([](auto& x) { x[30] = 1; });
  onFullArray([&other](auto& x) { x = other; });
  onFullArray([&other](auto& x) { x << other; });
  onFullArray([](auto& x) { x.Sort(false); });
}

}  // namespace
}  // namespace zt::test
