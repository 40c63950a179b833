// Survey point files.
#include <array>
#include <filesystem>
#include <fstream>
#include <random>

#include <OrvikDTMAlgorithm/io/TextLines.h>
#include <gtest/gtest.h>

#include "surface/Surfaces.h"

namespace {

namespace fs = std::filesystem;

class PointFile : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = fs::temp_directory_path() / ("orvikdtm-points-" + std::to_string(std::random_device()()));
    fs::create_directories(folder_);
  }
  void TearDown() override { fs::remove_all(folder_); }

  std::string write(const std::string& name, const std::string& contents) const {
    const std::string path = (folder_ / name).string();
    std::ofstream(path, std::ios::binary) << contents;
    return path;
  }

  // The points that a file of these contents gives, as text.
  std::vector<std::string> pointsOf(const std::string& contents) const {
    OwnedSurface surface;
    std::vector<SurfacePoint*> out;
    surface.loadSurfacePointsFile(write("points.csv", contents).c_str(), out);
    EXPECT_EQ(out, surface.getSurfacePoints());
    std::vector<std::string> texts;
    for (const SurfacePoint* point : out) texts.push_back(point->toString());
    return texts;
  }

  fs::path folder_;
};

using Texts = std::vector<std::string>;

constexpr const char* kTriangle = "P1,,0,0,1\nP2,,10,0,2\nP3,,0,10,3\n";

TEST_F(PointFile, Lines) {
  const struct {
    std::string contents;
    Texts expected;
  } rows[] = {
      {"P1,,500.1,300.2,12.5\n", {"Site,P1,300.2,500.1,12.5"}},
      {"P1,,500.1,300.2,12.5", {"Site,P1,300.2,500.1,12.5"}},
      {"P1,,500.1,300.2,12.5\r\nP2,c,1,2,3\r\n", {"Site,P1,300.2,500.1,12.5", "Site,P2,2,1,3"}},
      {"P1,code,500.1,300.2\n", {}},
      {"\n\r\n\nP1,,1,2,3\n\n", {"Site,P1,2,1,3"}},
      {"P1,,1,2,3,4,5,rest\n", {"Site,P1,2,1,3"}},
      {",,,,\n", {"Site,,0,0,0"}},
      {"\xEF\xBB\xBFP1,,1,2,3\nP2,,4,5,6\n", {"Site,P1,2,1,3", "Site,P2,5,4,6"}},
      {"\xEF\xBB\xBF", {}},
      {"P1,,x,2m, 3\n", {"Site,P1,2,0,3"}},
      {"name,code,E,N,Z\n", {"Site,name,0,0,0"}},
      {"P1,,+1e2,-0x10,.5\n", {"Site,P1,-16,100,0.5"}},
      {"\xB5\xE3 1,,1,2,3\n", {"Site,\xB5\xE3 1,2,1,3"}},
      {" P1 ,,1,2,3\n", {"Site, P1 ,2,1,3"}},
      {"abcdefghijklmnopqrstuvwxyz,,1,2,3\n", {"Site,abcdefghijklmnopqrstuvw,2,1,3"}},
      {"P1;;1;2;3\n", {}},
      {"P1,,1,2\n,,3\n", {}},
      {"", {}},
  };
  for (const auto& row : rows) EXPECT_EQ(row.expected, pointsOf(row.contents)) << row.contents;
}

TEST_F(PointFile, OnlyPointFilesAreRead) {
  for (const char* name : {"a.dat", "a.csv", "a.DAT", "a.Csv", ".csv"}) {
    OwnedSurface surface;
    std::vector<SurfacePoint*> out;
    surface.loadSurfacePointsFile(write(name, kTriangle).c_str(), out);
    EXPECT_EQ(3u, out.size()) << name;
  }
  for (const char* name : {"a.TXT", "a.dat ", "a.csv.bak", "csv", "a"}) {
    OwnedSurface surface;
    std::vector<SurfacePoint*> out;
    surface.loadSurfacePointsFile(write(name, kTriangle).c_str(), out);
    EXPECT_TRUE(out.empty()) << name;
    EXPECT_EQ(0, surface.getPointsNumber()) << name;
  }
}

