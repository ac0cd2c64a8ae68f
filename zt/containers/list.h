// zt/containers/list.h
//
// ZtList<T>: the circular singly linked list with a sentinel node, the root of every list of the
// library. It implements the cursor sequence of ZtDynArrayBase<T> on heap nodes (one `new` per
// element, no spare capacity) and adds splicing, reversal and rotation.
//
// The sentinel stands at index -1. The cursor is -1 (on the sentinel) or a valid index; moving
// past the last element wraps it to -1, and MoveToNext from -1 reaches element 0. Insertions
// leave the cursor on the new element; DelCur leaves it on the element before (-1 after element
// 0). MoveTo walks forward from the cursor, or from the head when the target lies behind it, so
// stepping back (MoveToPre, DelCur, InsertCur) costs a walk on this list.
//
//   ZtList<int> l;
//   l << 3 << 1 << 2;          // [3, 1, 2], cursor on 2
//   l.Sort(true);              // [1, 2, 3], stable, cursor -1
//
// Splicing moves nodes, never elements: Conbine(other, pos) appends other's nodes pos..end,
// SplitAt/SplitAtCur hand this list's tail to another list, Detach/DetachAfter cut nodes off
// without freeing them (whoever kept their address owns them). Conbine refuses to splice between
// a singly and a doubly linked list, and this list with itself: it returns the unchanged length.
//
// ReverseList keeps the cursor on its node, whose index becomes length - 1 - old index (-1 stays
// -1). Rotate(a, b) moves element a to index b and leaves the cursor on 0. The sorts are the
// stable insertion sort: element k is compared with elements 0, 1, ... until one must go after
// it (so a sorted list costs n(n-1)/2 comparisons); a displaced value is copied into a new node
// and its old place is emptied (set to T()) before that node is removed. On two or more elements
// they end with cursor -1. Each scan is bounded by the element's index, so with an order that is
// not consistent (a NaN, a faulty comparator) a sort still returns and keeps every element, in
// the order its steps give.
//
// Sort(bool) on a type whose order calls no client code (arithmetic types, pointers, enums
// without their own < and >), on an object that is exactly a ZtList, ZtDList or ZtXList, gives the
// insertion sort's result, cursor included, in O(n log n): it copies the values out, sorts them
// stably and writes them back, every node staying in place and no slot being called. It throws
// std::bad_alloc, with nothing changed, when the copy cannot be allocated. A floating-point list
// that holds a NaN, and any derived class (whose slots may expect the calls), get the insertion
// sort.
//
// Every insertion is all-or-nothing: when allocating the node throws std::bad_alloc the list is
// unchanged, cursor included; growth (ReAllocate, SetLength, the growing operator[]) removes what
// it appended before rethrowing. Out-of-contract calls are harmless: DelCur and SetCurData with
// the cursor on -1 are ignored, GetCurData there and GetAt with an invalid index yield a scratch
// value, Rotate on an empty list or with an index outside the list does nothing, a negative
// length counts as 0. The checked build reports these calls (zt/checked.h). GetNext/GetPre need an
// element address of this list (or null).
#ifndef ZT_CONTAINERS_LIST_H_
#define ZT_CONTAINERS_LIST_H_

#include <cstdint>
#include <limits>

#include "zt/checked.h"
#include "zt/config.h"
#include "zt/containers/dyn_array_base.h"
#include "zt/containers/internal/element_ops.h"
#include "zt/containers/internal/sequence_ops.h"
#include "zt/containers/internal/sort.h"

// The list bodies of ZtList<T> also walk the nodes of the doubly linked lists, whose node type
// begins with the same two fields. Accesses through ZtListNode<T> may therefore alias a
// ZtDListNode<T>: the attribute tells the optimiser so.
#if defined(__GNUC__)
#define ZT_DETAIL_MAY_ALIAS __attribute__((__may_alias__))
#else
#define ZT_DETAIL_MAY_ALIAS
#endif

