// Fill and cut against a level: against a slow account of every piece, against the exact integral, and at the levels
// where vertices and triangles lie in the plane itself.
#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/surface/RangePoint.h>
#include <OrvikDTMAlgorithm/surface/RecordLayout.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>
#include <OrvikDTMAlgorithm/tin/Triangle3.h>
#include <gtest/gtest.h>

#include "ExactPlane.h"
#include "Inputs.h"
#include "TINSupport.h"

namespace {

using support::OwnedPoints;

struct Spot {
  double x;
  double y;
  double z;
};

struct Piece {
  Spot p1;
  Spot p2;
  Spot p3;
  int status;
};

double planDistance(const Spot& a, const Spot& b) {
  return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y));
}

double distance(const Spot& a, const Spot& b) {
  return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y) + (a.z - b.z) * (a.z - b.z));
}

double heronProduct(double a, double b, double c) {
  const double s = (a + b + c) / 2;
  return s * (s - a) * (s - b) * (s - c);
}

double planArea(const Spot& a, const Spot& b, const Spot& c) {
  return std::sqrt(std::fabs(heronProduct(planDistance(a, b), planDistance(b, c), planDistance(c, a))));
}

double slopeArea(const Spot& a, const Spot& b, const Spot& c) {
  return std::sqrt(heronProduct(distance(a, b), distance(b, c), distance(c, a)));
}

struct Sums {
  double plan = 0.0;
  double slope = 0.0;
  double volume = 0.0;
};

// Triangle by triangle, piece by piece.
class SlowAccount {
 public:
  SlowAccount(const CEType& tin, double level) : level_(level) {
    EList* edges = tin.getEList();
    TList* triangles = tin.getTList();
    for (int t = 1; t <= triangles->getListLen(); ++t) {
      const int* e = triangles->findByNum(triangles, t)->getEno();
      const TEdge* first = edges->findByNum(edges, e[0]);
      const TEdge* second = edges->findByNum(edges, e[1]);
      const TEdge* third = edges->findByNum(edges, e[2]);
      if (first == nullptr || second == nullptr) continue;
      if (third != nullptr) addOwn(*first, *second, *third);
      const bool startIsOnFirst = second->getStartPoint()->equals(first->getStartPoint()) ||
                                  second->getStartPoint()->equals(first->getEndPoint());
      measure(spot(first->getStartPoint()), spot(first->getEndPoint()),
              spot(startIsOnFirst ? second->getEndPoint() : second->getStartPoint()));
    }
  }

  Sums fill;
  Sums cut;
  Sums own;  // of triangles that have all their edges, from the sides in the order of these
  std::vector<Piece> pieces;

 private:
  void addOwn(const TEdge& a, const TEdge& b, const TEdge& c) {
    own.plan += std::sqrt(std::fabs(heronProduct(a.getLength(), b.getLength(), c.getLength())));
    own.slope += std::sqrt(heronProduct(a.getLength3D(), b.getLength3D(), c.getLength3D()));
  }

  static Spot spot(const TPoint* p) { return {p->getX(), p->getY(), p->getZ()}; }

  void measure(const Spot& p1, const Spot& p2, const Spot& p3) {
    const double low = std::min({p1.z, p2.z, p3.z});
    const double high = std::max({p1.z, p2.z, p3.z});
    if (high > level_ && low >= level_) {
      whole(p1, p2, p3, 1, cut);
    } else if (high <= level_) {
      whole(p1, p2, p3, -1, fill);
    } else {
      split(p1, p2, p3);
    }
  }

  void whole(const Spot& p1, const Spot& p2, const Spot& p3, int status, Sums& sums) {
    pieces.push_back({p1, p2, p3, status});
    sums.plan += planArea(p1, p2, p3);
    sums.slope += slopeArea(p1, p2, p3);
    const double s = std::fabs((p2.x - p1.x) * (p3.y - p2.y) - (p2.y - p1.y) * (p3.x - p2.x)) / 2;
    sums.volume += std::fabs(((p1.z - level_) + (p2.z - level_) + (p3.z - level_)) * s) / 3;
  }

