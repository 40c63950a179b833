// verifyTIN() on a small network that is right, and on the same network with one defect of each kind.
#include <algorithm>
#include <array>
#include <limits>
#include <string>
#include <utility>
#include <vector>

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

// ---- what area sums hide: triangles of some square millimetres over others

class VerifyOverlap : public testing::Test {
 protected:
  // Adds an island: a triangle with edges and corners of its own.
  void addIsland(const inputs::Positions& corners) {
    const int first = static_cast<int>(points_.size()) + 1;
    for (const inputs::Position& p : corners) points_.add(p[0], p[1], p[2]);
    const int edge = static_cast<int>(tables_.edges.size()) + 1;
    const int triangle = static_cast<int>(tables_.triangles.size()) + 1;
    tables_.edges.push_back({first, first + 1, triangle, 0});
    tables_.edges.push_back({first + 1, first + 2, triangle, 0});
    tables_.edges.push_back({first + 2, first, triangle, 0});
    tables_.triangles.push_back({edge, edge + 1, edge + 2});
    for (int i = 0; i < 3; ++i) tables_.hull.push_back(edge + i);
  }

  TINCheck check() const { return verifyTIN(*makeTIN(points_, tables_)); }

  void expectOverlap() const {
    const TINCheck result = check();
    EXPECT_EQ(result.fault, TINFault::Overlap) << toText(result);
    EXPECT_GE(result.number, 1);
    EXPECT_LE(result.number, static_cast<int>(tables_.triangles.size()));
    EXPECT_EQ(toText(result), "triangle " + std::to_string(result.number) + " overlaps another one");
  }

  OwnedPoints points_{kSquareAroundAPoint};
  Tables tables_ = fourTriangles();
};

TEST_F(VerifyOverlap, FindsATinyTriangleInsideAnother) {
  addIsland({{5, 2, 0}, {5.002, 2, 0}, {5, 2.003, 0}});
  expectOverlap();
}

TEST_F(VerifyOverlap, FindsATinyTriangleAcrossAnInnerEdge) {
  addIsland({{4.001, 5, 0}, {4.003, 5.001, 0}, {3.999, 5.002, 0}});
  expectOverlap();
}

TEST_F(VerifyOverlap, FindsATinyTriangleAcrossTheHull) {
  for (const double y : {3.0, 5.0, 9.999, 0.0}) {
    tables_ = fourTriangles();
    addIsland({{9.999, y, 0}, {10.001, y, 0}, {10.001, y + 0.002, 0}});
    expectOverlap();
  }
}

TEST_F(VerifyOverlap, FindsATinyTriangleListedTwice) {
  points_.add(10.002, 5, 0);
  tables_.edges[1].right = 5;  // 2 -> 3, with a sliver beside it
  tables_.edges.push_back({2, 6, 5, 0});
  tables_.edges.push_back({6, 3, 5, 0});
  tables_.triangles.push_back({2, 9, 10});
  tables_.hull = {1, 9, 10, 3, 4};
  EXPECT_TRUE(check().valid()) << toText(check());
  addIsland({{10, 0, 0}, {10.002, 5, 0}, {10, 10, 0}});
  expectOverlap();
}

TEST_F(VerifyOverlap, FindsATriangleListedTwiceAsAnIsland) {
  addIsland({{30, 30, 0}, {30.001, 30, 0}, {30, 30.001, 0}});
  EXPECT_EQ(check().fault, TINFault::AreaGap);
  addIsland({{30, 30, 0}, {30.001, 30, 0}, {30, 30.001, 0}});
  expectOverlap();
}

TEST_F(VerifyOverlap, FindsItBesideAGap) {
  addIsland({{30, 0, 0}, {40, 0, 0}, {30, 10, 0}});  // apart: the hull is not covered
  EXPECT_EQ(check().fault, TINFault::AreaGap);
  EXPECT_GT(check().areaGap, 0.0);
  addIsland({{31, 1, 0}, {33, 1, 0}, {31, 3, 0}});
  expectOverlap();
}

TEST_F(VerifyOverlap, IslandsMayTouch) {
  addIsland({{10, 0, 0}, {20, 0, 0}, {10, 10, 0}});  // along a whole side
  addIsland({{20, 0, 0}, {30, 5, 0}, {20, 10, 0}});  // in a corner
  addIsland({{15, 5, 0}, {20, 7, 0}, {15, 10, 0}});  // with a corner in the middle of a side
  addIsland({{-5, -5, 0}, {0, 2, 0}, {-5, 5, 0}});   // likewise, from the left
  addIsland({{12, 8, 0}, {14, 6, 0}, {14, 8, 0}});   // along a part of a side
  addIsland({{2, -3, 0}, {8, -3, 0}, {5, 0, 0}});    // from below
  EXPECT_EQ(check().fault, TINFault::AreaGap) << toText(check());
}

