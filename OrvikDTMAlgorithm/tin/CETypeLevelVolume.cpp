// Fill and cut against a design level.
#include <algorithm>
#include <cmath>
#include <memory>

#include <OrvikDTMAlgorithm/tin/CETypeElements.h>
#include <OrvikDTMAlgorithm/tin/FillAndCut.h>
#include <OrvikDTMAlgorithm/tin/Prefetch.h>
#include <OrvikDTMAlgorithm/tin/Triangle3.h>
#include <OrvikDTMAlgorithm/tin/TriangleAreas.h>

inline namespace OrvikDTM {

namespace {

using detail::FillAndCut;
using detail::kCut;
using detail::kFill;

// A triangle that the level passes through: the lone corner on one side, the other two on the other, and where the
// level crosses the two sides between them.
struct Split {
  const TPoint* lone;
  const TPoint* a;
  const TPoint* b;
  TPoint onA;  // on a - lone
  TPoint onB;  // on b - lone
  int loneStatus;
};

// The point at the level between `corner` and `lone`, whose heights above the level are given.
TPoint crossing(const TPoint& corner, double above, const TPoint& lone, double loneAbove, double level) {
  const double whole = std::fabs(above) + std::fabs(loneAbove);
  return {corner.getX() + (lone.getX() - corner.getX()) * std::fabs(above) / whole,
          corner.getY() + (lone.getY() - corner.getY()) * std::fabs(above) / whole, level};
}

// The lone corner is told by strict products, so a corner exactly in the level is never the lone one.
Split splitAt(double level, const TPoint& p1, const TPoint& p2, const TPoint& p3) {
  const double d1 = p1.getZ() - level;
  const double d2 = p2.getZ() - level;
  const double d3 = p3.getZ() - level;
  const TPoint* a = &p1;
  const TPoint* b = &p2;
  const TPoint* lone = &p3;
  if (d2 * d1 < 0) {
    b = &p3;
    lone = &p2;
    if (d3 * d1 < 0) {
      a = &p2;
      lone = &p1;
    }
  }
  const double dA = a->getZ() - level;
  const double dB = b->getZ() - level;
  const double dL = lone->getZ() - level;
  return {lone, a, b, crossing(*a, dA, *lone, dL, level), crossing(*b, dB, *lone, dL, level), dL <= 0 ? kFill : kCut};
}

double prismVolume(double level, const TPoint& p1, const TPoint& p2, const TPoint& p3) {
  const double area =
      std::fabs((p2.getX() - p1.getX()) * (p3.getY() - p2.getY()) - (p2.getY() - p1.getY()) * (p3.getX() - p2.getX())) /
      2;
  return std::fabs(((p1.getZ() - level) + (p2.getZ() - level) + (p3.getZ() - level)) * area) / 3;
}

void addWhole(double level, const TPoint& p1, const TPoint& p2, const TPoint& p3, detail::FillOrCut& side) {
  side.add(detail::planArea(p1, p2, p3), detail::spatialArea(p1, p2, p3), prismVolume(level, p1, p2, p3));
}

void addSplit(double level, const Split& s, FillAndCut& sums) {
  const double dA = std::fabs(s.a->getZ() - level);
  const double dB = std::fabs(s.b->getZ() - level);
  const double dL = std::fabs(s.lone->getZ() - level);
  const double loneArea = detail::planArea(*s.lone, s.onA, s.onB);
  sums.on(s.loneStatus).add(loneArea, detail::spatialArea(*s.lone, s.onA, s.onB), loneArea * dL / 3);
  sums.on(-s.loneStatus)
      .add(detail::planArea(*s.b, s.onA, s.onB) + detail::planArea(*s.a, *s.b, s.onA),
           detail::spatialArea(*s.a, *s.b, s.onA) + detail::spatialArea(*s.b, s.onA, s.onB),
           detail::planArea(*s.a, *s.b, s.onB) * (dA + dB) / 3 + detail::planArea(*s.a, s.onA, s.onB) * dA / 3);
}

// Where a triangle lies against the level. One in the level itself is fill, without volume.
enum class Place { Cut, Fill, Both };

Place placeOf(double level, const TPoint& p1, const TPoint& p2, const TPoint& p3) {
  const auto [lowest, highest] = std::minmax({p1.getZ(), p2.getZ(), p3.getZ()});
  if (highest > level && lowest >= level) return Place::Cut;
  if (highest <= level) return Place::Fill;
  return Place::Both;
}

}  // namespace

FillCutResult* CEType::getFillCut(double elevation) {
  triangle3List_.clear();
  triangle3Source_ = {};
  if (hasBoundary()) return getFillCutWithinBoundary(elevation);

  FillAndCut sums;
  Corners c;
  for (int tri = 1; tri <= triangleCount(); ++tri) {
    if (const TEdge* ahead = edgeOf(tri + detail::kPrefetchAhead, 1)) {
      detail::prefetch(ahead->getStartPoint());
      detail::prefetch(ahead->getEndPoint());
    }
    if (!cornersOf(tri, c)) continue;
    switch (placeOf(elevation, *c.p1, *c.p2, *c.p3)) {
      case Place::Cut:
        addWhole(elevation, *c.p1, *c.p2, *c.p3, sums.cut);
        break;
      case Place::Fill:
        addWhole(elevation, *c.p1, *c.p2, *c.p3, sums.fill);
        break;
      case Place::Both:
        addSplit(elevation, splitAt(elevation, *c.p1, *c.p2, *c.p3), sums);
        break;
    }
  }
  triangle3Source_.level = elevation;
  return detail::newResult(sums, getMeasures());
}

void CEType::appendLevelPieces(double level) {
  const auto append = [this](const TPoint& p, const TPoint& q, const TPoint& r, int status) {
    triangle3List_.push_back(std::make_shared<Triangle3>(&p, &q, &r, status));
  };
  Corners c;
  for (int tri = 1; tri <= triangleCount(); ++tri) {
    if (!cornersOf(tri, c)) continue;
    const Place place = placeOf(level, *c.p1, *c.p2, *c.p3);
    if (place != Place::Both) {
      append(*c.p1, *c.p2, *c.p3, place == Place::Cut ? kCut : kFill);
      continue;
    }
    const Split s = splitAt(level, *c.p1, *c.p2, *c.p3);
    append(*s.lone, s.onA, s.onB, s.loneStatus);
    append(*s.a, s.onA, s.onB, -s.loneStatus);
    append(*s.a, *s.b, s.onB, -s.loneStatus);
  }
}

}  // namespace OrvikDTM
