// fuzz/list_fuzz.cpp
//
// ZtList<int>, ZtDList<int>, ZtXList<int> (small groups) and ZtPDList<int> against a std::vector
// with a cursor, two lists at a time for the splices: insertions at every place, deletion, cursor
// walks, ReverseList, Rotate, SetLength and the stable sorts besides the shared operations. A
// grouped list that rebuilds its index lands on its last group's start. ZtDList, ZtXList,
// ZtPDList and ZtPXList of zt::fuzz::Odd (NaN among the values, throwing copies, a comparator
// that lies) are checked for the elements they keep (driver.h). The first byte picks the class.
#include "fuzz/driver.h"
#include "zt/containers/dlist.h"
#include "zt/containers/list.h"
#include "zt/containers/pdlist.h"
#include "zt/containers/pxlist.h"
#include "zt/containers/xlist.h"

namespace {

using zt::fuzz::Input;
using zt::fuzz::Same;

template <class K>
struct World : zt::fuzz::Args<K> {
  using L = typename K::Box;
  using Side = zt::fuzz::Side<K>;
  static constexpr bool kGrouped = std::is_same_v<L, ZtXList<int>>;

  explicit World(Input& in) : group(in.In(1, 4)), sides{Side(New(group)), Side(New(group))} {}
  static L New(ZtLong group) {
    if constexpr (kGrouped) return L(0, group);
    return L();
  }
  void Draw(Input& in) {
    const int p = in.Bool() ? 1 : 0;
    if (sides[p].Size() > 150) sides[p].Clear();
    t = &sides[1 - p];
    this->DrawArgs(in, sides[p]);
  }
  void Grow(ZtLong /*d*/) {}
  void Check() { sides[0].Check(), sides[1].Check(); }
  ZtLong LastGroup() const { return this->n == 0 ? -1 : (this->n - 1) / group * group; }
  // from's elements from k on go to the end of to.
  static void Splice(Side& from, ZtLong k, Side& to) {
    to.v.insert(to.v.end(), from.v.begin() + k, from.v.end()), from.v.resize(k);
  }
  ZtLong group;
  Side sides[2];
  Side* t = nullptr;  // the other list of a splice
};

template <class K, class W = World<K>>
std::vector<zt::fuzz::Op<W>> Ops() {
  return zt::fuzz::SequenceOps<W, K>({
      {"Insert",  // an invalid index inserts at the head
       [](W& w) {
         w.s->c.Insert(w.i, K::Make(w.x)), w.s->Put(w.i >= 0 && w.i <= w.n ? w.i : 0, w.x);
       }},
      {"InsertCur",  // with the cursor out: at the tail
       [](W& w) {
         w.s->c.MoveTo(w.i), w.s->c.InsertCur(K::Make(w.x));
         w.s->Put(w.s->Has(w.i) ? w.i : w.n, w.x);
       }},
      {"InsertAfterCur",  // with the cursor out: at the head
       [](W& w) {
         w.s->c.MoveTo(w.i), w.s->c.InsertAfterCur(K::Make(w.x));
         w.s->Put(w.s->Has(w.i) ? w.i + 1 : 0, w.x);
       }},
      {"DelCur",
       [](W& w) {
         w.s->c.MoveTo(w.i), w.s->c.DelCur(), w.s->cur = -1;
         if (w.s->Has(w.i)) w.s->v.erase(w.s->v.begin() + w.i), w.s->cur = w.i - 1;
       }},
      {"MoveToNext or MoveToPre",  // the cursor wraps through -1 at both ends
       [](W& w) {
         const ZtLong cur = w.s->cur;
         w.flag ? w.s->c.MoveToNext() : w.s->c.MoveToPre();
         w.s->cur = w.flag ? (w.s->Has(cur + 1) ? cur + 1 : -1) : (cur < 0 ? w.n - 1 : cur - 1);
       }},
      {"MoveTo and GetAt",
       [](W& w) {
         w.s->c.MoveTo(w.i), w.s->cur = w.s->Has(w.i) ? w.i : -1;
         if (w.s->Has(w.j)) Same(K::Get(w.s->c.GetAt(w.j)), w.s->At(w.j));
       }},
      {"ReverseList",
       [](W& w) {
         w.s->c.ReverseList(), std::reverse(w.s->v.begin(), w.s->v.end());
         w.s->cur = W::kGrouped ? w.LastGroup() : (w.s->cur < 0 ? -1 : w.n - 1 - w.s->cur);
       }},
      {"Rotate",  // element i becomes the head when j is another element
       [](W& w) {
         w.s->c.Rotate(w.i, w.j);
         if (W::kGrouped) w.s->cur = w.LastGroup();
         if (w.i == w.j || !w.s->Has(w.i) || !w.s->Has(w.j)) return;
         std::rotate(w.s->v.begin(), w.s->v.begin() + (w.i - w.j + w.n) % w.n, w.s->v.end());
         w.s->cur = W::kGrouped ? w.LastGroup() : 0;
       }},
      {"Sort",  // ends on -1, or on an owning list's last empty place; too short: nothing moves
       [](W& w) {
         if (!K::kOwning && w.n < 2) return;
         w.s->c.Sort(w.flag), w.s->Sort(w.flag);
         w.s->cur = K::kOwning && w.n > 0 && w.s->v.back() < 0 ? w.n - 1 : -1;
       }},
      {"Conbine",  // t's elements from k go to the end of s; t's cursor ends on its new last
       [](W& w) {
         const ZtLong k = w.k % (w.t->Size() + 2) - 1;
         const bool moves = w.t->Has(k);
         Same(w.s->c.Conbine(w.t->c, k), w.n + (moves ? w.t->Size() - k : 0));
         if (moves) W::Splice(*w.t, k, *w.s), Same(w.t->c.GetCur(), k - 1);
         if (W::kGrouped || !moves) w.s->cur = w.s->c.GetCur();  // grouped: on a group start
         w.t->cur = w.t->c.GetCur();
       }},
      {"SplitAt",
       [](W& w) {
         w.s->c.SplitAt(w.i, w.t->c), w.s->cur = -1;
         if (w.s->Has(w.i)) W::Splice(*w.s, w.i, *w.t), w.s->cur = w.i - 1;
         if (W::kGrouped) w.t->cur = w.t->c.GetCur();
       }},
      {"SetLength",  // shortening deletes from the tail, growing appends T()
       [](W& w) {
         const ZtLong length = w.k % (w.n + 4);
         w.s->c.SetLength(length, true), w.s->v.resize(length, K::kOwning ? -1 : 0);
         if (length < w.n) w.s->cur = length - 1;
       }},
  });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using zt::fuzz::Plain;
  static const auto kList = Ops<Plain<ZtList<int>>>();
  static const auto kDList = Ops<Plain<ZtDList<int>>>();
  static const auto kXList = Ops<Plain<ZtXList<int>>>();
  static const auto kPDList = Ops<zt::fuzz::Owning<ZtPDList<int>>>();
  using zt::fuzz::Odd;
  static const auto kOddDList = zt::fuzz::OddOps<ZtDList<Odd>, false>();
  static const auto kOddXList = zt::fuzz::OddOps<ZtXList<Odd>, false>();
  static const auto kOddPDList = zt::fuzz::OddOps<ZtPDList<Odd>, true>();
  static const auto kOddPXList = zt::fuzz::OddOps<ZtPXList<Odd>, true>();
  return zt::fuzz::PlayAny(data, size, kList, kDList, kXList, kPDList, kOddDList, kOddXList,
                           kOddPDList, kOddPXList);
}
