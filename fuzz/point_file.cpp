// Survey point files.
#include "Exercise.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::OwnedSurface surface;
  std::vector<SurfacePoint*> points;
  surface.loadSurfacePointsFile(fuzz::fileOf(data, size, ".csv").c_str(), points);
  fuzz::require(points == surface.getSurfacePoints(), "the points are the surface's");
  fuzz::query(surface);
  fuzz::saveAndLoad(surface);
  return 0;
}
