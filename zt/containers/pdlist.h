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
// collected at the end by Sort(bool) (the comparator sort keeps them last too). The object sorts
// are the lists' insertion sorts: whatever the order they end with every object kept, none
// deleted. Out-of-contract
// calls never dereference null: GetPData and friends yield a scratch object for an empty place.
#ifndef ZT_CONTAINERS_PDLIST_H_
#define ZT_CONTAINERS_PDLIST_H_

#include "zt/config.h"
#include "zt/containers/dlist.h"
#include "zt/containers/internal/owning_list.h"

/// Doubly linked list owning the objects its elements point to; null elements are empty places.
template <class T>
class ZtPDList : public zt::detail::OwningList<T, ZtDList<T*>> {
  using Base = zt::detail::OwningList<T, ZtDList<T*>>;

 public:
  /// n empty places (none when n <= 0).
  explicit ZtPDList(ZtLong n = 0) : Base(n) {}
  /// A copy holding clones of src's objects, in the same order, empty places kept.
  ZtPDList(const ZtPDList& src) : Base() { this->CloneFrom(src); }
  /// Deletes this list's objects, then holds clones of src's.
  ZtPDList& operator=(const ZtPDList& src) {
    this->CloneFrom(src);
    return *this;
  }
  ~ZtPDList() override = default;
};

#endif  // ZT_CONTAINERS_PDLIST_H_