/// A node of ZtList<T>. `data` comes first, so an element's address is its node's address.
template <class T>
struct ZT_DETAIL_MAY_ALIAS ZtListNode {
  /// `next` null; `data` value-initialised.
  ZtListNode() : data(), next(nullptr) {}
  ZtListNode(const ZtListNode&) = default;
  /// Copies both fields.
  // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): member-wise, so safe on itself
  ZtListNode& operator=(const ZtListNode& o) {
    data = o.data;
    next = o.next;
    return *this;
  }

  T data;
  ZtListNode* next;
};

namespace zt::detail {
/// Base of the lists whose nodes carry a back link; Conbine splices only between lists that agree.
struct DoublyLinkedNodes {};
/// Selects the constructor that adopts a sentinel made by a derived list.
struct AdoptSentinel {};
}  // namespace zt::detail

/// Circular singly linked list with a sentinel node. Owns its nodes from insertion until removal,
/// Detach/DetachAfter/DetachAfterCur, or a splice into another list.
template <class T>
class ZtList : public ZtDynArrayBase<T> {
  using Base = ZtDynArrayBase<T>;
  using Node = ZtListNode<T>;

 public:
  /// A list of n elements of value T() (none when n <= 0); cursor -1.
  // NOLINTNEXTLINE(google-explicit-constructor): implicit, as the interface declares it
  ZtList(ZtLong n = 0) : m_curNode(NewSentinel()), m_head(m_curNode), m_tail(m_head) {
    BuildOrFree<Node>([this, n] { AppendNodes<Node>(nullptr, n); });
  }
  ZtList(const ZtList& src) : Base(), m_curNode(NewSentinel()), m_head(m_curNode), m_tail(m_head) {
    BuildOrFree<Node>([this, &src] { AppendNodes<Node>(&src, src.GetLength()); });
  }
  /// A copy of any sequence, array or list; cursor -1.
  // NOLINTNEXTLINE(google-explicit-constructor): implicit, as the interface declares it
  ZtList(const Base& src) : m_curNode(NewSentinel()), m_head(m_curNode), m_tail(m_head) {
    BuildOrFree<Node>([this, &src] { AppendNodes<Node>(&src, src.GetLength()); });
  }
  /// Reuses this list's nodes: the length is adjusted, then the values overwritten front to back.
  ZtList& operator=(const ZtList& src) {
    if (this != &src) this->DeepCopy(src);
    return *this;
  }
  ZtList& operator=(const Base& src) {
    this->DeepCopy(src);
    return *this;
  }
  ~ZtList() override { FreeAll<Node>(); }

  // ---- The sequence slots --------------------------------------------------------------------

