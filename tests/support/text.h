// tests/support/text.h
//
// Helpers for string tests written once for both character types: ASCII literals widened to
// Ch, a string's text read back as ASCII, and the state snapshot the strong-guarantee checks use.
#ifndef ZT_TESTS_SUPPORT_TEXT_H_
#define ZT_TESTS_SUPPORT_TEXT_H_

#include <string>
#include <tuple>
#include <type_traits>

#include "zt/text/string.h"

namespace zt::test {

/// The string class of the character type Ch.
template <class Ch>
using StringOf = std::conditional_t<std::is_same_v<Ch, char>, ZtStringA, ZtStringW>;

/// The ASCII text `ascii` in units of Ch.
template <class Ch>
std::basic_string<Ch> Lit(const char* ascii) {
  return std::basic_string<Ch>(ascii, ascii + std::char_traits<char>::length(ascii));
}

template <class Ch>
StringOf<Ch> Str(const char* ascii) {
  return StringOf<Ch>(Lit<Ch>(ascii).c_str());
}

/// The first Length() units of s, each cut to a char.
template <class S>
std::string Text(const S& s) {
  const auto* data = s.GetDataBuffer();
  return std::string(data, data + s.Length());
}

/// Length, capacity, buffer address and text.
template <class S>
auto StringState(const S& s) {
  return std::make_tuple(s.Length(), s.GetLength(), static_cast<const void*>(s.GetDataBuffer()),
                         Text(s));
}

}  // namespace zt::test

#endif  // ZT_TESTS_SUPPORT_TEXT_H_
