// The area of a triangle from the lengths of its sides, by Heron's formula. Private.
#pragma once

#include <cmath>

#include <OrvikDTMAlgorithm/FloatingPoint.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
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

// A length or an area in plan and along the surface, side by side: with the same operations on both, a processor takes
// them together.
struct alignas(16) InPlanAndSpace {
  double of[2];
};

inline InPlanAndSpace lengthsOf(const TPoint& p, const TPoint& q) {
  const double dx = q.getX() - p.getX();
  const double dy = q.getY() - p.getY();
  const double dz = q.getZ() - p.getZ();
  const double plan = dx * dx + dy * dy;
  const double squares[2] = {plan, plan + dz * dz};
  InPlanAndSpace lengths;
  for (int i = 0; i < 2; ++i) lengths.of[i] = std::sqrt(squares[i]);
  return lengths;
}

inline InPlanAndSpace lengthsOf(const TEdge& edge) { return lengthsOf(*edge.getStartPoint(), *edge.getEndPoint()); }

inline InPlanAndSpace areasOf(const InPlanAndSpace& a, const InPlanAndSpace& b, const InPlanAndSpace& c) {
  double products[2];
  for (int i = 0; i < 2; ++i) products[i] = heronProduct(a.of[i], b.of[i], c.of[i]);
  products[0] = std::fabs(products[0]);
  InPlanAndSpace areas;
  for (int i = 0; i < 2; ++i) areas.of[i] = std::sqrt(products[i]);
  return areas;
}

}  // namespace detail
}  // namespace OrvikDTM
