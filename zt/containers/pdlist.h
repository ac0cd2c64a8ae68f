// zt/containers/pdlist.h
//
// ZtPDList<T>: a ZtDList<T*> that owns the objects its elements point to. Null is a legal element
// and marks an empty place. It is the list counterpart of ZtDynPArray<T> and shares its rules:
//
//   ZtPDList<Job> jobs;
//   jobs.SortInto(new Job(3), true);    // sorted insertion by object; the list owns the job
//
// Ownership: every insertion adopts the pointer it stores. DelCur and everything built on it
// (Del, DelHead, DelTail, FindDel, FindDataDel, SetLength when it shrinks), Reset, Release* and
// the destructor delete objects; an object is deleted after its node has left the list.
// TakeOff* remove an element and hand its object to the caller. SetCurData and assignment
// through operator[] overwrite a pointer without deleting the object it held: take the old one
// off first. Never store the same pointer twice.
//
// Copies own objects of their own: copy construction, assignment, DeepCopy, operator<< and
// Left/Right/Mid between owning containers clone every object through ZtCloner (clone.h).
// SetLength without `keep` deletes every object first and leaves empty places.
//
// The *Data members, the object sorts and == compare objects with T's operators; Find, FindDel(T*)
// and the pointer-comparator Sort compare pointers. Empty places are skipped by the searches and
// collected at the end by Sort(bool) (the comparator sort keeps them last too). Out-of-contract
// calls never dereference null: GetPData and friends yield a scratch object for an empty place.
#ifndef ZT_CONTAINERS_PDLIST_H_
#define ZT_CONTAINERS_PDLIST_H_

#include <memory>

#include "zt/config.h"
#include "zt/containers/clone.h"
#include "zt/containers/dlist.h"
#include "zt/containers/internal/owning.h"
#include "zt/containers/quene.h"

/// Doubly linked list owning the objects its elements point to; null elements are empty places.
template <class T>
class ZtPDList : public ZtDList<T*>, public zt::detail::OwnsPointees {
  using Base = ZtDList<T*>;

 public:
  /// n empty places (none when n <= 0).
  explicit ZtPDList(ZtLong n = 0) : Base(n) { this->m_head->data = nullptr; }
  /// A copy holding clones of src's objects, in the same order, empty places kept.
  ZtPDList(const ZtPDList& src) : Base(), OwnsPointees() {
    this->m_head->data = nullptr;
    this->DeepCopy(src);
  }
  /// Deletes this list's objects, then holds clones of src's.
  ZtPDList& operator=(const ZtPDList& src) {
    if (this != &src) this->DeepCopy(src);
    return *this;
  }
  ~ZtPDList() override { ReleaseAll(); }

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
  bool Move(ZtLong from, ZtLong to) override {
    return zt::detail::owning::Move<T>(*this, from, to);
  }
  /// Sorts by object through cmp (stable); the cursor ends on -1.
  virtual void Sort(int (*cmp)(const T&, const T&));
  using Base::Sort;  // the pointer-comparator sort

  const T& GetPData(ZtLong i) const { return zt::detail::owning::Object(this->GetAt(i)); }
  /// The object at i, reached through the growing operator[] (the cursor moves to i).
  T& operator()(ZtLong i) { return zt::detail::owning::Object((*this)[i]); }
  T& GetCurPData() { return zt::detail::owning::Object(this->GetCurData()); }
  /// True when the cursor is out or its element is empty.
  bool IsCurEmpty() { return zt::detail::owning::IsCurEmpty<T>(*this); }
  /// True when i is not a valid index or element i is empty.
  bool IsEmptyData(ZtLong i) const { return zt::detail::owning::IsEmptyData<T>(*this, i); }
  /// Number of non-empty elements.
  ZtLong GetDataNum() const { return zt::detail::owning::GetDataNum<T>(*this); }

