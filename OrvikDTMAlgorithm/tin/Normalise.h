// From survey points as they come to the positions that are triangulated: sorted, rounded to millimetres, without
// recognised repeats, relative to the smallest x and y. Private.
#pragma once

#include <vector>

#include <OrvikDTMAlgorithm/tin/ExactPlane.h>
#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {

class TPoint;

namespace detail {

struct NormalisedPoints {
  Position origin{0.0, 0.0};        // the smallest x and y, before rounding
  std::vector<TPoint*> points;      // the accepted points, by y, then x
  std::vector<Position> positions;  // where they are, relative to the origin

  // Where they are in whole millimetres, not moved; empty when a coordinate is too large for that.
  std::vector<MillimetrePosition> millimetres;
};

// Sorts `points` (those with a NaN coordinate, and null ones, last), rounds them in place and shifts the accepted ones
// in place. `compareUnshifted` is Surface::COMPAREUNSHIFTED.
NormalisedPoints normalise(std::vector<TPoint*>& points, bool compareUnshifted);

}  // namespace detail
}  // namespace OrvikDTM
