// zt/containers/xlist.h
//
// ZtXList<T>: the doubly linked list of ZtDList<T> with a group index for positional access. The
// elements fall into consecutive groups of m_groupSize (25 by default); entry k of m_groupIndex
// is the node at index k * m_groupSize, and there is exactly one entry per group start below the
// length. MoveTo(i) jumps to the start of i's group and walks fewer than m_groupSize steps, so
// indexed access (operator[], Insert, Del, the binary searches) costs at most one group's walk.
//
//   ZtXList<int> l(0, 25);     // empty, groups of 25
//   for (int i = 0; i < 100; ++i) l.Append(i);
//   l.MoveTo(60);              // starts at element 50, walks 10 steps
//
// Every change keeps the index exact: an insertion or deletion moves the entries of the groups
// after it by one node (one step per such group) and adds or drops the last entry when the last
// group opens or empties; DetachAfterCur (and with it the splices that give nodes away) trims
// it; Conbine appends the entries of the groups that arrive and leaves the cursor on the last new
// group start. ReverseList, Rotate and assignment rebuild the index and leave the cursor on the
// last group start (-1 when empty). The bookkeeping lives in InsertAfterCur, DelCur,
// DetachAfterCur and Conbine only; every other insertion, deletion and splice reaches them
// through the virtual table, so derived lists inherit it.
//
// The index grows by its allocation unit (100 entries by default). Room for new entries is made
// before the list changes, so a failed allocation leaves list, index and cursor unchanged. A
// group size below 1 is taken as 1.
#ifndef ZT_CONTAINERS_XLIST_H_
#define ZT_CONTAINERS_XLIST_H_

#include <cstdint>

#include "zt/checked.h"
#include "zt/config.h"
#include "zt/containers/dlist.h"
#include "zt/containers/dyn_array.h"
#include "zt/containers/internal/element_ops.h"
#include "zt/containers/list.h"

/// Doubly linked list with an index of the first node of every group of m_groupSize elements.
template <class T>
class ZtXList : public ZtDList<T> {
  using Base = ZtDList<T>;
  using Node = ZtListNode<T>;

 public:
  /// n elements of value T(), groups of `groupSize`, an index growing by `allocUnit` entries.
  /// Building the index leaves the cursor on the last group start (-1 when empty).
  // NOLINTNEXTLINE(google-explicit-constructor): implicit, as the interface declares it
  ZtXList(ZtLong n = 0, ZtLong groupSize = 25, ZtLong allocUnit = 100)
      : Base(n),
        m_groupIndex(0, allocUnit),
        m_groupSize(ZT_IN_CONTRACT(groupSize > 0, "ZtXList", "ZtXList", "group size", groupSize)
                        ? groupSize
                        : 1) {
    UpdateGroup(0);
  }
  /// Copies the elements, the group size and the index allocation unit; builds its own index,
  /// which leaves the cursor on the last group start.
  ZtXList(const ZtXList& src)
      : Base(src), m_groupIndex(0, src.m_groupIndex.GetAllocUnit()), m_groupSize(src.m_groupSize) {
    UpdateGroup(0);
  }
  /// Copies the elements and takes src's group size; the index is rebuilt.
  ZtXList& operator=(const ZtXList& src) {
    if (this != &src) this->DeepCopy(src);
    RebuildGroups(src.m_groupSize);
    return *this;
  }
  ~ZtXList() override = default;

