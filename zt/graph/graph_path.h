// zt/graph/graph_path.h
//
// ZtGraphPath: the list of arcs that ZtGraphArc::FindMesh returns, with the node it starts at.
// The path does not own its arcs; the caller owns the path and deletes it.
//
//   std::unique_ptr<ZtGraphPath> face(arc->FindMesh(0));  // the face left of `arc`, if the
//                                                          // arcs are ordered by angle
//
// FindMesh walks from the arc's chosen end: at every node it leaves by the arc that follows, in
// that node's ring (FindNextArc), the arc it arrived by, and stops when it meets the start arc
// again, from either side (a bridge then stands in the path twice). When it reaches a node with
// no next arc, it also extends the path backwards from the start with FindPreArc, and the start
// node becomes the far end of that extension: the result is an open chain. A walk stops too
// where an arc leads to a null end, and, over rings that do not mirror each other, where it
// would repeat a step it already took. No flag, ring or list is changed.
#ifndef ZT_GRAPH_GRAPH_PATH_H_
#define ZT_GRAPH_GRAPH_PATH_H_

#include "zt/config.h"
#include "zt/containers/dlist.h"
#include "zt/graph/graph.h"

/// Arcs of a mesh in walking order, from m_pStartNode; the arcs are not owned.
class ZT_API ZtGraphPath : public ZtDList<ZtGraphArc*> {
 public:
  ZtGraphPath() : ZtDList<ZtGraphArc*>(0) {}
  ~ZtGraphPath() override;

 protected:
  /// The node the first arc leads away from (null when a walk ended at a null end). A client
  /// reads it from a class derived from ZtGraphPath.
  ZtGraphNode* m_pStartNode = nullptr;

 private:
  friend class ZtGraphArc;
};

#endif  // ZT_GRAPH_GRAPH_PATH_H_
