// tests/interface/containers_interface_test.cpp
//
// The containers' interface as clients compile against it: for every class, each member's exact
// member-pointer type (the declaring class included) and virtual-table slot, which constructors
// are implicit, and the fields' types, order and count. The value containers are checked with
// int elements, the owning ones with a small class. A mismatch fails its row, not the build.
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <type_traits>
#include <utility>
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

// ---- Whole virtual tables ---------------------------------------------------------------------
//
// A sequence's table is written as the classes that declare its entries, in slot order (entry 2
// is the destructor): the base's table with the entries a class replaces, plus those it appends.

template <class... D>
struct Slots {};

/// Slots<D, D, ...> with N entries.
template <class D, std::size_t /*entry*/>
struct Each {
  using Type = D;
};
template <class D, std::size_t... I>
auto Uniform(std::index_sequence<I...>) -> Slots<typename Each<D, I>::Type...>;
template <class D, std::size_t N>
using UniformSlots = decltype(Uniform<D>(std::make_index_sequence<N>()));

/// The table S with entries `orders` declared by D, and the entries `Appended` after them.
template <class S, class D, int... Orders>
struct Replace;
template <class... B, class D, int... Orders>
struct Replace<Slots<B...>, D, Orders...> {
  static constexpr bool Replaces([[maybe_unused]] std::size_t index) {
    return ((static_cast<int>(index) + 1 == Orders) || ...);
  }
  template <std::size_t... I>
  static auto Make(std::index_sequence<I...>) -> Slots<std::conditional_t<Replaces(I), D, B>...>;
  using Type = decltype(Make(std::index_sequence_for<B...>()));
  template <class... Appended>
  static auto With(Slots<Appended...>) -> Slots<B..., Appended...>;
};
template <class S, class D, int... Orders>
using Replaced = typename Replace<S, D, Orders...>::Type;
template <class S, class... Appended>
using Extended = decltype(Replace<S, void>::With(Slots<Appended...>()));

enum class Family { kArray, kOwningArray, kList };

