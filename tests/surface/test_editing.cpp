// A surface's name, copies and point list. That records are released exactly when they should be is watched over by the
// address sanitizer: the tests release what the surface leaves behind.
#include <cmath>
#include <memory>

#include <OrvikDTMAlgorithm/tin/TPoint.h>
#include <gtest/gtest.h>

#include "surface/Surfaces.h"

namespace {

using Names = std::vector<std::string>;

TEST(Surfaces, StartEmpty) {
  const DTMSurface surface;
  EXPECT_STREQ("", surface.getSurfaceName());
  EXPECT_EQ(0, surface.getPointsNumber());
  EXPECT_EQ(0, surface.getTrianglesNumber());
  EXPECT_TRUE(surface.isNeedInit());
  for (const double v : {surface.getTwoDArea(), surface.getThreeDArea(), surface.getMinElev(), surface.getMaxElev(),
                         surface.getRangeMinX(), surface.getRangeMaxX(), surface.getRangeMinY(), surface.getRangeMaxY(),
                         surface.getPerimeterTwoD(), surface.getPerimeterThreeD()}) {
    EXPECT_EQ(0.0, v);
  }
}

TEST(Surfaces, NameIsCut) {
  DTMSurface surface;
  surface.setSurfaceName("abcdefghijklmnopqrstuvwxyz");
  EXPECT_STREQ("abcdefghijklmnopqrstuvw", surface.getSurfaceName());
}

TEST(Surfaces, SettersStoreUnchanged) {
  DTMSurface surface;
  surface.setRangeMinX(1);
  surface.setRangeMaxX(2);
  surface.setRangeMinY(3);
  surface.setRangeMaxY(4);
  surface.setMinElev(5);
  surface.setMaxElev(6);
  surface.setTwoDArea(7);
  surface.setThreeDArea(8);
  surface.setPerimeterTwoD(9);
  surface.setPerimeterThreeD(10);
  surface.setTrianglesNumber(11);
  EXPECT_EQ(1, surface.getRangeMinX());
  EXPECT_EQ(2, surface.getRangeMaxX());
  EXPECT_EQ(3, surface.getRangeMinY());
  EXPECT_EQ(4, surface.getRangeMaxY());
  EXPECT_EQ(5, surface.getMinElev());
  EXPECT_EQ(6, surface.getMaxElev());
  EXPECT_EQ(7, surface.getTwoDArea());
  EXPECT_EQ(8, surface.getThreeDArea());
  EXPECT_EQ(9, surface.getPerimeterTwoD());
  EXPECT_EQ(10, surface.getPerimeterThreeD());
  EXPECT_EQ(11, surface.getTrianglesNumber());
}

TEST(AddSurfacePoint, InsertsBeforeThePositionOrAppends) {
  OwnedSurface surface(scattered(5));
  EXPECT_EQ(1, surface.addSurfacePoint(newPoint("last", {1, 2, 3}), 1000));
  EXPECT_EQ((Names{"P1", "P2", "P3", "P4", "P5", "last"}), namesOf(surface));
  EXPECT_EQ(1, surface.addSurfacePoint(newPoint("first", {1, 9, 3}), 0));
  EXPECT_EQ(1, surface.addSurfacePoint(newPoint("third", {4, 2, 3}), 2));
  EXPECT_EQ(1, surface.addSurfacePoint(newPoint("end", {5, 2, 3}), 8));
  EXPECT_EQ((Names{"first", "P1", "third", "P2", "P3", "P4", "P5", "last", "end"}), namesOf(surface));
  EXPECT_EQ(9, surface.getPointsNumber());
}

TEST(AddSurfacePoint, NamesTheSurface) {
  OwnedSurface surface;
  surface.addSurfacePoint(newPoint("P1", {1, 2, 3}), 0);
  EXPECT_STREQ("Site", surface.getSurfacePoints()[0]->getSurfaceName());
}

TEST(AddSurfacePoint, TheThirdPointMakesATin) {
  OwnedSurface surface;
  surface.addSurfacePoint(newPoint("P1", {0, 0, 1}), 0);
  EXPECT_TRUE(surface.isNeedInit());
  surface.addSurfacePoint(newPoint("P2", {10, 0, 1}), 1);
  EXPECT_TRUE(surface.isNeedInit());
  EXPECT_EQ(nullptr, surface.getCEType());
  surface.addSurfacePoint(newPoint("P3", {0, 10, 1}), 2);
  EXPECT_FALSE(surface.isNeedInit());
  EXPECT_EQ(1, surface.getTrianglesNumber());
}

TEST(AddSurfacePoint, NullIsRefused) {
  OwnedSurface surface(scattered(4));
  EXPECT_EQ(0, surface.addSurfacePoint(nullptr, 0));
  EXPECT_EQ(4, surface.getPointsNumber());
}

TEST(UpdateSurfacePoint, ReplacesTheEntryAndRebuilds) {
  OwnedSurface surface(risingSquare());
  surface.getCEType();
  EXPECT_EQ(1, surface.updateSurfacePoint(2, newPoint("new", {120, 210, 40})));
  EXPECT_EQ((Names{"P1", "P2", "new", "P4"}), namesOf(surface));
  EXPECT_STREQ("Site", surface.getSurfacePoints()[2]->getSurfaceName());
  EXPECT_FALSE(surface.isNeedInit());
  EXPECT_EQ(40.0, surface.getMaxElev());
  EXPECT_EQ(120.0, surface.getRangeMaxX());
}

TEST(UpdateSurfacePoint, NoSuchEntryChangesNothing) {
  OwnedSurface surface(risingSquare());
  const std::unique_ptr<SurfacePoint> point(newPoint("new", {1, 2, 3}));
  EXPECT_EQ(0, surface.updateSurfacePoint(4, point.get()));
  EXPECT_EQ(0, surface.updateSurfacePoint(0xffffffffu, point.get()));
  EXPECT_EQ(0, surface.updateSurfacePoint(0, nullptr));
  EXPECT_STREQ("", point->getSurfaceName());
  EXPECT_EQ((Names{"P1", "P2", "P3", "P4"}), namesOf(surface));
}

TEST(UpdateSurfacePoint, ARecordMayReplaceItself) {
  OwnedSurface surface(risingSquare());
  SurfacePoint* point = surface.getSurfacePoints()[1];
  point->setZ(99.0);
  EXPECT_EQ(1, surface.updateSurfacePoint(1, point));
  EXPECT_EQ(99.0, surface.getMaxElev());
  EXPECT_EQ(point, surface.getSurfacePoints()[1]);
}

TEST(DeleteSurfacePoint, WhatItRefuses) {
  OwnedSurface surface(scattered(5));
  surface.getCEType();
  EXPECT_EQ(0, surface.deleteSurfacePoint(0, 0));
  EXPECT_EQ(0, surface.deleteSurfacePoint(5, 1));
  EXPECT_EQ(0, surface.deleteSurfacePoint(0xffffffffu, 1));
  EXPECT_EQ(5, surface.getPointsNumber());
  EXPECT_FALSE(surface.isNeedInit());
}

// What a deletion removes and which of the removed records it releases: those below position `count`.
struct Deletion {
  int length;
  unsigned int index;
  unsigned long long count;
  int removed;
  int released;
};

TEST(DeleteSurfacePoint, RemovesACountAndReleasesToAPosition) {
  constexpr unsigned long long kAll = ~0ull;
  const Deletion rows[] = {
      {10, 3, 2, 2, 0}, {10, 0, 1, 1, 1}, {10, 1, 1, 1, 0}, {10, 0, 4, 4, 4},    {10, 3, 5, 5, 2},
      {10, 3, 4, 4, 1}, {10, 8, 9, 2, 1}, {10, 8, 5, 2, 0}, {10, 4, kAll, 6, 6}, {10, 0, kAll, 10, 10},
  };
  for (const Deletion& row : rows) {
    OwnedSurface surface(scattered(row.length));
    const std::vector<SurfacePoint*> before = surface.getSurfacePoints();
    const Names namesBefore = namesOf(surface);
    ASSERT_EQ(1, surface.deleteSurfacePoint(row.index, row.count)) << row.index << " " << row.count;

    Names expected = namesBefore;
    const auto first = expected.begin() + row.index;
    expected.erase(first, first + row.removed);
    EXPECT_EQ(expected, namesOf(surface)) << row.index << " " << row.count;
    EXPECT_EQ(row.length - row.removed, surface.getPointsNumber());

    // Releasing here a record that the surface released, or leaving out one that it did not, fails under the sanitizer.
    for (int i = static_cast<int>(row.index) + row.released; i < static_cast<int>(row.index) + row.removed; ++i) {
      EXPECT_EQ(namesBefore[static_cast<std::size_t>(i)], before[static_cast<std::size_t>(i)]->getSurfacePointName());
      delete before[static_cast<std::size_t>(i)];
    }
  }
}

TEST(SetSurfacePoints, AnEmptyListChangesNothing) {
  OwnedSurface surface(scattered(4));
  surface.setSurfacePoints({});
  EXPECT_EQ((Names{"P1", "P2", "P3", "P4"}), namesOf(surface));
}

TEST(SetSurfacePoints, RefersToTheCallersRecordsAndLeavesTheTin) {
  OwnedSurface surface(risingSquare());
  CEType* model = surface.getCEType();
  const std::vector<SurfacePoint*> before = surface.getSurfacePoints();
  const std::vector<SurfacePoint*> points = {newPoint("A", {1, 2, 3}), newPoint("B", {4, 5, 6})};
  surface.setSurfacePoints(points);
  EXPECT_EQ(points, surface.getSurfacePoints());
  EXPECT_EQ(2, surface.getPointsNumber());
  EXPECT_EQ(model, surface.getCEType());
  for (const SurfacePoint* point : before) delete point;  // not released by the surface
}

TEST(UpdateDTMSurface, RefersToTheArray) {
  OwnedSurface surface(scattered(4));
  CEType* model = surface.getCEType();
  SurfacePoint array[3];
  array[1].setSurfacePointName("second");
  EXPECT_EQ(1, surface.updateDTMSurface(3, array));
  ASSERT_EQ(3, surface.getPointsNumber());
  for (int i = 0; i < 3; ++i) EXPECT_EQ(&array[i], surface.getSurfacePoints()[static_cast<std::size_t>(i)]);
  EXPECT_EQ(model, surface.getCEType());
}

TEST(UpdateDTMSurface, ACountBelowOneEmptiesTheList) {
  SurfacePoint array[1];
  for (const int count : {0, -1, -1000}) {
    OwnedSurface surface(scattered(4));
    EXPECT_EQ(1, surface.updateDTMSurface(count, array));
    EXPECT_EQ(0, surface.getPointsNumber());
    EXPECT_EQ(1, surface.updateDTMSurface(5, nullptr));
    EXPECT_EQ(0, surface.getPointsNumber());
  }
}

TEST(UpdateDTMSurface, RecordsOfTheArrayAreNeverReleased) {
  SurfacePoint first[4];
  SurfacePoint second[2];
  OwnedSurface surface;
  surface.updateDTMSurface(4, first);
  EXPECT_EQ(1, surface.deleteSurfacePoint(0, 1));
  EXPECT_EQ(1, surface.updateSurfacePoint(0, newPoint("own", {1, 2, 3})));
  EXPECT_EQ(1, surface.addSurfacePoint(newPoint("own too", {1, 2, 3}), 1));
  surface.updateDTMSurface(2, second);
  surface.release();
  EXPECT_EQ(0, surface.getPointsNumber());
}

// A surface that refers to an array builds at every edit; one that does not builds when somebody looks, and so sees
// what became of a record meanwhile.
TEST(SetSurfacePoints, ForgetsTheArrayUnlessARecordLiesInIt) {
  for (const bool keepsOne : {true, false}) {
    SurfacePoint array[3];
    OwnedSurface surface;
    surface.updateDTMSurface(3, array);
    std::vector<SurfacePoint*> points = {newPoint("A", {0, 0, 1}), newPoint("B", {10, 0, 2}),
                                         newPoint("C", {0, 10, 3})};
    if (keepsOne) {
      delete points[1];
      array[1] = SurfacePoint();
      array[1].setE(10);
      points[1] = &array[1];
    }
    surface.setSurfacePoints(points);
    SurfacePoint* added = newPoint("D", {10, 10, 4});
    surface.addSurfacePoint(added, 3);
    added->setZ(50);
    EXPECT_EQ(keepsOne ? 4.0 : 50.0, surface.getMaxElev());
    surface.release();  // releasing a record of the array fails under the sanitizer
  }
}

TEST(Clone, SharesNothing) {
  OwnedSurface surface(risingSquare());
  surface.setIsDrawDTM(false);
  surface.getCEType();
  const std::unique_ptr<DTMSurface> copy(surface.clone());
  EXPECT_STREQ("Site", copy->getSurfaceName());
  EXPECT_EQ(namesOf(surface), namesOf(*copy));
  EXPECT_TRUE(copy->isNeedInit());
  EXPECT_EQ(100.0, copy->getTwoDArea());
  EXPECT_EQ(16.0, copy->getMaxElev());
  EXPECT_EQ(2, copy->getTrianglesNumber());
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_NE(surface.getSurfacePoints()[i], copy->getSurfacePoints()[i]);
    EXPECT_TRUE(surface.getSurfacePoints()[i]->isSame(copy->getSurfacePoints()[i]));
  }
  surface.release();
  EXPECT_EQ(2, (copy->getCEType(), copy->getTrianglesNumber()));
  copy->release();
}

