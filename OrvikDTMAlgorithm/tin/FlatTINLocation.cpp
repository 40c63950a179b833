// Which triangle holds a point: a walk from triangle to triangle, and behind it a scan of all of them. Both name the
// triangle that they are said to name, but need not be carried out where it is known otherwise.
#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_set>

#include <OrvikDTMAlgorithm/tin/FlatTIN.h>
#include <OrvikDTMAlgorithm/tin/Orientation.h>
#include <OrvikDTMAlgorithm/tin/SideOfLine.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

// How many triangles before the one found last the scan begins.
constexpr int kScanLead = 10;

// Neighbouring points are reached in so few moves; for others it is worth while to look up a triangle near them,
constexpr int kMovesToNear = 12;

// from which they are reached in so few, unless triangles are very uneven or long.
constexpr int kMovesFromStart = 64;

constexpr int kEdgesOfTriangle = 3;

bool isFinite(const Position& p) { return std::isfinite(p.x) && std::isfinite(p.y); }

}  // namespace

// A scan takes the triangle found last, then all others from ten before it round.
struct FlatTIN::ScanOrder {
  ScanOrder(int lastFound, int triangles)
      : last(lastFound), count(triangles), first(std::clamp(lastFound - kScanLead, 1, std::max(triangles, 1))) {}

  int placeOf(int tri) const { return tri == last ? -1 : tri >= first ? tri - first : tri - first + count; }

  int last;
  int count;
  int first;
};

bool FlatTIN::holds(int tri, double x, double y) const {
  const Corners* c = corners(tri);
  const Position p{x, y};
  if (c == nullptr || !isFinite(p)) return false;
  const int inward = turn(tri);
  if (inward == 0) return false;
  return orientation(c->p[0], c->p[1], p) * inward >= 0 && orientation(c->p[1], c->p[2], p) * inward >= 0 &&
         orientation(c->p[2], c->p[0], p) * inward >= 0;
}

bool FlatTIN::holdsStrictly(int tri, const Position& p) const {
  const Corners* c = corners(tri);
  const int inward = turn(tri);
  return c != nullptr && inward != 0 && orientation(c->p[0], c->p[1], p) == inward &&
         orientation(c->p[1], c->p[2], p) == inward && orientation(c->p[2], c->p[0], p) == inward;
}

bool FlatTIN::acceptsByArea(int tri, double x, double y) const {
  const Corners* c = corners(tri);
  if (c == nullptr || turn(tri) == 0) return false;  // a flat triangle would accept its whole line
  return areaTestAccepts(c->p[0], c->p[2], c->p[1], {x, y});
}

// ---- the walk

// The triangle that the walk goes to from `tri`: across the first edge that has p on its far side by more than the side
// test's tolerance, else across the first that has it there at all; 0 when there is none. Stops where p is held.
//
// The cross products of the side test are those by which orientation() decides, so each edge is computed once.
int FlatTIN::nextOnWalk(int tri, const Position& p, bool& isHeld) const {
  const Record& r = record(tri);
  isHeld = false;
  if (r.isOdd) {
    isHeld = holds(tri, p.x, p.y);
    return isHeld ? 0 : nextOnWalkFromOdd(tri, p);
  }
  const Position* corner = r.corners.p;
  bool isOutside = r.turn == 0;
  int beyondTolerance = 0;
  int beyond = 0;
  for (int which = 0; which < kEdgesOfTriangle; ++which) {
    const Way& way = r.ways[which];
    const Position& start = corner[way.from];
    const Position& end = corner[way.to];
    const int turnToP = orientation(start, end, p);
    const int turnOutward = (way.to == (way.from + 1) % kEdgesOfTriangle) ? -r.turn : r.turn;
    isOutside |= turnToP * turnOutward > 0;
    const bool leaves = r.next[which] != 0;
    const int wanted = way.leavesToTheLeft != 0 ? 1 : -1;
    if (leaves && beyond == 0 && turnToP == wanted) beyond = r.next[which];
    if (leaves && beyondTolerance == 0 &&
        sideOfLineRelative(start.x, start.y, end.x, end.y, p.x, p.y) == (wanted > 0 ? kLeft : kRight)) {
      beyondTolerance = r.next[which];
    }
    if (isOutside && beyondTolerance != 0) return beyondTolerance;
  }
  isHeld = !isOutside;
  return isHeld ? 0 : beyond;
}

