#include "zt/tasks/tasks.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <vector>

#include "zt/checked.h"
#include "zt/containers/internal/loans.h"

void ZtParallelTask::run() { Execute(); }

ZtParallelTask::~ZtParallelTask() = default;

bool ZtParallelTask::Start() {
  Execute();
  return true;
}

ZtParallelTasks::ZtParallelTasks() = default;

ZtParallelTasks::ZtParallelTasks(const ZtParallelTasks& src) : tasks(src.tasks) {
  auto loans = std::make_unique<zt::detail::Loans>();
  std::vector<ZtParallelTask*> none;
  loans->Plan(none, nullptr, tasks, none);
  m_loans = std::move(loans);
}

ZtParallelTasks& ZtParallelTasks::operator=(const ZtParallelTasks& src) {
  if (this == &src) return *this;
  std::vector<ZtParallelTask*> copy(src.tasks);
  auto loans = std::make_unique<zt::detail::Loans>();
  std::vector<ZtParallelTask*> doomed;
  loans->Plan(tasks, m_loans.get(), copy, doomed);
  tasks.swap(copy);
  m_loans.swap(loans);
  for (ZtParallelTask* task : doomed) delete task;
  return *this;
}

ZtParallelTasks::~ZtParallelTasks() { Clear(); }

void ZtParallelTasks::AddTask(ZtParallelTask* task) {
  if (tasks.size() >= tasks.max_size()) throw std::length_error("vector<T> too long");
  tasks.push_back(task);
  if (zt::detail::Loans::Holds(m_loans, task)) {
    // A borrowed task at this address was deleted by its owner and the address reused: the old
    // entries are stale, and the new task is this set's own.
    std::replace(tasks.begin(), tasks.end() - 1, task, static_cast<ZtParallelTask*>(nullptr));
    m_loans->Forget(task);
  }
}

ZtParallelTask* ZtParallelTasks::operator[](int i) const {
  return ZT_IN_CONTRACT(i >= 0 && static_cast<std::size_t>(i) < tasks.size(), "operator[]",
                        "ZtParallelTasks", "index", i)
             ? tasks[static_cast<std::size_t>(i)]
             : nullptr;
}

void ZtParallelTasks::Run() {
  // By index, re-reading the size each time: a task may add entries or clear the set.
  for (std::size_t i = 0; i < tasks.size(); ++i) {
    if (ZtParallelTask* task = tasks[i]) task->Execute();
  }
}

void ZtParallelTasks::Clear() {
  // By index, re-reading the size: a destructor may add tasks (deleted here too) or clear the
  // set (which ends this walk). Each entry is emptied before its task goes.
  for (std::size_t i = 0; i < tasks.size(); ++i) {
    ZtParallelTask* task = tasks[i];
    if (task == nullptr || zt::detail::Loans::Holds(m_loans, task)) continue;
    tasks[i] = nullptr;
    delete task;
  }
  tasks.clear();
  m_loans.reset();
}

int IsOS64() { return 1; }

int IsWow64() { return 0; }

bool CheckGpu() { return false; }
