// zt/containers/dyn_array_base.h
//
// ZtDynArrayBase<T>: the abstract cursor sequence that every growable container implements, and
// the algorithms written once against it (searches, binary search, sorted insertion, reversal,
// slicing, copying, comparison).
//
// A sequence is m_length values indexed from 0 plus one built-in cursor m_cur. The cursor is a
// plain index that the base never clamps: -1 stands before the first element; on an array the
// cursor after the last element is m_length (a list wraps it to -1). Iterate with
//
//   for (s.MoveToFirst(); !s.IsOut(); s.MoveToNext()) use(s.GetCurData());
//
// DelCur() leaves the cursor on the element before the removed one, so deleting inside that loop
// works. Insertions leave the cursor on the new element. The const algorithms (Find, BFind, Left,
// Right, Mid, ==) walk by address and never move the cursor; the others move it as documented.
//
//   ZtDynArray<int> a;
//   a << 1 << 3 << 5;              // [1, 3, 5], cursor on 2
//   a.SortInto(4, false);          // [1, 3, 4, 5], cursor on the new 4
//
// Ranges: `from` and `to` are inclusive; `to == -1` always means the last index and each search
// says which other values it clamps. Ordering comparisons treat char as signed, wchar_t as
// unsigned and pointers as unsigned addresses; other types use their own ==, !=, < and >.
//
// The binary searches and SortInto assume a range sorted by a consistent order. On any other
// range they still end (every probe narrows the range) and SortInto inserts v exactly once; the
// searches' answers and the insertion point are then unspecified.
//
// Out-of-contract calls never touch memory outside the storage: reading the element at an out
// cursor or invalid index yields a scratch default value, writing it is lost, and edits at an
// invalid place (negative indices to Insert, Del, Exchange, Move, Reverse) are ignored. The
// checked build reports them, and a Left/Right/Mid or BFindTo outside the sequence (zt/checked.h).
// Allocation failure propagates as std::bad_alloc from the container that grows.
//
// Copying between two owning containers (DeepCopy, operator<<, Left/Right/Mid) clones the objects
// through ZtCloner (zt/containers/clone.h); between any other pair it copies the elements. A copy
// that overwrites an owning container (DeepCopy, Left/Right/Mid) deletes its objects first.
//
// When an element's copy or assignment throws, the exception passes on and the sequence stays
// valid, holding no element that no copy produced: DeepCopy and Left/Right/Mid leave their target
// empty, operator<< leaves this sequence's elements and cursor as they were, and the insertions
// (Insert, InsertHead, Append and those built on them) leave them as the container's InsertCur
// does: as they were, on every container of this library.
#ifndef ZT_CONTAINERS_DYN_ARRAY_BASE_H_
#define ZT_CONTAINERS_DYN_ARRAY_BASE_H_

#include <algorithm>
#include <cstdint>
#include <memory>
#include <typeinfo>

#include "zt/checked.h"
#include "zt/config.h"
#include "zt/containers/clone.h"
#include "zt/containers/internal/element_ops.h"
#include "zt/containers/internal/sequence_ops.h"
#include "zt/containers/quene.h"

template <class T>
class ZtArray;
template <class T>
class ZtDynArray;
template <class T>
class ZtDynArrayBase;

namespace zt::detail {

// The elements of `s` as one block, or null. Only an object whose dynamic type is exactly
// ZtDynArray<T> qualifies: its storage is contiguous and no derived class has replaced the slots
// that the generic walks call, so reading the block gives what those walks would. The searches
// use it to skip a virtual call per element.
template <class T>
const T* ContiguousElements(const ZtDynArrayBase<T>& s) {
  if (typeid(s) == typeid(ZtDynArray<T>)) {
    return static_cast<const ZtDynArray<T>&>(s).ZtDynArray<T>::GetFirst();
  }
  return nullptr;
}

}  // namespace zt::detail

/// Abstract cursor sequence: m_length elements and one cursor, behind a 25-slot virtual interface.
/// Derived containers keep m_length and m_cur current; everything here relies only on the slots.
template <class T>
class ZtDynArrayBase {
 public:
  ZtDynArrayBase() = default;
  /// Copies the two counters only; derived classes copy the elements through DeepCopy.
  ZtDynArrayBase(const ZtDynArrayBase&) = default;
  ZtDynArrayBase& operator=(const ZtDynArrayBase&) = default;

  // ---- The virtual interface, in slot order -------------------------------------------------

