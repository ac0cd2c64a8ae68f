// The replaced global allocation functions behind tests/support/fault_injection.h.
#include "tests/support/fault_injection.h"

#include <cstdlib>
#include <new>

namespace {

long g_countdown = 0;  // allocations left before the armed failure; 0 when disarmed
bool g_failed = false;
long g_live = 0;

void* Allocate(std::size_t size) {
  if (!zt::test::detail::TakeAllocation()) throw std::bad_alloc();
  void* p = std::malloc(size == 0 ? 1 : size);
  if (p == nullptr) throw std::bad_alloc();
  zt::test::detail::CountAllocation();
  return p;
}

void Release(void* p) noexcept {
  if (p == nullptr) return;
  zt::test::detail::CountRelease();
  std::free(p);
}

}  // namespace

namespace zt::test {

void FailAllocationAt(long n) {
  g_countdown = n > 0 ? n : 0;
  g_failed = false;
}

bool AllocationFailed() { return g_failed; }

long LiveAllocations() { return g_live; }

namespace detail {

bool TakeAllocation() {
  if (g_countdown > 0 && --g_countdown == 0) {
    g_failed = true;
    return false;
  }
  return true;
}

void CountAllocation() { ++g_live; }

void CountRelease() { --g_live; }

}  // namespace detail
}  // namespace zt::test

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  try {
    return Allocate(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
  return operator new(size, tag);
}
void operator delete(void* p) noexcept { Release(p); }
void operator delete[](void* p) noexcept { Release(p); }
void operator delete(void* p, std::size_t /*size*/) noexcept { Release(p); }
void operator delete[](void* p, std::size_t /*size*/) noexcept { Release(p); }
void operator delete(void* p, const std::nothrow_t& /*tag*/) noexcept { Release(p); }
void operator delete[](void* p, const std::nothrow_t& /*tag*/) noexcept { Release(p); }
