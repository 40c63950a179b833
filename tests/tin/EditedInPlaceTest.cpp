// Elements, points and lists that are changed between queries: the next query answers as if the network had been made
// so, however the change was made. Held against location that reads the lists anew for every query.
#include <bit>
#include <cmath>
#include <memory>
#include <vector>

#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/EditLog.h>
#include <OrvikDTMAlgorithm/tin/FlatTIN.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>
#include <OrvikDTMAlgorithm/tin/Triangle3.h>
#include <gtest/gtest.h>

#include "Inputs.h"
#include "SlowLocation.h"
#include "TINSupport.h"

namespace {

using support::OwnedPoints;

bool sameBits(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) || (std::isnan(a) && std::isnan(b));
}

TEST(EditedInPlace, LayoutOfElementsIsPlain) {
  EXPECT_EQ(sizeof(TPoint), 3 * sizeof(double));
  EXPECT_EQ(sizeof(TEdge), 2 * sizeof(int) + 2 * sizeof(void*));
  EXPECT_EQ(sizeof(Triangle), 3 * sizeof(int));
  EXPECT_EQ(sizeof(TConvex), sizeof(int));
}

// ---- one change of every kind

class EditedSquare : public testing::Test {
 protected:
  EditedSquare() { EXPECT_EQ(tin_->getHeight(7, 2), 1.0); }

  TEdge* edge(int number) { return tin_->getEList()->findByNum(tin_->getEList(), number); }
  Triangle* triangle(int number) { return tin_->getTList()->findByNum(tin_->getTList(), number); }
  void expectNotFound() {
    EXPECT_EQ(tin_->locateTri(7, 2), 0);
    EXPECT_EQ(tin_->locateTri1(7, 2), 0);
    EXPECT_EQ(tin_->locateTri(7, 2, 1), 0);
  }

  OwnedPoints points_{inputs::Positions{{0, 0, 1}, {10, 0, 1}, {10, 10, 1}, {0, 10, 1}}};
  std::unique_ptr<CEType> tin_ = makeTIN(
      points_,
      {{{1, 2, 1, 0}, {2, 3, 1, 0}, {3, 1, 1, 2}, {3, 4, 2, 0}, {4, 1, 2, 0}}, {{1, 2, 3}, {3, 4, 5}}, {1, 2, 4, 5}});
};

TEST_F(EditedSquare, HeightOfAPoint) {
  for (std::size_t i = 0; i < points_.size(); ++i) points_[i]->setZ(5);
  EXPECT_EQ(tin_->getHeight(7, 2), 5.0);
  EXPECT_EQ(tin_->proxyTri(7, 2, 0, 0, 1)[0][0], 5.0);
  *points_[1] = TPoint(10, 0, 8);
  EXPECT_EQ(tin_->getHeight(10, 0), 8.0);
}

TEST_F(EditedSquare, PositionOfAPoint) {
  points_[2]->setX(4);
  points_[2]->setY(4);
  EXPECT_EQ(tin_->locateTri(8, 8), 0) << "the hull stays as it was, but no triangle is there any more";
  EXPECT_EQ(tin_->locateTri(9, 0.5), 1);
  *points_[2] = TPoint(10, 10, 1);
  EXPECT_NE(tin_->locateTri(8, 8), 0);
}

TEST_F(EditedSquare, PointsOfAnEdge) {
  edge(1)->setStartPoint(points_[1]);
  expectNotFound();
  edge(1)->setStartPoint(points_[0]);
  EXPECT_EQ(tin_->locateTri(7, 2), 1);
  *edge(1) = TEdge(points_[1], nullptr);
  expectNotFound();
}

TEST_F(EditedSquare, EdgesOfATriangle) {
  const int none[] = {0, 0, 0};
  const int own[] = {1, 2, 3};
  triangle(1)->setEno(none);
  expectNotFound();
  triangle(1)->setEno(own);
  EXPECT_EQ(tin_->locateTri(7, 2), 1);
  *triangle(1) = Triangle(none);
  expectNotFound();
  for (int i = 0; i < 3; ++i) triangle(1)->getEno()[i] = own[i];
  EXPECT_EQ(tin_->locateTri(7, 2), 1);
}

