#include <memory>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/PList.h>
#include <OrvikDTMAlgorithm/tin/Publish.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

// Appends an element and hands it over; a full list refuses it.
template <typename List, typename Element>
void append(List& list, std::unique_ptr<Element> element) {
  if (list.add(&list, element.get()) == 1) element.release();
}

void publishEdges(const Mesh& mesh, const std::vector<TPoint*>& points, EList& edges) {
  for (Number number = 1; number <= mesh.edgeCount(); ++number) {
    const MeshEdge& e = mesh.edges[number];
    const int slots[2] = {static_cast<int>(e.left), static_cast<int>(e.right)};
    if (TEdge* known = edges.findByNum(&edges, static_cast<int>(number))) {
      known->setStartPoint(points[e.start]);
      known->setEndPoint(points[e.end]);
      known->setTriNo(slots);
      continue;
    }
    auto edge = std::make_unique<TEdge>(points[e.start], points[e.end]);
    edge->setTriNo(slots);
    append(edges, std::move(edge));
  }
}

void publishTriangles(const Mesh& mesh, TList& triangles) {
  for (Number number = 1; number <= mesh.triangleCount(); ++number) {
    const Number* e = mesh.triangles[number].edge;
    const int three[3] = {static_cast<int>(e[0]), static_cast<int>(e[1]), static_cast<int>(e[2])};
    if (Triangle* known = triangles.findByNum(&triangles, static_cast<int>(number))) {
      known->setEno(three);
      continue;
    }
    append(triangles, std::make_unique<Triangle>(three));
  }
}

void publishHull(const Mesh& mesh, ConvexList& hull) {
  while (hull.getListLen() > static_cast<int>(mesh.hull.size())) hull.deleteData(&hull, hull.getListLen());
  for (std::size_t i = 0; i < mesh.hull.size(); ++i) {
    const int edge = static_cast<int>(mesh.hull[i]);
    if (TConvex* known = hull.findByNum(&hull, static_cast<int>(i) + 1)) {
      known->setEdgeNo(edge);
      continue;
    }
    append(hull, std::make_unique<TConvex>(edge));
  }
}

}  // namespace

void publish(const Mesh& mesh, const std::vector<TPoint*>& points, ConvexList& hull, EList& edges, TList& triangles) {
  publishHull(mesh, hull);
  publishEdges(mesh, points, edges);
  publishTriangles(mesh, triangles);
}

CEType* publishNew(const Mesh& mesh, const std::vector<TPoint*>& points, const Capacities& capacities) {
  std::unique_ptr<CEType> tin(emptyTIN());
  tin->getCList()->setMaxlen(capacities.hull);
  tin->getEList()->setMaxlen(capacities.edges);
  tin->getTList()->setMaxlen(capacities.triangles);
  publish(mesh, points, *tin->getCList(), *tin->getEList(), *tin->getTList());
  return tin.release();
}

CEType* emptyTIN() {
  auto hull = std::make_unique<ConvexList>();
  auto edges = std::make_unique<EList>();
  auto triangles = std::make_unique<TList>();
  auto* tin = new CEType(hull.get(), edges.get(), triangles.get());
  hull.release();
  edges.release();
  triangles.release();
  return tin;
}

std::vector<TPoint*> pointsOf(PList& list) {
  std::vector<TPoint*> points;
  points.reserve(static_cast<std::size_t>(list.getListLen()));
  for (int number = 1; number <= list.getListLen(); ++number) {
    if (TPoint* p = list.findByNum(&list, number)) points.push_back(p);
  }
  return points;
}

}  // namespace detail
}  // namespace OrvikDTM
