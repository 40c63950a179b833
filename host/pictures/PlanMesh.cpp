#include "PlanMesh.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <unordered_map>

#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>

namespace pictures {

namespace {

struct SamePoint {
  bool operator()(const TPoint* a, const TPoint* b) const { return *a == *b; }
};

struct HashPoint {
  std::size_t operator()(const TPoint* p) const {
    constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15U;  // odd, its bits evenly spread
    std::uint64_t hash = 0;
    for (const double v : {p->getX(), p->getY(), p->getZ()}) {
      hash = (hash ^ std::bit_cast<std::uint64_t>(v + 0.0)) * kMix;  // -0 and 0 are equal
      hash ^= hash >> 32U;
    }
    return hash;
  }
};

bool isFinite(const TPoint& p) { return std::isfinite(p.getX()) && std::isfinite(p.getY()) && std::isfinite(p.getZ()); }

// The numbers that points get in the order in which they are first asked for.
class Numbering {
 public:
  Numbering(const Origin& origin, std::vector<Point>& points) : origin_(origin), points_(points) {}

  std::uint32_t of(const TPoint& p) {
    const auto [place, isNew] = numbers_.try_emplace(&p, static_cast<std::uint32_t>(points_.size()));
    if (isNew) points_.push_back({p.getX() - origin_.x, p.getY() - origin_.y, p.getZ()});
    return place->second;
  }

 private:
  Origin origin_;
  std::vector<Point>& points_;
  std::unordered_map<const TPoint*, std::uint32_t, HashPoint, SamePoint> numbers_;
};

// The corners of a triangle: both ends of its first edge, and the end of its second that is neither.
bool cornersOf(const CEType& tin, const Triangle& triangle, std::array<const TPoint*, 3>& corners) {
  const EList* const edges = tin.getEList();
  if (edges == nullptr) return false;
  const TEdge* const first = edges->findByNum(edges, triangle.getEno()[0]);
  const TEdge* const second = edges->findByNum(edges, triangle.getEno()[1]);
  if (first == nullptr || second == nullptr) return false;
  const TPoint* const a = first->getStartPoint();
  const TPoint* const b = first->getEndPoint();
  const TPoint* c = second->getStartPoint();
  if (a == nullptr || b == nullptr || c == nullptr || second->getEndPoint() == nullptr) return false;
  if (c->equals(a) || c->equals(b)) c = second->getEndPoint();
  corners = {a, b, c};
  return isFinite(*a) && isFinite(*b) && isFinite(*c);
}

// Both directions of an edge sort beside each other; an edge that comes once is one of the hull.
void findEdges(PlanMesh& mesh) {
  std::vector<std::array<std::uint32_t, 2>> sides;
  sides.reserve(3 * mesh.triangles.size());
  for (const auto& t : mesh.triangles) {
    for (std::size_t i = 0; i < 3; ++i) {
      const std::uint32_t from = t[i];
      const std::uint32_t to = t[(i + 1) % 3];
      sides.push_back({std::min(from, to), std::max(from, to)});
    }
  }
  std::sort(sides.begin(), sides.end());
  for (std::size_t i = 0; i < sides.size();) {
    std::size_t next = i;
    while (next < sides.size() && sides[next] == sides[i]) ++next;
    mesh.edges.push_back(sides[i]);
    if (next == i + 1) mesh.hull.push_back(sides[i]);
    i = next;
  }
}

}  // namespace

Box Box::none() {
  constexpr double kMost = std::numeric_limits<double>::infinity();
  return {kMost, kMost, -kMost, -kMost};
}

void Box::add(double x, double y) {
  minX = std::min(minX, x);
  minY = std::min(minY, y);
  maxX = std::max(maxX, x);
  maxY = std::max(maxY, y);
}

void Box::add(const Box& other) {
  add(other.minX, other.minY);
  add(other.maxX, other.maxY);
}

bool Box::meets(const Box& other) const {
  return minX <= other.maxX && other.minX <= maxX && minY <= other.maxY && other.minY <= maxY;
}

Origin originOf(const CEType& tin) {
  const std::vector<double> range = tin.getRangeXY();  // largest y, smallest y, largest x, smallest x
  return {std::floor(range[3]), std::floor(range[1])};
}

Box PlanMesh::box() const {
  Box all = Box::none();
  for (const Point& p : points) all.add(p.x, p.y);
  return all;
}

PlanMesh planMesh(const CEType& tin, const Origin& origin) {
  PlanMesh mesh;
  mesh.origin = origin;
  const TList* const list = tin.getTList();
  const int count = list == nullptr ? 0 : list->getListLen();
  mesh.triangles.reserve(static_cast<std::size_t>(count));
  Numbering numbers(origin, mesh.points);
  std::array<const TPoint*, 3> corners{};
  for (int number = 1; number <= count; ++number) {
    const Triangle* const triangle = list->findByNum(list, number);
    if (triangle == nullptr || !cornersOf(tin, *triangle, corners)) continue;
    std::array<std::uint32_t, 3> t{numbers.of(*corners[0]), numbers.of(*corners[1]), numbers.of(*corners[2])};
    const double area = cross(mesh.points[t[0]], mesh.points[t[1]], mesh.points[t[2]]);
    if (area == 0.0) continue;
    if (area < 0.0) std::swap(t[1], t[2]);
    mesh.triangles.push_back(t);
  }
  findEdges(mesh);
  return mesh;
}

}  // namespace pictures
