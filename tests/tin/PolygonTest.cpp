// isPtInPolygon() against exact whole-number arithmetic on lattice polygons, which are full of vertical sides, repeated
// x and points on sides: all that a crossing count gets wrong.
#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>

#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>
#include <boost/multiprecision/cpp_int.hpp>
#include <gtest/gtest.h>

#include "Inputs.h"
#include "TINSupport.h"

namespace {

struct Lattice {
  std::int64_t x;
  std::int64_t y;
};

std::int64_t turn(const Lattice& a, const Lattice& b, const Lattice& p) {
  return (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
}

bool onSide(const Lattice& a, const Lattice& b, const Lattice& p) {
  return turn(a, b, p) == 0 && p.x >= std::min(a.x, b.x) && p.x <= std::max(a.x, b.x) && p.y >= std::min(a.y, b.y) &&
         p.y <= std::max(a.y, b.y);
}

// Even-odd with a ray towards +x that takes the lower end of a side and leaves the upper one: no special cases.
bool insideOrOn(const std::vector<Lattice>& polygon, const Lattice& p) {
  bool inside = false;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const Lattice& a = polygon[i];
    const Lattice& b = polygon[(i + 1) % polygon.size()];
    if (onSide(a, b, p)) return true;
    if ((a.y > p.y) == (b.y > p.y)) continue;
    const std::int64_t side = b.y > a.y ? turn(a, b, p) : -turn(a, b, p);
    if (side > 0) inside = !inside;
  }
  return inside;
}

class PolygonUnderTest {
 public:
  explicit PolygonUnderTest(const std::vector<Lattice>& lattice) : lattice_(lattice) {
    for (const Lattice& v : lattice) points_.add(static_cast<double>(v.x), static_cast<double>(v.y), 0);
    pointers_ = points_.pointers();
  }

  // Every lattice point in and around the polygon; the number of those that differ.
  int differences(std::int64_t low, std::int64_t high) const {
    int count = 0;
    for (std::int64_t x = low; x <= high; ++x) {
      for (std::int64_t y = low; y <= high; ++y) {
        const TPoint p(static_cast<double>(x), static_cast<double>(y), 0);
        if (Surface::isPtInPolygon(&p, pointers_) != insideOrOn(lattice_, {x, y})) ++count;
      }
    }
    return count;
  }

  bool contains(double x, double y) const {
    const TPoint p(x, y, 0);
    return Surface::isPtInPolygon(&p, pointers_);
  }

 private:
  std::vector<Lattice> lattice_;
  support::OwnedPoints points_;
  std::vector<TPoint*> pointers_;
};

TEST(IsPtInPolygon, AgreesWithExactCountingOnLatticePolygons) {
  inputs::Random random(3);
  for (int round = 0; round < 4000; ++round) {
    const auto corners = random.between(3, 9);
    const auto size = random.between(2, 7);
    std::vector<Lattice> lattice;
    for (std::int64_t i = 0; i < corners; ++i) lattice.push_back({random.between(0, size), random.between(0, size)});
    ASSERT_EQ(PolygonUnderTest(lattice).differences(-1, size + 1), 0)
        << "polygon " << round << " of " << corners << " corners";
  }
}

TEST(IsPtInPolygon, AgreesOnRectilinearPolygons) {
  inputs::Random random(4);
  for (int round = 0; round < 2000; ++round) {
    std::vector<Lattice> lattice = {{0, 0}};
    for (int step = 0; step < 4; ++step) {
      lattice.push_back({random.between(0, 6), lattice.back().y});
      lattice.push_back({lattice.back().x, random.between(0, 6)});
    }
    lattice.push_back({0, lattice.back().y});
    ASSERT_EQ(PolygonUnderTest(lattice).differences(-1, 7), 0) << "polygon " << round;
  }
}

using Rational = boost::multiprecision::cpp_rational;

// Counts what crosses the ray towards +y, in rational numbers: a vertical side crosses no such ray, and a side takes
// its left end and leaves its right one.
bool insideOrOnByRationals(const std::vector<Lattice>& polygon, const Rational& x, const Rational& y) {
  bool inside = false;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    Lattice a = polygon[i];
    Lattice b = polygon[(i + 1) % polygon.size()];
    if (a.x > b.x) std::swap(a, b);
    if (a.x == b.x) {
      if (x == a.x && y >= std::min(a.y, b.y) && y <= std::max(a.y, b.y)) return true;
      continue;
    }
    if (x < a.x || x > b.x) continue;
    const Rational onSide = a.y + (x - a.x) * Rational(b.y - a.y, b.x - a.x);
    if (onSide == y) return true;
    if (x < b.x && onSide > y) inside = !inside;
  }
  return inside;
}

