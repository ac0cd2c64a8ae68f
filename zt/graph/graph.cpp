#include "zt/graph/graph.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

#include "zt/containers/array.h"  // the explicit instantiations need every member
#include "zt/containers/internal/loans.h"
#include "zt/containers/push_var.h"

template class ZT_INSTANTIATION_API ZtDynArrayBase<ZtGraphArc*>;
template struct ZT_INSTANTIATION_API ZtListNode<ZtGraphArc*>;
template struct ZT_INSTANTIATION_API ZtDListNode<ZtGraphArc*>;
template class ZT_INSTANTIATION_API ZtList<ZtGraphArc*>;
template class ZT_INSTANTIATION_API ZtDList<ZtGraphArc*>;
template class ZT_INSTANTIATION_API ZtPDList<ZtGraphArc>;
template class ZT_INSTANTIATION_API ZtDynArrayBase<ZtListNode<ZtGraphArc*>*>;
template class ZT_INSTANTIATION_API ZtDynArray<ZtListNode<ZtGraphArc*>*>;
template class ZT_INSTANTIATION_API ZtXList<ZtGraphArc*>;
template class ZT_INSTANTIATION_API ZtPXList<ZtGraphArc>;

template class ZT_INSTANTIATION_API ZtDynArrayBase<ZtGraphNode*>;
template struct ZT_INSTANTIATION_API ZtListNode<ZtGraphNode*>;
template struct ZT_INSTANTIATION_API ZtDListNode<ZtGraphNode*>;
template class ZT_INSTANTIATION_API ZtList<ZtGraphNode*>;
template class ZT_INSTANTIATION_API ZtDList<ZtGraphNode*>;
template class ZT_INSTANTIATION_API ZtDynArrayBase<ZtListNode<ZtGraphNode*>*>;
template class ZT_INSTANTIATION_API ZtDynArray<ZtListNode<ZtGraphNode*>*>;
template class ZT_INSTANTIATION_API ZtXList<ZtGraphNode*>;
template class ZT_INSTANTIATION_API ZtPXList<ZtGraphNode>;

ZtGraphNode* ZtGraphNode::s_pStartNode = nullptr;

namespace zt::detail {

// The sign of a - b in units of T, as an int: the address order without the truncation that
// would flip the sign of a far difference.
template <class T>
int AddressOrder(const T* a, const T* b) {
  const auto diff = static_cast<std::int64_t>(reinterpret_cast<std::uintptr_t>(a) -
                                              reinterpret_cast<std::uintptr_t>(b)) /
                    static_cast<std::int64_t>(sizeof(T));
  return static_cast<int>(std::clamp<std::int64_t>(diff, std::numeric_limits<int>::min(),
                                                   std::numeric_limits<int>::max()));
}

// Calls f(element) for every non-null element of a list of pointers.
template <class T, class F>
void ForEach(const ZtDynArrayBase<T*>& list, F f) {
  for (T* const* p = list.GetFirst(); p != nullptr; p = list.GetNext(p)) {
    if (*p != nullptr) f(*p);
  }
}

// The elements of a list of pointers, in order.
template <class T>
std::vector<T*> Elements(const ZtDynArrayBase<T*>& list) {
  std::vector<T*> out;
  out.reserve(static_cast<std::size_t>(list.GetLength()));
  for (T* const* p = list.GetFirst(); p != nullptr; p = list.GetNext(p)) out.push_back(*p);
  return out;
}

// Empties an owning list without destroying an object.
template <class T>
void Forget(ZtPXList<T>& list) {
  for (list.MoveToFirst(); !list.IsOut(); list.MoveToNext()) list.SetCurData(nullptr);
  list.Reset();
}

// Element i through the group index (the cursor moves there), or null when i names none. The
// cursor already on i, or just before it, gets there without a walk.
template <class T>
T* At(ZtPXList<T>& list, ZtLong i) {
  if (!list.IsValidIndex(i)) return nullptr;
  if (i == list.GetCur() + 1) {
    list.MoveToNext();
  } else if (i != list.GetCur()) {
    list.MoveTo(i);
  }
  return list.GetCurData();
}

// Takes the arc off its ends' rings and nulls its ends, then gives it its ends back: disconnected.
void Detach(ZtGraphArc* arc) {
  ZtGraphNode* const ends[2] = {arc->GetNode(0), arc->GetNode(1)};
  arc->UnConnect();
  arc->SetNode(0, ends[0]);
  arc->SetNode(1, ends[1]);
}

}  // namespace zt::detail

