// The construction of a TIN: the library's fast stages must give, number for number and bit for bit, what the slow
// literal construction gives, on every kind of input that a survey or an adversary can think of; and where the literal
// sweep is not valid, what the exact construction promises.
#include <chrono>
#include <cmath>
#include <limits>
#include <memory>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/PList.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>
#include <OrvikDTMAlgorithm/tin/verifyTIN.h>
#include <gtest/gtest.h>

#include "CheckedTIN.h"
#include "Inputs.h"
#include "LiteralTIN.h"
#include "TINSupport.h"

namespace {

using inputs::Input;
using inputs::Kind;
using inputs::Positions;
using support::checkedStages;
using support::checkedTIN;
using support::OwnedPoints;
using support::Tables;

std::string checkedAsIs(const Positions& positions) { return checkedTIN(positions); }
std::string checkedUnshifted(const Positions& positions) {
  return checkedTIN(positions, literal::Repeats::AgainstUnshifted);
}

// Fails with the smallest part of the input that still differs.
void expectNoDifference(const Input& input, std::string (*check)(const Positions&)) {
  constexpr std::size_t kWorthMinimising = 400;
  const std::string difference = check(input.points);
  if (difference.empty()) return;
  const Positions smallest =
      input.points.size() <= kWorthMinimising ? support::minimised(input.points, check) : input.points;
  ADD_FAILURE() << input.name << ": " << difference << "\nsmallest part: " << check(smallest) << "\n"
                << support::tableOf(smallest);
}

class EveryKind : public testing::TestWithParam<Kind> {};

std::string nameOfKind(const testing::TestParamInfo<Kind>& info) {
  std::string name = info.param.name;
  for (char& c : name) c = c == '-' ? '_' : c;
  return name;
}

constexpr int kSmallSizes[] = {3, 4, 5, 6, 8, 11, 17};
constexpr int kMiddleSizes[] = {40, 120, 280};

TEST_P(EveryKind, SmallInputsKeepThePromisesOfTheirRoad) {
  for (std::uint64_t seed = 1; seed <= 60; ++seed) {
    for (const int size : kSmallSizes) expectNoDifference(inputs::make(GetParam(), seed, size), checkedAsIs);
  }
}

TEST_P(EveryKind, MiddleInputsKeepThePromisesOfTheirRoad) {
  for (std::uint64_t seed = 1; seed <= 6; ++seed) {
    for (const int size : kMiddleSizes) expectNoDifference(inputs::make(GetParam(), seed, size), checkedAsIs);
  }
}

TEST_P(EveryKind, RepeatsFoundAmongUnshiftedPositionsKeepThePromises) {
  for (std::uint64_t seed = 1; seed <= 10; ++seed) {
    for (const int size : {3, 5, 9, 60, 200})
      expectNoDifference(inputs::make(GetParam(), seed, size), checkedUnshifted);
  }
}

INSTANTIATE_TEST_SUITE_P(Survey, EveryKind, testing::ValuesIn(inputs::surveyKinds()), nameOfKind);
INSTANTIATE_TEST_SUITE_P(Wide, EveryKind, testing::ValuesIn(inputs::wideKinds()), nameOfKind);
INSTANTIATE_TEST_SUITE_P(Wild, EveryKind, testing::ValuesIn(inputs::wildKinds()), nameOfKind);

class EverySurveyKind : public testing::TestWithParam<Kind> {};

TEST_P(EverySurveyKind, StagesGiveTheLiteralListsAndTheCheckTheExactVerdict) {
  for (std::uint64_t seed = 100; seed <= 120; ++seed) {
    for (const int size : {3, 4, 6, 9, 25, 150}) {
      Input input = inputs::make(GetParam(), seed, size);
      input.points = support::sweptPositions(input.points);
      expectNoDifference(input, checkedStages);
    }
  }
}

TEST_P(EverySurveyKind, LargeInputKeepsThePromisesOfItsRoad) {
  expectNoDifference(inputs::make(GetParam(), 77, 1200), checkedAsIs);
}

INSTANTIATE_TEST_SUITE_P(Survey, EverySurveyKind, testing::ValuesIn(inputs::surveyKinds()), nameOfKind);

TEST(Construction, ThreeThousandPointsKeepThePromisesOfTheirRoad) {
  expectNoDifference({"random", inputs::randomMillimetres(5, 3000, 1000, 0.0, 0.0)}, checkedAsIs);
  expectNoDifference({"projected", inputs::randomMillimetres(6, 3000, 500, 38500000.0, 3400000.0)}, checkedAsIs);
}

// Infinities, the largest doubles, circles at 1e13: nothing is promised but the literal network and an end soon.
TEST(Construction, CoordinatesOfNoSurveyEndSoon) {
  constexpr std::chrono::seconds kSoon{20};
  for (const Kind& kind : inputs::wildKinds()) {
    for (int size = 3; size <= 300; size += size < 30 ? 1 : 45) {
      const Input input = inputs::make(kind, 900 + static_cast<std::uint64_t>(size), size);
      const OwnedPoints points(input.points);
      const auto start = std::chrono::steady_clock::now();
      EXPECT_NE(support::triangulate(points), nullptr);
      EXPECT_LT(std::chrono::steady_clock::now() - start, kSoon) << input.name;
    }
  }
}

TEST(Construction, FinishedNetworksKeepTheInvariantsThatTheSweepAloneBreaks) {
  int valid = 0;
  for (std::uint64_t seed = 1; seed <= 40; ++seed) {
    const Positions positions = inputs::randomMillimetres(seed, 100, 1000, 0.0, 0.0);
    const OwnedPoints points(positions);
    const auto tin = support::triangulate(points);
    if (!verifyTIN(*tin).valid()) continue;
    ++valid;
    EXPECT_EQ(support::brokenInvariantOf(*tin, false), "");
    const OwnedPoints sweptPoints(support::sweptPositions(positions));
    EXPECT_NE(support::brokenInvariantOf(*support::sweep(sweptPoints), false), "");
  }
  EXPECT_GT(valid, 30);
}

// ---- small networks, edge by edge and triangle by triangle

struct SmallCase {
  const char* name;
  Positions positions;
  std::vector<int> sweepOrder;  // input numbers in the order of the sweep
  int flag;
  Tables tables;  // of points in sweep order
};

void PrintTo(const SmallCase& c, std::ostream* out) { *out << c.name; }

class SmallNetwork : public testing::TestWithParam<SmallCase> {};

TEST_P(SmallNetwork, HasTheseNumbers) {
  const SmallCase& expected = GetParam();
  const OwnedPoints points(expected.positions);
  std::vector<TPoint*> given = points.pointers();
  PList* list = Surface::initPoins(given);
  ASSERT_NE(list, nullptr);
  EXPECT_TRUE(given.empty());
  std::vector<TPoint*> sweep;
  for (int k = 1; k <= list->getListLen(); ++k) sweep.push_back(list->findByNum(list, k));
  std::vector<TPoint*> expectedSweep;
  for (const int number : expected.sweepOrder) expectedSweep.push_back(points[static_cast<std::size_t>(number - 1)]);
  EXPECT_EQ(sweep, expectedSweep);

  const std::unique_ptr<CEType> fan(Surface::initCET(list));
  ASSERT_NE(fan, nullptr);
  EXPECT_EQ(Surface::FLAG, expected.flag);
  const std::unique_ptr<CEType> tin(Surface::buildTIN(list, fan.get()));
  fan->setCList(nullptr);
  fan->setEList(nullptr);
  fan->setTList(nullptr);
  const Tables tables = support::tablesOf(*tin, sweep);
  ASSERT_EQ(tables.edges.size(), expected.tables.edges.size());
  for (std::size_t i = 0; i < tables.edges.size(); ++i) {
    SCOPED_TRACE("edge " + std::to_string(i + 1));
    EXPECT_EQ(tables.edges[i].start, expected.tables.edges[i].start);
    EXPECT_EQ(tables.edges[i].end, expected.tables.edges[i].end);
    EXPECT_EQ(tables.edges[i].left, expected.tables.edges[i].left);
    EXPECT_EQ(tables.edges[i].right, expected.tables.edges[i].right);
  }
  EXPECT_EQ(tables.triangles, expected.tables.triangles);
  EXPECT_EQ(tables.hull, expected.tables.hull);
  EXPECT_TRUE(verifyTIN(*tin, sweep).valid());
  list->setListData({});
  delete list;
}

const SmallCase kSmallCases[] = {
    {"OneTriangle",
     {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}},
     {1, 2, 3},
     3,
     {{{1, 2, 1, 0}, {2, 3, 1, 0}, {3, 1, 1, 0}}, {{3, 2, 1}}, {1, 2, 3}}},
    {"RunOfThreeThenApex",
     {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {1, 1, 0}},
     {1, 2, 3, 4},
     4,
     {{{1, 2, 2, 0}, {2, 3, 1, 0}, {3, 4, 1, 0}, {4, 2, 1, 2}, {4, 1, 2, 0}}, {{4, 3, 2}, {5, 4, 1}}, {1, 2, 3, 5}}},
    {"Square",
     {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}},
     {1, 2, 3, 4},
     3,
     {{{1, 2, 1, 0}, {2, 3, 1, 0}, {3, 1, 1, 2}, {3, 4, 2, 0}, {4, 1, 2, 0}}, {{3, 2, 1}, {5, 4, 3}}, {1, 2, 4, 5}}},
    // The farther of two points on one ray comes first; the nearer one splits the last triangle.
    {"TwoOnALaterRay",
     {{0, 0, 0}, {4, 0, 0}, {2, 2, 0}, {4, 4, 0}, {0, 4, 0}},
     {1, 2, 4, 3, 5},
     3,
     {{{1, 2, 2, 0}, {2, 3, 1, 0}, {3, 4, 1, 3}, {4, 2, 1, 2}, {4, 1, 2, 4}, {3, 5, 3, 0}, {5, 4, 3, 4}, {5, 1, 4, 0}},
      {{3, 2, 4}, {5, 4, 1}, {7, 6, 3}, {8, 7, 5}},
      {1, 2, 6, 8}}},
};

