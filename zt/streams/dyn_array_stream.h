// zt/streams/dyn_array_stream.h
//
// ZtDynArrayStream: a ZtStream whose bytes live in one growable ZtDynArray<char> that the stream
// owns; stream byte i is element i of the array.
//
// A write at or past the end grows the array exactly as storing the bytes one by one through its
// growing subscript would: the first byte that does not fit makes the capacity its index + 1 +
// the allocation unit (1,024 by default), and so on, but the bytes are copied in one run and the
// buffer is reallocated at most once. Bytes skipped by a write past the end read as 0. Reads copy
// what lies between the position and the array's end. After every Write, Reset and SetLength the
// stream's length is the array's length.
//
//   ZtDynArrayStream s;            // 1,024 bytes reserved
//   s << ZtLong{1} << short{2};    // bytes 01 00 00 00 02 00, position 6
//
// When growth throws std::bad_alloc nothing is written and the length, capacity and bytes stay as
// they were. A copy has an exact-size array with the array's default allocation unit.
#ifndef ZT_STREAMS_DYN_ARRAY_STREAM_H_
#define ZT_STREAMS_DYN_ARRAY_STREAM_H_

#include "zt/config.h"
#include "zt/containers/dyn_array.h"
#include "zt/streams/stream.h"

/// A byte stream over one growable array.
class ZT_API ZtDynArrayStream : public ZtStream {
 public:
  /// spaceSize bytes reserved at once; each growth adds allocUnit spare bytes beyond the length
  /// needed.
  // NOLINTNEXTLINE(google-explicit-constructor): a reserve converts implicitly
  ZtDynArrayStream(ZtLong spaceSize = 1024, ZtLong allocUnit = 1024);
  /// Same position, length and bytes; the array is exact-size with its default allocation unit.
  ZtDynArrayStream(const ZtDynArrayStream& src);
  /// Same position, length and bytes; this array keeps its allocation unit.
  ZtDynArrayStream& operator=(const ZtDynArrayStream& src);
  ~ZtDynArrayStream() override;

  /// Position 0, length 0; the array empties and keeps its buffer.
  void Reset() override;
  void Write(void* p, ZtLong n) override;
  void Read(void* p, ZtLong n) override;
  /// Length and capacity become exactly n, keeping the first bytes. The position stays.
  void SetLength(ZtLong n);
  /// Byte i, growing the array when i is at or past its end. The stream's length catches up with
  /// the array at the next Write or SetLength.
  char& operator[](ZtLong i) { return m_array[i]; }

 protected:
  ZtDynArray<char> m_array;

 private:
  // The block stream copies straight into and out of its units' arrays.
  friend class ZtDynArrayStreamEx;
};

#endif  // ZT_STREAMS_DYN_ARRAY_STREAM_H_
