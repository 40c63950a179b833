// The areas of a whole surface to the last digits, also over slivers: the statistics that DTMSurface keeps are sums of
// Heron's formula, which loses most digits there.
#pragma once

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

// Puts them in place of the statistics getTwoDArea() and getThreeDArea(). To be called before the surface is limited by
// a boundary.
void setExactAreas(DTMSurface& surface);
