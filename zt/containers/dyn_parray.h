// zt/containers/dyn_parray.h
//
// ZtDynPArray<T>: a ZtDynArray<T*> that owns the objects its slots point to. A slot holds a
// pointer to a heap object (allocated with new, owned from the moment it is stored) or null, an
// empty place that still counts in the length and that PlaceIn can reuse.
//
//   ZtDynPArray<Shape> shapes;
//   shapes.Append(new Circle(2));      // the array owns the circle and deletes it
//
// Ownership: every insertion adopts the pointer it stores. Release* and DelCur (with Del, DelHead,
// DelTail, FindDel, FindDataDel, shrinking, Reset and destruction) delete objects; TakeOff* hand an
// object back to the caller and leave an empty slot. SetCurData and assignment through operator[]
// overwrite a slot without deleting what it held: take the old object off first. Never store the
// same pointer twice.
//
// Copies own objects of their own: copy construction, assignment, DeepCopy, operator<< and
// Left/Right/Mid between owning containers clone every object through ZtCloner (clone.h), so the
// source and the copy are destroyed independently.
//
// The *Data members, the object sorts and == compare the pointed-to objects with T's operators;
// Find, FindDel(T*) and the pointer-comparator Sort compare pointers. Empty slots are skipped by
// the searches and gather at the end in every object sort, in both directions. The object sorts
// are the rank sort (n(n-1)/2 comparisons of objects); with an order that is not consistent they
// still return with every object kept, none deleted, placed by rank as dyn_array.h says. GetPData,
// GetCurPData and operator() on an empty slot yield a scratch object instead of dereferencing null;
// for a T of which no scratch object can be made (abstract, or without a default constructor)
// such a call stops the program with std::abort. T needs only delete, == (the searches), != (==
// of arrays and SortInto's equal run), < and >.
#ifndef ZT_CONTAINERS_DYN_PARRAY_H_
#define ZT_CONTAINERS_DYN_PARRAY_H_

#include "zt/checked.h"
#include "zt/config.h"
#include "zt/containers/clone.h"
#include "zt/containers/dyn_array.h"
#include "zt/containers/internal/owning.h"
#include "zt/containers/internal/sort.h"
#include "zt/containers/quene.h"

/// Growable array owning the objects its slots point to; null slots are empty places.
template <class T>
class ZtDynPArray : public ZtDynArray<T*>, public zt::detail::OwnsPointees {
  using Base = ZtDynArray<T*>;

 public:
  // NOLINTNEXTLINE(google-explicit-constructor): implicit, as the interface declares it
  ZtDynPArray(ZtLong spaceSize = 0, ZtLong allocUnit = 10) : Base(spaceSize, allocUnit) {}
  /// A copy holding clones of src's objects, in the same order, empty slots kept.
  ZtDynPArray(const ZtDynPArray& src) : Base(), OwnsPointees() {
    zt::detail::owning::CopyConstruct(*this, src);
  }
  /// Deletes this array's objects, then holds clones of src's.
  ZtDynPArray& operator=(const ZtDynPArray& src) {
    if (this != &src) this->DeepCopy(src);
    return *this;
  }
  ~ZtDynPArray() override { ReleaseAll(); }

