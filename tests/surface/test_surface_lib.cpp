// The library of surfaces: positions, ownership, and that every operation reaches the surface that it names.
#include <climits>
#include <limits>
#include <memory>

#include <OrvikDTMAlgorithm/surface/DTMSurfaceLib.h>
#include <OrvikDTMAlgorithm/surface/DrawLine.h>
#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/surface/RangePoint.h>
#include <OrvikDTMAlgorithm/surface/RecordLayout.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>
#include <gtest/gtest.h>

#include "surface/Surfaces.h"

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

// A library that releases its surfaces.
class OwnedLib : public DTMSurfaceLib {
 public:
  OwnedLib() = default;
  OwnedLib(const OwnedLib&) = delete;
  OwnedLib& operator=(const OwnedLib&) = delete;
  ~OwnedLib() { release(); }

  DTMSurface* add(const char* name, const std::vector<Position>& positions) {
    DTMSurface* surface = addDTMSurface(name);
    for (const Position& at : positions) {
      surface->addSurfacePoint(newPoint("P", at), static_cast<unsigned long long>(surface->getPointsNumber()));
    }
    return surface;
  }
};

std::vector<Position> level(double z) { return {{100, 200, z}, {110, 200, z}, {110, 210, z}, {100, 210, z}}; }

// Every operation that takes an index, with one that names nothing.
void expectRefused(DTMSurfaceLib& lib, unsigned int index) {
  SCOPED_TRACE(index);
  const std::unique_ptr<SurfacePoint> point(newPoint("P", {1, 2, 3}));
  DrawLine mark(0, 0, 0, 0, false);
  std::vector<DrawLine*> lines{&mark};
  std::vector<SurfacePoint*> points{point.get()};
  double z = 77.0;

  EXPECT_EQ(0, lib.deleteDTMSurface(index));
  EXPECT_EQ(0, lib.releaseDTMSurface(index));
  EXPECT_EQ(0, lib.updateDTMSurface(index, 1, point.get()));
  EXPECT_FALSE(lib.previewDTMSurface(index, -kInf, kInf, -kInf, kInf, lines));
  EXPECT_EQ(nullptr, lib.getSurface(index));
  lib.getSurfacePoints(index, points);
  EXPECT_EQ(0, lib.exportFileSJW(index, "absent/x.sjw"));
  EXPECT_EQ(0, lib.saveSurface(index, "absent/x.ttin"));
  EXPECT_EQ(0, lib.checkSurfacePoint(index, 205, 105, &z));
  EXPECT_EQ(0, lib.addSurfacePoint(index, point.get()));
  EXPECT_EQ(0, lib.updateSurfacePoint(index, 0, point.get()));
  EXPECT_EQ(0, lib.deleteSurfacePoint(index, 0));
  lib.loadSurfacePointsFile(index, "absent/x.csv", points);
  EXPECT_EQ(0, lib.setRangeList(index, {}));
  EXPECT_EQ(nullptr, lib.getFillCut(index, 1.0));
  EXPECT_EQ(nullptr, lib.getFillCut(index, 0u));
  EXPECT_EQ(nullptr, lib.getFillCut(0u, index));
  for (const int kind : {0, 1}) {
    EXPECT_EQ(0, lib.exportVolumeReport(static_cast<int>(index), 1.0, kind, "A", "absent/report"));
    EXPECT_EQ(0, lib.exportVolumeReport(static_cast<int>(index), 0u, kind, "A", "absent/report"));
    EXPECT_EQ(0, lib.exportVolumeReport(0, index, kind, "A", "absent/report"));
  }

  EXPECT_EQ(77.0, z);
  EXPECT_EQ(std::vector<DrawLine*>{&mark}, lines);
  EXPECT_EQ(std::vector<SurfacePoint*>{point.get()}, points);
}

TEST(SurfaceLib, AnEmptyOneRefusesEveryIndex) {
  OwnedLib lib;
  for (const unsigned int index : {0u, 1u, static_cast<unsigned int>(INT_MAX), UINT_MAX}) expectRefused(lib, index);
}

TEST(SurfaceLib, ABadIndexChangesNothing) {
  OwnedLib lib;
  lib.add("one", risingSquare());
  for (const unsigned int index : {1u, static_cast<unsigned int>(INT_MIN), UINT_MAX}) expectRefused(lib, index);
  EXPECT_EQ(1u, lib.getSurfacesNumber());
  EXPECT_EQ(4, lib.getSurface(0)->getPointsNumber());
}

TEST(SurfaceLib, DeletingMovesLaterSurfacesDown) {
  OwnedLib lib;
  lib.addDTMSurface("first");
  lib.addDTMSurface("second");
  const DTMSurface* third = lib.addDTMSurface("third");
  EXPECT_EQ(1, lib.deleteDTMSurface(1));
  EXPECT_EQ(third, lib.getSurface(1));
  EXPECT_EQ(nullptr, lib.getSurface(2));
  EXPECT_EQ(1, lib.releaseDTMSurface(0));
  EXPECT_EQ(third, lib.getSurface(0));
  EXPECT_EQ(1u, lib.getSurfacesNumber());
}

