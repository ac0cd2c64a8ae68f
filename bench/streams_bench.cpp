// Writes 1,000,000 mixed typed values (ZtLong, short, double, char in turn) and reads them back,
// through the streams and, as the yardstick, with memcpy into and out of a std::vector<char>.
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "bench/pair.h"
#include "zt/streams/dyn_array_stream.h"
#include "zt/streams/dyn_array_stream_ex.h"

namespace {

constexpr int kValues = 1000000;
// Bytes of one ZtLong, short, double, char group, and of the whole run.
constexpr ZtLong kGroupBytes = 4 + 2 + 8 + 1;
constexpr ZtLong kTotalBytes = kValues / 4 * kGroupBytes;

// The i-th group of values; the same on every side, so the streams and the yardstick store the
// same bytes.
struct Group {
  ZtLong l;
  short s;
  double d;
  char c;
};
Group GroupAt(int i) {
  return {static_cast<ZtLong>(i * 2654435761U), static_cast<short>(i), i * 0.5,
          static_cast<char>(i)};
}

template <class T>
void Append(std::vector<char>& out, std::size_t& at, T v) {
  out.resize(at + sizeof v);
  std::memcpy(out.data() + at, &v, sizeof v);
  at += sizeof v;
}

template <class T>
T Take(const std::vector<char>& in, std::size_t& at) {
  T v;
  std::memcpy(&v, in.data() + at, sizeof v);
  at += sizeof v;
  return v;
}

void VectorMemcpy(benchmark::State& state, std::size_t reserve) {
  for (auto _ : state) {
    std::vector<char> buf;
    buf.reserve(reserve);
    std::size_t at = 0;
    for (int i = 0; i < kValues / 4; ++i) {
      const Group g = GroupAt(i);
      Append(buf, at, g.l);
      Append(buf, at, g.s);
      Append(buf, at, g.d);
      Append(buf, at, g.c);
    }
    double sum = 0;
    at = 0;
    for (int i = 0; i < kValues / 4; ++i) {
      sum += Take<ZtLong>(buf, at);
      sum += Take<short>(buf, at);
      sum += Take<double>(buf, at);
      sum += Take<char>(buf, at);
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * kValues);
}

template <class Stream, class... Args>
void RoundTrip(benchmark::State& state, Args... args) {
  for (auto _ : state) {
    Stream s(args...);
    for (int i = 0; i < kValues / 4; ++i) {
      const Group g = GroupAt(i);
      s << g.l << g.s << g.d << g.c;
    }
    double sum = 0;
    s.MoveToFirst();
    for (int i = 0; i < kValues / 4; ++i) {
      Group g{};
      s >> g.l >> g.s >> g.d >> g.c;
      sum += g.l + g.s + g.d + g.c;
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * kValues);
}

}  // namespace

// The default array stream reserves 1,024 bytes and grows by 1,024 beyond the length each time,
// so without a reserve it copies its bytes about 3,600 times; the yardstick then grows a vector
// without a reserve. The block stream never copies what it has written.
ZT_BENCH_PAIRS {
  using zt::bench::Pair;
  const auto reserved = static_cast<std::size_t>(kTotalBytes);
  Pair(
      "ArrayStream.RoundTrip.Reserved",
      [](benchmark::State& s) { RoundTrip<ZtDynArrayStream>(s, kTotalBytes, ZtLong{1024}); },
      [reserved](benchmark::State& s) { VectorMemcpy(s, reserved); });
  Pair(
      "ArrayStream.RoundTrip.Default",
      [](benchmark::State& s) { RoundTrip<ZtDynArrayStream>(s, ZtLong{1024}, ZtLong{1024}); },
      [](benchmark::State& s) { VectorMemcpy(s, 0); });
  Pair(
      "BlockStream.RoundTrip.Units1K",
      [](benchmark::State& s) { RoundTrip<ZtDynArrayStreamEx>(s, ZtLong{1024}); },
      [](benchmark::State& s) { VectorMemcpy(s, 0); });
  Pair(
      "BlockStream.RoundTrip.Units64K",
      [](benchmark::State& s) { RoundTrip<ZtDynArrayStreamEx>(s, ZtLong{65536}); },
      [](benchmark::State& s) { VectorMemcpy(s, 0); });
}

BENCHMARK_MAIN();
