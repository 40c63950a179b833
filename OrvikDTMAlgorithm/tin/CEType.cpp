#include <OrvikDTMAlgorithm/surface/RangePoint.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/NewObjects.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/Triangle3.h>

inline namespace OrvikDTM {

CEType::CEType(ConvexList* hull, EList* edges, TList* triangles)
    : hullList_(hull), edgeList_(edges), triangleList_(triangles) {}

CEType::CEType(const CEType& source) : hullList_(nullptr), edgeList_(nullptr), triangleList_(nullptr) {
  *this = source;
}

// The promise of a list is kept before it is copied: the lists and points that it needs may be gone when the copy is
// asked. What may run out of memory comes first.
CEType& CEType::operator=(const CEType& source) {
  if (this == &source) return *this;
  source.makeTriangle3List();
  std::vector<TPoint*> boundary = source.rangeList_;
  std::vector<std::shared_ptr<Triangle3>> pieces = source.triangle3List_;
  hullList_ = source.hullList_;
  edgeList_ = source.edgeList_;
  triangleList_ = source.triangleList_;
  rangeList_ = std::move(boundary);
  triangle3List_ = std::move(pieces);
  triangle3Source_ = {};
  hullRing_ = source.hullRing_;
  hullRingIsSettled_ = source.hullRingIsSettled_;
  flat_ = source.flat_;
  quietState_ = source.quietState_;
  seenEdits_ = source.seenEdits_;
  numbersMayChange_ = source.numbersMayChange_;
  lastTriangleNo_ = source.lastTriangleNo_;
  movedBack_ = source.movedBack_;
  originX_ = source.originX_;
  originY_ = source.originY_;
  heldPoints_ = source.heldPoints_;
  return *this;
}

CEType::~CEType() {
  delete hullList_;
  delete edgeList_;
  delete triangleList_;
  for (TPoint* p : rangeList_) delete p;
}

void CEType::setCList(ConvexList* hull) {
  forgetCopy();
  hullList_ = hull;
}

void CEType::setEList(EList* edges) {
  forgetCopy();
  if (edges != edgeList_) {
    triangle3Source_.level.reset();  // the old list may be gone already
    movedBack_ = false;
  }
  edgeList_ = edges;
}

void CEType::setTList(TList* triangles) {
  forgetCopy();
  if (triangles != triangleList_) triangle3Source_.level.reset();
  triangleList_ = triangles;
}

void CEType::setRangeList(const std::vector<RangePoint*>& range) {
  detail::NewObjects<TPoint> boundary(range.size());
  for (const RangePoint* p : range) {
    if (p != nullptr) boundary.add(TPoint(p->e, p->n, 0.0));
  }
  for (TPoint* p : rangeList_) delete p;
  rangeList_ = boundary.take();
}

}  // namespace OrvikDTM
