#include <algorithm>
#include <array>
#include <utility>

#include <OrvikDTMAlgorithm/tin/Delaunay.h>
#include <OrvikDTMAlgorithm/tin/LargeArrays.h>
#include <OrvikDTMAlgorithm/tin/QuadrantOrder.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

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

  std::vector<HalfEdge> take() { return std::move(halves_); }

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

template <typename Plane>
ExactMesh triangulate(const Plane& plane) {
  Zipper<Plane> zipper(plane);
  zipper.run();
  Number firstHullEdge = zipper.firstHullEdge();
  HalfEdges edges = zipper.takeEdges();
  edges.closeGaps(firstHullEdge);
  return {edges.take(), firstHullEdge};
}

// Whether all positions lie on one line; the first and last of `order` differ unless all are equal.
bool areCollinear(const std::vector<MillimetrePosition>& positions, const std::vector<Number>& order) {
  const MillimetrePosition& a = positions[order.front()];
  const MillimetrePosition& b = positions[order.back()];
  return std::all_of(positions.begin(), positions.end(), [&a, &b](const MillimetrePosition& p) {
    return Int128{b.x - a.x} * (p.y - a.y) == Int128{b.y - a.y} * (p.x - a.x);
  });
}

// The box of the positions, from its lowest to its highest coordinates.
struct Box {
  MillimetrePosition low;
  MillimetrePosition high;
};

Box boxOf(const std::vector<MillimetrePosition>& positions) {
  Box box{positions.front(), positions.front()};
  for (const MillimetrePosition& p : positions) {
    box.low = {std::min(box.low.x, p.x), std::min(box.low.y, p.y)};
    box.high = {std::max(box.high.x, p.x), std::max(box.high.y, p.y)};
  }
  return box;
}

// The positions by quadrants of the box that begins at `corner`, without repeats.
std::vector<Number> orderWithoutRepeats(const std::vector<MillimetrePosition>& positions,
                                        const MillimetrePosition& corner) {
  std::vector<Number> order = quadrantOrder(positions, corner);
  const auto isRepeat = [&positions](Number i, Number j) { return positions[i] == positions[j]; };
  order.erase(std::unique(order.begin(), order.end(), isRepeat), order.end());
  return order;
}

// The positions in this order as seen from `corner`.
template <typename Point>
std::vector<Point> fromCorner(const std::vector<MillimetrePosition>& positions, const std::vector<Number>& order,
                              const MillimetrePosition& corner) {
  using Coordinate = decltype(Point::x);
  std::vector<Point> result;
  reserveLarge(result, order.size());
  for (const Number i : order) {
    const MillimetrePosition& p = positions[i];
    result.push_back({static_cast<Coordinate>(p.x - corner.x), static_cast<Coordinate>(p.y - corner.y)});
  }
  return result;
}

}  // namespace

ExactMesh::ExactMesh(std::vector<HalfEdge> halves, Number firstHullEdge)
    : halves_(std::move(halves)), triangleOf_(largeVector(halves_.size(), kUnknown)) {
  Number e = firstHullEdge;
  do {
    hull_.push_back(numberOf(e));
    triangleOf_[reversed(e)] = kOutside;
    e = halves_[reversed(e)].next;
  } while (e != firstHullEdge);
}

ExactTriangulation triangulateExactly(const std::vector<MillimetrePosition>& positions) {
  ExactTriangulation result;
  if (positions.empty()) return result;
  const Box box = boxOf(positions);
  result.inputIndex = orderWithoutRepeats(positions, box.low);
  if (areCollinear(positions, result.inputIndex)) return result;
  const bool isNear = box.high.x - box.low.x < NearPlane::kExtent && box.high.y - box.low.y < NearPlane::kExtent;
  result.mesh = isNear ? triangulate(NearPlane(fromCorner<Position>(positions, result.inputIndex, box.low)))
                       : triangulate(FarPlane(fromCorner<MillimetrePosition>(positions, result.inputIndex, box.low)));
  return result;
}

}  // namespace detail
}  // namespace OrvikDTM
