// The printf engine of zt/platform/format.h, written once over the character type.
#include "zt/platform/format.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

#include "zt/platform/text.h"

namespace zt::detail {
namespace {

// Digits past these counts never change the first 1,024 characters of a field: a double has
// at most 1,074 fractional digits and 767 significant ones, and its hex form 13 digits.
constexpr int kPrecisionCap = 1100;
// Room for any real's text at kPrecisionCap: 309 integer digits, a point, the fraction, a sign.
constexpr int kRealRoom = 1500;

// The va_list behind one copy, so that helpers can take arguments from it by reference.
class Arguments {
 public:
  explicit Arguments(va_list args) { va_copy(m_list, args); }
  ~Arguments() { va_end(m_list); }
  Arguments(const Arguments&) = delete;
  Arguments& operator=(const Arguments&) = delete;

  template <class T>
  T Next() {
    return va_arg(m_list, T);
  }

 private:
  va_list m_list;
};

// The output buffer: keeps at most `room - 1` characters and counts nothing past them, so that
// huge widths and precisions end as soon as the buffer is full.
template <class Ch>
class Sink {
 public:
  Sink(Ch* out, ZtLong room) : m_out(out), m_room(room - 1) {}

  void Put(Ch c) {
    if (m_length < m_room) m_out[m_length++] = c;
  }
  void Repeat(Ch c, long long count) {
    for (; count > 0 && m_length < m_room; --count) m_out[m_length++] = c;
  }
  // Writes `n` units of `s`: text of the output's width, or engine-made ASCII from a char buffer.
  template <class Unit>
  void Write(const Unit* s, long long n) {
    for (long long i = 0; i < n && m_length < m_room; ++i)
      m_out[m_length++] = static_cast<Ch>(s[i]);
  }
  bool Full() const { return m_length >= m_room; }
  ZtLong Finish() {
    m_out[m_length] = 0;
    return m_length;
  }

