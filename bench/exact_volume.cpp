// Volumes without sampling: between two surfaces over the same square and against a level. The memory is that of both
// surfaces, their clouds and the comparison.
#include <stdexcept>

#include <OrvikDTMAlgorithm/surface/FillCutResult.h>

#include "Inputs.h"
#include "Measure.h"
#include "Model.h"
#include "PeakMemory.h"

namespace bench {

namespace {

std::unique_ptr<FillCutResult> exactVolume(CEType& ground, CEType& design) {
  std::unique_ptr<FillCutResult> result(ground.getFillCutExact(&design));
  if (result == nullptr || !(result->getFillVolume() > 0)) throw std::runtime_error("the surfaces have no volume");
  return result;
}

void measureSurfaces(benchmark::State& state, const std::string& groundCloud, const std::string& designCloud) {
  Survey groundSurvey(cloudNamed(groundCloud));
  Survey designSurvey(cloudNamed(designCloud));
  const std::unique_ptr<CEType> ground = build(groundSurvey);
  for ([[maybe_unused]] auto iteration : state) {
    // A new TIN each time: what an earlier comparison has left behind is not measured.
    const std::unique_ptr<CEType> design = build(designSurvey);
    const auto result = timed(state, [&] { return exactVolume(*ground, *design); });
    state.counters["fill"] = result->getFillVolume();
    state.counters["cut"] = result->getCutVolume();
  }
}

void measureLevel(benchmark::State& state, const std::string& cloud) {
  constexpr double kLevel = 50.0;
  Survey survey(cloudNamed(cloud));
  const std::unique_ptr<CEType> tin = build(survey);
  for ([[maybe_unused]] auto iteration : state) {
    const auto result = timed(state, [&tin] { return std::unique_ptr<FillCutResult>(tin->getFillCutExact(kLevel)); });
    state.counters["cut"] = result->getCutVolume();
  }
}

void compareInChild(const std::string& cloud) {
  Survey groundSurvey(makeCloud(cloud));
  Survey designSurvey(makeCloud("changed_1m"));
  const std::unique_ptr<CEType> ground = build(groundSurvey);
  const std::unique_ptr<CEType> design = build(designSurvey);
  benchmark::DoNotOptimize(exactVolume(*ground, *design));
}

void addAll(const std::string& ground, const std::string& design) {
  add("exact_volume/surfaces/" + ground, 1,
      [ground, design](benchmark::State& state) { measureSurfaces(state, ground, design); });
  add("exact_volume/level/" + ground, 1, [ground](benchmark::State& state) { measureLevel(state, ground); });
}

[[maybe_unused]] const bool added = [] {
  addAll("uniform_100k_exact", "changed_100k");
  addAll("uniform_1m", "changed_1m");
  addPeakMemory("exact_volume", "uniform_1m", compareInChild, 2);
  return true;
}();

}  // namespace

}  // namespace bench
