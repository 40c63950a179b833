// Triangles that make up a polygon.
#pragma once

#include <array>
#include <vector>

#include "Clip.h"

namespace pictures {

// The counter-clockwise polygon `loop` as triangles of positions in it: ears are cut off one after the other. Where
// clipping has left edges there and back, triangles without area may come along.
std::vector<std::array<std::size_t, 3>> ears(const Loop& loop);

}  // namespace pictures
