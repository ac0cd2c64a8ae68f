// The event bus against a plain std::vector<std::function> loop doing the same deliveries: one
// event sent to 10 reactors, and 100,000 events posted and then processed.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "bench/pair.h"
#include "zt/events/events.h"

namespace {

constexpr int kReactors = 10;
constexpr int kPosted = 100000;

class Counter : public ZtEventReactor {
 public:
  Counter() : ZtEventReactor(0) {}
  void React(const wchar_t* /*name*/, void* data) override {
    *static_cast<std::int64_t*>(data) += 1;
  }
};

/// Registers kReactors counters for the lifetime of the object.
class Registered {
 public:
  Registered() {
    for (Counter& c : counters_) ZtRegisterReactor(&c);
  }
  ~Registered() {
    for (Counter& c : counters_) ZtUnRegisterReactor(&c);
  }
  Registered(const Registered&) = delete;
  Registered& operator=(const Registered&) = delete;

 private:
  Counter counters_[kReactors];
};

using Handler = std::function<void(const std::wstring&, void*)>;

std::vector<Handler> Handlers() {
  return std::vector<Handler>(kReactors, [](const std::wstring& /*name*/, void* data) {
    *static_cast<std::int64_t*>(data) += 1;
  });
}

void SendZt(benchmark::State& state) {
  const Registered bus;
  std::int64_t received = 0;
  for (auto _ : state) ZtSendEvent(L"tick", &received, 1);
  benchmark::DoNotOptimize(received);
}

void SendStd(benchmark::State& state) {
  const std::vector<Handler> handlers = Handlers();
  std::int64_t received = 0;
  for (auto _ : state) {
    const std::wstring name(L"tick");  // the bus copies the name into its event too
    for (const Handler& h : handlers) h(name, &received);
  }
  benchmark::DoNotOptimize(received);
}

void PostProcessZt(benchmark::State& state) {
  const Registered bus;
  std::int64_t received = 0;
  for (auto _ : state) {
    for (int i = 0; i < kPosted; ++i) ZtPostEvent(L"tick", &received, 1);
    ZtProcessPostEvents();
  }
  benchmark::DoNotOptimize(received);
}

void PostProcessStd(benchmark::State& state) {
  const std::vector<Handler> handlers = Handlers();
  std::int64_t received = 0;
  for (auto _ : state) {
    std::deque<std::pair<std::wstring, void*>> queue;
    for (int i = 0; i < kPosted; ++i) queue.emplace_back(L"tick", &received);
    while (!queue.empty()) {
      for (const Handler& h : handlers) h(queue.front().first, queue.front().second);
      queue.pop_front();
    }
  }
  benchmark::DoNotOptimize(received);
}

}  // namespace

ZT_BENCH_PAIRS {
  using zt::bench::Pair;
  Pair("Events.SendTo10", SendZt, SendStd);
  Pair("Events.PostProcess100k", PostProcessZt, PostProcessStd);
}

BENCHMARK_MAIN();
