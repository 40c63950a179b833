// Where a position lies in the TIN, and what lies next to a triangle. The queries run on a flat copy of the lists.
#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/tin/CETypeElements.h>
#include <OrvikDTMAlgorithm/tin/FlatTIN.h>

inline namespace OrvikDTM {

namespace {

constexpr int kEdgesOfTriangle = 3;

}  // namespace

const detail::FlatTIN& CEType::flat() const {
  if (flat_ != nullptr && !flat_->isCopyOf(*this)) forgetCopy();
  if (hullRing_ == nullptr) hullRing_ = detail::HullRing::of(hullList_, edgeList_);
  if (flat_ == nullptr) flat_ = detail::FlatTIN::of(*this);
  return *flat_;
}

void CEType::forgetCopy() const {
  flat_.reset();
  if (!hullRingIsSettled_) hullRing_.reset();
}

int CEType::locateTri(double x, double y) {
  if (triangleCount() == 0) return 0;
  const detail::FlatTIN& tin = flat();
  hullRingIsSettled_ = hullRing_ != nullptr;
  return tin.locate(x, y, lastTriangleNo_);
}

int CEType::locateTri(double x, double y, int start) {
  return start == 0 ? locateTri(x, y) : flat().locate(x, y, start, lastTriangleNo_);
}

int CEType::locateTri1(double x, double y) { return flat().scan(x, y, lastTriangleNo_); }

void CEType::toVertexPosition(double* x, double* y) const {
  if (!movedBack_) return;
  const auto moved = [](double v, double origin) {
    const double rounded = detail::roundThroughText(detail::kDecimalsOfPosition, v);
    return rounded == v ? (v - origin) + origin : v;
  };
  *x = moved(*x, originX_);
  *y = moved(*y, originY_);
}

int* CEType::getRelateT(int tri) const {
  int* neighbours = new int[kEdgesOfTriangle]{0, 0, 0};
  for (int which = 0; which < kEdgesOfTriangle; ++which) {
    const TEdge* edge = edgeOf(tri, which);
    if (edge == nullptr) continue;
    const int other = edge->getLeftT() != tri ? edge->getLeftT() : edge->getRightT();
    if (other >= 1 && other <= triangleCount()) neighbours[which] = other;
  }
  return neighbours;
}

int CEType::getZero(int a, int b, int c) const { return (a == 0 ? 1 : 0) + (b == 0 ? 1 : 0) + (c == 0 ? 1 : 0); }

}  // namespace OrvikDTM
