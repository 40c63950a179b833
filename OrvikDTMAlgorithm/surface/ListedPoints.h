// Private. A surface's list of points, for who wants to know what is in it and nothing of the TIN: looking here does
// not have a promised TIN built.
#pragma once

#include <vector>

#include <OrvikDTMAlgorithm/surface/DTMSurface.h>

inline namespace OrvikDTM {
namespace detail {

struct ListedPoints {
  static const std::vector<SurfacePoint*>& of(const DTMSurface& surface) { return surface.surfacePoints; }

  // Releases the last `count` points.
  static void dropLast(DTMSurface& surface, std::size_t count) { surface.dropLastPoints(count); }
};

}  // namespace detail
}  // namespace OrvikDTM
