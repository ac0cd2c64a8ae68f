// tests/graph/graph_test.cpp
//
// The graph through a client's classes: nodes keyed by position, arcs ordered by angle around
// the node that sorts them and by id in the graph, each class counting its live instances.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/containers.h"
#include "tests/support/fault_injection.h"
#include "zt/graph/graph.h"
#include "zt/graph/graph_path.h"

namespace {

using zt::test::Both;
using Longs = std::vector<ZtLong>;

class Point : public ZtGraphNode {
 public:
  Point(int x, int y, char label = '?') : x(x), y(y), label(label) { ++live; }
  Point(const Point& o) : ZtGraphNode(o), x(o.x), y(o.y), label(o.label) { ++live; }
  ~Point() override { --live; }
  int CmpNode(const ZtGraphNode& o) const override {
    const auto& p = static_cast<const Point&>(o);
    return x != p.x ? x - p.x : y - p.y;
  }
  static const ZtGraphNode* Start() { return s_pStartNode; }

  int x, y;
  char label;
  static inline int live = 0;
};

class Edge : public ZtGraphArc {
 public:
  Edge(Point* a, Point* b, int id) : ZtGraphArc(a, b), id(id) { ++live; }
  Edge(const Edge& o) : ZtGraphArc(o), id(o.id) { ++live; }
  ~Edge() override { --live; }
  /// Around a node: by the angle of the direction to the other end; in the graph: by id.
  int CmpArc(const ZtGraphArc& o) const override {
    if (Point::Start() == nullptr) return id - static_cast<const Edge&>(o).id;
    const double a = Angle(), b = static_cast<const Edge&>(o).Angle();
    return a < b ? -1 : (a > b ? 1 : 0);
  }
  double Angle() const {
    const auto* s = static_cast<const Point*>(Point::Start());
    const auto* t = static_cast<const Point*>(GetOtherNode(const_cast<Point*>(s)));
    if (throwOnAngle) throw std::runtime_error("angle");
    return t == nullptr ? -4 : std::atan2(t->y - s->y, t->x - s->x);
  }

  int id;
  static inline int live = 0;
  static inline bool throwOnAngle = false;
};

// The node a path starts from, read through a class derived from the path.
struct PathStart : ZtGraphPath {
  static ZtGraphNode* Of(const ZtGraphPath& p) { return p.*(&PathStart::m_pStartNode); }
};

// The graph's list cursors, read through a derived class.
struct Cursors : ZtGraph {
  static ZtLong Node(ZtGraph& g) { return (g.*(&Cursors::m_nodeList)).GetCur(); }
  static ZtLong Arc(ZtGraph& g) { return (g.*(&Cursors::m_arcList)).GetCur(); }
};

// Labels of the nodes a path visits, from its start node.
std::string Walk(const ZtGraphPath& path) {
  ZtGraphNode* n = PathStart::Of(path);
  std::string s(1, n != nullptr ? static_cast<Point*>(n)->label : '-');
  for (ZtGraphArc* const* a = path.GetFirst(); a != nullptr; a = path.GetNext(a)) {
    n = (*a)->GetOtherNode(n);
    s += n != nullptr ? static_cast<Point*>(n)->label : '-';
  }
  return s;
}

std::string Mesh(ZtGraphArc* arc, int side) {
  return Walk(*std::unique_ptr<ZtGraphPath>(arc->FindMesh(side)));
}

// A unit square ABCD (counter-clockwise from the origin) with the diagonal AC.
struct Square {
  Point *a = new Point(0, 0, 'A'), *b = new Point(1, 0, 'B'), *c = new Point(1, 1, 'C'),
        *d = new Point(0, 1, 'D');
  ZtGraph g;
  Edge* arcs[5] = {new Edge(a, b, 0), new Edge(b, c, 1), new Edge(c, d, 2), new Edge(d, a, 3),
                   new Edge(a, c, 4)};
  Square() {
    for (Edge* e : arcs) g.Create(e);
  }
};

class GraphTest : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(Both(Point::live, Edge::live), Both(0, 0)); }
};

TEST_F(GraphTest, SquareWithDiagonalFacesAndRings) {
  Square s;
  // Around A by angle: AB (0), AC (45), DA (90 degrees), read as a ring.
  EXPECT_EQ(s.a->GetArc(1), s.arcs[4]);
  EXPECT_EQ(s.a->FindNextArc(s.arcs[3]), s.arcs[0]);
  EXPECT_EQ(s.a->FindPreArc(s.arcs[0]), s.arcs[3]);
  // Side 0 of each side of the square runs round the outside; the other faces are ABC, ACD.
  const char* faces[5][2] = {
      {"ABCDA", "BACB"}, {"BCDAB", "CBAC"}, {"CDABC", "DCAD"}, {"DABCD", "ADCA"}, {"ACBA", "CADC"}};
  for (int i = 0; i < 5; ++i) {
    for (int side = 0; side < 2; ++side) EXPECT_EQ(Mesh(s.arcs[i], side), faces[i][side]);
  }
}

