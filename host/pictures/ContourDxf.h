// Contours as a drawing that CAD programs read: DXF of release 12, one POLYLINE each at its elevation, index contours
// and the others on layers of their own.
#pragma once

#include <string>
#include <vector>

#include "Contours.h"

namespace pictures {

inline constexpr const char* kContourLayer = "CONTOURS";
inline constexpr const char* kIndexLayer = "CONTOURS_INDEX";

// Coordinates are the survey's (easting, northing, elevation), with four decimals.
std::string contourDxf(const PlanMesh& mesh, const std::vector<Contour>& contours);

}  // namespace pictures