  Spot crossing(const Spot& from, const Spot& lone) const {
    const double d = std::fabs(from.z - level_);
    const double dLone = std::fabs(lone.z - level_);
    return {from.x + (lone.x - from.x) * d / (d + dLone), from.y + (lone.y - from.y) * d / (d + dLone), level_};
  }

  void split(const Spot& p1, const Spot& p2, const Spot& p3) {
    Spot a = p1;
    Spot b = p2;
    Spot lone = p3;
    if ((p2.z - level_) * (p1.z - level_) < 0) {
      b = p3;
      lone = p2;
      if ((p3.z - level_) * (p1.z - level_) < 0) {
        a = p2;
        b = p3;
        lone = p1;
      }
    }
    const Spot i1 = crossing(a, lone);
    const Spot i2 = crossing(b, lone);
    const double dA = std::fabs(a.z - level_);
    const double dB = std::fabs(b.z - level_);
    const double dLone = std::fabs(lone.z - level_);
    const bool loneIsFill = lone.z <= level_;
    Sums& loneSums = loneIsFill ? fill : cut;
    Sums& pairSums = loneIsFill ? cut : fill;
    loneSums.volume += planArea(lone, i1, i2) * dLone / 3;
    loneSums.plan += planArea(lone, i1, i2);
    loneSums.slope += slopeArea(lone, i1, i2);
    pairSums.volume += planArea(a, b, i2) * (dA + dB) / 3 + planArea(a, i1, i2) * dA / 3;
    pairSums.plan += planArea(b, i1, i2) + planArea(a, b, i1);
    pairSums.slope += slopeArea(a, b, i1) + slopeArea(b, i1, i2);
    const int loneStatus = loneIsFill ? -1 : 1;
    pieces.push_back({lone, i1, i2, loneStatus});
    pieces.push_back({a, i1, i2, -loneStatus});
    pieces.push_back({a, b, i2, -loneStatus});
  }

  double level_;
};

std::unique_ptr<FillCutResult> fillCut(CEType& tin, double level) {
  return std::unique_ptr<FillCutResult>(tin.getFillCut(level));
}

void expectSpot(const TPoint& p, const Spot& expected) {
  EXPECT_EQ(p.getX(), expected.x);
  EXPECT_EQ(p.getY(), expected.y);
  EXPECT_EQ(p.getZ(), expected.z);
}

void expectPieces(const std::vector<std::shared_ptr<Triangle3>>& list, const std::vector<Piece>& expected) {
  ASSERT_EQ(list.size(), expected.size());
  for (std::size_t i = 0; i < list.size(); ++i) {
    SCOPED_TRACE("piece " + std::to_string(i + 1));
    ASSERT_EQ(list[i]->getStatus(), expected[i].status);
    expectSpot(*list[i]->getP1(), expected[i].p1);
    expectSpot(*list[i]->getP2(), expected[i].p2);
    expectSpot(*list[i]->getP3(), expected[i].p3);
    if (testing::Test::HasFailure()) return;
  }
}

// To the last bit, or no number either: three sides that do not close have no area along the surface.
void expectSame(double figure, double slow) {
  EXPECT_TRUE(figure == slow || (std::isnan(figure) && std::isnan(slow))) << figure << ' ' << slow;
}

void expectSums(const FillCutResult& result, const SlowAccount& slow) {
  constexpr double kRelative = 1e-9;
  const double plan = kRelative * (slow.fill.plan + slow.cut.plan);
  const double slope = kRelative * (slow.fill.slope + slow.cut.slope);
  const double volume = kRelative * (slow.fill.volume + slow.cut.volume);
  EXPECT_NEAR(result.getFillTwoDArea(), slow.fill.plan, plan);
  EXPECT_NEAR(result.getCutTwoDArea(), slow.cut.plan, plan);
  EXPECT_NEAR(result.getFillThreeDArea(), slow.fill.slope, slope);
  EXPECT_NEAR(result.getCutThreeDArea(), slow.cut.slope, slope);
  EXPECT_NEAR(result.getFillVolume(), slow.fill.volume, volume);
  EXPECT_NEAR(result.getCutVolume(), slow.cut.volume, volume);
  EXPECT_EQ(RecordLayout::twoDArea(result), slow.own.plan);
  expectSame(RecordLayout::threeDArea(result), slow.own.slope);
}

