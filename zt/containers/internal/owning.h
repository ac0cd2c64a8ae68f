// zt/containers/internal/owning.h
//
// The members that every owning container (the owning array and the owning lists) shares, written
// once against the sequence interface of ZtDynArrayBase<T*>. Each owning class forwards its own
// members here, so the bodies exist once while every class keeps the members in its interface.
// Null elements are empty places; the ordering comparisons treat an empty place as belonging
// after every object, so out-of-contract nulls are never dereferenced.
#ifndef ZT_CONTAINERS_INTERNAL_OWNING_H_
#define ZT_CONTAINERS_INTERNAL_OWNING_H_

#include <cstdlib>
#include <type_traits>

#include "zt/checked.h"
#include "zt/config.h"
#include "zt/containers/dyn_array_base.h"
#include "zt/containers/internal/element_ops.h"
#include "zt/containers/internal/sequence_ops.h"
#include "zt/containers/quene.h"

namespace zt::detail::owning {

template <class T>
using Seq = ZtDynArrayBase<T*>;

template <class T>
bool IsCurEmpty(const Seq<T>& s) {
  return s.IsOut() || s.GetAt(s.GetCur()) == nullptr;
}

template <class T>
bool IsEmptyData(const Seq<T>& s, ZtLong i) {
  return !s.IsValidIndex(i) || s.GetAt(i) == nullptr;
}

template <class T>
ZtLong GetDataNum(const Seq<T>& s) {
  ZtLong n = 0;
  for (T* const* p = s.GetFirst(); p != nullptr; p = s.GetNext(p)) n += *p != nullptr ? 1 : 0;
  return n;
}

// The object behind an element, or a scratch object for an empty place. No scratch object can be
// made of an abstract T or one without a default constructor: an empty place stops the program
// there rather than hand out a reference to nothing. `op` and `at` (the index or cursor of the
// element) name the call in the checked build's report of an empty place.
template <class T>
T& Object(T* p, [[maybe_unused]] const char* op, [[maybe_unused]] const char* cls,
          [[maybe_unused]] ZtLong at) {
  if (ZT_IN_CONTRACT(p != nullptr, op, cls, "empty place", at)) return *p;
  if constexpr (std::is_default_constructible_v<T> && std::is_copy_assignable_v<T>) {
    return Sink<T>();
  } else {
    std::abort();
  }
}

// Deletes the object at the cursor and leaves an empty place. `cls` names the owning class in
// the checked build's reports, here and below.
template <class T>
void ReleaseCur(Seq<T>& s, [[maybe_unused]] const char* cls) {
  if (ZT_IN_CONTRACT(!s.IsOut(), "ReleaseCur", cls, "cursor", s.GetCur())) DeleteCurObject(s);
}

// Deletes every object through the container's own ReleaseCur; the cursor ends out.
template <class Owning>
void ReleaseAll(Owning& s) {
  for (s.MoveToFirst(); !s.IsOut(); s.MoveToNext()) {
    // The container's own ReleaseCur, also while it is built or destroyed.
    s.ReleaseCur();  // NOLINT(clang-analyzer-optin.cplusplus.VirtualCall)
  }
}

// The copy constructors' step: `dst`, built empty, receives clones of src's objects. When that
// throws, dst deletes the clones it already holds, since its destructor will not run.
template <class Owning>
void CopyConstruct(Owning& dst, const Owning& src) {
  try {
    dst.DeepCopy(src);
  } catch (...) {
    dst.ReleaseAll();
    throw;
  }
}

// Hands the object at the cursor to the caller and removes its element through the container's
// DelCur, which finds an empty place and deletes nothing. Null when the cursor is out.
template <class T>
T* TakeOffListCur(Seq<T>& s) {
  if (s.IsOut()) return nullptr;
  T* p = s.GetCurData();
  s.SetCurData(nullptr);
  s.DelCur();
  return p;
}

// Stores p in the first empty place, appending one when there is none; returns its index with
// the cursor on it.
template <class T>
ZtLong PlaceIn(Seq<T>& s, T* p) {
  const ZtLong cur = s.GetCur();
  s.MoveToFirst();
  while (!IsCurEmpty(s)) s.MoveToNext();
  if (!s.IsOut()) {
    s.SetCurData(p);
    return s.GetCur();
  }
  try {
    return s.Append(p);
  } catch (...) {
    s.MoveTo(cur);  // a failed growth leaves the container as it was, cursor included
    throw;
  }
}

template <class T>
ZtLong ClampTo(const Seq<T>& s, ZtLong to) {
  return to < 0 || to >= s.GetLength() ? s.GetLength() - 1 : to;
}

// Calls hit(i) for every index in [from, to] whose element is non-null and equal to v; stops at
// the first hit for which hit returns false. Returns the index it stopped at, or -1.
template <class T, class Hit>
ZtLong WalkEqual(const Seq<T>& s, const T& v, ZtLong from, ZtLong to, Hit hit,
                 [[maybe_unused]] const char* cls) {
  to = ClampTo(s, to);
  // A `from` past the end lies beyond the clamped `to`: only a negative one is outside.
  if (!ZT_IN_CONTRACT(from >= 0, "FindData", cls, "index", from) || !s.IsValidIndex(from)) {
    return -1;
  }
  ZtLong i = from;
  for (T* const* p = &s.GetAt(from); p != nullptr && i <= to; p = s.GetNext(p), ++i) {
    if (*p != nullptr && **p == v && !hit(i)) return i;
  }
  return -1;
}

template <class T>
ZtLong FindData(const Seq<T>& s, const T& v, ZtLong from, ZtLong to, const char* cls) {
  return WalkEqual(
      s, v, from, to, [](ZtLong) { return false; }, cls);
}

template <class T>
ZtLong FindData(const Seq<T>& s, const T& v, ZtQuene<ZtLong>& hits, ZtLong from, ZtLong to,
                const char* cls) {
  WalkEqual(
      s, v, from, to,
      [&hits](ZtLong i) {
        hits.Push(i);
        return true;
      },
      cls);
  return hits.GetCount();
}

// Deletes every object equal to v and removes its element; returns how many.
template <class T>
ZtLong FindDataDel(Seq<T>& s, const T& v) {
  ZtLong count = 0;
  for (s.MoveToFirst(); !s.IsOut(); s.MoveToNext()) {
    T* p = s.GetCurData();
    if (p != nullptr && *p == v) {
      s.DelCur();
      ++count;
    }
  }
  return count;
}

// Deletes the object of the first element holding pointer p and removes the element; the
// cursor does not move when p is absent.
template <class T>
ZtLong FindDel(Seq<T>& s, T* p) {
  const ZtLong i = s.Find(p, 0, -1);
  if (i == -1) return 0;
  s.Del(i);
  return 1;
}

// The same by a cursor walk from the first element, which ends out when p is absent.
template <class T>
ZtLong FindDelWalk(Seq<T>& s, T* p) {
  for (s.MoveToFirst(); !s.IsOut(); s.MoveToNext()) {
    if (s.GetCurData() == p) {
      s.DelCur();
      return 1;
    }
  }
  return 0;
}

// Cursor walk from `from` to the first non-null element in [from, to] whose object equals v:
// true with the cursor on it, false when the walk leaves the range or the sequence.
template <class T>
bool FindDataTo(Seq<T>& s, const T& v, ZtLong from, ZtLong to) {
  to = ClampTo(s, to);
  for (s.MoveTo(from); !s.IsOut() && s.GetCur() <= to; s.MoveToNext()) {
    T* p = s.GetCurData();
    if (p != nullptr && *p == v) return true;
  }
  return false;
}

// The sequence's Move for owned pointers: the pointer is inserted at its new place first, then
// its old place is emptied and removed, so nothing is deleted. A failed insertion changes
// nothing but the cursor, which it restores.
template <class T>
bool Move(Seq<T>& s, ZtLong from, ZtLong to, const char* cls) {
  if (!MovesWithin(s, from, to, cls)) return false;
  if (from == to || from == to - 1) return false;
  s.Insert(to, s.GetAt(from));
  const ZtLong old = from > to ? from + 1 : from;
  s.MoveTo(old);
  s.SetCurData(nullptr);
  s.DelCur();
  s.MoveTo(from > to ? to : to - 1);
  return true;
}

// Orderings of a value against an element by object; an empty place sorts after everything.
template <class T>
auto ValueAfter(const T& v) {
  return [&v](T* e) { return e != nullptr && Greater(v, *e); };
}
template <class T>
auto ValueBefore(const T& v) {
  return [&v](T* e) { return e == nullptr || Less(v, *e); };
}

template <class T>
ZtLong BFindData(const Seq<T>& s, const T& v, ZtLong from, ZtLong to,
                 [[maybe_unused]] const char* cls) {
  ZT_REPORT_UNLESS(from >= 0, "BFindData", cls, "index", from);
  return BinarySearch(
      s.GetLength(), from, to, [&s](ZtLong i) { return s.GetAt(i); }, ValueAfter(v),
      ValueBefore(v));
}

template <class T>
bool BFindDataTo(Seq<T>& s, const T& v, ZtLong from, ZtLong to, [[maybe_unused]] const char* cls) {
  ZT_REPORT_UNLESS(s.IsEmpty() || s.IsValidIndex(from), "BFindDataTo", cls, "index", from);
  return BisectCursor(s, from, to, ValueAfter(v), ValueBefore(v));
}

// Two objects compared as equal, the way each family asks: the owning array tests !=, the owning
// lists ==. A client whose T defines the two inconsistently sees its own operator.
template <class T>
bool NotUnequal(const T& a, const T& b) {
  return !(a != b);
}
template <class T>
bool EqualObjects(const T& a, const T& b) {
  return a == b;
}

// Inserts p at its sorted place by object; with an equal object (`same`) present it goes behind
// the equal run when `dup`, or is refused (false, the caller keeps p). Adopts p on true.
template <class T, class Same>
bool SortInto(Seq<T>& s, T* p, bool dup, Same same) {
  if (p == nullptr) return false;
  const bool found = BisectCursor(s, 0, -1, ValueAfter(*p), ValueBefore(*p));
  return InsertSorted(s, p, found, dup, [p, same](T* e) { return e != nullptr && same(*e, *p); });
}

// Element-wise equality by object (`same`): two empty places are equal, one empty place is not.
template <class T, class Same>
bool Equal(const Seq<T>& a, const Seq<T>& b, Same same) {
  if (a.GetLength() != b.GetLength()) return false;
  T* const* q = b.GetFirst();
  for (T* const* p = a.GetFirst(); p != nullptr && q != nullptr;
       p = a.GetNext(p), q = b.GetNext(q)) {
    if ((*p == nullptr) != (*q == nullptr)) return false;
    if (*p != nullptr && !same(**p, **q)) return false;
  }
  return true;
}

// "a must come after b" for the null-safe object sorts: empty places gather at the end.
template <class T>
auto ObjectAfter(bool ascending) {
  return [ascending](T* a, T* b) {
    if (b == nullptr) return false;
    if (a == nullptr) return true;
    return ascending ? Greater(*a, *b) : Less(*a, *b);
  };
}

template <class T>
auto ObjectAfter(int (*cmp)(const T&, const T&)) {
  return [cmp](T* a, T* b) {
    if (b == nullptr) return false;
    if (a == nullptr) return true;
    return cmp(*a, *b) > 0;
  };
}

}  // namespace zt::detail::owning

#endif  // ZT_CONTAINERS_INTERNAL_OWNING_H_
