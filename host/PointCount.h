// How the survey points of a surface stand to the vertices of its TIN.
#pragma once

#include <string>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

struct PointCount {
  long long repeated = 0;  // points beyond the first at a vertex
  long long missing = 0;   // points at no vertex
};

PointCount countPoints(DTMSurface& surface);

// The same, quickly, for a TIN built from exactly these points: every position is a vertex then, and the vertices of a
// triangulation without holes can be told from its edges and triangles.
PointCount countPointsOfBuilt(DTMSurface& surface);
