// zt/bits/bit_array.h
//
// ZtBitArray: equal-width small unsigned values (units of 1, 2 or 4 bits) packed into a byte
// buffer; ZtBit2dArray: a row-major grid of such units.
//
// Unit i occupies bits i*unitSize .. i*unitSize+unitSize-1 counted from bit 0 of byte 0, and bit
// b is the bit of value 1 << (b % 8) in byte b / 8, so unit 0 sits in the low bits of byte 0.
// SetValue ORs the value into the unit: bits already set stay set, so a unit takes its value once
// after ResetAll (or after Reset cleared its bits). Set, Reset and operator[] address single bits
// whatever the unit size; the conversions read the first bytes as a little-endian number.
//
//   ZtBitArray a(10, 2);       // 10 two-bit units in 3 zeroed bytes
//   a.SetValue(1, 3);          // byte 0 becomes 0x0C; a.GetValue(1) == 3
//
// Ownership: the array either owns its buffer (allocated with array new, freed with array delete)
// or borrows one from the caller and never frees it. Whenever the array allocates a buffer itself
// (construction, copy, ReAllocate, operator=) it owns that buffer, even if it was borrowing
// before: a borrowed buffer is dropped, never freed, and the new one is never leaked. Attach keeps
// the mode (an owning array adopts p, a borrowing one borrows it); Detach hands the buffer over.
//
// Unit and bit indices are not checked (keep them below GetLength() and GetBitSize()). Negative
// unit counts count as 0. The checked build reports an index or bit outside, a value wider than
// its unit, a unit size other than 1, 2 or 4 and a negative count (zt/checked.h). The conversions
// treat bytes beyond the buffer as 0. Allocation failure throws std::bad_alloc and leaves the array
// as it was.
#ifndef ZT_BITS_BIT_ARRAY_H_
#define ZT_BITS_BIT_ARRAY_H_

#include "zt/checked.h"
#include "zt/config.h"

/// Packed units of 1, 2 or 4 bits over an owned or borrowed byte buffer.
class ZT_API ZtBitArray {
 public:
  /// unitNum zeroed units of unitSize bits; no buffer when unitNum < 1.
  ZtBitArray(ZtLong unitNum, ZtLong unitSize);
  /// byteNum * 8 one-bit units over the bytes of p: with `attach` the array borrows p itself and
  /// never frees it; without, it owns a copy of those bytes.
  ZtBitArray(void* p, ZtLong byteNum, bool attach);
  /// An owning copy of src's units and bytes, whether src owns its buffer or not.
  ZtBitArray(const ZtBitArray& src);
  ~ZtBitArray();
  /// Takes o's unit size, count and bytes. The buffer is kept (even a borrowed one, which then
  /// receives o's bytes) when it already holds exactly o's units after rescaling to o's unit size
  /// as SetUnitSize does; otherwise the array allocates and owns a new one.
  ZtBitArray& operator=(const ZtBitArray& o);

  /// Makes the count n, keeping the first bytes; the bytes added are unspecified. Nothing
  /// happens when n is the count already; n < 1 leaves no buffer. A new buffer is owned.
  void ReAllocate(ZtLong n);
  /// Frees the current buffer if owned, then uses p (byteNum bytes): an owning array takes
  /// ownership of p (it must come from array new), a borrowing one borrows it. The count becomes
  /// byteNum * 8 / GetUnitSize(), also when p is null: the whole-buffer members then do nothing
  /// and the single-unit and single-bit ones are out of reach.
  void Attach(ZtLong byteNum, char* p);
  /// Returns the buffer and leaves the array empty without one; the caller now holds it.
  char* Detach();
  /// Reinterprets the same bytes with units of s bits (s < 1 is ignored): the count becomes
  /// GetBitSize() / s, the whole units that fit in the bits held, so growing the unit drops a
  /// partial last unit and never reads past the buffer.
  void SetUnitSize(ZtLong s);

  ZtLong GetLength() const { return m_unitNum; }
  ZtLong GetUnitSize() const { return m_unitSize; }
  ZtLong GetBitSize() const { return m_unitNum * m_unitSize; }
  /// GetBitSize() / 8 rounded up: the bytes the buffer holds.
  ZtLong GetByteSize() const;
  /// Bytes needed for `bits` bits (bits / 8 rounded up).
  static ZtLong BitToByte(ZtLong bits) { return bits / 8 + (bits % 8 > 0 ? 1 : 0); }
  bool IsValidIndex(ZtLong i) const { return i >= 0 && i < m_unitNum; }

  // The single-unit and single-bit accessors are inline: they sit in the inner loops of callers.

