// Which triangle holds a point: a walk from triangle to triangle, and behind it a scan of all of them.
#include <algorithm>
#include <cmath>
#include <unordered_set>
#include <vector>

#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/tin/CETypeElements.h>
#include <OrvikDTMAlgorithm/tin/Orientation.h>
#include <OrvikDTMAlgorithm/tin/SideOfLine.h>

inline namespace OrvikDTM {

namespace {

using detail::Position;

// A point that no triangle holds still belongs to one when the three areas that it makes with the sides differ from the
// triangle's own by less than this, in squared coordinate units, whatever the triangle's size.
constexpr double kAreaTolerance = 0.0001;

// How many triangles before the one found last the scan begins.
constexpr int kScanLead = 10;

constexpr int kEdgesOfTriangle = 3;

double areaOf(const Position& a, const Position& b, const Position& c) {
  return std::fabs((b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x)) / 2;
}

detail::Side sideOf(const TEdge& edge, const Position& p) {
  const Position s = detail::positionOf(*edge.getStartPoint());
  const Position e = detail::positionOf(*edge.getEndPoint());
  return detail::sideOfLineRelative(s.x, s.y, e.x, e.y, p.x, p.y);
}

// The triangle across an edge of triangle `tri` when `side` lies beyond the edge; 0 when it does not, or nothing is
// there.
int across(const TEdge& edge, int tri, int side) {
  if (edge.getLeftT() != tri) return side == detail::kLeft ? edge.getLeftT() : 0;
  return side == detail::kRight ? edge.getRightT() : 0;
}

}  // namespace

bool CEType::holds(int tri, const TPoint& p) const {
  Corners corners;
  if (!cornersOf(tri, corners)) return false;
  const Position point = detail::positionOf(p);
  if (!std::isfinite(point.x) || !std::isfinite(point.y)) return false;
  const Position a = detail::positionOf(*corners.p1);
  const Position b = detail::positionOf(*corners.p2);
  const Position c = detail::positionOf(*corners.p3);
  const int turn = detail::orientation(a, b, c);
  if (turn == 0) return false;
  return detail::orientation(a, b, point) * turn >= 0 && detail::orientation(b, c, point) * turn >= 0 &&
         detail::orientation(c, a, point) * turn >= 0;
}

bool CEType::isFlat(int tri) const {
  Corners corners;
  return cornersOf(tri, corners) &&
         detail::orientation(detail::positionOf(*corners.p1), detail::positionOf(*corners.p2),
                             detail::positionOf(*corners.p3)) == 0;
}

bool CEType::acceptsByArea(int tri, const TPoint& p) const {
  Corners corners;
  if (!cornersOf(tri, corners)) return false;
  const Position point = detail::positionOf(p);
  const Position a = detail::positionOf(*corners.p1);
  const Position b = detail::positionOf(*corners.p3);
  const Position c = detail::positionOf(*corners.p2);
  if (detail::orientation(a, b, c) == 0) return false;  // a flat triangle would accept its whole line
  const double parts = areaOf(point, a, c) + areaOf(point, c, b) + areaOf(point, b, a);
  return std::fabs(areaOf(a, b, c) - parts) < kAreaTolerance;
}

// The triangle that the walk goes to from `tri`, which does not hold p: across the first edge that has p on its far
// side by more than the side test's tolerance, else across the first that has it there at all; 0 when there is none.
int CEType::nextOnWalk(int tri, const TPoint& p) const {
  const Position point = detail::positionOf(p);
  const auto leadsOn = [this](int next) { return next >= 1 && next <= triangleCount(); };
  for (int which = 0; which < kEdgesOfTriangle; ++which) {
    const TEdge* edge = edgeOf(tri, which);
    if (edge == nullptr) continue;
    const int next = across(*edge, tri, sideOf(*edge, point));
    if (leadsOn(next)) return next;
  }
  for (int which = 0; which < kEdgesOfTriangle; ++which) {
    const TEdge* edge = edgeOf(tri, which);
    if (edge == nullptr) continue;
    const int turn = detail::orientation(detail::positionOf(*edge->getStartPoint()),
                                         detail::positionOf(*edge->getEndPoint()), point);
    const int next = across(*edge, tri, -turn);
    if (leadsOn(next)) return next;
  }
  return 0;
}

// The way out of a flat triangle, beside a repeat, for a point on its line, to which no side leads: over the flat
// triangles next to it to one with an area, if possible one that holds the point; 0 when there is none.
int CEType::beyondFlat(int tri, const TPoint& p) const {
  std::vector<int> flat{tri};
  std::unordered_set<int> seen{tri};
  int firstFound = 0;
  for (std::size_t i = 0; i < flat.size(); ++i) {
    for (int which = 0; which < kEdgesOfTriangle; ++which) {
      const TEdge* edge = edgeOf(flat[i], which);
      if (edge == nullptr) continue;
      const int next = edge->getLeftT() != flat[i] ? edge->getLeftT() : edge->getRightT();
      if (next < 1 || next > triangleCount() || !seen.insert(next).second) continue;
      if (isFlat(next)) {
        flat.push_back(next);
        continue;
      }
      if (holds(next, p)) return next;
      if (firstFound == 0) firstFound = next;
    }
  }
  return firstFound;
}

CEType::WalkEnd CEType::walk(int start, const TPoint& p) const {
  int tri = start;
  bool hasLeftFlat = false;
  for (int moves = 0; moves <= triangleCount(); ++moves) {
    if (holds(tri, p)) return {tri, tri};
    int next = nextOnWalk(tri, p);
    if (next == 0 && !hasLeftFlat && isFlat(tri)) {
      next = beyondFlat(tri, p);
      hasLeftFlat = true;
    }
    if (next == 0) return {0, tri};
    tri = next;
  }
  return {0, tri};
}

int CEType::locateTri(double x, double y) {
  if (triangleCount() == 0 || !containPoint(x, y)) return 0;
  if (vertexListInvalid_ != 0) return locateTri1(x, y);
  const int start = lastTriangleNo_ >= 1 && lastTriangleNo_ <= triangleCount() ? lastTriangleNo_ : 1;
  const WalkEnd end = walk(start, TPoint(x, y, 0.0));
  if (end.found == 0) return locateTri1(x, y);
  lastTriangleNo_ = end.found;
  return end.found;
}

int CEType::locateTri(double x, double y, int start) {
  if (start == 0) return locateTri(x, y);
  if (start < 0 || start > triangleCount()) return 0;
  const TPoint p(x, y, 0.0);
  const WalkEnd end = walk(start, p);
  if (end.found != 0) return end.found;
  return acceptsByArea(end.last, p) ? end.last : 0;
}

int CEType::locateTri1(double x, double y) {
  const TPoint p(x, y, 0.0);
  const int count = triangleCount();
  const int last = lastTriangleNo_;
  const int first = std::clamp(last - kScanLead, 1, std::max(count, 1));
  const auto scan = [&](bool (CEType::*accepts)(int, const TPoint&) const) {
    if ((this->*accepts)(last, p)) return last;
    for (int tri = first; tri <= count; ++tri) {
      if ((this->*accepts)(tri, p)) return tri;
    }
    for (int tri = 1; tri < first; ++tri) {
      if ((this->*accepts)(tri, p)) return tri;
    }
    return 0;
  };
  int found = scan(&CEType::holds);
  if (found == 0) found = scan(&CEType::acceptsByArea);
  if (found != 0) lastTriangleNo_ = found;
  return found;
}

void CEType::toVertexPosition(double* x, double* y) const {
  if (!movedBack_) return;
  const auto moved = [](double v, double origin) {
    const double rounded = detail::roundThroughText(detail::kDecimalsOfPosition, v);
    return rounded == v ? (v - origin) + origin : v;
  };
  *x = moved(*x, originX_);
  *y = moved(*y, originY_);
}

int* CEType::getRelateT(int tri) const {
  int* neighbours = new int[kEdgesOfTriangle]{0, 0, 0};
  for (int which = 0; which < kEdgesOfTriangle; ++which) {
    const TEdge* edge = edgeOf(tri, which);
    if (edge == nullptr) continue;
    const int other = edge->getLeftT() != tri ? edge->getLeftT() : edge->getRightT();
    if (other >= 1 && other <= triangleCount()) neighbours[which] = other;
  }
  return neighbours;
}

int CEType::getZero(int a, int b, int c) const { return (a == 0 ? 1 : 0) + (b == 0 ? 1 : 0) + (c == 0 ? 1 : 0); }

}  // namespace OrvikDTM
