// tests/interop/std_test.cpp
//
// zt/std.h: range-for and standard algorithms over every kind of sequence, the fixed array and
// the strings, with the iterator category each kind promises and the cursor left alone; string
// views both ways, hashing and stream output.
#include "zt/std.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <numeric>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_set>
#include <vector>

#include "tests/support/containers.h"
#include "zt/containers/dyn_parray.h"
#include "zt/containers/pxlist.h"
#include "zt/containers/xlist.h"

namespace zt::test {
namespace {

template <class C>
using Category =
    typename std::iterator_traits<decltype(begin(std::declval<C&>()))>::iterator_category;
template <class C, class Tag>
constexpr bool kIs = std::is_same_v<Category<C>, Tag>;

static_assert(kIs<ZtDynArray<int>, std::random_access_iterator_tag>);
static_assert(kIs<ZtDynPArray<int>, std::random_access_iterator_tag>);
static_assert(kIs<ZtArray<int>, std::random_access_iterator_tag>);
static_assert(kIs<const ZtStringW, std::random_access_iterator_tag>);
static_assert(kIs<ZtList<int>, std::forward_iterator_tag>);
static_assert(kIs<ZtDList<int>, std::bidirectional_iterator_tag>);
static_assert(kIs<ZtPXList<int>, std::bidirectional_iterator_tag>);
static_assert(kIs<ZtDynArrayBase<int>, std::bidirectional_iterator_tag>);
static_assert(std::is_same_v<decltype(*begin(std::declval<const ZtList<int>&>())), const int&>);
static_assert(std::is_same_v<decltype(*begin(std::declval<ZtStringA&>())), char&>);

template <class S>
class StdSequenceTest : public ::testing::Test {};
using Sequences = ::testing::Types<ZtDynArray<int>, ZtList<int>, ZtDList<int>, ZtXList<int>>;
TYPED_TEST_SUITE(StdSequenceTest, Sequences);

TYPED_TEST(StdSequenceTest, RangeForAndAlgorithmsLeaveTheCursorAlone) {
  TypeParam s;
  Fill(s, {5, 3, 8, 3});
  s.MoveTo(1);
  int sum = 0;
  for (int v : s) sum += v;
  for (int& v : s) v *= 2;
  const auto& cs = s;
  EXPECT_EQ(sum, 19);
  EXPECT_EQ(std::accumulate(begin(cs), end(cs), 0), 38);
  EXPECT_EQ(std::count(begin(s), end(s), 6), 2);
  EXPECT_EQ(*std::max_element(begin(cs), end(cs)), 16);
  EXPECT_EQ(std::distance(begin(s), std::find(begin(s), end(s), 16)), 2);
  EXPECT_EQ(s.GetCur(), 1);
  TypeParam empty;
  EXPECT_TRUE(begin(empty) == end(empty));
  if constexpr (!std::is_same_v<Category<TypeParam>, std::forward_iterator_tag>) {
    std::reverse(begin(s), end(s));
    EXPECT_EQ(Values(s), (std::vector<int>{6, 16, 6, 10}));
    EXPECT_EQ(*std::prev(end(cs)), 10);
    EXPECT_EQ(BackwardValues(s), Values(s));
  }
}

TEST(StdInterop, RandomAccessSortsAndSearchesTheBuffers) {
  ZtDynArray<int> a;
  Fill(a, {4, 1, 3, 2});
  std::sort(begin(a), end(a));
  EXPECT_EQ(std::lower_bound(begin(a), end(a), 3) - begin(a), 2);
  ZtArray<int> fixed(a);
  std::sort(begin(fixed), end(fixed), std::greater<>());
  EXPECT_EQ(Values(fixed), (std::vector<int>{4, 3, 2, 1}));
  // A list seen as a plain sequence walks both ways through its slots.
  ZtList<int> l(a);
  ZtDynArrayBase<int>& seq = l;
  std::reverse(begin(seq), end(seq));
  EXPECT_EQ(Values(l), (std::vector<int>{4, 3, 2, 1}));
  EXPECT_EQ(l.GetCur(), -1);
}

template <class Ch>
class StdStringTest : public ::testing::Test {};
using CharTypes = ::testing::Types<char, wchar_t>;
TYPED_TEST_SUITE(StdStringTest, CharTypes);

TYPED_TEST(StdStringTest, ViewsIterationAndHashingCoverTheText) {
  using View = std::basic_string_view<TypeParam>;
  const std::basic_string<TypeParam> text{'a', 'b', 0, 'c'};
  auto s = ZtStringFrom(View(text));
  EXPECT_EQ(ZtAsView(s), View(text));  // embedded zero included
  EXPECT_EQ(s.GetLength(), 5);         // exact capacity
  s.ReAllocate(10, true);              // spare room is not part of the text
  EXPECT_EQ(std::basic_string<TypeParam>(begin(s), end(s)), text);
  std::transform(begin(s), end(s), begin(s), [](TypeParam c) { return c == 'b' ? 'B' : c; });
  const std::basic_string<TypeParam> upper{'a', 'B', 0, 'c'};
  EXPECT_EQ(ZtAsView(s), View(upper));
  const auto ab = ZtStringFrom(View(text).substr(0, 2));
  const std::unordered_set<std::decay_t<decltype(s)>> set{ab};
  EXPECT_EQ(set.count(ZtStringFrom(View(text).substr(0, 2))), 1U);
  EXPECT_EQ(set.count(ZtStringFrom(View(text))), 1U);  // == and the hash stop at the zero
  EXPECT_EQ(set.count(s), 0U);                         // "aB"
}

TEST(StdInterop, StringsPrintToStreamsOfEitherWidth) {
  std::ostringstream narrow;
  std::wostringstream wide;
  narrow << ZtStringA("ab") << '|' << ZtStringW(L"cd");
  wide << ZtStringW(L"ef") << L'|' << ZtStringA("gh");
  EXPECT_EQ(narrow.str(), "ab|cd");
  EXPECT_EQ(wide.str(), L"ef|gh");
}

}  // namespace
}  // namespace zt::test
