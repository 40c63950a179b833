// Where the triangulation puts a surveyed point, against the vertices that it makes.
#include <cmath>
#include <cstdint>
#include <set>
#include <utility>

#include <OrvikDTMAlgorithm/report/U.h>
#include <OrvikDTMAlgorithm/surface/VertexPosition.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>
#include <gtest/gtest.h>

#include "surface/Surfaces.h"

namespace {

using Plan = std::pair<double, double>;

Plan vertexOf(double e, double n) {
  const orvik::PlanPosition p = orvik::vertexPosition(e, n);
  return {p.x, p.y};
}

TEST(VertexPosition, IsRoundedTwice) {
  EXPECT_EQ(vertexOf(0.0004, 0.0005), Plan(0, 0.001));
  EXPECT_EQ(vertexOf(0.00045, 0.000449), Plan(0.001, 0));  // once would give 0 for both
  EXPECT_EQ(vertexOf(-0.00045, -0.000449), Plan(-0.001, 0));
  EXPECT_EQ(vertexOf(100.123449, 100.12345), Plan(100.123, 100.124));
  EXPECT_EQ(vertexOf(38500000.123456, -3400000.0005), Plan(38500000.124, -3400000.001));
  EXPECT_EQ(vertexOf(7.7, 7.6999999999999993), Plan(7.7, 7.7));
  EXPECT_EQ(vertexOf(HUGE_VAL, 1e300), Plan(0, 1e300));
  EXPECT_TRUE(std::isnan(vertexOf(std::nan(""), 0).first));
}

TEST(VertexPosition, TextOfBothRoundingsSaysTheSame) {
  std::uint64_t state = 3;
  const auto next = [&state] { return (state = state * 6364136223846793005u + 1442695040888963407u) >> 20u; };
  for (int i = 0; i < 20000; ++i) {
    const double v = (static_cast<double>(next() % 2000000000) - 1e9) / 1e6;
    const double once = std::stod(U::toString(4, v));
    EXPECT_EQ(vertexOf(v, 0).first, std::stod(U::toString(3, once))) << v;
  }
}

class Sites : public testing::TestWithParam<Plan> {};

// Every point of six decimals lies at a vertex, and every vertex at a point.
TEST_P(Sites, PointsAndVerticesAreAtTheSamePositions) {
  std::uint64_t state = 5;
  const auto next = [&state] { return (state = state * 6364136223846793005u + 1442695040888963407u) >> 20u; };
  const std::uint64_t halves[] = {0, 449, 450, 451, 499, 500, 501, 949, 950, 999};
  std::vector<Position> positions;
  for (int i = 0; i < 3000; ++i) {
    const auto coordinate = [&] { return static_cast<double>(next() % 100000 * 1000 + halves[next() % 10]) / 1e6; };
    const double e = GetParam().first + coordinate();
    const double n = GetParam().second + coordinate();
    positions.push_back({e, n, static_cast<double>(i % 7)});
  }
  const int present = Surface::COMPAREUNSHIFTED;
  Surface::COMPAREUNSHIFTED = 1;
  OwnedSurface surface(positions);
  CEType* const tin = surface.getCEType();
  Surface::COMPAREUNSHIFTED = present;
  ASSERT_NE(tin, nullptr);
  std::set<Plan> points;
  for (const Position& p : positions) points.insert(vertexOf(p.e, p.n));
  std::set<Plan> vertices;
  for (const TPoint* p : tin->getOriginalList()) vertices.insert(vertexOf(p->getX(), p->getY()));
  EXPECT_EQ(points, vertices);
}

INSTANTIATE_TEST_SUITE_P(Places, Sites,
                         testing::Values(Plan(0, 0), Plan(-50, -50), Plan(500000, 4000000), Plan(38500000, -3400000)));

}  // namespace