void expectSameSums(const FillCutResult& result, const SlowAccount& slow) {
  expectSame(result.getFillTwoDArea(), slow.fill.plan);
  expectSame(result.getFillThreeDArea(), slow.fill.slope);
  expectSame(result.getFillVolume(), slow.fill.volume);
  expectSame(result.getCutTwoDArea(), slow.cut.plan);
  expectSame(result.getCutThreeDArea(), slow.cut.slope);
  expectSame(result.getCutVolume(), slow.cut.volume);
}

double exactVolumeAbove(const CEType& tin, double level) {
  exact::Rational sum = 0;
  for (int t = 1; t <= support::triangleCount(tin); ++t) sum += exact::volumeAbove(*support::cornersOf(tin, t), level);
  return static_cast<double>(sum);
}

TEST(LevelVolume, AgreesWithTheSlowAccountAndTheExactIntegral) {
  for (std::uint64_t seed = 1; seed <= 4; ++seed) {
    const OwnedPoints points(inputs::randomMillimetres(seed, 250, 200, seed % 2 == 0 ? 500000 : 0, 0));
    const auto tin = support::triangulate(points);
    for (const double level : {-5.0, 3.0, 10.0, 12.345, 19.0, 40.0}) {
      SCOPED_TRACE("level " + std::to_string(level));
      const auto result = fillCut(*tin, level);
      ASSERT_NE(result, nullptr);
      const SlowAccount slow(*tin, level);
      expectSums(*result, slow);
      expectPieces(tin->getTriangle3List(), slow.pieces);
      const double total = result->getFillVolume() + result->getCutVolume();
      EXPECT_NEAR(result->getCutVolume() - result->getFillVolume(), exactVolumeAbove(*tin, level), 1e-7 * total);
      if (HasFatalFailure()) return;
    }
  }
}

TEST(LevelVolume, EdgesStandInAnyOrderAndSomeAreMissing) {
  inputs::Random random(29);
  const OwnedPoints points(inputs::randomMillimetres(29, 400, 150, 0, 0));
  const auto tin = support::triangulate(points);
  TList* triangles = tin->getTList();
  for (int t = 1; t <= triangles->getListLen(); ++t) {
    int* e = triangles->findByNum(triangles, t)->getEno();
    std::swap(e[random.between(0, 2)], e[random.between(0, 2)]);
    std::swap(e[random.between(0, 2)], e[random.between(0, 2)]);
    constexpr int kNoNumbers[] = {0, -1, 2000000000};
    if (t % 7 == 0) e[random.between(0, 2)] = kNoNumbers[random.between(0, 2)];
  }
  for (const double level : {3.0, 10.0, 40.0}) {
    const auto result = fillCut(*tin, level);
    const SlowAccount slow(*tin, level);
    expectSums(*result, slow);
    expectPieces(tin->getTriangle3List(), slow.pieces);
  }
  const SlowAccount slow(*tin, 0.0);
  EXPECT_EQ(tin->getArea2D(), slow.own.plan);
  EXPECT_EQ(tin->getArea3D(), slow.own.slope);
}

