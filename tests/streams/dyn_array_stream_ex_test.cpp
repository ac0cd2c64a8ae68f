// tests/streams/dyn_array_stream_ex_test.cpp
//
// The block stream's units: which ones a write creates, how bytes split across them, copies that
// own units of their own, and the length kept when adding a unit fails.
#include "zt/streams/dyn_array_stream_ex.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

#include "tests/support/fault_injection.h"
#include "tests/support/streams.h"

namespace zt::test {
namespace {

// A block stream whose units the tests may inspect.
class PeekBlocks : public ZtDynArrayStreamEx {
 public:
  using ZtDynArrayStreamEx::ZtDynArrayStreamEx;
  ZtLong UnitCount() const { return m_units.GetLength(); }
  ZtLong UnitSlots() const { return m_units.GetSpaceSize(); }
  ZtDynArrayStream* Unit(ZtLong i) const { return m_units.GetAt(i); }
  std::vector<unsigned char> UnitBytes(ZtLong i) const { return Contents(*Unit(i)); }
};

std::vector<unsigned char> Iota(ZtLong n, unsigned char first) {
  std::vector<unsigned char> bytes(static_cast<std::size_t>(n));
  std::iota(bytes.begin(), bytes.end(), first);
  return bytes;
}

TEST(DynArrayStreamEx, WritesSplitAcrossUnitsCreatedAtTheEnd) {
  PeekBlocks s(4);
  std::vector<unsigned char> bytes = Iota(10, 0);
  s.Write(bytes.data(), 10);
  EXPECT_EQ(s.GetLength(), 10);
  EXPECT_EQ(s.GetCur(), 0);
  ASSERT_EQ(s.UnitCount(), 3);
  EXPECT_EQ(s.UnitSlots(), 11);  // the unit array grows 10 slots beyond the need
  EXPECT_EQ(s.UnitBytes(0), Iota(4, 0));
  EXPECT_EQ(s.UnitBytes(1), Iota(4, 4));
  EXPECT_EQ(s.UnitBytes(2).size(), 4U);  // every unit holds exactly the unit size
  EXPECT_EQ(Contents(s), bytes);

  unsigned char three[3] = {0xA, 0xB, 0xC};
  s.MoveTo(3);
  s.Write(three, 3);  // one byte into unit 0, two into unit 1
  EXPECT_EQ(s.UnitBytes(0)[3], 0xA);
  EXPECT_EQ(s.UnitBytes(1)[1], 0xC);
  unsigned char back[3] = {};
  s.Read(back, 3);
  EXPECT_EQ(std::vector<unsigned char>(back, back + 3),
            std::vector<unsigned char>(three, three + 3));

  unsigned char eight[8] = {9, 9, 9, 9, 9, 9, 9, 9};
  s.MoveTo(6);
  s.Read(eight, 8);  // 4 bytes left: the other 4 stay
  EXPECT_EQ(std::vector<unsigned char>(eight, eight + 8),
            (std::vector<unsigned char>{6, 7, 8, 9, 9, 9, 9, 9}));
}

TEST(DynArrayStreamEx, UnitsAreCreatedUpToTheOneWritten) {
  PeekBlocks s;
  EXPECT_EQ(s.IndexToUnit(1024), 1);
  EXPECT_EQ(s.GetIndexInUnit(1024), 0);
  EXPECT_EQ(s.IndexToUnit(1023), 0);
  EXPECT_EQ(s.GetIndexInUnit(1023), 1023);
  s.Write(nullptr, 0);  // still makes sure unit 0 exists
  EXPECT_EQ(s.UnitCount(), 1);
  EXPECT_EQ(s.GetLength(), 0);
  s.MoveTo(5000);
  s << 'x';
  EXPECT_EQ(s.UnitCount(), 5);
  EXPECT_EQ(s.GetLength(), 5001);
  s.MoveTo(2048);
  s.Write(nullptr, 0);  // unit (2048 - 1) / 1024 exists already: nothing added
  EXPECT_EQ(s.UnitCount(), 5);
  s.MoveTo(1022);
  s << ZtLong{0x11223344};  // straddles units 0 and 1
  EXPECT_EQ(s.UnitBytes(0)[1023], 0x33);
  EXPECT_EQ(s.UnitBytes(1)[0], 0x22);
  s.MoveTo(1022);
  ZtLong v = 0;
  s >> v;
  EXPECT_EQ(v, 0x11223344);
  s.Reset();
  EXPECT_EQ(s.UnitCount(), 0);
  EXPECT_EQ(s.GetLength(), 0);
  s << 'y';
  EXPECT_EQ(s.UnitCount(), 1);
}

TEST(DynArrayStreamEx, CopiesOwnUnitsOfTheirOwn) {
  PeekBlocks s(4);
  s << 1.25 << short{7};
  PeekBlocks copy(s);
  EXPECT_EQ(copy.GetCur(), 10);
  EXPECT_EQ(copy.GetUnitSize(), 4);
  ASSERT_EQ(copy.UnitCount(), 3);
  for (ZtLong i = 0; i < 3; ++i) {
    EXPECT_NE(copy.Unit(i), s.Unit(i));
    EXPECT_EQ(copy.UnitBytes(i), s.UnitBytes(i));
  }
  copy.MoveToFirst();
  copy << 'c';
  EXPECT_NE(Contents(copy), Contents(s));

  PeekBlocks target(16);
  target << ZtLong{5} << ZtLong{6};  // its old unit is deleted by the assignment
  target = s;
  EXPECT_EQ(target.GetUnitSize(), 4);
  EXPECT_EQ(Contents(target), Contents(s));
  EXPECT_NE(target.Unit(0), s.Unit(0));
  const PeekBlocks& same = target;
  target = same;
  EXPECT_EQ(Contents(target), Contents(s));
}

TEST(DynArrayStreamExFaults, FailedUnitsKeepTheLengthAndCopiesLeakNothing) {
  PeekBlocks s(4);
  s << ZtLong{1} << short{2};
  ExpectStrongGuarantee(
      s, [](PeekBlocks& x) { x << 3.5; }, StreamState);  // adds two units
  EXPECT_EQ(s.GetLength(), 14);
  ExpectStrongGuarantee(
      s, [](PeekBlocks& x) { EXPECT_EQ(PeekBlocks(x).GetLength(), 14); }, StreamState);
  PeekBlocks target(2);
  target << 'a';
  ExpectStrongGuarantee(
      target, [&s](PeekBlocks& x) { x = s; }, StreamState);
  EXPECT_EQ(Contents(target), Contents(s));
}

}  // namespace
}  // namespace zt::test
