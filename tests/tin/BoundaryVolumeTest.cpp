// Volumes within a boundary polygon, against a level and against a second surface, compared with the exact integral
// over the polygon, which is known where the surface is a plane.
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <vector>

#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/surface/RangePoint.h>
#include <OrvikDTMAlgorithm/surface/RecordLayout.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/PolygonIndex.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>
#include <OrvikDTMAlgorithm/tin/Triangle3.h>
#include <gtest/gtest.h>

#include "Inputs.h"
#include "TINSupport.h"
#include "VolumeSupport.h"

namespace {

using inputs::Positions;
using support::OwnedPoints;
using support::Polygon;
using support::setBoundary;

using Vertex = Polygon::value_type;

// The site: 40 x 40 units on the plane z = 10 + x / 10 - y / 20, relative to its corner.
constexpr int kSide = 40;

double ground(double x, double y) { return 10 + x / 10 - y / 20; }

Positions site(double east, double north) {
  Positions positions;
  for (int i = 0; i <= kSide; i += 2) {
    for (int j = 0; j <= kSide; j += 2) {
      positions.push_back({east + i, north + j, ground(i, j)});
    }
  }
  return positions;
}

double signedArea(const Polygon& polygon) {
  double sum = 0;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const Vertex& a = polygon[i];
    const Vertex& b = polygon[(i + 1) % polygon.size()];
    sum += a[0] * b[1] - b[0] * a[1];
  }
  return sum / 2;
}

// The integral of the ground over a simple polygon, by Green's formula.
double groundOver(const Polygon& polygon) {
  double momentX = 0;
  double momentY = 0;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const Vertex& a = polygon[i];
    const Vertex& b = polygon[(i + 1) % polygon.size()];
    const double cross = a[0] * b[1] - b[0] * a[1];
    momentX += (a[0] + b[0]) * cross / 6;
    momentY += (a[1] + b[1]) * cross / 6;
  }
  const double area = signedArea(polygon);
  return std::fabs(10 * area + momentX / 10 - momentY / 20);
}

double perimeter(const Polygon& polygon) {
  double sum = 0;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const Vertex& a = polygon[i];
    const Vertex& b = polygon[(i + 1) % polygon.size()];
    sum += std::hypot(b[0] - a[0], b[1] - a[1]);
  }
  return sum;
}

Polygon moved(const Polygon& polygon, double dx, double dy) {
  Polygon result = polygon;
  for (Vertex& v : result) v = {v[0] + dx, v[1] + dy};
  return result;
}

class SlopingSite : public testing::TestWithParam<Vertex> {
 protected:
  std::unique_ptr<FillCutResult> within(const Polygon& polygon, double level) {
    setBoundary(*tin_, moved(polygon, GetParam()[0], GetParam()[1]));
    return std::unique_ptr<FillCutResult>(tin_->getFillCut(level));
  }

  // All of the ground lies above the level, so the cut is the ground's integral over the polygon, here given as what of
  // it lies on the site.
  void expectVolumeOver(const Polygon& polygon, const Polygon& onSite) {
    const double area = std::fabs(signedArea(onSite));
    const double volume = groundOver(onSite) - 2 * area;
    const auto result = within(polygon, 2);
    ASSERT_NE(result, nullptr);
    const double band = kHalfBand * perimeter(onSite);
    EXPECT_NEAR(result->getCutTwoDArea(), area, band);
    EXPECT_NEAR(result->getCutVolume(), volume, band * (ground(kSide, 0) - 2));
    EXPECT_EQ(result->getFillVolume(), 0.0);
  }

  // What a boundary costs: the last pieces that it passes through are measured whole, or not at all. A triangle of the
  // boundary's network comes down to pieces of about a hundredth of its sides' length.
  static constexpr double kHalfBand = 0.08;

  OwnedPoints points_{site(GetParam()[0], GetParam()[1])};
  std::unique_ptr<CEType> tin_ = support::triangulate(points_);
};

