// fuzz/driver.h
//
// What the fuzz targets share: a reader that turns the fuzzer's bytes into values and indices,
// the run loop over tables of named operations (each makes one library call and the same change
// on a plain reference model, then the world checks the library against the model and aborts on
// the first disagreement), and for the array and list targets the std::vector model of a cursor
// sequence with the operations every sequence has.
//
//   static const std::vector<zt::fuzz::Op<World>> kOps = {{"Append", [](World& w) { ... }}, ...};
//   return zt::fuzz::PlayAny(data, size, kOps);  // World(in); per byte: Draw, the op, Check
#ifndef ZT_FUZZ_DRIVER_H_
#define ZT_FUZZ_DRIVER_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <utility>
#include <vector>

#include "zt/config.h"
#include "zt/containers/dyn_array_base.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace zt::fuzz {

/// The operation running now, named in the failure message.
inline const char* g_op = "setup";

[[noreturn]] inline void Fail(const char* what, const char* file, int line) {
  std::fprintf(stderr, "%s:%d: model mismatch after %s: %s\n", file, line, g_op, what);
  std::abort();
}

#define ZT_FUZZ_CHECK(cond) ((cond) ? (void)0 : ::zt::fuzz::Fail(#cond, __FILE__, __LINE__))

/// The fuzzer's bytes read front to back; past the end every read gives 0.
class Input {
 public:
  Input(const uint8_t* data, size_t size) : m_data(data), m_size(size) {}
  bool More() const { return m_pos < m_size; }
  uint8_t Byte() { return m_pos < m_size ? m_data[m_pos++] : 0; }
  /// A value in [lo, hi].
  ZtLong In(ZtLong lo, ZtLong hi) { return lo + static_cast<ZtLong>(Byte() % (hi - lo + 1)); }
  /// An index for a sequence of n elements: mostly valid, sometimes one or two outside.
  ZtLong Index(ZtLong n) { return In(-2, n + 1); }
  bool Bool() { return (Byte() & 1) != 0; }

 private:
  const uint8_t* m_data;
  size_t m_size;
  size_t m_pos = 0;
};

/// One row of a target's table: a library call and the matching change of the model.
template <class World>
struct Op {
  const char* name;
  void (*run)(World&);
};

/// Builds the world from the input's first bytes, then per byte picks an operation, lets the
/// world draw its arguments, runs it and checks the library against the model.
template <class World>
int Play(Input& in, const std::vector<Op<World>>& ops) {
  g_op = "setup";
  World w(in);
  while (in.More()) {
    const Op<World>& op = ops[in.Byte() % ops.size()];
    w.Draw(in);
    g_op = op.name;
    op.run(w);
    w.Check();
  }
  return 0;
}

/// Plays the table that the input's first byte picks.
template <class... World>
int PlayAny(const uint8_t* data, size_t size, const std::vector<Op<World>>&... tables) {
  Input in(data, size);
  size_t pick = in.Byte() % sizeof...(World);
  ((pick-- == 0 ? Play(in, tables) : 0), ...);
  return 0;
}

/// Checks contents walked forward and backward, length, cursor and the element at the cursor;
/// get(element) gives the value the model holds for it.
template <class T, class V, class Get>
void ExpectSequence(ZtDynArrayBase<T>& s, const std::vector<V>& model, ZtLong cur, Get get) {
  const auto n = static_cast<ZtLong>(model.size());
  ZT_FUZZ_CHECK(s.GetLength() == n && s.GetCur() == cur);
  ZT_FUZZ_CHECK(cur < 0 || cur >= n || get(s.GetCurData()) == model[static_cast<size_t>(cur)]);
  size_t i = 0;
  for (const T* p = s.GetFirst(); p != nullptr; p = s.GetNext(p), ++i) {
    ZT_FUZZ_CHECK(i < model.size() && get(*p) == model[i]);
  }
  ZT_FUZZ_CHECK(i == model.size());
  for (const T* p = s.GetLast(); p != nullptr; p = s.GetPre(p)) {
    ZT_FUZZ_CHECK(i > 0 && get(*p) == model[--i]);
  }
  ZT_FUZZ_CHECK(i == 0);
}

/// Aborts unless the library's answer equals the model's; gives it back.
template <class A, class B>
B Same(A got, B want) {
  ZT_FUZZ_CHECK(got == want);
  return want;
}

/// Where the owning lists' sorted-insertion search (BFindDataTo over the whole list) leaves the
/// cursor for a key x among n elements, step by step, whether the list is sorted or not; less(i)
/// and greater(i) answer x < e and x > e for element i. {true, i}: on an equal element i;
/// {false, i}: not found, the key goes before element i (n: at the end).
template <class Less, class Greater>
std::pair<bool, ZtLong> SortedPlace(ZtLong n, Less less, Greater greater) {
  if (n == 0) return {false, 0};
  ZtLong from = 0, to = n - 1, mid = 0;
  if (less(from)) return {false, from};
  if (greater(to)) return {false, n};
  while (from < to) {
    mid = (from + to) / 2;
    if (greater(mid)) {
      from = mid + 1;
    } else if (!less(mid)) {
      return {true, mid};
    } else {
      to = mid - 1;
    }
  }
  if (from != to) return {false, mid};
  if (greater(from)) return {false, from + 1};
  return {!less(from), from};
}

// The sequence targets hold small ints; in an owning container -1 stands for an empty slot.

