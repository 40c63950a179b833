// A quick answer to isConvex() && isNeedTrans() wherever their rounding and their tolerances cannot matter; the two
// tests themselves are left for the few edges near them. Private.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include <OrvikDTMAlgorithm/tin/FlipTests.h>

inline namespace OrvikDTM {
namespace detail {

// Why an answer other than kUnsure is the one that isConvex(d, b, c, a) && isNeedTrans(d, b, c, a) give.
//
// Write u = 2^-53, M for the largest coordinate (so differences are at most 2M), a, c, d for vectors from b,
// A, C, D for their squared lengths and T = A + C + D <= 24 M^2. The quadrilateral b, d, c, a has the doubled areas
//
//   oa = c x a  (triangle b, c, a),   od = d x c  (b, d, c),   ob = d x a  (b, d, a),   oc = oa + od - ob  (d, c, a),
//
// each of oa, od, ob at most T / 2. With S = C ob - D oa - A od, which is the in-circle determinant, the tests compare
//
//   r1 - q1 = S / od  (circle through d, b, c),   r2 - q2 = S / oa  (circle through b, c, a).
//
// 1. Areas. The computed oa, od, ob are off by at most 2.1 u T, oc by 9 u T <= 216 u M^2. The side test's expanded
//    form, seven rounded operations on terms of at most 4 M^2, is off by at most 26 u M^2. So an area computed as more
//    than kLineTolerance + 512 u M^2 is one that the side test sees, with the same sign; and no three corners share an
//    axis, for then the area would be 0. All four areas that large: the quadrilateral is convex by the tests.
// 2. S as computed is off by at most 6 u T^2 <= 144 u M^2 T.
// 3. The circumcentre, of a triangle with doubled area o, of which 1. leaves only o > 460 u M^2. Let l <= 2.9 M, with
//    l^2 <= 2 T, bound the lengths of its sides and the distance between the two points whose distances are compared.
//    The differences of squares are off by 10.1 u M^2, the numerators by 33 u M^2 l, the denominator k = 2 o by
//    8.1 u l^2, which is less than k / 7. With |O| <= M + R in each coordinate, the centre is off by e where
//    k e <= 73 u M^2 l + 12 u R l^2. As r - q is linear in the centre, this changes o (r - q) by at most
//    1.42 l k e <= 207 u M^2 T + 17.1 u T^3 / o, for R <= 0.354 T^1.5 / o.
// 4. The rounding of the squared distances, 4.1 u (r + q), where r + q <= 3 r + 2 l^2 and r <= 2 R^2 + 4 e^2, adds at
//    most 42 u M^2 T + 3.5 u T^3 / o.
//
// Together the written o (r - q) differs from the computed S by at most 400 u M^2 T + 21 u T^3 / o. An S that exceeds
// this by kCircleTolerance * o, o <= T / 2, for the smaller and so for both of the triangles, decides both comparisons
// beyond the tolerance: S > 0 makes isNeedTrans true, S < 0 makes it false whatever isConvex says. The inequality is
// multiplied by o to save the division; 512 and 64 instead of 400 and 21 cover its own rounding and that of o and T
// (o is off by less than an eighth). Underflow cannot matter: the areas alone make T more than 0.0004.
class FlipFilter {
 public:
  enum Verdict { kKeep, kFlip, kUnsure };

  // The coordinates up to which the filter answers: 200 km when the unit is the metre. Up to here the expanded side
  // test is off by less than its tolerance (26 u M^2 < 0.00012), so a triangle two of whose corners share a position
  // is flat for it, and its edges never flip.
  static constexpr double kReach = 200000.0;

  explicit FlipFilter(const std::vector<Position>& points) {
    double farthest = 0.0;
    for (const Position& p : points) {
      inReach_ = inReach_ && std::fabs(p.x) <= kReach && std::fabs(p.y) <= kReach;
      farthest = std::max({farthest, std::fabs(p.x), std::fabs(p.y)});
    }
    const double rounding = 512 * kUnitRoundoff * farthest * farthest;
    leastArea_ = kLineTolerance + rounding;
    marginPerLength_ = kCircleTolerance / 2 + rounding;
  }

  // Whether all points are; when they are not, judge() must not be asked.
  bool inReach() const { return inReach_; }

  // About the common edge b -> c of the triangles (b, c, a) on its left and (c, b, d) on its right.
  Verdict judge(const Position& a, const Position& b, const Position& c, const Position& d) const {
    const Position toA = {a.x - b.x, a.y - b.y};
    const Position toC = {c.x - b.x, c.y - b.y};
    const Position toD = {d.x - b.x, d.y - b.y};
    const double areaA = cross(toC, toA);
    const double areaD = cross(toD, toC);
    const double areaB = cross(toD, toA);
    const double lengthA = squaredLength(toA);
    const double lengthC = squaredLength(toC);
    const double lengthD = squaredLength(toD);
    const double inCircle = lengthC * areaB - lengthD * areaA - lengthA * areaD;
    const double lengths = lengthA + lengthC + lengthD;
    const double smaller = std::min(areaA, areaD);
    const double clearance = (std::fabs(inCircle) - marginPerLength_ * lengths) * smaller;
    if (!(smaller > leastArea_ && clearance > kCentreMargin * (lengths * lengths * lengths))) return kUnsure;
    if (inCircle < 0) return kKeep;
    return std::min(areaB, areaA + areaD - areaB) > leastArea_ ? kFlip : kUnsure;
  }

 private:
  static constexpr double kUnitRoundoff = 0x1p-53;
  static constexpr double kCentreMargin = 64 * kUnitRoundoff;

  static double cross(const Position& p, const Position& q) { return p.x * q.y - p.y * q.x; }
  static double squaredLength(const Position& p) { return p.x * p.x + p.y * p.y; }

  bool inReach_ = true;
  double leastArea_;
  double marginPerLength_;
};

}  // namespace detail
}  // namespace OrvikDTM