  /// Shortens with DelTail until the length is n, or grows like ReAllocate; values are kept
  /// either way. Shortening leaves the cursor where the last DelTail put it.
  void SetLength(ZtLong n, bool keep) override;
  /// Frees every element node; cursor -1.
  void Reset() override { FreeElements<Node>(); }
  T& GetCurData() override {
    // NOLINTNEXTLINE(clang-analyzer-core.uninitialized.UndefReturn): the cursor node is never null
    return ZT_IN_CONTRACT(!this->IsOut(), "GetCurData", "ZtList", "cursor", m_cur)
               ? m_curNode->data
               : zt::detail::Sink<T>();
  }
  void SetCurData(const T& v) override {
    if (ZT_IN_CONTRACT(!this->IsOut(), "SetCurData", "ZtList", "cursor", m_cur)) {
      m_curNode->data = v;
    }
  }
  /// Element 0, or -1 on an empty list.
  void MoveToFirst() override { SetCursor(m_head->next, m_length > 0 ? 0 : -1); }
  /// One node on; from the last element the cursor wraps to -1, from -1 it reaches element 0.
  void MoveToNext() override {
    // NOLINTNEXTLINE(clang-analyzer-core.NullDereference): the cursor node is never null
    m_curNode = m_curNode->next;
    m_cur = m_curNode == m_head ? -1 : m_cur + 1;
  }
  /// From -1 to the last element; otherwise MoveTo(cursor - 1), a walk from the head.
  void MoveToPre() override {
    if (m_cur < 0) {
      MoveToLast();
    } else {
      MoveTo(m_cur - 1);
    }
  }
  void MoveToLast() override { SetCursor(m_tail, m_length - 1); }
  /// Cursor on i; -1 when i is not a valid index. The last element is one step; otherwise the
  /// walk starts at the cursor, or at the head when i lies behind it.
  void MoveTo(ZtLong i) override;
  const T* GetFirst() const override { return m_length > 0 ? &m_head->next->data : nullptr; }
  const T* GetNext(const T* p) const override {
    return p == nullptr || NodeOf(p) == m_tail ? nullptr : &NodeOf(p)->next->data;
  }
  /// Constant time for the element after the cursor; otherwise a walk from the head.
  const T* GetPre(const T* p) const override;
  const T* GetLast() const override { return m_length > 0 ? &m_tail->data : nullptr; }
  /// Walks from the cursor, or from the head when i lies behind it; the cursor does not move.
  const T& GetAt(ZtLong i) const override;
  /// v takes the cursor's index (MoveToPre, then InsertAfterCur); with the cursor on -1 it is
  /// appended.
  void InsertCur(const T& v) override {
    PositionAndInsert([this] { MoveToPre(); }, v);
  }
  /// v becomes element i for 1 <= i <= length; any other i makes it the first element.
  void Insert(ZtLong i, const T& v) override {
    PositionAndInsert([this, i] { MoveTo(i > std::numeric_limits<ZtLong>::min() ? i - 1 : -1); },
                      v);
  }
  void InsertHead(const T& v) override {
    PositionAndInsert([this] { MoveTo(-1); }, v);
  }
  ZtLong Append(const T& v) override {
    PositionAndInsert([this] { MoveToLast(); }, v);
    return m_length - 1;
  }
  /// Frees the node at the cursor after stepping back to its predecessor (a walk from the head).
  void DelCur() override { DelCurAs<Node>(); }
  /// Stable insertion sort scanning forward from the head; a null cmp does nothing.
  void Sort(int (*cmp)(const T&, const T&)) override {
    if (cmp != nullptr) InsertionSort(AfterBy(cmp));
  }
  void Sort(bool ascending) override {
    if (zt::detail::SortNodeValues<T, ZtList>(*this, m_head, m_length, ascending)) {
      SetCursor(m_head, -1);
    } else {
      InsertionSort(AfterBy(ascending));
    }
  }

  // ---- The list slots ------------------------------------------------------------------------

  /// A new node holding v goes right after the cursor node (first when the cursor is -1); the
  /// cursor moves onto it.
  virtual void InsertAfterCur(const T& v) { NewNodeAfterCur<Node>(v); }
  /// Cuts the chain after the cursor node: the list keeps elements 0..cursor. The nodes after it
  /// are not freed; they belong to whoever linked them elsewhere.
  virtual void DetachAfterCur() {
    m_curNode->next = m_head;
    m_tail = m_curNode;
    m_length = m_cur + 1;
  }
  /// Moves other's nodes pos..end, in order, to the end of this list and returns the new length.
  /// Nothing moves for a pos outside other, for other == this, or when one list is doubly and the
  /// other singly linked. This cursor stays; other's ends on its new last element (or -1).
  virtual ZtLong Conbine(ZtList& other, ZtLong pos);
  /// Reverses the order by relinking. The cursor keeps its node (its index is mirrored).
  virtual void ReverseList();
  /// Rotates the circular order so that element a ends at index b; cursor on 0. Nothing happens
  /// when a == b or either index is outside the list.
  virtual void Rotate(ZtLong a, ZtLong b);

