#include "zt/bits/bit_array.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>

#include "zt/platform/byte_order.h"

namespace {

// Bytes that hold n units of `unitSize` bits, computed without 32-bit overflow.
ZtLong BytesFor(ZtLong n, ZtLong unitSize) {
  return static_cast<ZtLong>((static_cast<std::int64_t>(n) * unitSize + 7) / 8);
}

// A new buffer of `bytes` bytes (null for none) holding the first min(bytes, count) bytes of src.
char* NewBytes(ZtLong bytes, const char* src, ZtLong count) {
  if (bytes < 1) return nullptr;
  char* p = new char[static_cast<std::size_t>(bytes)];
  if (src != nullptr && count > 0)
    std::memcpy(p, src, static_cast<std::size_t>(std::min(bytes, count)));
  return p;
}

// The whole units of `to` bits that n units of `from` bits hold.
ZtLong Rescaled(ZtLong n, ZtLong from, ZtLong to) {
  return static_cast<ZtLong>(static_cast<std::int64_t>(n) * from / to);
}

// In the checked build, reports a unit size other than 1, 2 or 4 given to `op`.
void CheckUnitSize([[maybe_unused]] ZtLong s, [[maybe_unused]] const char* op) {
  ZT_REPORT_UNLESS(s == 1 || s == 2 || s == 4, op, "ZtBitArray", "unit size", s);
}

// `n` (a count of units or bytes given to `op`) unchanged, or 0 when it is negative, which the
// checked build reports.
ZtLong Count(ZtLong n, [[maybe_unused]] const char* op) {
  return ZT_IN_CONTRACT(n >= 0, op, "ZtBitArray", "length", n) ? n : 0;
}

}  // namespace

ZtBitArray::ZtBitArray(ZtLong unitNum, ZtLong unitSize)
    : m_unitSize(unitSize < 1 ? 1 : unitSize), m_unitNum(Count(unitNum, "ZtBitArray")) {
  CheckUnitSize(unitSize, "ZtBitArray");
  m_data = NewBytes(GetByteSize(), nullptr, 0);
  ResetAll();
}

ZtBitArray::ZtBitArray(void* p, ZtLong byteNum, bool attach)
    : m_unitNum(Count(byteNum, "ZtBitArray") * 8), m_own(!attach) {
  m_data = attach ? static_cast<char*>(p) : NewBytes(byteNum, static_cast<const char*>(p), byteNum);
}

ZtBitArray::ZtBitArray(const ZtBitArray& src)
    : m_data(NewBytes(src.GetByteSize(), src.m_data, src.GetByteSize())),
      m_unitSize(src.m_unitSize),
      m_unitNum(src.m_unitNum) {}

ZtLong ZtBitArray::GetByteSize() const { return BytesFor(m_unitNum, m_unitSize); }

ZtBitArray::~ZtBitArray() {
  if (m_own) delete[] m_data;
}

ZtBitArray& ZtBitArray::operator=(const ZtBitArray& o) {
  if (this == &o) return *this;
  const ZtLong bytes = o.GetByteSize();
  // The units this buffer holds once read with o's unit size (see SetUnitSize).
  const ZtLong rescaled = Rescaled(m_unitNum, m_unitSize, o.m_unitSize);
  if (rescaled != o.m_unitNum) Adopt(NewBytes(bytes, nullptr, 0));
  if (bytes > 0 && o.m_data != nullptr) {
    std::memcpy(m_data, o.m_data, static_cast<std::size_t>(bytes));
  }
  m_unitSize = o.m_unitSize;
  m_unitNum = o.m_unitNum;
  return *this;
}

void ZtBitArray::ReAllocate(ZtLong n) {
  n = Count(n, "ReAllocate");
  if (n == m_unitNum) return;
  Adopt(NewBytes(BytesFor(n, m_unitSize), m_data, GetByteSize()));
  m_unitNum = n;
}

void ZtBitArray::Adopt(char* fresh) {
  if (m_own) delete[] m_data;
  m_data = fresh;
  // A borrowing array keeps borrowing when it is left without a buffer, so that a later Attach
  // still borrows; a buffer it allocated itself is always its own.
  if (fresh != nullptr) m_own = true;
}

void ZtBitArray::Attach(ZtLong byteNum, char* p) {
  if (p != m_data && m_own) delete[] m_data;
  m_data = p;
  m_unitNum = Count(byteNum, "Attach") * 8 / m_unitSize;
}

char* ZtBitArray::Detach() {
  char* p = m_data;
  m_data = nullptr;
  m_unitNum = 0;
  return p;
}

void ZtBitArray::SetUnitSize(ZtLong s) {
  CheckUnitSize(s, "SetUnitSize");
  if (s < 1) return;
  m_unitNum = Rescaled(m_unitNum, m_unitSize, s);
  m_unitSize = s;
}

void ZtBitArray::SetAll(char v) {
  if (m_data == nullptr) return;  // units without a buffer, after Attach(n, nullptr)
  for (ZtLong i = 0; i < m_unitNum; ++i) SetValue(i, v);
}

void ZtBitArray::SetAll() {
  if (m_data != nullptr) std::memset(m_data, 0xFF, static_cast<std::size_t>(GetByteSize()));
}

void ZtBitArray::ResetAll() {
  if (m_data != nullptr) std::memset(m_data, 0, static_cast<std::size_t>(GetByteSize()));
}

template <class T>
T ZtBitArray::LoadFront() const {
  unsigned char bytes[sizeof(T)] = {};
  if (m_data != nullptr) {
    std::memcpy(bytes, m_data,
                std::min<std::size_t>(sizeof(T), static_cast<std::size_t>(GetByteSize())));
  }
  return zt::detail::LoadLittleEndian<T>(bytes);
}

ZtBitArray::operator char() const { return LoadFront<char>(); }
ZtBitArray::operator int() const { return LoadFront<std::int32_t>(); }
ZtBitArray::operator float() const { return LoadFront<float>(); }
ZtBitArray::operator double() const { return LoadFront<double>(); }
ZtBitArray::operator const int*() const { return reinterpret_cast<const int*>(m_data); }
ZtBitArray::operator const float*() const { return reinterpret_cast<const float*>(m_data); }
ZtBitArray::operator const double*() const { return reinterpret_cast<const double*>(m_data); }

ZtBit2dArray::ZtBit2dArray(ZtLong rowNum, ZtLong colNum, ZtLong unitSize)
    : ZtBitArray(rowNum * colNum, unitSize), m_rowNum(rowNum), m_colNum(colNum) {}
