// The preview: which edges are drawn, and how they are cut to the view. Cuts are compared with those of another way,
// along the line's parameter and in exact fractions.
#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <random>

#include <OrvikDTMAlgorithm/surface/ClipLine.h>
#include <OrvikDTMAlgorithm/surface/DrawLine.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>
#include <boost/multiprecision/cpp_int.hpp>
#include <gtest/gtest.h>

#include "surface/Surfaces.h"

namespace {

using detail::LineInPlan;
using detail::ViewRectangle;
using Fraction = boost::multiprecision::cpp_rational;

constexpr double kInf = std::numeric_limits<double>::infinity();
const double kNaN = std::nan("");

// ---- the surface

struct Drawn {
  bool result;
  std::vector<DrawLine> lines;

  long count(int flag) const {
    return std::count_if(lines.begin(), lines.end(), [=](const DrawLine& l) { return l.flag == flag; });
  }
};

Drawn draw(DTMSurface& surface, double minX = -kInf, double maxX = kInf, double minY = -kInf, double maxY = kInf) {
  std::vector<DrawLine*> lines;
  Drawn drawn{surface.drawSurface(minX, maxX, minY, maxY, lines), {}};
  for (const DrawLine* line : lines) {
    drawn.lines.push_back(*line);
    delete line;
  }
  return drawn;
}

std::vector<Position> grid(int side) {
  std::vector<Position> positions;
  for (int i = 0; i < side * side; ++i) {
    positions.push_back({static_cast<double>(i % side), static_cast<double>(i / side), 0.0});
  }
  return positions;
}

TEST(Preview, EdgesInNumberOrderThenHullEntriesInTheirs) {
  OwnedSurface surface(scattered(30));
  const CEType* model = surface.getCEType();
  const EList* edges = model->getEList();
  const ConvexList* hull = model->getCList();
  const Drawn drawn = draw(surface);
  ASSERT_TRUE(drawn.result);
  ASSERT_EQ(edges->getListLen() + hull->getListLen(), static_cast<int>(drawn.lines.size()));

  const auto expectEdge = [&](int number, const DrawLine& line) {
    const TEdge* edge = edges->findByNum(edges, number);
    EXPECT_EQ(edge->getStartPoint()->getX(), line.getStartX());
    EXPECT_EQ(edge->getStartPoint()->getY(), line.getStartY());
    EXPECT_EQ(edge->getEndPoint()->getX(), line.getEndX());
    EXPECT_EQ(edge->getEndPoint()->getY(), line.getEndY());
  };
  for (int i = 0; i < static_cast<int>(drawn.lines.size()); ++i) {
    const DrawLine& line = drawn.lines[static_cast<std::size_t>(i)];
    const int ofHull = i - edges->getListLen();
    EXPECT_EQ(ofHull < 0 ? 0 : 1, line.flag);
    expectEdge(ofHull < 0 ? i + 1 : hull->findByNum(hull, ofHull + 1)->getEdgeNo(), line);
  }
}

TEST(Preview, FromTenThousandEdgesOnTheHullAlone) {
  OwnedSurface large(grid(60));
  ASSERT_GE(large.getCEType()->getEList()->getListLen(), 10000);
  const Drawn drawn = draw(large);
  EXPECT_TRUE(drawn.result);
  EXPECT_EQ(0, drawn.count(0));
  EXPECT_EQ(4 * 59, drawn.count(1));

  OwnedSurface smaller(grid(50));
  ASSERT_LT(smaller.getCEType()->getEList()->getListLen(), 10000);
  EXPECT_EQ(smaller.getCEType()->getEList()->getListLen(), draw(smaller).count(0));
}

// One edge more or less decides.
TEST(Preview, TheLimitItself) {
  for (const int count : {9999, 10000}) {
    auto* edges = new EList;
    edges->setMaxlen(count);
    TPoint from(0, 0, 0), to(1, 1, 0);
    for (int i = 0; i < count; ++i) edges->add(edges, new TEdge(&from, &to));
    OwnedSurface surface;
    surface.setCEType(new CEType(new ConvexList, edges, nullptr));
    EXPECT_EQ(count == 9999 ? 9999 : 0, draw(surface).count(0));
  }
}

TEST(Preview, WithTheSwitchOffTheHullAlone) {
  OwnedSurface surface(scattered(30));
  const long hull = draw(surface).count(1);
  surface.setIsDrawDTM(false);
  const Drawn drawn = draw(surface);
  EXPECT_TRUE(drawn.result);
  EXPECT_EQ(0, drawn.count(0));
  EXPECT_EQ(hull, drawn.count(1));
  EXPECT_GT(hull, 2);
}

TEST(Preview, WithoutATINThereIsNothing) {
  OwnedSurface two({{0, 0, 0}, {1, 0, 0}});
  OwnedSurface inLine({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}});
  OwnedSurface empty;
  for (DTMSurface* surface :
       {static_cast<DTMSurface*>(&two), static_cast<DTMSurface*>(&inLine), static_cast<DTMSurface*>(&empty)}) {
    DrawLine mark(0, 0, 0, 0, false);
    std::vector<DrawLine*> lines{&mark};
    EXPECT_FALSE(surface->drawSurface(-kInf, kInf, -kInf, kInf, lines));
    EXPECT_EQ(std::vector<DrawLine*>{&mark}, lines);
  }
}

