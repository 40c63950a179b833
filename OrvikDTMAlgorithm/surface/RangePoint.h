// One vertex of a boundary polygon. Its z is carried and written to files; the boundary itself lies in plan.
#pragma once

#include <OrvikDTMAlgorithm/surface/NameSize.h>

inline namespace OrvikDTM {

struct RangePoint {
  char name[kNameSize];  // at most 23 bytes, zeros behind them
  double n;              // northing, y
  double e;              // easting, x
  double z;              // elevation
};

}  // namespace OrvikDTM