// ---- ZtGraphArc --------------------------------------------------------------------------------

ZtGraphArc::~ZtGraphArc() { UnConnect(); }

int ZtGraphArc::CmpArc(const ZtGraphArc& other) const {
  return zt::detail::AddressOrder(this, &other);
}

void ZtGraphArc::Connect() {
  for (ZtGraphNode* n : m_ends) {
    if (n != nullptr) n->AppendArc(this);
  }
}

void ZtGraphArc::UnConnect() {
  for (ZtGraphNode*& n : m_ends) {
    if (n != nullptr) n->RemoveArc(this);
  }
  m_ends[0] = m_ends[1] = nullptr;
}

// ---- ZtGraphNode -------------------------------------------------------------------------------

ZtGraphNode::ZtGraphNode(const ZtGraphNode& src) : ZtBitData(src), m_arcs(0) {
  CopyArcs(src.m_arcs);
}

ZtGraphNode& ZtGraphNode::operator=(const ZtGraphNode& src) {
  if (this != &src) {
    CopyArcs(src.m_arcs);
    ZtBitData::operator=(src);
  }
  return *this;
}

ZtGraphNode::~ZtGraphNode() { UnConnect(); }

void ZtGraphNode::CopyArcs(const ZtDList<ZtGraphArc*>& src) {
  ZtDList<ZtGraphArc*> copy(src);  // pointers only: the arcs are shared, never cloned
  ClearArc();
  m_arcs.Conbine(copy, 0);  // relinks the nodes: cannot fail
}

int ZtGraphNode::CmpNode(const ZtGraphNode& other) const {
  return zt::detail::AddressOrder(this, &other);
}

ZtGraphArc* ZtGraphNode::Neighbour(ZtGraphArc* arc, int step) const {
  // The first element holding `arc`, then its neighbour in the ring: one walk, by element.
  if (m_arcs.GetLength() < 2) return nullptr;
  for (ZtGraphArc* const* p = m_arcs.GetFirst(); p != nullptr; p = m_arcs.GetNext(p)) {
    if (*p != arc) continue;
    ZtGraphArc* const* q = step > 0 ? m_arcs.GetNext(p) : m_arcs.GetPre(p);
    return *(q != nullptr ? q : (step > 0 ? m_arcs.GetFirst() : m_arcs.GetLast()));
  }
  return nullptr;
}

bool ZtGraphNode::AppendArc(ZtGraphArc* arc) {
  const ZtPushVar<ZtGraphNode*> start(s_pStartNode, this);
  return m_arcs.SortInto(arc, false);
}

bool ZtGraphNode::RemoveArc(ZtGraphArc* arc) {
  const ZtLong i = m_arcs.Find(arc, 0, -1);
  if (i == -1) return false;
  m_arcs.TakeOff(i);
  return true;
}

void ZtGraphNode::Conbine(ZtGraphNode* other) {
  if (other == nullptr) return;
  zt::detail::ForEach(other->m_arcs, [this, other](ZtGraphArc* arc) {
    for (ZtLong end = 0; end < 2; ++end) {
      if (arc->GetNode(end) == other) arc->SetNode(end, this);
    }
    AppendArc(arc);  // with other == this every arc is present already
  });
  other->ClearArc();
}

void ZtGraphNode::UnConnect() {
  zt::detail::ForEach(m_arcs, [this](ZtGraphArc* arc) {
    for (ZtLong end = 0; end < 2; ++end) {
      if (arc->GetNode(end) == this) arc->SetNode(end, nullptr);
    }
  });
  ClearArc();
}

void ZtGraphNode::CollectArcs(ZtDynArrayBase<ZtGraphArc*>& out, ZtLong end) const {
  zt::detail::ForEach(m_arcs, [this, &out, end](ZtGraphArc* arc) {
    if (arc->GetNode(end) == this) out.Append(arc);
  });
}

// ---- ZtGraph -----------------------------------------------------------------------------------

ZtGraph::ZtGraph() : m_nodeList(0, 25, 100), m_arcList(0, 25, 100) {}

ZtGraph::ZtGraph(const ZtGraph& src) : ZtGraph() { *this = src; }

