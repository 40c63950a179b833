// A polygon cut into trapezoids: every point lies in as many parts as it should, for simple and self-crossing polygons.
#include <algorithm>
#include <bit>
#include <cmath>
#include <memory>
#include <numbers>
#include <utility>
#include <vector>

#include <OrvikDTMAlgorithm/tin/BoundaryParts.h>
#include <OrvikDTMAlgorithm/tin/Orientation.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <gtest/gtest.h>

#include "Inputs.h"
#include "TINSupport.h"

namespace {

using detail::BoundaryPart;
using detail::BoundaryParts;
using detail::BoundarySide;
using detail::Box;
using detail::ConvexPiece;
using detail::Position;
using support::OwnedPoints;

// How much of a small square around a position the parts cover, with overlaps counted as often as they occur.
double shareInParts(const BoundaryParts& parts, double x, double y, double half) {
  ConvexPiece square;
  square.add({-half, -half, 0});
  square.add({half, -half, 0});
  square.add({half, half, 0});
  square.add({-half, half, 0});
  double area = 0;
  parts.visitParts({x - half, y - half, x + half, y + half}, [&](const BoundaryPart& part) {
    ConvexPiece piece(square);
    parts.clip(part, piece, {x, y});
    area += piece.measure().area;
  });
  return area / (4 * half * half);
}

double distance(const OwnedPoints& polygon, double x, double y) {
  double least = 1e300;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const TPoint& a = *polygon[i];
    const TPoint& b = *polygon[(i + 1) % polygon.size()];
    const double dx = b.getX() - a.getX();
    const double dy = b.getY() - a.getY();
    const double length = dx * dx + dy * dy;
    const double t = length == 0 ? 0 : std::clamp(((x - a.getX()) * dx + (y - a.getY()) * dy) / length, 0.0, 1.0);
    least = std::min(least, std::hypot(a.getX() + t * dx - x, a.getY() + t * dy - y));
  }
  return least;
}

// Squares that no side touches lie in one part's worth of parts or in none, as the even-odd test says of their centres.
void expectEvenOdd(const OwnedPoints& polygon, double x0, double y0, double side, std::uint64_t seed) {
  const BoundaryParts parts(polygon.pointers());
  inputs::Random random(seed);
  int inside = 0;
  for (int i = 0; i < 400; ++i) {
    const TPoint p(x0 + side * (1.2 * random.unit() - 0.1), y0 + side * (1.2 * random.unit() - 0.1), 0);
    const double half = distance(polygon, p.getX(), p.getY()) / 2;
    if (half < 1e-6) continue;
    const bool isInside = Surface::isPtInPolygon(&p, polygon.pointers());
    inside += isInside ? 1 : 0;
    const Box box{p.getX() - half, p.getY() - half, p.getX() + half, p.getY() + half};
    ASSERT_EQ(parts.placeOf(box), isInside ? BoundaryParts::Place::Inside : BoundaryParts::Place::Outside);
    ASSERT_NEAR(shareInParts(parts, p.getX(), p.getY(), half), isInside ? 1.0 : 0.0, 1e-6);
    const double more = 4 * half;
    ASSERT_EQ(parts.placeOf({p.getX() - more, p.getY() - more, p.getX() + more, p.getY() + more}),
              BoundaryParts::Place::Across);
  }
  EXPECT_GT(inside, 0);
}

TEST(BoundaryParts, RandomPolygonsThatCrossThemselvesCountEvenOdd) {
  for (std::uint64_t seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(seed);
    inputs::Random random(seed);
    const double x0 = seed % 2 == 0 ? 38500000 : 0;
    OwnedPoints polygon;
    const int corners = 3 + static_cast<int>(seed) * 3;
    for (int i = 0; i < corners; ++i) {
      polygon.add(x0 + static_cast<double>(random.between(0, 20)), static_cast<double>(random.between(0, 20)), 0);
    }
    expectEvenOdd(polygon, x0, 0, 20, seed);
  }
}