TEST(Preview, AStaleTINIsBuilt) {
  OwnedSurface surface(risingSquare());
  EXPECT_EQ(5, draw(surface).count(0));
  surface.addSurfacePoint(newPoint("P5", {120, 205, 30}), 4);
  EXPECT_EQ(7, draw(surface).count(0));
  surface.deleteSurfacePoint(0, 1);
  EXPECT_EQ(5, draw(surface).count(0));
}

TEST(Preview, AnIncompleteTINIsDrawnAsFarAsItGoes) {
  TPoint a(0, 0, 0), b(1, 0, 0), c(0, 1, 0);
  auto* edges = new EList;
  edges->add(edges, new TEdge(&a, &b));
  edges->add(edges, new TEdge(&b, nullptr));
  edges->add(edges, nullptr);
  edges->add(edges, new TEdge(&c, &a));
  auto* hull = new ConvexList;
  for (const int number : {-1, 0, 1, 2, 3, 5, std::numeric_limits<int>::max()}) hull->add(hull, new TConvex(number));
  hull->add(hull, nullptr);
  OwnedSurface surface;
  surface.setCEType(new CEType(hull, edges, nullptr));
  const Drawn drawn = draw(surface);
  EXPECT_TRUE(drawn.result);
  EXPECT_EQ(2, drawn.count(0));
  EXPECT_EQ(1, drawn.count(1));

  OwnedSurface withoutHull;
  auto* more = new EList;
  for (int i = 0; i < 3; ++i) more->add(more, new TEdge(&a, &b));
  withoutHull.setCEType(new CEType(nullptr, more, nullptr));
  EXPECT_EQ(3u, draw(withoutHull).lines.size());
  OwnedSurface withoutEdges;
  withoutEdges.setCEType(new CEType(nullptr, nullptr, nullptr));
  EXPECT_FALSE(draw(withoutEdges).result);
}

TEST(Preview, TheNumbersAreEastingsThenNorthings) {
  OwnedSurface surface(risingSquare());  // eastings 100 to 110, northings 200 to 210
  EXPECT_EQ(9u, draw(surface, 99, 111, 199, 211).lines.size());
  const Drawn west = draw(surface, 99, 101, 199, 211);
  EXPECT_FALSE(west.lines.empty());
  for (const DrawLine& line : west.lines) {
    EXPECT_LE(std::max(line.startX, line.endX), 101.0);
    EXPECT_GE(std::min(line.startX, line.endX), 100.0);
  }
  EXPECT_TRUE(draw(surface, 199, 211, 99, 111).lines.empty());
}

