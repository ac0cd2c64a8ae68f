// examples/faces: finds the faces of a planar straight-line graph with the mesh search.
//
// The arcs around each point are ordered by direction (the client CmpArc reads the point that is
// sorting them, ZtGraphNode::s_pStartNode), so that FindMesh walks the boundary of one face. Every
// face is found once, Euler's formula V - E + F = 2 is checked on each connected part that has
// edges, and an SVG picture is written with every bounded face filled in its own colour.
//
//   zt_demo_faces [FILE] [--svg OUT]     FILE: lines "point ID X Y" and "edge ID ID"; '#' comments
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "zt/graph/graph.h"
#include "zt/graph/graph_path.h"

namespace {

constexpr const char* kDefaultGraph =
    R"(# a house with a diagonal in its wall, and a triangle beside it
point a 0 0
point b 4 0
point c 4 3
point d 0 3
point e 2 5
edge a b
edge b c
edge c d
edge d a
edge a c
edge c e
edge e d
point f 6 0
point g 9 0
point h 7.5 2
edge f g
edge g h
edge h f
point lone 8 5
)";

/// A point of the drawing; points at the same coordinates are the same point.
class Point : public ZtGraphNode {
 public:
  Point(std::string name, double x, double y) : name_(std::move(name)), x_(x), y_(y) {}
  int CmpNode(const ZtGraphNode& other) const override {
    const auto& o = static_cast<const Point&>(other);
    return x_ != o.x_ ? (x_ < o.x_ ? -1 : 1) : y_ != o.y_ ? (y_ < o.y_ ? -1 : 1) : 0;
  }
  /// The point that is sorting an arc into its ring, or null.
  static const Point* Sorting() { return static_cast<const Point*>(s_pStartNode); }

  const std::string& name() const { return name_; }
  double x() const { return x_; }
  double y() const { return y_; }

 private:
  std::string name_;
  double x_;
  double y_;
};

const Point& End(ZtGraphArc& arc, int i) { return *static_cast<Point*>(arc.GetNode(i)); }

/// A straight edge. Around a point, edges sort by the direction in which they leave it; in the
/// graph's list, by their two ends (either way round), so that a repeated edge is dropped.
class Edge : public ZtGraphArc {
 public:
  Edge(Point* a, Point* b) : ZtGraphArc(a, b) {}
  int CmpArc(const ZtGraphArc& other) const override {
    if (const Point* at = Point::Sorting()) {
      const double mine = Direction(*this, *at);
      const double theirs = Direction(other, *at);
      return mine < theirs ? -1 : mine > theirs ? 1 : 0;
    }
    const auto [p0, q0] = Key();
    const auto [p1, q1] = static_cast<const Edge&>(other).Key();
    const int first = p0->CmpNode(*p1);
    return first != 0 ? first : q0->CmpNode(*q1);
  }

 private:
  /// The two ends, the lesser point first.
  std::pair<const Point*, const Point*> Key() const {
    const auto* p = static_cast<const Point*>(m_ends[0]);
    const auto* q = static_cast<const Point*>(m_ends[1]);
    return *p < *q ? std::make_pair(p, q) : std::make_pair(q, p);
  }
  /// Angle of the edge as it leaves `from`.
  static double Direction(const ZtGraphArc& e, const Point& from) {
    const Point& to = *static_cast<Point*>(e.GetOtherNode(const_cast<Point*>(&from)));
    return std::atan2(to.y() - from.y(), to.x() - from.x());
  }
};

struct InputError {
  int line;
  std::string message;
};

/// Reads the drawing into `graph`; throws InputError for the first line it cannot use.
void Read(std::istream& in, ZtGraph& graph) {
  std::map<std::string, Point*> points;
  std::set<std::pair<double, double>> places;
  std::string text;
  for (int line = 1; std::getline(in, text); ++line) {
    if (const auto hash = text.find('#'); hash != std::string::npos) text.erase(hash);
    std::istringstream words(text);
    std::string kind;
    if (!(words >> kind)) continue;
    std::string a;
    std::string b;
    std::string extra;
    if (kind == "point") {
      double x = 0;
      double y = 0;
      if (!(words >> a >> x >> y) || (words >> extra)) {
        throw InputError{line, "expected: point ID X Y"};
      }
      if (!std::isfinite(x) || !std::isfinite(y))
        throw InputError{line, "coordinates must be finite"};
      if (points.count(a) != 0) throw InputError{line, "point '" + a + "' is defined twice"};
      if (!places.emplace(x, y).second)
        throw InputError{line, "another point stands at this place"};
      auto* p = new Point(a, x, y);
      points[a] = p;
      graph << p;
    } else if (kind == "edge") {
      if (!(words >> a >> b) || (words >> extra)) throw InputError{line, "expected: edge ID ID"};
      for (const std::string& id : {a, b}) {
        if (points.count(id) == 0) throw InputError{line, "unknown point '" + id + "'"};
      }
      if (a == b) throw InputError{line, "an edge needs two different points"};
      const ZtLong arcs = graph.GetArcNum();
      graph << new Edge(points[a], points[b]);
      if (graph.GetArcNum() == arcs) {
        std::string message = "edge ";
        message.append(a).append("-").append(b).append(" is repeated");
        throw InputError{line, message};
      }
    } else {
      throw InputError{line, "unknown line kind '" + kind + "' (expected point or edge)"};
    }
  }
}