TEST_F(PointFile, WhatCannotBeReadChangesNothing) {
  fs::create_directories(folder_ / "folder.csv");
  OwnedSurface surface(risingSquare());
  CEType* model = surface.getCEType();
  std::vector<SurfacePoint*> out;
  surface.loadSurfacePointsFile((folder_ / "absent.csv").c_str(), out);
  surface.loadSurfacePointsFile((folder_ / "folder.csv").c_str(), out);
  surface.loadSurfacePointsFile(write("empty.csv", "").c_str(), out);
  surface.loadSurfacePointsFile(nullptr, out);
  EXPECT_TRUE(out.empty());
  EXPECT_EQ(4, surface.getPointsNumber());
  EXPECT_EQ(model, surface.getCEType());
}

TEST_F(PointFile, BuildsTheTinAtOnce) {
  OwnedSurface surface;
  std::vector<SurfacePoint*> out;
  surface.loadSurfacePointsFile(write("a.dat", kTriangle).c_str(), out);
  EXPECT_FALSE(surface.isNeedInit());
  EXPECT_EQ(1, surface.getTrianglesNumber());
  EXPECT_EQ(3.0, surface.getMaxElev());
}

TEST_F(PointFile, AppendsToThePointsThatAreThere) {
  OwnedSurface surface(risingSquare());
  surface.getCEType();
  std::vector<SurfacePoint*> out;
  surface.loadSurfacePointsFile(write("a.csv", "Q1,,120,205,30\n").c_str(), out);
  EXPECT_EQ((Texts{"P1", "P2", "P3", "P4", "Q1"}), namesOf(surface));
  ASSERT_EQ(1u, out.size());
  EXPECT_EQ(out[0], surface.getSurfacePoints()[4]);
  EXPECT_EQ(30.0, surface.getMaxElev());
}

TEST_F(PointFile, TheSurfaceNamesItsPoints) {
  OwnedSurface surface;
  surface.setSurfaceName("Quarry");
  std::vector<SurfacePoint*> out;
  surface.loadSurfacePointsFile(write("a.csv", kTriangle).c_str(), out);
  for (const SurfacePoint* point : out) EXPECT_STREQ("Quarry", point->getSurfaceName());
}

TEST_F(PointFile, ProjectedCoordinatesAreReadExactly) {
  OwnedSurface surface;
  std::vector<SurfacePoint*> out;
  surface.loadSurfacePointsFile(write("a.csv", "P1,,38512345.678,3456789.012,-0.001\n").c_str(), out);
  ASSERT_EQ(1u, out.size());
  EXPECT_EQ(38512345.678, out[0]->getE());
  EXPECT_EQ(3456789.012, out[0]->getN());
  EXPECT_EQ(-0.001, out[0]->getZ());
}

TEST(TextLines, TakesLines) {
  std::string_view text = "a\r\n\nb\rc\r\r\nlast\r";
  std::vector<std::string> lines;
  for (std::string_view line; detail::takeLine(text, line);) lines.emplace_back(line);
  EXPECT_EQ((Texts{"a", "", "b\rc\r", "last"}), lines);
}

TEST(TextLines, SplitsTheFirstFields) {
  const struct {
    const char* line;
    std::size_t filled;
    Texts expected;
  } rows[] = {
      {"a,b,c", 3, {"a", "b", "c"}}, {"a,b,c,d", 3, {"a", "b", "c"}}, {"a,b", 2, {"a", "b", ""}},
      {"", 1, {"", "", ""}},         {",,", 3, {"", "", ""}},         {"a,,", 3, {"a", "", ""}},
  };
  for (const auto& row : rows) {
    std::array<std::string_view, 3> fields;
    EXPECT_EQ(row.filled, detail::splitFields(row.line, fields)) << row.line;
    EXPECT_EQ(row.expected, Texts(fields.begin(), fields.end())) << row.line;
  }
}

}  // namespace
