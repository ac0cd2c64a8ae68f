// fuzz/array_fuzz.cpp
//
// ZtDynArray<int> and ZtDynPArray<int> against a std::vector<int> with the cursor and the
// capacity that the growth rule gives (a grown buffer holds the new length plus the allocation
// unit; copies, SetLength, SetSpaceSize, Attach and whole-sequence appends size it exactly). In the
// owning array -1 stands for an empty slot. The first input byte picks the class.
#include <algorithm>

#include "fuzz/driver.h"
#include "zt/containers/dyn_array.h"
#include "zt/containers/dyn_parray.h"

namespace {

using zt::fuzz::Input;

struct Plain {
  using Array = ZtDynArray<int>;
  static int Make(int v) { return v < 0 ? 0 : v; }
  static int Get(int e) { return e; }
  static void Drop(int /*e*/) {}
};

struct Owning {
  using Array = ZtDynPArray<int>;
  static int* Make(int v) { return v < 0 ? nullptr : new int(v); }
  static int Get(const int* e) { return e != nullptr ? *e : -1; }
  static void Drop(const int* e) { delete e; }
};

template <class K>
class Run {
 public:
  explicit Run(Input& in) : Run(in.In(0, 5), in.In(0, 4)) {}
  Run(ZtLong space, ZtLong unit) : m_a(space, unit), m_cap(space), m_unit(unit) {}

  void Step(Input& in, uint8_t op) {
    if (m_v.size() > 200) Reset();
    const auto n = static_cast<ZtLong>(m_v.size());
    const int x = static_cast<int>(in.In(kOwning ? -1 : 0, 7));
    switch (op % 19) {
      case 0:
        Put(n, x, [&] { ZT_FUZZ_CHECK(m_a.Append(K::Make(x)) == n); });
        break;
      case 1: {
        const ZtLong i = in.In(0, n);
        Put(i, x, [&] { m_a.Insert(i, K::Make(x)); });
        break;
      }
      case 2:
        Put(0, x, [&] { m_a.InsertHead(K::Make(x)); });
        break;
      case 3: {
        const ZtLong i = in.In(0, n);
        m_a.MoveTo(i);
        Put(i, x, [&] { m_a.InsertCur(K::Make(x)); });
        break;
      }
      case 4: {  // an invalid index leaves the cursor there and removes nothing
        const ZtLong i = in.Index(n);
        m_a.Del(i);
        m_cur = i;
        if (i >= 0 && i < n) Erase(i);
        break;
      }
      case 5: {
        const ZtLong from = in.Index(n), to = in.Index(n);
        const bool moves =
            from != to && from != to - 1 && from >= 0 && from < n && to >= 0 && to <= n;
        ZT_FUZZ_CHECK(m_a.Move(from, to) == moves);
        if (!moves) break;
        if (n + 1 > m_cap) m_cap = n + 1 + m_unit;  // the copy is inserted before the original goes
        const int v = m_v[static_cast<size_t>(from)];
        m_v.insert(m_v.begin() + to, v);
        m_v.erase(m_v.begin() + (from > to ? from + 1 : from));
        m_cur = from > to ? to : to - 1;
        break;
      }
      case 6: {
        if (n == 0) break;
        const ZtLong i = in.Valid(n), j = in.Valid(n);
        m_a.Exchange(i, j);
        std::swap(m_v[static_cast<size_t>(i)], m_v[static_cast<size_t>(j)]);
        m_cur = i;
        break;
      }
      case 7: {
        if (n == 0) break;
        const ZtLong from = in.Valid(n), to = in.Bool() ? -1 : in.In(from, n - 1);
        m_a.Reverse(from, to);
        const ZtLong last = to < 0 ? n - 1 : to, count = (last - from + 1) / 2;
        std::reverse(m_v.begin() + from, m_v.begin() + last + 1);
        if (count > 0) m_cur = last - count + 1;
        break;
      }
      case 8: {
        const bool up = in.Bool();
        m_a.Sort(up);
        std::stable_sort(m_v.begin(), m_v.end(), [up](int p, int q) {
          return q < 0 ? p >= 0 : (p >= 0 && (up ? p < q : p > q));
        });
        break;
      }
      case 9:
        SortInto(x, in.Bool());
        break;
      case 10: {  // the owning array's SetLength(length, true) leaves even the capacity alone
        const ZtLong space = in.In(0, n + 12);
        ZT_FUZZ_CHECK(m_a.SetSpaceSize(space) == (space >= n));
        if (space > n || (space == n && !kOwning)) m_cap = space;
        break;
      }
      case 11: {  // a plain array's new elements are unspecified: only the owning one grows here
        const ZtLong k = in.In(0, kOwning ? n + 3 : n);
        m_a.SetLength(k, true);
        if (kOwning && k == n) break;
        m_v.resize(static_cast<size_t>(k), -1);
        m_cap = k;
        break;
      }
      case 12:
        m_unit = in.In(0, 12);
        m_a.SetAllocUnit(m_unit);
        break;
      case 13:
        m_a.Reset();
        m_v.clear();
        m_cur = -1;
        break;
      case 14: {
        const ZtLong from = in.Index(n), to = in.Index(n);
        ZT_FUZZ_CHECK(Find(x, from, to) == ModelFind(x, from, to));
        break;
      }
      case 15: {
        const auto count = static_cast<ZtLong>(std::count(m_v.begin(), m_v.end(), x));
        ZT_FUZZ_CHECK(FindDel(x) == (x < 0 ? 0 : count));
        if (x >= 0) m_v.erase(std::remove(m_v.begin(), m_v.end(), x), m_v.end());
        ZT_FUZZ_CHECK(m_a.IsOut());
        m_cur = m_a.GetCur();
        break;
      }
      case 16: {  // a copy is exact-size with the default unit and its cursor at the end
        const typename K::Array copy(m_a);
        zt::fuzz::ExpectSequence(copy, m_v, n, [](auto e) { return K::Get(e); });
        ZT_FUZZ_CHECK(copy.GetSpaceSize() == n && copy.GetAllocUnit() == 10);
        break;
      }
      case 17: {  // the growing subscript (the owning array fills the gap with empty slots)
        const ZtLong i = kOwning ? in.In(n, n + 3) : n;
        Grow(i + 1);
        m_a[i] = K::Make(x);
        m_v[static_cast<size_t>(i)] = x;
        m_cur = i;
        break;
      }
      case 18: {
        auto* buffer = m_a.Detach();
        ZT_FUZZ_CHECK(m_a.GetLength() == 0 && m_a.GetCur() == -1 && m_a.GetSpaceSize() == 0);
        m_a.Attach(n, buffer);  // keeps the cursor Detach left at -1
        m_cap = n;
        m_cur = -1;
        break;
      }
      default:
        break;
    }
    Check();
  }

