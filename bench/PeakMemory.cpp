#include "PeakMemory.h"

#include <cstdio>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <stdexcept>
#include <unistd.h>

#include "Inputs.h"
#include "Measure.h"

namespace bench {

namespace {

constexpr char kChildArgument[] = "--peak-memory-of";
constexpr double kBytesPerKilobyte = 1024.0;

struct Job {
  std::string cloud;
  void (*work)(const std::string& cloud);
  int clouds;
};

std::map<std::string, Job>& jobs() {
  static std::map<std::string, Job> all;
  return all;
}

// A line "name:   123 kB" of the kernel's account of this process.
double kilobytesOf(const std::string& name) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(name + ":")) return std::stod(line.substr(name.size() + 1));
  }
  throw std::runtime_error("the kernel does not tell " + name);
}

double peakOf(const Job& job) {
  const double before = kilobytesOf("VmRSS");
  job.work(job.cloud);
  return (kilobytesOf("VmHWM") - before) * kBytesPerKilobyte;
}

// Runs this program again for one job and reads the number that it prints.
double peakInChild(const std::string& who) {
  const std::string program = "'/proc/" + std::to_string(getpid()) + "/exe' ";
  const std::string command = program + kChildArgument + " " + who;
  const std::unique_ptr<FILE, int (*)(FILE*)> output(popen(command.c_str(), "r"), &pclose);
  double peak = 0;
  if (output == nullptr || std::fscanf(output.get(), "%lf", &peak) != 1) {
    throw std::runtime_error("the measured process gave no answer");
  }
  return peak;
}

void measurePeak(benchmark::State& state, const std::string& who) {
  const Job& job = jobs().at(who);
  const double points = static_cast<double>(cloudNamed(job.cloud).size()) * job.clouds;
  for ([[maybe_unused]] auto iteration : state) {
    const double peak = timed(state, [&who] { return peakInChild(who); });
    state.counters["bytes_per_point"] = peak / points;
  }
}

}  // namespace

void addPeakMemory(const std::string& who, const std::string& cloud, void (*work)(const std::string& cloud),
                   int clouds) {
  jobs()[who] = {cloud, work, clouds};
  add("memory/" + who + "/" + cloud, 1, [who](benchmark::State& state) { measurePeak(state, who); });
}

std::optional<int> runAsMeasuredChild(int argc, char** argv) {
  if (argc != 3 || std::string(argv[1]) != kChildArgument) return std::nullopt;
  std::cout << std::fixed << peakOf(jobs().at(argv[2])) << '\n';
  return 0;
}

}  // namespace bench
