// tests/bits/bit_array_test.cpp
//
// Bit order and unit packing, the OR semantics of SetValue, who owns the buffer after each call,
// the little-endian conversions, the grid, and the flag word.
#include "zt/bits/bit_array.h"

#include <gtest/gtest.h>

#include <cstring>
#include <tuple>
#include <vector>

#include "tests/support/fault_injection.h"
#include "zt/bits/bit_data.h"

namespace zt::test {
namespace {

std::vector<unsigned char> Bytes(const ZtBitArray& a) {
  const char* p = a;
  if (p == nullptr) return {};
  return std::vector<unsigned char>(p, p + a.GetByteSize());
}

auto BitArrayState(const ZtBitArray& a) {
  return std::make_tuple(a.GetLength(), a.GetUnitSize(), static_cast<const char*>(a), Bytes(a));
}

TEST(BitArray, UnitsPackFromTheLowBitsOfByteZero) {
  struct Case {
    ZtLong unitSize, unit;
    char value;
    std::vector<unsigned char> bytes;
  };
  const Case cases[] = {
      {1, 0, 1, {0x01, 0x00}},    {1, 9, 1, {0x00, 0x02}},   {2, 1, 3, {0x0C, 0x00}},
      {2, 7, 2, {0x00, 0x80}},    {4, 1, 0xA, {0xA0, 0x00}}, {4, 2, 5, {0x00, 0x05}},
      {2, 0, 0x7F, {0x03, 0x00}},  // a value too wide is cut to the unit
  };
  for (const Case& c : cases) {
    ZtBitArray a(16 / c.unitSize, c.unitSize);
    a.SetValue(c.unit, c.value);
    EXPECT_EQ(Bytes(a), c.bytes) << "unit size " << c.unitSize << ", unit " << c.unit;
    EXPECT_EQ(a.GetValue(c.unit), c.value & ((1 << c.unitSize) - 1));
  }
}

TEST(BitArray, SizesAndTheOrSemanticsOfSetValue) {
  ZtBitArray a(10, 2);
  EXPECT_EQ(Bytes(a), (std::vector<unsigned char>{0, 0, 0}));
  EXPECT_EQ(a.GetBitSize(), 20);
  EXPECT_EQ(a.GetLength(), 10);
  a.SetValue(1, 2);
  a.SetValue(1, 1);  // ORed in: the unit reads 3
  EXPECT_EQ(a.GetValue(1), 3);
  a.Reset(2);
  a.Reset(3);
  a.SetValue(1, 1);
  EXPECT_EQ(a.GetValue(1), 1);
  a.SetAll(2);
  EXPECT_EQ(Bytes(a), (std::vector<unsigned char>{0xAE, 0xAA, 0x0A}));  // unit 1 kept its bit 0
  EXPECT_EQ(a.GetValue(1), 3);
  a.SetAll();
  EXPECT_EQ(Bytes(a), (std::vector<unsigned char>{0xFF, 0xFF, 0xFF}));
  a.ResetAll();
  EXPECT_EQ(Bytes(a), (std::vector<unsigned char>{0, 0, 0}));
  for (ZtLong bits : {0, 1, 8, 9}) EXPECT_EQ(ZtBitArray::BitToByte(bits), (bits + 7) / 8);
}

TEST(BitArray, SingleBitsIgnoreTheUnitSize) {
  ZtBitArray a(4, 4);
  a.Set(9);
  EXPECT_EQ(Bytes(a), (std::vector<unsigned char>{0x00, 0x02}));
  EXPECT_TRUE(a[9]);
  EXPECT_FALSE(a[8]);
  EXPECT_EQ(a.GetValue(2), 2);
  a.Reset(9);
  EXPECT_FALSE(a[9]);
}

TEST(BitArray, CopiedBytesAreOwnedAndAttachedBytesBorrowed) {
  unsigned char raw[4] = {0x01, 0, 0, 0};
  ZtBitArray copy(raw, 4, false);
  EXPECT_EQ(static_cast<int>(copy), 1);
  EXPECT_EQ(copy.GetLength(), 32);
  copy.Set(31);
  EXPECT_EQ(raw[3], 0);

  ZtBitArray borrowed(raw, 4, true);
  borrowed.Set(31);
  EXPECT_EQ(raw[3], 0x80);
  EXPECT_EQ(static_cast<const char*>(borrowed), reinterpret_cast<char*>(raw));
  ZtBitArray owned(borrowed);  // a copy of a borrowing array owns its bytes
  EXPECT_NE(static_cast<const char*>(owned), static_cast<const char*>(borrowed));
  EXPECT_EQ(Bytes(owned), Bytes(borrowed));

  borrowed = ZtBitArray(32, 1);  // same shape: the borrowed buffer receives the bytes
  EXPECT_EQ(raw[0], 0);
  EXPECT_EQ(static_cast<const char*>(borrowed), reinterpret_cast<char*>(raw));
  borrowed.ReAllocate(40);  // a new buffer, owned and freed by the array; raw is never freed
  EXPECT_NE(static_cast<const char*>(borrowed), reinterpret_cast<char*>(raw));
  EXPECT_EQ(Bytes(borrowed).size(), 5U);
}

TEST(BitArray, ConversionsReadTheFrontLittleEndian) {
  unsigned char raw[8] = {0, 0, 0, 0, 0, 0, 0x04, 0xC0};  // -2.5
  ZtBitArray a(raw, 8, true);
  EXPECT_EQ(static_cast<double>(a), -2.5);
  double viewed = 0;
  std::memcpy(&viewed, static_cast<const double*>(a), sizeof viewed);
  EXPECT_EQ(viewed, -2.5);
  EXPECT_EQ(static_cast<char>(a), static_cast<char>(raw[0]));
  unsigned char f[2] = {0x34, 0x12};
  ZtBitArray shortBuffer(f, 2, true);
  EXPECT_EQ(static_cast<int>(shortBuffer), 0x1234);  // bytes past the buffer read as 0
  EXPECT_EQ(static_cast<float>(ZtBitArray(0, 1)), 0.0F);
}

TEST(BitArray, ReAllocateAssignAndUnitSizeKeepTheFrontBytes) {
  ZtBitArray a(8, 2);
  a.SetValue(0, 1);
  a.SetValue(5, 3);
  a.ReAllocate(12);
  EXPECT_EQ(a.GetByteSize(), 3);
  EXPECT_EQ(a.GetValue(0), 1);
  EXPECT_EQ(a.GetValue(5), 3);
  a.SetUnitSize(4);  // 24 bits: 6 units of 4
  EXPECT_EQ(a.GetLength(), 6);
  EXPECT_EQ(a.GetValue(2), 0xC);
  a.SetUnitSize(1);
  EXPECT_EQ(a.GetLength(), 24);
  a.ReAllocate(5);
  a.SetUnitSize(4);  // 5 bits hold one whole 4-bit unit
  EXPECT_EQ(a.GetLength(), 1);
  a.ReAllocate(0);
  EXPECT_EQ(static_cast<const char*>(a), nullptr);

  ZtBitArray b(3, 1);
  ZtBitArray c(5, 4);
  c.SetValue(4, 9);
  b = c;
  EXPECT_EQ(b.GetUnitSize(), 4);
  EXPECT_EQ(b.GetValue(4), 9);
  const ZtBitArray& same = b;
  b = same;
  EXPECT_EQ(Bytes(b), Bytes(c));
}

TEST(BitArray, AttachAdoptsAndDetachHandsOver) {
  ZtBitArray a(16, 1);
  a.Attach(3, new char[3]{1, 2, 3});  // freed by the array (the leak checker watches)
  EXPECT_EQ(a.GetLength(), 24);
  char* p = a.Detach();
  EXPECT_EQ(a.GetLength(), 0);
  EXPECT_EQ(static_cast<const char*>(a), nullptr);
  EXPECT_EQ(p[2], 3);
  delete[] p;
}

TEST(BitArrayFaults, ReAllocateAndAssignLeaveTheArrayAsItWas) {
  ZtBitArray a(20, 2);
  a.SetValue(3, 2);
  ExpectStrongGuarantee(
      a, [](ZtBitArray& x) { x.ReAllocate(50); }, BitArrayState);
  const ZtBitArray big(100, 4);
  ExpectStrongGuarantee(
      a, [&big](ZtBitArray& x) { x = big; }, BitArrayState);
}

TEST(Bit2dArray, CellsAreRowMajorUnits) {
  ZtBit2dArray g(3, 4, 1);
  g.SetValue(2, 1, 1);
  EXPECT_EQ(g.GetValue(9), 1);
  EXPECT_EQ(g(2, 1), 1);
  EXPECT_EQ(g(1, 2), 0);
  ZtBit2dArray h(1, 1, 2);
  h = g;
  EXPECT_EQ(h.GetRowNum(), 3);
  EXPECT_EQ(h.GetColNum(), 4);
  EXPECT_EQ(h(2, 1), 1);
  ZtBit2dArray copy(g);
  EXPECT_EQ(Bytes(copy), Bytes(g));
}

TEST(BitData, FlagQueries) {
  ZtBitData d(0x5);
  EXPECT_TRUE(d.Is(0x4));
  EXPECT_FALSE(d.Is(0x2));
  EXPECT_TRUE(d.IsNot(0x2));
  EXPECT_TRUE(d.IsSameFlag(0x5));
  d.RemoveFlag(0x1);
  d.AddFlag(0x10);
  EXPECT_EQ(static_cast<int>(d), 0x14);
  d.ClearFlag();
  EXPECT_TRUE(d.IsEmptyFlag());
  EXPECT_TRUE(ZtBitData().IsEmptyFlag());
}

}  // namespace
}  // namespace zt::test
