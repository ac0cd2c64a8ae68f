// zt/containers/array.h
//
// ZtArray<T>: the plain exact-size array under the strings. One heap buffer that always holds
// exactly GetLength() elements (none, and a null buffer, when empty); no cursor, no spare
// capacity. Every change of length allocates a buffer of the new size and copies into it.
//
//   ZtArray<int> a;
//   a.Append(3); a.Insert(0, 1);   // [1, 3]; each call reallocates to the exact size
//
// It can be built from any ZtDynArrayBase sequence, and sequences can append or deep-copy from
// it. Its ranges clamp differently from the sequence algorithms: Find and the find-all search
// take any negative `to` as the end, and Reverse never grows the array.
//
// Sort(bool) and Sort(cmp) are the rank sort of ZtDynArray, with its O(n log n) path for types
// whose order calls no client code and its result for orders that are not consistent (see
// dyn_array.h); so are the strings' sorts.
//
// Every allocating call is all-or-nothing: when it throws std::bad_alloc the array keeps its
// length and contents. When an element's copy throws, the exception passes through and the array
// stays valid; nothing leaks. Out of contract and ignored: Insert outside [0, length], Del with an
// invalid index, SetAt with an invalid index; operator[] and GetAt with an invalid index yield a
// scratch value; Find and BFind with a negative `from` find nothing. The checked build reports
// each of these calls (zt/checked.h).
#ifndef ZT_CONTAINERS_ARRAY_H_
#define ZT_CONTAINERS_ARRAY_H_

#include "zt/checked.h"
#include "zt/config.h"
#include "zt/containers/dyn_array_base.h"
#include "zt/containers/internal/element_ops.h"
#include "zt/containers/internal/sort.h"
#include "zt/containers/quene.h"

/// Exact-size array with a virtual destructor, so that derived strings delete correctly.
template <class T>
class ZtArray {
 public:
  /// n elements with unspecified values; empty and bufferless when n <= 0.
  // NOLINTNEXTLINE(google-explicit-constructor): implicit, as the interface declares it
  ZtArray(ZtLong n = 0) { ReAllocate(n, false); }
  ZtArray(const ZtArray& src) { Assign(src.m_data, src.m_count); }
  /// Copies every element of any sequence, in order, without moving its cursor.
  // NOLINTNEXTLINE(google-explicit-constructor): implicit, as the interface declares it
  ZtArray(const ZtDynArrayBase<T>& src);
  ZtArray& operator=(const ZtArray& src) {
    if (this != &src) Assign(src.m_data, src.m_count);
    return *this;
  }
  virtual ~ZtArray() { delete[] m_data; }

  ZtLong GetLength() const { return m_count; }
  ZtLong GetMaxIndex() const { return m_count - 1; }
  bool IsEmpty() const { return m_count == 0; }
  bool IsValidIndex(ZtLong i) const { return i >= 0 && i < m_count; }
  /// Element i; never grows.
  T& operator[](ZtLong i) {
    return ZT_IN_CONTRACT(IsValidIndex(i), "operator[]", "ZtArray", "index", i)
               ? m_data[i]
               : zt::detail::Sink<T>();
  }
  const T& operator[](ZtLong i) const { return GetAt(i); }
  const T& GetAt(ZtLong i) const {
    return ZT_IN_CONTRACT(IsValidIndex(i), "GetAt", "ZtArray", "index", i) ? m_data[i]
                                                                           : zt::detail::Sink<T>();
  }
  void SetAt(ZtLong i, const T& v) {
    if (ZT_IN_CONTRACT(IsValidIndex(i), "SetAt", "ZtArray", "index", i)) m_data[i] = v;
  }
  /// The buffer itself (null when empty), for callers that fill or read it directly.
  T* GetDataBuffer() const { return m_data; }

