// tests/containers/array_test.cpp
//
// ZtArray: exact sizing on every change, its own clamping rules, and all-or-nothing allocation.
#include "zt/containers/array.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/containers.h"
#include "tests/support/fault_injection.h"
#include "tests/support/tracked.h"
#include "zt/containers/dyn_array.h"

namespace zt::test {
namespace {

template <class T>
ZtArray<T> Make(std::initializer_list<int> values) {
  ZtArray<T> a(static_cast<ZtLong>(values.size()));
  ZtLong i = 0;
  for (int v : values) a.SetAt(i++, T(v));
  return a;
}

template <class T>
class ArrayTest : public ::testing::Test {
 protected:
  static std::vector<T> V(std::initializer_list<int> values) {
    return {values.begin(), values.end()};
  }
};
using ElementTypes = ::testing::Types<int, Tracked>;
TYPED_TEST_SUITE(ArrayTest, ElementTypes);

TYPED_TEST(ArrayTest, EveryLengthChangeReallocatesToTheExactSize) {
  ZtArray<TypeParam> empty(-3);
  EXPECT_EQ(empty.GetDataBuffer(), nullptr);
  EXPECT_EQ(empty.GetMaxIndex(), -1);
  auto a = Make<TypeParam>({1, 2, 3, 4, 5});
  a.ReAllocate(3, true);
  EXPECT_EQ(Values(a), this->V({1, 2, 3}));
  const TypeParam* buffer = a.GetDataBuffer();
  a.ReAllocate(3, false);
  EXPECT_EQ(a.GetDataBuffer(), buffer);
  a.Insert(0, TypeParam(0));
  a.Insert(4, TypeParam(9));
  EXPECT_EQ(Values(a), this->V({0, 1, 2, 3, 9}));
  a.Insert(1, a[0]);  // the argument lives in the buffer being replaced
  EXPECT_EQ(Values(a), this->V({0, 0, 1, 2, 3, 9}));
  a.Del(2);
  a.DelHead();
  a.DelTail();
  EXPECT_EQ(Values(a), this->V({0, 2, 3}));
  a.ReAllocate(-1, true);
  EXPECT_EQ(a.GetDataBuffer(), nullptr);
}

TYPED_TEST(ArrayTest, SearchesClampAnyNegativeEnd) {
  auto a = Make<TypeParam>({5, 5, 1, 5});
  const TypeParam x(5);
  EXPECT_EQ(a.Find(x, 0, -5), 0);
  EXPECT_EQ(a.Find(x, 2, -5), 3);
  EXPECT_EQ(a.Find(x, 3, 1), -1);
  EXPECT_EQ(a.Find(x, -1, -1), -1);
  ZtListQuene<ZtLong> hits;
  EXPECT_EQ(a.Find(x, hits, 1, -7), 2);  // unlike the sequence search, -7 means the end
  EXPECT_EQ(Items(hits), (std::vector<ZtLong>{1, 3}));
  EXPECT_EQ(a.FindOrAppend(TypeParam(7)), 4);
  a.FindOrInsertHead(TypeParam(8));
  a.FindOrInsertHead(TypeParam(8));
  EXPECT_EQ(a.FindDel(x), 3);
  EXPECT_EQ(Values(a), this->V({8, 1, 7}));
  const auto sorted = Make<TypeParam>({1, 3, 5});
  EXPECT_EQ(sorted.BFind(TypeParam(4)), -1);
  EXPECT_EQ(sorted.BFind(TypeParam(5)), 2);
  EXPECT_EQ(sorted.BFind(TypeParam(1), 0, -9), 0);
  EXPECT_EQ(sorted.BFind(TypeParam(1), -1, -1), -1);
}

TYPED_TEST(ArrayTest, ReverseNeverGrowsAndSortsOrder) {
  auto a = Make<TypeParam>({1, 2, 3, 4});
  a.Reverse(0, -1);
  EXPECT_EQ(Values(a), this->V({4, 3, 2, 1}));
  a.Reverse(1, 2);
  a.Reverse(0, 9);
  a.Reverse(3, 0);
  EXPECT_EQ(Values(a), this->V({4, 2, 3, 1}));
  a.Sort(false);
  EXPECT_EQ(Values(a), this->V({4, 3, 2, 1}));
  a.Sort([](const TypeParam& l, const TypeParam& r) { return l < r ? -1 : (r < l ? 1 : 0); });
  EXPECT_EQ(Values(a), this->V({1, 2, 3, 4}));
}

TYPED_TEST(ArrayTest, CopiesComparisonsAndOutOfContractCalls) {
  ZtDynArray<TypeParam> seq;
  Fill(seq, {1, 2, 3});
  seq.MoveTo(-1);
  ZtArray<TypeParam> a(seq);
  EXPECT_EQ(Values(a), this->V({1, 2, 3}));
  EXPECT_EQ(seq.GetCur(), -1);
  ZtArray<TypeParam> b(a);
  EXPECT_TRUE(a == b);
  b.SetAt(2, TypeParam(9));
  EXPECT_TRUE(a != b);
  const auto& alias = b;
  b = alias;
  a = b;
  EXPECT_TRUE(a == b);
  EXPECT_TRUE(Make<TypeParam>({9}) < a);
  EXPECT_FALSE(Make<TypeParam>({1, 2, 3}) > Make<TypeParam>({7, 8, 9}));
  a.Insert(7, TypeParam(1));
  a.Insert(-1, TypeParam(1));
  a.Del(3);
  a.SetAt(-1, TypeParam(5));
  EXPECT_EQ(a[3], TypeParam());
  EXPECT_EQ(Values(a), this->V({1, 2, 9}));
  ZtArray<TypeParam> empty;
  empty.DelHead();
  empty.DelTail();
  EXPECT_EQ(empty.Append(TypeParam(4)), 0);
}

TEST(Array, CharacterOrderIsSignedForCharAndUnsignedForWideChar) {
  ZtArray<char> bytes = Make<char>({3, -2, 3, 0});
  bytes.Sort(true);
  EXPECT_EQ(Values(bytes), (std::vector<char>{-2, 0, 3, 3}));
  ZtArray<wchar_t> wide = Make<wchar_t>({0xFFFF, 0x41});
  wide.Sort(true);
  EXPECT_EQ(Values(wide), (std::vector<wchar_t>{0x41, 0xFFFF}));
  EXPECT_EQ(wide.BFind(static_cast<wchar_t>(0xFFFF)), 1);
}

TEST(ArrayFaults, InsertDelAndResizeLeaveTheArrayUnchangedWhenAllocationFails) {
  const auto onArray = [](auto op) {
    auto a = Make<Tracked>({1, 2, 3});
    ExpectStrongGuarantee(a, op, ArrayState<Tracked>);
  };
  onArray([](auto& x) { x.Insert(1, x[2]); });
  onArray([](auto& x) { x.Append(4); });
  onArray([](auto& x) { x.Del(0); });
  onArray([](auto& x) { x.FindDel(Tracked(2)); });
  onArray([](auto& x) { x.ReAllocate(8, true); });
  onArray([](auto& x) { x = Make<Tracked>({5, 6}); });
  onArray([](auto& x) { x.Sort(false); });
}

}  // namespace
}  // namespace zt::test