  // ---- Splicing ------------------------------------------------------------------------------

  /// The cursor node (the sentinel when the cursor is -1).
  ZtListNode<T>* GetCurPos() const { return m_curNode; }
  /// Empties the list without freeing a node: whoever holds the former chain owns it.
  void Detach() {
    SetCursor(m_head, -1);
    DetachAfterCur();
  }
  /// Keeps elements 0..i (none when i is not a valid index) and cuts off the rest unfreed.
  void DetachAfter(ZtLong i) {
    MoveTo(i);
    DetachAfterCur();
  }
  /// Moves elements i..end to the end of other; nothing moves for an invalid i.
  void SplitAt(ZtLong i, ZtList& other) {
    MoveTo(i);
    other.Conbine(*this, m_cur);
  }
  /// Moves the elements from the cursor on to the end of other.
  void SplitAtCur(ZtList& other) { other.Conbine(*this, m_cur); }

 protected:
  /// Grows to n elements by appending T() values; a smaller n does nothing. The cursor stays.
  void ReAllocate(ZtLong n) override;

  /// For derived lists: adopts `sentinel` (linked to itself) as an empty list's sentinel.
  ZtList(zt::detail::AdoptSentinel /*tag*/, Node* sentinel)
      : m_curNode(sentinel), m_head(sentinel), m_tail(sentinel) {}

  static Node* NewSentinel() {
    Node* s = new Node;
    s->next = s;
    return s;
  }
  /// The node whose data is *p.
  static Node* NodeOf(const T* p) {
    // `data` is a node's first member, so the two addresses coincide.
    return reinterpret_cast<Node*>(const_cast<T*>(p));
  }
  void SetCursor(Node* node, ZtLong cur) {
    m_curNode = node;
    m_cur = cur;
  }
  /// The sorts' test "y must go after x" for a comparator, and for T's ordering ascending or
  /// descending.
  static auto AfterBy(int (*cmp)(const T&, const T&)) {
    return [cmp](const T& y, const T& x) { return cmp(y, x) > 0; };
  }
  static auto AfterBy(bool ascending) {
    return ascending ? zt::detail::Greater<T> : zt::detail::Less<T>;
  }
  /// True for the lists whose nodes are doubly linked.
  static bool HasBackLinks(const ZtList& l) {
    return dynamic_cast<const zt::detail::DoublyLinkedNodes*>(&l) != nullptr;
  }

