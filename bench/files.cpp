// Surface files and point files of a million points, against writing the same bytes at once and against building the
// TIN from the points. Files stand in the folder for temporary files and go with the benchmark.
#include <charconv>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <unistd.h>

#include <OrvikDTMAlgorithm/io/DTMFileOperation.h>
#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/SurfacePoint.h>

#include "Inputs.h"
#include "Measure.h"

namespace bench {

namespace {

namespace fs = std::filesystem;

// A path for one file, which is removed at the end.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& extension)
      : path_(fs::temp_directory_path() / ("orvikdtm-bench-" + std::to_string(getpid()) + extension)) {}
  ~TemporaryFile() { fs::remove(path_); }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  std::string path() const { return path_.string(); }

 private:
  fs::path path_;
};

struct ReleaseSurface {
  void operator()(DTMSurface* surface) const {
    surface->release();
    delete surface;
  }
};
using OwnedSurface = std::unique_ptr<DTMSurface, ReleaseSurface>;

OwnedSurface surfaceOf(const Cloud& cloud) {
  OwnedSurface surface(new DTMSurface);
  std::vector<SurfacePoint*> records;
  for (const TPoint& p : cloud) {
    auto* record = records.emplace_back(new SurfacePoint);
    record->setSurfacePointName(std::to_string(records.size()).c_str());
    record->setE(p.getX());
    record->setN(p.getY());
    record->setZ(p.getZ());
  }
  surface->setSurfacePoints(records);
  if (surface->getCEType() == nullptr) throw std::runtime_error("no TIN was built");
  return surface;
}

double wallSeconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// What a save is held against: the same bytes, ready in memory, handed over in one call and flushed to the disk.
bool writeAtOnce(const std::string& path, const std::vector<unsigned char>& bytes) {
  constexpr mode_t kPermissions = 0666;
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, kPermissions);
  const bool whole = write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
  return fsync(file) == 0 && close(file) == 0 && whole;
}

template <typename Work>
void timedOnClock(benchmark::State& state, double (*clock)(), Work work) {
  const double start = clock();
  const bool done = work();
  state.SetIterationTime(clock() - start);
  if (!done) state.SkipWithError("the file could not be written or read");
}

void measureSave(benchmark::State& state, double (*clock)()) {
  const TemporaryFile file(".ttin");
  const OwnedSurface surface = surfaceOf(cloudNamed("uniform_1m"));
  for ([[maybe_unused]] auto iteration : state) {
    fs::remove(file.path());
    timedOnClock(state, clock, [&] { return DTMFileOperation().saveSurfaces(file.path().c_str(), surface.get()); });
  }
}

void measureWriteAtOnce(benchmark::State& state, double (*clock)()) {
  const TemporaryFile file(".bytes");
  const std::vector<unsigned char> bytes = surfaceOf(cloudNamed("uniform_1m"))->toBytes();
  for ([[maybe_unused]] auto iteration : state) {
    fs::remove(file.path());
    timedOnClock(state, clock, [&] { return writeAtOnce(file.path(), bytes); });
  }
}

void measureLoad(benchmark::State& state) {
  const TemporaryFile file(".ttin");
  DTMFileOperation().saveSurfaces(file.path().c_str(), surfaceOf(cloudNamed("uniform_1m")).get());
  for ([[maybe_unused]] auto iteration : state) {
    const OwnedSurface loaded(new DTMSurface);
    timedOnClock(state, processorSeconds,
                 [&] { return DTMFileOperation().loadSurface(file.path().c_str(), 0, loaded.get()); });
  }
}

void writePoints(const std::string& path, const Cloud& cloud) {
  constexpr int kDecimals = 3;
  std::string text;
  for (std::size_t i = 0; i < cloud.size(); ++i) {
    text += 'P' + std::to_string(i + 1) + ",code";
    for (const double v : {cloud[i].getX(), cloud[i].getY(), cloud[i].getZ()}) {
      char number[32];
      text += ',';
      text.append(number, std::to_chars(number, number + sizeof number, v, std::chars_format::fixed, kDecimals).ptr);
    }
    text += '\n';
  }
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "wb"), std::fclose);
  if (!file || std::fwrite(text.data(), 1, text.size(), file.get()) != text.size()) {
    throw std::runtime_error("the point file could not be written");
  }
}

// Loading a point file builds the TIN at once; what building it alone takes, in the same run, is no part of reading.
void measureReadPoints(benchmark::State& state) {
  const TemporaryFile file(".csv");
  writePoints(file.path(), cloudNamed("uniform_1m_offset"));
  for ([[maybe_unused]] auto iteration : state) {
    const OwnedSurface surface(new DTMSurface);
    std::vector<SurfacePoint*> read;
    const double start = processorSeconds();
    surface->loadSurfacePointsFile(file.path().c_str(), read);
    const double loaded = processorSeconds();
    surface->setCEType(nullptr);
    const double dropped = processorSeconds();
    benchmark::DoNotOptimize(surface->getCEType());
    const double building = processorSeconds() - dropped;
    state.SetIterationTime(std::max(loaded - start - building, 0.0));
  }
}

[[maybe_unused]] const bool added = [] {
  add("save/ours/uniform_1m", 1, [](benchmark::State& state) { measureSave(state, processorSeconds); });
  add("save/at_once/uniform_1m", 1, [](benchmark::State& state) { measureWriteAtOnce(state, processorSeconds); });
  add("save_clock/ours/uniform_1m", 1, [](benchmark::State& state) { measureSave(state, wallSeconds); });
  add("save_clock/at_once/uniform_1m", 1, [](benchmark::State& state) { measureWriteAtOnce(state, wallSeconds); });
  add("load/ours/uniform_1m", 1, measureLoad);
  add("read_points/ours/uniform_1m_offset", 1, measureReadPoints);
  return true;
}();

}  // namespace

}  // namespace bench
