// Runs the benchmarks that the other files add. Before that, inputs that are named for the road that a construction
// takes on them must still take it.
#include <exception>
#include <iostream>
#include <malloc.h>

#include <benchmark/benchmark.h>

#include "Inputs.h"
#include "Model.h"
#include "PeakMemory.h"

namespace {

// Memory that is freed stays with this program. A virtual machine may take it from a program that gives it back, and
// then charges whoever touches it next ten times what it costs otherwise: which row that is would be chance.
void keepFreedMemory() {
  mallopt(M_MMAP_MAX, 0);
  mallopt(M_TRIM_THRESHOLD, -1);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    if (const std::optional<int> status = bench::runAsMeasuredChild(argc, argv)) return *status;
    keepFreedMemory();
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
