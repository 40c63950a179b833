// Heights at many places on a TIN of two million triangles, and places that are in none of them.
#include "Heights.h"

#include "Inputs.h"
#include "Measure.h"
#include "Model.h"

namespace bench {

namespace {

// The TIN that all of these ask; building it is measured elsewhere.
CEType& million() {
  static Survey survey(cloudNamed("uniform_1m"));
  static const std::unique_ptr<CEType> tin = build(survey);
  return *tin;
}

double sumOfHeights(CEType& tin, const std::vector<Place>& places) {
  double sum = 0.0;
  for (const Place& p : places) sum += tin.getHeight(p.x, p.y);
  return sum;
}

void measureHeights(benchmark::State& state, const std::vector<Place>& places) {
  CEType& tin = million();
  tin.getHeight(places.back().x, places.back().y);
  tin.getHeight(places.front().x, places.front().y);
  for ([[maybe_unused]] auto iteration : state) {
    benchmark::DoNotOptimize(timed(state, [&] { return sumOfHeights(tin, places); }));
  }
}

// What the first far query after a change of the lists costs beyond others: the copy and what is looked up in it.
void measureFirstHeight(benchmark::State& state) {
  CEType& tin = million();
  for ([[maybe_unused]] auto iteration : state) {
    tin.setEList(tin.getEList());
    benchmark::DoNotOptimize(timed(state, [&] { return tin.getHeight(990.0, 990.0) + tin.getHeight(10.0, 500.0); }));
  }
}

// Beside the hull, where nothing but the tolerance of the area test could help.
void measureMisses(benchmark::State& state) {
  constexpr int kMisses = 10000;
  CEType& tin = million();
  tin.locateTri1(-1.0, -1.0);
  for ([[maybe_unused]] auto iteration : state) {
    const int found = timed(state, [&] {
      int sum = 0;
      for (int i = 0; i < kMisses; ++i) sum += tin.locateTri1(1000.0 * i / kMisses, i % 2 == 0 ? -0.5 : 1000.5);
      return sum;
    });
    if (found != 0) state.SkipWithError("a place outside is in a triangle");
  }
}

[[maybe_unused]] const bool added = [] {
  add("heights/ours/grid_rows", 3, [](benchmark::State& state) { measureHeights(state, gridPlaces()); });
  add("heights/ours/random", 3, [](benchmark::State& state) { measureHeights(state, randomPlaces()); });
  add("heights/first/uniform_1m", 3, measureFirstHeight);
  add("misses/ours/uniform_1m", 3, measureMisses);
  return true;
}();

}  // namespace

}  // namespace bench