  /// Growing adds empty slots; shrinking deletes the objects cut off.
  void ReAllocate(ZtLong n) override;
  /// With `keep`: as ReAllocate, but the capacity becomes exactly n; nothing at all happens, the
  /// capacity included, when n is the length (so SetSpaceSize(GetLength()) keeps the spare
  /// slots). Without: every object is deleted and all n slots are empty.
  void SetLength(ZtLong n, bool keep) override;
  /// Deletes every object; length 0, cursor -1, the buffer stays.
  void Reset() override {
    ReleaseAll();
    Base::Reset();
  }
  /// Deletes the object at the cursor and removes its slot; the cursor moves back by one.
  void DelCur() override;
  /// Sorts by object (stable); empty slots go to the end.
  void Sort(bool ascending) override { SortEx(ascending); }
  /// Moves a pointer as the sequence's Move does, deleting nothing.
  bool Move(ZtLong from, ZtLong to) override {
    return zt::detail::owning::Move<T>(*this, from, to, "ZtDynPArray");
  }
  /// Deletes the object at the cursor and leaves the slot empty.
  virtual void ReleaseCur() { zt::detail::owning::ReleaseCur<T>(*this, "ZtDynPArray"); }
  /// Returns the pointer at the cursor (the caller owns it now) and leaves the slot empty; null
  /// when the cursor is out.
  virtual T* TakeOffCur();
  /// Sorts by object through cmp (stable); empty slots go to the end.
  virtual void Sort(int (*cmp)(const T&, const T&));
  using Base::Sort;  // the pointer-comparator sort

  const T& GetPData(ZtLong i) const {
    return zt::detail::owning::Object(this->GetAt(i), "GetPData", "ZtDynPArray", i);
  }
  /// The object in slot i, reached through the growing operator[] (the cursor moves to i).
  T& operator()(ZtLong i) {
    return zt::detail::owning::Object((*this)[i], "operator()", "ZtDynPArray", i);
  }
  T& GetCurPData() {
    return zt::detail::owning::Object(this->GetCurData(), "GetCurPData", "ZtDynPArray",
                                      this->m_cur);
  }
  /// True when the cursor is out or its slot is empty.
  bool IsCurEmpty() const { return zt::detail::owning::IsCurEmpty<T>(*this); }
  /// True when i is not a valid index or slot i is empty.
  bool IsEmptyData(ZtLong i) const { return zt::detail::owning::IsEmptyData<T>(*this, i); }
  /// Number of non-empty slots.
  ZtLong GetDataNum() const { return zt::detail::owning::GetDataNum<T>(*this); }

  void Release(ZtLong i) {
    this->MoveTo(i);
    ReleaseCur();
  }
  /// Deletes every object (through ReleaseCur); the length stays and every slot is empty. The
  /// cursor ends out.
  void ReleaseAll() { zt::detail::owning::ReleaseAll(*this); }
  T* TakeOff(ZtLong i) {
    this->MoveTo(i);
    return TakeOffCur();
  }
  T* TakeOffHead() {
    this->MoveToFirst();
    return TakeOffCur();
  }
  T* TakeOffTail() {
    this->MoveToLast();
    return TakeOffCur();
  }
  /// Stores p (adopting it) in the first empty slot, appending one when there is none; returns
  /// the index, with the cursor on it.
  ZtLong PlaceIn(T* p) { return zt::detail::owning::PlaceIn<T>(*this, p); }
  /// Deletes the object of the first slot holding p and removes the slot: 1, or 0 when absent.
  ZtLong FindDel(T* p) { return zt::detail::owning::FindDel<T>(*this, p); }
  /// Deletes every object equal to v and removes its slot; returns how many.
  ZtLong FindDataDel(const T& v) { return zt::detail::owning::FindDataDel<T>(*this, v); }
  /// First index in [from, to] (a negative `to` or one past the end: the last index) whose object
  /// equals v, or -1.
  ZtLong FindData(const T& v, ZtLong from = 0, ZtLong to = -1) const {
    return zt::detail::owning::FindData<T>(*this, v, from, to, "ZtDynPArray");
  }
  /// Pushes every such index, ascending, into hits; returns hits.GetCount().
  ZtLong FindData(const T& v, ZtQuene<ZtLong>& hits, ZtLong from = 0, ZtLong to = -1) const {
    return zt::detail::owning::FindData<T>(*this, v, hits, from, to, "ZtDynPArray");
  }
  /// Binary search by object in a range sorted ascending; index or -1.
  ZtLong BFindData(const T& v, ZtLong from = 0, ZtLong to = -1) const {
    return zt::detail::owning::BFindData<T>(*this, v, from, to, "ZtDynPArray");
  }
  /// Cursor on an object equal to v (true) or where v belongs (false), as BFindTo.
  bool BFindDataTo(const T& v, ZtLong from = 0, ZtLong to = -1) {
    return zt::detail::owning::BFindDataTo<T>(*this, v, from, to, "ZtDynPArray");
  }
  /// Inserts p at its sorted place by object and adopts it (true). With an equal object present
  /// and `dup` false nothing is stored and the caller keeps p (false); with `dup` p goes behind
  /// the equal run.
  bool SortInto(T* p, bool dup) {
    return zt::detail::owning::SortInto<T>(*this, p, dup, zt::detail::owning::NotUnequal<T>);
  }
  /// Object sort in which empty slots gather at the end, in both directions.
  void SortEx(bool ascending);
  /// Slot-by-slot equality by object; two empty slots are equal.
  bool operator==(const ZtDynPArray& other) const {
    return zt::detail::owning::Equal<T>(*this, other, zt::detail::owning::NotUnequal<T>);
  }
  bool operator!=(const ZtDynPArray& other) const { return !(*this == other); }
};

