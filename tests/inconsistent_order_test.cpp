// Sorts and sorted operations under orders that are not consistent: NaNs among doubles, a
// comparator and objects whose answers are not transitive. Every operation runs under a watchdog
// and must return and keep every element: the same values, and in the owning containers, the
// population and the graph the same objects, none deleted and none listed twice.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "tests/support/containers.h"
#include "tests/support/watchdog.h"
#include "zt/containers/array.h"
#include "zt/containers/dlist.h"
#include "zt/containers/dyn_array.h"
#include "zt/containers/dyn_parray.h"
#include "zt/containers/list.h"
#include "zt/containers/pdlist.h"
#include "zt/containers/pxlist.h"
#include "zt/containers/xlist.h"
#include "zt/ga/population.h"
#include "zt/graph/graph.h"

namespace zt::test {
namespace {

const double kNaN = std::numeric_limits<double>::quiet_NaN();
const std::vector<double> kValues = {3, kNaN, 1, 2, kNaN, 0, 5, 1, 4, 2, 7, kNaN, 6, -1, 9, 8};

// Antisymmetric, never 0 for distinct keys, and not transitive: a before b when a + b is even
// and a < b, or a + b is odd and a > b.
int Twisted(int a, int b) {
  if (a == b) return 0;
  return ((a + b) % 2 == 0) == (a < b) ? -1 : 1;
}
int TwistedCmp(const double& a, const double& b) {
  return std::isnan(a) || std::isnan(b) ? 1 : Twisted(static_cast<int>(a), static_cast<int>(b));
}

/// The values as sorted bit patterns: equal exactly when both hold the same values, NaNs too.
std::vector<std::uint64_t> Bits(const std::vector<double>& values) {
  std::vector<std::uint64_t> bits(values.size());
  for (std::size_t i = 0; i < values.size(); ++i) std::memcpy(&bits[i], &values[i], 8);
  std::sort(bits.begin(), bits.end());
  return bits;
}

template <class P>
std::vector<P*> Sorted(std::vector<P*> v) {
  std::sort(v.begin(), v.end(), std::less<>());
  return v;
}

/// An object ordered by Twisted on its key; == compares keys. Counts the live ones.
struct Fickle {
  explicit Fickle(int k) : key(k) { ++live; }
  Fickle(const Fickle& o) : key(o.key) { ++live; }
  Fickle& operator=(const Fickle&) = default;
  ~Fickle() { --live; }
  bool operator<(const Fickle& o) const { return Twisted(key, o.key) < 0; }
  bool operator>(const Fickle& o) const { return Twisted(key, o.key) > 0; }
  bool operator==(const Fickle& o) const { return key == o.key; }
  bool operator!=(const Fickle& o) const { return key != o.key; }
  int key;
  static inline long live = 0;
};
int FickleCmp(const Fickle& a, const Fickle& b) { return Twisted(a.key, b.key); }

using Case = std::pair<std::string, std::function<bool()>>;

// A container of kValues after op must hold kValues.
template <class C, class Op>
Case KeepsValues(std::string name, Op op) {
  return {std::move(name), [op] {
            C c;
            for (double v : kValues) c.Append(v);
            op(c);
            return Bits(Values(c)) == Bits(kValues);
          }};
}

// An owning container of objects with equal keys and empty places, after op, must hold the same
// pointers, none deleted.
template <class C, class Op>
Case KeepsObjects(std::string name, Op op) {
  return {std::move(name), [op] {
            const long live = Fickle::live;
            std::vector<Fickle*> put;
            C c;
            for (int i = 0; i < 16; ++i) {
              put.push_back(i % 7 == 3 ? nullptr : new Fickle(i * 5 % 11));
              c.Append(put.back());
            }
            op(c);
            const auto objects = std::count_if(put.begin(), put.end(), [](Fickle* p) { return p; });
            return Sorted(Values(c)) == Sorted(put) && Fickle::live == live + objects;
          }};
}

// Sorted insertion into a container that its order cannot keep sorted: every value inserted is
// there once.
template <class C>
Case SortIntoKeepsValues(std::string name) {
  return {std::move(name), [] {
            C c;
            std::vector<double> taken;
            for (std::size_t i = 0; i < kValues.size(); ++i) {
              if (c.SortInto(kValues[i], i % 3 != 0)) taken.push_back(kValues[i]);
              c.BFind(kValues[i], 0, -1);
              c.BFindTo(kValues[(i * 5) % kValues.size()], 0, -1);
            }
            return Bits(Values(c)) == Bits(taken);
          }};
}

template <class C>
Case SortIntoKeepsObjects(std::string name) {
  return {std::move(name), [] {
            const long live = Fickle::live;
            std::vector<Fickle*> taken;
            C c;
            for (int i = 0; i < 24; ++i) {
              auto* p = new Fickle(i * 5 % 17);
              if (c.SortInto(p, i % 3 != 0)) {
                taken.push_back(p);
              } else {
                delete p;  // refused: still the caller's
              }
              c.BFindData(Fickle(i), 0, -1);
              c.BFindDataTo(Fickle(i * 3), 0, -1);
            }
            return Sorted(Values(c)) == Sorted(taken) &&
                   Fickle::live == live + static_cast<long>(taken.size());
          }};
}

template <class C>
void AddValueCases(std::vector<Case>& cases, const std::string& name) {
  cases.push_back(KeepsValues<C>(name + " Sort(true)", [](C& c) { c.Sort(true); }));
  cases.push_back(KeepsValues<C>(name + " Sort(false)", [](C& c) { c.Sort(false); }));
  cases.push_back(KeepsValues<C>(name + " Sort(cmp)", [](C& c) { c.Sort(TwistedCmp); }));
  cases.push_back(KeepsValues<C>(name + " BFind", [](C& c) {
    for (double v : kValues) c.BFind(v, 0, -1);
  }));
}

template <class C>
void AddObjectCases(std::vector<Case>& cases, const std::string& name) {
  cases.push_back(KeepsObjects<C>(name + " Sort(true)", [](C& c) { c.Sort(true); }));
  cases.push_back(KeepsObjects<C>(name + " Sort(false)", [](C& c) { c.Sort(false); }));
  cases.push_back(KeepsObjects<C>(name + " Sort(cmp)", [](C& c) { c.Sort(FickleCmp); }));
  cases.push_back(SortIntoKeepsObjects<C>(name + " SortInto"));
}

class TwistedIndividual : public GA_Individual {
 public:
  explicit TwistedIndividual(int k) : key(k) {}
  bool operator<(const GA_Individual& o) const override { return Twisted(key, Key(o)) < 0; }
  bool operator>(const GA_Individual& o) const override { return Twisted(key, Key(o)) > 0; }
  static int Key(const GA_Individual& o) { return static_cast<const TwistedIndividual&>(o).key; }
  int key;
};

bool PopulationKeepsIndividuals() {
  GA_Population population;
  std::vector<GA_Individual*> put;
  for (int i = 0; i < 40; ++i) {
    put.push_back(new TwistedIndividual(i * 7 % 13));
    population.Append(put.back());
  }
  return Sorted(Values(population)) == Sorted(put);
}

class TwistedNode : public ZtGraphNode {
 public:
  explicit TwistedNode(int k) : key(k) {}
  int CmpNode(const ZtGraphNode& o) const override {
    return Twisted(key, static_cast<const TwistedNode&>(o).key);
  }
  int key;
};

class TwistedArc : public ZtGraphArc {
 public:
  TwistedArc(ZtGraphNode* a, ZtGraphNode* b, int k) : ZtGraphArc(a, b), key(k) {}
  int CmpArc(const ZtGraphArc& o) const override {
    return Twisted(key, static_cast<const TwistedArc&>(o).key);
  }
  int key;
};

// Nodes and arcs sorted into the graph's lists and the arcs into the nodes' rings: each listed
// once, every arc in the rings of both its ends.
bool GraphKeepsObjects() {
  ZtGraph g;
  std::vector<ZtGraphNode*> nodes;
  std::vector<ZtGraphArc*> arcs;
  for (int i = 0; i < 30; ++i) {
    nodes.push_back(new TwistedNode(i));
    g << nodes.back();
  }
  for (int i = 0; i < 30; ++i) {
    arcs.push_back(new TwistedArc(nodes[i], nodes[(i * 7 + 3) % 30], i));
    g << arcs.back();
  }
  std::vector<ZtGraphNode*> listedNodes;
  std::vector<ZtGraphArc*> listedArcs;
  listedNodes.reserve(nodes.size());
  listedArcs.reserve(arcs.size());
  ZtLong ringEntries = 0;
  for (ZtLong i = 0; i < g.GetNodeNum(); ++i) {
    listedNodes.push_back(g[i]);
    ringEntries += g[i]->GetArcNum();
  }
  for (ZtLong i = 0; i < g.GetArcNum(); ++i) listedArcs.push_back(g(i));
  return Sorted(listedNodes) == Sorted(nodes) && Sorted(listedArcs) == Sorted(arcs) &&
         ringEntries == 60;
}

TEST(InconsistentOrder, EverySortAndSortedOperationEndsAndKeepsEveryElement) {
  std::vector<Case> cases;
  AddValueCases<ZtDynArray<double>>(cases, "DynArray");
  AddValueCases<ZtArray<double>>(cases, "Array");
  AddValueCases<ZtList<double>>(cases, "List");
  AddValueCases<ZtDList<double>>(cases, "DList");
  AddValueCases<ZtXList<double>>(cases, "XList");
  cases.push_back(SortIntoKeepsValues<ZtDynArray<double>>("DynArray SortInto"));
  cases.push_back(SortIntoKeepsValues<ZtList<double>>("List SortInto"));
  cases.push_back(SortIntoKeepsValues<ZtDList<double>>("DList SortInto"));
  cases.push_back(SortIntoKeepsValues<ZtXList<double>>("XList SortInto"));
  AddObjectCases<ZtDynPArray<Fickle>>(cases, "DynPArray");
  AddObjectCases<ZtPDList<Fickle>>(cases, "PDList");
  AddObjectCases<ZtPXList<Fickle>>(cases, "PXList");
  using PArray = ZtDynPArray<Fickle>;
  cases.push_back(KeepsObjects<PArray>("DynPArray SortEx", [](PArray& c) { c.SortEx(false); }));
  cases.emplace_back("Population Append", PopulationKeepsIndividuals);
  cases.emplace_back("Graph lists and rings", GraphKeepsObjects);
  for (const Case& c : cases) {
    EXPECT_EQ(FinishWithin(c.second), std::optional<bool>(true)) << c.first;
  }
}

// Values with a NaN among them end in the order of their ranks, equal ranks in their original
// order; ranks that happen to form a permutation are applied as they are.
TEST(InconsistentOrder, RankSortPlacesByRankWhenRanksCollide) {
  const auto sorted = FinishWithin([] {
    ZtDynArray<double> a;
    Fill(a, {3.0, kNaN, 1.0, 2.0});  // ranks 2, 1, 1, 2: 3 must follow 1 and 2, NaN follows none
    a.MoveTo(1);
    a.Sort(true);
    ZtArray<double> b;
    for (double v : {3.0, kNaN, 1.0, 2.0}) b.Append(v);
    b.Sort(false);  // descending: only 1 must follow 2, so the ranks 0, 1, 3, 2 are a permutation
    return std::make_tuple(Values(a), a.GetCur(), Values(b));
  });
  ASSERT_TRUE(sorted.has_value());
  const auto& [a, cursor, b] = *sorted;
  EXPECT_TRUE(std::isnan(a[0]) && a[1] == 1.0 && a[2] == 3.0 && a[3] == 2.0);
  EXPECT_EQ(cursor, 1);
  EXPECT_TRUE(b[0] == 3.0 && std::isnan(b[1]) && b[2] == 2.0 && b[3] == 1.0);
}

}  // namespace
}  // namespace zt::test
