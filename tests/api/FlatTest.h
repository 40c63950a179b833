// For the tests of the flat functions: a fresh state for each, a folder for files, and callbacks that remember what
// they were handed.
#pragma once

#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>
#include <OrvikDTMAlgorithm/api/FlatState.h>
#include <gtest/gtest.h>

// What the callbacks were handed since the test began; `onEach` is run before a record is looked at.
struct HandedOut {
  std::vector<DrawLine> lines;
  std::vector<std::string> points;  // names
  std::vector<SurfacePoint*> pointRecords;
  std::vector<DTMSurface*> surfaces;
  std::vector<std::string> vertices;
  std::function<void()> onEach = [] {};
};

inline HandedOut handed;

class FlatTest : public testing::Test {
 protected:
  void SetUp() override {
    forgetState();
    handed = {};
    folder_ = std::filesystem::temp_directory_path() / ("orvikdtm-flat-" + std::to_string(std::random_device()()));
    std::filesystem::create_directories(folder_);
  }
  void TearDown() override {
    forgetState();
    std::filesystem::remove_all(folder_);
  }

  static void forgetState() {
    detail::FlatState& state = detail::flatState();
    for (const auto& library : state.libraries) library->release();
    for (const RangePoint* vertex : state.rangePoints) delete vertex;
    state = {};
  }

  static void registerAll() {
    setCallBack(
        [](DrawLine* line) {
          handed.onEach();
          handed.lines.push_back(*line);
        },
        [](SurfacePoint* point) {
          handed.pointRecords.push_back(point);
          handed.points.emplace_back(point->getSurfacePointName());
          handed.onEach();
        },
        [](DTMSurface* surface) {
          handed.surfaces.push_back(surface);
          handed.onEach();
        },
        [](RangePoint* vertex) {
          handed.vertices.emplace_back(vertex->name);
          handed.onEach();
        });
  }

  // A surface of 10 x 10 at the end of the current library: the south-west corner at e = 100, n = 200, at a level or
  // rising to the east.
  static unsigned int addSquare(const char* name, double west, double east) {
    addDTMSurface(name);
    unsigned int index = 0;
    while (getSurface(index + 1) != nullptr) ++index;
    addSurfacePoint(index, "SW", 200, 100, west);
    addSurfacePoint(index, "SE", 200, 110, east);
    addSurfacePoint(index, "NE", 210, 110, east);
    addSurfacePoint(index, "NW", 210, 100, west);
    return index;
  }

  std::string path(const std::string& name) const { return (folder_ / name).string(); }

  void fill(const std::string& name, const std::string& contents) const {
    std::ofstream(path(name), std::ios::binary) << contents;
  }

  std::string contentsOf(const std::string& name) const {
    std::ostringstream text;
    text << std::ifstream(path(name), std::ios::binary).rdbuf();
    return text.str();
  }

  std::filesystem::path folder_;
};