TEST_F(EditedSquare, TrianglesOfAnEdge) {
  EXPECT_EQ(tin_->locateTri(2, 7, 1), 2);
  edge(3)->setRightT(0);
  EXPECT_EQ(tin_->locateTri(2, 7, 1), 0);
  edge(3)->setRightT(2);
  EXPECT_EQ(tin_->locateTri(2, 7, 1), 2);
  const int none[] = {1, 0};
  edge(3)->setTriNo(none);
  EXPECT_EQ(tin_->locateTri(2, 7, 1), 0);
  edge(3)->getTriNo()[1] = 2;
  EXPECT_EQ(tin_->locateTri(2, 7, 1), 2);
}

TEST_F(EditedSquare, NumbersBehindPointersThatWereTakenBefore) {
  int* const edges = triangle(1)->getEno();
  int* const sides = edge(3)->getTriNo();
  EXPECT_EQ(tin_->locateTri(7, 2), 1);
  for (int round = 0; round < 3; ++round) {
    edges[0] = 0;
    expectNotFound();
    edges[0] = 1;
    EXPECT_EQ(tin_->locateTri(7, 2), 1);
    sides[1] = 0;
    EXPECT_EQ(tin_->locateTri(2, 7, 1), 0);
    sides[1] = 2;
    EXPECT_EQ(tin_->locateTri(2, 7, 1), 2);
  }
}

TEST_F(EditedSquare, ElementsOfAList) {
  TList* triangles = tin_->getTList();
  triangles->switchPos(triangles, 1, 2);
  EXPECT_EQ(tin_->locateTri(7, 2), 2);
  const std::vector<void*> both = triangles->getListData();
  triangles->setListData({both[0], nullptr});
  EXPECT_EQ(tin_->locateTri1(7, 2), 0);
  triangles->setListData(both);
  EXPECT_EQ(tin_->locateTri(7, 2), 2);
  TList other;
  other = *triangles;
  *triangles = TList();
  expectNotFound();
  *triangles = other;
  EXPECT_EQ(tin_->locateTri(7, 2), 2);
  other.setListData({});
  triangles->deleteData(triangles, 2);
  EXPECT_EQ(tin_->locateTri1(7, 2), 0);
}

TEST_F(EditedSquare, PointsThatASecondConstructionMoves) {
  points_[2]->setX(9.99961);
  EXPECT_EQ(tin_->locateTri(9.9998, 9.9998), 0);
  std::vector<TPoint*> again = points_.pointers();
  const std::unique_ptr<CEType> second(Surface::optimizeTIN(again));
  EXPECT_EQ(points_[2]->getX(), 10.0);
  EXPECT_NE(tin_->locateTri(9.9998, 9.9998), 0);
}

TEST_F(EditedSquare, ChangesBesideAVolumeLeaveItsPiecesAlone) {
  OwnedPoints above{inputs::Positions{{0, 0, 3}, {10, 0, 3}, {10, 10, 3}, {0, 10, 3}}};
  const auto other = support::triangulate(above);
  delete tin_->getFillCut(other.get());
  points_[0]->setZ(50);
  EXPECT_EQ(tin_->getHeight(0, 0), 50.0);
  for (const auto& piece : tin_->getTriangle3List()) EXPECT_LT(piece->getP1()->getZ(), 10.0);
}

// ---- many changes in a row

// Changes a random element of a network in a random way. What is broken stays broken, so networks decay.
class Editor {
 public:
  Editor(CEType& tin, const OwnedPoints& points, std::uint64_t seed) : tin_(tin), points_(points), random_(seed) {
    for (int number = 1; number <= support::triangleCount(tin); number += 3) {
      held_.push_back(tin.getTList()->findByNum(tin.getTList(), number)->getEno());
    }
    heldOfTriangles_ = held_.size();
    for (int number = 1; number <= support::edgeCount(tin); number += 3) {
      held_.push_back(tin.getEList()->findByNum(tin.getEList(), number)->getTriNo());
    }
  }