  void Reset() override {
    m_groupIndex.Reset();
    Base::Reset();
  }
  /// Cursor on i (-1 when i is not a valid index), walking from the start of i's group.
  void MoveTo(ZtLong i) override {
    const ZtLong g = i / m_groupSize;
    if (g >= 0 && g < m_groupIndex.GetLength()) {
      this->SetCursor(m_groupIndex.GetAt(g), g * m_groupSize);
    }
    Base::MoveTo(i);
  }
  void DelCur() override {
    if (!ZT_IN_CONTRACT(!this->IsOut(), "DelCur", "ZtXList", "cursor", m_cur)) return;
    ZtLong entries = m_groupIndex.GetLength();
    if (IsGroupEnd(m_length - 1, entries - 1)) m_groupIndex.ReAllocate(--entries);
    ShiftGroups(m_cur, entries, false);
    Base::DelCur();
  }
  void InsertAfterCur(const T& v) override {
    const ZtLong entries = m_groupIndex.GetLength();
    const bool opensGroup = IsGroupEnd(m_length, entries);  // the new last element starts one
    if (opensGroup) ReserveGroups(zt::detail::AddLength(entries, 1));
    Base::InsertAfterCur(v);
    ShiftGroups(m_cur, entries, true);
    if (opensGroup) m_groupIndex.Append(m_tail);
  }
  void DetachAfterCur() override {
    Base::DetachAfterCur();
    m_groupIndex.ReAllocate(GroupsFor(m_length, m_groupSize));
  }
  /// As ZtDList::Conbine; then indexes the groups that arrived, the cursor ending on the last
  /// new group start (unchanged when no group was added).
  ZtLong Conbine(ZtList<T>& other, ZtLong pos) override {
    if (pos >= 0 && pos < other.GetLength()) {
      const ZtLong length = zt::detail::AddLength(m_length, other.GetLength() - pos);
      ReserveGroups(GroupsFor(length, m_groupSize));
    }
    Base::Conbine(other, pos);
    UpdateGroup(m_groupIndex.GetLength());
    return m_length;
  }
  /// Reverses the order; the cursor ends on the last group start.
  void ReverseList() override {
    Base::ReverseList();
    RebuildGroups(m_groupSize);
  }
  /// Rotates as ZtDList::Rotate; the index is rebuilt (also when a == b) and the cursor ends on
  /// the last group start.
  void Rotate(ZtLong a, ZtLong b) override {
    Base::Rotate(a, b);
    RebuildGroups(m_groupSize);
  }

 protected:
  using Base::m_cur;
  using Base::m_curNode;
  using Base::m_length;
  using Base::m_tail;

  /// Appends the entries of groups g, g + 1, ... below the length, positioning with ZtDList's
  /// MoveTo; the index must hold exactly g correct entries. The cursor ends on the last group
  /// start visited.
  void UpdateGroup(ZtLong g) {
    ReserveGroups(GroupsFor(m_length, m_groupSize));
    for (std::int64_t i = static_cast<std::int64_t>(g) * m_groupSize; i < m_length;
         i += m_groupSize) {
      Base::MoveTo(static_cast<ZtLong>(i));
      m_groupIndex.Append(m_curNode);
    }
  }

  ZtDynArray<ZtListNode<T>*> m_groupIndex;
  ZtLong m_groupSize;

 private:
  // True when `length` elements fill exactly `groups` groups. With the index exact, groups is
  // the number of entries, so this replaces a division on every insertion at the end.
  bool IsGroupEnd(ZtLong length, ZtLong groups) const {
    return static_cast<std::int64_t>(groups) * m_groupSize == length;
  }
  /// Entries of an index over `length` elements.
  static ZtLong GroupsFor(ZtLong length, ZtLong groupSize) {
    return length > 0 ? (length - 1) / groupSize + 1 : 0;
  }
  /// Makes room for `entries` entries, growing by the allocation unit; nothing changes when the
  /// allocation fails.
  void ReserveGroups(ZtLong entries) {
    if (entries <= m_groupIndex.GetSpaceSize()) return;
    const ZtLong kept = m_groupIndex.GetLength();
    m_groupIndex.ReAllocate(entries);
    m_groupIndex.ReAllocate(kept);
  }
  /// Moves each of the first `entries` entries whose group starts at or after index c one node
  /// back (after an insertion at c) or forward (before the deletion at c).
  void ShiftGroups(ZtLong c, ZtLong entries, bool back) {
    // The last entry's group starts before c (always so at the end): nothing to move, and no
    // division on the append path.
    if (static_cast<std::int64_t>(entries - 1) * m_groupSize < c) return;
    for (ZtLong k = c > 0 ? (c - 1) / m_groupSize + 1 : 0; k < entries; ++k) {
      Node*& entry = m_groupIndex[k];
      entry = back ? Base::N(Base::D(entry)->pre) : entry->next;
    }
  }
  /// Rebuilds the index for `groupSize`, which becomes the group size. Room comes first, so a
  /// failed allocation leaves the old index.
  void RebuildGroups(ZtLong groupSize) {
    ReserveGroups(GroupsFor(m_length, groupSize));
    m_groupSize = groupSize;
    m_groupIndex.Reset();
    UpdateGroup(0);
  }
};

#endif  // ZT_CONTAINERS_XLIST_H_