  /// Resizes to exactly n (n <= 0 empties and frees the buffer). With `keep` the first
  /// min(n, length) elements survive; the others are unspecified. Nothing happens when n already
  /// is the length.
  void ReAllocate(ZtLong n, bool keep);
  /// Frees the buffer; length 0.
  void Reset() { ReAllocate(0, false); }
  void SetAll(const T& v) {
    for (ZtLong i = 0; i < m_count; ++i) m_data[i] = v;
  }
  /// v becomes element i (i == length appends). v may be an element of this array.
  void Insert(ZtLong i, const T& v);
  void InsertHead(const T& v) { Insert(0, v); }
  /// Appends v; returns its index.
  ZtLong Append(const T& v) {
    Insert(m_count, v);
    return m_count - 1;
  }
  /// Removes element i; the buffer shrinks to the new length (none when it reaches 0).
  void Del(ZtLong i);
  void DelHead() { Del(0); }
  void DelTail() { Del(m_count - 1); }
  /// Reverses [from, to]; only -1 means the end. Nothing happens unless both are valid indices.
  void Reverse(ZtLong from = 0, ZtLong to = -1);
  /// Stable rank sort by T's ordering: true ascending, false descending.
  void Sort(bool ascending);
  /// Stable rank sort, ascending by cmp (positive when the first argument belongs after).
  void Sort(int (*cmp)(const T&, const T&));

  /// Index of the first element equal to v in [from, to], or -1; a negative `to` or one past the
  /// end means the last index.
  ZtLong Find(const T& v, ZtLong from = 0, ZtLong to = -1) const;
  /// Pushes every matching index in [from, to], ascending, into `hits`; returns hits.GetCount().
  ZtLong Find(const T& v, ZtQuene<ZtLong>& hits, ZtLong from = 0, ZtLong to = -1) const;
  /// Index of the first element equal to v, appending v when there is none.
  ZtLong FindOrAppend(const T& v) {
    const ZtLong i = Find(v, 0, -1);
    return i != -1 ? i : Append(v);
  }
  /// Inserts v at the head when no element equals it.
  void FindOrInsertHead(const T& v) {
    if (Find(v, 0, -1) == -1) Insert(0, v);
  }
  /// Removes every element equal to v; returns how many.
  ZtLong FindDel(const T& v);
  /// Binary search of a range sorted ascending (clamped like Find); -1 when absent.
  ZtLong BFind(const T& v, ZtLong from = 0, ZtLong to = -1) const;

  /// Element-wise equality.
  bool operator==(const ZtArray& other) const;
  bool operator!=(const ZtArray& other) const { return !(*this == other); }
  /// Compares lengths only.
  bool operator<(const ZtArray& other) const { return m_count < other.m_count; }
  /// Compares lengths only.
  bool operator>(const ZtArray& other) const { return m_count > other.m_count; }

 protected:
  T* m_data = nullptr;
  ZtLong m_count = 0;

 private:
  // Replaces the contents with copies of src[0..n); strong guarantee.
  void Assign(const T* src, ZtLong n);
  // Swaps in a buffer of n elements (deleting the old one).
  void Adopt(T* buffer, ZtLong n) {
    delete[] m_data;
    m_data = buffer;
    m_count = n;
  }
  ZtLong ClampTo(ZtLong to) const { return to < 0 || to >= m_count ? m_count - 1 : to; }
};

template <class T>
ZtArray<T>::ZtArray(const ZtDynArrayBase<T>& src) {
  ReAllocate(src.GetLength(), true);
  try {
    ZtLong i = 0;
    for (const T* p = src.GetFirst(); p != nullptr && i < m_count; p = src.GetNext(p)) {
      m_data[i++] = *p;
    }
  } catch (...) {  // an element's assignment threw; the destructor will not run
    delete[] m_data;
    throw;
  }
}

template <class T>
void ZtArray<T>::Assign(const T* src, ZtLong n) {
  if (n == m_count) {
    zt::detail::MoveRange(m_data, src, n);
  } else {
    Adopt(zt::detail::CopyIntoNew(n, src, n), n > 0 ? n : 0);
  }
}

template <class T>
void ZtArray<T>::ReAllocate(ZtLong n, bool keep) {
  if (n == m_count) return;
  if (n <= 0) {
    Adopt(nullptr, 0);
    return;
  }
  Adopt(zt::detail::CopyIntoNew(n, keep ? m_data : nullptr, m_count), n);
}

