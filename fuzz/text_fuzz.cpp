// fuzz/text_fuzz.cpp
//
// Narrow/wide conversion on arbitrary bytes through ZtStringW(const char*) and
// ZtStringA(const wchar_t*): it never faults, always yields whole Unicode scalars, and where the
// narrow side is UTF-8 it round-trips valid UTF-8 exactly and turns every wide unit that is no
// scalar into U+FFFD.
#include <string>

#include "fuzz/driver.h"
#include "zt/platform/text.h"
#include "zt/text/string.h"

namespace {

bool IsScalar(unsigned long u) { return u < 0xD800 || (u > 0xDFFF && u < 0x110000); }

// Code points of valid UTF-8 (shortest forms, scalars only), or -1 for invalid text.
long Utf8Length(const std::string& s) {
  long count = 0;
  for (size_t i = 0; i < s.size(); ++count) {
    const auto b = static_cast<unsigned char>(s[i]);
    const size_t len = b < 0x80    ? 1
                       : b >= 0xF8 ? 0
                       : b >= 0xF0 ? 4
                       : b >= 0xE0 ? 3
                       : b >= 0xC0 ? 2
                                   : 0;
    if (len == 0 || i + len > s.size()) return -1;
    unsigned long u = len == 1 ? b : b & (0x3F >> (len - 1));
    for (size_t k = 1; k < len; ++k) {
      const auto c = static_cast<unsigned char>(s[i + k]);
      if ((c & 0xC0) != 0x80) return -1;
      u = u << 6 | (c & 0x3F);
    }
    const unsigned long least[] = {0, 0, 0x80, 0x800, 0x10000};
    if (u < least[len] || !IsScalar(u)) return -1;
    i += len;
  }
  return count;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string bytes(reinterpret_cast<const char*>(data), size);
  bytes = bytes.c_str();  // up to the first 0
  const ZtStringW wide(bytes.c_str());
  const ZtStringA back(static_cast<const wchar_t*>(wide));
  if (!zt::platform::kNarrowIsUtf8) return 0;
  for (ZtLong i = 0; i < wide.Length(); ++i) {
    ZT_FUZZ_CHECK(IsScalar(static_cast<unsigned long>(wide.GetAt(i))));
  }
  const long points = Utf8Length(bytes);
  ZT_FUZZ_CHECK(points < 0 || (wide.Length() == points && back == bytes.c_str()));
  // The same bytes as wide units, four to a unit: scalars survive, the rest become U+FFFD.
  std::wstring units;
  for (size_t i = 0; i + 4 <= size; i += 4) {
    const unsigned long u = data[i] | data[i + 1] << 8 | data[i + 2] << 16 |
                            static_cast<unsigned long>(data[i + 3] & 0x7F) << 24;
    if (u == 0) break;
    units += static_cast<wchar_t>(IsScalar(u) ? u : 0xFFFD);
  }
  const ZtStringA narrow(units.c_str());
  const ZtStringW wideAgain(static_cast<const char*>(narrow));
  ZT_FUZZ_CHECK(wideAgain == units.c_str());
  return 0;
}