 private:
  Ch* m_out;
  ZtLong m_room;
  ZtLong m_length = 0;
};

enum class Size { kNone, kHH, kH, kL, kLL, kBigL, kW, kI, kI32, kI64, kZ, kJ, kT };

struct Directive {
  bool left = false;
  bool plus = false;
  bool space = false;
  bool alternate = false;
  bool zero = false;
  long long width = 0;
  int precision = -1;  // -1: none given
  Size size = Size::kNone;
  char conversion = 0;
};

template <class Ch>
bool IsDigit(Ch c) {
  return c >= '0' && c <= '9';
}

// Digits of a width or precision, held at INT_MAX.
template <class Ch>
int ReadNumber(const Ch*& f) {
  long long n = 0;
  for (; IsDigit(*f); ++f) n = std::min<long long>(n * 10 + (*f - '0'), 0x7FFFFFFF);
  return static_cast<int>(n);
}

// Reads one specification after its '%'. False when the specification is unknown or cut short.
template <class Ch>
bool ReadDirective(const Ch*& f, Arguments& args, Directive& directive) {
  for (;; ++f) {
    if (*f == '-') {
      directive.left = true;
    } else if (*f == '+') {
      directive.plus = true;
    } else if (*f == ' ') {
      directive.space = true;
    } else if (*f == '#') {
      directive.alternate = true;
    } else if (*f == '0') {
      directive.zero = true;
    } else {
      break;
    }
  }
  if (*f == '*') {
    ++f;
    const long long w = args.Next<int>();
    directive.left = directive.left || w < 0;
    directive.width = w < 0 ? -w : w;
  } else {
    directive.width = ReadNumber(f);
  }
  if (*f == '.') {
    ++f;
    if (*f == '*') {
      ++f;
      directive.precision = std::max(args.Next<int>(), -1);
    } else {
      directive.precision = ReadNumber(f);
    }
  }
  const Ch c = *f;
  if (c == 'h' || c == 'l') {
    const bool twice = f[1] == c;
    directive.size = c == 'h' ? (twice ? Size::kHH : Size::kH) : (twice ? Size::kLL : Size::kL);
    f += twice ? 2 : 1;
  } else if (c == 'I' && f[1] == '6' && f[2] == '4') {
    directive.size = Size::kI64;
    f += 3;
  } else if (c == 'I' && f[1] == '3' && f[2] == '2') {
    directive.size = Size::kI32;
    f += 3;
  } else if (c == 'I' || c == 'L' || c == 'w' || c == 'z' || c == 'j' || c == 't') {
    const Size sizes[] = {Size::kI, Size::kBigL, Size::kW, Size::kZ, Size::kJ, Size::kT};
    directive.size = sizes[std::strchr("ILwzjt", static_cast<char>(c)) - "ILwzjt"];
    ++f;
  }
  const Ch conversion = *f;
  if (conversion == 0 || zt::platform::Unit(conversion) > 0x7F ||
      std::strchr("diuoxXcCsSeEfFgGaAp%", static_cast<char>(conversion)) == nullptr) {
    return false;  // also %n, %Z and the end of the format
  }
  directive.conversion = static_cast<char>(conversion);
  ++f;
  return true;
}

// Writes one field: padding, the prefix (sign, 0x), the precision's zeros, the body and the
// padding of a left-justified field. `zero_pad` says whether the 0 flag applies.
template <class Ch, class Unit>
void Field(Sink<Ch>& out, const Directive& directive, const char* prefix, const Unit* body,
           long long n, long long zeros = 0, bool zero_pad = true) {
  const auto prefix_length = static_cast<long long>(std::strlen(prefix));
  const long long padding = directive.width - prefix_length - zeros - n;
  const bool zeros_pad = zero_pad && directive.zero && !directive.left;
  if (!directive.left && !zeros_pad) out.Repeat(' ', padding);
  out.Write(prefix, prefix_length);
  if (zeros_pad) out.Repeat('0', padding);
  out.Repeat('0', zeros);
  out.Write(body, n);
  if (directive.left) out.Repeat(' ', padding);
}

const char* SignPrefix(const Directive& directive, bool negative) {
  if (negative) return "-";
  if (directive.plus) return "+";
  return directive.space ? " " : "";
}

// ---- integers ----

template <class Ch>
void PrintInteger(Sink<Ch>& out, Directive directive, Arguments& args) {
  const char c = directive.conversion;
  const bool is_signed = c == 'd' || c == 'i';
  unsigned long long magnitude = 0;
  bool negative = false;
  if (c == 'p') {
    magnitude = reinterpret_cast<std::uintptr_t>(args.Next<void*>());
    directive.precision = static_cast<int>(2 * sizeof(void*));
  } else {
    long long v = 0;  // the argument, sign-extended when signed, zero-extended when not
    switch (directive.size) {
      case Size::kLL:
      case Size::kI64:
      case Size::kJ:
        v = args.Next<long long>();
        break;
      case Size::kI:
      case Size::kZ:
      case Size::kT:
        v = static_cast<long long>(args.Next<std::intptr_t>());
        if (!is_signed) v = static_cast<long long>(static_cast<std::uintptr_t>(v));
        break;
      case Size::kL: {
        // Windows' long is 32 bits; reading the C long and keeping its low half serves an int
        // and a long alike.
        const auto low = static_cast<std::uint32_t>(args.Next<long>());
        v = is_signed ? static_cast<std::int32_t>(low) : static_cast<long long>(low);
        break;
      }
      case Size::kH: {
        const int x = args.Next<int>();
        v = is_signed ? static_cast<short>(x) : static_cast<unsigned short>(x);
        break;
      }
      case Size::kHH: {
        const int x = args.Next<int>();
        v = is_signed ? static_cast<signed char>(x) : static_cast<unsigned char>(x);
        break;
      }
      default: {
        const int x = args.Next<int>();
        v = is_signed ? x : static_cast<long long>(static_cast<unsigned>(x));
        break;
      }
    }
    negative = is_signed && v < 0;
    magnitude =
        negative ? 0ULL - static_cast<unsigned long long>(v) : static_cast<unsigned long long>(v);
  }
  const unsigned radix = c == 'o' ? 8 : (c == 'x' || c == 'X' || c == 'p' ? 16 : 10);
  const char* digit_set = c == 'x' ? "0123456789abcdef" : "0123456789ABCDEF";
  char digits[24];
  int n = sizeof(digits);
  for (unsigned long long m = magnitude; m != 0; m /= radix) digits[--n] = digit_set[m % radix];
  const long long count = static_cast<long long>(sizeof(digits)) - n;
  long long zeros = std::max(directive.precision < 0 ? 1 : directive.precision, 0) - count;
  if (zeros < 0) zeros = 0;
  if (c == 'o' && directive.alternate && zeros == 0) zeros = 1;  // the digits never start with 0
  const char* prefix = is_signed ? SignPrefix(directive, negative) : "";
  if (radix == 16 && directive.alternate && magnitude != 0) prefix = c == 'x' ? "0x" : "0X";
  Field(out, directive, prefix, digits + n, count, zeros, directive.precision < 0);
}

// ---- reals ----

std::uint64_t Bits(double v) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &v, sizeof bits);
  return bits;
}