TEST(LevelVolume, CornersLieAtOnePositionOrNowhere) {
  const OwnedPoints points(inputs::randomMillimetres(31, 400, 150, 0, 0));
  const auto tin = support::triangulate(points);
  EList* edges = tin->getEList();
  for (int e = 1; e <= edges->getListLen(); e += 13) {
    const TPoint& start = *edges->findByNum(edges, e)->getStartPoint();
    TPoint& end = *edges->findByNum(edges, e)->getEndPoint();
    end.setX(start.getX());
    end.setY(start.getY());
  }
  for (const double level : {3.0, 10.0, 40.0}) {
    const auto result = fillCut(*tin, level);
    const SlowAccount slow(*tin, level);
    const double area = slow.fill.plan + slow.cut.plan;
    EXPECT_NEAR(result->getFillTwoDArea(), slow.fill.plan, 1e-9 * area);
    EXPECT_NEAR(result->getCutTwoDArea(), slow.cut.plan, 1e-9 * area);
    EXPECT_NEAR(result->getFillVolume(), slow.fill.volume, 1e-9 * (slow.fill.volume + slow.cut.volume));
    EXPECT_NEAR(result->getCutVolume(), slow.cut.volume, 1e-9 * (slow.fill.volume + slow.cut.volume));
  }

  TPoint& nowhere = *edges->findByNum(edges, 50)->getStartPoint();
  nowhere.setX(std::numeric_limits<double>::quiet_NaN());
  for (const double height : {0.0, 20.0}) {  // under the level, all around it included, and above it
    nowhere.setZ(height);
    const auto result = fillCut(*tin, 10.0);
    const SlowAccount slow(*tin, 10.0);
    EXPECT_EQ(std::isnan(result->getFillVolume()), std::isnan(slow.fill.volume));
    EXPECT_EQ(std::isnan(result->getCutVolume()), std::isnan(slow.cut.volume));
    EXPECT_TRUE(std::isnan(RecordLayout::twoDArea(*result)));
  }
}

// Of so few triangles that none hides what becomes of another.
TEST(LevelVolume, OneCornerOfAFewTrianglesIsOutOfPlace) {
  for (std::uint64_t seed = 1; seed <= 1000; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const OwnedPoints points(inputs::randomMillimetres(seed, 5, 50, 0, 0));
    const auto tin = support::triangulate(points);
    if (seed % 2 == 0) {
      points[1]->setX(points[0]->getX());
      points[1]->setY(points[0]->getY());
    } else {
      points[1]->setY(std::numeric_limits<double>::quiet_NaN());
    }
    for (const double level : {5.0, 10.0, 15.0}) expectSameSums(*fillCut(*tin, level), SlowAccount(*tin, level));
    if (HasFailure()) return;
  }
}

// A new network whose lists come from one block each, until somebody changes them.
class ChangedLists : public testing::Test {
 protected:
  ChangedLists()
      : points_(inputs::randomMillimetres(37, 300, 150, 0, 0)),
        tin_(support::triangulate(points_)),
        edges_(*tin_->getEList()),
        triangles_(*tin_->getTList()) {}

  void expectAsListed() const {
    const auto result = fillCut(*tin_, 10.0);
    expectSums(*result, SlowAccount(*tin_, 10.0));
  }

  double cutVolume() const { return fillCut(*tin_, 10.0)->getCutVolume(); }

  OwnedPoints points_;
  std::unique_ptr<CEType> tin_;
  EList& edges_;
  TList& triangles_;
};

TEST_F(ChangedLists, EdgesThatChangedPlaces) {
  const double before = cutVolume();
  edges_.switchPos(&edges_, 3, edges_.getListLen() - 5);
  EXPECT_NE(before, cutVolume());
  expectAsListed();
}

TEST_F(ChangedLists, TrianglesThatChangedPlacesAreTheSameInAll) {
  triangles_.switchPos(&triangles_, 2, triangles_.getListLen());
  expectAsListed();
}

TEST_F(ChangedLists, RemovedAndInsertedElements) {
  edges_.deleteData(&edges_, 100);
  expectAsListed();
  edges_.insert(&edges_, 100, new TEdge(points_[0], points_[1]));
  expectAsListed();
  triangles_.deleteData(&triangles_, 7);
  expectAsListed();
  const int none[] = {0, 0, 0};
  triangles_.insert(&triangles_, 9, new Triangle(none));
  expectAsListed();
}

TEST_F(ChangedLists, AnAddedTriangleCounts) {
  const double before = cutVolume();
  const int again[] = {triangles_.findByNum(&triangles_, 5)->getEno()[0],
                       triangles_.findByNum(&triangles_, 5)->getEno()[1],
                       triangles_.findByNum(&triangles_, 5)->getEno()[2]};
  ASSERT_EQ(1, triangles_.add(&triangles_, new Triangle(again)));
  EXPECT_NE(before, cutVolume());
  expectAsListed();
}

