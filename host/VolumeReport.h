// The volume report, as text or as a page of HTML by the name of its file, known to be whole when it is there.
#pragma once

#include <string>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

// What the ground was measured against: the surface of that name, or the level when it is empty.
struct MeasuredAgainst {
  std::string surface;
  double level = 0.0;
};

// Writes the report with the twelve labels, or throws a Failure when not all of it could be written.
void writeReport(const std::string& path, const FillCutResult& result, const DTMSurface& surface,
                 const MeasuredAgainst& against, const std::string& labels);
