// Pictures of one surface: the TIN with its hull and contours, or its contours alone.
#pragma once

#include <string>
#include <vector>

#include "Contours.h"
#include "PlanMesh.h"

namespace pictures {

struct TerrainFacts {
  std::string surface;
  std::size_t surveyPoints = 0;
  double planArea = 0.0;
  double lowest = 0.0;
  double highest = 0.0;
};

// The edges are snapped to a raster of a tenth of a unit of the picture, where those too short to be seen vanish and
// those that fall on each other are drawn once. Above 250,000 edges nothing but grey would be seen, and none is drawn.
std::string tinPicture(const PlanMesh& mesh, const TerrainFacts& facts, const std::vector<Contour>& contours,
                       const ContourLevels& levels);

std::string contourPicture(const PlanMesh& mesh, const TerrainFacts& facts, const std::vector<Contour>& contours,
                           const ContourLevels& levels);

}  // namespace pictures
