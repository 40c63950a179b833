// Points that come one at a time, as from a rover in the field, against the same points given at once.
#include <cmath>

#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/SurfacePoint.h>

#include "Inputs.h"
#include "Measure.h"

namespace bench {

namespace {

using Records = std::vector<SurfacePoint*>;

// In seconds. A road that needs longer for 20,000 edits is lost already; the rest of it is not waited for.
constexpr double kPatience = 10.0;
constexpr std::size_t kEditsBetweenLooks = 100;

// New records, to be adopted by a surface.
Records recordsOf(const Cloud& cloud) {
  Records records;
  records.reserve(cloud.size());
  for (const TPoint& p : cloud) {
    records.push_back(new SurfacePoint);
    records.back()->setE(p.getX());
    records.back()->setN(p.getY());
    records.back()->setZ(p.getZ());
  }
  return records;
}

bool hasHeight(DTMSurface& surface) {
  double z = 0;
  return surface.checkSurfacePoint(500.0, 500.0, &z) == 1;
}

// Adds all records; returns how many until patience ran out.
std::size_t addOneByOne(DTMSurface& surface, const Records& records) {
  const double start = processorSeconds();
  for (std::size_t i = 0; i < records.size(); ++i) {
    if (i % kEditsBetweenLooks == 0 && processorSeconds() - start > kPatience) return i;
    surface.addSurfacePoint(records[i], i);
  }
  return records.size();
}

void measureOneByOne(benchmark::State& state) {
  for ([[maybe_unused]] auto iteration : state) {
    const Records records = recordsOf(cloudNamed("uniform_20k"));
    DTMSurface surface;
    std::size_t count = 0;
    const bool known = timed(state, [&] {
      count = addOneByOne(surface, records);
      return hasHeight(surface);
    });
    for (std::size_t i = count; i < records.size(); ++i) delete records[i];
    surface.release();
    if (count < records.size()) {
      const std::string text = "given up after " + std::to_string(std::lround(kPatience)) + " s and " +
                               std::to_string(count) + " of " + std::to_string(records.size()) + " edits";
      state.SkipWithError(text.c_str());
    } else if (!known) {
      state.SkipWithError("the surface has no height");
    }
  }
}

void measureBulk(benchmark::State& state) {
  for ([[maybe_unused]] auto iteration : state) {
    const Records records = recordsOf(cloudNamed("uniform_20k"));
    DTMSurface surface;
    const bool known = timed(state, [&] {
      surface.setSurfacePoints(records);
      return surface.getCEType() != nullptr && hasHeight(surface);
    });
    surface.release();
    if (!known) state.SkipWithError("the surface has no height");
  }
}

[[maybe_unused]] const bool added = [] {
  add("edits/one_by_one/uniform_20k", 1, measureOneByOne);
  add("edits/bulk/uniform_20k", 3, measureBulk);
  return true;
}();

}  // namespace

}  // namespace bench
