// Runs the benchmarks that the other files add. Before that, inputs that are named for the road that a construction
// takes on them must still take it.
#include <exception>
#include <iostream>

#include <benchmark/benchmark.h>

#include "Inputs.h"
#include "Model.h"
#include "PeakMemory.h"

int main(int argc, char** argv) {
  try {
    if (const std::optional<int> status = bench::runAsMeasuredChild(argc, argv)) return *status;
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    for (const char* cloud : bench::kSmaller) bench::checkRoad(cloud);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
  }
}
