// zt/containers/pxlist.h
//
// ZtPXList<T>: a ZtXList<T*> (grouped list with a positional index) that owns the objects its
// elements point to. It has the complete owning interface of ZtPDList<T>, from the same code, with
// the same rules (see pdlist.h): null elements are empty places, deleting an element deletes its
// object, TakeOff* hand the object to the caller, copies clone every object through ZtCloner.
//
//   ZtPXList<Node> nodes;                // groups of 25, index growing by 100 entries
//   nodes.SortInto(new Node(7), false);  // sorted by object; positioning uses the index
//
// Construction leaves the cursor on -1; a copy builds its index from its own nodes, which leaves
// the cursor on the last group start, as assignment does. SetAll is hidden (and does nothing),
// because filling would overwrite every owned pointer.
#ifndef ZT_CONTAINERS_PXLIST_H_
#define ZT_CONTAINERS_PXLIST_H_

#include "zt/config.h"
#include "zt/containers/internal/owning_list.h"
#include "zt/containers/xlist.h"

/// Grouped list owning the objects its elements point to; null elements are empty places.
template <class T>
class ZtPXList : public ZtXList<T*>, public zt::detail::OwnsPointees {
  using Base = ZtXList<T*>;

 public:
  /// n empty places, groups of `groupSize`, an index growing by `allocUnit` entries; cursor -1.
  // NOLINTNEXTLINE(google-explicit-constructor): implicit, as the interface declares it
  ZtPXList(ZtLong n = 0, ZtLong groupSize = 25, ZtLong allocUnit = 100)
      : Base(0, groupSize, allocUnit) {
    this->m_head->data = nullptr;
    if (n >= 1) ZtPXList::ReAllocate(n);
  }
  /// A copy holding clones of src's objects, with src's group size and index allocation unit;
  /// its index is built from its own nodes, which leaves the cursor on the last group start.
  ZtPXList(const ZtPXList& src)
      : Base(0, src.m_groupSize, src.m_groupIndex.GetAllocUnit()), OwnsPointees() {
    this->m_head->data = nullptr;
    zt::detail::owning::CopyConstruct(*this, src);
    this->m_groupIndex.Reset();
    this->UpdateGroup(0);
  }
  /// Deletes this list's objects, then holds clones of src's and takes its group size.
  ZtPXList& operator=(const ZtPXList& src) {
    if (this != &src) Base::operator=(src);  // clones: both lists own their objects
    return *this;
  }
  ~ZtPXList() override { ReleaseAll(); }

  // The analyzer loses the unlink in the base's DelCur and takes a second DelCur for a second
  // delete of the same object.
  ZT_DETAIL_OWNING_LIST_MEMBERS(ZtPXList)  // NOLINT(clang-analyzer-cplusplus.NewDelete)

 protected:
  /// Does nothing: filling would overwrite every owned pointer.
  void SetAll(const T* /*p*/) {}
};

#endif  // ZT_CONTAINERS_PXLIST_H_