  /// A node of a derived list's node type NodeT, which begins with the fields of Node, seen as a
  /// Node, and back.
  template <class NodeT>
  static Node* AsNode(NodeT* n) {
    return reinterpret_cast<Node*>(n);
  }
  template <class NodeT>
  static NodeT* AsNodeT(Node* n) {
    return reinterpret_cast<NodeT*>(n);
  }
  /// Allocates a NodeT holding v and links it after the cursor node, the cursor moving onto it.
  /// Throws before anything changes. Back links are the caller's.
  template <class NodeT>
  NodeT* NewNodeAfterCur(const T& v) {
    const ZtLong length = zt::detail::AddLength(m_length, 1);
    NodeT* fresh = new NodeT;
    try {
      fresh->data = v;
    } catch (...) {
      delete fresh;
      throw;
    }
    Node* const n = AsNode(fresh);
    n->next = m_curNode->next;
    m_curNode->next = n;
    if (m_curNode == m_tail) m_tail = n;
    m_length = length;
    SetCursor(n, m_cur + 1);
    return fresh;
  }
  /// Removes the element at the cursor, freeing its node as a NodeT; the cursor steps back with
  /// the virtual MoveToPre. Ignored when the cursor is -1. Back links are the caller's.
  template <class NodeT>
  void DelCurAs() {
    if (!ZT_IN_CONTRACT(!this->IsOut(), "DelCur", "ZtList", "cursor", m_cur)) return;
    Node* n = m_curNode;
    MoveToPre();
    if (m_curNode == n) return;  // a derived MoveToPre that did not step back: free nothing
    m_curNode->next = n->next;
    if (n == m_tail) m_tail = m_curNode;
    --m_length;
    delete AsNodeT<NodeT>(n);
  }
  /// Frees every element node as a NodeT and returns to the empty state; the sentinel stays.
  template <class NodeT>
  void FreeElements() {
    Node* n = m_head->next;
    while (n != m_head) {
      Node* next = n->next;
      delete AsNodeT<NodeT>(n);
      n = next;
    }
    m_head->next = m_head;
    m_tail = m_head;
    SetCursor(m_head, -1);
    m_length = 0;
  }
  /// Frees the elements and the sentinel as NodeTs; afterwards the list has no sentinel, which
  /// every destructor on the way up then skips.
  template <class NodeT>
  void FreeAll() {
    if (m_head == nullptr) return;
    FreeElements<NodeT>();
    delete AsNodeT<NodeT>(m_head);
    m_head = m_tail = m_curNode = nullptr;
  }
  /// Appends NodeT nodes holding copies of src's first n elements (n values T() when src is
  /// null), then puts the cursor on -1. Makes no virtual call of this list, so constructors fill
  /// through it. Back links are the caller's.
  template <class NodeT>
  void AppendNodes(const Base* src, ZtLong n) {
    const T* p = src != nullptr ? src->GetFirst() : nullptr;
    SetCursor(m_tail, m_length - 1);
    for (; n > 0; --n, p = p != nullptr ? src->GetNext(p) : nullptr) {
      NewNodeAfterCur<NodeT>(p != nullptr ? *p : T());
    }
    SetCursor(m_head, -1);
  }
  /// Runs a constructor's filling step; when it throws, frees every node before rethrowing.
  template <class NodeT, class Build>
  void BuildOrFree(Build build) {
    try {
      build();
    } catch (...) {
      FreeAll<NodeT>();
      throw;
    }
  }
  /// Copies the value of node `from`, standing at index s + 1 after an insertion before it, into
  /// a new node after the cursor; then empties `from` and removes it. The cursor ends on s.
  void MoveValueAfterCur(const T& x, Node* from, ZtLong s) {
    InsertAfterCur(x);
    SetCursor(from, s + 1);
    from->data = T();  // an owning list must not delete what it only moves
    DelCur();
  }

  using Base::m_cur;
  using Base::m_length;
  Node* m_curNode;
  Node* m_head;
  Node* m_tail;

 private:
  /// Runs `position`, then InsertAfterCur(v); a throwing insertion puts the cursor back.
  template <class Position>
  void PositionAndInsert(Position position, const T& v) {
    Node* const node = m_curNode;
    const ZtLong cur = m_cur;
    position();
    try {
      InsertAfterCur(v);
    } catch (...) {
      SetCursor(node, cur);
      throw;
    }
  }
  /// The forward insertion sort; after(y, x) is true when y must go after x.
  template <class After>
  void InsertionSort(After after);
};

// ---- Definitions -------------------------------------------------------------------------------

template <class T>
void ZtList<T>::ReAllocate(ZtLong n) {
  if (n <= m_length) return;
  Node* const node = m_curNode;
  const ZtLong cur = m_cur;
  const ZtLong old = m_length;
  try {
    for (ZtLong k = n - m_length; k > 0; --k) Append(T());
  } catch (...) {
    zt::detail::CutTo(*this, old);
    SetCursor(node, cur);
    throw;
  }
  SetCursor(node, cur);
}

template <class T>
void ZtList<T>::SetLength(ZtLong n, bool /*keep*/) {
  if (n < 0) n = 0;
  if (n > m_length) {
    ReAllocate(n);
    return;
  }
  zt::detail::CutTo(*this, n);
}

