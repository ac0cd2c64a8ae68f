#!/usr/bin/env bash
# Builds the libFuzzer targets (clang, AddressSanitizer, UndefinedBehaviorSanitizer) and runs every
# one (fuzz/*_fuzz.cpp) for the given number of seconds (default 60), starting from its seed corpus
# in fuzz/corpus/.
# New inputs go to build/fuzz/corpus/<target>/, failing ones to build/fuzz/crashes/.
#   scripts/fuzz.sh [seconds]
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

seconds=${1:-60}
zt_need_packages "${ZT_BUILD_PACKAGES[@]}" clang
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz
mkdir -p build/fuzz/crashes
status=0
for source in fuzz/*_fuzz.cpp; do
  target=$(basename "$source" .cpp)
  mkdir -p "build/fuzz/corpus/$target"
  echo "== $target: ${seconds}s"
  if ! build/fuzz/fuzz/$target -max_total_time="$seconds" -max_len=512 -timeout=10 -print_final_stats=1 \
      -artifact_prefix=build/fuzz/crashes/$target- "build/fuzz/corpus/$target" \
      "fuzz/corpus/$target" 2>build/fuzz/$target.log; then
    status=1
    tail -n 30 build/fuzz/$target.log
  fi
  grep -E 'stat::number_of_executed_units|Done' build/fuzz/$target.log || true
done
exit $status
