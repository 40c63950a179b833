// Networks and boundaries that only touch have no volume in common, and those that overlap by a millimetre have: by
// sampling and exactly, wherever they lie.
#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/CommonArea.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/Triangle3.h>
#include <gtest/gtest.h>

#include "Inputs.h"
#include "RationalContact.h"
#include "TINSupport.h"
#include "VolumeSupport.h"

namespace {

using inputs::Positions;
using support::Model;
using support::Polygon;
using support::setBoundary;

using Faces = std::vector<std::array<int, 3>>;

// A place on the map: turned by the angle of a right triangle of whole sides, so that whole numbers on a line stay on
// one, then moved.
struct Frame {
  const char* name;
  double a;
  double b;
  double scale;
  double x;
  double y;

  std::array<double, 2> at(double u, double v) const {
    return {(a * u - b * v) * scale + x, (b * u + a * v) * scale + y};
  }
};

// The last three have decimals that are no doubles.
const Frame kFrames[] = {
    {"as it is", 1, 0, 1, 0, 0},
    {"projected", 1, 0, 1, 38500000, 3400000},
    {"turned", 3, 4, 0.2, 0, 0},
    {"turned and projected", 4, 3, 1, 38500017, 3400011},
    {"thousandths", 1, 0, 0.001, 2.1, 7.7},
    {"turned thousandths", 12, 5, 0.001, 38500000.123, 3400000.457},
    {"turned thousandths beside the origin", 3, 4, 0.1, -17.3, -0.7},
};

// Units of the map for one of the frame.
double unitOf(const Frame& frame) { return std::hypot(frame.a, frame.b) * frame.scale; }

Positions placed(const Frame& frame, Positions positions) {
  for (auto& p : positions) {
    const auto [x, y] = frame.at(p[0], p[1]);
    // What a file of three decimals would give.
    p[0] = std::nearbyint(x * 1000) / 1000;
    p[1] = std::nearbyint(y * 1000) / 1000;
  }
  return positions;
}

Polygon placed(const Frame& frame, const Polygon& polygon) {
  Polygon result;
  for (const auto& p : polygon) {
    const auto [x, y] = frame.at(p[0], p[1]);
    result.push_back({std::nearbyint(x * 1000) / 1000, std::nearbyint(y * 1000) / 1000});
  }
  return result;
}

Positions rectangle(int x0, int y0, int x1, int y1, int step, double z) {
  Positions result;
  for (int x = x0; x <= x1; x += step) {
    for (int y = y0; y <= y1; y += step) result.push_back({double(x), double(y), z + 0.01 * ((x * 7 + y * 3) % 11)});
  }
  return result;
}

struct Volumes {
  std::array<double, 10> sampled;
  std::size_t pieces;
  std::array<double, 10> exact;
  double coverage;
};

Volumes volumesOf(CEType& tin, CEType& reference) {
  Volumes v{};
  v.sampled = support::numbersOf(*support::fillCut(tin, reference));
  v.pieces = tin.getTriangle3List().size();
  const std::unique_ptr<FillCutResult> r(tin.getFillCutExact(&reference, &v.coverage));
  v.exact = support::numbersOf(*r);
  return v;
}

Volumes volumesOf(CEType& tin, double level) {
  Volumes v{};
  const std::unique_ptr<FillCutResult> sampled(tin.getFillCut(level));
  v.sampled = support::numbersOf(*sampled);
  v.pieces = tin.getTriangle3List().size();
  const std::unique_ptr<FillCutResult> r(tin.getFillCutExact(level, &v.coverage));
  v.exact = support::numbersOf(*r);
  return v;
}

void expectNothing(const Volumes& v) {
  constexpr std::array<double, 10> kZeros{};
  EXPECT_EQ(v.sampled, kZeros);
  EXPECT_EQ(v.pieces, 0u);
  EXPECT_EQ(v.exact, kZeros);
  EXPECT_EQ(v.coverage, 0.0);
}

void expectSomething(const Volumes& v) {
  EXPECT_GT(v.sampled[4] + v.sampled[6], 0.0);
  EXPECT_GT(v.pieces, 0u);
  EXPECT_GT(v.coverage, 0.0);
  EXPECT_GT(v.exact[8] + v.exact[9], 0.0);
}

void expectBothWays(const Positions& one, const Positions& other, void (*expectation)(const Volumes&)) {
  const Model a(one);
  const Model b(other);
  expectation(volumesOf(*a.tin, *b.tin));
  expectation(volumesOf(*b.tin, *a.tin));
}

class Contact : public testing::TestWithParam<Frame> {};

TEST_P(Contact, NeighboursThatShareASideHaveNothingInCommon) {
  const Frame& frame = GetParam();
  expectBothWays(placed(frame, rectangle(0, 0, 200, 100, 20, 10)), placed(frame, rectangle(200, 0, 300, 100, 20, 30)),
                 expectNothing);
  expectBothWays(placed(frame, rectangle(0, 0, 200, 100, 20, 10)), placed(frame, rectangle(0, 100, 200, 180, 20, 30)),
                 expectNothing);
}

TEST_P(Contact, NeighboursThatShareAPartOfASideHaveNothingInCommon) {
  const Frame& frame = GetParam();
  expectBothWays(placed(frame, rectangle(0, 0, 200, 100, 20, 10)), placed(frame, rectangle(200, 30, 280, 70, 5, 30)),
                 expectNothing);
  expectBothWays(placed(frame, {{0, 0, 1}, {600, 0, 2}, {0, 600, 3}}),
                 placed(frame, {{300, 300, 1}, {500, 100, 4}, {900, 900, 2}}), expectNothing);
}

TEST_P(Contact, NeighboursThatShareACornerHaveNothingInCommon) {
  const Frame& frame = GetParam();
  expectBothWays(placed(frame, rectangle(0, 0, 200, 100, 20, 10)), placed(frame, rectangle(200, 100, 300, 160, 20, 30)),
                 expectNothing);
  // A corner on a side.
  expectBothWays(placed(frame, {{0, 0, 1}, {600, 0, 2}, {0, 600, 3}}),
                 placed(frame, {{200, 400, 1}, {900, 400, 4}, {900, 900, 2}}), expectNothing);
}

TEST_P(Contact, AnOverlapOfAMillimetreCounts) {
  const Frame& frame = GetParam();
  const double millimetre = 0.001 / unitOf(frame);
  Positions beyond = rectangle(200, 0, 300, 100, 20, 30);
  for (auto& p : beyond) p[0] -= std::max(1.0, std::ceil(millimetre)) * millimetre;
  const Positions one = placed(frame, rectangle(0, 0, 200, 100, 20, 10));
  const Positions other = placed(frame, beyond);
  const Model a(one);
  const Model b(other);
  const Volumes v = volumesOf(*a.tin, *b.tin);
  EXPECT_GT(v.coverage, 0.0);
  EXPECT_NEAR(v.coverage, 0.001 * 100 * unitOf(frame), 0.0011 * 100 * unitOf(frame));
  EXPECT_GT(v.exact[8], 0.0);
  EXPECT_EQ(v.exact[9], 0.0);
  EXPECT_GT(v.sampled[4], 0.0);
  EXPECT_GT(v.pieces, 0u);
}

TEST_P(Contact, ABoundaryBesideTheSurfaceLeavesNothing) {
  const Frame& frame = GetParam();
  const Model a(placed(frame, rectangle(0, 0, 200, 100, 50, 10)));
  const Model design(placed(frame, rectangle(-100, -100, 400, 300, 100, 30)));
  const Polygon besideASide = {{200, -20}, {300, -20}, {300, 140}, {200, 140}};
  const Polygon atPartOfASide = {{0, 100}, {60, 100}, {60, 200}, {10, 200}};
  const Polygon atACorner = {{200, 100}, {300, 100}, {300, 200}};
  const Polygon acrossACorner = {{180, 120}, {220, 80}, {300, 300}};
  // The surface lies in the notch, all of whose sides it touches.
  const Polygon inANotch = {{-50, -50}, {250, -50}, {250, 0}, {0, 0},     {0, 100},
                            {200, 100}, {200, 0},   {250, 0}, {250, 150}, {-50, 150}};
  // As a hole: the outer ring, a seam and the surface's outline.
  const Polygon around = {{-50, -50}, {250, -50}, {250, 150}, {-50, 150}, {-50, -50},
                          {0, 0},     {200, 0},   {200, 100}, {0, 100},   {0, 0}};
  for (const Polygon& boundary : {besideASide, atPartOfASide, atACorner, acrossACorner, inANotch, around}) {
    for (const bool reversed : {false, true}) {
      SCOPED_TRACE(::testing::PrintToString(boundary));
      Polygon turned = boundary;
      if (reversed) std::reverse(turned.begin(), turned.end());
      setBoundary(*a.tin, placed(frame, turned));
      expectNothing(volumesOf(*a.tin, reversed ? 2.0 : 10.05));
      if (!reversed) expectNothing(volumesOf(*a.tin, *design.tin));
    }
  }
}

TEST_P(Contact, ABoundaryThatReachesInLeavesSomething) {
  const Frame& frame = GetParam();
  const Model a(placed(frame, rectangle(0, 0, 200, 100, 50, 10)));
  const Model design(placed(frame, rectangle(-100, -100, 400, 300, 100, 30)));
  const double in = std::max(1.0, 20 * 0.001 / unitOf(frame));
  const Polygon besideASide = {{200 - in, -20}, {300, -20}, {300, 140}, {200 - in, 140}};
  const Polygon around = {{-50, -50}, {250, -50},     {250, 150},           {-50, 150},     {-50, -50},
                          {in, in},   {200 - in, in}, {200 - in, 100 - in}, {in, 100 - in}, {in, in}};
  for (const Polygon& boundary : {besideASide, around}) {
    SCOPED_TRACE(::testing::PrintToString(boundary));
    setBoundary(*a.tin, placed(frame, boundary));
    expectSomething(volumesOf(*a.tin, *design.tin));
    expectSomething(volumesOf(*a.tin, 2.0));
  }
}

TEST_P(Contact, NothingIsInCommonWithWhatLiesInAHole) {
  const Frame& frame = GetParam();
  // A frame of four trapezoids around a hole, of its own triangles.
  const Positions corners = placed(frame, {{0, 0, 1},
                                           {300, 0, 2},
                                           {300, 300, 1},
                                           {0, 300, 2},
                                           {100, 100, 3},
                                           {200, 100, 2},
                                           {200, 200, 1.5},
                                           {100, 200, 1}});
  const Faces faces = {{0, 1, 5}, {0, 5, 4}, {1, 2, 6}, {1, 6, 5}, {2, 3, 7}, {2, 7, 6}, {3, 0, 4}, {3, 4, 7}};
  const Model withHole(corners, faces);
  const Model inside(placed(frame, rectangle(100, 100, 200, 200, 20, 40)));
  expectNothing(volumesOf(*withHole.tin, *inside.tin));
  expectNothing(volumesOf(*inside.tin, *withHole.tin));
  const Model smaller(placed(frame, {{100, 150, 9}, {150, 100, 9}, {200, 150, 9}, {150, 200, 9}}));
  expectNothing(volumesOf(*withHole.tin, *smaller.tin));
  expectNothing(volumesOf(*smaller.tin, *withHole.tin));
  const Model larger(placed(frame, {{90, 150, 9}, {150, 100, 9}, {200, 150, 9}, {150, 200, 9}}));
  expectSomething(volumesOf(*withHole.tin, *larger.tin));
  setBoundary(*withHole.tin, placed(frame, Polygon{{100, 100}, {200, 100}, {200, 200}, {100, 200}}));
  const Model design(placed(frame, rectangle(-100, -100, 400, 400, 100, 30)));
  expectNothing(volumesOf(*withHole.tin, *design.tin));
  expectNothing(volumesOf(*withHole.tin, 0.5));
}

TEST_P(Contact, IslandsThatTouchHaveNothingInCommon) {
  const Frame& frame = GetParam();
  const Model islands(placed(frame, {{0, 0, 1}, {100, 0, 1}, {0, 100, 1}, {300, 0, 1}, {400, 0, 1}, {400, 100, 1}}),
                      {{0, 1, 2}, {3, 4, 5}});
  const Model between(placed(frame, {{100, 0, 5}, {300, 0, 5}, {400, 100, 7}, {0, 100, 5}}), {{0, 1, 2}, {0, 2, 3}});
  expectNothing(volumesOf(*islands.tin, *between.tin));
  expectNothing(volumesOf(*between.tin, *islands.tin));
  const Model onOne(placed(frame, {{100, 0, 5}, {300, 0, 5}, {400, 90, 7}, {0, 100, 5}}), {{0, 1, 2}, {0, 2, 3}});
  expectSomething(volumesOf(*islands.tin, *onOne.tin));
}

INSTANTIATE_TEST_SUITE_P(Frames, Contact, testing::ValuesIn(kFrames));

// ---- against the slow comparison, to the last bit

TEST(ContactComparison, TouchingNetworksAgreeWithTheSlowComparison) {
  for (const Frame& frame : kFrames) {
    SCOPED_TRACE(frame.name);
    const Positions one = placed(frame, rectangle(0, 0, 200, 100, 50, 10));
    for (const Positions& other : {rectangle(200, 0, 300, 100, 50, 30), rectangle(200, 30, 280, 70, 20, 30),
                                   rectangle(200, 100, 300, 150, 50, 30)}) {
      const auto result =
          support::expectSameComparison([&] { return Model(one); }, [&] { return Model(placed(frame, other)); }, {});
      EXPECT_TRUE(result.pieces.empty());
    }
    const auto result = support::expectSameComparison(
        [&] { return Model(one); }, [&] { return Model(placed(frame, rectangle(190, 30, 280, 70, 10, 30))); }, {});
    EXPECT_FALSE(result.onlyTouches);
    EXPECT_FALSE(result.pieces.empty());
  }
}

TEST(ContactComparison, SomePiecesAreMeasuredAlongAContact) {
  const auto result = support::expectSameComparison([] { return Model(rectangle(0, 0, 200, 100, 50, 10)); },
                                                    [] { return Model(rectangle(200, 0, 300, 100, 50, 30)); }, {});
  EXPECT_TRUE(result.onlyTouches);
}

TEST(ContactComparison, TouchingBoundariesAgreeWithTheSlowComparison) {
  const Positions one = rectangle(0, 0, 200, 100, 50, 10);
  const Polygon spike = {{200, 0}, {300, 0}, {300, 100}, {200, 100}, {200, 50}, {100, 50}, {200, 50}};
  const Polygon beside = {{200, -20}, {300, -20}, {300, 140}, {200, 140}};
  const Polygon bow = {{200, 0}, {300, 100}, {300, 0}, {200, 100}};
  const Polygon reaching = {{199, -20}, {300, -20}, {300, 140}, {200, 140}};
  for (const Polygon& boundary : {spike, beside, bow, reaching}) {
    SCOPED_TRACE(::testing::PrintToString(boundary));
    const auto result = support::expectSameLevel([&] { return Model(one); }, 3.0, boundary);
    EXPECT_EQ(result.pieces.empty(), boundary != reaching);
    support::expectSameComparison([&] { return Model(one); },
                                  [] { return Model(rectangle(-50, -50, 350, 150, 50, 30)); }, boundary);
  }
}

// ---- the decision by itself

std::vector<exact::PlanTriangle> randomTriangles(inputs::Random& random, int count, int side) {
  std::vector<exact::PlanTriangle> result;
  const auto coordinate = [&] { return static_cast<double>(random.between(0, side)); };
  for (int i = 0; i < count; ++i) {
    result.push_back({{{coordinate(), coordinate()}, {coordinate(), coordinate()}, {coordinate(), coordinate()}}});
  }
  return result;
}

std::vector<detail::PlanTriangle> planOf(const std::vector<exact::PlanTriangle>& triangles) {
  std::vector<detail::PlanTriangle> result;
  for (const auto& t : triangles) result.push_back({{{t[0][0], t[0][1]}, {t[1][0], t[1][1]}, {t[2][0], t[2][1]}}});
  return result;
}

TEST(CommonArea, AgreesWithRationalArithmeticOnSmallLattices) {
  inputs::Random random(13);
  int touching = 0;
  constexpr int kTries = 500;
  for (int i = 0; i < kTries; ++i) {
    SCOPED_TRACE(i);
    const auto first = randomTriangles(random, 1 + i % 2, 3);
    const auto second = randomTriangles(random, 1, 3);
    exact::PlanPolygon boundary;
    for (auto corners = i % 3 == 0 ? 0 : random.between(3, 7); corners > 0; --corners) {
      boundary.push_back({static_cast<double>(random.between(0, 3)), static_cast<double>(random.between(0, 3))});
    }
    std::vector<detail::Position> corners;
    for (const auto& p : boundary) corners.push_back({p[0], p[1]});
    const bool expected = exact::haveCommonArea(first, second, boundary);
    ASSERT_EQ(detail::haveCommonArea({planOf(first), planOf(second), true, corners}), expected);
    if (!boundary.empty()) {
      ASSERT_EQ(detail::haveCommonArea({planOf(first), {}, false, corners}),
                exact::haveCommonArea(first, first, boundary));
    }
    touching += expected ? 0 : 1;
  }
  EXPECT_GT(touching, kTries / 5);
  EXPECT_LT(touching, kTries * 4 / 5);
}

// A place that is surely common proves a common area.
TEST(CommonArea, WhatIsSureIsTrue) {
  inputs::Random random(14);
  int sure = 0;
  for (int i = 0; i < 20000; ++i) {
    const auto first = randomTriangles(random, 1, 4);
    const auto second = randomTriangles(random, 1, 4);
    std::vector<detail::Position> boundary;
    for (auto corners = i % 2 == 0 ? 0 : random.between(3, 6); corners > 0; --corners) {
      boundary.push_back({static_cast<double>(random.between(0, 4)), static_cast<double>(random.between(0, 4))});
    }
    const detail::Position p{static_cast<double>(random.between(0, 16)) / 4,
                             static_cast<double>(random.between(0, 16)) / 4};
    if (!detail::isSurelyCommon(p, planOf(first)[0], planOf(second)[0], boundary)) continue;
    ++sure;
    EXPECT_TRUE(detail::haveCommonArea({planOf(first), planOf(second), true, boundary}));
  }
  EXPECT_GT(sure, 100);
}

// Slivers around two hubs, whose boxes all overlap although the fans only touch along a sloping line.
TEST(CommonArea, FansThatTouchAreToldApartQuickly) {
  constexpr int kSlivers = 20000;
  std::vector<detail::PlanTriangle> fans[2];
  for (int i = 0; i < kSlivers; ++i) {
    const double t = i;
    fans[0].push_back({{{0, 30000}, {t, t}, {t + 1, t + 1}}});
    fans[1].push_back({{{30000, 0}, {t, t}, {t + 1, t + 1}}});
  }
  EXPECT_FALSE(detail::haveCommonArea({fans[0], fans[1], true, {}}));
  EXPECT_FALSE(detail::haveCommonArea({fans[0], {}, false, {{0, 0}, {20000, 20000}, {40000, 0}}}));
  fans[1].push_back({{{10000, 10000}, {10000, 9000}, {9999, 10000}}});
  EXPECT_TRUE(detail::haveCommonArea({fans[0], fans[1], true, {}}));
}

TEST(CommonArea, WhatIsNoNumberIsNotDecided) {
  const std::vector<detail::PlanTriangle> one = {{{{0, 0}, {1, 0}, {0, 1}}}};
  const std::vector<detail::PlanTriangle> apart = {{{{5, 5}, {6, 5}, {5, 6}}}};
  const double none = std::nan("");
  EXPECT_FALSE(detail::haveCommonArea({one, apart, true, {}}));
  EXPECT_TRUE(detail::haveCommonArea({one, {{{{5, 5}, {6, none}, {5, 6}}}}, true, {}}));
  EXPECT_TRUE(detail::haveCommonArea({one, apart, true, {{0, 0}, {HUGE_VAL, 0}, {0, 1}}}));
  EXPECT_FALSE(detail::haveCommonArea({{}, apart, true, {}}));
}

}  // namespace
