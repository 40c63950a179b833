// The levels of contours as the user asks for them, or as suits a surface.
#pragma once

#include <string>

#include "SurfaceFile.h"
#include "pictures/TerrainPicture.h"

// Throws WrongUsage when `interval` is no number above 0 or `base` no elevation; an empty base is 0.
pictures::ContourLevels contourLevels(const std::string& interval, const std::string& base);

// Throws WrongUsage when there would be more contours than a drawing can hold.
void requireFewLevels(const pictures::PlanMesh& mesh, const pictures::ContourLevels& levels);

// A round interval that gives ten to twenty-five contours.
pictures::ContourLevels fittingLevels(const DTMSurface& surface);

// The surface's figures for the legend of its picture.
pictures::TerrainFacts terrainFacts(DTMSurface& surface, const std::string& name);
