// Whole-surface figures: areas, hull lengths, heights, extent, and the points in use.
#include <algorithm>
#include <unordered_set>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/PointHash.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TriangleAreas.h>

inline namespace OrvikDTM {

namespace {

bool isWhole(const TEdge* edge) {
  return edge != nullptr && edge->getStartPoint() != nullptr && edge->getEndPoint() != nullptr;
}

// Calls visit(edge) for every edge in number order.
template <typename Visit>
void forEachEdge(EList* edges, Visit visit) {
  const int count = edges == nullptr ? 0 : edges->getListLen();
  for (int number = 1; number <= count; ++number) {
    const TEdge* edge = edges->findByNum(edges, number);
    if (isWhole(edge)) visit(*edge);
  }
}

// Calls visit(edge) for the edge of every hull entry, in hull order.
template <typename Visit>
void forEachHullEdge(ConvexList* hull, EList* edges, Visit visit) {
  const int count = hull == nullptr || edges == nullptr ? 0 : hull->getListLen();
  for (int number = 1; number <= count; ++number) {
    const TConvex* entry = hull->findByNum(hull, number);
    const TEdge* edge = entry == nullptr ? nullptr : edges->findByNum(edges, entry->getEdgeNo());
    if (isWhole(edge)) visit(*edge);
  }
}

}  // namespace

template <typename Area>
double CEType::sumOverTriangles(Area areaOf) const {
  double sum = 0.0;
  for (int tri = 1; tri <= triangleCount(); ++tri) {
    const TEdge* a = edgeOf(tri, 0);
    const TEdge* b = edgeOf(tri, 1);
    const TEdge* c = edgeOf(tri, 2);
    if (a != nullptr && b != nullptr && c != nullptr) sum += areaOf(*a, *b, *c);
  }
  return sum;
}

double CEType::getArea2D() const {
  return sumOverTriangles([](const TEdge& a, const TEdge& b, const TEdge& c) {
    return detail::planArea(a.getLength(), b.getLength(), c.getLength());
  });
}

double CEType::getArea3D() const {
  return sumOverTriangles([](const TEdge& a, const TEdge& b, const TEdge& c) {
    return detail::spatialArea(a.getLength3D(), b.getLength3D(), c.getLength3D());
  });
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
  forEachEdge(edgeList_, [&](const TEdge& edge) {
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
  forEachEdge(edgeList_, [&](const TEdge& edge) {
    for (TPoint* p : {edge.getStartPoint(), edge.getEndPoint()}) {
      const bool isNew = known.insert(*p).second;
      if (isNew || first) result.push_back(p);  // the first edge's points are taken unchecked
    }
    first = false;
  });
  return result;
}

}  // namespace OrvikDTM
