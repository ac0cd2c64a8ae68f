// tests/containers/owning_test.cpp
//
// ZtDynPArray, ZtPDList and ZtPXList through one set of typed tests: which calls delete objects
// and which hand them back, empty places, searches and sorts by object, and copies that own
// clones. No object may be leaked or lost by any test; the grouped list runs with groups of two.
#include <gtest/gtest.h>

#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/containers.h"
#include "tests/support/fault_injection.h"
#include "tests/support/tracked.h"
#include "zt/containers/dyn_parray.h"
#include "zt/containers/pdlist.h"
#include "zt/containers/pxlist.h"
#include "zt/containers/xlist.h"

namespace zt::test {
namespace {

using Ints = std::vector<int>;
using Longs = std::vector<ZtLong>;

class GroupedOwning : public IndexProbe<ZtPXList<Tracked>> {
 public:
  explicit GroupedOwning(ZtLong n = 0) : IndexProbe<ZtPXList<Tracked>>(n, 2) {}
};

template <class Owning>
class OwningTest : public ::testing::Test {
 protected:
  static constexpr bool kIsList = !std::is_same_v<Owning, ZtDynPArray<Tracked>>;
  void TearDown() override { EXPECT_EQ(Tracked::Live(), m_live) << "objects leaked or lost"; }
  /// A container of new objects with these values; -1 makes an empty place.
  static Owning Make(std::initializer_list<int> values) {
    Owning o;
    for (int v : values) o.Append(v < 0 ? nullptr : new Tracked(v));
    return o;
  }
  /// The objects' values, with -1 for an empty place.
  static Ints Objects(const Owning& o) {
    Ints out;
    for (Tracked* p : Values(o)) out.push_back(p != nullptr ? p->value() : -1);
    return out;
  }
  /// The objects and the cursor, compared in one check.
  static std::pair<Ints, long long> At(const Owning& o) { return {Objects(o), o.GetCur()}; }
  static std::pair<Ints, long long> At(const Ints& objects, ZtLong cursor) {
    return {objects, cursor};
  }
  /// The grouped list's index and the lists' back links agree with the walk from the head.
  static void Check(Owning& o) {
    if constexpr (std::is_same_v<Owning, GroupedOwning>) {
      ExpectIndexExact(o);
    } else if constexpr (kIsList) {
      EXPECT_EQ(BackwardValues(o), Values(o));
    }
  }
  /// The cursor after stepping past the last element.
  static ZtLong End(ZtLong length) { return kIsList ? -1 : length; }
  long m_live = Tracked::Live();
};
using OwningTypes = ::testing::Types<ZtDynPArray<Tracked>, ZtPDList<Tracked>, GroupedOwning>;
TYPED_TEST_SUITE(OwningTest, OwningTypes);

TYPED_TEST(OwningTest, EmptyPlacesAreReusedReleaseDeletesTakeOffHandsBack) {
  auto o = this->Make({1, -1, 2, 3});
  EXPECT_EQ(Both(o.GetDataNum(), o.GetLength()), Both(3, 4));
  for (ZtLong i : {1, 4, -1}) EXPECT_TRUE(o.IsEmptyData(i)) << i;
  const long live = Tracked::Live();
  o.Release(1);  // empty already: nothing happens
  o.Release(2);
  EXPECT_EQ(Tracked::Live(), live - 1);
  EXPECT_EQ(
      (Longs{o.PlaceIn(new Tracked(7)), o.PlaceIn(new Tracked(8)), o.PlaceIn(new Tracked(9))}),
      (Longs{1, 2, 4}));
  EXPECT_EQ(this->At(o), this->At({1, 7, 8, 3, 9}, 4));
  EXPECT_EQ(Both(o(1).value(), o.GetPData(4).value()), Both(7, 9));
  o.MoveTo(9);
  EXPECT_TRUE(o.TakeOffCur() == nullptr && o.IsCurEmpty());
  Tracked* head = o.TakeOffHead();  // the caller's now
  EXPECT_EQ(head->value(), 1);
  delete head;
  // A list removes the node, an array leaves an empty slot.
  EXPECT_EQ(this->Objects(o), this->kIsList ? (Ints{7, 8, 3, 9}) : (Ints{-1, 7, 8, 3, 9}));
  o.ReleaseAll();
  EXPECT_EQ(this->At(o), this->At(Ints(this->kIsList ? 4 : 5, -1), this->End(5)));
  this->Check(o);
  EXPECT_EQ(TypeParam().TakeOffHead(), nullptr);
}

TYPED_TEST(OwningTest, RemovalDeletesOnlyTheRemovedObject) {
  auto o = this->Make({1, -1, 2, 3, 4});
  o.MoveTo(1);
  o.DelCur();  // an empty place: nothing to delete
  EXPECT_EQ(o.GetCur(), 0);
  o.DelCur();
  EXPECT_EQ(o.GetCur(), -1);
  o.DelTail();
  EXPECT_EQ(this->Objects(o), (Ints{2, 3}));
  EXPECT_TRUE(o.Move(0, 2));
  EXPECT_EQ(this->At(o), this->At({3, 2}, 1));
  o.SetLength(4, true);
  o.SetLength(1, true);
  EXPECT_EQ(this->Objects(o), (Ints{3}));
  if constexpr (!TestFixture::kIsList) {
    o.ReAllocate(3);  // pads with empty slots
    o.DecreaseSize(2);
    EXPECT_EQ(this->Objects(o), (Ints{3}));
  }
  o.SetLength(2, false);  // the array deletes every object first; a list keeps its elements
  EXPECT_EQ(this->Objects(o), this->kIsList ? (Ints{3, -1}) : (Ints{-1, -1}));
  this->Check(o);
  o.PlaceIn(new Tracked(5));
  o.Reset();
}

TYPED_TEST(OwningTest, SearchesAndSortedInsertionCompareObjects) {
  auto o = this->Make({3, 1, 3, -1, 3});
  ZtListQuene<ZtLong> hits;
  EXPECT_EQ((Longs{o.FindData(Tracked(3), 1, -1), o.FindData(Tracked(3), hits, 1, -1)}),
            (Longs{2, 2}));
  EXPECT_EQ(Items(hits), (std::vector<ZtLong>{2, 4}));
  if constexpr (TestFixture::kIsList) {
    EXPECT_TRUE(o.FindDataTo(Tracked(3), 1));
    EXPECT_EQ(o.GetCur(), 2);
    EXPECT_FALSE(o.FindDataTo(Tracked(1), 2, 3));
    // A clone of an absent object joins the list.
    EXPECT_EQ((Longs{o.FindDataOrAppend(Tracked(1)), o.FindDataOrAppend(Tracked(8))}),
              (Longs{1, 5}));
    o.FindDataOrInsertHead(Tracked(0));
  } else {
    o.Append(new Tracked(8));
    o.InsertHead(new Tracked(0));
  }
  EXPECT_EQ(o.FindDataDel(Tracked(3)), 3);
  EXPECT_EQ(this->Objects(o), (Ints{0, 1, -1, 8}));
  o.Sort(true);
  EXPECT_EQ(this->Objects(o), (Ints{0, 1, 8, -1}));
  o.DelTail();
  EXPECT_EQ(Both(o.BFindData(Tracked(8)), o.BFindData(Tracked(2))), Both(2, -1));
  // The insertion points: before the 8, and past the end where InsertCur appends.
  EXPECT_EQ((Longs{o.BFindDataTo(Tracked(2)), o.GetCur(), o.BFindDataTo(Tracked(9)), o.GetCur()}),
            (Longs{0, 2, 0, this->End(3)}));
  auto* dup = new Tracked(1);
  EXPECT_FALSE(o.SortInto(dup, false));  // refused: the caller keeps it
  EXPECT_TRUE(o.SortInto(dup, true));
  EXPECT_EQ(o.GetCur(), 2);  // after the equal object
  EXPECT_TRUE(o.SortInto(new Tracked(9), false));
  EXPECT_EQ(this->Objects(o), (Ints{0, 1, 1, 8, 9}));
  // Compares the pointer, never dereferences it once deleted. A list walks the cursor from the
  // head, out when the pointer is absent; the array searches without moving it.
  o.MoveTo(1);
  EXPECT_EQ((Longs{o.FindDel(dup), o.GetCur(), o.FindDel(dup), o.GetCur()}),
            (Longs{1, 1, 0, this->kIsList ? -1 : 1}));
  // `from` above `to`: before `from`, or after `to`.
  EXPECT_EQ((Longs{o.BFindDataTo(Tracked(4), 3, 1), o.GetCur(), o.BFindDataTo(Tracked(9), 2, 1),
                   o.GetCur()}),
            (Longs{0, 3, 0, 2}));
  this->Check(o);
}

TYPED_TEST(OwningTest, SortsAndMovesNeverDeleteWhatTheyMove) {
  auto o = this->Make({-1, 3, 1, -1, 2});
  o.Sort(false);
  EXPECT_EQ(this->Objects(o), (Ints{3, 2, 1, -1, -1}));
  o.Sort([](const Tracked& a, const Tracked& b) { return a.value() - b.value(); });
  EXPECT_EQ(this->Objects(o), (Ints{1, 2, 3, -1, -1}));
  o.Sort([](Tracked* const& a, Tracked* const& b) { return a == nullptr ? -1 : (b == nullptr); });
  EXPECT_EQ(this->Objects(o), (Ints{-1, -1, 1, 2, 3}));
  EXPECT_TRUE(o.Move(4, 0));
  EXPECT_EQ(this->Objects(o), (Ints{3, -1, -1, 1, 2}));
  this->Check(o);
  const auto m = [this](std::initializer_list<int> v) { return this->Make(v); };
  EXPECT_TRUE(m({-1, 4}) == m({-1, 4}) && m({4, -1}) != m({-1, 4}) && m({-1, 4}) != m({-1, 5}));
}

TYPED_TEST(OwningTest, CopiesOwnClonesOfTheirOwn) {
  auto o = this->Make({1, -1, 2});
  TypeParam copy(o);
  EXPECT_EQ(this->Objects(copy), this->Objects(o));
  EXPECT_NE(copy[0], o[0]);
  copy = this->Make({7, 8, 9, 10});
  copy << o;
  const auto& alias = copy;
  copy = alias;
  EXPECT_EQ(this->Objects(copy), (Ints{7, 8, 9, 10, 1, -1, 2}));
  this->Check(copy);
  o.Mid(0, 1, copy);
  EXPECT_EQ(this->Objects(copy), (Ints{1, -1}));
  o.Right(1, o);
  EXPECT_EQ(this->Objects(o), (Ints{2}));
  ZtDynArray<Tracked*> view;
  o.Left(1, view);  // a plain pointer array borrows: nothing cloned
  EXPECT_EQ(view[0], o[0]);
}

TYPED_TEST(OwningTest, FailedInsertionsLeaveTheContainerUnchanged) {
  const auto state = [](const TypeParam& x) {
    if constexpr (TestFixture::kIsList) {
      return std::make_pair(Values(x), x.GetCur());
    } else {
      return DynArrayState<Tracked*>(x);
    }
  };
  const auto onFull = [&](auto op) {
    TypeParam o(TestFixture::kIsList ? 0 : 3);  // an array is full after three appends
    for (int v : {1, 2, 3}) o.Append(new Tracked(v));
    o.MoveTo(1);
    ExpectStrongGuarantee(o, op, state);
  };
  onFull([](auto& x) { x.Append(nullptr); });
  onFull([](auto& x) { x.Move(2, 0); });
  onFull([](auto& x) { x.PlaceIn(nullptr); });
  onFull([](auto& x) { const std::decay_t<decltype(x)> copy(x); });  // a failed copy leaks no clone
  if constexpr (TestFixture::kIsList) onFull([](auto& x) { x.FindDataOrAppend(Tracked(5)); });
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

TEST(DynPArray, CopiesCloneThroughTheVirtualClone) {
  ZtDynPArray<Shape> shapes;
  shapes << new Square << new Shape;
  const ZtDynPArray<Shape> copy(shapes);
  EXPECT_EQ(Both(copy[0]->Corners(), copy[1]->Corners()), Both(4, 0));
  EXPECT_NE(copy[0], shapes[0]);
}

TEST(DynPArray, SetLengthAtTheLengthKeepsTheSpareSlots) {
  ZtDynPArray<Tracked> a(10);
  a.Append(new Tracked(1));
  a.SetLength(1, true);
  EXPECT_TRUE(a.SetSpaceSize(1));
  EXPECT_TRUE(a.GetSpaceSize() == 10 && a.GetLength() == 1 && a[0]->value() == 1);
}

TEST(OwningList, FindDataOrAppendAddsACopyMadeWithNew) {
  const auto copies = [](auto list) {
    list.FindDataOrAppend(Square());
    list.FindDataOrInsertHead(Square());  // a Shape is no Square: inserted too
    return Both(list.GetLength(), list.GetPData(0).Corners() + list.GetPData(1).Corners());
  };
  EXPECT_EQ(copies(ZtPDList<Shape>()), Both(2, 0));  // Shapes copied from Squares, not clones
  EXPECT_EQ(copies(ZtPXList<Shape>()), Both(2, 0));
}

// Abstract and without a default constructor: the owning containers need only delete and the
// comparisons, so a container of a polymorphic base reads its objects.
struct Polygon {
  explicit Polygon(int corners) : corners(corners) {}
  Polygon(const Polygon&) = default;
  Polygon& operator=(const Polygon&) = default;
  virtual ~Polygon() = default;
  virtual int Sides() const = 0;
  bool operator==(const Polygon& o) const { return corners == o.corners; }
  bool operator!=(const Polygon& o) const { return corners != o.corners; }
  bool operator<(const Polygon& o) const { return corners < o.corners; }
  bool operator>(const Polygon& o) const { return corners > o.corners; }
  int corners;
};
struct Triangle : Polygon {
  Triangle() : Polygon(3) {}
  int Sides() const override { return 3; }
};

TEST(Owning, ReadsObjectsOfAnAbstractClass) {
  const auto read = [](auto& o) {
    o.Append(new Triangle);
    o.MoveTo(0);
    return o.GetPData(0).Sides() + o(0).corners + o.GetCurPData().Sides();
  };
  ZtDynPArray<Polygon> array;
  ZtPDList<Polygon> list;
  ZtPXList<Polygon> grouped;
  EXPECT_EQ((Longs{read(array), read(list), read(grouped)}), (Longs{9, 9, 9}));
}

// The owning lists compare objects with == alone, the owning array with != alone.
struct Keyed {
  bool operator<(const Keyed& o) const { return key < o.key; }
  bool operator>(const Keyed& o) const { return key > o.key; }
  int key;
};
struct WithEqual : Keyed {
  bool operator==(const WithEqual& o) const { return key == o.key; }
};
struct WithUnequal : Keyed {
  bool operator!=(const WithUnequal& o) const { return key != o.key; }
};

TEST(Owning, ComparesObjectsWithTheOperatorItsFamilyUses) {
  const auto fill = [](auto& o, auto make) {
    for (int key : {2, 1, 2}) o.SortInto(new decltype(make(key))(make(key)), true);
    return o.GetCur();  // behind the equal run
  };
  const auto equal = [](int key) { return WithEqual{{key}}; };
  const auto unequal = [](int key) { return WithUnequal{{key}}; };
  ZtPDList<WithEqual> list, other;
  ZtDynPArray<WithUnequal> array, another;
  EXPECT_EQ(
      (Longs{fill(list, equal), fill(other, equal), fill(array, unequal), fill(another, unequal)}),
      (Longs{2, 2, 2, 2}));
  EXPECT_TRUE(list == other && array == another);
}

TEST(PXList, ConstructionAndCopiesLeaveTheCursorWhereTheirStepsDo) {
  const ZtPXList<Tracked> made(5, 2);  // the owning growth keeps the cursor on -1
  const ZtXList<int> plain(5, 2);      // building the index ends on the last group start
  // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy is under test
  const ZtPXList<Tracked> copy(made);  // the copy builds its own index
  ZtPXList<Tracked> assigned;
  assigned = made;
  EXPECT_EQ((Longs{made.GetCur(), plain.GetCur(), copy.GetCur(), assigned.GetCur()}),
            (Longs{-1, 4, 4, 4}));
}

}  // namespace
}  // namespace zt::test
