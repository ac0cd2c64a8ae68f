// tests/text/label_test.cpp
//
// The label order (text first, then the digits as one number) for narrow and wide labels, and
// CloneString.
#include "zt/text/label.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/text.h"

namespace zt::test {
namespace {

TEST(Label, TextDecidesBeforeTheDigitsInBothWidths) {
  struct Case {
    const char* a;
    const char* b;
    int expected;
  };
  const std::vector<Case> table = {
      {"", "", 0},
      {"", "a", -1},
      {"abc", "abc", 0},
      {"abc", "abd", -1},
      {"file2", "file10", -1},
      {"file10", "file2", 1},
      {"a01", "a1", 0},
      {"a", "a0", 0},
      {"x1y", "xy2", -1},
      {"b1", "a99", 1},
      {"1a", "a1", 0},
      {"Item2", "item1", -1},
      {"ver1.10", "ver11.0", 0},
      {"x9", "x10", -1},
      {"x007", "x7", 0},
      {"n99999999999", "n2147483647", 0},  // digits past INT_MAX count as INT_MAX
      {"a\x80", "a", 1}};
  for (const Case& c : table) {
    EXPECT_EQ(CompareLabelA(c.a, c.b), c.expected) << c.a << " / " << c.b;
    EXPECT_EQ(CompareLabelW(Lit<wchar_t>(c.a).c_str(), Lit<wchar_t>(c.b).c_str()), c.expected)
        << c.a << " / " << c.b;
  }
}

TEST(Label, ATrailByteAfterALeadByteStaysText) {
  // "\x82" + "1" is one double-byte character: its trail byte is no digit.
  EXPECT_EQ(CompareLabelA("\x82"
                          "9",
                          "\x82"
                          "10"),
            1);  // text '9' after '1', not 9 < 10
  EXPECT_EQ(CompareLabelA("\x82"
                          "05",
                          "\x82"
                          "5"),
            -1);
  EXPECT_EQ(CompareLabelA("a"
                          "\x82"
                          "1"
                          "5",
                          "a"
                          "\x82"
                          "1"
                          "05"),
            0);
  EXPECT_EQ(CompareLabelA("\x82", "\x82"), 0);  // a lead byte at the end
  EXPECT_EQ(CompareLabelW(L"\x82"
                          L"1",
                          L"\x82"
                          L"01"),
            0);  // wide units stand alone
}

TEST(Label, CloneStringCopiesTheTerminator) {
  wchar_t* empty = CloneString(L"");
  EXPECT_EQ(empty[0], L'\0');
  delete[] empty;
  wchar_t* copy = CloneString(L"node-7");
  EXPECT_EQ(std::wstring(copy), L"node-7");
  delete[] copy;
}

}  // namespace
}  // namespace zt::test
