#include <algorithm>
#include <array>
#include <cstddef>
#include <unordered_map>
#include <utility>

#include <OrvikDTMAlgorithm/tin/CETypeElements.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/HullRing.h>
#include <OrvikDTMAlgorithm/tin/Orientation.h>
#include <OrvikDTMAlgorithm/tin/PointHash.h>
#include <OrvikDTMAlgorithm/tin/PointInPolygon.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

constexpr int kFewestNodes = 3;
constexpr std::size_t kFewestVertices = 3;

// More than the chains that can wait at once: two of each level, and there are fewer levels than bits of a number.
constexpr std::size_t kDeepest = 128;

Box boxOf(const Position& p) { return {p.x, p.y, p.x, p.y}; }

Box unionOf(const Box& a, const Box& b) {
  return {std::min(a.minX, b.minX), std::min(a.minY, b.minY), std::max(a.maxX, b.maxX), std::max(a.maxY, b.maxY)};
}

bool meets(const Box& a, const Box& b) {
  return a.minX <= b.maxX && a.maxX >= b.minX && a.minY <= b.maxY && a.maxY >= b.minY;
}

// False when the box of the side misses the box, or the box lies wholly on one side of its line.
bool mayTouchSide(const Position& from, const Position& to, const Box& box) {
  if (!meets(unionOf(boxOf(from), boxOf(to)), box)) return false;
  const int turn = orientation(from, to, {box.minX, box.minY});
  return turn == 0 || turn != orientation(from, to, {box.minX, box.maxY}) ||
         turn != orientation(from, to, {box.maxX, box.minY}) || turn != orientation(from, to, {box.maxX, box.maxY});
}

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
  result->makeTree();
  return result;
}

void HullRing::makeTree() {
  if (vertices_.size() < kFewestVertices) return;
  std::vector<Box> boxes;
  for (std::size_t first = 0; first < vertices_.size(); first += kSidesOfLeaf) {
    Box box = boxOf(startOfSide(first));
    for (std::size_t side = first; side < std::min(first + kSidesOfLeaf, vertices_.size()); ++side) {
      box = unionOf(box, boxOf(vertices_[side]));
    }
    boxes.push_back(box);
  }
  levels_.push_back(std::move(boxes));
  while (levels_.back().size() > 1) {
    const std::vector<Box>& below = levels_.back();
    std::vector<Box> above;
    for (std::size_t i = 0; i < below.size(); i += 2) {
      above.push_back(i + 1 < below.size() ? unionOf(below[i], below[i + 1]) : below[i]);
    }
    levels_.push_back(std::move(above));
  }
}

std::size_t HullRing::endOfSides(const Chain& chain) const {
  return std::min(((chain.index + 1) << chain.level) * kSidesOfLeaf, vertices_.size());
}

// Follows the ray from p towards +y. A chain that lies above p as a whole, wherever it wanders there, crosses the ray
// in sum as often as the straight line from its start to its end, so only chains around p are looked into.
HullRing::Place HullRing::placeOf(const Position& p) const {
  Place place;
  if (levels_.empty()) return place;
  std::array<Chain, kDeepest> open;
  std::size_t count = 0;
  open[count++] = {static_cast<unsigned>(levels_.size() - 1), 0};
  const auto crossings = [&p](const Position& from, const Position& to) { return (from.x > p.x) - (to.x > p.x); };
  while (count > 0) {
    const Chain chain = open[--count];
    const Box& box = levels_[chain.level][chain.index];
    if (!(box.minX <= p.x && p.x <= box.maxX && p.y <= box.maxY)) continue;
    const std::size_t first = firstSide(chain);
    const std::size_t end = endOfSides(chain);
    if (p.y < box.minY) {
      place.winding += crossings(startOfSide(first), vertices_[end - 1]);
    } else if (chain.level > 0) {
      for (const std::size_t half : {2 * chain.index, 2 * chain.index + 1}) {
        if (half < levels_[chain.level - 1].size()) open[count++] = {chain.level - 1, half};
      }
    } else {
      for (std::size_t side = first; side < end; ++side) {
        EvenOddTest test(p);
        if (test.side(startOfSide(side), vertices_[side])) return {true, 0};
        if (test.inside()) place.winding += crossings(startOfSide(side), vertices_[side]);
      }
    }
  }
  return place;
}

bool HullRing::mayTouch(const Box& box) const {
  if (levels_.empty()) return false;
  std::array<Chain, kDeepest> open;
  std::size_t count = 0;
  open[count++] = {static_cast<unsigned>(levels_.size() - 1), 0};
  while (count > 0) {
    const Chain chain = open[--count];
    if (!meets(levels_[chain.level][chain.index], box)) continue;
    if (chain.level > 0) {
      for (const std::size_t half : {2 * chain.index, 2 * chain.index + 1}) {
        if (half < levels_[chain.level - 1].size()) open[count++] = {chain.level - 1, half};
      }
      continue;
    }
    for (std::size_t side = firstSide(chain); side < endOfSides(chain); ++side) {
      if (mayTouchSide(startOfSide(side), vertices_[side], box)) return true;
    }
  }
  return false;
}

}  // namespace detail
}  // namespace OrvikDTM
