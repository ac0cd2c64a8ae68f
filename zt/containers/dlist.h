// zt/containers/dlist.h
//
// ZtDList<T>: the circular list of ZtList<T> with a back link in every node. It keeps ZtList's
// interface, fields and most bodies, and replaces what the back link makes cheaper or must keep
// right: MoveToPre, MoveTo, GetPre, GetAt, DelCur, Reset, InsertAfterCur, DetachAfterCur,
// Conbine, ReverseList, Rotate and the two sorts. Every node, the sentinel included, is a
// ZtDListNode<T>, and node->next->pre == node holds all around the circle.
//
//   ZtDList<int> l;
//   l << 2 << 1 << 3;          // [2, 1, 3], cursor on 2
//   l.MoveToPre();             // one step: cursor on 1
//
// MoveToPre, DelCur, InsertCur and GetPre take one step. MoveTo and GetAt walk from the cursor,
// forward or backward, with element 0 and the last element reached directly. The sorts are the
// stable insertion sort scanning backward from the element being placed: a sorted list costs
// n - 1 comparisons; an element that has to move is compared with the predecessor that stopped
// it twice, once to see that it moves and once as the first step of the backward scan. Displaced
// values go into new nodes and their old places are emptied (set to T()) before removal. As in
// ZtList, Sort(bool) on plain types takes an O(n log n) path with the same result, and the sorts
// end and keep every element whatever the order.
//
// Conbine splices only between doubly linked lists (this class and the classes derived from
// it); a singly linked `other` is refused and the length returned unchanged. ReverseList keeps
// the cursor on its node, as ZtList does. Out-of-contract calls are harmless as in ZtList.
#ifndef ZT_CONTAINERS_DLIST_H_
#define ZT_CONTAINERS_DLIST_H_

#include "zt/checked.h"
#include "zt/config.h"
#include "zt/containers/dyn_array_base.h"
#include "zt/containers/internal/element_ops.h"
#include "zt/containers/internal/sort.h"
#include "zt/containers/list.h"

/// A node of ZtDList<T>: `data` and `next` laid out as in ZtListNode<T>, so that the bodies a
/// doubly linked list inherits from ZtList<T> walk these nodes too, then the back link.
template <class T>
struct ZtDListNode {
  /// `next` and `pre` null; `data` value-initialised.
  ZtDListNode() : data(), next(nullptr), pre(nullptr) {}
  ZtDListNode(const ZtDListNode&) = default;
  /// Copies the three fields.
  // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): member-wise, so safe on itself
  ZtDListNode& operator=(const ZtDListNode& o) {
    data = o.data;
    next = o.next;
    pre = o.pre;
    return *this;
  }

  T data;
  ZtDListNode* next;
  ZtDListNode* pre;
};

template <class T>
class ZtXList;

/// Circular doubly linked list with a sentinel node; ownership as in ZtList<T>.
template <class T>
class ZtDList : public ZtList<T>, public zt::detail::DoublyLinkedNodes {
  using Base = ZtList<T>;
  using Seq = ZtDynArrayBase<T>;
  using Node = ZtListNode<T>;
  using DNode = ZtDListNode<T>;

 public:
  /// A list of n elements of value T() (none when n <= 0); cursor -1.
  // NOLINTNEXTLINE(google-explicit-constructor): implicit, as the interface declares it
  ZtDList(ZtLong n = 0) : Base(zt::detail::AdoptSentinel{}, NewSentinel()) { Build(nullptr, n); }
  ZtDList(const ZtDList& src)
      : Base(zt::detail::AdoptSentinel{}, NewSentinel()), zt::detail::DoublyLinkedNodes() {
    Build(&src, src.GetLength());
  }
  /// A copy of any sequence, array or list; cursor -1.
  // NOLINTNEXTLINE(google-explicit-constructor): implicit, as the interface declares it
  ZtDList(const Seq& src) : Base(zt::detail::AdoptSentinel{}, NewSentinel()) {
    Build(&src, src.GetLength());
  }
  ZtDList& operator=(const ZtDList& src) {
    if (this != &src) this->DeepCopy(src);
    return *this;
  }
  ZtDList& operator=(const Seq& src) {
    this->DeepCopy(src);
    return *this;
  }
  ~ZtDList() override { this->template FreeAll<DNode>(); }