INSTANTIATE_TEST_SUITE_P(Construction, SmallNetwork, testing::ValuesIn(kSmallCases),
                         [](const auto& row) { return std::string(row.param.name); });

// ---- degenerate inputs

TEST(Construction, NoPointsGiveNoNetwork) {
  std::vector<TPoint*> none;
  EXPECT_EQ(Surface::optimizeTIN(none), nullptr);
}

struct EmptyCase {
  const char* name;
  Positions positions;
};

void PrintTo(const EmptyCase& c, std::ostream* out) { *out << c.name; }

class EmptyNetwork : public testing::TestWithParam<EmptyCase> {};

TEST_P(EmptyNetwork, HasThreeEmptyLists) {
  const OwnedPoints points(GetParam().positions);
  const std::unique_ptr<CEType> tin = support::triangulate(points);
  ASSERT_NE(tin, nullptr);
  ASSERT_NE(tin->getCList(), nullptr);
  ASSERT_NE(tin->getEList(), nullptr);
  ASSERT_NE(tin->getTList(), nullptr);
  EXPECT_EQ(support::hullCount(*tin), 0);
  EXPECT_EQ(support::edgeCount(*tin), 0);
  EXPECT_EQ(support::triangleCount(*tin), 0);
  EXPECT_TRUE(verifyTIN(*tin).valid());
}

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

