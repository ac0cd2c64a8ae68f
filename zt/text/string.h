// zt/text/string.h
//
// ZtStringA (char) and ZtStringW (wchar_t): terminated text on the exact-size ZtArray. The array's
// buffer holds the characters and a terminating 0; the array's element count is the capacity,
// Length() the text's length. The two classes have the same members, declared once in
// zt/text/internal/string_members.inc (read it for each member's contract) and defined once.
//
//   ZtStringA s("item");
//   s << 12 << '-' << 2.5;      // "item12-2.5"; each append grows the buffer to the exact size
//   s.Replace("2", "x");        // "item1x-x.5", returns 2
//
// Invariants kept by every member: capacity >= Length() + 1 (at least 1) and the character at
// Length() is 0. Characters past the terminator are unspecified. Capacity is exact, never
// geometric: a string grows only when a longer text must be stored, then to exactly the length
// plus one, and shrinks only through FreeExtra, ReAllocate, Format and Replace (and Del(text)).
//
// The inherited ZtArray members that the string does not hide (GetLength, GetMaxIndex,
// operator[], SetAt, Append, DelHead, DelTail, Sort, ...) work on the whole buffer, not on the
// text, and keep Length() as it was. When such a call shrinks the buffer below the text or
// overwrites the terminator, the string's own members take the text to be the first Length()
// characters cut at the buffer's end (the terminated view stops there too) and never read or
// write outside the buffer; a member that changes the text writes a terminator again.
//
// Arguments are read as they were when a call began, also when they are the string itself or
// point into its buffer: s << s, s.Insert(i, s), s.Replace(s, t), s.Replace(t, s), s = s,
// s.Format("%s", s) give the texts the same calls give with a copy.
//
// A member that grows the buffer is all-or-nothing: when the allocation throws std::bad_alloc the
// string keeps its text and capacity. Indices are not checked by the interface; calls outside the
// stated limits are ignored (slices give an empty string) and never touch memory outside the
// buffer; the checked build reports them (zt/checked.h). A null text counts as the empty text.
#ifndef ZT_TEXT_STRING_H_
#define ZT_TEXT_STRING_H_

#include <memory>
#include <type_traits>

#include "zt/config.h"
#include "zt/containers/array.h"
#include "zt/containers/quene.h"

/// Narrow text: bytes in the thread's ANSI code page on Windows, UTF-8 elsewhere.
class ZT_API ZtStringA : public ZtArray<char> {
#define ZT_STRING ZtStringA
#define ZT_STRING_CHAR char
#include "zt/text/internal/string_members.inc"  // IWYU pragma: keep
};

/// Wide text: UTF-16 code units on Windows, UTF-32 elsewhere.
class ZT_API ZtStringW : public ZtArray<wchar_t> {
#define ZT_STRING ZtStringW
#define ZT_STRING_CHAR wchar_t
#include "zt/text/internal/string_members.inc"  // IWYU pragma: keep
};

#endif  // ZT_TEXT_STRING_H_
