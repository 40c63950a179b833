// The same clouds with CGAL: the construction of a Delaunay triangulation from a vector of its points.
#include <CGAL/Delaunay_triangulation_2.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <map>
#include <memory>

#include "Inputs.h"
#include "Measure.h"
#include "PeakMemory.h"

namespace bench {

namespace {

using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
using Triangulation = CGAL::Delaunay_triangulation_2<Kernel>;
using Points = std::vector<Kernel::Point_2>;

Points pointsOf(const Cloud& cloud) {
  Points points;
  points.reserve(cloud.size());
  for (const TPoint& p : cloud) points.emplace_back(p.getX(), p.getY());
  return points;
}

const Points& pointsNamed(const std::string& cloud) {
  static std::map<std::string, Points> kept;
  const auto place = kept.find(cloud);
  return place != kept.end() ? place->second : kept.emplace(cloud, pointsOf(cloudNamed(cloud))).first->second;
}

std::unique_ptr<Triangulation> triangulate(const Points& points) {
  return std::make_unique<Triangulation>(points.begin(), points.end());
}

void measureBuild(benchmark::State& state, const std::string& cloud) {
  const Points& points = pointsNamed(cloud);
  for ([[maybe_unused]] auto iteration : state) {
    const std::unique_ptr<Triangulation> built = timed(state, [&points] { return triangulate(points); });
    benchmark::DoNotOptimize(built->number_of_vertices());
  }
}

void addBuild(const std::string& cloud) {
  add("build/cgal/" + cloud, iterationsFor(cloud), [cloud](benchmark::State& state) { measureBuild(state, cloud); });
}

void buildInChild(const std::string& cloud) {
  const Points points = pointsOf(makeCloud(cloud));
  const std::unique_ptr<Triangulation> built = triangulate(points);
  benchmark::DoNotOptimize(built->number_of_vertices());
}

[[maybe_unused]] const bool added = [] {
  for (const char* cloud : kMillions) addBuild(cloud);
  for (const char* cloud : kSmaller) addBuild(cloud);
  addPeakMemory("cgal", "uniform_1m", buildInChild);
  return true;
}();

}  // namespace

}  // namespace bench