/// A container C of ints by value.
template <class C>
struct Plain {
  using Box = C;
  static constexpr bool kOwning = false;
  static int Make(int v) { return v; }
  static int Get(int e) { return e; }
  static void Drop(int /*e*/) {}
  static ZtLong Find(const C& c, int x, ZtLong from, ZtLong to) { return c.Find(x, from, to); }
  static ZtLong FindDel(C& c, int x) { return c.FindDel(x); }
};

/// A container C owning its ints through pointers.
template <class C>
struct Owning {
  using Box = C;
  static constexpr bool kOwning = true;
  static int* Make(int v) { return v < 0 ? nullptr : new int(v); }
  static int Get(const int* e) { return e != nullptr ? *e : -1; }
  static void Drop(const int* e) { delete e; }
  static ZtLong Find(const C& c, int x, ZtLong from, ZtLong to) { return c.FindData(x, from, to); }
  static ZtLong FindDel(C& c, int x) { return c.FindDataDel(x); }
};

/// A sequence `c`, its model `v` and the cursor the model expects, with the rules of the
/// algorithms every sequence shares.
template <class K>
struct Side {
  template <class... A>
  explicit Side(A&&... a) : c(std::forward<A>(a)...) {}
  ZtLong Size() const { return static_cast<ZtLong>(v.size()); }
  bool Has(ZtLong i) const { return i >= 0 && i < Size(); }
  int& At(ZtLong i) { return v[static_cast<size_t>(i)]; }
  void Put(ZtLong at, int x) { v.insert(v.begin() + at, x), cur = at; }
  void Clear() { c.Reset(), v.clear(), cur = -1; }
  void Check() {
    ExpectSequence(c, v, cur, [](auto e) { return K::Get(e); });
  }
  // Refused unless `from` is an element and `to` a place other than its own two.
  bool Move(ZtLong from, ZtLong to) {
    if (from == to || from == to - 1 || !Has(from) || to < 0 || to > Size()) return false;
    v.insert(v.begin() + to, At(from)), v.erase(v.begin() + (from > to ? from + 1 : from));
    return cur = from > to ? to : to - 1, true;
  }
  // An invalid end means the last element; the cursor ends on the last pair swapped.
  void Reverse(ZtLong from, ZtLong to) {
    const ZtLong last = to < 0 || to >= Size() ? Size() - 1 : to;
    std::reverse(v.begin() + from, v.begin() + last + 1);
    if (last > from) cur = last - (last - from + 1) / 2 + 1;
  }
  // An invalid end means the last element; an invalid start or an empty slot finds nothing.
  ZtLong Find(int x, ZtLong from, ZtLong to) {
    if (to < 0 || to >= Size()) to = Size() - 1;
    for (ZtLong i = from; x >= 0 && Has(i) && i <= to; ++i) {
      if (At(i) == x) return i;
    }
    return -1;
  }
  ZtLong FindDel(int x) {
    const auto end = x < 0 ? v.end() : std::remove(v.begin(), v.end(), x);
    const auto count = static_cast<ZtLong>(v.end() - end);
    return v.erase(end, v.end()), count;
  }
  // Stable, empty slots last.
  void Sort(bool up) {
    std::stable_sort(v.begin(), v.end(), [up](int p, int q) {
      return q < 0 ? p >= 0 : (p >= 0 && (up ? p < q : p > q));
    });
  }

  typename K::Box c;
  std::vector<int> v;
  ZtLong cur = -1;
};

/// What a sequence operation works on: the side `s`, and arguments drawn before it runs.
template <class K>
struct Args {
  void DrawArgs(Input& in, Side<K>& side) {
    s = &side, n = side.Size(), i = in.Index(n), j = in.Index(n), k = in.In(0, n + 12);
    to = j < i || j >= n ? -1 : j;
    x = static_cast<int>(in.In(K::kOwning ? -1 : 0, 7)), flag = in.Bool();
  }
  Side<K>* s = nullptr;
  ZtLong n = 0, i = 0, j = 0, k = 0, to = -1;  // length; indices that may lie outside; a count;
                                               // an end at or after i, or -1
  int x = 0;
  bool flag = false;
};

/// A target's own rows followed by those every sequence shares. W::Grow(d) applies the capacity
/// rule to a growth by d.
template <class W, class K>
std::vector<Op<W>> SequenceOps(std::vector<Op<W>> own) {
  const std::vector<Op<W>> shared = {
      {"Append",
       [](W& w) { w.Grow(1), Same(w.s->c.Append(K::Make(w.x)), w.n), w.s->Put(w.n, w.x); }},
      {"InsertHead", [](W& w) { w.Grow(1), w.s->c.InsertHead(K::Make(w.x)), w.s->Put(0, w.x); }},
      {"Move", [](W& w) { Same(w.s->c.Move(w.i, w.j), w.s->Move(w.i, w.j)) ? w.Grow(1) : void(); }},
      {"Reverse",
       [](W& w) { w.s->Has(w.i) ? w.s->c.Reverse(w.i, w.to), w.s->Reverse(w.i, w.to) : void(); }},
      {"Find", [](W& w) { Same(K::Find(w.s->c, w.x, w.i, w.j), w.s->Find(w.x, w.i, w.j)); }},
      {"FindDel",  // the cursor ends out
       [](W& w) {
         Same(K::FindDel(w.s->c, w.x), w.s->FindDel(w.x)), ZT_FUZZ_CHECK(w.s->c.IsOut());
         w.s->cur = w.s->c.GetCur();
       }},
      {"Reset", [](W& w) { w.s->Clear(); }},
  };
  own.insert(own.end(), shared.begin(), shared.end());
  return own;
}

}  // namespace zt::fuzz

#endif  // ZT_FUZZ_DRIVER_H_
