// tests/text/label_test.cpp
//
// The label order (text first, then the digits as one number) for narrow and wide labels, and
// CloneString.
#include "zt/text/label.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/support/text.h"

namespace zt::test {
namespace {

struct LabelCase {
  const char* a;
  const char* b;
  int expected;
};

// The last case: digits past INT_MAX count as INT_MAX.
TEST(Label, TextDecidesBeforeTheDigitsInBothWidths) {
  // clang-format off
  const std::vector<LabelCase> table = {
      {"", "", 0},         {"", "a", -1},          {"abc", "abc", 0},      {"abc", "abd", -1},
      {"file2", "file10", -1}, {"file10", "file2", 1}, {"a01", "a1", 0},   {"a", "a0", 0},
      {"x1y", "xy2", -1},  {"b1", "a99", 1},       {"1a", "a1", 0},        {"Item2", "item1", -1},
      {"ver1.10", "ver11.0", 0}, {"x9", "x10", -1}, {"a\x80", "a", 1},
      {"n9999999999", "n2147483647", 0}};
  // clang-format on
  for (const LabelCase& c : table) {
    EXPECT_EQ(CompareLabelA(c.a, c.b), c.expected) << c.a << " / " << c.b;
    EXPECT_EQ(CompareLabelW(Lit<wchar_t>(c.a).c_str(), Lit<wchar_t>(c.b).c_str()), c.expected)
        << c.a << " / " << c.b;
  }
}

// "\202" is a lead byte: the byte after it is text even when it looks like a digit. Wide units
// stand alone.
TEST(Label, ATrailByteAfterALeadByteStaysText) {
  const std::vector<LabelCase> table = {{"\2029", "\20210", 1},
                                        {"\20205", "\2025", -1},
                                        {"a\20215", "a\202105", 0},
                                        {"\202", "\202", 0}};
  for (const LabelCase& c : table) EXPECT_EQ(CompareLabelA(c.a, c.b), c.expected) << c.a;
  EXPECT_EQ(CompareLabelW(L"\2021", L"\20201"), 0);
}

TEST(Label, CloneStringCopiesTheTerminator) {
  for (const wchar_t* text : {L"", L"node-7"}) {
    const std::unique_ptr<wchar_t[]> copy(CloneString(text));
    EXPECT_TRUE(copy.get() != text && std::wstring(copy.get()) == text);
  }
}

}  // namespace
}  // namespace zt::test