/// One face: the points of its boundary in walking order and the signed area it encloses
/// (positive: a bounded face).
struct Face {
  std::vector<const Point*> corners;
  double area = 0;
};

/// The point a path starts from: the path keeps it in a protected field.
struct PathStart : ZtGraphPath {
  static ZtGraphNode* Of(const ZtGraphPath& path) { return path.*(&PathStart::m_pStartNode); }
};

/// An edge side: an arc and the point it is left from. Each side lies on exactly one face.
using Side = std::pair<ZtGraphArc*, ZtGraphNode*>;

/// Every face once. FindMesh gives walks along face boundaries; a walk breaks off where it meets
/// a point with a single edge (it cannot turn there) and stops when it meets its first edge again
/// from either side. So each walk records, for the sides it crossed, the side that follows, a
/// walk that broke off at a point turns back along the same edge, and one that met its first edge
/// goes on along it. The faces are the cycles of that succession.
std::vector<Face> FindFaces(ZtGraph& graph) {
  std::map<Side, Side> next;
  std::vector<Side> order;  // sides in the order they were first walked
  for (ZtLong i = 0; i < graph.GetArcNum(); ++i) {
    ZtGraphArc* start = graph(i);
    for (int side = 0; side < 2; ++side) {
      if (next.count({start, start->GetNode(side)}) != 0) continue;
      const std::unique_ptr<ZtGraphPath> path(start->FindMesh(side));
      ZtGraphNode* at = PathStart::Of(*path);
      Side previous{nullptr, nullptr};
      for (ZtGraphArc* const* a = path->GetFirst(); a != nullptr; a = path->GetNext(a)) {
        const Side here{*a, at};
        if (previous.first != nullptr) next[previous] = here;
        if (next.emplace(here, Side{nullptr, nullptr}).second) order.push_back(here);
        previous = here;
        at = (*a)->GetOtherNode(at);
      }
      const bool closed = at->FindNextArc(previous.first) == start;
      next[previous] = closed ? Side{start, at} : Side{previous.first, at};
    }
  }
  std::vector<Face> faces;
  std::set<Side> done;
  for (const Side& first : order) {
    Face face;
    for (Side s = first; s.first != nullptr && done.insert(s).second; s = next[s]) {
      face.corners.push_back(static_cast<const Point*>(s.second));
    }
    if (face.corners.empty()) continue;
    for (std::size_t k = 0; k < face.corners.size(); ++k) {
      const Point& p = *face.corners[k];
      const Point& q = *face.corners[(k + 1) % face.corners.size()];
      face.area -= (p.x() * q.y() - q.x() * p.y()) / 2;  // the walks turn clockwise inside
    }
    faces.push_back(face);
  }
  return faces;
}

/// Numbers the connected parts: part[node] for every node, counting from 0.
std::map<const ZtGraphNode*, int> Parts(ZtGraph& graph) {
  std::map<const ZtGraphNode*, int> part;
  int parts = 0;
  for (ZtLong i = 0; i < graph.GetNodeNum(); ++i) {
    if (part.count(graph[i]) != 0) continue;
    std::vector<const ZtGraphNode*> todo{graph[i]};
    part[graph[i]] = parts;
    while (!todo.empty()) {
      const ZtGraphNode* n = todo.back();
      todo.pop_back();
      for (ZtLong k = 0; k < n->GetArcNum(); ++k) {
        const ZtGraphNode* m = n->GetArc(k)->GetOtherNode(const_cast<ZtGraphNode*>(n));
        if (part.emplace(m, parts).second) todo.push_back(m);
      }
    }
    ++parts;
  }
  return part;
}

