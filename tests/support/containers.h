// tests/support/containers.h
//
// Helpers for container tests: building a sequence from a list of values, reading it back, a
// reader for hit queues, and the state snapshots the strong-guarantee checks compare.
#ifndef ZT_TESTS_SUPPORT_CONTAINERS_H_
#define ZT_TESTS_SUPPORT_CONTAINERS_H_

#include <gtest/gtest.h>

#include <initializer_list>
#include <tuple>
#include <utility>
#include <vector>

#include "zt/containers/array.h"
#include "zt/containers/dyn_array.h"
#include "zt/containers/dyn_array_base.h"
#include "zt/containers/list_quene.h"
#include "zt/containers/quene.h"

namespace zt::test {

/// The elements of a sequence, read by address (the cursor does not move).
template <class T>
std::vector<T> Values(const ZtDynArrayBase<T>& s) {
  std::vector<T> out;
  out.reserve(static_cast<std::size_t>(s.GetLength()));
  for (const T* p = s.GetFirst(); p != nullptr; p = s.GetNext(p)) out.push_back(*p);
  return out;
}

/// The elements in index order, collected from the last to the first with GetLast/GetPre: equal
/// to Values(s) exactly when a doubly linked list's back links mirror its next links.
template <class T>
std::vector<T> BackwardValues(const ZtDynArrayBase<T>& s) {
  std::vector<T> out;
  for (const T* p = s.GetLast(); p != nullptr; p = s.GetPre(p)) out.insert(out.begin(), *p);
  return out;
}

/// The elements read one by one with MoveTo(i) and GetCurData: on a grouped list, through its
/// index. The cursor moves.
template <class T>
std::vector<T> PositionalValues(ZtDynArrayBase<T>& s) {
  std::vector<T> out;
  out.reserve(static_cast<std::size_t>(s.GetLength()));
  for (ZtLong i = 0; i < s.GetLength(); ++i) {
    s.MoveTo(i);
    out.push_back(s.GetCurData());
  }
  return out;
}

template <class T>
std::vector<T> Values(const ZtArray<T>& a) {
  const T* data = a.GetDataBuffer();
  return std::vector<T>(data, data + a.GetLength());
}

/// Appends each value; returns the sequence for chaining into assertions.
template <class Seq, class T>
Seq& Fill(Seq& s, std::initializer_list<T> values) {
  for (const T& v : values) s.Append(v);
  return s;
}

/// The queued indices of a hit queue, head first.
inline std::vector<ZtLong> Items(ZtQuene<ZtLong>& q) {
  std::vector<ZtLong> out(static_cast<std::size_t>(q.GetCount()));
  for (std::size_t i = 0; i < out.size(); ++i) out[i] = q[static_cast<ZtLong>(i)];
  return out;
}

/// Everything observable about a dynamic array: length, capacity, cursor, unit, buffer, contents.
template <class T>
auto DynArrayState(const ZtDynArray<T>& a) {
  return std::make_tuple(a.GetLength(), a.GetSpaceSize(), a.GetCur(), a.GetAllocUnit(),
                         static_cast<const void*>(a.GetFirst()), Values(a));
}

/// Everything observable about a fixed array: buffer and contents.
template <class T>
auto ArrayState(const ZtArray<T>& a) {
  return std::make_tuple(static_cast<const void*>(a.GetDataBuffer()), Values(a));
}

/// Two integers as one comparable value, whatever their types (ZtLong is long on Windows, int
/// elsewhere), so that EXPECT_EQ(Both(x.GetCur(), x.GetLength()), Both(3, 5)) compiles everywhere.
template <class A, class B>
std::pair<long long, long long> Both(A a, B b) {
  return {static_cast<long long>(a), static_cast<long long>(b)};
}

/// A grouped list (ZtXList or ZtPXList) whose index the tests can read.
template <class L>
class IndexProbe : public L {
 public:
  using L::L;
  ZtLong GroupSize() const { return this->m_groupSize; }
  std::vector<const void*> Index() const {
    std::vector<const void*> entries;
    entries.reserve(static_cast<std::size_t>(this->m_groupIndex.GetLength()));
    for (ZtLong k = 0; k < this->m_groupIndex.GetLength(); ++k) {
      entries.push_back(this->m_groupIndex.GetAt(k));
    }
    return entries;
  }
};

/// Checks that the index holds exactly the node a walk from the head reaches at every group
/// start, that MoveTo(i) lands on the walked-to node for every i, and that the back links agree.
template <class L>
void ExpectIndexExact(IndexProbe<L>& l) {
  const ZtLong size = l.GroupSize();
  std::vector<const void*> starts;
  ZtLong i = 0;
  for (auto* p = l.GetFirst(); p != nullptr; p = l.GetNext(p), ++i) {
    if (i % size == 0) starts.push_back(p);  // a node's address is its data's
    l.MoveTo(i);
    ASSERT_EQ(&l.GetCurData(), p) << "MoveTo(" << i << ")";
  }
  EXPECT_EQ(l.Index(), starts);
  EXPECT_EQ(BackwardValues(l), Values(l));
}

}  // namespace zt::test

#endif  // ZT_TESTS_SUPPORT_CONTAINERS_H_
