// The side test that the construction decides by, on plain coordinates. Private: TEdge is its public face.
#pragma once

#include <cmath>

#include <OrvikDTMAlgorithm/FloatingPoint.h>

inline namespace OrvikDTM {
namespace detail {

// A point counts as lying on a line when the cross product of the edge and the way to the point is at most this: an
// area, in squared coordinate units. It is not scaled by the edge's length, so it is wide for short edges; the
// construction has always grouped points by it.
inline constexpr double kLineTolerance = 0.0002;

enum Side : int { kLeft = -1, kOnLine = 0, kRight = 1 };

// Whether both ends of an edge and the point share an x or a y exactly. Such a point is on the line whatever rounding
// does to the cross product.
inline bool sharesAxis(double x1, double y1, double x2, double y2, double px, double py) {
  return (x1 == px && x2 == px) || (y1 == py && y2 == py);
}

inline Side sideOfCross(double cross) {
  if (std::fabs(cross) <= kLineTolerance) return kOnLine;
  return cross < 0 ? kRight : kLeft;  // NaN counts as left
}

// Twice the signed area of (x1, y1), (x2, y2), (px, py), positive when they turn counter-clockwise. In expanded form,
// which is exact enough near the local origin where the construction works, and evaluated in this order on every
// machine.
inline double expandedCross(double x1, double y1, double x2, double y2, double px, double py) {
  return (y1 - y2) * px + (x2 - x1) * py + y2 * x1 - x2 * y1;
}

// The side of (px, py) as seen along (x1, y1) -> (x2, y2).
inline Side sideOfLine(double x1, double y1, double x2, double y2, double px, double py) {
  if (sharesAxis(x1, y1, x2, y2, px, py)) return kOnLine;
  return sideOfCross(expandedCross(x1, y1, x2, y2, px, py));
}

// The same test relative to the edge's start, for queries at projected coordinates, where the expanded form is noise.
inline Side sideOfLineRelative(double x1, double y1, double x2, double y2, double px, double py) {
  if (sharesAxis(x1, y1, x2, y2, px, py)) return kOnLine;
  return sideOfCross((x2 - x1) * (py - y1) - (y2 - y1) * (px - x1));
}

}  // namespace detail
}  // namespace OrvikDTM
