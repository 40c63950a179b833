// Private. Reaching the surfaces of a library by index, and what two of them do together.
#pragma once

#include <utility>

#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/DTMSurfaceLib.h>
#include <OrvikDTMAlgorithm/surface/FillCutResult.h>

inline namespace OrvikDTM {
namespace detail {

// What `intent` makes of the surface at `index`; 0, false or null when there is none. All index checks are this one.
template <typename Intent>
auto forSurface(const DTMSurfaceLib& library, unsigned int index, const Intent& intent)
    -> decltype(intent(std::declval<DTMSurface&>())) {
  DTMSurface* surface = library.getSurface(index);
  if (surface == nullptr) return {};
  return intent(*surface);
}

// Fill and cut of a surface against another (or itself), with the names of both. The reference's TIN is built first.
inline FillCutResult* fillCutBetween(DTMSurface& surface, DTMSurface& reference) {
  FillCutResult* result = surface.getFillCut(reference.getCEType());
  if (result != nullptr) result->setRefSurfaceName(reference.getSurfaceName());
  return result;
}

}  // namespace detail
}  // namespace OrvikDTM
