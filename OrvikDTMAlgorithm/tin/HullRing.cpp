#include <cstddef>
#include <unordered_map>

#include <OrvikDTMAlgorithm/tin/CETypeElements.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/HullRing.h>
#include <OrvikDTMAlgorithm/tin/PointHash.h>
#include <OrvikDTMAlgorithm/tin/PointInPolygon.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

constexpr int kFewestNodes = 3;
constexpr std::size_t kFewestVertices = 3;

using PointIndex = std::unordered_map<TPoint, std::size_t, PointHash>;

// The hull's edges, told apart by the points that they join.
struct HullSides {
  std::vector<TPoint> starts;
  std::vector<TPoint> ends;
  PointIndex firstWithStart;
  std::size_t withLength = 0;

  void add(const TPoint& start, const TPoint& end) {
    if (start == end) return;  // a repeat that the construction kept; the ring goes on as if it were not there
    firstWithStart.try_emplace(start, starts.size());
    starts.push_back(start);
    ends.push_back(end);
    if (!start.equals(&end)) ++withLength;
  }
};

// False when a hull entry names no edge.
bool collectSides(const ConvexList& hull, const EList* edges, HullSides& sides) {
  for (int number = 1; number <= hull.getListLen(); ++number) {
    const TConvex* node = hull.findByNum(&hull, number);
    const TEdge* edge = node == nullptr || edges == nullptr ? nullptr : edges->findByNum(edges, node->getEdgeNo());
    if (!isWhole(edge)) return false;
    sides.add(*edge->getStartPoint(), *edge->getEndPoint());
  }
  return true;
}

// Chains the sides from the first on; whether they close into one ring that leaves none over. A ring that does leave
// some is one of several islands, or goes around a hole.
bool chain(const HullSides& sides, std::vector<TPoint>& ring) {
  if (sides.starts.empty()) return false;
  ring = {sides.starts[0], sides.ends[0]};
  PointIndex inRing{{sides.starts[0], 0}, {sides.ends[0], 1}};
  std::size_t walkedWithLength = sides.starts[0].equals(&sides.ends[0]) ? 0 : 1;
  for (;;) {
    const auto found = sides.firstWithStart.find(ring.back());
    if (found == sides.firstWithStart.end()) return false;
    const TPoint& next = sides.ends[found->second];
    if (!next.equals(&ring.back())) ++walkedWithLength;
    if (walkedWithLength > 1 && next.equals(&ring.front())) return walkedWithLength == sides.withLength;
    if (!inRing.try_emplace(next, inRing.size()).second) return false;
    ring.push_back(next);
  }
}

}  // namespace

std::shared_ptr<const HullRing> HullRing::of(const ConvexList* hull, const EList* edges) {
  if (hull == nullptr || hull->getListLen() < kFewestNodes) return nullptr;
  const auto result = std::make_shared<HullRing>();
  HullSides sides;
  std::vector<TPoint> ring;
  if (!collectSides(*hull, edges, sides) || !chain(sides, ring)) return result;
  result->invalid_ = false;
  result->vertices_.reserve(ring.size());
  for (const TPoint& vertex : ring) result->vertices_.push_back(positionOf(vertex));
  return result;
}

bool HullRing::contains(const Position& p) const {
  if (invalid_) return true;
  if (vertices_.size() < kFewestVertices) return false;
  EvenOddTest test(p);
  const Position* previous = &vertices_.back();
  for (const Position& vertex : vertices_) {
    if (test.side(*previous, vertex)) return true;
    previous = &vertex;
  }
  return test.inside();
}

}  // namespace detail
}  // namespace OrvikDTM
