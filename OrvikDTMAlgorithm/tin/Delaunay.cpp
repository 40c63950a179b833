#include <algorithm>
#include <array>
#include <utility>

#include <OrvikDTMAlgorithm/tin/Delaunay.h>
#include <OrvikDTMAlgorithm/tin/LargeArrays.h>
#include <OrvikDTMAlgorithm/tin/QuadrantOrder.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

// A directed edge: where it starts, and the next and previous edges around that point, counter-clockwise. The same edge
// the other way has the number with the lowest bit flipped.
struct HalfEdge {
  Number origin;
  Number next;
  Number previous;
};

Number reversed(Number edge) { return edge ^ 1u; }

// The half-edges of a growing triangulation. The numbers of deleted edges are used again.
class HalfEdges {
 public:
  void reserve(std::size_t edges) { reserveLarge(halves_, 2 * edges); }

  // The number of half-edges, deleted ones included.
  Number count() const { return static_cast<Number>(halves_.size()); }

  Number origin(Number e) const { return halves_[e].origin; }
  Number end(Number e) const { return halves_[reversed(e)].origin; }
  Number next(Number e) const { return halves_[e].next; }
  Number previous(Number e) const { return halves_[e].previous; }

  // A new edge that is alone at both ends.
  Number add(Number from, Number to) {
    Number e = count();
    if (free_.empty()) {
      halves_.resize(halves_.size() + 2);
    } else {
      e = free_.back();
      free_.pop_back();
    }
    halves_[e] = {from, e, e};
    halves_[e + 1] = {to, e + 1, e + 1};
    return e;
  }

  // Puts e, which is alone at its origin, behind `place`, which starts there too.
  void putAfter(Number place, Number e) {
    const Number next = halves_[place].next;
    halves_[e].next = next;
    halves_[e].previous = place;
    halves_[place].next = e;
    halves_[next].previous = e;
  }

  void remove(Number e) {
    unlink(e);
    unlink(reversed(e));
    free_.push_back(e & ~Number{1});
  }

  // Gives the numbers of deleted edges to the last ones, so that none is left unused. `watched` is brought up to date.
  void closeGaps(Number& watched) {
    std::sort(free_.begin(), free_.end());
    std::size_t firstGap = 0;
    while (firstGap < free_.size()) {
      const Number last = count() - 2;
      if (free_.back() == last) {
        free_.pop_back();
      } else {
        const Number gap = free_[firstGap++];
        renumber(last, gap);
        renumber(last + 1, gap + 1);
        if ((watched & ~Number{1}) == last) watched = gap | (watched & 1u);
      }
      halves_.resize(last);
    }
    free_.clear();
  }

 private:
  void renumber(Number from, Number to) {
    const HalfEdge h = halves_[from];
    halves_[to] = h;
    halves_[h.previous].next = to;
    halves_[h.next].previous = to;
  }

  void unlink(Number e) {
    const HalfEdge& h = halves_[e];
    halves_[h.previous].next = h.next;
    halves_[h.next].previous = h.previous;
  }

  std::vector<HalfEdge> halves_;
  std::vector<Number> free_;
};

// Divide and conquer after Guibas and Stolfi, over positions in quadrant order: two parts that a line separates are
// triangulated by themselves and zipped together from the lowest bridge between them upward. Parts are split where the
// quadrant order splits them, so the recursion is as deep as coordinates have bits, whatever their number, and no sort
// stands inside it.
template <typename Plane>
class Zipper {
 public:
  explicit Zipper(const Plane& plane) : plane_(plane), hullEdge_(largeVector<Number>(plane.size())) {
    edges_.reserve(3 * plane.size());
  }

  void run() { lowest_ = build(0, plane_.size()).lowest; }

  HalfEdges takeEdges() { return std::move(edges_); }

  // The hull edge that leaves the lowest, then leftmost point counter-clockwise.
  Number firstHullEdge() const { return hullEdge_[lowest_]; }

 private:
  // A part's outermost points; of several at one coordinate the one that comes first in that direction's order, so that
  // none lies in the middle of a straight side.
  struct Part {
    Number leftmost;
    Number rightmost;
    Number lowest;
    Number highest;
    bool isPoint() const { return leftmost == rightmost; }
  };

