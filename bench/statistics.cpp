// The statistics of a surface: areas, lengths and extents of a TIN of two million triangles.
#include "Inputs.h"
#include "Measure.h"
#include "Model.h"

namespace bench {

namespace {

// What a DTMSurface asks of a new TIN.
double allStatistics(const CEType& tin) {
  const TINMeasures m = tin.getMeasures();
  const std::vector<double> extent = tin.getRangeXY();
  return m.area2D + m.area3D + m.length2D + m.length3D + m.lowest + m.highest + extent[0] + extent[1] + extent[2] +
         extent[3];
}

// Of a new TIN each time, so that nothing that an earlier call may have left behind is measured.
void measureStatistics(benchmark::State& state) {
  for ([[maybe_unused]] auto iteration : state) {
    Survey survey(cloudNamed("uniform_1m"));
    const std::unique_ptr<CEType> tin = build(survey);
    benchmark::DoNotOptimize(timed(state, [&tin] { return allStatistics(*tin); }));
  }
}

[[maybe_unused]] const bool added = [] {
  add("statistics/ours/uniform_1m", 1, measureStatistics);
  return true;
}();

}  // namespace

}  // namespace bench
