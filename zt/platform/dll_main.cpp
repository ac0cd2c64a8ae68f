// The entry point of zt.dll. The library's process-wide objects are ordinary static objects: the
// runtime builds them before it calls DllMain on load and destroys them after it calls DllMain on
// unload, so the entry point itself has nothing to do and reports success for every reason.
#if defined(_WIN32) && !defined(ZT_STATIC)

#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE /*module*/, DWORD /*reason*/, LPVOID /*reserved*/) {
  return TRUE;
}

#endif
