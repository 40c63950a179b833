// The outline of a TIN as a polygon.
#pragma once

#include <vector>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

struct HullRing {
  std::vector<const TPoint*> points;  // counter-clockwise, the first not repeated
  std::size_t others = 0;             // further rings, of holes and islands
};

// The ring of hull edges that encloses the largest area, and how many others there are.
HullRing largestHullRing(const CEType& tin);
