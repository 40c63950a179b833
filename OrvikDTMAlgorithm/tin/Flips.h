// The flip stage: makes a triangulation locally Delaunay. Private.
#pragma once

#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

// Takes every edge in number order and replaces it by the other diagonal of its two triangles where the flip tests say
// so, following the edges around each flip through a queue before it goes on.
void flipToDelaunay(Mesh& mesh);

}  // namespace detail
}  // namespace OrvikDTM
