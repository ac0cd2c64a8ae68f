// zt/text/label.h
//
// Label order and a wide-string copy helper.
//
// CompareLabelA / CompareLabelW order labels such as "item12" or "Node-7": the non-digit
// characters of a label, taken together as one text, decide first (strcmp / wcscmp order, code
// units as unsigned); only when those texts are equal do the digits decide, taken together as one
// decimal number (as atoi reads it, so digits past INT_MAX count as INT_MAX).
//
//   CompareLabelA("file2", "file10");   // -1: same text "file", 2 < 10
//   CompareLabelA("b1", "a99");         //  1: the text decides first
//
// In a narrow label a byte from 0x80 up is the lead byte of a double-byte character: the byte
// after it goes to the text unexamined, so a trail byte that looks like a digit stays text. Wide
// labels have no lead units. Both labels must be non-null terminated texts; the checked build
// reports a null label or a null text given to CloneString (zt/checked.h).
#ifndef ZT_TEXT_LABEL_H_
#define ZT_TEXT_LABEL_H_

#include "zt/config.h"

/// -1 when a orders before b, 1 when after, 0 when they are equal in the label order.
ZT_API int CompareLabelA(const char* a, const char* b);
/// The same for wide labels.
ZT_API int CompareLabelW(const wchar_t* a, const wchar_t* b);
/// A copy of s and its terminator in a new array; the caller releases it with delete[]. Null
/// for a null s.
ZT_API wchar_t* CloneString(const wchar_t* s);

#endif  // ZT_TEXT_LABEL_H_
