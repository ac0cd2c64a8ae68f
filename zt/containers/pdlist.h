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
// the destructor delete objects; DelCur deletes the object before its node leaves the list.
// TakeOff* remove an element and hand its object to the caller. SetCurData and assignment
// through operator[] overwrite a pointer without deleting the object it held: take the old one
// off first. Never store the same pointer twice.
//
// Copies own objects of their own: copy construction, assignment, DeepCopy, operator<< and
// Left/Right/Mid between owning containers clone every object through ZtCloner (clone.h); a copy
// that overwrites this list deletes its objects first. SetLength is the list's: it keeps every
// element whatever `keep` says, and shrinking deletes the objects of the elements it removes.
// FindDataOrAppend and FindDataOrInsertHead add a copy made with new T(x).
//
// The *Data members, the object sorts and == compare objects with T's operators; Find, FindDel(T*)
// and the pointer-comparator Sort compare pointers. FindDel walks the cursor from the head and
// leaves it on -1 when the pointer is absent. Empty places are skipped by the searches and
// collected at the end by Sort(bool) (the comparator sort keeps them last too). The object sorts
// are the lists' insertion sorts: whatever the order they end with every object kept, none
// deleted. Out-of-contract calls never dereference null: GetPData and friends yield a scratch
// object for an empty place (see dyn_parray.h for a T of which none can be made). T needs only
// delete, == (also for == of lists and SortInto's equal run), < and >, and a copy constructor for
// the two members that add a copy.
#ifndef ZT_CONTAINERS_PDLIST_H_
#define ZT_CONTAINERS_PDLIST_H_

#include "zt/config.h"
#include "zt/containers/dlist.h"
#include "zt/containers/internal/owning_list.h"

/// Doubly linked list owning the objects its elements point to; null elements are empty places.
template <class T>
class ZtPDList : public ZtDList<T*>, public zt::detail::OwnsPointees {
  using Base = ZtDList<T*>;

 public:
  /// n empty places (none when n <= 0).
  // NOLINTNEXTLINE(google-explicit-constructor): implicit, as the interface declares it
  ZtPDList(ZtLong n = 0) : Base(n) { this->m_head->data = nullptr; }
  /// A copy holding clones of src's objects, in the same order, empty places kept.
  ZtPDList(const ZtPDList& src) : Base(), OwnsPointees() {
    this->m_head->data = nullptr;
    zt::detail::owning::CopyConstruct(*this, src);
  }
  /// Deletes this list's objects, then holds clones of src's.
  ZtPDList& operator=(const ZtPDList& src) {
    if (this != &src) this->DeepCopy(src);
    return *this;
  }
  ~ZtPDList() override { ReleaseAll(); }

  ZT_DETAIL_OWNING_LIST_MEMBERS(ZtPDList)
};

#endif  // ZT_CONTAINERS_PDLIST_H_
