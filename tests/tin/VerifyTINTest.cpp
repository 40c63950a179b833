// verifyTIN() on a small network that is right, and on the same network with one defect of each kind.
#include <limits>
#include <utility>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/verifyTIN.h>
#include <gtest/gtest.h>

#include "TINSupport.h"

namespace {

using support::OwnedPoints;
using support::Tables;

// A square of side 10 (points 1 to 4) around point 5, in four triangles.
const inputs::Positions kSquareAroundAPoint = {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}, {4, 5, 1}};

Tables fourTriangles() {
  return {
      {{1, 2, 1, 0}, {2, 3, 2, 0}, {3, 4, 3, 0}, {4, 1, 4, 0}, {1, 5, 4, 1}, {2, 5, 1, 2}, {3, 5, 2, 3}, {4, 5, 3, 4}},
      {{1, 6, 5}, {2, 7, 6}, {3, 8, 7}, {4, 5, 8}},
      {1, 2, 3, 4}};
}

class VerifyTIN : public testing::Test {
 protected:
  TINCheck check() const { return verifyTIN(*makeTIN(points_, tables_), points_.pointers()); }

  OwnedPoints points_{kSquareAroundAPoint};
  Tables tables_ = fourTriangles();
};

TEST_F(VerifyTIN, AcceptsARightNetwork) {
  const TINCheck result = check();
  EXPECT_TRUE(result.valid()) << toText(result);
  EXPECT_EQ(result.number, 0);
  EXPECT_EQ(result.areaGap, 0.0);
  EXPECT_EQ(toText(result), "valid");
}

TEST_F(VerifyTIN, AcceptsAnEmptyNetwork) {
  EXPECT_TRUE(verifyTIN(CEType(nullptr, nullptr, nullptr)).valid());
  EXPECT_TRUE(verifyTIN(*makeTIN(OwnedPoints(), Tables())).valid());
}

TEST_F(VerifyTIN, FindsAMissingEdge) {
  tables_.triangles[2][1] = 99;
  EXPECT_EQ(check().fault, TINFault::MissingEdge);
  EXPECT_EQ(check().number, 3);
  tables_.triangles[2][1] = 0;
  EXPECT_EQ(check().fault, TINFault::MissingEdge);
  tables_.triangles[2][1] = -1;
  EXPECT_EQ(check().fault, TINFault::MissingEdge);
}

TEST_F(VerifyTIN, FindsAnEdgeWithoutAPoint) {
  tables_.edges[5].end = 0;
  EXPECT_EQ(check().fault, TINFault::MissingEdge);
}

TEST_F(VerifyTIN, FindsAWrongSlot) {
  tables_.edges[5].right = 3;
  EXPECT_EQ(check().fault, TINFault::WrongSlot);
  EXPECT_EQ(check().number, 6);
}

TEST_F(VerifyTIN, FindsASlotThatNamesNoTriangle) {
  tables_.edges[6].right = 0;
  EXPECT_EQ(check().fault, TINFault::WrongSlot);
  EXPECT_EQ(check().number, 7);
}

TEST_F(VerifyTIN, FindsExchangedSlots) {
  std::swap(tables_.edges[4].left, tables_.edges[4].right);
  EXPECT_EQ(check().fault, TINFault::OpenTriangle);
  EXPECT_EQ(check().number, 1);
}

TEST_F(VerifyTIN, FindsAnOpenTriangle) {
  tables_.edges[0].end = 3;
  EXPECT_EQ(check().fault, TINFault::OpenTriangle);
  EXPECT_EQ(check().number, 1);
}

TEST_F(VerifyTIN, FindsAClockwiseTriangle) {
  points_[4]->setX(-3);
  EXPECT_EQ(check().fault, TINFault::NotCounterClockwise);
  EXPECT_EQ(check().number, 4);
}

