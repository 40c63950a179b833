// Flat functions: libraries, callbacks, the version.
#include <memory>

#include <OrvikDTMAlgorithm/api/FlatGuard.h>

inline namespace OrvikDTM {

using detail::flatState;
using detail::guarded;

const char* libraryVersion(void) { return ORVIKDTM_VERSION; }

DTMSurfaceLib* newDTMSurfaceLib(void) {
  return guarded([] {
    auto& libraries = flatState().libraries;
    libraries.push_back(std::make_unique<DTMSurfaceLib>());
    return flatState().current = libraries.back().get();
  });
}

int setCurrentDTMSurfaceLib(unsigned int index) {
  const auto& libraries = flatState().libraries;
  if (index >= libraries.size()) return 0;
  flatState().current = libraries[index].get();
  return 1;
}

int setCallBack(DrawLineCallback drawLine, SurfacePointCallback surfacePoint, SurfaceCallback surface,
                RangePointCallback rangePoint) {
  flatState().callbacks = {drawLine, surfacePoint, surface, rangePoint};
  return 1;
}

}  // namespace OrvikDTM
