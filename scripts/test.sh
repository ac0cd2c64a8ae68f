#!/usr/bin/env bash
# Builds and runs the whole test suite.
#   scripts/test.sh           the default preset (RelWithDebInfo, warnings as errors)
#   scripts/test.sh --asan    the suite under AddressSanitizer and UndefinedBehaviorSanitizer
#   scripts/test.sh --static  the suite against the static library
#   scripts/test.sh --windows zt.dll and the suite cross-built for 64-bit Windows with
#                             MinGW-w64, run under Wine
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

preset=default
case "${1:-}" in
  "") ;;
  --asan) preset=asan ;;
  --static) preset=static ;;
  --windows) preset=windows ;;
  *) echo "usage: scripts/test.sh [--asan|--static|--windows]" >&2; exit 2 ;;
esac

if [ "$preset" = windows ]; then
  zt_need_packages "${ZT_BUILD_PACKAGES[@]}" "${ZT_WINDOWS_PACKAGES[@]}"
  zt_start_wine
else
  zt_need_packages "${ZT_BUILD_PACKAGES[@]}"
fi
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"
ctest --preset "$preset"
