// Private. A surface of its own that goes with its points and its TIN.
#pragma once

#include <memory>

#include <OrvikDTMAlgorithm/surface/DTMSurface.h>

inline namespace OrvikDTM {
namespace detail {

struct ReleaseSurface {
  void operator()(DTMSurface* surface) const {
    surface->release();
    delete surface;
  }
};

using SurfacePtr = std::unique_ptr<DTMSurface, ReleaseSurface>;

inline SurfacePtr newSurface() { return SurfacePtr(new DTMSurface); }

}  // namespace detail
}  // namespace OrvikDTM
