// Areas, lengths, heights, extent and the list of distinct points, on small models by hand and on constructed ones
// against sums made another way.
#include <cmath>
#include <memory>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>
#include <gtest/gtest.h>

#include "Inputs.h"
#include "TINSupport.h"

namespace {

using support::OwnedPoints;

std::unique_ptr<double[]> heightsOf(const CEType& tin) { return std::unique_ptr<double[]>(tin.getMinMaxHeight()); }

TEST(Measures, EmptyModelMeasuresNothing) {
  const auto tin = makeTIN(OwnedPoints(), {});
  EXPECT_EQ(tin->getArea2D(), 0.0);
  EXPECT_EQ(tin->getArea3D(), 0.0);
  EXPECT_EQ(tin->getTotalLength2D(), 0.0);
  EXPECT_EQ(tin->getTotalLength3D(), 0.0);
  EXPECT_EQ(tin->getRangeXY(), (std::vector<double>{0, 0, 0, 0}));
  EXPECT_TRUE(tin->getOriginalList().empty());
  const auto heights = heightsOf(*tin);
  EXPECT_EQ(heights[0], 0.0);
  EXPECT_EQ(heights[1], 0.0);
}

TEST(Measures, ModelWithoutListsMeasuresNothing) {
  const CEType tin(nullptr, nullptr, nullptr);
  EXPECT_EQ(tin.getArea2D(), 0.0);
  EXPECT_EQ(tin.getTotalLength3D(), 0.0);
  EXPECT_EQ(tin.getRangeXY(), (std::vector<double>{0, 0, 0, 0}));
  EXPECT_TRUE(tin.getOriginalList().empty());
  EXPECT_EQ(heightsOf(tin)[1], 0.0);
}

TEST(Measures, OneTriangle) {
  const OwnedPoints points(inputs::Positions{{0, 0, 0}, {4, 0, 0}, {0, 3, 12}});
  const auto tin = makeTIN(points, {{{1, 2, 1, 0}, {2, 3, 1, 0}, {3, 1, 1, 0}}, {{1, 2, 3}}, {1, 2, 3}});
  EXPECT_NEAR(tin->getArea2D(), 6.0, 1e-12);
  EXPECT_NEAR(tin->getArea3D(), 0.5 * 4 * std::sqrt(9.0 + 144.0), 1e-12);
  EXPECT_NEAR(tin->getTotalLength2D(), 12.0, 1e-12);
  EXPECT_NEAR(tin->getTotalLength3D(), 4.0 + 13.0 + std::sqrt(153.0), 1e-12);
  EXPECT_EQ(tin->getRangeXY(), (std::vector<double>{3, 0, 4, 0}));
  const auto heights = heightsOf(*tin);
  EXPECT_EQ(heights[0], 0.0);
  EXPECT_EQ(heights[1], 12.0);
}

TEST(Measures, ExtentComesFromHullStartsOnly) {
  // Point 4 lies outside, but no hull edge starts there.
  const OwnedPoints points(inputs::Positions{{0, 0, 0}, {4, 0, 0}, {0, 3, 0}, {50, 60, 0}, {-50, -60, 0}});
  const auto tin = makeTIN(points, {{{1, 2, 1, 0}, {2, 3, 1, 0}, {3, 1, 1, 0}, {4, 5, 0, 0}}, {{1, 2, 3}}, {1, 2, 3}});
  EXPECT_EQ(tin->getRangeXY(), (std::vector<double>{3, 0, 4, 0}));
}

TEST(Measures, EqualPointsAppearOnce) {
  const OwnedPoints points(inputs::Positions{{0, 0, 0}, {4, 0, 0}, {0, 3, 0}, {0, 0, 0}, {0, 0, 1}});
  const auto tin = makeTIN(points, {{{1, 2, 0, 0}, {2, 3, 0, 0}, {3, 4, 0, 0}, {4, 5, 0, 0}}, {}, {}});
  EXPECT_EQ(tin->getOriginalList(), (std::vector<TPoint*>{points[0], points[1], points[2], points[4]}));
}

TEST(Measures, FirstEdgeIsListedWithoutAQuestion) {
  const OwnedPoints points(inputs::Positions{{1, 1, 1}, {1, 1, 1}, {2, 2, 2}});
  const auto tin = makeTIN(points, {{{1, 2, 0, 0}, {2, 3, 0, 0}}, {}, {}});
  EXPECT_EQ(tin->getOriginalList(), (std::vector<TPoint*>{points[0], points[1], points[2]}));
}

TEST(Measures, NumbersThatNameNothingAreSkipped) {
  const OwnedPoints points(inputs::Positions{{0, 0, 0}, {4, 0, 0}, {0, 3, 0}});
  const auto tin = makeTIN(
      points,
      {{{1, 2, 1, 0}, {2, 3, 1, 0}, {3, 1, 1, 0}}, {{1, 2, 3}, {1, 2, 9}, {0, 2, 3}, {-1, 2, 3}}, {1, 77, 2, 0, 3}});
  EXPECT_NEAR(tin->getArea2D(), 6.0, 1e-12);
  EXPECT_NEAR(tin->getTotalLength2D(), 12.0, 1e-12);
  EXPECT_EQ(tin->getRangeXY(), (std::vector<double>{3, 0, 4, 0}));
}

double heronProduct(const TEdge& ab, const TEdge& bc, const TEdge& ca) {
  const double a = ab.getLength3D();
  const double b = bc.getLength3D();
  const double c = ca.getLength3D();
  const double s = (a + b + c) / 2;
  return s * (s - a) * (s - b) * (s - c);
}

TEST(Measures, TriangleWithoutExtentMakesTheSlopeAreaNaNWhereItRoundsBelowZero) {
  inputs::Random random(2);
  int below = 0;
  int above = 0;
  for (int round = 0; round < 500; ++round) {
    const double dx = random.unit();
    const double dy = random.unit();
    const double t = random.unit();
    const OwnedPoints points(inputs::Positions{{0, 0, 0}, {dx, dy, 0}, {dx * t, dy * t, 0}});
    const TEdge ab(points[0], points[1]);
    const TEdge bc(points[1], points[2]);
    const TEdge ca(points[2], points[0]);
    const bool negative = heronProduct(ab, bc, ca) < 0;
    (negative ? below : above) += 1;
    const auto tin = makeTIN(points, {{{1, 2, 1, 0}, {2, 3, 1, 0}, {3, 1, 1, 0}}, {{1, 2, 3}}, {1, 2, 3}});
    ASSERT_EQ(std::isnan(tin->getArea3D()), negative);
    ASSERT_FALSE(std::isnan(tin->getArea2D()));
  }
  EXPECT_GT(below, 0);
  EXPECT_GT(above, 0);
}

TEST(Measures, ConstructedModelAgreesWithOtherSums) {
  for (std::uint64_t seed = 1; seed <= 5; ++seed) {
    const OwnedPoints points(inputs::randomMillimetres(seed, 400, 300, 500000, 3000000));
    const auto tin = support::triangulate(points);
    double plan = 0.0;
    double slope = 0.0;
    for (int t = 1; t <= support::triangleCount(*tin); ++t) {
      const auto corners = support::cornersOf(*tin, t);
      ASSERT_TRUE(corners);
      const auto& [a, b, c] = *corners;
      const double ux = b->getX() - a->getX();
      const double uy = b->getY() - a->getY();
      const double uz = b->getZ() - a->getZ();
      const double vx = c->getX() - a->getX();
      const double vy = c->getY() - a->getY();
      const double vz = c->getZ() - a->getZ();
      const double nz = ux * vy - uy * vx;
      plan += nz / 2;
      slope += std::hypot(uy * vz - uz * vy, uz * vx - ux * vz, nz) / 2;
    }
    EXPECT_NEAR(tin->getArea2D(), plan, 1e-6 * plan);
    EXPECT_NEAR(tin->getArea3D(), slope, 1e-6 * slope);

    ConvexList* hull = tin->getCList();
    EList* edges = tin->getEList();
    double length = 0.0;
    for (int k = 1; k <= hull->getListLen(); ++k)
      length += edges->findByNum(edges, hull->findByNum(hull, k)->getEdgeNo())->getLength();
    EXPECT_NEAR(tin->getTotalLength2D(), length, 1e-9 * length);
    EXPECT_GE(tin->getTotalLength3D(), tin->getTotalLength2D());

    double low = 1e9;
    double high = -1e9;
    double west = 1e9;
    double east = -1e9;
    for (std::size_t i = 0; i < points.size(); ++i) {
      low = std::min(low, points[i]->getZ());
      high = std::max(high, points[i]->getZ());
      west = std::min(west, points[i]->getX());
      east = std::max(east, points[i]->getX());
    }
    const auto heights = heightsOf(*tin);
    EXPECT_EQ(heights[0], low);
    EXPECT_EQ(heights[1], high);
    EXPECT_EQ(tin->getRangeXY()[2], east);
    EXPECT_EQ(tin->getRangeXY()[3], west);
    EXPECT_EQ(tin->getOriginalList().size(), points.size());
  }
}

TEST(Measures, HeightsThatAreNoNumbersDoNotCountUnlessAllAre) {
  const double none = std::nan("");
  const struct {
    double z[3];
    double lowest;
    double highest;
  } rows[] = {{{1, none, 3}, 1, 3}, {{none, 2, none}, 2, 2}, {{none, none, 7}, 7, 7}, {{none, none, none}, none, none}};
  for (const auto& row : rows) {
    OwnedPoints points;
    points.add(0, 0, row.z[0]);
    points.add(10, 0, row.z[1]);
    points.add(0, 10, row.z[2]);
    const auto tin = triangulate(points);
    const std::unique_ptr<double[]> heights(tin->getMinMaxHeight());
    EXPECT_TRUE(heights[0] == row.lowest || (std::isnan(heights[0]) && std::isnan(row.lowest)));
    EXPECT_TRUE(heights[1] == row.highest || (std::isnan(heights[1]) && std::isnan(row.highest)));
  }
}

TEST(Measures, PointsThatDoNotEqualThemselvesAreEachListed) {
  OwnedPoints points;
  points.add(0, 0, std::nan(""));
  points.add(10, 0, 1);
  points.add(0, 10, 2);
  const auto tin = triangulate(points);
  EXPECT_EQ(tin->getOriginalList().size(), 4u);  // two edges meet at the first point
}

TEST(Measures, AllAtOnceAreTheSame) {
  OwnedPoints points;
  for (int i = 0; i < 60; ++i) points.add((i * 37) % 61, (i * 53) % 59, i % 7);
  const auto tin = triangulate(points);
  const TINMeasures all = tin->getMeasures();
  const std::unique_ptr<double[]> heights(tin->getMinMaxHeight());
  EXPECT_EQ(all.area2D, tin->getArea2D());
  EXPECT_EQ(all.area3D, tin->getArea3D());
  EXPECT_EQ(all.length2D, tin->getTotalLength2D());
  EXPECT_EQ(all.length3D, tin->getTotalLength3D());
  EXPECT_EQ(all.lowest, heights[0]);
  EXPECT_EQ(all.highest, heights[1]);
}

}  // namespace