const Polygon kSquare = {{10, 10}, {30, 10}, {30, 30}, {10, 30}};
const Polygon kConcave = {{5, 5}, {35, 5}, {35, 35}, {20, 12}, {5, 35}};
const Polygon kStar = {{20, 36}, {17, 23}, {4, 20}, {17, 17}, {20, 4}, {23, 17}, {36, 20}, {23, 23}};

TEST_P(SlopingSite, SimplePolygonsGiveTheirVolume) {
  for (const Polygon& polygon : {kSquare, kConcave, kStar}) expectVolumeOver(polygon, polygon);
}

TEST_P(SlopingSite, ClockwisePolygonsGiveTheSame) {
  for (const Polygon& polygon : {kSquare, kConcave, kStar}) {
    expectVolumeOver(Polygon(polygon.rbegin(), polygon.rend()), polygon);
  }
}

TEST_P(SlopingSite, AFirstVertexRepeatedAtTheEndDoesNotCount) {
  for (const Polygon& polygon : {kSquare, kConcave, kStar}) {
    Polygon closed = polygon;
    closed.push_back(polygon.front());
    expectVolumeOver(closed, polygon);
    closed.insert(closed.begin() + 2, polygon[1]);
    expectVolumeOver(closed, polygon);
  }
}

TEST_P(SlopingSite, PolygonsThatLeaveTheSiteGiveWhatLiesOnIt) {
  expectVolumeOver({{20, 20}, {70, 20}, {70, 70}, {20, 70}}, {{20, 20}, {40, 20}, {40, 40}, {20, 40}});
  expectVolumeOver({{-20, 10}, {30, 10}, {30, 30}, {-20, 30}}, {{0, 10}, {30, 10}, {30, 30}, {0, 30}});
}

TEST_P(SlopingSite, PolygonsAroundTheSiteGiveAllOfIt) {
  expectVolumeOver({{-30, -30}, {90, -30}, {90, 90}, {-30, 90}}, {{0, 0}, {40, 0}, {40, 40}, {0, 40}});
}

TEST_P(SlopingSite, PolygonsBesideTheSiteGiveNothing) {
  const auto result = within({{100, 100}, {120, 100}, {110, 130}}, 2);
  EXPECT_EQ(result->getCutVolume(), 0.0);
  EXPECT_EQ(result->getCutTwoDArea(), 0.0);
  EXPECT_TRUE(tin_->getTriangle3List().empty());
}

TEST_P(SlopingSite, PolygonsWithoutAreaGiveNothing) {
  for (const Polygon& polygon : {Polygon{{10, 10}, {20, 20}, {30, 30}}, Polygon{{10, 10}, {10, 10}, {10, 10}},
                                 Polygon{{10, 10}, {20, 10}, {10, 10}, {20, 10}}}) {
    const auto result = within(polygon, 2);
    ASSERT_NE(result, nullptr);
    EXPECT_NEAR(result->getCutVolume() + result->getFillVolume(), 0.0, 1e-9);
    EXPECT_EQ(RecordLayout::twoDArea(*result), tin_->getArea2D());
  }
}

// Even-odd: the part that is run round twice does not count.
TEST_P(SlopingSite, PolygonsThatCrossThemselvesCountEvenOdd) {
  const Polygon bow = {{10, 10}, {30, 30}, {30, 10}, {10, 30}};
  const auto result = within(bow, 2);
  const double area = 200;  // two triangles
  EXPECT_NEAR(result->getCutTwoDArea(), area, 0.02 * area);
  const double volume =
      groundOver({{10, 10}, {20, 20}, {10, 30}}) + groundOver({{30, 30}, {20, 20}, {30, 10}}) - 2 * area;
  EXPECT_NEAR(result->getCutVolume(), volume, 0.02 * volume);
}

TEST_P(SlopingSite, TheLevelSplitsTheGroundIntoFillAndCut) {
  // The ground is 11 along x = 10 + y / 2, which parts the square into two trapezia of mean widths 10 and 10.
  const auto result = within(kSquare, ground(20, 20));
  EXPECT_NEAR(result->getCutTwoDArea() + result->getFillTwoDArea(), 400, 4);
  EXPECT_NEAR(result->getCutVolume(), result->getFillVolume(), 0.02 * result->getCutVolume());
  EXPECT_NEAR(result->getCutTwoDArea(), result->getFillTwoDArea(), 8);
}

