// zt/containers/internal/element_ops.h
//
// Implementation details shared by the containers; not part of the public interface.
//   - element ordering as the library defines it (char signed, wchar_t unsigned, pointers as
//     unsigned addresses, every other type through its own < and >);
//   - checked length arithmetic (a length that would pass 2^31 - 1 fails like an allocation);
//   - bulk element copies that use memmove for trivially copyable types;
//   - the bisection, written once for every container (the sorts are in sort.h).
#ifndef ZT_CONTAINERS_INTERNAL_ELEMENT_OPS_H_
#define ZT_CONTAINERS_INTERNAL_ELEMENT_OPS_H_

#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>

#include "zt/config.h"

namespace zt::detail {

// Chars order as signed bytes and wide characters as unsigned code units on every platform;
// pointers order as unsigned addresses. Every other type orders through its own < and >.
template <class T>
constexpr bool kHasOrderKey =
    std::is_pointer_v<T> || std::is_same_v<T, char> || std::is_same_v<T, wchar_t>;

template <class T>
auto OrderKey(T v) {
  if constexpr (std::is_pointer_v<T>) {
    return reinterpret_cast<std::uintptr_t>(v);
  } else if constexpr (std::is_same_v<T, char>) {
    return static_cast<signed char>(v);
  } else {
    return static_cast<std::make_unsigned_t<wchar_t>>(v);
  }
}

template <class T>
bool Less(const T& a, const T& b) {
  if constexpr (kHasOrderKey<T>) {
    return OrderKey(a) < OrderKey(b);
  } else {
    return a < b;
  }
}

template <class T>
bool Greater(const T& a, const T& b) {
  if constexpr (kHasOrderKey<T>) {
    return OrderKey(a) > OrderKey(b);
  } else {
    return a > b;
  }
}

// a + b as a length. Lengths are 32-bit; a sum that does not fit cannot be allocated either.
// Either operand may be negative (a sum below 0 is returned as it is).
inline ZtLong AddLength(std::int64_t a, std::int64_t b) {
  const std::int64_t sum = a + b;
  if (sum > std::numeric_limits<ZtLong>::max()) throw std::bad_alloc();
  return static_cast<ZtLong>(sum);
}

// Midpoint of two non-negative indices without overflow; equal to the truncating (from + to) / 2.
inline ZtLong MidIndex(ZtLong from, ZtLong to) {
  return static_cast<ZtLong>((static_cast<std::int64_t>(from) + to) / 2);
}

// A scratch element handed out by out-of-contract accessors (a cursor or index that names no
// element), so that such calls never touch memory outside a container's storage. It is reset to
// T() on every hand-out; writes to it are lost.
template <class T>
T& Sink() {
  static T sink{};
  sink = T();
  return sink;
}

// Copies n elements between non-overlapping or overlapping ranges, in index order when dst is
// below src and in reverse order otherwise, the way an element-by-element loop would.
template <class T>
void MoveRange(T* dst, const T* src, ZtLong n) {
  if (n <= 0 || dst == src) return;
  if constexpr (std::is_trivially_copyable_v<T>) {
    // T may itself be a pointer type: these are the elements' own bytes.
    // NOLINTNEXTLINE(bugprone-sizeof-expression)
    const std::size_t bytes = static_cast<std::size_t>(n) * sizeof(T);
    std::memmove(static_cast<void*>(dst), static_cast<const void*>(src), bytes);
  } else if (dst < src) {
    for (ZtLong i = 0; i < n; ++i) dst[i] = src[i];
  } else {
    for (ZtLong i = n; i-- > 0;) dst[i] = src[i];
  }
}

// Moves data[at..length) up one place, into the spare slot data[length], and stores v at
// data[at], the way InsertCur's loop does. When an assignment throws, the elements already moved
// go back, so that data[0..length) holds what it held before, and the exception passes on (should
// moving one back throw as well, that exception passes on instead, one element then held twice).
template <class T>
void OpenSlot(T* data, ZtLong length, ZtLong at, const T& v) {
  if constexpr (std::is_nothrow_copy_assignable_v<T>) {
    MoveRange(data + at + 1, data + at, length - at);
    // NOLINTNEXTLINE(clang-analyzer-core.NullDereference): the caller grew data to length + 1
    data[at] = v;
  } else {
    ZtLong i = length;  // the slot being assigned
    try {
      for (; i > at; --i) data[i] = data[i - 1];
      data[at] = v;
    } catch (...) {
      for (; i < length; ++i) data[i] = data[i + 1];
      throw;
    }
  }
}

// A new buffer of `size` slots (null when size is 0) whose first `n` elements are copies of
// src[0..n). Either returns the filled buffer or throws with nothing allocated.
template <class T>
T* CopyIntoNew(ZtLong size, const T* src, ZtLong n) {
  if (size <= 0) return nullptr;
  std::unique_ptr<T[]> buffer(new T[static_cast<std::size_t>(size)]);
  if (src != nullptr) MoveRange(buffer.get(), src, n < size ? n : size);
  return buffer.release();
}

// The library's bisection over a range sorted ascending. `at(i)` yields element i; `vAfter(e)` is
// true when the searched value belongs after e, `vBefore(e)` when it belongs before e. `to` below
// 0 or past the end means the last index. Rejects a value outside [first, last] without
// bisecting. With duplicates, returns whichever equal element the bisection meets first.
template <class At, class After, class Before>
ZtLong BinarySearch(ZtLong length, ZtLong from, ZtLong to, At at, After vAfter, Before vBefore) {
  if (to < 0 || to >= length) to = length - 1;
  if (from < 0 || from > to) return -1;
  if (vBefore(at(from)) || vAfter(at(to))) return -1;
  while (from <= to) {
    const ZtLong mid = MidIndex(from, to);
    const auto& e = at(mid);
    if (vAfter(e)) {
      from = mid + 1;
    } else if (vBefore(e)) {
      to = mid - 1;
    } else {
      return mid;
    }
  }
  return -1;
}

}  // namespace zt::detail

#endif  // ZT_CONTAINERS_INTERNAL_ELEMENT_OPS_H_