  /// Unit i, masked with 1, 3 or 15 for unit sizes 1, 2 and any other.
  ZtLong GetValue(ZtLong i) const {
    ZT_REPORT_UNLESS(IsValidIndex(i), "GetValue", "ZtBitArray", "index", i);
    ZtLong byte = 0;
    ZtLong bit = 0;
    UnitToByte(i, byte, bit);
    return (static_cast<unsigned char>(m_data[byte]) >> bit) & UnitMask();
  }
  /// ORs v into unit i (v is cut to the unit's width so neighbouring units never change).
  void SetValue(ZtLong i, char v) {
    ZT_REPORT_UNLESS(IsValidIndex(i), "SetValue", "ZtBitArray", "index", i);
    ZT_REPORT_UNLESS(static_cast<unsigned char>(v) <= UnitMask(), "SetValue", "ZtBitArray", "value",
                     static_cast<unsigned char>(v));
    ZtLong byte = 0;
    ZtLong bit = 0;
    UnitToByte(i, byte, bit);
    const unsigned bits = (static_cast<unsigned char>(v) & static_cast<unsigned>(UnitMask()))
                          << bit;
    m_data[byte] = static_cast<char>(static_cast<unsigned char>(m_data[byte]) | bits);
  }
  /// SetValue(i, v) for every unit, OR semantics included.
  void SetAll(char v);
  /// Every byte becomes 0xFF.
  void SetAll();
  /// Every byte becomes 0.
  void ResetAll();
  /// Bit `bit` of the buffer, whatever the unit size.
  bool operator[](ZtLong bit) {
    ZT_REPORT_UNLESS(bit >= 0 && bit < GetBitSize(), "operator[]", "ZtBitArray", "bit", bit);
    return (static_cast<unsigned char>(m_data[bit / 8]) >> (bit % 8) & 1U) != 0;
  }
  void Set(ZtLong bit) {
    ZT_REPORT_UNLESS(bit >= 0 && bit < GetBitSize(), "Set", "ZtBitArray", "bit", bit);
    m_data[bit / 8] =
        static_cast<char>(static_cast<unsigned char>(m_data[bit / 8]) | 1U << (bit % 8));
  }
  void Reset(ZtLong bit) {
    ZT_REPORT_UNLESS(bit >= 0 && bit < GetBitSize(), "Reset", "ZtBitArray", "bit", bit);
    m_data[bit / 8] =
        static_cast<char>(static_cast<unsigned char>(m_data[bit / 8]) & ~(1U << (bit % 8)));
  }

  /// The first byte (0 without a buffer).
  operator char() const;  // NOLINT(google-explicit-constructor): part of the interface
  /// The first 4 bytes as a little-endian two's complement integer.
  operator int() const;  // NOLINT(google-explicit-constructor)
  /// The first 4 bytes as a little-endian IEEE 754 single.
  operator float() const;  // NOLINT(google-explicit-constructor)
  /// The first 8 bytes as a little-endian IEEE 754 double.
  operator double() const;                         // NOLINT(google-explicit-constructor)
  operator const char*() const { return m_data; }  // NOLINT(google-explicit-constructor)
  operator const int*() const;                     // NOLINT(google-explicit-constructor)
  operator const float*() const;                   // NOLINT(google-explicit-constructor)
  operator const double*() const;                  // NOLINT(google-explicit-constructor)

 protected:
  /// Byte and bit offset of unit i.
  void UnitToByte(ZtLong i, ZtLong& byte, ZtLong& bit) const {
    BitToByte(i * m_unitSize, byte, bit);
  }
  /// Byte and bit offset of bit i.
  void BitToByte(ZtLong i, ZtLong& byte, ZtLong& bit) const {
    byte = i / 8;
    bit = i % 8;
  }

  char* m_data = nullptr;
  ZtLong m_unitSize = 1;
  ZtLong m_unitNum = 0;
  bool m_own = true;

 private:
  ZtLong UnitMask() const { return m_unitSize == 1 ? 1 : m_unitSize == 2 ? 3 : 15; }
  // The first sizeof(T) bytes as a little-endian T, bytes past the buffer read as 0.
  template <class T>
  T LoadFront() const;
  // Replaces the buffer by `fresh` (owned), freeing the old one when it was owned.
  void Adopt(char* fresh);
};

/// A row-major grid of units: cell (r, c) is unit r * GetColNum() + c.
class ZT_API ZtBit2dArray : public ZtBitArray {
 public:
  /// rowNum x colNum zeroed units of unitSize bits.
  ZtBit2dArray(ZtLong rowNum, ZtLong colNum, ZtLong unitSize);
  ZtBit2dArray(const ZtBit2dArray& src) = default;
  ZtBit2dArray& operator=(const ZtBit2dArray& o) = default;
  ~ZtBit2dArray() = default;

  ZtLong operator()(ZtLong r, ZtLong c) const { return GetValue(r * m_colNum + c); }
  /// ORs v into cell (r, c), as ZtBitArray::SetValue.
  void SetValue(ZtLong r, ZtLong c, char v) { ZtBitArray::SetValue(r * m_colNum + c, v); }
  ZtLong GetRowNum() const { return m_rowNum; }
  ZtLong GetColNum() const { return m_colNum; }

 protected:
  ZtLong m_rowNum;
  ZtLong m_colNum;
};

#endif  // ZT_BITS_BIT_ARRAY_H_
