// tests/platform/format_lines.cpp
//
// zt_format_lines: reads lines written as in tests/platform/format_corpus.tsv (the expected
// column may be empty) from standard input and prints the text that the library gives for each,
// one line each. Every build must print the same lines for the same input:
//
//   zt_format_lines --random 2000 7 > lines.tsv      # 2,000 random lines from seed 7
//   zt_format_lines < lines.tsv > linux.txt
//   wine zt_format_lines.exe < lines.tsv > windows.txt
//   cmp linux.txt windows.txt      # byte for byte: \n line ends on Windows too
//
// The random lines keep the platforms' narrow encodings apart from what they compare: texts
// beyond ASCII appear only where no width or precision counts their narrow units.
#include <cstdint>
#include <cstring>
#include <iostream>
#include <random>
#include <string>
#include <vector>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

#include "tests/support/format_case.h"

namespace {

class RandomLines {
 public:
  explicit RandomLines(std::uint64_t seed) : m_random(seed) {}

  std::string Line() {
    switch (Below(10)) {
      case 0:
        return "<<\t\t\t" + (Below(2) != 0 ? "i:" + Integer() : "x:" + Bits());
      case 1:
        return "IsInt\t" + Pick({" ", "", "", "-", "+", "0", "00"}) + Text("0123456789", 12) +
               Pick({"", "", "x", " 1", "99999999999"});
      case 2:
        return "IsFloat\t" + Pick({" ", "", "", "-", "+"}) +
               Pick({"", "0x", "inf", "nan", "1e400", "0."}) + Text("0123456789.eE-+", 10);
      case 3:
        return "Label\t" + Text("ab1-9.", 8) + "\t\ts:" + Text("ab1-9.", 8);
      default:
        return Format();
    }
  }

 private:
  unsigned Below(unsigned n) { return static_cast<unsigned>(m_random() % n); }
  std::string Pick(std::initializer_list<const char*> choices) {
    return *(choices.begin() + Below(static_cast<unsigned>(choices.size())));
  }
  // Up to `longest` characters of the UTF-8 `alphabet`.
  std::string Text(const char* alphabet, unsigned longest) {
    std::vector<std::string> characters;
    for (const char* p = alphabet; *p != 0; ++p) {
      if ((*p & 0xC0) == 0x80) {
        characters.back() += *p;  // a continuation byte
      } else {
        characters.emplace_back(1, *p);
      }
    }
    std::string s;
    for (unsigned n = Below(longest + 1); n > 0; --n) {
      s += characters[Below(static_cast<unsigned>(characters.size()))];
    }
    return s;
  }
  std::string Integer() {
    const std::uint64_t v = m_random() >> Below(64);
    return (Below(2) != 0 ? "-" : "") + std::to_string(v);
  }
  std::string Bits() {
    static const char* const kSpecial[] = {"0000000000000000", "8000000000000000",
                                           "7FF0000000000000", "FFF8000000000000",
                                           "7FF4000000000000", "0000000000000001"};
    if (Below(8) == 0) return kSpecial[Below(6)];
    std::uint64_t v = m_random();
    if (Below(2) != 0)
      v = (v & 0x800FFFFFFFFFFFFFULL) | (std::uint64_t{1023 + Below(80) - 40} << 52);
    if (Below(4) == 0) v &= ~std::uint64_t{0} << Below(52);  // a short binary fraction: ties
    static const char kHex[] = "0123456789ABCDEF";
    std::string s;
    for (int shift = 60; shift >= 0; shift -= 4) s += kHex[(v >> shift) & 0xF];
    return s;
  }
  // Latin-1 letters only where no width or precision counts narrow units.
  std::string Word(bool non_ascii) {
    return Text(non_ascii ? "ab Z9\xC3\xA9\xC3\xBC" : "ab Z9-%", 9);
  }

  std::string Format() {
    const bool wide_format = Below(2) != 0;
    std::string format;
    std::string args;
    for (unsigned n = 1 + Below(3); n > 0; --n) {
      format += Text("ab =|", 3);
      format += '%';
      for (const char* flag = "-+ #0"; *flag != 0; ++flag) {
        if (Below(5) == 0) format += *flag;
      }
      bool counted = false;  // a width or precision
      if (Below(10) == 0) {
        format += '*';
        args += "\ti:" + std::to_string(static_cast<int>(Below(61)) - 30);
        counted = true;
      } else if (Below(2) != 0) {
        format += std::to_string(Below(31));
        counted = true;
      }
      if (Below(10) == 0) {
        format += ".*";
        args += "\ti:" + std::to_string(static_cast<int>(Below(61)) - 30);
        counted = true;
      } else if (Below(2) != 0) {
        format += "." + std::to_string(Below(4) == 0 ? Below(60) : Below(20));
        counted = true;
      }
      const char conversion = "diuoxXcCsSeEfFgGaAp%"[Below(20)];
      const bool lower = conversion == 's' || conversion == 'c';
      if (std::strchr("diuoxX", conversion) != nullptr) {
        format += Pick({"", "", "hh", "h", "l", "ll", "I64", "I32", "I", "z", "j", "t", "w", "L"});
        args += "\ti:" + Integer();
      } else if (std::strchr("eEfFgGaA", conversion) != nullptr) {
        format += Pick({"", "", "l", "L"});
        args += "\tx:" + Bits();
      } else if (conversion == 'p') {
        args += "\ti:" + Integer();
      } else if (conversion != '%') {
        const std::string size = Pick({"", "", "h", "l", "w"});
        format += size;
        const bool wide_arg = size.empty() ? lower == wide_format : size != "h";
        if (conversion == 'c' || conversion == 'C') {
          const bool non_ascii = wide_arg && (wide_format || !counted);
          const std::string c = Text(non_ascii ? "aZ ~\xC3\xA9" : "aZ ~", 1);
          args += "\tc:" + (c.empty() ? std::string("a") : c);
        } else {
          const bool non_ascii = !counted || (wide_arg && wide_format);
          args += std::string(wide_arg ? "\tS:" : "\ts:") + Word(non_ascii);
        }
      }
      format += conversion;
    }
    return std::string(wide_format ? "W\t" : "A\t") + format + "\t" + args;
  }

  std::mt19937_64 m_random;
};

}  // namespace

int main(int argc, char** argv) {
#ifdef _WIN32
  _setmode(_fileno(stdout), _O_BINARY);  // no \r before each \n
#endif
  if (argc == 4 && std::strcmp(argv[1], "--random") == 0) {
    RandomLines lines(std::strtoull(argv[3], nullptr, 10));
    for (unsigned long n = std::strtoul(argv[2], nullptr, 10); n > 0; --n) {
      std::cout << lines.Line() << '\n';
    }
    return 0;
  }
  for (const auto& c : zt::test::ReadCases(std::cin)) std::cout << zt::test::RunCase(c) << '\n';
  return 0;
}
