// zt/platform/byte_order.h
//
// Little-endian byte images of the arithmetic types, the same on every host: the packed bit
// arrays read their first bytes as numbers through them and the streams store every typed value
// with them. Integers are two's complement, reals their IEEE 754 bit pattern, low byte first.
//
//   unsigned char b[4];
//   zt::detail::StoreLittleEndian<std::int32_t>(0x01020304, b);  // b = 04 03 02 01
//
// Not part of the public interface. Shifts instead of byte swaps keep it free of host tests;
// compilers turn the loops into one plain load or store on little-endian machines.
#ifndef ZT_PLATFORM_BYTE_ORDER_H_
#define ZT_PLATFORM_BYTE_ORDER_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace zt::detail {

// The unsigned integer as wide as a scalar of `Size` bytes (1, 2, 4 or 8).
template <std::size_t Size>
using UintOfSize = std::conditional_t<
    Size == 1, std::uint8_t,
    std::conditional_t<Size == 2, std::uint16_t,
                       std::conditional_t<Size == 4, std::uint32_t, std::uint64_t>>>;

/// Writes the sizeof(T) bytes of v to out, least significant byte first.
template <class T>
void StoreLittleEndian(T v, unsigned char* out) {
  static_assert(std::is_arithmetic_v<T> && sizeof(T) <= 8, "scalar values only");
  using U = UintOfSize<sizeof(T)>;
  U bits;
  std::memcpy(&bits, &v, sizeof(T));
  for (std::size_t i = 0; i < sizeof(T); ++i) {
    out[i] = static_cast<unsigned char>(bits >> (8 * i));
  }
}

/// Reads sizeof(T) bytes stored least significant byte first.
template <class T>
T LoadLittleEndian(const unsigned char* in) {
  static_assert(std::is_arithmetic_v<T> && !std::is_same_v<T, bool> && sizeof(T) <= 8,
                "scalar values only");
  using U = UintOfSize<sizeof(T)>;
  U bits = 0;
  for (std::size_t i = 0; i < sizeof(T); ++i) bits = static_cast<U>(bits | U{in[i]} << (8 * i));
  T v;
  std::memcpy(&v, &bits, sizeof(T));
  return v;
}

}  // namespace zt::detail

#endif  // ZT_PLATFORM_BYTE_ORDER_H_