TEST_F(GraphTest, ChainAndLoneArcs) {
  ZtGraph chain;  // e1 from A to B, e2 from B to C, then a lone arc and one with a null end
  Edge* e1 = new Edge(new Point(0, 0, 'A'), new Point(1, 0, 'B'), 0);
  Edge* e2 = new Edge(new Point(1, 0, 'B'), new Point(2, 1, 'C'), 1);
  chain.Create(e1);
  chain.Create(e2);  // its B merges into e1's
  EXPECT_EQ(Mesh(e1, 0) + Mesh(e1, 1),
            "ABC"
            "CBA");
  EXPECT_EQ(std::unique_ptr<ZtGraphPath>(e1->FindMesh(1))->GetAt(0), e2);
  Edge* lone = new Edge(new Point(5, 5, 'P'), new Point(6, 5, 'Q'), 2);
  chain.Create(lone);
  EXPECT_EQ(Mesh(lone, 1), "QP");
  Edge* open = new Edge(new Point(7, 7, 'R'), nullptr, 3);
  chain.Create(open);
  // From the null end: on to end 0, where no arc follows.
  EXPECT_EQ(Mesh(open, 0) + Mesh(open, 1),
            "R-"
            "-R");
}

TEST_F(GraphTest, WalkOverRingsThatDoNotMirrorStops) {
  ZtGraphNode a, b, c, d;
  ZtGraphArc e(&a, &b), h(&c, &d), k(&c, &d);  // h stands in B's ring without ending there
  for (auto [n, arc] : std::vector<std::pair<ZtGraphNode*, ZtGraphArc*>>{
           {&a, &e}, {&b, &e}, {&b, &h}, {&c, &h}, {&c, &k}, {&d, &k}, {&d, &h}}) {
    n->AppendArc(arc);
  }
  std::unique_ptr<ZtGraphPath> p(e.FindMesh(0));  // e, h, k, h: then C would turn to k again
  EXPECT_TRUE(p->GetLength() == 4 && p->GetAt(3) == &h && PathStart::Of(*p) == &a);
  b.ClearArc();  // h would not take itself off B's ring
}

TEST_F(GraphTest, GridSatisfiesEulersFormula) {
  constexpr int kSize = 6;  // an outer face of 20 arcs: the walk keeps its steps in a hash set
  ZtGraph g;
  int id = 0;
  auto join = [&](int x0, int y0, int x1, int y1) {
    g.Create(new Edge(new Point(x0, y0), new Point(x1, y1), id++));
  };
  for (int x = 0; x < kSize; ++x) {
    for (int y = 0; y < kSize; ++y) {
      if (x + 1 < kSize) join(x, y, x + 1, y);
      if (y + 1 < kSize) join(x, y, x, y + 1);
      if (x + 1 < kSize && y + 1 < kSize && (x + y) % 2 == 0) join(x, y, x + 1, y + 1);
    }
  }
  EXPECT_EQ(Point::live, kSize * kSize);  // every duplicate end object was merged and destroyed
  std::set<std::set<std::pair<ZtGraphArc*, ZtGraphNode*>>> faces;
  for (ZtLong i = 0; i < g.GetArcNum(); ++i) {
    for (int side = 0; side < 2; ++side) {
      std::unique_ptr<ZtGraphPath> p(g(i)->FindMesh(side));
      std::set<std::pair<ZtGraphArc*, ZtGraphNode*>> darts;
      ZtGraphNode* n = PathStart::Of(*p);
      for (ZtGraphArc* const* a = p->GetFirst(); a != nullptr; a = p->GetNext(a)) {
        darts.insert({*a, n});
        n = (*a)->GetOtherNode(n);
      }
      EXPECT_EQ(n, PathStart::Of(*p));  // every face closes
      faces.insert(darts);
    }
  }
  EXPECT_EQ(g.GetNodeNum() - g.GetArcNum() + static_cast<ZtLong>(faces.size()), 2);
}

