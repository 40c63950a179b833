// Is a point inside a polygon? Decided by exact signs, so that no side, vertical ones included, can be miscounted.
// Private.
#pragma once

#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

// How far above or below a side, in y, a point still counts as lying on it, in coordinate units.
inline constexpr double kOnSide = 2e-10;

// Whether p lies strictly between the ends of a sloping side in x, and within a tolerance of it in y.
bool isNearSide(const Position& p, const Position& a, const Position& b);

// Counts crossings of the ray from a point towards +y with a polygon that is handed over side by side, in order.
class EvenOddTest {
 public:
  explicit EvenOddTest(const Position& point) : point_(point) {}

  // Takes in the side from a to b; true when the point lies on it.
  bool side(const Position& a, const Position& b);

  // After all sides: whether the point lies inside, a polygon that crosses itself counted even-odd.
  bool inside() const { return inside_; }

 private:
  Position point_;
  bool inside_ = false;
};

}  // namespace detail
}  // namespace OrvikDTM
