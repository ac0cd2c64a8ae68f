#include "zt/graph/graph.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "zt/containers/array.h"  // the explicit instantiations need every member
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

// Adds obj to the graph, which adopts it (or destroys it as a duplicate); obj is destroyed here
// only when the addition throws and leaves it with the caller.
template <class T>
ZtLong HandOver(ZtGraph& graph, std::unique_ptr<T> obj) {
  const ZtLong pos = graph << obj.get();
  static_cast<void>(obj.release());
  return pos;
}

}  // namespace zt::detail

// ---- ZtGraphArc --------------------------------------------------------------------------------

ZtGraphArc::~ZtGraphArc() { UnConnect(); }

int ZtGraphArc::CmpArc(const ZtGraphArc& other) const {
  return zt::detail::AddressOrder(this, &other);
}

ZtGraphArc* ZtGraphArc::Clone() const { return new ZtGraphArc(*this); }

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

ZtGraphNode* ZtGraphNode::Clone() const { return new ZtGraphNode(*this); }

ZtGraphArc* ZtGraphNode::Neighbour(ZtGraphArc* arc, int step) const {
  const std::int64_t count = m_arcs.GetLength();
  if (count < 2) return nullptr;
  const ZtLong p = m_arcs.Find(arc, 0, -1);
  if (p == -1) return nullptr;
  return m_arcs.GetAt(static_cast<ZtLong>((p + step + count) % count));
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
  if (other == nullptr || other == this) return;
  zt::detail::ForEach(other->m_arcs, [this, other](ZtGraphArc* arc) {
    for (ZtLong end = 0; end < 2; ++end) {
      if (arc->GetNode(end) == other) arc->SetNode(end, this);
    }
    AppendArc(arc);
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

ZtGraph::ZtGraph(const ZtGraph& src) : ZtGraph() { CopyFrom(src); }

ZtGraph& ZtGraph::operator=(const ZtGraph& src) {
  if (this != &src) {
    Reset();
    CopyFrom(src);
  }
  return *this;
}

ZtGraph::~ZtGraph() {
  UnConnect();
  m_arcList.Reset();
  m_nodeList.Reset();
}

void ZtGraph::CopyFrom(const ZtGraph& src) {
  std::unordered_map<const ZtGraphNode*, ZtGraphNode*> clones;
  clones.reserve(static_cast<std::size_t>(src.GetNodeNum()));
  zt::detail::ForEach(src.m_nodeList, [this, &clones](ZtGraphNode* node) {
    ZtGraphNode*& slot = clones[node];
    std::unique_ptr<ZtGraphNode> clone(ZtCloner<ZtGraphNode>::Clone(*node));
    if (clone == nullptr) return;
    clone->ClearArc();  // a cloned node lists the source's arcs
    slot = (*this)[zt::detail::HandOver(*this, std::move(clone))];
  });
  zt::detail::ForEach(src.m_arcList, [this, &clones](ZtGraphArc* arc) {
    std::unique_ptr<ZtGraphArc> clone(ZtCloner<ZtGraphArc>::Clone(*arc));
    if (clone == nullptr) return;
    for (ZtLong end = 0; end < 2; ++end) {
      const auto it = clones.find(clone->GetNode(end));
      clone->SetNode(end, it != clones.end() ? it->second : nullptr);
    }
    zt::detail::HandOver(*this, std::move(clone));
  });
}

ZtLong ZtGraph::operator<<(ZtGraphNode* node) {
  if (node == nullptr) return -1;
  if (m_nodeList.SortInto(node, false)) return m_nodeList.GetCur();
  const ZtLong pos = m_nodeList.GetCur();
  ZtGraphNode* present = m_nodeList.GetCurData();
  if (present != node) {
    present->Conbine(node);
    delete node;
  }
  return pos;
}

ZtLong ZtGraph::operator<<(ZtGraphArc* arc) {
  if (arc == nullptr) return -1;
  if (m_arcList.SortInto(arc, false)) {
    const ZtLong pos = m_arcList.GetCur();
    try {
      arc->Connect();
    } catch (...) {  // undo: the graph as it was, the arc back to the caller, ends kept
      for (ZtLong end = 0; end < 2; ++end) {
        if (arc->GetNode(end) != nullptr) arc->GetNode(end)->RemoveArc(arc);
      }
      m_arcList.TakeOff(pos);
      throw;
    }
    return pos;
  }
  const ZtLong pos = m_arcList.GetCur();
  if (m_arcList.GetCurData() != arc) delete arc;
  return pos;
}

ZtLong ZtGraph::Create(ZtGraphArc* arc) {
  if (arc == nullptr) return -1;
  ZtGraphNode* const first = arc->GetNode(0);
  for (ZtLong end = 0; end < 2; ++end) {
    ZtGraphNode* n = arc->GetNode(end);
    if (end == 1 && n == first) {
      arc->SetNode(1, arc->GetNode(0));  // the same object, possibly merged away just now
    } else if (n != nullptr) {
      arc->SetNode(end, (*this)[*this << n]);
    }
  }
  return *this << arc;
}

ZtLong ZtGraph::Readd(ZtGraphArc* arc) {
  try {
    return *this << arc;
  } catch (...) {
    delete arc;
    throw;
  }
}

ZtLong ZtGraph::CheckArc(ZtLong i) {
  if (!m_arcList.IsValidIndex(i)) return -1;
  ZtGraphArc* const arc = m_arcList.TakeOff(i);
  if (arc == nullptr) return -1;
  ZtGraphNode* const ends[2] = {arc->GetNode(0), arc->GetNode(1)};
  arc->UnConnect();
  arc->SetNode(0, ends[0]);
  arc->SetNode(1, ends[1]);
  return Readd(arc);
}

ZtLong ZtGraph::CheckArc(ZtGraphArc* arc) {
  if (arc == nullptr) return -1;
  ZtLong i = Find(*arc);
  if (i == -1 || m_arcList.GetAt(i) != arc) i = m_arcList.Find(arc, 0, -1);
  return CheckArc(i);
}

ZtLong ZtGraph::CheckNode(ZtLong i, ZtDynArrayBase<ZtGraphArc*>* removed) {
  if (!m_nodeList.IsValidIndex(i) || m_nodeList.GetAt(i) == nullptr) return -1;
  ZtGraphNode* const node = m_nodeList.GetAt(i);
  const ZtDList<ZtGraphArc*> arcs(node->m_arcs);  // copied before anything changes
  m_nodeList.TakeOff(i);
  zt::detail::ForEach(arcs, [](ZtGraphArc* arc) {
    ZtGraphNode* const ends[2] = {arc->GetNode(0), arc->GetNode(1)};
    arc->UnConnect();
    arc->SetNode(0, ends[0]);
    arc->SetNode(1, ends[1]);
  });
  ZtLong k = -1;
  try {
    k = *this << node;
  } catch (...) {
    DropEnds([node](const ZtGraphNode* end) { return end == node; });
    delete node;
    throw;
  }
  ZtGraphNode* const survivor = (*this)[k];
  const auto rename = [node, survivor](ZtGraphArc* arc) {
    for (ZtLong end = 0; end < 2; ++end) {
      if (arc->GetNode(end) == node) arc->SetNode(end, survivor);
    }
  };
  if (survivor != node) zt::detail::ForEach(m_arcList, rename);  // node was merged away
  zt::detail::ForEach(arcs, rename);
  zt::detail::ForEach(arcs, [this, removed](ZtGraphArc* arc) {
    const ZtLong at = m_arcList.Find(arc, 0, -1);
    if (at != -1) {
      Readd(m_arcList.TakeOff(at));
    } else if (removed != nullptr) {
      removed->Append(arc);
    }
  });
  return k;
}

ZtLong ZtGraph::CheckNode(ZtGraphNode* node, ZtDynArrayBase<ZtGraphArc*>* removed) {
  if (node == nullptr) return -1;
  ZtLong i = Find(*node);
  if (i == -1 || m_nodeList.GetAt(i) != node) i = m_nodeList.Find(node, 0, -1);
  return CheckNode(i, removed);
}

template <class Pred>
void ZtGraph::DropEnds(Pred doomed) {
  zt::detail::ForEach(m_arcList, [&doomed](ZtGraphArc* arc) {
    for (ZtLong end = 0; end < 2; ++end) {
      if (arc->GetNode(end) != nullptr && doomed(arc->GetNode(end))) arc->SetNode(end, nullptr);
    }
  });
}

void ZtGraph::DelNode(ZtLong i) {
  const ZtGraphNode* const node = (*this)[i];
  if (node == nullptr) return;
  DropEnds([node](const ZtGraphNode* end) { return end == node; });
  m_nodeList.Del(i);
}

void ZtGraph::ClearNode() {
  std::vector<const ZtGraphNode*> nodes;
  nodes.reserve(static_cast<std::size_t>(GetNodeNum()));
  zt::detail::ForEach(m_nodeList, [&nodes](const ZtGraphNode* n) { nodes.push_back(n); });
  const std::less<const ZtGraphNode*> before;
  std::sort(nodes.begin(), nodes.end(), before);
  DropEnds([&nodes, before](const ZtGraphNode* end) {
    return std::binary_search(nodes.begin(), nodes.end(), end, before);
  });
  m_nodeList.Reset();
}

void ZtGraph::UnConnect() {
  zt::detail::ForEach(m_nodeList, [](ZtGraphNode* n) { n->UnConnect(); });
  zt::detail::ForEach(m_arcList, [](ZtGraphArc* a) { a->UnConnect(); });
}

void ZtGraph::Reset() {
  UnConnect();
  m_nodeList.Reset();
  m_arcList.Reset();
}
