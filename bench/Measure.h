// How a piece of work is timed: from just before it to just after it, so that what it needs and what it leaves behind
// stay outside, and by the processor time of this process, all threads and the kernel's share included, so that other
// programs on the machine count as little as possible.
#pragma once

#include <ctime>
#include <string>
#include <utility>

#include <benchmark/benchmark.h>

namespace bench {

inline double processorSeconds() {
  constexpr double kNanosecond = 1e-9;
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + kNanosecond * static_cast<double>(now.tv_nsec);
}

// Runs `work` as the timed part of one iteration and returns what it returns.
template <typename Work>
auto timed(benchmark::State& state, Work work) {
  const double start = processorSeconds();
  auto result = work();
  state.SetIterationTime(processorSeconds() - start);
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