const EmptyCase kEmptyCases[] = {
    {"OnePoint", {{5, 5, 1}}},
    {"TwoPoints", {{5, 5, 1}, {6, 7, 1}}},
    {"OnOneRay", {{0, 0, 0}, {1, 1, 0}, {2, 2, 0}, {3, 3, 0}}},
    {"OnAHorizontal", {{3, 2, 0}, {1, 2, 0}, {2, 2, 0}}},
    {"OnAVertical", {{3, 2, 0}, {3, 9, 0}, {3, 4, 0}}},
    {"OnALeftwardRay", {{0, 0, 0}, {-1, 2, 0}, {-2, 4, 0}, {-4, 8, 0}}},
    {"ThreeOfWhichOneIsRepeatedAtTheOrigin", {{0, 0, 0}, {1, 0, 0}, {1, 0, 5}}},
    {"AllNaN", {{kNaN, 0, 0}, {kNaN, 1, 0}, {0, kNaN, 0}}},
    {"TwoAndANaN", {{0, 0, 0}, {kNaN, 1, 0}, {3, 1, 0}}},
};

INSTANTIATE_TEST_SUITE_P(Construction, EmptyNetwork, testing::ValuesIn(kEmptyCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Construction, PointsOnOneRayAreRefusedByTheOrdering) {
  const OwnedPoints points(Positions{{0, 0, 0}, {1, 1, 0}, {2, 2, 0}});
  std::vector<TPoint*> given = points.pointers();
  EXPECT_EQ(Surface::initPoins(given), nullptr);
  EXPECT_TRUE(given.empty());
  EXPECT_EQ(Surface::MAXPOINTS, 3);
}

TEST(Construction, PointsWithinTheLineToleranceAreRefusedByTheFan) {
  const OwnedPoints points(Positions{{0, 0, 0}, {0.1, 0, 0}, {0.05, 0.001, 0}});
  std::vector<TPoint*> given = points.pointers();
  PList* list = Surface::initPoins(given);
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(Surface::initCET(list), nullptr);
  list->setListData({});
  delete list;
}

TEST(Construction, StagesPassOnThatThereIsNothing) {
  EXPECT_EQ(Surface::initCET(nullptr), nullptr);
  PList list;
  EXPECT_EQ(Surface::initCET(&list), nullptr);
  EXPECT_EQ(Surface::buildTIN(&list, nullptr), nullptr);
}

// ---- rounding and repeats

TEST(Construction, CoordinatesComeBackRoundedToMillimetres) {
  const OwnedPoints points(Positions{{0.00049, 0, 1.23456}, {10.12345, 0, 2}, {5.0006, 7.9996, 3}});
  const std::unique_ptr<CEType> tin = support::triangulate(points);
  ASSERT_EQ(support::triangleCount(*tin), 1);
  EXPECT_NEAR(points[1]->getX(), 10.123, 1e-12);
  EXPECT_NEAR(points[2]->getX(), 5.001, 1e-12);
  EXPECT_NEAR(points[2]->getY(), 8.0, 1e-12);
  EXPECT_EQ(points[0]->getZ(), 1.23456);
}

TEST(Construction, RepeatIsSkippedWhereTheSmallestCoordinatesAreZero) {
  const Positions square = {{0, 0, 1}, {10, 0, 1}, {10, 10, 1}, {0, 10, 1}, {10, 10, 9}};
  const OwnedPoints points(square);
  const std::unique_ptr<CEType> tin = support::triangulate(points);
  EXPECT_EQ(support::triangleCount(*tin), 2);
  EXPECT_EQ(tin->getOriginalList().size(), 4u);
  EXPECT_EQ(checkedTIN(square), "");
}

TEST(Construction, RepeatElsewhereIsKeptUnlessAskedFor) {
  const Positions square = {{5, 5, 1}, {15, 5, 1}, {5, 15, 1}, {15, 15, 1}, {15, 15, 9}};
  const OwnedPoints kept(square);
  EXPECT_EQ(support::triangulate(kept)->getOriginalList().size(), 5u);

  Surface::COMPAREUNSHIFTED = 1;
  const OwnedPoints dropped(square);
  const auto tin = support::triangulate(dropped);
  Surface::COMPAREUNSHIFTED = 0;
  EXPECT_EQ(tin->getOriginalList().size(), 4u);
  EXPECT_EQ(support::triangleCount(*tin), 2);
}

TEST(Construction, PointThatCoincidesWithAShiftedOneIsDroppedUnlessAskedOtherwise) {
  // (-10, -10) is accepted as (0, 0), and so (0, 0) is taken for its repeat.
  const Positions positions = {{-10, -10, 1}, {10, -10, 1}, {10, 10, 1}, {-10, 10, 1}, {0, 0, 5}};
  const OwnedPoints dropped(positions);
  EXPECT_EQ(support::triangulate(dropped)->getOriginalList().size(), 4u);

  Surface::COMPAREUNSHIFTED = 1;
  const OwnedPoints kept(positions);
  const auto tin = support::triangulate(kept);
  Surface::COMPAREUNSHIFTED = 0;
  EXPECT_EQ(tin->getOriginalList().size(), 5u);
}

TEST(Construction, PointsWithNaNTakeNoPart) {
  const OwnedPoints points(Positions{{0, 0, 1}, {kNaN, 2, 1}, {10, 0, 1}, {3, kNaN, 1}, {0, 10, 1}});
  std::vector<TPoint*> given = points.pointers();
  const std::unique_ptr<CEType> tin(Surface::optimizeTIN(given));
  EXPECT_EQ(support::triangleCount(*tin), 1);
  EXPECT_EQ(tin->getOriginalList().size(), 3u);
  ASSERT_EQ(given.size(), 5u);
  EXPECT_TRUE(std::isnan(given[3]->getX()) || std::isnan(given[3]->getY()));
  EXPECT_TRUE(std::isnan(given[4]->getX()) || std::isnan(given[4]->getY()));
}

// ---- flips

TEST(Construction, EqualDiagonalsOfASquareAreNotFlipped) {
  const OwnedPoints points(Positions{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}});
  const std::unique_ptr<CEType> tin = support::triangulate(points);
  const Tables tables = support::tablesOf(*tin, points.pointers());
  EXPECT_EQ(tables.edges[2].start, 3);
  EXPECT_EQ(tables.edges[2].end, 1);
}