TEST_F(GraphTest, MergesDropsAndRecognisesPresentObjects) {
  Square s;
  auto* twin = new Point(1, 0, 'b');  // equal to B, holding an arc to a new node E
  auto* e = new Point(3, 0, 'E');
  Edge* be = new Edge(twin, e, 9);
  be->Connect();
  EXPECT_EQ(s.g << twin, s.g.Find(*s.b));
  EXPECT_EQ(be->GetNode(0), s.b);
  // BE (0 degrees) before BC (90) and BA (180).
  EXPECT_EQ(Both(s.b->FindArc(be), s.b->GetArcNum()), Both(0, 3));
  s.g << e;
  // BE joins; present objects: nothing destroyed or duplicated; an arc equal to AB; a loop.
  EXPECT_EQ((Longs{s.g << be, s.g << s.arcs[1], s.g << s.a,
                   s.g.Create(new Edge(new Point(0, 0), new Point(1, 0), 0)),
                   s.g.Create(new Edge(new Point(4, 4), new Point(4, 4), 7))}),
            (Longs{5, 1, 0, 0, 5}));
  EXPECT_EQ(Both(Point::live, Edge::live), Both(6, 7));
  EXPECT_TRUE(s.g(5)->IsClosed());
  EXPECT_EQ(s.g(5)->GetNode(0)->GetArcNum(), 1);
  EXPECT_EQ(Both(s.g << static_cast<ZtGraphNode*>(nullptr), s.g.Create(nullptr)), Both(-1, -1));
}

TEST_F(GraphTest, ResortsNodesAndArcsAtThePositionFindGives) {
  Square s;
  const ZtLong at = s.g.Find(*s.b);
  EXPECT_EQ(Cursors::Node(s.g), at);  // Find leaves the list's cursor on the match
  s.b->y = 2;  // B above C: last in the node list; the rings of B and A re-sorted by angle
  EXPECT_EQ(s.g.Find(*s.b), -1);  // the binary search meets the list sorted by the old key
  EXPECT_EQ(s.g.CheckNode(s.b, nullptr), -1);
  EXPECT_EQ(s.g.CheckNode(at, nullptr), 3);
  EXPECT_EQ(s.b->GetArc(0), s.arcs[0]);  // BA (-116 degrees) now before BC (-90)
  EXPECT_EQ(s.a->GetArc(0), s.arcs[4]);  // AC (45) now before AB (63)
  // The pointer forms act on the position Find gives, also for an equal object elsewhere.
  Point twin(1, 1);
  Edge same(nullptr, nullptr, 2);
  EXPECT_EQ(Both(s.g.CheckNode(&twin, nullptr), s.g.CheckArc(&same)), Both(2, 2));
  s.d->x = 1;                 // D onto C: merged into C, its arcs follow, CD becomes a loop
  s.d->RemoveArc(s.arcs[3]);  // DA is missing from D's ring: it keeps its end at D
  const ZtGraphNode* const d = s.d;
  ZtDynArray<ZtGraphArc*> removed;
  const ZtLong k = s.g.CheckNode(s.d, &removed);
  EXPECT_TRUE(s.g[k] == s.c && Point::live == 4 && removed.GetLength() == 0);  // with twin
  EXPECT_TRUE(s.arcs[2]->IsClosed() && s.arcs[3]->GetNode(0) == d);
  s.arcs[3]->SetNode(0, nullptr);
  s.arcs[0]->id = 10;  // AB to the end of the arc list, then made equal to BC: destroyed
  EXPECT_EQ(s.g.CheckArc(s.arcs[0]), -1);
  EXPECT_EQ(s.g.CheckArc(ZtLong{0}), 4);
  s.arcs[0]->id = 1;
  EXPECT_EQ(s.g.CheckArc(4), 0);
  EXPECT_EQ(Edge::live, 5);        // with same
  EXPECT_EQ(s.a->GetArcNum(), 2);  // AB left A's ring; DA, never detached, stayed
  EXPECT_EQ(Both(s.g.CheckArc(-1), s.g.CheckNode(99, nullptr)), Both(-1, -1));
}

TEST_F(GraphTest, DestroyingANodeNullsTheEndsOfTheArcsInItsRingOnly) {
  for (const bool all : {false, true}) {
    Square s;
    const ZtGraphNode* const a = s.a;
    s.a->RemoveArc(s.arcs[0]);  // AB still names A, from outside A's ring
    if (all) {
      s.g.ClearNode();
    } else {
      s.g.DelNode(s.g.Find(*s.a));
    }
    EXPECT_TRUE(s.arcs[0]->GetNode(0) == a && s.arcs[3]->GetNode(1) == nullptr);
    s.arcs[0]->SetNode(0, nullptr);
  }
}

TEST_F(GraphTest, ConbineWithItselfEmptiesTheRing) {
  Square s;
  s.a->Conbine(s.a);
  EXPECT_TRUE(s.a->IsAloneNode() && s.arcs[0]->GetNode(0) == s.a);
}