  /// Deletes the object at the cursor and leaves an empty place.
  void ReleaseCur() { zt::detail::owning::ReleaseCur<T>(*this); }
  void Release(ZtLong i) {
    this->MoveTo(i);
    ReleaseCur();
  }
  /// Deletes every object; the length stays and every place is empty. The cursor ends on -1.
  void ReleaseAll() { zt::detail::owning::ReleaseAll<T>(*this); }
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
  ZtLong PlaceIn(T* p) { return zt::detail::owning::PlaceIn<T>(*this, p); }
  /// First index in [from, to] (a negative `to` or one past the end: the last index) whose
  /// object equals v, or -1.
  ZtLong FindData(const T& v, ZtLong from = 0, ZtLong to = -1) const {
    return zt::detail::owning::FindData<T>(*this, v, from, to);
  }
  /// Pushes every such index, ascending, into hits; returns hits.GetCount().
  ZtLong FindData(const T& v, ZtQuene<ZtLong>& hits, ZtLong from = 0, ZtLong to = -1) const {
    return zt::detail::owning::FindData<T>(*this, v, hits, from, to);
  }
  /// Cursor on the first such element (true), or false.
  bool FindDataTo(const T& v, ZtLong from = 0, ZtLong to = -1) {
    return zt::detail::owning::FindDataTo<T>(*this, v, from, to);
  }
  /// Index of the first object equal to v; appends a clone of v when there is none.
  ZtLong FindDataOrAppend(const T& v);
  /// Inserts a clone of v at the head when no object equals v.
  void FindDataOrInsertHead(const T& v);
  /// Deletes every object equal to v and removes its element; returns how many.
  ZtLong FindDataDel(const T& v) { return zt::detail::owning::FindDataDel<T>(*this, v); }
  /// Deletes the object of the first element holding p and removes it: 1, or 0 when absent.
  ZtLong FindDel(T* p) { return zt::detail::owning::FindDel<T>(*this, p); }
  /// Binary search by object in a list sorted ascending; index or -1.
  ZtLong BFindData(const T& v, ZtLong from = 0, ZtLong to = -1) const {
    return zt::detail::owning::BFindData<T>(*this, v, from, to);
  }
  /// Cursor on an object equal to v (true) or where v belongs (false; -1 means the end).
  bool BFindDataTo(const T& v, ZtLong from = 0, ZtLong to = -1) {
    return zt::detail::owning::BFindDataTo<T>(*this, v, from, to);
  }
  /// Inserts p at its sorted place by object and adopts it (true). With an equal object present
  /// and `dup` false nothing is stored and the caller keeps p; with `dup` p goes behind the
  /// equal run.
  bool SortInto(T* p, bool dup) { return zt::detail::owning::SortInto<T>(*this, p, dup); }
  /// Element-wise equality by object; two empty places are equal.
  bool operator==(const ZtPDList& other) const {
    return zt::detail::owning::Equal<T>(*this, other);
  }
  bool operator!=(const ZtPDList& other) const { return !(*this == other); }
};

template <class T>
void ZtPDList<T>::DelCur() {
  if (this->IsOut()) return;
  std::unique_ptr<T> doomed(this->GetCurData());  // deleted once the node has left the list
  Base::DelCur();
}

template <class T>
T* ZtPDList<T>::TakeOffCur() {
  if (this->IsOut()) return nullptr;
  T* p = this->GetCurData();
  this->SetCurData(nullptr);
  Base::DelCur();
  return p;
}

template <class T>
void ZtPDList<T>::Sort(bool ascending) {
  // Take the empty places out (the sequence's FindDel by value), sort, and put them at the end.
  ZtLong empty = ZtDynArrayBase<T*>::FindDel(nullptr);
  this->BackwardInsertionSort(zt::detail::owning::ObjectAfter<T>(ascending));
  while (empty-- > 0) this->Append(nullptr);
}

template <class T>
void ZtPDList<T>::Sort(int (*cmp)(const T&, const T&)) {
  if (cmp != nullptr) this->BackwardInsertionSort(zt::detail::owning::ObjectAfter<T>(cmp));
}

template <class T>
ZtLong ZtPDList<T>::FindDataOrAppend(const T& v) {
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

template <class T>
void ZtPDList<T>::FindDataOrInsertHead(const T& v) {
  if (FindData(v, 0, -1) != -1) return;
  T* copy = ZtCloner<T>::Clone(v);
  try {
    this->InsertHead(copy);
  } catch (...) {
    delete copy;
    throw;
  }
}

#endif  // ZT_CONTAINERS_PDLIST_H_
