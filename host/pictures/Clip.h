// Cutting closed polygons along straight lines. The polygon may be any shape: parts of it that fall apart stay joined
// by edges along the line, there and back, which enclose nothing.
#pragma once

#include <vector>

#include "PlanMesh.h"

namespace pictures {

// A corner of a piece between two surfaces: z of the surface, and how far that lies above the other one.
struct DifferencePoint {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  double above = 0.0;
};

using Loop = std::vector<DifferencePoint>;

// Leaves the part of `loop` in the counter-clockwise triangle a, b, c or in `box`. `scratch` is working space.
void clipToTriangle(Loop& loop, const Point& a, const Point& b, const Point& c, Loop& scratch);
void clipToBox(Loop& loop, const Box& box, Loop& scratch);

// Leaves the part of `loop` where `above` is at least, or at most, `limit`. What is cut on an edge depends on the edge
// alone, not on its direction, so the cuts of neighbours fit.
void clipAbove(Loop& loop, double limit, Loop& scratch);
void clipBelow(Loop& loop, double limit, Loop& scratch);

// Twice the area that the loop encloses, negative when it runs clockwise.
double doubleArea(const Loop& loop);

}  // namespace pictures
