// Taking the copy.
#include <algorithm>
#include <limits>

#include <OrvikDTMAlgorithm/tin/CETypeElements.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/Curve.h>
#include <OrvikDTMAlgorithm/tin/FlatTIN.h>
#include <OrvikDTMAlgorithm/tin/LargeArrays.h>
#include <OrvikDTMAlgorithm/tin/Orientation.h>
#include <OrvikDTMAlgorithm/tin/RadixSort.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

constexpr int kEdgesOfTriangle = 3;
constexpr int kNoCorner = 3;

int cornerAt(const FlatTIN::Corners& corners, const Position& p) {
  for (int i = 0; i < 3; ++i) {
    if (samePosition(corners.p[i], p)) return i;
  }
  return kNoCorner;
}

constexpr double kLargest = std::numeric_limits<double>::max();

Position middleOf(const TEdge& edge) {
  const TPoint& a = *edge.getStartPoint();
  const TPoint& b = *edge.getEndPoint();
  return {(a.getX() + b.getX()) / 2, (a.getY() + b.getY()) / 2};
}

// Tells the three pairs of corners apart.
int pairOf(int a, int b) { return 1 << (a + b); }

// Which sides of the edges are taken by triangles, and which ought to be.
class EdgeSides {
 public:
  explicit EdgeSides(int edges)
      : left_(sizeFor(edges)),
        right_(sizeFor(edges)),
        leftExpected_(sizeFor(edges)),
        rightExpected_(sizeFor(edges)),
        inRing_(sizeFor(edges)) {}

  // A triangle lies on one side of an edge, and another is named on the other side.
  void add(int edge, bool onLeft, bool hasOther) {
    const auto place = static_cast<std::size_t>(edge);
    (onLeft ? left_ : right_)[place] = true;
    if (hasOther) (onLeft ? rightExpected_ : leftExpected_)[place] = true;
  }

  void addToRing(int edge) { inRing_[static_cast<std::size_t>(edge)] = true; }

  // Whether whatever is named is there, and the ring has the edges with a triangle on their left only.
  bool areComplete() const {
    for (std::size_t edge = 1; edge < left_.size(); ++edge) {
      if ((leftExpected_[edge] && !left_[edge]) || (rightExpected_[edge] && !right_[edge])) return false;
      if (right_[edge] && !left_[edge]) return false;
      if (inRing_[edge] != (left_[edge] && !right_[edge])) return false;
    }
    return true;
  }

 private:
  static std::size_t sizeFor(int edges) { return static_cast<std::size_t>(edges) + 1; }

  std::vector<bool> left_;
  std::vector<bool> right_;
  std::vector<bool> leftExpected_;
  std::vector<bool> rightExpected_;
  std::vector<bool> inRing_;
};

int lengthOf(const SLType* list) { return list == nullptr ? 0 : list->getListLen(); }

// Of an entry that is missing, and of one that names nothing: 0.
std::vector<int> hullEdgesOf(const ConvexList* hull) {
  std::vector<int> edges;
  for (int number = 1; number <= lengthOf(hull); ++number) {
    const TConvex* entry = hull->findByNum(hull, number);
    edges.push_back(entry == nullptr ? 0 : entry->getEdgeNo());
  }
  return edges;
}

}  // namespace

std::shared_ptr<FlatTIN> FlatTIN::of(const CEType& tin) {
  const auto flat = std::make_shared<FlatTIN>();
  const std::shared_ptr<const HullRing> ring = HullRing::of(tin.hullList_, tin.edgeList_);
  flat->hull_ = tin.hullRing_ != nullptr ? tin.hullRing_ : ring;
  flat->edgeCount_ = lengthOf(tin.edgeList_);
  flat->hullEdges_ = hullEdgesOf(tin.getCList());
  const int count = tin.triangleCount();
  flat->chooseSlots(tin);
  if (flat->hull_ == nullptr) return flat;
  constexpr double kTrianglesPerCell = 64;
  flat->hullCells_ = HullCells(*flat->hull_, count / kTrianglesPerCell);
  flat->covers_ = flat->isCovering(tin, ring);
  return flat;
}

// True only if the triangles fit together along their edges and the ring is all of their outer boundary. Then, with
// every triangle run through counter-clockwise, inner edges are run through once in either direction and outer ones
// once in the ring's. So the windings of all triangles around a point add up to that of the ring, and a triangle winds
// once around the points in it and not at all around those outside.
bool FlatTIN::isCovering(const CEType& tin, const std::shared_ptr<const HullRing>& ring) const {
  if (ring == nullptr || ring->isInvalid() || hull_->isInvalid()) return false;
  const auto same = [](const Position& a, const Position& b) { return samePosition(a, b); };
  if (!std::equal(ring->vertices().begin(), ring->vertices().end(), hull_->vertices().begin(), hull_->vertices().end(),
                  same)) {
    return false;
  }
  EdgeSides sides(edgeCount_);
  for (const Record& r : records_) {
    if (!r.isPlain) return false;
    const Triangle& triangle = *tin.triangleList_->findByNum(tin.triangleList_, r.number);
    const int* edges = triangle.getEno();
    for (int which = 0; which < kEdgesOfTriangle; ++which) {
      const Way& way = r.ways[which];
      const TEdge* edge = tin.edgeList_->findByNum(tin.edgeList_, edges[which]);
      if (way.leavesToTheLeft != 0 && edge->getRightT() != r.number) return false;
      sides.add(edges[which], way.leavesToTheLeft == 0, r.next[which] != 0);
    }
  }
  for (int number = 1; number <= tin.hullList_->getListLen(); ++number) {
    sides.addToRing(tin.hullList_->findByNum(tin.hullList_, number)->getEdgeNo());
  }
  return sides.areComplete();
}

