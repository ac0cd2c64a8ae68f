#include "zt/graph/graph_path.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <unordered_set>
#include <utility>

namespace {

// One step of a walk: the node it stands on and the arc it turns from. A walk over rings that do
// not mirror each other may cycle without meeting its start arc; it stops at a repeated step.
// Faces are mostly short: the first steps are kept in place and searched in turn, and only a
// long walk moves them into a hash set.
class Steps {
 public:
  /// False when (node, arc) was taken before.
  bool Take(const ZtGraphNode* node, const ZtGraphArc* arc) {
    const Step step{node, arc};
    if (m_taken.empty()) {
      if (std::find(m_first.begin(), m_first.begin() + m_count, step) !=
          m_first.begin() + m_count) {
        return false;
      }
      if (m_count < m_first.size()) {
        m_first[m_count++] = step;
        return true;
      }
      m_taken.insert(m_first.begin(), m_first.end());
    }
    return m_taken.insert(step).second;
  }

 private:
  using Step = std::pair<const ZtGraphNode*, const ZtGraphArc*>;
  struct Hash {
    std::size_t operator()(const Step& s) const {
      return std::hash<const void*>()(s.first) * 31 + std::hash<const void*>()(s.second);
    }
  };
  std::array<Step, 16> m_first{};
  std::size_t m_count = 0;
  std::unordered_set<Step, Hash> m_taken;
};

}  // namespace

ZtGraphPath::~ZtGraphPath() = default;

ZtGraphPath* ZtGraphArc::FindMesh(int side) {
  auto path = std::make_unique<ZtGraphPath>();
  ZtGraphNode* const start = GetNode(side != 0 ? 1 : 0);
  path->m_pStartNode = start;

  // Forward: leave every node by the arc after the one we came by.
  Steps forward;
  ZtGraphNode* n = start;
  ZtGraphArc* a = this;
  do {
    path->Append(a);
    n = a->GetOtherNode(n);
    a = n != nullptr ? n->FindNextArc(a) : nullptr;
    if (a != nullptr && a != this && !forward.Take(n, a)) a = nullptr;
  } while (a != nullptr && a != this);
  if (a == this) return path.release();

  // Open chain: extend backwards from the start by the arcs before.
  Steps backward;
  n = start;
  a = this;
  for (;;) {
    ZtGraphArc* const pre = n != nullptr ? n->FindPreArc(a) : nullptr;
    if (pre == nullptr || !backward.Take(n, pre)) break;
    a = pre;
    path->InsertHead(a);
    n = a->GetOtherNode(n);
  }
  path->m_pStartNode = n;
  return path.release();
}
