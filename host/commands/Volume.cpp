#include "Volume.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>

#include "Console.h"
#include "SurveyFile.h"

namespace fs = std::filesystem;

namespace {

constexpr int kTextForm = 1;
constexpr int kLabelCommas = 11;  // between twelve labels
constexpr int kReportLines = 22;

double levelOf(const VolumeOrder& order) {
  double level = 0.0;
  if (!parseNumber(order.level, level)) {
    throw console::WrongUsage("--level '" + order.level + "' is not a number: give an elevation such as 82.5");
  }
  return level;
}

void requireLabels(const std::string& labels) {
  if (std::count(labels.begin(), labels.end(), ',') != kLabelCommas) {
    throw console::WrongUsage("--labels needs twelve texts separated by commas: 'orvikdtm volume --help' lists them");
  }
}

// Whether the report can be written is known before the long work, by opening it. Nothing that was there is lost, and
// nothing is left behind.
void requireWritable(const VolumeOrder& order) {
  std::error_code ignored;
  if (fs::equivalent(order.report, order.pointFile, ignored)) {
    throw console::WrongUsage("--report would overwrite the survey in " + order.pointFile + ": name another file");
  }
  const bool existed = fs::exists(order.report, ignored);
  if (!std::ofstream(order.report, std::ios::app)) {
    throw console::Failure(order.report + ": the report cannot be written: check the folder and its permissions");
  }
  if (!existed) fs::remove(order.report, ignored);
}

// A disk that fills up while the report is written leaves it cut short, of which the library says nothing. Pipes and
// devices cannot be read back.
bool isWhole(const std::string& report) {
  std::error_code ignored;
  if (!fs::is_regular_file(report, ignored)) return true;
  std::ifstream file(report);
  return std::count(std::istreambuf_iterator<char>(file), {}, '\n') >= kReportLines;
}

void write(const VolumeOrder& order, const FillCutResult& result, const DTMSurface& surface, double level) {
  if (!DTMFileOperation().exportVolumeReport(&result, &surface, kTextForm, level, order.labels.c_str(),
                                             order.report.c_str()) ||
      !isWhole(order.report)) {
    throw console::Failure(order.report + ": the report could not be written in full: is the disk full?");
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

void volume(const VolumeOrder& order) {
  const double level = levelOf(order);
  requireLabels(order.labels);
  requireWritable(order);

  const SurfacePtr surface = readSurvey(order.pointFile);
  const std::unique_ptr<FillCutResult> result(surface->getFillCut(level));
  if (result == nullptr) throw console::Failure(order.pointFile + ": the volume could not be computed");
  write(order, *result, *surface, level);
  console::row("Surface", surface->getSurfaceName());
  console::row("Level", console::number(level));
  print(*result);
  console::row("Report", order.report);
}