/// The row for entry `order` of a sequence C of elements E, expected to be declared by D.
template <class C, class E, class D>
InterfaceRow SlotRow(int order, Family family) {
  using T = std::remove_pointer_t<E>;  // the object type of the owning containers
  using Cmp = int (*)(const E&, const E&);
  using ObjectCmp = int (*)(const T&, const T&);
  const bool list = family == Family::kList;
  switch (order) {
    case 1:
      return ZT_ROW(C, ReAllocate, V(1), void(D::*)(L));
    case 2:
      return Holds("virtual destructor", std::has_virtual_destructor_v<C>);
    case 3:
      return ZT_ROW(C, SetLength, V(3), void(D::*)(L, bool));
    case 4:
      return ZT_ROW(C, Reset, V(4), void(D::*)());
    case 5:
      return ZT_ROW(C, GetCurData, V(5), E & (D::*)());
    case 6:
      return ZT_ROW(C, SetCurData, V(6), void(D::*)(const E&));
    case 7:
      return ZT_ROW(C, MoveToFirst, V(7), void(D::*)());
    case 8:
      return ZT_ROW(C, MoveToNext, V(8), void(D::*)());
    case 9:
      return ZT_ROW(C, MoveToPre, V(9), void(D::*)());
    case 10:
      return ZT_ROW(C, MoveToLast, V(10), void(D::*)());
    case 11:
      return ZT_ROW(C, MoveTo, V(11), void(D::*)(L));
    case 12:
      return ZT_ROW(C, operator[], V(12), E & (D::*)(L));
    case 13:
      return ZT_ROW(C, GetFirst, V(13), const E* (D::*)() const);
    case 14:
      return ZT_ROW(C, GetNext, V(14), const E* (D::*)(const E*) const);
    case 15:
      return ZT_ROW(C, GetPre, V(15), const E* (D::*)(const E*) const);
    case 16:
      return ZT_ROW(C, GetLast, V(16), const E* (D::*)() const);
    case 17:
      return ZT_ROW(C, GetAt, V(17), const E& (D::*)(L) const);
    case 18:
      return ZT_ROW(C, InsertCur, V(18), void(D::*)(const E&));
    case 19:
      return ZT_ROW(C, Insert, V(19), void(D::*)(L, const E&));
    case 20:
      return ZT_ROW(C, InsertHead, V(20), void(D::*)(const E&));
    case 21:
      return ZT_ROW(C, Append, V(21), L(D::*)(const E&));
    case 22:
      return ZT_ROW(C, DelCur, V(22), void(D::*)());
    case 23:
      return ZT_ROW(C, Sort, V(23), void(D::*)(Cmp));
    case 24:
      return ZT_ROW(C, Sort, V(24), void(D::*)(bool));
    case 25:
      return ZT_ROW(C, Move, V(25), bool(D::*)(L, L));
    default:
      break;
  }
  if (!list) {
    switch (order) {
      case 26:
        return ZT_ROW(C, ReleaseCur, V(26), void(D::*)());
      case 27:
        return ZT_ROW(C, TakeOffCur, V(27), T * (D::*)());
      case 28:
        return ZT_ROW(C, Sort, V(28), void(D::*)(ObjectCmp));
      default:
        break;
    }
  }
  switch (order) {
    case 26:
      return ZT_ROW(C, InsertAfterCur, V(26), void(D::*)(const E&));
    case 27:
      return ZT_ROW(C, DetachAfterCur, V(27), void(D::*)());
    case 28:
      return ZT_ROW(C, Conbine, V(28), L(D::*)(ZtList<E>&, L));
    case 29:
      return ZT_ROW(C, ReverseList, V(29), void(D::*)());
    case 30:
      return ZT_ROW(C, Rotate, V(30), void(D::*)(L, L));
    case 31:
      return ZT_ROW(C, Sort, V(31), void(D::*)(ObjectCmp));
    default:
      return Holds("no entry " + std::to_string(order), false);
  }
}

/// A row for every entry of C's table `S` (elements E), named after the class. The lists' entry 1
/// is protected: their Inside rows check it.
template <class C, class E, class... D>
Rows TableRows(const std::string& name, Family family, Slots<D...> /*table*/) {
  Rows rows;
  const auto add = [&rows, &name](int order, InterfaceRow row) {
    row.what = name + " entry " + std::to_string(order) + ": " + row.what;
    rows.push_back(std::move(row));
  };
  int order = 0;
  ((++order,
    family != Family::kList || order != 1 ? add(order, SlotRow<C, E, D>(order, family)) : void()),
   ...);
  return rows;
}

template <class E>
using BaseTable = UniformSlots<ZtDynArrayBase<E>, 25>;
template <class E>
using DynArrayTable =
    Replaced<BaseTable<E>, ZtDynArray<E>, 1, 2, 3, 4, 5, 6, 13, 14, 15, 16, 17, 18, 22, 23, 24>;
template <class E>
using ListTable = Extended<Replaced<BaseTable<E>, ZtList<E>, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 13,
                                    14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24>,
                           ZtList<E>, ZtList<E>, ZtList<E>, ZtList<E>, ZtList<E>>;
template <class E>
using DListTable =
    Replaced<ListTable<E>, ZtDList<E>, 2, 4, 9, 11, 15, 17, 22, 23, 24, 26, 27, 28, 29, 30>;
template <class E>
using XListTable = Replaced<DListTable<E>, ZtXList<E>, 2, 4, 11, 22, 26, 27, 28, 29, 30>;
/// The owning lists replace the same entries of their bases and append the object sort.
template <class Owning, class ListTableOfPointers>
using OwningListTable =
    Extended<Replaced<ListTableOfPointers, Owning, 1, 2, 4, 22, 24, 25>, Owning>;

// ---- Sequence base and its algorithms ---------------------------------------------------------

