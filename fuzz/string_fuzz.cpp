// fuzz/string_fuzz.cpp
//
// ZtStringA and ZtStringW against std::string and std::wstring: edits, character and substring
// searches, find-all, Replace, Del(text), slices, comparisons, and the exact capacity (a string
// grows to exactly length + 1 when a longer text must be stored; FreeExtra, ReAllocate and a
// Replace or Del(text) that changes something set it outright). The first byte picks the width.
#include <algorithm>
#include <string>

#include "fuzz/driver.h"
#include "zt/containers/list_quene.h"
#include "zt/text/string.h"

namespace {

using zt::fuzz::Input;

template <class Ch>
class Run {
  using Text = std::basic_string<Ch>;
  using Str = ZtStringT<Ch>;

 public:
  explicit Run(Input& /*in*/) {}
  void Step(Input& in, uint8_t op) {
    if (m_m.size() > 300) Set(Text());
    const auto n = static_cast<ZtLong>(m_m.size());
    const Ch c = Char(in);
    const Text t = Word(in), u = Word(in);
    const ZtLong i = in.In(0, n), j = in.In(0, n);
    const ZtLong lo = std::min(i, j), hi = std::max(i, j);
    switch (op % 18) {
      case 0:
        m_s << c;
        Grow(m_m + c);
        break;
      case 1:
        m_s << t.c_str();
        Grow(m_m + t);
        break;
      case 2: {
        const int v = (static_cast<int>(in.Byte()) - 128) * 12345;
        m_s << v;
        const std::string digits = std::to_string(v);
        Grow(m_m + Text(digits.begin(), digits.end()));
        break;
      }
      case 3:
        m_s.Insert(i, c);
        Grow(Text(m_m).insert(static_cast<size_t>(i), 1, c));
        break;
      case 4: {
        const ZtLong at = in.Index(n);
        const bool fits = at >= 0 && at <= n;
        ZT_FUZZ_CHECK(m_s.Insert(at, Str(t.c_str())) == fits);
        if (fits) Grow(Text(m_m).insert(static_cast<size_t>(at), t));
        break;
      }
      case 5:
        if (hi < n) m_s.Del(lo, hi), m_m.erase(static_cast<size_t>(lo), hi - lo + 1);
        break;
      case 6:
        m_s.DelLeft(i), m_m.erase(0, static_cast<size_t>(i));
        break;
      case 7:
        m_s.DelRight(i), m_m.resize(static_cast<size_t>(n - i));
        break;
      case 8:
        if (hi < n) m_s.Reverse(lo, hi), std::reverse(m_m.begin() + lo, m_m.begin() + hi + 1);
        break;
      case 9:
        m_s.MakeUpper();
        for (Ch& x : m_m) x = x >= 'a' && x <= 'z' ? static_cast<Ch>(x - 'a' + 'A') : x;
        break;
      case 10:
        ExpectText(m_s.Left(i), m_m.substr(0, static_cast<size_t>(i)));
        ExpectText(m_s.Right(i), m_m.substr(static_cast<size_t>(n - i)));
        if (hi < n) ExpectText(m_s.Mid(lo, hi), m_m.substr(static_cast<size_t>(lo), hi - lo + 1));
        break;
      case 11: {
        const ZtLong to = in.Index(n), last = to < 0 || to >= n ? n - 1 : to;
        const auto at = m_m.find(c, static_cast<size_t>(i));
        ZT_FUZZ_CHECK(
            m_s.Find(c, i, to) ==
            (at == Text::npos || static_cast<ZtLong>(at) > last ? -1 : static_cast<ZtLong>(at)));
        ZT_FUZZ_CHECK(m_s.ReverseFind(c) == static_cast<ZtLong>(m_m.rfind(c)));
        break;
      }
      case 12: {  // first occurrence inside [i, to], and every non-overlapping one
        const ZtLong to = in.Bool() ? -1 : j;
        const std::vector<ZtLong> hits = Occurrences(t, i, to);
        ZT_FUZZ_CHECK(m_s.Find(Str(t.c_str()), i, to) == (hits.empty() ? -1 : hits.front()));
        ZtListQuene<ZtLong> found;
        ZT_FUZZ_CHECK(m_s.Find(Str(t.c_str()), found, i, to) ==
                      (t.empty() ? -1 : static_cast<ZtLong>(hits.size())));
        for (ZtLong hit : hits) {
          ZtLong got = -1;
          ZT_FUZZ_CHECK(found.Pop(got) && got == hit);
        }
        break;
      }
      case 13: {
        const ZtLong to = in.Bool() ? -1 : j;
        ReplaceModel(m_s.Replace(Str(t.c_str()), Str(u.c_str()), i, to), t, u, i, to);
        break;
      }
      case 14:
        ReplaceModel(m_s.Del(Str(t.c_str())), t, Text(), 0, -1);
        break;
      case 15: {
        const bool keep = in.Bool();
        m_s.ReAllocate(i, keep);
        m_m = keep ? m_m.substr(0, static_cast<size_t>(i)) : Text();
        m_cap = i + 1;
        break;
      }
      case 16:
        if (in.Bool())
          m_s.FreeExtra(), m_cap = n + 1;
        else
          m_s.Reset(), m_m.clear();
        break;
      default: {
        const Str copy(m_s);
        ExpectText(copy, m_m);
        ZT_FUZZ_CHECK(copy.GetLength() == n + 1);
        const int order = m_m.compare(t);
        ZT_FUZZ_CHECK((m_s == t.c_str()) == (order == 0) && (m_s < t.c_str()) == (order < 0) &&
                      (m_s > t.c_str()) == (order > 0));
        m_s = t.c_str();
        Grow(t);
        break;
      }
    }
    ExpectText(m_s, m_m);
    ZT_FUZZ_CHECK(m_s.GetLength() == m_cap);
  }

