// How a triangle lies against a design level, and the parts into which the level divides it. Private.
#pragma once

#include <algorithm>
#include <cmath>

#include <OrvikDTMAlgorithm/tin/FillAndCut.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>

inline namespace OrvikDTM {
namespace detail {

// Where a triangle lies against the level. One in the level itself is fill, without volume.
enum class Place : unsigned char { None, Cut, Fill, Both };

inline Place placeOf(double level, double lowest, double highest) {
  if (highest > level && lowest >= level) return Place::Cut;
  if (highest <= level) return Place::Fill;
  return Place::Both;
}

inline Place placeOf(double level, double z1, double z2, double z3) {
  return placeOf(level, std::min(std::min(z1, z2), z3), std::max(std::max(z1, z2), z3));
}

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
inline TPoint crossing(const TPoint& corner, double above, const TPoint& lone, double loneAbove, double level) {
  const double whole = std::fabs(above) + std::fabs(loneAbove);
  return {corner.getX() + (lone.getX() - corner.getX()) * std::fabs(above) / whole,
          corner.getY() + (lone.getY() - corner.getY()) * std::fabs(above) / whole, level};
}

// The lone corner is told by strict products, so a corner exactly in the level is never the lone one.
inline Split splitAt(double level, const TPoint& p1, const TPoint& p2, const TPoint& p3) {
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

}  // namespace detail
}  // namespace OrvikDTM
