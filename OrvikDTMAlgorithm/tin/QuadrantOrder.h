// An order of positions in which near ones come near each other, and in which every range falls apart into two parts on
// either side of a line: recursively by quadrants, the y bit of each level before its x bit. Private.
#pragma once

#include <bit>
#include <vector>

#include <OrvikDTMAlgorithm/tin/ExactPlane.h>

inline namespace OrvikDTM {
namespace detail {

// The indexes of `positions`, none of them below or left of `corner`, by the quadrants that begin there; equal ones
// keep their order.
std::vector<Number> quadrantOrder(const std::vector<MillimetrePosition>& positions, const MillimetrePosition& corner);

// Where a range [first, last) of a plane in quadrant order, of at least two different positions, falls apart: all
// positions before `middle` are strictly left of (or, `byX` false, strictly below) all others.
struct QuadrantSplit {
  Number middle;
  bool byX;
};

template <typename Plane>
QuadrantSplit splitByQuadrant(const Plane& plane, Number first, Number last) {
  const std::uint64_t dx = plane.x(first) ^ plane.x(last - 1);
  const std::uint64_t dy = plane.y(first) ^ plane.y(last - 1);
  const bool byX = dy < dx && dy < (dx ^ dy);  // the highest bit that differs is one of x
  const auto coordinate = [&plane, byX](Number i) { return byX ? plane.x(i) : plane.y(i); };
  const std::uint64_t bit = std::bit_floor(byX ? dx : dy);

  Number low = first;  // the bit is not set here
  Number high = last - 1;
  while (high - low > 1) {
    const Number between = low + (high - low) / 2;
    ((coordinate(between) & bit) != 0 ? high : low) = between;
  }
  return {high, byX};
}

}  // namespace detail
}  // namespace OrvikDTM
