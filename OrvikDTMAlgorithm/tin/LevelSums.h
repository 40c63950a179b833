// Volumes and areas of a whole TIN against a design level, and its own areas, in one pass. Private.
#pragma once

#include <OrvikDTMAlgorithm/tin/FillAndCut.h>

inline namespace OrvikDTM {

class EList;
class TList;

namespace detail {

struct LevelSums {
  FillAndCut volumes;

  // The areas that the statistics give.
  double planArea = 0.0;
  double spatialArea = 0.0;
};

// Takes the triangles in number order; those that cannot be measured are passed over. Null lists have no elements.
LevelSums sumAgainstLevel(const TList* triangles, const EList* edges, double level);

}  // namespace detail
}  // namespace OrvikDTM
