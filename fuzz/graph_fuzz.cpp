// fuzz/graph_fuzz.cpp
//
// ZtGraph, ZtGraphNode and ZtGraphArc against a model of ids that follows the graph's steps:
// sorted insertion by the owning lists' binary search (also into lists that a key change left
// unsorted), the rings around nodes, Create, operator<<, CheckNode/CheckArc, deletions, Conbine,
// UnConnect and FindMesh (which stops where it would repeat a step). Nodes stand on a 3 x 3 grid
// and order by a small key; arcs order by key in the graph and, around a node, by the direction
// to their other end (a planar drawing when no arcs cross) or, when the first byte says so, by a
// hash of key and place (any rotation system). Direct calls of SetNode, AppendArc, RemoveArc,
// ClearArc, Connect and UnConnect make rings that do not mirror the arcs' ends.
//
// The harness plays a careful client. A destroyed node's memory is held back (and poisoned under
// AddressSanitizer) until the end of the call, so that the ends still naming it can be compared;
// then the harness nulls those ends. A destroyed arc first leaves the rings of nodes that are not
// its ends. Objects the graph does not own belong to the harness.
#include <memory>
#include <set>
#include <unordered_map>

#include "fuzz/driver.h"
#include "zt/graph/graph.h"
#include "zt/graph/graph_path.h"

#if defined(__SANITIZE_ADDRESS__)
#define ZT_FUZZ_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZT_FUZZ_ASAN 1
#endif
#endif
#ifdef ZT_FUZZ_ASAN
#include <sanitizer/asan_interface.h>
#endif

namespace {

using zt::fuzz::Input;
using zt::fuzz::Same;

// Find is a plain binary search that leaves the list's cursor where it was; set to false once
// it is BFindDataTo and leaves the cursor on the match or the insertion place.
constexpr bool kAwaitingFixFindMovesCursor = false;
// The pointer forms of CheckNode/CheckArc search by address when Find lands on another equal
// object; set to false once they act on Find's position.
constexpr bool kAwaitingFixCheckActsOnFind = false;
// DelNode, ClearNode and CheckNode null (or rename) the ends of every graph arc naming the node,
// also arcs missing from its ring; set to false once only the ring's arcs change.
constexpr bool kAwaitingFixOnlyRingEndsChange = false;
// Conbine(this) does nothing; set to false once it ends by emptying the ring.
constexpr bool kAwaitingFixConbineSelfClears = false;

constexpr int kMaxNodes = 24, kMaxArcs = 32;

struct World;
World* g_world = nullptr;

// An arc as the orders see it: its key and its ends' ids (-1 for none).
struct View {
  int key, end[2];
};

class Node : public ZtGraphNode {
 public:
  Node(int id, int key) : id(id), key(key) {}
  ~Node() override;
  int CmpNode(const ZtGraphNode& o) const override { return key - static_cast<const Node&>(o).key; }
  static ZtGraphNode* Start() { return s_pStartNode; }
  static void* operator new(size_t n) { return ::operator new(n); }
  static void operator delete(void* p);  // held back until the call ends
  int id, key;
};

class Arc : public ZtGraphArc {
 public:
  Arc(int id, int key, ZtGraphNode* a, ZtGraphNode* b) : ZtGraphArc(a, b), id(id), key(key) {}
  ~Arc() override;
  int CmpArc(const ZtGraphArc& o) const override;
  View Look() const;
  int id, key;
};

class Graph : public ZtGraph {
 public:
  ZtLong NodeCursor() const { return m_nodeList.GetCur(); }
  ZtLong ArcCursor() const { return m_arcList.GetCur(); }
};

struct Path : ZtGraphPath {
  static ZtGraphNode* Start(const ZtGraphPath& p) { return p.*(&Path::m_pStartNode); }
};

int Sign(int v) { return (v > 0) - (v < 0); }

struct MNode {
  int key;
  bool live = true;
  std::vector<int> ring;
};
struct MArc {
  int key, end[2];
  bool live = true;
};

struct World {
  explicit World(Input& in) : hashed(in.Bool()) { g_world = this; }
  ~World() {
    // Harness-owned objects go first, arcs then nodes; then the graph.
    for (size_t a = 0; a < ma.size(); ++a) {
      if (ma[a].live && !InList(arcs, static_cast<int>(a))) delete la[a];
    }
    for (size_t n = 0; n < mn.size(); ++n) {
      if (mn[n].live && !InList(nodes, static_cast<int>(n))) delete ln[n];
    }
    Tidy();
    graph.reset();
    Tidy();
    g_world = nullptr;
  }
  static bool InList(const std::vector<int>& list, int id) {
    return std::find(list.begin(), list.end(), id) != list.end();
  }

