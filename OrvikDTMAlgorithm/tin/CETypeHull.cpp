// The hull as a closed polygon, and whether a point lies within it.
#include <unordered_map>

#include <OrvikDTMAlgorithm/tin/CETypeElements.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/PointHash.h>
#include <OrvikDTMAlgorithm/tin/PointInPolygon.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>

inline namespace OrvikDTM {

namespace {

using PointIndex = std::unordered_map<TPoint, std::size_t, detail::PointHash>;

// The hull's edges, told apart by the points that they join.
struct HullSides {
  std::vector<TPoint> starts;
  std::vector<TPoint> ends;
  PointIndex firstWithStart;
  std::size_t withLength = 0;

  void add(const TPoint& start, const TPoint& end) {
    if (start == end) return;  // a repeat that the construction kept; the ring goes on as if it were not there
    firstWithStart.try_emplace(start, starts.size());
    starts.push_back(start);
    ends.push_back(end);
    if (!start.equals(&end)) ++withLength;
  }
};

}  // namespace

void CEType::initVertexList() {
  constexpr int kFewestNodes = 3;
  if (hullList_ == nullptr || hullList_->getListLen() < kFewestNodes) return;

  HullSides sides;
  for (int number = 1; number <= hullList_->getListLen(); ++number) {
    const TConvex* node = hullList_->findByNum(hullList_, number);
    const TEdge* edge =
        node == nullptr || edgeList_ == nullptr ? nullptr : edgeList_->findByNum(edgeList_, node->getEdgeNo());
    if (!detail::isWhole(edge)) {
      vertexListInvalid_ = 1;
      return;
    }
    sides.add(*edge->getStartPoint(), *edge->getEndPoint());
  }
  vertexListInvalid_ = 1;
  if (sides.starts.empty()) return;

  vertexList_ = {sides.starts[0], sides.ends[0]};
  PointIndex inList{{sides.starts[0], 0}, {sides.ends[0], 1}};
  std::size_t walkedWithLength = sides.starts[0].equals(&sides.ends[0]) ? 0 : 1;
  for (;;) {
    const auto found = sides.firstWithStart.find(vertexList_.back());
    if (found == sides.firstWithStart.end()) return;
    const TPoint& next = sides.ends[found->second];
    if (!next.equals(&vertexList_.back())) ++walkedWithLength;
    if (walkedWithLength > 1 && next.equals(&vertexList_.front())) break;
    if (!inList.try_emplace(next, inList.size()).second) return;
    vertexList_.push_back(next);
  }
  // A ring that leaves hull edges over is one of several islands, or goes around a hole.
  vertexListInvalid_ = walkedWithLength == sides.withLength ? 0 : 1;
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
