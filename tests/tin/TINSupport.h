// What the tests of the triangulation share: points with an owner, networks made by hand from tables, and exact
// geometry on whole millimetres, which decides without rounding what the library decides with it.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>

#include "Inputs.h"

namespace support {

// Points for as long as a test lasts; the library gets plain pointers to them.
class OwnedPoints {
 public:
  OwnedPoints() = default;
  explicit OwnedPoints(const inputs::Positions& positions);
  TPoint* add(double x, double y, double z);
  TPoint* operator[](std::size_t index) const { return points_[index].get(); }
  std::size_t size() const { return points_.size(); }
  std::vector<TPoint*> pointers() const;

 private:
  std::vector<std::unique_ptr<TPoint>> points_;
};

// Points are counted from 1 in the tables, like everything else in a TIN.
struct EdgeRow {
  int start;
  int end;
  int left;
  int right;
};

struct Tables {
  std::vector<EdgeRow> edges;
  std::vector<std::array<int, 3>> triangles;
  std::vector<int> hull;
};

std::unique_ptr<CEType> makeTIN(const OwnedPoints& points, const Tables& tables);

// The lists of a network written back as a table of point numbers; 0 for a point that is not among `points`.
Tables tablesOf(const CEType& tin, const std::vector<TPoint*>& points);

// optimizeTIN() on points that stay the fixture's; null when the library gives null.
std::unique_ptr<CEType> triangulate(const OwnedPoints& points);

// What initPoins(), initCET() and buildTIN() make of the points as they stand; null when one of them gives nothing.
std::unique_ptr<CEType> sweep(const OwnedPoints& points);

int triangleCount(const CEType& tin);
int edgeCount(const CEType& tin);
int hullCount(const CEType& tin);

// The corners of a triangle, run through with the triangle on the left; nothing when its edges do not close.
std::optional<std::array<TPoint*, 3>> cornersOf(const CEType& tin, int triangle);

// ---- exact geometry on whole millimetres

struct Millimetres {
  std::int64_t x;
  std::int64_t y;
  auto operator<=>(const Millimetres&) const = default;
};

// The nearest whole millimetres, exactly.
Millimetres millimetresOf(const TPoint& p);

__extension__ typedef __int128 Wide;

// Twice the signed area of a, b, c: positive when c lies to the left of a -> b.
Wide cross(const Millimetres& a, const Millimetres& b, const Millimetres& c);

// Twice the area of the convex hull.
Wide doubleHullArea(std::vector<Millimetres> points);

// Whether a triangulation covers the hull of `accepted` without a fault, by exact signs and with a gap of at most 0.001
// square units; independent of verifyTIN(). Says what is wrong, and is empty when nothing is.
std::string faultOf(const CEType& tin, const std::vector<TPoint*>& accepted);

// What a finished TIN whose check passed still has to satisfy: numbers of triangles and edges (when no position is
// repeated), areas that add up exactly, and every inner edge locally Delaunay save where the tolerances of the flip
// forbid the flip. Empty when all hold.
std::string brokenInvariantOf(const CEType& tin, bool queueOverflowed);

}  // namespace support