  // ---- the orders, shared by the client classes and the model ----
  int ArcOrder(const View& a, const View& b, int s) const {
    if (s < 0) return Sign(a.key - b.key);
    const auto rank = [&](const View& v, int& dx, int& dy) {
      const int other = v.end[0] == s ? v.end[1] : v.end[0];
      if (other < 0) return 0;
      dx = pos[other] % 3 - pos[s] % 3, dy = pos[other] / 3 - pos[s] / 3;
      if (hashed) return 1 + (v.key * 5 + pos[s] * 3 + pos[other]) % 7;
      return dx == 0 && dy == 0 ? 1 : (dy < 0 || (dy == 0 && dx < 0) ? 3 : 2);  // half plane
    };
    int ax = 0, ay = 0, bx = 0, by = 0;
    const int ra = rank(a, ax, ay), rb = rank(b, bx, by);
    if (ra != rb) return ra < rb ? -1 : 1;
    const int cross = hashed || ra < 2 ? 0 : ax * by - ay * bx;  // counterclockwise first
    return cross != 0 ? -Sign(cross) : Sign(a.key - b.key);
  }
  int IdOf(const ZtGraphNode* n) const {
    const auto it = ids.find(n);
    return n == nullptr || it == ids.end() ? -1 : it->second;
  }

