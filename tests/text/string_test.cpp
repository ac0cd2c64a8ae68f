// tests/text/string_test.cpp
//
// ZtStringA and ZtStringW through one set of typed tests: exact capacities, editing, slicing,
// searching, number tests, printing, calls on the string itself, and all-or-nothing growth.
#include "zt/text/string.h"

#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/containers.h"
#include "tests/support/fault_injection.h"
#include "tests/support/text.h"

namespace zt::test {
namespace {

using Longs = std::vector<ZtLong>;

template <class Ch>
class StringTest : public ::testing::Test {
 protected:
  using S = StringOf<Ch>;
  static S M(const char* ascii) { return Str<Ch>(ascii); }
  static std::basic_string<Ch> L(const char* ascii) { return Lit<Ch>(ascii); }

  // Runs each edit on a fresh string holding its first text and expects the second text, the
  // terminator in place, and the capacity when one is given.
  using Edit = std::tuple<const char*, std::function<void(S&)>, const char*, ZtLong>;
  static void ExpectEdits(const std::vector<Edit>& edits) {
    for (const auto& [start, edit, expected, capacity] : edits) {
      S s = M(start);
      edit(s);
      EXPECT_EQ(Text(s), expected) << start;
      EXPECT_EQ(s.GetDataBuffer()[s.Length()], Ch(0)) << start;
      EXPECT_TRUE(capacity == 0 || s.GetLength() == capacity) << start << ": " << s.GetLength();
    }
  }
};
using CharTypes = ::testing::Types<char, wchar_t>;
TYPED_TEST_SUITE(StringTest, CharTypes);

TYPED_TEST(StringTest, GrowthIsExactAndPrintingKeepsItsBuffer) {
  using S = typename TestFixture::S;
  const auto L = [](const char* t) { return Lit<TypeParam>(t); };
  const auto M = [](const char* t) { return Str<TypeParam>(t); };
  const std::string zs(1024, 'z');
  this->ExpectEdits({
      {"", [](S& s) { s << TypeParam('a') << TypeParam('b'); }, "ab", 3},
      {"ab", [&](S& s) { s << L("cd").c_str() << 42 << -7; }, "abcd42-7", 9},
      {"1", [](S& s) { s << INT_MIN; }, "1-2147483648", 13},
      {"abcdef", [&](S& s) { s = M("xy"); }, "xy", 7},  // shorter: the buffer stays
      {"abcdef", [&](S& s) { (s = M("xy")).FreeExtra(); }, "xy", 3},
      {"ab", [](S& s) { s = S(s) + s; }, "abab", 5},
      {"xy", [](S& s) { s.ReAllocate(9, true); }, "xy", 10},
      {"xy", [](S& s) { s.ReAllocate(1, true); }, "x", 2},  // below the length: cut to fit
      {"xy", [](S& s) { s.ReAllocate(4, false); }, "", 5},
      {"x", [](S& s) { s << 3.14; }, "x3.14", 10},  // grown to "%f"'s text, then cut
      {"x", [](S& s) { s << 2.0; }, "x2.0", 10},
      {"x", [](S& s) { s << 100.0; }, "x100.0", 12},
      {"x", [](S& s) { s << -1e-6; }, "x-0.000001", 11},
      {"x", [](S& s) { s << 1e-7; }, "x0.0", 10},
      {"x", [](S& s) { s << 0.1234567; }, "x0.123457", 10},
      {"x", [](S& s) { s << 1e20; }, "x100000000000000000000.0", 30},
      {"old", [&](S& s) { s.Format(L("%d-%s").c_str(), 7, L("x").c_str()); }, "7-x", 1025},
      {"old", [&](S& s) { s.Format(L("%d-%s").c_str(), 7, L("x").c_str()).FreeExtra(); }, "7-x", 4},
      {"", [&](S& s) { s.Format(L("%s").c_str(), L(zs.c_str()).append(L("zz")).c_str()); },
       zs.c_str(), 1025},
      {"old", [&](S& s) { s.Format(L("a%cb").c_str(), 0); }, "a", 1025},  // a 0 ends the text
  });
  S room(9);
  room << L("12345").c_str();  // it fits: no growth; a copy is exact
  EXPECT_EQ(Both(room.GetLength(), S(room).GetLength()), Both(10, 6));
}

TYPED_TEST(StringTest, EditingMembersMoveTheRightCharacters) {
  using S = typename TestFixture::S;
  const auto xy = this->M("XY");
  const TypeParam x('x');
  this->ExpectEdits({
      {"abcdef", [](S& s) { s.Del(1, 3); }, "aef", 7},
      {"abcdef", [](S& s) { s.Del(2); }, "abdef", 0},
      {"abcdef", [](S& s) { s.DelLeft(2); }, "cdef", 0},
      {"abcdef", [](S& s) { s.DelRight(2); }, "abcd", 0},
      {"abcdef", [](S& s) { s.Del(3, 1), s.Del(6), s.DelLeft(7), s.DelRight(-1); }, "abcdef", 0},
      {"ab", [&](S& s) { s.Insert(0, x), s.Insert(3, x), s.Insert(5, x); }, "xabx", 5},
      {"abcd", [&](S& s) { EXPECT_TRUE(s.Insert(2, xy)); }, "abXYcd", 7},
      {"abcd", [&](S& s) { EXPECT_FALSE(s.Insert(5, xy) || s.Insert(-1, xy)); }, "abcd", 5},
      {"abcdef", [](S& s) { s.Reverse(), s.Reverse(1, 3), s.Reverse(2, 9); }, "fcdeba", 0},
      {"aZ1", [](S& s) { (s << static_cast<TypeParam>(0xE9)).MakeUpper(); }, "AZ1\xE9", 5},
      {"abc", [](S& s) { s.Reset(); }, "", 4},
      {"abc", [](S& s) { s = static_cast<const TypeParam*>(nullptr); }, "", 4},
  });
  using Other = std::conditional_t<std::is_same_v<TypeParam, char>, wchar_t, char>;
  EXPECT_TRUE(S(static_cast<const TypeParam*>(nullptr)).IsEmpty());
  EXPECT_TRUE(S(static_cast<const Other*>(nullptr)).IsEmpty());
  EXPECT_EQ(Text(S(Lit<Other>("abc").c_str())), "abc");
}

TYPED_TEST(StringTest, ArgumentsAreReadAsTheyWereWhenTheCallBegan) {
  using S = typename TestFixture::S;
  const auto M = [](const char* t) { return Str<TypeParam>(t); };
  const auto percent = this->L("%s!");
  this->ExpectEdits({
      {"ab", [](S& s) { s << s; }, "abab", 5},
      {"abab", [](S& s) { s << static_cast<const TypeParam*>(s) + 2; }, "ababab", 7},
      {"abc", [](S& s) { EXPECT_TRUE(s.Insert(1, s)); }, "aabcbc", 7},
      {"abc", [](S& s) { s = std::as_const(s); }, "abc", 4},
      {"aabcbc", [](S& s) { s = static_cast<const TypeParam*>(s) + 3; }, "cbc", 7},
      {"abc", [&](S& s) { EXPECT_EQ(s.Replace(s, M("x")), 1); }, "x", 2},
      {"abc", [&](S& s) { EXPECT_EQ(s.Replace(M("b"), s), 1); }, "aabcc", 6},
      {"7-x", [&](S& s) { s.Format(percent.c_str(), static_cast<const TypeParam*>(s)); }, "7-x!",
       1025},
  });
}

TYPED_TEST(StringTest, SlicesAndCharacterSearch) {
  using S = typename TestFixture::S;
  auto s = this->M("abcdef");
  EXPECT_EQ(Both(s.Mid(1, 3).Length(), s.Mid(1, 3).GetLength()), Both(3, 4));
  EXPECT_EQ(Text(s.Mid(1, 3)) + Text(s.Left(2)) + Text(s.Right(2)), "bcdabef");
  EXPECT_TRUE(s.Mid(2, 1).IsEmpty() && s.Left(7).IsEmpty());  // out of limits: empty
  const auto t = this->M("abcabc");
  const TypeParam c('c');
  const TypeParam z('z');
  const TypeParam nul(0);
  // A `to` past the text stops at the buffer's last index, where the terminator stands.
  EXPECT_EQ((Longs{t.Find(c), t.Find(c, 3), t.Find(c, 3, 4), t.Find(c, 3, 40), t.ReverseFind(c),
                   t.Find(z), t.ReverseFind(z), t.Find(nul, 0, 100), t.Find(nul), S().Find(nul)}),
            (Longs{2, 5, -1, 5, 5, -1, -1, 6, -1, -1}));
}

TYPED_TEST(StringTest, ComparesUnitsAsUnsignedUpToTheTerminator) {
  const auto s = this->M("abc");
  EXPECT_TRUE(s == this->M("abc") && s != this->L("abd").c_str());
  EXPECT_TRUE(s < this->L("abd").c_str() && s > this->L("ab").c_str());
  auto high = this->M("a");
  high << static_cast<TypeParam>(-1);  // 0xFF or the largest wide unit
  EXPECT_TRUE(high > this->L("ab").c_str());
  auto zero = this->M("a");
  zero << TypeParam(0) << TypeParam('b');
  EXPECT_EQ(zero.Length(), 3);
  EXPECT_TRUE(zero == this->L("a").c_str());
  auto assigned = this->M("wxyz");  // assignment copies past the 0, as the copy does
  assigned = zero;
  EXPECT_EQ(Both(assigned.Length(), typename TestFixture::S(zero).Length()), Both(3, 3));
  EXPECT_EQ(Text(assigned), Text(zero));
}

// Inherited array members may shrink the buffer under the text or overwrite its terminator. The
// string's own members then take the text to end where the buffer does and stay inside the buffer
// (the sanitizer and valgrind runs check that); a member that changes the text terminates it again.
TYPED_TEST(StringTest, OwnMembersStayInsideABufferThatArrayMembersChanged) {
  using S = typename TestFixture::S;
  const std::string nul(1, '\0');
  // The damage, the text the string's members then see, and that text after MakeUpper,
  // Replace("B", "yy") and appending 'x'.
  const std::vector<std::tuple<const char*, std::function<void(S&)>, std::string, std::string>>
      damages = {
          {"DelTail twice", [](S& s) { s.DelTail(), s.DelTail(); }, "ab", "Ayyx"},
          {"DelHead", [](S& s) { s.DelHead(); }, "bc" + nul, "yyC" + nul + "x"},
          {"SetAt on the terminator", [](S& s) { s.SetAt(3, 'x'); }, "abc", "AyyCx"},
          {"the array's Reset", [](S& s) { static_cast<ZtArray<TypeParam>&>(s).Reset(); }, "", "x"},
      };
  for (const auto& [name, damage, text, edited] : damages) {
    S s = this->M("abc");
    damage(s);
    const auto seen = Lit<TypeParam>(text.c_str());  // up to the first 0
    const auto at = [&](std::size_t i) { return static_cast<ZtLong>(i); };
    const TypeParam b('b');
    EXPECT_TRUE(s == seen.c_str() && !(s < seen.c_str()) && !(s > seen.c_str())) << name;
    EXPECT_EQ((Longs{s.Find(b), s.Find(b, 0, 100), s.ReverseFind(b), S(s).Length()}),
              (Longs{at(text.find('b')), at(text.find('b')), at(text.rfind('b')), at(text.size())}))
        << name;
    EXPECT_EQ(std::make_pair(Text(S(s)), Text(s.Left(at(text.size())))), std::make_pair(text, text))
        << name;
    EXPECT_FALSE(s.IsIntNumber() || s.IsFloatNumber()) << name;
    s.MakeUpper();
    s.Replace(this->M("B"), this->M("yy"));
    s << TypeParam('x');
    EXPECT_EQ(Text(s), edited) << name;
    EXPECT_EQ(s.GetDataBuffer()[s.Length()], TypeParam(0)) << name;
  }
}

TYPED_TEST(StringTest, NumberTestsFollowAtoiAndAtof) {
  struct Case {
    const char* text;
    bool isInt;
    bool isFloat;
  };
  // clang-format off
  const std::vector<Case> table = {
      {"12", true, true}, {"+7", true, true}, {"-3", true, true}, {"12abc", true, true},
      {" 12", true, true}, {"99999999999", true, true}, {"1.5", true, true}, {"3e4", true, true},
      {"1e-999", true, false}, {"0", true, false}, {".0", false, true}, {"0.0", false, true},
      {"0.", false, true}, {"nan", false, true}, {"", false, false}, {"abc", false, false},
      {"00", false, false}, {"-0", false, false}, {" 0", false, false}, {"0.00", false, false},
      {"-0.0", false, false}};
  // clang-format on
  for (const Case& c : table) {
    EXPECT_EQ(this->M(c.text).IsIntNumber(), c.isInt) << c.text;
    EXPECT_EQ(this->M(c.text).IsFloatNumber(), c.isFloat) << c.text;
  }
}

TYPED_TEST(StringTest, FailureTablesAreTheLibrarysOwn) {
  // clang-format off
  const std::vector<std::pair<const char*, std::vector<ZtLong>>> table = {
      {"abab", {-1, 0, 0, 0}}, {"aaaa", {-1, 0, 0, 0}}, {"aab", {-1, 0, 1}}, {"abac", {-1, 0, 0, 1}},
      {"abcabd", {-1, 0, 0, 0, 0, 2}}, {"ababc", {-1, 0, 0, 0, 2}}, {"a", {-1}},
      {"aabaabaaa", {-1, 0, 1, 0, 0, 1, 0, 0, 5}}};
  // clang-format on
  for (const auto& [pattern, expected] : table) {
    std::vector<ZtLong> next(expected.size(), 99);
    this->M(pattern).CreateNextTable(next.data());
    EXPECT_EQ(next, expected) << pattern;
  }
}

TYPED_TEST(StringTest, FindsTheFirstAndEveryNonOverlappingOccurrence) {
  const auto s = this->M("abcabc");
  const auto bc = this->M("bc");
  const typename TestFixture::S none;
  // The occurrence at 4 ends at 5, outside [2, 4].
  EXPECT_EQ((Longs{s.Find(bc), s.Find(bc, 2), s.Find(bc, 2, 4), s.Find(none)}),
            (Longs{1, 4, -1, -1}));
  ZtListQuene<ZtLong> hits;  // the count includes earlier hits
  EXPECT_EQ((Longs{this->M("aaaa").Find(this->M("aa"), hits),
                   this->M("aaaaa").Find(this->M("aa"), hits, 1, 3), s.Find(none, hits)}),
            (Longs{2, 3, -1}));
  EXPECT_EQ(Items(hits), (Longs{0, 2, 1}));
  auto out = this->M("keep");
  EXPECT_EQ(s.FindEx(bc, out, 1), -1);
  EXPECT_EQ(Text(out), "keep");
}

// Every text over {a, b} up to 9 characters against every pattern up to 4: the first hit and the
// hit list must be the leftmost non-overlapping occurrences.
TYPED_TEST(StringTest, SearchAgreesWithAPlainScanOnEverySmallText) {
  const auto word = [](unsigned bits, int n) {
    std::string w;
    for (int i = 0; i < n; ++i) w += (bits >> i & 1U) != 0 ? 'b' : 'a';
    return w;
  };
  for (int n = 0; n <= 9; ++n) {
    for (unsigned tb = 0; tb < (1U << n); ++tb) {
      const std::string text = word(tb, n);
      const auto s = this->M(text.c_str());
      for (int m = 1; m <= 4; ++m) {
        for (unsigned pb = 0; pb < (1U << m); ++pb) {
          const std::string pattern = word(pb, m);
          std::vector<ZtLong> expected;
          for (auto at = text.find(pattern); at != std::string::npos;
               at = text.find(pattern, at + m)) {
            expected.push_back(static_cast<ZtLong>(at));
          }
          ZtListQuene<ZtLong> hits;
          s.Find(this->M(pattern.c_str()), hits);
          ASSERT_EQ(Items(hits), expected) << text << " / " << pattern;
          ASSERT_EQ(s.Find(this->M(pattern.c_str())), expected.empty() ? -1 : expected[0]);
        }
      }
    }
  }
}

TYPED_TEST(StringTest, ReplaceBuildsTheExactFinalBuffer) {
  using S = typename TestFixture::S;
  const auto M = [](const char* t) { return Str<TypeParam>(t); };
  this->ExpectEdits({
      {"abcab", [&](S& s) { EXPECT_EQ(s.Replace(M("ab"), M("X")), 2); }, "XcX", 4},
      {"aba", [&](S& s) { EXPECT_EQ(s.Replace(M("a"), M("aa")), 2); }, "aabaa", 6},
      {"aaaaa", [&](S& s) { EXPECT_EQ(s.Replace(M("a"), M("-"), 1, 3), 3); }, "a---a", 6},
      {"abab", [&](S& s) { EXPECT_EQ(s.Replace(M("ab"), M("abab")), 2); }, "abababab", 9},
      {"abababab", [&](S& s) { EXPECT_EQ(s.Replace(M("abab"), M("ab")), 2); }, "abab", 5},
      {"xabyab", [&](S& s) { EXPECT_EQ(s.Del(M("ab")), 2); }, "xy", 3},
  });
  auto s = this->M("xy");
  const auto before = StringState(s);
  EXPECT_EQ(s.Del(this->M("zz")), 0);
  EXPECT_EQ(s.Replace(S(), this->M("q")), -1);
  s.ReplaceEx(this->M("x"), this->M("q"), 0);
  EXPECT_EQ(StringState(s), before);
}

TYPED_TEST(StringTest, FailedAllocationLeavesTheStringAsItWas) {
  auto s = this->M("abc");
  const auto state = [](const auto& x) { return StringState(x); };
  const auto xy = this->M("XY");
  const auto longer = this->M("a text longer than any before it");
  const auto format = this->L("%d");
  const std::vector<std::function<void(typename TestFixture::S&)>> growths = {
      [](auto& x) { x << TypeParam('d'); },
      [](auto& x) { x << x; },
      [&](auto& x) { x.Insert(1, xy); },
      [](auto& x) { x << 2.5; },
      [&](auto& x) { x = longer; },
      [&](auto& x) { x.Replace(x.Left(1), xy); },
      [&](auto& x) { x.Format(format.c_str(), 5); }};
  for (const auto& growth : growths) ExpectStrongGuarantee(s, growth, state);
}

}  // namespace
}  // namespace zt::test