TEST_F(ChangedLists, ReplacedPointers) {
  std::vector<void*> data = edges_.getListData();
  std::rotate(data.begin(), data.begin() + 1, data.end());
  std::swap(data.front(), data.back());
  edges_.setListData(data);
  expectAsListed();
  delete static_cast<TEdge*>(data[40]);
  data[40] = nullptr;
  edges_.setListData(data);
  expectAsListed();
}

TEST_F(ChangedLists, EmptiedAndFilledAgain) {
  edges_.init(&edges_);
  EXPECT_EQ(0.0, cutVolume());
  for (int i = 0; i < 3; ++i) edges_.add(&edges_, new TEdge(points_[0], points_[1]));
  expectAsListed();
}

TEST(LevelVolume, WholeHeightsPutVerticesInThePlane) {
  inputs::Random random(13);
  inputs::Positions positions = inputs::randomMillimetres(13, 200, 100, 0, 0);
  for (auto& p : positions) p[2] = static_cast<double>(random.between(0, 4));
  const OwnedPoints points(positions);
  const auto tin = support::triangulate(points);
  for (const double level : {0.0, 1.0, 2.0, 3.0, 4.0}) {
    const auto result = fillCut(*tin, level);
    const SlowAccount slow(*tin, level);
    expectPieces(tin->getTriangle3List(), slow.pieces);
    EXPECT_NEAR(result->getCutVolume(), slow.cut.volume, 1e-6 * (1 + slow.cut.volume));
    EXPECT_NEAR(result->getFillVolume(), slow.fill.volume, 1e-6 * (1 + slow.fill.volume));
    EXPECT_NEAR(result->getCutVolume() - result->getFillVolume(), exactVolumeAbove(*tin, level), 1e-3);
  }
}

TEST(LevelVolume, EmptyNetworkGivesZeros) {
  const auto tin = makeTIN(OwnedPoints(), {});
  const auto result = fillCut(*tin, 5.0);
  ASSERT_NE(result, nullptr);
  EXPECT_EQ(result->getFillTwoDArea(), 0.0);
  EXPECT_EQ(result->getFillThreeDArea(), 0.0);
  EXPECT_EQ(result->getCutTwoDArea(), 0.0);
  EXPECT_EQ(result->getCutThreeDArea(), 0.0);
  EXPECT_EQ(result->getFillVolume(), 0.0);
  EXPECT_EQ(result->getCutVolume(), 0.0);
  EXPECT_EQ(RecordLayout::fillPerimeterTwoD(*result), 0.0);
  EXPECT_EQ(RecordLayout::fillPerimeterThreeD(*result), 0.0);
  EXPECT_EQ(RecordLayout::cutPerimeterTwoD(*result), 0.0);
  EXPECT_EQ(RecordLayout::cutPerimeterThreeD(*result), 0.0);
  EXPECT_TRUE(tin->getTriangle3List().empty());
}

class OneTriangle : public testing::Test {
 protected:
  void heights(double z1, double z2, double z3) {
    points_ = OwnedPoints(inputs::Positions{{0, 0, z1}, {6, 0, z2}, {0, 6, z3}});
    tin_ = makeTIN(points_, {{{1, 2, 1, 0}, {2, 3, 1, 0}, {3, 1, 1, 0}}, {{1, 2, 3}}, {1, 2, 3}});
  }

  OwnedPoints points_;
  std::unique_ptr<CEType> tin_;
};

TEST_F(OneTriangle, InThePlaneItCountsAsFillWithoutVolume) {
  heights(5, 5, 5);
  const auto result = fillCut(*tin_, 5);
  EXPECT_EQ(result->getFillVolume(), 0.0);
  EXPECT_EQ(result->getCutTwoDArea(), 0.0);
  EXPECT_EQ(result->getFillTwoDArea(), tin_->getArea2D());
  EXPECT_EQ(result->getFillThreeDArea(), tin_->getArea3D());
  ASSERT_EQ(tin_->getTriangle3List().size(), 1u);
  EXPECT_EQ(tin_->getTriangle3List()[0]->getStatus(), -1);
}

