// Whether triangles cover any place twice, told from the edges that have one triangle only. Private.
#pragma once

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>
#include <vector>

#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

// An edge with one triangle only, directed with the triangle on its left.
struct OutlineSide {
  Number start;
  Number end;
  Number triangle;
};

// Without sides that have no length or an end that is not finite: they enclose nothing.
template <typename Plane>
std::vector<OutlineSide> outlineOf(const Mesh& mesh, const Plane& plane) {
  std::vector<OutlineSide> sides;
  for (Number number = 1; number <= mesh.edgeCount(); ++number) {
    const MeshEdge& e = mesh.edges[number];
    if ((e.left == 0) == (e.right == 0) || plane.same(e.start, e.end)) continue;
    if (!plane.isFinite(e.start) || !plane.isFinite(e.end)) continue;
    const bool onLeft = e.left != 0;
    sides.push_back({onLeft ? e.start : e.end, onLeft ? e.end : e.start, onLeft ? e.left : e.right});
  }
  return sides;
}

// Whether the sides form one convex polygon, run through counter-clockwise once. Straight angles are allowed.
template <typename Plane>
bool isConvexPolygon(const std::vector<OutlineSide>& sides, const Plane& plane) {
  if (sides.size() < 3) return false;
  const auto startsLower = [&plane](const OutlineSide& a, const OutlineSide& b) {
    return plane.lower(a.start, b.start);
  };
  std::vector<OutlineSide> byStart = sides;
  std::sort(byStart.begin(), byStart.end(), startsLower);
  const OutlineSide* side = &byStart.front();
  const OutlineSide* const first = side;
  std::size_t walked = 0;
  bool falls = false;  // the polygon rises from its lowest corner once, then falls back to it
  do {
    const OutlineSide after{side->end, side->end, 0};
    const auto next = std::lower_bound(byStart.begin(), byStart.end(), after, startsLower);
    if (next == byStart.end() || !plane.same(next->start, side->end) || ++walked > sides.size()) return false;
    const bool rises = plane.lower(side->start, side->end);
    if (rises && falls) return false;
    falls = !rises;
    if (plane.turn(side->start, side->end, next->end) < 0) return false;
    side = &*next;
  } while (side != first);
  return walked == sides.size() && falls;
}

// A triangle that covers what another one covers, too; 0 when there is none. The triangles must be counter-clockwise
// and their slots consistent.
//
// How often a place is covered is the winding number of the outline around it, for along every other edge two triangles
// meet. So a line sweeps over the outline by x, then y, and keeps the sides that it crosses from bottom to top, each
// with the winding number above it; none may exceed 1. Sides that cross have a place between them that is covered
// twice.
template <typename Plane>
class OverlapSweep {
 public:
  OverlapSweep(const std::vector<OutlineSide>& sides, const Plane& plane) : plane_(plane) {
    sides_.reserve(sides.size());
    for (const OutlineSide& s : sides) {
      const bool forward = isBefore(s.start, s.end);
      sides_.push_back({forward ? s.start : s.end, forward ? s.end : s.start, forward ? 1 : -1, s.triangle, 0});
    }
    std::sort(sides_.begin(), sides_.end(), [this](const Side& a, const Side& b) { return isBefore(a.low, b.low); });
    for (const Side& s : sides_) {
      places_.push_back(s.low);
      places_.push_back(s.high);
    }
    std::sort(places_.begin(), places_.end(), [this](Number i, Number j) { return isBefore(i, j); });
    const auto last =
        std::unique(places_.begin(), places_.end(), [this](Number i, Number j) { return plane_.same(i, j); });
    places_.erase(last, places_.end());
  }

  Number run() {
    Status status(Order{*this});
    std::size_t nextToEnter = 0;
    for (const Number place : places_) {
      auto [begin, end] = status.equal_range(place);
      while (begin != end) begin = plane_.same((*begin)->high, place) ? status.erase(begin) : std::next(begin);
      for (; nextToEnter < sides_.size() && plane_.same(sides_[nextToEnter].low, place); ++nextToEnter) {
        status.insert(&sides_[nextToEnter]);
      }
      if (const Number found = overlapAt(status, place); found != 0) return found;
    }
    return 0;
  }

 private:
  struct Side {
    Number low;
    Number high;
    int step;  // what the winding number grows by from below to above
    Number triangle;
    int windingAbove;
  };

  // From bottom to top, also among sides and places; the side that begins later is held against the other one.
  struct Order {
    using is_transparent = void;
    const OverlapSweep& sweep;

    bool operator()(const Side* a, const Side* b) const {
      if (a == b) return false;
      if (sweep.isBefore(b->low, a->low)) return sweep.sideOf(*b, *a) < 0;
      const int side = sweep.sideOf(*a, *b);
      return side != 0 ? side > 0 : a < b;
    }
    bool operator()(const Side* a, Number place) const { return sweep.plane_.turn(a->low, a->high, place) > 0; }
    bool operator()(Number place, const Side* a) const { return sweep.plane_.turn(a->low, a->high, place) < 0; }
  };

  using Status = std::set<Side*, Order>;

  bool isBefore(Number i, Number j) const { return plane_.leftOf(i, j); }

  // On which side of a the side b goes on, that begins later or at the same place: 1 above, -1 below, 0 along it.
  int sideOf(const Side& a, const Side& b) const {
    const int beginning = plane_.turn(a.low, a.high, b.low);
    return beginning != 0 ? beginning : plane_.turn(a.low, a.high, b.high);
  }

  bool cross(const Side& a, const Side& b) const {
    return plane_.turn(a.low, a.high, b.low) * plane_.turn(a.low, a.high, b.high) < 0 &&
           plane_.turn(b.low, b.high, a.low) * plane_.turn(b.low, b.high, a.high) < 0;
  }

  // Once all sides that begin at a place have entered.
  Number overlapAt(Status& status, Number place) const {
    const auto [begin, end] = status.equal_range(place);
    const Side* const below = begin == status.begin() ? nullptr : *std::prev(begin);
    const Side* const above = end == status.end() ? nullptr : *end;
    const Side* const lowest = begin == end ? above : *begin;
    if (below != nullptr && lowest != nullptr && cross(*below, *lowest)) return below->triangle;
    if (begin != end && above != nullptr && cross(**std::prev(end), *above)) return above->triangle;
    int winding = below == nullptr ? 0 : below->windingAbove;
    for (auto side = begin; side != end; ++side) {
      winding += (*side)->step;
      (*side)->windingAbove = winding;
    }
    for (auto side = begin; side != end; ++side) {
      const auto next = std::next(side);
      const bool isInGroup = next != end && plane_.turn((*side)->low, (*side)->high, (*next)->high) == 0 &&
                             plane_.turn((*side)->low, (*side)->high, (*next)->low) == 0;
      if (!isInGroup && ((*side)->windingAbove > 1 || (*side)->windingAbove < 0)) return (*side)->triangle;
    }
    return 0;
  }

  const Plane& plane_;
  std::vector<Side> sides_;
  std::vector<Number> places_;
};

template <typename Plane>
Number overlappingTriangle(const std::vector<OutlineSide>& sides, const Plane& plane) {
  return OverlapSweep<Plane>(sides, plane).run();
}

}  // namespace detail
}  // namespace OrvikDTM
