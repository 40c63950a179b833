// The area of a triangle from the lengths of its sides, by Heron's formula. Private.
#pragma once

#include <cmath>

#include <OrvikDTMAlgorithm/FloatingPoint.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>

inline namespace OrvikDTM {
namespace detail {

inline double heronProduct(double a, double b, double c) {
  const double s = (a + b + c) / 2;
  return s * (s - a) * (s - b) * (s - c);
}

// In plan: a product that rounds below zero, in a triangle without extent, counts as its opposite.
inline double planArea(double a, double b, double c) { return std::sqrt(std::fabs(heronProduct(a, b, c))); }

// Along the surface: the same product gives NaN there, so that a sum over a broken triangle does not look sound.
inline double spatialArea(double a, double b, double c) { return std::sqrt(heronProduct(a, b, c)); }

inline double planDistance(const TPoint& p, const TPoint& q) {
  const double dx = q.getX() - p.getX();
  const double dy = q.getY() - p.getY();
  return std::sqrt(dx * dx + dy * dy);
}

inline double spatialDistance(const TPoint& p, const TPoint& q) {
  const double dx = q.getX() - p.getX();
  const double dy = q.getY() - p.getY();
  const double dz = q.getZ() - p.getZ();
  return std::sqrt(dx * dx + dy * dy + dz * dz);
}

inline double planArea(const TPoint& p, const TPoint& q, const TPoint& r) {
  return planArea(planDistance(p, q), planDistance(q, r), planDistance(r, p));
}

inline double spatialArea(const TPoint& p, const TPoint& q, const TPoint& r) {
  return spatialArea(spatialDistance(p, q), spatialDistance(q, r), spatialDistance(r, p));
}

}  // namespace detail
}  // namespace OrvikDTM
