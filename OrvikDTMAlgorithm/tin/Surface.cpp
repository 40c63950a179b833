#include <optional>
#include <utility>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/Delaunay.h>
#include <OrvikDTMAlgorithm/tin/FlipTests.h>
#include <OrvikDTMAlgorithm/tin/Flips.h>
#include <OrvikDTMAlgorithm/tin/LargeArrays.h>
#include <OrvikDTMAlgorithm/tin/Normalise.h>
#include <OrvikDTMAlgorithm/tin/Prefetch.h>
#include <OrvikDTMAlgorithm/tin/Publish.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/Sweep.h>
#include <OrvikDTMAlgorithm/tin/SweepWatch.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>

inline namespace OrvikDTM {

int Surface::MAXPOINTS = 100000;
int Surface::MAXEDGES = 3000000;
int Surface::MAXTRANGLES = 600000;
int Surface::FLAG = 0;
int Surface::COMPAREUNSHIFTED = 0;

namespace {

using detail::Number;
using detail::Position;

// A finished mesh, which of the accepted points each of its point indexes stands for, and where those points go.
struct FinishedMesh {
  detail::Mesh mesh;
  std::vector<Number> order;
  std::vector<Position> places;
  bool movedBack;  // the places went to the local origin and back
};

// The sweep over points in this order, without flips yet; nothing when it is not a valid triangulation. Where
// coordinates are too large for that check, the sweep is taken as it is.
std::optional<detail::Mesh> sweepInOrder(const detail::NormalisedPoints& normalised, const std::vector<Number>& order) {
  detail::Mesh mesh;
  mesh.points = detail::reordered(normalised.positions, order);
  const Number fanEnd = detail::startFan(mesh);
  if (fanEnd == 0) return std::nullopt;
  Surface::FLAG = static_cast<int>(fanEnd);
  if (normalised.millimetres.empty()) {
    detail::sweep(mesh, fanEnd, nullptr);
    return mesh;
  }
  detail::SweepWatch watch(mesh, detail::MillimetrePlane(detail::reordered(normalised.millimetres, order)));
  if (!detail::sweep(mesh, fanEnd, &watch)) return std::nullopt;
  return mesh;
}

// Whether the sweep over the first few directions alone, with which the whole sweep begins, already goes wrong. On
// large surveys it practically always does, and the other directions need not be sorted.
bool beginsWrong(const detail::NormalisedPoints& normalised) {
  constexpr std::size_t kWorthAsking = 150000;
  if (normalised.points.size() < kWorthAsking || normalised.millimetres.empty()) return false;
  const std::vector<Number> order = detail::beginOfSweepOrder(normalised.positions);
  detail::Mesh mesh;
  mesh.points = detail::reordered(normalised.positions, order);
  const Number fanEnd = detail::startFan(mesh);
  if (fanEnd == 0) return false;
  Surface::FLAG = static_cast<int>(fanEnd);
  detail::SweepWatch watch(mesh, detail::MillimetrePlane(detail::reordered(normalised.millimetres, order)));
  return !detail::beginSweep(mesh, fanEnd, watch);
}

// The sweep's triangulation with its edges flipped; nothing when the points have no sweep order or the sweep is not
// valid.
std::optional<FinishedMesh> buildBySweep(const detail::NormalisedPoints& normalised) {
  if (beginsWrong(normalised)) return std::nullopt;
  std::vector<Number> order = detail::sweepOrder(normalised.positions);
  if (order.empty()) return std::nullopt;
  std::optional<detail::Mesh> mesh = sweepInOrder(normalised, order);
  if (!mesh) return std::nullopt;
  detail::flipToDelaunay(*mesh);

  std::vector<Position> places = mesh->points;
  const std::vector<bool> isVertex = detail::verticesOf(*mesh);
  for (std::size_t i = 0; i < places.size(); ++i) {
    // What the sweep has passed over stays relative to the origin.
    if (isVertex[i]) places[i] = {places[i].x + normalised.origin.x, places[i].y + normalised.origin.y};
  }
  return FinishedMesh{std::move(*mesh), std::move(order), std::move(places), true};
}

// The exact triangulation; nothing when the positions are collinear, or too large for it.
std::optional<FinishedMesh> buildExactly(const detail::NormalisedPoints& normalised) {
  if (normalised.millimetres.empty()) return std::nullopt;
  detail::ExactTriangulation exact = detail::triangulateExactly(normalised.millimetres);
  if (exact.mesh.triangleCount() == 0) return std::nullopt;
  std::vector<Position> places;
  detail::reserveLarge(places, exact.inputIndex.size());
  for (const Number i : exact.inputIndex) places.push_back(detail::inUnits(normalised.millimetres[i]));
  return FinishedMesh{std::move(exact.mesh), std::move(exact.inputIndex), std::move(places), false};
}

void place(TPoint& point, const Position& position) {
  point.setX(position.x);
  point.setY(position.y);
}

// Gives the points their final coordinates. Accepted points that are not in the mesh stay relative to the origin.
void placePoints(const detail::NormalisedPoints& normalised, const std::optional<FinishedMesh>& finished) {
  for (const detail::PlacedPoint& repeat : normalised.repeats) place(*repeat.point, repeat.place);
  const std::size_t placed = finished ? finished->order.size() : 0;
  for (std::size_t i = 0; i < placed; ++i) {
    if (i + detail::kPrefetchAhead < placed) {
      detail::prefetch(normalised.points[finished->order[i + detail::kPrefetchAhead]]);
    }
    place(*normalised.points[finished->order[i]], finished->places[i]);
  }
  if (placed == normalised.points.size()) return;

  std::vector<bool> isInMesh(normalised.points.size(), false);
  for (std::size_t i = 0; i < placed; ++i) isInMesh[finished->order[i]] = true;
  for (std::size_t i = 0; i < isInMesh.size(); ++i) {
    if (!isInMesh[i]) place(*normalised.points[i], normalised.positions[i]);
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
  placePoints(normalised, finished);
  if (!finished) return detail::emptyTIN();
  CEType* tin = detail::publishNew(finished->mesh, detail::reordered(normalised.points, finished->order),
                                   detail::capacitiesFor(count));
  tin->movedBack_ = finished->movedBack;
  tin->originX_ = normalised.origin.x;
  tin->originY_ = normalised.origin.y;
  return tin;
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
