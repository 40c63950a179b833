// A TIN as flat arrays for drawing: points, counter-clockwise triangles and outer edges, in coordinates relative to an
// origin near the site, so that eastings such as 38 500 000 cost no digits.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

namespace pictures {

struct Point {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

struct Box {
  double minX;
  double minY;
  double maxX;
  double maxY;

  static Box none();
  void add(double x, double y);
  void add(const Box& other);
  bool meets(const Box& other) const;
  bool empty() const { return minX > maxX; }
  double width() const { return maxX - minX; }
  double height() const { return maxY - minY; }
};

struct Origin {
  double x = 0.0;
  double y = 0.0;
};

// Whole units, at the south-western corner of the TIN.
Origin originOf(const CEType& tin);

struct PlanMesh {
  Origin origin;
  std::vector<Point> points;
  std::vector<std::array<std::uint32_t, 3>> triangles;
  std::vector<std::array<std::uint32_t, 2>> edges;  // each once
  std::vector<std::array<std::uint32_t, 2>> hull;   // the edges with a triangle on one side only

  Box box() const;
  const Point& corner(const std::array<std::uint32_t, 3>& triangle, int i) const { return points[triangle[i]]; }
};

// The triangles of `tin` that have an area in plan. Corners in one place, at one height, are one point.
PlanMesh planMesh(const CEType& tin, const Origin& origin);

// Twice the plan area of a, b, c: positive when they turn counter-clockwise.
inline double cross(const Point& a, const Point& b, const Point& c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

}  // namespace pictures
