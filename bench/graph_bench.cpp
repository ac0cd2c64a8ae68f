// Builds a triangulated grid (s x s points, every unit square cut by the same diagonal) and finds
// every face once, as examples/faces does: the points are added to the graph, then an edge
// between two of them for each grid edge; the arcs around each point are ordered by angle and in
// the graph by their ends; FindMesh walks one face from every arc side not yet walked. The twin
// does the same work with Boost Graph: the adjacency list, an embedding sorted by angle and
// planar_face_traversal. The argument is the wanted number of edges (about 3 s^2). Without the
// Boost headers the workload runs for zt alone.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "bench/pair.h"
#include "zt/graph/graph.h"
#include "zt/graph/graph_path.h"

#if ZT_HAVE_BOOST_GRAPH
#include <algorithm>
#include <boost/graph/adjacency_list.hpp>
#include <boost/graph/planar_face_traversal.hpp>
#endif

namespace {

/// The side of the grid that gives about `edges` edges.
int SideFor(std::int64_t edges) {
  return static_cast<int>(
      std::lround((4 + std::sqrt(16.0 + 12.0 * static_cast<double>(edges - 1))) / 6));
}

/// Calls join(x0, y0, x1, y1) for every edge of the grid of side s.
template <class Join>
void Grid(int s, Join join) {
  for (int x = 0; x < s; ++x) {
    for (int y = 0; y < s; ++y) {
      if (x + 1 < s) join(x, y, x + 1, y);
      if (y + 1 < s) join(x, y, x, y + 1);
      if (x + 1 < s && y + 1 < s) join(x, y, x + 1, y + 1);
    }
  }
}

/// The faces of a triangulated grid, its outer face included.
std::int64_t FacesOf(int s) { return 2 * static_cast<std::int64_t>(s - 1) * (s - 1) + 1; }

class Point : public ZtGraphNode {
 public:
  Point(int x, int y) : x(x), y(y) {}
  int CmpNode(const ZtGraphNode& other) const override {
    const auto& o = static_cast<const Point&>(other);
    return x != o.x ? x - o.x : y - o.y;
  }
  static const Point* Sorting() { return static_cast<const Point*>(s_pStartNode); }
  const int x;
  const int y;
};

/// Around a point by the angle at which it leaves the point; in the graph by its two ends.
class Edge : public ZtGraphArc {
 public:
  Edge(Point* a, Point* b) : ZtGraphArc(a, b) {}
  int CmpArc(const ZtGraphArc& other) const override {
    const auto& o = static_cast<const Edge&>(other);
    if (const Point* at = Point::Sorting()) {
      const double mine = Angle(*at);
      const double theirs = o.Angle(*at);
      return mine < theirs ? -1 : (mine > theirs ? 1 : 0);
    }
    const int first = End(0).CmpNode(o.End(0));
    return first != 0 ? first : End(1).CmpNode(o.End(1));
  }

 private:
  const Point& End(int i) const { return *static_cast<const Point*>(m_ends[i]); }
  double Angle(const Point& from) const {
    const Point& to = End(&End(0) == &from ? 1 : 0);
    return std::atan2(to.y - from.y, to.x - from.x);
  }
};

/// The node a path starts from, kept in a protected field.
struct PathStart : ZtGraphPath {
  static ZtGraphNode* Of(const ZtGraphPath& p) { return p.*(&PathStart::m_pStartNode); }
};

void FacesZt(benchmark::State& state) {
  const int s = SideFor(state.range(0));
  for (auto _ : state) {
    ZtGraph g;
    std::vector<Point*> points;
    for (int x = 0; x < s; ++x) {
      for (int y = 0; y < s; ++y) {
        points.push_back(new Point(x, y));
        g << points.back();
      }
    }
    const auto at = [&points, s](int x, int y) {
      return points[static_cast<std::size_t>(x) * static_cast<std::size_t>(s) +
                    static_cast<std::size_t>(y)];
    };
    Grid(s, [&g, &at](int x0, int y0, int x1, int y1) { g << new Edge(at(x0, y0), at(x1, y1)); });
    // A walked side is marked on its arc: flag 1 for the side left from end 0, flag 2 from end 1.
    std::int64_t faces = 0;
    for (ZtLong i = 0; i < g.GetArcNum(); ++i) {
      ZtGraphArc* arc = g(i);
      for (int side = 0; side < 2; ++side) {
        if (arc->Is(1 << side)) continue;
        const std::unique_ptr<ZtGraphPath> path(arc->FindMesh(side));
        ZtGraphNode* at = PathStart::Of(*path);
        for (ZtGraphArc* const* a = path->GetFirst(); a != nullptr; a = path->GetNext(a)) {
          (*a)->AddFlag(at == (*a)->GetNode(0) ? 1 : 2);
          at = (*a)->GetOtherNode(at);
        }
        ++faces;
      }
    }
    if (faces != FacesOf(s)) state.SkipWithError("wrong number of faces");
    benchmark::DoNotOptimize(faces);
  }
  state.counters["edges"] = static_cast<double>(3 * s * s - 4 * s + 1);
}

#if ZT_HAVE_BOOST_GRAPH
using BoostGraph =
    boost::adjacency_list<boost::vecS, boost::vecS, boost::undirectedS, boost::no_property,
                          boost::property<boost::edge_index_t, int>>;
using BoostEdge = boost::graph_traits<BoostGraph>::edge_descriptor;

struct CountFaces : boost::planar_face_traversal_visitor {
  void begin_face() { ++faces; }
  std::int64_t faces = 0;
};

void FacesBoost(benchmark::State& state) {
  const int s = SideFor(state.range(0));
  for (auto _ : state) {
    BoostGraph g(static_cast<std::size_t>(s) * s);
    int id = 0;
    Grid(s, [&g, &id, s](int x0, int y0, int x1, int y1) {
      const auto e = boost::add_edge(x0 * s + y0, x1 * s + y1, g).first;
      boost::put(boost::edge_index, g, e, id++);
    });
    // The embedding: each vertex's edges by the angle at which they leave it.
    std::vector<std::vector<BoostEdge>> embedding(boost::num_vertices(g));
    for (std::size_t v = 0; v < embedding.size(); ++v) {
      const auto angle = [&g, v, s](const BoostEdge& e) {
        const auto from = boost::source(e, g);
        const auto w = static_cast<int>(from == v ? boost::target(e, g) : from);
        const int vx = static_cast<int>(v) / s;
        const int vy = static_cast<int>(v) % s;
        return std::atan2(w % s - vy, w / s - vx);
      };
      auto [first, last] = boost::out_edges(v, g);
      embedding[v].assign(first, last);
      std::sort(embedding[v].begin(), embedding[v].end(),
                [&angle](const BoostEdge& a, const BoostEdge& b) { return angle(a) < angle(b); });
    }
    CountFaces visitor;
    boost::planar_face_traversal(g, embedding.data(), visitor);
    if (visitor.faces != FacesOf(s)) state.SkipWithError("wrong number of faces");
    benchmark::DoNotOptimize(visitor.faces);
  }
}
#endif

}  // namespace

ZT_BENCH_PAIRS {
#if ZT_HAVE_BOOST_GRAPH
  zt::bench::Pair("Graph.Faces", FacesZt, FacesBoost, {10000, 40000}, "boost");
#else
  benchmark::RegisterBenchmark("Graph.Faces/zt", FacesZt)->Arg(10000)->Arg(40000);
#endif
}

BENCHMARK_MAIN();