  /// Makes the length n. Growing keeps the elements and leaves the new tail unspecified;
  /// shrinking drops the tail on an array (a list ignores it). The cursor does not move.
  virtual void ReAllocate(ZtLong n) = 0;
  virtual ~ZtDynArrayBase() = default;
  /// Makes the length exactly n; with `keep` the first min(n, old length) elements survive,
  /// without it no value is guaranteed. The cursor does not move.
  virtual void SetLength(ZtLong n, bool keep) = 0;
  /// Empties the sequence; the cursor becomes -1.
  virtual void Reset();
  /// The element at the cursor (a scratch value when the cursor is out).
  virtual T& GetCurData() = 0;
  /// Assigns the element at the cursor; ignored when the cursor is out.
  virtual void SetCurData(const T& v) = 0;
  virtual void MoveToFirst() { m_cur = 0; }
  virtual void MoveToNext() { m_cur = m_cur + 1; }
  virtual void MoveToPre() { m_cur = m_cur - 1; }
  virtual void MoveToLast() { m_cur = m_length - 1; }
  /// Puts the cursor on i, unchecked.
  virtual void MoveTo(ZtLong i) { m_cur = i; }
  /// Element i, growing the sequence to i + 1 elements when i is past the end (the new tail is
  /// unspecified). Leaves the cursor on i.
  virtual T& operator[](ZtLong i);
  /// Address of the first element, or null when empty.
  virtual const T* GetFirst() const = 0;
  /// Address of the element after *p; null when p is null or the last element.
  virtual const T* GetNext(const T* p) const = 0;
  /// Address of the element before *p; null when p is null or the first element.
  virtual const T* GetPre(const T* p) const = 0;
  /// Address of the last element, or null when empty.
  virtual const T* GetLast() const = 0;
  /// Element i without moving the cursor (a scratch value when i is not a valid index).
  virtual const T& GetAt(ZtLong i) const = 0;
  /// Inserts v at the cursor's index; what stood there moves up. The cursor names the new
  /// element. On an array a cursor at m_length appends.
  virtual void InsertCur(const T& v) = 0;
  /// v becomes element i (MoveTo(i), InsertCur(v)); cursor on it. When the insertion throws, the
  /// cursor is restored.
  virtual void Insert(ZtLong i, const T& v) {
    const ZtLong cur = m_cur;
    MoveTo(i);
    InsertOrRestore(cur, v);
  }
  /// v becomes element 0 (MoveToFirst(), InsertCur(v)); cursor on it. When the insertion throws,
  /// the cursor is restored.
  virtual void InsertHead(const T& v) {
    const ZtLong cur = m_cur;
    MoveToFirst();
    InsertOrRestore(cur, v);
  }
  /// v becomes the last element (MoveTo(length), InsertCur(v)); returns its index and leaves the
  /// cursor on it. When the insertion throws, the cursor is restored.
  virtual ZtLong Append(const T& v) {
    const ZtLong cur = m_cur;
    MoveTo(m_length);
    InsertOrRestore(cur, v);
    return m_cur;
  }
  /// Removes the element at the cursor; the cursor moves to the element before it (-1 after
  /// removing element 0). Ignored when the cursor is out.
  virtual void DelCur() = 0;
  /// Stable sort, ascending by cmp (positive when the first argument belongs after the second).
  virtual void Sort(int (*cmp)(const T&, const T&)) = 0;
  /// Stable sort by T's ordering: true ascending, false descending.
  virtual void Sort(bool ascending) = 0;
  /// Moves element `from` to stand just before the element at index `to` (to == length: the
  /// end). Cursor on the moved element. False, nothing changed, when it is already in place
  /// (to == from or to == from + 1) or when from/to name no place.
  virtual bool Move(ZtLong from, ZtLong to);

  // ---- Counters and cursor tests -------------------------------------------------------------

  ZtLong GetLength() const { return m_length; }
  ZtLong GetCur() const { return m_cur; }
  /// m_length - 1: -1 for an empty sequence.
  ZtLong GetMaxIndex() const { return m_length - 1; }
  bool IsEmpty() const { return m_length == 0; }
  /// True when the cursor stands before the first element.
  bool IsBegin() const { return m_cur < 0; }
  /// True when the cursor stands at or past the end.
  bool IsEnd() const { return m_cur >= m_length; }
  /// True when the cursor names no element.
  bool IsOut() const { return m_cur < 0 || m_cur >= m_length; }
  bool IsValidIndex(ZtLong i) const { return i >= 0 && i < m_length; }

