// Positions in whole thousandths or millionths of a unit, where all of them are such but for what moving to a local
// origin and back leaves behind. What was surveyed on one line then lies on one line exactly. Private.
#pragma once

#include <vector>

#include <OrvikDTMAlgorithm/tin/ExactPlane.h>
#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

// The positions in whole millimetres when all of them are; empty otherwise. Coordinates are as uncertain as their
// largest one makes them, or as one of `leastExtent` would.
std::vector<MillimetrePosition> wholeMillimetres(const std::vector<Position>& positions, double leastExtent = 1.0);

// Sets of positions as doubles whose exact signs are those of the decimals that the sets were written with: relative to
// one origin in whole millimetres if all sets are such, else in whole micrometres. A set that is neither stays as it
// is; the others are then the doubles nearest to their decimals. All coordinates must be finite.
void placeOnGrid(const std::vector<std::vector<Position>*>& sets);

}  // namespace detail
}  // namespace OrvikDTM
