#include "TINFaultText.h"

#include <vector>

#include "Console.h"

namespace {

void addEnds(const TEdge* edge, std::vector<const TPoint*>& points) {
  if (edge == nullptr) return;
  for (const TPoint* p : {edge->getStartPoint(), edge->getEndPoint()}) {
    if (p != nullptr) points.push_back(p);
  }
}

void addTriangle(const CEType& tin, int number, std::vector<const TPoint*>& points) {
  const Triangle* const triangle = tin.getTList()->findByNum(tin.getTList(), number);
  if (triangle == nullptr) return;
  for (int i = 0; i < 3; ++i) addEnds(tin.getEList()->findByNum(tin.getEList(), triangle->getEno()[i]), points);
}

// The ends of the edges of what the check names.
std::vector<const TPoint*> pointsAt(const CEType& tin, const TINCheck& check) {
  std::vector<const TPoint*> points;
  switch (check.fault) {
    case TINFault::MissingEdge:
    case TINFault::OpenTriangle:
    case TINFault::NotCounterClockwise:
    case TINFault::Overlap:
      addTriangle(tin, check.number, points);
      break;
    case TINFault::WrongSlot:
    case TINFault::WrongHull:
    case TINFault::UnusedEdge:
      addEnds(tin.getEList()->findByNum(tin.getEList(), check.number), points);
      break;
    default:
      break;
  }
  return points;
}

}  // namespace

std::string describe(const CEType& tin, const TINCheck& check) {
  const std::vector<const TPoint*> points = pointsAt(tin, check);
  if (points.empty()) return toText(check);
  double x = 0.0;
  double y = 0.0;
  for (const TPoint* p : points) {
    x += p->getX() / static_cast<double>(points.size());
    y += p->getY() / static_cast<double>(points.size());
  }
  return toText(check) + ", near easting " + console::number(x) + ", northing " + console::number(y);
}

bool isOnlyOutline(const TINCheck& check) { return check.fault == TINFault::AreaGap && check.areaGap > 0.0; }
