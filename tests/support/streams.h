// tests/support/streams.h
//
// Helpers for stream tests: a stream's whole contents read back without moving its position,
// the state snapshot the strong-guarantee checks compare, and a way to reach an array stream's
// array.
#ifndef ZT_TESTS_SUPPORT_STREAMS_H_
#define ZT_TESTS_SUPPORT_STREAMS_H_

#include <tuple>
#include <vector>

#include "zt/containers/dyn_array.h"
#include "zt/streams/dyn_array_stream.h"
#include "zt/streams/stream.h"

namespace zt::test {

/// Bytes 0 .. GetLength() - 1 of s, through its raw Read; the position is left as it was.
inline std::vector<unsigned char> Contents(ZtStream& s) {
  const ZtLong cur = s.GetCur();
  std::vector<unsigned char> bytes(static_cast<std::size_t>(s.GetLength()));
  s.MoveTo(0);
  s.Read(bytes.data(), s.GetLength());
  s.MoveTo(cur);
  return bytes;
}

/// Position, length and contents.
inline auto StreamState(ZtStream& s) {
  return std::make_tuple(s.GetCur(), s.GetLength(), Contents(s));
}

/// An array stream whose array the tests may inspect.
class PeekStream : public ZtDynArrayStream {
 public:
  using ZtDynArrayStream::ZtDynArrayStream;
  const ZtDynArray<char>& Array() const { return m_array; }
};

}  // namespace zt::test

#endif  // ZT_TESTS_SUPPORT_STREAMS_H_
