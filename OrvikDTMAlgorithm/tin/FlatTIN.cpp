// Taking the copy.
#include <OrvikDTMAlgorithm/tin/CETypeElements.h>
#include <OrvikDTMAlgorithm/tin/FlatTIN.h>
#include <OrvikDTMAlgorithm/tin/LargeArrays.h>
#include <OrvikDTMAlgorithm/tin/Orientation.h>

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

int lengthOf(const SLType* list) { return list == nullptr ? 0 : list->getListLen(); }

}  // namespace

std::shared_ptr<const FlatTIN> FlatTIN::of(const CEType& tin) {
  const auto flat = std::make_shared<FlatTIN>();
  flat->hull_ = tin.hullRing_ != nullptr ? tin.hullRing_ : HullRing::of(tin.hullList_, tin.edgeList_);
  flat->edgeCount_ = lengthOf(tin.edgeList_);
  const int count = tin.triangleCount();
  reserveLarge(flat->records_, static_cast<std::size_t>(count));
  for (int tri = 1; tri <= count; ++tri) flat->addTriangle(tin, tri);
  return flat;
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
