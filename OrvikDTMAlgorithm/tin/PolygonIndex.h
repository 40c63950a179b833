// A closed polygon asked about many points: Surface::isPtInPolygon with its sides sorted into slabs, so that only sides
// near a point are looked at. It is a copy of the polygon's plan positions. Private.
#pragma once

#include <cstddef>
#include <vector>

#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

class PolygonIndex {
 public:
  // Null entries are passed over. An empty polygon contains nothing.
  explicit PolygonIndex(const std::vector<TPoint*>& polygon);

  // What isPtInPolygon says. A side that does not reach over the point's x changes neither the count of crossings nor
  // whether the point lies on a side, and the order of sides does not matter, so the slab's sides give the same answer.
  bool contains(const Position& p) const;

 private:
  struct Side {
    Position a;
    Position b;
  };

  // False, with nothing sorted, where the sides would stand in too many slabs.
  bool sortIntoSlabs(const std::vector<Side>& sides, std::size_t slabs);
  std::size_t slabOf(double x) const;

  std::vector<Side> sides_;  // slab after slab; a side stands in every slab that it reaches into
  std::vector<std::size_t> slabBegin_;
  double lowX_ = 0.0;
  double highX_ = -1.0;
  double slabsPerUnit_ = 0.0;
};

}  // namespace detail
}  // namespace OrvikDTM