TEST(Construction, LongerDiagonalOfFourCocircularPointsIsFlipped) {
  // On the circle around (5, 5) of radius 5: the first diagonal runs from (8, 9) to (5, 0), the other one is shorter.
  const Positions positions = {{5, 0, 0}, {9, 2, 0}, {8, 9, 0}, {2, 1, 0}};
  const OwnedPoints points(positions);
  const std::unique_ptr<CEType> tin = support::triangulate(points);
  const Tables tables = support::tablesOf(*tin, points.pointers());
  ASSERT_EQ(tables.edges.size(), 5u);
  int inner = 0;
  for (std::size_t k = 0; k < tables.edges.size(); ++k) {
    if (tables.edges[k].left != 0 && tables.edges[k].right != 0) inner = static_cast<int>(k);
  }
  const support::EdgeRow& diagonal = tables.edges[static_cast<std::size_t>(inner)];
  EXPECT_EQ(std::min(diagonal.start, diagonal.end), 2);
  EXPECT_EQ(std::max(diagonal.start, diagonal.end), 4);
  EXPECT_EQ(checkedTIN(positions), "");
}

TEST(Construction, CocircularPointsFarFromTheCornerEnd) {
  const Positions positions = {{9563.473, 9857.536, 0}, {9543.473, 9867.536, 0}, {9523.473, 9827.536, 0},
                               {9523.473, 9857.536, 0}, {9518.473, 9842.536, 0}, {0, 0, 0}};
  EXPECT_TRUE(literal::construct(positions).queueOverflowed) << "the case must exercise the bound of the queue";
  EXPECT_EQ(checkedTIN(positions), "");
}

