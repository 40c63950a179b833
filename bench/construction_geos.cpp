// The smaller clouds with GEOS: its Delaunay builder, through its C interface, from a multipoint that stands ready.
#include <geos_c.h>
#include <memory>
#include <stdexcept>

#include "Inputs.h"
#include "Measure.h"

namespace bench {

namespace {

// GEOS's handle, for the length of one measurement.
class Context {
 public:
  Context() : handle_(GEOS_init_r()) {}
  ~Context() { GEOS_finish_r(handle_); }
  Context(const Context&) = delete;
  Context& operator=(const Context&) = delete;

  GEOSContextHandle_t handle() const { return handle_; }

 private:
  GEOSContextHandle_t handle_;
};

struct DestroyGeometry {
  GEOSContextHandle_t handle;
  void operator()(GEOSGeometry* geometry) const { GEOSGeom_destroy_r(handle, geometry); }
};

using Geometry = std::unique_ptr<GEOSGeometry, DestroyGeometry>;

Geometry multipointOf(const Cloud& cloud, GEOSContextHandle_t handle) {
  std::vector<GEOSGeometry*> points;
  points.reserve(cloud.size());
  for (const TPoint& p : cloud) points.push_back(GEOSGeom_createPointFromXY_r(handle, p.getX(), p.getY()));
  return {GEOSGeom_createCollection_r(handle, GEOS_MULTIPOINT, points.data(), static_cast<unsigned>(points.size())),
          DestroyGeometry{handle}};
}

Geometry triangulate(const Geometry& points, GEOSContextHandle_t handle) {
  constexpr double kNoSnapping = 0.0;
  constexpr int kTriangles = 0;
  Geometry built(GEOSDelaunayTriangulation_r(handle, points.get(), kNoSnapping, kTriangles), DestroyGeometry{handle});
  if (built == nullptr) throw std::runtime_error("GEOS built nothing");
  return built;
}

void measureBuild(benchmark::State& state, const std::string& cloud) {
  const Context geos;
  const Geometry points = multipointOf(cloudNamed(cloud), geos.handle());
  for ([[maybe_unused]] auto iteration : state) {
    const Geometry built = timed(state, [&] { return triangulate(points, geos.handle()); });
  }
}

[[maybe_unused]] const bool added = [] {
  for (const std::string cloud : {"uniform_10k_sweep", "uniform_100k_sweep"}) {
    add("build/geos/" + cloud, 1, [cloud](benchmark::State& state) { measureBuild(state, cloud); });
  }
  return true;
}();

}  // namespace

}  // namespace bench
