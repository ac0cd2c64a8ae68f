// zt/text/internal/search.h
//
// The substring search behind ZtStringA and ZtStringW: the library's failure table and the
// Knuth-Morris-Pratt scan over it, written once for both character types. Not public.
#ifndef ZT_TEXT_INTERNAL_SEARCH_H_
#define ZT_TEXT_INTERNAL_SEARCH_H_

#include <memory>
#include <string>

#include "zt/config.h"

namespace zt::detail {

// The failure table of p[0..m): the improved function (a fallback whose character equals the
// current one is skipped), except that -1 stands only at index 0, next[1] is always 0, and a
// position reached after falling back past the start gets 0.
template <class Ch>
void BuildNextTable(const Ch* p, ZtLong m, ZtLong* next) {
  if (m <= 0) return;
  next[0] = -1;
  if (m == 1) return;
  next[1] = 0;
  ZtLong j = 1;
  ZtLong k = 0;
  while (j < m - 1) {
    if (p[j] == p[k]) {
      ++j;
      ++k;
      next[j] = p[j] != p[k] ? k : next[k];
    } else {
      k = next[k];
      if (k == -1) {
        k = 0;
        ++j;
        next[j] = 0;
      }
    }
  }
}

// A pattern's failure table, on the stack for short patterns.
template <class Ch>
class NextTable {
 public:
  NextTable(const Ch* p, ZtLong m) {
    if (m > kInline) {
      m_heap.reset(new ZtLong[static_cast<std::size_t>(m)]);
      m_table = m_heap.get();
    }
    BuildNextTable(p, m, m_table);
  }
  ZtLong operator[](ZtLong j) const { return m_table[j]; }

 private:
  static constexpr ZtLong kInline = 64;
  ZtLong m_inline[kInline];
  std::unique_ptr<ZtLong[]> m_heap;
  ZtLong* m_table = m_inline;
};

// Scans t[from..to] for p[0..m) (m > 0) and calls hit(start) for each occurrence, which returns
// false to stop. After a hit the scan goes on right after it, so hits do not overlap. Whenever
// the scan stands at the pattern's start it jumps straight to the next character that can begin
// a match; it stops as soon as the rest of the range is too short to finish one.
template <class Ch, class Hit>
void ForEachMatch(const Ch* t, ZtLong from, ZtLong to, const Ch* p, ZtLong m, Hit hit) {
  if (from < 0 || to - from + 1 < m) return;
  const NextTable<Ch> next(p, m);
  ZtLong i = from;
  ZtLong k = 0;
  while (to - i + 1 >= m - k) {
    if (k == 0) {
      const Ch* start =
          std::char_traits<Ch>::find(t + i, static_cast<std::size_t>(to - m + 2 - i), p[0]);
      if (start == nullptr) return;
      i = static_cast<ZtLong>(start - t);
    }
    if (t[i] == p[k]) {
      ++i;
      if (++k == m) {
        if (!hit(i - m)) return;
        k = 0;
      }
    } else {
      k = next[k];
      if (k == -1) {
        k = 0;
        ++i;
      }
    }
  }
}

}  // namespace zt::detail

#endif  // ZT_TEXT_INTERNAL_SEARCH_H_