TEST_P(SlopingSite, OnlyTheHeightsOfTheStoredPointsChange) {
  const Polygon polygon = moved(kStar, GetParam()[0] + 0.0001234, GetParam()[1] + 0.0004321);
  setBoundary(*tin_, polygon);
  const std::vector<TPoint*> before = tin_->getRangeList();
  const std::unique_ptr<FillCutResult> result(tin_->getFillCut(7.5));
  EXPECT_EQ(tin_->getRangeList(), before);
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    EXPECT_EQ(before[i]->getX(), polygon[i][0]);
    EXPECT_EQ(before[i]->getY(), polygon[i][1]);
    EXPECT_EQ(before[i]->getZ(), 7.5);
  }
}

TEST_P(SlopingSite, PiecesOfALevelWithinABoundaryLieInThePolygon) {
  const auto result = within(kSquare, 2);
  double area = 0;
  for (const auto& t : tin_->getTriangle3List()) {
    EXPECT_EQ(t->getStatus(), 1);
    area += std::fabs(signedArea({{t->getP1()->getX() - GetParam()[0], t->getP1()->getY() - GetParam()[1]},
                                  {t->getP2()->getX() - GetParam()[0], t->getP2()->getY() - GetParam()[1]},
                                  {t->getP3()->getX() - GetParam()[0], t->getP3()->getY() - GetParam()[1]}}));
  }
  EXPECT_NEAR(area, result->getCutTwoDArea(), 1e-5 * area);
}

TEST_P(SlopingSite, ASecondSurfaceWithinABoundary) {
  Positions above = site(GetParam()[0] - 3, GetParam()[1] - 5);
  for (auto& p : above) p[2] = ground(p[0] - GetParam()[0], p[1] - GetParam()[1]) + 2;
  const OwnedPoints points(above);
  const auto reference = support::triangulate(points);
  for (const Polygon& polygon : {Polygon{{10, 5}, {30, 5}, {30, 30}, {10, 30}}, Polygon{{2, 2}, {34, 3}, {20, 30}}}) {
    setBoundary(*tin_, moved(polygon, GetParam()[0], GetParam()[1]));
    const std::unique_ptr<FillCutResult> result(tin_->getFillCut(reference.get()));
    const double area = std::fabs(signedArea(polygon));
    EXPECT_NEAR(result->getFillTwoDArea(), area, 0.02 * area);
    EXPECT_NEAR(result->getFillVolume(), 2 * area, 0.02 * 2 * area);
    EXPECT_EQ(result->getCutTwoDArea(), 0.0);
    const std::unique_ptr<FillCutResult> turned(reference->getFillCut(tin_.get()));
    EXPECT_GT(turned->getCutTwoDArea(), area) << "the other network has no boundary";
  }
}

