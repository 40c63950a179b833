// Private. The wall between the flat functions and their hosts: no exception crosses it, and the current library and
// its surfaces are looked up behind it.
#pragma once

#include <type_traits>

#include <OrvikDTMAlgorithm/api/FlatState.h>
#include <OrvikDTMAlgorithm/surface/SurfacesOfLib.h>

inline namespace OrvikDTM {
namespace detail {

// Runs the intent of a flat function. Any exception, a host's own out of a callback included, becomes the 0 or null
// that is the function's failure.
template <typename Intent>
auto guarded(const Intent& intent) noexcept -> decltype(intent()) {
  using Result = decltype(intent());
  try {
    return intent();
  } catch (...) {
    return Result();
  }
}

// The same for what needs the current library; without one it fails.
template <typename Intent>
auto withLibrary(const Intent& intent) noexcept -> decltype(intent(std::declval<DTMSurfaceLib&>())) {
  using Result = decltype(intent(std::declval<DTMSurfaceLib&>()));
  DTMSurfaceLib* library = flatState().current;
  return library == nullptr ? Result() : guarded([&] { return intent(*library); });
}

// The same for what needs a surface of the current library.
template <typename Intent>
auto withSurface(unsigned int index, const Intent& intent) noexcept -> decltype(intent(std::declval<DTMSurface&>())) {
  return withLibrary([&](DTMSurfaceLib& library) { return forSurface(library, index, intent); });
}

}  // namespace detail
}  // namespace OrvikDTM
