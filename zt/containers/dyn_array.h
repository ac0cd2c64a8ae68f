// zt/containers/dyn_array.h
//
// ZtDynArray<T>: a growable array on one contiguous buffer, with a built-in cursor.
//
// Growth adds a fixed number of spare slots (the allocation unit, 10 by default) beyond the
// length asked for; the buffer never shrinks by itself. Copies, SetLength, SetSpaceSize, Attach
// and whole-sequence appends size it exactly. The cursor may stand at GetLength() after the last
// element, where InsertCur appends.
//
//   ZtDynArray<int> a;
//   a << 3 << 1 << 2;          // [3, 1, 2], capacity 11, cursor on 2
//   a.Sort(true);              // [1, 2, 3], stable, cursor unchanged
//
// Both sorts are the stable rank sort: exactly n(n-1)/2 comparisons, each element moved once.
// Sort(bool) on a type whose order calls no client code (arithmetic types, pointers, enums
// without their own < and >) gives the same result in O(n log n) and never throws, unless a
// floating-point array holds a NaN. Whatever the order, the sorts return and keep every element:
// when it is not consistent (a NaN, a faulty comparator) the elements are placed by rank, those
// of equal rank in their original order; an element's rank is its index, plus one for every later
// element it must follow, minus one for every earlier element that must follow it.
//
// Every growth is all-or-nothing: when the allocation throws std::bad_alloc the array keeps its
// length, capacity, buffer and contents. T must be default-constructible and copy-assignable;
// when an element's copy or assignment throws, the exception passes through, every element is
// still a valid T, the length counts them, and nothing leaks. An insertion that throws so leaves
// the elements and the cursor as they were (a buffer grown for it stays); the copies of
// dyn_array_base.h say what they leave.
//
// Out of contract and ignored, never touching memory outside the buffer: SetCurData, DelCur with
// the cursor out; InsertCur with the cursor outside [0, length]; GetAt past the end and
// GetCurData with the cursor out (they yield a scratch value). Negative lengths count as 0. The
// checked build reports each of these calls (zt/checked.h).
#ifndef ZT_CONTAINERS_DYN_ARRAY_H_
#define ZT_CONTAINERS_DYN_ARRAY_H_

#include <functional>

#include "zt/checked.h"
#include "zt/config.h"
#include "zt/containers/dyn_array_base.h"
#include "zt/containers/internal/element_ops.h"
#include "zt/containers/internal/sort.h"

/// Contiguous growable array. Owns its buffer (allocated with array new) from construction or
/// Attach until Detach or destruction; for pointer elements it owns the slots, not the objects.
template <class T>
class ZtDynArray : public ZtDynArrayBase<T> {
  using Base = ZtDynArrayBase<T>;

 public:
  /// An empty array with `spaceSize` slots reserved and the given allocation unit.
  // NOLINTNEXTLINE(google-explicit-constructor): implicit, as the interface declares it
  ZtDynArray(ZtLong spaceSize = 0, ZtLong allocUnit = 10) : m_allocUnit(allocUnit) {
    if (ZT_IN_CONTRACT(spaceSize >= 0, "ZtDynArray", "ZtDynArray", "length", spaceSize) &&
        spaceSize > 0) {
      m_data = zt::detail::CopyIntoNew<T>(spaceSize, nullptr, 0);
      m_spaceSize = spaceSize;
    }
  }
  /// An exact-size copy (capacity == length) with the default allocation unit; the copy's
  /// cursor stands at its end.
  ZtDynArray(const ZtDynArray& src) : ZtDynArray(static_cast<const Base&>(src)) {}
  /// The same, copying from any sequence (a list included).
  // NOLINTNEXTLINE(google-explicit-constructor): implicit, as the interface declares it
  ZtDynArray(const Base& src) {
    try {
      this->DeepCopy(src);
    } catch (...) {  // an element's assignment threw; the destructor will not run
      delete[] m_data;
      throw;
    }
  }
  /// Copies the elements; the allocation unit stays as it was.
  ZtDynArray& operator=(const ZtDynArray& src) {
    if (this != &src) this->DeepCopy(src);
    return *this;
  }
  ZtDynArray& operator=(const Base& src) {
    this->DeepCopy(src);
    return *this;
  }
  ~ZtDynArray() override { delete[] m_data; }

