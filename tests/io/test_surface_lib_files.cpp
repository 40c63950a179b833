// Surfaces of a library as files: loaded, saved, reported on.
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include <OrvikDTMAlgorithm/surface/DTMSurfaceLib.h>
#include <gtest/gtest.h>

#include "surface/Surfaces.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kLabels = "A,B,C,D,E,F,G,H,I,J,K,L";

class SurfaceLibFiles : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = fs::temp_directory_path() / ("orvikdtm-lib-" + std::to_string(std::random_device()()));
    fs::create_directories(folder_);
    add("Ground", risingSquare());
    add("Design", {{100, 200, 20}, {110, 200, 20}, {110, 210, 20}, {100, 210, 20}});
  }
  void TearDown() override {
    lib_.release();
    fs::remove_all(folder_);
  }

  void add(const char* name, const std::vector<Position>& positions) {
    DTMSurface* surface = lib_.addDTMSurface(name);
    for (const Position& at : positions) surface->addSurfacePoint(newPoint("P", at), 100);
  }

  std::string path(const std::string& name) const { return (folder_ / name).string(); }

  static std::string contentsOf(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
  }

  fs::path folder_;
  DTMSurfaceLib lib_;
};

TEST_F(SurfaceLibFiles, ASavedSurfaceIsLoaded) {
  ASSERT_EQ(1, lib_.saveSurface(0, path("g.ttin").c_str()));
  DTMSurface* loaded = lib_.loadDTMSurface(path("g.ttin").c_str(), 0);
  ASSERT_NE(nullptr, loaded);
  EXPECT_EQ(loaded, lib_.getSurface(2));
  EXPECT_STREQ("Ground", loaded->getSurfaceName());
  double z = 0.0;
  EXPECT_EQ(1, lib_.checkSurfacePoint(2, 205, 105, &z));
  EXPECT_EQ(15.5, z);
}

TEST_F(SurfaceLibFiles, WhatCannotBeLoadedLeavesTheListAlone) {
  std::ofstream(path("short.ttin")) << "DTM";
  ASSERT_EQ(1, lib_.saveSurface(0, path("g.ttin").c_str()));
  EXPECT_EQ(nullptr, lib_.loadDTMSurface(path("absent.ttin").c_str(), 0));
  EXPECT_EQ(nullptr, lib_.loadDTMSurface(path("short.ttin").c_str(), 0));
  for (const int kind : {-1, 1, 2, 3}) EXPECT_EQ(nullptr, lib_.loadDTMSurface(path("g.ttin").c_str(), kind));
  EXPECT_EQ(nullptr, lib_.loadDTMSurface(nullptr, 0));
  for (const char* definition : {"", "<Pnts/>", "<Faces/>", "<Pnts/><Faces><F>1 2 3</F></Faces>"}) {
    std::ofstream(path("hollow.xml")) << "<LandXML><Definition>" << definition << "</Definition></LandXML>";
    EXPECT_EQ(nullptr, lib_.loadDTMSurface(path("hollow.xml").c_str(), 2)) << definition;
  }
  EXPECT_EQ(2u, lib_.getSurfacesNumber());
}

TEST_F(SurfaceLibFiles, AFileThatCannotBeWritten) {
  EXPECT_EQ(0, lib_.saveSurface(0, path("absent/g.ttin").c_str()));
  EXPECT_EQ(0, lib_.saveSurface(0, nullptr));
  EXPECT_EQ(0, lib_.exportFileSJW(0, path("absent/g.sjw").c_str()));
}

TEST_F(SurfaceLibFiles, TrianglesGoThroughASjwFile) {
  ASSERT_EQ(1, lib_.exportFileSJW(0, path("g.sjw").c_str()));
  ASSERT_NE(nullptr, lib_.loadDTMSurface(path("g.sjw").c_str(), 1));
  double z = 0.0;
  EXPECT_EQ(1, lib_.checkSurfacePoint(2, 205, 105, &z));
  EXPECT_NEAR(15.5, z, 1e-6);
}

TEST_F(SurfaceLibFiles, PointsOfAFileAreTheSurfaces) {
  std::ofstream(path("p.csv")) << "A,,120,205,40\nB,,121,206,41\n";
  std::vector<SurfacePoint*> read;
  lib_.loadSurfacePointsFile(0, path("p.csv").c_str(), read);
  ASSERT_EQ(2u, read.size());
  EXPECT_EQ(read[1], lib_.getSurface(0)->getSurfacePoints()[5]);
  EXPECT_EQ(41.0, lib_.getSurface(0)->getMaxElev());
}

TEST_F(SurfaceLibFiles, ReportsAgainstALevel) {
  ASSERT_EQ(1, lib_.exportVolumeReport(0, 12.5, 1, kLabels, path("r.txt").c_str()));
  const std::string text = contentsOf(path("r.txt"));
  EXPECT_NE(std::string::npos, text.find("B                   Ground              \nC                   12.5000"));
  EXPECT_NE(std::string::npos, text.find("E                   300.0000            \n"));
  ASSERT_EQ(1, lib_.exportVolumeReport(0, 12.5, 0, kLabels, path("r.html").c_str()));
  EXPECT_EQ(0u, contentsOf(path("r.html")).find("<html><head>"));
}

TEST_F(SurfaceLibFiles, ReportsAgainstASurface) {
  ASSERT_EQ(1, lib_.exportVolumeReport(0, 1u, 1, kLabels, path("r.txt").c_str()));
  const std::string text = contentsOf(path("r.txt"));
  EXPECT_NE(std::string::npos, text.find("B                   Ground              \nC                   Design     "));
  EXPECT_NE(std::string::npos, text.find("F                   450.0000            \n"));
  ASSERT_EQ(1, lib_.exportVolumeReport(0, 1u, 0, kLabels, path("r.html").c_str()));
  EXPECT_NE(std::string::npos, contentsOf(path("r.html")).find(">Design</td>"));
}

TEST_F(SurfaceLibFiles, AnotherKindOfReportWritesNothing) {
  for (const int kind : {2, -1, 100}) {
    EXPECT_EQ(0, lib_.exportVolumeReport(0, 12.5, kind, kLabels, path("r").c_str()));
    EXPECT_EQ(0, lib_.exportVolumeReport(0, 1u, kind, kLabels, path("r").c_str()));
  }
  EXPECT_FALSE(fs::exists(path("r")));
}

TEST_F(SurfaceLibFiles, ASurfaceWithoutATINGivesNoReport) {
  lib_.addDTMSurface("Empty");
  for (const int kind : {0, 1}) {
    EXPECT_EQ(0, lib_.exportVolumeReport(2, 12.5, kind, kLabels, path("r").c_str()));
    EXPECT_EQ(0, lib_.exportVolumeReport(2, 0u, kind, kLabels, path("r").c_str()));
    EXPECT_EQ(0, lib_.exportVolumeReport(0, 2u, kind, kLabels, path("r").c_str()));
  }
  EXPECT_FALSE(fs::exists(path("r")));
}

}  // namespace
