#!/usr/bin/env bash
# Builds the benchmarks in bench/ (Release, the bench preset), runs them all and prints one table:
# each workload, zt's time, the standard library's time for the same work in the same run, and
# their ratio. Each benchmark runs 3 times and the table shows the medians. Extra arguments go to every
# benchmark program, e.g. --benchmark_filter=DynArray, --benchmark_min_time=0.1 or
# --benchmark_repetitions=1. The raw results are kept in build/bench/results.csv.
#   scripts/bench.sh --build   only builds them (CI does this; timings there mean nothing)
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

zt_need_packages "${ZT_BUILD_PACKAGES[@]}" "${ZT_BENCH_PACKAGES[@]}"
cmake --preset bench >/dev/null
if [ "${1:-}" = --build ]; then
  cmake --build --preset bench
  exit 0
fi
cmake --build --preset bench >/dev/null
results=build/bench/results.csv
: >"$results"
for program in build/bench/bench/zt_*_bench; do
  # A filter may leave a program nothing to run.
  "$program" --benchmark_format=csv --benchmark_repetitions=3 --benchmark_report_aggregates_only \
    "$@" 2>/dev/null | { grep '^"' || true; } >>"$results"
done

# Rows are named "<workload>/zt[/n]" and "<workload>/std[/n]" ("/boost" for the twin from Boost
# Graph, shown in the std column), with a suffix for the aggregates
# (only _median is used; a single repetition has none); times are in ns unless stated. A workload
# without a standard twin (Evolve) shows "-".
printf '%-40s %12s %12s %8s\n' workload zt std zt/std
# Rows sorted by workload name, sizes by value.
awk -F, '
  function ns(t, unit) { return unit == "us" ? t * 1e3 : unit == "ms" ? t * 1e6 : unit == "s" ? t * 1e9 : t }
  function show(t) {
    return t >= 1e6 ? sprintf("%.2f ms", t / 1e6) : t >= 1e3 ? sprintf("%.2f us", t / 1e3) : sprintf("%.1f ns", t)
  }
  {
    name = $1; gsub(/"/, "", name)
    if (name ~ /_(mean|stddev|cv)$/) next
    sub(/_median$/, "", name)
    side = name ~ /\/(std|boost)(\/|$)/ ? "std" : "zt"  # a workload without a twin counts as zt
    key = name; sub(/\/(zt|std|boost)/, "", key)
    if (!(key in seen)) { seen[key] = 1; order[++n] = key }
    time[key, side] = ns($4, $5)  # CPU time: steadier on a shared machine
  }
  END {
    for (i = 1; i <= n; ++i) {
      k = order[i]; z = time[k, "zt"]; s = time[k, "std"]
      printf "%-40s %12s %12s %8s\n", k, show(z), (s > 0 ? show(s) : "-"), (s > 0 ? sprintf("%.2f", z / s) : "-")
    }
  }' "$results" | sort -V