TEST(SurfaceLib, ANameIsCutAfter23Bytes) {
  OwnedLib lib;
  EXPECT_STREQ("12345678901234567890123", lib.addDTMSurface("123456789012345678901234567890")->getSurfaceName());
  EXPECT_STREQ("", lib.addDTMSurface(nullptr)->getSurfaceName());
  EXPECT_EQ(0, lib.getSurface(1)->getPointsNumber());
}

TEST(SurfaceLib, DeletingASurfaceLeavesItsPointsAndItsTIN) {
  OwnedLib lib;
  DTMSurface* surface = lib.add("S", risingSquare());
  const std::unique_ptr<CEType> model(surface->getCEType());
  std::vector<SurfacePoint*> points;
  lib.getSurfacePoints(0, points);
  ASSERT_EQ(1, lib.deleteDTMSurface(0));
  EXPECT_EQ(15.5, model->getHeight(105, 205));
  for (SurfacePoint* point : points) {
    EXPECT_STREQ("S", point->getSurfaceName());
    delete point;
  }
}

TEST(SurfaceLib, DestructionLeavesThemToo) {
  std::vector<SurfacePoint*> points;
  {
    DTMSurfaceLib lib;
    SurfacePoint* point = newPoint("P", {1, 2, 3});
    lib.addDTMSurface("S");
    lib.addDTMSurface("T");
    lib.addSurfacePoint(1, point);
    lib.getSurfacePoints(1, points);
  }
  ASSERT_EQ(1u, points.size());
  EXPECT_STREQ("T", points[0]->getSurfaceName());
  delete points[0];
}

TEST(SurfaceLib, CopiesShareTheSurfaces) {
  OwnedLib lib;
  DTMSurface* surface = lib.addDTMSurface("S");
  DTMSurfaceLib copy(lib);
  DTMSurfaceLib assigned;
  assigned = copy;
  EXPECT_EQ(surface, copy.getSurface(0));
  EXPECT_EQ(surface, assigned.getSurface(0));
  copy.addDTMSurface("T");
  EXPECT_EQ(1u, lib.getSurfacesNumber());
  EXPECT_EQ(1, copy.deleteDTMSurface(1));

  // Only one list may delete the surface; an empty one in their place makes the others forget it.
  copy = DTMSurfaceLib();
  assigned = copy;
  EXPECT_EQ(surface, lib.getSurface(0));
}

TEST(SurfaceLib, PointsAreEditedInTheSurfaceThatIsNamed) {
  OwnedLib lib;
  lib.add("one", level(5));
  lib.add("two", risingSquare());

  EXPECT_EQ(1, lib.addSurfacePoint(1, newPoint("new", {120, 205, 30})));
  EXPECT_EQ("new", namesOf(*lib.getSurface(1)).back());
  EXPECT_STREQ("two", lib.getSurface(1)->getSurfacePoints().back()->getSurfaceName());
  EXPECT_EQ(1, lib.updateSurfacePoint(1, 4, newPoint("newer", {120, 205, 40})));
  EXPECT_EQ(40.0, lib.getSurface(1)->getMaxElev());
  EXPECT_EQ(1, lib.deleteSurfacePoint(1, 0));
  EXPECT_EQ(4, lib.getSurface(1)->getPointsNumber());
  EXPECT_EQ(4, lib.getSurface(0)->getPointsNumber());

  const std::unique_ptr<SurfacePoint> refused(newPoint("P", {1, 2, 3}));
  for (const int bad : {4, INT_MAX, -1, INT_MIN}) {
    EXPECT_EQ(0, lib.updateSurfacePoint(1, bad, refused.get()));
    EXPECT_EQ(0, lib.deleteSurfacePoint(1, bad));
  }
  EXPECT_EQ(0, lib.addSurfacePoint(1, nullptr));
  EXPECT_EQ(4, lib.getSurface(1)->getPointsNumber());
}

TEST(SurfaceLib, ACallersArray) {
  OwnedLib lib;
  lib.add("S", level(5));
  SurfacePoint array[3];
  array[1].setE(10);
  array[2].setN(10);
  EXPECT_EQ(1, lib.updateDTMSurface(0, 3, array));
  EXPECT_EQ(&array[2], lib.getSurface(0)->getSurfacePoints()[2]);
  EXPECT_EQ(1, lib.updateDTMSurface(0, 0, nullptr));
  std::vector<SurfacePoint*> points{&array[0]};
  lib.getSurfacePoints(0, points);
  EXPECT_TRUE(points.empty());
}

