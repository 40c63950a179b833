// Which triangle holds a point: a walk from triangle to triangle, and behind it a scan of all of them. Both name the
// triangle that they are said to name, but need not be carried out where it is known otherwise.
#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <unordered_set>

#include <OrvikDTMAlgorithm/tin/FlatTIN.h>
#include <OrvikDTMAlgorithm/tin/Orientation.h>
#include <OrvikDTMAlgorithm/tin/Prefetch.h>
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

// A scan takes the triangle found last, then all others from ten before it round. Where the network has since lost so
// many triangles that it begins behind the last of them, it takes them all in order.
struct FlatTIN::ScanOrder {
  ScanOrder(int lastFound, int triangles)
      : last(lastFound), count(triangles), first(std::clamp(lastFound - kScanLead, 1, triangles + 1)) {}

  int placeOf(int tri) const { return tri == last ? -1 : tri >= first ? tri - first : tri - first + count; }

  int last;
  int count;
  int first;
};

bool FlatTIN::holdsAt(int slot, const Position& p) const {
  const Corners* c = cornersAt(slot);
  if (c == nullptr || !isFinite(p)) return false;
  const int inward = at(slot).turn;
  if (inward == 0) return false;
  return orientation(c->p[0], c->p[1], p) * inward >= 0 && orientation(c->p[1], c->p[2], p) * inward >= 0 &&
         orientation(c->p[2], c->p[0], p) * inward >= 0;
}

bool FlatTIN::holdsStrictlyAt(int slot, const Position& p) const {
  const Corners* c = cornersAt(slot);
  const int inward = at(slot).turn;
  return c != nullptr && inward != 0 && orientation(c->p[0], c->p[1], p) == inward &&
         orientation(c->p[1], c->p[2], p) == inward && orientation(c->p[2], c->p[0], p) == inward;
}

bool FlatTIN::acceptsAt(int slot, const Position& p) const {
  const Corners* c = cornersAt(slot);
  if (c == nullptr || at(slot).turn == 0) return false;  // a flat triangle would accept its whole line
  return areaTestAccepts(c->p[0], c->p[2], c->p[1], p);
}

// ---- the walk

// Wherever the walk goes next, and the next query after it if it is for a place near this one.
void FlatTIN::prefetchNeighbours(const Record& record) const {
  for (const int next : record.next) {
    const Record& neighbour = at(std::max(next, 1));
    prefetch(&neighbour);
    prefetch(&neighbour.corners.p[2]);  // the next cache line
  }
}

// The triangle that the walk goes to from `slot`: across the first edge that has p on its far side by more than the
// side test's tolerance, else across the first that has it there at all; 0 when there is none. Stops where p is held.
//
// The cross products of the side test are those by which orientation() decides, so each edge is computed once. Most
// triangles are plain and most points on no line, so that far sides are where edges lead out; which edge it is is not
// branched upon, for that cannot be predicted.
int FlatTIN::nextOnWalk(int slot, const Position& p, bool& isHeld) const {
  const Record& r = at(slot);
  prefetchNeighbours(r);
  unsigned sure = 0;
  unsigned beyond = 0;
  unsigned beyondTolerance = 0;
  for (unsigned which = 0; which < kEdgesOfTriangle; ++which) {
    const Way& way = r.ways[which];
    const CrossProduct cross = crossProduct(r.corners.p[way.from], r.corners.p[way.to], p);
    const double outward = way.leavesToTheLeft != 0 ? cross.value : -cross.value;
    const bool leadsOn = r.next[which] != 0;
    sure |= static_cast<unsigned>(cross.isSure) << which;
    beyond |= static_cast<unsigned>(outward > 0) << which;
    beyondTolerance |= (static_cast<unsigned>(outward > kLineTolerance) & static_cast<unsigned>(leadsOn)) << which;
  }
  constexpr unsigned kAll = (1u << kEdgesOfTriangle) - 1;
  if (r.isPlain && sure == kAll) {
    isHeld = beyond == 0;
    if (beyondTolerance != 0) return r.next[std::countr_zero(beyondTolerance)];
    if (isHeld) return 0;
  }
  return nextOnWalkWithCare(slot, p, isHeld);
}

