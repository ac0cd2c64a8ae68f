// fuzz/list_fuzz.cpp
//
// ZtList<int>, ZtDList<int>, ZtXList<int> (small groups) and ZtPDList<int> against a std::vector
// with a cursor: insertions at every place, deletion, cursor walks, splices between two lists,
// ReverseList, Rotate, Move, Exchange, Reverse, SetLength and the stable sorts. In the owning list
// -1 stands for an empty place. The first input byte picks the class.
#include <algorithm>

#include "fuzz/driver.h"
#include "zt/containers/dlist.h"
#include "zt/containers/list.h"
#include "zt/containers/pdlist.h"
#include "zt/containers/xlist.h"

namespace {

using zt::fuzz::Input;

template <class L>
struct Plain {
  using List = L;
  static L New(ZtLong group) {
    if constexpr (std::is_same_v<L, ZtXList<int>>) {
      return L(0, group);
    } else {
      return L();
    }
  }
  static int Make(int v) { return v < 0 ? 0 : v; }
  static int Get(int e) { return e; }
};

struct Owning {
  using List = ZtPDList<int>;
  static List New(ZtLong /*group*/) { return List(); }
  static int* Make(int v) { return v < 0 ? nullptr : new int(v); }
  static int Get(const int* e) { return e != nullptr ? *e : -1; }
};

/// A list and its model: values and cursor.
template <class K>
struct Side {
  explicit Side(ZtLong group) : list(K::New(group)) {}
  typename K::List list;
  std::vector<int> v;
  ZtLong cur = -1;
  ZtLong Size() const { return static_cast<ZtLong>(v.size()); }
  void Check() const {
    zt::fuzz::ExpectSequence(list, v, cur, [](auto e) { return K::Get(e); });
  }
};

template <class K>
class Run {
 public:
  explicit Run(Input& in) : Run(in.In(1, 4)) {}
  explicit Run(ZtLong group) : m_group(group), m_a(group), m_b(group) {}

  void Step(Input& in, uint8_t op) {
    Side<K>& s = in.Bool() ? m_b : m_a;
    Side<K>& t = &s == &m_a ? m_b : m_a;
    auto& l = s.list;
    if (s.Size() > 150) Clear(s);
    const ZtLong n = s.Size();
    const int x = static_cast<int>(in.In(kOwning ? -1 : 0, 7));
    const ZtLong i = in.Index(n), j = in.Index(n);
    const bool valid = i >= 0 && i < n;
    switch (op % 19) {
      case 0:
        ZT_FUZZ_CHECK(l.Append(K::Make(x)) == n);
        Put(s, n, x);
        break;
      case 1:
        l.InsertHead(K::Make(x));
        Put(s, 0, x);
        break;
      case 2:
        l.Insert(i, K::Make(x));
        Put(s, i >= 1 && i <= n ? i : 0, x);
        break;
      case 3:
        l.MoveTo(i);
        l.InsertCur(K::Make(x));
        Put(s, valid ? i : n, x);
        break;
      case 4:
        l.MoveTo(i);
        l.InsertAfterCur(K::Make(x));
        Put(s, valid ? i + 1 : 0, x);
        break;
      case 5:
        l.MoveTo(i);
        l.DelCur();
        if (valid) s.v.erase(s.v.begin() + i);
        s.cur = valid ? i - 1 : -1;
        break;
      case 6:
        Walk(s, x, i);
        break;
      case 7:
        l.ReverseList();
        std::reverse(s.v.begin(), s.v.end());
        s.cur = kGrouped ? LastGroup(n) : (s.cur < 0 ? -1 : n - 1 - s.cur);
        break;
      case 8:
        l.Rotate(i, j);  // a grouped list rebuilds its index and lands on the last group start
        if (kGrouped) s.cur = LastGroup(n);
        if (i == j || !valid || j < 0 || j >= n) break;
        std::rotate(s.v.begin(), s.v.begin() + (i - j + n) % n, s.v.end());
        s.cur = kGrouped ? LastGroup(n) : 0;
        break;
      case 9:
        Sort(s, in.Bool());
        break;
      case 10: {  // t's elements i.. go to the end of s; t's cursor ends on its new last element
        const ZtLong k = in.Index(t.Size());
        const bool moves = k >= 0 && k < t.Size();
        ZT_FUZZ_CHECK(l.Conbine(t.list, k) == n + (moves ? t.Size() - k : 0));
        if (moves) Splice(t, k, s);
        if (kGrouped || !moves) s.cur = l.GetCur();  // a grouped list lands on a group start
        t.cur = t.list.GetCur();
        ZT_FUZZ_CHECK(!moves || t.cur == k - 1);
        break;
      }
      case 11:
        l.SplitAt(i, t.list);
        if (valid) Splice(s, i, t);
        s.cur = valid ? i - 1 : -1;
        if (kGrouped) t.cur = t.list.GetCur();
        break;
      case 12: {
        const bool moves = i != j && i != j - 1 && valid && j >= 0 && j <= n;
        ZT_FUZZ_CHECK(l.Move(i, j) == moves);
        if (!moves) break;
        const int e = s.v[static_cast<size_t>(i)];
        s.v.insert(s.v.begin() + j, e);
        s.v.erase(s.v.begin() + (i > j ? i + 1 : i));
        s.cur = i > j ? j : j - 1;
        break;
      }
      case 13:
        if (!valid || j < 0 || j >= n) break;
        l.Exchange(i, j);
        std::swap(s.v[static_cast<size_t>(i)], s.v[static_cast<size_t>(j)]);
        s.cur = i;
        break;
      case 14: {
        if (!valid) break;
        const ZtLong to = j < i || j >= n ? -1 : j, last = to < 0 ? n - 1 : to;
        const ZtLong count = (last - i + 1) / 2;
        l.Reverse(i, to);
        std::reverse(s.v.begin() + i, s.v.begin() + last + 1);
        if (count > 0) s.cur = last - count + 1;
        break;
      }
      case 15: {  // shortening deletes from the tail, growing appends T()
        const ZtLong k = in.In(0, n + 3);
        l.SetLength(k, true);
        s.v.resize(static_cast<size_t>(k), kOwning ? -1 : 0);
        if (k < n) s.cur = k - 1;
        break;
      }
      case 16:
        Clear(s);
        break;
      case 17:
        ZT_FUZZ_CHECK(Find(l, x, i, j) == ModelFind(s.v, x, i, j));
        break;
      case 18: {
        const typename K::List copy(l);
        zt::fuzz::ExpectSequence(copy, s.v, copy.GetCur(), [](auto e) { return K::Get(e); });
        break;
      }
      default:
        break;
    }
    m_a.Check();
    m_b.Check();
  }

