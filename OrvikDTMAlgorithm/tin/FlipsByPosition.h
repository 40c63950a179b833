// The flip stage for meshes far from the origin. There rounding can make a triangle without area look as if it had one,
// and when two of its corners share a position, which of its edges meets which end of another is then decided by
// position alone. Private; flipToDelaunay() chooses.
#pragma once

#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

class FlipWatch;

// The same flips in the same order as flipToDelaunay(), for every mesh, but several times slower.
bool flipByPosition(Mesh& mesh, FlipWatch* watch);

}  // namespace detail
}  // namespace OrvikDTM
