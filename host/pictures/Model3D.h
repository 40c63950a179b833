// What the 3-D view of the HTML page draws: the compared ground in the bands of the map, and what it was compared with,
// as a text for a browser to read.
//
// Up to 60,000 triangles are handed on as they are. A larger surface is thinned: the plan is divided into square cells,
// all points of a cell become the one nearest to its middle, and triangles that keep three different corners stay. The
// cells grow until it fits. Coordinates are shares of the extent, in 16 bits: a site of 1 km is drawn to 15 mm.
#pragma once

#include <string>

#include "FillCutMap.h"

namespace pictures {

std::string modelOf(const FillCutScene& scene);

// The bytes in base64.
std::string base64(const std::string& bytes);

}  // namespace pictures
