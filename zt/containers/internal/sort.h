// zt/containers/internal/sort.h
//
// The container sorts, written once for the arrays and the lists. Implementation details only.
//
// RankSort is the library's stable rank sort: exactly n(n-1)/2 comparisons, then every element
// moved once along the cycles of the rank permutation. It always returns and keeps every element,
// whatever the comparisons answer. When they are a consistent order the ranks form a permutation
// (checked in O(n)) and the result is the stable sort. When they are not (a NaN, a faulty
// comparator) ranks collide; the elements are then placed in the order of their ranks, elements
// of equal rank in their original order. A rank is the element's index, plus one for every later
// element it must follow, minus one for every earlier element that must follow it.
//
// For element types whose order runs no client code (arithmetic types, pointers, enums without
// their own < and >) the comparisons cannot be observed and any stable sort gives the rank sort's
// result, so SortByOrder and SortNodeValues sort those in O(n log n). A floating-point range that
// holds a NaN still takes the rank sort, whose result is the one defined above.
#ifndef ZT_CONTAINERS_INTERNAL_SORT_H_
#define ZT_CONTAINERS_INTERNAL_SORT_H_

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <typeinfo>
#include <utility>

#include "zt/config.h"
#include "zt/containers/internal/element_ops.h"

namespace zt::detail {

// An enum may have client operators < and >. Those are functions found by argument-dependent
// lookup and can be called by name, which the built-in operators cannot.
template <class T, class = void>
struct HasOwnLess : std::false_type {};
template <class T>
struct HasOwnLess<
    T, std::void_t<decltype(operator<(std::declval<const T&>(), std::declval<const T&>()))>>
    : std::true_type {};
template <class T, class = void>
struct HasOwnGreater : std::false_type {};
template <class T>
struct HasOwnGreater<
    T, std::void_t<decltype(operator>(std::declval<const T&>(), std::declval<const T&>()))>>
    : std::true_type {};

// True when ordering T calls no client code, so that the comparisons a sort makes are invisible.
template <class T>
constexpr bool kPlainOrder = std::is_arithmetic_v<T> || std::is_pointer_v<T> ||
                             std::conjunction_v<std::is_enum<T>, std::negation<HasOwnLess<T>>,
                                                std::negation<HasOwnGreater<T>>>;

// True when the dynamic type of obj is exactly one of Exact.
template <class... Exact, class Obj>
bool IsExactly(const Obj& obj) {
  return ((typeid(obj) == typeid(Exact)) || ...);
}

template <class T>
bool HoldsNaN(const T* data, ZtLong n) {
  if constexpr (std::is_floating_point_v<T>) {
    return std::any_of(data, data + n, [](T v) { return std::isnan(v); });
  } else {
    return false;
  }
}

// Stable sort of [first, last) by the library's order (see element_ops.h). Never throws: without
// memory for its buffer the standard stable sort merges in place.
template <class T>
void StableSortPlain(T* first, T* last, bool ascending) {
  if (ascending) {
    std::stable_sort(first, last, [](const T& a, const T& b) { return Less(a, b); });
  } else {
    std::stable_sort(first, last, [](const T& a, const T& b) { return Greater(a, b); });
  }
}

// True when the ranks rank[0..n), each in [0, n), are all different. Every rank lies in [0, n):
// rank i starts at i, gains at most one per later element and loses at most one per earlier one.
// Marks each rank met by complementing the entry it names, then removes the marks.
inline bool IsPermutation(ZtLong* rank, ZtLong n) {
  bool distinct = true;
  for (ZtLong i = 0; i < n; ++i) {
    const ZtLong r = rank[i] < 0 ? ~rank[i] : rank[i];
    if (rank[r] < 0) {
      distinct = false;
    } else {
      rank[r] = ~rank[r];
    }
  }
  for (ZtLong i = 0; i < n; ++i) {
    if (rank[i] < 0) rank[i] = ~rank[i];
  }
  return distinct;
}

// Turns ranks in [0, n) that may collide into distinct places: ascending by rank, equal ranks in
// index order (a counting sort of the ranks).
inline void PlaceByRank(ZtLong* rank, ZtLong n) {
  std::unique_ptr<ZtLong[]> next(new ZtLong[static_cast<std::size_t>(n) + 1]());
  for (ZtLong i = 0; i < n; ++i) ++next[rank[i] + 1];
  for (ZtLong r = 1; r < n; ++r) next[r] += next[r - 1];  // next[r]: how many ranks lie below r
  for (ZtLong i = 0; i < n; ++i) rank[i] = next[rank[i]]++;
}

// The stable rank sort; `after(a, b)` is true when a must come after b. Compares the pairs in the
// order (0,1), (0,2), ..., (n-2,n-1). Throws bad_alloc before anything moves when a table cannot
// be allocated.
template <class T, class After>
void RankSort(T* data, ZtLong n, After after) {
  if (n < 2) return;
  std::unique_ptr<ZtLong[]> rank(new ZtLong[static_cast<std::size_t>(n)]);
  for (ZtLong i = 0; i < n; ++i) rank[i] = i;
  for (ZtLong i = 0; i + 1 < n; ++i) {
    for (ZtLong j = i + 1; j < n; ++j) {
      if (after(data[i], data[j])) {
        ++rank[i];
        --rank[j];
      }
    }
  }
  if (!IsPermutation(rank.get(), n)) PlaceByRank(rank.get(), n);
  for (ZtLong i = 0; i < n; ++i) {
    if (rank[i] == i) continue;
    T v = std::move(data[i]);
    ZtLong k = rank[i];
    while (k != i) {
      T w = std::move(data[k]);
      data[k] = std::move(v);
      const ZtLong next = rank[k];
      rank[k] = k;
      k = next;
      v = std::move(w);
    }
    data[i] = std::move(v);
    rank[i] = i;
  }
}

// Sort(bool) of the arrays: data[0..n) ascending or descending by the library's order.
template <class T>
void SortByOrder(T* data, ZtLong n, bool ascending) {
  if constexpr (kPlainOrder<T>) {
    if (!HoldsNaN(data, n)) {
      StableSortPlain(data, data + n, ascending);
      return;
    }
  }
  if (ascending) {
    RankSort(data, n, Greater<T>);
  } else {
    RankSort(data, n, Less<T>);
  }
}

// Sort(bool) of the lists without the insertion sort: when T's order is plain and the dynamic type
// of `list` is exactly one of Exact (so no client slot override expects the insertion sort's
// calls), sorts the values held by the n nodes that follow `head` as SortByOrder would sort them
// in an array, every node staying where it is, and returns true. Returns false with nothing
// changed otherwise, for fewer than two elements and for a NaN. Throws bad_alloc, with nothing
// changed, when the n values cannot be copied out.
template <class T, class... Exact, class List, class Node>
bool SortNodeValues(const List& list, Node* head, ZtLong n, bool ascending) {
  if constexpr (kPlainOrder<T>) {
    if (n < 2 || !IsExactly<Exact...>(list)) return false;
    std::unique_ptr<T[]> values(new T[static_cast<std::size_t>(n)]);
    Node* node = head;
    for (ZtLong i = 0; i < n; ++i) values[i] = (node = node->next)->data;
    if (HoldsNaN(values.get(), n)) return false;
    StableSortPlain(values.get(), values.get() + n, ascending);
    node = head;
    for (ZtLong i = 0; i < n; ++i) (node = node->next)->data = values[i];
    return true;
  } else {
    static_cast<void>(list), static_cast<void>(head), static_cast<void>(n);
    static_cast<void>(ascending);
    return false;
  }
}

}  // namespace zt::detail

#endif  // ZT_CONTAINERS_INTERNAL_SORT_H_