// The same whatever the triangle and wherever the point.
int FlatTIN::nextOnWalkWithCare(int slot, const Position& p, bool& isHeld) const {
  const Record& r = at(slot);
  isHeld = false;
  if (r.isOdd) {
    isHeld = holdsAt(slot, p);
    return isHeld ? 0 : nextOnWalkFromOdd(slot, p);
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

int FlatTIN::nextOnWalkFromOdd(int slot, const Position& p) const {
  for (int which = 0; which < kEdgesOfTriangle; ++which) {
    const OddEdge edge = edgeAt(slot, which);
    if (!edge.isWhole || edge.next == 0) continue;
    const detail::Side side = sideOfLineRelative(edge.start.x, edge.start.y, edge.end.x, edge.end.y, p.x, p.y);
    if (side == (edge.leavesToTheLeft ? kLeft : kRight)) return edge.next;
  }
  for (int which = 0; which < kEdgesOfTriangle; ++which) {
    const OddEdge edge = edgeAt(slot, which);
    if (!edge.isWhole || edge.next == 0) continue;
    if (orientation(edge.start, edge.end, p) == (edge.leavesToTheLeft ? 1 : -1)) return edge.next;
  }
  return 0;
}

// The way out of a flat triangle, beside a repeat, for a point on its line, to which no side leads: over the flat
// triangles next to it to one with an area, if possible one that holds the point; 0 when there is none.
int FlatTIN::beyondFlat(int slot, const Position& p) const {
  std::vector<int> flat{slot};
  std::unordered_set<int> seen{slot};
  int firstFound = 0;
  for (std::size_t i = 0; i < flat.size(); ++i) {
    for (int which = 0; which < kEdgesOfTriangle; ++which) {
      const int next = edgeAt(flat[i], which).next;
      if (next == 0 || !seen.insert(next).second) continue;
      if (isFlatAt(next)) {
        flat.push_back(next);
        continue;
      }
      if (holdsAt(next, p)) return next;
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
    int next = nextOnWalk(walk.slot, p, isHeld);
    if (isHeld) {
      walk.state = Walk::State::kFound;
      return;
    }
    if (next == 0 && !walk.hasLeftFlat && isFlatAt(walk.slot)) {
      next = beyondFlat(walk.slot, p);
      walk.hasLeftFlat = true;
      walk.mark = 0;  // it may come back and leave it another way
    }
    if (next == 0) {
      walk.state = Walk::State::kStuck;
      return;
    }
    walk.slot = next;
    --walk.movesLeft;
    watchForCircle(walk);
  }
}

void FlatTIN::watchForCircle(Walk& walk) {
  ++walk.movesSinceMark;
  if (walk.slot == walk.mark) walk.movesLeft %= walk.movesSinceMark;
  if (walk.movesSinceMark < walk.movesToNextMark) return;
  walk.mark = walk.slot;
  walk.movesSinceMark = 0;
  walk.movesToNextMark *= 2;
}

// Whether p is not farther than a few extents away from the triangle, so that walking there is worth while.
bool FlatTIN::isNear(int slot, const Position& p) const {
  constexpr double kExtents = 3.0;
  const Position* c = at(slot).corners.p;
  const double extent =
      std::fabs(c[1].x - c[0].x) + std::fabs(c[1].y - c[0].y) + std::fabs(c[2].x - c[0].x) + std::fabs(c[2].y - c[0].y);
  return std::fabs(p.x - c[0].x) + std::fabs(p.y - c[0].y) <= kExtents * extent;
}

// ---- what the index knows

// The slot of a triangle that holds p, by a walk from a triangle near it; 0 when that does not find it soon.
int FlatTIN::fromStart(const Position& p) const {
  const Starts& near = starts();
  if (!near.grid.covers(p)) return 0;
  Walk walk = walkFrom(static_cast<int>(near.slots[near.grid.cellOf(p)]));
  goOn(walk, p, kMovesFromStart);
  if (walk.state == Walk::State::kOnTheWay && !index_.isMade()) goOnInsteadOfIndex(walk, p);
  return walk.state == Walk::State::kFound ? walk.slot : 0;
}

// A long walk is cheaper than making the index, until all of these together are as long as there are triangles.
void FlatTIN::goOnInsteadOfIndex(Walk& walk, const Position& p) const {
  const int before = walk.movesLeft;
  const int made = movesInsteadOfIndex_.load(std::memory_order_relaxed);
  goOn(walk, p, triangleCount() - made);
  movesInsteadOfIndex_.store(std::min(triangleCount(), made + before - walk.movesLeft), std::memory_order_relaxed);
}

FlatTIN::Holders FlatTIN::holdersOf(const Position& p, const ScanOrder& order) const {
  constexpr std::size_t kTestsWorthAQuery = 64;
  Holders result;
  std::size_t tested = 0;
  index().boxes.visit({p.x, p.y, p.x, p.y}, [&](Number number) {
    const auto slot = static_cast<int>(number);
    ++tested;
    if (!holdsAt(slot, p)) return;
    ++result.count;
    if (result.first == 0 || order.placeOf(numberOf(slot)) < order.placeOf(numberOf(result.first))) result.first = slot;
  });
  if (tested > kTestsWorthAQuery) testedInVain_.fetch_add(tested, std::memory_order_relaxed);
  return result;
}

// How many triangles hold p, and which, as far as it matters: two stand for more than one.
FlatTIN::Holders FlatTIN::holdersOf(const Position& p) const {
  const ScanOrder anyOrder(1, triangleCount());
  if (!covers_) return holdersOf(p, anyOrder);
  const HullRing::Place place = hullCells_.placeOf(*hull_, p);
  if (place == HullRing::Place{false, 0}) return {};
  if (place == HullRing::Place{false, 1}) {
    const int found = isCrowded() ? fromSides(p) : fromStart(p);
    if (found != 0) return {found, holdsStrictlyAt(found, p) ? 1 : 2};
  }
  return holdersOf(p, anyOrder);
}

// The slot of the first triangle, in scan order, that the area test accepts p in; 0 when there is none. Only at places
// outside the index's domain, which is large, every triangle is tested.
int FlatTIN::firstAccepting(const Position& p, const ScanOrder& order) const {
  int found = 0;
  const auto test = [&](Number number) {
    const auto slot = static_cast<int>(number);
    if (found != 0 && order.placeOf(numberOf(slot)) > order.placeOf(numberOf(found))) return;
    if (acceptsAt(slot, p)) found = slot;
  };
  if (!index().reach.isInDomain(p)) {
    for (Number slot = 1; slot <= records_.size(); ++slot) test(slot);
    return found;
  }
  const Box here{p.x, p.y, p.x, p.y};
  index().boxes.visit(here, test);
  index().farBoxes.visit(here, test);
  return found;
}

// Triangles that cover each point as often as the ring goes round it cover none twice when the ring goes round its own
// centre once and always turns the same way as seen from there, as every hull that the construction makes does.
bool FlatTIN::coversOnce() const {
  if (!covers_) return false;
  const std::vector<Position>& ring = hull_->vertices();
  const auto [low, high] =
      std::minmax_element(ring.begin(), ring.end(), [](const Position& a, const Position& b) { return a.y < b.y; });
  const Position centre{(low->x + high->x) / 2, (low->y + high->y) / 2};
  int rounds = 0;
  const Position* previous = &ring.back();
  for (const Position& vertex : ring) {
    if (orientation(centre, *previous, vertex) <= 0) return false;
    if (previous->y <= centre.y && vertex.y > centre.y) ++rounds;
    previous = &vertex;
  }
  return rounds == 1;
}

// A ring that never turns right, nor back, goes round once when it turns upwards once.
bool FlatTIN::coversConvexOnce() const {
  if (!covers_) return false;
  const auto runsUpwards = [](const Position& from, const Position& to) {
    return to.y > from.y || (to.y == from.y && to.x > from.x);
  };
  const std::vector<Position>& ring = hull_->vertices();
  int turnsUpwards = 0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const Position& before = ring[i == 0 ? ring.size() - 1 : i - 1];
    const Position& behind = ring[i + 1 == ring.size() ? 0 : i + 1];
    const int turn = orientation(before, ring[i], behind);
    const bool ranUpwards = runsUpwards(before, ring[i]);
    const bool goesUpwards = runsUpwards(ring[i], behind);
    if (turn < 0 || (turn == 0 && ranUpwards != goesUpwards)) return false;
    if (!ranUpwards && goesUpwards) ++turnsUpwards;
  }
  return turnsUpwards == 1;
}

// ---- the three queries

// Where one triangle alone holds p, the walk comes to it from anywhere, or fails and the scan does. Where several do,
// it depends on the way to which of them.
int FlatTIN::locate(double x, double y, int& last) const {
  const Position p{x, y};
  if (triangleCount() == 0 || !isFinite(p)) return 0;
  if (hull_ == nullptr) return 0;
  if (hull_->isInvalid()) return scan(x, y, last);
  if (!hullCells_.placeOf(*hull_, p).isWithin()) return 0;
  Walk walk = walkFrom(slotOf(exists(last) ? last : 1));
  if (isNear(walk.slot, p)) goOn(walk, p, kMovesToNear);
  if (walk.state == Walk::State::kOnTheWay) {
    const Holders holders = holdersOf(p);
    if (holders.count == 1) return last = numberOf(holders.first);
    if (holders.count > 1) goOn(walk, p, std::numeric_limits<int>::max());
  }
  return walk.state == Walk::State::kFound ? last = numberOf(walk.slot) : scan(x, y, last);
}

int FlatTIN::locate(double x, double y, int start, int& last) const {
  if (start == 0) return locate(x, y, last);
  const Position p{x, y};
  if (!exists(start) || !isFinite(p)) return 0;
  Walk walk = walkFrom(slotOf(start));
  goOn(walk, p, kMovesToNear);
  if (walk.state == Walk::State::kOnTheWay) {
    // A walk to a place outside can lead to no triangle but one in which the area test accepts it.
    if (holdersOf(p).count == 0 && firstAccepting(p, ScanOrder(start, triangleCount())) == 0) return 0;
    goOn(walk, p, std::numeric_limits<int>::max());
  }
  return walk.state == Walk::State::kFound || acceptsAt(walk.slot, p) ? numberOf(walk.slot) : 0;
}

int FlatTIN::scan(double x, double y, int& last) const {
  const Position p{x, y};
  if (!isFinite(p)) return 0;
  if (holds(last, x, y)) return last;
  const ScanOrder order(last, triangleCount());
  Holders holders = holdersOf(p);
  if (holders.count > 1) holders = holdersOf(p, order);
  if (holders.count > 0) return last = numberOf(holders.first);
  if (acceptsByArea(last, x, y)) return last;
  const int accepting = firstAccepting(p, order);
  return accepting == 0 ? 0 : last = numberOf(accepting);
}

}  // namespace detail
}  // namespace OrvikDTM
