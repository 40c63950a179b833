// Peak memory of a piece of work, measured in a process of its own: this program, started again, so that neither what
// other benchmarks keep nor what they have released is in the sum.
#pragma once

#include <optional>
#include <string>

namespace bench {

// Adds a benchmark whose counter `bytes_per_point` is the peak of resident memory that `work` adds, its cloud included,
// for each of the cloud's points, or for each of those of `clouds` clouds as large. `work` is given the cloud's name.
void addPeakMemory(const std::string& who, const std::string& cloud, void (*work)(const std::string& cloud),
                   int clouds = 1);

// In a program that was started as such a process: runs the work, prints the peak and returns the exit status. Nothing
// in any other.
std::optional<int> runAsMeasuredChild(int argc, char** argv);

}  // namespace bench