  // ---- the model ----
  View Look(int a) const { return View{ma[a].key, {ma[a].end[0], ma[a].end[1]}}; }
  int Other(int a, int n) const { return n == ma[a].end[0] ? ma[a].end[1] : ma[a].end[0]; }
  bool Append(int n, int a) {
    auto& ring = mn[n].ring;
    const auto cmp = [&](ZtLong k) { return ArcOrder(Look(a), Look(ring[k]), n); };
    const auto [found, at] = zt::fuzz::SortedPlace(
        static_cast<ZtLong>(ring.size()), [&](ZtLong k) { return cmp(k) < 0; },
        [&](ZtLong k) { return cmp(k) > 0; });
    if (!found) ring.insert(ring.begin() + at, a);
    return !found;
  }
  bool Remove(int n, int a) {
    auto& ring = mn[n].ring;
    const auto it = std::find(ring.begin(), ring.end(), a);
    return it != ring.end() && (ring.erase(it), true);
  }
  void Connect(int a) {
    for (int n : ma[a].end) {
      if (n >= 0) Append(n, a);
    }
  }
  void UnConnect(int a) {
    for (int n : ma[a].end) {
      if (n >= 0) Remove(n, a);
    }
    ma[a].end[0] = ma[a].end[1] = -1;
  }
  void UnConnectNode(int n) {
    for (int a : mn[n].ring) {
      for (int& e : ma[a].end) e = e == n ? -1 : e;
    }
    mn[n].ring.clear();
  }
  void Conbine(int t, int o) {
    auto& ring = mn[o].ring;
    for (size_t k = 0; t != o && k < ring.size(); ++k) {
      for (int& e : ma[ring[k]].end) e = e == o ? t : e;
      Append(t, ring[k]);
    }
    ring.clear();
  }
  void KillArc(int a) {
    for (MNode& n : mn) n.ring.erase(std::remove(n.ring.begin(), n.ring.end(), a), n.ring.end());
    ma[a].live = false;
  }
  void KillNode(int n) { UnConnectNode(n), mn[n].live = false; }
  // Find's step by step search: {found, place}.
  std::pair<bool, ZtLong> FindNode(int key) const {
    return zt::fuzz::SortedPlace(
        static_cast<ZtLong>(nodes.size()), [&](ZtLong k) { return key < mn[nodes[k]].key; },
        [&](ZtLong k) { return key > mn[nodes[k]].key; });
  }
  std::pair<bool, ZtLong> FindArc(int key) const {
    return zt::fuzz::SortedPlace(
        static_cast<ZtLong>(arcs.size()), [&](ZtLong k) { return key < ma[arcs[k]].key; },
        [&](ZtLong k) { return key > ma[arcs[k]].key; });
  }
  bool Ascending() const {
    for (size_t k = 1; k < nodes.size(); ++k) {
      if (mn[nodes[k - 1]].key >= mn[nodes[k]].key) return false;
    }
    return true;
  }
  // Whether adding an object the graph holds would meet that very object.
  bool Findable(int n) const {
    const auto [found, at] = FindNode(mn[n].key);
    return !InList(nodes, n) || (found && nodes[at] == n);
  }
  ZtLong AddNode(int x) {
    const auto [found, at] = FindNode(mn[x].key);
    if (!found) return nodes.insert(nodes.begin() + at, x), at;
    if (nodes[at] != x) Conbine(nodes[at], x), KillNode(x);
    return at;
  }
  ZtLong AddArc(int a) {
    const auto [found, at] = FindArc(ma[a].key);
    if (!found) return arcs.insert(arcs.begin() + at, a), Connect(a), at;
    if (arcs[at] != a) KillArc(a);
    return at;
  }
  ZtLong Create(int a) {
    const int first = ma[a].end[0];
    for (int e = 0; e < 2; ++e) {
      int& n = ma[a].end[e];
      if (e == 1 && n == first) {
        n = ma[a].end[0];
      } else if (n >= 0) {
        n = nodes[AddNode(n)];
      }
    }
    return AddArc(a);
  }
  ZtLong CheckArc(ZtLong i) {
    if (i < 0 || i >= static_cast<ZtLong>(arcs.size())) return -1;
    const int a = arcs[i];
    const MArc kept = ma[a];
    arcs.erase(arcs.begin() + i), UnConnect(a);
    ma[a].end[0] = kept.end[0], ma[a].end[1] = kept.end[1];
    return AddArc(a);
  }
  ZtLong CheckNode(ZtLong i, std::vector<int>* removed) {
    if (i < 0 || i >= static_cast<ZtLong>(nodes.size())) return -1;
    const int n = nodes[i];
    nodes.erase(nodes.begin() + i);
    const std::vector<int> taken = mn[n].ring;
    for (int a : taken) {
      const MArc kept = ma[a];
      UnConnect(a), ma[a].end[0] = kept.end[0], ma[a].end[1] = kept.end[1];
    }
    const ZtLong k = AddNode(n);
    for (int a : taken) {
      for (int& e : ma[a].end) e = e == n ? nodes[k] : e;
      const auto it = std::find(arcs.begin(), arcs.end(), a);
      if (it != arcs.end()) {
        arcs.erase(it), AddArc(a);
      } else if (removed != nullptr) {
        removed->push_back(a);
      }
    }
    return k;
  }
  int Turn(int n, int a, int step) const {
    const auto& ring = mn[n].ring;
    const auto c = static_cast<int>(ring.size());
    const auto it = std::find(ring.begin(), ring.end(), a);
    return c < 2 || it == ring.end() ? -1 : ring[((it - ring.begin()) + step + c) % c];
  }
  std::pair<std::vector<int>, int> Mesh(int e, int side) const {
    std::vector<int> path;
    const int s = ma[e].end[side != 0 ? 1 : 0];
    std::set<std::pair<int, int>> taken;
    int n = s, a = e;
    do {
      path.push_back(a), n = Other(a, n);
      a = n >= 0 ? Turn(n, a, 1) : -1;
      if (a >= 0 && a != e && !taken.insert({n, a}).second) a = -1;
    } while (a >= 0 && a != e);
    if (a == e) return {path, s};
    taken.clear(), n = s, a = e;
    for (int pre = 0; (pre = n >= 0 ? Turn(n, a, -1) : -1) >= 0 && taken.insert({n, pre}).second;) {
      a = pre, path.insert(path.begin(), a), n = Other(a, n);
    }
    return {path, n};
  }
  // Whether n's ring lists every arc that names n.
  bool Mirrored(int n) const {
    for (size_t a = 0; a < ma.size(); ++a) {
      const bool names = ma[a].live && (ma[a].end[0] == n || ma[a].end[1] == n);
      if (names && !InList(mn[n].ring, static_cast<int>(a))) return false;
    }
    return true;
  }

