// tests/support/interface.h
//
// Probes for the interface check: they answer at compile time, as constants, whether a class has
// a public member of an exact member-pointer type, whether a constructor is implicit or explicit,
// and which virtual-table slot a virtual member takes. A probe that does not match yields false
// instead of breaking the build, so one mismatch fails one check of a table:
//
//   EXPECT_TRUE(ZT_HAS(ZtDynArray<int>, GetAt, const int& (ZtDynArray<int>::*)(ZtLong) const));
//   EXPECT_EQ(zt::test::VirtualSlot(&ZtDynArrayBase<int>::SetLength), 3);
#ifndef ZT_TESTS_SUPPORT_INTERFACE_H_
#define ZT_TESTS_SUPPORT_INTERFACE_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <tuple>
#include <type_traits>
#include <utility>

namespace zt::test {

/// True when `probe` can be called with (C*, Sig*): its trailing return type names the member.
template <class C, class Sig, class Probe>
constexpr bool HasMember(Probe /*probe*/) {
  return std::is_invocable_v<Probe, C*, Sig*>;
}

/// True when C has a public member named `name` at all (any type; false for an overloaded name).
template <class C, class Probe>
constexpr bool HasName(Probe /*probe*/) {
  return std::is_invocable_v<Probe, C*>;
}

template <class C>
void TakeByCopyListInit(C);

template <class C, class Args, class = void>
struct CopyListInitializable : std::false_type {};
template <class C, class... A>
struct CopyListInitializable<C, std::tuple<A...>,
                             std::void_t<decltype(TakeByCopyListInit<C>({std::declval<A>()...}))>>
    : std::true_type {};

/// A constructor C(A...) exists and is not explicit (copy-list-initialization may use it).
template <class C, class... A>
constexpr bool kImplicitCtor = CopyListInitializable<C, std::tuple<A...>>::value;
/// A constructor C(A...) exists and is explicit.
template <class C, class... A>
constexpr bool kExplicitCtor = std::is_constructible_v<C, A...> && !kImplicitCtor<C, A...>;

/// The virtual-table slot of a pointer to a virtual member function, counted from 0 at the
/// address point; -1 for a non-virtual member. The GCC and Clang ABI (also on MinGW) stores 1 plus
/// the slot's byte offset in a pointer to a virtual member, and an even address otherwise. A
/// virtual destructor takes two slots (complete and deleting).
template <class M>
std::ptrdiff_t VirtualSlot(M member) {
  static_assert(std::is_member_function_pointer_v<M>, "a pointer to a member function");
  static_assert(sizeof(M) == 2 * sizeof(std::uintptr_t), "the two-word member pointer");
  std::uintptr_t word = 0;
  std::memcpy(&word, &member, sizeof word);
  if ((word & 1U) == 0) return -1;
  return static_cast<std::ptrdiff_t>((word - 1) / sizeof(void*));
}

/// True when the addresses are strictly ascending: fields declared in this order.
inline bool Ascending(std::initializer_list<const void*> fields) {
  const void* last = nullptr;
  for (const void* p : fields) {
    if (last != nullptr &&
        !(reinterpret_cast<std::uintptr_t>(last) < reinterpret_cast<std::uintptr_t>(p))) {
      return false;
    }
    last = p;
  }
  return true;
}

}  // namespace zt::test

/// ZT_HAS(C, name, Sig): C has a public member `name` that converts exactly to the member pointer
/// Sig (an overload is chosen by Sig; parameters, return type and const must all match). Sig may
/// contain commas. For a static member or free function Sig is a plain function pointer type.
#define ZT_HAS(C, name, ...)                                                            \
  ::zt::test::HasMember<C, __VA_ARGS__>(                                                \
      [](auto* c, auto* s) -> decltype(static_cast<std::remove_pointer_t<decltype(s)>>( \
                                           &std::remove_pointer_t<decltype(c)>::name),  \
                                       void()) {})

/// ZT_HAS_NAME(C, name): C has a public, non-overloaded member called `name`, of any type. Use it
/// to check that a member the interface does not list is absent.
#define ZT_HAS_NAME(C, name) \
  ::zt::test::HasName<C>(    \
      [](auto* c) -> decltype(&std::remove_pointer_t<decltype(c)>::name, void()) {})

