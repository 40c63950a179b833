// The flat form in which a TIN is built: points, edges and triangles in vectors, told apart by 32-bit numbers. Private:
// the published lists are made from it once, at the end.
#pragma once

#include <cstdint>
#include <vector>

#include <OrvikDTMAlgorithm/tin/TPoint.h>

inline namespace OrvikDTM {
namespace detail {

using Number = std::uint32_t;

// The decimals that positions are rounded to: millimetres when the unit is the metre.
inline constexpr int kDecimalsOfPosition = 3;

// A position in plan: x = easting, y = northing.
struct Position {
  double x;
  double y;
};

inline Position positionOf(const TPoint& p) { return {p.getX(), p.getY()}; }

inline bool samePosition(const Position& a, const Position& b) { return a.x == b.x && a.y == b.y; }

// A directed edge: the indexes of its points, and the numbers of the triangles to its left and right, 0 for none.
struct MeshEdge {
  Number start;
  Number end;
  Number left;
  Number right;
};

// A triangle: the numbers of its edges.
struct MeshTriangle {
  Number edge[3];
};

// Edges and triangles are numbered from 1 as in the published lists; entry 0 of both vectors is unused. Points are
// indexed from 0 in sweep order. The hull holds edge numbers, counter-clockwise, the closing edge (back to point 0)
// last.
struct Mesh {
  std::vector<Position> points;
  std::vector<MeshEdge> edges{MeshEdge{}};
  std::vector<MeshTriangle> triangles{MeshTriangle{}};
  std::vector<Number> hull;

  Number addEdge(Number start, Number end) {
    edges.push_back({start, end, 0, 0});
    return static_cast<Number>(edges.size() - 1);
  }

  Number addTriangle(Number e1, Number e2, Number e3) {
    triangles.push_back({{e1, e2, e3}});
    return static_cast<Number>(triangles.size() - 1);
  }

  Number edgeCount() const { return static_cast<Number>(edges.size() - 1); }
  Number triangleCount() const { return static_cast<Number>(triangles.size() - 1); }
};

// Which of the mesh's points an edge joins.
inline std::vector<bool> verticesOf(const Mesh& mesh) {
  std::vector<bool> isVertex(mesh.points.size(), false);
  for (Number edge = 1; edge <= mesh.edgeCount(); ++edge) {
    isVertex[mesh.edges[edge].start] = true;
    isVertex[mesh.edges[edge].end] = true;
  }
  return isVertex;
}

}  // namespace detail
}  // namespace OrvikDTM
