# Cross build for 64-bit Windows with Debian's MinGW-w64 compiler (g++-mingw-w64-x86-64-posix);
# the tests and examples run under Wine (wine64).
#
#   cmake --preset windows    (or -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake)
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(ZT_MINGW_TRIPLET x86_64-w64-mingw32)
# The posix thread model: its libstdc++ has std::thread and std::mutex.
find_program(CMAKE_CXX_COMPILER NAMES ${ZT_MINGW_TRIPLET}-g++-posix REQUIRED)
find_program(CMAKE_C_COMPILER NAMES ${ZT_MINGW_TRIPLET}-gcc-posix REQUIRED)
find_program(CMAKE_RC_COMPILER NAMES ${ZT_MINGW_TRIPLET}-windres)

# Libraries and headers come from the MinGW-w64 tree only; packages also from the prefixes in
# CMAKE_PREFIX_PATH, where a client finds an installed Windows build of zt.
set(CMAKE_FIND_ROOT_PATH /usr/${ZT_MINGW_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)

# The compiler's runtime (libgcc, libstdc++, winpthread) is linked in statically, so zt.dll and
# the .exe files need no DLL beyond Windows' own and run under Wine as they are.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-static")

# Test and example programs run through Wine; Debian's wine64 package keeps the loader here.
find_program(ZT_WINE64 NAMES wine64 PATHS /usr/lib/wine NO_CMAKE_FIND_ROOT_PATH)
if(ZT_WINE64)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${ZT_WINE64})
endif()