  // ---- Non-virtual editing -------------------------------------------------------------------

  /// Element i: never grows, never moves the cursor.
  const T& operator[](ZtLong i) const { return GetAt(i); }
  /// Address of element i, or null when i is not a valid index.
  const T* GetTo(ZtLong i) const { return IsValidIndex(i) ? &GetAt(i) : nullptr; }
  void Del(ZtLong i) {
    MoveTo(i);
    DelCur();
  }
  void DelHead() {
    MoveToFirst();
    DelCur();
  }
  void DelTail() {
    MoveToLast();
    DelCur();
  }
  /// Swaps elements i and j, growing the sequence to cover the larger index first. Cursor on i.
  void Exchange(ZtLong i, ZtLong j);
  void IncreaseSize(ZtLong n) { ReAllocate(zt::detail::AddLength(m_length, n)); }
  /// Shortens an array by n (never below 0); a list keeps its length.
  void DecreaseSize(ZtLong n) { ReAllocate(zt::detail::AddLength(m_length, -std::int64_t{n})); }
  /// Assigns v to every element; the cursor ends out (at m_length on an array).
  void SetAll(const T& v);
  /// Appends v; returns *this so that appends chain.
  ZtDynArrayBase& operator<<(const T& v) {
    Append(v);
    return *this;
  }
  /// This becomes an element-wise copy of src (any sequence); the cursor ends out. Copying a
  /// sequence onto itself changes nothing.
  void DeepCopy(const ZtDynArrayBase& src);
  /// This becomes an element-wise copy of the fixed array src; the cursor ends out.
  void DeepCopy(const ZtArray<T>& src);

  // ---- Searches ------------------------------------------------------------------------------

  /// Index of the first element equal to v in [from, to], or -1. A negative `to` or one past the
  /// end means the last index; a `from` that is not a valid index finds nothing.
  ZtLong Find(const T& v, ZtLong from = 0, ZtLong to = -1) const;
  /// Pushes the index of every element equal to v in [from, to] into `hits`, ascending, and
  /// returns hits.GetCount(). Only -1 or a `to` past the end mean the last index; another
  /// negative `to` makes the range empty.
  ZtLong Find(const T& v, ZtQuene<ZtLong>& hits, ZtLong from = 0, ZtLong to = -1) const;
  /// Cursor walk from `from` to the first element equal to v: true with the cursor on it, or
  /// false with the cursor out.
  bool FindTo(const T& v, ZtLong from = 0);
  /// Index of the first element equal to v; appends v (cursor on it) when there is none.
  ZtLong FindOrAppend(const T& v);
  /// Inserts v at the head (cursor on 0) when no element equals it.
  void FindOrInsertHead(const T& v);
  /// Removes every element equal to v; returns how many. The cursor ends out.
  ZtLong FindDel(const T& v);
  /// Binary search of a range sorted ascending: the index of an element equal to v, or -1. With
  /// duplicates any one of the equal run may be found.
  ZtLong BFind(const T& v, ZtLong from = 0, ZtLong to = -1) const;
  /// Positions the cursor for a sorted insertion: true with the cursor on an element equal to v,
  /// or false with the cursor where InsertCur(v) keeps the range sorted. A `from` outside the
  /// sequence is clamped into it.
  bool BFindTo(const T& v, ZtLong from = 0, ZtLong to = -1);
  /// Inserts v into a sequence sorted ascending; true with the cursor on the new element. When
  /// an equal element exists and `dup` is false, inserts nothing and returns false (cursor on the
  /// equal element); with `dup` the new value goes behind the equal run that follows it.
  bool SortInto(const T& v, bool dup);
  /// Reverses [from, to] in place through the growing operator[], so a `to` past the end first
  /// extends the sequence. Only -1 means the end. Cursor on to - count + 1 after `count` swaps,
  /// unchanged when nothing was swapped or `from` is negative.
  void Reverse(ZtLong from = 0, ZtLong to = -1);

  // ---- Slicing, appending, comparison --------------------------------------------------------