TEST_F(VerifyOverlap, ReachingAMillimetreIntoANeighbourIsFound) {
  const inputs::Positions touching[] = {{{-5, -5, 0}, {0, 2, 0}, {-5, 5, 0}},
                                        {{2, -3, 0}, {8, -3, 0}, {5, 0, 0}},
                                        {{10, 2, 0}, {15, 0, 0}, {15, 5, 0}},
                                        {{5, 10, 0}, {8, 14, 0}, {2, 14, 0}}};
  constexpr double kInward[4][2] = {{0.001, 0}, {0, 0.001}, {-0.001, 0}, {0, -0.001}};
  constexpr std::size_t kReaching[4] = {1, 2, 0, 0};
  for (std::size_t i = 0; i < 4; ++i) {
    tables_ = fourTriangles();
    inputs::Positions island = touching[i];
    addIsland(island);
    EXPECT_EQ(check().fault, TINFault::AreaGap) << toText(check());
    tables_ = fourTriangles();
    island[kReaching[i]][0] += kInward[i][0];
    island[kReaching[i]][1] += kInward[i][1];
    addIsland(island);
    expectOverlap();
  }
}

TEST_F(VerifyOverlap, AtProjectedCoordinatesAndBeyondMillimetres) {
  for (const double east : {38500000.0, 0.0003}) {  // the latter are no whole millimetres
    points_ = OwnedPoints();
    for (const inputs::Position& p : kSquareAroundAPoint) points_.add(p[0] + east, p[1] + east, p[2]);
    tables_ = fourTriangles();
    EXPECT_TRUE(check().valid()) << toText(check());
    addIsland({{east + 5, east + 2, 0}, {east + 5.002, east + 2, 0}, {east + 5, east + 2.003, 0}});
    expectOverlap();
  }
}

// The outline check against all pairs of triangles, on triangles thrown together.
TEST_F(VerifyOverlap, AgreesWithEveryPairOfTriangles) {
  using support::Millimetres;
  const auto separates = [](const std::array<Millimetres, 3>& s, const std::array<Millimetres, 3>& t) {
    for (std::size_t i = 0; i < 3; ++i) {
      const auto isBeyond = [&](const Millimetres& p) { return support::cross(s[i], s[(i + 1) % 3], p) <= 0; };
      if (std::all_of(t.begin(), t.end(), isBeyond)) return true;
    }
    return false;
  };
  inputs::Random random(21);
  int overlapping = 0;
  for (int round = 0; round < 4000; ++round) {
    points_ = OwnedPoints();
    tables_ = Tables();
    std::vector<std::array<Millimetres, 3>> triangles;
    const std::int64_t side = random.between(3, 14);
    const std::int64_t count = random.between(2, 6);
    while (static_cast<std::int64_t>(triangles.size()) < count) {
      const auto p = [&] { return Millimetres{random.between(0, side) * 1000, random.between(0, side) * 1000}; };
      const std::array<Millimetres, 3> t = {p(), p(), p()};
      if (support::cross(t[0], t[1], t[2]) > 0) triangles.push_back(t);
    }
    bool expected = false;
    for (std::size_t i = 0; i < triangles.size(); ++i) {
      for (std::size_t j = 0; j < i; ++j) {
        expected = expected || (!separates(triangles[i], triangles[j]) && !separates(triangles[j], triangles[i]));
      }
      inputs::Positions corners;
      for (const Millimetres& p : triangles[i]) {
        corners.push_back({static_cast<double>(p.x) / 1000, static_cast<double>(p.y) / 1000, 0});
      }
      addIsland(corners);
    }
    EXPECT_EQ(check().fault == TINFault::Overlap, expected) << "round " << round;
    overlapping += expected ? 1 : 0;
  }
  EXPECT_GT(overlapping, 1000);
  EXPECT_LT(overlapping, 3900);
}

// ---- edges and hulls

TEST_F(VerifyTIN, FindsAnEdgeWithoutTriangles) {
  points_.add(7, 3, 0);
  tables_.edges.push_back({5, 6, 0, 0});
  tables_.hull = {1, 2, 3, 4, 9};  // as an edge with nothing on its right it would belong there
  EXPECT_EQ(check().fault, TINFault::UnusedEdge);
  EXPECT_EQ(check().number, 9);
  EXPECT_EQ(toText(check()), "edge 9 has no triangle");
}

TEST_F(VerifyTIN, FindsATriangleListedTwice) {
  for (int triangle = 0; triangle < 4; ++triangle) {
    tables_ = fourTriangles();
    tables_.triangles.push_back(tables_.triangles[static_cast<std::size_t>(triangle)]);
    EXPECT_EQ(check().fault, TINFault::WrongSlot) << triangle;
  }
}

TEST_F(VerifyTIN, FindsATriangleThatListsAnEdgeTwice) {
  tables_.triangles[0] = {1, 6, 6};
  EXPECT_FALSE(check().valid());
}

TEST_F(VerifyTIN, FindsAnEdgeWithOneTriangleOnBothSides) {
  tables_.edges[5] = {2, 5, 1, 1};
  EXPECT_EQ(check().fault, TINFault::WrongSlot);
}

TEST_F(VerifyTIN, FindsAHullEdgeThatRunsClockwise) {
  tables_.edges[2] = {4, 3, 0, 3};
  tables_.hull = {1, 2, 4};
  EXPECT_EQ(check().fault, TINFault::WrongHull);
  EXPECT_EQ(check().number, 3);
  tables_.hull = {1, 2, 3, 4};
  EXPECT_EQ(check().fault, TINFault::WrongHull);
}

}  // namespace
