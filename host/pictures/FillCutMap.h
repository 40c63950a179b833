// The map of a fill/cut computation: cut red, fill blue, the deeper the darker, the zero line between them, the
// boundary, and a legend with the computation's own numbers.
#pragma once

#include <string>
#include <vector>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

#include "Difference.h"

namespace pictures {

// What was computed, in words and numbers.
struct FillCutFacts {
  std::string surface;
  std::string reference;  // "Level 78.500", or the other surface's name
  const FillCutResult* result = nullptr;
};

// What was compared with what, and the pieces that came of it. Everything relative to one origin.
struct FillCutScene {
  PlanMesh ground;
  PlanMesh reference;  // without triangles when the reference is a level
  double level = 0.0;
  std::vector<Point> boundary;
  Pieces pieces;
};

// `reference` null: the level. The boundary is that of `ground`.
FillCutScene fillCutScene(CEType& ground, const CEType* reference, double level);

std::string fillCutMap(const FillCutScene& scene, const FillCutFacts& facts);

// The colours of the bands, shallowest first, and of what does not differ.
const char* cutColour(int depth);
const char* fillColour(int depth);
inline constexpr const char* kSameColour = "#dcdccb";

}  // namespace pictures
