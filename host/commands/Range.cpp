#include "Range.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>

#include <CLI/CLI.hpp>

#include "BoundaryFile.h"
#include "Console.h"
#include "HullRing.h"
#include "Options.h"
#include "OutputFile.h"
#include "Paths.h"
#include "Progress.h"
#include "Results.h"
#include "SurfaceFile.h"
#include "UserText.h"

namespace {

struct RangeOrder {
  std::string boundary;
  std::string hull;
  std::string points;
  std::string output;
  bool json = false;
};

constexpr const char* kWhat = "boundary";

std::unique_ptr<RangePoint> vertex(const std::string& name, double x, double y, double z) {
  auto point = std::make_unique<RangePoint>(RangePoint{{}, y, x, z});
  cutAtCharacter(name, kNameSize - 1).copy(point->name, kNameSize - 1);
  return point;
}

Boundary boundaryOfHull(const std::string& path) {
  const SurfacePtr surface = readSurface(path);
  const HullRing ring = largestHullRing(*surface->getCEType());
  if (ring.others > 0) {
    console::warn(shownPath(path) + ": " + console::counted(static_cast<long long>(ring.others), "further ring") +
                  " of the outline left out: the boundary is the largest");
  }
  Boundary boundary;
  for (const TPoint* p : ring.points) {
    const std::string name = "B" + std::to_string(boundary.points.size() + 1);
    boundary.points.push_back(vertex(name, p->getX(), p->getY(), p->getZ()));
  }
  return boundary;
}

Boundary boundaryOfPoints(const std::string& path) {
  if (!U::endsWith(path, ".csv") && !U::endsWith(path, ".dat")) {
    throw console::Failure(shownPath(path) + ": not a point file: the name must end in .csv or .dat");
  }
  const SurfacePtr surface = readSurface(path);
  Boundary boundary;
  for (const SurfacePoint* p : surface->getSurfacePoints()) {
    boundary.points.push_back(vertex(p->getSurfacePointName(), p->getE(), p->getN(), p->getZ()));
  }
  return boundary;
}

template <typename Of>
std::pair<double, double> extent(const Polygon& polygon, Of of) {
  const auto [low, high] = std::minmax_element(polygon.begin(), polygon.end(),
                                               [&](const PlanPoint& a, const PlanPoint& b) { return of(a) < of(b); });
  return {of(*low), of(*high)};
}

Results resultsOf(const std::string& path, const Boundary& boundary, const std::string& fault) {
  const Polygon polygon = boundary.polygon();
  const double area = signedArea(polygon);
  const auto [west, east] = extent(polygon, [](const PlanPoint& p) { return p.x; });
  const auto [south, north] = extent(polygon, [](const PlanPoint& p) { return p.y; });
  Results results;
  results.text("Boundary", path);
  results.count("Vertices", static_cast<long long>(polygon.size()));
  results.flag("Last repeats first", boundary.points.size() > polygon.size());
  results.text("Orientation", area == 0.0 ? "none" : area > 0.0 ? "counter-clockwise" : "clockwise");
  results.flag("Crosses itself", findCrossing(polygon).has_value());
  results.number("Area", std::fabs(area));
  results.number("Perimeter", perimeter(polygon));
  results.range("Easting", west, east);
  results.range("Northing", south, north);
  results.flag("First switch", boundary.first);
  results.flag("Second switch", boundary.second);
  results.text("Check", fault.empty() ? "valid" : fault);
  return results;
}

void requireThree(const std::string& path, const Boundary& boundary) {
  constexpr std::size_t kVerticesOfAPolygon = 3;
  if (boundary.polygon().size() < kVerticesOfAPolygon) {
    throw console::Failure(shownPath(path) + ": the boundary " + faultOf(boundary));
  }
}

void check(const RangeOrder& order) {
  const std::string path = resolvedPath(order.boundary);
  const Boundary boundary = readBoundary(path);
  requireThree(path, boundary);
  const std::string fault = faultOf(boundary);
  resultsOf(path, boundary, fault).print(order.json);
  if (!fault.empty()) throw console::Fault(shownPath(path) + ": the boundary " + fault);
}

std::string boundaryPath(const std::string& typed) {
  const std::string path = options::outputPath("--out", typed);
  if (U::endsWith(path, ".waa") || U::endsWith(path, ".csv")) return path;
  throw console::WrongUsage("--out " + quoted(typed) + ": the name of a boundary file ends in .waa or .csv");
}

void make(const RangeOrder& order) {
  const std::string input = resolvedPath(order.hull.empty() ? order.points : order.hull);
  const std::string output = boundaryPath(order.output);
  requireOtherFile("--out", output, input);
  requireTarget(output, kWhat);
  const Boundary boundary = order.hull.empty() ? boundaryOfPoints(input) : boundaryOfHull(input);
  const std::string fault = faultOf(boundary);
  if (!fault.empty()) {
    throw console::Failure(shownPath(input) + ": the boundary " + fault + ": list the points in order around the site");
  }
  writeBoundary(output, boundary);
  resultsOf(output, boundary, fault).print(order.json);
}

void range(const RangeOrder& order, const CLI::App& command) {
  int questions = 0;
  for (const char* name : {"BOUNDARY", "--hull", "--points"}) questions += options::isGiven(command, name) ? 1 : 0;
  if (questions == 0) throw console::WrongUsage("BOUNDARY, --hull or --points is required");
  if (questions > 1) throw console::WrongUsage("BOUNDARY, --hull and --points exclude each other: give one");
  const bool checks = options::isGiven(command, "BOUNDARY");
  if (checks && options::isGiven(command, "--out")) throw console::WrongUsage("--out needs --hull or --points");
  if (!checks && !options::isGiven(command, "--out")) throw console::WrongUsage("--out is required");
  if (checks) {
    check(order);
  } else {
    make(order);
  }
}

}  // namespace

Command addRange(CLI::App& app) {
  const auto order = std::make_shared<RangeOrder>();
  CLI::App* const command =
      app.add_subcommand("range", "Check a boundary file, or make one from a surface's hull or from points");
  options::addFile(*command, "BOUNDARY", order->boundary, "Boundary file to check, .waa or .csv");
  options::addSurface(*command, "--hull", order->hull, "Make one: the outline of this surface");
  options::addFile(*command, "--points", order->points, "Make one: these points in their order, .csv or .dat");
  options::addFile(*command, "--out", order->output, "Boundary file to make, .waa or .csv");
  options::addJson(*command, order->json);
  options::addExample(*command, "range --hull ground.csv --out boundary.waa");
  return {command, {}, [order, command] { range(*order, *command); }};
}
