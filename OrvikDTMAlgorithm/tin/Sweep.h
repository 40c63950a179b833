// The radial sweep: points ordered by direction around the lowest one are joined, one by one, to the hull edges that
// they see. Private: the stages behind Surface::initPoins, initCET and buildTIN.
#pragma once

#include <vector>

#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

class SweepWatch;

// The indexes of `points` in sweep order: the lowest, then leftmost point first, the others by rounded direction as
// seen from it. Within one direction the farthest comes first, save in the first group, where the nearest does: the fan
// starts from a run that leads outward, and the sweep's collinear step expects later groups to come inward. Empty for
// fewer than three points or when all lie in one direction. Points with a NaN coordinate come last.
std::vector<Number> sweepOrder(const std::vector<Position>& points);

// Builds the fan of triangles over the leading collinear run of mesh.points, which are in sweep order; mesh is
// otherwise empty. Returns the number (from 1) of the first point off the line of points 1 and 2, or 0, leaving the
// mesh empty, when there is none.
Number startFan(Mesh& mesh);

// Adds the points after number `fanEnd` to a mesh that startFan() began. With a watch, returns false, with the mesh
// unfinished, as soon as the watch says that it has gone wrong; true otherwise.
bool sweep(Mesh& mesh, Number fanEnd, SweepWatch* watch);

}  // namespace detail
}  // namespace OrvikDTM