  bool isLeftOf(Number a, Number b) const {
    return plane_.x(a) != plane_.x(b) ? plane_.x(a) < plane_.x(b) : plane_.y(a) < plane_.y(b);
  }
  bool isBelow(Number a, Number b) const {
    return plane_.y(a) != plane_.y(b) ? plane_.y(a) < plane_.y(b) : plane_.x(a) < plane_.x(b);
  }

  Part build(Number first, Number last) {
    if (last - first == 1) return {first, first, first, first};
    if (last - first == 2) return buildEdge(first);
    if (last - first == 3) return buildTriangle(first);
    const QuadrantSplit split = splitByQuadrant(plane_, first, last);
    const Part a = build(first, split.middle);
    const Part b = build(split.middle, last);
    zip(split.byX ? a.rightmost : a.highest, a.isPoint(), split.byX ? b.leftmost : b.lowest, b.isPoint());
    return {isLeftOf(a.leftmost, b.leftmost) ? a.leftmost : b.leftmost,
            isLeftOf(a.rightmost, b.rightmost) ? b.rightmost : a.rightmost,
            isBelow(a.lowest, b.lowest) ? a.lowest : b.lowest, isBelow(a.highest, b.highest) ? b.highest : a.highest};
  }

  Part outermost(const std::array<Number, 3>& points, std::size_t count) const {
    Part part{points[0], points[0], points[0], points[0]};
    for (std::size_t i = 1; i < count; ++i) {
      if (isLeftOf(points[i], part.leftmost)) part.leftmost = points[i];
      if (isLeftOf(part.rightmost, points[i])) part.rightmost = points[i];
      if (isBelow(points[i], part.lowest)) part.lowest = points[i];
      if (isBelow(part.highest, points[i])) part.highest = points[i];
    }
    return part;
  }

  Part buildEdge(Number first) {
    const Number e = edges_.add(first, first + 1);
    hullEdge_[first] = e;
    hullEdge_[first + 1] = reversed(e);
    return outermost({first, first + 1, 0}, 2);
  }

  Part buildTriangle(Number first) {
    std::array<Number, 3> p{first, first + 1, first + 2};
    std::sort(p.begin(), p.end(), [this](Number a, Number b) { return isLeftOf(a, b); });
    if (plane_.turnsLeft(p[0], p[2], p[1])) std::swap(p[1], p[2]);
    const Number e = edges_.add(p[0], p[1]);
    const Number f = edges_.add(p[1], p[2]);
    edges_.putAfter(reversed(e), f);
    hullEdge_[p[0]] = e;
    hullEdge_[p[1]] = f;
    hullEdge_[p[2]] = reversed(f);
    if (plane_.turnsLeft(p[0], p[1], p[2])) {
      const Number g = edges_.add(p[2], p[0]);
      edges_.putAfter(reversed(f), g);
      edges_.putAfter(e, reversed(g));
      hullEdge_[p[2]] = g;
    }
    return outermost(p, 3);
  }

  // Joins two parts, given an outermost point of each that faces the other part. "Lower" and "upper" are as seen with
  // the first part on the left.
  void zip(Number leftPoint, bool leftIsPoint, Number rightPoint, bool rightIsPoint) {
    const Number bridge = lowerBridge(leftPoint, leftIsPoint, rightPoint, rightIsPoint);
    hullEdge_[edges_.end(bridge)] = reversed(bridge);
    const Number upper = zipUpward(bridge);
    hullEdge_[edges_.origin(upper)] = upper;
  }

