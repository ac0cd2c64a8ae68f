// zt/containers/list_quene.h
//
// ZtListQuene<T>: the first-in, first-out queue of ZtQuene<T> kept in a ZtList<T>, optionally
// bounded. It is the usual hit queue handed to the find-all searches (ZtListQuene<ZtLong>).
//
//   ZtListQuene<ZtLong> hits;
//   a.Find(x, hits, 0, -1);    // hits.Pop(i) yields the matching indices, lowest first
//
// Push appends at the list's tail; Pop, GetHead and operator[](0) read its head. A limit of n
// makes Push refuse (return false, adding nothing) once n elements are queued; a negative limit,
// the default, never refuses. GetHead, GetTail, Pop and operator[] move the list's cursor, which
// the queue never relies on. operator[] is the list's growing subscript: an index at or past the
// end appends elements of value T(). When Push cannot allocate, std::bad_alloc propagates and the
// queue is unchanged.
#ifndef ZT_CONTAINERS_LIST_QUENE_H_
#define ZT_CONTAINERS_LIST_QUENE_H_

#include "zt/config.h"
#include "zt/containers/list.h"
#include "zt/containers/quene.h"

/// FIFO queue of values on a singly linked list; copies copy the values and the limit.
template <class T>
class ZtListQuene : public ZtQuene<T> {
 public:
  /// An empty queue holding at most `limit` elements (no bound when negative).
  explicit ZtListQuene(ZtLong limit = -1) : m_limit(limit) {}
  virtual ~ZtListQuene() = default;
  ZtListQuene(const ZtListQuene&) = default;
  ZtListQuene& operator=(const ZtListQuene&) = default;

  void Clear() override { m_list.Reset(); }
  ZtLong GetCount() const override { return m_list.GetLength(); }
  T& operator[](ZtLong i) override { return m_list[i]; }
  bool GetHead(T& out) override {
    if (GetCount() == 0) return false;
    m_list.MoveToFirst();
    out = m_list.GetCurData();
    return true;
  }
  bool GetTail(T& out) override {
    if (GetCount() == 0) return false;
    m_list.MoveToLast();
    out = m_list.GetCurData();
    return true;
  }
  bool Push(const T& v) override {
    if (m_limit >= 0 && GetCount() >= m_limit) return false;
    m_list.Append(v);
    return true;
  }
  bool Pop(T& out) override {
    if (!GetHead(out)) return false;
    m_list.DelCur();
    return true;
  }

  /// The most elements Push accepts; negative means unbounded.
  ZtLong GetLimit() const { return m_limit; }
  /// Affects later pushes only: elements already queued beyond a new limit stay.
  void SetLimit(ZtLong limit) { m_limit = limit; }

 protected:
  ZtLong m_limit;
  ZtList<T> m_list;
};

extern template class ZT_API ZtListQuene<ZtLong>;

#endif  // ZT_CONTAINERS_LIST_QUENE_H_
