// zt/text/string.h
//
// ZtStringA (char) and ZtStringW (wchar_t): terminated text on the exact-size ZtArray. The array's
// buffer holds the characters and a terminating 0; the array's element count is the capacity,
// Length() the text's length. Both are ZtStringT<Ch>, one design for the two character types.
//
//   ZtStringA s("item");
//   s << 12 << '-' << 2.5;      // "item12-2.5"; each append grows the buffer to the exact size
//   s.Replace("2", "x");        // "item1x-x.5", returns 2
//
// Invariants kept by every member: capacity >= Length() + 1 (at least 1) and the character at
// Length() is 0. Characters past the terminator are unspecified. Capacity is exact, never
// geometric: a string grows only when a longer text must be stored, then to exactly the length
// plus one, and shrinks only through FreeExtra, ReAllocate, Format and Replace (and Del(text)).
// The inherited ZtArray members that the string does not hide (GetLength, GetMaxIndex,
// operator[], SetAt, Append, DelHead, Sort, ...) work on the whole buffer, not on the text; a call
// that changes the buffer's size or the terminator leaves the text's length to the caller.
//
// Arguments are read as they were when a call began, also when they are the string itself or
// point into its buffer: s << s, s.Insert(i, s), s.Replace(s, t), s.Replace(t, s), s = s,
// s.Format("%s", s) give the texts the same calls give with a copy.
//
// A member that grows the buffer is all-or-nothing: when the allocation throws std::bad_alloc the
// string keeps its text and capacity. Indices are not checked by the interface; calls outside the
// stated limits are ignored (slices give an empty string) and never touch memory outside the
// buffer. A null text counts as the empty text.
#ifndef ZT_TEXT_STRING_H_
#define ZT_TEXT_STRING_H_

#include <memory>
#include <type_traits>

#include "zt/config.h"
#include "zt/containers/array.h"
#include "zt/containers/quene.h"

/// Terminated text of Ch (char or wchar_t) with exact-size storage. Use it as ZtStringA or
/// ZtStringW; only those two instantiations exist, compiled into the library.
template <class Ch>
class ZtStringT : public ZtArray<Ch> {
  using Base = ZtArray<Ch>;

 public:
  /// The character type of the other string class, whose text the converting constructor takes.
  using OtherChar = std::conditional_t<std::is_same_v<Ch, char>, wchar_t, char>;

  /// An empty text with room for n characters (capacity n + 1; a negative n counts as 0).
  explicit ZtStringT(ZtLong n = 0);
  /// A copy whose capacity is exactly its length + 1.
  ZtStringT(const ZtStringT& s);
  /// A copy of the terminated text s; capacity length + 1.
  ZtStringT(const Ch* s);  // NOLINT(google-explicit-constructor): texts stand for strings
  /// The text s converted from the other character type (the thread's ANSI code page on
  /// Windows, UTF-8 elsewhere). A failed conversion gives an empty string.
  ZtStringT(const OtherChar* s);  // NOLINT(google-explicit-constructor)
  /// Copies the text, growing the buffer only when it is too small. s = s keeps the text.
  ZtStringT& operator=(const ZtStringT& s);
  ZtStringT& operator=(const Ch* s);
  ~ZtStringT() override = default;

  ZtLong Length() const { return m_length; }
  bool IsEmpty() const { return m_length < 1; }
  /// True for the indices of the text, 0 to Length() - 1.
  bool IsValidIndex(ZtLong i) const { return i >= 0 && i < m_length; }
  /// The terminated text.
  operator const Ch*() const { return this->m_data; }  // NOLINT(google-explicit-constructor)
  /// Empties the text; the buffer is kept.
  void Reset();
  /// Makes the capacity exactly n + 1. With `keep` the text stays, cut to n characters when it
  /// is longer; without it the text is emptied.
  void ReAllocate(ZtLong n, bool keep);
  /// Capacity becomes exactly Length() + 1.
  void FreeExtra();

  /// Appends c (a 0 makes the terminated view shorter than Length()).
  ZtStringT& operator<<(Ch c);
  /// Appends v in decimal: a leading '-' for negatives, no padding.
  ZtStringT& operator<<(int v);
  ZtStringT& operator<<(const Ch* s);
  ZtStringT& operator<<(const ZtStringT& s);
  /// Appends v printed with "%f", then strips the trailing zeros of the whole text, keeping one
  /// digit after the point: 3.14 -> "3.14", 2 -> "2.0", 1e-7 -> "0.0".
  ZtStringT& operator<<(double v);
  /// This text followed by s, in a new string of capacity length + 1.
  ZtStringT operator+(const ZtStringT& s) const;

  /// Drops the last n characters (0 <= n <= Length()).
  void DelRight(ZtLong n);
  /// Drops the first n characters (0 <= n <= Length()).
  void DelLeft(ZtLong n);
  /// Removes the character at i.
  void Del(ZtLong i);
  /// Removes the characters from through to, both included (0 <= from <= to < Length()).
  void Del(ZtLong from, ZtLong to);
  /// c becomes the character at i (0 <= i <= Length()).
  void Insert(ZtLong i, Ch c);
  /// Inserts s at i; false and no change when i is outside 0..Length().
  bool Insert(ZtLong i, const ZtStringT& s);
  /// Reverses the characters from through to in place; to == -1 means the last character.
  void Reverse(ZtLong from = 0, ZtLong to = -1);
  /// Raises 'a'..'z' to 'A'..'Z'; nothing else changes.
  void MakeUpper();

