// zt/graph/graph.h
//
// ZtGraphArc, ZtGraphNode, ZtGraph: a graph of nodes joined by directed arcs, meant to be derived
// from. Order and identity come from the virtual CmpArc / CmpNode (address order by default);
// ==, !=, < and > go through them, so every list operation uses a client's override.
//
//   ZtGraph g;
//   g.Create(new ZtGraphArc(new ZtGraphNode, new ZtGraphNode));  // two nodes, one arc, connected
//
// An arc leaves its end 0 and enters its end 1 and is *connected* when it stands in the arc list
// of each non-null end. A node keeps its arcs in a ring sorted by CmpArc while s_pStartNode names
// that node (AppendArc sets it for the insertion and restores it afterwards, exceptions
// included), so a client can order arcs around a node, for instance by angle; FindNextArc and
// FindPreArc read that ring. A node never owns or destroys its arcs. Connect/UnConnect change
// both sides of a connection; SetNode, RemoveArc and ClearArc change one side only, and an arc
// whose end names a node that does not list it keeps that pointer when the node is destroyed.
//
// The graph owns every node and arc handed to it: operator<< and Create adopt, Del*, Clear*,
// Reset and the destructor destroy. Adding a node equal to a present one merges its arcs into the
// present one and destroys it; adding an arc equal to a present one destroys it. Adding an object
// that is itself already at its place in the graph changes nothing and answers its position. A
// null object is refused (-1). Adding an arc sorts it into the arc list, then connects it: when
// the connection throws (a client CmpArc, or std::bad_alloc) the arc stays in the graph, owned by
// it, connected to the ends reached so far; when the sorted insertion throws, the arc stays the
// caller's (CheckArc, whose arc is the graph's, destroys it then). Destroying a node nulls the
// ends that name it of the arcs in its ring only; an arc missing from its end's ring keeps that
// pointer.
//
// Copies share objects. Copying a graph copies the two lists of pointers: the copy and its source
// name the same nodes and arcs, and no end pointer is remapped. A copy owns only what is added to
// it later; the objects it received stay with its source. Whatever would destroy one of those in
// the copy (DelNode, DelArc, Clear*, Reset, a duplicate found by Check*, the destructor) drops it
// from the copy instead, and the copy's Reset and destructor disconnect only the objects they
// destroy, so the source's rings stay as they were. Assignment destroys the objects this graph
// owns that src does not hold, keeps owning those that src holds too, and borrows the rest of
// src's. Once the source has destroyed an object, the copy still lists it and may only be
// cleared, reset, assigned or destroyed. Each graph keeps this record itself.
//
// Positional access (operator[], operator()) goes through the lists' group index, so reading
// every node or arc by position takes linear time; it moves the list's cursor. The checked build
// (zt/checked.h) reports a position that names nothing (also in CheckArc, CheckNode, GetArc) and a
// null object or arc end given to operator<< or Create.
#ifndef ZT_GRAPH_GRAPH_H_
#define ZT_GRAPH_GRAPH_H_

#include <memory>

#include "zt/bits/bit_data.h"
#include "zt/checked.h"
#include "zt/config.h"
#include "zt/containers/dlist.h"
#include "zt/containers/dyn_array.h"
#include "zt/containers/dyn_array_base.h"
#include "zt/containers/list.h"
#include "zt/containers/pdlist.h"
#include "zt/containers/pxlist.h"
#include "zt/containers/xlist.h"

class ZtGraphNode;
class ZtGraphPath;

namespace zt::detail {
class Loans;
}  // namespace zt::detail

/// A directed arc from end 0 to end 1. The ends are not owned and may be null.
class ZT_API ZtGraphArc : public ZtBitData {
 public:
  /// Flags 0 and the given ends; does not connect.
  // NOLINTNEXTLINE(google-explicit-constructor): the interface's constructor
  ZtGraphArc(ZtGraphNode* from = nullptr, ZtGraphNode* to = nullptr) : m_ends{from, to} {}
  /// Copies the flags and both end pointers; does not connect.
  ZtGraphArc(const ZtGraphArc& src) = default;
  /// Copies the flags and both end pointers; no list or connection changes.
  ZtGraphArc& operator=(const ZtGraphArc& src) = default;
  /// UnConnect(): the arc leaves the lists of both its ends.
  ~ZtGraphArc() override;

