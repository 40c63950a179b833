// The exact construction: what it promises, through optimizeTIN() on inputs whose sweep is not valid, and directly on
// small lattices, where every circle has many positions on it and every line too.
#include <algorithm>
#include <cmath>
#include <iostream>
#include <memory>
#include <set>
#include <sstream>

#include <OrvikDTMAlgorithm/tin/Delaunay.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/verifyTIN.h>
#include <gtest/gtest.h>

#include "CheckedTIN.h"
#include "DelaunayCheck.h"
#include "Inputs.h"
#include "LiteralTIN.h"
#include "TINSupport.h"

namespace {

using inputs::Input;
using inputs::Kind;
using inputs::Positions;
using support::CircleCheck;
using support::Millimetres;
using support::OwnedPoints;
using support::Road;
using support::Tables;

constexpr literal::Repeats kBothComparisons[] = {literal::Repeats::AgainstShifted, literal::Repeats::AgainstUnshifted};

// ---- which road, and its promises, through the public face

struct RoadCase {
  const char* name;
  Positions positions;
  Road asIs;       // repeats looked for among shifted positions
  Road unshifted;  // among unshifted ones
};

void PrintTo(const RoadCase& c, std::ostream* out) { *out << c.name; }

class RoadTaken : public testing::TestWithParam<RoadCase> {};

TEST_P(RoadTaken, IsTheOneThatTheSweepLeaves) {
  const RoadCase& c = GetParam();
  EXPECT_EQ(support::roadOf(c.positions, literal::Repeats::AgainstShifted), c.asIs);
  EXPECT_EQ(support::checkedTIN(c.positions, literal::Repeats::AgainstShifted), "");
  EXPECT_EQ(support::roadOf(c.positions, literal::Repeats::AgainstUnshifted), c.unshifted);
  EXPECT_EQ(support::checkedTIN(c.positions, literal::Repeats::AgainstUnshifted), "");
}

const RoadCase kRoadCases[] = {
    {"BayBesideARepeat",
     {{1, 1, 0}, {101, 1, 0}, {61, 41, 0}, {61, 41, 5}, {81, 101, 0}, {1, 101, 0}},
     Road::Exact,
     Road::AsSwept},
    {"RepeatOfTheLowestPoint", {{1, 1, 0}, {1, 1, 5}, {11, 1, 0}, {11, 11, 0}, {1, 11, 0}}, Road::Exact, Road::AsSwept},
    {"InvertedNearPointOne", {{0, 0, 0}, {10, 0, 0}, {0.1, 0.1, 0}, {10, 10.001, 0}}, Road::Exact, Road::Exact},
    {"MillimetreBay",
     {{0, 0, 0}, {100, 0, 0}, {50, 80, 0}, {49.998, 80.003, 0}, {49.762, 80.447, 0}, {0, 90, 0}},
     Road::Exact,
     Road::Exact},
    {"HarmlessRepeat", {{5, 5, 0}, {15, 5, 0}, {5, 15, 0}, {15, 15, 0}, {15, 15, 5}}, Road::AsSwept, Road::AsSwept},
    {"ThreeWithinTheLineTolerance", {{0, 0, 0}, {0.1, 0, 0}, {0.05, 0.001, 0}}, Road::Exact, Road::Exact},
    {"ThreeOfWhichOneIsRepeated", {{7, 7, 0}, {8, 7, 0}, {7, 8, 0}, {7, 7, 5}}, Road::Exact, Road::AsSwept},
    {"ThreeCollinear", {{7, 7, 0}, {8, 8, 0}, {9, 9, 0}}, Road::Empty, Road::Empty},
    {"CollinearAfterRounding", {{0, 0, 0}, {10, 0.0004, 0}, {20, -0.0004, 0}, {5, 0, 0}}, Road::Empty, Road::Empty},
    {"OnePositionOnly", {{7, 7, 0}, {7, 7, 1}, {7, 7, 2}, {7, 7, 3}}, Road::Empty, Road::Empty},
    {"TwoPositionsOnly", {{7, 7, 0}, {7, 7, 1}, {8, 9, 2}, {8, 9, 3}}, Road::Empty, Road::Empty},
    {"ThreePositionsTwiceEach",
     {{7, 7, 0}, {9, 7, 1}, {8, 9, 2}, {8, 9, 3}, {9, 7, 4}, {7, 7, 5}},
     Road::Exact,
     Road::AsSwept},
    {"BeyondMillimetres", {{0, 0, 0}, {1, 0, 1}, {0, 1, 2}, {9.3e12, 9.3e12, 3}}, Road::TooLarge, Road::TooLarge},
};

INSTANTIATE_TEST_SUITE_P(ExactConstruction, RoadTaken, testing::ValuesIn(kRoadCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(ExactConstruction, BothRoadsAreTakenByTheKindsOfInput) {
  std::vector<Kind> kinds = inputs::surveyKinds();
  kinds.insert(kinds.end(), inputs::wideKinds().begin(), inputs::wideKinds().end());
  kinds.push_back(inputs::kindNamed("beyond-millimetres"));
  const auto counts = [] {
    return std::array<int, 4>{support::inputsThatTook(Road::AsSwept), support::inputsThatTook(Road::Exact),
                              support::inputsThatTook(Road::Empty), support::inputsThatTook(Road::TooLarge)};
  };
  const std::array<int, 4> before = counts();
  for (const Kind& kind : kinds) {
    for (const literal::Repeats repeats : kBothComparisons) {
      for (std::uint64_t seed = 500; seed < 510; ++seed) {
        for (const int size : {3, 7, 30, 90}) {
          const Input input = inputs::make(kind, seed, size);
          EXPECT_EQ(support::checkedTIN(input.points, repeats), "") << input.name;
        }
      }
    }
  }
  std::array<int, 4> taken = counts();
  for (std::size_t i = 0; i < taken.size(); ++i) taken[i] -= before[i];
  EXPECT_GT(taken[0], 500) << "as swept";
  EXPECT_GT(taken[1], 300) << "exactly";
  EXPECT_GT(taken[2], 50) << "empty";
  EXPECT_GT(taken[3], 20) << "too large";
}

// How many inputs the whole run has sent each way.
class RoadReport : public testing::Environment {
 public:
  void TearDown() override {
    std::cout << "inputs as swept: " << support::inputsThatTook(Road::AsSwept)
              << ", triangulated exactly: " << support::inputsThatTook(Road::Exact)
              << ", collinear: " << support::inputsThatTook(Road::Empty)
              << ", too large: " << support::inputsThatTook(Road::TooLarge) << "\n";
  }
};

[[maybe_unused]] const testing::Environment* const kRoadReport = testing::AddGlobalTestEnvironment(new RoadReport);

struct LargeCase {
  const char* name;
  const char* kind;
  int size;
};

void PrintTo(const LargeCase& c, std::ostream* out) { *out << c.name; }

class LargeExact : public testing::TestWithParam<LargeCase> {};

TEST_P(LargeExact, KeepsEveryPromise) {
  const Kind kind = inputs::kindNamed(GetParam().kind);
  constexpr std::uint64_t kLastSeed = 20;
  std::uint64_t seed = 1;
  while (seed < kLastSeed && support::roadOf(kind.make(seed, GetParam().size)) != Road::Exact) ++seed;
  const Positions positions = kind.make(seed, GetParam().size);
  ASSERT_EQ(support::roadOf(positions), Road::Exact);
  EXPECT_EQ(support::checkedTIN(positions), "");
  EXPECT_EQ(support::checkedTIN(positions, literal::Repeats::AgainstUnshifted), "");
}

const LargeCase kLargeCases[] = {
    {"DenseMillimetres", "within-a-unit", 3000}, {"RotatedGrid", "rotated-grid", 2500},
    {"GroupsOfFive", "groups-of-five", 3000},    {"RepeatsEverywhere", "repeats-everywhere", 2000},
    {"TwoColumns", "two-columns", 1500},         {"Outlier", "outlier-at-origin", 2000},
    {"Clusters", "millimetre-clusters", 3000},   {"CrossSectionsWithRepeats", "repeats-elsewhere", 2500},
};

INSTANTIATE_TEST_SUITE_P(ExactConstruction, LargeExact, testing::ValuesIn(kLargeCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(ExactConstruction, FourHundredPointsInOneUnit) {
  int exact = 0;
  for (std::uint64_t seed = 1; seed <= 40; ++seed) {
    const Positions positions = inputs::randomMillimetres(seed, 400, 1, 500000.0, 3000000.0);
    EXPECT_EQ(support::checkedTIN(positions), "") << "seed " << seed;
    if (support::roadOf(positions) == Road::Exact) ++exact;
  }
  EXPECT_GT(exact, 35);
}

TEST(ExactConstruction, CollinearButOneInEveryDirectionAndPlace) {
  constexpr int kDirections[6][2] = {{1, 0}, {0, 1}, {1, 1}, {-1, 1}, {7, 3}, {-2, 9}};
  constexpr int kCount = 12;
  for (const auto& d : kDirections) {
    for (int beside = 0; beside < kCount; ++beside) {
      for (const double step : {0.001, 1.0, 1000.0}) {
        Positions positions;
        for (int i = 0; i < kCount; ++i) {
          const double off = i == beside ? 0.001 : 0.0;
          positions.push_back(
              {40 + i * d[0] * step + (d[1] != 0 ? off : 0.0), 60 + i * d[1] * step + (d[1] == 0 ? off : 0.0), 0.0});
        }
        EXPECT_EQ(support::checkedTIN(positions), "") << d[0] << "," << d[1] << " point " << beside << " step " << step;
      }
    }
  }
}

// Where doubles are two millimetres apart, positions that are neighbours among them.
TEST(ExactConstruction, NeighbouringDoublesStayApartAtTheLargestCoordinates) {
  constexpr double kStep = 0x1p-9;
  for (const double corner : {9.1e12, -9.1e12}) {
    inputs::Random random(17);
    for (int i = 0; i < 40; ++i) {
      OwnedPoints points;
      for (int k = 0; k < 30; ++k) {
        const double x = corner + kStep * static_cast<double>(random.between(0, 60));
        points.add(x, corner + kStep * static_cast<double>(random.between(0, 60)), k);
      }
      const auto tin = support::triangulate(points);
      EXPECT_EQ(support::faultOf(*tin, tin->getOriginalList()), "");
    }
  }
}

TEST(ExactConstruction, FirstOfARepeatInSortOrderGivesTheHeight) {
  // Before rounding the second point lies lowest of the three at (7, 7), the fourth next.
  const OwnedPoints points(Positions{{7.0002, 7.0003, 1}, {7, 7, 2}, {17, 7, 3}, {7, 7.0001, 4}, {7, 17, 5}});
  const auto tin = support::triangulate(points);
  ASSERT_EQ(support::triangleCount(*tin), 1);
  EXPECT_EQ(tin->getHeight(7, 7), 2.0);
  const auto used = tin->getOriginalList();
  EXPECT_EQ(std::count(used.begin(), used.end(), points[1]), 1);
  EXPECT_EQ(points[3]->getX(), 0.0) << "a repeat is left relative to the smallest x and y";
}

TEST(ExactConstruction, FlagIsLeftAsTheSweepSetsIt) {
  Surface::FLAG = -77;
  // No point leaves the line of points 1 and 2 by more than the tolerance: the sweep has no fan.
  const OwnedPoints narrow(Positions{{0, 0, 0}, {0.1, 0, 0}, {0.05, 0.001, 0}});
  EXPECT_EQ(support::triangleCount(*support::triangulate(narrow)), 1);
  EXPECT_EQ(Surface::FLAG, -77);
  const OwnedPoints bay(Positions{{1, 1, 0}, {101, 1, 0}, {61, 41, 0}, {61, 41, 0}, {81, 101, 0}, {1, 101, 0}});
  EXPECT_GT(support::triangleCount(*support::triangulate(bay)), 0);
  EXPECT_EQ(Surface::FLAG, 3);
}

TEST(ExactConstruction, HundredThousandDensePoints) {
  constexpr int kCount = 100000;
  const Positions positions = inputs::randomMillimetres(3, kCount, 10, 500000.0, 3000000.0);
  {
    Positions local = positions;
    for (auto& p : local) p = {p[0] - 500000.0, p[1] - 3000000.0, p[2]};
    const OwnedPoints points(local);
    const auto swept = support::sweep(points);
    ASSERT_NE(support::faultOf(*swept, points.pointers()), "") << "the sweep must not be valid here";
  }
  const OwnedPoints points(positions);
  std::vector<TPoint*> given = points.pointers();
  const std::unique_ptr<CEType> tin(Surface::optimizeTIN(given));
  // `given` stands in sort order; a repeat keeps its position for the check, wherever it was left.
  std::vector<Millimetres> sorted;
  const std::set<const TPoint*> own = [&] {
    const auto used = tin->getOriginalList();
    return std::set<const TPoint*>(used.begin(), used.end());
  }();
  for (const TPoint* p : given) {
    const Millimetres left = support::millimetresOf(*p);
    const bool moved = own.contains(p);
    sorted.push_back(moved ? left : Millimetres{left.x + 500000000, left.y + 3000000000});
  }
  EXPECT_EQ(support::brokenDelaunayPromise(sorted, support::tablesOf(*tin, given)), "");
}

// ---- directly

Tables tablesOf(detail::ExactTriangulation& exact) {
  const auto number = [&exact](detail::Number point) { return static_cast<int>(exact.inputIndex[point]) + 1; };
  Tables tables;
  for (detail::Number t = 1; t <= exact.mesh.triangleCount(); ++t) {
    const detail::MeshTriangle triangle = exact.mesh.triangle(t);
    const detail::Number* e = triangle.edge;
    tables.triangles.push_back({static_cast<int>(e[0]), static_cast<int>(e[1]), static_cast<int>(e[2])});
  }
  for (detail::Number k = 1; k <= exact.mesh.edgeCount(); ++k) {
    const detail::MeshEdge e = exact.mesh.edge(k);
    tables.edges.push_back({number(e.start), number(e.end), static_cast<int>(e.left), static_cast<int>(e.right)});
  }
  for (const detail::Number e : exact.mesh.hull()) tables.hull.push_back(static_cast<int>(e));
  return tables;
}

std::string textOf(const std::vector<Millimetres>& positions) {
  std::ostringstream text;
  for (const Millimetres& p : positions) text << "(" << p.x << "," << p.y << ")";
  return text.str();
}

// Whether each triangle's second edge has the end of its first.
bool secondEdgesGoOn(const Tables& tables) {
  return std::all_of(tables.triangles.begin(), tables.triangles.end(), [&tables](const auto& edges) {
    const auto& first = tables.edges[static_cast<std::size_t>(edges[0] - 1)];
    const auto& second = tables.edges[static_cast<std::size_t>(edges[1] - 1)];
    return second.start == first.end || second.end == first.end;
  });
}

// Fails unless the positions are triangulated as promised, or are collinear and give nothing.
void expectPromises(const std::vector<Millimetres>& positions, CircleCheck check) {
  std::vector<detail::MillimetrePosition> given;
  for (const Millimetres& p : positions) given.push_back({p.x, p.y});
  detail::ExactTriangulation exact = detail::triangulateExactly(given);
  if (support::areCollinear(positions)) {
    EXPECT_EQ(exact.mesh.triangleCount(), 0u) << textOf(positions);
    EXPECT_EQ(exact.mesh.edgeCount(), 0u) << textOf(positions);
    EXPECT_TRUE(exact.mesh.hull().empty());
    return;
  }
  const std::set<Millimetres> different(positions.begin(), positions.end());
  EXPECT_EQ(exact.inputIndex.size(), different.size());
  const Tables tables = tablesOf(exact);
  EXPECT_TRUE(secondEdgesGoOn(tables)) << textOf(positions);
  const std::string broken = support::brokenDelaunayPromise(positions, tables, check);
  if (!broken.empty()) ADD_FAILURE() << broken << ": " << textOf(positions);
}

TEST(TriangulateExactly, NothingGivesNothing) {
  EXPECT_EQ(detail::triangulateExactly({}).mesh.triangleCount(), 0u);
  EXPECT_EQ(detail::triangulateExactly({{3, 4}}).mesh.triangleCount(), 0u);
  EXPECT_EQ(detail::triangulateExactly({{3, 4}, {3, 4}, {5, 6}}).mesh.edgeCount(), 0u);
}

TEST(TriangulateExactly, RandomSmallLattices) {
  inputs::Random random(71);
  for (int round = 0; round < 3000 && !testing::Test::HasFailure(); ++round) {
    const std::int64_t side = random.between(2, 19);
    const std::int64_t stretch = random.between(1, 3);
    const std::int64_t count = random.between(3, round % 10 == 0 ? 120 : 40);
    std::vector<Millimetres> positions;
    for (std::int64_t i = 0; i < count; ++i) {
      positions.push_back({random.between(0, side) * stretch - 7, random.between(0, side) - 30});
    }
    expectPromises(positions, CircleCheck::EveryPointAndEach);
  }
}

TEST(TriangulateExactly, EverySubsetOfASmallLattice) {
  constexpr unsigned kCells = 9;
  for (unsigned subset = 0; subset < (1u << kCells); ++subset) {
    std::vector<Millimetres> positions;
    for (unsigned cell = 0; cell < kCells; ++cell) {
      if ((subset >> cell) & 1u) positions.push_back({cell % 3, cell / 3});
    }
    if (!positions.empty()) expectPromises(positions, CircleCheck::EveryPointAndEach);
  }
}

TEST(TriangulateExactly, WholeLattices) {
  for (const int side : {2, 3, 7, 16, 31}) {
    std::vector<Millimetres> positions;
    for (int i = 0; i < side * side; ++i) positions.push_back({i % side - 5, i / side});
    expectPromises(positions, CircleCheck::NeighboursOnly);
    for (Millimetres& p : positions) p = {3 * p.x - 4 * p.y, 4 * p.x + 3 * p.y};
    expectPromises(positions, CircleCheck::NeighboursOnly);
  }
}

// Lattice points of a circle of radius 1105 around (0, 0), times `factor`.
std::vector<Millimetres> cocircular(std::int64_t factor) {
  std::vector<Millimetres> positions;
  for (const auto& p : inputs::latticeCircle(1105, 0.0, 0.0)) {
    positions.push_back({std::llround(p[0]) * factor, std::llround(p[1]) * factor});
  }
  return positions;
}

TEST(TriangulateExactly, PositionsOnOneCircle) {
  // From ordinary extents to the largest that are possible.
  constexpr std::int64_t kLargestFactor = 8'000'000'000'000;
  ASSERT_EQ(cocircular(1).size(), 108u);
  for (std::int64_t factor = 1; factor <= kLargestFactor; factor *= 20) {
    std::vector<Millimetres> positions = cocircular(factor);
    expectPromises(positions, CircleCheck::EveryPointAndEach);
    positions.push_back({0, 0});
    expectPromises(positions, CircleCheck::EveryPointAndEach);
    // One position a unit inside or outside.
    for (const std::int64_t off : {-1, 1}) {
      std::vector<Millimetres> disturbed = cocircular(factor);
      disturbed[40].x += off;
      disturbed[77].y += off;
      expectPromises(disturbed, CircleCheck::EveryPointAndEach);
    }
  }
}

TEST(TriangulateExactly, ExtentsUpToTheLimit) {
  constexpr std::int64_t kLimit = 9'200'000'000'000'000;
  inputs::Random random(5);
  for (std::int64_t extent = 10; extent < kLimit; extent *= 10) {
    for (int round = 0; round < 6; ++round) {
      std::vector<Millimetres> positions;
      for (int i = 0; i < 60; ++i)
        positions.push_back({random.between(-extent, extent), random.between(-extent, extent)});
      for (int i = 0; i < 20; ++i) positions.push_back({extent, random.between(-extent, extent)});
      for (int i = 0; i < 20; ++i)
        positions.push_back({positions[0].x + random.between(-2, 2), positions[0].y + random.between(-2, 2)});
      expectPromises(positions, CircleCheck::EveryPointAndEach);
    }
  }
}

TEST(TriangulateExactly, CornersOfTheLargestSquareAndACluster) {
  constexpr std::int64_t kLimit = 9'200'000'000'000'000;
  std::vector<Millimetres> positions = {{-kLimit, -kLimit}, {kLimit, -kLimit}, {kLimit, kLimit}, {-kLimit, kLimit}};
  for (int i = 0; i < 25; ++i) positions.push_back({i % 5, i / 5});
  for (int i = 0; i < 25; ++i) positions.push_back({kLimit - i % 5, i / 5});
  expectPromises(positions, CircleCheck::EveryPointAndEach);
}

TEST(TriangulateExactly, NearlyStraightRuns) {
  inputs::Random random(6);
  for (int round = 0; round < 200; ++round) {
    const std::int64_t dx = random.between(-1000000, 1000000);
    const std::int64_t dy = random.between(-1000000, 1000000);
    std::vector<Millimetres> positions;
    for (int i = 0; i < 40; ++i) positions.push_back({i * dx, i * dy});
    const int disturbed = static_cast<int>(random.between(0, 3));
    for (int i = 0; i < disturbed; ++i) {
      Millimetres& p = positions[static_cast<std::size_t>(random.between(0, 39))];
      p = {p.x + random.between(-1, 1), p.y + random.between(-1, 1)};
    }
    expectPromises(positions, CircleCheck::EveryPointAndEach);
  }
}

TEST(TriangulateExactly, OrderOfThePositionsDoesNotMatterButForRepeats) {
  inputs::Random random(8);
  std::vector<Millimetres> positions;
  for (int i = 0; i < 300; ++i) positions.push_back({random.between(0, 12), random.between(0, 12)});
  expectPromises(positions, CircleCheck::EveryPointAndEach);
  std::reverse(positions.begin(), positions.end());
  expectPromises(positions, CircleCheck::EveryPointAndEach);
  std::sort(positions.begin(), positions.end());
  expectPromises(positions, CircleCheck::EveryPointAndEach);
}

}  // namespace
