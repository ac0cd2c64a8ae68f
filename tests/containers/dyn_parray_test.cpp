// tests/containers/dyn_parray_test.cpp
//
// ZtDynPArray: which calls delete objects and which hand them back, empty slots, searches and
// sorts by object, and copies that own clones of their own.
#include "zt/containers/dyn_parray.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/containers.h"
#include "tests/support/fault_injection.h"
#include "tests/support/tracked.h"

namespace zt::test {
namespace {

using Owning = ZtDynPArray<Tracked>;

// The objects' values, with -1 for an empty slot.
std::vector<int> Objects(const Owning& a) {
  std::vector<int> out;
  for (Tracked* p : Values(a)) out.push_back(p != nullptr ? p->value() : -1);
  return out;
}

Owning Make(std::initializer_list<int> values) {
  Owning a;
  for (int v : values) a.Append(v < 0 ? nullptr : new Tracked(v));
  return a;
}

class DynPArrayTest : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(Tracked::Live(), m_live) << "objects leaked or lost"; }
  long m_live = Tracked::Live();
};

TEST_F(DynPArrayTest, EmptySlotsAreCountedAndReused) {
  auto a = Make({1, -1, 2});
  EXPECT_EQ(a.GetDataNum(), 2);
  EXPECT_EQ(a.GetLength(), 3);
  for (ZtLong i : {1, 3, -1}) EXPECT_TRUE(a.IsEmptyData(i)) << i;
  EXPECT_EQ(a.PlaceIn(new Tracked(7)), 1);
  EXPECT_EQ(a.PlaceIn(new Tracked(8)), 3);
  EXPECT_EQ(a.GetCur(), 3);
  EXPECT_EQ(Objects(a), (std::vector<int>{1, 7, 2, 8}));
  EXPECT_EQ(a(1).value(), 7);
  EXPECT_EQ(a.GetPData(3).value(), 8);
}

TEST_F(DynPArrayTest, ReleaseDeletesTakeOffHandsBack) {
  auto a = Make({1, 2, 3});
  const long live = Tracked::Live();
  Tracked* head = a.TakeOffHead();
  EXPECT_EQ(head->value(), 1);
  EXPECT_EQ(Tracked::Live(), live);
  EXPECT_EQ(Objects(a), (std::vector<int>{-1, 2, 3}));
  delete head;
  a.MoveTo(5);
  EXPECT_EQ(a.TakeOffCur(), nullptr);
  EXPECT_TRUE(a.IsCurEmpty());
  a.Release(0);  // empty already: nothing happens
  a.Release(1);
  EXPECT_EQ(Objects(a), (std::vector<int>{-1, -1, 3}));
  EXPECT_EQ(Tracked::Live(), live - 2);
  a.ReleaseAll();
  EXPECT_EQ(a.GetLength(), 3);
  EXPECT_EQ(a.GetDataNum(), 0);
}

TEST_F(DynPArrayTest, RemovalDeletesOnlyTheRemovedObject) {
  auto a = Make({1, 2, 3, 4});
  a.MoveTo(0);
  a.DelCur();
  EXPECT_EQ(a.GetCur(), -1);
  a.DelTail();
  EXPECT_EQ(Objects(a), (std::vector<int>{2, 3}));
  EXPECT_TRUE(a.Move(0, 2));
  EXPECT_EQ(Objects(a), (std::vector<int>{3, 2}));
  EXPECT_EQ(a.GetCur(), 1);
  auto b = Make({5, 6});
  b.ReAllocate(5);
  EXPECT_EQ(Objects(b), (std::vector<int>{5, 6, -1, -1, -1}));
  b.DecreaseSize(4);
  EXPECT_EQ(Objects(b), (std::vector<int>{5}));
  auto c = Make({1, 2});
  c.SetSpaceSize(12);
  c.SetLength(2, true);
  EXPECT_EQ(c.GetSpaceSize(), 12);
  c.SetLength(3, false);
  EXPECT_EQ(Objects(c), (std::vector<int>{-1, -1, -1}));
  c.Reset();
  EXPECT_EQ(c.GetSpaceSize(), 3);
}