  /// Address order (the sign of this minus other); override to order arcs by a key.
  virtual int CmpArc(const ZtGraphArc& other) const;

  /// End 1 when i is not 0, else end 0.
  ZtGraphNode* GetNode(ZtLong i) { return m_ends[i != 0 ? 1 : 0]; }
  /// Sets one end; no list changes.
  void SetNode(ZtLong i, ZtGraphNode* n) { m_ends[i != 0 ? 1 : 0] = n; }
  /// End 1 when n is end 0, otherwise end 0 (also when n is neither end).
  ZtGraphNode* GetOtherNode(ZtGraphNode* n) const { return n == m_ends[0] ? m_ends[1] : m_ends[0]; }
  bool IsValid() const { return m_ends[0] != nullptr && m_ends[1] != nullptr; }
  /// A loop: both ends are the same node (or both are null).
  bool IsClosed() const { return m_ends[0] == m_ends[1]; }
  /// AppendArc(this) on end 0, then end 1, where non-null (a loop is listed once).
  void Connect();
  /// RemoveArc(this) on end 0, then end 1, where non-null; then both ends become null.
  void UnConnect();

  /// The mesh on one side of this arc (side 0 starts at end 0, any other value at end 1); the
  /// caller owns the path. See graph_path.h.
  ZtGraphPath* FindMesh(int side);

  bool operator==(const ZtGraphArc& o) const { return CmpArc(o) == 0; }
  bool operator!=(const ZtGraphArc& o) const { return CmpArc(o) != 0; }
  bool operator<(const ZtGraphArc& o) const { return CmpArc(o) < 0; }
  bool operator>(const ZtGraphArc& o) const { return CmpArc(o) > 0; }

 protected:
  ZtGraphNode* m_ends[2];
};

extern template class ZT_API ZtDynArrayBase<ZtGraphArc*>;
extern template struct ZT_API ZtListNode<ZtGraphArc*>;
extern template struct ZT_API ZtDListNode<ZtGraphArc*>;
extern template class ZT_API ZtList<ZtGraphArc*>;
extern template class ZT_API ZtDList<ZtGraphArc*>;
extern template class ZT_API ZtPDList<ZtGraphArc>;
extern template class ZT_API ZtDynArrayBase<ZtListNode<ZtGraphArc*>*>;
extern template class ZT_API ZtDynArray<ZtListNode<ZtGraphArc*>*>;
extern template class ZT_API ZtXList<ZtGraphArc*>;
extern template class ZT_API ZtPXList<ZtGraphArc>;

/// A node with the ring of arcs that touch it, sorted by CmpArc as seen from this node.
class ZT_API ZtGraphNode : public ZtBitData {
 public:
  ZtGraphNode() : m_arcs(0) {}
  /// Copies the flags and lists the same arcs; their ends still name the source node.
  ZtGraphNode(const ZtGraphNode& src);
  /// Copies the flags and lists src's arcs instead of this node's; no arc's ends change.
  ZtGraphNode& operator=(const ZtGraphNode& src);
  /// UnConnect(): arcs' ends naming this node become null.
  ~ZtGraphNode() override;

  /// Address order (the sign of this minus other); override to order nodes by a key.
  virtual int CmpNode(const ZtGraphNode& other) const;

