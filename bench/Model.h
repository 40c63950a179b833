// Our own TINs, as a host gets them.
#pragma once

#include <array>
#include <memory>
#include <string>

#include <OrvikDTMAlgorithm/tin/CEType.h>

#include "Inputs.h"

namespace bench {

// The TIN of a survey; throws std::runtime_error when it has no triangles, for a benchmark of nothing is worse than
// none.
std::unique_ptr<CEType> build(Survey& survey);

// The corners of a triangle; all of its edges must exist.
std::array<const TPoint*, 3> cornersOf(const CEType& tin, int triangle);

// Whether the radial sweep over a cloud stays valid, by the stages that hosts can run one by one; if so it is what
// Surface::optimizeTIN goes on with.
bool sweepStaysValid(const Cloud& cloud);

// Throws std::runtime_error when the cloud's name ends in "_sweep" or "_exact" and its sweep says otherwise.
void checkRoad(const std::string& cloud);

}  // namespace bench