TEST_F(GraphTest, AnArcWhoseConnectionThrowsStaysInTheGraph) {
  Square s;
  auto* bd = new Edge(s.b, s.d, 7);
  Edge::throwOnAngle = true;  // the rings' order throws; the graph's order (by id) does not
  EXPECT_THROW(s.g << bd, std::runtime_error);
  EXPECT_THROW(s.g.CheckArc(s.g.Find(*s.arcs[1])), std::runtime_error);
  Edge::throwOnAngle = false;
  EXPECT_EQ(s.g.GetArcNum(), 6);  // both stay the graph's, which destroys them
  EXPECT_EQ(s.g(5), bd);
}

TEST_F(GraphTest, DestructionAndUnConnectDisconnect) {
  Point a(0, 0), b(1, 0);
  auto* c = new Point(2, 0);
  Edge bc(&b, c, 1);
  bc.Connect();
  delete new Edge(&a, &b, 0);  // never connected: nothing to leave
  delete c;                    // BC loses end 1 and stays in B's ring
  EXPECT_TRUE(bc.GetNode(1) == nullptr && b.GetArc(0) == &bc);
  Square s;
  s.g.DelArc(4);  // AC leaves the rings of A and C
  EXPECT_EQ(s.a->GetArcNum() + s.c->GetArcNum(), 4);
  s.g.DelNode(s.g.Find(*s.a));  // AB and DA lose their end at A
  EXPECT_TRUE(s.arcs[0]->GetNode(0) == nullptr && s.arcs[3]->GetNode(1) == nullptr);
  EXPECT_EQ(Point::live, 5);  // with a and b
  s.g.UnConnect();
  EXPECT_EQ(s.g.GetNodeNum() * 10 + s.g.GetArcNum(), 34);
  for (ZtLong i = 0; i < 4; ++i) EXPECT_FALSE(s.g(i)->IsValid());
  EXPECT_TRUE(s.b->IsAloneNode() && s.c->IsAloneNode() && s.d->IsAloneNode());
  Square t;
  t.g.ClearNode();  // the arcs stay, without ends
  EXPECT_EQ(t.arcs[1]->GetNode(0), nullptr);
  t.g.Reset();
  EXPECT_EQ(Point::live + Edge::live, 10);  // s: B, C, D and four arcs; a, b, bc
}

TEST_F(GraphTest, CopiesShareObjectsAndOwnOnlyWhatIsAddedLater) {
  Square s;
  {
    ZtGraph copy(s.g);
    EXPECT_TRUE(copy[1] == s.g[1] && copy(4) == s.arcs[4] && copy.GetNodeNum() == 4);
    copy.Create(new Edge(new Point(5, 5), new Point(6, 6), 8));  // the copy's own
    copy.DelArc(copy.Find(*s.arcs[4]));                          // AC: dropped, not destroyed
    copy.DelNode(copy.Find(*s.d));
    ZtGraph other;
    other.Create(new Edge(new Point(7, 7), new Point(8, 8), 9));
    other = copy;  // other's own objects go; it borrows the rest
    EXPECT_EQ(Both(Point::live, Edge::live), Both(6, 6));
    const ZtGraph second(other);
    copy.Reset();
    other.ClearArc();
  }
  EXPECT_EQ(Both(Point::live, Edge::live), Both(4, 5));
  EXPECT_EQ(Mesh(s.arcs[4], 0), "ACBA");  // the source's rings are whole
  auto copy = std::make_unique<ZtGraph>(s.g);
  s.g = *copy;  // the source keeps owning what it holds again
  copy.reset();
  s.g = s.g;
  EXPECT_EQ(Both(Point::live, Edge::live), Both(4, 5));
  EXPECT_EQ(Mesh(s.arcs[1], 1), "CBAC");
}

TEST_F(GraphTest, AppendArcRestoresTheStartNodeWhenTheComparisonThrows) {
  Point a(0, 0), b(1, 0), c(0, 1);
  Edge ab(&a, &b, 0), ac(&a, &c, 1);
  EXPECT_TRUE(a.AppendArc(&ab));
  Edge::throwOnAngle = true;
  EXPECT_THROW(a.AppendArc(&ac), std::runtime_error);
  Edge::throwOnAngle = false;
  EXPECT_TRUE(Point::Start() == nullptr && a.GetArcNum() == 1);
  EXPECT_FALSE(a.AppendArc(&ab));
}

TEST_F(GraphTest, FailedAllocationsLeaveTheGraphAsItWas) {
  Square s;
  const auto state = [](ZtGraph& g) {
    std::vector<ZtLong> v{g.GetNodeNum(), g.GetArcNum()};
    for (ZtLong i = 0; i < g.GetNodeNum(); ++i) v.push_back(g[i]->GetArcNum());
    return v;
  };
  zt::test::ExpectStrongGuarantee(
      s.g, [](ZtGraph& g) { EXPECT_EQ(ZtGraph(g).GetArcNum(), 5); }, state);
}

}  // namespace
