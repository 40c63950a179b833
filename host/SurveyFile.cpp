#include "SurveyFile.h"

#include <cmath>
#include <filesystem>
#include <vector>

#include <OrvikDTMAlgorithm/surface/NameSize.h>

#include "Console.h"
#include "Paths.h"
#include "PointLines.h"
#include "UserText.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* kPointLine = "name,code,easting,northing,elevation";
constexpr int kPointsOfASurface = 3;

[[noreturn]] void fail(const std::string& path, const std::string& text) {
  throw console::Failure(shownPath(path) + ": " + text);
}

void requirePointFile(const std::string& path) {
  if (!U::endsWith(path, ".csv") && !U::endsWith(path, ".dat")) {
    fail(path, "not a point file: the name must end in .csv or .dat");
  }
  requireRegularFile(path);
}

void requireAnyPoint(const std::string& path, const LineCount& count) {
  if (count.points > 0) return;
  const char* const advice = count.semicolons ? ", with commas in place of semicolons and points for decimals" : "";
  fail(path, std::string("holds no survey points: write its lines as ") + kPointLine + advice);
}

void warnOfLines(const std::string& path, const LineCount& count) {
  const std::string all = std::to_string(count.points + count.skipped);
  if (count.skipped > 0) {
    console::warn(shownPath(path) + ": " + std::to_string(count.skipped) + " of " + all +
                  " lines skipped: a point needs " + kPointLine);
  }
  if (count.withMore > 0) {
    console::warn(shownPath(path) + ": " + std::to_string(count.withMore) + " of " + all +
                  " lines have more than five fields, the rest is ignored: are there decimal commas?");
  }
}

void requirePoints(const std::string& path, const LineCount& count) {
  if (count.points >= kPointsOfASurface) return;
  const char* const points = count.points == 1 ? " survey point" : " survey points";
  fail(path, "holds " + std::to_string(count.points) + points + ": add some, a surface needs at least three");
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

void warnOfInvalid(const std::string& path, DTMSurface& surface) {
  const TINCheck check = verifyTIN(*surface.getCEType());
  if (!check.valid()) {
    console::warn(shownPath(path) + ": the TIN is not valid, so areas and volumes may be wrong: " + toText(check));
  }
}

}  // namespace

std::string surfaceName(const std::string& path) { return oneLine(fs::path(path).stem().string()); }

SurfacePtr readSurvey(const std::string& path) {
  requirePointFile(path);
  const LineCount count = checkLines(path);
  requireAnyPoint(path, count);
  warnOfLines(path, count);
  requirePoints(path, count);

  SurfacePtr surface(new DTMSurface);
  surface->setSurfaceName(cutAtCharacter(surfaceName(path), kNameSize - 1).c_str());
  std::vector<SurfacePoint*> points;  // the surface's own records, listed a second time
  surface->loadSurfacePointsFile(path.c_str(), points);
  if (surface->getPointsNumber() != count.points) {
    fail(path, "changed while it was read, or memory ran out: try again");
  }
  requireTriangles(path, *surface);
  requireFinite(path, *surface);
  warnOfInvalid(path, *surface);
  return surface;
}
