// zt/containers/internal/sequence_ops.h
//
// Cursor algorithms shared by the sequence's own members (ordering by element) and the owning
// containers' members (ordering by the pointed-to objects). Each takes the sequence and the
// comparisons as parameters, so the same walk serves both. Implementation details only.
#ifndef ZT_CONTAINERS_INTERNAL_SEQUENCE_OPS_H_
#define ZT_CONTAINERS_INTERNAL_SEQUENCE_OPS_H_

#include <cstdint>

#include "zt/checked.h"
#include "zt/config.h"
#include "zt/containers/internal/element_ops.h"

namespace zt::detail {

// Move(from, to) names a place: `from` an element, `to` an index up to the length. The checked
// build reports the offending one.
template <class Seq>
bool MovesWithin(const Seq& s, ZtLong from, ZtLong to, [[maybe_unused]] const char* cls) {
  const bool fromOk = s.IsValidIndex(from);
  return ZT_IN_CONTRACT(fromOk && to >= 0 && to <= s.GetLength(), "Move", cls, "index",
                        fromOk ? to : from);
}

// A range [from, to] of a text or sequence of `length` elements lies inside it and holds at least
// `least` elements (0 for a slice, where to == from - 1 is the empty one). The checked build
// reports an index outside, or a reversed range by its `from`.
inline bool RangeWithin(ZtLong from, ZtLong to, ZtLong length, ZtLong least,
                        [[maybe_unused]] const char* op, [[maybe_unused]] const char* cls) {
  return ZT_IN_CONTRACT(from >= 0 && to < length, op, cls, "index", from < 0 ? from : to) &&
         ZT_IN_CONTRACT(std::int64_t{to} - from + 1 >= least, op, cls, "range", from);
}

// Positions the cursor of `s` for a sorted insertion into [from, to] and reports whether it found
// an equal element. vAfter(e) / vBefore(e) tell whether the searched value belongs after / before
// element e. `to` below 0 or past the end means the last index; a `from` outside the sequence is
// clamped into it. On false the cursor is where InsertCur keeps the range sorted; with `from`
// above `to` that is `from` when the value belongs before it.
template <class Seq, class After, class Before>
bool BisectCursor(Seq& s, ZtLong from, ZtLong to, After vAfter, Before vBefore) {
  const ZtLong length = s.GetLength();
  if (to < 0 || to >= length) to = length - 1;
  if (length == 0) {
    s.MoveTo(0);
    return false;
  }
  if (from < 0) from = 0;
  if (from >= length) from = length - 1;
  s.MoveTo(from);
  if (vBefore(s.GetCurData())) return false;
  s.MoveTo(to);
  if (vAfter(s.GetCurData())) {
    s.MoveToNext();
    return false;
  }
  while (from < to) {
    const ZtLong mid = MidIndex(from, to);
    s.MoveTo(mid);
    if (vAfter(s.GetCurData())) {
      from = mid + 1;
    } else if (vBefore(s.GetCurData())) {
      to = mid - 1;
    } else {
      return true;
    }
  }
  if (from != to) return false;  // the cursor stays on the last probe: the insertion point
  s.MoveTo(from);
  if (vAfter(s.GetCurData())) {
    s.MoveToNext();
    return false;
  }
  return !vBefore(s.GetCurData());
}

// Sorted insertion of `v` after BisectCursor has run with the result `found`: inserts at the
// insertion point, or with `dup` behind the run of elements that `same` accepts following the one
// found. Returns whether v was inserted.
template <class Seq, class V, class Same>
bool InsertSorted(Seq& s, const V& v, bool found, bool dup, Same same) {
  if (found) {
    if (!dup) return false;
    for (s.MoveToNext(); !s.IsOut() && same(s.GetCurData()); s.MoveToNext()) {
    }
  }
  s.InsertCur(v);  // before the first different element, or at the end
  return true;
}

// Removes elements from the tail of `s` with DelTail until it holds n; stops should a DelTail
// remove nothing.
template <class Seq>
void CutTo(Seq& s, ZtLong n) {
  for (ZtLong before = s.GetLength(); before > n; before = s.GetLength()) {
    s.DelTail();
    if (s.GetLength() >= before) return;
  }
}

// Runs fill(), a cursor walk that overwrites the elements of `s` from index `keep` on. When an
// element's copy throws there, `s` is cut back to its first `keep` elements (emptied with Reset
// when `keep` is 0) and its cursor put back, so that it holds nothing the copy did not produce;
// the exception passes on.
template <class Seq, class Fill>
void FillOrCut(Seq& s, ZtLong keep, Fill fill) {
  const ZtLong cur = s.GetCur();
  try {
    fill();
  } catch (...) {
    if (keep == 0) {
      s.Reset();
    } else {
      CutTo(s, keep);
    }
    s.MoveTo(cur);
    throw;
  }
}

}  // namespace zt::detail

#endif  // ZT_CONTAINERS_INTERNAL_SEQUENCE_OPS_H_
