// tests/concurrency/concurrency_test.cpp
//
// Objects used by one thread each share no hidden state: four threads copy, assign, run and
// clear task sets of their own at the same time. Run under ThreadSanitizer (scripts/test.sh
// --tsan), a race or a task deleted twice fails it.
#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "zt/tasks/tasks.h"

namespace {

class Counted : public ZtParallelTask {
 public:
  Counted(int* runs, int* deleted) : m_runs(runs), m_deleted(deleted) {}
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;
  ~Counted() override { ++*m_deleted; }
  void Execute() override { ++*m_runs; }

 private:
  int* m_runs;
  int* m_deleted;
};

TEST(Concurrency, ThreadsCopyAndClearTheirOwnTaskSets) {
  constexpr int kThreads = 4;
  constexpr int kRounds = 2000;
  struct Counts {
    int runs = 0;
    int deleted = 0;
  };
  std::vector<Counts> counts(kThreads);
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&c = counts[static_cast<std::size_t>(t)]] {
      for (int round = 0; round < kRounds; ++round) {
        ZtParallelTasks set;
        set.AddTask(new Counted(&c.runs, &c.deleted));
        ZtParallelTasks copy(set);
        copy.AddTask(new Counted(&c.runs, &c.deleted));
        ZtParallelTasks other;
        other = copy;
        other.Run();
        copy.Clear();
        other.Clear();
      }
    });
  }
  for (std::thread& t : threads) t.join();
  for (const Counts& c : counts) EXPECT_TRUE(c.runs == 2 * kRounds && c.deleted == 2 * kRounds);
}

}  // namespace