template <class T>
void ZtList<T>::MoveTo(ZtLong i) {
  if (!this->IsValidIndex(i)) {
    SetCursor(m_head, -1);
    return;
  }
  if (i == m_length - 1) {
    MoveToLast();
    return;
  }
  if (i < m_cur) MoveToFirst();
  for (ZtLong k = i - m_cur; k > 0; --k) MoveToNext();
}

template <class T>
const T* ZtList<T>::GetPre(const T* p) const {
  if (p == nullptr || m_length == 0) return nullptr;
  const Node* n = NodeOf(p);
  if (n == m_head->next) return nullptr;
  if (m_curNode->next == n) return &m_curNode->data;
  const Node* w = m_head->next;
  for (ZtLong k = 0; k < m_length; ++k, w = w->next) {
    if (w->next == n) return &w->data;
  }
  return nullptr;
}

template <class T>
const T& ZtList<T>::GetAt(ZtLong i) const {
  if (!ZT_IN_CONTRACT(this->IsValidIndex(i), "GetAt", "ZtList", "index", i)) {
    return zt::detail::Sink<T>();
  }
  const Node* n = m_curNode;
  ZtLong k = m_cur;
  if (i < k) {
    n = m_head;
    k = -1;
  }
  for (; k < i; ++k) n = n->next;
  return n->data;
}

template <class T>
ZtLong ZtList<T>::Conbine(ZtList& other, ZtLong pos) {
  if (&other == this || HasBackLinks(*this) != HasBackLinks(other)) return m_length;
  if (pos < 0 || pos >= other.m_length) return m_length;
  const ZtLong length = zt::detail::AddLength(m_length, other.m_length - pos);
  other.MoveTo(pos);
  Node* const first = other.m_curNode;
  other.MoveToLast();
  Node* const last = other.m_curNode;
  other.DetachAfter(pos - 1);
  m_tail->next = first;
  m_tail = last;
  m_tail->next = m_head;
  m_length = length;
  return m_length;
}

template <class T>
void ZtList<T>::ReverseList() {
  if (m_length < 2) return;
  Node* const first = m_head->next;
  Node* prev = m_head;
  Node* n = first;
  for (ZtLong k = 0; k < m_length; ++k) {
    Node* next = n->next;
    n->next = prev;
    prev = n;
    n = next;
  }
  m_head->next = prev;
  m_tail = first;
  if (m_cur >= 0) m_cur = m_length - 1 - m_cur;
}

template <class T>
void ZtList<T>::Rotate(ZtLong a, ZtLong b) {
  if (a == b) return;
  if (!ZT_IN_CONTRACT(this->IsValidIndex(a) && this->IsValidIndex(b), "Rotate", "ZtList", "index",
                      this->IsValidIndex(a) ? b : a)) {
    return;
  }
  const std::int64_t n = m_length;
  const auto k = static_cast<ZtLong>((a - b + n) % n);
  const auto m = static_cast<ZtLong>((k + n - 1) % n);
  MoveTo(m);
  Node* const newTail = m_curNode;
  MoveTo(k);
  m_tail->next = m_head->next;
  m_head->next = m_curNode;
  m_tail = newTail;
  m_tail->next = m_head;
  m_cur = 0;
}

template <class T>
template <class After>
void ZtList<T>::InsertionSort(After after) {
  if (m_length < 2) return;
  MoveToFirst();
  MoveToNext();
  while (m_cur != -1) {
    const T x = m_curNode->data;
    const ZtLong s = m_cur;
    Node* const xNode = m_curNode;
    Node* passed = m_head;
    for (MoveToFirst(); m_cur < s && !after(m_curNode->data, x); MoveToNext()) passed = m_curNode;
    if (m_cur < s) {
      SetCursor(passed, m_cur - 1);
      MoveValueAfterCur(x, xNode, s);
    }
    MoveToNext();
  }
}

#endif  // ZT_CONTAINERS_LIST_H_