  // The edge, from right to left, of the common hull's lower side that joins the two parts.
  Number lowerBridge(Number leftPoint, bool leftIsPoint, Number rightPoint, bool rightIsPoint) {
    // On the left clockwise, on the right counter-clockwise; what stands beyond each edge is outside its part.
    Number left = leftIsPoint ? kNone : edges_.previous(hullEdge_[leftPoint]);
    Number right = rightIsPoint ? kNone : hullEdge_[rightPoint];
    for (;;) {
      if (!leftIsPoint && plane_.turnsLeft(leftPoint, edges_.end(left), rightPoint)) {
        leftPoint = edges_.end(left);
        left = edges_.previous(reversed(left));
      } else if (!rightIsPoint && plane_.turnsLeft(edges_.end(right), rightPoint, leftPoint)) {
        rightPoint = edges_.end(right);
        right = edges_.next(reversed(right));
      } else {
        break;
      }
    }
    const Number bridge = edges_.add(rightPoint, leftPoint);
    if (!rightIsPoint) edges_.putAfter(edges_.previous(right), bridge);
    if (!leftIsPoint) edges_.putAfter(left, reversed(bridge));
    return bridge;
  }

  // An edge of one part at an end of the bridge, and whether it leads above the bridge.
  struct Candidate {
    Number edge;
    bool rises;
  };

  // Adds edges between the parts from the bridge upward, each time to the point whose circle through the last edge is
  // empty, and deletes the edges that such circles cross. Returns the last edge, from right to left.
  Number zipUpward(Number bridge) {
    Number right = edges_.origin(bridge);
    Number left = edges_.end(bridge);
    for (;;) {
      const Candidate onLeft = candidate<&HalfEdges::next>(edges_.next(reversed(bridge)), left, right);
      const Candidate onRight = candidate<&HalfEdges::previous>(edges_.previous(bridge), left, right);
      if (!onLeft.rises && !onRight.rises) return bridge;
      if (!onLeft.rises ||
          (onRight.rises && plane_.circleContains(edges_.end(onLeft.edge), left, right, edges_.end(onRight.edge)))) {
        right = edges_.end(onRight.edge);
        const Number rung = edges_.add(right, left);
        edges_.putAfter(edges_.previous(reversed(onRight.edge)), rung);
        edges_.putAfter(reversed(bridge), reversed(rung));
        bridge = rung;
      } else {
        left = edges_.end(onLeft.edge);
        const Number rung = edges_.add(right, left);
        edges_.putAfter(edges_.previous(bridge), rung);
        edges_.putAfter(reversed(onLeft.edge), reversed(rung));
        bridge = rung;
      }
    }
  }

  // From edge e of one part, next to the bridge right -> left, turns away from the bridge, deleting edges, until the
  // circle through the bridge and the edge's end does not contain the end of the edge behind it. That end, if
  // contained, lies above the bridge too: some circle through the bridge is empty, and what the present one contains
  // beyond it is above.
  template <Number (HalfEdges::*Turn)(Number) const>
  Candidate candidate(Number e, Number left, Number right) {
    if (!plane_.turnsLeft(edges_.end(e), left, right)) return {e, false};
    for (;;) {
      const Number behind = (edges_.*Turn)(e);
      if (!plane_.circleContains(left, right, edges_.end(e), edges_.end(behind))) return {e, true};
      edges_.remove(e);
      e = behind;
    }
  }

  static constexpr Number kNone = 0xFFFFFFFFu;

  const Plane& plane_;
  HalfEdges edges_;

  // For every point on its part's hull, the hull edge that leaves it counter-clockwise; out of date for the others.
  std::vector<Number> hullEdge_;

  Number lowest_ = 0;
};

// Numbers what the half-edges, without gaps, describe by the conventions of a TIN.
class MeshWriter {
 public:
  MeshWriter(const HalfEdges& halves, Number firstHullEdge)
      : halves_(halves), triangleOf_(largeVector(halves.count(), kUnknown)) {
    markHull(firstHullEdge);
    writeTriangles();
    writeEdges();
  }

  Mesh takeMesh() { return std::move(mesh_); }

 private:
  static constexpr Number kUnknown = 0xFFFFFFFFu;
  static constexpr Number kOutside = 0;

  static Number numberOf(Number e) { return e / 2 + 1; }

  // The edge before e around the triangle on the left of e.
  Number before(Number e) const { return reversed(halves_.next(e)); }

  void markHull(Number firstHullEdge) {
    Number e = firstHullEdge;
    do {
      mesh_.hull.push_back(numberOf(e));
      triangleOf_[reversed(e)] = kOutside;
      e = halves_.next(reversed(e));
    } while (e != firstHullEdge);
  }

