// How a piece of work is timed: by the wall clock, from just before it to just after it, so that what it needs and what
// it leaves behind stay outside.
#pragma once

#include <chrono>
#include <string>
#include <utility>

#include <benchmark/benchmark.h>

namespace bench {

// Runs `work` as the timed part of one iteration and returns what it returns.
template <typename Work>
auto timed(benchmark::State& state, Work work) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point start = Clock::now();
  auto result = work();
  const std::chrono::duration<double> seconds = Clock::now() - start;
  state.SetIterationTime(seconds.count());
  return result;
}

// Adds a benchmark whose iterations call timed(). Short ones are repeated within a run, so that the clock and the first
// touch of memory do not show.
template <typename Function>
void add(const std::string& name, int iterations, Function function) {
  benchmark::RegisterBenchmark(name.c_str(), std::move(function))
      ->UseManualTime()
      ->Iterations(iterations)
      ->Unit(benchmark::kMillisecond);
}

// How often the construction from a cloud of that name is repeated within a run.
inline int iterationsFor(const std::string& cloud) {
  if (cloud.find("_10k") != std::string::npos) return 20;
  if (cloud.find("_1m") != std::string::npos) return 1;
  return 3;
}

}  // namespace bench