  /// The first n characters (0 <= n <= Length()).
  ZtStringT Left(ZtLong n) const;
  /// The last n characters (0 <= n <= Length()).
  ZtStringT Right(ZtLong n) const;
  /// The characters from through to, both included: `to` is an end index, not a count.
  ZtStringT Mid(ZtLong from, ZtLong to) const;

  /// Index of the first c in [from, to], or -1. A negative `to`, or one past the text, means the
  /// last character; a negative `from` finds nothing.
  ZtLong Find(Ch c, ZtLong from = 0, ZtLong to = -1) const;
  /// Index of the last c in the text, or -1.
  ZtLong ReverseFind(Ch c) const;

  /// Comparisons of the terminated text with s, code units as unsigned values (strcmp/wcscmp).
  /// Two strings compare through the right one's terminated text.
  bool operator==(const Ch* s) const;
  bool operator!=(const Ch* s) const;
  bool operator>(const Ch* s) const;
  bool operator<(const Ch* s) const;

  /// True when the text is exactly "0" or atoi reads a non-zero value from it ("12abc", " 7").
  bool IsIntNumber() const;
  /// True when the text is ".0", "0.0" or "0.", or atof reads a non-zero value (NaN included).
  bool IsFloatNumber() const;
  /// Prints with the Windows runtime's format conventions (in a wide format %s takes a wide
  /// text, %S a narrow one). Capacity becomes 1,025; longer output is cut to 1,024 characters.
  /// A text of the other width is converted in the C runtime's locale; one it cannot convert
  /// cuts the output short.
  ZtStringT& Format(const Ch* format, ...);

  /// Fills next[0..Length()-1] with this text's failure table, taken as a search pattern:
  /// next[0] = -1; next[j] is where matching resumes after a mismatch at pattern index j.
  /// "abcabd" gives -1, 0, 0, 0, 0, 2. Nothing for an empty text.
  void CreateNextTable(ZtLong* next) const;
  /// Index of the first occurrence of `pattern` that starts at or after `from` and ends at or
  /// before `to` (-1: the last character), or -1. An empty pattern gives -1.
  ZtLong Find(const ZtStringT& pattern, ZtLong from = 0, ZtLong to = -1) const;
  /// Pushes the start of every non-overlapping occurrence in the range, ascending, into `hits`
  /// and returns hits.GetCount() (earlier contents included). An empty pattern pushes nothing
  /// and gives -1.
  ZtLong Find(const ZtStringT& pattern, ZtQuene<ZtLong>& hits, ZtLong from = 0,
              ZtLong to = -1) const;
  /// Always -1; `out` is not touched.
  ZtLong FindEx(const ZtStringT& pattern, ZtStringT& out, int mode, ZtLong from = 0,
                ZtLong to = -1) const;
  /// Replaces every non-overlapping occurrence of oldText lying wholly inside [from, to] by
  /// newText, in a new buffer of exactly the final length + 1; returns the number replaced. No
  /// change and 0 when there is none; -1 when oldText is empty. The new text is not searched.
  ZtLong Replace(const ZtStringT& oldText, const ZtStringT& newText, ZtLong from = 0,
                 ZtLong to = -1);
  /// Does nothing.
  void ReplaceEx(const ZtStringT& oldText, const ZtStringT& newText, int mode);
  /// Removes every non-overlapping occurrence of text; returns how many (-1 for an empty text).
  ZtLong Del(const ZtStringT& text);

 protected:
  /// Writes the terminator at n and makes n the length; n must be below the capacity.
  void SetEnd(ZtLong n);
  /// Makes the length n, growing the buffer to exactly n + 1 when it is smaller. Characters
  /// between the old and the new length are unspecified.
  void SetLength(ZtLong n);
  /// Copies n characters of s to index `at`, growing the text when they end past it.
  void Copy(const Ch* s, ZtLong at, ZtLong n);
  /// The same with the terminated text s.
  void Copy(const Ch* s, ZtLong at);
  /// Moves n characters from index `from` to index `to` inside the buffer (overlap-safe),
  /// growing the text when they end past it.
  void Copy(ZtLong from, ZtLong to, ZtLong n);

  ZtLong m_length = 0;

 private:
  // Makes the capacity at least n + 1, copying the text when `keep`. Returns the buffer it
  // replaced, still alive so that a source inside it can be read, or null.
  std::unique_ptr<Ch[]> Reserve(ZtLong n, bool keep = true);
  // Maps `to` == -1 and an end past the text to the last index; false when `from` is negative.
  bool ClampRange(ZtLong from, ZtLong& to) const;
  ZtStringT Slice(ZtLong at, ZtLong n) const;
  ZtLong ReplaceWith(const ZtStringT& oldText, const Ch* newText, ZtLong newLength, ZtLong from,
                     ZtLong to);
};

/// Narrow text: bytes in the thread's ANSI code page on Windows, UTF-8 elsewhere.
using ZtStringA = ZtStringT<char>;
/// Wide text: UTF-16 code units on Windows, UTF-32 elsewhere.
using ZtStringW = ZtStringT<wchar_t>;

extern template class ZT_API ZtStringT<char>;
extern template class ZT_API ZtStringT<wchar_t>;

#endif  // ZT_TEXT_STRING_H_
