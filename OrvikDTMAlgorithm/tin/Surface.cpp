#include <optional>
#include <utility>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/Delaunay.h>
#include <OrvikDTMAlgorithm/tin/FlipTests.h>
#include <OrvikDTMAlgorithm/tin/Flips.h>
#include <OrvikDTMAlgorithm/tin/Normalise.h>
#include <OrvikDTMAlgorithm/tin/Publish.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/Sweep.h>
#include <OrvikDTMAlgorithm/tin/SweepWatch.h>

inline namespace OrvikDTM {

int Surface::MAXPOINTS = 100000;
int Surface::MAXEDGES = 3000000;
int Surface::MAXTRANGLES = 600000;
int Surface::FLAG = 0;
int Surface::COMPAREUNSHIFTED = 0;

namespace {

using detail::Number;
using detail::Position;

template <typename T>
std::vector<T> reordered(const std::vector<T>& items, const std::vector<Number>& order) {
  std::vector<T> result;
  result.reserve(order.size());
  for (const Number i : order) result.push_back(items[i]);
  return result;
}

// A finished mesh, the published points that its point indexes stand for, and where those points lie.
struct FinishedMesh {
  detail::Mesh mesh;
  std::vector<TPoint*> points;
  std::vector<Position> places;
};

// The sweep's triangulation with its edges flipped. None when the points have no sweep order, or when the sweep's
// result is not valid; where coordinates are too large for that check, it is taken as it is.
std::optional<FinishedMesh> buildBySweep(const detail::NormalisedPoints& normalised) {
  const std::vector<Number> order = detail::sweepOrder(normalised.positions);
  if (order.empty()) return std::nullopt;
  detail::Mesh mesh;
  mesh.points = reordered(normalised.positions, order);
  const Number fanEnd = detail::startFan(mesh);
  if (fanEnd == 0) return std::nullopt;
  Surface::FLAG = static_cast<int>(fanEnd);

  if (normalised.millimetres.empty()) {
    detail::sweep(mesh, fanEnd, nullptr);
  } else {
    detail::SweepWatch watch(mesh, detail::MillimetrePlane(reordered(normalised.millimetres, order)));
    if (!detail::sweep(mesh, fanEnd, &watch)) return std::nullopt;
  }
  detail::flipToDelaunay(mesh);

  std::vector<Position> places;
  places.reserve(mesh.points.size());
  for (const Position& p : mesh.points) places.push_back({p.x + normalised.origin.x, p.y + normalised.origin.y});
  return FinishedMesh{std::move(mesh), reordered(normalised.points, order), std::move(places)};
}

// The exact triangulation. None when the positions are collinear, or too large for it.
std::optional<FinishedMesh> buildExactly(const detail::NormalisedPoints& normalised) {
  if (normalised.millimetres.empty()) return std::nullopt;
  detail::ExactTriangulation exact = detail::triangulateExactly(normalised.millimetres);
  if (exact.mesh.triangleCount() == 0) return std::nullopt;
  std::vector<Position> places;
  places.reserve(exact.inputIndex.size());
  for (const Number i : exact.inputIndex) places.push_back(detail::inUnits(normalised.millimetres[i]));
  return FinishedMesh{std::move(exact.mesh), reordered(normalised.points, exact.inputIndex), std::move(places)};
}

// Takes every point that an edge uses back to where it was surveyed.
void moveBack(const FinishedMesh& finished) {
  std::vector<bool> isVertex(finished.points.size(), false);
  for (Number edge = 1; edge <= finished.mesh.edgeCount(); ++edge) {
    isVertex[finished.mesh.edges[edge].start] = true;
    isVertex[finished.mesh.edges[edge].end] = true;
  }
  for (std::size_t i = 0; i < isVertex.size(); ++i) {
    if (!isVertex[i]) continue;
    finished.points[i]->setX(finished.places[i].x);
    finished.points[i]->setY(finished.places[i].y);
  }
}

}  // namespace

CEType* Surface::optimizeTIN(std::vector<TPoint*>& points) {
  if (points.empty()) return nullptr;
  const detail::NormalisedPoints normalised = detail::normalise(points, COMPAREUNSHIFTED != 0);
  const auto count = static_cast<int>(normalised.points.size());
  MAXPOINTS = count;
  std::optional<FinishedMesh> finished = buildBySweep(normalised);
  if (!finished) finished = buildExactly(normalised);
  if (!finished) return detail::emptyTIN();
  moveBack(*finished);
  return detail::publishNew(finished->mesh, finished->points, detail::capacitiesFor(count));
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
