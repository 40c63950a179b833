// A boundary polygon in plan, and what may be wrong with it. Crossings are found by exact signs.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

struct PlanPoint {
  double x = 0.0;
  double y = 0.0;
  bool operator==(const PlanPoint&) const = default;
};

using Polygon = std::vector<PlanPoint>;

// The same polygon without a last vertex that repeats the first one.
Polygon opened(Polygon polygon);

// Whether all vertices lie on one straight line or in one place, so that nothing is enclosed.
bool isOnOneLine(const Polygon& polygon);

// The area enclosed, positive when the polygon runs counter-clockwise, and the length of its sides.
double signedArea(const Polygon& polygon);
double perimeter(const Polygon& polygon);

// The first two sides, counted from 0 at the side that leaves the first vertex, that share a point although they are
// not neighbours, or run back over each other although they are.
struct Crossing {
  std::size_t first;
  std::size_t second;
};
std::optional<Crossing> findCrossing(const Polygon& polygon);
