// zt/text/internal/string_traits.h
//
// What differs between ZtStringA and ZtStringW: the conversion from the other character type,
// the number parsing, and the literals the strings print and compare with. Everything else is
// written once for both classes. Not public.
#ifndef ZT_TEXT_INTERNAL_STRING_TRAITS_H_
#define ZT_TEXT_INTERNAL_STRING_TRAITS_H_

#include <memory>

#include "zt/config.h"
#include "zt/platform/text.h"

namespace zt::detail {

template <class Ch>
struct StringTraits;

template <>
struct StringTraits<char> {
  static ZtLong ConvertedLength(const wchar_t* s) { return platform::NarrowLength(s); }
  static void Convert(const wchar_t* s, char* out, ZtLong room) {
    platform::ToNarrow(s, out, room);
  }
  /// atof, and the three spellings of zero that count as real numbers.
  static bool IsFloatNumber(const char* s) {
    return platform::ToDouble(s) != 0.0 || platform::Compare(s, ".0") == 0 ||
           platform::Compare(s, "0.0") == 0 || platform::Compare(s, "0.") == 0;
  }
  static constexpr char kFixed[] = "%f";
  static constexpr char kZero[] = "0";
  static constexpr char kEmpty[] = "";
};

template <>
struct StringTraits<wchar_t> {
  static ZtLong ConvertedLength(const char* s) { return platform::WideLength(s); }
  static void Convert(const char* s, wchar_t* out, ZtLong room) { platform::ToWide(s, out, room); }
  /// The narrow answer for the text converted to narrow (a failed conversion is the empty text).
  static bool IsFloatNumber(const wchar_t* s) {
    const ZtLong n = platform::NarrowLength(s);
    if (n < 0) return false;
    const std::unique_ptr<char[]> narrow(new char[static_cast<std::size_t>(n) + 1]);
    platform::ToNarrow(s, narrow.get(), n + 1);
    return StringTraits<char>::IsFloatNumber(narrow.get());
  }
  static constexpr wchar_t kFixed[] = L"%f";
  static constexpr wchar_t kZero[] = L"0";
  static constexpr wchar_t kEmpty[] = L"";
};

}  // namespace zt::detail

#endif  // ZT_TEXT_INTERNAL_STRING_TRAITS_H_
