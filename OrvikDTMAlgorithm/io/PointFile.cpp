// Survey point files: one point per line, "name,code,easting,northing,elevation". The code is not kept; further fields
// are ignored, and so are lines with fewer.
#include <exception>
#include <memory>
#include <string>

#include <OrvikDTMAlgorithm/io/PointLines.h>
#include <OrvikDTMAlgorithm/platform/Platform.h>
#include <OrvikDTMAlgorithm/report/U.h>
#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/SurfacePoint.h>

inline namespace OrvikDTM {
namespace {

bool isPointFile(const char* path) {
  return path != nullptr && (U::endsWith(path, ".dat") || U::endsWith(path, ".csv"));
}

// Appends a record to the list of its owner, then to that of the reader.
void append(const SurfacePoint& point, std::vector<SurfacePoint*>& owner, std::vector<SurfacePoint*>& out) {
  auto record = std::make_unique<SurfacePoint>(point);
  owner.push_back(record.get());
  out.push_back(record.release());
}

}  // namespace

void DTMSurface::loadSurfacePointsFile(const char* path, std::vector<SurfacePoint*>& out) {
  if (!isPointFile(path)) return;
  try {
    std::string contents;
    if (!detail::readWholeFile(path, contents)) return;
    detail::NoAccount none;
    detail::readPointLines(contents, none, [&](SurfacePoint& point) {
      point.setSurfaceName(surfaceName);
      append(point, surfacePoints, out);
    });
    if (out.empty()) return;
    pointsNumber += static_cast<int>(out.size());
    rebuild();
  } catch (const std::exception&) {
    dropModel();  // out of memory: the points read so far stay, and the next use of the TIN builds it from them
  }
}

}  // namespace OrvikDTM