  /// Makes the length n. When n exceeds the capacity the buffer becomes n + allocation unit
  /// slots; a smaller n only lowers the length. The cursor does not move.
  void ReAllocate(ZtLong n) override {
    if (n > m_spaceSize) Grow(n);  // out of line: the common case only sets the length
    this->m_length = ZT_IN_CONTRACT(n >= 0, "ReAllocate", "ZtDynArray", "length", n) ? n : 0;
  }
  /// Makes length and capacity exactly n (no buffer for 0). When n already equals the capacity
  /// nothing is reallocated and the contents stay even without `keep`.
  void SetLength(ZtLong n, bool keep) override;
  /// Length 0 and cursor -1; the buffer stays.
  void Reset() override {
    this->m_length = 0;
    this->m_cur = -1;
  }
  T& GetCurData() override {
    // m_data holds m_length elements whenever the cursor names one.
    // NOLINTNEXTLINE(clang-analyzer-core.uninitialized.UndefReturn)
    return ZT_IN_CONTRACT(!this->IsOut(), "GetCurData", "ZtDynArray", "cursor", this->m_cur)
               ? m_data[this->m_cur]
               : zt::detail::Sink<T>();
  }
  void SetCurData(const T& v) override {
    if (ZT_IN_CONTRACT(!this->IsOut(), "SetCurData", "ZtDynArray", "cursor", this->m_cur)) {
      // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): the cursor names one of m_length
      m_data[this->m_cur] = v;
    }
  }
  const T* GetFirst() const override { return this->m_length != 0 ? m_data : nullptr; }
  const T* GetNext(const T* p) const override {
    return Contains(p, this->m_length - 1) ? p + 1 : nullptr;
  }
  const T* GetPre(const T* p) const override {
    return Contains(p, this->m_length) && p != m_data ? p - 1 : nullptr;
  }
  const T* GetLast() const override {
    return this->m_length != 0 ? m_data + (this->m_length - 1) : nullptr;
  }
  const T& GetAt(ZtLong i) const override {
    return ZT_IN_CONTRACT(this->IsValidIndex(i), "GetAt", "ZtDynArray", "index", i)
               ? m_data[i]
               : zt::detail::Sink<T>();
  }
  void InsertCur(const T& v) override;
  void DelCur() override;
  void Sort(int (*cmp)(const T&, const T&)) override;
  void Sort(bool ascending) override;

  ZtLong GetSpaceSize() const { return m_spaceSize; }
  ZtLong GetAllocUnit() const { return m_allocUnit; }
  /// Affects only later growth.
  void SetAllocUnit(ZtLong n) { m_allocUnit = n; }
  /// Sets the capacity to exactly n, keeping length and contents. False, nothing changed, when n
  /// is below the length. The only way to release spare capacity.
  bool SetSpaceSize(ZtLong n);
  /// Adopts p (allocated with array new for at least n elements) as the buffer: length and
  /// capacity become n. The old buffer is released; cursor and allocation unit stay.
  void Attach(ZtLong n, T* p);
  /// Hands the buffer to the caller (release it with array delete). The array is left empty and
  /// bufferless with the cursor at -1.
  T* Detach();

 protected:
  T* m_data = nullptr;
  ZtLong m_spaceSize = 0;
  ZtLong m_allocUnit = 10;

 private:
  // Reallocates to n + allocation unit slots, keeping the elements; the length stays.
  void Grow(ZtLong n);
  // True when p is the address of one of the first `count` elements.
  bool Contains(const T* p, ZtLong count) const {
    return p != nullptr && count > 0 && !std::less<const T*>()(p, m_data) &&
           std::less<const T*>()(p, m_data + count);
  }
};

