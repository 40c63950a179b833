// The construction's first stages one by one, on published lists.
#include <algorithm>
#include <memory>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/Construction.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/PList.h>
#include <OrvikDTMAlgorithm/tin/Publish.h>
#include <OrvikDTMAlgorithm/tin/Sweep.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>

inline namespace OrvikDTM {

namespace {

using detail::Mesh;
using detail::Number;

std::vector<detail::Position> positionsOf(const std::vector<TPoint*>& points) {
  std::vector<detail::Position> positions;
  positions.reserve(points.size());
  for (const TPoint* p : points) positions.push_back(detail::positionOf(*p));
  return positions;
}

// Whether a list holds so many elements, and no null one.
bool holds(const SLType& list, std::size_t count) {
  const std::vector<void*> elements = list.getListData();
  return elements.size() == count && std::find(elements.begin(), elements.end(), nullptr) == elements.end();
}

// Whether the lists hold the fan and nothing else yet.
bool holdsFan(const CEType& tin, const Mesh& fan) {
  return holds(*tin.getEList(), fan.edgeCount()) && holds(*tin.getTList(), fan.triangleCount()) &&
         holds(*tin.getCList(), fan.hull.size());
}

}  // namespace

PList* Surface::initPoins(std::vector<TPoint*>& points) {
  std::vector<TPoint*> given = points;
  const std::size_t count = given.size();
  detail::tellHosts(MAXPOINTS, count);
  given.erase(std::remove(given.begin(), given.end(), nullptr), given.end());
  const std::vector<Number> order = detail::sweepOrder(positionsOf(given));
  std::unique_ptr<PList> list;
  if (!order.empty()) {
    list = std::make_unique<PList>();
    list->setMaxlen(static_cast<int>(count));  // with room for all points, which are the list's from here on
    for (const Number i : order) list->add(list.get(), given[i]);
  }
  points.clear();
  return list.release();
}

CEType* Surface::initCET(PList* points) {
  if (points == nullptr) return nullptr;
  const std::vector<TPoint*> published = detail::pointsOf(*points);
  Mesh mesh;
  mesh.points = positionsOf(published);
  const Number fanEnd = detail::startFan(mesh);
  if (fanEnd == 0) return nullptr;
  detail::tellHosts(FLAG, fanEnd);
  const int room = std::max(points->getMaxlen(), static_cast<int>(published.size()));
  return detail::publishNew(mesh, published, detail::capacitiesFor(room));
}

CEType* Surface::buildTIN(PList* points, CEType* cet) {
  if (points == nullptr || cet == nullptr) return nullptr;
  if (cet->getCList() == nullptr || cet->getEList() == nullptr || cet->getTList() == nullptr) return nullptr;
  const std::vector<TPoint*> published = detail::pointsOf(*points);
  Mesh mesh;
  mesh.points = positionsOf(published);
  const Number fanEnd = detail::startFan(mesh);
  auto tin = std::make_unique<CEType>(nullptr, nullptr, nullptr);
  if (fanEnd != 0 && holdsFan(*cet, mesh)) {
    detail::sweep(mesh, fanEnd, nullptr);
    detail::publish(mesh, published, *cet->getCList(), *cet->getEList(), *cet->getTList());
  }
  tin->setCList(cet->getCList());
  tin->setEList(cet->getEList());
  tin->setTList(cet->getTList());
  return tin.release();
}

}  // namespace OrvikDTM
