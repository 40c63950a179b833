// Whether the flip stage leaves a valid triangulation, and whether it comes to an end in time. Private.
#pragma once

#include <OrvikDTMAlgorithm/tin/MeshCheck.h>

inline namespace OrvikDTM {
namespace detail {

// A flip turns no triangle over when its quadrilateral is convex by exact signs. The flip tests decide that in doubles,
// within a tolerance; where the extent is so large that rounding exceeds the tolerance, each flip is looked at again.
// One that turns a triangle over may be made up for by a later one, so the mesh as a whole decides at the end.
class FlipWatch {
 public:
  // The plane holds the positions of mesh.points, in the same order. Both must outlive the watch.
  FlipWatch(const Mesh& mesh, const MillimetrePlane& plane);

  // Whether flips have to be noted at all.
  bool needsLook() const { return needsLook_; }

  // Before the diagonal b - c of the triangles (b, c, a) and (c, b, d) becomes a - d.
  void note(Number a, Number b, Number c, Number d) { isDoubtful_ = isDoubtful_ || !isConvex(a, b, c, d); }

  // After the queue has been full while one edge was followed up; false when the stage is to be broken off.
  bool allowsFullQueue() { return ++fullQueues_ < kMostFullQueues; }

  // After the last flip.
  bool allowsEnd() const;

 private:
  // Where flips go round in circles, they do so beside one edge after another. Each full queue costs some milliseconds.
  static constexpr int kMostFullQueues = 20;

  bool isConvex(Number a, Number b, Number c, Number d) const;

  const Mesh& mesh_;
  const MillimetrePlane& plane_;
  double sureArea_ = 0.0;  // a doubled area, in squared coordinate units: larger ones have the right sign
  bool needsLook_ = true;
  bool isDoubtful_ = false;
  int fullQueues_ = 0;
};

}  // namespace detail
}  // namespace OrvikDTM
