// tests/streams/stream_test.cpp
//
// The typed byte layout, the position after every call and the partial-read rule, checked on each
// storage class; then the plain base stream, which stores nothing.
#include "zt/streams/stream.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "tests/support/streams.h"
#include "zt/streams/dyn_array_stream.h"
#include "zt/streams/dyn_array_stream_ex.h"

namespace zt::test {
namespace {

template <class S>
class StreamTest : public ::testing::Test {};
// Block streams with units of 3 bytes split most values across units.
class SmallBlocks : public ZtDynArrayStreamEx {
 public:
  SmallBlocks() : ZtDynArrayStreamEx(3) {}
};
using StreamTypes = ::testing::Types<ZtDynArrayStream, ZtDynArrayStreamEx, SmallBlocks>;
TYPED_TEST_SUITE(StreamTest, StreamTypes);

TYPED_TEST(StreamTest, TypedValuesHaveAFixedLittleEndianLayout) {
  struct Case {
    const char* name;
    std::function<void(ZtStream&)> write;
    std::vector<unsigned char> bytes;
    std::function<bool(ZtStream&)> readsBack;
  };
  const Case cases[] = {
      {"char",
       [](ZtStream& s) { s << 'A'; },
       {0x41},
       [](ZtStream& s) {
         char c = 0;
         return (s >> c, c == 'A');
       }},
      {"true",
       [](ZtStream& s) { s << true; },
       {0x01},
       [](ZtStream& s) {
         bool b = false;
         return (s >> b, b);
       }},
      {"false",
       [](ZtStream& s) { s << false; },
       {0x00},
       [](ZtStream& s) {
         bool b = true;
         return (s >> b, !b);
       }},
      {"short -2",
       [](ZtStream& s) { s << short{-2}; },
       {0xFE, 0xFF},
       [](ZtStream& s) {
         short v = 0;
         return (s >> v, v == -2);
       }},
      {"short 0x1234",
       [](ZtStream& s) { s.WriteShort(0x1234); },
       {0x34, 0x12},
       [](ZtStream& s) {
         short v = 0;
         return (s.ReadShort(v), v == 0x1234);
       }},
      {"long 0x01020304",
       [](ZtStream& s) { s << ZtLong{0x01020304}; },
       {0x04, 0x03, 0x02, 0x01},
       [](ZtStream& s) {
         ZtLong v = 0;
         return (s >> v, v == 0x01020304);
       }},
      {"long -2",
       [](ZtStream& s) { s.WriteLong(-2); },
       {0xFE, 0xFF, 0xFF, 0xFF},
       [](ZtStream& s) {
         ZtLong v = 0;
         return (s.ReadLong(v), v == -2);
       }},
      {"double 1.0",
       [](ZtStream& s) { s << 1.0; },
       {0, 0, 0, 0, 0, 0, 0xF0, 0x3F},
       [](ZtStream& s) {
         double v = 0;
         return (s >> v, v == 1.0);
       }},
      {"double -2.5",
       [](ZtStream& s) { s.WriteDouble(-2.5); },
       {0, 0, 0, 0, 0, 0, 0x04, 0xC0},
       [](ZtStream& s) {
         double v = 0;
         return (s.ReadDouble(v), v == -2.5);
       }},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    TypeParam s;
    const auto width = static_cast<ZtLong>(c.bytes.size());
    c.write(s);
    EXPECT_EQ(Contents(s), c.bytes);
    EXPECT_EQ(s.GetCur(), width);
    EXPECT_EQ(s.GetLength(), width);
    s.MoveToFirst();
    EXPECT_TRUE(c.readsBack(s));
    EXPECT_EQ(s.GetCur(), width);
    EXPECT_TRUE(s.IsOut());
  }
}

TYPED_TEST(StreamTest, RecordsReadBackInOrderAndOverwritesKeepTheLength) {
  TypeParam s;
  s << ZtLong{1} << short{2};
  EXPECT_EQ(Contents(s), (std::vector<unsigned char>{1, 0, 0, 0, 2, 0}));
  s.MoveTo(2);
  s << 'x';
  EXPECT_EQ(s.GetLength(), 6);
  EXPECT_EQ(s.GetCur(), 3);
  s.MoveToFirst();
  ZtLong l = 0;
  short h = 0;
  s >> l >> h;
  EXPECT_EQ(l, 0x00780001);
  EXPECT_EQ(h, 2);
  EXPECT_TRUE(s.IsOut());
  s.MoveToLast();
  EXPECT_EQ(s.GetCur(), 5);
  s.MoveOut();
  EXPECT_EQ(s.GetCur(), 6);
  s.MoveToPre(4);
  EXPECT_EQ(s.GetCur(), 2);
  s.MoveToPre(3);
  EXPECT_EQ(s.GetCur(), 0);
  s.MoveTo(-5);
  EXPECT_EQ(s.GetCur(), 0);
  s.MoveToNext(3);
  EXPECT_EQ(s.GetCur(), 3);
  s.MoveTo(10);  // past the end: a write there extends the stream
  s << 'z';
  EXPECT_EQ(s.GetLength(), 11);
  EXPECT_EQ(s.GetCur(), 11);
}

TYPED_TEST(StreamTest, ReadsCutShortKeepTheHighBytesAndStillAdvance) {
  TypeParam s;
  EXPECT_TRUE(s.IsOut());
  s << char{0x11} << char{0x22};
  s.MoveToFirst();
  ZtLong v = 0x7F7F7F7F;
  s >> v;
  EXPECT_EQ(v, 0x7F7F2211);
  EXPECT_EQ(s.GetCur(), 4);
  EXPECT_TRUE(s.IsOut());
  double d = 3.0;
  bool b = true;
  s >> d >> b;
  EXPECT_EQ(d, 3.0);
  EXPECT_TRUE(b);
  EXPECT_EQ(s.GetCur(), 13);
  EXPECT_EQ(s.GetLength(), 2);
  s.MoveTo(1);
  unsigned char out[4] = {9, 9, 9, 9};
  s.Read(out, 4);  // the raw read copies what is there and does not move
  EXPECT_EQ(out[0], 0x22);
  EXPECT_EQ(out[1], 9);
  EXPECT_EQ(s.GetCur(), 1);
  s.Reset();
  EXPECT_EQ(s.GetLength(), 0);
  EXPECT_EQ(s.GetCur(), 0);
  s << 'q';
  EXPECT_EQ(Contents(s), (std::vector<unsigned char>{'q'}));
}

// Counts the typed slots the shorthand reaches, on top of a stream that stores nothing.
class CountingStream : public ZtStream {
 public:
  void WriteLong(ZtLong v) override {
    ++writes;
    ZtStream::WriteLong(v);
  }
  void ReadDouble(double& v) override {
    ++reads;
    ZtStream::ReadDouble(v);
  }
  int writes = 0;
  int reads = 0;
};

TEST(Stream, ThePlainStreamStoresNothingAndNeverCompares) {
  CountingStream s;
  s << ZtLong{5} << 'c' << true;
  double d = 1.5;
  s >> d;
  EXPECT_EQ(s.writes, 1);
  EXPECT_EQ(s.reads, 1);
  EXPECT_EQ(d, 1.5);
  EXPECT_EQ(s.GetCur(), 14);
  EXPECT_EQ(s.GetLength(), 0);
  const ZtStream& other = s;
  EXPECT_FALSE(s == other);
  EXPECT_FALSE(s != other);
  EXPECT_FALSE(s < other);
  EXPECT_FALSE(s > other);
  ZtStream copy(s);
  EXPECT_EQ(copy.GetCur(), 14);
  s.Reset();
  EXPECT_EQ(s.GetCur(), 0);
}

}  // namespace
}  // namespace zt::test
