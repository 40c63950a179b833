#include "SurfaceFile.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include "Console.h"
#include "LineNotices.h"
#include "Paths.h"
#include "PointCount.h"
#include "Progress.h"
#include "StoredTin.h"
#include "TINFaultText.h"
#include "TriangleLines.h"
#include "UserText.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* kPointLine = "name,code,easting,northing,elevation";
constexpr int kPointsOfASurface = 3;

// The types of DTMFileOperation::loadSurface().
constexpr int kTtinType = 0;
constexpr int kSjwType = 1;
constexpr int kXmlType = 2;

// How the time of reading a surface falls to its stages, by experience with a million points.
constexpr double kChecked = 0.1;
constexpr double kRead = 0.9;

[[noreturn]] void fail(const std::string& path, const std::string& text) {
  throw console::Failure(shownPath(path) + ": " + text);
}

bool hasSemicolons(const orvik::LineNotice& notice) { return notice.text.find(';') != std::string::npos; }

void requireAnyPoint(const std::string& path, const orvik::PointFile& file) {
  if (!file.points.empty()) return;
  const bool semicolons = std::any_of(file.notices.begin(), file.notices.end(), hasSemicolons);
  const char* const advice = semicolons ? ", with commas in place of semicolons and points for decimals" : "";
  fail(path, std::string("holds no survey points: write its lines as ") + kPointLine + advice);
}

void warnOfLines(const std::string& path, const orvik::LineReport& lines) {
  const std::string all = std::to_string(lines.lines);
  if (lines.skipped > 0) {
    console::warn(shownPath(path) + ": " + std::to_string(lines.skipped) + " of " + all +
                  " lines skipped: a point needs " + kPointLine);
  }
  if (lines.withMore > 0) {
    console::warn(shownPath(path) + ": " + std::to_string(lines.withMore) + " of " + all +
                  " lines have more than five fields, the rest is ignored: are there decimal commas?");
  }
}

void requirePoints(const std::string& path, int points) {
  if (points >= kPointsOfASurface) return;
  fail(path, "holds " + console::counted(points, "survey point") + ": add some, a surface needs at least three");
}

void requireTriangles(const std::string& path, DTMSurface& surface) {
  if (surface.getCEType() == nullptr || surface.getTrianglesNumber() == 0) {
    fail(path, "all its points lie on one line or in one place: add points beside the line");
  }
}

void requireFinite(const std::string& path, const DTMSurface& surface) {
  for (const double measure :
       {surface.getTwoDArea(), surface.getThreeDArea(), surface.getPerimeterTwoD(), surface.getPerimeterThreeD()}) {
    if (!std::isfinite(measure)) fail(path, "its areas are not finite: look for points far away from the others");
  }
}

void loadPoints(const std::string& path, DTMSurface& surface) {
  progress::show("reading " + path, 0.0);
  orvik::PointFile file = orvik::readPointFile(path.c_str());
  requireUnderstood(path, file);
  requireAnyPoint(path, file);
  warnOfLines(path, file);
  requirePoints(path, static_cast<int>(file.points.size()));
  std::vector<SurfacePoint*> points;
  points.reserve(file.points.size());
  for (const auto& point : file.points) {
    point->setSurfaceName(surface.getSurfaceName());
    points.push_back(point.get());
  }
  surface.setSurfacePoints(points);
  for (auto& point : file.points) point.release();  // the surface's from now on
  progress::show("triangulating " + path, kChecked);
  surface.getCEType();
}

void loadOther(const std::string& path, int type, const char* advice, DTMSurface& surface) {
  progress::show("reading " + path, kChecked);
  try {
    if (!DTMFileOperation().loadSurface(path.c_str(), type, &surface)) fail(path, advice);
  } catch (const std::out_of_range&) {
    fail(path, "a face names a point that is not there: export the surface again");
  }
}

void warnOfLostTin(const std::string& path) {
  if (!isTinLost(path)) return;
  console::warn(shownPath(path) + ": its TIN cannot be read, so its points are triangulated anew: was it cut short?");
}

void load(const std::string& path, SurfaceFormat format, DTMSurface& surface) {
  switch (format) {
    case SurfaceFormat::kPoints:
      return loadPoints(path, surface);
    case SurfaceFormat::kSurfaceFile:
      loadOther(path, kTtinType, "is not a surface file, or it is damaged: make it again with 'orvikdtm convert'",
                surface);
      requirePoints(path, surface.getPointsNumber());
      return warnOfLostTin(path);
    case SurfaceFormat::kTriangles:
      checkTriangleFile(path);
      return loadOther(path, kSjwType, "holds no triangles: export it again", surface);
    case SurfaceFormat::kLandXml:
      checkLandXml(path);
      return loadOther(path, kXmlType, "is not a LandXML file that can be read: export the surface again", surface);
  }
}

SurfacePtr load(const std::string& path, SurfaceFormat format) {
  requireRegularFile(path);
  SurfacePtr surface(new DTMSurface);
  surface->setSurfaceName(cutAtCharacter(surfaceName(path), kNameSize - 1).c_str());
  load(path, format, *surface);
  requireTriangles(path, *surface);
  requireFinite(path, *surface);
  return surface;
}

void warnOfPoints(const std::string& path, const PointCount& count) {
  if (count.repeated > 0) {
    console::warn(shownPath(path) + ": " + console::counted(count.repeated, "point") +
                  " at the position of another: one elevation is used for each position");
  }
  if (count.missing > 0) {
    console::warn(shownPath(path) + ": " + console::counted(count.missing, "point") + " not in the TIN");
  }
}

// An imported TIN is as its maker left it; one that the library built is valid.
void warnOfTIN(const std::string& path, SurfaceFormat format, DTMSurface& surface) {
  if (format == SurfaceFormat::kPoints) return warnOfPoints(path, countPointsOfBuilt(surface));
  const TINCheck check = verifyTIN(*surface.getCEType());
  if (!check.valid() && !isOnlyOutline(check)) {
    console::warn(shownPath(path) + ": the TIN is not valid, so areas and volumes may be wrong: " +
                  describe(*surface.getCEType(), check));
  }
  warnOfPoints(path, countPoints(surface));
}

}  // namespace

void KeepSurface::operator()(DTMSurface* surface) const {
  static std::vector<DTMSurface*>& kept = *new std::vector<DTMSurface*>;
  kept.push_back(surface);
}

SurfaceFormat formatOf(const std::string& path) {
  if (U::endsWith(path, ".csv") || U::endsWith(path, ".dat")) return SurfaceFormat::kPoints;
  if (U::endsWith(path, ".ttin")) return SurfaceFormat::kSurfaceFile;
  if (U::endsWith(path, ".sjw")) return SurfaceFormat::kTriangles;
  if (U::endsWith(path, ".xml")) return SurfaceFormat::kLandXml;
  fail(path, "not a surface: the name must end in .csv, .dat, .ttin, .sjw or .xml");
}

std::string surfaceName(const std::string& path) { return oneLine(fs::path(path).stem().string()); }

SurfacePtr readSurfaceUnchecked(const std::string& path) { return load(path, formatOf(path)); }

SurfacePtr readSurface(const std::string& path) {
  const SurfaceFormat format = formatOf(path);
  SurfacePtr surface = load(path, format);
  progress::show("checking the TIN", kRead);
  warnOfTIN(path, format, *surface);
  return surface;
}
