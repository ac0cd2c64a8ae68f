// fuzz/text_fuzz.cpp
//
// Narrow/wide conversion of arbitrary bytes through ZtStringW(const char*) and
// ZtStringA(const wchar_t*) never faults, and ASCII text round-trips on every platform. Where
// narrow text is UTF-8 the wide side holds Unicode scalars only, valid UTF-8 round-trips exactly,
// and wide text round-trips with every unit that is no scalar turned into U+FFFD. (On Windows the
// narrow side is the ANSI code page and wide text UTF-16: neither rule applies there.)
#include <algorithm>
#include <string>

#include "fuzz/driver.h"
#include "zt/platform/text.h"
#include "zt/text/string.h"

namespace {

bool IsScalar(unsigned long u) { return u < 0xD800 || (u > 0xDFFF && u < 0x110000); }

// Code points of valid UTF-8 (shortest forms, scalars only), or -1 for invalid text.
long Utf8Length(const std::string& s) {
  static const unsigned long kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  long count = 0;
  for (size_t i = 0, len = 0; i < s.size(); i += len, ++count) {
    const auto b = static_cast<unsigned char>(s[i]);
    len = b < 0x80 ? 1 : b < 0xC0 ? 0 : b < 0xE0 ? 2 : b < 0xF0 ? 3 : b < 0xF8 ? 4 : 0;
    if (len == 0 || i + len > s.size()) return -1;
    unsigned long u = len == 1 ? b : b & (0x3F >> (len - 1));
    for (size_t k = 1; k < len; ++k) {
      if ((s[i + k] & 0xC0) != 0x80) return -1;
      u = u << 6 | (s[i + k] & 0x3F);
    }
    if (u < kLeast[len] || !IsScalar(u)) return -1;
  }
  return count;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text = std::string(reinterpret_cast<const char*>(data), size).c_str();
  const ZtStringW wide(text.c_str());  // the bytes up to the first 0
  const ZtStringA back(static_cast<const wchar_t*>(wide));
  const bool ascii = std::all_of(text.begin(), text.end(), [](char b) { return (b & 0x80) == 0; });
  ZT_FUZZ_CHECK(!ascii || (wide.Length() == ZtLong(text.size()) && back == text.c_str()));
  if (!zt::platform::kNarrowIsUtf8) return 0;
  for (ZtLong i = 0; i < wide.Length(); ++i) ZT_FUZZ_CHECK(IsScalar(wide.GetAt(i)));
  const long points = Utf8Length(text);
  ZT_FUZZ_CHECK(points < 0 || (wide.Length() == points && back == text.c_str()));
  // The same bytes as wide units, four to a unit.
  std::wstring units;
  for (size_t i = 0; i + 4 <= size && (data[i] | data[i + 1] | data[i + 2] | (data[i + 3] & 0x7F));
       i += 4) {
    const unsigned long u =
        data[i] | data[i + 1] << 8 | data[i + 2] << 16 | (data[i + 3] & 0x7Ful) << 24;
    units += static_cast<wchar_t>(IsScalar(u) ? u : 0xFFFD);
  }
  const ZtStringA narrow(units.c_str());
  ZT_FUZZ_CHECK(ZtStringW(static_cast<const char*>(narrow)) == units.c_str());
  return 0;
}
