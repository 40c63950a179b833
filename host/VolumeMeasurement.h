// A surface, what it is measured against, and the fill and cut between them.
#pragma once

#include <memory>
#include <string>

#include "SurfaceFile.h"

enum class VolumeMethod { kExact, kSampled };

struct VolumeMeasurement {
  std::string groundName;
  std::string referenceName;  // empty: the level
  SurfacePtr ground;          // limited by its boundary, if there is one
  SurfacePtr reference;       // null: the level
  double level = 0.0;
  VolumeMethod method = VolumeMethod::kExact;

  std::unique_ptr<FillCutResult> result;
  double coverage = 0.0;  // the plan area that was measured; only the exact method tells
};

// Measures `work`, whose other members are set, or throws a Failure. Warns when nothing was covered.
void measure(VolumeMeasurement& work);
