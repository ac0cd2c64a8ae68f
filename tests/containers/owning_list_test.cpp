// tests/containers/owning_list_test.cpp
//
// ZtPDList and ZtPXList: what removes a node, what deletes an object, the object sort with empty
// places, cursor positions of the owning searches, and copies that own clones. The grouped list
// runs with groups of two and its index is checked after every test.
#include <type_traits>

#include "zt/containers/pdlist.h"
#include "zt/containers/pxlist.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/containers.h"
#include "tests/support/fault_injection.h"
#include "tests/support/tracked.h"

namespace zt::test {
namespace {

class GroupedOwning : public IndexProbe<ZtPXList<Tracked>> {
 public:
  explicit GroupedOwning(ZtLong n = 0) : IndexProbe<ZtPXList<Tracked>>(n, 2) {}
};

// The objects' values, with -1 for an empty place.
template <class Owning>
std::vector<int> Objects(const Owning& l) {
  std::vector<int> out;
  for (Tracked* p : Values(l)) out.push_back(p != nullptr ? p->value() : -1);
  return out;
}

template <class Owning>
Owning Make(std::initializer_list<int> values) {
  Owning l;
  for (int v : values) l.Append(v < 0 ? nullptr : new Tracked(v));
  return l;
}

template <class Owning>
class OwningListTest : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(Tracked::Live(), m_live) << "objects leaked or lost"; }
  static Owning Make(std::initializer_list<int> values) { return test::Make<Owning>(values); }
  /// For the grouped list: the index is exact after what the test did.
  static void Check(Owning& l) {
    if constexpr (std::is_same_v<Owning, GroupedOwning>) ExpectIndexExact(l);
  }
  long m_live = Tracked::Live();
};
using OwningLists = ::testing::Types<ZtPDList<Tracked>, GroupedOwning>;
TYPED_TEST_SUITE(OwningListTest, OwningLists);

TYPED_TEST(OwningListTest, EmptyPlacesTakeOffAndRelease) {
  TypeParam l(3);
  EXPECT_EQ(l.GetDataNum(), 0);
  EXPECT_EQ(l.PlaceIn(new Tracked(1)), 0);
  EXPECT_EQ(l.GetDataNum(), 1);
  l.MoveTo(1);
  l.DelCur();  // an empty place: nothing to delete
  EXPECT_EQ(l.GetCur(), 0);
  EXPECT_EQ(Objects(l), (std::vector<int>{1, -1}));
  Tracked* head = l.TakeOffHead();  // removes the node, keeps the object
  EXPECT_EQ(Objects(l), (std::vector<int>{-1}));
  delete head;
  EXPECT_EQ(TypeParam().TakeOffHead(), nullptr);
  auto m = this->Make({1, 2});
  m.ReleaseAll();
  EXPECT_EQ(Objects(m), (std::vector<int>{-1, -1}));
  EXPECT_EQ(m.GetCur(), -1);
  this->Check(l);
}

TYPED_TEST(OwningListTest, SearchesAndSortedInsertionByObject) {
  auto l = this->Make({3, 1, 3, -1, 3});
  VectorQuene hits;
  EXPECT_EQ(l.FindData(Tracked(3), hits, 1, -1), 2);
  EXPECT_EQ(hits.items(), (std::vector<ZtLong>{2, 4}));
  EXPECT_TRUE(l.FindDataTo(Tracked(3), 1));
  EXPECT_EQ(l.GetCur(), 2);
  EXPECT_FALSE(l.FindDataTo(Tracked(1), 2, 3));
  EXPECT_EQ(l.FindDataOrAppend(Tracked(1)), 1);
  EXPECT_EQ(l.FindDataOrAppend(Tracked(8)), 5);
  l.FindDataOrInsertHead(Tracked(0));
  EXPECT_EQ(l.FindDataDel(Tracked(3)), 3);
  EXPECT_EQ(Objects(l), (std::vector<int>{0, 1, -1, 8}));
  l.Sort(true);
  EXPECT_EQ(Objects(l), (std::vector<int>{0, 1, 8, -1}));
  EXPECT_EQ(l.GetCur(), 3);
  l.DelTail();
  EXPECT_FALSE(l.BFindDataTo(Tracked(9)));
  EXPECT_EQ(l.GetCur(), -1);  // past the end: InsertCur appends
  auto* p = new Tracked(1);
  EXPECT_FALSE(l.SortInto(p, false));
  EXPECT_TRUE(l.SortInto(p, true));
  EXPECT_TRUE(l.SortInto(new Tracked(9), false));
  EXPECT_EQ(Objects(l), (std::vector<int>{0, 1, 1, 8, 9}));
  EXPECT_EQ(l.BFindData(Tracked(8)), 3);
  EXPECT_EQ(l.FindDel(p), 1);
  EXPECT_EQ(l.FindDel(p), 0);
  this->Check(l);
}

TYPED_TEST(OwningListTest, SortsAndMovesNeverDeleteWhatTheyMove) {
  auto l = this->Make({-1, 3, 1, -1, 2});
  l.Sort(false);
  EXPECT_EQ(Objects(l), (std::vector<int>{3, 2, 1, -1, -1}));
  EXPECT_EQ(l.GetCur(), 4);
  l.Sort([](const Tracked& a, const Tracked& b) { return a.value() - b.value(); });
  EXPECT_EQ(Objects(l), (std::vector<int>{1, 2, 3, -1, -1}));
  l.Sort([](Tracked* const& a, Tracked* const& b) { return a == nullptr ? -1 : (b == nullptr); });
  EXPECT_EQ(l.GetDataNum(), 3);
  EXPECT_TRUE(l.Move(4, 0));
  EXPECT_EQ(l.GetDataNum(), 3);
  this->Check(l);
  EXPECT_TRUE(this->Make({-1, 4}) == this->Make({-1, 4}));
  EXPECT_TRUE(this->Make({4, -1}) != this->Make({-1, 4}));
}

TYPED_TEST(OwningListTest, CopiesOwnClonesAndInsertionsAreAllOrNothing) {
  auto l = this->Make({1, -1, 2});
  {
    TypeParam copy(l);
    EXPECT_EQ(Objects(copy), Objects(l));
    EXPECT_NE(copy[0], l[0]);
    copy = this->Make({7, 8, 9, 10});
    copy << l;
    EXPECT_EQ(Objects(copy), (std::vector<int>{7, 8, 9, 10, 1, -1, 2}));
    l.Mid(0, 1, copy);
    EXPECT_EQ(Objects(copy), (std::vector<int>{1, -1}));
    this->Check(copy);
  }
  const auto state = [](const TypeParam& x) { return std::make_pair(Values(x), x.GetCur()); };
  l.MoveTo(1);
  ExpectStrongGuarantee(
      l, [](auto& x) { x.Append(nullptr); }, state);
  ExpectStrongGuarantee(
      l, [](auto& x) { x.FindDataOrAppend(Tracked(5)); }, state);
}

}  // namespace
}  // namespace zt::test
