// The exact construction: the Delaunay triangulation of whole-millimetre positions, without tolerances. Private.
#pragma once

#include <vector>

#include <OrvikDTMAlgorithm/tin/ExactPlane.h>
#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

struct ExactTriangulation {
  // Edges and triangles by the conventions of every TIN: the hull counter-clockwise from the lowest, then leftmost
  // point, its edges in that direction. mesh.points stays empty.
  Mesh mesh;

  // For each point index of the mesh, the index of its position in the input.
  std::vector<Number> inputIndex;
};

// Triangulates positions that differ from each other by less than 2^55 in each coordinate. One vertex for each
// different position, the first of equal ones; no circle through a triangle's corners has a vertex inside. Without
// triangles when the positions are collinear.
ExactTriangulation triangulateExactly(std::vector<MillimetrePosition> positions);

}  // namespace detail
}  // namespace OrvikDTM
