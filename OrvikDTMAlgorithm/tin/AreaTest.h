// The area test, by which a point that no triangle holds may still belong to one, and how far it reaches. Private.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

#include <OrvikDTMAlgorithm/FloatingPoint.h>
#include <OrvikDTMAlgorithm/tin/BoxTree.h>
#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

// A point belongs to a triangle when the three areas that it makes with the sides differ from the triangle's own by
// less than this, in squared coordinate units, whatever the triangle's size.
inline constexpr double kAreaTolerance = 0.0001;

inline double areaOf(const Position& a, const Position& b, const Position& c) {
  return std::fabs((b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x)) / 2;
}

// For the corners in the order first, third, second of a FlatTIN's.
inline bool areaTestAccepts(const Position& a, const Position& b, const Position& c, const Position& p) {
  const double parts = areaOf(p, a, c) + areaOf(p, c, b) + areaOf(p, b, a);
  return std::fabs(areaOf(a, b, c) - parts) < kAreaTolerance;
}

// A box around a triangle outside of which the area test, as it is computed, accepts nothing.
//
// Let p have the barycentric coordinates l1, l2, l3 in a triangle of area A, and let N >= 0 be minus the sum of the
// negative ones. The three parts have the areas |li| A, and their sum exceeds A by exactly 2 N A. On the other hand
// p = l1 a + l2 b + l3 c, where the positive coordinates sum up to 1 + N, so that p.x <= maxX + N (maxX - minX), and
// likewise for the other three sides: p lies in the triangle's box widened by N times its extent.
//
// What is computed differs from 2 N A by rounding. If no coordinates among p and the corners differ by more than M, no
// product exceeds M^2 (1 + 4u), u = 2^-53, and no area M^2. Each of the four areas is off by at most 3.1 u M^2 (see
// orientation()), and the three operations that compare them add at most 10 u M^2: 32 u M^2 in all is ample. So where
// the test accepts,
//     N < (tolerance + 32 u M^2) / (2 A).
// M is bounded by asking for points of the domain only, so large that for any but enormous networks rounding counts for
// less than the tolerance does there.
class AreaReach {
 public:
  // For a network within `bounds`.
  explicit AreaReach(const Box& bounds) {
    constexpr double kMargin = 5e4;  // where 32 u M^2 is a third of the tolerance
    const double margin = std::max({kMargin, bounds.maxX - bounds.minX, bounds.maxY - bounds.minY});
    domain_ = {bounds.minX - margin, bounds.minY - margin, bounds.maxX + margin, bounds.maxY + margin};
    const double farthest = 1.001 * std::max(domain_.maxX - domain_.minX, domain_.maxY - domain_.minY);
    excess_ = kAreaTolerance + kRounding * farthest * farthest;
  }

  bool isInDomain(const Position& p) const {
    return std::isfinite(excess_) && p.x > domain_.minX && p.x < domain_.maxX && p.y > domain_.minY &&
           p.y < domain_.maxY;
  }

  // How far beyond its box, in parts of the box's extent, the test accepts points of the domain; infinite for a
  // triangle whose area is no more than rounding.
  double partsBeyond(const Box& box, double area) const {
    const double extent = std::max(box.maxX - box.minX, box.maxY - box.minY);
    const double leastArea = area - kRoundingOfArea * extent * extent;
    if (!(leastArea > kSmallestArea)) return std::numeric_limits<double>::infinity();
    return excess_ / (2 * leastArea) * kMoreThanRounding;
  }

  static Box widened(const Box& box, double parts) {
    const double width = (box.maxX - box.minX) * parts;
    const double height = (box.maxY - box.minY) * parts;
    const double slack = kSlack * std::max({std::fabs(box.minX), std::fabs(box.maxX), std::fabs(box.minY),
                                            std::fabs(box.maxY)});  // the sums below are rounded
    const auto below = [slack](double v, double by) { return by < kLargest ? v - by - slack : -kLargest; };
    const auto above = [slack](double v, double by) { return by < kLargest ? v + by + slack : kLargest; };
    return {below(box.minX, width), below(box.minY, height), above(box.maxX, width), above(box.maxY, height)};
  }

 private:
  static constexpr double kRounding = 32 * 0x1p-53;
  static constexpr double kRoundingOfArea = 4 * 0x1p-53;
  static constexpr double kMoreThanRounding = 1.000001;
  static constexpr double kSlack = 1e-15;
  static constexpr double kSmallestArea = 1e-200;  // below which products may have underflowed
  static constexpr double kLargest = 1e300;

  Box domain_;
  double excess_;
};

}  // namespace detail
}  // namespace OrvikDTM
