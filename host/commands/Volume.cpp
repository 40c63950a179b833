#include "Volume.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>

#include "Console.h"
#include "Paths.h"
#include "PointLines.h"
#include "ReportFile.h"
#include "SurveyFile.h"
#include "UserText.h"

namespace fs = std::filesystem;

namespace {

constexpr int kLabelCommas = 11;  // between twelve labels

double levelOf(const VolumeOrder& order) {
  double level = 0.0;
  if (!parseNumber(order.level, level)) {
    throw console::WrongUsage("--level " + quoted(order.level) + " is not a number: give an elevation such as 82.5");
  }
  if (std::fabs(level) > kLargestElevation) {
    throw console::WrongUsage("--level " + quoted(order.level) + " is too large: give an elevation of at most 1e12");
  }
  return level;
}

void requireMethod(const std::string& method) {
  if (method == kExactMethod || method == kSampledMethod) return;
  throw console::WrongUsage("--method " + quoted(method) + " is neither exact nor sampled");
}

// With the surface's name in the record, as the report wants it.
std::unique_ptr<FillCutResult> fillCut(DTMSurface& surface, double level, const std::string& method) {
  if (method == kSampledMethod) return std::unique_ptr<FillCutResult>(surface.getFillCut(level));
  CEType* model = surface.getCEType();
  std::unique_ptr<FillCutResult> result(model == nullptr ? nullptr : model->getFillCutExact(level));
  if (result != nullptr) result->setSurfaceName(surface.getSurfaceName());
  return result;
}

void requireLabels(const std::string& labels) {
  if (std::count(labels.begin(), labels.end(), ',') != kLabelCommas) {
    throw console::WrongUsage("--labels needs twelve texts separated by commas: 'orvikdtm volume --help' lists them");
  }
  if (oneLine(labels) != labels) {
    throw console::WrongUsage("--labels holds a line break or another control character: take it out");
  }
}

void requireOtherFile(const std::string& report, const std::string& points) {
  std::error_code ignored;
  if (fs::equivalent(report, points, ignored)) {
    throw console::WrongUsage("--report would overwrite the survey in " + shownPath(points) + ": name another file");
  }
}

void requireFinite(const std::string& points, const FillCutResult& result) {
  for (const double v : {result.getCutVolume(), result.getFillVolume(), result.getCutTwoDArea(),
                         result.getCutThreeDArea(), result.getFillTwoDArea(), result.getFillThreeDArea()}) {
    if (std::isfinite(v)) continue;
    throw console::Failure(shownPath(points) + ": the volumes are not finite: look for points far from the others");
  }
}

void print(const FillCutResult& result) {
  console::row("Cut volume", console::number(result.getCutVolume()));
  console::row("Fill volume", console::number(result.getFillVolume()));
  console::row("Cut plan area", console::number(result.getCutTwoDArea()));
  console::row("Cut surface area", console::number(result.getCutThreeDArea()));
  console::row("Fill plan area", console::number(result.getFillTwoDArea()));
  console::row("Fill surface area", console::number(result.getFillThreeDArea()));
}

}  // namespace

const char* const kEnglishLabels =
    "Volume report,Surface,Level,Volumes,Cut volume,Fill volume,Plan area,Surface area,Plan perimeter,"
    "Surface perimeter,Cut areas,Fill areas";

const char* const kExactMethod = "exact";
const char* const kSampledMethod = "sampled";

void volume(const VolumeOrder& order) {
  const double level = levelOf(order);
  requireMethod(order.method);
  requireLabels(order.labels);
  if (order.report.empty()) throw console::WrongUsage("--report is empty: name the file to write");
  const std::string points = resolvedPath(order.pointFile);
  const std::string report = resolvedPath(order.report);
  requireOtherFile(report, points);
  requireReportTarget(report);
  requirePictureTargets(order.pictures, points);

  const SurfacePtr surface = readSurvey(points);
  const std::unique_ptr<FillCutResult> result = fillCut(*surface, level, order.method);
  if (result == nullptr) throw console::Failure("the volume could not be computed: close other programs, try again");
  requireFinite(points, *result);
  writeReport(report, *result, *surface, level, order.labels);
  console::row("Surface", surfaceName(points));
  console::row("Level", console::number(level));
  print(*result);
  console::row("Report", report);
  drawVolume(order.pictures, {*surface, surfaceName(points), nullptr, "", level, *result, order.labels});
}