template <class T>
void ZtArray<T>::Insert(ZtLong i, const T& v) {
  if (!ZT_IN_CONTRACT(i >= 0 && i <= m_count, "Insert", "ZtArray", "index", i)) return;
  const ZtLong n = zt::detail::AddLength(m_count, 1);
  T* fresh = zt::detail::CopyIntoNew(n, m_data, i);
  try {
    fresh[i] = v;  // read before the old buffer goes: v may live in it
    zt::detail::MoveRange(fresh + i + 1, m_data + i, m_count - i);
  } catch (...) {
    delete[] fresh;
    throw;
  }
  Adopt(fresh, n);
}

template <class T>
void ZtArray<T>::Del(ZtLong i) {
  if (!ZT_IN_CONTRACT(IsValidIndex(i), "Del", "ZtArray", "index", i)) return;
  const ZtLong n = m_count - 1;
  T* fresh = zt::detail::CopyIntoNew(n, m_data, i);
  try {
    if (fresh != nullptr) zt::detail::MoveRange(fresh + i, m_data + i + 1, n - i);
  } catch (...) {
    delete[] fresh;
    throw;
  }
  Adopt(fresh, n);
}

template <class T>
void ZtArray<T>::Reverse(ZtLong from, ZtLong to) {
  if (to == -1) to = m_count - 1;
  if (!ZT_IN_CONTRACT(IsValidIndex(from) && IsValidIndex(to), "Reverse", "ZtArray", "index",
                      IsValidIndex(from) ? to : from)) {
    return;
  }
  for (ZtLong k = 0, count = (to - from + 1) / 2; k < count; ++k) {
    const T tmp = m_data[from + k];
    m_data[from + k] = m_data[to - k];
    m_data[to - k] = tmp;
  }
}

template <class T>
void ZtArray<T>::Sort(bool ascending) {
  zt::detail::SortByOrder(m_data, m_count, ascending);
}

template <class T>
void ZtArray<T>::Sort(int (*cmp)(const T&, const T&)) {
  if (cmp == nullptr) return;
  zt::detail::RankSort(m_data, m_count, [cmp](const T& a, const T& b) { return cmp(a, b) > 0; });
}

template <class T>
ZtLong ZtArray<T>::Find(const T& v, ZtLong from, ZtLong to) const {
  if (!ZT_IN_CONTRACT(from >= 0, "Find", "ZtArray", "index", from)) return -1;
  for (ZtLong i = from, last = ClampTo(to); i <= last; ++i) {
    if (m_data[i] == v) return i;
  }
  return -1;
}

template <class T>
ZtLong ZtArray<T>::Find(const T& v, ZtQuene<ZtLong>& hits, ZtLong from, ZtLong to) const {
  if (ZT_IN_CONTRACT(from >= 0, "Find", "ZtArray", "index", from)) {
    for (ZtLong i = from, last = ClampTo(to); i <= last; ++i) {
      if (m_data[i] == v) hits.Push(i);
    }
  }
  return hits.GetCount();
}

template <class T>
ZtLong ZtArray<T>::FindDel(const T& v) {
  ZtLong count = 0;
  for (ZtLong i = 0; i < m_count;) {
    if (m_data[i] == v) {
      Del(i);
      ++count;
    } else {
      ++i;
    }
  }
  return count;
}

template <class T>
ZtLong ZtArray<T>::BFind(const T& v, ZtLong from, ZtLong to) const {
  ZT_REPORT_UNLESS(from >= 0, "BFind", "ZtArray", "index", from);
  return zt::detail::BinarySearch(
      m_count, from, to, [this](ZtLong i) -> const T& { return m_data[i]; },
      [&v](const T& e) { return zt::detail::Greater(v, e); },
      [&v](const T& e) { return zt::detail::Less(v, e); });
}

template <class T>
bool ZtArray<T>::operator==(const ZtArray& other) const {
  if (m_count != other.m_count) return false;
  for (ZtLong i = 0; i < m_count; ++i) {
    if (m_data[i] != other.m_data[i]) return false;
  }
  return true;
}

extern template class ZT_API ZtArray<char>;
extern template class ZT_API ZtArray<wchar_t>;

#endif  // ZT_CONTAINERS_ARRAY_H_