  // ---- objects on both sides ----
  int NewNode(int key, int at) {
    if (mn.size() >= kMaxNodes) return -1;
    const auto id = static_cast<int>(mn.size());
    mn.push_back(MNode{key, true, {}}), pos.push_back(at);
    ln.push_back(new Node(id, key)), ids[ln.back()] = id;
    return id;
  }
  int NewArc(int key, int a, int b) {
    if (ma.size() >= kMaxArcs) return -1;
    const auto id = static_cast<int>(ma.size());
    ma.push_back(MArc{key, {a, b}});
    la.push_back(new Arc(id, key, a < 0 ? nullptr : ln[a], b < 0 ? nullptr : ln[b]));
    return id;
  }
  ZtGraphNode* N(int n) const { return n < 0 ? nullptr : ln[n]; }
  // Nulls the library's ends that name destroyed nodes, then releases those nodes' memory.
  void Tidy() {
    for (size_t a = 0; a < la.size(); ++a) {
      for (int e = 0; e < 2 && !dead.count(-1 - static_cast<int>(a)); ++e) {
        const int end = IdOf(la[a]->GetNode(e));
        if (end >= 0 && dead.count(end)) la[a]->SetNode(e, nullptr);
      }
    }
    for (void* p : buried) {
#ifdef ZT_FUZZ_ASAN
      ASAN_UNPOISON_MEMORY_REGION(p, sizeof(Node));
#endif
      ids.erase(static_cast<ZtGraphNode*>(p));
      ::operator delete(p);
    }
    buried.clear();
  }

  void Draw(Input& in) {
    const auto count = [](size_t n) { return static_cast<ZtLong>(n); };
    n1 = static_cast<int>(in.In(-1, count(mn.size()) - 1));
    n2 = static_cast<int>(in.In(-1, count(mn.size()) - 1));
    a1 = static_cast<int>(in.In(-1, count(ma.size()) - 1));
    i = in.Index(count(nodes.size())), j = in.Index(count(arcs.size()));
    key = static_cast<int>(in.In(0, 5)), at = static_cast<int>(in.In(0, 8)), pick = in.Byte();
  }
  bool Live(int n) const { return n >= 0 && mn[n].live; }
  bool LiveArc(int a) const { return a >= 0 && ma[a].live; }
  void Check() {
    Same(graph->GetNodeNum(), static_cast<ZtLong>(nodes.size()));
    Same(graph->GetArcNum(), static_cast<ZtLong>(arcs.size()));
    for (size_t k = 0; k < nodes.size(); ++k)
      ZT_FUZZ_CHECK((*graph)[static_cast<ZtLong>(k)] == ln[nodes[k]]);
    for (size_t k = 0; k < arcs.size(); ++k)
      ZT_FUZZ_CHECK((*graph)(static_cast<ZtLong>(k)) == la[arcs[k]]);
    for (size_t n = 0; n < mn.size(); ++n) {
      Same(!dead.count(static_cast<int>(n)), mn[n].live);
      if (!mn[n].live) continue;
      const auto& ring = mn[n].ring;
      Same(ln[n]->GetArcNum(), static_cast<ZtLong>(ring.size()));
      for (size_t k = 0; k < ring.size(); ++k)
        ZT_FUZZ_CHECK(ln[n]->GetArc(static_cast<ZtLong>(k)) == la[ring[k]]);
    }
    for (size_t a = 0; a < ma.size(); ++a) {
      Same(!dead.count(-1 - static_cast<int>(a)), ma[a].live);
      for (int e = 0; e < 2 && ma[a].live; ++e) {
        int& end = ma[a].end[e];
        ZT_FUZZ_CHECK(la[a]->GetNode(e) == N(end));
        if (end >= 0 && !mn[end].live) end = -1;  // as Tidy does below
      }
    }
    Tidy();
  }

