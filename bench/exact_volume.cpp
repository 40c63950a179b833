// The exact volume between two surfaces: its time, and its memory when both have a million points.
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

void measureExactVolume(benchmark::State& state) {
  for ([[maybe_unused]] auto iteration : state) {
    Survey groundSurvey(cloudNamed("uniform_100k_exact"));
    Survey designSurvey(cloudNamed("changed_100k"));
    const std::unique_ptr<CEType> ground = build(groundSurvey);
    const std::unique_ptr<CEType> design = build(designSurvey);
    benchmark::DoNotOptimize(timed(state, [&] { return exactVolume(*ground, *design); }));
  }
}

// Both surfaces and their clouds included; the bytes are told for each point of one of the two.
void compareInChild(const std::string& cloud) {
  Survey groundSurvey(makeCloud(cloud));
  Survey designSurvey(makeCloud("changed_1m"));
  const std::unique_ptr<CEType> ground = build(groundSurvey);
  const std::unique_ptr<CEType> design = build(designSurvey);
  benchmark::DoNotOptimize(exactVolume(*ground, *design));
}

[[maybe_unused]] const bool added = [] {
  add("volume/ours/exact_100k", 1, measureExactVolume);
  addPeakMemory("exact_volume", "uniform_1m", compareInChild);
  return true;
}();

}  // namespace

}  // namespace bench
