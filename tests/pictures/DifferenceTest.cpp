#include <cmath>
#include <memory>

#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/surface/RangePoint.h>
#include <gtest/gtest.h>

#include "Meshes.h"
#include "pictures/DepthBands.h"
#include "pictures/Difference.h"
#include "pictures/FillCutMap.h"
#include "pictures/Triangles.h"

namespace {

using pictures::Band;
using pictures::DifferencePoint;
using pictures::FillCutScene;
using pictures::Loop;
using pictures::Side;

struct Sums {
  double cutArea = 0.0;
  double fillArea = 0.0;
  double cutVolume = 0.0;
  double fillVolume = 0.0;
  double sameArea = 0.0;
};

// Areas and prisms of the bands, each cut into triangles.
Sums sumsOf(const FillCutScene& scene) {
  Sums sums;
  const double step = pictures::bandStep(scene.pieces);
  pictures::forEachBandPart(scene.pieces, step, [&](const Band& band, Loop& part) {
    double area = 0.0;
    double volume = 0.0;
    for (const auto& [a, b, c] : pictures::trianglesOf(part)) {
      const double once = pictures::doubleArea({a, b, c}) / 2.0;
      area += once;
      volume += once * (a.above + b.above + c.above) / 3.0;
    }
    EXPECT_NEAR(area, pictures::doubleArea(part) / 2.0, 1e-6);
    for (const DifferencePoint& p : part) {
      const double depth = band.side == Side::Fill ? -p.above : p.above;
      EXPECT_GE(depth, band.side == Side::Same ? 0.0 : band.depth * step);
      if (band.depth < pictures::kBands - 1) {
        EXPECT_LE(depth, (band.depth + 1) * step);
      }
    }
    (band.side == Side::Cut ? sums.cutArea : band.side == Side::Fill ? sums.fillArea : sums.sameArea) += area;
    (band.side == Side::Cut ? sums.cutVolume : sums.fillVolume) += std::fabs(volume);
  });
  return sums;
}

void expectEqual(const Sums& sums, const FillCutResult& exact, double coverage) {
  EXPECT_NEAR(sums.cutArea, exact.getCutTwoDArea(), 1e-6 * coverage + 1e-9);
  EXPECT_NEAR(sums.fillArea, exact.getFillTwoDArea(), 1e-6 * coverage + 1e-9);
  EXPECT_NEAR(sums.cutVolume, exact.getCutVolume(), 1e-5 * coverage + 1e-9);
  EXPECT_NEAR(sums.fillVolume, exact.getFillVolume(), 1e-5 * coverage + 1e-9);
  EXPECT_NEAR(sums.cutArea + sums.fillArea + sums.sameArea, coverage, 1e-6 * coverage + 1e-9);
}

double waves(double x, double y) { return 50.0 + 6.0 * std::sin(x / 9.0) + 4.0 * std::cos(y / 13.0); }
double slope(double x, double y) { return 50.0 + (x - 38500050.0) / 40.0 - (y - 3400050.0) / 60.0; }
double wavesThere(double x, double y) { return waves(x - 38500000.0, y - 3400000.0); }

// A star about the middle of the square, with inlets, in either direction.
std::vector<std::unique_ptr<RangePoint>> star(std::mt19937& random, int corners, bool clockwise) {
  std::uniform_real_distribution<double> radius(8.0, 70.0);
  std::vector<std::unique_ptr<RangePoint>> points;
  for (int i = 0; i < corners; ++i) {
    const double angle = (clockwise ? -1 : 1) * 2.0 * 3.141592653589793 * i / corners;
    const double r = radius(random);
    auto p = std::make_unique<RangePoint>();
    p->e = std::round((38500050.0 + r * std::cos(angle)) * 1000.0) / 1000.0;
    p->n = std::round((3400050.0 + r * std::sin(angle)) * 1000.0) / 1000.0;
    points.push_back(std::move(p));
  }
  return points;
}

void setBoundary(CEType& tin, const std::vector<std::unique_ptr<RangePoint>>& points) {
  std::vector<RangePoint*> pointers;
  for (const auto& p : points) pointers.push_back(p.get());
  tin.setRangeList(pointers);
}

TEST(Difference, AgainstALevelAddsUpToTheLibrarysVolumes) {
  std::mt19937 random(3);
  const meshes::Terrain ground = meshes::scattered(random, 800, 38500000.0, 3400000.0, 100.0, wavesThere);
  for (const double level : {40.0, 47.5, 50.0, 53.25, 70.0}) {
    double coverage = 0.0;
    const std::unique_ptr<FillCutResult> exact(ground.tin->getFillCutExact(level, &coverage));
    expectEqual(sumsOf(pictures::fillCutScene(*ground.tin, nullptr, level)), *exact, coverage);
  }
}

TEST(Difference, AgainstASurfaceWithinAnyBoundaryAddsUpToTheLibrarysVolumes) {
  std::mt19937 random(5);
  for (const int corners : {0, 3, 4, 12, 60}) {
    for (const bool clockwise : {false, true}) {
      const meshes::Terrain ground = meshes::scattered(random, 500, 38500000.0, 3400000.0, 100.0, wavesThere);
      const meshes::Terrain design = meshes::scattered(random, 60, 38500020.0, 3400010.0, 95.0, slope);
      setBoundary(*ground.tin, star(random, corners, clockwise));
      double coverage = 0.0;
      const std::unique_ptr<FillCutResult> exact(ground.tin->getFillCutExact(design.tin.get(), &coverage));
      ASSERT_GT(coverage, 100.0);
      expectEqual(sumsOf(pictures::fillCutScene(*ground.tin, design.tin.get(), 0.0)), *exact, coverage);
    }
  }
}

TEST(Difference, WithinABoundaryALevelEndsThere) {
  std::mt19937 random(6);
  const meshes::Terrain ground = meshes::scattered(random, 700, 38500000.0, 3400000.0, 100.0, wavesThere);
  for (int round = 0; round < 6; ++round) {
    setBoundary(*ground.tin, star(random, 5 + 9 * round, round % 2 == 0));
    double coverage = 0.0;
    const std::unique_ptr<FillCutResult> exact(ground.tin->getFillCutExact(50.5, &coverage));
    expectEqual(sumsOf(pictures::fillCutScene(*ground.tin, nullptr, 50.5)), *exact, coverage);
  }
}

TEST(Difference, BetweenASurfaceAndItselfIsNone) {
  std::mt19937 random(8);
  const meshes::Terrain ground = meshes::scattered(random, 300, 38500000.0, 3400000.0, 100.0, wavesThere);
  const Sums sums = sumsOf(pictures::fillCutScene(*ground.tin, ground.tin.get(), 0.0));
  EXPECT_EQ(sums.cutArea, 0.0);
  EXPECT_EQ(sums.fillArea, 0.0);
  EXPECT_NEAR(sums.sameArea, 10000.0, 1e-6);
}

TEST(Difference, WhereSurfacesDoNotMeetThereAreNoPieces) {
  std::mt19937 random(9);
  const meshes::Terrain ground = meshes::scattered(random, 50, 0.0, 0.0, 100.0, waves);
  const meshes::Terrain far = meshes::scattered(random, 50, 500.0, 0.0, 100.0, waves);
  EXPECT_EQ(pictures::fillCutScene(*ground.tin, far.tin.get(), 0.0).pieces.count(), 0U);
}

}  // namespace
