// Where a point lies in relation to a hull, known beforehand for most of the plane. Private.
#pragma once

#include <cstdint>
#include <vector>

#include <OrvikDTMAlgorithm/tin/CellGrid.h>
#include <OrvikDTMAlgorithm/tin/HullRing.h>

inline namespace OrvikDTM {
namespace detail {

// Cells that no side of the ring touches lie in one face of it: all their points have one place. Only in the others
// the ring is asked.
class HullCells {
 public:
  HullCells() = default;
  HullCells(const HullRing& ring, double cells);

  // What ring.placeOf(p) says.
  HullRing::Place placeOf(const HullRing& ring, const Position& p) const {
    if (grid_.covers(p)) {
      const std::int8_t winding = windings_[grid_.cellOf(p)];
      if (winding != kMixed) return {false, winding};
    }
    return ring.placeOf(p);
  }

 private:
  static constexpr std::int8_t kMixed = 127;

  CellGrid grid_;
  std::vector<std::int8_t> windings_;
};

}  // namespace detail
}  // namespace OrvikDTM
