// A model that names what does not exist: null lists, numbers out of range, edges without points. Every operation skips
// it, and where nothing is left says so.
#include <limits>
#include <memory>

#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/surface/RangePoint.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/PList.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/verifyTIN.h>
#include <gtest/gtest.h>

#include "TINSupport.h"

namespace {

using support::OwnedPoints;
using support::Tables;

constexpr double kNoHeight = std::numeric_limits<double>::max();
constexpr int kNoNumbers[] = {0, -1, 3, 1000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};

std::vector<int> neighboursOf(const CEType& tin, int triangle) {
  const std::unique_ptr<int[]> three(tin.getRelateT(triangle));
  return {three[0], three[1], three[2]};
}

std::vector<double> heightsOf(const CEType& tin) {
  const std::unique_ptr<double[]> two(tin.getMinMaxHeight());
  return {two[0], two[1]};
}

// ---- nothing at all

void expectNothing(CEType& tin) {
  EXPECT_EQ(tin.locateTri(1, 1), 0);
  EXPECT_EQ(tin.locateTri1(1, 1), 0);
  for (const int start : {0, 1, -1, 5, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_EQ(tin.locateTri(1, 1, start), 0) << start;
    EXPECT_EQ(neighboursOf(tin, start), (std::vector<int>{0, 0, 0})) << start;
  }
  EXPECT_EQ(tin.getHeight(1, 1), kNoHeight);
  EXPECT_EQ(tin.proxyTri(0, 0, 1, 1, 1.0),
            (std::vector<std::vector<double>>{{kNoHeight, kNoHeight}, {kNoHeight, kNoHeight}}));
  EXPECT_EQ(tin.getArea2D(), 0.0);
  EXPECT_EQ(tin.getArea3D(), 0.0);
  EXPECT_EQ(tin.getTotalLength2D(), 0.0);
  EXPECT_EQ(tin.getTotalLength3D(), 0.0);
  EXPECT_EQ(heightsOf(tin), (std::vector<double>{0.0, 0.0}));
  EXPECT_EQ(tin.getRangeXY(), (std::vector<double>{0.0, 0.0, 0.0, 0.0}));
  EXPECT_TRUE(tin.getOriginalList().empty());
  EXPECT_TRUE(tin.getRangeList().empty());
  const std::unique_ptr<FillCutResult> volumes(tin.getFillCut(5.0));
  ASSERT_NE(volumes, nullptr);
  EXPECT_EQ(volumes->getFillVolume(), 0.0);
  EXPECT_EQ(volumes->getCutVolume(), 0.0);
  EXPECT_EQ(volumes->getFillTwoDArea(), 0.0);
  EXPECT_EQ(volumes->getCutThreeDArea(), 0.0);
  EXPECT_TRUE(tin.getTriangle3List().empty());
  EXPECT_TRUE(verifyTIN(tin).valid());
}

TEST(BrokenModel, NullListsHoldNothing) {
  CEType tin(nullptr, nullptr, nullptr);
  expectNothing(tin);
  CEType copy(tin);
  expectNothing(copy);
}

TEST(BrokenModel, EmptyListsHoldNothing) {
  const auto tin = makeTIN(OwnedPoints(), Tables());
  expectNothing(*tin);
}

TEST(BrokenModel, CountsZerosOfAnyNumbers) {
  const CEType tin(nullptr, nullptr, nullptr);
  EXPECT_EQ(tin.getZero(0, 0, 0), 3);
  EXPECT_EQ(tin.getZero(1, 0, -5), 1);
  EXPECT_EQ(tin.getZero(7, 8, 9), 0);
}

TEST(BrokenModel, GridOfNoRowsOrColumns) {
  CEType tin(nullptr, nullptr, nullptr);
  EXPECT_TRUE(tin.proxyTri(0, 0, -1, 3, 1.0).empty());
  EXPECT_EQ(tin.proxyTri(0, 0, 1, -1, 1.0), (std::vector<std::vector<double>>(2)));
}

// ---- one list missing

const inputs::Positions kSquare = {{0, 0, 1}, {10, 0, 2}, {10, 10, 3}, {0, 10, 4}};

Tables twoTriangles() {
  return {{{1, 2, 1, 0}, {2, 3, 1, 0}, {3, 1, 1, 2}, {3, 4, 2, 0}, {4, 1, 2, 0}}, {{1, 2, 3}, {3, 4, 5}}, {1, 2, 4, 5}};
}

class SquareModel : public testing::Test {
 protected:
  std::unique_ptr<CEType> made() const { return makeTIN(points_, tables_); }

  OwnedPoints points_{kSquare};
  Tables tables_ = twoTriangles();
};

TEST_F(SquareModel, WithoutItsHullList) {
  const auto tin = made();
  delete tin->getCList();
  tin->setCList(nullptr);
  EXPECT_EQ(tin->getTotalLength2D(), 0.0);
  EXPECT_EQ(tin->getRangeXY(), (std::vector<double>{0.0, 0.0, 0.0, 0.0}));
  EXPECT_EQ(tin->locateTri(7, 2), 0) << "a hull that does not exist contains nothing";
  EXPECT_EQ(tin->getHeight(7, 2), kNoHeight);
  EXPECT_EQ(tin->locateTri1(7, 2), 1);
  EXPECT_EQ(tin->locateTri(2, 7, 1), 2);
  EXPECT_NEAR(tin->getArea2D(), 100.0, 1e-9);
  EXPECT_FALSE(verifyTIN(*tin).valid());
}

TEST_F(SquareModel, WithoutItsEdgeList) {
  const auto tin = made();
  delete tin->getEList();
  tin->setEList(nullptr);
  EXPECT_EQ(tin->getArea2D(), 0.0);
  EXPECT_EQ(tin->getTotalLength3D(), 0.0);
  EXPECT_EQ(tin->locateTri(7, 2), 0);
  EXPECT_EQ(tin->locateTri1(7, 2), 0);
  EXPECT_EQ(tin->locateTri(7, 2, 2), 0);
  EXPECT_EQ(tin->getHeight(7, 2), kNoHeight);
  EXPECT_EQ(neighboursOf(*tin, 1), (std::vector<int>{0, 0, 0}));
  EXPECT_TRUE(tin->getOriginalList().empty());
  EXPECT_EQ(heightsOf(*tin), (std::vector<double>{0.0, 0.0}));
  EXPECT_EQ(std::unique_ptr<FillCutResult>(tin->getFillCut(2.0))->getCutVolume(), 0.0);
  EXPECT_EQ(verifyTIN(*tin).fault, TINFault::MissingEdge);
}

TEST_F(SquareModel, WithoutItsTriangleList) {
  const auto tin = made();
  delete tin->getTList();
  tin->setTList(nullptr);
  EXPECT_EQ(tin->getArea3D(), 0.0);
  EXPECT_NEAR(tin->getTotalLength2D(), 40.0, 1e-9);
  EXPECT_EQ(tin->locateTri(7, 2), 0);
  EXPECT_EQ(tin->locateTri1(7, 2), 0);
  EXPECT_EQ(neighboursOf(*tin, 1), (std::vector<int>{0, 0, 0}));
  EXPECT_EQ(std::unique_ptr<FillCutResult>(tin->getFillCut(2.0))->getFillVolume(), 0.0);
  EXPECT_FALSE(verifyTIN(*tin).valid());
}

// ---- numbers that name nothing

TEST_F(SquareModel, StartingTriangleThatDoesNotExist) {
  const auto tin = made();
  for (const int number : kNoNumbers) {
    EXPECT_EQ(neighboursOf(*tin, number), (std::vector<int>{0, 0, 0})) << number;
    EXPECT_EQ(tin->locateTri(7, 2, number), number == 0 ? 1 : 0) << number;
  }
  EXPECT_EQ(tin->locateTri(7, 2, 2), 1);
}

TEST_F(SquareModel, EdgeThatNamesNoTriangle) {
  for (const int number : kNoNumbers) {
    tables_.edges[2].right = number;  // the diagonal, across which triangle 2 lies
    const auto tin = made();
    EXPECT_EQ(neighboursOf(*tin, 1), (std::vector<int>{0, 0, 0})) << number;
    EXPECT_EQ(tin->locateTri(7, 2), 1) << number;
    EXPECT_EQ(tin->locateTri(2, 7), 2) << number << ": the scan finds what the walk cannot reach";
    EXPECT_EQ(tin->locateTri(2, 7, 1), 0) << number;
    EXPECT_NEAR(tin->getArea2D(), 100.0, 1e-9);
    EXPECT_NEAR(tin->getHeight(0, 10), 4.0, 1e-9);
    EXPECT_EQ(verifyTIN(*tin).fault, TINFault::WrongSlot) << number;
  }
}

TEST_F(SquareModel, TriangleThatNamesNoEdge) {
  for (const int number : {0, -1, 6, 1000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    for (std::size_t which = 0; which < 3; ++which) {
      tables_ = twoTriangles();
      tables_.triangles[1][which] = number;
      const auto tin = made();
      EXPECT_EQ(tin->locateTri(7, 2), 1) << number;
      EXPECT_NEAR(tin->getArea2D(), 50.0, 1e-9) << number;
      EXPECT_EQ(neighboursOf(*tin, 2)[which], 0) << number;
      EXPECT_EQ(verifyTIN(*tin).fault, TINFault::MissingEdge) << number;
      tin->locateTri(2, 7);
      tin->getHeight(2, 7);
      const std::unique_ptr<FillCutResult> volumes(tin->getFillCut(0.0));
      // Corners come from the first two edges, so the third one is not missed here.
      EXPECT_NEAR(volumes->getCutVolume(), which < 2 ? 100.0 : 100.0 + 400.0 / 3, 1e-9) << which;
      EXPECT_EQ(volumes->getFillVolume(), 0.0);
    }
  }
}

TEST_F(SquareModel, EdgeWithoutAPoint) {
  for (std::size_t edge = 0; edge < 5; ++edge) {
    for (const bool start : {true, false}) {
      tables_ = twoTriangles();
      (start ? tables_.edges[edge].start : tables_.edges[edge].end) = 0;
      const auto tin = made();
      const bool inFirst = edge <= 2;
      const bool inSecond = edge >= 2;
      const double area = (inFirst ? 0.0 : 50.0) + (inSecond ? 0.0 : 50.0);
      EXPECT_NEAR(tin->getArea2D(), area, 1e-9) << edge;
      // Corners come from a triangle's first two edges: 1 and 2, 3 and 4.
      EXPECT_EQ(tin->locateTri1(7, 2), edge <= 1 ? 0 : 1) << edge;
      EXPECT_EQ(tin->locateTri1(2, 7), edge == 2 || edge == 3 ? 0 : 2) << edge;
      EXPECT_EQ(verifyTIN(*tin).fault, TINFault::MissingEdge) << edge;
      EXPECT_EQ(tin->getOriginalList().size(), 4u);
      tin->locateTri(7, 2);
      tin->proxyTri(0, 0, 10, 10, 1.0);
      delete tin->getFillCut(2.5);
      tin->getTriangle3List();
    }
  }
}

TEST_F(SquareModel, HullEntryThatNamesNoEdgeLeavesTheScan) {
  for (const int number : {0, -1, 6, 1000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    for (std::size_t entry = 0; entry < 4; ++entry) {
      tables_ = twoTriangles();
      tables_.hull[entry] = number;
      const auto tin = made();
      EXPECT_EQ(tin->locateTri(7, 2), 1) << number;
      EXPECT_EQ(tin->locateTri(2, 7), 2) << number;
      EXPECT_EQ(tin->locateTri(20, 20), 0) << number;
      EXPECT_NEAR(tin->getTotalLength2D(), 30.0, 1e-9) << number;
      EXPECT_EQ(verifyTIN(*tin).fault, TINFault::WrongHull) << number;
    }
  }
}

TEST_F(SquareModel, WalkOverSlotsThatLeadInACircleEnds) {
  tables_.edges[0].right = tables_.edges[1].right = 2;
  tables_.edges[3].right = tables_.edges[4].right = 1;
  const auto tin = made();
  EXPECT_EQ(tin->locateTri(30, -20, 1), 0);
  EXPECT_EQ(tin->locateTri(-30, 20, 2), 0);
  EXPECT_EQ(tin->locateTri(7, 2, 2), 1);
}

TEST_F(SquareModel, QueriesWithWhatIsNoNumber) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  const auto tin = made();
  for (const double v : {kNaN, kInfinity, -kInfinity, 1e300, -kNoHeight}) {
    for (const auto& [x, y] : {std::pair{v, 2.0}, std::pair{2.0, v}, std::pair{v, v}}) {
      EXPECT_EQ(tin->locateTri(x, y), 0);
      EXPECT_EQ(tin->locateTri1(x, y), 0);
      EXPECT_EQ(tin->locateTri(x, y, 1), 0);
      EXPECT_EQ(tin->getHeight(x, y), kNoHeight);
    }
  }
  EXPECT_EQ(tin->locateTri(7, 2), 1);
}

TEST_F(SquareModel, NullBoundaryEntriesAreSkipped) {
  const auto tin = made();
  tin->setRangeList({nullptr, nullptr, nullptr, nullptr});
  EXPECT_TRUE(tin->getRangeList().empty());
  const std::unique_ptr<FillCutResult> volumes(tin->getFillCut(0.0));
  ASSERT_NE(volumes, nullptr);
  EXPECT_GT(volumes->getCutVolume(), 0.0);
}

TEST(BrokenModel, StagesLeaveListsWithNullElementsAlone) {
  for (int broken = 0; broken < 3; ++broken) {
    OwnedPoints points;
    for (const auto& [x, y] : {std::pair{0, 0}, {10, 0}, {10, 10}, {0, 10}}) points.add(x, y, 0);
    std::vector<TPoint*> pointers = points.pointers();
    const std::unique_ptr<PList> order(Surface::initPoins(pointers));
    const std::unique_ptr<CEType> fan(Surface::initCET(order.get()));
    SLType* lists[] = {fan->getEList(), fan->getTList(), fan->getCList()};
    const auto count = static_cast<std::size_t>(lists[broken]->getListLen());
    lists[broken]->init(lists[broken]);
    for (std::size_t i = 0; i < count; ++i) lists[broken]->add(lists[broken], nullptr);
    const std::unique_ptr<CEType> tin(Surface::buildTIN(order.get(), fan.get()));
    EXPECT_EQ(lists[broken]->getListLen(), static_cast<int>(count));
    fan->setCList(nullptr);
    fan->setEList(nullptr);
    fan->setTList(nullptr);
    order->setListData({});
  }
}

TEST(BrokenModel, PolygonsMayHoldNullVertices) {
  TPoint a(0, 0, 0);
  TPoint b(10, 0, 0);
  TPoint c(0, 10, 0);
  TPoint inside(2, 2, 0);
  TPoint outside(8, 8, 0);
  for (const std::vector<TPoint*>& polygon :
       {std::vector<TPoint*>{&a, nullptr, &b, &c}, {nullptr, &a, &b, &c}, {&a, &b, &c, nullptr}}) {
    EXPECT_TRUE(Surface::isPtInPolygon(&inside, polygon));
    EXPECT_FALSE(Surface::isPtInPolygon(&outside, polygon));
  }
  EXPECT_FALSE(Surface::isPtInPolygon(&inside, {nullptr}));
  EXPECT_FALSE(Surface::isPtInPolygon(nullptr, {&a, &b, &c}));
}

TEST(BrokenModel, TrianglesTooManyAndTooLargeToAddUpAreAGap) {
  constexpr double kFar = 9.19e12;
  std::vector<std::unique_ptr<TPoint>> owned;
  std::vector<TPoint*> vertices;
  std::vector<std::array<int, 3>> faces;
  for (const auto& [x, y] : {std::pair{-kFar, -kFar}, {kFar, -kFar}, {0.0, kFar}}) {
    owned.push_back(std::make_unique<TPoint>(x, y, 0));
    vertices.push_back(owned.back().get());
  }
  for (int i = 0; i < 300000; ++i) faces.push_back({0, 1, 2});
  const std::unique_ptr<CEType> tin(CEType::initCETypeFromFaces(vertices, faces));
  EXPECT_FALSE(verifyTIN(*tin).valid());
}

}  // namespace