  /// `out` becomes the first n elements (n clamped to [0, length]); its cursor ends out.
  void Left(ZtLong n, ZtDynArrayBase& out) const;
  /// `out` becomes the last n elements (n clamped to [0, length]); its cursor ends out.
  void Right(ZtLong n, ZtDynArrayBase& out) const;
  /// `out` becomes elements [from, to], clamped to the sequence; its cursor ends out.
  void Mid(ZtLong from, ZtLong to, ZtDynArrayBase& out) const;
  /// Appends all of src (sized once, so an array's capacity becomes exactly the new length).
  /// Appending a sequence to itself doubles it. The cursor ends out.
  ZtDynArrayBase& operator<<(const ZtDynArrayBase& src);
  ZtDynArrayBase& operator<<(const ZtArray<T>& src);
  /// Element-wise equality.
  bool operator==(const ZtDynArrayBase& other) const;
  bool operator!=(const ZtDynArrayBase& other) const { return !(*this == other); }
  /// Compares lengths only, never contents.
  bool operator<(const ZtDynArrayBase& other) const { return m_length < other.m_length; }
  /// Compares lengths only, never contents.
  bool operator>(const ZtDynArrayBase& other) const { return m_length > other.m_length; }

 protected:
  ZtLong m_length = 0;
  ZtLong m_cur = -1;

 private:
  // InsertCur(v) at the cursor the caller has set, putting the cursor back on `cur` (where it
  // was before) if the insertion throws.
  void InsertOrRestore(ZtLong cur, const T& v) {
    try {
      InsertCur(v);
    } catch (...) {
      MoveTo(cur);
      throw;
    }
  }
  void CopyRangeInto(const T* p, ZtLong count, ZtDynArrayBase& out) const;
  // Calls stop(i, element) for i = from, from + 1, ... up to `to` (from must be a valid index)
  // and returns the first i for which it is true, or -1. A plain ZtDynArray is read as one block;
  // any other sequence is walked through its slots.
  template <class Stop>
  ZtLong Scan(ZtLong from, ZtLong to, Stop stop) const {
    if (to < from) return -1;
    if (const T* data = zt::detail::ContiguousElements(*this)) {
      const T* end = data + to + 1;  // find_if: the library's unrolled loop
      const T* hit = std::find_if(data + from, end, [data, &stop](const T& e) {
        return stop(static_cast<ZtLong>(&e - data), e);
      });
      return hit != end ? static_cast<ZtLong>(hit - data) : -1;
    }
    ZtLong i = from;
    for (const T* p = &GetAt(from); p != nullptr && i <= to; p = GetNext(p), ++i) {
      if (stop(i, *p)) return i;
    }
    return -1;
  }
};

// ---- Definitions -------------------------------------------------------------------------------

template <class T>
void ZtDynArrayBase<T>::Reset() {
  zt::detail::CutTo(*this, 0);
  m_cur = -1;
}

template <class T>
T& ZtDynArrayBase<T>::operator[](ZtLong i) {
  if (i >= m_length) ReAllocate(zt::detail::AddLength(i, 1));
  MoveTo(i);
  return GetCurData();
}

template <class T>
bool ZtDynArrayBase<T>::Move(ZtLong from, ZtLong to) {
  if (!zt::detail::MovesWithin(*this, from, to, "ZtDynArrayBase")) return false;
  if (from == to || from == to - 1) return false;
  const ZtLong cur = m_cur;
  MoveTo(from);
  const T copy = GetCurData();  // taken first: the insertion may move the storage
  try {
    Insert(to, copy);
  } catch (...) {
    MoveTo(cur);
    throw;
  }
  if (from > to) {
    Del(from + 1);
    MoveTo(to);
  } else {
    Del(from);
    MoveTo(to - 1);
  }
  return true;
}

template <class T>
void ZtDynArrayBase<T>::Exchange(ZtLong i, ZtLong j) {
  if (!ZT_IN_CONTRACT(i >= 0 && j >= 0, "Exchange", "ZtDynArrayBase", "index", i < 0 ? i : j)) {
    return;
  }
  const ZtLong high = i > j ? i : j;
  if (high >= m_length) ReAllocate(zt::detail::AddLength(high, 1));
  T& b = (*this)[j];
  T& a = (*this)[i];
  const T tmp = a;
  a = b;
  b = tmp;
}

template <class T>
void ZtDynArrayBase<T>::SetAll(const T& v) {
  for (MoveToFirst(); !IsOut(); MoveToNext()) SetCurData(v);
}

template <class T>
void ZtDynArrayBase<T>::DeepCopy(const ZtDynArrayBase& src) {
  if (&src == this) return;
  const zt::detail::ElementCopier<T> copy(src, *this);
  zt::detail::ReleaseIfOwning<T>(*this);
  SetLength(src.GetLength(), false);
  zt::detail::FillOrCut(*this, 0, [&] {
    const T* p = src.GetFirst();
    for (MoveToFirst(); !IsOut() && p != nullptr; MoveToNext(), p = src.GetNext(p)) {
      SetCurData(copy(*p));
    }
  });
}