  ZtLong GetArcNum() const { return m_arcs.GetLength(); }
  bool IsAloneNode() const { return m_arcs.GetLength() == 0; }
  bool IsEndNode() const { return m_arcs.GetLength() == 1; }
  /// The arc at position i of the ring, or null when i names none.
  ZtGraphArc* GetArc(ZtLong i) const {
    return ZT_IN_CONTRACT(m_arcs.IsValidIndex(i), "GetArc", "ZtGraphNode", "index", i)
               ? m_arcs.GetAt(i)
               : nullptr;
  }
  /// Position of that very arc (by address), or -1.
  ZtLong FindArc(ZtGraphArc* arc) const { return m_arcs.Find(arc, 0, -1); }
  /// The arc after `arc` in the ring; null with fewer than 2 arcs or when `arc` is absent.
  ZtGraphArc* FindNextArc(ZtGraphArc* arc) { return Neighbour(arc, 1); }
  /// The arc before `arc` in the ring; null with fewer than 2 arcs or when `arc` is absent.
  ZtGraphArc* FindPreArc(ZtGraphArc* arc) { return Neighbour(arc, -1); }
  /// Sorts the arc into the ring with s_pStartNode naming this node; false (nothing changes) when
  /// an equal arc is listed already or arc is null. The arc's ends are not looked at.
  bool AppendArc(ZtGraphArc* arc);
  /// Takes that very arc off the ring, neither destroying it nor changing its ends.
  bool RemoveArc(ZtGraphArc* arc);
  /// Empties the ring without destroying arcs or changing their ends.
  void ClearArc() { m_arcs.ZtDList<ZtGraphArc*>::Reset(); }
  /// Moves every arc of `other` onto this node: ends naming other name this node, the arcs are
  /// sorted in (an arc between the two becomes a loop) and other's ring is emptied. Other is not
  /// destroyed. Conbine(this) therefore empties this node's ring; null does nothing.
  void Conbine(ZtGraphNode* other);
  /// Ends of listed arcs that name this node become null, then the ring is emptied; the arcs
  /// stay in the rings of their other ends.
  void UnConnect();
  /// Appends, in ring order, every arc entering this node; `out` is not emptied first.
  void GetArcIn(ZtDynArrayBase<ZtGraphArc*>& out) { CollectArcs(out, 1); }
  /// Appends, in ring order, every arc leaving this node (a loop is both in and out).
  void GetArcOut(ZtDynArrayBase<ZtGraphArc*>& out) { CollectArcs(out, 0); }

  bool operator==(const ZtGraphNode& o) const { return CmpNode(o) == 0; }
  bool operator!=(const ZtGraphNode& o) const { return CmpNode(o) != 0; }
  bool operator<(const ZtGraphNode& o) const { return CmpNode(o) < 0; }
  bool operator>(const ZtGraphNode& o) const { return CmpNode(o) > 0; }

 protected:
  /// The arcs, never destroyed through this list (it only uses the owning list's sorted insert).
  ZtPDList<ZtGraphArc> m_arcs;
  /// While a node sorts an arc into its ring, that node; otherwise what it was before (null).
  static ZtGraphNode* s_pStartNode;

 private:
  friend class ZtGraph;

  ZtGraphArc* Neighbour(ZtGraphArc* arc, int step) const;
  void CollectArcs(ZtDynArrayBase<ZtGraphArc*>& out, ZtLong end) const;
  /// Replaces the ring by src's arc pointers; on bad_alloc the ring is unchanged.
  void CopyArcs(const ZtDList<ZtGraphArc*>& src);
};

extern template class ZT_API ZtDynArrayBase<ZtGraphNode*>;
extern template struct ZT_API ZtListNode<ZtGraphNode*>;
extern template struct ZT_API ZtDListNode<ZtGraphNode*>;
extern template class ZT_API ZtList<ZtGraphNode*>;
extern template class ZT_API ZtDList<ZtGraphNode*>;
extern template class ZT_API ZtDynArrayBase<ZtListNode<ZtGraphNode*>*>;
extern template class ZT_API ZtDynArray<ZtListNode<ZtGraphNode*>*>;
extern template class ZT_API ZtXList<ZtGraphNode*>;
extern template class ZT_API ZtPXList<ZtGraphNode>;

/// The owner of all nodes and arcs, each kept sorted without duplicates.
class ZT_API ZtGraph {
 public:
  ZtGraph();
  /// Lists src's nodes and arcs without owning them (see the file comment).
  ZtGraph(const ZtGraph& src);
  /// Lists src's nodes and arcs instead of its own (see the file comment).
  ZtGraph& operator=(const ZtGraph& src);
  /// UnConnect(), then every arc is destroyed, then every node (a copy: only its own objects).
  virtual ~ZtGraph();

