// Flat functions on volumes between surface files, and their reports.
#include <cstring>
#include <memory>

#include <OrvikDTMAlgorithm/surface/RecordLayout.h>

#include "api/FlatTest.h"

namespace {

constexpr const char* kLabels = "A,B,C,D,E,F,G,H,I,J,K,L";

struct FreeResult {
  void operator()(FillCutResult* result) const { freeFillCutResult(result); }
};
using Result = std::unique_ptr<FillCutResult, FreeResult>;

// "ground.ttin" is level at 10, "design.TTIN" and "design.sjw" at 12; both are 10 x 10.
class FlatVolumes : public FlatTest {
 protected:
  void SetUp() override {
    FlatTest::SetUp();
    newDTMSurfaceLib();
    addSquare("Ground", 10, 10);
    addSquare("Design", 12, 12);
    ground_ = path("ground.ttin");
    design_ = path("design.TTIN");
    ASSERT_EQ(1, saveSurface(0, ground_.c_str()));
    ASSERT_EQ(1, saveSurface(1, design_.c_str()));
    ASSERT_EQ(1, exportFileSJW(1, path("design.sjw").c_str()));
    forgetState();  // none of these functions needs a library
  }

  static void addBoundary() {  // the western half
    addRangePoint("A", 200, 100, 0);
    addRangePoint("B", 200, 105, 0);
    addRangePoint("C", 210, 105, 0);
    addRangePoint("D", 210, 100, 0);
  }

