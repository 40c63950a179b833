// `orvikdtm contours POINTS --interval I --output OUT`: contour lines as a picture or as a drawing for CAD.
#pragma once

#include <string>

struct ContoursOrder {
  std::string pointFile;
  std::string interval;
  std::string base;
  std::string output;
};

void contours(const ContoursOrder& order);
