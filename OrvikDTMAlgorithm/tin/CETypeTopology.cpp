// A TIN from a list of faces, as triangle files give them.
#include <algorithm>
#include <memory>
#include <unordered_map>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/PositionSet.h>
#include <OrvikDTMAlgorithm/tin/Publish.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/Sweep.h>

inline namespace OrvikDTM {

namespace {

using detail::Mesh;
using detail::Number;
using detail::Position;
using detail::PositionSet;

// Builds a mesh face by face. Edges are found again by the plan positions that they join, through a hash of those
// pairs.
class FaceMesh {
 public:
  FaceMesh(const std::vector<TPoint*>& vertices, std::size_t faceCount)
      : vertices_(vertices), places_(vertices.size()) {
    edgeBetween_.reserve(2 * faceCount);
    mesh_.points.reserve(vertices.size());
    for (const TPoint* p : vertices) mesh_.points.push_back(p == nullptr ? Position{} : detail::positionOf(*p));
    placeOf_.reserve(vertices.size());
    for (const Position& p : mesh_.points) placeOf_.push_back(places_.insert(p));
  }

  void add(const std::array<int, 3>& face) {
    std::array<Number, 3> corner{};
    if (!inSweepOrder(face, corner)) return;
    const Number number = mesh_.triangleCount() + 1;
    std::array<Number, 3> edge{};
    for (std::size_t i = 0; i < 3; ++i) edge[i] = edgeOf(corner[i], corner[(i + 1) % 3], number);
    mesh_.addTriangle(edge[0], edge[1], edge[2]);
  }

  Mesh takeMesh() {
    for (Number number = 1; number <= mesh_.edgeCount(); ++number) {
      if (mesh_.edges[number].right == 0) mesh_.hull.push_back(number);
    }
    return std::move(mesh_);
  }

 private:
  // The face's corners counter-clockwise from the lowest; false when it names no vertex or has no such order.
  bool inSweepOrder(const std::array<int, 3>& face, std::array<Number, 3>& corner) const {
    std::vector<Position> positions;
    for (const int index : face) {
      const auto place = static_cast<std::size_t>(index);
      if (index < 0 || place >= vertices_.size() || vertices_[place] == nullptr) return false;
      positions.push_back(mesh_.points[place]);
    }
    const std::vector<Number> order = detail::sweepOrder(positions);
    if (order.empty()) return false;
    for (std::size_t i = 0; i < 3; ++i) corner[i] = static_cast<Number>(face[order[i]]);
    return true;
  }

  // The edge between two corners, known or new, which gets the triangle on its free side.
  Number edgeOf(Number from, Number to, Number triangle) {
    const Number number = knownOrNewEdge(from, to);
    detail::MeshEdge& edge = mesh_.edges[number];
    (edge.left == 0 ? edge.left : edge.right) = triangle;
    return number;
  }

  Number knownOrNewEdge(Number from, Number to) {
    if (!equalsItself(from) || !equalsItself(to)) return mesh_.addEdge(from, to);
    const auto [low, high] = std::minmax(placeOf_[from], placeOf_[to]);
    const std::uint64_t key = (std::uint64_t{low} << 32) | high;
    const auto [entry, isNew] = edgeBetween_.try_emplace(key, mesh_.edgeCount() + 1);
    if (isNew) mesh_.addEdge(from, to);
    return entry->second;
  }

  // False with a NaN coordinate: such a vertex is at no place, and no two edges meet there.
  bool equalsItself(Number vertex) const { return detail::samePosition(mesh_.points[vertex], mesh_.points[vertex]); }

  const std::vector<TPoint*>& vertices_;
  PositionSet places_;
  std::vector<Number> placeOf_;
  std::unordered_map<std::uint64_t, Number> edgeBetween_;
  Mesh mesh_;
};

}  // namespace

CEType* CEType::initCETypeFromFaces(const std::vector<TPoint*>& vertices,
                                    const std::vector<std::array<int, 3>>& faces) {
  constexpr int kCornersOfFace = 3;
  FaceMesh faceMesh(vertices, faces.size());
  for (const std::array<int, 3>& face : faces) faceMesh.add(face);
  if (!faces.empty()) Surface::MAXPOINTS = kCornersOfFace;  // what ordering a face's corners leaves there
  const Mesh mesh = faceMesh.takeMesh();
  const auto capacity = static_cast<int>(std::max(mesh.edges.size(), std::size_t{100}));
  return detail::publishNew(mesh, vertices, {capacity, capacity, capacity});
}

}  // namespace OrvikDTM