  void edit(bool throughHeld) {
    const int kind = static_cast<int>(random_.between(throughHeld ? -1 : 0, 13));
    TPoint* point = points_[static_cast<std::size_t>(random_.between(0, static_cast<int>(points_.size()) - 1))];
    TEdge* edge = tin_.getEList()->findByNum(tin_.getEList(), any(support::edgeCount(tin_)));
    Triangle* triangle = tin_.getTList()->findByNum(tin_.getTList(), any(support::triangleCount(tin_)));
    if (edge == nullptr || triangle == nullptr) return;
    const int side = static_cast<int>(random_.between(0, 1));
    const int which = static_cast<int>(random_.between(0, 2));
    switch (kind) {
      case -1:
        editHeld();
        break;
      case 0:
        point->setX(point->getX() + random_.unit() - 0.5);
        break;
      case 1:
        point->setY(point->getY() + random_.unit() - 0.5);
        break;
      case 2:
      case 3:
      case 4:
        point->setZ(random_.unit());
        break;
      case 5:
        *point = TPoint(point->getX(), point->getY() + 0.25, 3);
        break;
      case 6:
        edge->setLeftT(any(support::triangleCount(tin_)));
        break;
      case 7:
        edge->setRightT(any(support::triangleCount(tin_)));
        break;
      case 8:
        edge->getTriNo()[side] = any(support::triangleCount(tin_));
        break;
      case 9:
        (side == 0 ? edge->setStartPoint(point) : edge->setEndPoint(point));
        break;
      case 10:
        triangle->getEno()[which] = any(support::edgeCount(tin_));
        break;
      case 11:
        tin_.getTList()->switchPos(tin_.getTList(), any(support::triangleCount(tin_)), 1);
        break;
      case 12:
        tin_.getEList()->switchPos(tin_.getEList(), any(support::edgeCount(tin_)), 2);
        break;
      default:
        if (TConvex* entry = tin_.getCList()->findByNum(tin_.getCList(), 1)) entry->setEdgeNo(any(6));
    }
  }

 private:
  int any(int count) { return static_cast<int>(random_.between(0, count + 1)); }

  void editHeld() {
    const auto i = static_cast<std::size_t>(random_.between(0, static_cast<int>(held_.size()) - 1));
    const bool isTriangle = i < heldOfTriangles_;
    held_[i][random_.between(0, isTriangle ? 2 : 1)] =
        any(isTriangle ? support::edgeCount(tin_) : support::triangleCount(tin_));
  }

  CEType& tin_;
  const OwnedPoints& points_;
  inputs::Random random_;
  std::vector<int*> held_;
  std::size_t heldOfTriangles_ = 0;
};

void expectAnswersOfTheSlowWay(CEType& tin, slow::Location& reference, double x, double y, int hint) {
  ASSERT_EQ(tin.locateTri(x, y, hint), reference.locateTri(x, y, hint));
  ASSERT_EQ(tin.locateTri(x, y), reference.locateTri(x, y));
  ASSERT_TRUE(sameBits(tin.getHeight(x, y), reference.getHeight(x, y)));
  ASSERT_EQ(tin.locateTri1(x, y), reference.locateTri1(x, y));
}

TEST(EditedInPlace, QueriesAnswerAsTheListsSay) {
  for (std::uint64_t seed = 1; seed <= 60; ++seed) {
    const int side = seed % 2 == 0 ? 5 : 100;
    const OwnedPoints points(inputs::randomMillimetres(seed, 8 + static_cast<int>(seed) % 20, side, 0, 0));
    const auto tin = support::triangulate(points);
    ASSERT_NE(tin, nullptr);
    slow::Location reference(*tin);
    Editor editor(*tin, points, seed);
    inputs::Random random(seed + 1000);
    for (int step = 0; step < 60; ++step) {
      const auto edits = random.between(0, 2);
      for (int i = 0; i < edits; ++i) editor.edit(true);
      const int hint = static_cast<int>(random.between(-1, support::triangleCount(*tin) + 1));
      expectAnswersOfTheSlowWay(*tin, reference, side * random.unit(), side * random.unit(), hint);
      if (HasFatalFailure()) FAIL() << "seed " << seed << " step " << step;
    }
  }
}

// In a large network numbers that change behind pointers taken long ago are seen where an answer relies on them.
TEST(EditedInPlace, NumbersOfALargeNetworkAreSeenWhereTheyMatter) {
  const OwnedPoints points(inputs::randomMillimetres(5, 1200, 500, 0, 0));
  const auto tin = support::triangulate(points);
  ASSERT_GT(support::triangleCount(*tin), 2000);
  inputs::Random random(6);
  for (int round = 0; round < 40; ++round) {
    const double x = 20 + 460 * random.unit();
    const double y = 20 + 460 * random.unit();
    const int tri = tin->locateTri(x, y);
    ASSERT_NE(tri, 0);
    int* const edges = tin->getTList()->findByNum(tin->getTList(), tri)->getEno();
    ASSERT_EQ(tin->locateTri(x, y), tri);
    const int kept = edges[0];
    edges[0] = 0;
    ASSERT_EQ(tin->locateTri(x, y), 0);
    ASSERT_EQ(tin->locateTri1(x, y), 0);
    edges[0] = kept;
    ASSERT_EQ(tin->locateTri(x, y), tri);
    ASSERT_EQ(tin->locateTri(x, y, 1), tri);
  }
}

