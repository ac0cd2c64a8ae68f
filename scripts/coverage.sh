#!/usr/bin/env bash
# Line and branch coverage of the library (zt/) by the whole suite, corpus replays included.
#   scripts/coverage.sh          prints the summary and writes build/coverage/coverage.txt
#   scripts/coverage.sh --html   also writes build/coverage/html/index.html
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh
zt_need_packages "${ZT_BUILD_PACKAGES[@]}" gcovr

cmake --preset coverage >/dev/null
cmake --build --preset coverage
find build/coverage -name '*.gcda' -delete
ctest --preset coverage >/dev/null
# Branches that the compiler adds for exceptions (unwinding paths) are not the library's own
# decisions: leave them out, as every gcov-based report of C++ code does.
args=(--root . --filter 'zt/' --object-directory build/coverage --exclude-directories 'build/coverage/CMakeFiles' --exclude-throw-branches
      --exclude-unreachable-branches)
gcovr "${args[@]}" --txt build/coverage/coverage.txt --print-summary
if [ "${1:-}" = --html ]; then
  mkdir -p build/coverage/html
  gcovr "${args[@]}" --html-details build/coverage/html/index.html
  echo "build/coverage/html/index.html"
fi
