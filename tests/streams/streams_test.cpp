// tests/streams/streams_test.cpp
//
// The typed byte layout, positions and partial reads on every storage class; the array stream's
// capacities against byte-by-byte stores; the block stream's units; copies; allocation failures.
#include <gtest/gtest.h>

#include <new>
#include <numeric>
#include <tuple>
#include <utility>
#include <vector>

#include "tests/support/containers.h"
#include "tests/support/fault_injection.h"
#include "zt/streams/dyn_array_stream.h"
#include "zt/streams/dyn_array_stream_ex.h"
#include "zt/streams/stream.h"

namespace zt::test {
namespace {

using Bytes = std::vector<unsigned char>;

// Bytes 0 .. GetLength() - 1 through the raw Read; the position is left as it was.
Bytes Contents(ZtStream& s) {
  const ZtLong cur = s.GetCur();
  Bytes bytes(static_cast<std::size_t>(s.GetLength()));
  s.MoveTo(0);
  s.Read(bytes.data(), s.GetLength());
  s.MoveTo(cur);
  return bytes;
}

auto StreamState(ZtStream& s) { return std::make_tuple(s.GetCur(), s.GetLength(), Contents(s)); }

class PeekStream : public ZtDynArrayStream {
 public:
  using ZtDynArrayStream::ZtDynArrayStream;
  const ZtDynArray<char>& Array() const { return m_array; }
};

class PeekBlocks : public ZtDynArrayStreamEx {
 public:
  using ZtDynArrayStreamEx::ZtDynArrayStreamEx;
  ZtLong UnitCount() const { return m_units.GetLength(); }
  ZtDynArrayStream* Unit(ZtLong i) const { return m_units.GetAt(i); }
  ZtLong UnitCursor() const { return m_units.GetCur(); }
};

// Units of 3 bytes split most values across units.
class SmallBlocks : public ZtDynArrayStreamEx {
 public:
  SmallBlocks() : ZtDynArrayStreamEx(3) {}
};

template <class S>
class StreamTest : public ::testing::Test {};
using StreamTypes = ::testing::Types<ZtDynArrayStream, ZtDynArrayStreamEx, SmallBlocks>;
TYPED_TEST_SUITE(StreamTest, StreamTypes);

TYPED_TEST(StreamTest, TypedValuesHaveAFixedLittleEndianLayout) {
  TypeParam s;
  std::vector<ZtLong> at;
  auto mark = [&] { at.push_back(s.GetCur()); };
  s << 'A', mark(), s << true, mark(), s << false, mark(), s << short{-2}, mark();
  s << ZtLong{0x01020304}, mark(), s << 1.0, mark(), s.WriteDouble(-2.5), mark();
  EXPECT_EQ(Contents(s), (Bytes{'A', 1, 0,    0xFE, 0xFF, 4, 3, 2, 1, 0, 0,    0,   0,
                                0,   0, 0xF0, 0x3F, 0,    0, 0, 0, 0, 0, 0x04, 0xC0}));
  s.MoveToFirst();
  char c = 0;
  bool t = false, f = true;
  short h = 0;
  ZtLong l = 0;
  double one = 0, minus = 0;
  s >> c, mark(), s >> t, mark(), s >> f, mark(), s >> h, mark();
  s >> l, mark(), s >> one, mark(), s.ReadDouble(minus), mark();
  EXPECT_EQ(at, (std::vector<ZtLong>{1, 2, 3, 5, 9, 17, 25, 1, 2, 3, 5, 9, 17, 25}));
  EXPECT_TRUE(c == 'A' && t && !f && h == -2 && l == 0x01020304 && one == 1.0 && minus == -2.5);
  EXPECT_TRUE(s.IsOut());
}

TYPED_TEST(StreamTest, PositionsOverwritesAndReadsCutShort) {
  TypeParam s;
  EXPECT_TRUE(s.IsOut());
  s << ZtLong{1} << short{2};
  s.MoveTo(2);
  s << char{0x11};  // overwrites: the length stays
  EXPECT_EQ(Contents(s), (Bytes{1, 0, 0x11, 0, 2, 0}));
  s.MoveToLast();
  EXPECT_EQ(s.GetCur(), 5);
  s.MoveToPre(7);
  s.MoveTo(-5);  // clamped to 0
  s.MoveToNext(4);
  ZtLong v = 0x7F7F7F7F;
  double d = 3.0;
  s >> v >> d;  // two bytes left, then none: high bytes kept, the position moves by the width
  EXPECT_EQ(v, 0x7F7F0002);
  EXPECT_EQ(d, 3.0);
  EXPECT_EQ(s.GetCur(), 16);
  unsigned char out[4] = {9, 9, 9, 9};
  s.MoveTo(5);
  s.Read(out, 4);  // the raw read copies what is there and does not move
  EXPECT_EQ(Bytes(out, out + 4), (Bytes{0, 9, 9, 9}));
  EXPECT_EQ(s.GetCur(), 5);
  s.MoveTo(10);  // past the end: a write there extends the stream
  s << 'z';
  s.MoveOut();
  EXPECT_EQ(Both(s.GetCur(), s.GetLength()), Both(11, 11));
  s.Reset();
  s << 'q';
  EXPECT_EQ(Contents(s), Bytes{'q'});  // Reset emptied it and went back to 0
}

TEST(Stream, ThePlainStreamStoresNothingAndNeverCompares) {
  struct Counting : ZtStream {
    void WriteLong(ZtLong v) override { ++calls, ZtStream::WriteLong(v); }
    int calls = 0;
  } s;
  double d = 1.5;
  s << ZtLong{5} << 'c' << true >> d;
  EXPECT_EQ(s.calls, 1);
  EXPECT_EQ(d, 1.5);
  EXPECT_EQ(Both(s.GetCur(), s.GetLength()), Both(14, 0));
  const ZtStream& other = s;
  EXPECT_FALSE(s == other || s != other || s < other || s > other);
}

// Every write must leave the capacity, length and bytes that storing its bytes one at a time
// through ZtDynArray's growing subscript leaves.
TEST(DynArrayStream, RunsGrowLikeByteByByteStores) {
  struct Case {
    ZtLong space, unit;
    std::vector<std::pair<ZtLong, ZtLong>> writes;                     // (position, count)
  } const cases[] = {{1024, 1024, {{0, 1024}, {1024, 1}, {3000, 1}}},  // 1,024, then 2,049
                     {0, 0, {{0, 5}, {5, 1}, {9, 3}}},
                     {10, 3, {{0, 10}, {10, 1}, {11, 20}, {4, 40}}},
                     {2, 1024, {{0, 5000}, {6000, 2}, {3, 1}}},
                     {0, -5, {{3, 4}, {0, 2}}}};
  for (const Case& c : cases) {
    PeekStream s(c.space, c.unit);
    ZtDynArray<char> model(c.space, c.unit);
    for (auto [at, count] : c.writes) {
      SCOPED_TRACE(testing::Message() << "unit " << c.unit << ": " << count << " at " << at);
      std::vector<char> bytes(static_cast<std::size_t>(count), static_cast<char>(at + count));
      for (ZtLong k = 0; k < count; ++k) model[at + k] = bytes[static_cast<std::size_t>(k)];
      s.MoveTo(at);
      s.Write(bytes.data(), count);
      EXPECT_EQ(s.Array().GetSpaceSize(), model.GetSpaceSize());
      EXPECT_EQ(Both(s.GetCur(), s.GetLength()), Both(at, model.GetLength()));
      std::vector<char> back(bytes.size());
      s.Read(back.data(), count);
      EXPECT_EQ(back, bytes);
    }
  }
}

TEST(DynArrayStream, SetLengthResetSubscriptAndCopies) {
  PeekStream s(8, 4);
  s << ZtLong{0x04030201} << short{0x0605};
  s.MoveTo(1);
  s.SetLength(3);
  EXPECT_EQ(Contents(s), (Bytes{1, 2, 3}));
  EXPECT_EQ(Both(s.GetCur(), s.Array().GetSpaceSize()), Both(1, 3));
  PeekStream copy(s);
  PeekStream target(0, 3);
  target = s;
  EXPECT_EQ(Contents(copy), Contents(target));
  // A copy's array has the default unit, an assigned one keeps its own.
  EXPECT_EQ(Both(copy.Array().GetAllocUnit(), target.Array().GetAllocUnit()), Both(10, 3));
  s.Reset();
  EXPECT_EQ(s.Array().GetSpaceSize(), 3);  // the buffer stays
  s[5] = 'k';
  EXPECT_EQ(Both(s.GetLength(), s.Array().GetLength()), Both(0, 6));
  s.MoveTo(8);
  s << 'e';  // the length catches up with the array; skipped bytes read as 0
  const Bytes bytes = Contents(s);
  EXPECT_EQ(Bytes(bytes.begin() + 5, bytes.end()), (Bytes{'k', 0, 0, 'e'}));
  EXPECT_EQ(Contents(copy), (Bytes{1, 2, 3}));
  for (ZtLong i = 0; i < 5; ++i) s[i] = 'a';  // bytes the subscript's growth left unspecified
  ExpectStrongGuarantee(
      s, [](PeekStream& x) { x << 2.5; },
      [](PeekStream& x) { return std::make_tuple(StreamState(x), x.Array().GetSpaceSize()); });
}

TEST(DynArrayStreamEx, UnitsAreCreatedUpToTheOneWritten) {
  PeekBlocks s(4);
  Bytes bytes(10);
  std::iota(bytes.begin(), bytes.end(), 0);
  s.Write(bytes.data(), 10);
  ASSERT_EQ(s.UnitCount(), 3);
  s.MoveTo(3);
  s << short{0x0B0A};  // straddles units 0 and 1
  EXPECT_EQ(Contents(*s.Unit(0)), (Bytes{0, 1, 2, 0x0A}));
  EXPECT_EQ(Contents(*s.Unit(1)), (Bytes{0x0B, 5, 6, 7}));
  EXPECT_EQ(Contents(*s.Unit(2)).size(), 4U);  // every unit holds exactly the unit size
  PeekBlocks big;
  EXPECT_EQ(Both(big.IndexToUnit(1024), big.GetIndexInUnit(1024)), Both(1, 0));
  EXPECT_EQ(Both(big.IndexToUnit(1023), big.GetIndexInUnit(1023)), Both(0, 1023));
  big.Write(nullptr, 0);  // still makes sure that unit 0 exists
  EXPECT_EQ(Both(big.UnitCount(), big.GetLength()), Both(1, 0));
  big.MoveTo(5000);
  big << 'x';
  EXPECT_EQ(Both(big.UnitCount(), big.GetLength()), Both(5, 5001));
  big.Reset();
  EXPECT_EQ(big.UnitCount(), 0);
}

// A write that needs units 2 and 3 with the nth allocation failing: the length and bytes stay,
// and so do the units appended before the failure (unit 2 when unit 3 fails).
TEST(DynArrayStreamEx, UnitsAppendedBeforeAFailedAllocationStay) {
  std::vector<ZtLong> unitsAfterFailure;
  for (long n = 1; n < 100; ++n) {
    PeekBlocks s(4);
    s << ZtLong{1} << short{2};
    const auto before = StreamState(s);
    bool threw = false;
    {
      FailureScope scope(n);
      try {
        s << 3.5;
      } catch (const std::bad_alloc&) {
        threw = true;
      }
    }
    if (!threw) break;
    EXPECT_EQ(StreamState(s), before);
    unitsAfterFailure.push_back(s.UnitCount());
  }
  ASSERT_FALSE(unitsAfterFailure.empty());
  EXPECT_EQ(Both(unitsAfterFailure.front(), unitsAfterFailure.back()), Both(2, 3));
}

TEST(DynArrayStreamEx, TheUnitCursorAndTheUnitPositionsFollowTheWalk) {
  PeekBlocks s(4);
  Bytes bytes(10, 7);
  s.Write(bytes.data(), 10);
  const struct {
    ZtLong at, n;
    bool write;
    ZtLong cursor, unit, position;  // the unit cursor afterwards, and one unit's position
  } cases[] = {
      {1, 2, true, 1, 0, 1},   // inside unit 0
      {5, 3, false, 2, 1, 1},  // inside unit 1, up to its end
      {3, 2, true, 2, 1, 0},   // across units 0 and 1: unit 1 from its start
      {9, 4, false, 3, 2, 1},  // cut to the one byte left
      {6, 0, false, 1, 1, 0},  // nothing to read: the cursor still moves, no position changes
  };
  for (const auto& c : cases) {
    s.MoveTo(c.at);
    if (c.write) {
      s.Write(bytes.data(), c.n);
    } else {
      s.Read(bytes.data(), c.n);
    }
    EXPECT_EQ(Both(s.UnitCursor(), s.Unit(c.unit)->GetCur()), Both(c.cursor, c.position))
        << c.at << "+" << c.n;
  }
}

TEST(DynArrayStreamEx, CopiesOwnUnitsOfTheirOwnAndFailuresChangeNothing) {
  PeekBlocks s(4);
  s << ZtLong{1} << short{2} << 3.5;  // four units
  ExpectStrongGuarantee(
      s, [](PeekBlocks& x) { EXPECT_EQ(PeekBlocks(x).GetCur(), 14); }, StreamState);
  PeekBlocks target(16);
  target << 'a';  // its unit is deleted by the assignment
  ExpectStrongGuarantee(
      target, [&s](PeekBlocks& x) { x = s; }, StreamState);
  EXPECT_EQ(Both(target.IndexToUnit(4), target.GetIndexInUnit(5)), Both(1, 1));  // units of 4
  EXPECT_NE(target.Unit(3), s.Unit(3));
  target.MoveToFirst();
  target << 'c';
  EXPECT_NE(Contents(target), Contents(s));
}

}  // namespace
}  // namespace zt::test
