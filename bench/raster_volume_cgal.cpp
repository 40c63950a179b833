// The volume between two surfaces as it is often computed: both networks, made with CGAL, sampled at the centres of a
// raster of 0.5 m, row by row, and the differences summed.
#include <CGAL/Delaunay_triangulation_2.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Projection_traits_xy_3.h>
#include <memory>
#include <stdexcept>

#include "Inputs.h"
#include "Measure.h"

namespace bench {

namespace {

using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
using Traits = CGAL::Projection_traits_xy_3<Kernel>;
using Triangulation = CGAL::Delaunay_triangulation_2<Traits>;

constexpr double kCell = 0.5;
constexpr int kCells = 2000;

std::unique_ptr<Triangulation> surfaceOf(const std::string& cloud) {
  std::vector<Kernel::Point_3> points;
  for (const TPoint& p : cloudNamed(cloud)) points.emplace_back(p.getX(), p.getY(), p.getZ());
  return std::make_unique<Triangulation>(points.begin(), points.end());
}

// Heights of one surface at neighbouring places: the last face is the hint, and its plane is kept while it lasts.
class Sampler {
 public:
  explicit Sampler(const Triangulation& surface) : surface_(surface) {}

  // False outside the surface.
  bool height(double x, double y, double& z) {
    const Triangulation::Face_handle face = surface_.locate({x, y, 0.0}, face_);
    if (face == nullptr || surface_.is_infinite(face)) return false;
    if (face != face_) takePlaneOf(face);
    z = a_ * (x - x0_) + b_ * (y - y0_) + z0_;
    return true;
  }

 private:
  void takePlaneOf(Triangulation::Face_handle face) {
    const Kernel::Point_3& p = face->vertex(0)->point();
    const Kernel::Vector_3 u = face->vertex(1)->point() - p;
    const Kernel::Vector_3 v = face->vertex(2)->point() - p;
    const double area = u.x() * v.y() - u.y() * v.x();
    a_ = (u.z() * v.y() - u.y() * v.z()) / area;
    b_ = (u.x() * v.z() - u.z() * v.x()) / area;
    x0_ = p.x();
    y0_ = p.y();
    z0_ = p.z();
    face_ = face;
  }

  const Triangulation& surface_;
  Triangulation::Face_handle face_;
  double a_ = 0.0;
  double b_ = 0.0;
  double x0_ = 0.0;
  double y0_ = 0.0;
  double z0_ = 0.0;
};

// What is to be filled and what is to be cut.
struct Volumes {
  double fill = 0.0;
  double cut = 0.0;
};

Volumes rasterVolumes(const Triangulation& ground, const Triangulation& design) {
  Sampler onGround(ground);
  Sampler onDesign(design);
  Volumes volumes;
  for (int row = 0; row < kCells; ++row) {
    const double y = (row + 0.5) * kCell;
    for (int column = 0; column < kCells; ++column) {
      const double x = (column + 0.5) * kCell;
      double below = 0.0;
      double above = 0.0;
      if (!onGround.height(x, y, below) || !onDesign.height(x, y, above)) continue;
      (above > below ? volumes.fill : volumes.cut) += std::fabs(above - below) * kCell * kCell;
    }
  }
  if (!(volumes.fill > 0)) throw std::runtime_error("the surfaces have no volume");
  return volumes;
}

void measureRasterVolume(benchmark::State& state) {
  const std::unique_ptr<Triangulation> ground = surfaceOf("uniform_100k_exact");
  const std::unique_ptr<Triangulation> design = surfaceOf("changed_100k");
  for ([[maybe_unused]] auto iteration : state) {
    const Volumes volumes = timed(state, [&] { return rasterVolumes(*ground, *design); });
    state.counters["fill"] = volumes.fill;
    state.counters["cut"] = volumes.cut;
  }
}

[[maybe_unused]] const bool added = [] {
  add("volume/cgal/raster_100k", 1, measureRasterVolume);
  return true;
}();

}  // namespace

}  // namespace bench
