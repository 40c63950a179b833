#include <algorithm>
#include <memory>
#include <utility>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/FlipTests.h>
#include <OrvikDTMAlgorithm/tin/Flips.h>
#include <OrvikDTMAlgorithm/tin/Normalise.h>
#include <OrvikDTMAlgorithm/tin/Publish.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/Sweep.h>

inline namespace OrvikDTM {

int Surface::MAXPOINTS = 100000;
int Surface::MAXEDGES = 3000000;
int Surface::MAXTRANGLES = 600000;
int Surface::FLAG = 0;
int Surface::COMPAREUNSHIFTED = 0;

namespace {

using detail::Number;
using detail::Position;

// Brings points and positions into sweep order; false when there is none.
bool orderForSweep(std::vector<TPoint*>& points, std::vector<Position>& positions) {
  const std::vector<Number> order = detail::sweepOrder(positions);
  if (order.empty()) return false;
  std::vector<TPoint*> orderedPoints;
  std::vector<Position> orderedPositions;
  orderedPoints.reserve(order.size());
  orderedPositions.reserve(order.size());
  for (const Number i : order) {
    orderedPoints.push_back(points[i]);
    orderedPositions.push_back(positions[i]);
  }
  points.swap(orderedPoints);
  positions.swap(orderedPositions);
  return true;
}

// Takes every point that an edge uses back to where it was surveyed.
void shiftBack(const detail::Mesh& mesh, const Position& origin, const std::vector<TPoint*>& points) {
  const auto restore = [&](Number i) {
    points[i]->setX(mesh.points[i].x + origin.x);
    points[i]->setY(mesh.points[i].y + origin.y);
  };
  for (const detail::MeshEdge& edge : mesh.edges) {
    if (&edge == &mesh.edges.front()) continue;  // entry 0 is no edge
    restore(edge.start);
    restore(edge.end);
  }
}

}  // namespace

CEType* Surface::optimizeTIN(std::vector<TPoint*>& points) {
  if (points.empty()) return nullptr;
  detail::NormalisedPoints normalised = detail::normalise(points, COMPAREUNSHIFTED != 0);
  const auto count = static_cast<int>(normalised.points.size());
  MAXPOINTS = count;
  if (!orderForSweep(normalised.points, normalised.positions)) return detail::emptyTIN();

  detail::Mesh mesh;
  mesh.points = std::move(normalised.positions);
  const Number fanEnd = detail::startFan(mesh);
  if (fanEnd == 0) return detail::emptyTIN();
  FLAG = static_cast<int>(fanEnd);
  detail::sweep(mesh, fanEnd);
  detail::flipToDelaunay(mesh);
  shiftBack(mesh, normalised.origin, normalised.points);
  return detail::publishNew(mesh, normalised.points, detail::capacitiesFor(count));
}

bool Surface::isConvex(const TPoint* a, const TPoint* b, const TPoint* c, const TPoint* d) {
  return detail::isConvex(detail::positionOf(*a), detail::positionOf(*b), detail::positionOf(*c),
                          detail::positionOf(*d));
}

bool Surface::isNeedTrans(const TPoint* a, const TPoint* b, const TPoint* c, const TPoint* d) {
  return detail::isNeedTrans(detail::positionOf(*a), detail::positionOf(*b), detail::positionOf(*c),
                             detail::positionOf(*d));
}

}  // namespace OrvikDTM
