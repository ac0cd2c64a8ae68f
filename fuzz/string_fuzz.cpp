// fuzz/string_fuzz.cpp
//
// ZtStringA and ZtStringW against std::string and std::wstring: edits, character and substring
// searches, find-all, Replace, Del(text), slices, comparisons, and the exact capacity (a string
// grows to exactly length + 1 when a longer text must be stored; FreeExtra, ReAllocate and a
// Replace or Del(text) that changes something set it outright). The first byte picks the width.
#include <string>
#include <type_traits>

#include "fuzz/driver.h"
#include "zt/containers/list_quene.h"
#include "zt/text/string.h"

namespace {

using zt::fuzz::Input;
using zt::fuzz::Same;

template <class Ch>
struct World {
  using Text = std::basic_string<Ch>;
  using Str = std::conditional_t<std::is_same_v<Ch, char>, ZtStringA, ZtStringW>;

  explicit World(Input& /*in*/) {}
  // A small alphabet with a character beyond ASCII, so that searches hit and repeat.
  static Text Word(Input& in, ZtLong length) {
    static const Ch kChars[] = {'a', 'b', 'c', 'z',
                                static_cast<Ch>(sizeof(Ch) == 1 ? 0xE9 : 0x263A)};
    Text w(static_cast<size_t>(length), 'a');
    for (Ch& x : w) x = kChars[in.In(0, 4)];
    return w;
  }
  void Draw(Input& in) {
    if (m.size() > 300) s.Reset(), m.clear();
    n = static_cast<ZtLong>(m.size()), c = Word(in, 1)[0], t = Word(in, in.In(0, 3));
    u = Word(in, in.In(0, 3)), ts = t.c_str(), us = u.c_str();
    const ZtLong i = in.In(0, n), j = in.In(0, n);
    lo = std::min(i, j), hi = std::max(i, j), at = in.Index(n), to = in.Bool() ? -1 : hi;
    flag = in.Bool();
  }
  // Length, terminator, text, and a buffer that holds them.
  static void Expect(const Str& str, const Text& text) {
    ZT_FUZZ_CHECK(str.Length() == ZtLong(text.size()) && str.GetLength() > str.Length());
    Same(Text(static_cast<const Ch*>(str), text.size() + 1), Text(text.c_str(), text.size() + 1));
  }
  void Check() const { Expect(s, m), Same(s.GetLength(), cap); }
  // The text becomes text; the buffer grows to exactly its length + 1 when it is too small.
  void Set(const Text& text) { m = text, cap = std::max(cap, static_cast<ZtLong>(m.size()) + 1); }
  // Starts of the non-overlapping occurrences of w wholly inside [from, last] (an invalid last:
  // the end).
  std::vector<ZtLong> Hits(const Text& w, ZtLong from, ZtLong last) const {
    if (last < 0 || last >= n) last = n - 1;
    std::vector<ZtLong> hits;
    for (size_t p = m.find(w, from);
         !w.empty() && p != Text::npos && ZtLong(p + w.size()) <= last + 1;
         p = m.find(w, p + w.size())) {
      hits.push_back(static_cast<ZtLong>(p));
    }
    return hits;
  }
  // The count (-1 for an empty pattern) and effect of replacing t by `by`; the buffer is then
  // exact.
  void Replaced(ZtLong count, const Text& by, ZtLong from, ZtLong last) {
    const std::vector<ZtLong> hits = Hits(t, from, last);
    Same(count, t.empty() ? -1 : static_cast<ZtLong>(hits.size()));
    for (auto h = hits.rbegin(); h != hits.rend(); ++h) m.replace(*h, t.size(), by);
    if (!hits.empty()) cap = static_cast<ZtLong>(m.size()) + 1;
  }

