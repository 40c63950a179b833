// Whether two networks, or a network and a boundary, have an area in common or only touch: decided by exact signs, for
// what was surveyed, whatever rounding did to it since. Private.
#pragma once

#include <array>
#include <vector>

#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

using PlanTriangle = std::array<Position, 3>;

// What is common is looked for in the first network, in the second unless it is left out, and within the boundary if it
// has corners: it may be concave, repeat itself and cross itself, and counts even-odd.
struct Overlapping {
  std::vector<PlanTriangle> first;
  std::vector<PlanTriangle> second;
  bool hasSecond = true;
  std::vector<Position> boundary;
};

// Whether that is more than points and lines. True too where a coordinate is not finite, as that cannot be known.
bool haveCommonArea(Overlapping parts);

// A quick look at one place, which rounding cannot move out: true only where it lies inside all of them, farther from
// every side than coordinates are uncertain.
bool isSurelyCommon(const Position& p, const PlanTriangle& first, const PlanTriangle& second,
                    const std::vector<Position>& boundary);

// The corners of a boundary in plan, without null ones.
std::vector<Position> cornersOf(const std::vector<TPoint*>& boundary);

}  // namespace detail
}  // namespace OrvikDTM
