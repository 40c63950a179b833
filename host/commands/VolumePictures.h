// The pictures of a volume computation: a map, and a page with report, map and 3-D view.
#pragma once

#include <string>

#include "VolumeMeasurement.h"

// Resolved paths; empty: none.
struct VolumePictures {
  std::string map;
  std::string page;
};

// Throws WrongUsage unless the names end in .svg and .html.
void requireEndings(const VolumePictures& files);

// Draws and writes them. The twelve labels are the report's.
void drawVolume(const VolumePictures& files, const VolumeMeasurement& work, const std::string& labels);
