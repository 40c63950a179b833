#include <algorithm>
#include <utility>

#include <OrvikDTMAlgorithm/surface/RangePoint.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>
#include <OrvikDTMAlgorithm/tin/Triangle3.h>

inline namespace OrvikDTM {

CEType::CEType(ConvexList* hull, EList* edges, TList* triangles)
    : hullList_(hull), edgeList_(edges), triangleList_(triangles) {}

CEType::CEType(const CEType& source) = default;

CEType& CEType::operator=(const CEType& source) = default;

CEType::~CEType() {
  delete hullList_;
  delete edgeList_;
  delete triangleList_;
  for (TPoint* p : rangeList_) delete p;
}

void CEType::setCList(ConvexList* hull) { hullList_ = hull; }

void CEType::setEList(EList* edges) {
  getTriangle3List();  // what was measured on the old edges is drawn from them
  edgeList_ = edges;
}

void CEType::setTList(TList* triangles) {
  getTriangle3List();
  triangleList_ = triangles;
}

void CEType::setRangeList(const std::vector<RangePoint*>& range) {
  for (TPoint* p : rangeList_) delete p;
  rangeList_.clear();
  rangeList_.reserve(range.size());
  for (const RangePoint* p : range) {
    if (p != nullptr) rangeList_.push_back(new TPoint(p->e, p->n, 0.0));
  }
}

int CEType::triangleCount() const { return triangleList_ == nullptr ? 0 : triangleList_->getListLen(); }

TEdge* CEType::edgeOf(int tri, int which) const {
  if (triangleList_ == nullptr || edgeList_ == nullptr) return nullptr;
  Triangle* triangle = triangleList_->findByNum(triangleList_, tri);
  if (triangle == nullptr) return nullptr;
  TEdge* edge = edgeList_->findByNum(edgeList_, triangle->getEno()[which]);
  const bool whole = edge != nullptr && edge->getStartPoint() != nullptr && edge->getEndPoint() != nullptr;
  return whole ? edge : nullptr;
}

bool CEType::cornersOf(int tri, Corners& corners) const {
  const TEdge* first = edgeOf(tri, 0);
  const TEdge* second = edgeOf(tri, 1);
  if (first == nullptr || second == nullptr) return false;
  corners.p1 = first->getStartPoint();
  corners.p2 = first->getEndPoint();
  const bool startIsKnown = first->containPoint(second->getStartPoint());
  corners.p3 = startIsKnown ? second->getEndPoint() : second->getStartPoint();
  return true;
}

}  // namespace OrvikDTM