// ---- what a change costs

TEST(EditedInPlace, ChangesElsewhereAreToldApartByWhereTheyAre) {
  using detail::AddressRange;
  using detail::EditLog;
  std::vector<TPoint> elsewhere(2000, TPoint(0, 0, 0));
  std::uint64_t seen = EditLog::now();
  const auto rangesSince = [&seen] {
    std::vector<AddressRange> ranges;
    seen = EditLog::look(seen, [&ranges](const AddressRange& range) { ranges.push_back(range); });
    return ranges;
  };
  EXPECT_TRUE(rangesSince().empty());
  for (TPoint& p : elsewhere) p.setZ(7);
  ASSERT_EQ(rangesSince().size(), 1u) << "what is gone through one by one is one change";
  elsewhere[5].setZ(1);
  elsewhere[5].setX(1);
  elsewhere[5].setX(2);
  elsewhere[1900].setX(2);
  const std::vector<AddressRange> two = rangesSince();
  ASSERT_EQ(two.size(), 2u);
  EXPECT_EQ(two[0].begin, reinterpret_cast<std::uintptr_t>(&elsewhere[5]));
  EXPECT_EQ(two[0].end, reinterpret_cast<std::uintptr_t>(&elsewhere[6]));
  elsewhere[5].setX(3);
  EXPECT_EQ(rangesSince().size(), 1u);
  for (int i = 0; i < 5000; ++i) elsewhere[static_cast<std::size_t>((i % 2) * 1000 + i % 7)].setX(i);
  const std::vector<AddressRange> tooMany = rangesSince();
  ASSERT_EQ(tooMany.size(), 1u);
  EXPECT_EQ(tooMany[0].begin, 0u);
  EXPECT_EQ(tooMany[0].end, ~std::uintptr_t{0});
  EXPECT_TRUE(rangesSince().empty());
}

TEST(EditedInPlace, PointersIntoFreshMemoryAreNotHandedOut) {
  using detail::EditLog;
  for (int round = 0; round < 3; ++round) {
    const OwnedPoints points(inputs::randomMillimetres(3, 20, 100, 0, 0));
    const auto tin = support::triangulate(points);
    const Triangle* first = tin->getTList()->findByNum(tin->getTList(), 1);
    const auto address = reinterpret_cast<std::uintptr_t>(first);
    EXPECT_FALSE(EditLog::isHandedOut({address, address + sizeof(Triangle)}));
    EXPECT_EQ(first->getEno()[0], tin->getTList()->findByNum(tin->getTList(), 1)->getEno()[0]);
    EXPECT_TRUE(EditLog::isHandedOut({address, address + sizeof(Triangle)}));
    EXPECT_TRUE(EditLog::isHandedOut({address + sizeof(Triangle), address + 2 * sizeof(Triangle)}))
        << "elements of one block stand for each other";
  }
}

TEST(EditedInPlace, CopyIsMendedOnlyWhereItDiffers) {
  using Difference = detail::FlatTIN::Difference;
  const OwnedPoints points(inputs::randomMillimetres(4, 60, 100, 0, 0));
  const auto tin = support::triangulate(points);
  ASSERT_NE(tin->locateTri(50, 50), 0);
  const auto flat = detail::FlatTIN::of(*tin);
  EXPECT_EQ(flat->differenceFrom(*tin), Difference::kNone);
  points[7]->setZ(99);
  EXPECT_EQ(flat->differenceFrom(*tin), Difference::kHeights);
  flat->takeHeights(*tin);
  EXPECT_EQ(flat->differenceFrom(*tin), Difference::kNone);
  points[7]->setX(points[7]->getX() + 0.001);
  EXPECT_EQ(flat->differenceFrom(*tin), Difference::kOther);
  points[7]->setX(std::nan(""));
  const auto withNaN = detail::FlatTIN::of(*tin);
  EXPECT_EQ(withNaN->differenceFrom(*tin), Difference::kNone) << "what is no number is the same as before";
}

}  // namespace
