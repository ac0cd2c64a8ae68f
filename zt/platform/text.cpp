// The text services of zt/platform/text.h: the Windows calls on Windows, portable code elsewhere.
#include "zt/platform/text.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>

#if defined(_WIN32)
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#endif

#include "zt/platform/format.h"

namespace zt::platform {
namespace {

// A conversion takes sources below 0x40000000 characters, terminator included.
template <class Ch>
bool FitsConversion(const Ch* s) {
  return std::char_traits<Ch>::length(s) + 1 < 0x40000000U;
}

// atoi / _wtoi as the Windows runtime reads them: out-of-range values saturate.
template <class Ch>
int ParseInt(const Ch* s) {
  while (*s == ' ' || (*s >= '\t' && *s <= '\r')) ++s;
  const bool negative = *s == '-';
  if (*s == '-' || *s == '+') ++s;
  long long magnitude = 0;
  for (; *s >= '0' && *s <= '9'; ++s) magnitude = AppendDigit(magnitude, *s - '0');
  if (negative) return magnitude >= kDigitCap ? INT_MIN : static_cast<int>(-magnitude);
  return magnitude >= kDigitCap ? INT_MAX : static_cast<int>(magnitude);
}

bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// Whether the real text at `s`, which std::from_chars found out of range, is too large rather
// than too small: the sign of its magnitude's exponent decides, digits before the first
// non-zero one and the explicit exponent counted in the text's base.
bool TooLarge(const char* s, bool hex) {
  auto is_digit = [hex](char c) {
    return (c >= '0' && c <= '9') || (hex && ((c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F')));
  };
  long long scale = 0;  // in digits of the base
  bool seen = false;    // a non-zero digit was read
  bool point = false;
  for (; is_digit(*s) || (*s == '.' && !point); ++s) {
    if (*s == '.') {
      point = true;
    } else if (*s != '0' || seen) {
      if (!seen && point) --scale;  // the first non-zero digit stands after the point
      seen = true;
      if (!point) ++scale;
    } else if (point) {
      --scale;
    }
  }
  long long exponent = 0;
  if (*s == (hex ? 'p' : 'e') || *s == (hex ? 'P' : 'E')) {
    const bool negative = s[1] == '-';
    s += s[1] == '-' || s[1] == '+' ? 2 : 1;
    for (; *s >= '0' && *s <= '9'; ++s) exponent = std::min(exponent * 10 + (*s - '0'), 1LL << 40);
    if (negative) exponent = -exponent;
  }
  return (hex ? scale * 4 : scale) + exponent > 0;
}

}  // namespace

#if defined(_WIN32)

ZtLong WideLength(const char* s) {
  if (!FitsConversion(s)) return -1;
  const int n = MultiByteToWideChar(CP_THREAD_ACP, 0, s, -1, nullptr, 0);
  return n > 0 ? n - 1 : -1;
}

ZtLong NarrowLength(const wchar_t* s) {
  if (!FitsConversion(s)) return -1;
  const int n = WideCharToMultiByte(CP_THREAD_ACP, 0, s, -1, nullptr, 0, nullptr, nullptr);
  // The text classes convert into two bytes for each wide character, room for a double-byte
  // code page; a longer result fails there, and so it fails here.
  return n > 0 && n <= 2 * (TextLength(s) + 1) ? n - 1 : -1;
}

void ToWide(const char* s, wchar_t* out, ZtLong room) {
  MultiByteToWideChar(CP_THREAD_ACP, 0, s, -1, out, room);
}

void ToNarrow(const wchar_t* s, char* out, ZtLong room) {
  WideCharToMultiByte(CP_THREAD_ACP, 0, s, -1, out, room, nullptr, nullptr);
}

#else  // UTF-8 <-> UTF-32

static_assert(sizeof(wchar_t) == 4, "wide text is UTF-32 outside Windows");

namespace {

constexpr char32_t kReplacement = 0xFFFD;

// Calls emit(c) for every character of the terminated UTF-8 text `s`. Each maximal part of an
// invalid or truncated sequence (an overlong form, a surrogate, a value past U+10FFFF, a lone
// continuation byte) becomes one U+FFFD.
template <class Emit>
void DecodeUtf8(const char* s, Emit emit) {
  const auto* p = reinterpret_cast<const unsigned char*>(s);
  while (*p != 0) {
    const unsigned lead = *p++;
    if (lead < 0x80) {
      emit(static_cast<char32_t>(lead));
      continue;
    }
    int extra = 0;
    char32_t c = 0;
    unsigned lo = 0x80;  // the range the next byte must fall in
    unsigned hi = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
      extra = 1;
      c = lead & 0x1FU;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
      extra = 2;
      c = lead & 0x0FU;
      if (lead == 0xE0) lo = 0xA0;  // no overlong forms
      if (lead == 0xED) hi = 0x9F;  // no surrogates
    } else if (lead >= 0xF0 && lead <= 0xF4) {
      extra = 3;
      c = lead & 0x07U;
      if (lead == 0xF0) lo = 0x90;
      if (lead == 0xF4) hi = 0x8F;  // nothing past U+10FFFF
    } else {
      emit(kReplacement);
      continue;
    }
    for (; extra > 0 && *p >= lo && *p <= hi; --extra) {  // the terminator stops it too
      c = (c << 6) | (*p++ & 0x3FU);
      lo = 0x80;
      hi = 0xBF;
    }
    emit(extra == 0 ? c : kReplacement);
  }
}

// Calls emit(byte) for the UTF-8 form of every character of the terminated text `s`.
template <class Emit>
void EncodeUtf8(const wchar_t* s, Emit emit) {
  for (; *s != 0; ++s) {
    std::uint32_t c = Unit(*s);
    if ((c >= 0xD800 && c <= 0xDFFF) || c > 0x10FFFF) c = kReplacement;
    if (c < 0x80) {
      emit(c);
    } else if (c < 0x800) {
      emit(0xC0 | (c >> 6));
      emit(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
      emit(0xE0 | (c >> 12));
      emit(0x80 | ((c >> 6) & 0x3F));
      emit(0x80 | (c & 0x3F));
    } else {
      emit(0xF0 | (c >> 18));
      emit(0x80 | ((c >> 12) & 0x3F));
      emit(0x80 | ((c >> 6) & 0x3F));
      emit(0x80 | (c & 0x3F));
    }
  }
}

}  // namespace

ZtLong WideLength(const char* s) {
  if (!FitsConversion(s)) return -1;
  ZtLong n = 0;
  DecodeUtf8(s, [&n](char32_t) { ++n; });
  return n;
}

ZtLong NarrowLength(const wchar_t* s) {
  if (!FitsConversion(s)) return -1;
  std::int64_t n = 0;
  EncodeUtf8(s, [&n](std::uint32_t) { ++n; });
  return n < INT32_MAX ? static_cast<ZtLong>(n) : -1;
}

void ToWide(const char* s, wchar_t* out, ZtLong room) {
  ZtLong i = 0;
  DecodeUtf8(s, [&](char32_t c) {
    if (i < room - 1) out[i++] = static_cast<wchar_t>(c);
  });
  if (room > 0) out[i] = 0;
}

void ToNarrow(const wchar_t* s, char* out, ZtLong room) {
  ZtLong i = 0;
  EncodeUtf8(s, [&](std::uint32_t b) {
    if (i < room - 1) out[i++] = static_cast<char>(b);
  });
  if (room > 0) out[i] = 0;
}

#endif

ZtLong FormatV(char* out, const char* format, va_list args) {
  return zt::detail::PrintFormat(out, kFormatRoom, format, args);
}

ZtLong FormatV(wchar_t* out, const wchar_t* format, va_list args) {
  return zt::detail::PrintFormat(out, kFormatRoom, format, args);
}

int ToInt(const char* s) { return ParseInt(s); }
int ToInt(const wchar_t* s) { return ParseInt(s); }

double ToDouble(const char* s) {
  while (IsSpace(*s)) ++s;
  const bool negative = *s == '-';
  if (*s == '-' || *s == '+') ++s;
  const char* end = s + std::strlen(s);
  const bool hex = s[0] == '0' && (s[1] == 'x' || s[1] == 'X');
  double v = 0;
  // A "0x" with no hex digits after it reads as the 0 alone, as the runtime reads it.
  const char* digits = hex ? s + 2 : s;
  const auto r =
      std::from_chars(digits, end, v, hex ? std::chars_format::hex : std::chars_format::general);
  if (r.ec == std::errc::result_out_of_range) {
    v = TooLarge(digits, hex) ? std::numeric_limits<double>::infinity() : 0.0;
  } else if (r.ec != std::errc()) {
    v = 0;
  }
  return negative ? -v : v;
}

}  // namespace zt::platform
