// tests/platform/utf8_test.cpp
//
// The narrow side outside Windows: UTF-8 <-> UTF-32, with U+FFFD for broken input. Built where
// narrow text is UTF-8; code_page_windows.cpp checks the Windows code pages.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "zt/text/string.h"

namespace zt::test {
namespace {

std::wstring Wide(const char* s) {
  const ZtStringW w(s);
  return std::wstring(static_cast<const wchar_t*>(w), w.Length());
}

TEST(Conversion, NonAsciiTextRoundTrips) {
  const char* utf8 = "h\xC3\xA9llo \xE2\x82\xAC \xF0\x9D\x84\x9E";
  EXPECT_EQ(Wide(utf8), L"h\u00E9llo \u20AC \U0001D11E");
  const ZtStringA back{ZtStringW(utf8)};
  EXPECT_EQ(std::string(back), utf8);
  EXPECT_EQ(back.GetLength(), back.Length() + 1);
}

TEST(Conversion, BrokenInputBecomesReplacementCharacters) {
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

TEST(Conversion, FormatConvertsOtherWidthTextsAsUtf8WithoutALocale) {
  ZtStringA a;
  a.Format("name=%S;%C", L"\u00E9t\u00E9", L'\u20AC');
  EXPECT_EQ(std::string(a), "name=\xC3\xA9t\xC3\xA9;\xE2\x82\xAC");
  ZtStringW w;
  w.Format(L"%S|%.1S", "\xC3\xA9t\xC3\xA9", "\xC3\xA9");  // the precision counts bytes
  EXPECT_EQ(std::wstring(w), L"\u00E9t\u00E9|\uFFFD");
}

}  // namespace
}  // namespace zt::test