void WriteSvg(const std::string& file, ZtGraph& graph, const std::vector<Face>& faces) {
  double left = 1e300;
  double right = -1e300;
  double bottom = 1e300;
  double top = -1e300;
  for (ZtLong i = 0; i < graph.GetNodeNum(); ++i) {
    const auto* p = static_cast<const Point*>(graph[i]);
    left = std::fmin(left, p->x()), right = std::fmax(right, p->x());
    bottom = std::fmin(bottom, p->y()), top = std::fmax(top, p->y());
  }
  const double scale = 400 / std::fmax(1e-9, std::fmax(right - left, top - bottom));
  const auto sx = [&](double x) { return 20 + (x - left) * scale; };
  const auto sy = [&](double y) { return 20 + (top - y) * scale; };  // y grows downwards
  std::ofstream out(file);
  out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" "
      << "width=\"" << sx(right) + 20 << "\" height=\"" << sy(bottom) + 20 << "\">\n";
  int colour = 0;
  for (const Face& f : faces) {
    if (f.area <= 1e-12) continue;  // the outer face of a part, or a walk around a tree
    out << "  <polygon fill=\"hsl(" << (colour++ * 137) % 360 << ",70%,75%)\" points=\"";
    for (const Point* p : f.corners) out << sx(p->x()) << ',' << sy(p->y()) << ' ';
    out << "\"/>\n";
  }
  for (ZtLong i = 0; i < graph.GetArcNum(); ++i) {
    const Point& a = End(*graph(i), 0);
    const Point& b = End(*graph(i), 1);
    out << "  <line stroke=\"black\" x1=\"" << sx(a.x()) << "\" y1=\"" << sy(a.y()) << "\" x2=\""
        << sx(b.x()) << "\" y2=\"" << sy(b.y()) << "\"/>\n";
  }
  for (ZtLong i = 0; i < graph.GetNodeNum(); ++i) {
    const auto* p = static_cast<const Point*>(graph[i]);
    out << "  <circle r=\"3\" cx=\"" << sx(p->x()) << "\" cy=\"" << sy(p->y()) << "\"/>\n";
  }
  out << "</svg>\n";
  if (!out) throw InputError{0, "cannot write " + file};
}

}  // namespace

int main(int argc, char** argv) {
  std::string input;
  std::string svg = "faces.svg";
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if (arg == "--svg" && i + 1 < argc) {
      svg = argv[++i];
    } else if (input.empty() && arg.rfind("--", 0) != 0) {
      input = arg;
    } else {
      std::fprintf(stderr, "usage: %s [FILE] [--svg OUT]\n", argv[0]);
      return 2;
    }
  }
  ZtGraph graph;
  try {
    if (input.empty()) {
      std::istringstream in(kDefaultGraph);
      Read(in, graph);
    } else {
      std::ifstream in(input);
      if (!in) {
        std::fprintf(stderr, "%s: cannot open\n", input.c_str());
        return 1;
      }
      Read(in, graph);
    }
  } catch (const InputError& e) {
    std::fprintf(stderr, "%s:%d: %s\n", input.empty() ? "built-in graph" : input.c_str(), e.line,
                 e.message.c_str());
    return 1;
  }

  const std::vector<Face> faces = FindFaces(graph);
  const std::map<const ZtGraphNode*, int> part = Parts(graph);
  int parts = 0;
  for (const auto& entry : part) parts = std::max(parts, entry.second + 1);
  std::vector<int> vertices(parts), edges(parts), walks(parts);
  for (const auto& entry : part) ++vertices[entry.second];
  for (ZtLong i = 0; i < graph.GetArcNum(); ++i) ++edges[part.at(graph(i)->GetNode(0))];
  for (std::size_t f = 0; f < faces.size(); ++f) {
    const Face& face = faces[f];
    ++walks[part.at(face.corners.front())];
    std::printf("face %zu:", f + 1);
    for (const Point* p : face.corners) std::printf(" %s", p->name().c_str());
    std::printf("  (%s, area %.2f)\n", face.area > 1e-12 ? "bounded" : "outer",
                std::fabs(face.area));
  }
  bool holds = true;
  for (int p = 0; p < parts; ++p) {
    if (edges[p] == 0) continue;
    const int euler = vertices[p] - edges[p] + walks[p];
    holds = holds && euler == 2;
    std::printf("part %d: V=%d E=%d W=%d, V - E + W = %d %s\n", p + 1, vertices[p], edges[p],
                walks[p], euler, euler == 2 ? "(holds)" : "(FAILS: the drawing is not planar)");
  }
  try {
    WriteSvg(svg, graph, faces);
  } catch (const InputError& e) {
    std::fprintf(stderr, "%s\n", e.message.c_str());
    return 1;
  }
  std::printf("Euler's formula %s; picture written to %s\n",
              holds ? "holds on every part" : "fails", svg.c_str());
  return holds ? 0 : 3;
}
