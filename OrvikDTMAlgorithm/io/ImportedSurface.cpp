// What a surface makes of a TIN that was read from a triangle file: its name, its statistics and its points.
#include <charconv>
#include <memory>
#include <string_view>

#include <OrvikDTMAlgorithm/platform/Platform.h>
#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/Name.h>
#include <OrvikDTMAlgorithm/surface/SurfacePoint.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/NewObjects.h>

inline namespace OrvikDTM {
namespace {

// The last component of a path without its extension. Hosts join folders and names with a backslash, so "/" separates
// only where there is none.
std::string_view nameWithoutFolder(std::string_view path) {
  std::size_t separator = detail::lastBackslash(path);
  if (separator == std::string_view::npos) separator = path.rfind('/');
  if (separator != std::string_view::npos) path.remove_prefix(separator + 1);
  const std::size_t dot = path.rfind('.');
  const bool hasExtension = dot != std::string_view::npos && dot > 0;
  return hasExtension ? path.substr(0, dot) : path;
}

void setCountedName(SurfacePoint& point, int number) {
  char name[kNameSize] = {};
  std::to_chars(name, name + kNameSize, number);
  point.setSurfacePointName(name);
}

// One record for every point of the TIN, named by its number, counted from 0.
void makeRecords(const std::vector<TPoint*>& points, const char* surfaceName,
                 detail::NewObjects<SurfacePoint>& records) {
  SurfacePoint record;
  record.setSurfaceName(surfaceName);
  int number = 0;
  for (const TPoint* point : points) {
    setCountedName(record, number++);
    record.setN(point->getY());
    record.setE(point->getX());
    record.setZ(point->getZ());
    records.add(record);
  }
}

}  // namespace

// The records that the surface had are not released: they may be in use elsewhere.
bool DTMSurface::adoptImport(CEType* model, const char* path) {
  std::unique_ptr<CEType> imported(model);
  if (imported == nullptr) return false;
  char name[kNameSize];
  copyName(name, nameWithoutFolder(path));
  const std::vector<TPoint*> points = imported->getOriginalList();
  detail::NewObjects<SurfacePoint> records(points.size());
  makeRecords(points, name, records);
  const Statistics figures = statisticsOf(*imported);

  dropModel();
  ceType = imported.release();
  copyName(surfaceName, name);
  if (!records.all().empty()) {
    surfacePoints = records.take();
    pointsNumber = getPointsNumber();
    arrayBegin = nullptr;
    arrayEnd = nullptr;
  }
  statistics = figures;
  return true;
}

}  // namespace OrvikDTM