  ZtLong GetNodeNum() const { return m_nodeList.GetLength(); }
  ZtLong GetArcNum() const { return m_arcList.GetLength(); }
  /// Node at position i (the node list's cursor moves there), or null when i names none.
  ZtGraphNode* operator[](ZtLong i);
  /// Arc at position i (the arc list's cursor moves there), or null when i names none.
  ZtGraphArc* operator()(ZtLong i);

  /// Adopts a node and returns its position; an equal node already present takes over its arcs
  /// and the new one is destroyed (the present one's position is returned).
  ZtLong operator<<(ZtGraphNode* node);
  /// Adopts and connects an arc and returns its position; when an equal arc is present the new
  /// one is destroyed and the present one's position is returned.
  ZtLong operator<<(ZtGraphArc* arc);
  /// Adds the arc's non-null ends as nodes (pointing the arc at the surviving node when one was
  /// merged), then the arc; returns the arc's position. Equal ends collapse into a loop.
  ZtLong Create(ZtGraphArc* arc);
  /// Binary search by CmpNode / CmpArc (the list's BFindDataTo over the whole list): the
  /// position of an equal element, with the list's cursor on it, or -1.
  ZtLong Find(const ZtGraphNode& node);
  ZtLong Find(const ZtGraphArc& arc);

  /// Re-sorts node i after its key changed: its arcs are detached (ends kept), the node is added
  /// again (possibly merging into an equal node K, which destroys it), the detached arcs' ends
  /// naming it are pointed at K, and those arcs that are in the graph are re-added (reconnected,
  /// or destroyed as duplicates); the others go to `removed` when it is not null. Returns the
  /// node's new position, or -1 when i names no node.
  ZtLong CheckNode(ZtLong i, ZtDynArrayBase<ZtGraphArc*>* removed);
  /// CheckNode(Find(*node), removed): the position of the node equal to `node` is re-sorted,
  /// whichever object stands there (-1 when Find meets none, or for null).
  ZtLong CheckNode(ZtGraphNode* node, ZtDynArrayBase<ZtGraphArc*>* removed);
  /// Re-sorts arc i after its key changed: it is taken off, disconnected (ends kept) and added
  /// again (reconnected, or destroyed when an equal arc is now present). Returns the result of
  /// that addition, or -1 when i names no arc.
  ZtLong CheckArc(ZtLong i);
  /// CheckArc(Find(*arc)), as for CheckNode.
  ZtLong CheckArc(ZtGraphArc* arc);

  /// Destroys node i; the arcs in its ring lose their ends that named it.
  void DelNode(ZtLong i);
  /// Destroys arc i (it leaves the rings of its ends).
  void DelArc(ZtLong i);
  /// Destroys every node; the arcs in their rings lose the ends that named them.
  void ClearNode();
  /// Destroys every arc.
  void ClearArc();
  /// Every node's UnConnect, then every arc's: no node keeps an arc, no arc an end. The objects
  /// stay in the graph.
  void UnConnect();
  /// UnConnect(), then destroys every node, then every arc.
  void Reset();

 protected:
  ZtPXList<ZtGraphNode> m_nodeList;
  ZtPXList<ZtGraphArc> m_arcList;

 private:
  bool IsLoan(const void* obj) const;
  /// Destroys obj, or drops it from the loans when it is one.
  template <class T>
  void Dispose(T* obj);
  /// Empties `list`, destroying its objects except the loans, which are forgotten.
  template <class T>
  void Clear(ZtPXList<T>& list);
  /// The list's positional delete; a loan is forgotten instead of destroyed.
  template <class T>
  void Delete(ZtPXList<T>& list, ZtLong i);
  /// Every node's and arc's UnConnect, except the loans'.
  void UnConnectOwn();
  /// The list's SortInto without duplicates; when it throws, obj is disposed of if `ours`.
  template <class T>
  bool SortIn(ZtPXList<T>& list, T* obj, bool ours);
  /// operator<< for a node or an arc; `ours` when the graph already owned it (Check*): if its
  /// sorted insertion throws, it is disposed of instead of left with the caller.
  ZtLong Add(ZtGraphNode* node, bool ours);
  ZtLong Add(ZtGraphArc* arc, bool ours);

  std::unique_ptr<zt::detail::Loans> m_loans;  ///< objects received by copying: not owned
};

#endif  // ZT_GRAPH_GRAPH_H_