// Every second corner far round the circle: a thousand sides cross each other half a million times, and many of them
// in the middle.
TEST(BoundaryParts, StarsOfManyCrossingsCountEvenOdd) {
  for (const int corners : {5, 101, 501}) {
    OwnedPoints polygon;
    for (int i = 0; i < corners; ++i) {
      const double angle = 2 * std::numbers::pi * i * (corners / 2) / corners;
      polygon.add(50 + 50 * std::cos(angle), 50 + 50 * std::sin(angle), 0);
    }
    expectEvenOdd(polygon, 0, 0, 100, 7);
  }
}

TEST(BoundaryParts, ManySidesThroughOnePointCountEvenOdd) {
  OwnedPoints polygon;
  constexpr int kSpokes = 60;
  for (int i = 0; i < kSpokes; ++i) {
    const double sign = i % 2 == 0 ? 1 : -1;
    const double at = i % 4 < 2 ? 1 : -1;
    polygon.add(50 + sign * at * (50 - i), 50 + sign * 32, 0);
  }
  expectEvenOdd(polygon, 0, 18, 64, 8);
}

// Two rows of corners in random order: all crossings lie in one band.
TEST(BoundaryParts, AllCrossingsInOneBandCountEvenOdd) {
  inputs::Random random(11);
  OwnedPoints polygon;
  for (int i = 0; i < 300; ++i) polygon.add(static_cast<double>(random.between(0, 1000)), i % 2 == 0 ? 0 : 1000, 0);
  expectEvenOdd(polygon, 0, 0, 1000, 9);
}

std::vector<BoundarySide> sidesOf(const OwnedPoints& polygon) {
  std::vector<BoundarySide> sides;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const TPoint* a = polygon[i];
    const TPoint* b = polygon[(i + 1) % polygon.size()];
    if (a->getY() > b->getY()) std::swap(a, b);
    sides.push_back({{a->getX(), a->getY()}, {b->getX(), b->getY()}});
  }
  return sides;
}

// To and fro along one line, as far as doubles can tell: in however narrow a band, rounding makes the sides change
// places.
TEST(BoundaryParts, ManySidesAlongOneLineComeToAnEnd) {
  inputs::Random random(12);
  OwnedPoints polygon;
  polygon.add(0, -5, 0);
  for (int i = 0; i < 300; ++i) {
    const double y = random.unit() + (i % 2 == 0 ? 0 : 1000);
    polygon.add(100 + 7.123 * y, y, 0);
  }
  polygon.add(9000, -5, 0);
  EXPECT_LT(detail::partsOf(sidesOf(polygon)).size(), polygon.size() * polygon.size());
  expectEvenOdd(polygon, 0, -5, 9000, 12);
}

// Teeth on a base, with tips at a hundred northings and more.
OwnedPoints comb(int teeth, double x0, double y0) {
  OwnedPoints polygon;
  for (int i = 0; i < teeth; ++i) {
    polygon.add(x0 + i, y0, 0);
    polygon.add(x0 + i + 0.5, y0 + 100 + (i * 7919) % 100000 * 0.0001, 0);
  }
  polygon.add(x0 + teeth, y0, 0);
  polygon.add(x0 + teeth, y0 - 10, 0);
  polygon.add(x0, y0 - 10, 0);
  return polygon;
}

TEST(BoundaryParts, CombOfThousandsOfTeethHasAPartForEach) {
  constexpr int kTeeth = 2000;
  const OwnedPoints polygon = comb(kTeeth, 0, 0);
  EXPECT_EQ(detail::partsOf(sidesOf(polygon)).size(), static_cast<std::size_t>(kTeeth) + 1);
  expectEvenOdd(polygon, 0, -10, 120, 10);
}

