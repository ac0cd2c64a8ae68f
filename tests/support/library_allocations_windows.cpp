// Brings zt.dll's allocations under the fault injection of tests/support/fault_injection.h.
//
// On Windows the test executable's replacement of operator new does not reach zt.dll: the DLL
// links its own C++ runtime, whose operator new calls the C runtime's malloc through the DLL's
// import table. At start-up this file points those imports (malloc, calloc, realloc, free) at
// counting versions, so the library's allocations are counted like the executable's, and when
// the armed failure falls on one of them malloc returns null and the DLL's own operator new
// throws std::bad_alloc, as it does when memory runs out.
#include <windows.h>

#include <cstdlib>
#include <cstring>
#include <new>

#include "tests/support/fault_injection.h"
#include "zt/containers/dyn_array.h"

namespace {

using MallocFn = void* (*)(std::size_t);
using CallocFn = void* (*)(std::size_t, std::size_t);
using ReallocFn = void* (*)(void*, std::size_t);
using FreeFn = void (*)(void*);

MallocFn g_malloc = nullptr;
CallocFn g_calloc = nullptr;
ReallocFn g_realloc = nullptr;
FreeFn g_free = nullptr;

void* CountedMalloc(std::size_t size) {
  if (!zt::test::detail::TakeAllocation()) return nullptr;
  void* p = g_malloc(size);
  if (p != nullptr) zt::test::detail::CountAllocation();
  return p;
}

void* CountedCalloc(std::size_t count, std::size_t size) {
  if (!zt::test::detail::TakeAllocation()) return nullptr;
  void* p = g_calloc(count, size);
  if (p != nullptr) zt::test::detail::CountAllocation();
  return p;
}

void CountedFree(void* p) {
  if (p != nullptr) zt::test::detail::CountRelease();
  g_free(p);
}

// A null block is a fresh allocation and a size of 0 a release, as the C runtime treats them;
// a failed resize leaves the block as it was.
void* CountedRealloc(void* p, std::size_t size) {
  if (p == nullptr) return CountedMalloc(size);
  if (size == 0) {
    CountedFree(p);
    return nullptr;
  }
  if (!zt::test::detail::TakeAllocation()) return nullptr;
  return g_realloc(p, size);
}

// Points the import `name` from msvcrt.dll in `module` at `hook`; false when there is none.
template <class Fn>
bool Redirect(HMODULE module, const char* name, Fn hook) {
  auto* base = reinterpret_cast<unsigned char*>(module);
  const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
  const IMAGE_DATA_DIRECTORY& dir = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  if (dir.VirtualAddress == 0) return false;
  for (auto* imp = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + dir.VirtualAddress);
       imp->Name != 0; ++imp) {
    if (_stricmp(reinterpret_cast<const char*>(base + imp->Name), "msvcrt.dll") != 0) continue;
    const auto* names = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + imp->OriginalFirstThunk);
    auto* slots = reinterpret_cast<IMAGE_THUNK_DATA*>(base + imp->FirstThunk);
    for (; names->u1.AddressOfData != 0; ++names, ++slots) {
      if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
      const auto* by_name =
          reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
      if (std::strcmp(reinterpret_cast<const char*>(by_name->Name), name) != 0) continue;
      DWORD old_protect = 0;
      if (!VirtualProtect(&slots->u1.Function, sizeof(slots->u1.Function), PAGE_READWRITE,
                          &old_protect)) {
        return false;
      }
      slots->u1.Function = reinterpret_cast<ULONG_PTR>(hook);
      VirtualProtect(&slots->u1.Function, sizeof(slots->u1.Function), old_protect, &old_protect);
      return true;
    }
  }
  return false;
}

// Installed while the executable's static objects are built: after zt.dll's own (the DLL is
// initialised first) and before any test runs. The counting versions call the executable's own
// imports of the same C runtime functions.
struct HookLibraryAllocations {
  HookLibraryAllocations() {
    HMODULE library = GetModuleHandleW(L"zt.dll");
    if (library == nullptr) return;
    g_malloc = &std::malloc;
    g_calloc = &std::calloc;
    g_realloc = &std::realloc;
    g_free = &std::free;
    Redirect(library, "malloc", &CountedMalloc);
    Redirect(library, "calloc", &CountedCalloc);
    Redirect(library, "realloc", &CountedRealloc);
    Redirect(library, "free", &CountedFree);
    // The DLL's runtime sets up some per-thread state with malloc the first time an exception
    // leaves it, and keeps it: provoke that now, so that it does not count as a test's leak.
    ZtDynArray<char> warmUp;
    try {
      zt::test::FailureScope scope(1);
      warmUp.SetSpaceSize(1);
    } catch (const std::bad_alloc&) {
    }
  }
};
const HookLibraryAllocations g_hook;

}  // namespace
