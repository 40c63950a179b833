// What the exact construction promises about every result, checked from the published tables alone and by whole
// numbers: nothing here knows how the triangulation was made.
#pragma once

#include <string>
#include <vector>

#include "TINSupport.h"

namespace support {

enum class CircleCheck {
  NeighboursOnly,     // across every edge; with a convex hull that says it all
  EveryPointAndEach,  // every vertex against the circle of every triangle: slow
};

// What a strictly Delaunay triangulation of `positions` (which the tables' point numbers count from 1) does not keep of
// its conventions, empty when it keeps them all: one vertex for each different position, the first of equal ones;
// T = 2n - 2 - h and E = 3n - 3 - h; slots and triangles that name each other; triangles closed and counter-clockwise;
// hull convex, counter-clockwise from the lowest, then leftmost point, with nothing on its right; no circle around a
// position.
std::string brokenDelaunayPromise(const std::vector<Millimetres>& positions, const Tables& tables,
                                  CircleCheck check = CircleCheck::NeighboursOnly);

// Whether d lies strictly inside the circle through a, b, c, which turn counter-clockwise.
bool circleContains(const Millimetres& a, const Millimetres& b, const Millimetres& c, const Millimetres& d);

// Whether all positions lie on one line, or there are fewer than two different ones.
bool areCollinear(const std::vector<Millimetres>& positions);

}  // namespace support
