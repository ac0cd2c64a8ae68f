#!/usr/bin/env bash
# Builds and runs the whole test suite.
#   scripts/test.sh           the default preset (RelWithDebInfo, warnings as errors)
#   scripts/test.sh --asan    the suite under AddressSanitizer and UndefinedBehaviorSanitizer
#   scripts/test.sh --static  the suite against the static library
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
  --static) preset=static ;;
  --windows) preset=windows ;;
  --valgrind) preset=default; valgrind=1 ;;
  *) echo "usage: scripts/test.sh [--asan|--static|--windows|--valgrind]" >&2; exit 2 ;;
esac

if [ "$preset" = windows ]; then
  zt_need_packages "${ZT_BUILD_PACKAGES[@]}" "${ZT_WINDOWS_PACKAGES[@]}"
  zt_start_wine
elif [ "$valgrind" = 1 ]; then
  zt_need_packages "${ZT_BUILD_PACKAGES[@]}" valgrind
else
  zt_need_packages "${ZT_BUILD_PACKAGES[@]}"
fi
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"
if [ "$valgrind" = 1 ]; then
  # Every test under memcheck: any error or leak fails the test. The install test runs a
  # compiler and a separate build, which is no business of memcheck.
  ctest --preset "$preset" -E 'InstallAndConsume|ExportedSymbols' --timeout 1500 \
    --overwrite "MemoryCheckCommand=$(command -v valgrind)" \
    --overwrite "MemoryCheckCommandOptions=--error-exitcode=97 --leak-check=full --errors-for-leak-kinds=definite,indirect --quiet" \
    -T memcheck
  exit
fi
ctest --preset "$preset"
