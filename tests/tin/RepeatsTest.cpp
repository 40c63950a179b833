// Points given twice, positions repeated: what is kept of them, and that queries do not suffer from it.
#include <cfloat>
#include <cmath>
#include <memory>
#include <utility>

#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/verifyTIN.h>
#include <gtest/gtest.h>

#include "Inputs.h"
#include "TINSupport.h"

namespace {

using support::OwnedPoints;

// A square whose upper right corner is surveyed twice; the sweep keeps both, with a flat triangle on the hull.
class RepeatedCorner : public testing::TestWithParam<double> {
 protected:
  RepeatedCorner() {
    for (const auto& [x, y] : {std::pair{5, 5}, {15, 5}, {5, 15}, {15, 15}}) points_.add(x, y, 100);
    points_.add(15, 15, GetParam());
    tin_ = support::triangulate(points_);
  }

  OwnedPoints points_;
  std::unique_ptr<CEType> tin_;
};

TEST_P(RepeatedCorner, KeepsAFlatTriangle) {
  EXPECT_EQ(support::triangleCount(*tin_), 3);
  EXPECT_TRUE(verifyTIN(*tin_).valid());
}

TEST_P(RepeatedCorner, HasNoHeightOutside) {
  for (const auto& [x, y] : {std::pair{15.0, 1000.0}, {15.000001, 500.0}, {15.0, -9999.0}, {4.0, 10.0}, {20.0, 15.0}}) {
    EXPECT_EQ(tin_->getHeight(x, y), DBL_MAX) << x << " " << y;
    EXPECT_EQ(tin_->locateTri1(x, y), 0) << x << " " << y;
    for (int start = 1; start <= 3; ++start) EXPECT_EQ(tin_->locateTri(x, y, start), 0) << x << " " << y;
  }
}

TEST_P(RepeatedCorner, IsFoundEverywhereInside) {
  for (double x = 5; x <= 14.5; x += 0.5) {
    for (double y = 5; y <= 14.5; y += 0.5) {
      const int tri = tin_->locateTri(x, y);
      ASSERT_NE(tri, 0) << x << " " << y;
      for (int start = 1; start <= 3; ++start) EXPECT_NE(tin_->locateTri(x, y, start), 0) << x << " " << y;
    }
  }
  EXPECT_DOUBLE_EQ(tin_->proxyTri(15, 6, 0, 0, 1)[0][0], 100 + (tin_->getHeight(15, 6) - 100));
  EXPECT_NE(tin_->locateTri(15, 10, 1), 0);
}

INSTANTIATE_TEST_SUITE_P(HeightOfTheSecondShot, RepeatedCorner, testing::Values(100.0, 100.02));

TEST(Repeats, TheWalkLeavesSeveralFlatTriangles) {
  const OwnedPoints points({{3, 3, 0}, {3, 0, 1}, {3, 3, 0}, {2, 1, 1}, {2, 1, 0}});
  const auto tin = support::triangulate(points);
  ASSERT_EQ(support::triangleCount(*tin), 3);
  for (int start = 1; start <= 3; ++start) {
    for (const auto& [x, y] : {std::pair{3, 3}, {3, 0}, {2, 1}, {3, 2}}) {
      EXPECT_EQ(tin->locateTri(x, y, start), tin->locateTri1(x, y)) << x << " " << y << " from " << start;
    }
  }
}

TEST(Repeats, RandomSitesWithARepeatedPointHaveNoHeightOutside) {
  int flat = 0;
  for (std::uint64_t seed = 1; seed <= 400; ++seed) {
    inputs::Random random(seed);
    OwnedPoints points;
    for (int i = 0; i < 9; ++i)
      points.add(static_cast<double>(random.between(0, 29)), static_cast<double>(random.between(0, 29)), 50);
    points.add(points[seed % 9]->getX(), points[seed % 9]->getY(), 50);
    const auto tin = support::triangulate(points);
    flat += support::triangleCount(*tin) > 0 && tin->getArea2D() > 0 ? 1 : 0;
    for (int i = 0; i < 40; ++i) {
      const double angle = 0.157 * i;
      EXPECT_EQ(tin->getHeight(15 + 60 * std::cos(angle), 15 + 60 * std::sin(angle)), DBL_MAX) << seed;
    }
    for (int x = -40; x <= 70; x += 5) EXPECT_EQ(tin->getHeight(x, 200), DBL_MAX) << seed;
  }
  EXPECT_GT(flat, 300);
}

// A pointer that is given twice is one point.
void expectOnePointEach(std::vector<TPoint*> given, const std::vector<TPoint*>& points, int vertices) {
  const std::vector<TPoint> before{*points[0], *points[1], *points[2], *points[3]};
  const std::unique_ptr<CEType> tin(Surface::optimizeTIN(given));
  EXPECT_EQ(static_cast<int>(tin->getOriginalList().size()), vertices);
  EXPECT_EQ(given.size(), points.size() + 1);
  for (std::size_t i = 0; i < before.size(); ++i) EXPECT_TRUE(before[i] == *points[i]) << i;
  EXPECT_TRUE(verifyTIN(*tin, points).valid());
}

TEST(Repeats, APointGivenTwiceIsOnePoint) {
  TPoint a(11, 11, 1);
  TPoint b(15, 11, 2);
  TPoint c(11, 15, 3);
  TPoint d(16, 16, 4);
  expectOnePointEach({&a, &a, &b, &c, &d}, {&a, &b, &c, &d}, 4);
  expectOnePointEach({&d, &a, &b, &c, &d}, {&a, &b, &c, &d}, 4);
  Surface::COMPAREUNSHIFTED = 1;
  expectOnePointEach({&b, &a, &b, &c, &d}, {&a, &b, &c, &d}, 4);
  Surface::COMPAREUNSHIFTED = 0;
}

}  // namespace
