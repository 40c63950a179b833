// `orvikdtm preview POINTS --output OUT.svg`: a picture of the TIN with its hull and contours.
#pragma once

#include <string>

struct PreviewOrder {
  std::string pointFile;
  std::string interval;
  std::string output;
};

void preview(const PreviewOrder& order);
