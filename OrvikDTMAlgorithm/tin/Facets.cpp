#include <algorithm>
#include <array>

#include <OrvikDTMAlgorithm/tin/CETypeElements.h>
#include <OrvikDTMAlgorithm/tin/Facets.h>
#include <OrvikDTMAlgorithm/tin/LargeArrays.h>
#include <OrvikDTMAlgorithm/tin/Orientation.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

bool canBeMeasured(const TPoint* p) {
  return isMeasurable(p->getX()) && isMeasurable(p->getY()) && isMeasurable(p->getZ());
}

bool comesFirst(const TPoint* p, const TPoint* q) {
  return p->getX() != q->getX() ? p->getX() < q->getX() : p->getY() < q->getY();
}

Position relative(const Position& p, const Position& origin) { return {p.x - origin.x, p.y - origin.y}; }

}  // namespace

Box Facet::box() const {
  const auto [low, high] = std::minmax({p[0].y, p[1].y, p[2].y});
  return {p[0].x, low, p[2].x, high};
}

ConvexPiece Facet::piece(const Position& origin, double level) const {
  ConvexPiece result;
  for (const int i : {0, turn > 0 ? 1 : 2, turn > 0 ? 2 : 1}) {
    const Position corner = relative(p[i], origin);
    result.add({corner.x, corner.y, z[i] - level});
  }
  return result;
}

void Facet::clip(ConvexPiece& piece, const Position& origin) const {
  const Position a = relative(p[0], origin);
  const Position b = relative(p[1], origin);
  const Position c = relative(p[2], origin);
  if (turn > 0) {
    piece.clipLeftOf(a, b);
    piece.clipLeftOf(b, c);
    piece.clipRightOf(a, c);
  } else {
    piece.clipRightOf(a, b);
    piece.clipRightOf(b, c);
    piece.clipLeftOf(a, c);
  }
}

bool Facet::make(const CEType& tin, int tri, Facet& facet) {
  CEType::Corners given{};
  if (!tin.cornersOf(tri, given)) return false;
  std::array<const TPoint*, 3> c{given.p1, given.p2, given.p3};
  if (!std::all_of(c.begin(), c.end(), canBeMeasured)) return false;
  std::sort(c.begin(), c.end(), comesFirst);
  for (std::size_t i = 0; i < c.size(); ++i) {
    facet.p[i] = positionOf(*c[i]);
    facet.z[i] = c[i]->getZ();
  }
  facet.turn = orientation(facet.p[0], facet.p[1], facet.p[2]);
  facet.setPlane();
  return facet.turn != 0 && std::isfinite(facet.spread);
}

void Facet::setPlane() {
  const double ux = p[1].x - p[0].x;
  const double uy = p[1].y - p[0].y;
  const double uz = z[1] - z[0];
  const double vx = p[2].x - p[0].x;
  const double vy = p[2].y - p[0].y;
  const double vz = z[2] - z[0];
  const double nx = uy * vz - uz * vy;
  const double ny = uz * vx - ux * vz;
  const double nz = ux * vy - uy * vx;
  slopeX = -nx / nz;
  slopeY = -ny / nz;
  lowest = std::min({0.0, uz, vz});
  highest = std::max({0.0, uz, vz});
  spread = std::sqrt(nx * nx + ny * ny + nz * nz) / std::fabs(nz);
}

Facets::Facets(const CEType& tin) {
  const int count = tin.getTList() == nullptr ? 0 : tin.getTList()->getListLen();
  std::vector<NumberedBox> boxes;
  reserveLarge(facets_, static_cast<std::size_t>(count));
  reserveLarge(boxes, static_cast<std::size_t>(count));
  Facet facet{};
  for (int tri = 1; tri <= count; ++tri) {
    if (!Facet::make(tin, tri, facet)) continue;
    boxes.push_back({facet.box(), static_cast<Number>(facets_.size())});
    facets_.push_back(facet);
  }
  tree_ = BoxTree(boxes);
  facets_ = reordered(facets_, tree_.order());
}

}  // namespace detail
}  // namespace OrvikDTM
