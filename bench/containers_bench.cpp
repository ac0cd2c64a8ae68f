// The containers against their nearest standard counterparts on the same work.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <deque>
#include <list>
#include <random>
#include <vector>

#include "bench/pair.h"
#include "zt/bits/bit_array.h"
#include "zt/containers/dlist.h"
#include "zt/containers/dyn_array.h"
#include "zt/containers/xlist.h"

namespace {

/// n pseudo-random ints, the same on every run.
std::vector<int> Shuffled(std::int64_t n) {
  std::vector<int> v(static_cast<std::size_t>(n));
  std::mt19937 rng(42);
  for (int& x : v) x = static_cast<int>(rng() % 1000000);
  return v;
}

ZtDynArray<int> ArrayOf(const std::vector<int>& v) {
  ZtDynArray<int> a(0, static_cast<ZtLong>(v.size()));
  for (int x : v) a.Append(x);
  return a;
}

// --- ZtDynArray<int> against std::vector<int> ---

void ArrayAppendZt(benchmark::State& state) {
  const auto n = static_cast<ZtLong>(state.range(0));
  for (auto _ : state) {
    ZtDynArray<int> a(0, n);  // one allocation unit covers the whole run
    for (ZtLong i = 0; i < n; ++i) a.Append(i);
    benchmark::DoNotOptimize(a.GetLength());
  }
}
void ArrayAppendStd(benchmark::State& state) {
  const auto n = static_cast<int>(state.range(0));
  for (auto _ : state) {
    std::vector<int> v;
    v.reserve(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) v.push_back(i);
    benchmark::DoNotOptimize(v.size());
  }
}

void ArrayIterateZt(benchmark::State& state) {
  ZtDynArray<int> a = ArrayOf(Shuffled(state.range(0)));
  for (auto _ : state) {
    std::int64_t sum = 0;
    for (a.MoveToFirst(); !a.IsOut(); a.MoveToNext()) sum += a.GetCurData();
    benchmark::DoNotOptimize(sum);
  }
}
void ArrayIterateStd(benchmark::State& state) {
  const std::vector<int> v = Shuffled(state.range(0));
  for (auto _ : state) {
    std::int64_t sum = 0;
    for (int x : v) sum += x;
    benchmark::DoNotOptimize(sum);
  }
}

void ArrayFindZt(benchmark::State& state) {
  const ZtDynArray<int> a = ArrayOf(Shuffled(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(a.Find(-1));  // absent: a full scan
}
void ArrayFindStd(benchmark::State& state) {
  const std::vector<int> v = Shuffled(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(std::find(v.begin(), v.end(), -1));
}

void ArrayBFindZt(benchmark::State& state) {
  std::vector<int> v = Shuffled(state.range(0));
  std::sort(v.begin(), v.end());
  const ZtDynArray<int> a = ArrayOf(v);
  std::size_t k = 0;
  for (auto _ : state) benchmark::DoNotOptimize(a.BFind(v[k++ % v.size()]));
}
void ArrayBFindStd(benchmark::State& state) {
  std::vector<int> v = Shuffled(state.range(0));
  std::sort(v.begin(), v.end());
  std::size_t k = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(std::lower_bound(v.begin(), v.end(), v[k++ % v.size()]));
  }
}

// Sort(bool) of ints takes the O(n log n) path; the copy is part of the work on both sides.
void ArraySortZt(benchmark::State& state) {
  const ZtDynArray<int> source = ArrayOf(Shuffled(state.range(0)));
  for (auto _ : state) {
    ZtDynArray<int> a(source);
    a.Sort(true);
    benchmark::DoNotOptimize(a.GetAt(0));
  }
}
void ArraySortStd(benchmark::State& state) {
  const std::vector<int> source = Shuffled(state.range(0));
  for (auto _ : state) {
    std::vector<int> v(source);
    std::stable_sort(v.begin(), v.end());
    benchmark::DoNotOptimize(v.front());
  }
}

// A comparator sort is the stable rank sort whatever the type: n(n-1)/2 calls, by design.
int ByValue(const int& a, const int& b) { return a < b ? -1 : (a > b ? 1 : 0); }
void ArraySortByComparatorZt(benchmark::State& state) {
  const ZtDynArray<int> source = ArrayOf(Shuffled(state.range(0)));
  for (auto _ : state) {
    ZtDynArray<int> a(source);
    a.Sort(ByValue);
    benchmark::DoNotOptimize(a.GetAt(0));
  }
}
void ArraySortByComparatorStd(benchmark::State& state) {
  const std::vector<int> source = Shuffled(state.range(0));
  for (auto _ : state) {
    std::vector<int> v(source);
    std::stable_sort(v.begin(), v.end(), [](int a, int b) { return ByValue(a, b) < 0; });
    benchmark::DoNotOptimize(v.front());
  }
}

// --- ZtDList<int> and ZtXList<int> against std::list<int> and std::deque<int> ---

template <class L>
void ListAppendZt(benchmark::State& state) {
  const auto n = static_cast<int>(state.range(0));
  for (auto _ : state) {
    L l;
    for (int i = 0; i < n; ++i) l.Append(i);
    benchmark::DoNotOptimize(l.GetLength());
  }
}
// The same with an index allocation unit that covers the whole run, so the index never grows.
void XListAppendOneUnitZt(benchmark::State& state) {
  const auto n = static_cast<int>(state.range(0));
  for (auto _ : state) {
    ZtXList<int> l(0, 25, n / 25 + 1);
    for (int i = 0; i < n; ++i) l.Append(i);
    benchmark::DoNotOptimize(l.GetLength());
  }
}
template <class L>
void ListAppendStd(benchmark::State& state) {
  const auto n = static_cast<int>(state.range(0));
  for (auto _ : state) {
    L l;
    for (int i = 0; i < n; ++i) l.push_back(i);
    benchmark::DoNotOptimize(l.size());
  }
}

template <class L>
void ListIterateZt(benchmark::State& state) {
  L l;
  for (int x : Shuffled(state.range(0))) l.Append(x);
  for (auto _ : state) {
    std::int64_t sum = 0;
    for (const int* p = l.GetFirst(); p != nullptr; p = l.GetNext(p)) sum += *p;
    benchmark::DoNotOptimize(sum);
  }
}
template <class L>
void ListIterateStd(benchmark::State& state) {
  const std::vector<int> v = Shuffled(state.range(0));
  const L l(v.begin(), v.end());
  for (auto _ : state) {
    std::int64_t sum = 0;
    for (int x : l) sum += x;
    benchmark::DoNotOptimize(sum);
  }
}

/// Random positions for the positional workloads.
std::vector<ZtLong> Positions(std::int64_t n) {
  std::vector<ZtLong> at(4096);
  std::mt19937 rng(7);
  for (ZtLong& i : at) i = static_cast<ZtLong>(rng() % static_cast<std::uint32_t>(n));
  return at;
}

template <class L>
void ListMoveToZt(benchmark::State& state) {
  L l;
  for (int x : Shuffled(state.range(0))) l.Append(x);
  const std::vector<ZtLong> at = Positions(state.range(0));
  std::size_t k = 0;
  for (auto _ : state) {
    l.MoveTo(at[k++ % at.size()]);
    benchmark::DoNotOptimize(l.GetCurData());
  }
}
template <class L>
void ListMoveToStd(benchmark::State& state) {
  const std::vector<int> v = Shuffled(state.range(0));
  const L l(v.begin(), v.end());
  const std::vector<ZtLong> at = Positions(state.range(0));
  std::size_t k = 0;
  for (auto _ : state) benchmark::DoNotOptimize(*std::next(l.begin(), at[k++ % at.size()]));
}

// One insertion and one deletion at the cursor (at an iterator) in the middle of the list.
template <class L>
void ListInsertDeleteZt(benchmark::State& state) {
  L l;
  for (int x : Shuffled(state.range(0))) l.Append(x);
  l.MoveTo(l.GetLength() / 2);
  for (auto _ : state) {
    l.InsertCur(1);
    l.DelCur();
    l.MoveToNext();
  }
}
template <class L>
void ListInsertDeleteStd(benchmark::State& state) {
  const std::vector<int> v = Shuffled(state.range(0));
  L l(v.begin(), v.end());
  auto it = std::next(l.begin(), static_cast<std::ptrdiff_t>(l.size() / 2));
  for (auto _ : state) {
    it = l.insert(it, 1);
    it = l.erase(it);
  }
}

// Sort(true) of a copy; the list keeps its nodes and sorts the values.
template <class L>
void ListSortZt(benchmark::State& state) {
  L source;
  for (int x : Shuffled(state.range(0))) source.Append(x);
  for (auto _ : state) {
    L l(source);
    l.Sort(true);
    benchmark::DoNotOptimize(l.GetFirst());
  }
}
void ListSortStd(benchmark::State& state) {
  const std::vector<int> v = Shuffled(state.range(0));
  const std::list<int> source(v.begin(), v.end());
  for (auto _ : state) {
    std::list<int> l(source);
    l.sort();
    benchmark::DoNotOptimize(l.front());
  }
}

// --- ZtBitArray against std::vector<bool> ---

void BitsSetGetZt(benchmark::State& state) {
  const auto n = static_cast<ZtLong>(state.range(0));
  for (auto _ : state) {
    ZtBitArray bits(n, 1);
    for (ZtLong i = 0; i < n; i += 3) bits.SetValue(i, 1);
    ZtLong count = 0;
    for (ZtLong i = 0; i < n; ++i) count += bits.GetValue(i);
    benchmark::DoNotOptimize(count);
  }
}
void BitsSetGetStd(benchmark::State& state) {
  const auto n = static_cast<std::size_t>(state.range(0));
  for (auto _ : state) {
    std::vector<bool> bits(n);
    for (std::size_t i = 0; i < n; i += 3) bits[i] = true;
    ZtLong count = 0;
    for (std::size_t i = 0; i < n; ++i) count += bits[i] ? 1 : 0;
    benchmark::DoNotOptimize(count);
  }
}

using XList = ZtXList<int>;
using zt::bench::Pair;

}  // namespace

ZT_BENCH_PAIRS {
  Pair("DynArray.Append", ArrayAppendZt, ArrayAppendStd, {1000, 1000000});
  Pair("DynArray.Iterate", ArrayIterateZt, ArrayIterateStd, {1000, 1000000});
  Pair("DynArray.Find", ArrayFindZt, ArrayFindStd, {1000, 1000000});
  Pair("DynArray.BFind", ArrayBFindZt, ArrayBFindStd, {1000, 1000000});
  Pair("DynArray.Sort", ArraySortZt, ArraySortStd, {1000, 10000, 100000});
  Pair("DynArray.SortByComparator", ArraySortByComparatorZt, ArraySortByComparatorStd, {1000});
  Pair("DList.Append", ListAppendZt<ZtDList<int>>, ListAppendStd<std::list<int>>, {1000, 1000000});
  Pair("DList.Iterate", ListIterateZt<ZtDList<int>>, ListIterateStd<std::list<int>>,
       {1000, 1000000});
  Pair("DList.InsertDelete", ListInsertDeleteZt<ZtDList<int>>, ListInsertDeleteStd<std::list<int>>,
       {1000, 1000000});
  Pair("DList.Sort", ListSortZt<ZtDList<int>>, ListSortStd, {1000, 10000, 100000});
  Pair("XList.Sort", ListSortZt<XList>, ListSortStd, {10000});
  Pair("XList.Append", ListAppendZt<XList>, ListAppendStd<std::list<int>>, {1000, 1000000});
  Pair("XList.AppendOneUnit", XListAppendOneUnitZt, ListAppendStd<std::list<int>>, {1000, 1000000});
  Pair("XList.MoveTo", ListMoveToZt<XList>, ListMoveToStd<std::list<int>>, {1000, 100000});
  Pair("XList.MoveToVsDeque", ListMoveToZt<XList>, ListMoveToStd<std::deque<int>>, {1000, 1000000});
  Pair("XList.InsertDelete", ListInsertDeleteZt<XList>, ListInsertDeleteStd<std::deque<int>>,
       {1000, 1000000});
  Pair("BitArray.SetGet", BitsSetGetZt, BitsSetGetStd, {1000, 1000000});
}

BENCHMARK_MAIN();
