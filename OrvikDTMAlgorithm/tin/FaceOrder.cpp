#include <algorithm>

#include <OrvikDTMAlgorithm/FloatingPoint.h>
#include <OrvikDTMAlgorithm/tin/FaceOrder.h>
#include <OrvikDTMAlgorithm/tin/Sweep.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

constexpr std::array<Number, 3> kNextCorner = {1, 2, 0};

// The turn from one ray to another: 1 counter-clockwise, -1 clockwise, and 0 when it is so slight, or the rays so short
// or long, that it does not certainly tell which rounded direction is the smaller.
//
// The rays (dx, dy) are those that the sweep takes its directions from, to the bit, and both point upward or along x
// (dy >= 0), so their directions a lie in [0, pi]. Let u = 2^-53.
// - A computed cosine is within 4u of the exact one (two roundings of the squared length, halved by the root, that of
//   the root and that of the quotient; what underflows is nothing beside kShortest2) and never above 1, because the
//   root of a rounded square is the number itself. The arc cosine turns an error d of the cosine into at most acos(1 -
//   d) <= 1.001 sqrt(2d) <= 3e-8; its own last digits, and the rounding up by less than 1e-10, make that less than 4e-8
//   for a rounded direction.
// - So the rounded directions differ as the exact ones do wherever those are more than 1e-7 apart, and an angle is at
//   least its sine.
// - The computed cross product is within 8u of (length * length), the other sides of the comparison within a few u of
//   themselves: beyond kSlightest = 1e-6 the sign is right and the exact sine is above 1e-7 with room to spare.
int certainTurn(const Position& a, const Position& b) {
  constexpr double kShortest2 = 1e-100;
  constexpr double kLongest2 = 1e100;
  constexpr double kSlightest2 = 1e-12;
  const double a2 = a.x * a.x + a.y * a.y;
  const double b2 = b.x * b.x + b.y * b.y;
  const double cross = a.x * b.y - a.y * b.x;
  const bool ordinary = a2 > kShortest2 && a2 < kLongest2 && b2 > kShortest2 && b2 < kLongest2;
  const bool isCertain = ordinary && cross * cross > kSlightest2 * (a2 * b2);
  return isCertain ? (cross > 0) - (cross < 0) : 0;
}

// Evaluated whole: which corner is the lowest cannot be foreseen, and a wrong guess costs more than a comparison.
bool isLower(const Position& a, const Position& b) { return (a.y < b.y) | ((a.y == b.y) & (a.x < b.x)); }

bool orderOfSweep(const std::array<Position, 3>& corner, std::array<Number, 3>& order) {
  const std::vector<Number> swept = sweepOrder({corner.begin(), corner.end()});
  if (swept.empty()) return false;
  std::copy(swept.begin(), swept.end(), order.begin());
  return true;
}

}  // namespace

bool faceOrder(const std::array<Position, 3>& corner, std::array<Number, 3>& order) {
  // Where a comparison meets a NaN, or two corners are in one place, one of the rays has no length and the turn is 0.
  const Number lowerOfTwo = isLower(corner[1], corner[0]) ? 1 : 0;
  const Number first = isLower(corner[2], corner[lowerOfTwo]) ? 2 : lowerOfTwo;
  const Number second = kNextCorner[first];
  const Number third = kNextCorner[second];
  const Position& origin = corner[first];
  const int turn = certainTurn({corner[second].x - origin.x, corner[second].y - origin.y},
                               {corner[third].x - origin.x, corner[third].y - origin.y});
  if (turn == 0) return orderOfSweep(corner, order);
  order = {first, turn > 0 ? second : third, turn > 0 ? third : second};
  return true;
}

}  // namespace detail
}  // namespace OrvikDTM
