// tests/support/keyed.h
//
// Keyed: an element ordered by its key alone and tagged with its arrival, so that a sort's
// stability shows in the order of the tags; with a comparator that counts its calls.
#ifndef ZT_TESTS_SUPPORT_KEYED_H_
#define ZT_TESTS_SUPPORT_KEYED_H_

#include <vector>

#include "zt/containers/dyn_array_base.h"

namespace zt::test {

struct Keyed {
  int key = 0;
  int tag = 0;
  bool operator<(const Keyed& o) const { return key < o.key; }
  bool operator>(const Keyed& o) const { return key > o.key; }
};

/// Calls of CountingByKey so far; tests reset it.
inline long g_keyComparisons = 0;

inline int CountingByKey(const Keyed& a, const Keyed& b) {
  ++g_keyComparisons;
  return a.key - b.key;
}

/// The tags of a sequence in index order.
inline std::vector<int> Tags(const ZtDynArrayBase<Keyed>& s) {
  std::vector<int> tags;
  for (const Keyed* p = s.GetFirst(); p != nullptr; p = s.GetNext(p)) tags.push_back(p->tag);
  return tags;
}

}  // namespace zt::test

#endif  // ZT_TESTS_SUPPORT_KEYED_H_
