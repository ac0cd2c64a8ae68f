// zt/containers/internal/owning_list.h
//
// Internal: the body shared by the owning lists ZtPDList<T> and ZtPXList<T>. Their contract is
// documented in pdlist.h; nothing here is part of the interface.
#ifndef ZT_CONTAINERS_INTERNAL_OWNING_LIST_H_
#define ZT_CONTAINERS_INTERNAL_OWNING_LIST_H_

#include "zt/config.h"
#include "zt/containers/clone.h"
#include "zt/containers/dyn_array_base.h"
#include "zt/containers/internal/owning.h"
#include "zt/containers/quene.h"

namespace zt::detail {

/// The owning members of the two owning lists, written once over their list base
/// (ZtDList<T*> or ZtXList<T*>). Derived classes add the constructors and assignment.
template <class T, class ListBase>
class OwningList : public ListBase, public OwnsPointees {
  using Base = ListBase;

 public:
  ~OwningList() override { ReleaseAll(); }

  /// With `keep` as the list's SetLength; without it every object is deleted first.
  void SetLength(ZtLong n, bool keep) override {
    if (!keep) ReleaseAll();
    Base::SetLength(n, keep);
  }
  /// Deletes every object and frees every node.
  void Reset() override {
    ReleaseAll();
    Base::Reset();
  }
  /// Removes the element at the cursor and deletes its object; the cursor moves back by one.
  void DelCur() override;
  /// Sorts by object (stable), collecting the empty places at the end; the cursor ends on the
  /// last empty place, or -1 when there is none.
  void Sort(bool ascending) override;
  /// Moves a pointer as the sequence's Move does, deleting nothing.
  bool Move(ZtLong from, ZtLong to) override { return owning::Move<T>(*this, from, to); }
  /// Sorts by object through cmp (stable); the cursor ends on -1.
  virtual void Sort(int (*cmp)(const T&, const T&));
  using Base::Sort;  // the pointer-comparator sort

  const T& GetPData(ZtLong i) const { return owning::Object(this->GetAt(i)); }
  /// The object at i, reached through the growing operator[] (the cursor moves to i).
  T& operator()(ZtLong i) { return owning::Object((*this)[i]); }
  T& GetCurPData() { return owning::Object(this->GetCurData()); }
  /// True when the cursor is out or its element is empty.
  bool IsCurEmpty() { return owning::IsCurEmpty<T>(*this); }
  /// True when i is not a valid index or element i is empty.
  bool IsEmptyData(ZtLong i) const { return owning::IsEmptyData<T>(*this, i); }
  /// Number of non-empty elements.
  ZtLong GetDataNum() const { return owning::GetDataNum<T>(*this); }

