// From survey points as they come to the positions that are triangulated: sorted, rounded to millimetres, without
// recognised repeats, relative to the smallest x and y. Private.
#pragma once

#include <vector>

#include <OrvikDTMAlgorithm/tin/ExactPlane.h>
#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {

class TPoint;

namespace detail {

// A point and the position that it gets when the construction is done.
struct PlacedPoint {
  TPoint* point;
  Position place;
};

struct NormalisedPoints {
  Position origin{0.0, 0.0};        // the smallest x and y, before rounding
  std::vector<TPoint*> points;      // the accepted points, by y, then x
  std::vector<Position> positions;  // where they are, rounded and relative to the origin

  // The same rounded, not moved, in whole millimetres; empty when a coordinate is too large for that.
  std::vector<MillimetrePosition> millimetres;

  // The points that were taken for repeats, and their rounded positions.
  std::vector<PlacedPoint> repeats;
};

// Sorts `points` by y, then x (those with a NaN coordinate, and null ones, last), and reads them; their coordinates are
// left alone. `compareUnshifted` is Surface::COMPAREUNSHIFTED.
NormalisedPoints normalise(std::vector<TPoint*>& points, bool compareUnshifted);

}  // namespace detail
}  // namespace OrvikDTM
