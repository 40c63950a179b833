// What is wrong with a TIN and where, for a surveyor: the library tells the number of the triangle, edge or hull entry,
// this adds the coordinates to go to.
#pragma once

#include <string>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

// "valid", or for example "triangle 17 is not counter-clockwise, near easting 1000.000, northing 2000.000".
std::string describe(const CEType& tin, const TINCheck& check);

// Whether the fault is only that the triangles do not fill their convex hull: that is how an imported surface with a
// concave outline or a hole is, and no fault of it.
bool isOnlyOutline(const TINCheck& check);
