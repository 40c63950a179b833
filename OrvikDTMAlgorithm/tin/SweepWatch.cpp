#include <algorithm>
#include <cmath>

#include <OrvikDTMAlgorithm/tin/SweepWatch.h>

inline namespace OrvikDTM {
namespace detail {

bool SweepWatch::allowsTrianglesBelow(Number end) {
  for (; nextUnchecked_ < end; ++nextUnchecked_) {
    if (stateOf(mesh_, plane_, nextUnchecked_, doubledArea_) != TriangleState::Sound) return false;
  }
  return true;
}

bool SweepWatch::allowsEnd() {
  if (!allowsTrianglesBelow(mesh_.triangleCount() + 1) || !hasAllPositions()) return false;
  const double gap = MillimetrePlane::toArea(doubledHullArea(plane_) - doubledArea_);
  return std::fabs(gap) <= kAreaGapTolerance;
}

// The sweep passes over a point that no hull edge can take; that does no harm where another point at its place is a
// vertex.
bool SweepWatch::hasAllPositions() const {
  const std::vector<bool> isVertex = verticesOf(mesh_);
  if (std::find(isVertex.begin(), isVertex.end(), false) == isVertex.end()) return true;
  const auto before = [](const MillimetrePosition& a, const MillimetrePosition& b) {
    return a.y != b.y ? a.y < b.y : a.x < b.x;
  };
  std::vector<MillimetrePosition> vertices;
  for (Number i = 0; i < isVertex.size(); ++i) {
    if (isVertex[i]) vertices.push_back(plane_[i]);
  }
  std::sort(vertices.begin(), vertices.end(), before);
  for (Number i = 0; i < isVertex.size(); ++i) {
    if (!isVertex[i] && !std::binary_search(vertices.begin(), vertices.end(), plane_[i], before)) return false;
  }
  return true;
}

}  // namespace detail
}  // namespace OrvikDTM
