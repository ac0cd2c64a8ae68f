// tests/support/watchdog.h
//
// FinishWithin runs work on a thread of its own and waits a bounded time for its result, so that
// an operation that never returns fails its test instead of stalling the suite:
//
//   std::optional<bool> kept = FinishWithin([] { ZtDynArray<double> a; ...; return ok; });
//   EXPECT_EQ(kept, std::optional<bool>(true));   // nullopt: still running after the limit
//
// A worker that does not finish is detached and left running until the process ends, so `work`
// must own everything it touches (capture by value, build its objects inside).
#ifndef ZT_TESTS_SUPPORT_WATCHDOG_H_
#define ZT_TESTS_SUPPORT_WATCHDOG_H_

#include <chrono>
#include <exception>
#include <future>
#include <memory>
#include <optional>
#include <thread>
#include <utility>

namespace zt::test {

/// work()'s result, or nullopt when it has not returned after `limit`. An exception it throws is
/// rethrown here.
template <class Work>
auto FinishWithin(Work work, std::chrono::seconds limit = std::chrono::seconds(10))
    -> std::optional<decltype(work())> {
  using Result = decltype(work());
  auto done = std::make_shared<std::promise<Result>>();
  std::future<Result> result = done->get_future();
  std::thread worker([done, work = std::move(work)]() mutable {
    try {
      done->set_value(work());
    } catch (...) {
      done->set_exception(std::current_exception());
    }
  });
  if (result.wait_for(limit) != std::future_status::ready) {
    worker.detach();
    return std::nullopt;
  }
  worker.join();
  return result.get();
}

}  // namespace zt::test

#endif  // ZT_TESTS_SUPPORT_WATCHDOG_H_
