// Volumes without sampling: between two surfaces over the same square, surveyed at other positions, and against a
// level; beside the construction of one of the two in the same run.
#include <OrvikDTMAlgorithm/surface/FillCutResult.h>

#include "Inputs.h"
#include "Measure.h"
#include "Model.h"

namespace bench {

namespace {

// The surface of a cloud, and another of as many points over the same ground.
struct Pair {
  explicit Pair(const std::string& cloud) : ground(cloudNamed(cloud)), later(cloudNamed(cloud)) {
    // Turned by a quarter, the positions are others and the square is the same.
    for (TPoint& p : later.points) {
      const double x = p.getX();
      p.setX(p.getY());
      p.setY(kExtent - x);
    }
    groundTIN = build(ground);
    laterTIN = build(later);
  }

  static constexpr double kExtent = 1000.0;

  Survey ground;
  Survey later;
  std::unique_ptr<CEType> groundTIN;
  std::unique_ptr<CEType> laterTIN;
};

using ResultPtr = std::unique_ptr<FillCutResult>;

void measureSurfaces(benchmark::State& state, const std::string& cloud) {
  const Pair pair(cloud);
  for ([[maybe_unused]] auto iteration : state) {
    const ResultPtr result =
        timed(state, [&pair] { return ResultPtr(pair.groundTIN->getFillCutExact(pair.laterTIN.get())); });
    state.counters["volume"] = result->getFillVolume() + result->getCutVolume();
  }
}

void measureLevel(benchmark::State& state, const std::string& cloud) {
  constexpr double kLevel = 50.0;
  Survey survey(cloudNamed(cloud));
  const std::unique_ptr<CEType> tin = build(survey);
  for ([[maybe_unused]] auto iteration : state) {
    const ResultPtr result = timed(state, [&tin] { return ResultPtr(tin->getFillCutExact(kLevel)); });
    state.counters["volume"] = result->getFillVolume() + result->getCutVolume();
  }
}

void addAll(const std::string& cloud) {
  add("exact_volume/surfaces/" + cloud, iterationsFor(cloud),
      [cloud](benchmark::State& state) { measureSurfaces(state, cloud); });
  add("exact_volume/level/" + cloud, iterationsFor(cloud),
      [cloud](benchmark::State& state) { measureLevel(state, cloud); });
}

[[maybe_unused]] const bool added = [] {
  addAll("uniform_100k_exact");
  addAll("uniform_1m");
  return true;
}();

}  // namespace

}  // namespace bench
