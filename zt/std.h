// zt/std.h
//
// Standard-library interop for the containers and the strings, opt-in (zt/zt.h does not include
// it, so clients that do not want <string_view>, <ostream> and these global begin/end templates
// never see them): range-for and iterators for <algorithm>, string views, std::hash and stream
// output.
//
//   #include <zt/std.h>
//   ZtDynArray<int> a;
//   a << 3 << 1 << 2;
//   std::sort(begin(a), end(a));          // [1, 2, 3]: random access into the array's buffer
//   for (int& v : a) v *= 10;             // the cursor does not move
//   ZtDList<int> l(a);
//   std::reverse(begin(l), end(l));       // bidirectional: [30, 20, 10]
//   ZtStringA s = ZtStringFrom(std::string_view("abc"));
//   std::cout << s << ZtAsView(s).size();  // "abc3"
//
// begin(c) and end(c) are free functions in the global namespace, found by argument-dependent
// lookup: range-for uses them, and generic code calls them unqualified (after `using std::begin;`
// if it also takes standard containers). What they return depends on the most derived class they
// recognise:
//   ZtDynArray<T> (and ZtDynPArray<T>), ZtArray<T>   T*: random access into the buffer
//   ZtStringA, ZtStringW                             the characters of the text, Length() of them
//                                                    (not the whole buffer)
//   ZtDList<T> (and ZtXList, ZtPDList, ZtPXList)     bidirectional, one step each way
//   ZtList<T>                                        forward (a step back would walk from the head)
//   any other ZtDynArrayBase<T>, or one seen         bidirectional through GetNext/GetPre
//   through a ZtDynArrayBase<T>&
// The iterators of a sequence walk the const slots GetFirst, GetNext, GetPre and GetLast, so the
// cursor never moves. The elements are the sequence's own: an owning container yields its
// pointers (T*&), and storing through one does not delete the object it replaces. Iterators over
// an array and its pointers are invalidated by anything that may reallocate the buffer; list
// iterators stay valid until their element is removed.
//
// The strings: ZtAsView(s) is a view of the Length() characters of the text; ZtStringFrom(view)
// is a new string holding the view's characters, embedded zeros included (std::length_error when
// the view is longer than a string can be). std::hash<ZtStringA/W> hashes the terminated text, as
// the strings' == compares it. operator<< prints a string to a stream of its own width as
// the view, and to one of the other width converted as the strings' converting constructors do
// (UTF-8 on Linux, the thread's ANSI code page on Windows), up to the first zero.
#ifndef ZT_STD_H_
#define ZT_STD_H_

#include <cstddef>
#include <functional>
#include <iterator>
#include <limits>
#include <ostream>
#include <stdexcept>
#include <string_view>
#include <type_traits>

#include "zt/config.h"
#include "zt/containers/array.h"
#include "zt/containers/dlist.h"
#include "zt/containers/dyn_array.h"
#include "zt/containers/dyn_array_base.h"
#include "zt/containers/list.h"
#include "zt/text/string.h"

namespace zt::detail {

template <bool kConst, class T>
using MaybeConst = std::conditional_t<kConst, const T, T>;

/// An iterator over a sequence's elements through its const slots. Category is forward or
/// bidirectional; the end iterator holds a null element address.
template <class T, class Category, bool kConst>
class SlotIterator {
 public:
  using iterator_category = Category;
  using value_type = T;
  using difference_type = std::ptrdiff_t;
  using pointer = MaybeConst<kConst, T>*;
  using reference = MaybeConst<kConst, T>&;

  SlotIterator() = default;
  SlotIterator(const ZtDynArrayBase<T>* seq, const T* at) : m_seq(seq), m_at(at) {}
  /// A mutable iterator converts to the const one.
  template <bool kFrom, class = std::enable_if_t<kConst && !kFrom>>
  SlotIterator(const SlotIterator<T, Category, kFrom>& o)  // NOLINT(google-explicit-constructor)
      : m_seq(o.m_seq), m_at(o.m_at) {}

  // The slots hand out const addresses of elements that are not const objects themselves.
  reference operator*() const { return *const_cast<pointer>(m_at); }
  pointer operator->() const { return const_cast<pointer>(m_at); }
  SlotIterator& operator++() {
    m_at = m_seq->GetNext(m_at);
    return *this;
  }
  SlotIterator operator++(int) {
    SlotIterator old = *this;
    ++*this;
    return old;
  }
  /// From the end iterator to the last element.
  template <class C = Category,
            class = std::enable_if_t<std::is_same_v<C, std::bidirectional_iterator_tag>>>
  SlotIterator& operator--() {
    m_at = m_at != nullptr ? m_seq->GetPre(m_at) : m_seq->GetLast();
    return *this;
  }
  template <class C = Category,
            class = std::enable_if_t<std::is_same_v<C, std::bidirectional_iterator_tag>>>
  SlotIterator operator--(int) {
    SlotIterator old = *this;
    --*this;
    return old;
  }
  friend bool operator==(const SlotIterator& a, const SlotIterator& b) { return a.m_at == b.m_at; }
  friend bool operator!=(const SlotIterator& a, const SlotIterator& b) { return a.m_at != b.m_at; }

 private:
  template <class, class, bool>
  friend class SlotIterator;

