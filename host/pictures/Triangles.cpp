#include "Triangles.h"

#include <algorithm>

namespace pictures {

namespace {

using Triangle = std::array<DifferencePoint, 3>;

double area(const DifferencePoint& a, const DifferencePoint& b, const DifferencePoint& c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

void add(std::vector<Triangle>& triangles, const DifferencePoint& a, const DifferencePoint& b,
         const DifferencePoint& c) {
  if (area(a, b, c) > 0.0) triangles.push_back({a, b, c});
}

// Whether the whole loop is seen from its first corner.
bool isFan(const Loop& loop) {
  for (std::size_t i = 2; i < loop.size(); ++i) {
    if (area(loop[0], loop[i - 1], loop[i]) < 0.0) return false;
  }
  return true;
}

// The place on the side from `low` to `high` at the height y of the plan.
DifferencePoint at(const DifferencePoint& low, const DifferencePoint& high, double y) {
  if (y == low.y) return low;
  if (y == high.y) return high;
  const double t = (y - low.y) / (high.y - low.y);
  return {low.x + (high.x - low.x) * t, y, low.z + (high.z - low.z) * t, low.above + (high.above - low.above) * t};
}

// A side's part within a strip of the plan.
struct Part {
  DifferencePoint low;
  DifferencePoint high;
};

std::vector<Part> partsIn(const Loop& loop, double lower, double upper) {
  std::vector<Part> parts;
  for (std::size_t i = 0; i < loop.size(); ++i) {
    const DifferencePoint& p = loop[i];
    const DifferencePoint& q = loop[i + 1 < loop.size() ? i + 1 : 0];
    const DifferencePoint& low = p.y < q.y ? p : q;
    const DifferencePoint& high = p.y < q.y ? q : p;
    if (low.y <= lower && upper <= high.y) parts.push_back({at(low, high, lower), at(low, high, upper)});
  }
  std::sort(parts.begin(), parts.end(),
            [](const Part& a, const Part& b) { return a.low.x + a.high.x < b.low.x + b.high.x; });
  return parts;
}

}  // namespace

std::vector<std::array<DifferencePoint, 3>> trianglesOf(const Loop& loop) {
  std::vector<Triangle> triangles;
  if (isFan(loop)) {
    for (std::size_t i = 2; i < loop.size(); ++i) add(triangles, loop[0], loop[i - 1], loop[i]);
    return triangles;
  }
  // Between the heights of two corners no side begins or ends: what lies between every other pair of sides is inside.
  // Edges there and back are such a pair, with nothing between them, or stand side by side in other pairs.
  std::vector<double> heights;
  for (const DifferencePoint& p : loop) heights.push_back(p.y);
  std::sort(heights.begin(), heights.end());
  heights.erase(std::unique(heights.begin(), heights.end()), heights.end());
  for (std::size_t i = 1; i < heights.size(); ++i) {
    const std::vector<Part> parts = partsIn(loop, heights[i - 1], heights[i]);
    for (std::size_t k = 1; k < parts.size(); k += 2) {
      const Part& left = parts[k - 1];
      const Part& right = parts[k];
      add(triangles, left.low, right.low, right.high);
      add(triangles, left.low, right.high, left.high);
    }
  }
  return triangles;
}

}  // namespace pictures