TEST_F(OneTriangle, WithItsLowestVertexInThePlaneItIsCutWhole) {
  heights(5, 8, 9);
  const auto result = fillCut(*tin_, 5);
  EXPECT_NEAR(result->getCutVolume(), 18.0 * (0 + 3 + 4) / 3, 1e-12);
  EXPECT_EQ(result->getFillTwoDArea(), 0.0);
  ASSERT_EQ(tin_->getTriangle3List().size(), 1u);
  EXPECT_EQ(tin_->getTriangle3List()[0]->getStatus(), 1);
}

TEST_F(OneTriangle, WithItsHighestVertexInThePlaneItIsFilledWhole) {
  heights(5, 3, 2);
  const auto result = fillCut(*tin_, 5);
  EXPECT_NEAR(result->getFillVolume(), 18.0 * (0 + 2 + 3) / 3, 1e-12);
  ASSERT_EQ(tin_->getTriangle3List().size(), 1u);
  EXPECT_EQ(tin_->getTriangle3List()[0]->getStatus(), -1);
}

TEST_F(OneTriangle, WithAVertexInThePlaneBetweenTheOthersItIsSplitThere) {
  for (int inPlane = 0; inPlane < 3; ++inPlane) {
    double z[3] = {8, 8, 8};
    z[inPlane] = 5;
    z[(inPlane + 1) % 3] = 2;
    heights(z[0], z[1], z[2]);
    const auto result = fillCut(*tin_, 5);
    EXPECT_NEAR(result->getFillVolume(), 9.0 * 3 / 3, 1e-6) << inPlane;
    EXPECT_NEAR(result->getCutVolume(), 9.0 * 3 / 3, 1e-6) << inPlane;
    EXPECT_NEAR(result->getFillTwoDArea(), 9.0, 1e-6) << inPlane;
    ASSERT_EQ(tin_->getTriangle3List().size(), 3u);
    const TPoint& vertex = *points_[static_cast<std::size_t>(inPlane)];
    const Triangle3& lone = *tin_->getTriangle3List()[0];
    EXPECT_TRUE(*lone.getP2() == vertex || *lone.getP3() == vertex) << inPlane;
  }
}

TEST_F(OneTriangle, SplitInTwo) {
  heights(0, 0, 6);
  const auto result = fillCut(*tin_, 2);
  EXPECT_NEAR(result->getCutVolume(), 8.0 * 4 / 3, 1e-12);   // a corner of side 4
  EXPECT_NEAR(result->getFillVolume(), 8.0 * 4 / 3, 1e-12);  // the mean height is the level: as much below as above
  EXPECT_NEAR(result->getCutTwoDArea(), 8.0, 1e-12);
  EXPECT_NEAR(result->getFillTwoDArea(), 10.0, 1e-12);
}

TEST_F(OneTriangle, ListReflectsTheLatestComputation) {
  heights(0, 0, 6);
  EXPECT_TRUE(tin_->getTriangle3List().empty());
  const auto first = fillCut(*tin_, 2);
  EXPECT_EQ(tin_->getTriangle3List().size(), 3u);
  const auto again = fillCut(*tin_, 2);
  EXPECT_EQ(again->getCutVolume(), first->getCutVolume());
  EXPECT_EQ(again->getFillThreeDArea(), first->getFillThreeDArea());
  EXPECT_EQ(tin_->getTriangle3List().size(), 3u);
  fillCut(*tin_, 2);
  fillCut(*tin_, 10);
  ASSERT_EQ(tin_->getTriangle3List().size(), 1u);
  EXPECT_EQ(tin_->getTriangle3List()[0]->getStatus(), -1);
}

TEST_F(OneTriangle, TotalsAreTheNetworksOwnAndNamesAreEmpty) {
  heights(0, 3, 6);
  const auto result = fillCut(*tin_, 2);
  EXPECT_EQ(RecordLayout::twoDArea(*result), tin_->getArea2D());
  EXPECT_EQ(RecordLayout::threeDArea(*result), tin_->getArea3D());
  EXPECT_EQ(RecordLayout::perimeterTwoD(*result), tin_->getTotalLength2D());
  EXPECT_EQ(RecordLayout::perimeterThreeD(*result), tin_->getTotalLength3D());
  EXPECT_STREQ(RecordLayout::surfaceName(*result), "");
  EXPECT_STREQ(RecordLayout::refSurfaceName(*result), "");
}

