// Flips that turn triangles over, and flips that go round in circles: the exact construction takes over then, and only
// then.
#include <memory>
#include <string>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/verifyTIN.h>
#include <gtest/gtest.h>

#include "CheckedTIN.h"
#include "Inputs.h"
#include "LiteralTIN.h"
#include "TINSupport.h"

namespace {

using inputs::Positions;
using literal::Repeats;
using support::Road;

struct TurnedCase {
  const char* name;
  Repeats repeats;
  Positions positions;
};

void PrintTo(const TurnedCase& c, std::ostream* out) { *out << c.name; }

class TurnedByAFlip : public testing::TestWithParam<TurnedCase> {};

TEST_P(TurnedByAFlip, IsTriangulatedExactly) {
  const TurnedCase& c = GetParam();
  const int before = support::inputsLeftByTheFlips();
  EXPECT_EQ(support::roadOf(c.positions, c.repeats), Road::Exact);
  EXPECT_EQ(support::inputsLeftByTheFlips(), before + 1) << "the sweep alone must be valid";
  EXPECT_EQ(support::checkedTIN(c.positions, c.repeats), "");
}

// Sites at projected coordinates with points millimetres apart, and points far away.
const TurnedCase kTurnedCases[] = {
    {"MillimetresAtZone33",
     Repeats::AgainstUnshifted,
     {{500001.002, 4500003.002, 0},
      {500001.003, 4500003.002, 0},
      {500003, 4500003.001, 0},
      {500040, 4500030, 0},
      {0, 0, 0}}},
    {"CentimetresAtZone32",
     Repeats::AgainstShifted,
     {{350000.07, 5800000.04, 0},
      {350000.05, 5800000.03, 0},
      {350000.06, 5800000.02, 0},
      {350000.01, 5800000.07, 0},
      {0, 0, 0}}},
    {"ThreeNearlyInARow",
     Repeats::AgainstShifted,
     {{350013.298, 5800431.117, 0}, {350013.295, 5800431.12, 0}, {350013.294, 5800431.121, 0}, {0, 0, 0}}},
    {"ThreeInARow",
     Repeats::AgainstShifted,
     {{4500205.222, 4500031.388, 0}, {4500205.223, 4500031.387, 0}, {4500205.221, 4500031.389, 0}, {0, 0, 0}}},
    {"RowTowardsTheStray",
     Repeats::AgainstUnshifted,
     {{4500000.004, 4500000.008, 0}, {4500000.002, 4500000.004, 0}, {4500000, 4500000, 0}, {0, 0, 0}}},
    {"EastingsWithAZonePrefix",
     Repeats::AgainstUnshifted,
     {{38500000.9, 3400000.9, 0},
      {38500000.6, 3400000.6, 0},
      {38500000.7, 3400000.7, 0},
      {38500000.4, 3400000, 0},
      {0, 0, 0}}},
    {"DecimetresWithAZonePrefix",
     Repeats::AgainstShifted,
     {{38500000.2, 3400000.2, 0},
      {38500000.5, 3400000.5, 0},
      {38500000.9, 3400000.4, 0},
      {38500000.1, 3400000.7, 0},
      {38500000, 3400000.3, 0},
      {38500000.7, 3400000.4, 0},
      {0, 0, 0}}},
    {"StrayBesideTheOrigin",
     Repeats::AgainstUnshifted,
     {{350330.792, 5800334.02, 0},
      {350330.795, 5800334.018, 0},
      {350330.797, 5800334.016, 0},
      {350412.674, 5800492.896, 0},
      {-49650000, 25800000, 0},
      {0, 0, 0}}},
    {"FarBeyondTheEarth",
     Repeats::AgainstShifted,
     {{4500179.481, 4500092.376, 0},
      {4500485.568, 4500391.461, 0},
      {4500485.565, 4500391.458, 0},
      {-199995500000, 400004500000, 0},
      {4500000, 0, 0}}},
};

INSTANTIATE_TEST_SUITE_P(FlipWatch, TurnedByAFlip, testing::ValuesIn(kTurnedCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(FlipWatch, SitesWithStraysAreAlwaysValid) {
  const inputs::Kind kind = inputs::kindNamed("site-and-strays");
  const int before = support::inputsThatTook(Road::AsSwept);
  for (std::uint64_t seed = 1; seed <= 3000; ++seed) {
    const Positions positions = kind.make(seed, 4 + static_cast<int>(seed % 9));
    const support::OwnedPoints points(positions);
    const auto tin = support::triangulate(points);
    EXPECT_EQ(support::faultOf(*tin, tin->getOriginalList()), "") << "seed " << seed;
    if (seed % 20 != 0) continue;
    EXPECT_EQ(support::checkedTIN(positions), "") << "seed " << seed;
  }
  EXPECT_GT(support::inputsThatTook(Road::AsSwept), before + 20);
}

// Circles of radius 6.5, 13, 19.5, ... around one place, and a point so far away that rounding makes flips go round.
Positions circlesAndAFarPoint(int count, double x, double y) {
  constexpr int kRadius = 65;  // of nine right-angled triangles with whole sides
  Positions positions;
  for (int i = 1; i <= count; ++i) {
    for (const inputs::Position& p : inputs::latticeCircle(kRadius * i, 0, 0)) {
      positions.push_back({p[0] / 10, p[1] / 10, 0});
    }
  }
  positions.push_back({x, y, 0});
  return positions;
}

int fullQueuesOf(const Positions& positions) {
  literal::Network net = literal::construct(positions, literal::Stop::AfterSweep);
  literal::flip(net, 20);
  return net.fullQueues;
}

TEST(FlipWatch, FlipsThatGoRoundAtAFewPlacesKeepTheirResult) {
  for (const double y : {-150000.0, -400000.0}) {  // and beyond the reach of the quick flip tests
    const Positions positions = circlesAndAFarPoint(8, 0, y);
    const int fullQueues = fullQueuesOf(positions);
    EXPECT_GT(fullQueues, 0);
    EXPECT_LT(fullQueues, 20);
    const int before = support::inputsThatTook(Road::AsSwept);
    EXPECT_EQ(support::checkedTIN(positions), "");
    EXPECT_EQ(support::inputsThatTook(Road::AsSwept), before + 1);
  }
}

TEST(FlipWatch, FlipsThatGoRoundEverywhereAreBrokenOff) {
  for (const Positions& positions : {circlesAndAFarPoint(8, 0, -190000), circlesAndAFarPoint(24, 10000, -1e6)}) {
    EXPECT_EQ(fullQueuesOf(positions), 20);
    const int before = support::inputsThatTook(Road::Exact);
    EXPECT_EQ(support::checkedTIN(positions), "");
    EXPECT_EQ(support::inputsThatTook(Road::Exact), before + 1);
  }
}

}  // namespace
