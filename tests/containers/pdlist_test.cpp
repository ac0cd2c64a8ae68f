// tests/containers/pdlist_test.cpp
//
// ZtPDList: what removes a node, what deletes an object, the object sort with empty places,
// cursor positions of the owning searches, and copies that own clones.
#include "zt/containers/pdlist.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/containers.h"
#include "tests/support/fault_injection.h"
#include "tests/support/tracked.h"

namespace zt::test {
namespace {

using Owning = ZtPDList<Tracked>;

// The objects' values, with -1 for an empty place.
std::vector<int> Objects(const Owning& l) {
  std::vector<int> out;
  for (Tracked* p : Values(l)) out.push_back(p != nullptr ? p->value() : -1);
  return out;
}

Owning Make(std::initializer_list<int> values) {
  Owning l;
  for (int v : values) l.Append(v < 0 ? nullptr : new Tracked(v));
  return l;
}

class PDListTest : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(Tracked::Live(), m_live) << "objects leaked or lost"; }
  long m_live = Tracked::Live();
};

TEST_F(PDListTest, EmptyPlacesTakeOffAndRelease) {
  Owning l(3);
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
  EXPECT_EQ(Owning().TakeOffHead(), nullptr);
  auto m = Make({1, 2});
  m.ReleaseAll();
  EXPECT_EQ(Objects(m), (std::vector<int>{-1, -1}));
  EXPECT_EQ(m.GetCur(), -1);
}

TEST_F(PDListTest, SearchesAndSortedInsertionByObject) {
  auto l = Make({3, 1, 3, -1, 3});
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
}

TEST_F(PDListTest, SortsAndMovesNeverDeleteWhatTheyMove) {
  auto l = Make({-1, 3, 1, -1, 2});
  l.Sort(false);
  EXPECT_EQ(Objects(l), (std::vector<int>{3, 2, 1, -1, -1}));
  EXPECT_EQ(l.GetCur(), 4);
  l.Sort([](const Tracked& a, const Tracked& b) { return a.value() - b.value(); });
  EXPECT_EQ(Objects(l), (std::vector<int>{1, 2, 3, -1, -1}));
  l.Sort([](Tracked* const& a, Tracked* const& b) { return a == nullptr ? -1 : (b == nullptr); });
  EXPECT_EQ(l.GetDataNum(), 3);
  EXPECT_TRUE(l.Move(4, 0));
  EXPECT_EQ(l.GetDataNum(), 3);
  EXPECT_TRUE(Make({-1, 4}) == Make({-1, 4}));
  EXPECT_TRUE(Make({4, -1}) != Make({-1, 4}));
}

TEST_F(PDListTest, CopiesOwnClonesAndInsertionsAreAllOrNothing) {
  auto l = Make({1, -1, 2});
  {
    Owning copy(l);
    EXPECT_EQ(Objects(copy), Objects(l));
    EXPECT_NE(copy[0], l[0]);
    copy = Make({7, 8, 9, 10});
    copy << l;
    EXPECT_EQ(Objects(copy), (std::vector<int>{7, 8, 9, 10, 1, -1, 2}));
    l.Mid(0, 1, copy);
    EXPECT_EQ(Objects(copy), (std::vector<int>{1, -1}));
  }
  const auto state = [](const Owning& x) { return std::make_pair(Values(x), x.GetCur()); };
  l.MoveTo(1);
  ExpectStrongGuarantee(
      l, [](auto& x) { x.Append(nullptr); }, state);
  ExpectStrongGuarantee(
      l, [](auto& x) { x.FindDataOrAppend(Tracked(5)); }, state);
}

}  // namespace
}  // namespace zt::test