TEST(ContainersInterface, SequenceBase) {
  using B = ZtDynArrayBase<int>;
  ExpectRows(TableRows<B, int>("ZtDynArrayBase", Family::kArray, BaseTable<int>()));
  ExpectRows({
      ZT_ROW(B, operator=, kNonVirtual, B & (B::*)(const B&)),
      ZT_ROW(B, GetLength, kNonVirtual, L(B::*)() const),
      ZT_ROW(B, GetCur, kNonVirtual, L(B::*)() const),
      ZT_ROW(B, GetMaxIndex, kNonVirtual, L(B::*)() const),
      ZT_ROW(B, IsEmpty, kNonVirtual, bool(B::*)() const),
      ZT_ROW(B, IsBegin, kNonVirtual, bool(B::*)() const),
      ZT_ROW(B, IsEnd, kNonVirtual, bool(B::*)() const),
      ZT_ROW(B, IsOut, kNonVirtual, bool(B::*)() const),
      ZT_ROW(B, IsValidIndex, kNonVirtual, bool(B::*)(L) const),
      ZT_ROW(B, operator[], kNonVirtual, const int& (B::*)(L) const),
      ZT_ROW(B, GetTo, kNonVirtual, const int* (B::*)(L) const),
      ZT_ROW(B, Del, kNonVirtual, void(B::*)(L)),
      ZT_ROW(B, DelHead, kNonVirtual, void(B::*)()),
      ZT_ROW(B, DelTail, kNonVirtual, void(B::*)()),
      ZT_ROW(B, Exchange, kNonVirtual, void(B::*)(L, L)),
      ZT_ROW(B, IncreaseSize, kNonVirtual, void(B::*)(L)),
      ZT_ROW(B, DecreaseSize, kNonVirtual, void(B::*)(L)),
      ZT_ROW(B, SetAll, kNonVirtual, void(B::*)(const int&)),
      ZT_ROW(B, operator<<, kNonVirtual, B & (B::*)(const int&)),
      ZT_ROW(B, DeepCopy, kNonVirtual, void(B::*)(const B&)),
      // The algorithms.
      ZT_ROW(B, Find, kNonVirtual, L(B::*)(const int&, L, L) const),
      ZT_ROW(B, Find, kNonVirtual, L(B::*)(const int&, ZtQuene<L>&, L, L) const),
      ZT_ROW(B, FindTo, kNonVirtual, bool(B::*)(const int&, L)),
      ZT_ROW(B, FindOrAppend, kNonVirtual, L(B::*)(const int&)),
      ZT_ROW(B, FindOrInsertHead, kNonVirtual, void(B::*)(const int&)),
      ZT_ROW(B, FindDel, kNonVirtual, L(B::*)(const int&)),
      ZT_ROW(B, BFind, kNonVirtual, L(B::*)(const int&, L, L) const),
      ZT_ROW(B, BFindTo, kNonVirtual, bool(B::*)(const int&, L, L)),
      ZT_ROW(B, SortInto, kNonVirtual, bool(B::*)(const int&, bool)),
      ZT_ROW(B, Reverse, kNonVirtual, void(B::*)(L, L)),
      ZT_ROW(B, Left, kNonVirtual, void(B::*)(L, B&) const),
      ZT_ROW(B, Right, kNonVirtual, void(B::*)(L, B&) const),
      ZT_ROW(B, Mid, kNonVirtual, void(B::*)(L, L, B&) const),
      ZT_ROW(B, DeepCopy, kNonVirtual, void(B::*)(const ZtArray<int>&)),
      ZT_ROW(B, operator<<, kNonVirtual, B & (B::*)(const B&)),
      ZT_ROW(B, operator<<, kNonVirtual, B & (B::*)(const ZtArray<int>&)),
      ZT_ROW(B, operator==, kNonVirtual, bool(B::*)(const B&) const),
      ZT_ROW(B, operator!=, kNonVirtual, bool(B::*)(const B&) const),
      ZT_ROW(B, operator<, kNonVirtual, bool(B::*)(const B&) const),
      ZT_ROW(B, operator>, kNonVirtual, bool(B::*)(const B&) const),
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
  ExpectRows(TableRows<A, int>("ZtDynArray", Family::kArray, DynArrayTable<int>()));
  ExpectRows(Inside<A>::Get());
  ExpectRows({
      ZT_ROW(A, GetSpaceSize, kNonVirtual, L(A::*)() const),
      ZT_ROW(A, GetAllocUnit, kNonVirtual, L(A::*)() const),
      ZT_ROW(A, SetAllocUnit, kNonVirtual, void(A::*)(L)),
      ZT_ROW(A, SetSpaceSize, kNonVirtual, bool(A::*)(L)),
      ZT_ROW(A, Attach, kNonVirtual, void(A::*)(L, int*)),
      ZT_ROW(A, Detach, kNonVirtual, int* (A::*)()),
      ZT_ROW(A, operator=, kNonVirtual, A & (A::*)(const A&)),
      ZT_ROW(A, operator=, kNonVirtual, A & (A::*)(const B&)),
      Holds("implicit ZtDynArray()", kImplicitCtor<A>),
      Holds("implicit ZtDynArray(long)", kImplicitCtor<A, L>),
      Holds("implicit ZtDynArray(long, long)", kImplicitCtor<A, L, L>),
      Holds("implicit ZtDynArray(const ZtDynArray&)", kImplicitCtor<A, const A&>),
      Holds("implicit ZtDynArray(const ZtDynArrayBase&)", kImplicitCtor<A, const B&>),
  });
}

TEST(ContainersInterface, DynPArray) {
  using A = ZtDynArray<Item*>;
  using P = ZtDynPArray<Item>;
  using Table = Extended<Replaced<DynArrayTable<Item*>, P, 1, 2, 3, 4, 22, 24, 25>, P, P, P>;
  ExpectRows(TableRows<P, Item*>("ZtDynPArray", Family::kOwningArray, Table()));
  ExpectRows({
      ZT_ROW(P, GetPData, kNonVirtual, const Item& (P::*)(L) const),
      ZT_ROW(P, operator(), kNonVirtual, Item & (P::*)(L)),
      ZT_ROW(P, GetCurPData, kNonVirtual, Item & (P::*)()),
      ZT_ROW(P, IsCurEmpty, kNonVirtual, bool(P::*)() const),
      ZT_ROW(P, IsCurEmpty, kNoSuchMember, bool(P::*)()),
      ZT_ROW(P, IsEmptyData, kNonVirtual, bool(P::*)(L) const),
      ZT_ROW(P, GetDataNum, kNonVirtual, L(P::*)() const),
      ZT_ROW(P, Release, kNonVirtual, void(P::*)(L)),
      ZT_ROW(P, ReleaseAll, kNonVirtual, void(P::*)()),
      ZT_ROW(P, TakeOff, kNonVirtual, Item * (P::*)(L)),
      ZT_ROW(P, TakeOffHead, kNonVirtual, Item * (P::*)()),
      ZT_ROW(P, TakeOffTail, kNonVirtual, Item * (P::*)()),
      ZT_ROW(P, PlaceIn, kNonVirtual, L(P::*)(Item*)),
      ZT_ROW(P, FindDel, kNonVirtual, L(P::*)(Item*)),
      ZT_ROW(P, FindDataDel, kNonVirtual, L(P::*)(const Item&)),
      ZT_ROW(P, FindData, kNonVirtual, L(P::*)(const Item&, L, L) const),
      ZT_ROW(P, FindData, kNonVirtual, L(P::*)(const Item&, ZtQuene<L>&, L, L) const),
      ZT_ROW(P, BFindData, kNonVirtual, L(P::*)(const Item&, L, L) const),
      ZT_ROW(P, BFindDataTo, kNonVirtual, bool(P::*)(const Item&, L, L)),
      ZT_ROW(P, SortInto, kNonVirtual, bool(P::*)(Item*, bool)),
      ZT_ROW(P, SortEx, kNonVirtual, void(P::*)(bool)),
      ZT_ROW(P, operator==, kNonVirtual, bool(P::*)(const P&) const),
      ZT_ROW(P, operator!=, kNonVirtual, bool(P::*)(const P&) const),
      ZT_ROW(P, operator=, kNonVirtual, P & (P::*)(const P&)),
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
      ZT_ROW(R, operator=, kNonVirtual, R & (R::*)(const R&)),
      ZT_ROW(R, GetLength, kNonVirtual, L(R::*)() const),
      ZT_ROW(R, GetMaxIndex, kNonVirtual, L(R::*)() const),
      ZT_ROW(R, IsEmpty, kNonVirtual, bool(R::*)() const),
      ZT_ROW(R, IsValidIndex, kNonVirtual, bool(R::*)(L) const),
      ZT_ROW(R, operator[], kNonVirtual, int& (R::*)(L)),
      ZT_ROW(R, operator[], kNonVirtual, const int& (R::*)(L) const),
      ZT_ROW(R, GetAt, kNonVirtual, const int& (R::*)(L) const),
      ZT_ROW(R, SetAt, kNonVirtual, void(R::*)(L, const int&)),
      ZT_ROW(R, GetDataBuffer, kNonVirtual, int* (R::*)() const),
      ZT_ROW(R, ReAllocate, kNonVirtual, void(R::*)(L, bool)),
      ZT_ROW(R, Reset, kNonVirtual, void(R::*)()),
      ZT_ROW(R, SetAll, kNonVirtual, void(R::*)(const int&)),
      ZT_ROW(R, Insert, kNonVirtual, void(R::*)(L, const int&)),
      ZT_ROW(R, InsertHead, kNonVirtual, void(R::*)(const int&)),
      ZT_ROW(R, Append, kNonVirtual, L(R::*)(const int&)),
      ZT_ROW(R, Del, kNonVirtual, void(R::*)(L)),
      ZT_ROW(R, DelHead, kNonVirtual, void(R::*)()),
      ZT_ROW(R, DelTail, kNonVirtual, void(R::*)()),
      ZT_ROW(R, Reverse, kNonVirtual, void(R::*)(L, L)),
      ZT_ROW(R, Sort, kNonVirtual, void(R::*)(bool)),
      ZT_ROW(R, Sort, kNonVirtual, void(R::*)(int (*)(const int&, const int&))),
      ZT_ROW(R, Find, kNonVirtual, L(R::*)(const int&, L, L) const),
      ZT_ROW(R, Find, kNonVirtual, L(R::*)(const int&, ZtQuene<L>&, L, L) const),
      ZT_ROW(R, FindOrAppend, kNonVirtual, L(R::*)(const int&)),
      ZT_ROW(R, FindOrInsertHead, kNonVirtual, void(R::*)(const int&)),
      ZT_ROW(R, FindDel, kNonVirtual, L(R::*)(const int&)),
      ZT_ROW(R, BFind, kNonVirtual, L(R::*)(const int&, L, L) const),
      ZT_ROW(R, operator==, kNonVirtual, bool(R::*)(const R&) const),
      ZT_ROW(R, operator!=, kNonVirtual, bool(R::*)(const R&) const),
      ZT_ROW(R, operator<, kNonVirtual, bool(R::*)(const R&) const),
      ZT_ROW(R, operator>, kNonVirtual, bool(R::*)(const R&) const),
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
      ZT_ROW(N, operator=, kNonVirtual, N & (N::*)(const N&)),
      ZT_ROW(D, operator=, kNonVirtual, D & (D::*)(const D&)),
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
      ZT_ROW(Inside, ReAllocate, V(1), void(Li::*)(L)),
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
  ExpectRows(TableRows<Li, int>("ZtList", Family::kList, ListTable<int>()));
  // A doubly linked list reaches Conbine(ZtList&, long): no other overload takes it.
  const auto conbine = [](auto& a, auto& b) -> decltype(a.Conbine(b, L{0})) { return 0; };
  ExpectRows(Inside<Li>::Get());
  ExpectRows({
      Holds("ZtList::Conbine called with a ZtDList",
            std::is_invocable_v<decltype(conbine), Li&, ZtDList<int>&>),
      ZT_ROW(Li, Conbine, kNoSuchMember, L(Li::*)(ZtDList<int>&, L)),
      ZT_ROW(Li, GetCurPos, kNonVirtual, ZtListNode<int> * (Li::*)() const),
      ZT_ROW(Li, Detach, kNonVirtual, void(Li::*)()),
      ZT_ROW(Li, DetachAfter, kNonVirtual, void(Li::*)(L)),
      ZT_ROW(Li, SplitAt, kNonVirtual, void(Li::*)(L, Li&)),
      ZT_ROW(Li, SplitAtCur, kNonVirtual, void(Li::*)(Li&)),
      ZT_ROW(Li, operator=, kNonVirtual, Li & (Li::*)(const Li&)),
      ZT_ROW(Li, operator=, kNonVirtual, Li & (Li::*)(const B&)),
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
  ExpectRows(TableRows<Dl, int>("ZtDList", Family::kList, DListTable<int>()));
  ExpectRows({
      ZT_ROW(Dl, SplitAt, kNonVirtual, void(Li::*)(L, Li&)),
      ZT_ROW(Dl, operator=, kNonVirtual, Dl & (Dl::*)(const Dl&)),
      ZT_ROW(Dl, operator=, kNonVirtual, Dl & (Dl::*)(const B&)),
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
      ZT_ROW(O, IsCurEmpty, kNonVirtual, bool(O::*)() const),
      ZT_ROW(O, IsCurEmpty, kNoSuchMember, bool(O::*)()),
      ZT_ROW(O, IsEmptyData, kNonVirtual, bool(O::*)(L) const),
      ZT_ROW(O, GetDataNum, kNonVirtual, L(O::*)() const),
      ZT_ROW(O, GetCurPData, kNonVirtual, Item & (O::*)()),
      ZT_ROW(O, GetPData, kNonVirtual, const Item& (O::*)(L) const),
      ZT_ROW(O, operator(), kNonVirtual, Item & (O::*)(L)),
      ZT_ROW(O, ReleaseCur, kNonVirtual, void(O::*)()),
      ZT_ROW(O, Release, kNonVirtual, void(O::*)(L)),
      ZT_ROW(O, ReleaseAll, kNonVirtual, void(O::*)()),
      ZT_ROW(O, TakeOffCur, kNonVirtual, Item * (O::*)()),
      ZT_ROW(O, TakeOff, kNonVirtual, Item * (O::*)(L)),
      ZT_ROW(O, TakeOffHead, kNonVirtual, Item * (O::*)()),
      ZT_ROW(O, TakeOffTail, kNonVirtual, Item * (O::*)()),
      ZT_ROW(O, PlaceIn, kNonVirtual, L(O::*)(Item*)),
      ZT_ROW(O, FindData, kNonVirtual, L(O::*)(const Item&, L, L) const),
      ZT_ROW(O, FindData, kNonVirtual, L(O::*)(const Item&, ZtQuene<L>&, L, L) const),
      ZT_ROW(O, FindDataTo, kNonVirtual, bool(O::*)(const Item&, L, L)),
      ZT_ROW(O, FindDataOrAppend, kNonVirtual, L(O::*)(const Item&)),
      ZT_ROW(O, FindDataOrInsertHead, kNonVirtual, void(O::*)(const Item&)),
      ZT_ROW(O, FindDataDel, kNonVirtual, L(O::*)(const Item&)),
      ZT_ROW(O, FindDel, kNonVirtual, L(O::*)(Item*)),
      ZT_ROW(O, BFindData, kNonVirtual, L(O::*)(const Item&, L, L) const),
      ZT_ROW(O, BFindDataTo, kNonVirtual, bool(O::*)(const Item&, L, L)),
      ZT_ROW(O, SortInto, kNonVirtual, bool(O::*)(Item*, bool)),
      ZT_ROW(O, operator==, kNonVirtual, bool(O::*)(const O&) const),
      ZT_ROW(O, operator!=, kNonVirtual, bool(O::*)(const O&) const),
      ZT_ROW(O, operator=, kNonVirtual, O & (O::*)(const O&)),
      Holds("implicit ()", kImplicitCtor<O>),
      Holds("implicit (long)", kImplicitCtor<O, L>),
      Holds("implicit (const&)", kImplicitCtor<O, const O&>),
  };
  for (InterfaceRow& row : rows) row.what = name + ": " + row.what;
  return rows;
}

template <>
Rows Inside<ZtPDList<Item>>::Get() {
  return {ZT_ROW(Inside, ReAllocate, V(1), void(ZtPDList<Item>::*)(L))};
}

TEST(ContainersInterface, PDList) {
  using Dl = ZtDList<Item*>;
  using Pd = ZtPDList<Item>;
  ExpectRows(
      TableRows<Pd, Item*>("ZtPDList", Family::kList, OwningListTable<Pd, DListTable<Item*>>()));
  ExpectRows(OwningListMembers<Pd>("ZtPDList"));
  ExpectRows(Inside<Pd>::Get());
  ExpectRows({
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
      ZT_ROW(Inside, UpdateGroup, kNonVirtual, void(X::*)(L)),
      Holds("m_groupIndex", ZT_FIELD(Inside, m_groupIndex, ZtDynArray<N*> X::*)),
      Holds("m_groupSize", ZT_FIELD(Inside, m_groupSize, L X::*)),
      Holds("ZtXList: field order", Ascending({&f.m_tail, &f.m_groupIndex, &f.m_groupSize})),
      Holds("ZtXList: no other field",
            sizeof(X) == LaidOutSize<L, L, N*, N*, N*, ZtDynArray<N*>, L>(true)),
  };
}

TEST(ContainersInterface, XList) {
  using X = ZtXList<int>;
  ExpectRows(TableRows<X, int>("ZtXList", Family::kList, XListTable<int>()));
  ExpectRows(Inside<X>::Get());
  ExpectRows({
      ZT_ROW(X, operator=, kNonVirtual, X & (X::*)(const X&)),
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
      ZT_ROW(Inside, ReAllocate, V(1), void(Px::*)(L)),
      ZT_ROW(Inside, SetAll, kNonVirtual, void(Px::*)(const Item*)),
  };
}

TEST(ContainersInterface, PXList) {
  using X = ZtXList<Item*>;
  using Px = ZtPXList<Item>;
  ExpectRows(
      TableRows<Px, Item*>("ZtPXList", Family::kList, OwningListTable<Px, XListTable<Item*>>()));
  ExpectRows(OwningListMembers<Px>("ZtPXList"));
  ExpectRows(Inside<Px>::Get());
  ExpectRows({
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
      ZT_ROW(Q, Clear, Q8(1), void(Owner::*)()),
      ZT_ROW(Q, GetCount, Q8(2), L(Owner::*)() const),
      ZT_ROW(Q, operator[], Q8(3), E & (Owner::*)(L)),
      ZT_ROW(Q, GetHead, Q8(4), bool(Owner::*)(E&)),
      ZT_ROW(Q, GetTail, Q8(5), bool(Owner::*)(E&)),
      ZT_ROW(Q, Push, Q8(6), bool(Owner::*)(const E&)),
      ZT_ROW(Q, Pop, Q8(7), bool(Owner::*)(E&)),
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

}  // namespace
}  // namespace zt::test