TEST(SurfaceLib, HeightsAndPreview) {
  OwnedLib lib;
  lib.add("one", level(5));
  lib.add("two", risingSquare());
  double z = 0.0;
  EXPECT_EQ(1, lib.checkSurfacePoint(1, 205, 105, &z));
  EXPECT_EQ(15.5, z);
  EXPECT_EQ(0, lib.checkSurfacePoint(1, 105, 205, &z));
  EXPECT_EQ(15.5, z);

  std::vector<DrawLine*> lines;
  EXPECT_TRUE(lib.previewDTMSurface(1, 99, 111, 199, 211, lines));
  EXPECT_EQ(9u, lines.size());
  EXPECT_TRUE(lib.previewDTMSurface(1, 199, 211, 99, 111, lines));
  EXPECT_EQ(9u, lines.size());
  for (const DrawLine* line : lines) delete line;
}

TEST(SurfaceLib, VolumesCarryTheNames) {
  OwnedLib lib;
  lib.add("ground", level(10));
  lib.add("design", level(12));
  const std::unique_ptr<FillCutResult> toLevel(lib.getFillCut(0, 8.0));
  ASSERT_NE(nullptr, toLevel);
  EXPECT_NEAR(200.0, toLevel->getCutVolume(), 1e-9);
  EXPECT_STREQ("ground", RecordLayout::surfaceName(*toLevel));
  EXPECT_STREQ("", RecordLayout::refSurfaceName(*toLevel));

  const std::unique_ptr<FillCutResult> toDesign(lib.getFillCut(0, 1u));
  ASSERT_NE(nullptr, toDesign);
  EXPECT_NEAR(200.0, toDesign->getFillVolume(), 1e-6);
  EXPECT_NEAR(0.0, toDesign->getCutVolume(), 1e-6);
  EXPECT_STREQ("ground", RecordLayout::surfaceName(*toDesign));
  EXPECT_STREQ("design", RecordLayout::refSurfaceName(*toDesign));
}

// Both TINs are only promised when the volume is asked for; the second time they are there.
TEST(SurfaceLib, VolumesOfPromisedAndOfStaleTINs) {
  OwnedLib lib;
  lib.add("ground", level(10));
  lib.add("design", level(12));
  const auto fill = [&] {
    const std::unique_ptr<FillCutResult> result(lib.getFillCut(0, 1u));
    return result->getFillVolume();
  };
  const double first = fill();
  EXPECT_EQ(first, fill());
  lib.getSurface(0)->setCEType(nullptr);
  lib.getSurface(1)->setCEType(nullptr);
  EXPECT_EQ(first, fill());
  EXPECT_FALSE(lib.getSurface(1)->isNeedInit());
}

TEST(SurfaceLib, ASurfaceAgainstItself) {
  OwnedLib lib;
  lib.add("S", risingSquare());
  const std::unique_ptr<FillCutResult> result(lib.getFillCut(0, 0u));
  ASSERT_NE(nullptr, result);
  EXPECT_NEAR(0.0, result->getFillVolume(), 1e-9);
  EXPECT_NEAR(0.0, result->getCutVolume(), 1e-9);
  EXPECT_STREQ("S", RecordLayout::surfaceName(*result));
  EXPECT_STREQ("S", RecordLayout::refSurfaceName(*result));
  EXPECT_EQ(15.5, lib.getSurface(0)->getCEType()->getHeight(105, 205));
}

TEST(SurfaceLib, SurfacesWithoutATINHaveNoVolumes) {
  OwnedLib lib;
  lib.add("two points", {{0, 0, 0}, {1, 0, 0}});
  lib.add("whole", risingSquare());
  EXPECT_EQ(nullptr, lib.getFillCut(0, 1.0));
  EXPECT_EQ(nullptr, lib.getFillCut(0, 1u));
  EXPECT_EQ(nullptr, lib.getFillCut(1, 0u));
  EXPECT_EQ(0, lib.setRangeList(0, {}));
}

TEST(SurfaceLib, TheBoundaryReachesTheTIN) {
  OwnedLib lib;
  lib.add("S", level(10));
  RangePoint corners[3] = {{"A", 200, 100, 7}, {"B", 200, 110, 7}, {"C", 210, 100, 7}};
  EXPECT_EQ(1, lib.setRangeList(0, {&corners[0], &corners[1], &corners[2]}));
  const std::vector<TPoint*>& range = lib.getSurface(0)->getCEType()->getRangeList();
  ASSERT_EQ(3u, range.size());
  EXPECT_EQ(110.0, range[1]->getX());
  EXPECT_EQ(200.0, range[1]->getY());
  EXPECT_EQ(0.0, range[1]->getZ());
  EXPECT_EQ(1, lib.setRangeList(0, {}));
  EXPECT_TRUE(range.empty());
}

TEST(SurfaceLib, ReleasingEmptiesIt) {
  DTMSurfaceLib lib;
  lib.addDTMSurface("S")->addSurfacePoint(newPoint("P", {1, 2, 3}), 0);
  lib.release();
  EXPECT_EQ(0u, lib.getSurfacesNumber());
  lib.release();
}

}  // namespace
