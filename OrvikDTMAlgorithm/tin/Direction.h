// The direction of one point as seen from another, as the radial sweep sorts by it. Private.
#pragma once

#include <cmath>

#include <OrvikDTMAlgorithm/FloatingPoint.h>
#include <OrvikDTMAlgorithm/report/NumberText.h>

inline namespace OrvikDTM {
namespace detail {

// The angle between (x1, y1) -> (x2, y2) and the positive x axis in [0, pi], rounded up to ten decimals, so that
// collinear points, whose computed angles differ in the last digits, form one group. 0 without a length.
inline double angleByX(double x1, double y1, double x2, double y2) {
  const double dx = x1 - x2;
  const double dy = y1 - y2;
  const double length2 = dx * dx + dy * dy;
  if (!(length2 > 0)) return 0.0;
  return roundUpThroughText10(std::acos((x2 - x1) / std::sqrt(length2)));
}

}  // namespace detail
}  // namespace OrvikDTM
