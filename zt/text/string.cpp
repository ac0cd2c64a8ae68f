// ZtStringT<Ch>, written once for ZtStringA and ZtStringW; both are compiled here and exported.
#include "zt/text/string.h"

#include <algorithm>
#include <cstdarg>
#include <cstdint>
#include <limits>
#include <new>
#include <string>
#include <vector>

#include "zt/containers/internal/element_ops.h"
#include "zt/platform/text.h"
#include "zt/text/internal/search.h"
#include "zt/text/internal/string_traits.h"

namespace {

template <class Ch>
using Traits = zt::detail::StringTraits<Ch>;

template <class Ch>
void MoveChars(Ch* dst, const Ch* src, ZtLong n) {
  if (n > 0) std::char_traits<Ch>::move(dst, src, static_cast<std::size_t>(n));
}

}  // namespace

// ---- storage ----

template <class Ch>
std::unique_ptr<Ch[]> ZtStringT<Ch>::Reserve(ZtLong n, bool keep) {
  if (n < this->m_count) return nullptr;
  const ZtLong size = zt::detail::AddLength(n, 1);
  // The text and its terminator; never more than the buffer holds, should an inherited array
  // member have shortened it under the text.
  const ZtLong kept = std::min(m_length + 1, this->m_count);
  Ch* fresh = zt::detail::CopyIntoNew(size, keep ? this->m_data : nullptr, kept);
  std::unique_ptr<Ch[]> old(this->m_data);
  this->m_data = fresh;
  this->m_count = size;
  return old;
}

template <class Ch>
void ZtStringT<Ch>::SetEnd(ZtLong n) {
  if (n < 0 || n >= this->m_count) return;
  this->m_data[n] = 0;
  m_length = n;
}

template <class Ch>
void ZtStringT<Ch>::SetLength(ZtLong n) {
  if (n < 0) return;
  Reserve(n);
  SetEnd(n);
}

template <class Ch>
void ZtStringT<Ch>::Copy(const Ch* s, ZtLong at, ZtLong n) {
  if (s == nullptr || at < 0 || n < 0) return;
  const ZtLong end = zt::detail::AddLength(at, n);
  const auto old = end > m_length ? Reserve(end) : nullptr;  // s may live in the old buffer
  MoveChars(this->m_data + at, s, n);
  if (end > m_length) SetEnd(end);
}

template <class Ch>
void ZtStringT<Ch>::Copy(const Ch* s, ZtLong at) {
  if (s != nullptr) Copy(s, at, zt::platform::TextLength(s));
}

template <class Ch>
void ZtStringT<Ch>::Copy(ZtLong from, ZtLong to, ZtLong n) {
  if (from < 0 || to < 0 || n < 0 || from > this->m_count - n) return;
  const ZtLong end = zt::detail::AddLength(to, n);
  const auto old = end > m_length ? Reserve(end) : nullptr;
  MoveChars(this->m_data + to, (old ? old.get() : this->m_data) + from, n);
  if (end > m_length) SetEnd(end);
}

// ---- construction ----

template <class Ch>
ZtStringT<Ch>::ZtStringT(ZtLong n) : Base(n > 0 ? zt::detail::AddLength(n, 1) : 1) {
  SetEnd(0);
}

template <class Ch>
ZtStringT<Ch>::ZtStringT(const ZtStringT& s) : ZtStringT(s.m_length) {
  Copy(s.m_data, 0, s.m_length);
}

template <class Ch>
ZtStringT<Ch>::ZtStringT(const Ch* s) : ZtStringT(s != nullptr ? zt::platform::TextLength(s) : 0) {
  Copy(s, 0, this->m_count - 1);
}

template <class Ch>
ZtStringT<Ch>::ZtStringT(const OtherChar* s) : Base() {
  const ZtLong n = s != nullptr ? Traits<Ch>::ConvertedLength(s) : -1;
  Base::ReAllocate(n > 0 ? n + 1 : 1, false);
  SetEnd(0);
  if (n <= 0) return;
  Traits<Ch>::Convert(s, this->m_data, n + 1);
  SetEnd(n);
}