  void writeTriangles() {
    reserveLarge(mesh_.triangles, 1 + (halves_.count() - mesh_.hull.size()) / 3);
    for (Number e = 0; e < halves_.count(); ++e) {
      if (triangleOf_[e] != kUnknown) continue;
      const Number third = before(e);
      const Number second = before(third);
      const Number number = mesh_.addTriangle(numberOf(e), numberOf(second), numberOf(third));
      triangleOf_[e] = triangleOf_[second] = triangleOf_[third] = number;
    }
  }

  void writeEdges() {
    reserveLarge(mesh_.edges, 1 + halves_.count() / 2);
    for (Number e = 0; e < halves_.count(); e += 2) {
      const Number forward = triangleOf_[e] == kOutside ? reversed(e) : e;
      mesh_.edges.push_back(
          {halves_.origin(forward), halves_.end(forward), triangleOf_[forward], triangleOf_[reversed(forward)]});
    }
  }

  const HalfEdges& halves_;
  std::vector<Number> triangleOf_;  // to the left of each half-edge
  Mesh mesh_;
};

template <typename Plane>
Mesh triangulate(const Plane& plane) {
  Zipper<Plane> zipper(plane);
  zipper.run();
  Number firstHullEdge = zipper.firstHullEdge();
  HalfEdges edges = zipper.takeEdges();
  edges.closeGaps(firstHullEdge);
  return MeshWriter(edges, firstHullEdge).takeMesh();
}

bool areCollinear(const std::vector<MillimetrePosition>& positions) {
  const MillimetrePosition& a = positions.front();
  const MillimetrePosition& b = positions.back();
  return std::all_of(positions.begin(), positions.end(), [&a, &b](const MillimetrePosition& p) {
    return Int128{b.x - a.x} * (p.y - a.y) == Int128{b.y - a.y} * (p.x - a.x);
  });
}

// Brings the positions to coordinates from 0 on.
void moveToCorner(std::vector<MillimetrePosition>& positions) {
  MillimetrePosition corner = positions.front();
  for (const MillimetrePosition& p : positions) corner = {std::min(corner.x, p.x), std::min(corner.y, p.y)};
  for (MillimetrePosition& p : positions) p = {p.x - corner.x, p.y - corner.y};
}

// Reorders the positions by quadrants and drops repeats; the result tells where each came from.
std::vector<Number> orderWithoutRepeats(std::vector<MillimetrePosition>& positions) {
  std::vector<Number> order = quadrantOrder(positions);
  std::vector<MillimetrePosition> ordered;
  reserveLarge(ordered, positions.size());
  std::size_t kept = 0;
  for (const Number i : order) {
    if (!ordered.empty() && ordered.back() == positions[i]) continue;
    ordered.push_back(positions[i]);
    order[kept++] = i;
  }
  order.resize(kept);
  positions.swap(ordered);
  return order;
}

bool isNear(const std::vector<MillimetrePosition>& positions) {
  return std::all_of(positions.begin(), positions.end(),
                     [](const MillimetrePosition& p) { return p.x < NearPlane::kExtent && p.y < NearPlane::kExtent; });
}

std::vector<Position> asDoubles(const std::vector<MillimetrePosition>& positions) {
  std::vector<Position> result;
  reserveLarge(result, positions.size());
  for (const MillimetrePosition& p : positions) result.push_back({static_cast<double>(p.x), static_cast<double>(p.y)});
  return result;
}

}  // namespace

ExactTriangulation triangulateExactly(std::vector<MillimetrePosition> positions) {
  ExactTriangulation result;
  if (positions.empty()) return result;
  moveToCorner(positions);
  result.inputIndex = orderWithoutRepeats(positions);
  if (areCollinear(positions)) return result;
  if (isNear(positions)) {
    NearPlane plane(asDoubles(positions));
    positions = {};
    result.mesh = triangulate(plane);
  } else {
    result.mesh = triangulate(FarPlane(std::move(positions)));
  }
  return result;
}

}  // namespace detail
}  // namespace OrvikDTM