void FlatTIN::chooseSlots(const CEType& tin) {
  const int count = tin.triangleCount();
  std::vector<Position> places;
  reserveLarge(places, static_cast<std::size_t>(count));
  Box bounds{kLargest, kLargest, -kLargest, -kLargest};
  for (int tri = 1; tri <= count; ++tri) {
    const TEdge* edge = tin.edgeOf(tri, 0);
    places.push_back(edge == nullptr ? Position{0.0, 0.0} : middleOf(*edge));
    bounds = {std::min(bounds.minX, places.back().x), std::min(bounds.minY, places.back().y),
              std::max(bounds.maxX, places.back().x), std::max(bounds.maxY, places.back().y)};
  }
  constexpr unsigned kBits = 16;  // finer than the neighbourhood of a triangle among many millions
  const double extent = std::max(bounds.maxX - bounds.minX, bounds.maxY - bounds.minY);
  std::vector<KeyedNumber> order;
  reserveLarge(order, places.size());
  for (const Position& p : places) {
    const std::uint64_t key = alongCurve((p.x - bounds.minX) / extent, (p.y - bounds.minY) / extent, kBits);
    order.push_back({key, static_cast<Number>(order.size() + 1)});
  }
  places = {};
  radixSort(order);
  slots_ = largeVector<Number>(order.size());
  for (std::size_t i = 0; i < order.size(); ++i) slots_[order[i].number - 1] = static_cast<Number>(i + 1);
  reserveLarge(records_, order.size());
  for (const KeyedNumber& item : order) addTriangle(tin, static_cast<int>(item.number));
}

FlatTIN::OddEdge FlatTIN::oddEdgeOf(const CEType& tin, int tri, int which) const {
  OddEdge result;
  const TEdge* edge = tin.edgeOf(tri, which);
  if (edge == nullptr) return result;
  result.isWhole = true;
  result.leavesToTheLeft = edge->getLeftT() != tri;
  const int next = result.leavesToTheLeft ? edge->getLeftT() : edge->getRightT();
  result.next = exists(next) ? slotOf(next) : 0;
  result.start = positionOf(*edge->getStartPoint());
  result.end = positionOf(*edge->getEndPoint());
  return result;
}

// With the triangle run through counter-clockwise, edges that it runs along forwards have it on their left.
bool FlatTIN::isPlain(const Record& record) {
  if (record.isOdd || record.turn == 0) return false;
  return std::all_of(std::begin(record.ways), std::end(record.ways), [&record](const Way& way) {
    const bool runsForwards = (way.to == (way.from + 1) % kEdgesOfTriangle) == (record.turn > 0);
    return runsForwards == (way.leavesToTheLeft == 0);
  });
}

void FlatTIN::addTriangle(const CEType& tin, int tri) {
  Record record;
  record.number = tri;
  CEType::Corners points{};
  if (tin.cornersOf(tri, points)) {
    record.hasCorners = 1;
    record.corners = {{positionOf(*points.p1), positionOf(*points.p2), positionOf(*points.p3)},
                      {points.p1->getZ(), points.p2->getZ(), points.p3->getZ()}};
    const Position* p = record.corners.p;
    const int turn = orientation(p[0], p[1], p[2]);
    record.turn = turn > 0 ? 1 : turn < 0 ? -1 : 0;
  }
  OddTriangle odd;
  int joined = 0;
  for (int which = 0; which < kEdgesOfTriangle; ++which) {
    const OddEdge edge = odd.edges[which] = oddEdgeOf(tin, tri, which);
    const int from = cornerAt(record.corners, edge.start);
    const int to = cornerAt(record.corners, edge.end);
    if (edge.isWhole && from != kNoCorner && to != kNoCorner && from != to) joined |= pairOf(from, to);
    record.next[which] = edge.next;
    record.ways[which].from = from & kNoCorner;
    record.ways[which].to = to & kNoCorner;
    record.ways[which].leavesToTheLeft = edge.leavesToTheLeft ? 1 : 0;
  }
  if (!record.hasCorners || joined != (pairOf(0, 1) | pairOf(1, 2) | pairOf(2, 0))) {
    record.isOdd = 1;
    record.next[0] = static_cast<int>(odd_.size());
    odd_.push_back(odd);
  }
  record.isPlain = isPlain(record) ? 1 : 0;
  records_.push_back(record);
}

FlatTIN::OddEdge FlatTIN::edgeAt(int slot, int which) const {
  const Record& r = at(slot);
  if (r.isOdd) return odd_[static_cast<std::size_t>(r.next[0])].edges[which];
  const Way& way = r.ways[which];
  return {true, way.leavesToTheLeft != 0, r.next[which], r.corners.p[way.from], r.corners.p[way.to]};
}

}  // namespace detail
}  // namespace OrvikDTM
