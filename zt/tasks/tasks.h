// zt/tasks/tasks.h
//
// ZtParallelTask: a unit of work (override Execute). ZtParallelTasks: an ordered set of tasks that
// it owns and runs. Despite the names nothing runs in parallel: Start, run and Run execute the work
// at once on the caller's thread, and Wait returns at once. No thread, no lock.
//
//   ZtParallelTasks set;
//   set.AddTask(new SaveTask);  set.Run();   // Execute() of each task, in order
//
// Ownership: a task added to a set belongs to it and is deleted (through the virtual destructor)
// by Clear and by the set's destructor; never add one task twice. Clear walks the entries from
// the first, empties each entry and deletes its task, and then empties the set, so a task's
// destructor sees the set at its full length (its own entry and those before it null).
//
// Copies: copying a set copies the pointers, never the tasks, and a copy owns only the tasks
// added to it later. The tasks it received stay with its source: Clear, assignment and the
// copy's destructor forget them without deleting them. An assigned set keeps owning those of its
// own tasks that it receives again. So a shared task is deleted once, by the set it was added
// to; once that set has deleted it, the copy must not run it (it may still be cleared, assigned
// or destroyed). Each set keeps this record itself: sets used by different threads share no
// state, even when one was copied from the other before.
//
// Null entries are skipped by Run and Clear. Execute may add tasks to or clear the set that is
// running it: Run then goes on with whatever entries follow the current position. Clearing
// deletes the running task as well, so its Execute must not touch its own object afterwards.
//
// IsOS64, IsWow64 and CheckGpu answer 1, 0 and false for the library's 64-bit build.
#ifndef ZT_TASKS_TASKS_H_
#define ZT_TASKS_TASKS_H_

#include <memory>
#include <vector>

#include "zt/config.h"

namespace zt::detail {
class Loans;
}  // namespace zt::detail

/// An abstract unit of work, run on the caller's thread.
class ZT_API ZtParallelTask {
 public:
  ZtParallelTask() = default;
  ZtParallelTask(const ZtParallelTask&) = default;
  ZtParallelTask& operator=(const ZtParallelTask&) = default;
  /// Calls Execute() once.
  virtual void run();
  /// The work; the client overrides it.
  virtual void Execute() = 0;
  /// Virtual so that a set deleting a task runs the client's destructor.
  virtual ~ZtParallelTask();

  /// Calls Execute() once, directly (not through run), and returns true when it comes back.
  bool Start();
  /// Returns at once: the work is already done.
  void Wait() {}
};

/// An ordered set of owned tasks, run one after another on the caller's thread.
class ZT_API ZtParallelTasks {
 public:
  ZtParallelTasks();
  /// A set holding src's tasks without owning them (see the file comment).
  ZtParallelTasks(const ZtParallelTasks& src);
  /// Holds src's entries instead of its own: deletes the tasks it owns that src does not hold,
  /// and borrows those of src's tasks that it does not own.
  ZtParallelTasks& operator=(const ZtParallelTasks& src);
  virtual ~ZtParallelTasks();

  /// Appends `task` and takes ownership of it. Throws std::length_error("vector<T> too long")
  /// when the vector cannot grow (its max_size), std::bad_alloc when memory runs out; the set is
  /// then unchanged.
  void AddTask(ZtParallelTask* task);
  int GetLength() const { return static_cast<int>(tasks.size()); }
  /// The entry at i, or null when i is outside [0, GetLength()) (reported by the checked build).
  ZtParallelTask* operator[](int i) const;
  /// Calls Execute() of every entry in order, skipping null entries. An exception from a task
  /// leaves Run at once; the later tasks do not run.
  void Run();
  /// Deletes every task the set owns, first to last, then empties the set.
  void Clear();

 protected:
  std::vector<ZtParallelTask*> tasks;

 private:
  std::unique_ptr<zt::detail::Loans> m_loans;  ///< tasks received by copying: not owned
};

/// 1: the system is 64-bit.
ZT_API int IsOS64();
/// 0: the process is not a 32-bit process on a 64-bit system.
ZT_API int IsWow64();
/// false: no graphics processor is used for computation.
ZT_API bool CheckGpu();

#endif  // ZT_TASKS_TASKS_H_
