// Volumes: two million triangles against a level, and a pair of surfaces with points a unit apart against each other.
#include <cmath>
#include <malloc.h>

#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/Triangle3.h>

#include "Inputs.h"
#include "Measure.h"
#include "Model.h"

namespace bench {

namespace {

// The drawing list is not read.
void measureLevel(benchmark::State& state) {
  Survey survey(cloudNamed("uniform_1m"));
  for (std::size_t i = 0; i < survey.points.size(); ++i) {
    TPoint& p = survey.points[i];
    p.setZ(20.0 * std::sin(p.getX() / 50) * std::cos(p.getY() / 70));
  }
  const std::unique_ptr<CEType> tin = build(survey);
  for ([[maybe_unused]] auto iteration : state) {
    const auto result = timed(state, [&tin] { return std::unique_ptr<FillCutResult>(tin->getFillCut(3.0)); });
    benchmark::DoNotOptimize(result->getCutVolume());
  }
}

// Points of a jittered grid a unit apart, from -margin to side + margin.
Cloud jitteredGrid(int side, int margin, double height, double phase) {
  Cloud cloud;
  for (int i = -margin; i <= side + margin; ++i) {
    for (int j = -margin; j <= side + margin; ++j) {
      const double x = i + 0.4 * std::sin(12.9898 * i + 78.233 * j + phase);
      const double y = j + 0.4 * std::sin(39.346 * i + 11.135 * j + phase);
      cloud.emplace_back(x, y, height + std::sin(x / 5));
    }
  }
  return cloud;
}

// A surface that lies apart from a larger reference, so that every piece is either split into four or measured, and
// each piece that is measured is drawn as one: the drawing list tells how many there were.
class Pair {
 public:
  Pair() : own_(build(ground_)), reference_(build(design_)) {}

  std::unique_ptr<FillCutResult> compare() {
    return std::unique_ptr<FillCutResult>(own_->getFillCut(reference_.get()));
  }

  double pieces() {
    compare();
    const auto measured = static_cast<double>(own_->getTriangle3List().size());
    const auto triangles = static_cast<double>(own_->getTList()->getListLen());
    return measured + (measured - triangles) / 3.0;  // a split makes four of one
  }

 private:
  static constexpr int kSide = 40;
  Survey ground_{jitteredGrid(kSide, 0, 10, 0.0)};
  Survey design_{jitteredGrid(kSide, 4, 0, 1.0)};
  std::unique_ptr<CEType> own_;
  std::unique_ptr<CEType> reference_;
};

void measurePieces(benchmark::State& state) {
  Pair pair;
  const double pieces = pair.pieces();
  double seconds = 0.0;
  int rounds = 0;
  for ([[maybe_unused]] auto iteration : state) {
    const double start = processorSeconds();
    benchmark::DoNotOptimize(timed(state, [&pair] { return pair.compare(); })->getCutVolume());
    seconds += processorSeconds() - start;
    ++rounds;
  }
  constexpr double kNanosecond = 1e-9;
  state.counters["ns_per_piece"] = seconds / rounds / pieces / kNanosecond;
}

// What a comparison leaves in memory, the copies of both networks included, until somebody asks for the list.
void measureKeptMemory(benchmark::State& state) {
  const double pieces = Pair().pieces();
  for ([[maybe_unused]] auto iteration : state) {
    Pair pair;
    const std::size_t before = mallinfo2().uordblks;
    const auto result = timed(state, [&pair] { return pair.compare(); });
    const std::size_t after = mallinfo2().uordblks;
    state.counters["bytes_per_piece"] = (static_cast<double>(after) - static_cast<double>(before)) / pieces;
    benchmark::DoNotOptimize(result->getCutVolume());
  }
}

[[maybe_unused]] const bool added = [] {
  add("level/ours/uniform_1m", 3, measureLevel);
  add("pieces/ours/jittered_40", 3, measurePieces);
  add("kept/ours/jittered_40", 1, measureKeptMemory);
  return true;
}();

}  // namespace

}  // namespace bench
