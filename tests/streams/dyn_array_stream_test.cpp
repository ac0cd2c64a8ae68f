// tests/streams/dyn_array_stream_test.cpp
//
// The array stream's storage: capacities after every write (against storing the bytes one by one
// through the array's growing subscript), the length kept equal to the array's, copies, and the
// strong guarantee of a growing write.
#include "zt/streams/dyn_array_stream.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

#include "tests/support/fault_injection.h"
#include "tests/support/streams.h"

namespace zt::test {
namespace {

std::vector<char> Pattern(ZtLong n, char first) {
  std::vector<char> bytes(static_cast<std::size_t>(n));
  std::iota(bytes.begin(), bytes.end(), first);
  return bytes;
}

TEST(DynArrayStream, DefaultReserveAndGrowthByTheAllocationUnit) {
  PeekStream s;
  EXPECT_EQ(s.Array().GetSpaceSize(), 1024);
  EXPECT_EQ(s.Array().GetAllocUnit(), 1024);
  std::vector<char> bytes = Pattern(1024, 0);
  s.Write(bytes.data(), 1024);
  EXPECT_EQ(s.Array().GetSpaceSize(), 1024);
  EXPECT_EQ(s.GetCur(), 0);
  EXPECT_EQ(s.GetLength(), 1024);
  s.MoveOut();
  s << 'x';
  EXPECT_EQ(s.Array().GetSpaceSize(), 2049);
  EXPECT_EQ(s.GetLength(), 1025);
}

// Every write must leave the capacity, length and bytes that storing its bytes one at a time
// through ZtDynArray's growing subscript leaves.
TEST(DynArrayStream, RunsGrowLikeByteByByteStores) {
  struct Case {
    ZtLong space, unit;
    std::vector<std::pair<ZtLong, ZtLong>> writes;  // (position, count)
  };
  const Case cases[] = {
      {0, 0, {{0, 5}, {5, 1}, {9, 3}}},
      {4, 1, {{0, 3}, {2, 9}, {30, 1}}},
      {10, 3, {{0, 10}, {10, 1}, {11, 20}, {4, 40}}},
      {2, 1024, {{0, 5000}, {6000, 2}, {3, 1}}},
      {0, -5, {{3, 4}, {0, 2}}},
  };
  for (const Case& c : cases) {
    PeekStream s(c.space, c.unit);
    ZtDynArray<char> model(c.space, c.unit);
    char first = 1;
    for (auto [at, count] : c.writes) {
      SCOPED_TRACE(testing::Message() << "space " << c.space << ", unit " << c.unit << ", write "
                                      << count << " at " << at);
      std::vector<char> bytes = Pattern(count, first);
      first = static_cast<char>(first + 7);
      for (ZtLong k = 0; k < count; ++k) model[at + k] = bytes[static_cast<std::size_t>(k)];
      s.MoveTo(at);
      s.Write(bytes.data(), count);
      EXPECT_EQ(s.Array().GetSpaceSize(), model.GetSpaceSize());
      EXPECT_EQ(s.GetLength(), model.GetLength());
      EXPECT_EQ(s.GetCur(), at);
      std::vector<char> back(bytes.size());
      s.Read(back.data(), count);
      EXPECT_EQ(back, bytes);
    }
  }
}

TEST(DynArrayStream, ResetSetLengthAndTheSubscript) {
  PeekStream s(8, 4);
  s << ZtLong{0x04030201} << short{0x0605};
  s.MoveTo(1);
  s.SetLength(3);
  EXPECT_EQ(Contents(s), (std::vector<unsigned char>{1, 2, 3}));
  EXPECT_EQ(s.Array().GetSpaceSize(), 3);
  EXPECT_EQ(s.GetCur(), 1);
  s.Reset();
  EXPECT_EQ(s.GetLength(), 0);
  EXPECT_EQ(s.GetCur(), 0);
  EXPECT_EQ(s.Array().GetSpaceSize(), 3);  // the buffer stays
  s[5] = 'k';
  EXPECT_EQ(s.Array().GetLength(), 6);
  EXPECT_EQ(s.GetLength(), 0);
  s.Write(nullptr, 0);  // brings the length in line with the array
  EXPECT_EQ(s.GetLength(), 6);
  s.MoveTo(5);
  char c = 0;
  s >> c;
  EXPECT_EQ(c, 'k');
  s.MoveTo(9);
  s << 'e';  // the skipped bytes read as 0
  const std::vector<unsigned char> bytes = Contents(s);
  EXPECT_EQ(std::vector<unsigned char>(bytes.begin() + 5, bytes.end()),
            (std::vector<unsigned char>{'k', 0, 0, 0, 'e'}));
}

TEST(DynArrayStream, CopiesOwnTheirBytes) {
  PeekStream s(16, 4);
  s << 1.5 << 'z';
  PeekStream copy(s);
  EXPECT_EQ(Contents(copy), Contents(s));
  EXPECT_EQ(copy.GetCur(), 9);
  EXPECT_EQ(copy.Array().GetSpaceSize(), 9);  // exact size, default allocation unit
  EXPECT_EQ(copy.Array().GetAllocUnit(), 10);
  copy.MoveToFirst();
  copy << 'a';
  EXPECT_NE(Contents(copy), Contents(s));
  PeekStream target(0, 3);
  target = s;
  EXPECT_EQ(Contents(target), Contents(s));
  EXPECT_EQ(target.GetCur(), 9);
  EXPECT_EQ(target.Array().GetAllocUnit(), 3);
}

TEST(DynArrayStreamFaults, FailedGrowthWritesNothing) {
  PeekStream s(4, 2);
  s << ZtLong{7};
  s.MoveTo(2);
  auto state = [](PeekStream& x) {
    return std::make_tuple(StreamState(x), x.Array().GetSpaceSize(), x.Array().GetLength());
  };
  ExpectStrongGuarantee(
      s, [](PeekStream& x) { x << 2.5; }, state);
  EXPECT_EQ(s.GetLength(), 10);
}

}  // namespace
}  // namespace zt::test