TEST(Preview, HostileViews) {
  OwnedSurface surface(risingSquare());
  const std::size_t all = draw(surface).lines.size();
  ASSERT_EQ(9u, all);
  const struct {
    const char* name;
    double minX, maxX, minY, maxY;
    std::size_t lines;
  } rows[] = {
      {"beside the surface", 500, 600, 500, 600, 0},
      {"inside one triangle", 102, 102.5, 207, 207.5, 0},
      {"eastings reversed", 111, 99, 199, 211, 0},
      {"northings reversed", 99, 111, 211, 199, 0},
      {"all of the plane", -kInf, kInf, -kInf, kInf, all},
      {"the largest finite view", -DBL_MAX, DBL_MAX, -DBL_MAX, DBL_MAX, all},
      {"infinities reversed", kInf, -kInf, kInf, -kInf, 0},
      {"all NaN", kNaN, kNaN, kNaN, kNaN, 0},
      {"one NaN", 99, kNaN, 199, 211, 0},
      {"nothing but a corner", 100, 100, 200, 200, 5},
      {"infinitely far away", kInf, kInf, kInf, kInf, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const Drawn drawn = draw(surface, row.minX, row.maxX, row.minY, row.maxY);
    EXPECT_TRUE(drawn.result);
    EXPECT_EQ(row.lines, drawn.lines.size());
    for (const DrawLine& line : drawn.lines) {
      for (const double v : {line.startX, line.startY, line.endX, line.endY}) EXPECT_TRUE(std::isfinite(v));
    }
  }
}

TEST(Preview, AHalfPlaneCutsLikeALargeView) {
  OwnedSurface surface(scattered(40));
  const Drawn half = draw(surface, -kInf, 1100.25, -kInf, kInf);
  const Drawn large = draw(surface, -1e6, 1100.25, -1e6, 1e6);
  ASSERT_EQ(large.lines.size(), half.lines.size());
  EXPECT_GT(half.lines.size(), 10u);
  for (std::size_t i = 0; i < half.lines.size(); ++i) {
    EXPECT_EQ(large.lines[i].startX, half.lines[i].startX);
    EXPECT_EQ(large.lines[i].endY, half.lines[i].endY);
    EXPECT_LE(half.lines[i].endX, 1100.25);
  }
}

// ---- one line

std::optional<LineInPlan> clipped(const ViewRectangle& view, LineInPlan line) {
  const LineInPlan given = line;
  if (detail::clipLine(view, line)) return line;
  EXPECT_EQ(given.startX, line.startX);
  EXPECT_EQ(given.endY, line.endY);
  return std::nullopt;
}

constexpr ViewRectangle kTen{0, 0, 10, 10};

TEST(ClipLine, Rows) {
  const struct {
    const char* name;
    LineInPlan given;
    std::optional<LineInPlan> expected;
  } rows[] = {
      {"wholly inside", {1, 2, 9, 3}, LineInPlan{1, 2, 9, 3}},
      {"on the bounds", {0, 0, 10, 10}, LineInPlan{0, 0, 10, 10}},
      {"along a side", {0, 0, 10, 0}, LineInPlan{0, 0, 10, 0}},
      {"wholly outside", {-5, 1, -1, 9}, std::nullopt},
      {"outside, past a corner", {-5, 4, 4, -5}, std::nullopt},
      {"left to right", {-4, 5, 14, 5}, LineInPlan{0, 5, 10, 5}},
      {"right to left", {14, 5, -4, 5}, LineInPlan{10, 5, 0, 5}},
      {"upwards", {5, -4, 5, 14}, LineInPlan{5, 0, 5, 10}},
      {"downwards", {5, 14, 5, -4}, LineInPlan{5, 10, 5, 0}},
      {"rising through two sides", {-4, 1, 14, 10}, LineInPlan{0, 3, 10, 8}},
      {"the same backwards", {14, 10, -4, 1}, LineInPlan{10, 8, 0, 3}},
      {"through two corners", {-2, -2, 12, 12}, LineInPlan{0, 0, 10, 10}},
      {"through a corner and a side", {-2, 12, 14, 4}, LineInPlan{2, 10, 10, 6}},
      {"through a corner and out of the opposite side", {-2, 12, 6, -4}, LineInPlan{0, 8, 4, 0}},
      {"out to the right", {5, 5, 15, 5}, LineInPlan{5, 5, 10, 5}},
      {"in from the left", {-5, 5, 5, 5}, LineInPlan{0, 5, 5, 5}},
      {"out through the top", {5, 5, 7, 15}, LineInPlan{5, 5, 6, 10}},
      {"in through the bottom", {3, -10, 5, 10}, LineInPlan{4, 0, 5, 10}},
      {"without length, inside", {3, 3, 3, 3}, LineInPlan{3, 3, 3, 3}},
      {"without length, outside", {13, 3, 13, 3}, std::nullopt},
      {"beyond the view along a side", {11, 0, 20, 0}, std::nullopt},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const std::optional<LineInPlan> line = clipped(kTen, row.given);
    ASSERT_EQ(row.expected.has_value(), line.has_value());
    if (!line) continue;
    EXPECT_DOUBLE_EQ(row.expected->startX, line->startX);
    EXPECT_DOUBLE_EQ(row.expected->startY, line->startY);
    EXPECT_DOUBLE_EQ(row.expected->endX, line->endX);
    EXPECT_DOUBLE_EQ(row.expected->endY, line->endY);
  }
}

// It is drawn from the corner to one of its given ends.
TEST(ClipLine, TouchingACorner) {
  const struct {
    LineInPlan given;
    double cornerX, cornerY;
  } rows[] = {{{-5, 5, 5, -5}, 0, 0},   {{5, -5, -5, 5}, 0, 0},  {{8, -2, 12, 2}, 10, 0},
              {{9, 11, 14, 6}, 10, 10}, {{-3, 7, 1, 11}, 0, 10}, {{1, 11, -3, 7}, 0, 10}};
  for (const auto& row : rows) {
    const std::optional<LineInPlan> line = clipped(kTen, row.given);
    ASSERT_TRUE(line);
    const bool startsAtCorner = line->startX == row.cornerX && line->startY == row.cornerY;
    const bool endsAtCorner = line->endX == row.cornerX && line->endY == row.cornerY;
    EXPECT_NE(startsAtCorner, endsAtCorner);
    const LineInPlan& g = row.given;
    if (startsAtCorner) {
      EXPECT_TRUE(line->endX == g.endX && line->endY == g.endY);
    } else {
      EXPECT_TRUE(line->startX == g.startX && line->startY == g.startY);
    }
  }
}

// A line out of the view is cut at the first side that it meets, which is where it begins if that lies on a bound.
TEST(ClipLine, OutOfTheViewFromItsBound) {
  const std::optional<LineInPlan> across = clipped(kTen, {10, 5, -5, 5});  // the right side comes before the left
  ASSERT_TRUE(across);
  EXPECT_EQ(10.0, across->endX);
  const std::optional<LineInPlan> back = clipped(kTen, {0, 5, 15, 5});
  ASSERT_TRUE(back);
  EXPECT_EQ(0.0, back->startX);
  EXPECT_EQ(10.0, back->endX);
  const std::optional<LineInPlan> away = clipped(kTen, {10, 5, 15, 5});
  ASSERT_TRUE(away);
  EXPECT_EQ(10.0, away->startX);
  EXPECT_EQ(10.0, away->endX);
}

// With one end in the view it is drawn whole when every cut is rounded out of the view, as happens where doubles are
// coarser than the tolerance.
TEST(ClipLine, ALineIntoTheViewIsAlwaysDrawn) {
  std::mt19937 random(3);
  std::uniform_real_distribution<double> east(38'500'000.0, 38'500'100.0);
  std::uniform_real_distribution<double> north(3'400'000.0, 3'400'100.0);
  for (int i = 0; i < 20000; ++i) {
    const ViewRectangle view{38'500'020.123, 3'400'020.456, 38'500'080.789, 3'400'080.987};
    const LineInPlan given{38'500'050.0, 3'400'050.0, east(random), north(random)};
    const std::optional<LineInPlan> line = clipped(view, given);
    ASSERT_TRUE(line);
    ASSERT_EQ(given.startX, line->startX);
    ASSERT_EQ(given.startY, line->startY);
    const bool whole = line->endX == given.endX && line->endY == given.endY;
    const bool inView = line->endX - view.maxX < 1e-9 && view.minX - line->endX < 1e-9 &&
                        line->endY - view.maxY < 1e-9 && view.minY - line->endY < 1e-9;
    ASSERT_TRUE(whole || inView);
  }
}

// ---- the other way: the parameters of the line between which it is inside, in exact fractions

struct Inside {
  Fraction from;
  Fraction to;
};

void keepWhere(Inside& inside, const Fraction& atStart, const Fraction& change) {  // atStart + t * change >= 0
  if (change == 0) {
    if (atStart < 0) inside.to = inside.from - 1;
    return;
  }
  const Fraction t = -atStart / change;
  if (change > 0) {
    inside.from = std::max(inside.from, t);
  } else {
    inside.to = std::min(inside.to, t);
  }
}

std::optional<Inside> exactly(const ViewRectangle& view, const LineInPlan& line) {
  Inside inside{0, 1};
  const Fraction x(line.startX), y(line.startY);
  const Fraction dx = Fraction(line.endX) - x, dy = Fraction(line.endY) - y;
  keepWhere(inside, x - Fraction(view.minX), dx);
  keepWhere(inside, Fraction(view.maxX) - x, -dx);
  keepWhere(inside, y - Fraction(view.minY), dy);
  keepWhere(inside, Fraction(view.maxY) - y, -dy);
  if (inside.from > inside.to) return std::nullopt;
  return inside;
}

double along(double from, double to, const Fraction& t) {
  return static_cast<double>(Fraction(from) + t * (Fraction(to) - Fraction(from)));
}

bool isOnBound(const ViewRectangle& view, double x, double y) {
  return x == view.minX || x == view.maxX || y == view.minY || y == view.maxY;
}

void compareWithExact(const ViewRectangle& view, const LineInPlan& given) {
  const std::optional<Inside> inside = exactly(view, given);
  const std::optional<LineInPlan> line = clipped(view, given);
  ASSERT_EQ(inside.has_value(), line.has_value());
  if (!inside) return;
  // These have tests of their own: a line that touches a corner, and one that goes out of the view from its bound.
  const bool touches = inside->from == inside->to && inside->from != 0 && inside->from != 1;
  const bool goesOut = inside->from == 0 && inside->to != 1 && isOnBound(view, given.startX, given.startY);
  const bool comesIn = inside->from != 0 && inside->to == 1 && isOnBound(view, given.endX, given.endY);
  if (touches || goesOut || comesIn) return;
  constexpr double kNear = 1e-9;
  EXPECT_NEAR(along(given.startX, given.endX, inside->from), line->startX, kNear);
  EXPECT_NEAR(along(given.startY, given.endY, inside->from), line->startY, kNear);
  EXPECT_NEAR(along(given.startX, given.endX, inside->to), line->endX, kNear);
  EXPECT_NEAR(along(given.startY, given.endY, inside->to), line->endY, kNear);
}

// Whole numbers: ends on the bounds, lines through corners and along sides come up all the time.
TEST(ClipLine, AgreesWithExactFractionsOnWholeNumbers) {
  std::mt19937 random(1);
  const auto whole = [&] { return static_cast<double>(static_cast<int>(random() % 13) - 3); };
  for (int i = 0; i < 40000 && !testing::Test::HasFailure(); ++i) {
    const double left = whole(), bottom = whole();
    const ViewRectangle view{left, bottom, left + static_cast<double>(1 + random() % 5),
                             bottom + static_cast<double>(1 + random() % 5)};
    const LineInPlan given{whole(), whole(), whole(), whole()};
    SCOPED_TRACE(testing::Message() << view.minX << ' ' << view.minY << ' ' << view.maxX << ' ' << view.maxY << ": "
                                    << given.startX << ' ' << given.startY << ' ' << given.endX << ' ' << given.endY);
    compareWithExact(view, given);
  }
}

TEST(ClipLine, AgreesWithExactFractionsInGeneral) {
  std::mt19937 random(2);
  std::uniform_real_distribution<double> coordinate(-100.0, 100.0);
  for (int i = 0; i < 20000 && !testing::Test::HasFailure(); ++i) {
    double x[2] = {coordinate(random), coordinate(random)}, y[2] = {coordinate(random), coordinate(random)};
    std::sort(x, x + 2);
    std::sort(y, y + 2);
    compareWithExact({x[0], y[0], x[1], y[1]},
                     {coordinate(random), coordinate(random), coordinate(random), coordinate(random)});
  }
}

// Whatever the numbers: no end comes out of nowhere.
TEST(ClipLine, EveryEndIsAGivenOneOrInTheView) {
  const std::array<double, 14> values = {0.0,  -0.0,  1.0,     -1.0,     5.0,     1e-300, 1e308,
                                         kInf, -kInf, DBL_MAX, -DBL_MAX, DBL_MIN, 38.5e6, kNaN};
  std::mt19937 random(4);
  const auto any = [&] { return values[random() % values.size()]; };
  for (int i = 0; i < 100000; ++i) {
    const ViewRectangle view{any(), any(), any(), any()};
    const LineInPlan given{any(), any(), any(), any()};
    const LineInPlan copy = given;
    LineInPlan line = copy;
    if (!detail::clipLine(view, line)) continue;
    const auto isGiven = [&](double x, double y) {
      const auto same = [](double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); };
      return (same(x, given.startX) && same(y, given.startY)) || (same(x, given.endX) && same(y, given.endY));
    };
    const auto isInView = [&](double x, double y) {
      return x - view.maxX < 1e-9 && view.minX - x < 1e-9 && y - view.maxY < 1e-9 && view.minY - y < 1e-9;
    };
    ASSERT_TRUE(isGiven(line.startX, line.startY) || isInView(line.startX, line.startY));
    ASSERT_TRUE(isGiven(line.endX, line.endY) || isInView(line.endX, line.endY));
  }
}

}  // namespace
