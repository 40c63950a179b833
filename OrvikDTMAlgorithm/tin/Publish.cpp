#include <array>
#include <memory>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/Delaunay.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/ListElements.h>
#include <OrvikDTMAlgorithm/tin/PList.h>
#include <OrvikDTMAlgorithm/tin/Publish.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

std::array<int, 2> slotsOf(const MeshEdge& e) { return {static_cast<int>(e.left), static_cast<int>(e.right)}; }

std::array<int, 3> edgesOf(const MeshTriangle& t) {
  return {static_cast<int>(t.edge[0]), static_cast<int>(t.edge[1]), static_cast<int>(t.edge[2])};
}

// A mesh whose tables are at hand, read like an exact one.
class TabledMesh {
 public:
  explicit TabledMesh(const Mesh& mesh) : mesh_(mesh) {}
  Number edgeCount() const { return mesh_.edgeCount(); }
  Number triangleCount() const { return mesh_.triangleCount(); }
  const std::vector<Number>& hull() const { return mesh_.hull; }
  const MeshTriangle& triangle(Number number) const { return mesh_.triangles[number]; }
  const MeshEdge& edge(Number number) const { return mesh_.edges[number]; }

 private:
  const Mesh& mesh_;
};

template <typename Source>
void publishEdges(Source& mesh, const std::vector<TPoint*>& points, EList& edges, ListElements::Room<TEdge>& room) {
  const int known = edges.getListLen();
  for (int number = 1; number <= known; ++number) {
    const MeshEdge e = mesh.edge(static_cast<Number>(number));
    TEdge* edge = edges.findByNum(&edges, number);
    edge->setStartPoint(points[e.start]);
    edge->setEndPoint(points[e.end]);
    edge->setTriNo(slotsOf(e).data());
  }
  room.fill([&](int number) {
    const MeshEdge e = mesh.edge(static_cast<Number>(number));
    return TEdge(points[e.start], points[e.end], static_cast<int>(e.left), static_cast<int>(e.right));
  });
}

template <typename Source>
void publishTriangles(Source& mesh, TList& triangles, ListElements::Room<Triangle>& room) {
  const auto edgesOfNumber = [&mesh](int number) { return edgesOf(mesh.triangle(static_cast<Number>(number))); };
  const int known = triangles.getListLen();
  for (int number = 1; number <= known; ++number) {
    triangles.findByNum(&triangles, number)->setEno(edgesOfNumber(number).data());
  }
  room.fill([&](int number) { return Triangle(edgesOfNumber(number).data()); });
}

void publishHull(const std::vector<Number>& numbers, ConvexList& hull, ListElements::Room<TConvex>& room) {
  const auto length = static_cast<int>(numbers.size());
  const auto edgeAt = [&numbers](int number) {
    return static_cast<int>(numbers[static_cast<std::size_t>(number - 1)]);
  };
  while (hull.getListLen() > length) hull.deleteData(&hull, hull.getListLen());
  const int known = hull.getListLen();
  for (int number = 1; number <= known; ++number) hull.findByNum(&hull, number)->setEdgeNo(edgeAt(number));
  room.fill([&](int number) { return TConvex(edgeAt(number)); });
}

template <typename Source>
void publishFrom(Source& mesh, const std::vector<TPoint*>& points, ConvexList& hull, EList& edges, TList& triangles) {
  // The lists change together, or not at all when memory runs out.
  ListElements::Room<TConvex> hullRoom(hull, static_cast<int>(mesh.hull().size()));
  ListElements::Room<Triangle> triangleRoom(triangles, static_cast<int>(mesh.triangleCount()));
  ListElements::Room<TEdge> edgeRoom(edges, static_cast<int>(mesh.edgeCount()));
  publishHull(mesh.hull(), hull, hullRoom);
  publishTriangles(mesh, triangles, triangleRoom);
  publishEdges(mesh, points, edges, edgeRoom);
}

template <typename Source>
CEType* publishNewFrom(Source& mesh, const std::vector<TPoint*>& points, const Capacities& capacities) {
  std::unique_ptr<CEType> tin(emptyTIN());
  tin->getCList()->setMaxlen(capacities.hull);
  tin->getEList()->setMaxlen(capacities.edges);
  tin->getTList()->setMaxlen(capacities.triangles);
  publishFrom(mesh, points, *tin->getCList(), *tin->getEList(), *tin->getTList());
  return tin.release();
}

}  // namespace

void publish(const Mesh& mesh, const std::vector<TPoint*>& points, ConvexList& hull, EList& edges, TList& triangles) {
  TabledMesh source(mesh);
  publishFrom(source, points, hull, edges, triangles);
}

CEType* publishNew(const Mesh& mesh, const std::vector<TPoint*>& points, const Capacities& capacities) {
  TabledMesh source(mesh);
  return publishNewFrom(source, points, capacities);
}

CEType* publishNew(ExactMesh& mesh, const std::vector<TPoint*>& points, const Capacities& capacities) {
  return publishNewFrom(mesh, points, capacities);
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
