// zt/platform/text.h
//
// The C-runtime and code-page services the text classes stand on, the same results on every
// platform. Internal to the library (hidden, not exported): the code-page conversion makes the
// real system calls on Windows and is portable code elsewhere; the number texts and the
// printing are one portable implementation on every platform, which gives what today's Windows
// runtime gives.
//
//   ZtLong n = zt::platform::WideLength("abc");   // 3
//   std::vector<wchar_t> w(n + 1);
//   zt::platform::ToWide("abc", w.data(), n + 1);  // L"abc"
//
// - Conversion between narrow and wide text in the calling thread's ANSI code page on Windows
//   (flags 0: no failure on invalid characters), UTF-8 <-> UTF-32 elsewhere, where an invalid or
//   truncated UTF-8 sequence and a wide value that is no Unicode scalar each become U+FFFD.
//   A source of 0x40000000 characters or more (terminator included) fails.
// - Integer text as _itoa/_itow give it for radix 10; atoi/_wtoi (saturating at INT_MIN and
//   INT_MAX on overflow) and atof (hex reals, inf and nan spellings included; independent of
//   the C locale).
// - Bounded printing into a 1,025-character buffer: at most 1,024 characters and a terminator,
//   by the engine of zt/platform/format.h, whose header states the convention.
// - strcmp/wcscmp order: code units compared as unsigned values.
#ifndef ZT_PLATFORM_TEXT_H_
#define ZT_PLATFORM_TEXT_H_

#include <cstdarg>
#include <string>
#include <type_traits>

#include "zt/config.h"

namespace zt::platform {

/// True where narrow text is UTF-8 (everywhere but Windows, whose narrow side is the thread's
/// ANSI code page).
#ifdef _WIN32
inline constexpr bool kNarrowIsUtf8 = false;
#else
inline constexpr bool kNarrowIsUtf8 = true;
#endif

/// Characters before the terminator (lstrlenA / lstrlenW).
template <class Ch>
ZtLong TextLength(const Ch* s) {
  return static_cast<ZtLong>(std::char_traits<Ch>::length(s));
}

/// Characters (terminator excluded) that the conversion of the terminated text `s` yields, or
/// -1 when the conversion fails.
ZtLong WideLength(const char* s);
ZtLong NarrowLength(const wchar_t* s);
/// Converts `s` and its terminator into `out`, which holds `room` characters: the length that
/// WideLength / NarrowLength gave plus one.
void ToWide(const char* s, wchar_t* out, ZtLong room);
void ToNarrow(const wchar_t* s, char* out, ZtLong room);

/// Room for the decimal text of any int and its terminator.
constexpr int kIntTextRoom = 12;

/// v in decimal with a leading '-' for negatives, terminated (_itoa / _itow with radix 10).
template <class Ch>
void IntToText(int v, Ch* out) {
  // Digits from an unsigned magnitude, so that INT_MIN needs no special case.
  unsigned magnitude = v < 0 ? 0U - static_cast<unsigned>(v) : static_cast<unsigned>(v);
  Ch digits[kIntTextRoom];
  int n = 0;
  do {
    digits[n++] = static_cast<Ch>('0' + magnitude % 10);
    magnitude /= 10;
  } while (magnitude != 0);
  if (v < 0) *out++ = static_cast<Ch>('-');
  while (n > 0) *out++ = digits[--n];
  *out = 0;
}

/// atoi / _wtoi: leading white space, an optional sign, decimal digits; 0 when no digit follows.
int ToInt(const char* s);
int ToInt(const wchar_t* s);
/// atof: leading white space, an optional sign, then a decimal or 0x-prefixed hex real, inf,
/// infinity or nan (any case); the longest such prefix is read, and 0 when there is none.
/// Values too large give an infinity, values too small a zero, each with the text's sign.
double ToDouble(const char* s);

/// Digits are read as atoi reads them: the magnitude `acc * 10 + digit`, held at kDigitCap
/// (2^31, one past INT_MAX) once it reaches it, so that INT_MAX and INT_MIN stay apart.
constexpr long long kDigitCap = 0x80000000LL;
inline long long AppendDigit(long long acc, int digit) {
  return acc >= kDigitCap ? kDigitCap : acc * 10 + digit;
}

/// The size of every Format buffer, terminator included.
constexpr ZtLong kFormatRoom = 1025;

/// Prints into `out` (kFormatRoom characters) by the convention of zt/platform/format.h: today's
/// Windows runtime's. Longer output is cut to kFormatRoom - 1 characters. Returns the printed
/// length.
ZtLong FormatV(char* out, const char* format, va_list args);
ZtLong FormatV(wchar_t* out, const wchar_t* format, va_list args);

/// A code unit as an unsigned value: bytes 0 to 255, wide units 0 up.
template <class Ch>
std::make_unsigned_t<Ch> Unit(Ch c) {
  return static_cast<std::make_unsigned_t<Ch>>(c);  // NOLINT(bugprone-signed-char-misuse)
}

/// strcmp / wcscmp: negative, 0 or positive, units compared as unsigned values.
template <class Ch>
int Compare(const Ch* a, const Ch* b) {
  while (*a != 0 && *a == *b) {
    ++a;
    ++b;
  }
  const auto x = Unit(*a);
  const auto y = Unit(*b);
  return x < y ? -1 : (x > y ? 1 : 0);
}

}  // namespace zt::platform

#endif  // ZT_PLATFORM_TEXT_H_