  /// Deletes the object at the cursor and leaves an empty place.
  void ReleaseCur() { owning::ReleaseCur<T>(*this); }
  void Release(ZtLong i) {
    this->MoveTo(i);
    ReleaseCur();
  }
  /// Deletes every object; the length stays and every place is empty. The cursor ends on -1.
  void ReleaseAll() { owning::ReleaseAll<T>(*this); }
  /// Removes the element at the cursor and returns its pointer (the caller owns the object);
  /// null when the cursor is out.
  T* TakeOffCur();
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
  /// Stores p (adopting it) in the first empty place, appending one when there is none; returns
  /// its index, with the cursor on it.
  ZtLong PlaceIn(T* p) { return owning::PlaceIn<T>(*this, p); }
  /// First index in [from, to] (a negative `to` or one past the end: the last index) whose
  /// object equals v, or -1.
  ZtLong FindData(const T& v, ZtLong from = 0, ZtLong to = -1) const {
    return owning::FindData<T>(*this, v, from, to);
  }
  /// Pushes every such index, ascending, into hits; returns hits.GetCount().
  ZtLong FindData(const T& v, ZtQuene<ZtLong>& hits, ZtLong from = 0, ZtLong to = -1) const {
    return owning::FindData<T>(*this, v, hits, from, to);
  }
  /// Cursor on the first such element (true), or false.
  bool FindDataTo(const T& v, ZtLong from = 0, ZtLong to = -1) {
    return owning::FindDataTo<T>(*this, v, from, to);
  }
  /// Index of the first object equal to v; appends a clone of v when there is none.
  ZtLong FindDataOrAppend(const T& v);
  /// Inserts a clone of v at the head when no object equals v.
  void FindDataOrInsertHead(const T& v);
  /// Deletes every object equal to v and removes its element; returns how many.
  ZtLong FindDataDel(const T& v) { return owning::FindDataDel<T>(*this, v); }
  /// Deletes the object of the first element holding p and removes it: 1, or 0 when absent.
  ZtLong FindDel(T* p) { return owning::FindDel<T>(*this, p); }
  /// Binary search by object in a list sorted ascending; index or -1.
  ZtLong BFindData(const T& v, ZtLong from = 0, ZtLong to = -1) const {
    return owning::BFindData<T>(*this, v, from, to);
  }
  /// Cursor on an object equal to v (true) or where v belongs (false; -1 means the end).
  bool BFindDataTo(const T& v, ZtLong from = 0, ZtLong to = -1) {
    return owning::BFindDataTo<T>(*this, v, from, to);
  }
  /// Inserts p at its sorted place by object and adopts it (true). With an equal object present
  /// and `dup` false nothing is stored and the caller keeps p; with `dup` p goes behind the
  /// equal run.
  bool SortInto(T* p, bool dup) { return owning::SortInto<T>(*this, p, dup); }
  /// Element-wise equality by object; two empty places are equal.
  bool operator==(const OwningList& other) const { return owning::Equal<T>(*this, other); }
  bool operator!=(const OwningList& other) const { return !(*this == other); }

 protected:
  /// `args` go to the list base; the sentinel's data is null, as an empty place.
  template <class... Args>
  explicit OwningList(Args... args) : Base(args...) {
    this->m_head->data = nullptr;
  }
  /// Deletes this list's objects, then holds clones of src's, in order, empty places kept.
  void CloneFrom(const OwningList& src) {
    if (this != &src) this->DeepCopy(src);
  }
};

template <class T, class ListBase>
void OwningList<T, ListBase>::DelCur() {
  if (this->IsOut()) return;
  // The object goes first, while its node is still listed: a destructor that looks at the list
  // still finds its own place in it.
  delete this->GetCurData();
  Base::DelCur();
}

template <class T, class ListBase>
T* OwningList<T, ListBase>::TakeOffCur() {
  if (this->IsOut()) return nullptr;
  T* p = this->GetCurData();
  this->SetCurData(nullptr);
  Base::DelCur();
  return p;
}

template <class T, class ListBase>
void OwningList<T, ListBase>::Sort(bool ascending) {
  // Take the empty places out (the sequence's FindDel by value), sort, and put them at the end.
  ZtLong empty = ZtDynArrayBase<T*>::FindDel(nullptr);
  this->BackwardInsertionSort(owning::ObjectAfter<T>(ascending));
  while (empty-- > 0) this->Append(nullptr);
}

template <class T, class ListBase>
void OwningList<T, ListBase>::Sort(int (*cmp)(const T&, const T&)) {
  if (cmp != nullptr) this->BackwardInsertionSort(owning::ObjectAfter<T>(cmp));
}

template <class T, class ListBase>
ZtLong OwningList<T, ListBase>::FindDataOrAppend(const T& v) {
  const ZtLong i = FindData(v, 0, -1);
  if (i != -1) return i;
  T* copy = ZtCloner<T>::Clone(v);
  try {
    return this->Append(copy);
  } catch (...) {
    delete copy;
    throw;
  }
}

template <class T, class ListBase>
void OwningList<T, ListBase>::FindDataOrInsertHead(const T& v) {
  if (FindData(v, 0, -1) != -1) return;
  T* copy = ZtCloner<T>::Clone(v);
  try {
    this->InsertHead(copy);
  } catch (...) {
    delete copy;
    throw;
  }
}

}  // namespace zt::detail

#endif  // ZT_CONTAINERS_INTERNAL_OWNING_LIST_H_
