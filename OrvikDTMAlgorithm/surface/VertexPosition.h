// Where the triangulation puts a surveyed point.
#pragma once

#include <OrvikDTMAlgorithm/Export.h>

namespace orvik {

// A position in plan, in coordinate units.
struct PlanPosition {
  double x = 0.0;  // easting
  double y = 0.0;  // northing
  bool operator==(const PlanPosition&) const = default;
};

// The position at which a DTMSurface triangulates a point: every coordinate rounded to four decimals, then to three,
// halves away from 0 both times (so 0.00045 becomes 0.001). Points with equal results are one vertex. A vertex of the
// TIN has this position but for the last digits, which moving to a local origin and back may change; applied to the
// vertex's coordinates the function gives it exactly. An infinite coordinate becomes 0, NaN stays.
ORVIKDTM_API PlanPosition vertexPosition(double easting, double northing);

}  // namespace orvik