// ---- what the check makes of the sweep

struct SweepCase {
  const char* name;
  Positions positions;
  bool valid;
};

void PrintTo(const SweepCase& c, std::ostream* out) { *out << c.name; }

class SweepVerdict : public testing::TestWithParam<SweepCase> {};

TEST_P(SweepVerdict, IsThatOfExactArithmetic) {
  const Positions swept = support::sweptPositions(GetParam().positions);
  EXPECT_EQ(checkedStages(swept), "");
  const OwnedPoints points(swept);
  const auto tin = support::sweep(points);
  ASSERT_NE(tin, nullptr);
  const TINCheck check = verifyTIN(*tin, points.pointers());
  EXPECT_EQ(check.valid(), GetParam().valid) << toText(check);
}

const SweepCase kSweepCases[] = {
    {"BayBesideARepeat", {{1, 1, 0}, {101, 1, 0}, {61, 41, 0}, {61, 41, 0}, {81, 101, 0}, {1, 101, 0}}, false},
    {"InvertedNearPointOne", {{0, 0, 0}, {10, 0, 0}, {0.1, 0.1, 0}, {10, 10.001, 0}}, false},
    {"MillimetreBay",
     {{0, 0, 0}, {100, 0, 0}, {50, 80, 0}, {49.998, 80.003, 0}, {49.762, 80.447, 0}, {0, 90, 0}},
     false},
    {"HarmlessRepeat", {{5, 5, 0}, {15, 5, 0}, {5, 15, 0}, {15, 15, 0}, {15, 15, 0}}, true},
};