TEST(IsPtInPolygon, AgreesWithRationalsBetweenTheLatticePointsOfPolygonsWithVerticalSides) {
  inputs::Random random(6);
  for (int round = 0; round < 3000; ++round) {
    std::vector<Lattice> lattice;
    for (std::int64_t i = random.between(1, 4); i > 0; --i) {
      lattice.push_back({random.between(0, 6), random.between(0, 6)});
      lattice.push_back({lattice.back().x, random.between(0, 6)});  // a vertical side
      if (random.between(0, 2) == 0) lattice.push_back({random.between(0, 6), random.between(0, 6)});
    }
    const PolygonUnderTest polygon(lattice);
    for (int i = 0; i < 40; ++i) {
      const std::int64_t quartersX = i % 2 == 0 ? 4 * random.between(-1, 7) : random.between(-4, 28);
      const std::int64_t quartersY = random.between(-4, 28);
      ASSERT_EQ(polygon.contains(static_cast<double>(quartersX) / 4, static_cast<double>(quartersY) / 4),
                insideOrOnByRationals(lattice, Rational(quartersX, 4), Rational(quartersY, 4)))
          << "polygon " << round << ", quarters " << quartersX << "," << quartersY;
    }
  }
}

TEST(IsPtInPolygon, PointsBelowAndAboveVerticalSides) {
  const PolygonUnderTest kite({{2, 1}, {4, 0}, {4, 1}, {5, 2}});
  EXPECT_FALSE(kite.contains(4, -1));
  const PolygonUnderTest box({{0, 0}, {10, 0}, {10, 7}, {10, 10}, {0, 10}});
  EXPECT_TRUE(box.contains(10, 5));
  EXPECT_FALSE(box.contains(10, -1));
  EXPECT_FALSE(box.contains(10, 11));
}

TEST(IsPtInPolygon, VerticesAndSidesBelongToIt) {
  const PolygonUnderTest square({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
  EXPECT_TRUE(square.contains(0, 0));
  EXPECT_TRUE(square.contains(10, 10));
  EXPECT_TRUE(square.contains(5, 0));
  EXPECT_TRUE(square.contains(0, 5));
  EXPECT_TRUE(square.contains(5, 5));
  EXPECT_FALSE(square.contains(5, -0.001));  // below a horizontal side
  EXPECT_FALSE(square.contains(5, 10.001));
  EXPECT_FALSE(square.contains(-0.001, 5));
}

TEST(IsPtInPolygon, PointsWithinTheToleranceOfASideAreOnIt) {
  const PolygonUnderTest slope({{0, 0}, {10, 1}, {5, 20}});
  EXPECT_TRUE(slope.contains(5, 0.5 - 1e-10));
  EXPECT_FALSE(slope.contains(5, 0.5 - 3e-10));
}

TEST(IsPtInPolygon, DirectionAndRepeatedFirstVertexDoNotMatter) {
  const PolygonUnderTest clockwise({{0, 0}, {0, 10}, {10, 10}, {10, 0}});
  EXPECT_EQ(clockwise.differences(-1, 11), 0);
  const PolygonUnderTest closed({{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}});
  EXPECT_EQ(closed.differences(-1, 11), 0);
  EXPECT_TRUE(closed.contains(5, 5));
}

TEST(IsPtInPolygon, NothingLiesInAnEmptyPolygon) {
  const PolygonUnderTest none({});
  EXPECT_FALSE(none.contains(0, 0));
}

}  // namespace