  bool hashed;
  std::unique_ptr<Graph> graph = std::make_unique<Graph>();
  std::vector<MNode> mn;
  std::vector<MArc> ma;
  std::vector<int> nodes, arcs, pos;  // the graph's lists as ids; each node's place
  std::vector<Node*> ln;              // the library's objects by id
  std::vector<Arc*> la;
  std::unordered_map<const ZtGraphNode*, int> ids;
  std::set<int> dead;  // destroyed nodes, and arcs as -1 - id
  std::vector<void*> buried;
  int n1 = -1, n2 = -1, a1 = -1, key = 0, at = 0, pick = 0;
  ZtLong i = 0, j = 0;
};

Node::~Node() {
  if (id >= 0) g_world->dead.insert(id);
}
void Node::operator delete(void* p) {
#ifdef ZT_FUZZ_ASAN
  ASAN_POISON_MEMORY_REGION(p, sizeof(Node));
#endif
  g_world->buried.push_back(p);
}
View Arc::Look() const { return View{key, {g_world->IdOf(m_ends[0]), g_world->IdOf(m_ends[1])}}; }
int Arc::CmpArc(const ZtGraphArc& o) const {
  return g_world->ArcOrder(Look(), static_cast<const Arc&>(o).Look(), g_world->IdOf(Node::Start()));
}
Arc::~Arc() {
  if (id < 0) return;
  World& w = *g_world;
  w.dead.insert(-1 - id);
  for (size_t n = 0; n < w.mn.size(); ++n) {  // leave the rings of nodes that are not ends
    if (w.dead.count(static_cast<int>(n))) continue;
    ZtGraphNode* node = w.ln[n];
    const int ends = (m_ends[0] == node) + (m_ends[1] == node);
    int listed = 0;
    for (ZtLong k = 0; k < node->GetArcNum(); ++k) listed += node->GetArc(k) == this;
    for (; listed > ends; --listed) node->RemoveArc(this);
  }
}

using W = World;

// A node for an end: fresh, present (loose or in the graph) or none. A node of the graph only
// while the keys strictly ascend: otherwise adding the other end first may leave it where the
// search no longer meets it, and it would be taken for a duplicate of itself.
int EndNode(W& w, int choice, int present) {
  if (choice == 0) return -1;
  const bool held = W::InList(w.nodes, present);
  if (choice == 1 && w.Live(present) && (!held || w.Ascending())) return present;
  return w.NewNode(w.key, w.at);
}

const std::vector<zt::fuzz::Op<W>> kOps = {
    {"Create",
     [](W& w) {
       const int a = EndNode(w, w.pick % 3, w.n1);
       const int b = w.pick / 3 % 4 == 3 ? a : EndNode(w, w.pick / 3 % 3, w.n2);
       const int arc = w.NewArc(w.pick / 16 % 6, a, b);
       if (arc >= 0) Same(w.graph->Create(w.la[arc]), w.Create(arc));
     }},
    {"operator<< node",
     [](W& w) {
       const int n = w.Live(w.n1) && w.pick % 2 ? w.n1 : w.NewNode(w.key, w.at);
       if (n >= 0 && w.Findable(n)) Same(*w.graph << w.ln[n], w.AddNode(n));
     }},
    {"operator<< arc",  // a fresh or harness-owned arc, or one of the graph's at its place
     [](W& w) {
       int a = w.a1;
       if (!w.LiveArc(a) || w.pick % 2)
         a = w.NewArc(w.key, w.Live(w.n1) ? w.n1 : -1, w.Live(w.n2) ? w.n2 : -1);
       if (a < 0) return;
       const auto [found, place] = w.FindArc(w.ma[a].key);
       if (W::InList(w.arcs, a) && !(found && w.arcs[place] == a)) return;
       Same(*w.graph << w.la[a], w.AddArc(a));
     }},
    {"loose node or arc",  // owned by the harness; an arc may be connected
     [](W& w) {
       if (w.pick % 2) return void(w.NewNode(w.key, w.at));
       const int a = w.NewArc(w.key, w.Live(w.n1) ? w.n1 : -1, w.Live(w.n2) ? w.n2 : -1);
       if (a >= 0 && w.pick % 4 == 2) w.la[a]->Connect(), w.Connect(a);
     }},
    {"Find",
     [](W& w) {
       const bool arc = w.pick % 2;
       Node probeNode(-1, w.key);
       Arc probeArc(-1, w.key, nullptr, nullptr);
       const auto [found, place] = arc ? w.FindArc(w.key) : w.FindNode(w.key);
       const ZtLong n = static_cast<ZtLong>(arc ? w.arcs.size() : w.nodes.size());
       Same(arc ? w.graph->Find(probeArc) : w.graph->Find(probeNode), found ? place : -1);
       if (kAwaitingFixFindMovesCursor) return;
       Same(arc ? w.graph->ArcCursor() : w.graph->NodeCursor(), place == n ? -1 : place);
     }},
    {"CheckNode",  // after a key change; by position or through Find
     [](W& w) {
       ZtLong i = w.i;
       const bool valid = i >= 0 && i < static_cast<ZtLong>(w.nodes.size());
       if (!valid && w.pick % 4 != 0) return;
       const int n = valid ? w.nodes[i] : -1;
       if (kAwaitingFixOnlyRingEndsChange && n >= 0 && !w.Mirrored(n)) return;
       if (n >= 0) w.mn[n].key = w.ln[n]->key = w.key;
       const bool byFind = w.pick % 2;
       if (byFind && n >= 0) {
         const auto [found, place] = w.FindNode(w.key);
         if (kAwaitingFixCheckActsOnFind && !(found && w.nodes[place] == n)) return;
         i = found ? place : -1;
       }
       ZtDynArray<ZtGraphArc*> removed;
       std::vector<int> want;
       const bool collect = w.pick % 3 == 0;
       const ZtLong got = byFind && n >= 0
                              ? w.graph->CheckNode(w.ln[n], collect ? &removed : nullptr)
                              : w.graph->CheckNode(w.i, collect ? &removed : nullptr);
       Same(got, w.CheckNode(i, collect ? &want : nullptr));
       Same(removed.GetLength(), static_cast<ZtLong>(want.size()));
       for (size_t k = 0; k < want.size(); ++k)
         ZT_FUZZ_CHECK(removed[static_cast<ZtLong>(k)] == w.la[want[k]]);
     }},
    {"CheckArc",
     [](W& w) {
       ZtLong j = w.j;
       const bool valid = j >= 0 && j < static_cast<ZtLong>(w.arcs.size());
       if (!valid && w.pick % 4 != 0) return;
       const int a = valid ? w.arcs[j] : -1;
       if (a >= 0) w.ma[a].key = w.la[a]->key = w.key;
       const bool byFind = w.pick % 2 && a >= 0;
       if (byFind) {
         const auto [found, place] = w.FindArc(w.key);
         if (kAwaitingFixCheckActsOnFind && !(found && w.arcs[place] == a)) return;
         j = found ? place : -1;
       }
       Same(byFind ? w.graph->CheckArc(w.la[a]) : w.graph->CheckArc(w.j), w.CheckArc(j));
     }},
    {"DelNode or DelArc",
     [](W& w) {
       if (w.pick % 2) {
         if (w.j < 0 || w.j >= static_cast<ZtLong>(w.arcs.size())) return;
         w.graph->DelArc(w.j), w.KillArc(w.arcs[w.j]), w.arcs.erase(w.arcs.begin() + w.j);
         return;
       }
       if (w.i < 0 || w.i >= static_cast<ZtLong>(w.nodes.size())) return w.graph->DelNode(w.i);
       if (kAwaitingFixOnlyRingEndsChange && !w.Mirrored(w.nodes[w.i])) return;
       w.graph->DelNode(w.i), w.KillNode(w.nodes[w.i]), w.nodes.erase(w.nodes.begin() + w.i);
     }},
    {"ClearNode, ClearArc, UnConnect or Reset",
     [](W& w) {
       const int what = w.pick % 4;
       if (what == 0) {
         for (int n : w.nodes) {
           if (kAwaitingFixOnlyRingEndsChange && !w.Mirrored(n)) return;
         }
         w.graph->ClearNode();
         for (int n : w.nodes) w.KillNode(n);
         return w.nodes.clear();
       }
       if (what == 1) {
         w.graph->ClearArc();
         for (int a : w.arcs) w.KillArc(a);
         return w.arcs.clear();
       }
       w.graph->UnConnect();
       for (int n : w.nodes) w.UnConnectNode(n);
       for (int a : w.arcs) w.UnConnect(a);
       if (what == 2) return;
       w.graph->Reset();
       for (int n : w.nodes) w.KillNode(n);
       for (int a : w.arcs) w.KillArc(a);
       w.nodes.clear(), w.arcs.clear();
     }},
    {"SetNode",
     [](W& w) {
       if (w.LiveArc(w.a1))
         w.la[w.a1]->SetNode(w.pick % 2, w.N(w.Live(w.n1) ? w.n1 : -1)),
             w.ma[w.a1].end[w.pick % 2] = w.Live(w.n1) ? w.n1 : -1;
     }},
    {"AppendArc or RemoveArc",
     [](W& w) {
       if (!w.Live(w.n1) || !w.LiveArc(w.a1)) return;
       if (w.pick % 2) return void(Same(w.ln[w.n1]->RemoveArc(w.la[w.a1]), w.Remove(w.n1, w.a1)));
       Same(w.ln[w.n1]->AppendArc(w.la[w.a1]), w.Append(w.n1, w.a1));
     }},
    {"Connect or UnConnect an arc",
     [](W& w) {
       if (!w.LiveArc(w.a1)) return;
       if (w.pick % 2) return w.la[w.a1]->Connect(), w.Connect(w.a1);
       w.la[w.a1]->UnConnect(), w.UnConnect(w.a1);
     }},
    {"ClearArc or UnConnect a node",
     [](W& w) {
       if (!w.Live(w.n1)) return;
       if (w.pick % 2) return w.ln[w.n1]->ClearArc(), w.mn[w.n1].ring.clear();
       w.ln[w.n1]->UnConnect(), w.UnConnectNode(w.n1);
     }},
    {"Conbine",
     [](W& w) {
       if (!w.Live(w.n1) || !w.Live(w.n2)) return;
       if (kAwaitingFixConbineSelfClears && w.n1 == w.n2) return;
       w.ln[w.n1]->Conbine(w.ln[w.n2]), w.Conbine(w.n1, w.n2);
     }},
    {"FindMesh",
     [](W& w) {
       if (!w.LiveArc(w.a1)) return;
       const std::unique_ptr<ZtGraphPath> path(w.la[w.a1]->FindMesh(w.pick % 2));
       const auto [arcs, start] = w.Mesh(w.a1, w.pick % 2);
       ZT_FUZZ_CHECK(Path::Start(*path) == w.N(start));
       Same(path->GetLength(), static_cast<ZtLong>(arcs.size()));
       size_t k = 0;
       for (ZtGraphArc* const* p = path->GetFirst(); p != nullptr; p = path->GetNext(p), ++k) {
         ZT_FUZZ_CHECK(*p == w.la[arcs[k]]);
       }
     }},
    {"GetArcIn or GetArcOut",  // appended after what the sequence holds
     [](W& w) {
       if (!w.Live(w.n1)) return;
       ZtDynArray<ZtGraphArc*> got;
       got.Append(nullptr);
       const int end = w.pick % 2;
       end ? w.ln[w.n1]->GetArcIn(got) : w.ln[w.n1]->GetArcOut(got);
       ZtLong k = 1;
       for (int a : w.mn[w.n1].ring) {
         if (w.ma[a].end[end] == w.n1) ZT_FUZZ_CHECK(k < got.GetLength() && got[k++] == w.la[a]);
       }
       Same(got.GetLength(), k);
     }},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  return zt::fuzz::PlayAny(data, size, kOps);
}
