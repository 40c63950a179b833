// The two tests that decide whether the common edge of two triangles is replaced by the other diagonal, on plain
// positions. Private: Surface::isConvex and Surface::isNeedTrans are their public faces.
#pragma once

#include <cmath>

#include <OrvikDTMAlgorithm/tin/Mesh.h>
#include <OrvikDTMAlgorithm/tin/SideOfLine.h>

inline namespace OrvikDTM {
namespace detail {

// Squared distances from a circle's centre that differ by less are equal: in squared coordinate units. Near the local
// origin this is far above rounding, and far below what a millimetre changes.
inline constexpr double kCircleTolerance = 1e-7;

inline bool isConvex(const Position& a, const Position& b, const Position& c, const Position& d) {
  if (sideOfLine(a.x, a.y, d.x, d.y, b.x, b.y) * sideOfLine(a.x, a.y, d.x, d.y, c.x, c.y) >= 0) return false;
  return sideOfLine(b.x, b.y, c.x, c.y, a.x, a.y) * sideOfLine(b.x, b.y, c.x, c.y, d.x, d.y) < 0;
}

// The centre of the circle through a, b and c; not finite when they are collinear.
inline Position circumcentre(const Position& a, const Position& b, const Position& c) {
  const double dx1 = b.x - a.x;
  const double dy1 = b.y - a.y;
  const double dx2 = c.x - a.x;
  const double dy2 = c.y - a.y;
  const double s1 = b.x * b.x + b.y * b.y - a.x * a.x - a.y * a.y;
  const double s2 = c.x * c.x + c.y * c.y - a.x * a.x - a.y * a.y;
  const double k = 2 * (dx1 * dy2 - dx2 * dy1);
  return {(s1 * dy2 - s2 * dy1) / k, (s2 * dx1 - s1 * dx2) / k};
}

inline double squaredDistance(const Position& a, const Position& b) {
  const double dx = a.x - b.x;
  const double dy = a.y - b.y;
  return dx * dx + dy * dy;
}

inline bool isNeedTrans(const Position& a, const Position& b, const Position& c, const Position& d) {
  const Position o1 = circumcentre(a, b, c);
  const double r1 = squaredDistance(o1, a);
  const double q1 = squaredDistance(o1, d);
  if (r1 > q1 && std::fabs(q1 - r1) > kCircleTolerance) return true;

  const Position o2 = circumcentre(b, c, d);
  const double r2 = squaredDistance(o2, b);
  const double q2 = squaredDistance(o2, a);
  if (r2 > q2 && std::fabs(q2 - r2) > kCircleTolerance) return true;

  if (!(std::fabs(q1 - r1) < kCircleTolerance && std::fabs(q2 - r2) < kCircleTolerance)) return false;
  const double bc = squaredDistance(b, c);
  const double ad = squaredDistance(a, d);
  return bc > ad && std::fabs(bc - ad) > kCircleTolerance;
}

}  // namespace detail
}  // namespace OrvikDTM