template <class T>
void ZtDynArrayBase<T>::DeepCopy(const ZtArray<T>& src) {
  zt::detail::ReleaseIfOwning<T>(*this);
  SetLength(src.GetLength(), false);
  zt::detail::FillOrCut(*this, 0, [&] {
    ZtLong i = 0;
    for (MoveToFirst(); !IsOut(); MoveToNext()) SetCurData(src[i++]);
  });
}

template <class T>
ZtLong ZtDynArrayBase<T>::Find(const T& v, ZtLong from, ZtLong to) const {
  if (to < 0 || to >= m_length) to = m_length - 1;
  if (!IsValidIndex(from)) return -1;
  return Scan(from, to, [&v](ZtLong /*i*/, const T& e) { return e == v; });
}

template <class T>
ZtLong ZtDynArrayBase<T>::Find(const T& v, ZtQuene<ZtLong>& hits, ZtLong from, ZtLong to) const {
  if (to == -1 || to >= m_length) to = m_length - 1;
  if (IsValidIndex(from)) {
    Scan(from, to, [&v, &hits](ZtLong i, const T& e) {
      if (e == v) hits.Push(i);
      return false;
    });
  }
  return hits.GetCount();
}

template <class T>
bool ZtDynArrayBase<T>::FindTo(const T& v, ZtLong from) {
  for (MoveTo(from); !IsOut(); MoveToNext()) {
    if (GetCurData() == v) return true;
  }
  return false;
}

template <class T>
ZtLong ZtDynArrayBase<T>::FindOrAppend(const T& v) {
  const ZtLong i = Find(v, 0, -1);
  return i != -1 ? i : Append(v);
}

template <class T>
void ZtDynArrayBase<T>::FindOrInsertHead(const T& v) {
  if (Find(v, 0, -1) == -1) InsertHead(v);
}

template <class T>
ZtLong ZtDynArrayBase<T>::FindDel(const T& v) {
  ZtLong count = 0;
  for (MoveToFirst(); !IsOut(); MoveToNext()) {
    if (GetCurData() == v) {
      DelCur();
      ++count;
    }
  }
  return count;
}

template <class T>
ZtLong ZtDynArrayBase<T>::BFind(const T& v, ZtLong from, ZtLong to) const {
  const auto after = [&v](const T& e) { return zt::detail::Greater(v, e); };
  const auto before = [&v](const T& e) { return zt::detail::Less(v, e); };
  if (const T* data = zt::detail::ContiguousElements(*this)) {
    return zt::detail::BinarySearch(
        m_length, from, to, [data](ZtLong i) -> const T& { return data[i]; }, after, before);
  }
  return zt::detail::BinarySearch(
      m_length, from, to, [this](ZtLong i) -> const T& { return GetAt(i); }, after, before);
}

template <class T>
bool ZtDynArrayBase<T>::BFindTo(const T& v, ZtLong from, ZtLong to) {
  ZT_REPORT_UNLESS(IsEmpty() || IsValidIndex(from), "BFindTo", "ZtDynArrayBase", "index", from);
  return zt::detail::BisectCursor(
      *this, from, to, [&v](const T& e) { return zt::detail::Greater(v, e); },
      [&v](const T& e) { return zt::detail::Less(v, e); });
}

template <class T>
bool ZtDynArrayBase<T>::SortInto(const T& v, bool dup) {
  const bool found = BFindTo(v, 0, -1);
  return zt::detail::InsertSorted(*this, v, found, dup, [&v](const T& e) { return e == v; });
}

template <class T>
void ZtDynArrayBase<T>::Reverse(ZtLong from, ZtLong to) {
  if (to == -1) to = m_length - 1;
  if (!ZT_IN_CONTRACT(from >= 0, "Reverse", "ZtDynArrayBase", "index", from)) return;
  const ZtLong count = static_cast<ZtLong>((static_cast<std::int64_t>(to) - from + 1) / 2);
  for (ZtLong k = 0; k < count; ++k) {
    // Each access may grow the sequence, so no reference is held across another access.
    const T low = (*this)[from + k];
    const T high = (*this)[to - k];
    (*this)[from + k] = high;
    (*this)[to - k] = low;
  }
}

