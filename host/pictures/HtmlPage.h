// One HTML page with everything about a fill/cut computation: the report's numbers, the map that can be moved and
// enlarged, and a view in three dimensions. It holds all that it needs and asks no network.
#pragma once

#include <string>

#include "FillCutMap.h"

namespace pictures {

// What the volume report says; the twelve labels are those of the report, separated by commas.
struct ReportFacts {
  FillCutFacts computed;
  std::string labels;
  std::string reference;  // as the report shows it
  double planArea = 0.0;
  double surfaceArea = 0.0;
  double planPerimeter = 0.0;
  double surfacePerimeter = 0.0;
};

std::string htmlPage(const FillCutScene& scene, const ReportFacts& facts);

// v as the volume report shows it: four decimals.
std::string reportNumber(double v);

}  // namespace pictures
