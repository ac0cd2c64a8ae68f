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

#endif  // ZT_TESTS_SUPPORT_INTERFACE_H_
