// tests/support/format_case.h
//
// One line of the format corpus (tests/platform/format_corpus.tsv), read and run through the
// library's public calls, shared by the corpus test and the zt_format_lines tool.
//
// A line is tab-separated: kind, input, expected text, then the arguments. Kinds:
//   A / W    ZtStringA / ZtStringW::Format(input, arguments...)
//   <<       ZtStringA() << argument and ZtStringW() << argument (one i: or d: argument)
//   IsInt    IsIntNumber of the input text, both widths (expected 0 or 1)
//   IsFloat  IsFloatNumber of the input text, both widths
//   Label    CompareLabelA / CompareLabelW of the input and the first argument (-1, 0 or 1)
// Arguments: i:N (an integer, decimal or 0x hex, passed in a 64-bit slot; also pointers and
// characters), d:R (a double, decimal or 0x hex), x:H (a double given by its 16 hex bits),
// c:X (the character X as an integer), s:T (a narrow text), S:T (a wide text).
//
// Texts are UTF-8 with the escapes \\ \t \n \u{H} (the character H) and \[N] (the next
// character N times). A narrow text stands for the same characters in the platform's narrow
// encoding: UTF-8 on Linux, the thread's ANSI code page on Windows. Results are rendered the same
// way (Render), so one table serves both builds.
#ifndef ZT_TESTS_SUPPORT_FORMAT_CASE_H_
#define ZT_TESTS_SUPPORT_FORMAT_CASE_H_

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <istream>
#include <sstream>
#include <string>
#include <vector>

#include "zt/text/label.h"
#include "zt/text/string.h"

namespace zt::test {

// ---- texts: UTF-8 with escapes <-> characters <-> the platform's units ----

inline std::u32string Unescape(const std::string& s) {
  std::u32string out;
  std::size_t repeat = 0;
  for (std::size_t i = 0; i < s.size();) {
    char32_t c = static_cast<unsigned char>(s[i++]);
    if (c == '\\' && i < s.size()) {
      const char e = s[i++];
      if (e == '[' || e == 'u') {  // \[N] or \u{H}
        const std::size_t close = s.find(e == '[' ? ']' : '}', i);
        const unsigned long n =
            std::strtoul(s.c_str() + i + (e == 'u'), nullptr, e == 'u' ? 16 : 10);
        i = close + 1;
        if (e == '[') {
          repeat = n;
          continue;
        }
        c = static_cast<char32_t>(n);
      } else {
        c = e == 't' ? U'\t' : (e == 'n' ? U'\n' : static_cast<char32_t>(e));
      }
    } else if (c >= 0x80) {  // a UTF-8 sequence
      const int extra = c >= 0xF0 ? 3 : (c >= 0xE0 ? 2 : 1);
      c &= 0x3FU >> extra;
      for (int k = 0; k < extra && i < s.size(); ++k) c = (c << 6) | (s[i++] & 0x3FU);
    }
    out.append(repeat > 0 ? repeat : 1, c);
    repeat = 0;
  }
  return out;
}

/// The characters as a line of the table: runs of eight or more written \[N]c, controls escaped.
inline std::string Render(const std::u32string& s) {
  std::string out;
  for (std::size_t i = 0; i < s.size();) {
    const char32_t c = s[i];
    std::size_t run = 1;
    while (i + run < s.size() && s[i + run] == c) ++run;
    if (run >= 8) {
      out += "\\[" + std::to_string(run) + "]";
    } else {
      run = 1;
    }
    i += run;
    if (c == '\\') {
      out += "\\\\";
    } else if (c == '\t' || c == '\n') {
      out += c == '\t' ? "\\t" : "\\n";
    } else if (c < 0x20 || (c >= 0x7F && c < 0xA0)) {
      std::ostringstream hex;
      hex << std::hex << static_cast<unsigned>(c);
      out += "\\u{" + hex.str() + "}";
    } else if (c < 0x80) {
      out += static_cast<char>(c);
    } else {
      const int extra = c >= 0x10000 ? 3 : (c >= 0x800 ? 2 : 1);
      out +=
          static_cast<char>((extra == 1 ? 0xC0 : (extra == 2 ? 0xE0 : 0xF0)) | (c >> (6 * extra)));
      for (int k = extra - 1; k >= 0; --k) out += static_cast<char>(0x80 | ((c >> (6 * k)) & 0x3F));
    }
  }
  return out;
}

inline std::wstring ToWide(const std::u32string& s) {
  std::wstring out;
  for (char32_t c : s) {
    if (sizeof(wchar_t) == 2 && c >= 0x10000) {
      out += static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10));
      out += static_cast<wchar_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
    } else {
      out += static_cast<wchar_t>(c);
    }
  }
  return out;
}

inline std::u32string FromWide(const wchar_t* s) {
  std::u32string out;
  for (; *s != 0; ++s) {
    char32_t c = static_cast<char32_t>(*s) & (sizeof(wchar_t) == 2 ? 0xFFFFU : 0xFFFFFFFFU);
    if (sizeof(wchar_t) == 2 && c >= 0xD800 && c < 0xDC00 && s[1] >= 0xDC00 && s[1] < 0xE000) {
      c = 0x10000 + ((c - 0xD800) << 10) + (static_cast<char32_t>(*++s) - 0xDC00);
    }
    out += c;
  }
  return out;
}

/// Narrow text in the platform's encoding, converted as the library converts.
inline std::string ToNarrow(const std::u32string& s) {
  return std::string(static_cast<const char*>(ZtStringA(ToWide(s).c_str())));
}
inline std::u32string FromNarrow(const char* s) { return FromWide(ZtStringW(s)); }

// ---- cases ----