template <class T>
void ZtDynPArray<T>::ReAllocate(ZtLong n) {
  if (!ZT_IN_CONTRACT(n >= 0, "ReAllocate", "ZtDynPArray", "length", n)) n = 0;
  const ZtLong old = this->m_length;
  if (n > old) {
    Base::ReAllocate(n);
    // NOLINTNEXTLINE(clang-analyzer-core.NullDereference): the growth left n slots
    for (ZtLong i = old; i < n; ++i) this->m_data[i] = nullptr;
  } else if (n < old) {
    for (ZtLong i = n; i < old; ++i) {
      delete this->m_data[i];
      this->m_data[i] = nullptr;
    }
    Base::ReAllocate(n);
  }
}

template <class T>
void ZtDynPArray<T>::SetLength(ZtLong n, bool keep) {
  if (!ZT_IN_CONTRACT(n >= 0, "SetLength", "ZtDynPArray", "length", n)) n = 0;
  const ZtLong old = this->m_length;
  if (!keep) {
    ReleaseAll();
    Base::SetLength(n, false);
    for (ZtLong i = 0; i < n; ++i) this->m_data[i] = nullptr;
  } else if (n > old) {
    Base::SetLength(n, true);
    for (ZtLong i = old; i < n; ++i) this->m_data[i] = nullptr;
  } else if (n < old) {
    for (ZtLong i = n; i < old; ++i) {
      delete this->m_data[i];
      this->m_data[i] = nullptr;
    }
    Base::SetLength(n, true);
  }
}

template <class T>
void ZtDynPArray<T>::DelCur() {
  if (!ZT_IN_CONTRACT(!this->IsOut(), "DelCur", "ZtDynPArray", "cursor", this->m_cur)) return;
  ReleaseCur();
  const ZtLong last = this->m_length - 1;
  if (this->m_cur < last) {
    // Empty the last slot so that the shrink inside DelCur deletes nothing, then put its
    // pointer back where the shift moved it.
    T* kept = this->m_data[last];
    this->m_data[last] = nullptr;
    Base::DelCur();
    this->m_data[last - 1] = kept;
  } else {
    Base::DelCur();
  }
}

template <class T>
T* ZtDynPArray<T>::TakeOffCur() {
  if (this->IsOut()) return nullptr;
  T* p = this->m_data[this->m_cur];
  this->m_data[this->m_cur] = nullptr;
  return p;
}

template <class T>
void ZtDynPArray<T>::Sort(int (*cmp)(const T&, const T&)) {
  if (cmp == nullptr) return;
  zt::detail::RankSort(this->m_data, this->m_length, zt::detail::owning::ObjectAfter<T>(cmp));
}

template <class T>
void ZtDynPArray<T>::SortEx(bool ascending) {
  zt::detail::RankSort(this->m_data, this->m_length, zt::detail::owning::ObjectAfter<T>(ascending));
}

#endif  // ZT_CONTAINERS_DYN_PARRAY_H_
