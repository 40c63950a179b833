// The sweep's order of three points, as a face takes it. Private.
#pragma once

#include <array>

#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

// Which of the three corners come first, second and third: the lowest, then leftmost one, and the other two by rounded
// direction as seen from it, which is counter-clockwise. False when the two directions are the same. This is
// sweepOrder() for three points.
bool faceOrder(const std::array<Position, 3>& corner, std::array<Number, 3>& order);

}  // namespace detail
}  // namespace OrvikDTM
