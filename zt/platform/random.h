// zt/platform/random.h
//
// The library's pseudo-random draws: 0 to 32767 on every platform, taken from std::rand so that
// a client's std::srand steers them. Internal to the library.
//
//   std::srand(7);
//   int r = zt::platform::Rand15();   // 0 <= r <= 32767, the same sequence after every srand(7)
#ifndef ZT_PLATFORM_RANDOM_H_
#define ZT_PLATFORM_RANDOM_H_

#include <cstdlib>

namespace zt::platform {

/// A draw from 0 to 32767. Where std::rand gives more bits (RAND_MAX + 1 a larger power of
/// two) the low 15 are kept, so each value stays equally likely.
inline int Rand15() {
  static_assert(RAND_MAX >= 32767 && ((RAND_MAX + 1LL) & RAND_MAX) == 0,
                "RAND_MAX + 1 is a power of two of at least 2^15");
  return std::rand() & 0x7FFF;
}

}  // namespace zt::platform

#endif  // ZT_PLATFORM_RANDOM_H_