namespace zt::detail {

/// A buffer and its number of slots.
template <class T>
struct Buffer {
  T* data;
  ZtLong space;
};

/// The growth of an array out of line, away from the append loops: a buffer of n + unit slots
/// (a negative unit counts as 0) holding copies of data[0..length), data freed. Throws with
/// nothing changed when the allocation fails.
template <class T>
ZT_NOINLINE Buffer<T> Regrow(T* data, ZtLong length, ZtLong n, ZtLong unit) {
  const ZtLong space = AddLength(n, unit > 0 ? unit : 0);
  T* fresh = CopyIntoNew(space, data, length);
#ifdef __clang_analyzer__
  // Growth asks for more than the capacity, so space >= 1 and the buffer exists; the analyzer
  // cannot know that the capacity is never negative.
  if (fresh == nullptr) __builtin_unreachable();
#endif
  delete[] data;
  return {fresh, space};
}

}  // namespace zt::detail

template <class T>
void ZtDynArray<T>::Grow(ZtLong n) {
  const zt::detail::Buffer<T> grown = zt::detail::Regrow(m_data, this->m_length, n, m_allocUnit);
  m_data = grown.data;
  m_spaceSize = grown.space;
}

template <class T>
void ZtDynArray<T>::SetLength(ZtLong n, bool keep) {
  if (!ZT_IN_CONTRACT(n >= 0, "SetLength", "ZtDynArray", "length", n)) n = 0;
  if (n != m_spaceSize) {
    T* fresh = zt::detail::CopyIntoNew(n, keep ? m_data : nullptr, this->m_length);
    delete[] m_data;
    m_data = fresh;
  }
  m_spaceSize = n;
  this->m_length = n;
}

template <class T>
bool ZtDynArray<T>::SetSpaceSize(ZtLong n) {
  if (n < this->m_length) return false;
  if (n == m_spaceSize) return true;
  const ZtLong length = this->m_length;
  this->SetLength(n, true);
  this->m_length = length;
  return true;
}

template <class T>
void ZtDynArray<T>::Attach(ZtLong n, T* p) {
  if (p != m_data) delete[] m_data;
  m_data = p;
  if (p == nullptr || !ZT_IN_CONTRACT(n >= 0, "Attach", "ZtDynArray", "length", n)) n = 0;
  this->m_length = n;
  m_spaceSize = n;
}

template <class T>
T* ZtDynArray<T>::Detach() {
  T* p = m_data;
  m_data = nullptr;
  m_spaceSize = 0;
  this->m_length = 0;
  this->m_cur = -1;
  return p;
}

template <class T>
void ZtDynArray<T>::InsertCur(const T& v) {
  const ZtLong at = this->m_cur;
  if (!ZT_IN_CONTRACT(at >= 0 && at <= this->m_length, "InsertCur", "ZtDynArray", "cursor", at)) {
    return;
  }
  // A copy, because v may be an element of this array and the growth below may free it.
  const T copy = v;  // NOLINT(performance-unnecessary-copy-initialization)
  const ZtLong length = this->m_length;
  this->ReAllocate(zt::detail::AddLength(length, 1));
  try {
    zt::detail::OpenSlot(m_data, length, at, copy);
  } catch (...) {
    this->m_length = length;  // the elements are back in place; a grown buffer stays
    throw;
  }
}

template <class T>
void ZtDynArray<T>::DelCur() {
  if (!ZT_IN_CONTRACT(!this->IsOut(), "DelCur", "ZtDynArray", "cursor", this->m_cur)) return;
  const ZtLong at = this->m_cur;
  zt::detail::MoveRange(m_data + at, m_data + at + 1, this->m_length - 1 - at);
  this->ReAllocate(this->m_length - 1);
  this->m_cur = at - 1;
}

template <class T>
void ZtDynArray<T>::Sort(int (*cmp)(const T&, const T&)) {
  if (cmp == nullptr) return;
  zt::detail::RankSort(m_data, this->m_length,
                       [cmp](const T& a, const T& b) { return cmp(a, b) > 0; });
}

template <class T>
void ZtDynArray<T>::Sort(bool ascending) {
  zt::detail::SortByOrder(m_data, this->m_length, ascending);
}

extern template class ZT_API ZtDynArray<char>;

#endif  // ZT_CONTAINERS_DYN_ARRAY_H_
