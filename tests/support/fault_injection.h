// tests/support/fault_injection.h
//
// Allocation fault injection for the tests. The test executable replaces the global operator
// new/delete; every allocation made through them, by the tests or by the library, is counted,
// and the Nth one from an arming call can be made to throw std::bad_alloc. On Windows zt.dll has
// its own operator new; library_allocations_windows.cpp routes its allocations here as well.
//
//   ExpectStrongGuarantee(a, [](auto& x) { x.Append(99); }, DynArrayState<int>);
//
// runs the operation with the 1st, 2nd, 3rd, ... allocation failing until it succeeds, and after
// each failure checks that `state(a)` is what it was and that no allocation is left behind.
#ifndef ZT_TESTS_SUPPORT_FAULT_INJECTION_H_
#define ZT_TESTS_SUPPORT_FAULT_INJECTION_H_

#include <gtest/gtest.h>

#include <new>

namespace zt::test {

/// Makes the nth allocation from now throw (1: the very next one). 0 disarms.
void FailAllocationAt(long n);
/// True once the armed failure has been thrown (until the next FailAllocationAt).
bool AllocationFailed();
/// Allocations made through the global operator new and not yet released.
long LiveAllocations();

namespace detail {
/// Claims the next allocation: false when it is the armed one, which must then fail.
bool TakeAllocation();
/// Records an allocation made or released, for LiveAllocations.
void CountAllocation();
void CountRelease();
}  // namespace detail

/// Disarms on scope exit, so an assertion that returns early cannot leave the trap set.
class FailureScope {
 public:
  explicit FailureScope(long n) { FailAllocationAt(n); }
  ~FailureScope() { FailAllocationAt(0); }
  FailureScope(const FailureScope&) = delete;
  FailureScope& operator=(const FailureScope&) = delete;
};

/// Runs op(obj) failing the 1st, 2nd, ... allocation until it completes. After every failure
/// state(obj) must equal its value before the call and every allocation the call made must have
/// been released. Fails the test when the operation never reached an allocation.
template <class Obj, class Op, class State>
void ExpectStrongGuarantee(Obj& obj, Op op, State state) {
  long failures = 0;
  for (long n = 1; n < 100000; ++n) {
    const auto before = state(obj);
    const long live = LiveAllocations();
    bool threw = false;
    {
      FailureScope scope(n);
      try {
        op(obj);
      } catch (const std::bad_alloc&) {
        threw = true;
      }
    }
    if (!threw) break;
    ++failures;
    EXPECT_TRUE(state(obj) == before) << "object changed after allocation " << n << " failed";
    EXPECT_EQ(LiveAllocations(), live) << "leak after allocation " << n << " failed";
    if (::testing::Test::HasFailure()) return;
  }
  EXPECT_GT(failures, 0) << "the operation made no allocation";
}

}  // namespace zt::test

#endif  // ZT_TESTS_SUPPORT_FAULT_INJECTION_H_
