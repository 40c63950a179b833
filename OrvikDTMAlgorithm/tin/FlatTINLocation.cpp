// Which triangle holds a point: a walk from triangle to triangle, and behind it a scan of all of them.
#include <cmath>
#include <unordered_set>

#include <OrvikDTMAlgorithm/tin/FlatTIN.h>
#include <OrvikDTMAlgorithm/tin/Orientation.h>
#include <OrvikDTMAlgorithm/tin/SideOfLine.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

// A point that no triangle holds still belongs to one when the three areas that it makes with the sides differ from the
// triangle's own by less than this, in squared coordinate units, whatever the triangle's size.
constexpr double kAreaTolerance = 0.0001;

// How many triangles before the one found last the scan begins.
constexpr int kScanLead = 10;

constexpr int kEdgesOfTriangle = 3;

double areaOf(const Position& a, const Position& b, const Position& c) {
  return std::fabs((b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x)) / 2;
}

bool isFinite(const Position& p) { return std::isfinite(p.x) && std::isfinite(p.y); }

}  // namespace

bool FlatTIN::holds(int tri, double x, double y) const {
  const Corners* c = corners(tri);
  const Position p{x, y};
  if (c == nullptr || !isFinite(p)) return false;
  const int inward = turn(tri);
  if (inward == 0) return false;
  return orientation(c->p[0], c->p[1], p) * inward >= 0 && orientation(c->p[1], c->p[2], p) * inward >= 0 &&
         orientation(c->p[2], c->p[0], p) * inward >= 0;
}

bool FlatTIN::acceptsByArea(int tri, double x, double y) const {
  const Corners* corner = corners(tri);
  if (corner == nullptr || turn(tri) == 0) return false;  // a flat triangle would accept its whole line
  const Position p{x, y};
  const Position& a = corner->p[0];
  const Position& b = corner->p[2];
  const Position& c = corner->p[1];
  const double parts = areaOf(p, a, c) + areaOf(p, c, b) + areaOf(p, b, a);
  return std::fabs(areaOf(a, b, c) - parts) < kAreaTolerance;
}

// The triangle that the walk goes to from `tri`, which does not hold p: across the first edge that has p on its far
// side by more than the side test's tolerance, else across the first that has it there at all; 0 when there is none.
int FlatTIN::nextOnWalk(int tri, const Position& p) const {
  for (int which = 0; which < kEdgesOfTriangle; ++which) {
    const OddEdge edge = edgeOf(tri, which);
    if (!edge.isWhole || edge.next == 0) continue;
    const Side side = sideOfLineRelative(edge.start.x, edge.start.y, edge.end.x, edge.end.y, p.x, p.y);
    if (side == (edge.leavesToTheLeft ? kLeft : kRight)) return edge.next;
  }
  for (int which = 0; which < kEdgesOfTriangle; ++which) {
    const OddEdge edge = edgeOf(tri, which);
    if (!edge.isWhole || edge.next == 0) continue;
    if (orientation(edge.start, edge.end, p) == (edge.leavesToTheLeft ? 1 : -1)) return edge.next;
  }
  return 0;
}

// The way out of a flat triangle, beside a repeat, for a point on its line, to which no side leads: over the flat
// triangles next to it to one with an area, if possible one that holds the point; 0 when there is none.
int FlatTIN::beyondFlat(int tri, const Position& p) const {
  std::vector<int> flat{tri};
  std::unordered_set<int> seen{tri};
  int firstFound = 0;
  for (std::size_t i = 0; i < flat.size(); ++i) {
    for (int which = 0; which < kEdgesOfTriangle; ++which) {
      const int next = neighbour(flat[i], which);
      if (next == 0 || !seen.insert(next).second) continue;
      if (isFlat(next)) {
        flat.push_back(next);
        continue;
      }
      if (holds(next, p.x, p.y)) return next;
      if (firstFound == 0) firstFound = next;
    }
  }
  return firstFound;
}

FlatTIN::WalkEnd FlatTIN::walk(int start, const Position& p) const {
  int tri = start;
  bool hasLeftFlat = false;
  for (int moves = 0; moves <= triangleCount(); ++moves) {
    if (holds(tri, p.x, p.y)) return {tri, tri};
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

int FlatTIN::locate(double x, double y, int& last) const {
  const Position p{x, y};
  if (triangleCount() == 0 || hull_ == nullptr || !hull_->contains(p)) return 0;
  if (hull_->isInvalid()) return scan(x, y, last);
  const WalkEnd end = walk(exists(last) ? last : 1, p);
  if (end.found == 0) return scan(x, y, last);
  last = end.found;
  return end.found;
}

int FlatTIN::locate(double x, double y, int start, int& last) const {
  if (start == 0) return locate(x, y, last);
  const Position p{x, y};
  if (!exists(start) || !isFinite(p)) return 0;
  const WalkEnd end = walk(start, p);
  if (end.found != 0) return end.found;
  return acceptsByArea(end.last, x, y) ? end.last : 0;
}

int FlatTIN::scan(double x, double y, int& last) const {
  const int count = triangleCount();
  const int first = std::clamp(last - kScanLead, 1, std::max(count, 1));
  const auto scanFor = [&](bool (FlatTIN::*accepts)(int, double, double) const) {
    if ((this->*accepts)(last, x, y)) return last;
    for (int tri = first; tri <= count; ++tri) {
      if ((this->*accepts)(tri, x, y)) return tri;
    }
    for (int tri = 1; tri < first; ++tri) {
      if ((this->*accepts)(tri, x, y)) return tri;
    }
    return 0;
  };
  int found = scanFor(&FlatTIN::holds);
  if (found == 0) found = scanFor(&FlatTIN::acceptsByArea);
  if (found != 0) last = found;
  return found;
}

}  // namespace detail
}  // namespace OrvikDTM
