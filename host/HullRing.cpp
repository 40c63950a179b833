#include "HullRing.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "Polygon.h"

namespace {

using Position = std::pair<double, double>;
using EdgesByStart = std::multimap<Position, const TEdge*>;

Position positionOf(const TPoint& p) { return {p.getX(), p.getY()}; }

EdgesByStart hullEdges(const CEType& tin) {
  EdgesByStart edges;
  const ConvexList* const hull = tin.getCList();
  for (int i = 1; i <= hull->getListLen(); ++i) {
    const TEdge* const edge = tin.getEList()->findByNum(tin.getEList(), hull->findByNum(hull, i)->getEdgeNo());
    if (edge == nullptr || edge->getStartPoint() == nullptr || edge->getEndPoint() == nullptr) continue;
    edges.emplace(positionOf(*edge->getStartPoint()), edge);
  }
  return edges;
}

// Follows the hull with the TIN on its left, and takes the edges off the list. Where several leave a point, any will
// do: all of them are followed in the end.
std::vector<const TPoint*> takeRing(EdgesByStart& edges) {
  std::vector<const TPoint*> ring;
  for (auto next = edges.begin(); next != edges.end();) {
    const TEdge* const edge = next->second;
    ring.push_back(edge->getStartPoint());
    edges.erase(next);
    next = edges.find(positionOf(*edge->getEndPoint()));
  }
  return ring;
}

double areaOf(const std::vector<const TPoint*>& ring) {
  Polygon polygon;
  for (const TPoint* p : ring) polygon.push_back({p->getX(), p->getY()});
  return signedArea(polygon);
}

}  // namespace

HullRing largestHullRing(const CEType& tin) {
  EdgesByStart edges = hullEdges(tin);
  HullRing hull;
  double largest = 0.0;
  while (!edges.empty()) {
    std::vector<const TPoint*> ring = takeRing(edges);
    const double area = areaOf(ring);
    if (!hull.points.empty() || area <= largest) ++hull.others;
    if (area <= largest) continue;
    largest = area;
    hull.points = std::move(ring);
  }
  return hull;
}
