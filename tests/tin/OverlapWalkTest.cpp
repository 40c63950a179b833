// The walk over the triangles that overlap a given one finds all of them and no others, held against a test of every
// triangle in whole millimetres; and volumes between fans of slivers, which go over to it, are right.
#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <numbers>
#include <vector>

#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/tin/OverlapWalk.h>
#include <gtest/gtest.h>

#include "Inputs.h"
#include "TINSupport.h"
#include "VolumeSupport.h"

namespace {

using detail::Facet;
using detail::FlatTIN;
using detail::OverlapWalk;
using inputs::Positions;
using support::Millimetres;
using support::Model;

using Corners = std::array<Millimetres, 3>;

Corners cornersOf(const CEType& tin, int triangle) {
  const auto points = support::cornersOf(tin, triangle);
  Corners result{};
  for (std::size_t i = 0; i < 3; ++i) result[i] = support::millimetresOf(*(*points)[i]);
  return result;
}

// For triangles that turn counter-clockwise.
bool isBeyondASide(const Corners& t, const Corners& other) {
  for (std::size_t i = 0; i < 3; ++i) {
    if (std::all_of(other.begin(), other.end(),
                    [&](const Millimetres& p) { return support::cross(t[i], t[(i + 1) % 3], p) <= 0; })) {
      return true;
    }
  }
  return false;
}

bool canBeWalkedOver(const CEType& tin) { return OverlapWalk(FlatTIN::of(tin)).isPossible(); }

// Walks for every triangle of `own`; returns for how many of them no triangle to begin with was found.
int expectAllThatOverlap(const CEType& own, const CEType& reference) {
  OverlapWalk walk(FlatTIN::of(reference));
  std::vector<Corners> others;
  for (int tri = 1; tri <= support::triangleCount(reference); ++tri) others.push_back(cornersOf(reference, tri));
  int notBegun = 0;
  for (int tri = 1; tri <= support::triangleCount(own); ++tri) {
    Facet facet{};
    EXPECT_TRUE(Facet::make(own, tri, facet));
    const Corners corners = cornersOf(own, tri);
    std::vector<int> expected;
    for (std::size_t i = 0; i < others.size(); ++i) {
      if (!isBeyondASide(corners, others[i]) && !isBeyondASide(others[i], corners)) {
        expected.push_back(static_cast<int>(i) + 1);
      }
    }
    std::vector<int> found;
    if (!walk.visit(facet, [&found](int number) { found.push_back(number); })) {
      EXPECT_TRUE(found.empty());
      ++notBegun;
      continue;
    }
    std::sort(found.begin(), found.end());
    EXPECT_EQ(found, expected) << "triangle " << tri;
  }
  return notBegun;
}

TEST(OverlapWalk, FindsAllThatOverlapsOnRandomSurfaces) {
  int walkedOver = 0;
  for (std::uint64_t seed = 1; seed <= 10; ++seed) {
    SCOPED_TRACE(seed);
    const Model one(inputs::randomMillimetres(seed, 60, 10, 0, 0));
    const Model fine(inputs::randomMillimetres(seed + 50, 400, 20, -5, -5));
    const Model coarse(inputs::randomMillimetres(seed + 90, 8, 300, -150, -150));
    const Model aside(inputs::randomMillimetres(seed + 30, 60, 10, 5, 3));
    // The sweep forgives an outline a dent of a fraction of a millimetre.
    if (!canBeWalkedOver(*one.tin) || !canBeWalkedOver(*fine.tin) || !canBeWalkedOver(*aside.tin)) continue;
    ASSERT_TRUE(canBeWalkedOver(*coarse.tin));
    ++walkedOver;
    EXPECT_EQ(expectAllThatOverlap(*one.tin, *fine.tin), 0);
    expectAllThatOverlap(*one.tin, *coarse.tin);
    expectAllThatOverlap(*coarse.tin, *fine.tin);
    EXPECT_GT(expectAllThatOverlap(*one.tin, *aside.tin), 0);
    EXPECT_EQ(expectAllThatOverlap(*one.tin, *one.tin), 0);
  }
  EXPECT_GT(walkedOver, 5);
}

// Slivers around a centre.
Positions rim(int spokes, double radius, double x0, double turn, double z) {
  Positions positions{{x0, 0, z}};
  for (int i = 0; i < spokes; ++i) {
    const double angle = turn + 2 * std::numbers::pi * i / spokes;
    positions.push_back({x0 + radius * std::cos(angle), radius * std::sin(angle), z});
  }
  return positions;
}

std::vector<std::array<int, 3>> spokesOf(int spokes) {
  std::vector<std::array<int, 3>> faces;
  for (int i = 0; i < spokes; ++i) faces.push_back({0, 1 + i, 1 + (i + 1) % spokes});
  return faces;
}

// In whole millimetres; few spokes on a wide rim stay convex.
Positions rounded(Positions positions) {
  for (auto& p : positions) {
    for (double& coordinate : p) coordinate = std::round(coordinate * 1000) / 1000;
  }
  return positions;
}

TEST(OverlapWalk, FindsAllThatOverlapsInFans) {
  const Model one(rounded(rim(100, 500, 0, 0, 0)), spokesOf(100));
  ASSERT_TRUE(canBeWalkedOver(*one.tin));
  for (const auto& [spokes, x0, turn] : {std::array{100.0, 0.0, 0.0}, {100.0, 0.0, 0.01}, {77.0, 40.0, 0.5}}) {
    const auto count = static_cast<int>(spokes);
    const Model other(rounded(rim(count, 700, x0, turn, 0)), spokesOf(count));
    ASSERT_TRUE(canBeWalkedOver(*other.tin));
    EXPECT_EQ(expectAllThatOverlap(*one.tin, *other.tin), 0);
  }
  const Model small(rounded(rim(50, 20, 0, 0.02, 0)), spokesOf(50));
  EXPECT_EQ(expectAllThatOverlap(*one.tin, *small.tin), 0);
  EXPECT_EQ(expectAllThatOverlap(*small.tin, *one.tin), 0);
}

TEST(OverlapWalk, IsNotForWhatIsNotConvexOrCoversTwice) {
  Positions positions = rim(12, 500, 0, 0, 0);
  positions[3] = {positions[3][0] / 2, positions[3][1] / 2, 0};
  const Model dented(positions, spokesOf(12));
  EXPECT_FALSE(canBeWalkedOver(*dented.tin));
  auto faces = spokesOf(12);
  faces.pop_back();
  const Model open(rim(12, 500, 0, 0, 0), faces);
  EXPECT_FALSE(canBeWalkedOver(*open.tin));
  faces = spokesOf(12);
  faces.push_back({0, 2, 5});
  const Model twice(rim(12, 500, 0, 0, 0), faces);
  EXPECT_FALSE(canBeWalkedOver(*twice.tin));
}

double shoelace(const Positions& ring) {
  double sum = 0;
  for (std::size_t i = 1; i < ring.size(); ++i) {
    const auto& a = ring[i];
    const auto& b = ring[i + 1 == ring.size() ? 1 : i + 1];
    sum += (a[0] - ring[0][0]) * (b[1] - ring[0][1]) - (b[0] - ring[0][0]) * (a[1] - ring[0][1]);
  }
  return sum / 2;
}

// So many slivers that their boxes are given up on midway; what they cover is known.
TEST(OverlapWalk, VolumesBetweenFansOfThousandsOfSliversAreRight) {
  constexpr int kSpokes = 4000;
  for (const double x0 : {0.0, 38500000.0}) {
    const Positions inner = rim(kSpokes, 500, x0, 0.0003, 10);
    const Model ground(inner, spokesOf(kSpokes));
    const Model design(rim(kSpokes, 700, x0, 0, 12.5), spokesOf(kSpokes));
    ASSERT_TRUE(canBeWalkedOver(*ground.tin) && canBeWalkedOver(*design.tin));
    const double area = shoelace(inner);
    for (const auto& [own, reference] : {std::pair{&ground, &design}, {&design, &ground}}) {
      double coverage = 0;
      const std::unique_ptr<FillCutResult> result(own->tin->getFillCutExact(reference->tin.get(), &coverage));
      EXPECT_NEAR(coverage, area, 1e-11 * area);
      const bool isFill = own == &ground;
      EXPECT_NEAR(result->getFillVolume(), isFill ? 2.5 * area : 0, 1e-11 * area);
      EXPECT_NEAR(result->getCutVolume(), isFill ? 0 : 2.5 * area, 1e-11 * area);
    }
  }
}

}  // namespace
