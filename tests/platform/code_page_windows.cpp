// tests/platform/code_page_windows.cpp
//
// The narrow side on Windows: the calling thread's ANSI code page through the real system calls,
// in a single-byte code page (1252, the default of a Western system and of Wine) and in a
// double-byte one (932), chosen by setting the thread's locale. What the UTF-8 tests check
// elsewhere, checked here: non-ASCII text round-trips, and text that the code page cannot hold
// converts without failing.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "zt/text/label.h"
#include "zt/text/string.h"

namespace zt::test {
namespace {

// Sets the thread's locale, and so its ANSI code page, for one scope.
class ThreadLocale {
 public:
  explicit ThreadLocale(LANGID language) : m_old(GetThreadLocale()) {
    SetThreadLocale(MAKELCID(language, SORT_DEFAULT));
  }
  ~ThreadLocale() { SetThreadLocale(m_old); }
  ThreadLocale(const ThreadLocale&) = delete;
  ThreadLocale& operator=(const ThreadLocale&) = delete;

 private:
  LCID m_old;
};

std::wstring Wide(const char* s) { return std::wstring(ZtStringW(s)); }
std::string Narrow(const wchar_t* s) { return std::string(ZtStringA(s)); }

TEST(CodePage1252, NonAsciiTextRoundTripsAndFormatConvertsWithIt) {
  const ThreadLocale western(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US));
  const char* narrow = "h\xE9llo \x80 \xDF";
  EXPECT_EQ(Wide(narrow), L"h\u00E9llo \u20AC \u00DF");
  EXPECT_EQ(Narrow(L"h\u00E9llo \u20AC \u00DF"), narrow);
  ZtStringA a;
  a.Format("name=%S;%C", L"\u00E9t\u00E9", L'\u20AC');
  EXPECT_EQ(std::string(a), "name=\xE9t\xE9;\x80");
  ZtStringW w;
  w.Format(L"%S|%hs", "\xE9t\xE9", "\xFC");
  EXPECT_EQ(std::wstring(w), L"\u00E9t\u00E9|\u00FC");
}

TEST(CodePage1252, TextTheCodePageCannotHoldConvertsWithoutFailing) {
  const ThreadLocale western(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US));
  EXPECT_EQ(Narrow(L"a\u65E5b"), "a?b");      // no such character: the default '?'
  EXPECT_EQ(Wide("a\x81\x62"), L"a\u0081b");  // an unassigned byte keeps its value
}

TEST(CodePage932, DoubleByteTextRoundTripsAndFormatConvertsWithIt) {
  const ThreadLocale japanese(MAKELANGID(LANG_JAPANESE, SUBLANG_JAPANESE_JAPAN));
  const char* narrow = "\x93\xFA\x96\x7B\x31";  // two double-byte characters, then a 1
  EXPECT_EQ(Wide(narrow), L"\u65E5\u672C1");
  const ZtStringA back(L"\u65E5\u672C1");
  EXPECT_EQ(std::string(back), narrow);
  EXPECT_EQ(back.Length(), 5);
  ZtStringA a;
  a.Format("[%S|%-4lc]", L"\u65E5\u672C", L'\u672C');  // the width counts bytes
  EXPECT_EQ(std::string(a), "[\x93\xFA\x96\x7B|\x96\x7B  ]");
  ZtStringW w;
  w.Format(L"%S", narrow);
  EXPECT_EQ(std::wstring(w), L"\u65E5\u672C1");
  // A trail byte is text even where it looks like a letter: 0x96 0x7B holds '{'.
  EXPECT_EQ(CompareLabelA("\x96\x7B\x32", "\x96\x7B\x31\x30"), -1);  // 2 before 10
}

TEST(CodePage932, BrokenDoubleByteTextConvertsWithoutFailing) {
  const ThreadLocale japanese(MAKELANGID(LANG_JAPANESE, SUBLANG_JAPANESE_JAPAN));
  EXPECT_EQ(Wide("a\x93"), L"a\u30FB");   // a lead byte with no trail byte
  EXPECT_EQ(Narrow(L"a\u0E01b"), "a?b");  // no such character in the code page
}

}  // namespace
}  // namespace zt::test
