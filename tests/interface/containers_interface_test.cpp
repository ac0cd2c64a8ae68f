// tests/interface/containers_interface_test.cpp
//
// The containers' interface as clients compile against it: for every class, each member's exact
// member-pointer type (the declaring class included) and virtual-table slot, which constructors
// are implicit, and the fields' types, order and count. The value containers are checked with
// int elements, the owning ones with a small class. A mismatch fails its row, not the build.
#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

#include "tests/support/interface.h"
#include "zt/containers/array.h"
#include "zt/containers/dlist.h"
#include "zt/containers/dyn_array.h"
#include "zt/containers/dyn_array_base.h"
#include "zt/containers/dyn_parray.h"
#include "zt/containers/list.h"
#include "zt/containers/list_quene.h"
#include "zt/containers/pdlist.h"
#include "zt/containers/push_var.h"
#include "zt/containers/pxlist.h"
#include "zt/containers/quene.h"
#include "zt/containers/xlist.h"

namespace zt::test {
namespace {

using L = ZtLong;
using Rows = std::vector<InterfaceRow>;

/// The element of the owning containers.
struct Item {
  bool operator==(const Item& o) const { return key == o.key; }
  bool operator!=(const Item& o) const { return key != o.key; }
  bool operator<(const Item& o) const { return key < o.key; }
  bool operator>(const Item& o) const { return key > o.key; }
  int key = 0;
};

/// The slot of entry `order` in a sequence's listing, where the destructor is entry 2.
constexpr std::ptrdiff_t V(int order) { return ListedSlot(order, 2); }

/// A row for C's member `name` of member-pointer type Sig, expected in `slot` (or kNonVirtual).
#define ROW(C, name, slot, ...) \
  InterfaceRow { #C "::" #name " as " #__VA_ARGS__, slot, ZT_MEMBER(C, name, __VA_ARGS__) }

/// Reaches C's protected members: each class's rows that need them are a specialisation of Rows.
template <class C>
struct Inside : C {
  using C::C;
  static Rows Get();
};

// ---- Sequence base and its algorithms ---------------------------------------------------------

TEST(ContainersInterface, SequenceBase) {
  using B = ZtDynArrayBase<int>;
  ExpectRows({
      ROW(B, ReAllocate, V(1), void(B::*)(L)),
      ROW(B, SetLength, V(3), void(B::*)(L, bool)),
      ROW(B, Reset, V(4), void(B::*)()),
      ROW(B, GetCurData, V(5), int& (B::*)()),
      ROW(B, SetCurData, V(6), void(B::*)(const int&)),
      ROW(B, MoveToFirst, V(7), void(B::*)()),
      ROW(B, MoveToNext, V(8), void(B::*)()),
      ROW(B, MoveToPre, V(9), void(B::*)()),
      ROW(B, MoveToLast, V(10), void(B::*)()),
      ROW(B, MoveTo, V(11), void(B::*)(L)),
      ROW(B, operator[], V(12), int& (B::*)(L)),
      ROW(B, GetFirst, V(13), const int* (B::*)() const),
      ROW(B, GetNext, V(14), const int* (B::*)(const int*) const),
      ROW(B, GetPre, V(15), const int* (B::*)(const int*) const),
      ROW(B, GetLast, V(16), const int* (B::*)() const),
      ROW(B, GetAt, V(17), const int& (B::*)(L) const),
      ROW(B, InsertCur, V(18), void(B::*)(const int&)),
      ROW(B, Insert, V(19), void(B::*)(L, const int&)),
      ROW(B, InsertHead, V(20), void(B::*)(const int&)),
      ROW(B, Append, V(21), L(B::*)(const int&)),
      ROW(B, DelCur, V(22), void(B::*)()),
      ROW(B, Sort, V(23), void(B::*)(int (*)(const int&, const int&))),
      ROW(B, Sort, V(24), void(B::*)(bool)),
      ROW(B, Move, V(25), bool(B::*)(L, L)),
      Holds("ZtDynArrayBase: virtual destructor", std::has_virtual_destructor_v<B>),
      ROW(B, operator=, kNonVirtual, B & (B::*)(const B&)),
      ROW(B, GetLength, kNonVirtual, L(B::*)() const),
      ROW(B, GetCur, kNonVirtual, L(B::*)() const),
      ROW(B, GetMaxIndex, kNonVirtual, L(B::*)() const),
      ROW(B, IsEmpty, kNonVirtual, bool(B::*)() const),
      ROW(B, IsBegin, kNonVirtual, bool(B::*)() const),
      ROW(B, IsEnd, kNonVirtual, bool(B::*)() const),
      ROW(B, IsOut, kNonVirtual, bool(B::*)() const),
      ROW(B, IsValidIndex, kNonVirtual, bool(B::*)(L) const),
      ROW(B, operator[], kNonVirtual, const int& (B::*)(L) const),
      ROW(B, GetTo, kNonVirtual, const int* (B::*)(L) const),
      ROW(B, Del, kNonVirtual, void(B::*)(L)),
      ROW(B, DelHead, kNonVirtual, void(B::*)()),
      ROW(B, DelTail, kNonVirtual, void(B::*)()),
      ROW(B, Exchange, kNonVirtual, void(B::*)(L, L)),
      ROW(B, IncreaseSize, kNonVirtual, void(B::*)(L)),
      ROW(B, DecreaseSize, kNonVirtual, void(B::*)(L)),
      ROW(B, SetAll, kNonVirtual, void(B::*)(const int&)),
      ROW(B, operator<<, kNonVirtual, B & (B::*)(const int&)),
      ROW(B, DeepCopy, kNonVirtual, void(B::*)(const B&)),
      // The algorithms.
      ROW(B, Find, kNonVirtual, L(B::*)(const int&, L, L) const),
      ROW(B, Find, kNonVirtual, L(B::*)(const int&, ZtQuene<L>&, L, L) const),
      ROW(B, FindTo, kNonVirtual, bool(B::*)(const int&, L)),
      ROW(B, FindOrAppend, kNonVirtual, L(B::*)(const int&)),
      ROW(B, FindOrInsertHead, kNonVirtual, void(B::*)(const int&)),
      ROW(B, FindDel, kNonVirtual, L(B::*)(const int&)),
      ROW(B, BFind, kNonVirtual, L(B::*)(const int&, L, L) const),
      ROW(B, BFindTo, kNonVirtual, bool(B::*)(const int&, L, L)),
      ROW(B, SortInto, kNonVirtual, bool(B::*)(const int&, bool)),
      ROW(B, Reverse, kNonVirtual, void(B::*)(L, L)),
      ROW(B, Left, kNonVirtual, void(B::*)(L, B&) const),
      ROW(B, Right, kNonVirtual, void(B::*)(L, B&) const),
      ROW(B, Mid, kNonVirtual, void(B::*)(L, L, B&) const),
      ROW(B, DeepCopy, kNonVirtual, void(B::*)(const ZtArray<int>&)),
      ROW(B, operator<<, kNonVirtual, B & (B::*)(const B&)),
      ROW(B, operator<<, kNonVirtual, B & (B::*)(const ZtArray<int>&)),
      ROW(B, operator==, kNonVirtual, bool(B::*)(const B&) const),
      ROW(B, operator!=, kNonVirtual, bool(B::*)(const B&) const),
      ROW(B, operator<, kNonVirtual, bool(B::*)(const B&) const),
      ROW(B, operator>, kNonVirtual, bool(B::*)(const B&) const),
  });
}

// ---- Dynamic array, owning pointer array, fixed array -----------------------------------------

template <>
Rows Inside<ZtDynArray<int>>::Get() {
  using B = ZtDynArrayBase<int>;
  using A = ZtDynArray<int>;
  Inside f;
  return {
      Holds("m_length", ZT_FIELD(Inside, m_length, L B::*)),
      Holds("m_cur", ZT_FIELD(Inside, m_cur, L B::*)),
      Holds("m_data", ZT_FIELD(Inside, m_data, int* A::*)),
      Holds("m_spaceSize", ZT_FIELD(Inside, m_spaceSize, L A::*)),
      Holds("m_allocUnit", ZT_FIELD(Inside, m_allocUnit, L A::*)),
      Holds("ZtDynArray: field order",
            Ascending({&f.m_length, &f.m_cur, &f.m_data, &f.m_spaceSize, &f.m_allocUnit})),
      Holds("ZtDynArray: no other field", sizeof(A) == LaidOutSize<L, L, int*, L, L>(true)),
  };
}

TEST(ContainersInterface, DynArray) {
  using B = ZtDynArrayBase<int>;
  using A = ZtDynArray<int>;
  ExpectRows(Inside<A>::Get());
  ExpectRows({
      ROW(A, ReAllocate, V(1), void(A::*)(L)),
      ROW(A, SetLength, V(3), void(A::*)(L, bool)),
      ROW(A, Reset, V(4), void(A::*)()),
      ROW(A, GetCurData, V(5), int& (A::*)()),
      ROW(A, SetCurData, V(6), void(A::*)(const int&)),
      ROW(A, MoveToFirst, V(7), void(B::*)()),
      ROW(A, MoveTo, V(11), void(B::*)(L)),
      ROW(A, operator[], V(12), int& (B::*)(L)),
      ROW(A, GetFirst, V(13), const int* (A::*)() const),
      ROW(A, GetNext, V(14), const int* (A::*)(const int*) const),
      ROW(A, GetPre, V(15), const int* (A::*)(const int*) const),
      ROW(A, GetLast, V(16), const int* (A::*)() const),
      ROW(A, GetAt, V(17), const int& (A::*)(L) const),
      ROW(A, InsertCur, V(18), void(A::*)(const int&)),
      ROW(A, Insert, V(19), void(B::*)(L, const int&)),
      ROW(A, InsertHead, V(20), void(B::*)(const int&)),
      ROW(A, Append, V(21), L(B::*)(const int&)),
      ROW(A, DelCur, V(22), void(A::*)()),
      ROW(A, Sort, V(23), void(A::*)(int (*)(const int&, const int&))),
      ROW(A, Sort, V(24), void(A::*)(bool)),
      ROW(A, Move, V(25), bool(B::*)(L, L)),
      ROW(A, GetSpaceSize, kNonVirtual, L(A::*)() const),
      ROW(A, GetAllocUnit, kNonVirtual, L(A::*)() const),
      ROW(A, SetAllocUnit, kNonVirtual, void(A::*)(L)),
      ROW(A, SetSpaceSize, kNonVirtual, bool(A::*)(L)),
      ROW(A, Attach, kNonVirtual, void(A::*)(L, int*)),
      ROW(A, Detach, kNonVirtual, int* (A::*)()),
      ROW(A, operator=, kNonVirtual, A & (A::*)(const A&)),
      ROW(A, operator=, kNonVirtual, A & (A::*)(const B&)),
      Holds("implicit ZtDynArray()", kImplicitCtor<A>),
      Holds("implicit ZtDynArray(long)", kImplicitCtor<A, L>),
      Holds("implicit ZtDynArray(long, long)", kImplicitCtor<A, L, L>),
      Holds("implicit ZtDynArray(const ZtDynArray&)", kImplicitCtor<A, const A&>),
      Holds("implicit ZtDynArray(const ZtDynArrayBase&)", kImplicitCtor<A, const B&>),
  });
}

TEST(ContainersInterface, DynPArray) {
  using B = ZtDynArrayBase<Item*>;
  using A = ZtDynArray<Item*>;
  using P = ZtDynPArray<Item>;
  ExpectRows({
      ROW(P, ReAllocate, V(1), void(P::*)(L)),
      ROW(P, SetLength, V(3), void(P::*)(L, bool)),
      ROW(P, Reset, V(4), void(P::*)()),
      ROW(P, GetCurData, V(5), Item * &(A::*)()),
      ROW(P, SetCurData, V(6), void(A::*)(Item* const&)),
      ROW(P, MoveToNext, V(8), void(B::*)()),
      ROW(P, operator[], V(12), Item * &(B::*)(L)),
      ROW(P, GetFirst, V(13), Item* const* (A::*)() const),
      ROW(P, GetAt, V(17), Item* const& (A::*)(L) const),
      ROW(P, InsertCur, V(18), void(A::*)(Item* const&)),
      ROW(P, Append, V(21), L(B::*)(Item* const&)),
      ROW(P, DelCur, V(22), void(P::*)()),
      ROW(P, Sort, V(23), void(A::*)(int (*)(Item* const&, Item* const&))),
      ROW(P, Sort, V(24), void(P::*)(bool)),
      ROW(P, Move, V(25), bool(P::*)(L, L)),
      ROW(P, ReleaseCur, V(26), void(P::*)()),
      ROW(P, TakeOffCur, V(27), Item * (P::*)()),
      ROW(P, Sort, V(28), void(P::*)(int (*)(const Item&, const Item&))),
      ROW(P, GetPData, kNonVirtual, const Item& (P::*)(L) const),
      ROW(P, operator(), kNonVirtual, Item & (P::*)(L)),
      ROW(P, GetCurPData, kNonVirtual, Item & (P::*)()),
      ROW(P, IsCurEmpty, kNonVirtual, bool(P::*)() const),
      ROW(P, IsCurEmpty, kNoSuchMember, bool(P::*)()),
      ROW(P, IsEmptyData, kNonVirtual, bool(P::*)(L) const),
      ROW(P, GetDataNum, kNonVirtual, L(P::*)() const),
      ROW(P, Release, kNonVirtual, void(P::*)(L)),
      ROW(P, ReleaseAll, kNonVirtual, void(P::*)()),
      ROW(P, TakeOff, kNonVirtual, Item * (P::*)(L)),
      ROW(P, TakeOffHead, kNonVirtual, Item * (P::*)()),
      ROW(P, TakeOffTail, kNonVirtual, Item * (P::*)()),
      ROW(P, PlaceIn, kNonVirtual, L(P::*)(Item*)),
      ROW(P, FindDel, kNonVirtual, L(P::*)(Item*)),
      ROW(P, FindDataDel, kNonVirtual, L(P::*)(const Item&)),
      ROW(P, FindData, kNonVirtual, L(P::*)(const Item&, L, L) const),
      ROW(P, FindData, kNonVirtual, L(P::*)(const Item&, ZtQuene<L>&, L, L) const),
      ROW(P, BFindData, kNonVirtual, L(P::*)(const Item&, L, L) const),
      ROW(P, BFindDataTo, kNonVirtual, bool(P::*)(const Item&, L, L)),
      ROW(P, SortInto, kNonVirtual, bool(P::*)(Item*, bool)),
      ROW(P, SortEx, kNonVirtual, void(P::*)(bool)),
      ROW(P, operator==, kNonVirtual, bool(P::*)(const P&) const),
      ROW(P, operator!=, kNonVirtual, bool(P::*)(const P&) const),
      ROW(P, operator=, kNonVirtual, P & (P::*)(const P&)),
      Holds("implicit ZtDynPArray()", kImplicitCtor<P>),
      Holds("implicit ZtDynPArray(long)", kImplicitCtor<P, L>),
      Holds("implicit ZtDynPArray(long, long)", kImplicitCtor<P, L, L>),
      Holds("implicit ZtDynPArray(const ZtDynPArray&)", kImplicitCtor<P, const P&>),
      Holds("ZtDynPArray: derives from ZtDynArray<T*>", std::is_base_of_v<A, P>),
      Holds("ZtDynPArray: no field of its own", sizeof(P) == sizeof(A)),
  });
}

template <>
Rows Inside<ZtArray<int>>::Get() {
  using R = ZtArray<int>;
  Inside f;
  return {
      Holds("m_data", ZT_FIELD(Inside, m_data, int* R::*)),
      Holds("m_count", ZT_FIELD(Inside, m_count, L R::*)),
      Holds("ZtArray: field order", Ascending({&f.m_data, &f.m_count})),
      Holds("ZtArray: no other field", sizeof(R) == LaidOutSize<int*, L>(true)),
  };
}

TEST(ContainersInterface, Array) {
  using R = ZtArray<int>;
  ExpectRows(Inside<R>::Get());
  ExpectRows({
      Holds("ZtArray: the destructor is its one virtual member", std::has_virtual_destructor_v<R>),
      ROW(R, operator=, kNonVirtual, R & (R::*)(const R&)),
      ROW(R, GetLength, kNonVirtual, L(R::*)() const),
      ROW(R, GetMaxIndex, kNonVirtual, L(R::*)() const),
      ROW(R, IsEmpty, kNonVirtual, bool(R::*)() const),
      ROW(R, IsValidIndex, kNonVirtual, bool(R::*)(L) const),
      ROW(R, operator[], kNonVirtual, int& (R::*)(L)),
      ROW(R, operator[], kNonVirtual, const int& (R::*)(L) const),
      ROW(R, GetAt, kNonVirtual, const int& (R::*)(L) const),
      ROW(R, SetAt, kNonVirtual, void(R::*)(L, const int&)),
      ROW(R, GetDataBuffer, kNonVirtual, int* (R::*)() const),
      ROW(R, ReAllocate, kNonVirtual, void(R::*)(L, bool)),
      ROW(R, Reset, kNonVirtual, void(R::*)()),
      ROW(R, SetAll, kNonVirtual, void(R::*)(const int&)),
      ROW(R, Insert, kNonVirtual, void(R::*)(L, const int&)),
      ROW(R, InsertHead, kNonVirtual, void(R::*)(const int&)),
      ROW(R, Append, kNonVirtual, L(R::*)(const int&)),
      ROW(R, Del, kNonVirtual, void(R::*)(L)),
      ROW(R, DelHead, kNonVirtual, void(R::*)()),
      ROW(R, DelTail, kNonVirtual, void(R::*)()),
      ROW(R, Reverse, kNonVirtual, void(R::*)(L, L)),
      ROW(R, Sort, kNonVirtual, void(R::*)(bool)),
      ROW(R, Sort, kNonVirtual, void(R::*)(int (*)(const int&, const int&))),
      ROW(R, Find, kNonVirtual, L(R::*)(const int&, L, L) const),
      ROW(R, Find, kNonVirtual, L(R::*)(const int&, ZtQuene<L>&, L, L) const),
      ROW(R, FindOrAppend, kNonVirtual, L(R::*)(const int&)),
      ROW(R, FindOrInsertHead, kNonVirtual, void(R::*)(const int&)),
      ROW(R, FindDel, kNonVirtual, L(R::*)(const int&)),
      ROW(R, BFind, kNonVirtual, L(R::*)(const int&, L, L) const),
      ROW(R, operator==, kNonVirtual, bool(R::*)(const R&) const),
      ROW(R, operator!=, kNonVirtual, bool(R::*)(const R&) const),
      ROW(R, operator<, kNonVirtual, bool(R::*)(const R&) const),
      ROW(R, operator>, kNonVirtual, bool(R::*)(const R&) const),
      Holds("implicit ZtArray()", kImplicitCtor<R>),
      Holds("implicit ZtArray(long)", kImplicitCtor<R, L>),
      Holds("implicit ZtArray(const ZtArray&)", kImplicitCtor<R, const R&>),
      Holds("implicit ZtArray(const ZtDynArrayBase&)",
            kImplicitCtor<R, const ZtDynArrayBase<int>&>),
  });
}

// ---- Lists ------------------------------------------------------------------------------------

TEST(ContainersInterface, ListNodes) {
  using N = ZtListNode<int>;
  using D = ZtDListNode<int>;
  N n;
  D d;
  ExpectRows({
      Holds("ZtListNode::data", ZT_FIELD(N, data, int N::*)),
      Holds("ZtListNode::next", ZT_FIELD(N, next, N * N::*)),
      Holds("ZtListNode: field order", Ascending({&n.data, &n.next})),
      Holds("ZtListNode: no other field", sizeof(N) == LaidOutSize<int, N*>(false)),
      Holds("ZtDListNode::data", ZT_FIELD(D, data, int D::*)),
      Holds("ZtDListNode::next", ZT_FIELD(D, next, D * D::*)),
      Holds("ZtDListNode::pre", ZT_FIELD(D, pre, D * D::*)),
      Holds("ZtDListNode: field order", Ascending({&d.data, &d.next, &d.pre})),
      Holds("ZtDListNode: no other field", sizeof(D) == LaidOutSize<int, D*, D*>(false)),
      ROW(N, operator=, kNonVirtual, N & (N::*)(const N&)),
      ROW(D, operator=, kNonVirtual, D & (D::*)(const D&)),
      Holds("implicit ZtListNode()", kImplicitCtor<N>),
      Holds("implicit ZtDListNode()", kImplicitCtor<D>),
      Holds("plain ZtListNode", !std::is_polymorphic_v<N> && !std::is_constructible_v<N, int>),
      Holds("plain ZtDListNode", !std::is_polymorphic_v<D> && !std::is_constructible_v<D, int>),
  });
}

template <>
Rows Inside<ZtList<int>>::Get() {
  using B = ZtDynArrayBase<int>;
  using Li = ZtList<int>;
  using N = ZtListNode<int>;
  Inside f;
  return {
      ROW(Inside, ReAllocate, V(1), void(Li::*)(L)),
      Holds("m_curNode", ZT_FIELD(Inside, m_curNode, N * Li::*)),
      Holds("m_head", ZT_FIELD(Inside, m_head, N * Li::*)),
      Holds("m_tail", ZT_FIELD(Inside, m_tail, N * Li::*)),
      Holds("ZtList: field order",
            Ascending({&f.m_length, &f.m_cur, &f.m_curNode, &f.m_head, &f.m_tail})),
      Holds("ZtList: no other field", sizeof(Li) == LaidOutSize<L, L, N*, N*, N*>(true)),
      Holds("ZtList: m_length stays the base's", ZT_FIELD(Inside, m_length, L B::*)),
  };
}

TEST(ContainersInterface, List) {
  using B = ZtDynArrayBase<int>;
  using Li = ZtList<int>;
  // A doubly linked list reaches Conbine(ZtList&, long): no other overload takes it.
  const auto conbine = [](auto& a, auto& b) -> decltype(a.Conbine(b, L{0})) { return 0; };
  ExpectRows(Inside<Li>::Get());
  ExpectRows({
      Holds("ZtList::Conbine called with a ZtDList",
            std::is_invocable_v<decltype(conbine), Li&, ZtDList<int>&>),
      ROW(Li, SetLength, V(3), void(Li::*)(L, bool)),
      ROW(Li, Reset, V(4), void(Li::*)()),
      ROW(Li, GetCurData, V(5), int& (Li::*)()),
      ROW(Li, SetCurData, V(6), void(Li::*)(const int&)),
      ROW(Li, MoveToFirst, V(7), void(Li::*)()),
      ROW(Li, MoveToNext, V(8), void(Li::*)()),
      ROW(Li, MoveToPre, V(9), void(Li::*)()),
      ROW(Li, MoveToLast, V(10), void(Li::*)()),
      ROW(Li, MoveTo, V(11), void(Li::*)(L)),
      ROW(Li, operator[], V(12), int& (B::*)(L)),
      ROW(Li, GetFirst, V(13), const int* (Li::*)() const),
      ROW(Li, GetNext, V(14), const int* (Li::*)(const int*) const),
      ROW(Li, GetPre, V(15), const int* (Li::*)(const int*) const),
      ROW(Li, GetLast, V(16), const int* (Li::*)() const),
      ROW(Li, GetAt, V(17), const int& (Li::*)(L) const),
      ROW(Li, InsertCur, V(18), void(Li::*)(const int&)),
      ROW(Li, Insert, V(19), void(Li::*)(L, const int&)),
      ROW(Li, InsertHead, V(20), void(Li::*)(const int&)),
      ROW(Li, Append, V(21), L(Li::*)(const int&)),
      ROW(Li, DelCur, V(22), void(Li::*)()),
      ROW(Li, Sort, V(23), void(Li::*)(int (*)(const int&, const int&))),
      ROW(Li, Sort, V(24), void(Li::*)(bool)),
      ROW(Li, Move, V(25), bool(B::*)(L, L)),
      ROW(Li, InsertAfterCur, V(26), void(Li::*)(const int&)),
      ROW(Li, DetachAfterCur, V(27), void(Li::*)()),
      ROW(Li, Conbine, V(28), L(Li::*)(Li&, L)),
      ROW(Li, Conbine, kNoSuchMember, L(Li::*)(ZtDList<int>&, L)),
      ROW(Li, ReverseList, V(29), void(Li::*)()),
      ROW(Li, Rotate, V(30), void(Li::*)(L, L)),
      ROW(Li, GetCurPos, kNonVirtual, ZtListNode<int> * (Li::*)() const),
      ROW(Li, Detach, kNonVirtual, void(Li::*)()),
      ROW(Li, DetachAfter, kNonVirtual, void(Li::*)(L)),
      ROW(Li, SplitAt, kNonVirtual, void(Li::*)(L, Li&)),
      ROW(Li, SplitAtCur, kNonVirtual, void(Li::*)(Li&)),
      ROW(Li, operator=, kNonVirtual, Li & (Li::*)(const Li&)),
      ROW(Li, operator=, kNonVirtual, Li & (Li::*)(const B&)),
      Holds("implicit ZtList()", kImplicitCtor<Li>),
      Holds("implicit ZtList(long)", kImplicitCtor<Li, L>),
      Holds("implicit ZtList(const ZtList&)", kImplicitCtor<Li, const Li&>),
      Holds("implicit ZtList(const ZtDynArrayBase&)", kImplicitCtor<Li, const B&>),
  });
}

TEST(ContainersInterface, DList) {
  using B = ZtDynArrayBase<int>;
  using Li = ZtList<int>;
  using Dl = ZtDList<int>;
  ExpectRows({
      ROW(Dl, SetLength, V(3), void(Li::*)(L, bool)),
      ROW(Dl, Reset, V(4), void(Dl::*)()),
      ROW(Dl, GetCurData, V(5), int& (Li::*)()),
      ROW(Dl, MoveToNext, V(8), void(Li::*)()),
      ROW(Dl, MoveToPre, V(9), void(Dl::*)()),
      ROW(Dl, MoveTo, V(11), void(Dl::*)(L)),
      ROW(Dl, operator[], V(12), int& (B::*)(L)),
      ROW(Dl, GetNext, V(14), const int* (Li::*)(const int*) const),
      ROW(Dl, GetPre, V(15), const int* (Dl::*)(const int*) const),
      ROW(Dl, GetAt, V(17), const int& (Dl::*)(L) const),
      ROW(Dl, InsertCur, V(18), void(Li::*)(const int&)),
      ROW(Dl, Append, V(21), L(Li::*)(const int&)),
      ROW(Dl, DelCur, V(22), void(Dl::*)()),
      ROW(Dl, Sort, V(23), void(Dl::*)(int (*)(const int&, const int&))),
      ROW(Dl, Sort, V(24), void(Dl::*)(bool)),
      ROW(Dl, Move, V(25), bool(B::*)(L, L)),
      ROW(Dl, InsertAfterCur, V(26), void(Dl::*)(const int&)),
      ROW(Dl, DetachAfterCur, V(27), void(Dl::*)()),
      ROW(Dl, Conbine, V(28), L(Dl::*)(Li&, L)),
      ROW(Dl, ReverseList, V(29), void(Dl::*)()),
      ROW(Dl, Rotate, V(30), void(Dl::*)(L, L)),
      ROW(Dl, SplitAt, kNonVirtual, void(Li::*)(L, Li&)),
      ROW(Dl, operator=, kNonVirtual, Dl & (Dl::*)(const Dl&)),
      ROW(Dl, operator=, kNonVirtual, Dl & (Dl::*)(const B&)),
      Holds("implicit ZtDList()", kImplicitCtor<Dl>),
      Holds("implicit ZtDList(long)", kImplicitCtor<Dl, L>),
      Holds("implicit ZtDList(const ZtDList&)", kImplicitCtor<Dl, const Dl&>),
      Holds("implicit ZtDList(const ZtDynArrayBase&)", kImplicitCtor<Dl, const B&>),
      Holds("ZtDList: no field of its own", sizeof(Dl) == sizeof(Li)),
  });
}

/// The non-virtual members the owning lists share, in the owning list class O over Item.
template <class O>
Rows OwningListMembers(const std::string& name) {
  Rows rows = {
      ROW(O, IsCurEmpty, kNonVirtual, bool(O::*)() const),
      ROW(O, IsCurEmpty, kNoSuchMember, bool(O::*)()),
      ROW(O, IsEmptyData, kNonVirtual, bool(O::*)(L) const),
      ROW(O, GetDataNum, kNonVirtual, L(O::*)() const),
      ROW(O, GetCurPData, kNonVirtual, Item & (O::*)()),
      ROW(O, GetPData, kNonVirtual, const Item& (O::*)(L) const),
      ROW(O, operator(), kNonVirtual, Item & (O::*)(L)),
      ROW(O, ReleaseCur, kNonVirtual, void(O::*)()),
      ROW(O, Release, kNonVirtual, void(O::*)(L)),
      ROW(O, ReleaseAll, kNonVirtual, void(O::*)()),
      ROW(O, TakeOffCur, kNonVirtual, Item * (O::*)()),
      ROW(O, TakeOff, kNonVirtual, Item * (O::*)(L)),
      ROW(O, TakeOffHead, kNonVirtual, Item * (O::*)()),
      ROW(O, TakeOffTail, kNonVirtual, Item * (O::*)()),
      ROW(O, PlaceIn, kNonVirtual, L(O::*)(Item*)),
      ROW(O, FindData, kNonVirtual, L(O::*)(const Item&, L, L) const),
      ROW(O, FindData, kNonVirtual, L(O::*)(const Item&, ZtQuene<L>&, L, L) const),
      ROW(O, FindDataTo, kNonVirtual, bool(O::*)(const Item&, L, L)),
      ROW(O, FindDataOrAppend, kNonVirtual, L(O::*)(const Item&)),
      ROW(O, FindDataOrInsertHead, kNonVirtual, void(O::*)(const Item&)),
      ROW(O, FindDataDel, kNonVirtual, L(O::*)(const Item&)),
      ROW(O, FindDel, kNonVirtual, L(O::*)(Item*)),
      ROW(O, BFindData, kNonVirtual, L(O::*)(const Item&, L, L) const),
      ROW(O, BFindDataTo, kNonVirtual, bool(O::*)(const Item&, L, L)),
      ROW(O, SortInto, kNonVirtual, bool(O::*)(Item*, bool)),
      ROW(O, operator==, kNonVirtual, bool(O::*)(const O&) const),
      ROW(O, operator!=, kNonVirtual, bool(O::*)(const O&) const),
      ROW(O, operator=, kNonVirtual, O & (O::*)(const O&)),
      // The owning slots.
      ROW(O, Reset, V(4), void(O::*)()),
      ROW(O, DelCur, V(22), void(O::*)()),
      ROW(O, Sort, V(24), void(O::*)(bool)),
      ROW(O, Move, V(25), bool(O::*)(L, L)),
      ROW(O, Sort, V(31), void(O::*)(int (*)(const Item&, const Item&))),
      Holds("implicit ()", kImplicitCtor<O>),
      Holds("implicit (long)", kImplicitCtor<O, L>),
      Holds("implicit (const&)", kImplicitCtor<O, const O&>),
  };
  for (InterfaceRow& row : rows) row.what = name + ": " + row.what;
  return rows;
}

template <>
Rows Inside<ZtPDList<Item>>::Get() {
  return {ROW(Inside, ReAllocate, V(1), void(ZtPDList<Item>::*)(L))};
}

TEST(ContainersInterface, PDList) {
  using Li = ZtList<Item*>;
  using Dl = ZtDList<Item*>;
  using Pd = ZtPDList<Item>;
  ExpectRows(OwningListMembers<Pd>("ZtPDList"));
  ExpectRows(Inside<Pd>::Get());
  ExpectRows({
      ROW(Pd, SetLength, V(3), void(Li::*)(L, bool)),
      ROW(Pd, MoveTo, V(11), void(Dl::*)(L)),
      ROW(Pd, Sort, V(23), void(Dl::*)(int (*)(Item* const&, Item* const&))),
      ROW(Pd, InsertAfterCur, V(26), void(Dl::*)(Item* const&)),
      ROW(Pd, Rotate, V(30), void(Dl::*)(L, L)),
      Holds("ZtPDList: derives from ZtDList<T*>", std::is_base_of_v<Dl, Pd>),
      Holds("ZtPDList: no field of its own", sizeof(Pd) == sizeof(Dl)),
  });
}

template <>
Rows Inside<ZtXList<int>>::Get() {
  using X = ZtXList<int>;
  using N = ZtListNode<int>;
  Inside f;
  return {
      ROW(Inside, UpdateGroup, kNonVirtual, void(X::*)(L)),
      Holds("m_groupIndex", ZT_FIELD(Inside, m_groupIndex, ZtDynArray<N*> X::*)),
      Holds("m_groupSize", ZT_FIELD(Inside, m_groupSize, L X::*)),
      Holds("ZtXList: field order", Ascending({&f.m_tail, &f.m_groupIndex, &f.m_groupSize})),
      Holds("ZtXList: no other field",
            sizeof(X) == LaidOutSize<L, L, N*, N*, N*, ZtDynArray<N*>, L>(true)),
  };
}

TEST(ContainersInterface, XList) {
  using Li = ZtList<int>;
  using Dl = ZtDList<int>;
  using X = ZtXList<int>;
  ExpectRows(Inside<X>::Get());
  ExpectRows({
      ROW(X, Reset, V(4), void(X::*)()),
      ROW(X, MoveToPre, V(9), void(Dl::*)()),
      ROW(X, MoveTo, V(11), void(X::*)(L)),
      ROW(X, GetAt, V(17), const int& (Dl::*)(L) const),
      ROW(X, DelCur, V(22), void(X::*)()),
      ROW(X, Sort, V(24), void(Dl::*)(bool)),
      ROW(X, InsertAfterCur, V(26), void(X::*)(const int&)),
      ROW(X, DetachAfterCur, V(27), void(X::*)()),
      ROW(X, Conbine, V(28), L(X::*)(Li&, L)),
      ROW(X, ReverseList, V(29), void(X::*)()),
      ROW(X, Rotate, V(30), void(X::*)(L, L)),
      ROW(X, operator=, kNonVirtual, X & (X::*)(const X&)),
      Holds("ZtXList: no GetGroupSize", !ZT_HAS_NAME(X, GetGroupSize)),
      Holds("implicit ZtXList()", kImplicitCtor<X>),
      Holds("implicit ZtXList(long)", kImplicitCtor<X, L>),
      Holds("implicit ZtXList(long, long)", kImplicitCtor<X, L, L>),
      Holds("implicit ZtXList(long, long, long)", kImplicitCtor<X, L, L, L>),
      Holds("implicit ZtXList(const ZtXList&)", kImplicitCtor<X, const X&>),
  });
}

template <>
Rows Inside<ZtPXList<Item>>::Get() {
  using Px = ZtPXList<Item>;
  return {
      ROW(Inside, ReAllocate, V(1), void(Px::*)(L)),
      ROW(Inside, SetAll, kNonVirtual, void(Px::*)(const Item*)),
  };
}

TEST(ContainersInterface, PXList) {
  using X = ZtXList<Item*>;
  using Px = ZtPXList<Item>;
  ExpectRows(OwningListMembers<Px>("ZtPXList"));
  ExpectRows(Inside<Px>::Get());
  ExpectRows({
      ROW(Px, MoveTo, V(11), void(X::*)(L)),
      ROW(Px, InsertAfterCur, V(26), void(X::*)(Item* const&)),
      ROW(Px, Conbine, V(28), L(X::*)(ZtList<Item*>&, L)),
      Holds("ZtPXList: SetAll hidden", !ZT_HAS_NAME(Px, SetAll)),
      Holds("implicit ZtPXList(long, long)", kImplicitCtor<Px, L, L>),
      Holds("implicit ZtPXList(long, long, long)", kImplicitCtor<Px, L, L, L>),
      Holds("ZtPXList: derives from ZtXList<T*>", std::is_base_of_v<X, Px>),
      Holds("ZtPXList: no field of its own", sizeof(Px) == sizeof(X)),
  });
}

// ---- Queues and scoped values -----------------------------------------------------------------

/// The seven queue operations of Q over elements E, declared in Owner.
template <class Q, class Owner, class E>
Rows QueneOperations(const std::string& name) {
  constexpr auto Q8 = [](int order) { return ListedSlot(order, 8); };
  Rows rows = {
      ROW(Q, Clear, Q8(1), void(Owner::*)()),       ROW(Q, GetCount, Q8(2), L(Owner::*)() const),
      ROW(Q, operator[], Q8(3), E & (Owner::*)(L)), ROW(Q, GetHead, Q8(4), bool(Owner::*)(E&)),
      ROW(Q, GetTail, Q8(5), bool(Owner::*)(E&)),   ROW(Q, Push, Q8(6), bool(Owner::*)(const E&)),
      ROW(Q, Pop, Q8(7), bool(Owner::*)(E&)),
  };
  for (InterfaceRow& row : rows) row.what = name + ": " + row.what;
  return rows;
}

template <>
Rows Inside<ZtListQuene<int>>::Get() {
  using Q = ZtListQuene<int>;
  Inside f;
  return {
      Holds("m_limit", ZT_FIELD(Inside, m_limit, L Q::*)),
      Holds("m_list", ZT_FIELD(Inside, m_list, ZtList<int> Q::*)),
      Holds("ZtListQuene: field order", Ascending({&f.m_limit, &f.m_list})),
      Holds("ZtListQuene: no other field", sizeof(Q) == LaidOutSize<L, ZtList<int>>(true)),
  };
}

template <>
Rows Inside<ZtPDListQuene<Item>>::Get() {
  using Q = ZtPDListQuene<Item>;
  Inside f;
  return {
      Holds("m_limit", ZT_FIELD(Inside, m_limit, L Q::*)),
      Holds("m_list", ZT_FIELD(Inside, m_list, ZtPDList<Item> Q::*)),
      Holds("ZtPDListQuene: field order", Ascending({&f.m_limit, &f.m_list})),
      Holds("ZtPDListQuene: no other field", sizeof(Q) == LaidOutSize<L, ZtPDList<Item>>(true)),
  };
}

TEST(ContainersInterface, Quenes) {
  using Q = ZtQuene<int>;
  using LQ = ZtListQuene<int>;
  using PQ = ZtPDListQuene<Item>;
  ExpectRows(QueneOperations<Q, Q, int>("ZtQuene"));
  ExpectRows(QueneOperations<LQ, LQ, int>("ZtListQuene"));
  ExpectRows(QueneOperations<PQ, PQ, Item*>("ZtPDListQuene"));
  ExpectRows(Inside<LQ>::Get());
  ExpectRows(Inside<PQ>::Get());
  ExpectRows({
      Holds("ZtQuene: abstract, no field", std::is_abstract_v<Q> && sizeof(Q) == sizeof(void*)),
      Holds("ZtQuene: no virtual destructor", !std::has_virtual_destructor_v<Q>),
      Holds("ZtListQuene: virtual destructor", std::has_virtual_destructor_v<LQ>),
      Holds("ZtPDListQuene: virtual destructor", std::has_virtual_destructor_v<PQ>),
      Holds("ZtListQuene: derives from ZtQuene<T>", std::is_base_of_v<Q, LQ>),
      Holds("ZtPDListQuene: derives from ZtQuene<T*>", std::is_base_of_v<ZtQuene<Item*>, PQ>),
      Holds("implicit ZtListQuene()", kImplicitCtor<LQ>),
      Holds("implicit ZtPDListQuene()", kImplicitCtor<PQ>),
  });
}

template <>
Rows Inside<ZtPushVar<int>>::Get() {
  using PV = ZtPushVar<int>;
  int v = 0;
  Inside f(v, 1);
  return {
      Holds("m_saved", ZT_FIELD(Inside, m_saved, int PV::*)),
      Holds("m_var", ZT_FIELD(Inside, m_var, int* PV::*)),
      Holds("ZtPushVar: field order", Ascending({&f.m_saved, &f.m_var})),
      Holds("ZtPushVar: no other field", sizeof(PV) == LaidOutSize<int, int*>(true)),
  };
}

TEST(ContainersInterface, PushVar) {
  using PV = ZtPushVar<int>;
  ExpectRows(Inside<PV>::Get());
  ExpectRows({
      Holds("ZtPushVar: the destructor is its one virtual member",
            std::has_virtual_destructor_v<PV>),
      Holds("implicit ZtPushVar(T&, const T&)", kImplicitCtor<PV, int&, const int&>),
  });
}

#undef ROW

}  // namespace
}  // namespace zt::test
