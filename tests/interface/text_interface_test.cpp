// tests/interface/text_interface_test.cpp
//
// The interface of the strings, bit arrays, streams and run-time classes as clients compile
// against it: each member's exact member-pointer type (the declaring class included) and
// virtual-table slot, which constructors are implicit, the fields' types, order and count, and
// the absence of members the classes must not have. A mismatch fails its row, not the build.

// The string classes are classes, not aliases: a client may declare them before their header.
class ZtStringA;
class ZtStringW;

#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

#include "tests/support/interface.h"
#include "zt/bits/bit_array.h"
#include "zt/bits/bit_data.h"
#include "zt/rtclass/run_time_class.h"
#include "zt/streams/dyn_array_stream.h"
#include "zt/streams/dyn_array_stream_ex.h"
#include "zt/streams/stream.h"
#include "zt/text/string.h"

namespace zt::test {
namespace {

using L = ZtLong;
constexpr std::ptrdiff_t kNo = kNonVirtual;

// ---- Strings ------------------------------------------------------------------------------------

/// The rows of ZtStringA (Ch char) or ZtStringW (Ch wchar_t): one member list, two classes.
template <class S, class Ch, class Other>
Rows StringRows() {
  using Q = ZtQuene<L>;
  return {
      Holds("derives from ZtArray<Ch>", std::is_base_of_v<ZtArray<Ch>, S>),
      Holds("virtual destructor", std::has_virtual_destructor_v<S>),
      Holds("implicit S()", kImplicitCtor<S>),
      Holds("implicit S(long)", kImplicitCtor<S, L>),
      Holds("implicit S(const S&)", kImplicitCtor<S, const S&>),
      Holds("implicit S(const Ch*)", kImplicitCtor<S, const Ch*>),
      Holds("implicit S(const Other*)", kImplicitCtor<S, const Other*>),
      ZT_ROW(S, operator=, kNo, S & (S::*)(const S&)),
      ZT_ROW(S, operator=, kNo, S & (S::*)(const Ch*)),
      ZT_ROW(S, Length, kNo, L(S::*)() const),
      ZT_ROW(S, IsEmpty, kNo, bool(S::*)() const),
      ZT_ROW(S, IsValidIndex, kNo, bool(S::*)(L) const),
      ZT_ROW(S, operator const Ch*, kNo, const Ch* (S::*)() const),
      ZT_ROW(S, Reset, kNo, void(S::*)()),
      ZT_ROW(S, ReAllocate, kNo, void(S::*)(L, bool)),
      ZT_ROW(S, FreeExtra, kNo, void(S::*)()),
      ZT_ROW(S, operator<<, kNo, S & (S::*)(Ch)),
      ZT_ROW(S, operator<<, kNo, S & (S::*)(int)),
      ZT_ROW(S, operator<<, kNo, S & (S::*)(const Ch*)),
      ZT_ROW(S, operator<<, kNo, S & (S::*)(const S&)),
      ZT_ROW(S, operator<<, kNo, S & (S::*)(double)),
      ZT_ROW(S, operator+, kNo, S(S::*)(const S&)),
      ZT_ROW(S, DelRight, kNo, void(S::*)(L)),
      ZT_ROW(S, DelLeft, kNo, void(S::*)(L)),
      ZT_ROW(S, Del, kNo, void(S::*)(L)),
      ZT_ROW(S, Del, kNo, void(S::*)(L, L)),
      ZT_ROW(S, Insert, kNo, void(S::*)(L, Ch)),
      ZT_ROW(S, Insert, kNo, bool(S::*)(L, const S&)),
      ZT_ROW(S, Reverse, kNo, void(S::*)(L, L)),
      ZT_ROW(S, MakeUpper, kNo, void(S::*)()),
      ZT_ROW(S, Left, kNo, S(S::*)(L)),
      ZT_ROW(S, Right, kNo, S(S::*)(L)),
      ZT_ROW(S, Mid, kNo, S(S::*)(L, L)),
      ZT_ROW(S, Find, kNo, L(S::*)(Ch, L, L) const),
      ZT_ROW(S, ReverseFind, kNo, L(S::*)(Ch) const),
      ZT_ROW(S, operator==, kNo, bool(S::*)(const Ch*) const),
      ZT_ROW(S, operator!=, kNo, bool(S::*)(const Ch*) const),
      ZT_ROW(S, operator>, kNo, bool(S::*)(const Ch*) const),
      ZT_ROW(S, operator<, kNo, bool(S::*)(const Ch*) const),
      ZT_ROW(S, IsIntNumber, kNo, bool(S::*)() const),
      ZT_ROW(S, IsFloatNumber, kNo, bool(S::*)() const),
      Holds("Format(const Ch*, ...), not virtual",
            ZT_HAS(S, Format, S & (S::*)(const Ch*, ...)) &&
                VirtualSlot(static_cast<S& (S::*)(const Ch*, ...)>(&S::Format)) == kNo),
      ZT_ROW(S, CreateNextTable, kNo, void(S::*)(L*) const),
      ZT_ROW(S, Find, kNo, L(S::*)(const S&, L, L) const),
      ZT_ROW(S, Find, kNo, L(S::*)(const S&, Q&, L, L) const),
      ZT_ROW(S, FindEx, kNo, L(S::*)(const S&, S&, int, L, L) const),
      ZT_ROW(S, Replace, kNo, L(S::*)(const S&, const S&, L, L)),
      ZT_ROW(S, ReplaceEx, kNo, void(S::*)(const S&, const S&, int)),
      ZT_ROW(S, Del, kNo, L(S::*)(const S&)),
      // The array's members that the string hides are out of reach by their array signatures.
      ZT_ROW(S, Find, kNoSuchMember, L(ZtArray<Ch>::*)(const Ch&, L, L) const),
      ZT_ROW(S, Insert, kNoSuchMember, void(ZtArray<Ch>::*)(L, const Ch&)),
      // Inherited members stay the array's own.
      ZT_ROW(S, GetLength, kDeclaredElsewhere, L(S::*)() const),
  };
}

/// The protected members and fields of a string class, reached from a class derived from it.
template <class S, class Ch>
struct InsideString : S {
  static Rows Get() {
    using I = InsideString;
    I f;
    return {
        ZT_ROW(I, SetEnd, kNo, void(S::*)(L)),
        ZT_ROW(I, SetLength, kNo, void(S::*)(L)),
        ZT_ROW(I, Copy, kNo, void(S::*)(const Ch*, L, L)),
        ZT_ROW(I, Copy, kNo, void(S::*)(const Ch*, L)),
        ZT_ROW(I, Copy, kNo, void(S::*)(L, L, L)),
        Holds("m_length", ZT_FIELD(I, m_length, L S::*)),
        Holds("field order", Ascending({&f.m_data, &f.m_count, &f.m_length})),
        Holds("no other field", sizeof(S) == LaidOutSize<Ch*, L, L>(true)),
    };
  }
};

TEST(TextInterface, StringA) {
  ExpectRows(StringRows<ZtStringA, char, wchar_t>());
  ExpectRows(InsideString<ZtStringA, char>::Get());
}

TEST(TextInterface, StringW) {
  ExpectRows(StringRows<ZtStringW, wchar_t, char>());
  ExpectRows(InsideString<ZtStringW, wchar_t>::Get());
}

// ---- Bit arrays and flags -----------------------------------------------------------------------

template <>
Rows Inside<ZtBitArray>::Get() {
  using A = ZtBitArray;
  using I = Inside<A>;
  I f(0, 1);
  return {
      ZT_ROW(I, UnitToByte, kNo, void(A::*)(L, L&, L&) const),
      ZT_ROW(I, BitToByte, kNo, void(A::*)(L, L&, L&) const),
      Holds("m_data", ZT_FIELD(I, m_data, char* A::*)),
      Holds("m_unitSize", ZT_FIELD(I, m_unitSize, L A::*)),
      Holds("m_unitNum", ZT_FIELD(I, m_unitNum, L A::*)),
      Holds("m_own", ZT_FIELD(I, m_own, bool A::*)),
      Holds("field order", Ascending({&f.m_data, &f.m_unitSize, &f.m_unitNum, &f.m_own})),
      Holds("no other field", sizeof(A) == LaidOutSize<char*, L, L, bool>(false)),
  };
}

TEST(BitsInterface, BitArray) {
  using A = ZtBitArray;
  ExpectRows(Inside<A>::Get());
  ExpectRows({
      Holds("no virtual table", !std::is_polymorphic_v<A>),
      Holds("no default constructor", !std::is_default_constructible_v<A>),
      Holds("implicit ZtBitArray(long, long)", kImplicitCtor<A, L, L>),
      Holds("implicit ZtBitArray(void*, long, bool)", kImplicitCtor<A, void*, L, bool>),
      Holds("implicit ZtBitArray(const ZtBitArray&)", kImplicitCtor<A, const A&>),
      ZT_ROW(A, operator=, kNo, A & (A::*)(const A&)),
      ZT_ROW(A, ReAllocate, kNo, void(A::*)(L)),
      ZT_ROW(A, Attach, kNo, void(A::*)(L, char*)),
      ZT_ROW(A, Detach, kNo, char* (A::*)()),
      ZT_ROW(A, SetUnitSize, kNo, void(A::*)(L)),
      ZT_ROW(A, GetLength, kNo, L(A::*)() const),
      ZT_ROW(A, GetUnitSize, kNo, L(A::*)() const),
      ZT_ROW(A, GetBitSize, kNo, L(A::*)() const),
      ZT_ROW(A, GetByteSize, kNo, L(A::*)() const),
      Holds("static BitToByte(long)", ZT_HAS(A, BitToByte, L(*)(L))),
      ZT_ROW(A, IsValidIndex, kNo, bool(A::*)(L) const),
      ZT_ROW(A, GetValue, kNo, L(A::*)(L) const),
      ZT_ROW(A, SetValue, kNo, void(A::*)(L, char)),
      ZT_ROW(A, SetAll, kNo, void(A::*)(char)),
      ZT_ROW(A, SetAll, kNo, void(A::*)()),
      ZT_ROW(A, ResetAll, kNo, void(A::*)()),
      ZT_ROW(A, operator[], kNo, bool(A::*)(L)),
      ZT_ROW(A, Set, kNo, void(A::*)(L)),
      ZT_ROW(A, Reset, kNo, void(A::*)(L)),
      ZT_ROW(A, operator char, kNo, char (A::*)() const),
      ZT_ROW(A, operator int, kNo, int (A::*)() const),
      ZT_ROW(A, operator float, kNo, float (A::*)() const),
      ZT_ROW(A, operator double, kNo, double (A::*)() const),
      ZT_ROW(A, operator const char*, kNo, const char* (A::*)() const),
      ZT_ROW(A, operator const int*, kNo, const int* (A::*)() const),
      ZT_ROW(A, operator const float*, kNo, const float* (A::*)() const),
      ZT_ROW(A, operator const double*, kNo, const double* (A::*)() const),
  });
}

template <>
Rows Inside<ZtBit2dArray>::Get() {
  using G = ZtBit2dArray;
  using I = Inside<G>;
  I f(1, 1, 1);
  return {
      Holds("m_rowNum", ZT_FIELD(I, m_rowNum, L G::*)),
      Holds("m_colNum", ZT_FIELD(I, m_colNum, L G::*)),
      Holds("field order", Ascending({&f.m_own, &f.m_rowNum, &f.m_colNum})),
      Holds("no other field", sizeof(G) == LaidOutSize<char*, L, L, bool, L, L>(false)),
  };
}

TEST(BitsInterface, Bit2dArray) {
  using G = ZtBit2dArray;
  ExpectRows(Inside<G>::Get());
  ExpectRows({
      Holds("derives from ZtBitArray", std::is_base_of_v<ZtBitArray, G>),
      Holds("implicit ZtBit2dArray(long, long, long)", kImplicitCtor<G, L, L, L>),
      ZT_ROW(G, operator(), kNo, L(G::*)(L, L) const),
      ZT_ROW(G, SetValue, kNo, void(G::*)(L, L, char)),
      ZT_ROW(G, GetRowNum, kNo, L(G::*)() const),
      ZT_ROW(G, GetColNum, kNo, L(G::*)() const),
      ZT_ROW(G, operator=, kNo, G & (G::*)(const G&)),
      // The one-unit SetValue of the base is hidden by the grid's own.
      ZT_ROW(G, SetValue, kNoSuchMember, void(ZtBitArray::*)(L, char)),
  });
}

template <>
Rows Inside<ZtBitData>::Get() {
  using D = ZtBitData;
  return {
      Holds("m_flag", ZT_FIELD(Inside<D>, m_flag, int D::*)),
      Holds("no other field", sizeof(D) == LaidOutSize<int>(true)),
  };
}

TEST(BitsInterface, BitData) {
  using D = ZtBitData;
  ExpectRows(Inside<D>::Get());
  ExpectRows({
      Holds("virtual destructor", std::has_virtual_destructor_v<D>),
      Holds("implicit ZtBitData()", kImplicitCtor<D>),
      Holds("implicit ZtBitData(int)", kImplicitCtor<D, int>),
      Holds("implicit ZtBitData(const ZtBitData&)", kImplicitCtor<D, const D&>),
      ZT_ROW(D, operator=, kNo, D & (D::*)(const D&)),
      ZT_ROW(D, Is, kNo, bool(D::*)(int) const),
      ZT_ROW(D, IsNot, kNo, bool(D::*)(int) const),
      ZT_ROW(D, IsSameFlag, kNo, bool(D::*)(int) const),
      ZT_ROW(D, IsEmptyFlag, kNo, bool(D::*)() const),
      ZT_ROW(D, AddFlag, kNo, void(D::*)(int)),
      ZT_ROW(D, RemoveFlag, kNo, void(D::*)(int)),
      ZT_ROW(D, SetFlag, kNo, void(D::*)(int)),
      ZT_ROW(D, ClearFlag, kNo, void(D::*)()),
      ZT_ROW(D, operator int, kNo, int (D::*)() const),
  });
}

// ---- Streams ------------------------------------------------------------------------------------

/// The slot of entry `order` in the streams' listing, where the destructor is entry 15.
constexpr std::ptrdiff_t V(int order) { return ListedSlot(order, 15); }

template <>
Rows Inside<ZtStream>::Get() {
  using S = ZtStream;
  using I = Inside<S>;
  I f;
  return {
      Holds("m_cur", ZT_FIELD(I, m_cur, L S::*)),
      Holds("m_length", ZT_FIELD(I, m_length, L S::*)),
      Holds("field order", Ascending({&f.m_cur, &f.m_length})),
      Holds("no other field", sizeof(S) == LaidOutSize<L, L>(true)),
  };
}

TEST(StreamsInterface, Stream) {
  using S = ZtStream;
  ExpectRows(Inside<S>::Get());
  ExpectRows({
      Holds("virtual destructor", std::has_virtual_destructor_v<S>),
      Holds("implicit ZtStream()", kImplicitCtor<S>),
      Holds("implicit ZtStream(const ZtStream&)", kImplicitCtor<S, const S&>),
      ZT_ROW(S, MoveTo, V(1), void(S::*)(L)),
      ZT_ROW(S, Reset, V(2), void(S::*)()),
      ZT_ROW(S, Write, V(3), void(S::*)(void*, L)),
      ZT_ROW(S, Read, V(4), void(S::*)(void*, L)),
      ZT_ROW(S, WriteChar, V(5), void(S::*)(char)),
      ZT_ROW(S, WriteBool, V(6), void(S::*)(bool)),
      ZT_ROW(S, WriteShort, V(7), void(S::*)(short)),
      ZT_ROW(S, WriteLong, V(8), void(S::*)(L)),
      ZT_ROW(S, WriteDouble, V(9), void(S::*)(double)),
      ZT_ROW(S, ReadChar, V(10), void(S::*)(char&)),
      ZT_ROW(S, ReadBool, V(11), void(S::*)(bool&)),
      ZT_ROW(S, ReadShort, V(12), void(S::*)(short&)),
      ZT_ROW(S, ReadLong, V(13), void(S::*)(L&)),
      ZT_ROW(S, ReadDouble, V(14), void(S::*)(double&)),
      ZT_ROW(S, operator=, kNo, S & (S::*)(const S&)),
      ZT_ROW(S, GetCur, kNo, L(S::*)() const),
      ZT_ROW(S, GetLength, kNo, L(S::*)() const),
      ZT_ROW(S, IsOut, kNo, bool(S::*)() const),
      ZT_ROW(S, MoveToFirst, kNo, void(S::*)()),
      ZT_ROW(S, MoveToNext, kNo, void(S::*)(L)),
      ZT_ROW(S, MoveToPre, kNo, void(S::*)(L)),
      ZT_ROW(S, MoveToLast, kNo, void(S::*)()),
      ZT_ROW(S, MoveOut, kNo, void(S::*)()),
      ZT_ROW(S, operator==, kNo, bool(S::*)(const S&) const),
      ZT_ROW(S, operator!=, kNo, bool(S::*)(const S&) const),
      ZT_ROW(S, operator<, kNo, bool(S::*)(const S&) const),
      ZT_ROW(S, operator>, kNo, bool(S::*)(const S&) const),
      ZT_ROW(S, operator<<, kNo, S & (S::*)(char)),
      ZT_ROW(S, operator<<, kNo, S & (S::*)(bool)),
      ZT_ROW(S, operator<<, kNo, S & (S::*)(short)),
      ZT_ROW(S, operator<<, kNo, S & (S::*)(L)),
      ZT_ROW(S, operator<<, kNo, S & (S::*)(double)),
      ZT_ROW(S, operator>>, kNo, S & (S::*)(char&)),
      ZT_ROW(S, operator>>, kNo, S & (S::*)(bool&)),
      ZT_ROW(S, operator>>, kNo, S & (S::*)(short&)),
      ZT_ROW(S, operator>>, kNo, S & (S::*)(L&)),
      ZT_ROW(S, operator>>, kNo, S & (S::*)(double&)),
  });
}

/// The storage classes replace Reset, Write and Read (and the destructor) and inherit the rest.
template <class D>
Rows StorageSlots() {
  return {
      ZT_ROW(D, Reset, V(2), void(D::*)()),
      ZT_ROW(D, Write, V(3), void(D::*)(void*, L)),
      ZT_ROW(D, Read, V(4), void(D::*)(void*, L)),
      ZT_ROW(D, MoveTo, kDeclaredElsewhere, void(D::*)(L)),
      ZT_ROW(D, WriteLong, kDeclaredElsewhere, void(D::*)(L)),
      Holds("derives from ZtStream", std::is_base_of_v<ZtStream, D>),
      Holds("implicit copy constructor", kImplicitCtor<D, const D&>),
      ZT_ROW(D, operator=, kNo, D & (D::*)(const D&)),
  };
}

template <>
Rows Inside<ZtDynArrayStream>::Get() {
  using D = ZtDynArrayStream;
  using I = Inside<D>;
  I f;
  return {
      Holds("m_array", ZT_FIELD(I, m_array, ZtDynArray<char> D::*)),
      Holds("field order", Ascending({&f.m_cur, &f.m_length, &f.m_array})),
      Holds("no other field", sizeof(D) == LaidOutSize<L, L, ZtDynArray<char>>(true)),
  };
}

TEST(StreamsInterface, DynArrayStream) {
  using D = ZtDynArrayStream;
  ExpectRows(Inside<D>::Get());
  ExpectRows(StorageSlots<D>());
  ExpectRows({
      Holds("implicit ZtDynArrayStream()", kImplicitCtor<D>),
      Holds("implicit ZtDynArrayStream(long)", kImplicitCtor<D, L>),
      Holds("implicit ZtDynArrayStream(long, long)", kImplicitCtor<D, L, L>),
      ZT_ROW(D, SetLength, kNo, void(D::*)(L)),
      ZT_ROW(D, operator[], kNo, char& (D::*)(L)),
  });
}

template <>
Rows Inside<ZtDynArrayStreamEx>::Get() {
  using E = ZtDynArrayStreamEx;
  using I = Inside<E>;
  I f;
  using Units = ZtDynPArray<ZtDynArrayStream>;
  return {
      Holds("m_unitSize", ZT_FIELD(I, m_unitSize, L E::*)),
      Holds("m_units", ZT_FIELD(I, m_units, Units E::*)),
      Holds("field order", Ascending({&f.m_cur, &f.m_length, &f.m_unitSize, &f.m_units})),
      Holds("no other field", sizeof(E) == LaidOutSize<L, L, L, Units>(true)),
  };
}

TEST(StreamsInterface, DynArrayStreamEx) {
  using E = ZtDynArrayStreamEx;
  ExpectRows(Inside<E>::Get());
  ExpectRows(StorageSlots<E>());
  ExpectRows({
      Holds("implicit ZtDynArrayStreamEx()", kImplicitCtor<E>),
      Holds("implicit ZtDynArrayStreamEx(long)", kImplicitCtor<E, L>),
      ZT_ROW(E, IndexToUnit, kNo, L(E::*)(L) const),
      ZT_ROW(E, GetIndexInUnit, kNo, L(E::*)(L) const),
      Holds("no GetUnitSize", !ZT_HAS_NAME(E, GetUnitSize)),
  });
}

// ---- Run-time classes ---------------------------------------------------------------------------

using CI = ZtRxClassInfo;
using Creator = ZtRxDynCreateClass* (*)();

template <>
Rows Inside<CI>::Get() {
  using I = Inside<CI>;
  I f("x", 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
  return {
      Holds("m_id", ZT_FIELD(I, m_id, L CI::*)),
      Holds("m_name", ZT_FIELD(I, m_name, const char* CI::*)),
      Holds("m_bases", ZT_FIELD(I, m_bases, CI * (CI::*)[5])),
      Holds("m_creator", ZT_FIELD(I, m_creator, Creator CI::*)),
      Holds("field order", Ascending({&f.m_id, &f.m_name, &f.m_bases, &f.m_creator})),
      Holds("no other field", sizeof(CI) == LaidOutSize<L, const char*, CI* [5], Creator>(true)),
  };
}

TEST(RtClassInterface, ClassInfo) {
  ExpectRows(Inside<CI>::Get());
  ExpectRows({
      Holds("virtual destructor", std::has_virtual_destructor_v<CI>),
      Holds("implicit constructor from name, id, creator and five bases",
            kImplicitCtor<CI, const char*, L, Creator, CI*, CI*, CI*, CI*, CI*>),
      ZT_ROW(CI, GetClassNameW, kNo, const char* (CI::*)() const),
      ZT_ROW(CI, GetClassID, kNo, L(CI::*)() const),
      ZT_ROW(CI, GetBaseClassInfo, kNo, const CI* (CI::*)(int) const),
      ZT_ROW(CI, IsTypeOf, kNo, bool(CI::*)(const char*) const),
      ZT_ROW(CI, IsTypeOf, kNo, bool(CI::*)(const CI*) const),
      ZT_ROW(CI, IsClassOf, kNo, bool(CI::*)(const char*) const),
      ZT_ROW(CI, IsClassOf, kNo, bool(CI::*)(const CI*) const),
      ZT_ROW(CI, NewObject, kNo, ZtRxDynCreateClass * (CI::*)() const),
  });
}

TEST(RtClassInterface, RunTimeClass) {
  using R = ZtRxRunTimeClass;
  ExpectRows({
      Holds("virtual destructor", std::has_virtual_destructor_v<R>),
      Holds("no field", sizeof(R) == sizeof(void*)),
      Holds("implicit ZtRxRunTimeClass()", kImplicitCtor<R>),
      Holds("implicit ZtRxRunTimeClass(const ZtRxRunTimeClass&)", kImplicitCtor<R, const R&>),
      ZT_ROW(R, GetCI, ListedSlot(1, 2), const CI* (R::*)() const),
      ZT_ROW(R, operator=, kNo, R & (R::*)(const R&)),
      Holds("static GetStaticCI()", ZT_HAS(R, GetStaticCI, CI & (*)())),
      Holds("static s_classInfo", ZT_HAS(R, s_classInfo, CI*)),
      ZT_ROW(R, IsClassOf, kNo, bool(R::*)(const CI*) const),
      ZT_ROW(R, IsClassOf, kNo, bool(R::*)(const char*) const),
      ZT_ROW(R, IsTypeOf, kNo, bool(R::*)(const CI*) const),
      ZT_ROW(R, IsTypeOf, kNo, bool(R::*)(const char*) const),
      ZT_ROW(R, IsSameClass, kNo, bool(R::*)(const R&) const),
      ZT_ROW(R, GetClassNameW, kNo, const char* (R::*)() const),
      ZT_ROW(R, GetClassID, kNo, L(R::*)() const),
  });
}

TEST(RtClassInterface, DynCreateClass) {
  using D = ZtRxDynCreateClass;
  ExpectRows({
      Holds("derives from ZtRxRunTimeClass", std::is_base_of_v<ZtRxRunTimeClass, D>),
      Holds("no field", sizeof(D) == sizeof(void*)),
      Holds("implicit ZtRxDynCreateClass()", kImplicitCtor<D>),
      Holds("implicit ZtRxDynCreateClass(const ZtRxDynCreateClass&)", kImplicitCtor<D, const D&>),
      ZT_ROW(D, GetCI, ListedSlot(1, 2), const CI* (D::*)() const),
      ZT_ROW(D, InitObject, ListedSlot(3, 2), D * (D::*)()),
      ZT_ROW(D, operator=, kNo, D & (D::*)(const D&)),
      Holds("static GetStaticCI()", ZT_HAS(D, GetStaticCI, CI & (*)())),
      Holds("static NewObject()", ZT_HAS(D, NewObject, D * (*)())),
      Holds("static s_classInfo", ZT_HAS(D, s_classInfo, CI*)),
  });
}

}  // namespace
}  // namespace zt::test
