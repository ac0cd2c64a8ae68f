// tests/text/string_test.cpp
//
// ZtStringA and ZtStringW through one set of typed tests: exact capacities, editing, slicing,
// searching, number tests, printing, calls on the string itself, and all-or-nothing growth.
#include "zt/text/string.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <string>
#include <vector>

#include "tests/support/containers.h"
#include "tests/support/fault_injection.h"
#include "tests/support/text.h"

namespace zt::test {
namespace {

template <class Ch>
class StringTest : public ::testing::Test {
 protected:
  using S = ZtStringT<Ch>;
  static S Make(const char* ascii) { return Str<Ch>(ascii); }
  static std::basic_string<Ch> L(const char* ascii) { return Lit<Ch>(ascii); }
};
using CharTypes = ::testing::Types<char, wchar_t>;
TYPED_TEST_SUITE(StringTest, CharTypes);

TYPED_TEST(StringTest, CapacityIsExactAfterEveryGrowth) {
  typename TestFixture::S s;
  EXPECT_EQ(s.GetLength(), 1);
  EXPECT_TRUE(s.IsEmpty());
  s << TypeParam('a') << TypeParam('b');
  EXPECT_EQ(Text(s), "ab");
  EXPECT_EQ(s.GetLength(), 3);
  s << this->L("cd").c_str() << 42 << -7;
  EXPECT_EQ(Text(s), "abcd42-7");
  EXPECT_EQ(s.GetLength(), 9);
  typename TestFixture::S room(5);
  room << this->L("12345").c_str();
  EXPECT_EQ(room.GetLength(), 6);  // fits: no growth
  room << INT_MIN;
  EXPECT_EQ(Text(room), "12345-2147483648");
  EXPECT_EQ(room.GetLength(), 17);
  const typename TestFixture::S copy(room);
  EXPECT_EQ(copy.GetLength(), 17);
  const TypeParam* buffer = room.GetDataBuffer();
  room = this->Make("xy");  // shorter: the buffer stays
  EXPECT_EQ(room.GetDataBuffer(), buffer);
  room.FreeExtra();
  EXPECT_EQ(room.GetLength(), 3);
  room.ReAllocate(9, true);
  EXPECT_EQ(Text(room), "xy");
  EXPECT_EQ(room.GetLength(), 10);
  room.ReAllocate(1, true);  // below the length: the text is cut to fit
  EXPECT_EQ(Text(room), "x");
  room.ReAllocate(4, false);
  EXPECT_TRUE(room.IsEmpty());
  EXPECT_EQ(room.GetLength(), 5);
  EXPECT_EQ(Text(copy + s), "12345-2147483648abcd42-7");
  EXPECT_EQ((copy + s).GetLength(), 25);
}

TYPED_TEST(StringTest, RealsKeepOneDigitAfterThePoint) {
  const std::vector<std::pair<double, const char*>> table = {{3.14, "3.14"},
                                                             {2, "2.0"},
                                                             {100, "100.0"},
                                                             {0.5, "0.5"},
                                                             {-0.000001, "-0.000001"},
                                                             {1e-7, "0.0"},
                                                             {0, "0.0"},
                                                             {2.5, "2.5"},
                                                             {-2, "-2.0"},
                                                             {1e20, "100000000000000000000.0"},
                                                             {0.1234567, "0.123457"}};
  for (const auto& [v, expected] : table) {
    auto s = this->Make("x");
    s << v;
    EXPECT_EQ(Text(s), std::string("x") + expected) << v;
    EXPECT_EQ(s.GetLength(), 2 + std::snprintf(nullptr, 0, "%f", v));  // grown before the cut
  }
}

TYPED_TEST(StringTest, EditingMembersMoveTheRightCharacters) {
  const auto base = this->Make("abcdef");
  auto s = base;
  s.Del(1, 3);
  EXPECT_EQ(Text(s), "aef");
  s = base;
  s.Del(2);
  EXPECT_EQ(Text(s), "abdef");
  s.DelLeft(2);
  EXPECT_EQ(Text(s), "def");
  s.DelRight(2);
  EXPECT_EQ(Text(s), "d");
  s.Del(3, 1);  // out of limits: ignored
  s.DelRight(9);
  EXPECT_EQ(Text(s), "d");
  s = this->Make("ab");
  s.Insert(0, TypeParam('x'));
  s.Insert(3, TypeParam('y'));
  EXPECT_EQ(Text(s), "xaby");
  s = this->Make("abcd");
  EXPECT_TRUE(s.Insert(2, this->Make("XY")));
  EXPECT_EQ(Text(s), "abXYcd");
  EXPECT_EQ(s.GetLength(), 7);
  EXPECT_FALSE(s.Insert(7, this->Make("Z")));
  EXPECT_FALSE(s.Insert(-1, this->Make("Z")));
  s.Reverse(0, -1);
  EXPECT_EQ(Text(s), "dcYXba");
  s.Reverse(1, 3);
  s.Reverse(2, 9);  // past the text: ignored
  EXPECT_EQ(Text(s), "dXYcba");
  auto upper = this->Make("aZ1");
  upper << static_cast<TypeParam>(0xE9);  // an accented small e stays as it is
  upper.MakeUpper();
  EXPECT_EQ(Text(upper), "AZ1\xE9");
  upper.Reset();
  EXPECT_TRUE(upper.IsEmpty());
  EXPECT_EQ(upper.GetLength(), 5);
}

TYPED_TEST(StringTest, SlicesAndCharacterSearch) {
  const auto s = this->Make("abcdef");
  EXPECT_EQ(Text(s.Mid(1, 3)), "bcd");
  EXPECT_EQ(s.Mid(1, 3).GetLength(), 4);
  EXPECT_EQ(Text(s.Left(2)), "ab");
  EXPECT_EQ(Text(s.Right(2)), "ef");
  EXPECT_TRUE(s.Mid(2, 1).IsEmpty());
  EXPECT_TRUE(s.Left(7).IsEmpty());  // out of limits: empty
  const auto t = this->Make("abcabc");
  const TypeParam c('c');
  EXPECT_EQ(t.Find(c), 2);
  EXPECT_EQ(t.Find(c, 3), 5);
  EXPECT_EQ(t.Find(c, 3, 4), -1);
  EXPECT_EQ(t.Find(c, 3, 40), 5);
  EXPECT_EQ(t.ReverseFind(c), 5);
  EXPECT_EQ(t.Find(TypeParam('z')), -1);
  EXPECT_EQ(t.ReverseFind(TypeParam('z')), -1);
}

TYPED_TEST(StringTest, ComparesUnitsAsUnsignedUpToTheTerminator) {
  const auto s = this->Make("abc");
  EXPECT_TRUE(s == this->Make("abc"));
  EXPECT_TRUE(s != this->L("abd").c_str());
  EXPECT_TRUE(s < this->L("abd").c_str());
  EXPECT_TRUE(s > this->L("ab").c_str());
  EXPECT_FALSE(s < nullptr);
  auto high = this->Make("a");
  high << static_cast<TypeParam>(-1);  // 0xFF or the largest wide unit
  EXPECT_TRUE(high > this->L("ab").c_str());
  auto zero = this->Make("a");
  zero << TypeParam(0) << TypeParam('b');
  EXPECT_EQ(zero.Length(), 3);
  EXPECT_TRUE(zero == this->L("a").c_str());
}

TYPED_TEST(StringTest, NumberTestsFollowAtoiAndAtof) {
  const std::vector<std::pair<const char*, bool>> ints = {
      {"12", true},  {"+7", true},  {"-3", true},  {"12abc", true},
      {" 12", true}, {"0", true},   {"", false},   {"abc", false},
      {"00", false}, {"-0", false}, {" 0", false}, {"99999999999", true}};
  for (const auto& [text, expected] : ints) {
    EXPECT_EQ(this->Make(text).IsIntNumber(), expected) << text;
  }
  const std::vector<std::pair<const char*, bool>> reals = {
      {"1.5", true},   {"-2", true},    {"3e4", true},  {"7abc", true}, {"5", true},
      {".0", true},    {"0.0", true},   {"0.", true},   {"nan", true},  {"0", false},
      {"0.00", false}, {"-0.0", false}, {"abc", false}, {"", false},    {"1e-999", false}};
  for (const auto& [text, expected] : reals) {
    EXPECT_EQ(this->Make(text).IsFloatNumber(), expected) << text;
  }
}

TYPED_TEST(StringTest, FormatLeavesTheFixedBufferAndCutsLongOutput) {
  auto s = this->Make("old");
  s.Format(this->L("%d-%s").c_str(), 7, this->L("x").c_str());
  EXPECT_EQ(Text(s), "7-x");
  EXPECT_EQ(s.GetLength(), 1025);
  s.FreeExtra();
  EXPECT_EQ(s.GetLength(), 4);
  s.Format(this->L("%s!").c_str(), static_cast<const TypeParam*>(s));  // its own text as argument
  EXPECT_EQ(Text(s), "7-x!");
  const std::basic_string<TypeParam> longText(2000, TypeParam('z'));
  s.Format(this->L("%s").c_str(), longText.c_str());
  EXPECT_EQ(s.Length(), 1024);
  EXPECT_EQ(s.GetLength(), 1025);
  s.Format(nullptr);
  EXPECT_TRUE(s.IsEmpty());
}

TYPED_TEST(StringTest, ArgumentsAreReadAsTheyWereWhenTheCallBegan) {
  auto s = this->Make("ab");
  s << s;
  EXPECT_EQ(Text(s), "abab");
  EXPECT_EQ(s.GetLength(), 5);
  s << static_cast<const TypeParam*>(s) + 2;  // a text inside the buffer being replaced
  EXPECT_EQ(Text(s), "ababab");
  s = this->Make("abc");
  EXPECT_TRUE(s.Insert(1, s));
  EXPECT_EQ(Text(s), "aabcbc");
  const auto& same = s;
  s = same;
  EXPECT_EQ(Text(s), "aabcbc");
  s = static_cast<const TypeParam*>(s) + 3;
  EXPECT_EQ(Text(s), "cbc");
  EXPECT_EQ(s.Replace(s, this->Make("x")), 1);
  EXPECT_EQ(Text(s), "x");
  s = this->Make("abc");
  EXPECT_EQ(s.Replace(this->Make("b"), s), 1);
  EXPECT_EQ(Text(s), "aabcc");
}

TYPED_TEST(StringTest, NullTextsGiveEmptyStrings) {
  using Other = typename TestFixture::S::OtherChar;
  EXPECT_TRUE(typename TestFixture::S(static_cast<const TypeParam*>(nullptr)).IsEmpty());
  EXPECT_TRUE(typename TestFixture::S(static_cast<const Other*>(nullptr)).IsEmpty());
  auto s = this->Make("abc");
  s = static_cast<const TypeParam*>(nullptr);
  EXPECT_TRUE(s.IsEmpty());
  const typename TestFixture::S converted(Lit<Other>("abc").c_str());
  EXPECT_EQ(Text(converted), "abc");
}

TYPED_TEST(StringTest, FailureTablesAreTheLibrarysOwn) {
  const std::vector<std::pair<const char*, std::vector<ZtLong>>> table = {
      {"abab", {-1, 0, 0, 0}},
      {"aaaa", {-1, 0, 0, 0}},
      {"aab", {-1, 0, 1}},
      {"abac", {-1, 0, 0, 1}},
      {"abcabd", {-1, 0, 0, 0, 0, 2}},
      {"ababc", {-1, 0, 0, 0, 2}},
      {"a", {-1}},
      {"aabaabaaa", {-1, 0, 1, 0, 0, 1, 0, 0, 5}}};
  for (const auto& [pattern, expected] : table) {
    std::vector<ZtLong> next(expected.size(), 99);
    this->Make(pattern).CreateNextTable(next.data());
    EXPECT_EQ(next, expected) << pattern;
  }
}

TYPED_TEST(StringTest, FindsTheFirstAndEveryNonOverlappingOccurrence) {
  const auto s = this->Make("abcabc");
  const auto bc = this->Make("bc");
  EXPECT_EQ(s.Find(bc), 1);
  EXPECT_EQ(s.Find(bc, 2), 4);
  EXPECT_EQ(s.Find(bc, 2, 4), -1);  // the occurrence at 4 ends at 5
  EXPECT_EQ(s.Find(typename TestFixture::S()), -1);
  VectorQuene hits;
  EXPECT_EQ(this->Make("aaaa").Find(this->Make("aa"), hits), 2);
  EXPECT_EQ(hits.items(), (std::vector<ZtLong>{0, 2}));
  EXPECT_EQ(this->Make("aaaaa").Find(this->Make("aa"), hits, 1, 3), 3);  // earlier hits count
  EXPECT_EQ(hits.items(), (std::vector<ZtLong>{0, 2, 1}));
  EXPECT_EQ(s.Find(typename TestFixture::S(), hits), -1);
  EXPECT_EQ(hits.GetCount(), 3);
  typename TestFixture::S out = this->Make("keep");
  EXPECT_EQ(s.FindEx(bc, out, 1), -1);
  EXPECT_EQ(Text(out), "keep");
}

// Every text over {a, b} up to 9 characters against every pattern up to 4: the scan's first hit
// and its hit list must be the leftmost, non-overlapping ones.
TYPED_TEST(StringTest, SearchAgreesWithAPlainScanOnEverySmallText) {
  auto word = [](unsigned bits, int n) {
    std::string w;
    for (int i = 0; i < n; ++i) w += (bits >> i & 1U) != 0 ? 'b' : 'a';
    return w;
  };
  for (int n = 0; n <= 9; ++n) {
    for (unsigned tb = 0; tb < (1U << n); ++tb) {
      const std::string text = word(tb, n);
      const auto s = this->Make(text.c_str());
      for (int m = 1; m <= 4; ++m) {
        for (unsigned pb = 0; pb < (1U << m); ++pb) {
          const std::string pattern = word(pb, m);
          const auto first = text.find(pattern);
          ASSERT_EQ(s.Find(this->Make(pattern.c_str())),
                    first == std::string::npos ? -1 : static_cast<ZtLong>(first));
          std::vector<ZtLong> expected;
          for (auto at = first; at != std::string::npos; at = text.find(pattern, at + m)) {
            expected.push_back(static_cast<ZtLong>(at));
          }
          VectorQuene hits;
          s.Find(this->Make(pattern.c_str()), hits);
          ASSERT_EQ(hits.items(), expected) << text << " / " << pattern;
        }
      }
    }
  }
}

TYPED_TEST(StringTest, ReplaceBuildsTheExactFinalBuffer) {
  auto s = this->Make("abcab");
  EXPECT_EQ(s.Replace(this->Make("ab"), this->Make("X")), 2);
  EXPECT_EQ(Text(s), "XcX");
  EXPECT_EQ(s.GetLength(), 4);
  s = this->Make("aba");
  EXPECT_EQ(s.Replace(this->Make("a"), this->Make("aa")), 2);  // the new text is not searched
  EXPECT_EQ(Text(s), "aabaa");
  s = this->Make("aaaaa");
  EXPECT_EQ(s.Replace(this->Make("a"), this->Make("-"), 1, 3), 3);
  EXPECT_EQ(Text(s), "a---a");
  s = this->Make("abab");
  EXPECT_EQ(s.Replace(this->Make("ab"), this->Make("abab")), 2);
  EXPECT_EQ(Text(s), "abababab");
  EXPECT_EQ(s.Replace(this->Make("abab"), this->Make("ab")), 2);
  EXPECT_EQ(Text(s), "abab");
  s = this->Make("xabyab");
  EXPECT_EQ(s.Del(this->Make("ab")), 2);
  EXPECT_EQ(Text(s), "xy");
  EXPECT_EQ(s.GetLength(), 3);
  const auto before = StringState(s);
  EXPECT_EQ(s.Del(this->Make("zz")), 0);
  EXPECT_EQ(s.Replace(typename TestFixture::S(), this->Make("q")), -1);
  s.ReplaceEx(this->Make("x"), this->Make("q"), 0);
  EXPECT_EQ(StringState(s), before);
}

TYPED_TEST(StringTest, FailedAllocationLeavesTheStringAsItWas) {
  auto s = this->Make("abc");
  const auto state = [](const auto& x) { return StringState(x); };
  const auto xy = this->Make("XY");
  const auto longer = this->Make("a text longer than any before it");
  const auto b = this->Make("b");
  const auto format = this->L("%d");
  ExpectStrongGuarantee(
      s, [](auto& x) { x << TypeParam('d'); }, state);
  ExpectStrongGuarantee(
      s, [](auto& x) { x << x; }, state);
  ExpectStrongGuarantee(
      s, [&](auto& x) { x.Insert(1, xy); }, state);
  ExpectStrongGuarantee(
      s, [](auto& x) { x << 2.5; }, state);
  ExpectStrongGuarantee(
      s, [&](auto& x) { x = longer; }, state);
  ExpectStrongGuarantee(
      s, [&](auto& x) { x.Replace(b, xy); }, state);
  ExpectStrongGuarantee(
      s, [&](auto& x) { x.Format(format.c_str(), 5); }, state);
}

}  // namespace
}  // namespace zt::test