 private:
  static constexpr bool kOwning = std::is_same_v<K, Owning>;
  static constexpr bool kGrouped = std::is_same_v<typename K::List, ZtXList<int>>;

  ZtLong LastGroup(ZtLong n) const { return n == 0 ? -1 : (n - 1) / m_group * m_group; }
  static void Put(Side<K>& s, ZtLong at, int x) {
    s.v.insert(s.v.begin() + at, kOwning ? x : K::Get(K::Make(x)));
    s.cur = at;
  }
  static void Clear(Side<K>& s) {
    s.list.Reset();
    s.v.clear();
    s.cur = -1;
  }
  static void Splice(Side<K>& from, ZtLong k, Side<K>& to) {
    to.v.insert(to.v.end(), from.v.begin() + k, from.v.end());
    from.v.resize(static_cast<size_t>(k));
  }
  // Cursor steps: the cursor wraps through -1 at both ends.
  static void Walk(Side<K>& s, int how, ZtLong i) {
    const ZtLong n = s.Size();
    switch (how & 3) {
      case 0:
        s.list.MoveToNext();
        s.cur = s.cur + 1 < n ? s.cur + 1 : -1;
        break;
      case 1:
        s.list.MoveToPre();
        s.cur = s.cur < 0 ? n - 1 : s.cur - 1;
        break;
      case 2:
        s.list.MoveToFirst();
        s.cur = n > 0 ? 0 : -1;
        break;
      default:
        s.list.MoveTo(i);
        s.cur = i >= 0 && i < n ? i : -1;
        break;
    }
    ZT_FUZZ_CHECK(s.cur < 0 || K::Get(s.list.GetCurData()) == s.v[static_cast<size_t>(s.cur)]);
    ZT_FUZZ_CHECK(i < 0 || i >= n || K::Get(s.list.GetAt(i)) == s.v[static_cast<size_t>(i)]);
  }
  // Stable sorts ending on -1 (a list of fewer than 2 keeps its cursor); the owning list collects
  // empty places at the end and stops on the last of them.
  static void Sort(Side<K>& s, bool up) {
    if (!kOwning && s.Size() < 2) return;
    s.list.Sort(up);
    std::stable_sort(s.v.begin(), s.v.end(), [up](int p, int q) {
      return q < 0 ? p >= 0 : (p >= 0 && (up ? p < q : p > q));
    });
    s.cur = kOwning && !s.v.empty() && s.v.back() < 0 ? s.Size() - 1 : -1;
  }
  static ZtLong ModelFind(const std::vector<int>& v, int x, ZtLong from, ZtLong to) {
    const auto n = static_cast<ZtLong>(v.size());
    if (to < 0 || to >= n) to = n - 1;
    if (from < 0 || from >= n || x < 0) return -1;
    const auto end = v.begin() + to + 1, hit = std::find(v.begin() + from, end, x);
    return hit == end ? -1 : static_cast<ZtLong>(hit - v.begin());
  }
  static ZtLong Find(const typename K::List& l, int x, ZtLong from, ZtLong to) {
    if constexpr (kOwning) {
      return l.FindData(x, from, to);
    } else {
      return l.Find(x, from, to);
    }
  }

  ZtLong m_group;
  Side<K> m_a, m_b;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input in(data, size);
  switch (in.Byte() & 3) {
    case 0:
      return zt::fuzz::Play<Run<Plain<ZtList<int>>>>(in);
    case 1:
      return zt::fuzz::Play<Run<Plain<ZtDList<int>>>>(in);
    case 2:
      return zt::fuzz::Play<Run<Plain<ZtXList<int>>>>(in);
    default:
      return zt::fuzz::Play<Run<Owning>>(in);
  }
}
