// Triangles that make up a piece.
#pragma once

#include <array>
#include <vector>

#include "Clip.h"

namespace pictures {

// Counter-clockwise triangles that cover what the counter-clockwise loop encloses, without overlap, also where clipping
// has left edges there and back in it.
std::vector<std::array<DifferencePoint, 3>> trianglesOf(const Loop& loop);

}  // namespace pictures
