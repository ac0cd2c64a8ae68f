// zt/platform/format.h
//
// The library's one printf engine: every text that Format and the number appends print comes
// from it, on Linux and on Windows alike, so libzt.so and zt.dll print the same characters.
// Internal to the library (hidden, not exported); the strings reach it through
// zt::platform::FormatV.
//
//   char out[zt::platform::kFormatRoom];
//   zt::detail::PrintFormat(out, zt::platform::kFormatRoom, "%.0f|%e|%p", args);
//   // "2|1.000000e+01|0000000000001234" for 2.5, 10.0 and (void*)0x1234
//
// The convention is that of today's Windows runtime (the universal C runtime):
// - Specifications: %[flags][width][.precision][size]conversion. Flags - + space # 0; width and
//   precision as digits or * (a negative * width left-justifies, a negative * precision counts
//   as none). No positional arguments, no ' flag.
// - Size prefixes: hh (char) and h (short); l, I32 and none are 32 bits (Windows long; the
//   argument's low 32 bits are used); ll, I64 and j 64 bits; I, z and t pointer-sized. L and l
//   are accepted on reals, whose argument is always a double; L and w elsewhere are ignored.
// - Integers (d i u o x X): the precision is the minimum digit count (0 prints nothing for 0)
//   and turns the 0 flag off; # gives 0x/0X to non-zero hex values and a leading 0 to octal.
// - Reals: exact, correctly rounded decimal digits, ties rounded to even (%.0f of 2.5 is 2);
//   exponents of at least two digits (1.000000e+01, 1e+100); -0.0 keeps its sign. %g chooses
//   the form by the rounded exponent and drops trailing zeros unless #. %a/%A: 13 hex digits
//   unless a precision is given (0x1.0000000000000p+0, zero 0x0.0000000000000p+0, subnormals
//   0x0.xxxxxxxxxxxxxp-1022), a shorter precision rounds half up. The 0 flag pads after the sign
//   and after 0x.
// - Non-finite reals: inf, nan for a quiet NaN, -nan(ind) for the x86-64 default NaN (sign set,
//   only the top fraction bit), nan(snan) for a signalling NaN, each with its sign; upper case
//   for F E G A. Precision, # and the 0 flag do not apply to them.
// - %p: the pointer as 16 upper-case hex digits, no prefix (# adds 0X to a non-null one).
// - Texts and characters: in a narrow format %s and %c take narrow arguments and %S and %C wide
//   ones; in a wide format the reverse. h (or hh) forces narrow, l or w wide. A null text prints
//   (null). The precision counts characters of the argument as given. An argument of the other
//   width is converted as the string constructors convert (UTF-8 outside Windows, the thread's
//   ANSI code page on Windows), never through the C locale; one that cannot be converted prints
//   nothing. The 0 flag pads texts and characters with zeros, as Windows does.
// - %% prints one %, with no padding.
// - Unsafe or unknown specifications stop the printing; what was printed before them stays:
//   %n (which Windows refuses too, and which would write through a pointer), an unknown
//   conversion, a specification cut by the end of the format, %Z.
// - Output past room - 1 characters is cut; the text is always terminated and nothing is
//   written past out[room - 1].
#ifndef ZT_PLATFORM_FORMAT_H_
#define ZT_PLATFORM_FORMAT_H_

#include <cstdarg>

#include "zt/config.h"

namespace zt::detail {

/// Prints `format` with `args` into `out`, which holds `room` (at least 1) characters: at most
/// room - 1 characters and a terminator. Returns the number of characters printed (a %c of 0
/// counts as one).
ZtLong PrintFormat(char* out, ZtLong room, const char* format, va_list args);
ZtLong PrintFormat(wchar_t* out, ZtLong room, const wchar_t* format, va_list args);

}  // namespace zt::detail

#endif  // ZT_PLATFORM_FORMAT_H_
