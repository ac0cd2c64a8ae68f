// zt/containers/list_quene.h
//
// ZtListQuene<T>: the first-in, first-out queue of ZtQuene<T> kept in a ZtList<T>, optionally
// bounded. It is the usual hit queue handed to the find-all searches (ZtListQuene<ZtLong>).
// ZtPDListQuene<T>: the same queue of T* kept in a ZtPDList<T>, owning the queued objects.
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
//
// Ownership in ZtPDListQuene: a successful Push adopts the object (a refused one stays the
// caller's); GetHead, GetTail and operator[] lend the pointer; Pop hands the object to the
// caller; Clear and the destructor delete what is still queued.
#ifndef ZT_CONTAINERS_LIST_QUENE_H_
#define ZT_CONTAINERS_LIST_QUENE_H_

#include "zt/config.h"
#include "zt/containers/list.h"
#include "zt/containers/pdlist.h"
#include "zt/containers/quene.h"

namespace zt::detail {

/// The queue operations of both list queues over the list type L, whose elements are E.
template <class E, class L>
class ListQueneBody : public ZtQuene<E> {
 public:
  /// An empty queue holding at most `limit` elements (no bound when negative).
  explicit ListQueneBody(ZtLong limit) : m_limit(limit) {}
  virtual ~ListQueneBody() = default;

  void Clear() override { m_list.Reset(); }
  ZtLong GetCount() const override { return m_list.GetLength(); }
  E& operator[](ZtLong i) override { return m_list[i]; }
  bool GetHead(E& out) override {
    if (GetCount() == 0) return false;
    m_list.MoveToFirst();
    out = m_list.GetCurData();
    return true;
  }
  bool GetTail(E& out) override {
    if (GetCount() == 0) return false;
    m_list.MoveToLast();
    out = m_list.GetCurData();
    return true;
  }
  bool Push(E const& v) override {
    if (m_limit >= 0 && GetCount() >= m_limit) return false;
    m_list.Append(v);
    return true;
  }
  bool Pop(E& out) override {
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
  L m_list;
};

}  // namespace zt::detail

/// FIFO queue of values on a singly linked list; copies copy the values and the limit.
template <class T>
class ZtListQuene : public zt::detail::ListQueneBody<T, ZtList<T>> {
  using Body = zt::detail::ListQueneBody<T, ZtList<T>>;

 public:
  /// An unbounded queue.
  ZtListQuene() : Body(-1) {}
  /// A queue holding at most `limit` elements (no bound when negative).
  explicit ZtListQuene(ZtLong limit) : Body(limit) {}
};

/// FIFO queue owning the objects it holds; copies clone the objects.
template <class T>
class ZtPDListQuene : public zt::detail::ListQueneBody<T*, ZtPDList<T>> {
  using Body = zt::detail::ListQueneBody<T*, ZtPDList<T>>;

 public:
  /// An unbounded queue.
  ZtPDListQuene() : Body(-1) {}
  /// A queue holding at most `limit` elements (no bound when negative).
  explicit ZtPDListQuene(ZtLong limit) : Body(limit) {}
  /// Hands the head object to the caller: its place is emptied before the node goes.
  bool Pop(T*& out) override {
    if (!this->GetHead(out)) return false;
    this->m_list.SetCurData(nullptr);
    this->m_list.DelCur();
    return true;
  }
};

#endif  // ZT_CONTAINERS_LIST_QUENE_H_
