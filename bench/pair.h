// bench/pair.h
//
// Registers a workload twice, as "<name>/zt" and "<name>/std" (Google Benchmark appends the
// argument), so that scripts/bench.sh can pair the library's time with the standard library's.
// A twin from another library is named after it ("<name>/boost").
//
//   ZT_BENCH_PAIRS { Pair("DynArray.Find", FindZt, FindStd, {1000, 1000000}); }
#ifndef ZT_BENCH_PAIR_H_
#define ZT_BENCH_PAIR_H_

#include <benchmark/benchmark.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <utility>

namespace zt::bench {

/// Registers zt and its twin under one workload name, each once per argument (none: no argument).
template <class Zt, class Std>
void Pair(const std::string& name, Zt zt, Std std, std::initializer_list<std::int64_t> args = {},
          const std::string& twin = "std") {
  auto* a = benchmark::RegisterBenchmark((name + "/zt").c_str(), std::move(zt));
  auto* b = benchmark::RegisterBenchmark((name + "/" + twin).c_str(), std::move(std));
  for (std::int64_t n : args) a->Arg(n), b->Arg(n);
}

}  // namespace zt::bench

/// Runs the registrations that follow once, before main.
#define ZT_BENCH_PAIRS                                                 \
  static void RegisterPairs();                                         \
  [[maybe_unused]] static const bool kPairs = (RegisterPairs(), true); \
  static void RegisterPairs()

#endif  // ZT_BENCH_PAIR_H_