// ---- Interface tables ---------------------------------------------------------------------------
//
// A table is a list of rows, each naming what it checks, the value expected and the value found,
// checked in one loop: one failure per row that does not hold.
//
//   ExpectRows({{"ZtDynArray::GetAt", ListedSlot(17, 2),
//                ZT_MEMBER(ZtDynArray<int>, GetAt, const int& (ZtDynArray<int>::*)(ZtLong) const)},
//               Holds("implicit ZtDynArray(ZtLong)", kImplicitCtor<ZtDynArray<int>, ZtLong>)});

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zt::test {

/// One check of an interface table.
struct InterfaceRow {
  std::string what;
  long long expected;
  long long actual;
};

/// A row that holds when `holds` is true.
inline InterfaceRow Holds(std::string what, bool holds) { return {std::move(what), 1, holds}; }

using Rows = std::vector<InterfaceRow>;

/// Expects every row, naming each one that does not hold.
inline void ExpectRows(const Rows& rows) {
  for (const InterfaceRow& row : rows) EXPECT_EQ(row.actual, row.expected) << row.what;
}

// Each test file specialises Get for the classes it probes. The template lives in an unnamed
// namespace so that every file has its own (specialisations may then sit in the test's unnamed
// namespace, and two files probing the same class do not clash).
namespace {  // NOLINT(cert-dcl59-cpp,google-build-namespaces)

/// Reaches C's protected members: a class's rows that need them are a specialisation of Get.
template <class C>
struct Inside : C {
  using C::C;
  static Rows Get();
};

}  // namespace

/// What ZT_MEMBER reports besides a slot: a member that is not virtual, one of the right function
/// type that another class declares, and no member of that function type at all.
inline constexpr std::ptrdiff_t kNonVirtual = -1;
inline constexpr std::ptrdiff_t kDeclaredElsewhere = -2;
inline constexpr std::ptrdiff_t kNoSuchMember = -3;

/// The slot VirtualSlot gives the entry at 1-based position `order` of a virtual-table listing
/// that counts the virtual destructor once, at `destructorOrder` (it takes two slots; pass 0 for
/// a listing without one).
constexpr std::ptrdiff_t ListedSlot(int order, int destructorOrder) {
  return destructorOrder == 0 || order < destructorOrder ? order - 1 : order;
}

/// For a member-function pointer type R (O::*)(A...) [const]: its class O, and a deduction
/// pattern that picks, from an overload set, the member of function type R(A...) [const] and
/// yields the class that declares it.
template <class Sig>
struct MemberFunction;
template <class R, class O, class... A>
struct MemberFunction<R (O::*)(A...)> {
  using Owner = O;
  template <class K>
  static K* Declarer(R (K::*)(A...));
};
template <class R, class O, class... A>
struct MemberFunction<R (O::*)(A...) const> {
  using Owner = O;
  template <class K>
  static K* Declarer(R (K::*)(A...) const);
};

template <class C, class Sig, class Declarer, class Pointer>
std::ptrdiff_t MemberSlot(Declarer /*declarer*/, Pointer pointer) {
  if constexpr (!std::is_invocable_v<Declarer, C*, Sig*>) {
    return kNoSuchMember;
  } else if constexpr (!std::is_same_v<std::invoke_result_t<Declarer, C*, Sig*>,
                                       typename MemberFunction<Sig>::Owner*>) {
    return kDeclaredElsewhere;
  } else {
    return VirtualSlot(pointer(static_cast<C*>(nullptr), static_cast<Sig*>(nullptr)));
  }
}

/// The size of a class made of a virtual-table pointer (when `polymorphic`) and then fields of
/// the types F, in order, each at its natural alignment. A class whose fields are exactly these
/// (empty bases aside) has this size; a field more or less changes it.
template <class... F>
constexpr std::size_t LaidOutSize(bool polymorphic) {
  std::size_t size = polymorphic ? sizeof(void*) : 0;
  std::size_t align = polymorphic ? alignof(void*) : 1;
  const auto place = [&size, &align](std::size_t fieldSize, std::size_t fieldAlign) {
    size = (size + fieldAlign - 1) / fieldAlign * fieldAlign + fieldSize;
    align = fieldAlign > align ? fieldAlign : align;
  };
  (place(sizeof(F), alignof(F)), ...);  // NOLINT(bugprone-sizeof-expression): F may be a pointer
  return (size + align - 1) / align * align;
}

}  // namespace zt::test

/// ZT_MEMBER(C, name, Sig): the virtual-table slot of C's member `name` of the member-function
/// pointer type Sig (an overload is picked by Sig's function type), or kNonVirtual. A member of
/// that function type that a class other than Sig's declares gives kDeclaredElsewhere, and no
/// such member (or one that is not accessible here) kNoSuchMember: the build goes on either way.
#define ZT_MEMBER(C, name, ...)                                                                 \
  ::zt::test::MemberSlot<C, __VA_ARGS__>(                                                       \
      [](auto* c, auto* s)                                                                      \
          -> decltype(::zt::test::MemberFunction<std::remove_pointer_t<decltype(s)>>::Declarer( \
              &std::remove_pointer_t<decltype(c)>::name)) { return nullptr; },                  \
      [](auto* c, auto* s) {                                                                    \
        return static_cast<std::remove_pointer_t<decltype(s)>>(                                 \
            &std::remove_pointer_t<decltype(c)>::name);                                         \
      })

/// ZT_ROW(C, name, slot, Sig): the table row "C's member `name` of member-pointer type Sig is in
/// `slot`" (a slot from ListedSlot, or kNonVirtual, kDeclaredElsewhere, kNoSuchMember).
#define ZT_ROW(C, name, slot, ...)                                           \
  ::zt::test::InterfaceRow {                                                 \
#C "::" #name " as " #__VA_ARGS__, slot, ZT_MEMBER(C, name, __VA_ARGS__) \
  }

/// ZT_FIELD(C, name, Type): C has a field `name` whose pointer-to-member type is exactly Type, so
/// that both its type and the class declaring it match. To reach a protected field, use it inside
/// a member of a class derived from the one declaring it, with C that derived class.
#define ZT_FIELD(C, name, ...)                        \
  ::zt::test::HasName<C>(                             \
      [](auto* c) -> std::enable_if_t<std::is_same_v< \
                      decltype(&std::remove_pointer_t<decltype(c)>::name), __VA_ARGS__>> {})
/// ZT_CALLS(C, call): `c.call` compiles for an lvalue c of type C; e.g. that a parameter has no
/// default argument: ZT_CALLS(ZtGraph, CheckArc()) is false.
#define ZT_CALLS(C, ...) ::zt::test::HasName<C>([](auto* c) -> decltype(c->__VA_ARGS__, void()) {})

#endif  // ZT_TESTS_SUPPORT_INTERFACE_H_
