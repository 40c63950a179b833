// Whether what a sweep builds is a valid triangulation of its points, told as early as it is certain. Private.
#pragma once

#include <OrvikDTMAlgorithm/tin/MeshCheck.h>

inline namespace OrvikDTM {
namespace detail {

// The sweep's tolerances can invert triangles or leave bays open on real surveys, so each triangle is checked with
// exact signs once the sweep is done with it, and the whole at the end. One that has gone wrong stays wrong, so the
// sweep may stop there.
class SweepWatch {
 public:
  // The plane holds the positions of mesh.points, in the same order. Both must outlive the watch.
  SweepWatch(const Mesh& mesh, const MillimetrePlane& plane) : mesh_(mesh), plane_(plane) {}

  // After a point has been added: the next one can still change the last triangle, no other.
  bool allowsNext() { return allowsTrianglesBelow(mesh_.triangleCount()); }

  // After the last point.
  bool allowsEnd();

 private:
  bool allowsTrianglesBelow(Number end);
  bool hasAllPositions() const;

  const Mesh& mesh_;
  const MillimetrePlane& plane_;
  MillimetrePlane::Area doubledArea_ = 0;
  Number nextUnchecked_ = 1;
};

}  // namespace detail
}  // namespace OrvikDTM