ZtGraph& ZtGraph::operator=(const ZtGraph& src) {
  if (this == &src) return *this;
  // What can fail comes first: the new loans and the objects that go.
  const std::vector<ZtGraphNode*> nodes = zt::detail::Elements(src.m_nodeList);
  const std::vector<ZtGraphArc*> arcs = zt::detail::Elements(src.m_arcList);
  auto loans = std::make_unique<zt::detail::Loans>();
  std::vector<ZtGraphNode*> doomedNodes;
  std::vector<ZtGraphArc*> doomedArcs;
  loans->Plan(zt::detail::Elements(m_nodeList), m_loans.get(), nodes, doomedNodes);
  loans->Plan(zt::detail::Elements(m_arcList), m_loans.get(), arcs, doomedArcs);
  // Then the lists forget their pointers, what this graph owned alone is destroyed (each arc
  // leaves its ends' rings, each node its arcs' ends), and src's pointers come in.
  m_loans = std::move(loans);
  zt::detail::Forget(m_nodeList);
  zt::detail::Forget(m_arcList);
  for (ZtGraphArc* arc : doomedArcs) delete arc;
  for (ZtGraphNode* node : doomedNodes) delete node;
  for (ZtGraphNode* node : nodes) m_nodeList.Append(node);
  for (ZtGraphArc* arc : arcs) m_arcList.Append(arc);
  return *this;
}

ZtGraph::~ZtGraph() {
  UnConnectOwn();
  Clear(m_arcList);
  Clear(m_nodeList);
}

bool ZtGraph::IsLoan(const void* obj) const { return zt::detail::Loans::Holds(m_loans, obj); }

template <class T>
void ZtGraph::Dispose(T* obj) {
  if (IsLoan(obj)) {
    m_loans->Forget(obj);
  } else {
    delete obj;
  }
}

template <class T>
void ZtGraph::Clear(ZtPXList<T>& list) {
  if (m_loans != nullptr) {
    for (list.MoveToFirst(); !list.IsOut(); list.MoveToNext()) {
      if (IsLoan(list.GetCurData())) {
        m_loans->Forget(list.GetCurData());
        list.SetCurData(nullptr);
      }
    }
  }
  list.Reset();
}

void ZtGraph::UnConnectOwn() {
  zt::detail::ForEach(m_nodeList, [this](ZtGraphNode* n) {
    if (!IsLoan(n)) n->UnConnect();
  });
  zt::detail::ForEach(m_arcList, [this](ZtGraphArc* a) {
    if (!IsLoan(a)) a->UnConnect();
  });
}

ZtGraphNode* ZtGraph::operator[](ZtLong i) {
  ZT_REPORT_UNLESS(m_nodeList.IsValidIndex(i), "operator[]", "ZtGraph", "index", i);
  return zt::detail::At(m_nodeList, i);
}

ZtGraphArc* ZtGraph::operator()(ZtLong i) {
  ZT_REPORT_UNLESS(m_arcList.IsValidIndex(i), "operator()", "ZtGraph", "index", i);
  return zt::detail::At(m_arcList, i);
}

ZtLong ZtGraph::operator<<(ZtGraphNode* node) {
  ZT_REPORT_UNLESS(node != nullptr, "operator<<", "ZtGraph", "node pointer", 0);
  return Add(node, false);
}

ZtLong ZtGraph::operator<<(ZtGraphArc* arc) {
  ZT_REPORT_UNLESS(arc != nullptr, "operator<<", "ZtGraph", "arc pointer", 0);
  return Add(arc, false);
}

template <class T>
bool ZtGraph::SortIn(ZtPXList<T>& list, T* obj, bool ours) {
  try {
    return list.SortInto(obj, false);
  } catch (...) {
    if (ours) Dispose(obj);
    throw;
  }
}

ZtLong ZtGraph::Add(ZtGraphNode* node, bool ours) {
  if (node == nullptr) return -1;
  const bool placed = SortIn(m_nodeList, node, ours);
  const ZtLong pos = m_nodeList.GetCur();
  ZtGraphNode* present = m_nodeList.GetCurData();
  if (!placed && present != node) {
    present->Conbine(node);
    Dispose(node);
  }
  return pos;
}

ZtLong ZtGraph::Add(ZtGraphArc* arc, bool ours) {
  if (arc == nullptr) return -1;
  const bool placed = SortIn(m_arcList, arc, ours);
  const ZtLong pos = m_arcList.GetCur();
  if (placed) {
    arc->Connect();  // the graph owns the arc from here on, also when this throws
  } else if (m_arcList.GetCurData() != arc) {
    Dispose(arc);
  }
  return pos;
}

