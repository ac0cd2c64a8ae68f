// zt/streams/dyn_array_stream_ex.h
//
// ZtDynArrayStreamEx: a ZtStream whose bytes live in a chain of equal, fixed-size blocks (units),
// each a ZtDynArrayStream of exactly the unit size (1,024 bytes by default) that the block stream
// owns. Stream byte i is byte GetIndexInUnit(i) of unit IndexToUnit(i). Growing adds whole units at
// the end and never moves bytes already written; only the array of unit pointers grows (10 slots at
// a time).
//
//   ZtDynArrayStreamEx s(4);      // 4-byte units
//   s << 1.5;                     // 8 bytes: units 0 and 1
//
// A write creates every unit up to the one holding its last byte, so a write far past the end
// creates the units in between (their bytes are unspecified), and Write(p, 0) still makes sure
// that unit (position - 1) / unit size exists. Reads copy what lies between the position and the
// length. When an allocation fails while units are added, the units appended before the failure
// stay and the length and bytes are as they were. Copies own units of their own holding the same
// bytes; assignment deletes the target's old units. A unit size below 1 is taken as 1,024.
#ifndef ZT_STREAMS_DYN_ARRAY_STREAM_EX_H_
#define ZT_STREAMS_DYN_ARRAY_STREAM_EX_H_

#include "zt/config.h"
#include "zt/containers/dyn_array.h"
#include "zt/containers/dyn_array_base.h"
#include "zt/containers/dyn_parray.h"
#include "zt/streams/dyn_array_stream.h"
#include "zt/streams/stream.h"

// The owning array of units and its bases are compiled into the library.
extern template class ZT_API ZtDynArrayBase<ZtDynArrayStream*>;
extern template class ZT_API ZtDynArray<ZtDynArrayStream*>;
extern template class ZT_API ZtDynPArray<ZtDynArrayStream>;

/// A byte stream over a chain of owned fixed-size array streams.
class ZT_API ZtDynArrayStreamEx : public ZtStream {
 public:
  /// An empty stream without units.
  ZtDynArrayStreamEx(ZtLong unitSize = 1024);  // NOLINT(google-explicit-constructor)
  /// Same position, length and unit size, with copies of src's units.
  ZtDynArrayStreamEx(const ZtDynArrayStreamEx& src);
  /// Deletes this stream's units and takes copies of src's. When a copy fails nothing changes.
  ZtDynArrayStreamEx& operator=(const ZtDynArrayStreamEx& src);
  /// Deletes every unit.
  ~ZtDynArrayStreamEx() override;

  /// The unit that holds stream byte i.
  ZtLong IndexToUnit(ZtLong i) const { return i / m_unitSize; }
  /// The offset of stream byte i inside its unit.
  ZtLong GetIndexInUnit(ZtLong i) const { return i % m_unitSize; }

  /// Position 0, length 0, and every unit deleted.
  void Reset() override;
  void Write(void* p, ZtLong n) override;
  void Read(void* p, ZtLong n) override;

 protected:
  ZtLong m_unitSize;
  ZtDynPArray<ZtDynArrayStream> m_units;

 private:
  // Deletes the current units and takes clones of src's; unchanged when a clone fails.
  void CopyUnits(const ZtDynPArray<ZtDynArrayStream>& src);
  // Appends units until unit `last` exists.
  void AddUnitsUpTo(ZtLong last);
  // Walks the existing units that hold bytes [m_cur, m_cur + n), setting each unit's position
  // where its part starts and calling step(address of that part, bytes before it, its size).
  template <class Step>
  void ForEachChunk(ZtLong n, Step step);
  // The common case of Write and Read, n > 0 bytes lying in one existing unit: does what the
  // walk does for them and returns true. False, with nothing changed, in every other case.
  template <class Step>
  bool InOneUnit(ZtLong n, Step step);
};

#endif  // ZT_STREAMS_DYN_ARRAY_STREAM_EX_H_
