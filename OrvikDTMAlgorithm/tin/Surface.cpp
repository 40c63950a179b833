#include <functional>
#include <new>
#include <optional>
#include <utility>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/Construction.h>
#include <OrvikDTMAlgorithm/tin/Delaunay.h>
#include <OrvikDTMAlgorithm/tin/Edits.h>
#include <OrvikDTMAlgorithm/tin/FlipTests.h>
#include <OrvikDTMAlgorithm/tin/FlipWatch.h>
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

// The sweep's triangulation with its edges flipped, and which of the accepted points each of its point indexes stands
// for.
struct SweptTriangulation {
  detail::Mesh mesh;
  std::vector<Number> order;
};

// The sweep over points in this order, with its edges flipped; nothing when it is not a valid triangulation, before or
// after the flips, or when flips go round in circles. Where coordinates are too large for these checks, the result is
// taken as it is.
std::optional<detail::Mesh> sweepAndFlip(const detail::NormalisedPoints& normalised, const std::vector<Number>& order) {
  detail::Mesh mesh;
  mesh.points = detail::reordered(normalised.positions, order);
  detail::reserveLarge(mesh.edges, 3 * mesh.points.size());  // a triangulation has fewer
  detail::reserveLarge(mesh.triangles, 2 * mesh.points.size());
  const Number fanEnd = detail::startFan(mesh);
  if (fanEnd == 0) return std::nullopt;
  detail::tellHosts(Surface::FLAG, fanEnd);
  if (normalised.millimetres.empty()) {
    detail::sweep(mesh, fanEnd, nullptr);
    detail::flipToDelaunay(mesh, nullptr);
    return mesh;
  }
  const detail::MillimetrePlane plane(detail::reordered(normalised.millimetres, order));
  detail::SweepWatch sweepWatch(mesh, plane);
  if (!detail::sweep(mesh, fanEnd, &sweepWatch)) return std::nullopt;
  detail::FlipWatch flipWatch(mesh, plane);
  if (!detail::flipToDelaunay(mesh, &flipWatch)) return std::nullopt;
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
  detail::tellHosts(Surface::FLAG, fanEnd);
  const detail::MillimetrePlane plane(detail::reordered(normalised.millimetres, order));
  detail::SweepWatch watch(mesh, plane);
  return !detail::beginSweep(mesh, fanEnd, watch);
}

// Nothing when the points have no sweep order or what the sweep and the flips make of them is not valid.
std::optional<SweptTriangulation> buildBySweep(const detail::NormalisedPoints& normalised) {
  if (beginsWrong(normalised)) return std::nullopt;
  std::vector<Number> order = detail::sweepOrder(normalised.positions);
  if (order.empty()) return std::nullopt;
  std::optional<detail::Mesh> mesh = sweepAndFlip(normalised, order);
  if (!mesh) return std::nullopt;
  return SweptTriangulation{std::move(*mesh), std::move(order)};
}

// All points of a construction are noted as changed at once.
void notePoints(const std::vector<TPoint*>& points) {
  const TPoint* first = nullptr;
  const TPoint* last = nullptr;
  const std::less<const TPoint*> before;
  for (const TPoint* p : points) {
    if (p == nullptr) continue;
    if (first == nullptr || before(p, first)) first = p;
    if (last == nullptr || before(last, p)) last = p;
  }
  if (first != nullptr) detail::Edits::add(first, last + 1);
}

void place(TPoint& point, const Position& position) { new (&point) TPoint(position.x, position.y, point.getZ()); }

// Gives the points in `order` the places placeOf(0), placeOf(1), ...
template <typename PlaceOf>
void placeInOrder(const std::vector<TPoint*>& points, const std::vector<Number>& order, PlaceOf placeOf) {
  for (std::size_t i = 0; i < order.size(); ++i) {
    if (i + detail::kPrefetchAhead < order.size()) detail::prefetch(points[order[i + detail::kPrefetchAhead]]);
    place(*points[order[i]], placeOf(i));
  }
}

// Which accepted points are in the mesh; empty when all are.
std::vector<bool> pointsIn(const std::vector<Number>& order, const detail::NormalisedPoints& normalised) {
  std::vector<bool> isInMesh;
  if (order.size() == normalised.points.size()) return isInMesh;
  isInMesh.assign(normalised.points.size(), false);
  for (const Number i : order) isInMesh[i] = true;
  return isInMesh;
}

// Accepted points that are not in the mesh stay relative to the origin, repeats where they are.
void placeOthers(const detail::NormalisedPoints& normalised, const std::vector<bool>& isInMesh) {
  for (std::size_t i = 0; i < isInMesh.size(); ++i) {
    if (!isInMesh[i]) place(*normalised.points[i], normalised.positions[i]);
  }
  for (const detail::PlacedPoint& repeat : normalised.repeats) place(*repeat.point, repeat.place);
}

detail::Capacities capacitiesFor(const detail::NormalisedPoints& normalised) {
  return detail::capacitiesFor(static_cast<int>(normalised.points.size()));
}

// The points are placed last, when nothing can run out of memory any more: a caller whose call fails has them as they
// were.
CEType* publishSwept(const detail::NormalisedPoints& normalised, const SweptTriangulation& swept) {
  const std::vector<bool> isVertex = detail::verticesOf(swept.mesh);
  const std::vector<bool> isInMesh = pointsIn(swept.order, normalised);
  CEType* tin =
      detail::publishNew(swept.mesh, detail::reordered(normalised.points, swept.order), capacitiesFor(normalised));
  placeInOrder(normalised.points, swept.order, [&](std::size_t i) -> Position {
    const Position& p = swept.mesh.points[i];
    if (!isVertex[i]) return p;  // what the sweep has passed over stays relative to the origin
    return {p.x + normalised.origin.x, p.y + normalised.origin.y};
  });
  placeOthers(normalised, isInMesh);
  return tin;
}

// The exact triangulation; an empty TIN when the positions are collinear, or too large for it.
CEType* publishExact(const detail::NormalisedPoints& normalised) {
  detail::ExactTriangulation exact = detail::triangulateExactly(normalised.millimetres);
  if (exact.mesh.triangleCount() == 0) exact.inputIndex.clear();
  const std::vector<bool> isInMesh = pointsIn(exact.inputIndex, normalised);
  CEType* tin = exact.inputIndex.empty()
                    ? detail::emptyTIN()
                    : detail::publishNew(exact.mesh, detail::reordered(normalised.points, exact.inputIndex),
                                         capacitiesFor(normalised));
  placeInOrder(normalised.points, exact.inputIndex,
               [&](std::size_t i) { return detail::inUnits(normalised.millimetres[exact.inputIndex[i]]); });
  placeOthers(normalised, isInMesh);
  return tin;
}

}  // namespace

CEType* detail::Construction::triangulate(std::vector<TPoint*>& points, int compareUnshifted) {
  if (points.empty()) return nullptr;
  notePoints(points);
  const NormalisedPoints normalised = normalise(points, compareUnshifted != 0);
  tellHosts(Surface::MAXPOINTS, normalised.points.size());
  const std::optional<SweptTriangulation> swept = buildBySweep(normalised);
  if (!swept) return publishExact(normalised);
  CEType* tin = publishSwept(normalised, *swept);
  tin->movedBack_ = true;
  tin->originX_ = normalised.origin.x;
  tin->originY_ = normalised.origin.y;
  return tin;
}

CEType* Surface::optimizeTIN(std::vector<TPoint*>& points) {
  return detail::Construction::triangulate(points, detail::hostsComparison());
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
