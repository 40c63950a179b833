// The checks behind verifyTIN(), on a flat mesh and on whichever arithmetic is exact for its coordinates. Private.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

#include <OrvikDTMAlgorithm/tin/ExactPlane.h>
#include <OrvikDTMAlgorithm/tin/Mesh.h>
#include <OrvikDTMAlgorithm/tin/Orientation.h>
#include <OrvikDTMAlgorithm/tin/OutlineCheck.h>
#include <OrvikDTMAlgorithm/tin/verifyTIN.h>

inline namespace OrvikDTM {
namespace detail {

// By how much, in squared coordinate units, the triangles may miss the hull's area: what the sweep's tolerance leaves
// out along a nearly straight hull without anybody noticing.
inline constexpr double kAreaGapTolerance = 0.001;

// Positions in whole millimetres; differences must fit 63 bits.
class MillimetrePlane {
 public:
  using Area = Int128;

  explicit MillimetrePlane(std::vector<MillimetrePosition> positions) : positions_(std::move(positions)) {}

  Number size() const { return static_cast<Number>(positions_.size()); }
  const MillimetrePosition& operator[](Number i) const { return positions_[i]; }
  bool isFinite(Number /*i*/) const { return true; }
  bool same(Number i, Number j) const { return positions_[i] == positions_[j]; }

  bool lower(Number i, Number j) const {
    const MillimetrePosition& a = positions_[i];
    const MillimetrePosition& b = positions_[j];
    return a.y != b.y ? a.y < b.y : a.x < b.x;
  }

  bool leftOf(Number i, Number j) const {
    const MillimetrePosition& a = positions_[i];
    const MillimetrePosition& b = positions_[j];
    return a.x != b.x ? a.x < b.x : a.y < b.y;
  }

  Int128 along(Number i, const int* direction) const {
    return Int128{positions_[i].x} * direction[0] + Int128{positions_[i].y} * direction[1];
  }

  Area doubledArea(Number i, Number j, Number k) const {
    const MillimetrePosition& a = positions_[i];
    const MillimetrePosition& b = positions_[j];
    const MillimetrePosition& c = positions_[k];
    return Int128{b.x - a.x} * (c.y - a.y) - Int128{b.y - a.y} * (c.x - a.x);
  }

  int turn(Number i, Number j, Number k) const {
    const Area area = doubledArea(i, j, k);
    return area > 0 ? 1 : area < 0 ? -1 : 0;
  }

  // Adds an area, unless the sum is far beyond that of any hull already.
  static void add(Area& sum, const Area& area) {
    constexpr Area kBeyondAnyHull = Area{1} << 125;
    if (sum < kBeyondAnyHull && sum > -kBeyondAnyHull) sum += area;
  }

  // In squared coordinate units.
  static double toArea(Area doubled) {
    return static_cast<double>(doubled) / (2 * kMillimetresPerUnit * kMillimetresPerUnit);
  }

 private:
  std::vector<MillimetrePosition> positions_;
};

// A sum of doubles that keeps what each addition rounds off.
class CarefulSum {
 public:
  CarefulSum& operator+=(double v) {
    const double sum = sum_ + v;
    rest_ += std::fabs(sum_) >= std::fabs(v) ? (sum_ - sum) + v : (v - sum) + sum_;
    sum_ = sum;
    return *this;
  }
  double operator-(const CarefulSum& other) const { return (sum_ - other.sum_) + (rest_ - other.rest_); }

 private:
  double sum_ = 0.0;
  double rest_ = 0.0;
};

// Positions as doubles, compared by exact signs.
class DoublePlane {
 public:
  using Area = CarefulSum;

  explicit DoublePlane(std::vector<Position> positions) : positions_(std::move(positions)) {}

  Number size() const { return static_cast<Number>(positions_.size()); }
  bool isFinite(Number i) const { return std::isfinite(positions_[i].x) && std::isfinite(positions_[i].y); }
  bool same(Number i, Number j) const { return samePosition(positions_[i], positions_[j]); }

  bool lower(Number i, Number j) const {
    const Position& a = positions_[i];
    const Position& b = positions_[j];
    return a.y != b.y ? a.y < b.y : a.x < b.x;
  }

  bool leftOf(Number i, Number j) const {
    const Position& a = positions_[i];
    const Position& b = positions_[j];
    return a.x != b.x ? a.x < b.x : a.y < b.y;
  }

  double along(Number i, const int* direction) const {
    return positions_[i].x * direction[0] + positions_[i].y * direction[1];
  }

  double doubledArea(Number i, Number j, Number k) const {
    const Position& a = positions_[i];
    const Position& b = positions_[j];
    const Position& c = positions_[k];
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
  }

  int turn(Number i, Number j, Number k) const { return orientation(positions_[i], positions_[j], positions_[k]); }

  static void add(Area& sum, double area) { sum += area; }

  static double toArea(double doubled) { return doubled / 2; }

 private:
  std::vector<Position> positions_;
};

inline bool listsEdge(const Mesh& mesh, Number triangle, Number edge) {
  const Number* e = mesh.triangles[triangle].edge;
  return e[0] == edge || e[1] == edge || e[2] == edge;
}

// The lowest edge that does not name a triangle which lists it, names one that does not list it, or has one triangle on
// both sides; 0 when there is none.
inline Number wrongSlot(const Mesh& mesh) {
  Number lowest = 0;
  const auto note = [&lowest](Number edge) { lowest = lowest == 0 ? edge : std::min(lowest, edge); };
  for (Number triangle = 1; triangle <= mesh.triangleCount(); ++triangle) {
    for (const Number edge : mesh.triangles[triangle].edge) {
      if (mesh.edges[edge].left != triangle && mesh.edges[edge].right != triangle) note(edge);
    }
  }
  for (Number edge = 1; edge <= mesh.edgeCount(); ++edge) {
    const MeshEdge& e = mesh.edges[edge];
    for (const Number triangle : {e.left, e.right}) {
      if (triangle != 0 && !listsEdge(mesh, triangle, edge)) note(edge);
    }
    if (e.left != 0 && e.left == e.right) note(edge);
  }
  return lowest;
}

// The corners of a triangle, walked with the triangle on the left of its edges; false when they do not close.
template <typename Plane>
bool cornersInOrder(const Mesh& mesh, const Plane& plane, Number triangle, std::array<Number, 3>& corner) {
  std::array<Number, 3> from{};
  std::array<Number, 3> to{};
  for (std::size_t i = 0; i < 3; ++i) {
    const MeshEdge& edge = mesh.edges[mesh.triangles[triangle].edge[i]];
    const bool onLeft = edge.left == triangle;
    from[i] = onLeft ? edge.start : edge.end;
    to[i] = onLeft ? edge.end : edge.start;
  }
  // Beside a repeated position two edges may start where the first ends; only one of them leads on to the third.
  const std::size_t second = plane.same(from[1], to[0]) && plane.same(from[2], to[1]) ? 1 : 2;
  const std::size_t third = 3 - second;
  corner = {from[0], from[second], from[third]};
  return plane.same(to[0], from[second]) && plane.same(to[second], from[third]) && plane.same(to[third], from[0]);
}

// The outermost of the numbered positions in eight directions, counter-clockwise, neighbours different.
template <typename Plane>
std::vector<Number> outermost(const Plane& plane, const std::vector<Number>& numbers) {
  constexpr int kDirections[8][2] = {{0, -1}, {1, -1}, {1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}};
  std::vector<Number> result;
  for (const int* direction : kDirections) {
    const auto nearer = [&plane, direction](Number i, Number j) {
      return plane.along(i, direction) < plane.along(j, direction);
    };
    const Number farthest = *std::max_element(numbers.begin(), numbers.end(), nearer);
    if (result.empty() || !plane.same(result.back(), farthest)) result.push_back(farthest);
  }
  if (result.size() > 1 && plane.same(result.back(), result.front())) result.pop_back();
  return result;
}

// The finite positions less those strictly inside an octagon of outermost ones, which are on no hull.
template <typename Plane>
std::vector<Number> hullCandidates(const Plane& plane) {
  std::vector<Number> numbers;
  numbers.reserve(plane.size());
  for (Number i = 0; i < plane.size(); ++i) {
    if (plane.isFinite(i)) numbers.push_back(i);
  }
  if (numbers.size() < 3) return numbers;
  const std::vector<Number> ring = outermost(plane, numbers);
  if (ring.size() < 3) return numbers;
  const auto isInside = [&plane, &ring](Number i) {
    Number from = ring.back();
    for (const Number to : ring) {
      if (plane.turn(from, to, i) <= 0) return false;
      from = to;
    }
    return true;
  };
  numbers.erase(std::remove_if(numbers.begin(), numbers.end(), isInside), numbers.end());
  return numbers;
}

// Twice the area of the convex hull of the plane's finite positions.
template <typename Plane>
typename Plane::Area doubledHullArea(const Plane& plane) {
  std::vector<Number> order = hullCandidates(plane);
  typename Plane::Area sum{};
  if (order.size() < 3) return sum;
  std::sort(order.begin(), order.end(), [&plane](Number i, Number j) { return plane.lower(i, j); });
  std::vector<Number> hull;
  const auto chain = [&](auto first, auto last) {
    const std::size_t base = hull.size() + 1;
    for (; first != last; ++first) {
      while (hull.size() > base && plane.turn(hull[hull.size() - 2], hull.back(), *first) <= 0) hull.pop_back();
      hull.push_back(*first);
    }
    hull.pop_back();
  };
  chain(order.begin(), order.end());
  chain(order.rbegin(), order.rend());
  for (std::size_t i = 2; i < hull.size(); ++i) sum += plane.doubledArea(hull[0], hull[i - 1], hull[i]);
  return sum;
}

// What a triangle's corners are to a valid triangulation.
enum class TriangleState { Sound, Open, Turned };

// The state of a triangle; if it closes, twice its area is added to `sum`. Area 0 is sound only where two corners share
// a position: a repeat that did no harm.
template <typename Plane>
TriangleState stateOf(const Mesh& mesh, const Plane& plane, Number triangle, typename Plane::Area& sum) {
  std::array<Number, 3> corner{};
  if (!cornersInOrder(mesh, plane, triangle, corner)) return TriangleState::Open;
  const auto [a, b, c] = corner;
  Plane::add(sum, plane.doubledArea(a, b, c));
  const int turn = plane.turn(a, b, c);
  const bool hasRepeat = plane.same(a, b) || plane.same(b, c) || plane.same(c, a);
  return turn > 0 || (turn == 0 && hasRepeat) ? TriangleState::Sound : TriangleState::Turned;
}

// The geometric part of the check, for a mesh whose edges and slots are consistent and whose positions are all corners
// of triangles: triangles closed and counter-clockwise, none over another, areas adding up to that of the hull of all
// positions of the plane. The areas need not be asked where the outline is a convex polygon.
template <typename Plane>
TINCheck checkGeometry(const Mesh& mesh, const Plane& plane) {
  Number turned = 0;
  typename Plane::Area sum{};
  for (Number triangle = 1; triangle <= mesh.triangleCount(); ++triangle) {
    const TriangleState state = stateOf(mesh, plane, triangle, sum);
    if (state == TriangleState::Open) return {TINFault::OpenTriangle, static_cast<int>(triangle), 0.0};
    if (state == TriangleState::Turned && turned == 0) turned = triangle;
  }
  if (turned != 0) return {TINFault::NotCounterClockwise, static_cast<int>(turned), 0.0};
  const std::vector<OutlineSide> outline = outlineOf(mesh, plane);
  if (isConvexPolygon(outline, plane)) return {};
  if (const Number triangle = overlappingTriangle(outline, plane); triangle != 0) {
    return {TINFault::Overlap, static_cast<int>(triangle), 0.0};
  }
  const double gap = Plane::toArea(doubledHullArea(plane) - sum);
  const bool covers = std::fabs(gap) <= kAreaGapTolerance;
  return {covers ? TINFault::None : TINFault::AreaGap, 0, gap};
}

}  // namespace detail
}  // namespace OrvikDTM
