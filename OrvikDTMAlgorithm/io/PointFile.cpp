// Survey point files: one point per line, "name,code,easting,northing,elevation". The code is not kept; further fields
// are ignored, and so are lines with fewer.
#include <exception>
#include <string>

#include <OrvikDTMAlgorithm/io/PointLines.h>
#include <OrvikDTMAlgorithm/platform/Platform.h>
#include <OrvikDTMAlgorithm/report/U.h>
#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/SurfacePoint.h>
#include <OrvikDTMAlgorithm/tin/Construction.h>
#include <OrvikDTMAlgorithm/tin/NewObjects.h>

inline namespace OrvikDTM {
namespace {

bool isPointFile(const char* path) {
  return path != nullptr && (U::endsWith(path, ".dat") || U::endsWith(path, ".csv"));
}

using NewPoints = detail::NewObjects<SurfacePoint>;

bool readPoints(const char* path, const char* surfaceName, NewPoints& points) {
  std::string contents;
  if (!detail::readWholeFile(path, contents)) return false;
  detail::NoAccount none;
  detail::readPointLines(contents, none, [&](SurfacePoint& point) {
    point.setSurfaceName(surfaceName);
    points.add(point);
  });
  return true;
}

// Hands the points to the list of their owner, and lists them for the reader: all of them, or none when memory runs
// out.
void append(NewPoints& points, std::vector<SurfacePoint*>& owner, std::vector<SurfacePoint*>& out) {
  owner.reserve(owner.size() + points.all().size());
  out.reserve(out.size() + points.all().size());
  owner.insert(owner.end(), points.all().begin(), points.all().end());
  const std::vector<SurfacePoint*> handedOver = points.take();
  out.insert(out.end(), handedOver.begin(), handedOver.end());
}

}  // namespace

void DTMSurface::loadSurfacePointsFile(const char* path, std::vector<SurfacePoint*>& out) {
  if (!isPointFile(path)) return;
  try {
    NewPoints points(0);
    if (!readPoints(path, surfaceName, points)) return;
    append(points, surfacePoints, out);
  } catch (const std::exception&) {
    return;
  }
  if (out.empty()) return;
  pointsNumber += static_cast<int>(out.size());
  dropModel();
  promisedComparison = detail::hostsComparison();
  try {
    build(promisedComparison);
  } catch (const std::exception&) {
    modelPromised = true;  // out of memory: the next look builds it
  }
}

}  // namespace OrvikDTM
