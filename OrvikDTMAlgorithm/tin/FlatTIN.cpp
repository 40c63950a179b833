// Taking the copy.
#include <algorithm>

#include <OrvikDTMAlgorithm/tin/CETypeElements.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/FlatTIN.h>
#include <OrvikDTMAlgorithm/tin/LargeArrays.h>
#include <OrvikDTMAlgorithm/tin/Orientation.h>
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

}  // namespace

std::shared_ptr<const FlatTIN> FlatTIN::of(const CEType& tin) {
  const auto flat = std::make_shared<FlatTIN>();
  const std::shared_ptr<const HullRing> ring = HullRing::of(tin.hullList_, tin.edgeList_);
  flat->hull_ = tin.hullRing_ != nullptr ? tin.hullRing_ : ring;
  flat->edgeCount_ = lengthOf(tin.edgeList_);
  const int count = tin.triangleCount();
  reserveLarge(flat->records_, static_cast<std::size_t>(count));
  for (int tri = 1; tri <= count; ++tri) flat->addTriangle(tin, tri);
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
  if (ring->isInvalid() || hull_->isInvalid()) return false;
  const auto same = [](const Position& a, const Position& b) { return samePosition(a, b); };
  if (!std::equal(ring->vertices().begin(), ring->vertices().end(), hull_->vertices().begin(), hull_->vertices().end(),
                  same)) {
    return false;
  }
  EdgeSides sides(edgeCount_);
  for (int tri = 1; tri <= triangleCount(); ++tri) {
    const Record& r = record(tri);
    if (r.isOdd || r.turn == 0) return false;
    const int* edges = tin.triangleList_->findByNum(tin.triangleList_, tri)->getEno();
    for (int which = 0; which < kEdgesOfTriangle; ++which) {
      const Way& way = r.ways[which];
      const bool runsCounterClockwise = (way.to == (way.from + 1) % kEdgesOfTriangle) == (r.turn > 0);
      if (runsCounterClockwise == (way.leavesToTheLeft != 0)) return false;
      const TEdge* edge = tin.edgeList_->findByNum(tin.edgeList_, edges[which]);
      if (way.leavesToTheLeft != 0 && edge->getRightT() != tri) return false;
      sides.add(edges[which], way.leavesToTheLeft == 0, r.next[which] != 0);
    }
  }
  for (int number = 1; number <= tin.hullList_->getListLen(); ++number) {
    sides.addToRing(tin.hullList_->findByNum(tin.hullList_, number)->getEdgeNo());
  }
  return sides.areComplete();
}

bool FlatTIN::isCopyOf(const CEType& tin) const {
  return triangleCount() == lengthOf(tin.triangleList_) && edgeCount_ == lengthOf(tin.edgeList_) &&
         hull_ == tin.hullRing_;
}

FlatTIN::OddEdge FlatTIN::oddEdgeOf(const CEType& tin, int tri, int which) {
  OddEdge result;
  const TEdge* edge = tin.edgeOf(tri, which);
  if (edge == nullptr) return result;
  result.isWhole = true;
  result.leavesToTheLeft = edge->getLeftT() != tri;
  const int next = result.leavesToTheLeft ? edge->getLeftT() : edge->getRightT();
  result.next = next >= 1 && next <= tin.triangleCount() ? next : 0;
  result.start = positionOf(*edge->getStartPoint());
  result.end = positionOf(*edge->getEndPoint());
  return result;
}

void FlatTIN::addTriangle(const CEType& tin, int tri) {
  Record record;
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
  records_.push_back(record);
}

FlatTIN::OddEdge FlatTIN::edgeOf(int tri, int which) const {
  const Record& r = record(tri);
  if (r.isOdd) return odd_[static_cast<std::size_t>(r.next[0])].edges[which];
  const Way& way = r.ways[which];
  return {true, way.leavesToTheLeft != 0, r.next[which], r.corners.p[way.from], r.corners.p[way.to]};
}

int FlatTIN::neighbour(int tri, int which) const { return edgeOf(tri, which).next; }

}  // namespace detail
}  // namespace OrvikDTM