// Converts the engine's lower-case real text to the upper case of %E, %F, %G and %A.
void ToUpper(char* s, std::size_t n) {
  for (std::size_t i = 0; i < n; ++i) {
    if (s[i] >= 'a' && s[i] <= 'z') s[i] = static_cast<char>(s[i] - 'a' + 'A');
  }
}

// Drops the trailing zeros of the fraction, and the point when nothing follows it (%g without
// #). Returns the new length.
std::size_t CropZeros(char* s, std::size_t n) {
  char* point = static_cast<char*>(std::memchr(s, '.', n));
  if (point == nullptr) return n;
  char* exponent = static_cast<char*>(std::memchr(s, 'e', n));
  char* end = exponent != nullptr ? exponent : s + n;
  char* cut = end;
  while (cut[-1] == '0') --cut;
  if (cut[-1] == '.') --cut;
  std::memmove(cut, end, static_cast<std::size_t>(s + n - end));
  return n - static_cast<std::size_t>(end - cut);
}

// Puts a point after the first digit when the text has none (# with a precision of 0).
std::size_t ForcePoint(char* s, std::size_t n) {
  if (std::memchr(s, '.', n) != nullptr) return n;
  std::size_t at = 0;
  while (at < n && s[at] >= '0' && s[at] <= '9') ++at;
  std::memmove(s + at + 1, s + at, n - at);
  s[at] = '.';
  return n + 1;
}

// The hex form of a finite, non-negative real: 0x1.hhhp+e.
std::size_t HexReal(char* s, std::uint64_t bits, int precision, bool alternate) {
  const int biased = static_cast<int>(bits >> 52);
  std::uint64_t fraction = bits & ((std::uint64_t{1} << 52) - 1);
  unsigned lead = biased != 0 ? 1 : 0;
  const int exponent = biased != 0 ? biased - 1023 : (fraction != 0 ? -1022 : 0);
  int shown = std::min(precision, 13);
  if (shown < 13) {
    const int shift = (13 - shown) * 4;
    const std::uint64_t dropped = fraction & ((std::uint64_t{1} << shift) - 1);
    fraction >>= shift;
    if (dropped >= std::uint64_t{1} << (shift - 1)) ++fraction;
    if (fraction >> (shown * 4) != 0) {  // the rounding carried into the leading digit
      ++lead;
      fraction = 0;
    }
  }
  std::size_t n = 0;
  s[n++] = static_cast<char>('0' + lead);
  if (precision > 0 || alternate) s[n++] = '.';
  for (int i = shown - 1; i >= 0; --i) s[n++] = "0123456789abcdef"[(fraction >> (i * 4)) & 0xF];
  for (int i = shown; i < precision; ++i) s[n++] = '0';
  s[n++] = 'p';
  s[n++] = exponent < 0 ? '-' : '+';
  const auto r = std::to_chars(s + n, s + n + 8, exponent < 0 ? -exponent : exponent);
  return static_cast<std::size_t>(r.ptr - s);
}

