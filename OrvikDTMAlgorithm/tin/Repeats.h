// Which points repeat the position of one accepted before them. Private.
#pragma once

#include <vector>

#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

// For rounded positions of points sorted by y: whether each is a repeat; an empty vector when none is. By default a
// repeat is a position that equals that of a point accepted before it *less the origin*; `compareUnshifted`, one that
// equals it as it is.
std::vector<bool> findRepeats(const std::vector<Position>& rounded, const Position& origin, bool compareUnshifted);

}  // namespace detail
}  // namespace OrvikDTM