template <class Ch>
ZtStringT<Ch>& ZtStringT<Ch>::operator=(const ZtStringT& s) {
  if (this != &s) *this = s.m_data;
  return *this;
}

template <class Ch>
ZtStringT<Ch>& ZtStringT<Ch>::operator=(const Ch* s) {
  const ZtLong n = s != nullptr ? zt::platform::TextLength(s) : 0;
  const auto old = Reserve(n, false);  // s may live in the old buffer
  MoveChars(this->m_data, s, n);
  SetEnd(n);
  return *this;
}

// ---- size ----

template <class Ch>
void ZtStringT<Ch>::Reset() {
  SetEnd(0);
}

template <class Ch>
void ZtStringT<Ch>::ReAllocate(ZtLong n, bool keep) {
  if (n < 0) n = 0;
  Base::ReAllocate(zt::detail::AddLength(n, 1), keep);
  if (!keep || m_length > n) m_length = keep ? n : 0;
  this->m_data[m_length] = 0;
  this->m_data[n] = 0;
}

template <class Ch>
void ZtStringT<Ch>::FreeExtra() {
  Base::ReAllocate(m_length + 1, true);
}

// ---- appending ----

template <class Ch>
ZtStringT<Ch>& ZtStringT<Ch>::operator<<(Ch c) {
  const ZtLong at = m_length;
  SetLength(zt::detail::AddLength(at, 1));
  this->m_data[at] = c;
  return *this;
}

template <class Ch>
ZtStringT<Ch>& ZtStringT<Ch>::operator<<(int v) {
  Ch text[zt::platform::kIntTextRoom];
  zt::platform::IntToText(v, text);
  return *this << text;
}

template <class Ch>
ZtStringT<Ch>& ZtStringT<Ch>::operator<<(const Ch* s) {
  Copy(s, m_length);
  return *this;
}

template <class Ch>
ZtStringT<Ch>& ZtStringT<Ch>::operator<<(const ZtStringT& s) {
  Copy(s.m_data, m_length, s.m_length);
  return *this;
}

template <class Ch>
ZtStringT<Ch>& ZtStringT<Ch>::operator<<(double v) {
  ZtStringT fixed;
  fixed.Format(Traits<Ch>::kFixed, v);
  *this << fixed;
  // "%f" always prints a point and six digits after it (or a word such as "inf"), so the walk
  // stops inside the appended text.
  ZtLong i = m_length - 1;
  while (i > 0 && this->m_data[i] == '0' && this->m_data[i - 1] != '.') --i;
  SetEnd(i + 1);
  return *this;
}

template <class Ch>
ZtStringT<Ch> ZtStringT<Ch>::operator+(const ZtStringT& s) const {
  ZtStringT sum(zt::detail::AddLength(m_length, s.m_length));
  sum << *this << s;
  return sum;
}

// ---- editing ----

template <class Ch>
void ZtStringT<Ch>::DelRight(ZtLong n) {
  if (n >= 0 && n <= m_length) SetEnd(m_length - n);
}

template <class Ch>
void ZtStringT<Ch>::DelLeft(ZtLong n) {
  if (n < 0 || n > m_length) return;
  Copy(n, 0, m_length - n);
  SetEnd(m_length - n);
}

template <class Ch>
void ZtStringT<Ch>::Del(ZtLong i) {
  Del(i, i);
}

template <class Ch>
void ZtStringT<Ch>::Del(ZtLong from, ZtLong to) {
  if (from < 0 || from > to || to >= m_length) return;
  Copy(to + 1, from, m_length - to - 1);
  SetEnd(m_length - (to - from + 1));
}

template <class Ch>
void ZtStringT<Ch>::Insert(ZtLong i, Ch c) {
  if (i < 0 || i > m_length) return;
  Copy(i, i + 1, m_length - i);
  this->m_data[i] = c;
}

template <class Ch>
bool ZtStringT<Ch>::Insert(ZtLong i, const ZtStringT& s) {
  if (i < 0 || i > m_length) return false;
  if (&s == this) return Insert(i, ZtStringT(s));  // the tail moves before s would be read
  Copy(i, zt::detail::AddLength(i, s.m_length), m_length - i);
  Copy(s.m_data, i, s.m_length);
  return true;
}

