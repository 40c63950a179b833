// The comparison of two surfaces by sampling. It runs on copies of the two networks alone, so it can be run again for
// the drawing list when somebody asks for that: nothing is kept for a piece until then. Private.
//
// The triangles of the walked network are split until each piece lies in one triangle of the queried one. Three phases
// bound that: at most about a hundred pieces from a triangle, then as many from each of those, and what is still left
// is measured with the heights at its corners, wherever they lie. Those heights would give networks that only touch,
// along a line or at a point, a volume: what has no area in common has none.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <OrvikDTMAlgorithm/tin/FlatTIN.h>
#include <OrvikDTMAlgorithm/tin/PieceMeasure.h>
#include <OrvikDTMAlgorithm/tin/PolygonIndex.h>

inline namespace OrvikDTM {

class Triangle3;

namespace detail {

class SurfaceComparison {
 public:
  struct Task {
    std::shared_ptr<const FlatTIN> walked;
    std::shared_ptr<const FlatTIN> queried;
    std::optional<PolygonIndex> boundary;
    std::vector<Position> boundaryCorners;  // the same as they are
    bool referenceIsWalked;                 // the surface that is measured is the queried one
    bool splitAtOnce;  // the networks share few points, so that whole triangles might miss each other
    int lastFound;     // the triangle of the queried network that was found last before the comparison
  };

  explicit SurfaceComparison(Task task) : task_(std::move(task)) {}

  // The sums over all triangles of the walked network, and the triangle that was found last. Nothing where the
  // networks, or a network and the boundary, have no area in common.
  struct Outcome {
    std::optional<FillAndCut> sums;
    int lastFound;
  };
  Outcome measure() const;

  // Appends the pieces that were measured, in that order. There are none where measure() gives no sums.
  void appendPieces(std::vector<std::shared_ptr<Triangle3>>& list) const;

 private:
  Task task_;
};

}  // namespace detail
}  // namespace OrvikDTM
