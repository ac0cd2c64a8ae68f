#!/usr/bin/env bash
# Builds and runs the whole test suite.
#   scripts/test.sh          the default preset (RelWithDebInfo, warnings as errors)
#   scripts/test.sh --asan   the suite under AddressSanitizer and UndefinedBehaviorSanitizer
#   scripts/test.sh --static the suite against the static library
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

preset=default
case "${1:-}" in
  "") ;;
  --asan) preset=asan ;;
  --static) preset=static ;;
  *) echo "usage: scripts/test.sh [--asan|--static]" >&2; exit 2 ;;
esac

zt_need_packages "${ZT_BUILD_PACKAGES[@]}"
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"
ctest --preset "$preset"
