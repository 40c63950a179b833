// The hull as a closed polygon, and whether a point lies within it.
#include <unordered_map>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/PointHash.h>
#include <OrvikDTMAlgorithm/tin/PointInPolygon.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>

inline namespace OrvikDTM {

namespace {

using PointIndex = std::unordered_map<TPoint, std::size_t, detail::PointHash>;

}  // namespace

void CEType::initVertexList() {
  constexpr int kFewestNodes = 3;
  if (hullList_ == nullptr || hullList_->getListLen() < kFewestNodes) return;

  const int count = hullList_->getListLen();
  std::vector<TPoint> ends;
  std::vector<TPoint> starts;
  PointIndex firstWithStart;
  for (int number = 1; number <= count; ++number) {
    TConvex* node = hullList_->findByNum(hullList_, number);
    const TEdge* edge =
        node == nullptr || edgeList_ == nullptr ? nullptr : edgeList_->findByNum(edgeList_, node->getEdgeNo());
    if (edge == nullptr || edge->getStartPoint() == nullptr || edge->getEndPoint() == nullptr) {
      vertexListInvalid_ = 1;
      return;
    }
    starts.push_back(*edge->getStartPoint());
    ends.push_back(*edge->getEndPoint());
    firstWithStart.try_emplace(starts.back(), starts.size() - 1);
  }

  vertexList_ = {starts[0], ends[0]};
  PointIndex inList{{starts[0], 0}, {ends[0], 1}};
  for (;;) {
    const auto found = firstWithStart.find(vertexList_.back());
    if (found == firstWithStart.end()) break;
    const TPoint& next = ends[found->second];
    if (next.equals(&vertexList_.front())) {
      // A ring that leaves hull edges over is one of several islands, or goes around a hole.
      vertexListInvalid_ = vertexList_.size() == static_cast<std::size_t>(count) ? 0 : 1;
      return;
    }
    if (!inList.try_emplace(next, inList.size()).second) break;
    vertexList_.push_back(next);
  }
  vertexListInvalid_ = 1;
}

bool CEType::containPoint(double x, double y) {
  if (vertexList_.empty() && vertexListInvalid_ == 0) initVertexList();
  if (vertexListInvalid_ != 0) return true;
  if (vertexList_.size() < 3) return false;
  detail::EvenOddTest test({x, y});
  const TPoint* previous = &vertexList_.back();
  for (const TPoint& vertex : vertexList_) {
    if (test.side(detail::positionOf(*previous), detail::positionOf(vertex))) return true;
    previous = &vertex;
  }
  return test.inside();
}

}  // namespace OrvikDTM
