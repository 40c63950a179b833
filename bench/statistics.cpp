// The statistics of a surface: areas, lengths and extents of a TIN of two million triangles.
#include "Inputs.h"
#include "Measure.h"
#include "Model.h"

namespace bench {

namespace {

double allStatistics(const CEType& tin) {
  const std::unique_ptr<double[]> heights(tin.getMinMaxHeight());
  const std::vector<double> extent = tin.getRangeXY();
  return tin.getArea2D() + tin.getArea3D() + tin.getTotalLength2D() + tin.getTotalLength3D() + heights[0] + heights[1] +
         extent[0] + extent[1] + extent[2] + extent[3];
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