 private:
  // A small alphabet, with a character beyond ASCII, so that searches hit and repeat.
  static Ch Char(Input& in) {
    static const Ch kChars[] = {'a', 'b', 'c', 'z',
                                static_cast<Ch>(sizeof(Ch) == 1 ? 0xE9 : 0x263A)};
    return kChars[in.In(0, 4)];
  }
  static Text Word(Input& in) {
    Text w(static_cast<size_t>(in.In(0, 3)), 'a');
    for (Ch& x : w) x = Char(in);
    return w;
  }
  static void ExpectText(const Str& s, const Text& m) {
    ZT_FUZZ_CHECK(s.Length() == static_cast<ZtLong>(m.size()) && s.GetLength() > s.Length());
    ZT_FUZZ_CHECK(Text(static_cast<const Ch*>(s), m.size() + 1) == Text(m.c_str(), m.size() + 1));
  }
  void Set(const Text& m) {
    m_s = m.c_str();
    Grow(m);
  }
  // The text becomes m; the buffer grows to exactly its length + 1 when it is too small.
  void Grow(const Text& m) {
    m_m = m;
    m_cap = std::max(m_cap, static_cast<ZtLong>(m.size()) + 1);
  }
  // Starts of the non-overlapping occurrences of t lying wholly inside [from, to].
  std::vector<ZtLong> Occurrences(const Text& t, ZtLong from, ZtLong to) const {
    const auto n = static_cast<ZtLong>(m_m.size());
    const ZtLong last = to < 0 || to >= n ? n - 1 : to;
    std::vector<ZtLong> hits;
    if (t.empty()) return hits;
    for (auto at = m_m.find(t, static_cast<size_t>(from));
         at != Text::npos && static_cast<ZtLong>(at + t.size()) - 1 <= last;
         at = m_m.find(t, at + t.size())) {
      hits.push_back(static_cast<ZtLong>(at));
    }
    return hits;
  }
  void ReplaceModel(ZtLong count, const Text& t, const Text& u, ZtLong from, ZtLong to) {
    const std::vector<ZtLong> hits = Occurrences(t, from, to);
    ZT_FUZZ_CHECK(count == (t.empty() ? -1 : static_cast<ZtLong>(hits.size())));
    if (hits.empty()) return;
    for (auto k = hits.rbegin(); k != hits.rend(); ++k) {
      m_m.replace(static_cast<size_t>(*k), t.size(), u);
    }
    m_cap = static_cast<ZtLong>(m_m.size()) + 1;
  }

  Str m_s;
  Text m_m;
  ZtLong m_cap = 1;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input in(data, size);
  return in.Bool() ? zt::fuzz::Play<Run<wchar_t>>(in) : zt::fuzz::Play<Run<char>>(in);
}
