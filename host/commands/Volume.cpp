#include "Volume.h"

#include <algorithm>
#include <memory>

#include <CLI/CLI.hpp>

#include "BoundaryFile.h"
#include "Console.h"
#include "Options.h"
#include "OutputFile.h"
#include "Paths.h"
#include "Progress.h"
#include "Results.h"
#include "SurfaceAreas.h"
#include "UserText.h"
#include "VolumeMeasurement.h"
#include "VolumePictures.h"
#include "VolumeReport.h"

namespace {

struct VolumeOrder {
  std::string surface;
  std::string level;
  std::string reference;
  std::string boundary;
  std::string method = "exact";
  std::string report;
  std::string labels;
  std::string map;
  std::string html;
  bool json = false;
};

constexpr int kLabelCommas = 11;  // between twelve labels
constexpr const char* kLevelLabels =
    "Volume report,Surface,Level,Volumes,Cut volume,Fill volume,Plan area,Surface area,Plan perimeter,"
    "Surface perimeter,Cut areas,Fill areas";
constexpr const char* kReferenceLabels =
    "Volume report,Surface,Reference,Volumes,Cut volume,Fill volume,Plan area,Surface area,Plan perimeter,"
    "Surface perimeter,Cut areas,Fill areas";

// How the time falls to the stages, by experience with a million points.
constexpr double kGroundRead = 0.8;
constexpr double kGroundReadOfTwo = 0.4;
constexpr double kBothRead = 0.8;
constexpr double kMeasured = 0.9;

VolumeMethod methodOf(const std::string& method) {
  if (method == "exact") return VolumeMethod::kExact;
  if (method == "sampled") return VolumeMethod::kSampled;
  throw console::WrongUsage("--method " + quoted(method) + " is neither exact nor sampled");
}

std::string labelsOf(const VolumeOrder& order, bool given) {
  if (!given) return order.reference.empty() ? kLevelLabels : kReferenceLabels;
  if (std::count(order.labels.begin(), order.labels.end(), ',') != kLabelCommas) {
    throw console::WrongUsage("--labels needs twelve texts separated by commas: 'orvikdtm volume --help' lists them");
  }
  if (oneLine(order.labels) != order.labels) {
    throw console::WrongUsage("--labels holds a line break or another control character: take it out");
  }
  return order.labels;
}

void requireOneReference(const CLI::App& command) {
  const bool level = options::isGiven(command, "--level");
  const bool reference = options::isGiven(command, "--ref");
  if (level && reference) throw console::WrongUsage("--level and --ref exclude each other: give one");
  if (!level && !reference) throw console::WrongUsage("--level or --ref is required");
}

// The inputs, so that no output overwrites one of them.
std::vector<std::string> inputsOf(const VolumeOrder& order) {
  std::vector<std::string> inputs = {resolvedPath(order.surface)};
  for (const std::string& path : {order.reference, order.boundary}) {
    if (!path.empty()) inputs.push_back(resolvedPath(path));
  }
  return inputs;
}

// The resolved path that an option names, looked at before the long work; empty when it was not given.
std::string targetOf(const CLI::App& command, const std::string& option, const std::string& text,
                     const std::string& what, const std::vector<std::string>& inputs) {
  if (!options::isGiven(command, option)) return "";
  const std::string path = options::outputPath(option, text);
  for (const std::string& input : inputs) requireOtherFile(option, path, input);
  requireTarget(path, what);
  return path;
}

void readSurfaces(const VolumeOrder& order, VolumeMeasurement& work) {
  const std::string ground = resolvedPath(order.surface);
  const bool isAlone = order.reference.empty();
  work.groundName = surfaceName(ground);
  {
    const progress::Part part(0.0, isAlone ? kGroundRead : kGroundReadOfTwo);
    work.ground = readSurface(ground);
  }
  if (isAlone) return;
  const std::string reference = resolvedPath(order.reference);
  const progress::Part part(kGroundReadOfTwo, kBothRead);
  work.referenceName = surfaceName(reference);
  work.reference = readSurface(reference);
}

Results resultsOf(const VolumeMeasurement& work, const std::string& report, const VolumePictures& pictures) {
  const FillCutResult& result = *work.result;
  Results results;
  results.text("Surface", work.groundName);
  if (work.reference == nullptr) {
    results.number("Level", work.level);
  } else {
    results.text("Reference", work.referenceName);
  }
  results.number("Cut volume", result.getCutVolume());
  results.number("Fill volume", result.getFillVolume());
  results.number("Cut plan area", result.getCutTwoDArea());
  results.number("Cut surface area", result.getCutThreeDArea());
  results.number("Fill plan area", result.getFillTwoDArea());
  results.number("Fill surface area", result.getFillThreeDArea());
  if (work.method == VolumeMethod::kExact) results.number("Covered plan area", work.coverage);
  if (!report.empty()) results.text("Report", report);
  if (!pictures.map.empty()) results.text("Map", pictures.map);
  if (!pictures.page.empty()) results.text("Page", pictures.page);
  return results;
}

void volume(const VolumeOrder& order, const CLI::App& command) {
  requireOneReference(command);
  VolumeMeasurement work;
  if (order.reference.empty()) work.level = options::elevationOf("--level", order.level);
  work.method = methodOf(order.method);
  const std::string labels = labelsOf(order, options::isGiven(command, "--labels"));
  const std::string report = targetOf(command, "--report", order.report, "report", inputsOf(order));
  const VolumePictures pictures{targetOf(command, "--map", order.map, "map", inputsOf(order)),
                                targetOf(command, "--html", order.html, "page", inputsOf(order))};
  requireEndings(pictures);
  requireTwoFiles("--report", report, "--map", pictures.map);
  requireTwoFiles("--report", report, "--html", pictures.page);
  const Boundary boundary = readLimit(order.boundary);

  readSurfaces(order, work);
  const bool showsAreas = !report.empty() || !pictures.page.empty();
  if (showsAreas && work.method == VolumeMethod::kExact) setExactAreas(*work.ground);
  limitTo(boundary, order.boundary, *work.ground);
  progress::show("measuring volumes", kBothRead);
  measure(work);
  if (!report.empty()) writeReport(report, *work.result, *work.ground, {work.referenceName, work.level}, labels);
  progress::show("drawing", kMeasured);
  drawVolume(pictures, work, labels);
  resultsOf(work, report, pictures).print(order.json);
}

void addOptions(CLI::App& command, VolumeOrder& order) {
  options::addSurface(command, "SURFACE", order.surface, "Surface that is measured");
  command.add_option("--level", order.level, "Elevation to fill and cut to")->type_name(options::kElevation);
  options::addSurface(command, "--ref", order.reference, "Surface to fill and cut to, in place of a level");
  options::addBoundary(command, order.boundary);
  command.add_option("--method", order.method, "How volumes are measured; exact when left out")
      ->type_name("exact|sampled");
  options::addFile(command, "--report", order.report, "Report to write: a page for .html and .htm, else a text");
  command
      .add_option("--labels", order.labels,
                  "Wording of the report, twelve texts separated by commas: title, surface, level, volumes,\n"
                  "cut volume, fill volume, plan area, surface area, plan perimeter, surface perimeter,\n"
                  "cut areas, fill areas; English when left out")
      ->type_name("LABELS");
  options::addFile(command, "--map", order.map, "Map of cut and fill to write, .svg");
  options::addFile(command, "--html", order.html, "Page with report, map and 3-D view to write, .html");
  options::addJson(command, order.json);
}

}  // namespace

Command addVolume(CLI::App& app) {
  const auto order = std::make_shared<VolumeOrder>();
  CLI::App* const command =
      app.add_subcommand("volume", "Compute fill and cut against a level or another surface, and write a report");
  addOptions(*command, *order);
  options::addExample(*command, "volume ground.csv --level 82.5 --report volume.txt");
  return {command, {"SURFACE"}, [order, command] { volume(*order, *command); }};
}
