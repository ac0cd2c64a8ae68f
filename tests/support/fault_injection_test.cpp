// tests/support/fault_injection_test.cpp
#include "tests/support/fault_injection.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>

#include "zt/containers/dyn_array.h"

namespace zt::test {
namespace {

TEST(FaultInjection, FailsExactlyTheArmedAllocation) {
  std::unique_ptr<int> first;
  std::unique_ptr<int> second;
  FailureScope scope(2);
  first = std::make_unique<int>(1);
  EXPECT_FALSE(AllocationFailed());
  EXPECT_THROW(second = std::make_unique<int>(2), std::bad_alloc);
  EXPECT_TRUE(AllocationFailed());
  second = std::make_unique<int>(3);  // the trap fires once
  EXPECT_EQ(*second, 3);
}

TEST(FaultInjection, CountsLiveAllocations) {
  const long live = LiveAllocations();
  void* p = ::operator new[](16);  // a direct call: new-expressions may be elided
  EXPECT_EQ(LiveAllocations(), live + 1);
  ::operator delete[](p);
  EXPECT_EQ(LiveAllocations(), live);
}

TEST(FaultInjection, NothrowNewReturnsNullWhenArmed) {
  FailureScope scope(1);
  int* p = new (std::nothrow) int(5);
  EXPECT_EQ(p, nullptr);
}

// ZtDynArray<char> is compiled into the library: its growth allocates inside libzt.so or zt.dll.
TEST(FaultInjection, ReachesTheLibrarysOwnAllocations) {
  ZtDynArray<char> text;
  const long live = LiveAllocations();
  {
    FailureScope scope(1);
    EXPECT_THROW(text.SetSpaceSize(100), std::bad_alloc);
  }
  EXPECT_EQ(LiveAllocations(), live);
  EXPECT_TRUE(text.SetSpaceSize(100));
  EXPECT_EQ(LiveAllocations(), live + 1);
}

}  // namespace
}  // namespace zt::test
