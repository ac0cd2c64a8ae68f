#!/usr/bin/env bash
# Builds the benchmarks in bench/ (Release, the bench preset) and runs them. Extra arguments go
# to the benchmark program, e.g. --benchmark_filter=ArrayStream --benchmark_repetitions=5.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

zt_need_packages "${ZT_BUILD_PACKAGES[@]}" "${ZT_BENCH_PACKAGES[@]}"
cmake --preset bench >/dev/null
cmake --build --preset bench
build/bench/bench/zt_streams_bench "$@"