template <class Ch>
void ZtStringT<Ch>::Reverse(ZtLong from, ZtLong to) {
  if (to == -1) to = m_length - 1;
  if (IsValidIndex(from) && IsValidIndex(to)) Base::Reverse(from, to);
}

template <class Ch>
void ZtStringT<Ch>::MakeUpper() {
  for (ZtLong i = 0; i < m_length; ++i) {
    Ch& c = this->m_data[i];
    if (c >= 'a' && c <= 'z') c = static_cast<Ch>(c - ('a' - 'A'));
  }
}

// ---- slicing ----

template <class Ch>
ZtStringT<Ch> ZtStringT<Ch>::Slice(ZtLong at, ZtLong n) const {
  if (at < 0 || n < 0 || at > m_length - n) return ZtStringT();
  ZtStringT part(n);
  part.Copy(this->m_data + at, 0, n);
  return part;
}

template <class Ch>
ZtStringT<Ch> ZtStringT<Ch>::Left(ZtLong n) const {
  return Slice(0, n);
}

template <class Ch>
ZtStringT<Ch> ZtStringT<Ch>::Right(ZtLong n) const {
  return Slice(m_length - n, n);
}

template <class Ch>
ZtStringT<Ch> ZtStringT<Ch>::Mid(ZtLong from, ZtLong to) const {
  return Slice(from, to - from + 1);
}

// ---- one-character search and comparison ----

template <class Ch>
ZtLong ZtStringT<Ch>::Find(Ch c, ZtLong from, ZtLong to) const {
  if (to < 0 || to >= m_length) to = m_length - 1;
  if (from < 0 || from > to) return -1;
  const ZtLong n = to - from + 1;
  const Ch* p = std::char_traits<Ch>::find(this->m_data + from, static_cast<std::size_t>(n), c);
  return p != nullptr ? static_cast<ZtLong>(p - this->m_data) : -1;
}

template <class Ch>
ZtLong ZtStringT<Ch>::ReverseFind(Ch c) const {
  ZtLong i = m_length - 1;
  while (i >= 0 && this->m_data[i] != c) --i;
  return i;
}

template <class Ch>
bool ZtStringT<Ch>::operator==(const Ch* s) const {
  return zt::platform::Compare<Ch>(this->m_data, s != nullptr ? s : Traits<Ch>::kEmpty) == 0;
}

template <class Ch>
bool ZtStringT<Ch>::operator!=(const Ch* s) const {
  return !(*this == s);
}

template <class Ch>
bool ZtStringT<Ch>::operator>(const Ch* s) const {
  return zt::platform::Compare<Ch>(this->m_data, s != nullptr ? s : Traits<Ch>::kEmpty) > 0;
}

template <class Ch>
bool ZtStringT<Ch>::operator<(const Ch* s) const {
  return zt::platform::Compare<Ch>(this->m_data, s != nullptr ? s : Traits<Ch>::kEmpty) < 0;
}

// ---- numbers and printing ----

template <class Ch>
bool ZtStringT<Ch>::IsIntNumber() const {
  return zt::platform::ToInt(this->m_data) != 0 || *this == Traits<Ch>::kZero;
}

template <class Ch>
bool ZtStringT<Ch>::IsFloatNumber() const {
  return Traits<Ch>::IsFloatNumber(this->m_data);
}

template <class Ch>
ZtStringT<Ch>& ZtStringT<Ch>::Format(const Ch* format, ...) {
  // Printed aside first: an argument may be this string's own text.
  Ch text[zt::platform::kFormatRoom];
  va_list args;
  va_start(args, format);
  ZtLong n = 0;
  try {
    n = zt::platform::FormatV(text, format != nullptr ? format : Traits<Ch>::kEmpty, args);
  } catch (...) {
    va_end(args);
    throw;
  }
  va_end(args);
  Base::ReAllocate(zt::platform::kFormatRoom, false);
  MoveChars(this->m_data, text, n);
  SetEnd(n);
  this->m_data[zt::platform::kFormatRoom - 1] = 0;
  return *this;
}

// ---- substring search and replace ----

