// tests/platform/text_test.cpp
//
// The platform layer as the strings see it: wide text in the platform's code units, the Windows
// printing conventions in both widths, and the random draws. The narrow encodings have their own
// files: utf8_test.cpp (Linux) and code_page_windows.cpp (Windows).
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

TEST(Conversion, WideTextHoldsThePlatformsCodeUnits) {
  // UTF-16 on Windows, where a character beyond the Basic Multilingual Plane takes a surrogate
  // pair; UTF-32 elsewhere.
  EXPECT_EQ(ZtStringW(L"\U0001D11E").Length(), sizeof(wchar_t) == 2 ? 2 : 1);
  EXPECT_EQ(std::string(ZtStringA(ZtStringW("plain text"))), "plain text");
  if (zt::platform::kNarrowIsUtf8) {
    EXPECT_EQ(ZtStringA(L"\U0001D11E").Length(), 4);
  }
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
