// zt/containers/internal/loans.h
//
// Internal: the objects that an owner of heap objects (a graph, a task set) holds without owning
// them because it received them by being copied. Nothing here is part of the interface.
//
// A copy lists its source's objects but owns only what is added to it later: it keeps the
// received objects as loans, and whatever would destroy one of them (a deletion, a clear, its
// destructor) forgets it instead. Each owner keeps its own loans; two owners never share this
// record, so owners used by different threads never meet here.
#ifndef ZT_CONTAINERS_INTERNAL_LOANS_H_
#define ZT_CONTAINERS_INTERNAL_LOANS_H_

#include <memory>
#include <unordered_set>
#include <vector>

namespace zt::detail {

/// A set of object addresses held on loan.
class Loans {
 public:
  bool Has(const void* p) const { return m_objects.count(p) != 0; }
  void Add(const void* p) { m_objects.insert(p); }
  void Forget(const void* p) { m_objects.erase(p); }

  /// True when `loans` (possibly null) holds p.
  static bool Holds(const std::unique_ptr<Loans>& loans, const void* p) {
    return loans != nullptr && loans->Has(p);
  }

  /// Plans an assignment: the owner holds `held` with the loans `before` (null: none) and will
  /// hold `incoming` instead. Every incoming object it does not own becomes a loan here; what it
  /// owns and will no longer hold is appended to `doomed`, for the caller to destroy. Null
  /// entries are skipped. Throws std::bad_alloc before anything is decided elsewhere.
  template <class T>
  void Plan(const std::vector<T*>& held, const Loans* before, const std::vector<T*>& incoming,
            std::vector<T*>& doomed) {
    std::unordered_set<const void*> owned;
    for (T* p : held) {
      if (p != nullptr && (before == nullptr || !before->Has(p))) owned.insert(p);
    }
    const std::unordered_set<const void*> kept(incoming.begin(), incoming.end());
    for (T* p : incoming) {
      if (p != nullptr && owned.count(p) == 0) Add(p);
    }
    for (T* p : held) {
      if (kept.count(p) == 0 && owned.erase(p) != 0) doomed.push_back(p);  // once each
    }
  }

 private:
  std::unordered_set<const void*> m_objects;
};

}  // namespace zt::detail

#endif  // ZT_CONTAINERS_INTERNAL_LOANS_H_
