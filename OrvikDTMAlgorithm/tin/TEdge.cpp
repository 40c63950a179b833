#include <algorithm>
#include <cmath>

#include <OrvikDTMAlgorithm/tin/Direction.h>
#include <OrvikDTMAlgorithm/tin/SideOfLine.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>

inline namespace OrvikDTM {

double TEdge::getLength() const { return std::sqrt(getLength2()); }

double TEdge::getLength2() const {
  const double dx = endPoint_->getX() - startPoint_->getX();
  const double dy = endPoint_->getY() - startPoint_->getY();
  return dx * dx + dy * dy;
}

double TEdge::getLength3D() const { return std::sqrt(getLength2_3D()); }

double TEdge::getLength2_3D() const {
  const double dz = endPoint_->getZ() - startPoint_->getZ();
  return getLength2() + dz * dz;
}

double TEdge::getAngleByX() const {
  return detail::angleByX(startPoint_->getX(), startPoint_->getY(), endPoint_->getX(), endPoint_->getY());
}

bool TEdge::isPointInEdge(const TPoint* p) const { return point2Line(p) == detail::kOnLine; }

int TEdge::point2Line(const TPoint* p) const {
  return detail::sideOfLine(startPoint_->getX(), startPoint_->getY(), endPoint_->getX(), endPoint_->getY(), p->getX(),
                            p->getY());
}

bool TEdge::containPoint(const TPoint* p) const { return startPoint_->equals(p) || endPoint_->equals(p); }

double TEdge::getMinZ() const { return std::min(startPoint_->getZ(), endPoint_->getZ()); }

double TEdge::getMaxZ() const { return std::max(startPoint_->getZ(), endPoint_->getZ()); }

int TEdge::isSameLine(const TEdge* other) const {
  if (startPoint_->equals(other->startPoint_) && endPoint_->equals(other->endPoint_)) return 1;
  if (startPoint_->equals(other->endPoint_) && endPoint_->equals(other->startPoint_)) return -1;
  return 0;
}

void TEdge::show(TEdge* /*edge*/) {}

}  // namespace OrvikDTM
