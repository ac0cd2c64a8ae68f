// tests/support/fault_injection_test.cpp
#include "tests/support/fault_injection.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>

#include "zt/containers/dyn_array.h"

namespace zt::test {
namespace {

TEST(FaultInjection, FailsExactlyTheArmedAllocationAndCountsLiveOnes) {
  const long live = LiveAllocations();
  void* p = ::operator new[](16);  // a direct call: new-expressions may be elided
  EXPECT_EQ(LiveAllocations(), live + 1);
  ::operator delete[](p);
  EXPECT_EQ(LiveAllocations(), live);
  FailureScope scope(2);
  auto first = std::make_unique<int>(1);
  EXPECT_FALSE(AllocationFailed());
  EXPECT_THROW(first = std::make_unique<int>(2), std::bad_alloc);
  EXPECT_TRUE(AllocationFailed());
  first = std::make_unique<int>(3);  // the trap fires once
  EXPECT_EQ(*first, 3);
  FailAllocationAt(1);
  EXPECT_EQ(new (std::nothrow) int(5), nullptr);
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
