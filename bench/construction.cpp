// How long a TIN takes, and how that grows: time at 200,000 points below 2.6 times that at 100,000 says that no step is
// quadratic. Each kind of site has its own cost: scattered spot heights, cross-sections in long straight runs, and the
// queries and volumes that follow.
#include <cmath>
#include <cstdint>
#include <memory>
#include <random>
#include <vector>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>
#include <benchmark/benchmark.h>

namespace {

constexpr double kSide = 1000.0;  // of the square site, in metres
constexpr unsigned kSeed = 20240417;

double relief(double x, double y) { return 80.0 + 4.0 * std::sin(x / 130.0) + 3.0 * std::cos(y / 90.0) + 0.01 * x; }

std::vector<TPoint> spotHeights(std::int64_t n) {
  std::mt19937_64 random(kSeed);
  std::uniform_real_distribution<double> within(0.0, kSide);
  std::vector<TPoint> points;
  for (std::int64_t i = 0; i < n; ++i) {
    const double x = within(random);
    const double y = within(random);
    points.emplace_back(x, y, relief(x, y));
  }
  return points;
}

std::vector<TPoint> crossSections(std::int64_t n) {
  const auto perSection = static_cast<std::int64_t>(std::sqrt(static_cast<double>(n)));
  std::vector<TPoint> points;
  for (std::int64_t i = 0; i < n; ++i) {
    const double x = kSide * static_cast<double>(i % perSection) / static_cast<double>(perSection);
    const double y = kSide * static_cast<double>(i / perSection) / static_cast<double>(perSection);
    points.emplace_back(x, y, relief(x, y));
  }
  return points;
}

// The construction changes points in place, so every round has its own copy of them.
struct Input {
  explicit Input(std::vector<TPoint> copy) : points(std::move(copy)) {
    for (TPoint& p : points) pointers.push_back(&p);
  }
  std::vector<TPoint> points;
  std::vector<TPoint*> pointers;
};

void construct(benchmark::State& state, std::vector<TPoint> (*site)(std::int64_t)) {
  Surface::COMPAREUNSHIFTED = 1;
  const std::vector<TPoint> points = site(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    auto input = std::make_unique<Input>(points);
    state.ResumeTiming();
    std::unique_ptr<CEType> tin(Surface::optimizeTIN(input->pointers));
    benchmark::DoNotOptimize(tin);
    state.PauseTiming();
    tin.reset();
    input.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void heights(benchmark::State& state) {
  Input input(spotHeights(state.range(0)));
  const std::unique_ptr<CEType> tin(Surface::optimizeTIN(input.pointers));
  std::mt19937_64 random(kSeed + 1);
  std::uniform_real_distribution<double> within(0.0, kSide);
  for (auto _ : state) benchmark::DoNotOptimize(tin->getHeight(within(random), within(random)));
}

void levelVolume(benchmark::State& state) {
  Input input(spotHeights(state.range(0)));
  const std::unique_ptr<CEType> tin(Surface::optimizeTIN(input.pointers));
  for (auto _ : state) {
    const std::unique_ptr<FillCutResult> result(tin->getFillCut(85.0));
    benchmark::DoNotOptimize(result->getCutVolume());
  }
}

BENCHMARK_CAPTURE(construct, spot_heights, spotHeights)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(200000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(construct, cross_sections, crossSections)->Arg(10000)->Arg(40000)->Unit(benchmark::kMillisecond);
BENCHMARK(heights)->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(levelVolume)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
