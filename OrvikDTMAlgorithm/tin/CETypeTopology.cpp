// A TIN from a list of faces, as triangle files give them.
#include <algorithm>
#include <memory>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/Construction.h>
#include <OrvikDTMAlgorithm/tin/EdgeFinder.h>
#include <OrvikDTMAlgorithm/tin/FaceOrder.h>
#include <OrvikDTMAlgorithm/tin/PositionSet.h>
#include <OrvikDTMAlgorithm/tin/Prefetch.h>
#include <OrvikDTMAlgorithm/tin/Publish.h>

inline namespace OrvikDTM {

namespace {

using detail::EdgeFinder;
using detail::Mesh;
using detail::Number;
using detail::PlacePair;
using detail::Position;
using detail::PositionSet;
using Face = std::array<int, 3>;

// How many edges so many faces over so many points have, if they form one patch without holes; three each at most.
std::size_t likelyEdges(std::size_t faceCount, std::size_t pointCount) {
  return std::min(3 * faceCount, faceCount + pointCount);
}

// So many vertices or faces ahead, memory is asked for what they need: long enough for it to answer, few enough for the
// answers to stay in the innermost cache.
constexpr std::size_t kBatch = 32;

// The place of a vertex that is at none: no two edges meet there.
constexpr Number kNowhere = PositionSet::kNone;

// A vertex as the faces look it up.
struct Vertex {
  Position position;
  Number place;  // the same for the same position; kNowhere with a NaN coordinate
  bool exists;
};

std::vector<Vertex> verticesAt(const std::vector<TPoint*>& points) {
  std::vector<Vertex> vertices;
  vertices.reserve(points.size());
  for (const TPoint* p : points) {
    vertices.push_back({p == nullptr ? Position{} : detail::positionOf(*p), 0, p != nullptr});
  }
  PositionSet places(points.size());
  for (std::size_t i = 0; i < vertices.size(); ++i) {
    if (i + kBatch < vertices.size()) places.prefetch(vertices[i + kBatch].position);
    const Position& position = vertices[i].position;
    vertices[i].place = detail::samePosition(position, position) ? places.insert(position) : kNowhere;
  }
  return vertices;
}

// Builds a mesh from faces, in their order. Edges are found again by the plan positions that they join.
//
// Nearly all the time goes into waiting for memory: the corners of a face lie anywhere among the vertices, and its
// edges anywhere in the table. So a batch of faces is taken through each step before the next one, and asks in each for
// what the next will read.
class FaceMesh {
 public:
  FaceMesh(const std::vector<TPoint*>& points, std::size_t faceCount)
      : vertices_(verticesAt(points)), edges_(points.size(), likelyEdges(faceCount, points.size())) {
    mesh_.edges.reserve(likelyEdges(faceCount, points.size()) + 1);
    mesh_.triangles.reserve(faceCount + 1);
  }

  void add(const std::vector<Face>& faces) {
    std::array<OrderedFace, kBatch> batch;
    for (std::size_t begin = 0; begin < faces.size(); begin += kBatch) {
      const std::size_t end = std::min(begin + kBatch, faces.size());
      for (std::size_t i = begin; i < end; ++i) prefetchCorners(faces[i]);
      std::size_t kept = 0;
      for (std::size_t i = begin; i < end; ++i) {
        if (orderFace(faces[i], batch[kept])) prefetchChains(batch[kept++]);
      }
      for (std::size_t i = 0; i < kept; ++i) prefetchLinks(batch[i]);
      for (std::size_t i = 0; i < kept; ++i) addTriangle(batch[i]);
    }
  }

  Mesh takeMesh() {
    for (Number number = 1; number <= mesh_.edgeCount(); ++number) {
      if (mesh_.edges[number].right == 0) mesh_.hull.push_back(number);
    }
    return std::move(mesh_);
  }

 private:
  // Its corners counter-clockwise from the lowest, and the places that the edge leaving each joins.
  struct OrderedFace {
    std::array<Number, 3> corner;
    std::array<PlacePair, 3> joined;
  };

  bool exists(int vertex) const { return vertex >= 0 && static_cast<std::size_t>(vertex) < vertices_.size(); }

  void prefetchCorners(const Face& face) const {
    for (const int vertex : face) {
      if (exists(vertex)) detail::prefetch(&vertices_[static_cast<std::size_t>(vertex)]);
    }
  }

  void prefetchChains(const OrderedFace& face) const {
    for (const PlacePair& joined : face.joined) edges_.prefetchChain(joined);
  }

  void prefetchLinks(const OrderedFace& face) const {
    for (const PlacePair& joined : face.joined) edges_.prefetchLink(joined);
  }

  // False when the face names no vertex or its corners have no such order.
  bool orderFace(const Face& face, OrderedFace& ordered) const {
    std::array<Position, 3> position;
    for (std::size_t i = 0; i < 3; ++i) {
      if (!exists(face[i]) || !vertices_[static_cast<std::size_t>(face[i])].exists) return false;
      position[i] = vertices_[static_cast<std::size_t>(face[i])].position;
    }
    std::array<Number, 3> order;
    if (!detail::faceOrder(position, order)) return false;
    for (std::size_t i = 0; i < 3; ++i) ordered.corner[i] = static_cast<Number>(face[order[i]]);
    for (std::size_t i = 0; i < 3; ++i) {
      ordered.joined[i] = {vertices_[ordered.corner[i]].place, vertices_[ordered.corner[(i + 1) % 3]].place};
    }
    return true;
  }

  void addTriangle(const OrderedFace& face) {
    const Number number = mesh_.triangleCount() + 1;
    std::array<Number, 3> edge;
    for (std::size_t i = 0; i < 3; ++i) {
      edge[i] = edgeBeside(number, face.corner[i], face.corner[(i + 1) % 3], face.joined[i]);
    }
    mesh_.addTriangle(edge[0], edge[1], edge[2]);
  }

  // The edge between two corners: a new one with the triangle to its left, or a known one, which gets it to its right.
  Number edgeBeside(Number triangle, Number from, Number to, const PlacePair& joined) {
    const Number next = mesh_.edgeCount() + 1;
    const Number number = joined.high == kNowhere ? next : edges_.numberOf(joined, next);
    if (number == next) {
      mesh_.edges.push_back({from, to, triangle, 0});
    } else {
      mesh_.edges[number].right = triangle;
    }
    return number;
  }

  std::vector<Vertex> vertices_;
  EdgeFinder edges_;
  Mesh mesh_;
};

}  // namespace

CEType* CEType::initCETypeFromFaces(const std::vector<TPoint*>& vertices,
                                    const std::vector<std::array<int, 3>>& faces) {
  constexpr std::size_t kCornersOfFace = 3;
  FaceMesh faceMesh(vertices, faces.size());
  faceMesh.add(faces);
  if (!faces.empty())
    detail::tellHosts(Surface::MAXPOINTS, kCornersOfFace);  // what ordering a face's corners leaves there
  const Mesh mesh = faceMesh.takeMesh();
  // Of faces that are given more than once there are more than edges.
  const auto capacity = static_cast<int>(std::max({mesh.edges.size(), mesh.triangles.size(), std::size_t{100}}));
  return detail::publishNew(mesh, vertices, {capacity, capacity, capacity});
}

}  // namespace OrvikDTM