ZtLong ZtGraph::Create(ZtGraphArc* arc) {
  if (!ZT_IN_CONTRACT(arc != nullptr, "Create", "ZtGraph", "arc pointer", 0)) return -1;
  ZtGraphNode* const first = arc->GetNode(0);
  for (ZtLong end = 0; end < 2; ++end) {
    ZtGraphNode* n = arc->GetNode(end);
    ZT_REPORT_UNLESS(n != nullptr, "Create", "ZtGraph", "null end", end);
    if (end == 1 && n == first) {
      arc->SetNode(1, arc->GetNode(0));  // the same object, possibly merged away just now
    } else if (n != nullptr) {
      arc->SetNode(end, (*this)[*this << n]);
    }
  }
  return *this << arc;
}

ZtLong ZtGraph::Find(const ZtGraphNode& node) {
  return m_nodeList.BFindDataTo(node, 0, -1) ? m_nodeList.GetCur() : -1;
}

ZtLong ZtGraph::Find(const ZtGraphArc& arc) {
  return m_arcList.BFindDataTo(arc, 0, -1) ? m_arcList.GetCur() : -1;
}

ZtLong ZtGraph::CheckArc(ZtLong i) {
  ZtGraphArc* const arc = m_arcList.IsValidIndex(i) ? m_arcList.TakeOff(i) : nullptr;
  if (!ZT_IN_CONTRACT(arc != nullptr, "CheckArc", "ZtGraph", "index", i)) return -1;
  zt::detail::Detach(arc);
  return Add(arc, true);
}

ZtLong ZtGraph::CheckArc(ZtGraphArc* arc) { return arc != nullptr ? CheckArc(Find(*arc)) : -1; }

ZtLong ZtGraph::CheckNode(ZtLong i, ZtDynArrayBase<ZtGraphArc*>* removed) {
  if (!ZT_IN_CONTRACT(m_nodeList.IsValidIndex(i) && (*this)[i] != nullptr, "CheckNode", "ZtGraph",
                      "index", i)) {
    return -1;
  }
  ZtGraphNode* const node = m_nodeList.GetCurData();
  ZtDList<ZtGraphArc*> arcs(node->m_arcs);  // N's arcs in its order, taken before anything changes
  m_nodeList.TakeOff(i);
  zt::detail::ForEach(arcs, zt::detail::Detach);
  ZtLong k = -1;
  try {
    k = Add(node, true);
  } catch (...) {  // N is gone: the detached arcs must not keep it as an end
    zt::detail::ForEach(arcs, [node](ZtGraphArc* arc) {
      for (ZtLong end = 0; end < 2; ++end) {
        if (arc->GetNode(end) == node) arc->SetNode(end, nullptr);
      }
    });
    throw;
  }
  ZtGraphNode* const survivor = (*this)[k];
  zt::detail::ForEach(arcs, [this, node, survivor, removed](ZtGraphArc* arc) {
    for (ZtLong end = 0; end < 2; ++end) {
      if (arc->GetNode(end) == node) arc->SetNode(end, survivor);
    }
    const ZtLong at = m_arcList.Find(arc, 0, -1);
    if (at != -1) {
      Add(m_arcList.TakeOff(at), true);
    } else if (removed != nullptr) {
      removed->Append(arc);
    }
  });
  return k;
}

ZtLong ZtGraph::CheckNode(ZtGraphNode* node, ZtDynArrayBase<ZtGraphArc*>* removed) {
  return node != nullptr ? CheckNode(Find(*node), removed) : -1;
}

template <class T>
void ZtGraph::Delete(ZtPXList<T>& list, ZtLong i) {
  T* const obj = zt::detail::At(list, i);
  if (obj != nullptr && IsLoan(obj)) {
    m_loans->Forget(obj);
    list.TakeOffCur();
  } else {
    list.Del(i);  // the owning DelCur destroys the object
  }
}

void ZtGraph::DelNode(ZtLong i) { Delete(m_nodeList, i); }

void ZtGraph::DelArc(ZtLong i) { Delete(m_arcList, i); }

void ZtGraph::ClearNode() { Clear(m_nodeList); }

void ZtGraph::ClearArc() { Clear(m_arcList); }

void ZtGraph::UnConnect() {
  zt::detail::ForEach(m_nodeList, [](ZtGraphNode* n) { n->UnConnect(); });
  zt::detail::ForEach(m_arcList, [](ZtGraphArc* a) { a->UnConnect(); });
}

void ZtGraph::Reset() {
  UnConnectOwn();
  Clear(m_nodeList);
  Clear(m_arcList);
}
