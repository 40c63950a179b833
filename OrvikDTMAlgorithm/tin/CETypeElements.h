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

// The corner of a triangle that its first edge does not touch: the end of the second edge that is neither of its ends.
inline TPoint& thirdCorner(const TEdge& first, const TEdge& second) {
  // Edges run this way or that as it happens, so the choice is made by arithmetic rather than by jumps.
  TPoint* const ends[2] = {second.getStartPoint(), second.getEndPoint()};
  const TPoint& a = *first.getStartPoint();
  const TPoint& b = *first.getEndPoint();
  const TPoint& start = *ends[0];
  const int isA = static_cast<int>(a.getX() == start.getX()) & static_cast<int>(a.getY() == start.getY());
  const int isB = static_cast<int>(b.getX() == start.getX()) & static_cast<int>(b.getY() == start.getY());
  return *ends[isA | isB];
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
  corners = {first->getStartPoint(), first->getEndPoint(), &detail::thirdCorner(*first, *second)};
  return true;
}

}  // namespace OrvikDTM
