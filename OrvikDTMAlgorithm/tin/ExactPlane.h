// Whole-millimetre positions and the two exact questions of a Delaunay triangulation about them: does this turn left,
// and does this circle contain that point? Private.
//
// Four positions on one circle are decided by symbolic perturbation. Delaunay triangles are the lower hull of the
// positions lifted to z = x^2 + y^2; each lifted position is raised by an infinitesimal amount, infinitely larger for a
// position that comes later by x, then y. Then no four positions lie on one circle, and there is one triangulation. The
// answer depends on the four positions alone, and not on where the origin lies.
#pragma once

#include <cmath>
#include <cstdint>
#include <vector>

#include <OrvikDTMAlgorithm/FloatingPoint.h>
#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

__extension__ using Int128 = __int128;

// A position in whole millimetres.
struct MillimetrePosition {
  std::int64_t x;
  std::int64_t y;
  bool operator==(const MillimetrePosition& other) const = default;
};

inline constexpr double kMillimetresPerUnit = 1000.0;

// Coordinates up to this many units, on either side of 0, are counted in whole millimetres.
inline constexpr double kLargestInMillimetres = 9.2e12;

// A position rounded to three decimals, as it is and in whole millimetres: each is the other's nearest.
inline std::int64_t inMillimetres(double v) {
  // Below this the product is within a thousandth of the whole number that it stands for; beyond, whole units are
  // counted apart.
  constexpr double kProductIsClose = 1e9;
  if (std::fabs(v) < kProductIsClose) {
    return static_cast<std::int64_t>(v * kMillimetresPerUnit + (v < 0 ? -0.5 : 0.5));
  }
  const double units = std::trunc(v);
  return static_cast<std::int64_t>(units) * static_cast<std::int64_t>(kMillimetresPerUnit) +
         std::llround((v - units) * kMillimetresPerUnit);
}
inline MillimetrePosition inMillimetres(const Position& p) { return {inMillimetres(p.x), inMillimetres(p.y)}; }
inline double inUnits(std::int64_t millimetres) {
  // Beyond this not every whole number is a double, so whole units are converted apart: of those millimetres that one
  // double counts as, the nearest is less than half a step of doubles away from it.
  constexpr std::int64_t kConvertsExactly = std::int64_t{1} << 53;
  if (millimetres >= -kConvertsExactly && millimetres <= kConvertsExactly) {
    return static_cast<double>(millimetres) / kMillimetresPerUnit;
  }
  constexpr auto kPerUnit = static_cast<std::int64_t>(kMillimetresPerUnit);
  return static_cast<double>(millimetres / kPerUnit) +
         static_cast<double>(millimetres % kPerUnit) / kMillimetresPerUnit;
}
inline Position inUnits(const MillimetrePosition& p) { return {inUnits(p.x), inUnits(p.y)}; }

// Whether d, at the origin, lies inside the circle through a, b and c, which turn counter-clockwise, when it lies on
// that circle exactly or is one of the three. `bc`, `ca` and `ab` are their cross products, or have the same signs.
//
// The last of the four by x, then y, decides, because its rise outweighs those of the others. If it is d, that is
// raised above the plane through a, b and c, and is outside. If it is a, the plane is raised at d by a's share of d,
// which is (b x c) / (the triangle's doubled area) in barycentric coordinates: d is inside when b x c is positive. So
// for b and c. No product is 0, because three different positions on a circle are not collinear. A corner itself is
// outside: either it is the last, or the product that decides has the corner for a factor and is 0.
template <typename Point, typename Value>
bool raisedCircleContains(const Point& a, const Point& b, const Point& c, Value bc, Value ca, Value ab) {
  const auto isAfter = [](const Point& p, const Point& q) { return p.x != q.x ? p.x > q.x : p.y > q.y; };
  const bool bIsAfterA = isAfter(b, a);
  const Point& laterOfTwo = bIsAfterA ? b : a;
  const bool cIsLast = isAfter(c, laterOfTwo);
  const Point& last = cIsLast ? c : laterOfTwo;
  if (!isAfter(last, Point{0, 0})) return false;
  return (cIsLast ? ab : bIsAfterA ? ca : bc) > 0;
}

// Positions whose coordinates, from 0 to less than 2^52 millimetres, are kept as doubles without loss. Differences are
// then exact too. Each question is first asked in doubles: the answer stands when it is farther from 0 than rounding
// can move it, or when every intermediate result is a whole number below 2^53, so that nothing was rounded at all; else
// whole numbers decide.
class NearPlane {
 public:
  static constexpr std::int64_t kExtent = std::int64_t{1} << 52;

