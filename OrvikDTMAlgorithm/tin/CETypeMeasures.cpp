// Whole-surface figures: areas, hull lengths, heights, extent, and the points in use.
#include <algorithm>
#include <limits>
#include <unordered_set>

#include <OrvikDTMAlgorithm/tin/CETypeElements.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/LargeArrays.h>
#include <OrvikDTMAlgorithm/tin/PointHash.h>
#include <OrvikDTMAlgorithm/tin/Prefetch.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>
#include <OrvikDTMAlgorithm/tin/TriangleAreas.h>

inline namespace OrvikDTM {

namespace {

// The lowest and the highest of the heights added, those that are NaN left out; 0 of none, NaN when all are that.
class HeightRange {
 public:
  void add(double z1, double z2) {
    lowest_ = std::min({lowest_, z1, z2});
    highest_ = std::max({highest_, z1, z2});
    any_ = true;
  }
  double lowest() const { return result(lowest_); }
  double highest() const { return result(highest_); }

 private:
  double result(double extreme) const {
    if (!any_) return 0.0;
    return lowest_ > highest_ ? std::numeric_limits<double>::quiet_NaN() : extreme;
  }

  double lowest_ = std::numeric_limits<double>::infinity();
  double highest_ = -std::numeric_limits<double>::infinity();
  bool any_ = false;
};

// Calls visit(number, edge) for every edge in number order.
template <typename Visit>
void forEachEdge(const EList* edges, Visit visit) {
  const int count = edges == nullptr ? 0 : edges->getListLen();
  for (int number = 1; number <= count; ++number) {
    if (const TEdge* ahead = edges->findByNum(edges, number + detail::kPrefetchAhead)) {
      detail::prefetchWhole(ahead->getStartPoint());
      detail::prefetchWhole(ahead->getEndPoint());
    }
    const TEdge* edge = edges->findByNum(edges, number);
    if (detail::isWhole(edge)) visit(number, *edge);
  }
}

// Calls visit(edge) for the edge of every hull entry, in hull order.
template <typename Visit>
void forEachHullEdge(const ConvexList* hull, const EList* edges, Visit visit) {
  const int count = hull == nullptr || edges == nullptr ? 0 : hull->getListLen();
  for (int number = 1; number <= count; ++number) {
    const TConvex* entry = hull->findByNum(hull, number);
    const TEdge* edge = entry == nullptr ? nullptr : edges->findByNum(edges, entry->getEdgeNo());
    if (detail::isWhole(edge)) visit(*edge);
  }
}

}  // namespace

TINMeasures CEType::getMeasures() const {
  // Every length is worked out once, in the edges' order, as two triangles share it.
  using detail::InPlanAndSpace;
  static constexpr InPlanAndSpace kNoEdge{{-1.0, -1.0}};
  const auto edgeCount = static_cast<std::size_t>(edgeList_ == nullptr ? 0 : edgeList_->getListLen());
  std::vector<InPlanAndSpace> lengths;  // of edge number i at i - 1
  detail::reserveLarge(lengths, edgeCount);
  HeightRange heights;
  forEachEdge(edgeList_, [&lengths, &heights](int number, const TEdge& edge) {
    lengths.resize(static_cast<std::size_t>(number - 1), kNoEdge);  // those between that are missing
    lengths.push_back(detail::lengthsOf(edge));
    heights.add(edge.getStartPoint()->getZ(), edge.getEndPoint()->getZ());
  });
  const auto lengthsOfNumber = [&lengths](int number) -> const InPlanAndSpace& {
    const std::size_t index = static_cast<unsigned>(number) - 1u;
    return index < lengths.size() ? lengths[index] : kNoEdge;
  };

  TINMeasures measures;
  measures.lowest = heights.lowest();
  measures.highest = heights.highest();
  for (int tri = 1; tri <= triangleCount(); ++tri) {
    if (const Triangle* ahead = triangleList_->findByNum(triangleList_, tri + detail::kPrefetchAhead)) {
      for (const int number : {ahead->getEno()[0], ahead->getEno()[1], ahead->getEno()[2]}) {
        detail::prefetch(&lengthsOfNumber(number));
      }
    }
    const Triangle* triangle = triangleList_->findByNum(triangleList_, tri);
    if (triangle == nullptr) continue;
    const int* e = triangle->getEno();
    const InPlanAndSpace& a = lengthsOfNumber(e[0]);
    const InPlanAndSpace& b = lengthsOfNumber(e[1]);
    const InPlanAndSpace& c = lengthsOfNumber(e[2]);
    if (a.of[0] == kNoEdge.of[0] || b.of[0] == kNoEdge.of[0] || c.of[0] == kNoEdge.of[0]) continue;
    const InPlanAndSpace areas = detail::areasOf(a, b, c);
    measures.area2D += areas.of[0];
    measures.area3D += areas.of[1];
  }
  measures.length2D = getTotalLength2D();
  measures.length3D = getTotalLength3D();
  return measures;
}

double CEType::getArea2D() const { return getMeasures().area2D; }

double CEType::getArea3D() const { return getMeasures().area3D; }

double CEType::getTotalLength2D() const {
  double sum = 0.0;
  forEachHullEdge(hullList_, edgeList_, [&sum](const TEdge& edge) { sum += edge.getLength(); });
  return sum;
}

double CEType::getTotalLength3D() const {
  double sum = 0.0;
  forEachHullEdge(hullList_, edgeList_, [&sum](const TEdge& edge) { sum += edge.getLength3D(); });
  return sum;
}

double* CEType::getMinMaxHeight() const {
  HeightRange heights;
  forEachEdge(edgeList_, [&heights](int /*number*/, const TEdge& edge) {
    heights.add(edge.getStartPoint()->getZ(), edge.getEndPoint()->getZ());
  });
  return new double[2]{heights.lowest(), heights.highest()};
}

std::vector<double> CEType::getRangeXY() const {
  bool any = false;
  double maxY = 0.0;
  double minY = 0.0;
  double maxX = 0.0;
  double minX = 0.0;
  forEachHullEdge(hullList_, edgeList_, [&](const TEdge& edge) {
    const TPoint& p = *edge.getStartPoint();
    if (!any) {
      maxY = minY = p.getY();
      maxX = minX = p.getX();
      any = true;
    }
    maxY = std::max(maxY, p.getY());
    minY = std::min(minY, p.getY());
    maxX = std::max(maxX, p.getX());
    minX = std::min(minX, p.getX());
  });
  return {maxY, minY, maxX, minX};
}

std::vector<TPoint*> CEType::getOriginalList() const {
  std::vector<TPoint*> result;
  std::unordered_set<TPoint, detail::PointHash> known;
  bool first = true;
  forEachEdge(edgeList_, [&](int /*number*/, const TEdge& edge) {
    for (TPoint* p : {edge.getStartPoint(), edge.getEndPoint()}) {
      // A point that does not equal itself repeats nothing.
      const bool isNew = !(*p == *p) || known.insert(*p).second;
      if (isNew || first) result.push_back(p);  // the first edge's points are taken unchecked
    }
    first = false;
  });
  return result;
}

}  // namespace OrvikDTM
