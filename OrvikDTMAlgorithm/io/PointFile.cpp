// Survey point files: one point per line, "name,code,easting,northing,elevation". The code is not kept; further fields
// are ignored, and so are lines with fewer.
#include <array>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <OrvikDTMAlgorithm/io/TextLines.h>
#include <OrvikDTMAlgorithm/platform/Platform.h>
#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/report/U.h>
#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/Name.h>
#include <OrvikDTMAlgorithm/surface/SurfacePoint.h>

inline namespace OrvikDTM {
namespace {

// The columns that make a point.
enum Column : std::size_t { kName, kCode, kEasting, kNorthing, kElevation, kColumns };

bool isPointFile(const char* path) {
  return path != nullptr && (U::endsWith(path, ".dat") || U::endsWith(path, ".csv"));
}

void setName(SurfacePoint& point, std::string_view name) {
  char terminated[kNameSize];
  copyName(terminated, name);
  point.setSurfacePointName(terminated);
}

std::optional<SurfacePoint> readPoint(std::string_view line) {
  std::array<std::string_view, kColumns> fields;
  if (detail::splitFields(line, fields) < kColumns) return std::nullopt;
  SurfacePoint point;
  setName(point, fields[kName]);
  point.setE(detail::readNumber(fields[kEasting]));
  point.setN(detail::readNumber(fields[kNorthing]));
  point.setZ(detail::readNumber(fields[kElevation]));
  return point;
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
    std::string_view rest = detail::withoutByteOrderMark(contents);
    for (std::string_view line; detail::takeLine(rest, line);) {
      std::optional<SurfacePoint> point = readPoint(line);
      if (!point) continue;
      point->setSurfaceName(surfaceName);
      append(*point, surfacePoints, out);
    }
    if (out.empty()) return;
    pointsNumber += static_cast<int>(out.size());
    rebuild();
  } catch (const std::exception&) {
    dropModel();  // out of memory: the points read so far stay, and the next use of the TIN builds it from them
  }
}

}  // namespace OrvikDTM