// Between two northings of corners, sides of a simple polygon that are sorted anew bound what the parts there say.
void expectThePartsOfEveryBand(const OwnedPoints& polygon) {
  const std::vector<BoundarySide> sides = sidesOf(polygon);
  const std::vector<BoundaryPart> parts = detail::partsOf(sides);
  std::vector<double> levels;
  for (std::size_t i = 0; i < polygon.size(); ++i) levels.push_back(polygon[i]->getY());
  std::sort(levels.begin(), levels.end());
  levels.erase(std::unique(levels.begin(), levels.end()), levels.end());
  for (std::size_t band = 0; band + 1 < levels.size(); ++band) {
    const double middle = levels[band] + (levels[band + 1] - levels[band]) / 2;
    std::vector<std::pair<double, detail::Number>> order;
    for (detail::Number i = 0; i < sides.size(); ++i) {
      if (sides[i].start.y < middle && middle < sides[i].end.y) order.emplace_back(sides[i].xAt(middle), i);
    }
    std::sort(order.begin(), order.end());
    std::vector<std::pair<detail::Number, detail::Number>> expected;
    for (std::size_t i = 0; i + 1 < order.size(); i += 2) expected.emplace_back(order[i].second, order[i + 1].second);
    std::vector<std::pair<detail::Number, detail::Number>> found;
    for (const BoundaryPart& part : parts) {
      if (part.low < middle && middle < part.high) found.emplace_back(part.left, part.right);
    }
    std::sort(expected.begin(), expected.end());
    std::sort(found.begin(), found.end());
    ASSERT_EQ(found, expected) << "at " << middle;
  }
}

// Out along a lower chain of steps and spikes and back along an upper one; sides along parallels change what is
// inside far to the east of them.
OwnedPoints ragged(std::uint64_t seed, int corners, double x0, double y0) {
  inputs::Random random(seed);
  OwnedPoints polygon;
  for (int i = 0; i < corners; ++i) {
    polygon.add(x0 + i, y0 + static_cast<double>(random.between(0, 40)), 0);
    if (random.between(0, 1) == 1) polygon.add(x0 + i + 0.75, polygon[polygon.size() - 1]->getY(), 0);
  }
  for (int i = corners; i-- > 0;) polygon.add(x0 + i + 0.5, y0 + 41 + static_cast<double>(random.between(0, 40)), 0);
  return polygon;
}

// A ring whose corners lie now near to its centre and now far from it.
OwnedPoints spikes(std::uint64_t seed, int corners, double x0, double y0) {
  inputs::Random random(seed);
  OwnedPoints polygon;
  for (int i = 0; i < corners; ++i) {
    const double angle = 2 * std::numbers::pi * i / corners;
    const double radius = 100 + 400 * random.unit();
    polygon.add(x0 + radius * std::cos(angle), y0 + radius * std::sin(angle), 0);
  }
  return polygon;
}

TEST(BoundaryParts, SimplePolygonsHaveThePartsOfEveryBand) {
  for (const double x0 : {0.0, 38500000.0}) {
    expectThePartsOfEveryBand(comb(150, x0, 3400000));
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
      SCOPED_TRACE(seed);
      expectThePartsOfEveryBand(ragged(seed, 5 * static_cast<int>(seed), x0, 0));
      expectThePartsOfEveryBand(spikes(seed, 10 * static_cast<int>(seed), x0, 0));
    }
  }
}

// A side is looked at in a few ranges of bands for every doubling of their number, not in every band.
TEST(BoundaryParts, TheWorkOnACombGrowsLittleFasterThanItsTeeth) {
  std::size_t before = 0;
  for (const int teeth : {1000, 4000, 16000}) {
    const std::vector<BoundarySide> sides = sidesOf(comb(teeth, 0, 0));
    std::size_t work = 0;
    EXPECT_EQ(detail::partsOf(sides, &work).size(), static_cast<std::size_t>(teeth) + 1);
    EXPECT_LT(work, 5 * sides.size() * static_cast<std::size_t>(std::bit_width(sides.size())));
    if (before != 0) {
      EXPECT_LT(work, 6 * before);
    }
    before = work;
  }
}

}  // namespace
