// zt/streams/internal/copy_bytes.h
//
// The byte copy under the streams' raw Write and Read: memcpy, with the short runs that typed
// values make (1, 2, 4 and 8 bytes) copied inline instead of through a library call.
#ifndef ZT_STREAMS_INTERNAL_COPY_BYTES_H_
#define ZT_STREAMS_INTERNAL_COPY_BYTES_H_

#include <cstddef>
#include <cstring>

#include "zt/config.h"

namespace zt::detail {

/// Copies n > 0 bytes between non-overlapping ranges.
inline void CopyBytes(void* dst, const void* src, ZtLong n) {
  switch (n) {
    case 1:
      std::memcpy(dst, src, 1);
      break;
    case 2:
      std::memcpy(dst, src, 2);
      break;
    case 4:
      std::memcpy(dst, src, 4);
      break;
    case 8:
      std::memcpy(dst, src, 8);
      break;
    default:
      std::memcpy(dst, src, static_cast<std::size_t>(n));
  }
}

}  // namespace zt::detail

#endif  // ZT_STREAMS_INTERNAL_COPY_BYTES_H_
