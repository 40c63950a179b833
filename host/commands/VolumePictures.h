// The pictures of a volume computation: `--map OUT.svg` and `--html OUT.html`.
#pragma once

#include <string>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

struct VolumePictures {
  std::string map;   // empty: none
  std::string html;  // empty: none
};

// What was computed. `reference` is null for a level; the boundary is that of the ground's TIN.
struct VolumeComputed {
  DTMSurface& ground;
  std::string groundName;
  DTMSurface* reference;
  std::string referenceName;
  double level;
  const FillCutResult& result;
  std::string labels;
};

// Throws unless the pictures can be written, before the long work.
void requirePictureTargets(const VolumePictures& files, const std::string& survey);

// Draws and writes the pictures, and prints where they are.
void drawVolume(const VolumePictures& files, const VolumeComputed& computed);
