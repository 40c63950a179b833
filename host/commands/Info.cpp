#include "Info.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "Console.h"
#include "Options.h"
#include "Paths.h"
#include "PointCount.h"
#include "Progress.h"
#include "Results.h"
#include "SurfaceAreas.h"
#include "SurfaceFile.h"
#include "TINFaultText.h"
#include "UserText.h"

namespace {

struct InfoOrder {
  std::string surface;
  bool json = false;
};

constexpr double kRead = 0.7;
constexpr double kCounted = 0.85;

std::string stateOf(const CEType& tin, const TINCheck& check) {
  if (!isOnlyOutline(check)) return describe(tin, check);
  return "valid, with holes or a concave outline: " + console::number(check.areaGap) + " of its hull not covered";
}

void addCounts(DTMSurface& surface, Results& results) {
  const PointCount points = countPoints(surface);
  const CEType& tin = *surface.getCEType();
  results.count("Survey points", surface.getPointsNumber());
  results.count("Repeated positions", points.repeated);
  results.count("Points off the TIN", points.missing);
  results.count("Triangles", surface.getTrianglesNumber());
  results.count("Edges", tin.getEList()->getListLen());
  results.count("Hull edges", tin.getCList()->getListLen());
}

void addMeasures(const DTMSurface& surface, Results& results) {
  results.number("Plan area", surface.getTwoDArea());
  results.number("Surface area", surface.getThreeDArea());
  results.number("Plan perimeter", surface.getPerimeterTwoD());
  results.number("Surface perimeter", surface.getPerimeterThreeD());
  results.range("Elevation", surface.getMinElev(), surface.getMaxElev());
  results.range("Easting", surface.getRangeMinX(), surface.getRangeMaxX());
  results.range("Northing", surface.getRangeMinY(), surface.getRangeMaxY());
}

SurfacePtr read(const std::string& path) {
  const progress::Part part(0.0, kRead);
  return readSurfaceUnchecked(path);
}

void info(const InfoOrder& order) {
  const std::string path = resolvedPath(order.surface);
  const SurfacePtr surface = read(path);
  const CEType& tin = *surface->getCEType();
  progress::show("checking the TIN", kRead);
  const TINCheck check = verifyTIN(tin);
  progress::show("counting points", kCounted);
  Results results;
  results.text("Surface", surfaceName(path));
  addCounts(*surface, results);
  setExactAreas(*surface);
  addMeasures(*surface, results);
  results.text("Triangulation", stateOf(tin, check));
  results.print(order.json);
  if (check.valid() || isOnlyOutline(check)) return;
  throw console::Fault(shownPath(path) + ": the TIN is not valid: " + describe(tin, check));
}

}  // namespace

Command addInfo(CLI::App& app) {
  const auto order = std::make_shared<InfoOrder>();
  CLI::App* const command = app.add_subcommand("info", "Print the statistics of a surface and check its TIN");
  options::addSurface(*command, "SURFACE", order->surface);
  options::addJson(*command, order->json);
  options::addExample(*command, "info ground.csv");
  return {command, {"SURFACE"}, [order] { info(*order); }};
}
