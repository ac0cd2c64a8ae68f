// tests/concurrency/objects_test.cpp
//
// Distinct objects on distinct threads: four threads each build and work their own containers,
// strings, streams, bit arrays, graph, population and task sets, copies included, and each must
// end with the digest that the same work gives on one thread. Built as its own program, without
// the tests' counting operator new, so that a ThreadSanitizer run sees the library alone.
//
// What the library shares across the process is serialised here as any client must: sorting arcs
// into a node sets the process-wide ZtGraphNode::s_pStartNode, and the genetic algorithm draws from
// the process-wide std::rand.
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <mutex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "zt/bits/bit_array.h"
#include "zt/checked.h"
#include "zt/containers/dlist.h"
#include "zt/containers/dyn_array.h"
#include "zt/containers/dyn_parray.h"
#include "zt/containers/pdlist.h"
#include "zt/containers/xlist.h"
#include "zt/ga/population.h"
#include "zt/graph/graph.h"
#include "zt/graph/graph_path.h"
#include "zt/streams/dyn_array_stream.h"
#include "zt/streams/dyn_array_stream_ex.h"
#include "zt/tasks/tasks.h"
#include "zt/text/string.h"

namespace {

// The mixed operations include calls outside the contracts, which the library ignores; the
// checked build reports them, and this program lets them go on.
[[maybe_unused]] const bool g_contractsIgnored =
    (zt::SetContractHandler([](const zt::ContractViolation& /*v*/) {}), true);

std::mutex g_startNode;  // held while arcs are sorted into nodes (Connect, operator<<, Create)
std::mutex g_rand;       // held from std::srand to the end of Evolve

// A small generator of the test's own, so that the threads draw nothing from shared state.
struct Lcg {
  unsigned s;
  int Next(int n) { return static_cast<int>((s = s * 1103515245u + 12345u) >> 16) % n; }
};

template <class S>
void Put(std::ostream& out, const ZtDynArrayBase<S>& s) {
  for (const S* p = s.GetFirst(); p != nullptr; p = s.GetNext(p)) out << *p << ',';
  out << ';';
}

void Containers(Lcg& g, std::ostream& out) {
  ZtDynArray<int> a;
  ZtDList<int> d;
  ZtXList<int> x(0, 3);
  ZtDynPArray<int> pa;
  ZtPDList<int> pd;
  for (int i = 0; i < 300; ++i) {
    const int v = g.Next(100);
    a.Append(v), d.InsertHead(v), x.Insert(g.Next(i + 1), v);
    pa.Append(new int(v)), pd.SortInto(new int(v), true);
    if (g.Next(7) == 0) a.Del(g.Next(i + 1)), d.Rotate(0, d.GetLength() / 2), pa.FindDataDel(v);
  }
  ZtDynArray<int> ac(a);
  ac.Sort(true), d.Sort(false), x.Sort(true), pa.Sort(true);
  ZtDList<int> dc;
  dc = d;
  dc.ReverseList();
  ZtDynPArray<int> pac(pa);
  ZtPDList<int> pdc(pd);
  pdc.FindDataDel(3);
  Put(out, a), Put(out, ac), Put(out, dc), Put(out, x);
  for (ZtLong i = 0; i < pac.GetLength(); ++i) out << pac.GetPData(i) << ',';
  out << pdc.GetLength() << ' ' << pd.GetLength() << ' ' << ac.BFind(50) << ';';
}

void Texts(Lcg& g, std::ostream& out) {
  ZtStringA s;
  for (int i = 0; i < 200; ++i) s << static_cast<char>('a' + g.Next(4)) << g.Next(50);
  ZtStringA t(s);
  t.Replace("a1", "<A>"), t.MakeUpper(), t.Reverse();
  const ZtStringW w(static_cast<const char*>(t));
  ZtStringW u;
  u.Format(L"%d|%s|%.3f", static_cast<int>(w.Length()), static_cast<const wchar_t*>(w), 1.0 / 3);
  const ZtStringA back(static_cast<const wchar_t*>(u));
  out << static_cast<const char*>(back) << s.Find("b7") << ';';
}

template <class Stream>
void Streams(Lcg& g, Stream& s, std::ostream& out) {
  for (int i = 0; i < 400; ++i) {
    s << static_cast<ZtLong>(g.Next(1000)) << static_cast<double>(g.Next(9)) / 4;
  }
  Stream copy(s);
  copy.MoveToFirst();
  double sum = 0;
  for (int i = 0; i < 400; ++i) {
    ZtLong n = 0;
    double d = 0;
    copy >> n >> d;
    sum += static_cast<double>(n) * d;
  }
  out << s.GetLength() << ' ' << sum << ';';
}

void Bits(Lcg& g, std::ostream& out) {
  ZtBitArray a(200, 2);
  for (int i = 0; i < 100; ++i) a.SetValue(g.Next(200), static_cast<char>(g.Next(4)));
  ZtBitArray b(a);
  b.Reset(g.Next(400)), b.SetUnitSize(4);
  ZtBit2dArray grid(12, 9, 1);
  grid.SetValue(g.Next(12), g.Next(9), 1);
  ZtBit2dArray copy(1, 1, 1);
  copy = grid;
  for (ZtLong i = 0; i < b.GetLength(); ++i) out << b.GetValue(i);
  out << static_cast<int>(a) << ' ' << copy(3, 4) << ';';
}

// Nodes on a grid, arcs ordered by key alone: the rings, and so the meshes, do not depend on
// where the objects happen to lie in memory.
struct Spot : ZtGraphNode {
  explicit Spot(int k) : key(k) {}
  int CmpNode(const ZtGraphNode& o) const override { return key - static_cast<const Spot&>(o).key; }
  int key;
};
struct Link : ZtGraphArc {
  Link(int a, int b, int k) : ZtGraphArc(new Spot(a), new Spot(b)), key(k) {}
  int CmpArc(const ZtGraphArc& o) const override { return key - static_cast<const Link&>(o).key; }
  int key;
};

void Graph(Lcg& g, std::ostream& out) {
  ZtGraph graph;
  {
    const std::lock_guard<std::mutex> lock(g_startNode);
    for (int i = 0; i < 60; ++i) graph.Create(new Link(g.Next(20), g.Next(20), g.Next(80)));
    graph.DelNode(g.Next(static_cast<int>(graph.GetNodeNum())));
  }
  for (ZtLong i = 0; i < graph.GetArcNum(); ++i) {
    const std::unique_ptr<ZtGraphPath> mesh(graph(i)->FindMesh(static_cast<int>(i % 2)));
    out << mesh->GetLength() << ',';
  }
  out << graph.GetNodeNum() << ';';
}

struct Gene : GA_Gene {
  explicit Gene(int v) : v(v) {}
  GA_Gene* Clone() const override { return new Gene(v); }
  int v;
};
struct Candidate : GA_Individual {
  GA_Individual* New() const override { return new Candidate; }
  void Initialize() override {
    fitness = 0;
    for (ZtLong i = 0; i < GetLength(); ++i) fitness += static_cast<const Gene*>(GetAt(i))->v;
  }
  GA_Individual* Mutation() const override {
    auto* m = new Candidate;
    for (ZtLong i = 0; i < GetLength(); ++i) {
      m->ZtDynPArray::Append(new Gene(static_cast<const Gene*>(GetAt(i))->v ^ 1));
    }
    return m->Initialize(), m;
  }
  bool operator<(const GA_Individual& o) const override {
    return fitness < static_cast<const Candidate&>(o).fitness;
  }
  bool operator>(const GA_Individual& o) const override {
    return fitness > static_cast<const Candidate&>(o).fitness;
  }
  int fitness = 0;
};

void Evolution(Lcg& g, std::ostream& out) {
  GA_Population population;
  population.SetMaxNum(30);
  for (int i = 0; i < 30; ++i) {
    auto* c = new Candidate;
    for (int k = 0; k < 8; ++k) c->ZtDynPArray::Append(new Gene(g.Next(2)));
    c->Initialize(), population.Append(c);
  }
  {
    const std::lock_guard<std::mutex> lock(g_rand);
    std::srand(static_cast<unsigned>(g.Next(1000)));
    for (int i = 0; i < 5; ++i) population.Evolve();
  }
  for (ZtLong i = 0; i < population.GetLength(); ++i) {
    out << static_cast<const Candidate&>(population.GetPData(i)).fitness << ',';
  }
  out << ';';
}

struct Sum : ZtParallelTask {
  Sum(unsigned long* total, int v) : total(total), v(v) {}
  void Execute() override { *total = *total * 31 + static_cast<unsigned long>(v); }
  unsigned long* total;
  int v;
};

void Tasks(Lcg& g, std::ostream& out) {
  unsigned long total = 0;
  ZtParallelTasks set;
  for (int i = 0; i < 50; ++i) set.AddTask(new Sum(&total, g.Next(10)));
  set.Run();
  {
    // Copies share the tasks, which stay with `set`: run them through the copies before `set`
    // deletes them.
    ZtParallelTasks copy(set);
    ZtParallelTasks other;
    other = copy;
    copy.Run(), copy.Clear(), other.Run(), set.Clear(), other.Clear();
  }
  out << total << ';';
}

std::string Work(unsigned seed) {
  Lcg g{seed};
  std::ostringstream out;
  ZtDynArrayStream array;
  ZtDynArrayStreamEx blocks(64);
  Containers(g, out), Texts(g, out), Streams(g, array, out), Streams(g, blocks, out);
  Bits(g, out), Graph(g, out), Evolution(g, out), Tasks(g, out);
  return out.str();
}

TEST(Concurrency, FourThreadsEachWithTheirOwnObjectsMatchOneThread) {
  constexpr int kThreads = 4;
  for (unsigned round = 0; round < 3; ++round) {
    std::vector<std::string> alone, together(kThreads);
    for (unsigned t = 0; t < kThreads; ++t) alone.push_back(Work(round * kThreads + t + 1));
    std::vector<std::thread> threads;
    for (unsigned t = 0; t < kThreads; ++t) {
      threads.emplace_back([&together, round, t] { together[t] = Work(round * kThreads + t + 1); });
    }
    for (std::thread& th : threads) th.join();
    for (int t = 0; t < kThreads; ++t) EXPECT_EQ(together[t], alone[t]) << "thread " << t;
  }
}

}  // namespace
