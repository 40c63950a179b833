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

// Calls visit(number, edge) for every edge in number order.
template <typename Visit>
void forEachEdge(const EList* edges, Visit visit) {
  const int count = edges == nullptr ? 0 : edges->getListLen();
  for (int number = 1; number <= count; ++number) {
    if (const TEdge* ahead = edges->findByNum(edges, number + detail::kPrefetchAhead)) {
      detail::prefetch(ahead->getStartPoint());
      detail::prefetch(ahead->getEndPoint());
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

void CEType::getAreas(double* plan, double* spatial) const {
  // Every length is worked out once, in the edges' order, as two triangles share it.
  struct Lengths {
    double plan;
    double spatial;
  };
  constexpr double kNoEdge = -1.0;
  const int edgeCount = edgeList_ == nullptr ? 0 : edgeList_->getListLen();
  auto lengths = detail::largeVector<Lengths>(static_cast<std::size_t>(edgeCount) + 1, {kNoEdge, kNoEdge});
  forEachEdge(edgeList_, [&lengths](int number, const TEdge& edge) {
    const TPoint& start = *edge.getStartPoint();
    const TPoint& end = *edge.getEndPoint();
    lengths[static_cast<std::size_t>(number)] = {detail::planDistance(start, end), detail::spatialDistance(start, end)};
  });
  const auto lengthsOf = [&lengths](int number) -> const Lengths& {
    const auto index = static_cast<std::size_t>(static_cast<unsigned>(number));
    return lengths[index < lengths.size() ? index : 0];
  };
  *plan = 0.0;
  *spatial = 0.0;
  for (int tri = 1; tri <= triangleCount(); ++tri) {
    const Triangle* triangle = triangleList_->findByNum(triangleList_, tri);
    if (triangle == nullptr) continue;
    const int* e = triangle->getEno();
    const Lengths& a = lengthsOf(e[0]);
    const Lengths& b = lengthsOf(e[1]);
    const Lengths& c = lengthsOf(e[2]);
    if (a.plan == kNoEdge || b.plan == kNoEdge || c.plan == kNoEdge) continue;
    *plan += detail::planArea(a.plan, b.plan, c.plan);
    *spatial += detail::spatialArea(a.spatial, b.spatial, c.spatial);
  }
}

double CEType::getArea2D() const {
  double plan = 0.0;
  double spatial = 0.0;
  getAreas(&plan, &spatial);
  return plan;
}

double CEType::getArea3D() const {
  double plan = 0.0;
  double spatial = 0.0;
  getAreas(&plan, &spatial);
  return spatial;
}

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
  double lowest = std::numeric_limits<double>::infinity();
  double highest = -lowest;
  bool any = false;
  forEachEdge(edgeList_, [&](int /*number*/, const TEdge& edge) {
    lowest = std::min({lowest, edge.getStartPoint()->getZ(), edge.getEndPoint()->getZ()});
    highest = std::max({highest, edge.getStartPoint()->getZ(), edge.getEndPoint()->getZ()});
    any = true;
  });
  return any ? new double[2]{lowest, highest} : new double[2]{0.0, 0.0};
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
      const bool isNew = known.insert(*p).second;
      if (isNew || first) result.push_back(p);  // the first edge's points are taken unchecked
    }
    first = false;
  });
  return result;
}

}  // namespace OrvikDTM
