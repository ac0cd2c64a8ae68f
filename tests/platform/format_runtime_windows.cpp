// tests/platform/format_runtime_windows.cpp
//
// The format corpus against the Windows runtime of the machine the tests run on (ucrtbase.dll,
// loaded by name; under Wine that is Wine's own implementation of it). Every Format case of the
// corpus must print the same text through the runtime's printf family, except the cases listed
// in kKnownDifferences with the text that runtime gives; a listed case that no longer differs
// fails too, so the list stays true.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdarg>
#include <cstdint>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "tests/support/format_case.h"

namespace zt::test {

std::vector<FormatCase> FormatCorpus();

namespace {

// Where Wine's runtime (Wine 8) prints otherwise than the library: {case, Wine's text}. Current
// Windows prints the library's text, as far as its documented behaviour tells; the last groups
// are points that Windows leaves unsaid, where the library's choice is written in
// zt/platform/format.h.
const std::map<std::string, std::string> kKnownDifferences = {
    // Wine rounds exactly representable ties away from zero; Windows rounds them to even.
    {"A\t%.0f\td:0.5", "1"},
    {"A\t%.0f\td:-2.5", "-3"},
    {"A\t%.1f\td:0.25", "0.3"},
    {"A\t%.2f\td:0.125", "0.13"},
    {"A\t%.3f\td:2.0625", "2.063"},
    {"A\t%.0e\td:25", "3e+01"},
    {"A\t%.0g\td:2.5", "3"},
    {"A\t%g\td:1234565", "1.23457e+06"},
    {"W\t%.0f %.0f %.0f %.0f\td:0.5\td:1.5\td:2.5\td:3.5", "1 2 3 4"},
    // Wine has no hh size (it reads a short).
    {"A\t%hhd\ti:128", "128"},
    {"A\t%hhd\ti:-129", "-129"},
    {"A\t%hhd\ti:0x1FF", "511"},
    {"A\t%hhu\ti:-1", "65535"},
    {"W\t%ld|%lu|%hhx|%zd\ti:4294967295\ti:-1\ti:511\ti:-3", "-1|4294967295|1ff|-3"},
    // Wine keeps the 0 flag of an integer with a precision and prints no digit for %#.0o of 0;
    // Windows follows the C rules.
    {"A\t%05.3d|\ti:-42", "-0042|"},
    {"A\t%#.0o\ti:0", ""},
    // Wine prints -nan(ind) for every negative quiet NaN and nan for a signalling one; Windows
    // keeps -nan(ind) for the default NaN alone and prints nan(snan).
    {"A\t%f\tx:FFF8000000000001", "-nan(ind)"},
    {"A\t%G\tx:FFF8000000000001", "-NAN(IND)"},
    {"A\t%e\tx:7FF4000000000000", "nan"},
    {"A\t%+012F|\tx:7FF4000000000000", "\\[8] +NAN|"},
    {"A\t%A\tx:FFF4000000000000", "-NAN(IND)"},
    {"A\t%g\tx:7FF0000000000001", "nan"},
    {"W\t%f|%F|%E\tx:FFF8000000000000\tx:7FF0000000000000\tx:7FF4000000000000",
     "-nan(ind)|INF|NAN"},
    // Wine cuts %p to a precision (Windows always prints 16 digits), pads a left-justified %a
    // inside the number, and applies a precision to %c.
    {"A\t%.3p\ti:0x1234", "000"},
    {"A\t%-+12.1a|\td:1.5", "+0x1.8   p+0|"},
    {"A\t%.0c\tc:x", ""},
    // Wine prints nothing for a %% with a width; the library prints the %.
    {"A\t%5%|", "|"},
    // An unknown or unsafe specification: Windows fails the whole call, and so does Wine for
    // %n, while it prints the other ones as text. The library keeps what came before.
    {"A\tab%yz", "abyz"},
    {"A\tab%nz\ti:0", "<error>"},
    {"A\t%1$d\ti:1", "$d"},
    {"W\tab%nz\ti:0", "<error>"},
};

using NarrowPrint = int(__cdecl*)(unsigned long long, char*, std::size_t, const char*, void*,
                                  va_list);
using WidePrint = int(__cdecl*)(unsigned long long, wchar_t*, std::size_t, const wchar_t*, void*,
                                va_list);
using InvalidParameterHandler = void(__cdecl*)(const wchar_t*, const wchar_t*, const wchar_t*,
                                               unsigned, std::uintptr_t);
using SetHandler = InvalidParameterHandler(__cdecl*)(InvalidParameterHandler);
using SetLocale = char*(__cdecl*)(int, const char*);

constexpr unsigned long long kLegacyWideSpecifiers = 4;  // %s wide in a wide format
constexpr std::size_t kRoom = 8192;

class Runtime {
 public:
  Runtime() : m_module(LoadLibraryW(L"ucrtbase.dll")) {
    if (m_module == nullptr) return;
    m_narrow = reinterpret_cast<NarrowPrint>(
        reinterpret_cast<void*>(GetProcAddress(m_module, "__stdio_common_vsprintf")));
    m_wide = reinterpret_cast<WidePrint>(
        reinterpret_cast<void*>(GetProcAddress(m_module, "__stdio_common_vswprintf")));
    // An invalid specification calls the invalid-parameter handler, which ends the process by
    // default: a handler that returns makes the call fail instead.
    auto set_handler = reinterpret_cast<SetHandler>(
        reinterpret_cast<void*>(GetProcAddress(m_module, "_set_invalid_parameter_handler")));
    if (set_handler != nullptr) {
      set_handler([](const wchar_t*, const wchar_t*, const wchar_t*, unsigned, std::uintptr_t) {});
    }
    // Its other-width texts in the ANSI code page, as the library converts them.
    auto set_locale =
        reinterpret_cast<SetLocale>(reinterpret_cast<void*>(GetProcAddress(m_module, "setlocale")));
    if (set_locale != nullptr) set_locale(LC_ALL, ".ACP");
  }
  ~Runtime() {
    if (m_module != nullptr) FreeLibrary(m_module);
  }
  Runtime(const Runtime&) = delete;
  Runtime& operator=(const Runtime&) = delete;

