// fuzz/array_fuzz.cpp
//
// ZtDynArray<int> and ZtDynPArray<int> against a std::vector<int> with the cursor and the
// capacity that the growth rule gives (a grown buffer holds the new length plus the allocation
// unit; copies, SetLength and SetSpaceSize size it exactly, but an owning array keeps it when the
// size asked for is its length); and the same two classes of zt::fuzz::Odd, doubles with NaN among
// them whose copies throw, sorted also by a comparator that lies, checked for the elements they
// keep (driver.h). The first byte picks the class.
#include "fuzz/driver.h"
#include "zt/containers/dyn_array.h"
#include "zt/containers/dyn_parray.h"

namespace {

using zt::fuzz::Input;
using zt::fuzz::Same;

template <class K>
struct World : zt::fuzz::Args<K> {
  explicit World(Input& in) : unit(in.In(0, 4)), cap(in.In(0, 5)), a(cap, unit) {}
  void Draw(Input& in) {
    if (a.Size() > 200) a.Clear();
    this->DrawArgs(in, a);
    at = this->k % (this->n + 1);
  }
  void Grow(ZtLong d) { cap = this->n + d > cap ? this->n + d + unit : cap; }
  void Check() { a.Check(), Same(a.c.GetSpaceSize(), cap), Same(a.c.GetAllocUnit(), unit); }
  ZtLong unit, cap, at = 0;  // at: a place to insert, 0..n
  zt::fuzz::Side<K> a;
};

template <class K, class W = World<K>>
std::vector<zt::fuzz::Op<W>> Ops() {
  return zt::fuzz::SequenceOps<W, K>({
      {"Insert", [](W& w) { w.Grow(1), w.a.c.Insert(w.at, K::Make(w.x)), w.a.Put(w.at, w.x); }},
      {"InsertCur",
       [](W& w) {
         w.Grow(1), w.a.c.MoveTo(w.at), w.a.c.InsertCur(K::Make(w.x)), w.a.Put(w.at, w.x);
       }},
      {"Del",  // an invalid index removes nothing, but the cursor goes there all the same
       [](W& w) {
         w.a.c.Del(w.i);
         w.a.cur = w.i;
         if (w.a.Has(w.i)) w.a.v.erase(w.a.v.begin() + w.i), w.a.cur = w.i - 1;
       }},
      {"Sort", [](W& w) { w.a.c.Sort(w.flag), w.a.Sort(w.flag); }},  // the cursor stays
      {"SortInto",  // on a sorted array without empty slots; refused on a duplicate unless dup
       [](W& w) {
         auto& v = w.a.v;
         if (w.x < 0 || !std::is_sorted(v.begin(), v.end()) || (w.n > 0 && v[0] < 0)) return;
         const auto at = w.flag ? std::upper_bound(v.begin(), v.end(), w.x)
                                : std::lower_bound(v.begin(), v.end(), w.x);
         const bool adds = w.flag || !std::binary_search(v.begin(), v.end(), w.x);
         auto e = K::Make(w.x);
         if (Same(w.a.c.SortInto(e, w.flag), adds))
           return w.Grow(1), w.a.Put(static_cast<ZtLong>(at - v.begin()), w.x);
         K::Drop(e), Same(K::Get(w.a.c.GetCurData()), w.x), w.a.cur = w.a.c.GetCur();
       }},
      // An owning array at its own length changes nothing, its capacity included.
      {"SetSpaceSize",
       [](W& w) {
         const bool keeps = K::kOwning && w.k == w.n;
         w.cap = Same(w.a.c.SetSpaceSize(w.k), w.k >= w.n) && !keeps ? w.k : w.cap;
       }},
      {"SetLength",  // a plain array's new elements are unspecified: only an owning one grows
       [](W& w) {
         const ZtLong n = w.k % (K::kOwning ? w.n + 4 : w.n + 1);
         if (!K::kOwning || n != w.n) w.cap = n;
         w.a.c.SetLength(n, true), w.a.v.resize(n, -1);
       }},
      {"copy",  // exact-size with the default unit and its cursor at the end
       [](W& w) {
         typename K::Box copy(w.a.c);
         zt::fuzz::ExpectSequence(copy, w.a.v, w.n, [](auto e) { return K::Get(e); });
         Same(copy.GetSpaceSize(), w.n), Same(copy.GetAllocUnit(), ZtLong{10});
       }},
      {"grow by subscript",  // an owning array may skip ahead, filling the gap with empty slots
       [](W& w) {
         const ZtLong i = K::kOwning ? w.n + w.k % 4 : w.n;
         w.Grow(i + 1 - w.n), w.a.c[i] = K::Make(w.x), w.a.cur = i;
         w.a.v.resize(i + 1, -1), w.a.v.back() = w.x;
       }},
  });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const auto kPlain = Ops<zt::fuzz::Plain<ZtDynArray<int>>>();
  static const auto kOwning = Ops<zt::fuzz::Owning<ZtDynPArray<int>>>();
  static const auto kOddPlain = zt::fuzz::OddOps<ZtDynArray<zt::fuzz::Odd>, false>();
  static const auto kOddOwning = zt::fuzz::OddOps<ZtDynPArray<zt::fuzz::Odd>, true>();
  return zt::fuzz::PlayAny(data, size, kPlain, kOwning, kOddPlain, kOddOwning);
}