TEST_P(SlopingSite, HeightsOnAGridEndAtTheBoundary) {
  const double east = GetParam()[0];
  const double north = GetParam()[1];
  for (Polygon polygon : {kSquare, kConcave, kStar, Polygon{{10, 10}, {30, 30}, {30, 10}, {10, 30}},
                          Polygon{{20, 20}, {70, 20}, {70, 70}, {20, 70}}, Polygon{{10, 10}, {20, 20}, {30, 30}}}) {
    for (int round = 0; round < 3; ++round) {
      if (round == 1) polygon = Polygon(polygon.rbegin(), polygon.rend());
      if (round == 2) polygon.push_back(polygon.front());
      setBoundary(*tin_, moved(polygon, east, north));
      const auto grid = tin_->proxyTri(east - 1, north - 1, 21, 21, 2);
      for (int i = 0; i <= 21; ++i) {
        for (int j = 0; j <= 21; ++j) {
          const double x = 2 * i - 1;
          const double y = 2 * j - 1;
          const TPoint p(east + x, north + y, 0);
          const bool onSite = x >= 0 && x <= kSide && y >= 0 && y <= kSide;
          const double height = grid[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)];
          if (onSite && Surface::isPtInPolygon(&p, tin_->getRangeList())) {
            ASSERT_NEAR(height, ground(x, y), 1e-6);
          } else {
            ASSERT_EQ(height, std::numeric_limits<double>::max());
          }
        }
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Sites, SlopingSite,
                         testing::Values(Vertex{0, 0}, Vertex{-20, -20}, Vertex{500000, 3400000},
                                         Vertex{38500000, 3400000}),
                         [](const auto& site) { return "Site" + std::to_string(site.index + 1); });

// By the comparison with shifted coordinates (20, 0) repeats the corner (0, -20), which has moved there.
TEST(BoundaryVolume, ACornerThatCoincidesWithAShiftedOneCounts) {
  Positions positions;
  for (int i = -40; i <= 40; i += 4) {
    for (int j = -40; j <= 40; j += 4) positions.push_back({1.0 * i, 1.0 * j, 3.0});
  }
  const OwnedPoints points(positions);
  const auto tin = support::triangulate(points);
  const Polygon polygon = {{-20, 0}, {0, -20}, {20, 0}, {20, 20}, {0, 20}};
  setBoundary(*tin, polygon);
  const std::unique_ptr<FillCutResult> result(tin->getFillCut(1.0));
  const double area = std::fabs(signedArea(polygon));
  EXPECT_NEAR(result->getCutTwoDArea(), area, 0.01 * area);
  EXPECT_NEAR(result->getCutVolume(), 2 * area, 0.02 * area);
  EXPECT_EQ(Surface::COMPAREUNSHIFTED, 0);
}

TEST(BoundaryVolume, VerticesThatAreNoNumbersEndWithoutAFault) {
  const OwnedPoints points(site(0, 0));
  const auto tin = support::triangulate(points);
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  for (const double odd : {kNaN, kInfinity, -kInfinity, 1e300}) {
    setBoundary(*tin, {{10, 10}, {30, 10}, {odd, 30}, {10, 30}});
    const std::unique_ptr<FillCutResult> result(tin->getFillCut(2));
    EXPECT_NE(result, nullptr);
    setBoundary(*tin, {{odd, odd}, {odd, odd}, {odd, odd}});
    EXPECT_NE(std::unique_ptr<FillCutResult>(tin->getFillCut(2)), nullptr);
  }
  setBoundary(*tin, kSquare);
  for (const double level : {kNaN, kInfinity, -kInfinity}) {
    EXPECT_NE(std::unique_ptr<FillCutResult>(tin->getFillCut(level)), nullptr);
    tin->getTriangle3List();
  }
  tin->getRangeList()[0] = (delete tin->getRangeList()[0], nullptr);
  EXPECT_NE(std::unique_ptr<FillCutResult>(tin->getFillCut(2)), nullptr);
}

TEST(BoundaryVolume, NetworksWithoutTrianglesGiveZeros) {
  const auto empty = makeTIN(OwnedPoints(), {});
  CEType nothing(nullptr, nullptr, nullptr);
  for (CEType* tin : {empty.get(), &nothing}) {
    setBoundary(*tin, kSquare);
    const std::unique_ptr<FillCutResult> result(tin->getFillCut(2));
    ASSERT_NE(result, nullptr);
    EXPECT_EQ(result->getCutVolume(), 0.0);
    EXPECT_TRUE(tin->getTriangle3List().empty());
  }
}

// ---- the index of a polygon's sides

void expectSameAnswers(const std::vector<TPoint*>& polygon, const std::vector<TPoint>& asked) {
  const detail::PolygonIndex index(polygon);
  for (const TPoint& p : asked) {
    ASSERT_EQ(index.contains({p.getX(), p.getY()}), Surface::isPtInPolygon(&p, polygon)) << p.getX() << "," << p.getY();
  }
}

TEST(PolygonIndex, AnswersAsThePlainTestDoes) {
  inputs::Random random(17);
  for (int round = 0; round < 600; ++round) {
    OwnedPoints vertices;
    const auto corners = random.between(0, round % 10 == 0 ? 300 : 12);
    const bool lattice = round % 2 == 0;
    const auto coordinate = [&] {
      return lattice ? static_cast<double>(random.between(-6, 6)) : 12 * random.unit() - 6;
    };
    for (std::int64_t i = 0; i < corners; ++i) vertices.add(coordinate(), coordinate(), 0);
    std::vector<TPoint*> polygon = vertices.pointers();
    if (round % 7 == 0) polygon.push_back(nullptr);
    std::vector<TPoint> asked;
    for (int i = 0; i < 60; ++i) asked.emplace_back(coordinate(), coordinate(), 0);
    for (std::size_t i = 0; i < vertices.size(); ++i) {
      const TPoint& a = *vertices[i];
      const TPoint& b = *vertices[(i + 1) % vertices.size()];
      asked.push_back(a);
      asked.emplace_back((a.getX() + b.getX()) / 2, (a.getY() + b.getY()) / 2, 0);
      asked.emplace_back((a.getX() + b.getX()) / 2, (a.getY() + b.getY()) / 2 - 1e-10, 0);
    }
    expectSameAnswers(polygon, asked);
  }
}

TEST(PolygonIndex, AnswersAsThePlainTestDoesOnWhatNoSurveyHas) {
  constexpr double kOdd[] = {0,
                             1,
                             -1,
                             1e300,
                             -1e300,
                             5e-324,
                             std::numeric_limits<double>::quiet_NaN(),
                             std::numeric_limits<double>::infinity(),
                             -std::numeric_limits<double>::infinity()};
  inputs::Random random(18);
  const auto any = [&] { return kOdd[random.between(0, 8)]; };
  for (int round = 0; round < 2000; ++round) {
    OwnedPoints vertices;
    const auto corners = random.between(1, 7);
    for (std::int64_t i = 0; i < corners; ++i) vertices.add(any(), any(), 0);
    std::vector<TPoint> asked;
    for (int i = 0; i < 20; ++i) asked.emplace_back(any(), any(), 0);
    expectSameAnswers(vertices.pointers(), asked);
  }
}

// Points all over a polygon's box, on its corners, and on its sides and close to them.
std::vector<TPoint> pointsAround(const OwnedPoints& polygon, std::uint64_t seed) {
  inputs::Random random(seed);
  double minX = polygon[0]->getX(), maxX = minX, minY = polygon[0]->getY(), maxY = minY;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    minX = std::min(minX, polygon[i]->getX());
    maxX = std::max(maxX, polygon[i]->getX());
    minY = std::min(minY, polygon[i]->getY());
    maxY = std::max(maxY, polygon[i]->getY());
  }
  std::vector<TPoint> asked;
  for (int i = 0; i < 400; ++i) {
    asked.emplace_back(minX + (maxX - minX) * (1.1 * random.unit() - 0.05),
                       minY + (maxY - minY) * (1.1 * random.unit() - 0.05), 0);
  }
  for (int i = 0; i < 200; ++i) {
    const auto at = static_cast<std::size_t>(random.between(0, static_cast<std::int64_t>(polygon.size()) - 1));
    const TPoint& a = *polygon[at];
    const TPoint& b = *polygon[(at + 1) % polygon.size()];
    const double part = i % 4 == 0 ? 0.0 : random.unit();
    const double x = a.getX() + part * (b.getX() - a.getX());
    const double y = a.getY() + part * (b.getY() - a.getY());
    for (const double off : {0.0, 1e-10, -1e-10, 1.9e-10, -1.9e-10, 2.1e-10, -2.1e-10, 1e-8, -1e-8}) {
      asked.emplace_back(x, y + off, 0);
    }
  }
  return asked;
}

// Teeth that run along (dx, dy), side by side along (sx, sy), with tips at many places.
OwnedPoints teeth(int count, double dx, double dy, double sx, double sy, double x0, double y0) {
  OwnedPoints polygon;
  for (int i = 0; i < count; ++i) {
    const double length = 1 + (i * 7919) % 1000 * 0.0001;
    polygon.add(x0 + i * sx, y0 + i * sy, 0);
    polygon.add(x0 + (i + 0.5) * sx + length * dx, y0 + (i + 0.5) * sy + length * dy, 0);
  }
  polygon.add(x0 + count * sx - 0.1 * dx, y0 + count * sy - 0.1 * dy, 0);
  polygon.add(x0 - 0.1 * dx, y0 - 0.1 * dy, 0);
  return polygon;
}

void expectSameAnswersAround(const OwnedPoints& polygon, std::uint64_t seed) {
  expectSameAnswers(polygon.pointers(), pointsAround(polygon, seed));
}

TEST(PolygonIndex, CombsAreAnsweredRightlyWhicheverWayTheyRun) {
  for (const double x0 : {0.0, 38500000.0}) {
    for (const double y0 : {0.0, 3400000.0}) {
      expectSameAnswersAround(teeth(2000, 0, 1000, 0.5, 0, x0, y0), 1);
      expectSameAnswersAround(teeth(2000, 1000, 0, 0, 0.5, x0, y0), 2);
      expectSameAnswersAround(teeth(2000, 700, 700, 0.35, -0.35, x0, y0), 3);
      expectSameAnswersAround(teeth(2000, 700, -700, 0.001, 0.001, x0, y0), 4);
      expectSameAnswersAround(teeth(200, 1000, 1, 0, 1e-9, x0, y0), 5);  // teeth no wider than the tolerance
    }
  }
}

// Its teeth have ends along the y axis, and all start at the same easting.
TEST(PolygonIndex, SquareTeethAndLongRingsAreAnsweredRightly) {
  OwnedPoints comb;
  for (int i = 0; i < 4000; ++i) {
    comb.add(i % 2 == 0 ? 0 : 1000, i, 0);
    comb.add(i % 2 == 0 ? 1000 : 0, i, 0);
  }
  OwnedPoints ring;
  for (int i = 0; i < 5000; ++i)
    ring.add(500 + 500 * std::cos(i * 0.00125663706), 500 * std::sin(i * 0.00125663706), 0);
  expectSameAnswersAround(comb, 6);
  expectSameAnswersAround(ring, 7);
}

// A comb so narrow beside the rest of the polygon that it stands in one slab.
TEST(PolygonIndex, ACombInACornerIsAnsweredRightly) {
  OwnedPoints polygon = teeth(1000, 0, 10, 0.001, 0, 0, 0);
  polygon.add(-1e6, -1e6, 0);
  expectSameAnswersAround(polygon, 8);
  const OwnedPoints comb = teeth(1000, 0, 10, 0.001, 0, 0, 0);
  expectSameAnswers(polygon.pointers(), pointsAround(comb, 9));
}

// Sides that cross each other by the thousand, also all in one point.
TEST(PolygonIndex, CrossingSidesAreCountedEvenOdd) {
  inputs::Random random(20);
  OwnedPoints scribble;
  OwnedPoints lattice;
  OwnedPoints spokes;
  for (int i = 0; i < 1000; ++i) {
    scribble.add(1000 * random.unit(), 1000 * random.unit(), 0);
    lattice.add(static_cast<double>(random.between(0, 12)), static_cast<double>(random.between(0, 12)), 0);
    const double sign = i % 2 == 0 ? 1 : -1;
    spokes.add(500 + sign * (i % 4 < 2 ? 1 : -1) * (500 - i / 2), 500 + sign * 320, 0);
  }
  expectSameAnswersAround(scribble, 10);
  expectSameAnswersAround(lattice, 11);
  expectSameAnswersAround(spokes, 12);
}

// Beside a side too narrow to divide by its width, and far beyond all of them.
TEST(PolygonIndex, ExtremeCombsAreAnsweredRightly) {
  OwnedPoints narrow = teeth(200, 1000, 1e-3, 0, 1e-3, 0, 0);
  narrow.add(0, -1, 0);
  narrow.add(1e-200, -1.5, 0);
  expectSameAnswersAround(narrow, 13);
  const OwnedPoints comb = teeth(200, 1000, 1, 0, 0.5, 0, 0);
  std::vector<TPoint> far;
  for (const double y : {1e76, -1e76, 1e308, -1e308, std::numeric_limits<double>::infinity(),
                         -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    for (const double x : {-100.0, 0.0, 500.0, 1000.0, 2000.0}) far.emplace_back(x, y, 0);
  }
  expectSameAnswers(comb.pointers(), far);
}

}  // namespace