  bool Loaded() const { return m_narrow != nullptr && m_wide != nullptr; }

  std::string Print(const char* format, ...) {
    std::vector<char> out(kRoom);
    va_list args;
    va_start(args, format);
    const int n = m_narrow(0, out.data(), kRoom, format, nullptr, args);
    va_end(args);
    return n < 0 ? "<error>" : Render(FromNarrow(out.data()));
  }
  std::string Print(const wchar_t* format, ...) {
    std::vector<wchar_t> out(kRoom);
    va_list args;
    va_start(args, format);
    const int n = m_wide(kLegacyWideSpecifiers, out.data(), kRoom, format, nullptr, args);
    va_end(args);
    return n < 0 ? "<error>" : Render(FromWide(out.data()));
  }

 private:
  HMODULE m_module;
  NarrowPrint m_narrow = nullptr;
  WidePrint m_wide = nullptr;
};

TEST(FormatCorpus, TheWindowsRuntimePrintsTheSameExceptWhereKnownToDiffer) {
  Runtime runtime;
  ASSERT_TRUE(runtime.Loaded()) << "ucrtbase.dll and its printf family";
  int compared = 0;
  std::set<std::string> seen;
  for (const FormatCase& c : FormatCorpus()) {
    // Texts cut at 1,024 characters are the library's own limit: the runtime has none.
    if ((c.kind != "A" && c.kind != "W") || Unescape(c.expected).size() >= 1024) continue;
    const FormatArgs args(c.tokens);
    const std::u32string format = Unescape(c.input);
    std::string text;
    if (c.kind == "A") {
      const std::string narrow = ToNarrow(format);
      args.Apply([&](auto... a) { text = runtime.Print(narrow.c_str(), a...); });
    } else {
      const std::wstring wide = ToWide(format);
      args.Apply([&](auto... a) { text = runtime.Print(wide.c_str(), a...); });
    }
    ++compared;
    const auto known = kKnownDifferences.find(c.Key());
    if (known == kKnownDifferences.end()) {
      EXPECT_EQ(text, c.expected) << "line " << c.line << ": " << c.Key();
    } else {
      seen.insert(c.Key());
      EXPECT_EQ(text, known->second) << "line " << c.line << ": " << c.Key();
    }
  }
  for (const auto& [key, text] : kKnownDifferences) {
    EXPECT_EQ(seen.count(key), 1U) << "listed, not in the corpus: " << key;
  }
  std::cout << "[ corpus   ] " << compared << " cases compared with ucrtbase.dll, "
            << kKnownDifferences.size() << " known differences\n";
}

}  // namespace
}  // namespace zt::test