// The decimal forms of a finite, non-negative real through std::to_chars, which gives exact,
// correctly rounded digits (exact ties to even) and exponents of at least two digits.
std::size_t DecimalReal(char* s, double v, char c, int precision, bool alternate) {
  auto print = [&](std::chars_format form, int digits) {
    return static_cast<std::size_t>(std::to_chars(s, s + kRealRoom, v, form, digits).ptr - s);
  };
  std::size_t n = 0;
  if (c == 'f') {
    n = print(std::chars_format::fixed, precision);
  } else if (c == 'e') {
    n = print(std::chars_format::scientific, precision);
  } else {  // 'g': the form that the exponent of the rounded e form picks
    const int p = std::max(precision, 1);
    n = print(std::chars_format::scientific, p - 1);
    const char* e = static_cast<const char*>(std::memchr(s, 'e', n));
    int x = 0;
    std::from_chars(e + (e[1] == '+' ? 2 : 1), s + n, x);
    if (p > x && x >= -4) n = print(std::chars_format::fixed, p - 1 - x);
    if (!alternate) return CropZeros(s, n);
  }
  return alternate ? ForcePoint(s, n) : n;
}

template <class Ch>
void PrintReal(Sink<Ch>& out, Directive directive, Arguments& args) {
  const double v = args.Next<double>();
  const std::uint64_t bits = Bits(v);
  const bool negative = (bits >> 63) != 0;
  const std::uint64_t magnitude_bits = bits & ~(std::uint64_t{1} << 63);
  const std::uint64_t fraction = bits & ((std::uint64_t{1} << 52) - 1);
  const char c = directive.conversion;
  const bool upper = c >= 'A' && c <= 'Z';
  char text[kRealRoom];
  std::size_t n = 0;
  char prefix[4] = {};  // the sign, then 0x for the hex form
  std::size_t prefix_length = 0;
  if (const char* sign = SignPrefix(directive, negative); *sign != 0)
    prefix[prefix_length++] = *sign;
  bool finite = true;
  if ((magnitude_bits >> 52) == 0x7FF) {
    finite = false;
    const char* word = "inf";
    if (fraction != 0) {
      const std::uint64_t quiet = std::uint64_t{1} << 51;
      word = (fraction & quiet) == 0 ? "nan(snan)"
                                     : (negative && fraction == quiet ? "nan(ind)" : "nan");
    }
    n = std::strlen(word);
    std::memcpy(text, word, n);
  } else if (c == 'a' || c == 'A') {
    n = HexReal(text, magnitude_bits,
                directive.precision < 0 ? 13 : std::min(directive.precision, kPrecisionCap),
                directive.alternate);
    prefix[prefix_length++] = '0';
    prefix[prefix_length++] = 'x';
  } else {
    double magnitude = 0;
    std::memcpy(&magnitude, &magnitude_bits, sizeof magnitude);
    const char lower = static_cast<char>(upper ? c - 'A' + 'a' : c);
    n = DecimalReal(text, magnitude, lower,
                    directive.precision < 0 ? 6 : std::min(directive.precision, kPrecisionCap),
                    directive.alternate);
  }
  if (upper) {
    ToUpper(text, n);
    ToUpper(prefix, prefix_length);
  }
  Field(out, directive, prefix, text, static_cast<long long>(n), 0, finite);
}

// ---- texts and characters ----

ZtLong ConvertedLength(const char* s) { return zt::platform::WideLength(s); }
ZtLong ConvertedLength(const wchar_t* s) { return zt::platform::NarrowLength(s); }
void ConvertInto(const char* s, wchar_t* out, ZtLong room) { zt::platform::ToWide(s, out, room); }
void ConvertInto(const wchar_t* s, char* out, ZtLong room) { zt::platform::ToNarrow(s, out, room); }

