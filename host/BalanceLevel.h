// The level at which a surface's cut makes its fill.
#pragma once

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

// What lies above and below a level within the boundary of a TIN, and the plan area that was measured.
struct CutFill {
  double cut = 0.0;
  double fill = 0.0;
  double coverage = 0.0;
};

CutFill cutFillAt(CEType& tin, double level);

// The level at which `factor` times the cut is the fill, to the last digits of a double, for a TIN between the two
// elevations. The factor is what a unit of cut makes of fill: above 1 it swells, below it is compacted.
//
// With a factor of 1 the balance is the mean elevation; otherwise cut and fill are cubic from vertex height to vertex
// height, and the difference falls with the level, so it has one root, which is enclosed from both sides.
double balanceLevel(CEType& tin, double lowest, double highest, double factor);