template <class Ch>
void ZtStringT<Ch>::CreateNextTable(ZtLong* next) const {
  if (next != nullptr) zt::detail::BuildNextTable(this->m_data, m_length, next);
}

template <class Ch>
bool ZtStringT<Ch>::ClampRange(ZtLong from, ZtLong& to) const {
  if (to == -1 || to >= m_length) to = m_length - 1;
  return from >= 0;
}

template <class Ch>
ZtLong ZtStringT<Ch>::Find(const ZtStringT& pattern, ZtLong from, ZtLong to) const {
  ZtLong found = -1;
  if (ClampRange(from, to) && pattern.m_length > 0) {
    zt::detail::ForEachMatch(this->m_data, from, to, pattern.m_data, pattern.m_length,
                             [&found](ZtLong at) {
                               found = at;
                               return false;
                             });
  }
  return found;
}

template <class Ch>
ZtLong ZtStringT<Ch>::Find(const ZtStringT& pattern, ZtQuene<ZtLong>& hits, ZtLong from,
                           ZtLong to) const {
  if (pattern.m_length == 0) return -1;
  if (ClampRange(from, to)) {
    zt::detail::ForEachMatch(this->m_data, from, to, pattern.m_data, pattern.m_length,
                             [&hits](ZtLong at) {
                               hits.Push(at);
                               return true;
                             });
  }
  return hits.GetCount();
}

template <class Ch>
ZtLong ZtStringT<Ch>::FindEx(const ZtStringT& /*pattern*/, ZtStringT& /*out*/, int /*mode*/,
                             ZtLong /*from*/, ZtLong /*to*/) const {
  return -1;
}

template <class Ch>
ZtLong ZtStringT<Ch>::Replace(const ZtStringT& oldText, const ZtStringT& newText, ZtLong from,
                              ZtLong to) {
  return ReplaceWith(oldText, newText.m_data, newText.m_length, from, to);
}

template <class Ch>
void ZtStringT<Ch>::ReplaceEx(const ZtStringT& /*oldText*/, const ZtStringT& /*newText*/,
                              int /*mode*/) {}

template <class Ch>
ZtLong ZtStringT<Ch>::Del(const ZtStringT& text) {
  return ReplaceWith(text, Traits<Ch>::kEmpty, 0, 0, -1);
}

// The new text is built in a buffer of exactly its size while the old buffer, which oldText and
// newText may be, stays untouched; the string changes only once everything is allocated.
template <class Ch>
ZtLong ZtStringT<Ch>::ReplaceWith(const ZtStringT& oldText, const Ch* newText, ZtLong newLength,
                                  ZtLong from, ZtLong to) {
  const ZtLong oldLength = oldText.m_length;
  if (oldLength == 0) return -1;
  std::vector<ZtLong> hits;
  if (ClampRange(from, to)) {
    zt::detail::ForEachMatch(this->m_data, from, to, oldText.m_data, oldLength, [&hits](ZtLong at) {
      hits.push_back(at);
      return true;
    });
  }
  if (hits.empty()) return 0;
  const auto count = static_cast<ZtLong>(hits.size());
  const std::int64_t length = m_length + static_cast<std::int64_t>(count) * (newLength - oldLength);
  if (length >= std::numeric_limits<ZtLong>::max()) throw std::bad_alloc();
  const auto size = static_cast<ZtLong>(length + 1);
  std::unique_ptr<Ch[]> fresh(new Ch[static_cast<std::size_t>(size)]);
  Ch* out = fresh.get();
  ZtLong pos = 0;
  for (const ZtLong at : hits) {
    MoveChars(out, this->m_data + pos, at - pos);
    out += at - pos;
    MoveChars(out, newText, newLength);
    out += newLength;
    pos = at + oldLength;
  }
  MoveChars(out, this->m_data + pos, m_length - pos);
  out[m_length - pos] = 0;
  delete[] this->m_data;
  this->m_data = fresh.release();
  this->m_count = size;
  m_length = size - 1;
  return count;
}

template class ZT_INSTANTIATION_API ZtStringT<char>;
template class ZT_INSTANTIATION_API ZtStringT<wchar_t>;