  void Reset() override {
    this->template FreeElements<DNode>();
    D(m_head)->pre = D(m_head);
  }
  /// One step back; from -1 to the last element, from element 0 to -1.
  void MoveToPre() override {
    m_curNode = N(D(m_curNode)->pre);
    m_cur = m_curNode == m_tail ? m_length - 1 : m_cur - 1;
  }
  /// Cursor on i (-1 when i is not a valid index): element 0 and the last element directly,
  /// otherwise steps of MoveToPre or MoveToNext from the cursor in the direction of i.
  void MoveTo(ZtLong i) override {
    if (!this->IsValidIndex(i)) {
      this->SetCursor(m_head, -1);
    } else if (i == 0) {
      this->SetCursor(m_head->next, 0);
    } else if (i == m_length - 1) {
      this->SetCursor(m_tail, i);
    } else if (i < m_cur) {
      for (ZtLong k = m_cur - i; k > 0; --k) MoveToPre();
    } else {
      for (ZtLong k = i - m_cur; k > 0; --k) this->MoveToNext();
    }
  }
  const T* GetPre(const T* p) const override {
    return p == nullptr || p == this->GetFirst() ? nullptr : &D(Base::NodeOf(p))->pre->data;
  }
  /// Walks from the cursor, forward or backward; the cursor does not move.
  const T& GetAt(ZtLong i) const override {
    return ZT_IN_CONTRACT(this->IsValidIndex(i), "GetAt", "ZtDList", "index", i)
               ? NodeFromCursor(i)->data
               : zt::detail::Sink<T>();
  }
  /// Removes the element at the cursor in one step; ignored with the cursor on -1.
  void DelCur() override {
    if (!ZT_IN_CONTRACT(!this->IsOut(), "DelCur", "ZtDList", "cursor", m_cur)) return;
    D(m_curNode->next)->pre = D(m_curNode)->pre;
    this->template DelCurAs<DNode>();
  }
  /// Stable insertion sort scanning backward; a null cmp does nothing.
  void Sort(int (*cmp)(const T&, const T&)) override {
    if (cmp != nullptr) BackwardInsertionSort(Base::AfterBy(cmp));
  }
  void Sort(bool ascending) override {
    if (zt::detail::SortNodeValues<T, ZtDList, ZtXList<T>>(*this, m_head, m_length, ascending)) {
      this->SetCursor(m_head, -1);
    } else {
      BackwardInsertionSort(Base::AfterBy(ascending));
    }
  }

  void InsertAfterCur(const T& v) override {
    DNode* const prev = D(m_curNode);
    DNode* const n = this->template NewNodeAfterCur<DNode>(v);
    n->pre = prev;
    n->next->pre = n;
  }
  void DetachAfterCur() override {
    Base::DetachAfterCur();
    D(m_head)->pre = D(m_curNode);
  }
  /// As ZtList::Conbine; `other` must be doubly linked as well, or nothing moves.
  ZtLong Conbine(ZtList<T>& other, ZtLong pos) override {
    Node* const oldTail = m_tail;
    Base::Conbine(other, pos);
    if (m_tail != oldTail) {
      D(oldTail->next)->pre = D(oldTail);
      D(m_head)->pre = D(m_tail);
    }
    return m_length;
  }
  void ReverseList() override {
    Base::ReverseList();
    RelinkBack();
  }
  void Rotate(ZtLong a, ZtLong b) override {
    Node* const oldFirst = m_head->next;
    Node* const oldTail = m_tail;
    Base::Rotate(a, b);
    if (m_head->next == oldFirst) return;
    D(oldFirst)->pre = D(oldTail);
    D(m_head->next)->pre = D(m_head);
    D(m_head)->pre = D(m_tail);
  }

 protected:
  using Base::m_cur;
  using Base::m_curNode;
  using Base::m_head;
  using Base::m_length;
  using Base::m_tail;

  /// The backward insertion sort; after(y, x) is true when y must go after x.
  template <class After>
  void BackwardInsertionSort(After after);

  static DNode* D(Node* n) { return Base::template AsNodeT<DNode>(n); }
  static const DNode* D(const Node* n) { return reinterpret_cast<const DNode*>(n); }
  static Node* N(DNode* n) { return Base::AsNode(n); }

 private:
  static Node* NewSentinel() {
    DNode* s = new DNode;
    s->next = s;
    s->pre = s;
    return N(s);
  }
  /// A constructor's filling: copies of src's first n elements, or n values T().
  void Build(const Seq* src, ZtLong n) {
    this->template BuildOrFree<DNode>([this, src, n] {
      this->template AppendNodes<DNode>(src, n);
      RelinkBack();
    });
  }
  /// Points every back link at the node whose next link reaches it.
  void RelinkBack() {
    Node* n = m_head;
    do {
      D(n->next)->pre = D(n);
      n = n->next;
    } while (n != m_head);
  }
  /// The node at valid index i, walked to from the cursor.
  Node* NodeFromCursor(ZtLong i) const {
    Node* n = m_curNode;
    ZtLong k = m_cur;
    for (; k < i; ++k) n = n->next;
    for (; k > i; --k) n = N(D(n)->pre);
    return n;
  }
};

template <class T>
template <class After>
void ZtDList<T>::BackwardInsertionSort(After after) {
  if (m_length < 2) return;
  this->MoveToFirst();
  this->MoveToNext();
  while (m_cur != -1) {
    const T x = m_curNode->data;
    const ZtLong s = m_cur;
    Node* const xNode = m_curNode;
    MoveToPre();
    if (after(m_curNode->data, x)) {
      while (m_cur != -1 && after(m_curNode->data, x)) MoveToPre();
      this->MoveValueAfterCur(x, xNode, s);
    } else {
      this->MoveToNext();
    }
    this->MoveToNext();
  }
}

// Sort(bool) recognises the grouped list by its exact type, so the class must be complete wherever
// the sort is instantiated.
#include "zt/containers/xlist.h"  // IWYU pragma: export

#endif  // ZT_CONTAINERS_DLIST_H_
