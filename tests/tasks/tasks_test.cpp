// tests/tasks/tasks_test.cpp
#include "zt/tasks/tasks.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

#include "tests/support/containers.h"
#include "tests/support/fault_injection.h"

namespace {

using zt::test::Both;

std::string g_log;
int g_destroyed = 0;
int g_lengthSeen = -1;  // the length of its set that a task's destructor saw

class Step : public ZtParallelTask {
 public:
  explicit Step(char name, ZtParallelTasks* set = nullptr) : m_name(name), m_set(set) {}
  Step(const Step&) = default;
  Step& operator=(const Step&) = delete;
  ~Step() override {
    ++g_destroyed;
    if (m_set != nullptr) g_lengthSeen = m_set->GetLength();
  }
  void Execute() override {
    g_log += m_name;
    if (m_name == '!') throw std::runtime_error("task failed");
    if (m_name == '+' && m_set != nullptr) m_set->AddTask(new Step('z'));
    if (m_name == '0' && m_set != nullptr) m_set->Clear();
  }
  void run() override { g_log += "run"; }  // Start and Run must not use it

 private:
  char m_name;
  ZtParallelTasks* m_set;
};

class TasksTest : public ::testing::Test {
 protected:
  void SetUp() override { g_log.clear(), g_destroyed = 0; }
};

TEST_F(TasksTest, RunExecutesInOrderSkipsNullsAndStopsAtAnException) {
  ZtParallelTasks set;
  set.Run();
  for (char c : {'a', 'b', 'c'}) set.AddTask(new Step(c));
  set.AddTask(nullptr);
  set.Run();
  EXPECT_EQ(g_log, "abc");
  EXPECT_TRUE(set.GetLength() == 4 && set[-1] == nullptr && set[4] == nullptr);
  ASSERT_NE(set[0], nullptr);
  EXPECT_TRUE(set[0]->Start());
  set[0]->Wait();
  EXPECT_EQ(g_log, "abca");
  set.Clear();
  EXPECT_EQ(Both(set.GetLength(), g_destroyed), Both(0, 3));
  for (char c : {'a', '!', 'c'}) set.AddTask(new Step(c));
  EXPECT_THROW(set.Run(), std::runtime_error);
  EXPECT_EQ(g_log, "abcaa!");
  EXPECT_EQ(set.GetLength(), 3);
}

TEST_F(TasksTest, TasksMayGrowOrClearTheRunningSet) {
  {
    ZtParallelTasks set;
    set.AddTask(new Step('+', &set));
    set.Run();
    EXPECT_EQ(g_log, "+z");
    set.AddTask(new Step('0', &set));
    set.AddTask(new Step('x'));
    set.Run();  // '0' clears the set; the run stops there
    EXPECT_EQ(g_log, "+z+z0");
    EXPECT_EQ(set.GetLength(), 0);
    set.AddTask(new Step('a'));
    set.AddTask(new Step('w', &set));
    set.Clear();  // each task is deleted before the set is emptied
    EXPECT_EQ(g_lengthSeen, 2);
  }
  EXPECT_EQ(g_destroyed, 7);
}

TEST_F(TasksTest, CopiesOwnOnlyTheTasksAddedToThemLater) {
  {
    ZtParallelTasks set;
    set.AddTask(new Step('a'));
    set.AddTask(nullptr);
    {
      ZtParallelTasks copy(set);
      EXPECT_EQ(copy[0], set[0]);
      copy.Run();
      copy.AddTask(new Step('b'));
      ZtParallelTasks other;
      other.AddTask(new Step('c'));
      other = copy;  // deletes c, borrows a and b
      const auto& alias = other;
      other = alias;
      EXPECT_EQ(g_destroyed, 1);
      copy.Clear();  // deletes b only
      EXPECT_EQ(g_destroyed, 2);
    }
    EXPECT_EQ(g_destroyed, 2);
    {
      const ZtParallelTasks copy(set);
      set = copy;  // set keeps owning a, which it holds again
    }
    set.Run();
    EXPECT_EQ(g_log, "aa");
  }
  EXPECT_EQ(g_destroyed, 3);
}

TEST_F(TasksTest, FailedAllocationsLeaveTheSetAsItWas) {
  {
    ZtParallelTasks set;
    auto* task = new Step('a');
    zt::test::ExpectStrongGuarantee(
        set, [task](auto& x) { x.AddTask(task); },
        [](const ZtParallelTasks& x) { return x.GetLength(); });
    EXPECT_EQ(set[0], task);
    for (char c : {'b', 'c'}) set.AddTask(new Step(c));
    ZtParallelTasks target;
    target.AddTask(new Step('t'));
    zt::test::ExpectStrongGuarantee(
        target, [&set](auto& x) { x = set; }, [](const ZtParallelTasks& x) { return x[0]; });
  }
  EXPECT_EQ(g_destroyed, 4);
}

TEST(PlatformQueries, AnswerForThe64BitBuild) {
  EXPECT_TRUE(IsOS64() == 1 && IsWow64() == 0 && !CheckGpu());
}

}  // namespace
