#include "zt/tasks/tasks.h"

#include <climits>
#include <stdexcept>
#include <unordered_map>
#include <utility>

void ZtParallelTask::run() { Execute(); }

ZtParallelTask::~ZtParallelTask() = default;

bool ZtParallelTask::Start() {
  Execute();
  return true;
}

namespace {

// How many more sets hold a task beyond the first, for the tasks shared by copying a set. The
// table exists only while some task is shared: built by the first share, freed when the last
// share ends. No static object is involved, so sets that are clients' static objects share and
// let go correctly whenever they are built or destroyed. The pointer is constant-initialised.
using ShareTable = std::unordered_map<const ZtParallelTask*, std::size_t>;
ShareTable* g_shares = nullptr;

void FreeTableIfUnused() {
  if (g_shares != nullptr && g_shares->empty()) {
    delete g_shares;
    g_shares = nullptr;
  }
}

void Share(const ZtParallelTask* task) {
  if (g_shares == nullptr) g_shares = new ShareTable;
  try {
    ++(*g_shares)[task];
  } catch (...) {
    FreeTableIfUnused();
    throw;
  }
}

// Drops one owner of `task`; deletes it when that was the last one.
void LetGo(ZtParallelTask* task) {
  if (task == nullptr) return;
  if (g_shares != nullptr) {
    const auto it = g_shares->find(task);
    if (it != g_shares->end()) {
      if (--it->second == 0) g_shares->erase(it);
      FreeTableIfUnused();
      return;
    }
  }
  delete task;
}

}  // namespace

ZtParallelTasks::ZtParallelTasks(const ZtParallelTasks& src) { *this = src; }

ZtParallelTasks& ZtParallelTasks::operator=(const ZtParallelTasks& src) {
  if (this == &src) return *this;
  std::vector<ZtParallelTask*> copy(src.tasks);
  std::size_t shared = 0;
  try {
    for (; shared < copy.size(); ++shared) {
      if (copy[shared] != nullptr) Share(copy[shared]);
    }
  } catch (...) {
    while (shared-- > 0) LetGo(copy[shared]);  // src still holds each: nothing is deleted
    throw;
  }
  Clear();
  tasks.swap(copy);
  return *this;
}

ZtParallelTasks::~ZtParallelTasks() { Clear(); }

void ZtParallelTasks::AddTask(ZtParallelTask* task) {
  // GetLength answers an int, so the set stops there.
  if (tasks.size() >= static_cast<std::size_t>(INT_MAX) || tasks.size() >= tasks.max_size()) {
    throw std::length_error("vector<T> too long");
  }
  tasks.push_back(task);
}

ZtParallelTask* ZtParallelTasks::operator[](int i) const {
  return i >= 0 && static_cast<std::size_t>(i) < tasks.size() ? tasks[static_cast<std::size_t>(i)]
                                                              : nullptr;
}

void ZtParallelTasks::Run() {
  // By index, re-reading the size each time: a task may add entries or clear the set.
  for (std::size_t i = 0; i < tasks.size(); ++i) {
    if (ZtParallelTask* task = tasks[i]) task->Execute();
  }
}

void ZtParallelTasks::Clear() {
  // Take the entries out first, so that a task's destructor that touches the set sees it empty.
  std::vector<ZtParallelTask*> doomed;
  doomed.swap(tasks);
  for (ZtParallelTask* task : doomed) LetGo(task);
}

int IsOS64() { return 1; }

int IsWow64() { return 0; }

bool CheckGpu() { return false; }
