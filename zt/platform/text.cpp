// The text services of zt/platform/text.h: the Windows calls on Windows, portable code elsewhere.
#include "zt/platform/text.h"

#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
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

namespace zt::platform {
namespace {

// A conversion takes sources below 0x40000000 characters, terminator included.
template <class Ch>
bool FitsConversion(const Ch* s) {
  return std::char_traits<Ch>::length(s) + 1 < 0x40000000U;
}

}  // namespace

double ToDouble(const char* s) { return std::strtod(s, nullptr); }

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

int ToInt(const char* s) { return std::atoi(s); }
int ToInt(const wchar_t* s) { return _wtoi(s); }

// The runtime writes at most kFormatRoom - 1 characters and no terminator when it cuts; the
// last slot is set beforehand so the text is always terminated.
ZtLong FormatV(char* out, const char* format, va_list args) {
  out[kFormatRoom - 1] = 0;
  const int n = _vsnprintf(out, kFormatRoom - 1, format, args);
  return n >= 0 ? n : TextLength(out);
}

ZtLong FormatV(wchar_t* out, const wchar_t* format, va_list args) {
  out[kFormatRoom - 1] = 0;
  const int n = _vsnwprintf(out, kFormatRoom - 1, format, args);
  return n >= 0 ? n : TextLength(out);
}

#else  // UTF-8 <-> UTF-32 and the C99 runtime

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

template <class Ch>
bool IsAscii(Ch c) {
  return c != 0 && Unit(c) < 0x80;
}

// Rewrites a format written for the Windows runtime into the C99 convention: %s and %c of the
// format's own width, %S and %C of the other width, h narrow, l and w wide; I64 becomes ll, I32
// nothing, I z. Everything else is copied.
template <class Ch>
std::basic_string<Ch> ToC99Format(const Ch* f) {
  constexpr bool kWideFormat = sizeof(Ch) > 1;
  std::basic_string<Ch> out;
  while (*f != 0) {
    const Ch c = *f++;
    out += c;
    if (c != '%') continue;
    while (IsAscii(*f) && std::strchr("0123456789$*.-+ #'", static_cast<char>(*f)) != nullptr) {
      out += *f++;
    }
    int width = 0;  // -1 narrow, 1 wide, 0 as the conversion letter says
    const Ch* size = f;
    if (f[0] == 'I' && f[1] == '6' && f[2] == '4') {
      out += static_cast<Ch>('l');
      out += static_cast<Ch>('l');
      f += 3;
    } else if (f[0] == 'I' && f[1] == '3' && f[2] == '2') {
      f += 3;
    } else if (f[0] == 'I') {
      out += static_cast<Ch>('z');
      ++f;
    } else if (f[0] == 'h' || f[0] == 'l' || f[0] == 'w') {
      width = f[0] == 'h' ? -1 : 1;
      while (*f == 'h' || *f == 'l' || *f == 'w') ++f;
    }
    const Ch conv = *f;
    if (conv == 0) break;
    ++f;
    if (conv == 's' || conv == 'c' || conv == 'S' || conv == 'C') {
      const bool lower = conv == 's' || conv == 'c';
      const bool wide = width != 0 ? width > 0 : lower == kWideFormat;
      if (wide) out += static_cast<Ch>('l');
      out += static_cast<Ch>(conv == 's' || conv == 'S' ? 's' : 'c');
      continue;
    }
    for (; width != 0 && size != f - 1; ++size) {
      if (*size != 'w') out += *size;  // hh, h, l, ll before a number conversion
    }
    out += conv;
  }
  return out;
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

int ToInt(const char* s) { return ParseInt(s); }
int ToInt(const wchar_t* s) { return ParseInt(s); }

ZtLong FormatV(char* out, const char* format, va_list args) {
  const int n = std::vsnprintf(out, kFormatRoom, ToC99Format(format).c_str(), args);
  if (n < 0) out[0] = 0;
  return n < 0 ? 0 : (n < kFormatRoom ? n : kFormatRoom - 1);
}

// vswprintf answers -1 both for a cut text and for an argument it cannot convert; in that case
// the whole text is printed to a memory stream to tell the two apart.
ZtLong FormatV(wchar_t* out, const wchar_t* format, va_list args) {
  const std::wstring c99 = ToC99Format(format);
  va_list again;
  va_copy(again, args);
  int n = std::vswprintf(out, kFormatRoom, c99.c_str(), args);
  if (n < 0) {
    wchar_t* text = nullptr;
    std::size_t size = 0;
    if (FILE* stream = open_wmemstream(&text, &size)) {
      // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): `again` is va_copy's copy
      n = std::vfwprintf(stream, c99.c_str(), again);
      std::fclose(stream);
      if (n >= 0) {
        n = n < kFormatRoom ? n : kFormatRoom - 1;
        std::wmemcpy(out, text, static_cast<std::size_t>(n));
      }
      std::free(text);
    }
    n = n < 0 ? 0 : n;
    out[n] = 0;
  }
  va_end(again);
  return n;
}

#endif

}  // namespace zt::platform