TEST(Release, LeavesAnEmptySurfaceWithItsName) {
  OwnedSurface surface(risingSquare());
  surface.getCEType();
  surface.release();
  EXPECT_STREQ("Site", surface.getSurfaceName());
  EXPECT_EQ(0, surface.getPointsNumber());
  EXPECT_TRUE(surface.isNeedInit());
  EXPECT_EQ(0.0, surface.getTwoDArea());
  EXPECT_EQ(0, surface.getTrianglesNumber());
  surface.release();
  EXPECT_EQ(1, surface.addSurfacePoint(newPoint("P", {1, 2, 3}), 0));
}

class TPoints {
 public:
  TPoints(const DTMSurface& surface, const std::vector<SurfacePoint*>& points) : list(surface.getTPointList(points)) {}
  ~TPoints() {
    for (const TPoint* point : list) delete point;
  }
  TPoints(const TPoints&) = delete;
  TPoints& operator=(const TPoints&) = delete;

  const std::vector<TPoint*> list;
};

TEST(GetTPointList, RoundsThePlanToFourDecimalsAndKeepsZ) {
  const OwnedSurface surface({{100.00004, 0.00005, 1.23456789},
                              {100.00001, -0.00005, 2},
                              {-0.00004, 38500000.12345, 3},
                              {1, 2, std::nan("")}});
  const TPoints points(surface, surface.getSurfacePoints());
  ASSERT_EQ(4u, points.list.size());
  EXPECT_EQ(100.0, points.list[0]->getX());
  EXPECT_EQ(0.0001, points.list[0]->getY());
  EXPECT_EQ(1.23456789, points.list[0]->getZ());
  EXPECT_EQ(points.list[0]->getX(), points.list[1]->getX());
  EXPECT_EQ(-0.0001, points.list[1]->getY());
  EXPECT_FALSE(std::signbit(points.list[2]->getX()));
  EXPECT_EQ(38500000.1235, points.list[2]->getY());
  EXPECT_TRUE(std::isnan(points.list[3]->getZ()));
}

TEST(GetTPointList, NeedsThreePoints) {
  const OwnedSurface surface(scattered(2));
  EXPECT_TRUE(surface.getTPointList(surface.getSurfacePoints()).empty());
  EXPECT_TRUE(surface.getTPointList({}).empty());
}

TEST(GetTPointList, SkipsNullEntries) {
  const OwnedSurface surface(scattered(3));
  std::vector<SurfacePoint*> withNull = surface.getSurfacePoints();
  withNull.insert(withNull.begin() + 1, nullptr);
  const TPoints points(surface, withNull);
  EXPECT_EQ(3u, points.list.size());
}

}  // namespace
