// Building and destroying a TIN: Surface::optimizeTIN from a vector of points to the published model.
#include "Inputs.h"
#include "Measure.h"
#include "Model.h"

namespace bench {

namespace {

void measureBuild(benchmark::State& state, const std::string& cloud) {
  for ([[maybe_unused]] auto iteration : state) {
    Survey survey(cloudNamed(cloud));
    const std::unique_ptr<CEType> tin = timed(state, [&survey] { return build(survey); });
  }
}

void measureDestruction(benchmark::State& state, const std::string& cloud) {
  for ([[maybe_unused]] auto iteration : state) {
    Survey survey(cloudNamed(cloud));
    std::unique_ptr<CEType> tin = build(survey);
    timed(state, [&tin] {
      tin.reset();
      return true;
    });
  }
}

void addBuild(const std::string& cloud) {
  add("build/ours/" + cloud, iterationsFor(cloud), [cloud](benchmark::State& state) { measureBuild(state, cloud); });
}

[[maybe_unused]] const bool added = [] {
  for (const char* cloud : kMillions) addBuild(cloud);
  for (const char* cloud : kSmaller) addBuild(cloud);
  addBuild("uniform_500k");
  add("destroy/ours/uniform_1m", 1, [](benchmark::State& state) { measureDestruction(state, "uniform_1m"); });
  return true;
}();

}  // namespace

}  // namespace bench