TEST_F(VerifyTIN, FindsAFlatTriangleWithThreeDistinctCorners) {
  points_[4]->setX(0);
  EXPECT_EQ(check().fault, TINFault::NotCounterClockwise);
  EXPECT_EQ(check().number, 4);
}

TEST_F(VerifyTIN, AcceptsAFlatTriangleBesideARepeat) {
  points_[4]->setX(0);
  points_[4]->setY(0);
  EXPECT_TRUE(check().valid()) << toText(check());
}

TEST_F(VerifyTIN, FindsAMissingHullEntry) {
  tables_.hull = {1, 2, 4};
  EXPECT_EQ(check().fault, TINFault::WrongHull);
}

TEST_F(VerifyTIN, FindsAHullEntryTooMany) {
  tables_.hull = {1, 2, 3, 4, 6};
  EXPECT_EQ(check().fault, TINFault::WrongHull);
}

TEST_F(VerifyTIN, FindsARepeatedHullEntry) {
  tables_.hull = {1, 2, 2, 3, 4};
  EXPECT_EQ(check().fault, TINFault::WrongHull);
}

TEST_F(VerifyTIN, FindsAHullEntryThatNamesNothing) {
  tables_.hull = {1, 2, 3, 77};
  EXPECT_EQ(check().fault, TINFault::WrongHull);
}

TEST_F(VerifyTIN, AcceptsAHullInEdgeOrder) {
  // Imported networks list their hull in edge order, whichever way the edges lie around the network.
  tables_.hull = {1, 3, 2, 4};
  EXPECT_TRUE(check().valid()) << toText(check());
}

TEST_F(VerifyTIN, FindsAMissingPoint) {
  const auto tin = makeTIN(points_, tables_);
  points_.add(7, 7, 0);
  points_.add(std::numeric_limits<double>::quiet_NaN(), 7, 0);
  const TINCheck result = verifyTIN(*tin, points_.pointers());
  EXPECT_EQ(result.fault, TINFault::MissingPoint);
  EXPECT_EQ(result.number, 6);
  EXPECT_TRUE(verifyTIN(*tin).valid());
}

TEST_F(VerifyTIN, PointsWithNaNAreNotMissed) {
  points_.add(std::numeric_limits<double>::quiet_NaN(), 7, 0);
  EXPECT_TRUE(check().valid()) << toText(check());
}

TEST_F(VerifyTIN, FindsAHole) {
  // Triangle 4 is left out; the edges around the hole are hull edges.
  tables_.triangles.pop_back();
  tables_.edges[3] = {5, 1, 1, 0};
  tables_.edges[4] = {4, 5, 3, 0};
  tables_.edges.pop_back();
  tables_.triangles = {{1, 6, 4}, {2, 7, 6}, {3, 5, 7}};
  tables_.hull = {1, 2, 3, 5, 4};
  const TINCheck result = check();
  EXPECT_EQ(result.fault, TINFault::AreaGap) << toText(result);
  EXPECT_NEAR(result.areaGap, 20.0, 1e-9);
}

TEST_F(VerifyTIN, GapsUpToAThousandthOfASquareUnitAreAllowed) {
  // Point 5 a millimetre inside the left side: without triangle 4 the network lacks 0.005 square units.
  tables_.triangles = {{1, 6, 4}, {2, 7, 6}, {3, 5, 7}};
  tables_.edges[3] = {5, 1, 1, 0};
  tables_.edges[4] = {4, 5, 3, 0};
  tables_.edges.pop_back();
  tables_.hull = {1, 2, 3, 5, 4};
  points_[4]->setX(0.001);
  EXPECT_EQ(check().fault, TINFault::AreaGap);
  EXPECT_NEAR(check().areaGap, 0.005, 1e-12);
  points_[3]->setY(1.0);
  points_[2]->setY(1.0);
  points_[4]->setY(0.5);
  EXPECT_TRUE(check().valid()) << toText(check());  // 0.0005
}

}  // namespace
