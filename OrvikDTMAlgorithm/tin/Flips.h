// The flip stage: makes a triangulation locally Delaunay. Private.
#pragma once

#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

class FlipWatch;

// Takes every edge in number order and replaces it by the other diagonal of its two triangles where the flip tests say
// so, following the edges around each flip through a queue before it goes on. False when the watch says that the result
// is not a valid triangulation, or breaks the stage off; always true without one.
bool flipToDelaunay(Mesh& mesh, FlipWatch* watch);

}  // namespace detail
}  // namespace OrvikDTM