  const ZtDynArrayBase<T>* m_seq = nullptr;
  const T* m_at = nullptr;
};

/// A contiguous run of n elements from `first`.
template <class T>
struct Span {
  T* first;
  ZtLong n;
  T* Begin() const { return first; }
  T* End() const { return first + n; }
};

/// A sequence walked with It.
template <class It, class T>
struct Slots {
  const ZtDynArrayBase<T>* seq;
  It Begin() const { return It(seq, seq->GetFirst()); }
  It End() const { return It(seq, nullptr); }
};

// Elements<kConst>(c): the run of c's elements that begin and end return, kConst for a const c.
// Overload resolution picks the most derived class of c among these.

template <bool kConst, class T>
Slots<SlotIterator<T, std::bidirectional_iterator_tag, kConst>, T> Elements(
    const ZtDynArrayBase<T>& s) {
  return {&s};
}

template <bool kConst, class T>
Slots<SlotIterator<T, std::forward_iterator_tag, kConst>, T> Elements(const ZtList<T>& l) {
  return {&l};
}

template <bool kConst, class T>
Slots<SlotIterator<T, std::bidirectional_iterator_tag, kConst>, T> Elements(const ZtDList<T>& l) {
  return {&l};
}

template <bool kConst, class T>
Span<MaybeConst<kConst, T>> Elements(const ZtDynArray<T>& a) {
  // The buffer itself, also when a derived class has replaced the address slots.
  return {const_cast<T*>(a.ZtDynArray<T>::GetFirst()), a.GetLength()};
}

template <bool kConst, class T>
Span<MaybeConst<kConst, T>> Elements(const ZtArray<T>& a) {
  return {a.GetDataBuffer(), a.GetLength()};
}

/// The text of a string: its Length() characters, never more than its buffer holds before the
/// terminator.
template <class Ch, class S>
Span<Ch> Text(const S& s) {
  const ZtLong room = s.GetLength() - 1;  // the inherited array's length: the whole buffer
  const ZtLong n = s.Length() < 0 ? 0 : s.Length() < room ? s.Length() : room;
  return {s.GetDataBuffer(), n > 0 ? n : 0};
}

template <bool kConst>
Span<MaybeConst<kConst, char>> Elements(const ZtStringA& s) {
  return Text<char>(s);
}

template <bool kConst>
Span<MaybeConst<kConst, wchar_t>> Elements(const ZtStringW& s) {
  return Text<wchar_t>(s);
}

template <class S, class Ch>
S StringFromView(std::basic_string_view<Ch> v) {
  if (v.size() >= static_cast<std::size_t>(std::numeric_limits<ZtLong>::max())) {
    throw std::length_error("text too long for a zt string");
  }
  S s(static_cast<ZtLong>(v.size()));  // room for the whole text: the appends do not reallocate
  for (const Ch c : v) s << c;
  return s;
}

/// The terminated text of a string, which its == compares.
template <class Ch, class S>
std::basic_string_view<Ch> TerminatedText(const S& s) {
  const Span<Ch> t = Text<Ch>(s);
  const std::basic_string_view<Ch> v(t.first, static_cast<std::size_t>(t.n));
  return v.substr(0, v.find(Ch(0)));
}

}  // namespace zt::detail

/// The first element of c (see the table above).
template <class C>
auto begin(C& c) -> decltype(zt::detail::Elements<std::is_const_v<C>>(c).Begin()) {
  return zt::detail::Elements<std::is_const_v<C>>(c).Begin();
}

/// Past the last element of c.
template <class C>
auto end(C& c) -> decltype(zt::detail::Elements<std::is_const_v<C>>(c).End()) {
  return zt::detail::Elements<std::is_const_v<C>>(c).End();
}

/// The Length() characters of the text.
inline std::string_view ZtAsView(const ZtStringA& s) {
  const auto t = zt::detail::Text<char>(s);
  return {t.first, static_cast<std::size_t>(t.n)};
}
inline std::wstring_view ZtAsView(const ZtStringW& s) {
  const auto t = zt::detail::Text<wchar_t>(s);
  return {t.first, static_cast<std::size_t>(t.n)};
}

/// A new string holding the characters of v, with capacity v.size() + 1.
inline ZtStringA ZtStringFrom(std::string_view v) {
  return zt::detail::StringFromView<ZtStringA>(v);
}
inline ZtStringW ZtStringFrom(std::wstring_view v) {
  return zt::detail::StringFromView<ZtStringW>(v);
}

inline std::ostream& operator<<(std::ostream& os, const ZtStringA& s) { return os << ZtAsView(s); }
inline std::wostream& operator<<(std::wostream& os, const ZtStringW& s) {
  return os << ZtAsView(s);
}
/// The text converted to narrow, up to its first zero.
inline std::ostream& operator<<(std::ostream& os, const ZtStringW& s) {
  return os << ZtStringA(static_cast<const wchar_t*>(s));
}
/// The text converted to wide, up to its first zero.
inline std::wostream& operator<<(std::wostream& os, const ZtStringA& s) {
  return os << ZtStringW(static_cast<const char*>(s));
}

namespace std {

template <>
struct hash<ZtStringA> {
  size_t operator()(const ZtStringA& s) const noexcept {
    return hash<string_view>()(zt::detail::TerminatedText<char>(s));
  }
};

template <>
struct hash<ZtStringW> {
  size_t operator()(const ZtStringW& s) const noexcept {
    return hash<wstring_view>()(zt::detail::TerminatedText<wchar_t>(s));
  }
};

}  // namespace std

#endif  // ZT_STD_H_
