#include "Model.h"

#include <algorithm>
#include <stdexcept>

#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/PList.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>
#include <OrvikDTMAlgorithm/tin/verifyTIN.h>

namespace bench {

namespace {

// The corner that a construction counts from.
TPoint lowestCorner(const Cloud& cloud) {
  TPoint corner = cloud.front();
  for (const TPoint& p : cloud) {
    corner.setX(std::min(corner.getX(), p.getX()));
    corner.setY(std::min(corner.getY(), p.getY()));
  }
  return corner;
}

// The points as the sweep sees them, made with `new`: the list that takes them releases them so.
std::vector<TPoint*> relativePoints(const Cloud& cloud) {
  const TPoint corner = lowestCorner(cloud);
  std::vector<TPoint*> points;
  points.reserve(cloud.size());
  for (const TPoint& p : cloud) points.push_back(new TPoint(p.getX() - corner.getX(), p.getY() - corner.getY(), 0.0));
  std::sort(points.begin(), points.end(), [](const TPoint* a, const TPoint* b) {
    return a->getY() != b->getY() ? a->getY() < b->getY() : a->getX() < b->getX();
  });
  return points;
}

}  // namespace

std::unique_ptr<CEType> build(Survey& survey) {
  std::unique_ptr<CEType> tin(Surface::optimizeTIN(survey.pointers));
  if (tin == nullptr || tin->getTList()->getListLen() == 0) throw std::runtime_error("no TIN was built");
  return tin;
}

std::array<const TPoint*, 3> cornersOf(const CEType& tin, int triangle) {
  EList* edges = tin.getEList();
  const int* three = tin.getTList()->findByNum(tin.getTList(), triangle)->getEno();
  const TEdge* first = edges->findByNum(edges, three[0]);
  const TEdge* second = edges->findByNum(edges, three[1]);
  const TPoint* a = first->getStartPoint();
  const TPoint* b = first->getEndPoint();
  const bool startIsThird = second->getStartPoint() != a && second->getStartPoint() != b;
  return {a, b, startIsThird ? second->getStartPoint() : second->getEndPoint()};
}

bool sweepStaysValid(const Cloud& cloud) {
  std::vector<TPoint*> points = relativePoints(cloud);
  const std::unique_ptr<PList> ordered(Surface::initPoins(points));
  if (ordered == nullptr) return false;
  const std::unique_ptr<CEType> fan(Surface::initCET(ordered.get()));
  if (fan == nullptr) return false;
  const std::unique_ptr<CEType> swept(Surface::buildTIN(ordered.get(), fan.get()));
  std::vector<TPoint*> all;
  for (int number = 1; number <= ordered->getListLen(); ++number)
    all.push_back(ordered->findByNum(ordered.get(), number));
  const bool valid = verifyTIN(*swept, all).valid();
  // Both refer to the same lists; one of the two releases them.
  fan->setCList(nullptr);
  fan->setEList(nullptr);
  fan->setTList(nullptr);
  return valid;
}

void checkRoad(const std::string& cloud) {
  const bool namedSweep = cloud.ends_with("_sweep");
  if (!namedSweep && !cloud.ends_with("_exact")) return;
  if (sweepStaysValid(cloudNamed(cloud)) != namedSweep) {
    throw std::runtime_error(cloud + " no longer takes the road that it is named for; choose another seed");
  }
}

}  // namespace bench
