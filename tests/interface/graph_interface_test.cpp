// tests/interface/graph_interface_test.cpp
//
// The interface of the graph, the genetic algorithm, the event bus and the tasks, checked row by
// row: exact member-pointer types (so `const`, parameters and results), virtual slots (Itanium
// indices: a virtual destructor takes two), implicit or explicit constructors, field types and
// order, and the members and default arguments that must not exist.
#include <gtest/gtest.h>

#include <tuple>
#include <type_traits>
#include <vector>

#include "tests/support/interface.h"
#include "zt/events/events.h"
#include "zt/ga/population.h"
#include "zt/graph/graph.h"
#include "zt/graph/graph_path.h"
#include "zt/tasks/tasks.h"

namespace {

using zt::test::Ascending;
using zt::test::kExplicitCtor;
using zt::test::kImplicitCtor;
using zt::test::VirtualSlot;
using ArcSeq = ZtDynArrayBase<ZtGraphArc*>;

struct Row {
  const char* name;
  bool ok;
};
#define ROW(...) \
  Row { #__VA_ARGS__, (__VA_ARGS__) }

void Check(const std::vector<Row>& rows) {
  for (const Row& r : rows) EXPECT_TRUE(r.ok) << r.name;
}

// The member-pointer types read better as written than as the formatter spaces them.
// clang-format off

// Probes that reach protected fields and constructors.
struct ArcProbe : ZtGraphArc {
  static bool Fields() {
    return std::is_same_v<decltype(&ArcProbe::m_ends), ZtGraphNode* (ZtGraphArc::*)[2]>;
  }
};
struct NodeProbe : ZtGraphNode {
  static bool Fields() {
    return std::is_same_v<decltype(&NodeProbe::m_arcs), ZtPDList<ZtGraphArc> ZtGraphNode::*> &&
           std::is_same_v<decltype(&NodeProbe::s_pStartNode), ZtGraphNode**>;
  }
};
struct GraphProbe : ZtGraph {
  bool Fields() const {
    return std::is_same_v<decltype(&GraphProbe::m_nodeList), ZtPXList<ZtGraphNode> ZtGraph::*> &&
           std::is_same_v<decltype(&GraphProbe::m_arcList), ZtPXList<ZtGraphArc> ZtGraph::*> &&
           Ascending({&m_nodeList, &m_arcList});
  }
};
struct PathProbe : ZtGraphPath {
  static bool Fields() {
    return std::is_same_v<decltype(&PathProbe::m_pStartNode), ZtGraphNode* ZtGraphPath::*>;
  }
};
struct PopulationProbe : GA_Population {
  bool Fields() const {
    using Long = ZtLong GA_Population::*;
    return std::is_same_v<std::tuple<decltype(&PopulationProbe::m_maxNum),
                                     decltype(&PopulationProbe::m_mutationRatio),
                                     decltype(&PopulationProbe::m_generation)>,
                          std::tuple<Long, Long, Long>> &&
           Ascending({&m_maxNum, &m_mutationRatio, &m_generation});
  }
};
struct EventProbe : ZtEvent {
  EventProbe() : ZtEvent(L"", nullptr, 0) {}
  bool Fields() const {
    return std::is_same_v<decltype(&EventProbe::name), ZtStringW ZtEvent::*> &&
           std::is_same_v<decltype(&EventProbe::data), void* ZtEvent::*> &&
           std::is_same_v<decltype(&EventProbe::type), unsigned int ZtEvent::*> &&
           Ascending({&name, &data, &type});
  }
};
struct ReactorProbe : ZtEventReactor {
  using ZtEventReactor::ZtEventReactor;  // inherited constructors keep `explicit`
  void React(const wchar_t* /*name*/, void* /*data*/) override {}
  static bool Fields() {
    return std::is_same_v<decltype(&ReactorProbe::mask), unsigned int ZtEventReactor::*>;
  }
};
struct TaskProbe : ZtParallelTask {
  using ZtParallelTask::ZtParallelTask;
  void Execute() override {}
};
struct TasksProbe : ZtParallelTasks {
  static bool Fields() {
    return std::is_same_v<decltype(&TasksProbe::tasks),
                          std::vector<ZtParallelTask*> ZtParallelTasks::*>;
  }
};

TEST(GraphInterface, MembersHaveTheirExactTypes) {
  using A = ZtGraphArc;
  using N = ZtGraphNode;
  using G = ZtGraph;
  Check({
      ROW(ZT_HAS(A, operator=, A& (A::*)(const A&))),
      ROW(ZT_HAS(A, GetNode, N* (A::*)(ZtLong))),
      ROW(ZT_HAS(A, SetNode, void (A::*)(ZtLong, N*))),
      ROW(ZT_HAS(A, GetOtherNode, N* (A::*)(N*) const)),
      ROW(ZT_HAS(A, IsValid, bool (A::*)() const)),
      ROW(ZT_HAS(A, IsClosed, bool (A::*)() const)),
      ROW(ZT_HAS(A, Connect, void (A::*)())),
      ROW(ZT_HAS(A, UnConnect, void (A::*)())),
      ROW(ZT_HAS(A, CmpArc, int (A::*)(const A&) const)),
      ROW(ZT_HAS(A, operator==, bool (A::*)(const A&) const)),
      ROW(ZT_HAS(A, operator!=, bool (A::*)(const A&) const)),
      ROW(ZT_HAS(A, operator<, bool (A::*)(const A&) const)),
      ROW(ZT_HAS(A, operator>, bool (A::*)(const A&) const)),
      ROW(ZT_HAS(A, FindMesh, ZtGraphPath* (A::*)(int))),
      ROW(ZT_HAS(N, operator=, N& (N::*)(const N&))),
      ROW(ZT_HAS(N, GetArcNum, ZtLong (N::*)() const)),
      ROW(ZT_HAS(N, IsAloneNode, bool (N::*)() const)),
      ROW(ZT_HAS(N, IsEndNode, bool (N::*)() const)),
      ROW(ZT_HAS(N, GetArc, A* (N::*)(ZtLong) const)),
      ROW(ZT_HAS(N, FindArc, ZtLong (N::*)(A*) const)),
      ROW(ZT_HAS(N, FindNextArc, A* (N::*)(A*))),
      ROW(ZT_HAS(N, FindPreArc, A* (N::*)(A*))),
      ROW(ZT_HAS(N, AppendArc, bool (N::*)(A*))),
      ROW(ZT_HAS(N, RemoveArc, bool (N::*)(A*))),
      ROW(ZT_HAS(N, ClearArc, void (N::*)())),
      ROW(ZT_HAS(N, Conbine, void (N::*)(N*))),
      ROW(ZT_HAS(N, UnConnect, void (N::*)())),
      ROW(ZT_HAS(N, GetArcIn, void (N::*)(ArcSeq&))),
      ROW(ZT_HAS(N, GetArcOut, void (N::*)(ArcSeq&))),
      ROW(ZT_HAS(N, CmpNode, int (N::*)(const N&) const)),
      ROW(ZT_HAS(N, operator==, bool (N::*)(const N&) const)),
      ROW(ZT_HAS(N, operator!=, bool (N::*)(const N&) const)),
      ROW(ZT_HAS(N, operator<, bool (N::*)(const N&) const)),
      ROW(ZT_HAS(N, operator>, bool (N::*)(const N&) const)),
      ROW(ZT_HAS(G, operator=, G& (G::*)(const G&))),
      ROW(ZT_HAS(G, GetNodeNum, ZtLong (G::*)() const)),
      ROW(ZT_HAS(G, GetArcNum, ZtLong (G::*)() const)),
      ROW(ZT_HAS(G, operator[], N* (G::*)(ZtLong))),
      ROW(ZT_HAS(G, operator(), A* (G::*)(ZtLong))),
      ROW(ZT_HAS(G, operator<<, ZtLong (G::*)(N*))),
      ROW(ZT_HAS(G, operator<<, ZtLong (G::*)(A*))),
      ROW(ZT_HAS(G, Create, ZtLong (G::*)(A*))),
      ROW(ZT_HAS(G, Find, ZtLong (G::*)(const N&))),
      ROW(ZT_HAS(G, Find, ZtLong (G::*)(const A&))),
      ROW(ZT_HAS(G, CheckNode, ZtLong (G::*)(ZtLong, ArcSeq*))),
      ROW(ZT_HAS(G, CheckNode, ZtLong (G::*)(N*, ArcSeq*))),
      ROW(ZT_HAS(G, CheckArc, ZtLong (G::*)(ZtLong))),
      ROW(ZT_HAS(G, CheckArc, ZtLong (G::*)(A*))),
      ROW(ZT_HAS(G, DelNode, void (G::*)(ZtLong))),
      ROW(ZT_HAS(G, DelArc, void (G::*)(ZtLong))),
      ROW(ZT_HAS(G, ClearNode, void (G::*)())),
      ROW(ZT_HAS(G, ClearArc, void (G::*)())),
      ROW(ZT_HAS(G, UnConnect, void (G::*)())),
      ROW(ZT_HAS(G, Reset, void (G::*)())),
      ROW(std::is_base_of_v<ZtBitData, A> && std::is_base_of_v<ZtBitData, N>),
      ROW(std::is_base_of_v<ZtDList<A*>, ZtGraphPath>),
      ROW(!std::is_polymorphic_v<ZtEvent>),
  });
}

TEST(GraphInterface, GaEventsAndTasksMembersHaveTheirExactTypes) {
  using Gene = GA_Gene;
  using Ind = GA_Individual;
  using Pop = GA_Population;
  using E = ZtEvent;
  using R = ZtEventReactor;
  using T = ZtParallelTask;
  using Ts = ZtParallelTasks;
  Check({
      ROW(ZT_HAS(Gene, operator=, Gene& (Gene::*)(const Gene&))),
      ROW(ZT_HAS(Gene, Clone, Gene* (Gene::*)() const)),
      ROW(ZT_HAS(Gene, operator==, bool (Gene::*)(const Gene&) const)),
      ROW(ZT_HAS(Gene, operator!=, bool (Gene::*)(const Gene&) const)),
      ROW(ZT_HAS(Gene, operator<, bool (Gene::*)(const Gene&) const)),
      ROW(ZT_HAS(Gene, operator>, bool (Gene::*)(const Gene&) const)),
      ROW(ZT_HAS(Ind, operator=, Ind& (Ind::*)(const Ind&))),
      ROW(ZT_HAS(Ind, New, Ind* (Ind::*)() const)),
      ROW(ZT_HAS(Ind, Initialize, void (Ind::*)())),
      ROW(ZT_HAS(Ind, Mutation, Ind* (Ind::*)() const)),
      ROW(ZT_HAS(Ind, Multiply, ZtLong (Ind::*)(const Ind&, Pop&) const)),
      ROW(ZT_HAS(Ind, operator<, bool (Ind::*)(const Ind&) const)),
      ROW(ZT_HAS(Ind, operator>, bool (Ind::*)(const Ind&) const)),
      ROW(ZT_HAS(Pop, operator=, Pop& (Pop::*)(const Pop&))),
      ROW(ZT_HAS(Pop, SetMaxNum, void (Pop::*)(ZtLong))),
      ROW(ZT_HAS(Pop, GetMaxNum, ZtLong (Pop::*)() const)),
      ROW(ZT_HAS(Pop, SetMutationRatio, void (Pop::*)(ZtLong))),
      ROW(ZT_HAS(Pop, GetMutationRatio, ZtLong (Pop::*)())),
      ROW(ZT_HAS(Pop, Append, void (Pop::*)(Ind*))),
      ROW(ZT_HAS(Pop, IsContinue, bool (Pop::*)())),
      ROW(ZT_HAS(Pop, Step, void (Pop::*)())),
      ROW(ZT_HAS(Pop, Evolve, void (Pop::*)())),
      ROW(std::is_base_of_v<ZtDynPArray<Gene>, Ind> && std::is_base_of_v<ZtPDList<Ind>, Pop>),
      ROW(ZT_HAS(E, operator=, E& (E::*)(const E&))),
      ROW(ZT_HAS(E, operator==, bool (E::*)(const E&) const)),
      ROW(ZT_HAS(E, operator!=, bool (E::*)(const E&) const)),
      ROW(ZT_HAS(E, operator<, bool (E::*)(const E&) const)),
      ROW(ZT_HAS(E, operator>, bool (E::*)(const E&) const)),
      ROW(ZT_HAS(R, operator=, R& (R::*)(const R&))),
      ROW(ZT_HAS(R, React, void (R::*)(const wchar_t*, void*))),
      ROW(std::is_same_v<decltype(&ZtRegisterReactor), void (*)(R*)>),
      ROW(std::is_same_v<decltype(&ZtUnRegisterReactor), void (*)(R*)>),
      ROW(std::is_same_v<decltype(&ZtSendEvent), void (*)(const wchar_t*, void*, unsigned int)>),
      ROW(std::is_same_v<decltype(&ZtPostEvent), void (*)(const wchar_t*, void*, unsigned int)>),
      ROW(std::is_same_v<decltype(&ZtProcessPostEvents), void (*)()>),
      ROW(ZT_HAS(T, operator=, T& (T::*)(const T&))),
      ROW(ZT_HAS(T, run, void (T::*)())),
      ROW(ZT_HAS(T, Execute, void (T::*)())),
      ROW(ZT_HAS(T, Start, bool (T::*)())),
      ROW(ZT_HAS(T, Wait, void (T::*)())),
      ROW(ZT_HAS(Ts, operator=, Ts& (Ts::*)(const Ts&))),
      ROW(ZT_HAS(Ts, AddTask, void (Ts::*)(T*))),
      ROW(ZT_HAS(Ts, GetLength, int (Ts::*)() const)),
      ROW(ZT_HAS(Ts, operator[], T* (Ts::*)(int) const)),
      ROW(ZT_HAS(Ts, Run, void (Ts::*)())),
      ROW(ZT_HAS(Ts, Clear, void (Ts::*)())),
      ROW(std::is_same_v<decltype(&IsOS64), int (*)()>),
      ROW(std::is_same_v<decltype(&IsWow64), int (*)()>),
      ROW(std::is_same_v<decltype(&CheckGpu), bool (*)()>),
  });
}

// clang-format on

TEST(GraphInterface, VirtualSlotsComeInTheirOrder) {
  // After the base's entries: ZtBitData's destructor (0, 1), ZtDynPArray's 29, ZtPDList's 32.
  Check({
      ROW(VirtualSlot(&ZtGraphArc::CmpArc) == 2),
      ROW(VirtualSlot(&ZtGraphNode::CmpNode) == 2),
      ROW(VirtualSlot(&GA_Gene::Clone) == 0),
      ROW(VirtualSlot(&GA_Individual::New) == 29),
      ROW(VirtualSlot(&GA_Individual::Initialize) == 30),
      ROW(VirtualSlot(&GA_Individual::Mutation) == 31),
      ROW(VirtualSlot(&GA_Individual::Multiply) == 32),
      ROW(VirtualSlot(&GA_Individual::operator<) == 33),
      ROW(VirtualSlot(&GA_Individual::operator>) == 34),
      ROW(VirtualSlot(&GA_Population::IsContinue) == 32),
      ROW(VirtualSlot(&GA_Population::Step) == 33),
      ROW(VirtualSlot(&GA_Population::Evolve) == 34),
      ROW(VirtualSlot(&ZtEventReactor::React) == 0),
      ROW(VirtualSlot(&ZtParallelTask::run) == 0),
      ROW(VirtualSlot(&ZtParallelTask::Execute) == 1),
      ROW(std::has_virtual_destructor_v<ZtGraphArc> && std::has_virtual_destructor_v<ZtGraphNode>),
      ROW(std::has_virtual_destructor_v<ZtGraph> && std::has_virtual_destructor_v<ZtGraphPath>),
      ROW(std::has_virtual_destructor_v<GA_Gene> && std::has_virtual_destructor_v<GA_Population>),
      ROW(std::has_virtual_destructor_v<ZtParallelTasks>),
      ROW(!std::has_virtual_destructor_v<ZtEventReactor>),
      ROW(std::is_abstract_v<ZtEventReactor> && std::is_abstract_v<ZtParallelTask>),
  });
}

TEST(GraphInterface, ConstructorsFieldsAndAbsentMembers) {
  Check({
      ROW(kImplicitCtor<ZtGraphArc> && kImplicitCtor<ZtGraphArc, ZtGraphNode*>),
      ROW(kImplicitCtor<ZtGraphArc, ZtGraphNode*, ZtGraphNode*>),
      ROW(kImplicitCtor<ZtGraphArc, const ZtGraphArc&>),
      ROW(kImplicitCtor<ZtGraphNode> && kImplicitCtor<ZtGraphNode, const ZtGraphNode&>),
      ROW(kImplicitCtor<ZtGraph> && kImplicitCtor<ZtGraph, const ZtGraph&>),
      ROW(kImplicitCtor<GA_Gene> && kImplicitCtor<GA_Gene, const GA_Gene&>),
      ROW(kImplicitCtor<GA_Individual> && kImplicitCtor<GA_Individual, const GA_Individual&>),
      ROW(kImplicitCtor<GA_Population> && kImplicitCtor<GA_Population, const GA_Population&>),
      ROW(kImplicitCtor<ZtEvent, const wchar_t*, void*, unsigned int>),
      ROW(kImplicitCtor<ZtEvent, const ZtEvent&>),
      ROW(kImplicitCtor<ReactorProbe> && kImplicitCtor<ReactorProbe, unsigned int>),
      ROW(!kExplicitCtor<ReactorProbe, unsigned int>),
      ROW(kImplicitCtor<TaskProbe>),
      ROW(kImplicitCtor<ZtParallelTasks> && kImplicitCtor<ZtParallelTasks, const ZtParallelTasks&>),
      ROW(ArcProbe::Fields() && NodeProbe::Fields() && PathProbe::Fields()),
      ROW(GraphProbe().Fields() && PopulationProbe().Fields() && EventProbe().Fields()),
      ROW(ReactorProbe::Fields() && TasksProbe::Fields()),
      ROW(!ZT_HAS_NAME(ZtGraphArc, Clone) && !ZT_HAS_NAME(ZtGraphNode, Clone)),
      ROW(!ZT_HAS_NAME(ZtGraphPath, GetStartNode)),
      ROW(!ZT_CALLS(ZtGraph, CheckNode(ZtLong{0}))),
      ROW(!ZT_CALLS(ZtGraph, CheckNode(static_cast<ZtGraphNode*>(nullptr)))),
      ROW(ZT_CALLS(ZtGraphArc, FindMesh(0)) && !ZT_CALLS(ZtGraphArc, FindMesh())),
  });
}

}  // namespace