/// One argument as a variadic call passes it: a double, or 64 bits in an integer slot.
struct FormatArg {
  bool real = false;
  unsigned long long bits = 0;
  double value = 0;
};

struct FormatCase {
  int line = 0;
  std::string kind;
  std::string input;     // as written in the table
  std::string expected;  // rendered
  std::vector<std::string> tokens;
  std::string Key() const {
    std::string key = kind + "\t" + input;
    for (const auto& t : tokens) key += "\t" + t;
    return key;
  }
};

/// The cases of a table; comment lines (#) and blank lines are skipped.
inline std::vector<FormatCase> ReadCases(std::istream& in) {
  std::vector<FormatCase> cases;
  std::string text;
  for (int line = 1; std::getline(in, text); ++line) {
    if (!text.empty() && text.back() == '\r') text.pop_back();
    if (text.empty() || text[0] == '#') continue;
    std::vector<std::string> fields;
    for (std::size_t at = 0;;) {
      const std::size_t tab = text.find('\t', at);
      fields.push_back(text.substr(at, tab - at));
      if (tab == std::string::npos) break;
      at = tab + 1;
    }
    fields.resize(std::max<std::size_t>(fields.size(), 3));
    FormatCase c{line, fields[0], fields[1], Render(Unescape(fields[2])), {}};
    c.tokens.assign(fields.begin() + 3, fields.end());
    cases.push_back(c);
  }
  return cases;
}

/// The arguments of a case, with the storage of its texts.
class FormatArgs {
 public:
  explicit FormatArgs(const std::vector<std::string>& tokens) {
    for (const auto& t : tokens) {
      const std::string v = t.size() > 2 ? t.substr(2) : std::string();
      FormatArg a;
      if (t[0] == 'd' || t[0] == 'x') {
        a.real = true;
        if (t[0] == 'd') {
          a.value = std::strtod(v.c_str(), nullptr);
        } else {
          const std::uint64_t bits = std::strtoull(v.c_str(), nullptr, 16);
          std::memcpy(&a.value, &bits, sizeof bits);
        }
      } else if (t[0] == 'i') {
        const bool negative = v[0] == '-';
        a.bits = std::strtoull(v.c_str() + negative, nullptr, 0);
        if (negative) a.bits = 0 - a.bits;
      } else if (t[0] == 'c') {
        a.bits = Unescape(v)[0];
      } else if (t[0] == 's') {
        a.bits =
            reinterpret_cast<std::uintptr_t>(m_narrow.emplace_back(ToNarrow(Unescape(v))).c_str());
      } else {
        a.bits = reinterpret_cast<std::uintptr_t>(m_wide.emplace_back(ToWide(Unescape(v))).c_str());
      }
      m_args.push_back(a);
    }
  }
  /// Calls f with the arguments (at most four) as a variadic function receives them.
  template <class F>
  void Apply(F f) const {
    Pass(f, 0);
  }
  const std::vector<FormatArg>& Args() const { return m_args; }

 private:
  template <class F, class... Done>
  void Pass(F& f, std::size_t i, Done... done) const {
    if constexpr (sizeof...(Done) < 4) {
      if (i < m_args.size()) {
        if (m_args[i].real) {
          Pass(f, i + 1, done..., m_args[i].value);
        } else {
          Pass(f, i + 1, done..., m_args[i].bits);
        }
        return;
      }
    }
    f(done...);
  }

  std::vector<FormatArg> m_args;
  std::deque<std::string> m_narrow;
  std::deque<std::wstring> m_wide;
};

/// The rendered text that the library gives for a case. For the kinds that run both widths, a
/// disagreement between the two shows as "A|W".
inline std::string RunCase(const FormatCase& c) {
  if (c.tokens.size() > 4) return "more than four arguments";
  const FormatArgs args(c.tokens);
  const std::u32string input = Unescape(c.input);
  const std::string narrow_input = ToNarrow(input);
  const std::wstring wide_input = ToWide(input);
  auto both = [](const std::string& a, const std::string& w) { return a == w ? a : a + "|" + w; };
  auto flag = [](bool b) { return std::string(b ? "1" : "0"); };
  if (c.kind == "A") {
    ZtStringA s;
    args.Apply([&](auto... a) { s.Format(narrow_input.c_str(), a...); });
    return Render(FromNarrow(s));
  }
  if (c.kind == "W") {
    ZtStringW s;
    args.Apply([&](auto... a) { s.Format(wide_input.c_str(), a...); });
    return Render(FromWide(s));
  }
  if (c.kind == "<<") {
    ZtStringA a;
    ZtStringW w;
    const FormatArg& v = args.Args().at(0);
    if (v.real) {
      a << v.value;
      w << v.value;
    } else {
      a << static_cast<int>(v.bits);
      w << static_cast<int>(v.bits);
    }
    return both(Render(FromNarrow(a)), Render(FromWide(w)));
  }
  if (c.kind == "IsInt" || c.kind == "IsFloat") {
    const ZtStringA a(narrow_input.c_str());
    const ZtStringW w(wide_input.c_str());
    const bool is_int = c.kind == "IsInt";
    return both(flag(is_int ? a.IsIntNumber() : a.IsFloatNumber()),
                flag(is_int ? w.IsIntNumber() : w.IsFloatNumber()));
  }
  if (c.kind == "Label") {
    const std::u32string other = Unescape(c.tokens.at(0).substr(2));
    return both(std::to_string(CompareLabelA(narrow_input.c_str(), ToNarrow(other).c_str())),
                std::to_string(CompareLabelW(wide_input.c_str(), ToWide(other).c_str())));
  }
  return "unknown kind " + c.kind;
}

}  // namespace zt::test

#endif  // ZT_TESTS_SUPPORT_FORMAT_CASE_H_
