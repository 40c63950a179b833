#include "Diff.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include <CLI/CLI.hpp>

#include "Console.h"
#include "Options.h"
#include "OutputFile.h"
#include "Paths.h"
#include "PointChanges.h"
#include "Progress.h"
#include "Results.h"
#include "UserText.h"
#include "VolumeMeasurement.h"

namespace {

struct DiffOrder {
  std::string before;
  std::string after;
  std::string list;
  bool json = false;
};

constexpr double kFirstRead = 0.35;
constexpr double kBothRead = 0.7;
constexpr int kDecimals = 4;  // a tenth of a millimetre: below it nothing has changed
constexpr const char* kWhat = "list of changes";

const char* wordFor(Change change) {
  switch (change) {
    case Change::kAdded:
      return "added";
    case Change::kRemoved:
      return "removed";
    case Change::kMoved:
      return "moved";
    case Change::kRaised:
      return "raised";
    case Change::kLowered:
      return "lowered";
  }
  return "";
}

void appendPlace(std::string& text, const SurfacePoint* point) {
  if (point == nullptr) {
    text.append(",,,");
    return;
  }
  for (const double v : {point->getE(), point->getN(), point->getZ()}) {
    text.append(1, ',').append(U::roundHalfUp(kDecimals, v));
  }
}

// "change,name,easting,northing,elevation", then the last three as they are after the change.
std::string listOf(const PointChanges& changes) {
  std::string text = "change,name,easting,northing,elevation,new_easting,new_northing,new_elevation\n";
  for (const PointChange& one : changes.changes) {
    const SurfacePoint& named = one.before == nullptr ? *one.after : *one.before;
    text.append(wordFor(one.change)).append(1, ',').append(named.getSurfacePointName());
    appendPlace(text, one.before);
    appendPlace(text, one.after);
    text.append(1, '\n');
  }
  return text;
}

double largestRise(const PointChanges& changes, Change change) {
  double largest = 0.0;
  for (const PointChange& one : changes.changes) {
    if (one.change == change) largest = std::max(largest, std::fabs(one.after->getZ() - one.before->getZ()));
  }
  return largest;
}

double longestMove(const PointChanges& changes) {
  double longest = 0.0;
  for (const PointChange& one : changes.changes) {
    if (one.change != Change::kMoved) continue;
    const double length = std::hypot(one.after->getE() - one.before->getE(), one.after->getN() - one.before->getN());
    longest = std::max(longest, length);
  }
  return longest;
}

void addPoints(const PointChanges& changes, Results& results) {
  const auto add = [&](const std::string& label, std::size_t count) {
    results.count(label, static_cast<long long>(count));
  };
  add("Points unchanged", changes.unchanged);
  add("Points added", changes.count(Change::kAdded));
  add("Points removed", changes.count(Change::kRemoved));
  add("Points moved", changes.count(Change::kMoved));
  results.number("Longest move", longestMove(changes));
  add("Points raised", changes.count(Change::kRaised));
  results.number("Largest rise", largestRise(changes, Change::kRaised));
  add("Points lowered", changes.count(Change::kLowered));
  results.number("Largest fall", largestRise(changes, Change::kLowered));
}

// Where the ground before lies below the ground after, it was filled.
void addVolumes(const VolumeMeasurement& work, Results& results) {
  results.number("Filled volume", work.result->getFillVolume());
  results.number("Removed volume", work.result->getCutVolume());
  results.number("Filled plan area", work.result->getFillTwoDArea());
  results.number("Removed plan area", work.result->getCutTwoDArea());
  results.number("Common plan area", work.coverage);
}

void readSurfaces(const std::string& before, const std::string& after, VolumeMeasurement& work) {
  {
    const progress::Part part(0.0, kFirstRead);
    work.groundName = surfaceName(before);
    work.ground = readSurface(before);
  }
  const progress::Part part(kFirstRead, kBothRead);
  work.referenceName = surfaceName(after);
  work.reference = readSurface(after);
}

void diff(const DiffOrder& order, const CLI::App& command) {
  const std::string before = resolvedPath(order.before);
  const std::string after = resolvedPath(order.after);
  std::string list;
  if (options::isGiven(command, "--list")) {
    list = options::outputPath("--list", order.list);
    for (const std::string& input : {before, after}) requireOtherFile("--list", list, input);
    requireTarget(list, kWhat);
  }
  VolumeMeasurement work;
  readSurfaces(before, after, work);
  progress::show("comparing points", kBothRead);
  const PointChanges changes = compare(*work.ground, *work.reference);
  progress::show("measuring volumes", kBothRead);
  measure(work);
  if (!list.empty()) writeText(list, kWhat, listOf(changes));
  Results results;
  results.text("Before", work.groundName);
  results.text("After", work.referenceName);
  addPoints(changes, results);
  addVolumes(work, results);
  if (!list.empty()) results.text("List", list);
  results.print(order.json);
}

}  // namespace

Command addDiff(CLI::App& app) {
  const auto order = std::make_shared<DiffOrder>();
  CLI::App* const command =
      app.add_subcommand("diff", "Tell what changed between two surfaces: points, and the volume between them");
  options::addSurface(*command, "BEFORE", order->before, "Surface before the change");
  options::addSurface(*command, "AFTER", order->after, "Surface after it");
  options::addFile(*command, "--list", order->list, "Table to write, .csv: every point that changed");
  options::addJson(*command, order->json);
  options::addExample(*command, "diff ground.csv design.csv --list changes.csv");
  return {command, {"BEFORE", "AFTER"}, [order, command] { diff(*order, *command); }};
}
