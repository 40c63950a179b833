// Survey point files.
#include "Exercise.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::OwnedSurface surface;
  std::vector<SurfacePoint*> points;
  const std::string path = fuzz::fileOf(data, size, ".csv");
  surface.loadSurfacePointsFile(path.c_str(), points);
  fuzz::require(orvik::readPointFile(path.c_str()).points.size() == points.size(), "both readers read the same points");
  fuzz::require(points == surface.getSurfacePoints(), "the points are the surface's");
  fuzz::query(surface);
  fuzz::saveAndLoad(surface);
  return 0;
}
