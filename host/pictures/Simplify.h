// Fewer points for lines that look the same.
#pragma once

#include <vector>

#include "Outline.h"

namespace pictures {

// The points of `line` that are needed for every dropped one to lie within `tolerance` (raster units) of what is left;
// both ends stay.
std::vector<RasterPoint> simplified(const std::vector<RasterPoint>& line, double tolerance);

// The same for a loop, the last point joined to the first. Empty when the loop is no wider and no higher than
// `tolerance`, or nothing with an extent is left of it.
std::vector<RasterPoint> simplifiedLoop(const std::vector<RasterPoint>& loop, double tolerance);

}  // namespace pictures