  explicit NearPlane(std::vector<Position> positions) : positions_(std::move(positions)) {}

  Number size() const { return static_cast<Number>(positions_.size()); }
  std::uint64_t x(Number i) const { return static_cast<std::uint64_t>(positions_[i].x); }
  std::uint64_t y(Number i) const { return static_cast<std::uint64_t>(positions_[i].y); }

  // True when a, b, c turn strictly counter-clockwise.
  bool turnsLeft(Number a, Number b, Number c) const {
    const Position& p = positions_[a];
    const double bx = positions_[b].x - p.x;
    const double by = positions_[b].y - p.y;
    const double cx = positions_[c].x - p.x;
    const double cy = positions_[c].y - p.y;
    const double left = bx * cy;
    const double right = by * cx;
    const double det = left - right;
    // Three roundings of at most 2^-53 each, over two products.
    constexpr double kErrorFactor = 4 * 0x1p-53;
    const double magnitude = std::fabs(left) + std::fabs(right);
    if (std::fabs(det) > kErrorFactor * magnitude || magnitude < kExactBelow) return det > 0;
    return toWhole(bx) * toWhole(cy) > toWhole(by) * toWhole(cx);
  }

  // True when d lies inside the circle through a, b and c, which turn counter-clockwise; on the circle the perturbation
  // decides, and a corner is not inside.
  bool circleContains(Number a, Number b, Number c, Number d) const {
    const Position& p = positions_[d];
    const double ax = positions_[a].x - p.x;
    const double ay = positions_[a].y - p.y;
    const double bx = positions_[b].x - p.x;
    const double by = positions_[b].y - p.y;
    const double cx = positions_[c].x - p.x;
    const double cy = positions_[c].y - p.y;
    const double bc = bx * cy;
    const double cb = cx * by;
    const double ca = cx * ay;
    const double ac = ax * cy;
    const double ab = ax * by;
    const double ba = bx * ay;
    const double a2 = ax * ax + ay * ay;
    const double b2 = bx * bx + by * by;
    const double c2 = cx * cx + cy * cy;
    const double det = a2 * (bc - cb) + b2 * (ca - ac) + c2 * (ab - ba);
    // Shewchuk's bound for this expression with exact differences is below (10 + 96u)u of the sum of all magnitudes, u
    // = 2^-53.
    constexpr double kErrorFactor = 11 * 0x1p-53;
    const double magnitude = a2 * (std::fabs(bc) + std::fabs(cb)) + b2 * (std::fabs(ca) + std::fabs(ac)) +
                             c2 * (std::fabs(ab) + std::fabs(ba));
    if (std::fabs(det) > kErrorFactor * magnitude) return det > 0;
    if (magnitude >= kExactBelow) return circleContainsExactly({ax, ay}, {bx, by}, {cx, cy});
    if (det != 0) return det > 0;
    return raisedCircleContains<Position>({ax, ay}, {bx, by}, {cx, cy}, bc - cb, ca - ac, ab - ba);
  }

 private:
  static constexpr double kExactBelow = 0x1p53;

  static Int128 toWhole(double v) { return static_cast<Int128>(static_cast<std::int64_t>(v)); }

  // The same for positions relative to d.
  static bool circleContainsExactly(const Position& a, const Position& b, const Position& c);

  std::vector<Position> positions_;
};

// Positions too far apart for that: 64-bit coordinates from 0, and whole numbers of 256 bits for every circle.
class FarPlane {
 public:
  explicit FarPlane(std::vector<MillimetrePosition> positions) : positions_(std::move(positions)) {}

  Number size() const { return static_cast<Number>(positions_.size()); }
  std::uint64_t x(Number i) const { return static_cast<std::uint64_t>(positions_[i].x); }
  std::uint64_t y(Number i) const { return static_cast<std::uint64_t>(positions_[i].y); }

  bool turnsLeft(Number a, Number b, Number c) const {
    const MillimetrePosition& p = positions_[a];
    const MillimetrePosition& q = positions_[b];
    const MillimetrePosition& r = positions_[c];
    return Int128{q.x - p.x} * (r.y - p.y) > Int128{q.y - p.y} * (r.x - p.x);
  }

  bool circleContains(Number a, Number b, Number c, Number d) const;

 private:
  std::vector<MillimetrePosition> positions_;
};

}  // namespace detail
}  // namespace OrvikDTM
