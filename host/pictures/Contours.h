// Contour lines of a TIN.
//
// The contour at a level is every point of the surface at exactly that height, save the inside of areas that lie flat
// in the level (their rim against sloping ground is drawn) and single points that it only touches. So a ridge or valley
// edge in the level is a line, drawn once. Heights are compared exactly, without a tolerance.
#pragma once

#include <vector>

#include "PlanMesh.h"

namespace pictures {

// Every point has z = the level. A line that closes ends with the point that it begins with. Lines of one level have
// nothing in common but their ends.
struct ContourLine {
  std::vector<Point> points;
  bool closed = false;
};

struct Contour {
  double level = 0.0;
  bool index = false;
  std::vector<ContourLine> lines;
};

struct ContourLevels {
  double interval;
  double base = 0.0;
};

// How many levels base + k * interval lie between the lowest and the highest point; may be huge.
double countLevels(const PlanMesh& mesh, const ContourLevels& levels);

// The contours at base + k * interval for whole k, lowest first; every fifth, counted from the base, is an index
// contour. Levels without a line are left out.
std::vector<Contour> contours(const PlanMesh& mesh, const ContourLevels& levels);

// 1, 2 or 5 times a power of ten: the smallest of these that is not below `least`, which must be above 0.
double roundStep(double least);

}  // namespace pictures
