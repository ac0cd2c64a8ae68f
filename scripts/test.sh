#!/usr/bin/env bash
# Builds and runs the whole test suite.
#   scripts/test.sh           the default preset (RelWithDebInfo, warnings as errors); as root it
#                             then also installs the Debian package and builds against it
#   scripts/test.sh --asan    the suite under AddressSanitizer and UndefinedBehaviorSanitizer
#   scripts/test.sh --tsan    the concurrency tests under ThreadSanitizer (only they are built)
#   scripts/test.sh --static  the suite against the static library
#   scripts/test.sh --checked the checked build: the suite, and death tests of every kind of report
#   scripts/test.sh --windows zt.dll and the suite cross-built for 64-bit Windows with
#                             MinGW-w64, run under Wine
#   scripts/test.sh --valgrind  the default build's suite under valgrind's memcheck
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

preset=default
valgrind=0
case "${1:-}" in
  "") ;;
  --asan) preset=asan ;;
  --tsan) preset=tsan ;;
  --static) preset=static ;;
  --checked) preset=checked ;;
  --windows) preset=windows ;;
  --valgrind) preset=default; valgrind=1 ;;
  *) echo "usage: scripts/test.sh [--asan|--tsan|--static|--checked|--windows|--valgrind]" >&2; exit 2 ;;
esac

if [ "$preset" = windows ]; then
  zt_need_packages "${ZT_BUILD_PACKAGES[@]}" "${ZT_WINDOWS_PACKAGES[@]}"
  zt_start_wine
elif [ "$valgrind" = 1 ]; then
  zt_need_packages "${ZT_BUILD_PACKAGES[@]}" "${ZT_TEST_PACKAGES[@]}" valgrind
else
  zt_need_packages "${ZT_BUILD_PACKAGES[@]}" "${ZT_TEST_PACKAGES[@]}"
fi
if [ "$valgrind" = 1 ]; then
  # Every test in its own process under memcheck (CTest runs the tests through the "emulator"):
  # any error or definite leak fails it. The operator new of the tests' fault injection stays in
  # place (nouserintercepts). The install and export checks run a compiler and nm: not memcheck's
  # business.
  memcheck="$(command -v valgrind);--quiet;--error-exitcode=97;--leak-check=full"
  memcheck+=";--errors-for-leak-kinds=definite,indirect;--soname-synonyms=somalloc=nouserintercepts;--suppressions=$PWD/tests/valgrind.supp"
  cmake -S . -B build/valgrind -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DZT_WARNINGS_AS_ERRORS=ON -DZT_BUILD_EXAMPLES=OFF "-DCMAKE_CROSSCOMPILING_EMULATOR=$memcheck" \
    >/dev/null
  cmake --build build/valgrind -j2
  exec ctest --test-dir build/valgrind -j2 --output-on-failure -E 'InstallAndConsume|ExportedSymbols'
fi
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"
ctest --preset "$preset"
# The Debian package goes into this machine's /usr for the check and out again: root only.
if [ "$preset" = default ] && [ "$(id -u)" -eq 0 ]; then
  tests/package/deb_test.sh build/default .
fi
