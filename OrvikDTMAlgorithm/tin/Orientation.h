// The exact orientation of three positions. Private: every question "does this triangle hold that point?" is decided
// here.
#pragma once

#include <cmath>

#include <OrvikDTMAlgorithm/FloatingPoint.h>
#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

// The same without the filter: slow, for what the filter cannot decide.
int exactOrientation(const Position& a, const Position& b, const Position& c);

// The cross product (b - a) x (c - a) as computed, and whether its sign is beyond doubt.
struct CrossProduct {
  double value;
  bool isSure;
};

inline CrossProduct crossProduct(const Position& a, const Position& b, const Position& c) {
  const double left = (b.x - a.x) * (c.y - a.y);
  const double right = (b.y - a.y) * (c.x - a.x);
  const double det = left - right;
  // The relative error of each of the five operations is at most u = 2^-53, so that |det - exact| <= (3u +
  // 16u^2)(|left| + |right|) as long as no product underflows; those that do are far below kSafeFromUnderflow.
  constexpr double kErrorFactor = (3.0 + 16.0 * 0x1p-53) * 0x1p-53;
  constexpr double kSafeFromUnderflow = 1e-280;
  const double magnitude = std::fabs(left) + std::fabs(right);
  const bool isLarge = std::fabs(det) > kErrorFactor * magnitude;
  const bool isSafe = magnitude > kSafeFromUnderflow;
  return {det, (isLarge & isSafe) != 0};  // no branch: the callers' loops are short of them
}

// 1 when a, b, c turn counter-clockwise, -1 clockwise, 0 when they are exactly collinear: the sign of (b - a) x (c - a)
// for the doubles as they are, whatever their size. 0 when a coordinate is not finite.
inline int orientation(const Position& a, const Position& b, const Position& c) {
  const CrossProduct cross = crossProduct(a, b, c);
  if (cross.isSure) return cross.value > 0 ? 1 : -1;
  return exactOrientation(a, b, c);
}

}  // namespace detail
}  // namespace OrvikDTM