  std::string ground_;
  std::string design_;
};

TEST_F(FlatVolumes, AgainstALevel) {
  const Result result(getFillCut(ground_.c_str(), 8.0, false));
  ASSERT_NE(nullptr, result);
  EXPECT_NEAR(200.0, result->getCutVolume(), 1e-9);
  EXPECT_EQ(0.0, result->getFillVolume());
  EXPECT_STREQ("Ground", RecordLayout::surfaceName(*result));
  EXPECT_STREQ("", RecordLayout::refSurfaceName(*result));
  EXPECT_NEAR(100.0, RecordLayout::twoDArea(*result), 1e-9);
}

TEST_F(FlatVolumes, AgainstASurfaceInAnyKindOfFile) {
  for (const std::string& reference : {design_, path("design.sjw")}) {
    const Result result(getFillCut2(ground_.c_str(), reference.c_str(), false));
    ASSERT_NE(nullptr, result);
    EXPECT_NEAR(200.0, result->getFillVolume(), 1e-6);
    EXPECT_STREQ("Ground", RecordLayout::surfaceName(*result));
    EXPECT_EQ(reference == design_ ? "Design" : "design", std::string(RecordLayout::refSurfaceName(*result)));
  }
}

TEST_F(FlatVolumes, TheSameFileTwice) {
  const Result result(getFillCut2(ground_.c_str(), ground_.c_str(), false));
  ASSERT_NE(nullptr, result);
  EXPECT_NEAR(0.0, result->getFillVolume(), 1e-9);
  EXPECT_NEAR(0.0, result->getCutVolume(), 1e-9);
}

TEST_F(FlatVolumes, TheBoundaryCountsOnlyWhenAskedFor) {
  addBoundary();
  const Result whole(getFillCut(ground_.c_str(), 8.0, false));
  EXPECT_NEAR(200.0, whole->getCutVolume(), 1e-9);
  const Result half(getFillCut(ground_.c_str(), 8.0, true));
  EXPECT_NEAR(100.0, half->getCutVolume(), 1e-6);
  const Result wholeToDesign(getFillCut2(ground_.c_str(), design_.c_str(), false));
  EXPECT_NEAR(200.0, wholeToDesign->getFillVolume(), 1e-6);
  EXPECT_EQ(4u, detail::flatState().rangePoints.size());
}

TEST_F(FlatVolumes, AnEmptyBoundaryIsNone) {
  const Result result(getFillCut(ground_.c_str(), 8.0, true));
  EXPECT_NEAR(200.0, result->getCutVolume(), 1e-9);
}

// It limits neither a volume nor a report, wherever its vertices lie: everything is as without it, byte for byte.
TEST_F(FlatVolumes, ABoundaryOfOneOrTwoVerticesIsNone) {
  const auto report = [&](bool useRange, int kind) {
    EXPECT_EQ(1, exportVolumeReport(ground_.c_str(), 11.0, useRange, kind, kLabels, path("r").c_str()));
    EXPECT_EQ(1, exportVolumeReport2(ground_.c_str(), design_.c_str(), useRange, kind, kLabels, path("s").c_str()));
    return contentsOf("r") + contentsOf("s");
  };
  const Result level(getFillCut(ground_.c_str(), 11.0, false));
  const Result design(getFillCut2(ground_.c_str(), design_.c_str(), false));
  ASSERT_NEAR(100.0, level->getFillVolume(), 1e-9);
  const std::string page = report(false, 0), text = report(false, 1);
  constexpr double kVertices[][2] = {{205, 105}, {202, 103}, {200, 100}, {500, 500}, {205, 105}};
  for (const auto& vertex : kVertices) {
    while (detail::flatState().rangePoints.size() > 1) deleteRangePoint(0);
    addRangePoint("V", vertex[0], vertex[1], 7.0);
    SCOPED_TRACE(detail::flatState().rangePoints.size());
    const Result limited(getFillCut(ground_.c_str(), 11.0, true));
    const Result limitedDesign(getFillCut2(ground_.c_str(), design_.c_str(), true));
    EXPECT_EQ(0, std::memcmp(level.get(), limited.get(), sizeof *level));
    EXPECT_EQ(0, std::memcmp(design.get(), limitedDesign.get(), sizeof *design));
    EXPECT_EQ(page, report(true, 0));
    EXPECT_EQ(text, report(true, 1));
  }
  addRangePoint("W", 202, 103, 0);
  EXPECT_NE(text, report(true, 1)) << "three do limit";
}

TEST_F(FlatVolumes, WhatCannotBeLoadedHasNoVolume) {
  std::filesystem::copy_file(ground_, path("ground.txt"));
  std::filesystem::copy_file(ground_, path("ttin"));
  fill("short.ttin", "DTM");
  const char* nowhere = nullptr;
  const std::string bad[] = {path("absent.ttin"), path("ground.txt"), path("ttin"), path("short.ttin"), "", "."};
  for (const std::string& file : bad) {
    SCOPED_TRACE(file);
    EXPECT_EQ(nullptr, getFillCut(file.c_str(), 8.0, false));
    EXPECT_EQ(nullptr, getFillCut2(file.c_str(), design_.c_str(), false));
    EXPECT_EQ(nullptr, getFillCut2(ground_.c_str(), file.c_str(), false));
    EXPECT_EQ(0, exportVolumeReport(file.c_str(), 8.0, false, 1, kLabels, path("r").c_str()));
    EXPECT_EQ(0, exportVolumeReport2(ground_.c_str(), file.c_str(), false, 1, kLabels, path("r").c_str()));
  }
  EXPECT_EQ(nullptr, getFillCut(nowhere, 8.0, false));
  EXPECT_EQ(nullptr, getFillCut2(nowhere, nowhere, false));
  EXPECT_EQ(0, exportVolumeReport(nowhere, 8.0, false, 1, kLabels, path("r").c_str()));
  EXPECT_EQ(0, exportVolumeReport2(nowhere, nowhere, false, 1, kLabels, path("r").c_str()));
  EXPECT_FALSE(std::filesystem::exists(path("r")));
}

TEST_F(FlatVolumes, ASurfaceOfTwoPointsHasNone) {
  newDTMSurfaceLib();
  addDTMSurface("two");
  addSurfacePoint(0, "A", 0, 0, 0);
  addSurfacePoint(0, "B", 1, 1, 1);
  ASSERT_EQ(1, saveSurface(0, path("two.ttin").c_str()));
  EXPECT_EQ(nullptr, getFillCut(path("two.ttin").c_str(), 8.0, false));
  EXPECT_EQ(nullptr, getFillCut2(path("two.ttin").c_str(), ground_.c_str(), false));
  EXPECT_EQ(nullptr, getFillCut2(ground_.c_str(), path("two.ttin").c_str(), false));
}

TEST_F(FlatVolumes, Reports) {
  ASSERT_EQ(1, exportVolumeReport(ground_.c_str(), 8.0, false, 1, kLabels, path("r.txt").c_str()));
  EXPECT_NE(std::string::npos, contentsOf("r.txt").find("B                   Ground              \n"
                                                        "C                   8.0000              \n"));
  EXPECT_NE(std::string::npos, contentsOf("r.txt").find("E                   200.0000            \n"));
  ASSERT_EQ(1, exportVolumeReport2(ground_.c_str(), design_.c_str(), false, 1, kLabels, path("s.txt").c_str()));
  EXPECT_NE(std::string::npos, contentsOf("s.txt").find("C                   Design              \n"));
  EXPECT_NE(std::string::npos, contentsOf("s.txt").find("F                   200.0000            \n"));
  ASSERT_EQ(1, exportVolumeReport(ground_.c_str(), 8.0, false, 0, kLabels, path("r.html").c_str()));
  EXPECT_NE(std::string::npos, contentsOf("r.html").find(">8.0000</td>"));
  ASSERT_EQ(1, exportVolumeReport2(ground_.c_str(), design_.c_str(), false, 0, kLabels, path("s.html").c_str()));
  EXPECT_NE(std::string::npos, contentsOf("s.html").find(">Design</td>"));
}

TEST_F(FlatVolumes, ReportsWithinTheBoundary) {
  addBoundary();
  ASSERT_EQ(1, exportVolumeReport(ground_.c_str(), 8.0, true, 1, kLabels, path("r.txt").c_str()));
  EXPECT_NE(std::string::npos, contentsOf("r.txt").find("E                   100.0000            \n"));
}

TEST_F(FlatVolumes, ReportsThatCannotBeWritten) {
  for (const int kind : {-1, 2, 100}) {
    EXPECT_EQ(0, exportVolumeReport(ground_.c_str(), 8.0, false, kind, kLabels, path("r").c_str()));
    EXPECT_EQ(0, exportVolumeReport2(ground_.c_str(), design_.c_str(), false, kind, kLabels, path("r").c_str()));
  }
  for (const int kind : {0, 1}) {
    EXPECT_EQ(0, exportVolumeReport(ground_.c_str(), 8.0, false, kind, kLabels, path("absent/r").c_str()));
    EXPECT_EQ(0, exportVolumeReport2(ground_.c_str(), design_.c_str(), false, kind, nullptr, path("r").c_str()));
    EXPECT_EQ(0, exportVolumeReport(ground_.c_str(), 8.0, false, kind, kLabels, nullptr));
  }
  EXPECT_FALSE(std::filesystem::exists(path("r")));
  freeFillCutResult(nullptr);
}

}  // namespace