template <class T>
void ZtDynArrayBase<T>::CopyRangeInto(const T* p, ZtLong count, ZtDynArrayBase& out) const {
  const zt::detail::ElementCopier<T> copy(*this, out);
  if (&out == this) {
    // Slicing a sequence into itself: take the values before the target is resized.
    std::unique_ptr<T[]> values(count > 0 ? new T[static_cast<std::size_t>(count)] : nullptr);
    ZtLong made = 0;
    try {
      for (; made < count && p != nullptr; ++made, p = GetNext(p)) values[made] = copy(*p);
      zt::detail::ReleaseIfOwning<T>(out);
      out.SetLength(count, false);
    } catch (...) {  // nothing stored yet
      copy.Discard(values.get(), made);
      throw;
    }
    zt::detail::FillOrCut(out, 0, [&] {
      ZtLong k = 0;
      for (out.MoveToFirst(); !out.IsOut(); out.MoveToNext()) out.SetCurData(values[k++]);
    });
    return;
  }
  zt::detail::ReleaseIfOwning<T>(out);
  out.SetLength(count, false);
  zt::detail::FillOrCut(out, 0, [&] {
    for (out.MoveToFirst(); !out.IsOut() && p != nullptr; out.MoveToNext(), p = GetNext(p)) {
      out.SetCurData(copy(*p));
    }
  });
}

template <class T>
void ZtDynArrayBase<T>::Left(ZtLong n, ZtDynArrayBase& out) const {
  ZT_REPORT_UNLESS(n >= 0 && n <= m_length, "Left", "ZtDynArrayBase", "count", n);
  if (n < 0) n = 0;
  if (n > m_length) n = m_length;
  CopyRangeInto(GetFirst(), n, out);
}

template <class T>
void ZtDynArrayBase<T>::Right(ZtLong n, ZtDynArrayBase& out) const {
  ZT_REPORT_UNLESS(n >= 0 && n <= m_length, "Right", "ZtDynArrayBase", "count", n);
  if (n < 0) n = 0;
  if (n > m_length) n = m_length;
  CopyRangeInto(n > 0 ? &GetAt(m_length - n) : nullptr, n, out);
}

template <class T>
void ZtDynArrayBase<T>::Mid(ZtLong from, ZtLong to, ZtDynArrayBase& out) const {
  static_cast<void>(zt::detail::RangeWithin(from, to, m_length, 0, "Mid", "ZtDynArrayBase"));
  if (from < 0) from = 0;
  if (to >= m_length) to = m_length - 1;
  const ZtLong count = to >= from ? to - from + 1 : 0;
  CopyRangeInto(count > 0 ? &GetAt(from) : nullptr, count, out);
}

template <class T>
ZtDynArrayBase<T>& ZtDynArrayBase<T>::operator<<(const ZtDynArrayBase& src) {
  const zt::detail::ElementCopier<T> copy(src, *this);
  const ZtLong old = m_length;
  const ZtLong count = src.GetLength();
  SetLength(zt::detail::AddLength(old, count), true);
  // After the resize src's first `count` elements are still its old contents, also when src is
  // this sequence, because the resize keeps the first `old` elements.
  zt::detail::FillOrCut(*this, old, [&] {
    const T* p = src.GetFirst();
    for (MoveTo(old); !IsOut() && p != nullptr; MoveToNext(), p = src.GetNext(p)) {
      SetCurData(copy(*p));
    }
  });
  return *this;
}

template <class T>
ZtDynArrayBase<T>& ZtDynArrayBase<T>::operator<<(const ZtArray<T>& src) {
  const ZtLong old = m_length;
  SetLength(zt::detail::AddLength(old, src.GetLength()), true);
  zt::detail::FillOrCut(*this, old, [&] {
    ZtLong i = 0;
    for (MoveTo(old); !IsOut(); MoveToNext()) SetCurData(src[i++]);
  });
  return *this;
}

template <class T>
bool ZtDynArrayBase<T>::operator==(const ZtDynArrayBase& other) const {
  if (m_length != other.m_length) return false;
  const T* q = other.GetFirst();
  for (const T* p = GetFirst(); p != nullptr && q != nullptr;
       p = GetNext(p), q = other.GetNext(q)) {
    if (*p != *q) return false;
  }
  return true;
}

extern template class ZT_API ZtDynArrayBase<char>;

// The searches above read a ZtDynArray's block directly, so the class must be complete wherever
// they are instantiated.
#include "zt/containers/dyn_array.h"  // IWYU pragma: export

#endif  // ZT_CONTAINERS_DYN_ARRAY_BASE_H_
