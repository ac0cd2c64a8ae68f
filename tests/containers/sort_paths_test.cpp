// tests/containers/sort_paths_test.cpp
//
// Sort(bool) on element types whose order calls no client code takes an O(n log n) path; a
// comparator sort always takes the rank sort (arrays) or the insertion sort (lists). Given a
// comparator that answers exactly as the element order does, both must leave the same contents,
// bit for bit (so equal elements in the same stable order), and the same cursor, on random
// inputs with duplicates, in both directions, with NaNs among doubles.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <type_traits>
#include <typeinfo>
#include <vector>

#include "tests/support/containers.h"
#include "zt/containers/array.h"
#include "zt/containers/dlist.h"
#include "zt/containers/dyn_array.h"
#include "zt/containers/list.h"
#include "zt/containers/xlist.h"

namespace zt::test {
namespace {

enum Color { kRed, kGreen, kBlue, kCyan };
enum class Level : unsigned char { kLow = 1, kMid = 100, kHigh = 200 };

int g_cells[16];

// Random values with many duplicates; chars and wide characters on both sides of the sign bit.
template <class T>
T Draw(std::mt19937& rng, bool withNaN) {
  const unsigned r = rng();
  if constexpr (std::is_same_v<T, double>) {
    if (withNaN && r % 13 == 0) return std::numeric_limits<double>::quiet_NaN();
    return r % 17 == 0 ? -0.0 : static_cast<double>(static_cast<int>(r % 9) - 4) / 2;
  } else if constexpr (std::is_pointer_v<T>) {
    return &g_cells[r % 16];
  } else if constexpr (std::is_same_v<T, wchar_t>) {
    const unsigned units[] = {0x41, 0x7F, 0x80, 0x7FFF, 0x8000, 0xFFFF, 0};
    return static_cast<wchar_t>(units[r % 7]);
  } else if constexpr (std::is_same_v<T, Level>) {
    return static_cast<Level>(r % 3 == 0 ? 1 : r % 3 == 1 ? 100 : 200);
  } else if constexpr (std::is_enum_v<T>) {
    return static_cast<T>(r % 4);
  } else {
    return static_cast<T>(r % 40 + 100);  // char: 100..139, so half of them negative
  }
}

// The library's order, written out: char signed, wchar_t unsigned, pointers as addresses.
template <class T>
auto Key(T v) {
  if constexpr (std::is_same_v<T, char>) {
    return static_cast<signed char>(v);
  } else if constexpr (std::is_same_v<T, wchar_t>) {
    return static_cast<std::make_unsigned_t<wchar_t>>(v);
  } else if constexpr (std::is_pointer_v<T>) {
    return reinterpret_cast<std::uintptr_t>(v);
  } else {
    return v;
  }
}

// Positive exactly when Sort(true) (Sort(false)) moves a after b, so the comparator sort makes
// the decisions the order sort would make.
template <class T, bool kAscending>
int After(const T& a, const T& b) {
  return kAscending ? Key(a) > Key(b) : Key(a) < Key(b);
}

template <class T>
bool SameBits(const std::vector<T>& a, const std::vector<T>& b) {
  return a.size() == b.size() &&
         (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(T)) == 0);
}

template <class C, class T>
void ExpectSameResult(const std::vector<T>& input, bool ascending) {
  C bySort;
  C byComparator;
  for (const T& v : input) bySort.Append(v), byComparator.Append(v);
  if constexpr (!std::is_same_v<C, ZtArray<T>>) {
    bySort.MoveTo(static_cast<ZtLong>(input.size() / 2));
    byComparator.MoveTo(static_cast<ZtLong>(input.size() / 2));
  }
  bySort.Sort(ascending);
  byComparator.Sort(ascending ? After<T, true> : After<T, false>);
  ASSERT_TRUE(SameBits(Values(bySort), Values(byComparator)))
      << typeid(C).name() << " n=" << input.size() << (ascending ? " ascending" : " descending");
  if constexpr (!std::is_same_v<C, ZtArray<T>>) {
    EXPECT_EQ(bySort.GetCur(), byComparator.GetCur());
    if constexpr (std::is_base_of_v<ZtList<T>, C>) {
      // The back links and the grouped list's index still reach the same nodes.
      EXPECT_TRUE(SameBits(BackwardValues(bySort), Values(bySort)));
      EXPECT_TRUE(SameBits(PositionalValues(bySort), Values(bySort)));
    }
  }
}

template <class T>
class SortPathsTest : public ::testing::Test {};
using PlainTypes = ::testing::Types<int, char, wchar_t, int*, Color, Level, double>;
TYPED_TEST_SUITE(SortPathsTest, PlainTypes);

TYPED_TEST(SortPathsTest, OrderSortEqualsTheComparatorSort) {
  using T = TypeParam;
  std::mt19937 rng(12345);
  for (int size : {0, 1, 2, 3, 7, 40, 300}) {
    for (bool withNaN : {false, true}) {
      std::vector<T> input;
      input.reserve(static_cast<std::size_t>(size));
      for (int i = 0; i < size; ++i) input.push_back(Draw<T>(rng, withNaN));
      for (bool ascending : {true, false}) {
        ExpectSameResult<ZtDynArray<T>>(input, ascending);
        ExpectSameResult<ZtArray<T>>(input, ascending);
        ExpectSameResult<ZtList<T>>(input, ascending);
        ExpectSameResult<ZtDList<T>>(input, ascending);
        ExpectSameResult<ZtXList<T>>(input, ascending);
      }
    }
  }
}

// An enum with its own operators is a client order: the rank sort runs and calls them.
enum Rank { kTwo = 2, kThree, kFour };
int g_rankComparisons = 0;
bool operator<(Rank a, Rank b) { return ++g_rankComparisons, static_cast<int>(a) > b; }
bool operator>(Rank a, Rank b) { return ++g_rankComparisons, static_cast<int>(a) < b; }

TEST(SortPaths, AnEnumWithItsOwnOrderIsSortedThroughIt) {
  ZtDynArray<Rank> a;
  Fill(a, {kTwo, kFour, kThree, kTwo});
  g_rankComparisons = 0;
  a.Sort(true);  // ascending by the reversed operators
  EXPECT_EQ(Values(a), (std::vector<Rank>{kFour, kThree, kTwo, kTwo}));
  EXPECT_EQ(g_rankComparisons, 4 * 3 / 2);
  ZtDList<Rank> l;
  Fill(l, {kTwo, kFour, kThree});
  l.Sort(false);
  EXPECT_EQ(Values(l), (std::vector<Rank>{kTwo, kThree, kFour}));
}

}  // namespace
}  // namespace zt::test
