#include <algorithm>
#include <cmath>

#include <OrvikDTMAlgorithm/tin/FlipWatch.h>
#include <OrvikDTMAlgorithm/tin/SideOfLine.h>
#include <OrvikDTMAlgorithm/tin/SweepWatch.h>

inline namespace OrvikDTM {
namespace detail {

// Let u = 2^-53, M the largest coordinate of the mesh and D the larger side of its box, E the largest of the millimetre
// positions in coordinate units. A mesh coordinate is the double nearest to its millimetres, off by at most u E, less
// an origin that is the same for all points, rounded again: off by at most u M. With e = u (E + M) a difference of two
// of them is off by 2 e, and a doubled area, the cross product of two differences up to D, by at most 8 e D + 8 e^2.
//
// - isConvex() below computes that area from rounded differences: at most 7 u D^2 off. So sureArea_.
// - The side test takes the expanded form, off by at most 26 u M^2 (FlipFilter.h), and counts the area only beyond
//   kLineTolerance. Where both together stay below it, all four areas that the convexity test has seen are positive
//   by exact signs. FlipFilter asks for more than the side test does, and is within it.
//
// The bounds are taken twice as large, for the rounding of their own terms.
FlipWatch::FlipWatch(const Mesh& mesh, const MillimetrePlane& plane) : mesh_(mesh), plane_(plane) {
  if (mesh.points.empty()) return;
  Position low = mesh.points.front();
  Position high = low;
  for (const Position& p : mesh.points) {
    low = {std::min(low.x, p.x), std::min(low.y, p.y)};
    high = {std::max(high.x, p.x), std::max(high.y, p.y)};
  }
  double farthest = 0.0;
  for (Number i = 0; i < plane.size(); ++i) {
    farthest =
        std::max({farthest, std::fabs(static_cast<double>(plane[i].x)), std::fabs(static_cast<double>(plane[i].y))});
  }
  constexpr double kUnitRoundoff = 0x1p-53;
  const double largest = std::max({std::fabs(low.x), std::fabs(low.y), std::fabs(high.x), std::fabs(high.y)});
  const double side = std::max(high.x - low.x, high.y - low.y);
  const double off = kUnitRoundoff * (farthest / kMillimetresPerUnit + largest);
  const double byMillimetres = 8 * off * (side + off);
  sureArea_ = 2 * (byMillimetres + 7 * kUnitRoundoff * side * side);
  needsLook_ = !(2 * (byMillimetres + 26 * kUnitRoundoff * largest * largest) < kLineTolerance);
}

bool FlipWatch::isConvex(Number a, Number b, Number c, Number d) const {
  const Position& p = mesh_.points[a];
  const Position& q = mesh_.points[d];
  const double dx = q.x - p.x;
  const double dy = q.y - p.y;
  const double areaC = dx * (mesh_.points[c].y - p.y) - dy * (mesh_.points[c].x - p.x);
  const double areaB = dy * (mesh_.points[b].x - p.x) - dx * (mesh_.points[b].y - p.y);
  if (std::min(areaB, areaC) > sureArea_) return true;
  return plane_.turn(a, d, c) > 0 && plane_.turn(a, b, d) > 0;
}

bool FlipWatch::allowsEnd() const {
  if (!isDoubtful_) return true;
  return wrongSlot(mesh_) == 0 && SweepWatch(mesh_, plane_).allowsEnd();
}

}  // namespace detail
}  // namespace OrvikDTM