  Str s, ts, us;                                           // ts, us: t and u
  Text m, t, u;                                            // the model; two short words
  ZtLong cap = 1, n = 0, lo = 0, hi = 0, at = 0, to = -1;  // 0 <= lo <= hi <= n; at may lie out
  Ch c = 'a';
  bool flag = false;
};

template <class Ch, class W = World<Ch>>
std::vector<zt::fuzz::Op<W>> Ops() {
  using Text = typename W::Text;
  return {
      {"<< char", [](W& w) { w.s << w.c, w.Set(w.m + w.c); }},
      {"<< text", [](W& w) { w.s << w.t.c_str(), w.Set(w.m + w.t); }},
      {"Insert char", [](W& w) { w.s.Insert(w.lo, w.c), w.Set(Text(w.m).insert(w.lo, 1, w.c)); }},
      {"Insert text",  // refused outside [0, n]
       [](W& w) {
         if (Same(w.s.Insert(w.at, w.ts), w.at >= 0 && w.at <= w.n)) w.Set(w.m.insert(w.at, w.t));
       }},
      {"Del",
       [](W& w) {
         if (w.hi < w.n) w.s.Del(w.lo, w.hi), w.m.erase(w.lo, w.hi - w.lo + 1);
       }},
      {"DelLeft DelRight",
       [](W& w) {
         w.s.DelLeft(w.lo), w.s.DelRight(w.hi - w.lo), w.m = w.m.substr(w.lo, w.n - w.hi);
       }},
      {"Find char",
       [](W& w) {
         const std::vector<ZtLong> hits = w.Hits(Text(1, w.c), w.lo, w.at);
         // An end other than -1 below 0 or past the text searches the whole buffer, whose bytes
         // after the terminator the model does not know: a miss in the text may hit there.
         const ZtLong got = w.s.Find(w.c, w.lo, w.at), want = hits.empty() ? -1 : hits[0];
         const bool beyond = w.at < -1 || w.at > w.n;
         ZT_FUZZ_CHECK(got == want || (beyond && want == -1 && got > w.n && got < w.s.GetLength()));
         Same(w.s.ReverseFind(w.c), static_cast<ZtLong>(w.m.rfind(w.c)));
       }},
      {"Find text",  // the first occurrence inside [lo, to], and every non-overlapping one
       [](W& w) {
         const std::vector<ZtLong> hits = w.Hits(w.t, w.lo, w.to);
         ZtListQuene<ZtLong> found;
         Same(w.s.Find(w.ts, w.lo, w.to), hits.empty() ? -1 : hits[0]);
         Same(w.s.Find(w.ts, found, w.lo, w.to), w.t.empty() ? -1 : ZtLong(hits.size()));
         ZtLong got = -1;
         for (ZtLong hit : hits) ZT_FUZZ_CHECK(found.Pop(got) && got == hit);
         ZT_FUZZ_CHECK(!found.Pop(got));
       }},
      {"Replace", [](W& w) { w.Replaced(w.s.Replace(w.ts, w.us, w.lo, w.to), w.u, w.lo, w.to); }},
      {"Del text", [](W& w) { w.Replaced(w.s.Del(w.ts), Text(), 0, -1); }},
      {"ReAllocate",
       [](W& w) { w.s.ReAllocate(w.lo, w.flag), w.m.resize(w.flag ? w.lo : 0), w.cap = w.lo + 1; }},
      {"FreeExtra", [](W& w) { w.s.FreeExtra(), w.cap = w.n + 1; }},
      {"Reset", [](W& w) { w.s.Reset(), w.m.clear(); }},
      {"copy, compare, assign",  // a copy's buffer is exact
       [](W& w) {
         const typename W::Str copy(w.s);
         W::Expect(copy, w.m), Same(copy.GetLength(), w.n + 1);
         const int order = w.m.compare(w.t);
         Same(w.s == w.ts, order == 0), Same(w.s < w.ts, order < 0), Same(w.s > w.ts, order > 0);
         w.s = w.t.c_str(), w.Set(w.t);
       }},
  };
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const auto kNarrow = Ops<char>();
  static const auto kWide = Ops<wchar_t>();
  return zt::fuzz::PlayAny(data, size, kNarrow, kWide);
}
