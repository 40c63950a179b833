#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include <gtest/gtest.h>

#include "Meshes.h"
#include "pictures/Contours.h"

namespace {

using pictures::Contour;
using pictures::ContourLevels;
using pictures::ContourLine;
using pictures::PlanMesh;
using pictures::Point;

// Heights are 0 to 4 and levels halves, so crossings divide an edge into at most eight parts: in units of 1/840 every
// place is whole, and two places are one exactly when their numbers are equal.
constexpr long long kUnit = 840;
using Spot = std::pair<long long, long long>;
using Stretch = std::pair<Spot, Spot>;

Stretch stretch(const Spot& a, const Spot& b) { return {std::min(a, b), std::max(a, b)}; }

Spot whole(const Point& p) {
  EXPECT_NEAR(p.x * kUnit, std::round(p.x * kUnit), 1e-6);
  EXPECT_NEAR(p.y * kUnit, std::round(p.y * kUnit), 1e-6);
  return {std::llround(p.x * kUnit), std::llround(p.y * kUnit)};
}

// Where the edge from a to b is at half of `twice`; both ends are compared in halves.
Spot crossing(const Point& a, const Point& b, long long twice) {
  const long long za = std::llround(2 * a.z);
  const long long zb = std::llround(2 * b.z);
  const auto along = [&](double from, double to) {
    return std::llround(from) * kUnit + std::llround(to - from) * kUnit * (twice - za) / (zb - za);
  };
  return {along(a.x, b.x), along(a.y, b.y)};
}

// The segments that a contour must have, triangle by triangle, in whole numbers.
std::set<Stretch> expected(const PlanMesh& mesh, long long twice) {
  std::set<Stretch> all;
  for (const auto& t : mesh.triangles) {
    std::set<Spot> met;
    int flat = 0;
    for (int i = 0; i < 3; ++i) {
      const Point& a = mesh.corner(t, i);
      const Point& b = mesh.corner(t, (i + 1) % 3);
      const long long za = std::llround(2 * a.z);
      const long long zb = std::llround(2 * b.z);
      if (za == twice) ++flat;
      if (za != zb && std::min(za, zb) <= twice && twice <= std::max(za, zb)) met.insert(crossing(a, b, twice));
      if (za == zb && za == twice) met.insert({std::llround(a.x) * kUnit, std::llround(a.y) * kUnit});
    }
    if (flat == 3) continue;
    if (met.size() == 2) all.insert({*met.begin(), *met.rbegin()});
  }
  return all;
}

std::set<Stretch> drawn(const Contour& contour) {
  std::set<Stretch> all;
  for (const ContourLine& line : contour.lines) {
    EXPECT_GE(line.points.size(), 2U);
    for (std::size_t i = 1; i < line.points.size(); ++i) {
      const Stretch s = stretch(whole(line.points[i - 1]), whole(line.points[i]));
      EXPECT_NE(s.first, s.second);
      EXPECT_TRUE(all.insert(s).second) << "drawn twice";
    }
  }
  return all;
}

// Lines meet at their ends and nowhere else.
void expectApart(const Contour& contour) {
  std::map<Spot, int> inside;
  std::set<Spot> ends;
  for (const ContourLine& line : contour.lines) {
    EXPECT_EQ(line.closed, whole(line.points.front()) == whole(line.points.back()));
    ends.insert(whole(line.points.front()));
    ends.insert(whole(line.points.back()));
    for (std::size_t i = 1; i + 1 < line.points.size(); ++i) EXPECT_EQ(++inside[whole(line.points[i])], 1);
  }
  for (const Spot& end : ends) EXPECT_EQ(inside.count(end), 0U);
}

TEST(Contours, AreTheLevelSetLineForLineOnTerrainFullOfFlatsAndTies) {
  std::mt19937 random(7);
  for (int round = 0; round < 150; ++round) {
    std::uniform_int_distribution<int> steps(0, 1 + round % 4);
    const PlanMesh mesh = meshes::grid(random, 9, 7, [&](auto, auto) { return steps(random); });
    const std::vector<Contour> contours = pictures::contours(mesh, {0.5});
    std::map<long long, const Contour*> byLevel;
    for (const Contour& c : contours) byLevel[std::llround(2 * c.level)] = &c;
    for (long long twice = -1; twice <= 9; ++twice) {
      const std::set<Stretch> wanted = expected(mesh, twice);
      ASSERT_EQ(byLevel.count(twice), wanted.empty() ? 0U : 1U) << "level " << twice << "/2, round " << round;
      if (wanted.empty()) continue;
      EXPECT_EQ(drawn(*byLevel[twice]), wanted) << "level " << twice << "/2, round " << round;
      expectApart(*byLevel[twice]);
    }
  }
}

// How often a ray from (x, y) to the north crosses the lines.
int crossings(const Contour& contour, double x, double y) {
  int count = 0;
  for (const ContourLine& line : contour.lines) {
    for (std::size_t i = 1; i < line.points.size(); ++i) {
      const Point& a = line.points[i - 1];
      const Point& b = line.points[i];
      if ((a.x > x) == (b.x > x)) continue;
      if (a.y + (b.y - a.y) * (x - a.x) / (b.x - a.x) > y) ++count;
    }
  }
  return count;
}

TEST(Contours, PartHighGroundFromLowAsTheSurfacesHeightsDo) {
  std::mt19937 random(11);
  const auto hills = [](double x, double y) {
    const double rim = std::min({x - 500.0, 600.0 - x, y - 300.0, 400.0 - y});
    return rim <= 0.0 ? 0.0 : 3.0 + 8.0 * std::sin(x / 7.0) * std::cos(y / 9.0);
  };
  meshes::Terrain terrain = meshes::scattered(random, 2000, 500.0, 300.0, 100.0, hills);
  // The hull lies low, so every contour above it closes.
  for (int i = 1; i < 50; ++i) {
    for (const double side : {0.0, 100.0}) {
      terrain.add(500.0 + 2.0 * i, 300.0 + side, 0.0);
      terrain.add(500.0 + side, 300.0 + 2.0 * i, 0.0);
    }
  }
  terrain.build();
  const pictures::Origin origin = pictures::originOf(*terrain.tin);
  const PlanMesh mesh = pictures::planMesh(*terrain.tin, origin);
  const std::vector<Contour> contours = pictures::contours(mesh, {0.731, 0.2});
  ASSERT_GT(contours.size(), 8U);
  std::uniform_real_distribution<double> place(0.01, 99.99);
  int high = 0;
  for (const Contour& contour : contours) {
    if (contour.level <= 0.0) continue;
    for (const ContourLine& line : contour.lines) EXPECT_TRUE(line.closed);
    for (int i = 0; i < 400; ++i) {
      const double x = place(random);
      const double y = place(random);
      const double height = terrain.tin->getHeight(origin.x + x, origin.y + y);
      if (std::fabs(height - contour.level) < 1e-6) continue;
      const bool isHigh = crossings(contour, x, y) % 2 == 1;
      EXPECT_EQ(isHigh, height > contour.level) << x << ' ' << y << " at " << contour.level;
      high += isHigh ? 1 : 0;
    }
  }
  EXPECT_GT(high, 500);
}

PlanMesh meshOf(std::vector<Point> points, std::vector<std::array<std::uint32_t, 3>> triangles) {
  PlanMesh mesh;
  mesh.points = std::move(points);
  mesh.triangles = std::move(triangles);
  return mesh;
}

// A square with a corner in its middle.
PlanMesh roof(double a, double b, double c, double d, double middle) {
  return meshOf({{0, 0, a}, {2, 0, b}, {2, 2, c}, {0, 2, d}, {1, 1, middle}},
                {{0, 1, 4}, {1, 2, 4}, {2, 3, 4}, {3, 0, 4}});
}

std::size_t linesAt(const PlanMesh& mesh, double level) {
  for (const Contour& c : pictures::contours(mesh, {0.5})) {
    if (c.level == level) return c.lines.size();
  }
  return 0;
}

TEST(Contours, OfAPyramidAreRingsThatEndBelowItsTop) {
  const PlanMesh pyramid = roof(0, 0, 0, 0, 1);
  const std::vector<Contour> contours = pictures::contours(pyramid, {0.5});
  ASSERT_EQ(contours.size(), 2U);  // the foot and half way up; the top is a point
  for (const Contour& c : contours) {
    ASSERT_EQ(c.lines.size(), 1U);
    EXPECT_TRUE(c.lines[0].closed);
    EXPECT_EQ(c.lines[0].points.size(), 5U);
  }
}

TEST(Contours, FollowARidgeAndAValleyInTheLevelOnce) {
  for (const double side : {0.0, 2.0}) {
    const PlanMesh mesh = meshOf({{0, 0, 1}, {1, 0, 1}, {0, 1, side}, {1, -1, side}}, {{0, 1, 2}, {0, 3, 1}});
    EXPECT_EQ(linesAt(mesh, 1.0), 1U);
  }
}

TEST(Contours, CrossASaddleInLinesThatMeetThere) { EXPECT_EQ(linesAt(roof(0, 2, 0, 2, 1), 1.0), 4U); }

TEST(Contours, LeaveTheInsideOfFlatGroundFree) {
  EXPECT_TRUE(pictures::contours(roof(1, 1, 1, 1, 1), {0.5}).empty());
  // A flat square with a slope at one side: the edge between them is the line.
  const PlanMesh mesh = meshOf({{0, 0, 1}, {1, 0, 1}, {0, 1, 1}, {1, -1, 0}}, {{0, 1, 2}, {0, 3, 1}});
  EXPECT_EQ(linesAt(mesh, 1.0), 1U);
}

TEST(Contours, LevelsAreTheDecimalNumbersThatWereMeant) {
  // Three times 0.1 is the double above 0.3; the ridge at 0.3 lies in the level all the same.
  const PlanMesh mesh = meshOf({{0, 0, 0.3}, {1, 0, 0.3}, {0, 1, 0.25}, {1, -1, 0.25}}, {{0, 1, 2}, {0, 3, 1}});
  const std::vector<Contour> contours = pictures::contours(mesh, {0.1});
  ASSERT_EQ(contours.size(), 1U);
  EXPECT_EQ(contours[0].level, 0.3);
}

TEST(Contours, EveryFifthFromTheBaseIsAnIndexContour) {
  const PlanMesh slope = meshOf({{0, 0, 0.1}, {1, 0, 0.1}, {0, 1, 11.9}}, {{0, 1, 2}});
  std::vector<double> index;
  for (const Contour& c : pictures::contours(slope, {1.0, 2.0})) {
    if (c.index) index.push_back(c.level);
  }
  EXPECT_EQ(index, (std::vector<double>{2.0, 7.0}));
  EXPECT_EQ(pictures::countLevels(slope, {1.0, 2.0}), 11.0);
}

TEST(Contours, RoundStepsAreOneTwoOrFiveTimesAPowerOfTen) {
  for (const auto& [least, step] : std::vector<std::pair<double, double>>{
           {0.9, 1}, {1, 1}, {1.1, 2}, {2, 2}, {2.1, 5}, {5, 5}, {5.1, 10}, {0.03, 0.05}, {370, 500}, {999, 1000}}) {
    EXPECT_DOUBLE_EQ(pictures::roundStep(least), step) << least;
  }
}

}  // namespace
