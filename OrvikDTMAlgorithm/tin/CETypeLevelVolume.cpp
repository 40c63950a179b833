// Fill and cut against a design level.
#include <algorithm>
#include <cmath>
#include <memory>

#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/tin/CETypeElements.h>
#include <OrvikDTMAlgorithm/tin/Triangle3.h>
#include <OrvikDTMAlgorithm/tin/TriangleAreas.h>

inline namespace OrvikDTM {

namespace {

constexpr int kCut = 1;
constexpr int kFill = -1;

// A boundary needs three points to limit anything.
constexpr std::size_t kFewestBoundaryPoints = 3;

// What lies on one side of the level.
struct Side {
  double planArea = 0.0;
  double spatialArea = 0.0;
  double volume = 0.0;

  void add(double plan, double spatial, double content) {
    planArea += plan;
    spatialArea += spatial;
    volume += content;
  }
};

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

void addWhole(double level, const TPoint& p1, const TPoint& p2, const TPoint& p3, Side& side) {
  side.add(detail::planArea(p1, p2, p3), detail::spatialArea(p1, p2, p3), prismVolume(level, p1, p2, p3));
}

void addSplit(double level, const Split& s, Side& fill, Side& cut) {
  const double dA = std::fabs(s.a->getZ() - level);
  const double dB = std::fabs(s.b->getZ() - level);
  const double dL = std::fabs(s.lone->getZ() - level);
  const double loneArea = detail::planArea(*s.lone, s.onA, s.onB);
  Side& loneSide = s.loneStatus == kFill ? fill : cut;
  Side& pairSide = s.loneStatus == kFill ? cut : fill;
  loneSide.add(loneArea, detail::spatialArea(*s.lone, s.onA, s.onB), loneArea * dL / 3);
  pairSide.add(detail::planArea(*s.b, s.onA, s.onB) + detail::planArea(*s.a, *s.b, s.onA),
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
  triangle3Pending_ = false;
  if (rangeList_.size() >= kFewestBoundaryPoints) return nullptr;

  Side fill;
  Side cut;
  Corners c;
  for (int tri = 1; tri <= triangleCount(); ++tri) {
    if (!cornersOf(tri, c)) continue;
    switch (placeOf(elevation, *c.p1, *c.p2, *c.p3)) {
      case Place::Cut:
        addWhole(elevation, *c.p1, *c.p2, *c.p3, cut);
        break;
      case Place::Fill:
        addWhole(elevation, *c.p1, *c.p2, *c.p3, fill);
        break;
      case Place::Both:
        addSplit(elevation, splitAt(elevation, *c.p1, *c.p2, *c.p3), fill, cut);
        break;
    }
  }
  triangle3Pending_ = true;
  triangle3Level_ = elevation;

  auto result = std::make_unique<FillCutResult>();
  result->setFillTwoDArea(fill.planArea);
  result->setFillThreeDArea(fill.spatialArea);
  result->setFillVolume(fill.volume);
  result->setCutTwoDArea(cut.planArea);
  result->setCutThreeDArea(cut.spatialArea);
  result->setCutVolume(cut.volume);
  const TINMeasures measures = getMeasures();
  result->setTwoDArea(measures.area2D);
  result->setThreeDArea(measures.area3D);
  result->setPerimeterTwoD(measures.length2D);
  result->setPerimeterThreeD(measures.length3D);
  return result.release();
}

const std::vector<std::shared_ptr<Triangle3>>& CEType::getTriangle3List() {
  if (triangle3Pending_) makeTriangle3List();
  triangle3Pending_ = false;
  return triangle3List_;
}

void CEType::makeTriangle3List() {
  const auto append = [this](const TPoint& p, const TPoint& q, const TPoint& r, int status) {
    triangle3List_.push_back(std::make_shared<Triangle3>(&p, &q, &r, status));
  };
  Corners c;
  for (int tri = 1; tri <= triangleCount(); ++tri) {
    if (!cornersOf(tri, c)) continue;
    const Place place = placeOf(triangle3Level_, *c.p1, *c.p2, *c.p3);
    if (place != Place::Both) {
      append(*c.p1, *c.p2, *c.p3, place == Place::Cut ? kCut : kFill);
      continue;
    }
    const Split s = splitAt(triangle3Level_, *c.p1, *c.p2, *c.p3);
    append(*s.lone, s.onA, s.onB, s.loneStatus);
    append(*s.a, s.onA, s.onB, -s.loneStatus);
    append(*s.a, *s.b, s.onB, -s.loneStatus);
  }
}

}  // namespace OrvikDTM
