// The same heights with CGAL: located from the last face where places are neighbours, by the hierarchy where they are
// not, and interpolated linearly.
#include <CGAL/Delaunay_triangulation_2.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Triangulation_hierarchy_2.h>
#include <CGAL/Triangulation_vertex_base_with_info_2.h>
#include <map>
#include <memory>
#include <utility>

#include "Heights.h"
#include "Inputs.h"
#include "Measure.h"

namespace bench {

namespace {

using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
using VertexBase = CGAL::Triangulation_vertex_base_with_info_2<double, Kernel>;
using Flat = CGAL::Delaunay_triangulation_2<Kernel, CGAL::Triangulation_data_structure_2<VertexBase>>;
using HierarchyBase = CGAL::Triangulation_hierarchy_vertex_base_2<VertexBase>;
using Layered = CGAL::Triangulation_hierarchy_2<
    CGAL::Delaunay_triangulation_2<Kernel, CGAL::Triangulation_data_structure_2<HierarchyBase>>>;

// The hierarchy takes no information with its points, so vertices get their heights afterwards.
template <typename Triangulation>
std::unique_ptr<Triangulation> triangulate() {
  std::vector<Kernel::Point_2> points;
  std::map<std::pair<double, double>, double> heights;
  for (const TPoint& p : cloudNamed("uniform_1m")) {
    points.emplace_back(p.getX(), p.getY());
    heights.emplace(std::pair(p.getX(), p.getY()), p.getZ());
  }
  auto triangulation = std::make_unique<Triangulation>();
  triangulation->insert(points.begin(), points.end());
  for (auto v = triangulation->finite_vertices_begin(); v != triangulation->finite_vertices_end(); ++v) {
    v->info() = heights.at({v->point().x(), v->point().y()});
  }
  return triangulation;
}

template <typename Face>
double heightIn(const Face& face, const Kernel::Point_2& p) {
  const auto& a = face->vertex(0)->point();
  const auto& b = face->vertex(1)->point();
  const auto& c = face->vertex(2)->point();
  const double whole = (b.x() - a.x()) * (c.y() - a.y()) - (b.y() - a.y()) * (c.x() - a.x());
  const double partB = (p.x() - a.x()) * (c.y() - a.y()) - (p.y() - a.y()) * (c.x() - a.x());
  const double partC = (b.x() - a.x()) * (p.y() - a.y()) - (b.y() - a.y()) * (p.x() - a.x());
  const double za = face->vertex(0)->info();
  return za + (partB * (face->vertex(1)->info() - za) + partC * (face->vertex(2)->info() - za)) / whole;
}

void measureGridRows(benchmark::State& state) {
  const std::unique_ptr<Flat> triangulation = triangulate<Flat>();
  const std::vector<Place> places = gridPlaces();
  for ([[maybe_unused]] auto iteration : state) {
    benchmark::DoNotOptimize(timed(state, [&] {
      double sum = 0.0;
      Flat::Face_handle last;
      for (const Place& place : places) {
        const Kernel::Point_2 p(place.x, place.y);
        last = triangulation->locate(p, last);
        if (!triangulation->is_infinite(last)) sum += heightIn(last, p);
      }
      return sum;
    }));
  }
}

void measureRandom(benchmark::State& state) {
  const std::unique_ptr<Layered> triangulation = triangulate<Layered>();
  const std::vector<Place> places = randomPlaces();
  for ([[maybe_unused]] auto iteration : state) {
    benchmark::DoNotOptimize(timed(state, [&] {
      double sum = 0.0;
      for (const Place& place : places) {
        const Kernel::Point_2 p(place.x, place.y);
        const Layered::Face_handle face = triangulation->locate(p);
        if (!triangulation->is_infinite(face)) sum += heightIn(face, p);
      }
      return sum;
    }));
  }
}

[[maybe_unused]] const bool added = [] {
  add("heights/cgal/grid_rows", 1, measureGridRows);
  add("heights/cgal/random", 1, measureRandom);
  return true;
}();

}  // namespace

}  // namespace bench
