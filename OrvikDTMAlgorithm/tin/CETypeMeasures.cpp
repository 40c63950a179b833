// Whole-surface figures: areas, hull lengths, heights, extent, and the points in use.
#include <algorithm>
#include <unordered_set>

#include <OrvikDTMAlgorithm/tin/CETypeElements.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
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

// The sum of areaOf(a, b, c) over all triangles, a, b and c being lengthOf(start, end) of the three edges. Every length
// is worked out once, in the edges' order, as two triangles share it.
template <typename Length, typename Area>
double CEType::sumOverTriangles(Length lengthOf, Area areaOf) const {
  static constexpr double kNoEdge = -1.0;
  const int edgeCount = edgeList_ == nullptr ? 0 : edgeList_->getListLen();
  std::vector<double> lengths(static_cast<std::size_t>(edgeCount) + 1, kNoEdge);
  forEachEdge(edgeList_, [&](int number, const TEdge& edge) {
    lengths[static_cast<std::size_t>(number)] = lengthOf(*edge.getStartPoint(), *edge.getEndPoint());
  });
  double sum = 0.0;
  for (int tri = 1; tri <= triangleCount(); ++tri) {
    const Triangle* triangle = triangleList_->findByNum(triangleList_, tri);
    if (triangle == nullptr) continue;
    const int* e = triangle->getEno();
    const auto lengthAt = [&lengths](int number) {
      const auto index = static_cast<std::size_t>(static_cast<unsigned>(number));
      return index < lengths.size() ? lengths[index] : kNoEdge;
    };
    const double a = lengthAt(e[0]);
    const double b = lengthAt(e[1]);
    const double c = lengthAt(e[2]);
    if (a != kNoEdge && b != kNoEdge && c != kNoEdge) sum += areaOf(a, b, c);
  }
  return sum;
}

double CEType::getArea2D() const {
  return sumOverTriangles(detail::planDistance, [](double a, double b, double c) { return detail::planArea(a, b, c); });
}

double CEType::getArea3D() const {
  return sumOverTriangles(detail::spatialDistance,
                          [](double a, double b, double c) { return detail::spatialArea(a, b, c); });
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
  bool any = false;
  double lowest = 0.0;
  double highest = 0.0;
  forEachEdge(edgeList_, [&](int /*number*/, const TEdge& edge) {
    for (const TPoint* p : {edge.getStartPoint(), edge.getEndPoint()}) {
      lowest = any ? std::min(lowest, p->getZ()) : p->getZ();
      highest = any ? std::max(highest, p->getZ()) : p->getZ();
      any = true;
    }
  });
  return new double[2]{lowest, highest};
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
