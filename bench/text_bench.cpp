// bench/text_bench.cpp
//
// ZtStringA against std::string: appending words (the string grows to the exact size on every
// append, so the work is quadratic by design), and substring search and replace on a 1 MiB text
// of random lower-case words: the first hit near the end, no hit at all, every hit of a word
// planted once per KiB, and replacing that word.
#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

#include "bench/pair.h"
#include "zt/containers/quene.h"
#include "zt/text/string.h"

namespace {

constexpr std::size_t kTextSize = 1 << 20;
const char kPlanted[] = "needle";
const char kNearEnd[] = "haystack ends here";
const char kAbsent[] = "quixotic zephyr";

// Random words of 1 to 9 letters; `needle` every 1,024 characters; kNearEnd 100 from the end.
const std::string& Text() {
  static const std::string text = [] {
    std::mt19937 random(12345);
    std::uniform_int_distribution<int> letter('a', 'z');
    std::uniform_int_distribution<int> length(1, 9);
    std::string t;
    t.reserve(kTextSize);
    while (t.size() < kTextSize) {
      if (t.size() % 1024 < 10 && t.size() + 200 < kTextSize) t += kPlanted;
      for (int n = length(random); n > 0; --n) t += static_cast<char>(letter(random));
      t += ' ';
    }
    t.resize(kTextSize);
    t.replace(kTextSize - 100, sizeof(kNearEnd) - 1, kNearEnd);
    return t;
  }();
  return text;
}

// A hit queue over a vector, reused between iterations.
class HitVector : public ZtQuene<ZtLong> {
 public:
  void Clear() override { m_hits.clear(); }
  ZtLong GetCount() const override { return static_cast<ZtLong>(m_hits.size()); }
  ZtLong& operator[](ZtLong i) override { return m_hits[static_cast<std::size_t>(i)]; }
  bool GetHead(ZtLong& out) override { return !m_hits.empty() && (out = m_hits.front(), true); }
  bool GetTail(ZtLong& out) override { return !m_hits.empty() && (out = m_hits.back(), true); }
  bool Push(const ZtLong& v) override {
    m_hits.push_back(v);
    return true;
  }
  bool Pop(ZtLong& /*out*/) override { return false; }

 private:
  std::vector<ZtLong> m_hits;
};

void ZtFind(benchmark::State& state, const char* pattern) {
  const ZtStringA text(Text().c_str());
  const ZtStringA p(pattern);
  for (auto _ : state) benchmark::DoNotOptimize(text.Find(p));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kTextSize));
}

void StdFind(benchmark::State& state, const char* pattern) {
  const std::string& text = Text();
  const std::string p(pattern);
  for (auto _ : state) benchmark::DoNotOptimize(text.find(p));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kTextSize));
}

void ZtFindAll(benchmark::State& state) {
  const ZtStringA text(Text().c_str());
  const ZtStringA p(kPlanted);
  HitVector hits;
  for (auto _ : state) {
    hits.Clear();
    benchmark::DoNotOptimize(text.Find(p, hits));
  }
}

void StdFindAll(benchmark::State& state) {
  const std::string& text = Text();
  const std::string p(kPlanted);
  std::vector<ZtLong> hits;
  for (auto _ : state) {
    hits.clear();
    for (auto at = text.find(p); at != std::string::npos; at = text.find(p, at + p.size())) {
      hits.push_back(static_cast<ZtLong>(at));
    }
    benchmark::DoNotOptimize(hits.data());
  }
}

// Both replace benchmarks start each iteration from a fresh copy of the text.
void ZtReplace(benchmark::State& state) {
  const ZtStringA original(Text().c_str());
  const ZtStringA from(kPlanted);
  const ZtStringA to("pin");
  for (auto _ : state) {
    ZtStringA text(original);
    benchmark::DoNotOptimize(text.Replace(from, to));
  }
}

void StdReplace(benchmark::State& state) {
  const std::string& original = Text();
  const std::string from(kPlanted);
  const std::string to("pin");
  for (auto _ : state) {
    std::string text(original);
    std::string out;
    std::size_t pos = 0;
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, pos)) {
      out.append(text, pos, at - pos);
      out += to;
      pos = at + from.size();
    }
    out.append(text, pos, std::string::npos);
    text.swap(out);
    benchmark::DoNotOptimize(text.data());
  }
}

void ZtAppend(benchmark::State& state) {
  for (auto _ : state) {
    ZtStringA text;
    for (std::int64_t i = 0; i < state.range(0); ++i) text << "word " << static_cast<int>(i);
    benchmark::DoNotOptimize(text.GetLength());
  }
}

void StdAppend(benchmark::State& state) {
  for (auto _ : state) {
    std::string text;
    for (std::int64_t i = 0; i < state.range(0); ++i) text += "word " + std::to_string(i);
    benchmark::DoNotOptimize(text.size());
  }
}

}  // namespace

ZT_BENCH_PAIRS {
  using zt::bench::Pair;
  Pair("StringA.Append", ZtAppend, StdAppend, {1000, 10000});
  Pair(
      "StringA.Find.HitNearEnd", [](benchmark::State& s) { ZtFind(s, kNearEnd); },
      [](benchmark::State& s) { StdFind(s, kNearEnd); });
  Pair(
      "StringA.Find.NoHit", [](benchmark::State& s) { ZtFind(s, kAbsent); },
      [](benchmark::State& s) { StdFind(s, kAbsent); });
  Pair("StringA.FindAll", ZtFindAll, StdFindAll);
  Pair("StringA.Replace", ZtReplace, StdReplace);
}

BENCHMARK_MAIN();
