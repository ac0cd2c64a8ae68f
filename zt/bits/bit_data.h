// zt/bits/bit_data.h
//
// ZtBitData: a 32-bit flag word whose bits the deriving class defines; the polymorphic base of
// objects that carry flags.
//
//   ZtBitData d(0x5);
//   d.Is(0x4);                 // true: at least one of the bits is set
//   d.RemoveFlag(0x1);         // the flag is 0x4
#ifndef ZT_BITS_BIT_DATA_H_
#define ZT_BITS_BIT_DATA_H_

#include "zt/config.h"

/// A flag word with a virtual destructor, so that derived objects delete through it.
class ZT_API ZtBitData {
 public:
  ZtBitData() : m_flag(0) {}
  ZtBitData(int flag) : m_flag(flag) {}  // NOLINT(google-explicit-constructor): a flag converts
  ZtBitData(const ZtBitData& src) = default;
  ZtBitData& operator=(const ZtBitData& src) = default;
  virtual ~ZtBitData();

  /// True when at least one bit of f is set.
  bool Is(int f) const { return (m_flag & f) != 0; }
  /// True when no bit of f is set.
  bool IsNot(int f) const { return (m_flag & f) == 0; }
  bool IsSameFlag(int f) const { return m_flag == f; }
  bool IsEmptyFlag() const { return m_flag == 0; }
  void AddFlag(int f) { m_flag |= f; }
  void RemoveFlag(int f) { m_flag &= ~f; }
  void SetFlag(int f) { m_flag = f; }
  void ClearFlag() { m_flag = 0; }
  operator int() const { return m_flag; }  // NOLINT(google-explicit-constructor): interface

 protected:
  int m_flag;
};

#endif  // ZT_BITS_BIT_DATA_H_
