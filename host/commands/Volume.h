// `orvikdtm volume POINTS --level H --report OUT`: fill and cut of a surface against a level, and a text report of it.
#pragma once

#include <string>

#include "VolumePictures.h"

struct VolumeOrder {
  std::string pointFile;
  std::string level;
  std::string report;
  std::string labels;
  std::string method;
  VolumePictures pictures;
};

// How a volume is computed: as CEType::getFillCutExact() does it, or as getFillCut().
extern const char* const kExactMethod;
extern const char* const kSampledMethod;

// The report's wording in English: the twelve labels, separated by commas.
extern const char* const kEnglishLabels;

void volume(const VolumeOrder& order);