  void Check() {
    zt::fuzz::ExpectSequence(m_a, m_v, m_cur, [](auto e) { return K::Get(e); });
    ZT_FUZZ_CHECK(m_a.GetSpaceSize() == m_cap && m_a.GetAllocUnit() == m_unit);
  }

 private:
  static constexpr bool kOwning = std::is_same_v<K, Owning>;

  void Reset() {
    m_a.Reset();
    m_v.clear();
    m_cur = -1;
  }
  // Growth to n elements: new elements are empty slots (-1) until written.
  void Grow(ZtLong n) {
    if (n > m_cap) m_cap = n + m_unit;
    if (n > static_cast<ZtLong>(m_v.size())) m_v.resize(static_cast<size_t>(n), -1);
  }
  template <class Insert>
  void Put(ZtLong i, int x, Insert insert) {
    insert();
    Grow(static_cast<ZtLong>(m_v.size()) + 1);
    m_v.pop_back();
    m_v.insert(m_v.begin() + i, x);
    m_cur = i;
  }
  void Erase(ZtLong i) {
    m_v.erase(m_v.begin() + i);
    m_cur = i - 1;
  }
  ZtLong ModelFind(int x, ZtLong from, ZtLong to) const {
    const auto n = static_cast<ZtLong>(m_v.size());
    if (to < 0 || to >= n) to = n - 1;
    if (from < 0 || from >= n || x < 0) return -1;
    for (ZtLong i = from; i <= to; ++i) {
      if (m_v[static_cast<size_t>(i)] == x) return i;
    }
    return -1;
  }
  ZtLong Find(int x, ZtLong from, ZtLong to) const {
    if constexpr (kOwning) {
      return m_a.FindData(x, from, to);
    } else {
      return m_a.Find(x, from, to);
    }
  }
  ZtLong FindDel(int x) {
    if constexpr (kOwning) {
      return m_a.FindDataDel(x);
    } else {
      return m_a.FindDel(x);
    }
  }
  // Sorted insertion, tried only on a sorted array without empty slots.
  void SortInto(int x, bool dup) {
    if (x < 0 || !std::is_sorted(m_v.begin(), m_v.end()) || (!m_v.empty() && m_v.front() < 0)) {
      return;
    }
    const auto hi = std::upper_bound(m_v.begin(), m_v.end(), x);
    const bool present = hi != m_v.begin() && *(hi - 1) == x;
    auto e = K::Make(x);
    ZT_FUZZ_CHECK(m_a.SortInto(e, dup) == (dup || !present));
    if (!dup && present) {  // the cursor is on one of the equal run
      K::Drop(e);
      ZT_FUZZ_CHECK(K::Get(m_a.GetCurData()) == x);
      m_cur = m_a.GetCur();
      return;
    }
    const ZtLong i = (dup ? hi : std::lower_bound(m_v.begin(), m_v.end(), x)) - m_v.begin();
    Grow(static_cast<ZtLong>(m_v.size()) + 1);
    m_v.pop_back();
    m_v.insert(m_v.begin() + i, x);
    m_cur = i;
  }

  typename K::Array m_a;
  std::vector<int> m_v;
  ZtLong m_cur = -1;
  ZtLong m_cap;
  ZtLong m_unit;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input in(data, size);
  return in.Bool() ? zt::fuzz::Play<Run<Owning>>(in) : zt::fuzz::Play<Run<Plain>>(in);
}
