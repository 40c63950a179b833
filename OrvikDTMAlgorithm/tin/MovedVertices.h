// Vertices that the construction has moved to its local origin and back, found again from where they were surveyed.
// Private.
//
// Positions are whole thousandths before they are moved. The difference from the origin and the sum with it each round
// once, so a vertex comes back within one rounding of its coordinate and one of the extent. A file of the TIN keeps the
// vertices, not the origin.
#pragma once

#include <unordered_map>

#include <OrvikDTMAlgorithm/tin/Mesh.h>
#include <OrvikDTMAlgorithm/tin/PointHash.h>

inline namespace OrvikDTM {
namespace detail {

class MovedVertices {
 public:
  // For vertices whose coordinates are not larger than this.
  explicit MovedVertices(double largest);

  // Every vertex is first added, then kept out of others' way; either as often as one likes.
  void add(const Position& vertex);
  void keepPlaceOf(const Position& vertex);

  // The vertex that has been moved from p; null when there is none.
  const Position* find(const Position& p) const;

 private:
  double reach_;
  std::unordered_map<TPoint, Position, PointHash> byThousandths_;
};

}  // namespace detail
}  // namespace OrvikDTM
