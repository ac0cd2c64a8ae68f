#!/usr/bin/env bash
# Builds the benchmarks in bench/ (Release, the bench preset) and runs each of them. Extra
# arguments go to every benchmark program, e.g. --benchmark_repetitions=5.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

zt_need_packages "${ZT_BUILD_PACKAGES[@]}" "${ZT_BENCH_PACKAGES[@]}"
cmake --preset bench >/dev/null
cmake --build --preset bench
for program in build/bench/bench/zt_*_bench; do
  "$program" "$@"
done