// The other width's text `s` (n units) converted as the string constructors convert it;
// empty when the conversion fails.
template <class From>
auto Convert(const From* s, std::size_t n) {
  using To = std::conditional_t<std::is_same_v<From, char>, wchar_t, char>;
  const std::basic_string<From> source(s, n);
  const ZtLong length = ConvertedLength(source.c_str());
  if (length <= 0) return std::basic_string<To>();
  std::basic_string<To> out(static_cast<std::size_t>(length) + 1, To(0));
  ConvertInto(source.c_str(), out.data(), length + 1);
  out.resize(static_cast<std::size_t>(length));
  return out;
}

// Prints `n` units of the text `s` of width Arg, converted when that is not the output's.
template <class Ch, class Arg>
void PrintText(Sink<Ch>& out, const Directive& directive, const Arg* s, std::size_t n) {
  if constexpr (std::is_same_v<Ch, Arg>) {
    Field(out, directive, "", s, static_cast<long long>(n));
  } else {
    const auto converted = Convert(s, n);
    Field(out, directive, "", converted.data(), static_cast<long long>(converted.size()));
  }
}

template <class Ch, class Arg>
void PrintTextArgument(Sink<Ch>& out, const Directive& directive, Arguments& args) {
  if (directive.conversion == 'c' || directive.conversion == 'C') {
    const auto c = static_cast<Arg>(args.Next<int>());
    if (c == 0) {  // printed as one character, whatever the widths; it ends the terminated view
      const Ch zero = 0;
      Field(out, directive, "", &zero, 1);
      return;
    }
    PrintText(out, directive, &c, 1);
    return;
  }
  const Arg* s = args.Next<const Arg*>();
  if (s == nullptr) {
    static constexpr Arg kNull[] = {'(', 'n', 'u', 'l', 'l', ')', 0};
    s = kNull;
  }
  std::size_t n = 0;
  const std::size_t limit =
      directive.precision < 0 ? SIZE_MAX : static_cast<std::size_t>(directive.precision);
  while (n < limit && s[n] != 0) ++n;  // never reads past the precision
  PrintText(out, directive, s, n);
}

template <class Ch>
void PrintTextOrCharacter(Sink<Ch>& out, const Directive& directive, Arguments& args) {
  const char c = directive.conversion;
  bool wide = (c == 's' || c == 'c') == (sizeof(Ch) > 1);
  if (directive.size == Size::kH || directive.size == Size::kHH) wide = false;
  if (directive.size == Size::kL || directive.size == Size::kW) wide = true;
  if (wide) {
    PrintTextArgument<Ch, wchar_t>(out, directive, args);
  } else {
    PrintTextArgument<Ch, char>(out, directive, args);
  }
}

template <class Ch>
ZtLong Print(Ch* out, ZtLong room, const Ch* f, va_list list) {
  Sink<Ch> sink(out, room);
  Arguments args(list);
  while (*f != 0) {
    if (*f != '%') {
      sink.Put(*f++);
      continue;
    }
    if (sink.Full()) break;
    ++f;
    Directive directive;
    if (!ReadDirective(f, args, directive)) break;
    switch (directive.conversion) {
      case '%':
        sink.Put('%');
        break;
      case 'c':
      case 'C':
      case 's':
      case 'S':
        PrintTextOrCharacter(sink, directive, args);
        break;
      case 'e':
      case 'E':
      case 'f':
      case 'F':
      case 'g':
      case 'G':
      case 'a':
      case 'A':
        PrintReal(sink, directive, args);
        break;
      default:
        PrintInteger(sink, directive, args);
        break;
    }
  }
  return sink.Finish();
}

}  // namespace

ZtLong PrintFormat(char* out, ZtLong room, const char* format, va_list args) {
  return Print(out, room, format, args);
}

ZtLong PrintFormat(wchar_t* out, ZtLong room, const wchar_t* format, va_list args) {
  return Print(out, room, format, args);
}

}  // namespace zt::detail