TEST_F(OneTriangle, ABoundaryOfTwoPointsLimitsNothing) {
  heights(0, 3, 6);
  const auto whole = fillCut(*tin_, 2);
  RangePoint corners[2] = {{"a", 0, 0, 0}, {"b", 0, 5, 0}};
  tin_->setRangeList({&corners[0], &corners[1]});
  const auto same = fillCut(*tin_, 2);
  EXPECT_EQ(same->getCutVolume(), whole->getCutVolume());
  EXPECT_EQ(same->getFillVolume(), whole->getFillVolume());
}

// A host may release a list before it sets another.
TEST_F(OneTriangle, ReplacedListsAreNotRead) {
  heights(1, 2, 3);
  const std::unique_ptr<FillCutResult> result(tin_->getFillCut(2));
  delete tin_->getEList();
  tin_->setEList(nullptr);
  EXPECT_TRUE(tin_->getTriangle3List().empty());
}

// Hosts set a list again to tell that its elements have changed.
TEST_F(OneTriangle, ListOutlastsListsThatAreSetAgain) {
  heights(1, 2, 3);
  const auto result = fillCut(*tin_, 2);
  tin_->setEList(tin_->getEList());
  tin_->setTList(tin_->getTList());
  EXPECT_EQ(tin_->getTriangle3List().size(), 3u);
}

TEST_F(OneTriangle, ListOfAComparisonOutlastsReplacedLists) {
  heights(1, 2, 3);
  RangePoint corners[3] = {{"a", 0, 0, 0}, {"b", 0, 6, 0}, {"c", 6, 0, 0}};
  tin_->setRangeList({&corners[0], &corners[1], &corners[2]});
  const auto result = fillCut(*tin_, 0.5);
  delete tin_->getEList();
  tin_->setEList(nullptr);
  EXPECT_FALSE(tin_->getTriangle3List().empty());
}

// What the copy shows must not hang on the source's lists and points.
TEST(LevelVolume, CopiesShareTheDrawingList) {
  CEType copy(nullptr, nullptr, nullptr);
  std::vector<std::shared_ptr<Triangle3>> drawn;
  {
    const OwnedPoints points(inputs::Positions{{0, 0, 1}, {6, 0, 2}, {0, 6, 3}});
    const auto source = support::triangulate(points);
    const std::unique_ptr<FillCutResult> result(source->getFillCut(2));
    CEType first(*source);
    copy = first;
    drawn = source->getTriangle3List();
    EXPECT_EQ(first.getTriangle3List(), drawn);
    first.getRangeList().clear();
    first.setCList(nullptr);
    first.setEList(nullptr);
    first.setTList(nullptr);
  }
  EXPECT_EQ(drawn.size(), 3u);
  EXPECT_EQ(copy.getTriangle3List(), drawn);
  copy.setCList(nullptr);
  copy.setEList(nullptr);
  copy.setTList(nullptr);
}

TEST(LevelVolume, FlatNetworkInThePlaneIsAllFillWithoutVolume) {
  OwnedPoints points;
  for (int i = 0; i < 200; ++i) points.add((i * 379) % 997, (i * 577) % 991, 12.5);
  const auto tin = support::triangulate(points);
  const auto result = fillCut(*tin, 12.5);
  EXPECT_DOUBLE_EQ(result->getFillTwoDArea(), tin->getArea2D());
  EXPECT_DOUBLE_EQ(result->getFillThreeDArea(), tin->getArea3D());
  EXPECT_EQ(result->getFillVolume(), 0.0);
  EXPECT_EQ(result->getCutVolume(), 0.0);
  EXPECT_EQ(result->getCutTwoDArea(), 0.0);
  EXPECT_EQ(static_cast<int>(tin->getTriangle3List().size()), support::triangleCount(*tin));
}

}  // namespace
