// tests/platform/text_test.cpp
//
// The platform layer as the strings see it: UTF-8 <-> UTF-32 conversion with U+FFFD for broken
// input, the Windows printing conventions in both widths, and the random draws.
#include "zt/platform/text.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "tests/support/text.h"
#include "zt/platform/random.h"
#include "zt/text/string.h"

namespace zt::test {
namespace {

std::wstring Wide(const char* s) {
  const ZtStringW w(s);
  return std::wstring(static_cast<const wchar_t*>(w), w.Length());
}

// The UTF-8 rules hold where narrow text is UTF-8; Windows converts with its ANSI code page.
#define SKIP_UNLESS_UTF8() \
  if (!zt::platform::kNarrowIsUtf8) GTEST_SKIP() << "narrow text is not UTF-8 here"

TEST(Conversion, NonAsciiTextRoundTrips) {
  SKIP_UNLESS_UTF8();
  const char* utf8 = "h\xC3\xA9llo \xE2\x82\xAC \xF0\x9D\x84\x9E";
  EXPECT_EQ(Wide(utf8), L"h\u00E9llo \u20AC \U0001D11E");
  const ZtStringA back{ZtStringW(utf8)};
  EXPECT_EQ(std::string(back), utf8);
  EXPECT_EQ(back.GetLength(), back.Length() + 1);
}

TEST(Conversion, WideTextHoldsThePlatformsCodeUnits) {
  // UTF-16 on Windows, where a character beyond the Basic Multilingual Plane takes a surrogate
  // pair; UTF-32 elsewhere.
  EXPECT_EQ(ZtStringW(L"\U0001D11E").Length(), sizeof(wchar_t) == 2 ? 2 : 1);
  EXPECT_EQ(std::string(ZtStringA(ZtStringW("plain text"))), "plain text");
  if (zt::platform::kNarrowIsUtf8) {
    EXPECT_EQ(ZtStringA(L"\U0001D11E").Length(), 4);
  }
}

TEST(Conversion, BrokenInputBecomesReplacementCharacters) {
  SKIP_UNLESS_UTF8();
  const std::vector<std::pair<const char*, std::wstring>> table = {
      {"a\xFF"
       "b",
       L"a\uFFFDb"},                                      // a byte that never starts a character
      {"\xE2\x82", L"\uFFFD"},                            // truncated at the end
      {"\xE2\x82z", L"\uFFFDz"},                          // truncated before another character
      {"\xC0\xAF", L"\uFFFD\uFFFD"},                      // overlong
      {"\xED\xA0\x80", L"\uFFFD\uFFFD\uFFFD"},            // an encoded surrogate
      {"\xF4\x90\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD"},  // past U+10FFFF
      {"\x80", L"\uFFFD"}};
  for (const auto& [in, expected] : table) EXPECT_EQ(Wide(in), expected) << in;
  const wchar_t bad[] = {L'a', static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0x110000), 0};
  EXPECT_EQ(std::string(ZtStringA(bad)), "a\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(Printing, WideFormatsTakeWideTextsAndCapitalLettersTheOtherWidth) {
  ZtStringW w;
  w.Format(L"%s|%S|%c|%C|%ls|%hs|%5.2f|%I64d|%%", L"wide", "narrow", L'w', 'n', L"l", "h", 2.5,
           static_cast<long long>(1) << 40);
  EXPECT_EQ(std::wstring(w), L"wide|narrow|w|n|l|h| 2.50|1099511627776|%");
  ZtStringA a;
  a.Format("%s|%S|%c|%C|%ls|%hs|%ld|%I32d", "narrow", L"wide", 'n', L'w', L"l", "h", 7L, 9);
  EXPECT_EQ(std::string(a), "narrow|wide|n|w|l|h|7|9");
}

TEST(Random, DrawsStayInFifteenBitsAndFollowSrand) {
  std::srand(11);
  std::vector<int> first(1000);
  for (int& v : first) v = zt::platform::Rand15();
  std::srand(11);
  for (int v : first) ASSERT_TRUE(v >= 0 && v <= 32767 && zt::platform::Rand15() == v) << v;
}

}  // namespace
}  // namespace zt::test