TEST_F(DynPArrayTest, SearchesAndSortsCompareObjects) {
  auto a = Make({-1, 3, 1, 3});
  EXPECT_EQ(a.FindData(Tracked(3)), 1);
  VectorQuene hits;
  EXPECT_EQ(a.FindData(Tracked(3), hits, 2, -1), 1);
  EXPECT_EQ(hits.items(), (std::vector<ZtLong>{3}));
  a.SortEx(true);
  EXPECT_EQ(Objects(a), (std::vector<int>{1, 3, 3, -1}));
  a.Sort(false);
  EXPECT_EQ(Objects(a), (std::vector<int>{3, 3, 1, -1}));
  a.Sort([](const Tracked& x, const Tracked& y) { return x.value() - y.value(); });
  EXPECT_EQ(Objects(a), (std::vector<int>{1, 3, 3, -1}));
  a.DelTail();
  EXPECT_EQ(a.BFindData(Tracked(1)), 0);
  EXPECT_EQ(a.BFindData(Tracked(2)), -1);
  EXPECT_FALSE(a.BFindDataTo(Tracked(2)));
  EXPECT_EQ(a.GetCur(), 1);
  auto* dup = new Tracked(3);
  EXPECT_FALSE(a.SortInto(dup, false));  // refused: the caller keeps it
  EXPECT_TRUE(a.SortInto(dup, true));
  EXPECT_EQ(a.GetCur(), 3);
  EXPECT_TRUE(a.SortInto(new Tracked(0), false));
  EXPECT_EQ(Objects(a), (std::vector<int>{0, 1, 3, 3, 3}));
  EXPECT_EQ(a.FindDel(dup), 1);
  EXPECT_EQ(a.FindDel(dup), 0);  // compares the pointer, never dereferences it
  EXPECT_EQ(a.FindDataDel(Tracked(3)), 2);
  EXPECT_EQ(Objects(a), (std::vector<int>{0, 1}));
}

TEST_F(DynPArrayTest, EqualityComparesObjectsAndEmptySlots) {
  EXPECT_TRUE(Make({-1, 4}) == Make({-1, 4}));
  EXPECT_TRUE(Make({-1, 4}) != Make({-1, 5}));
  EXPECT_TRUE(Make({-1}) != Make({4}));
}

// A polymorphic element: copies must keep the dynamic class.
struct Shape {
  Shape() = default;
  Shape(const Shape&) = default;
  Shape& operator=(const Shape&) = default;
  virtual ~Shape() = default;
  virtual Shape* Clone() const { return new Shape(*this); }
  virtual int Corners() const { return 0; }
  bool operator==(const Shape& o) const { return Corners() == o.Corners(); }
  bool operator!=(const Shape& o) const { return !(*this == o); }
  bool operator<(const Shape& o) const { return Corners() < o.Corners(); }
  bool operator>(const Shape& o) const { return Corners() > o.Corners(); }
};
struct Square : Shape {
  Shape* Clone() const override { return new Square(*this); }
  int Corners() const override { return 4; }
};

TEST_F(DynPArrayTest, CopiesOwnClonesOfTheirOwn) {
  auto a = Make({1, -1, 2});
  {
    Owning copy(a);
    EXPECT_EQ(Objects(copy), Objects(a));
    EXPECT_NE(copy[0], a[0]);
    Owning assigned = Make({9, 9, 9, 9});
    assigned = a;
    const auto& alias = assigned;
    assigned = alias;
    EXPECT_EQ(Objects(assigned), (std::vector<int>{1, -1, 2}));
    assigned << a;
    a.Left(1, assigned);
    a.Right(1, a);
    EXPECT_EQ(Objects(assigned), (std::vector<int>{1}));
    ZtDynArray<Tracked*> view;
    a.Left(1, view);  // a plain pointer array borrows: nothing cloned
    EXPECT_EQ(view[0], a[0]);
  }
  ZtDynPArray<Shape> shapes;
  shapes << new Square << new Shape;
  ZtDynPArray<Shape> copy(shapes);
  EXPECT_EQ(copy[0]->Corners(), 4);
  EXPECT_EQ(copy, shapes);
}

TEST_F(DynPArrayTest, GrowthIsAllOrNothing) {
  const auto onFullArray = [](auto op) {
    Owning a(3);  // full after three appends: the next insertion must grow
    a << new Tracked(1) << new Tracked(2) << new Tracked(3);
    ExpectStrongGuarantee(a, op, DynArrayState<Tracked*>);
  };
  onFullArray([](auto& x) { x.Append(nullptr); });
  onFullArray([](auto& x) { x.Move(2, 0); });
  onFullArray([](auto& x) { x.PlaceIn(nullptr); });
}

}  // namespace
}  // namespace zt::test