INSTANTIATE_TEST_SUITE_P(Construction, SweepVerdict, testing::ValuesIn(kSweepCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Construction, RepeatOfTheLowestPointLeavesTheSweepWithoutAFan) {
  const Positions swept = support::sweptPositions({{1, 1, 0}, {1, 1, 0}, {11, 1, 0}, {11, 11, 0}, {1, 11, 0}});
  ASSERT_EQ(swept.size(), 5u);
  EXPECT_EQ(checkedStages(swept), "");
  EXPECT_TRUE(literal::sweepOnly(swept).null);
}

TEST(Construction, LostAreaIsReported) {
  const Positions swept =
      support::sweptPositions({{1, 1, 0}, {101, 1, 0}, {61, 41, 0}, {61, 41, 0}, {81, 101, 0}, {1, 101, 0}});
  const OwnedPoints points(swept);
  const auto tin = support::sweep(points);
  ASSERT_NE(tin, nullptr);
  const TINCheck check = verifyTIN(*tin, points.pointers());
  EXPECT_EQ(check.fault, TINFault::AreaGap) << toText(check);
  EXPECT_NEAR(check.areaGap, 1600.0, 1e-6);
}

TEST(Construction, ListsHaveRoomForTheirNumberOfPoints) {
  support::OwnedPoints points({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}});
  std::vector<TPoint*> given = points.pointers();
  const std::unique_ptr<PList> order(Surface::initPoins(given));
  EXPECT_EQ(order->getMaxlen(), 4);
  const std::unique_ptr<CEType> fan(Surface::initCET(order.get()));
  const auto finished = support::triangulate(points);
  for (const CEType* tin : {fan.get(), finished.get()}) {
    EXPECT_EQ(tin->getCList()->getMaxlen(), 4);
    EXPECT_EQ(tin->getEList()->getMaxlen(), 36);
    EXPECT_EQ(tin->getTList()->getMaxlen(), 12);
  }
  order->setListData({});
}

// The room is that of the list given, whatever has been constructed since it was made.
TEST(Construction, ListsOfTheStagesHaveRoomForTheirOwnPoints) {
  support::OwnedPoints points({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}});
  std::vector<TPoint*> given = points.pointers();
  const std::unique_ptr<PList> order(Surface::initPoins(given));
  support::OwnedPoints others({{0, 0, 0}, {10, 0, 0}, {0, 10, 0}});
  const auto other = support::triangulate(others);
  EXPECT_EQ(Surface::MAXPOINTS, 3);
  const std::unique_ptr<CEType> fan(Surface::initCET(order.get()));
  EXPECT_EQ(fan->getCList()->getMaxlen(), 4);
  EXPECT_EQ(fan->getEList()->getMaxlen(), 36);
  EXPECT_EQ(fan->getTList()->getMaxlen(), 12);
  order->setListData({});
}

TEST(Construction, AnyNumberOfPointsMayBeClaimed) {
  support::OwnedPoints points({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}});
  std::vector<TPoint*> given = points.pointers();
  const std::unique_ptr<PList> order(Surface::initPoins(given));
  for (const int room : {-2000000000, 0, 3, 1000}) {
    Surface::MAXPOINTS = room;
    order->setMaxlen(room);
    const std::unique_ptr<CEType> fan(Surface::initCET(order.get()));
    EXPECT_EQ(support::triangleCount(*fan), 1);
    EXPECT_EQ(fan->getEList()->getMaxlen(), 9 * std::max(room, 4)) << "room for all points at least";
  }
  order->setListData({});
}

}  // namespace
