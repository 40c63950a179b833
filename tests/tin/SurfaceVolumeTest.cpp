// Fill and cut between two surfaces: number by number and piece by piece against a slow comparison that takes one step
// after the other, and against what simple surfaces must give.
#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>

#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/surface/RangePoint.h>
#include <OrvikDTMAlgorithm/surface/RecordLayout.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>
#include <OrvikDTMAlgorithm/tin/Triangle3.h>
#include <gtest/gtest.h>

#include "Inputs.h"
#include "LiteralComparison.h"
#include "TINSupport.h"
#include "VolumeSupport.h"

namespace {

using inputs::Positions;
using support::fillCut;
using support::Model;
using support::numbersOf;
using support::OwnedPoints;
using support::piecesOf;
using support::Polygon;
using support::setBoundary;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

literal::Comparison expectSame(const Positions& own, const Positions& reference, const Polygon& boundary = {}) {
  return support::expectSameComparison([&own] { return Model(own); }, [&reference] { return Model(reference); },
                                       boundary);
}

Positions moved(Positions positions, double dx, double dy, double dz) {
  for (auto& p : positions) {
    p[0] += dx;
    p[1] += dy;
    p[2] += dz;
  }
  return positions;
}

Positions grid(int columns, int rows, double spacing, const std::function<double(double, double)>& height) {
  Positions positions;
  for (int i = 0; i <= columns; ++i) {
    for (int j = 0; j <= rows; ++j) positions.push_back({i * spacing, j * spacing, height(i * spacing, j * spacing)});
  }
  return positions;
}

double waves(double x, double y) { return 10 + 2 * std::sin(x / 3) + std::cos(y / 5); }

// ---- against the slow comparison

TEST(SurfaceVolume, RandomSurfacesAgreeWithTheSlowComparison) {
  for (std::uint64_t seed = 1; seed <= 6; ++seed) {
    SCOPED_TRACE(seed);
    const auto expected =
        expectSame(inputs::randomMillimetres(seed, 30, 10, 0, 0), inputs::randomMillimetres(seed + 100, 45, 10, 0, 0));
    EXPECT_FALSE(expected.sparse);
    EXPECT_GT(expected.pieces.size(), 100u);
  }
}

TEST(SurfaceVolume, GridsAgreeWithTheSlowComparison) {
  // Vertices on edges and edges on edges: which triangle is found depends on the road.
  const Positions fine = grid(8, 8, 1.0, waves);
  const Positions coarse = moved(grid(4, 4, 2.0, waves), 0, 0, 0.125);
  EXPECT_TRUE(expectSame(fine, coarse).referenceWalked == false);
  EXPECT_TRUE(expectSame(coarse, fine).referenceWalked);
  expectSame(fine, moved(fine, 0, 0, 0.5));
  expectSame(fine, moved(fine, 0.5, 0.25, 0.01));
}

TEST(SurfaceVolume, SurfacesFarFromTheOriginAgreeWithTheSlowComparison) {
  for (std::uint64_t seed = 1; seed <= 3; ++seed) {
    SCOPED_TRACE(seed);
    expectSame(inputs::randomMillimetres(seed, 25, 8, 38500000, 3400000),
               inputs::randomMillimetres(seed + 7, 25, 8, 38500001, 3400002));
  }
}

TEST(SurfaceVolume, PartlyOverlappingAndNestedSurfacesAgreeWithTheSlowComparison) {
  for (std::uint64_t seed = 1; seed <= 3; ++seed) {
    SCOPED_TRACE(seed);
    const Positions one = inputs::randomMillimetres(seed, 40, 10, 0, 0);
    const Positions aside = inputs::randomMillimetres(seed + 20, 40, 10, 6, -3);
    const Positions within = inputs::randomMillimetres(seed + 40, 20, 4, 3, 3);
    expectSame(one, aside);
    EXPECT_TRUE(expectSame(one, within).referenceWalked);
    EXPECT_FALSE(expectSame(within, one).referenceWalked);
  }
}

TEST(SurfaceVolume, SurfacesThatShareFewPointsAgreeWithTheSlowComparison) {
  const auto expected =
      expectSame(inputs::randomMillimetres(3, 6, 12, 0, 0), inputs::randomMillimetres(4, 50, 15, 0, 0));
  EXPECT_TRUE(expected.sparse);
  const auto corner =
      expectSame(inputs::randomMillimetres(5, 40, 10, 0, 0), inputs::randomMillimetres(6, 40, 10, 8, 8));
  EXPECT_TRUE(corner.sparse);
}

TEST(SurfaceVolume, BoundariesAgreeWithTheSlowComparison) {
  const Polygon square = {{2, 2}, {8, 2}, {8, 8}, {2, 8}};
  const Polygon clockwise = {{2, 8}, {8, 8}, {8, 2}, {2, 2}, {2, 8}};
  const Polygon concave = {{1, 1}, {9, 1}, {9, 9}, {5, 3}, {1, 9}};
  const Polygon crossing = {{1, 1}, {9, 9}, {9, 1}, {1, 9}};
  const Polygon beyond = {{5, 5}, {30, 5}, {30, 30}, {5, 30}};
  for (std::uint64_t seed = 1; seed <= 2; ++seed) {
    for (const Polygon& boundary : {square, clockwise, concave, crossing, beyond}) {
      expectSame(inputs::randomMillimetres(seed, 30, 10, 0, 0), inputs::randomMillimetres(seed + 9, 30, 10, 1, 0),
                 boundary);
    }
    const auto swapped = expectSame(inputs::randomMillimetres(seed, 30, 10, 0, 0),
                                    inputs::randomMillimetres(seed + 9, 30, 7, 1, 1), concave);
    EXPECT_TRUE(swapped.referenceWalked);
  }
}

TEST(SurfaceVolume, LargeTrianglesAgreeWithTheSlowComparison) {
  // Splits end at exactly a hundred pieces, or run past that number.
  const Positions large = {{0, 0, 5}, {200, 0, 6}, {200, 180, 4}, {0, 180, 5}, {90, 80, 9}};
  const Positions many = inputs::randomMillimetres(8, 300, 210, -5, -5);
  expectSame(large, many);
  expectSame(many, large);
}

TEST(SurfaceVolume, TouchingHeightsAgreeWithTheSlowComparison) {
  inputs::Random random(5);
  Positions flat = inputs::randomMillimetres(11, 30, 10, 0, 0);
  Positions rough = inputs::randomMillimetres(12, 30, 10, 0, 0);
  for (auto& p : flat) p[2] = 3;
  for (auto& p : rough) p[2] = static_cast<double>(random.between(2, 4));
  expectSame(flat, rough);
  for (auto& p : rough) p[2] = 3 + static_cast<double>(random.between(-2, 2)) * 6e-8;
  expectSame(rough, flat);
}

// ---- meaning

TEST(SurfaceVolume, IdenticalSurfacesGiveZerosAndNoPieces) {
  for (const double east : {0.0, 500000.0, 38500000.0}) {
    const Positions positions = inputs::randomMillimetres(21, 400, 300, east, 3400000);
    Model one(positions);
    Model two(positions);
    const auto result = fillCut(*one.tin, *two.tin);
    EXPECT_EQ(numbersOf(*result), (std::array<double, 10>{}));
    EXPECT_TRUE(one.tin->getTriangle3List().empty());
    EXPECT_TRUE(two.tin->getTriangle3List().empty());
    EXPECT_EQ(RecordLayout::twoDArea(*result), one.tin->getArea2D());
  }
}

TEST(SurfaceVolume, ASurfaceComparedWithItselfGivesZeros) {
  Model one(inputs::randomMillimetres(22, 50, 30, 0, 0));
  setBoundary(*one.tin, {{0, 0}, {20, 0}, {20, 20}});
  const auto result = fillCut(*one.tin, *one.tin);
  EXPECT_EQ(numbersOf(*result), (std::array<double, 10>{}));
  EXPECT_TRUE(one.tin->getTriangle3List().empty());
}

TEST(SurfaceVolume, ARaisedCopyGivesItsAreaTimesTheDifference) {
  for (const double east : {0.0, 38500000.0}) {
    const Positions positions = inputs::randomMillimetres(23, 200, 100, east, 0);
    Model ground(positions);
    Model raised(moved(positions, 0, 0, 1));
    const double area = ground.tin->getArea2D();
    const auto fill = fillCut(*ground.tin, *raised.tin);
    EXPECT_NEAR(fill->getFillTwoDArea(), area, 1e-6 * area);
    EXPECT_NEAR(fill->getFillVolume(), area, 1e-4 * area);
    EXPECT_NEAR(fill->getFillThreeDArea(), ground.tin->getArea3D(), 1e-6 * area);
    EXPECT_NEAR(fill->getCutVolume(), 0.0, 1e-4 * area);
    const auto cut = fillCut(*raised.tin, *ground.tin);
    EXPECT_NEAR(cut->getCutTwoDArea(), area, 1e-6 * area);
    EXPECT_NEAR(cut->getCutVolume(), area, 1e-4 * area);
  }
}

TEST(SurfaceVolume, SurfacesApartGiveZeros) {
  Model one(inputs::randomMillimetres(24, 50, 30, 0, 0));
  Model two(inputs::randomMillimetres(25, 50, 30, 100, 100));
  EXPECT_EQ(numbersOf(*fillCut(*one.tin, *two.tin)), (std::array<double, 10>{}));
  EXPECT_TRUE(one.tin->getTriangle3List().empty());
  EXPECT_EQ(numbersOf(*fillCut(*two.tin, *one.tin)), (std::array<double, 10>{}));
}

// Fill means that the measured surface lies below the reference, whichever of the two is walked.
TEST(SurfaceVolume, FillAndCutKeepTheirMeaningWhicheverNetworkIsWalked) {
  const auto low = [](double, double) { return 5.0; };
  const auto high = [](double, double) { return 7.0; };
  Model smallLow(moved(grid(4, 4, 2.0, low), 4, 4, 0));
  Model largeHigh(grid(10, 10, 2.0, high));
  const auto fill = fillCut(*smallLow.tin, *largeHigh.tin);
  EXPECT_NEAR(fill->getFillVolume(), 128, 1e-9);
  EXPECT_EQ(fill->getCutVolume(), 0.0);
  EXPECT_EQ(smallLow.tin->getTriangle3List()[0]->getStatus(), -1);
  const auto cut = fillCut(*largeHigh.tin, *smallLow.tin);
  EXPECT_NEAR(cut->getCutVolume(), 128, 1e-9);
  EXPECT_EQ(cut->getFillVolume(), 0.0);
  EXPECT_EQ(largeHigh.tin->getTriangle3List()[0]->getStatus(), 1);
}

TEST(SurfaceVolume, EqualAreasAreDecidedByTheNumberOfTriangles) {
  const auto flat = [](double, double) { return 1.0; };
  const auto pane = [](double, double) { return 2.0; };
  const Positions coarse = grid(4, 4, 2.0, flat);
  const Positions fine = grid(8, 8, 1.0, pane);
  EXPECT_FALSE(expectSame(fine, coarse).referenceWalked);  // the reference has fewer: this one is walked
  EXPECT_TRUE(expectSame(coarse, fine).referenceWalked);
  EXPECT_TRUE(expectSame(coarse, moved(coarse, 0, 0, 1)).referenceWalked);  // as many: the reference is walked
}

// A plane that cuts through a level surface along the middle: as much above as below.
TEST(SurfaceVolume, CrossingPlanesGiveTheirWedges) {
  const auto slope = [](double x, double) { return x / 10 - 1; };
  const auto level = [](double, double) { return 0.0; };
  Model ground(grid(20, 10, 1.0, slope));
  Model design(moved(grid(12, 8, 2.0, level), -2, -3, 0));
  const auto result = fillCut(*ground.tin, *design.tin);
  EXPECT_NEAR(result->getCutVolume(), 50, 1e-6);
  EXPECT_NEAR(result->getFillVolume(), 50, 1e-6);
  EXPECT_NEAR(result->getCutTwoDArea() + result->getFillTwoDArea(), 200, 1e-6);
}

TEST(SurfaceVolume, EmptyNetworksGiveZeros) {
  Model one(inputs::randomMillimetres(26, 50, 30, 0, 0));
  const auto empty = makeTIN(OwnedPoints(), {});
  CEType nothing(nullptr, nullptr, nullptr);
  for (CEType* other : {empty.get(), &nothing}) {
    EXPECT_EQ(numbersOf(*fillCut(*one.tin, *other)), (std::array<double, 10>{}));
    EXPECT_EQ(numbersOf(*fillCut(*other, *one.tin)), (std::array<double, 10>{}));
    EXPECT_TRUE(other->getTriangle3List().empty());
  }
  EXPECT_EQ(numbersOf(*fillCut(nothing, *empty)), (std::array<double, 10>{}));
}

TEST(SurfaceVolume, NoReferenceGivesNoRecord) {
  Model one(inputs::randomMillimetres(27, 20, 30, 0, 0));
  const std::unique_ptr<FillCutResult> level(one.tin->getFillCut(5.0));
  EXPECT_EQ(one.tin->getFillCut(nullptr), nullptr);
  EXPECT_TRUE(one.tin->getTriangle3List().empty());
}

TEST(SurfaceVolume, TotalsAreTheMeasuredSurfacesOwn) {
  Model one(inputs::randomMillimetres(28, 30, 10, 0, 0));
  Model two(inputs::randomMillimetres(29, 30, 6, 2, 2));
  const auto result = fillCut(*one.tin, *two.tin);
  EXPECT_EQ(RecordLayout::twoDArea(*result), one.tin->getArea2D());
  EXPECT_EQ(RecordLayout::threeDArea(*result), one.tin->getArea3D());
  EXPECT_EQ(RecordLayout::perimeterTwoD(*result), one.tin->getTotalLength2D());
  EXPECT_EQ(RecordLayout::perimeterThreeD(*result), one.tin->getTotalLength3D());
  EXPECT_STREQ(RecordLayout::surfaceName(*result), "");
  EXPECT_STREQ(RecordLayout::refSurfaceName(*result), "");
}

// ---- the drawing list

TEST(SurfaceVolume, TheListIsWhatWasComparedEvenWhenTheReferenceIsGone) {
  const Positions own = inputs::randomMillimetres(31, 30, 10, 0, 0);
  const Positions reference = inputs::randomMillimetres(32, 30, 10, 1, 0);
  Model at(own);
  Model atOnce(reference);
  fillCut(*at.tin, *atOnce.tin);
  const auto expected = piecesOf(*at.tin);
  Model later(own);
  auto gone = std::make_unique<Model>(reference);
  setBoundary(*later.tin, {});
  fillCut(*later.tin, *gone->tin);
  gone.reset();
  later.points[0]->setZ(1000);
  setBoundary(*later.tin, {{0, 0}, {1, 0}, {0, 1}});
  later.tin->locateTri(9, 9);
  EXPECT_FALSE(expected.empty());
  EXPECT_TRUE(piecesOf(*later.tin) == expected);
}

TEST(SurfaceVolume, TheListReflectsTheLatestComputation) {
  Model one(inputs::randomMillimetres(33, 30, 10, 0, 0));
  Model two(inputs::randomMillimetres(34, 30, 10, 0, 0));
  fillCut(*one.tin, *two.tin);
  const std::size_t first = one.tin->getTriangle3List().size();
  fillCut(*one.tin, *two.tin);
  EXPECT_NE(first, 0u);
  EXPECT_EQ(one.tin->getTriangle3List().size(), first);
  const std::unique_ptr<FillCutResult> level(one.tin->getFillCut(-100.0));
  EXPECT_EQ(static_cast<int>(one.tin->getTriangle3List().size()), support::triangleCount(*one.tin));
  fillCut(*one.tin, *one.tin);
  EXPECT_TRUE(one.tin->getTriangle3List().empty());
}

// Heights and positions as they are now, not as some query found them.
TEST(SurfaceVolume, PointsThatWereMovedInPlaceAreSeen) {
  const Positions positions = grid(6, 6, 1.0, [](double, double) { return 4.0; });
  Model one(positions);
  Model two(moved(positions, 0, 0, 1));
  EXPECT_EQ(one.tin->getHeight(2.5, 2.25), 4.0);
  EXPECT_NEAR(fillCut(*one.tin, *two.tin)->getFillVolume(), 36, 1e-9);
  for (std::size_t i = 0; i < one.points.size(); ++i) one.points[i]->setZ(7.0);
  EXPECT_NEAR(fillCut(*one.tin, *two.tin)->getCutVolume(), 72, 1e-9);
}

// ---- what no survey has

TEST(SurfaceVolume, BrokenNetworksAreComparedAsFarAsTheyGo) {
  const OwnedPoints points(Positions{{0, 0, 1}, {10, 0, 2}, {10, 10, 3}, {0, 10, 4}});
  const auto broken = makeTIN(points, {{{1, 2, 1, 0}, {2, 3, 1, 99}, {3, 1, 1, -7}, {3, 4, 2, 0}, {4, 0, 2, 0}},
                                       {{1, 2, 3}, {3, 4, 5}, {77, -1, 0}, {1, 88, 2}},
                                       {1, 2, 4, 5}});
  Model whole(moved(grid(4, 4, 3.0, [](double, double) { return 0.0; }), -1, -1, 0));
  const auto result = fillCut(*broken, *whole.tin);
  EXPECT_TRUE(std::isfinite(result->getCutVolume()));
  const auto turned = fillCut(*whole.tin, *broken);
  EXPECT_TRUE(std::isfinite(turned->getFillVolume()));
  broken->getTriangle3List();
  whole.tin->getTriangle3List();
}

TEST(SurfaceVolume, WildCoordinatesEndWithoutAFault) {
  for (const inputs::Kind& kind : inputs::wildKinds()) {
    SCOPED_TRACE(kind.name);
    const Positions wild = inputs::make(kind, 5, 30).points;
    Model tame(inputs::randomMillimetres(41, 20, 50, 0, 0));
    Model ours(wild);
    if (ours.tin == nullptr) continue;
    EXPECT_NE(fillCut(*ours.tin, *tame.tin), nullptr);
    EXPECT_NE(fillCut(*tame.tin, *ours.tin), nullptr);
    tame.tin->getTriangle3List();
  }
}

TEST(SurfaceVolume, CoordinatesThatOverflowEndWithoutAFault) {
  for (const double far : {1e150, 1e200, 1e308, kInfinity, kNaN}) {
    SCOPED_TRACE(far);
    const OwnedPoints points(Positions{{0, 0, 1}, {far, 0, 2}, {0, 10, 3}});
    const auto huge = makeTIN(points, {{{1, 2, 1, 0}, {2, 3, 1, 0}, {3, 1, 1, 0}}, {{1, 2, 3}}, {1, 2, 3}});
    Model tame(inputs::randomMillimetres(42, 60, 50, 0, 0));
    EXPECT_NE(fillCut(*huge, *tame.tin), nullptr);
    EXPECT_NE(fillCut(*tame.tin, *huge), nullptr);
    tame.tin->getTriangle3List();
  }
}

TEST(SurfaceVolume, AHeightThatIsNotANumberShowsInTheResult) {
  Positions positions = grid(6, 6, 1.0, [](double, double) { return 4.0; });
  Model reference(moved(positions, 0, 0, 1));
  positions[24][2] = kNaN;
  Model one(positions);
  const auto result = fillCut(*one.tin, *reference.tin);
  EXPECT_TRUE(std::isnan(result->getFillVolume()));
  positions[24][2] = kInfinity;
  Model infinite(positions);
  EXPECT_NE(fillCut(*infinite.tin, *reference.tin), nullptr);
}

}  // namespace
