// The life of a surface's TIN, its statistics, and the queries that run on it.
#include <cmath>
#include <limits>
#include <memory>

#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/surface/RangePoint.h>
#include <OrvikDTMAlgorithm/surface/RecordLayout.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <gtest/gtest.h>

#include "surface/Surfaces.h"

namespace {

void expectNoStatistics(const DTMSurface& surface) {
  EXPECT_EQ(0, surface.getTrianglesNumber());
  for (const double v : {surface.getTwoDArea(), surface.getThreeDArea(), surface.getMinElev(), surface.getMaxElev(),
                         surface.getRangeMinX(), surface.getRangeMaxX(), surface.getRangeMinY(), surface.getRangeMaxY(),
                         surface.getPerimeterTwoD(), surface.getPerimeterThreeD()}) {
    EXPECT_EQ(0.0, v);
  }
}

TEST(SurfaceTin, IsBuiltOnceAndKept) {
  OwnedSurface surface(risingSquare());
  EXPECT_TRUE(surface.isNeedInit());
  CEType* model = surface.getCEType();
  ASSERT_NE(nullptr, model);
  EXPECT_FALSE(surface.isNeedInit());
  EXPECT_EQ(model, surface.getCEType());
}

TEST(SurfaceTin, StatisticsDescribeIt) {
  OwnedSurface surface(risingSquare());
  surface.getCEType();
  const double slope = std::sqrt(101.0);  // of 10 units to the east, 1 up
  EXPECT_EQ(2, surface.getTrianglesNumber());
  EXPECT_DOUBLE_EQ(100.0, surface.getTwoDArea());
  EXPECT_DOUBLE_EQ(10.0 * slope, surface.getThreeDArea());
  EXPECT_DOUBLE_EQ(40.0, surface.getPerimeterTwoD());
  EXPECT_DOUBLE_EQ(20.0 + 2.0 * slope, surface.getPerimeterThreeD());
  EXPECT_EQ(15.0, surface.getMinElev());
  EXPECT_EQ(16.0, surface.getMaxElev());
  EXPECT_EQ(100.0, surface.getRangeMinX());
  EXPECT_EQ(110.0, surface.getRangeMaxX());
  EXPECT_EQ(200.0, surface.getRangeMinY());
  EXPECT_EQ(210.0, surface.getRangeMaxY());
}

TEST(SurfaceTin, TwoPointsMakeNoneAndNoStatistics) {
  OwnedSurface surface(scattered(2));
  surface.setTwoDArea(7.0);
  surface.setTrianglesNumber(7);
  EXPECT_EQ(nullptr, surface.getCEType());
  expectNoStatistics(surface);
  EXPECT_TRUE(surface.isNeedInit());
}

TEST(SurfaceTin, CollinearPointsMakeAnEmptyOne) {
  OwnedSurface surface({{0, 0, 1}, {10, 10, 2}, {20, 20, 3}});
  ASSERT_NE(nullptr, surface.getCEType());
  EXPECT_EQ(0, surface.getTrianglesNumber());
  EXPECT_EQ(0.0, surface.getTwoDArea());
  double z = -1.0;
  EXPECT_EQ(0, surface.checkSurfacePoint(5, 5, &z));
  EXPECT_EQ(-1.0, z);
}

TEST(SurfaceTin, DeletingMakesItStale) {
  OwnedSurface surface(risingSquare());
  surface.getCEType();
  EXPECT_EQ(1, surface.deleteSurfacePoint(0, 1));
  EXPECT_TRUE(surface.isNeedInit());
  EXPECT_EQ(2, surface.getTrianglesNumber());  // of the TIN that was
  surface.getCEType();
  EXPECT_FALSE(surface.isNeedInit());
  EXPECT_EQ(1, surface.getTrianglesNumber());
}

TEST(SurfaceTin, DeletingDownToTwoPointsClearsTheStatistics) {
  OwnedSurface surface({{0, 0, 1}, {10, 0, 2}, {0, 10, 3}});
  surface.getCEType();
  surface.deleteSurfacePoint(0, 1);
  EXPECT_EQ(nullptr, surface.getCEType());
  expectNoStatistics(surface);
}

// The host's own records keep their coordinates: the construction rounds copies.
TEST(SurfaceTin, PointsKeepTheirCoordinates) {
  OwnedSurface surface({{100.123456, 200.987654, 1}, {-110.5555555, 200, 2}, {105, -290.0000049, 3}});
  surface.getCEType();
  EXPECT_EQ(100.123456, surface.getSurfacePoints()[0]->getE());
  EXPECT_EQ(200.987654, surface.getSurfacePoints()[0]->getN());
  EXPECT_EQ(-110.5555555, surface.getSurfacePoints()[1]->getE());
  EXPECT_EQ(-290.0000049, surface.getSurfacePoints()[2]->getN());
}

TEST(SurfaceTin, PointsWithoutAPositionCountButTakeNoPart) {
  OwnedSurface surface(risingSquare());
  surface.addSurfacePoint(newPoint("lost", {std::nan(""), 205, 99}), 0);
  EXPECT_EQ(5, surface.getPointsNumber());
  EXPECT_EQ(2, surface.getTrianglesNumber());
  EXPECT_EQ(16.0, surface.getMaxElev());

  OwnedSurface nowhere({{std::nan(""), 1, 1}, {2, std::nan(""), 1}, {std::nan(""), 3, 1}});
  EXPECT_NE(nullptr, nowhere.getCEType());
  EXPECT_EQ(0, nowhere.getTrianglesNumber());
}

TEST(SurfaceTin, SetCETypeAdoptsAndKeepsTheStatistics) {
  OwnedSurface surface(risingSquare());
  surface.getCEType();
  CEType* empty = new CEType(nullptr, nullptr, nullptr);
  surface.setCEType(empty);
  EXPECT_EQ(empty, surface.getCEType());
  surface.setCEType(empty);  // its own: stays
  EXPECT_EQ(empty, surface.getCEType());
  EXPECT_EQ(2, surface.getTrianglesNumber());
  surface.setCEType(nullptr);
  EXPECT_TRUE(surface.isNeedInit());
  EXPECT_EQ(2, surface.getCEType()->getTList()->getListLen());
}

TEST(SurfaceTin, AChangedArrayIsTriangulatedOnRequest) {
  SurfacePoint array[3];
  for (int i = 0; i < 3; ++i) {
    array[i].setE(i == 1 ? 10 : 0);
    array[i].setN(i == 2 ? 10 : 0);
  }
  OwnedSurface surface(risingSquare());
  surface.getCEType();
  surface.updateDTMSurface(3, array);
  EXPECT_EQ(2, surface.getTrianglesNumber());
  surface.setCEType(nullptr);
  surface.getCEType();
  EXPECT_EQ(1, surface.getTrianglesNumber());
  EXPECT_DOUBLE_EQ(50.0, surface.getTwoDArea());
}

TEST(CheckSurfacePoint, HeightsOfTheSurface) {
  OwnedSurface surface(risingSquare());
  const struct {
    double n;
    double e;
    int found;
    double z;
  } rows[] = {
      {205, 105, 1, 15.5}, {200, 100, 1, 15},   {200, 110, 1, 16}, {210, 110, 1, 16}, {210, 100, 1, 15},
      {205, 110, 1, 16},   {200, 104, 1, 15.4}, {205, 120, 0, -1}, {220, 105, 0, -1}, {105, 205, 0, -1},
  };
  for (const auto& row : rows) {
    double z = -1.0;
    EXPECT_EQ(row.found, surface.checkSurfacePoint(row.n, row.e, &z)) << row.n << " " << row.e;
    EXPECT_DOUBLE_EQ(row.z, z) << row.n << " " << row.e;
    EXPECT_EQ(row.found, surface.checkSurfacePoint(row.n, row.e, nullptr)) << row.n << " " << row.e;
  }
}

TEST(CheckSurfacePoint, ExactAtEveryVertex) {
  const std::vector<Position> ground = scattered(40);
  OwnedSurface surface(ground);
  for (const Position& at : ground) {
    double z = -1.0;
    EXPECT_EQ(1, surface.checkSurfacePoint(at.n, at.e, &z));
    EXPECT_EQ(at.z, z);
  }
}

// Moving to a local origin and back changes the last digit of many coordinates; a surveyed position is a vertex all the
// same.
TEST(CheckSurfacePoint, ExactAtMillimetrePositionsWhereverTheSiteLies) {
  for (const double offset : {0.0, 1000.0, -5000.0, 3414097.0}) {
    for (int site = 1; site <= 40; ++site) {
      std::vector<Position> ground;
      for (int i = 0; i < 15; ++i) {
        const int eastMillimetres = (i * i * 48611 * site + 13) % 9999991;
        const int northMillimetres = (i * 104729 + 31 * site) % 9999973;
        ground.push_back({offset + eastMillimetres / 1000.0, offset + northMillimetres / 1000.0, 10.0 + i});
      }
      OwnedSurface surface(ground);
      for (const Position& at : ground) {
        double z = -1.0;
        const double n = std::round(at.n * 1000) / 1000;
        const double e = std::round(at.e * 1000) / 1000;
        EXPECT_EQ(1, surface.checkSurfacePoint(n, e, &z)) << offset << " " << site;
        EXPECT_EQ(at.z, z) << offset << " " << site;
      }
    }
  }
}

TEST(CheckSurfacePoint, AnUnknownElevationIsAnAnswer) {
  OwnedSurface surface({{0, 0, std::nan("")}, {10, 0, 1}, {0, 10, 1}});
  double z = -1.0;
  EXPECT_EQ(1, surface.checkSurfacePoint(2, 2, &z));
  EXPECT_TRUE(std::isnan(z));
}

TEST(CheckSurfacePoint, BuildsTheTinOnFirstUse) {
  OwnedSurface surface(risingSquare());
  double z = 0.0;
  EXPECT_EQ(1, surface.checkSurfacePoint(205, 105, &z));
  EXPECT_FALSE(surface.isNeedInit());
}

TEST(Queries, WithoutATinThereIsNothing) {
  OwnedSurface surface(scattered(2));
  double z = -1.0;
  EXPECT_EQ(0, surface.checkSurfacePoint(500, 1000, &z));
  EXPECT_EQ(-1.0, z);
  EXPECT_EQ(nullptr, surface.getFillCut(10.0));
  OwnedSurface other(risingSquare());
  EXPECT_EQ(nullptr, surface.getFillCut(other.getCEType()));
  EXPECT_EQ(nullptr, other.getFillCut(surface.getCEType()));
  EXPECT_EQ(0, surface.setRangeList({}));
}

// The square lies between 15 and 16: the level 15.5 cuts its eastern half and fills its western one.
TEST(GetFillCut, AgainstALevel) {
  OwnedSurface surface(risingSquare());
  const std::unique_ptr<FillCutResult> result(surface.getFillCut(15.5));
  ASSERT_NE(nullptr, result);
  EXPECT_NEAR(12.5, result->getFillVolume(), 1e-9);
  EXPECT_NEAR(12.5, result->getCutVolume(), 1e-9);
  EXPECT_NEAR(50.0, result->getFillTwoDArea(), 1e-9);
  EXPECT_NEAR(50.0, result->getCutTwoDArea(), 1e-9);
  EXPECT_STREQ("Site", RecordLayout::surfaceName(*result));
  EXPECT_STREQ("", RecordLayout::refSurfaceName(*result));
  EXPECT_DOUBLE_EQ(100.0, RecordLayout::twoDArea(*result));
}

// The square's mean height is 15.5, and so is the reference's everywhere.
TEST(GetFillCut, AgainstAnotherTin) {
  OwnedSurface surface(risingSquare());
  OwnedSurface level({{100, 200, 15.5}, {110, 200, 15.5}, {110, 210, 15.5}, {100, 210, 15.5}, {105, 203, 15.5}});
  const std::unique_ptr<FillCutResult> result(surface.getFillCut(level.getCEType()));
  ASSERT_NE(nullptr, result);
  EXPECT_NEAR(12.5, result->getFillVolume(), 1e-6);
  EXPECT_NEAR(12.5, result->getCutVolume(), 1e-6);
  EXPECT_STREQ("Site", RecordLayout::surfaceName(*result));
  EXPECT_STREQ("", RecordLayout::refSurfaceName(*result));
  EXPECT_DOUBLE_EQ(100.0, RecordLayout::twoDArea(*result));
}

TEST(GetFillCut, AgainstALevelWithinABoundary) {
  OwnedSurface surface(risingSquare());
  RangePoint corners[4] = {{"A", 202, 102, 0}, {"B", 202, 108, 0}, {"C", 208, 108, 0}, {"D", 208, 102, 0}};
  surface.setRangeList({&corners[0], &corners[1], &corners[2], &corners[3]});
  const std::unique_ptr<FillCutResult> result(surface.getFillCut(10.0));
  ASSERT_NE(nullptr, result);
  EXPECT_NEAR(36.0, result->getCutTwoDArea(), 0.1);
  EXPECT_NEAR(36.0 * 5.5, result->getCutVolume(), 0.5);
  EXPECT_EQ(0.0, result->getFillVolume());
  EXPECT_STREQ("Site", RecordLayout::surfaceName(*result));
}

TEST(FillCut, LevelsThatAreNoNumbers) {
  OwnedSurface surface(risingSquare());
  const double infinity = std::numeric_limits<double>::infinity();
  const std::unique_ptr<FillCutResult> above(surface.getFillCut(infinity));
  EXPECT_EQ(infinity, above->getFillVolume());
  EXPECT_EQ(0.0, above->getCutVolume());
  EXPECT_DOUBLE_EQ(surface.getTwoDArea(), above->getFillTwoDArea());
  const std::unique_ptr<FillCutResult> below(surface.getFillCut(-infinity));
  EXPECT_EQ(infinity, below->getCutVolume());
  EXPECT_EQ(0.0, below->getFillVolume());
  EXPECT_DOUBLE_EQ(surface.getThreeDArea(), below->getCutThreeDArea());
  const std::unique_ptr<FillCutResult> none(surface.getFillCut(std::numeric_limits<double>::quiet_NaN()));
  for (const double v : {none->getFillVolume(), none->getCutVolume(), none->getFillTwoDArea(), none->getCutTwoDArea(),
                         none->getFillThreeDArea(), none->getCutThreeDArea()}) {
    EXPECT_TRUE(std::isnan(v));
  }
}

TEST(SetRangeList, LivesInTheTin) {
  OwnedSurface surface(risingSquare());
  RangePoint corners[3] = {{"A", 201, 101, 5}, {"B", 201, 109, 5}, {"C", 209, 105, 5}};
  EXPECT_EQ(1, surface.setRangeList({&corners[0], &corners[1], &corners[2]}));
  const std::vector<TPoint*>& stored = surface.getCEType()->getRangeList();
  ASSERT_EQ(3u, stored.size());
  EXPECT_EQ(109.0, stored[1]->getX());
  EXPECT_EQ(201.0, stored[1]->getY());
  EXPECT_EQ(0.0, stored[1]->getZ());
  surface.addSurfacePoint(newPoint("P5", {115, 205, 15}), 4);
  EXPECT_TRUE(surface.getCEType()->getRangeList().empty());
}

}  // namespace
