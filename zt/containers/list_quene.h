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

// The head (or the tail) of `list` copied into `out`; false, `out` untouched, when it is empty.
// Moves the list's cursor there.
template <class L, class E>
bool QueneEnd(L& list, E& out, bool head) {
  if (list.GetLength() == 0) return false;
  if (head) {
    list.MoveToFirst();
  } else {
    list.MoveToLast();
  }
  out = list.GetCurData();
  return true;
}

// Appends v unless `limit` (when not negative) elements are queued already.
template <class L, class E>
bool QuenePush(L& list, ZtLong limit, const E& v) {
  if (limit >= 0 && list.GetLength() >= limit) return false;
  list.Append(v);
  return true;
}

}  // namespace zt::detail

// The members both list queues share, over the element type `Element` and the list type `List`
// (type aliases in the class). Comments inside a macro must be block comments.
#define ZT_DETAIL_LIST_QUENE_MEMBERS(Class)                                                  \
 public:                                                                                     \
  /* An unbounded queue. */                                                                  \
  Class() = default;                                                                         \
  /* A queue holding at most `limit` elements (no bound when negative). */                   \
  explicit Class(ZtLong limit) : m_limit(limit) {}                                           \
  virtual ~Class() = default;                                                                \
                                                                                             \
  void Clear() override { m_list.Reset(); }                                                  \
  ZtLong GetCount() const override { return m_list.GetLength(); }                            \
  Element& operator[](ZtLong i) override { return m_list[i]; }                               \
  bool GetHead(Element& out) override { return zt::detail::QueneEnd(m_list, out, true); }    \
  bool GetTail(Element& out) override { return zt::detail::QueneEnd(m_list, out, false); }   \
  bool Push(const Element& v) override { return zt::detail::QuenePush(m_list, m_limit, v); } \
                                                                                             \
  /* The most elements Push accepts; negative means unbounded. */                            \
  ZtLong GetLimit() const { return m_limit; }                                                \
  /* Affects later pushes only: elements already queued beyond a new limit stay. */          \
  void SetLimit(ZtLong limit) { m_limit = limit; }                                           \
                                                                                             \
 protected:                                                                                  \
  ZtLong m_limit = -1;                                                                       \
  List m_list;                                                                               \
                                                                                             \
 public:

/// FIFO queue of values on a singly linked list; copies copy the values and the limit.
template <class T>
class ZtListQuene : public ZtQuene<T> {
  using Element = T;
  using List = ZtList<T>;
  ZT_DETAIL_LIST_QUENE_MEMBERS(ZtListQuene)
  bool Pop(T& out) override {
    if (!GetHead(out)) return false;
    m_list.DelCur();
    return true;
  }
};

/// FIFO queue owning the objects it holds; copies clone the objects.
template <class T>
class ZtPDListQuene : public ZtQuene<T*> {
  using Element = T*;
  using List = ZtPDList<T>;
  ZT_DETAIL_LIST_QUENE_MEMBERS(ZtPDListQuene)
  /// Hands the head object to the caller: its place is emptied before the node goes.
  bool Pop(T*& out) override {
    if (GetCount() == 0) return false;
    out = m_list.TakeOffHead();
    return true;
  }
};

#endif  // ZT_CONTAINERS_LIST_QUENE_H_