int FlatTIN::nextOnWalkFromOdd(int tri, const Position& p) const {
  for (int which = 0; which < kEdgesOfTriangle; ++which) {
    const OddEdge edge = edgeOf(tri, which);
    if (!edge.isWhole || edge.next == 0) continue;
    const detail::Side side = sideOfLineRelative(edge.start.x, edge.start.y, edge.end.x, edge.end.y, p.x, p.y);
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

// At most so many moves. A walk that goes in a circle would do so until its moves are used up: it ends where it would
// be then.
void FlatTIN::goOn(Walk& walk, const Position& p, int moves) const {
  for (; moves > 0; --moves) {
    if (walk.movesLeft == 0) {
      walk.state = Walk::State::kStuck;
      return;
    }
    bool isHeld = false;
    int next = nextOnWalk(walk.tri, p, isHeld);
    if (isHeld) {
      walk.state = Walk::State::kFound;
      return;
    }
    if (next == 0 && !walk.hasLeftFlat && isFlat(walk.tri)) {
      next = beyondFlat(walk.tri, p);
      walk.hasLeftFlat = true;
      walk.mark = 0;  // it may come back and leave it another way
    }
    if (next == 0) {
      walk.state = Walk::State::kStuck;
      return;
    }
    walk.tri = next;
    --walk.movesLeft;
    watchForCircle(walk);
  }
}

void FlatTIN::watchForCircle(Walk& walk) {
  ++walk.movesSinceMark;
  if (walk.tri == walk.mark) walk.movesLeft %= walk.movesSinceMark;
  if (walk.movesSinceMark < walk.movesToNextMark) return;
  walk.mark = walk.tri;
  walk.movesSinceMark = 0;
  walk.movesToNextMark *= 2;
}

// ---- what the index knows

// The triangle that holds p, by a walk from a triangle near it; 0 when that does not find it soon.
int FlatTIN::fromStart(const Position& p) const {
  const Starts& near = starts();
  if (!near.grid.covers(p)) return 0;
  Walk walk = walkFrom(static_cast<int>(near.triangles[near.grid.cellOf(p)]));
  goOn(walk, p, kMovesFromStart);
  return walk.state == Walk::State::kFound ? walk.tri : 0;
}

FlatTIN::Holders FlatTIN::holdersOf(const Position& p, const ScanOrder& order) const {
  Holders result;
  visitBoxes(p.x, p.y, p.x, p.y, [&](int tri) {
    if (!holds(tri, p.x, p.y)) return;
    ++result.count;
    if (result.first == 0 || order.placeOf(tri) < order.placeOf(result.first)) result.first = tri;
  });
  return result;
}

// How many triangles hold p, and which, as far as it matters: two stand for more than one.
FlatTIN::Holders FlatTIN::holdersOf(const Position& p) const {
  const ScanOrder anyOrder(1, triangleCount());
  if (!covers_) return holdersOf(p, anyOrder);
  const HullRing::Place place = hullCells_.placeOf(*hull_, p);
  if (place == HullRing::Place{false, 0}) return {};
  if (place == HullRing::Place{false, 1}) {
    const int found = fromStart(p);
    if (found != 0) return {found, holdsStrictly(found, p) ? 1 : 2};
  }
  return holdersOf(p, anyOrder);
}

// The first triangle, in scan order, that the area test accepts p in; 0 when there is none. Only at places outside the
// index's domain, which is large, every triangle is tested.
int FlatTIN::firstAccepting(const Position& p, const ScanOrder& order) const {
  int found = 0;
  const auto test = [&](int tri) {
    if (found != 0 && order.placeOf(tri) > order.placeOf(found)) return;
    if (acceptsByArea(tri, p.x, p.y)) found = tri;
  };
  if (!index().reach.isInDomain(p)) {
    for (int tri = 1; tri <= triangleCount(); ++tri) test(tri);
    return found;
  }
  const Box here{p.x, p.y, p.x, p.y};
  index().boxes.visit(here, [&test](Number tri) { test(static_cast<int>(tri)); });
  index().farBoxes.visit(here, [&test](Number tri) { test(static_cast<int>(tri)); });
  return found;
}

// ---- the three queries

// Where one triangle alone holds p, the walk comes to it from anywhere, or fails and the scan does. Where several do,
// it depends on the way to which of them.
int FlatTIN::locate(double x, double y, int& last) const {
  const Position p{x, y};
  if (triangleCount() == 0 || hull_ == nullptr || !isFinite(p)) return 0;
  if (hull_->isInvalid()) return scan(x, y, last);
  if (!hullCells_.placeOf(*hull_, p).isWithin()) return 0;
  Walk walk = walkFrom(exists(last) ? last : 1);
  goOn(walk, p, kMovesToNear);
  if (walk.state == Walk::State::kOnTheWay) {
    const Holders holders = holdersOf(p);
    if (holders.count == 1) return last = holders.first;
    if (holders.count > 1) goOn(walk, p, std::numeric_limits<int>::max());
  }
  return walk.state == Walk::State::kFound ? last = walk.tri : scan(x, y, last);
}

int FlatTIN::locate(double x, double y, int start, int& last) const {
  if (start == 0) return locate(x, y, last);
  const Position p{x, y};
  if (!exists(start) || !isFinite(p)) return 0;
  Walk walk = walkFrom(start);
  goOn(walk, p, kMovesToNear);
  if (walk.state == Walk::State::kOnTheWay) {
    // A walk to a place outside can lead to no triangle but one in which the area test accepts it.
    if (holdersOf(p).count == 0 && firstAccepting(p, ScanOrder(start, triangleCount())) == 0) return 0;
    goOn(walk, p, std::numeric_limits<int>::max());
  }
  return walk.state == Walk::State::kFound || acceptsByArea(walk.tri, x, y) ? walk.tri : 0;
}

int FlatTIN::scan(double x, double y, int& last) const {
  const Position p{x, y};
  if (!isFinite(p)) return 0;
  if (holds(last, x, y)) return last;
  const ScanOrder order(last, triangleCount());
  Holders holders = holdersOf(p);
  if (holders.count > 1) holders = holdersOf(p, order);
  if (holders.count > 0) return last = holders.first;
  const int accepting = acceptsByArea(last, x, y) ? last : firstAccepting(p, order);
  return accepting == 0 ? 0 : last = accepting;
}

}  // namespace detail
}  // namespace OrvikDTM
