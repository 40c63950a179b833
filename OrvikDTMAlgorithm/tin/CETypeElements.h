// How the operations of CEType look up what its lists hold, inline: they do so for every triangle. Private.
#pragma once

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>

inline namespace OrvikDTM {

namespace detail {

// An edge that can be measured; an element that is missing, or misses a point, is passed over by every operation.
inline bool isWhole(const TEdge* edge) {
  return edge != nullptr && edge->getStartPoint() != nullptr && edge->getEndPoint() != nullptr;
}

}  // namespace detail

inline int CEType::triangleCount() const { return triangleList_ == nullptr ? 0 : triangleList_->getListLen(); }

inline TEdge* CEType::edgeOf(int tri, int which) const {
  if (triangleList_ == nullptr || edgeList_ == nullptr) return nullptr;
  const Triangle* triangle = triangleList_->findByNum(triangleList_, tri);
  if (triangle == nullptr) return nullptr;
  TEdge* edge = edgeList_->findByNum(edgeList_, triangle->getEno()[which]);
  return detail::isWhole(edge) ? edge : nullptr;
}

inline bool CEType::cornersOf(int tri, Corners& corners) const {
  const TEdge* first = edgeOf(tri, 0);
  const TEdge* second = edgeOf(tri, 1);
  if (first == nullptr || second == nullptr) return false;
  corners.p1 = first->getStartPoint();
  corners.p2 = first->getEndPoint();
  TPoint* start = second->getStartPoint();
  const bool startIsKnown = corners.p1->equals(start) || corners.p2->equals(start);
  corners.p3 = startIsKnown ? second->getEndPoint() : start;
  return true;
}

}  // namespace OrvikDTM
