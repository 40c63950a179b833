// The numbered lists: what is refused, what is renumbered, what is shared and what is released.
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/ListElements.h>
#include <OrvikDTMAlgorithm/tin/PList.h>
#include <OrvikDTMAlgorithm/tin/SLType.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>
#include <gtest/gtest.h>

namespace {

TPoint* pointNumber(int x) { return new TPoint(x, 0, 0); }

TConvex* entryNumber(int edge) { return new TConvex(edge); }

// Filled one by one, or at once: nobody can tell.
class ListOfThree : public testing::TestWithParam<bool> {
 protected:
  ListOfThree() {
    if (GetParam()) {
      detail::ListElements::append<TConvex>(list_, 3, [](int number) { return TConvex(number); });
    } else {
      for (int number = 1; number <= 3; ++number) list_.add(&list_, entryNumber(number));
    }
    for (int i = 0; i < 3; ++i) entries_[i] = list_.findByNum(&list_, i + 1);
  }

  ConvexList list_;
  TConvex* entries_[3];
};

TEST(SLType, NewListAcceptsAHundred) {
  PList list;
  EXPECT_EQ(list.getMaxlen(), 100);
  EXPECT_EQ(list.getListLen(), 0);
  for (int i = 0; i < 100; ++i) EXPECT_EQ(list.add(&list, pointNumber(i)), 1);
  TPoint refused(0, 0, 0);
  EXPECT_EQ(list.add(&list, &refused), 0);
  EXPECT_EQ(list.getListLen(), 100);
}

TEST_P(ListOfThree, HoldsItsElementsInOrder) {
  for (int i = 0; i < 3; ++i) EXPECT_EQ(entries_[i]->getEdgeNo(), i + 1);
  EXPECT_EQ(list_.getListData(), std::vector<void*>(entries_, entries_ + 3));
}

TEST_P(ListOfThree, GrowsByMoreAtOnce) {
  list_.setMaxlen(5);
  detail::ListElements::append<TConvex>(list_, 9, [](int number) { return TConvex(number); });
  ASSERT_EQ(list_.getListLen(), 5);
  for (int number = 1; number <= 5; ++number) EXPECT_EQ(list_.findByNum(&list_, number)->getEdgeNo(), number);
  EXPECT_EQ(list_.findByNum(&list_, 1), entries_[0]);
}

TEST_P(ListOfThree, MovesOutWhole) {
  ConvexList moved(std::move(list_));
  EXPECT_EQ(list_.getListLen(), 0);
  EXPECT_EQ(moved.findByNum(&moved, 3), entries_[2]);
  list_ = std::move(moved);
  EXPECT_EQ(moved.getListLen(), 0);
  EXPECT_EQ(list_.findByNum(&list_, 3), entries_[2]);
  EXPECT_EQ(list_.add(&list_, entryNumber(4)), 1);
  EXPECT_EQ(list_.getListLen(), 4);
}

TEST_P(ListOfThree, IsNumberedFromOne) {
  EXPECT_EQ(list_.findByNum(&list_, 0), nullptr);
  EXPECT_EQ(list_.findByNum(&list_, -1), nullptr);
  EXPECT_EQ(list_.findByNum(&list_, 1), entries_[0]);
  EXPECT_EQ(list_.findByNum(&list_, 3), entries_[2]);
  EXPECT_EQ(list_.findByNum(&list_, 4), nullptr);
}

TEST_P(ListOfThree, FullListRefusesAndKeepsNothing) {
  list_.setMaxlen(3);
  TConvex* extra = entryNumber(4);
  EXPECT_EQ(list_.add(&list_, extra), 0);
  EXPECT_EQ(list_.insert(&list_, 1, extra), 0);
  EXPECT_EQ(list_.getListLen(), 3);
  detail::releaseElement(extra);
}

TEST_P(ListOfThree, DeletionRenumbersWhatFollows) {
  EXPECT_EQ(list_.deleteData(&list_, 0), 0);
  EXPECT_EQ(list_.deleteData(&list_, 4), 0);
  EXPECT_EQ(list_.deleteData(&list_, 1), 1);
  EXPECT_EQ(list_.getListLen(), 2);
  EXPECT_EQ(list_.findByNum(&list_, 1), entries_[1]);
  EXPECT_EQ(list_.findByNum(&list_, 2), entries_[2]);
}

TEST_P(ListOfThree, InsertionMovesUp) {
  TConvex* first = entryNumber(10);
  TConvex* last = entryNumber(20);
  EXPECT_EQ(list_.insert(&list_, 1, first), 1);
  EXPECT_EQ(list_.insert(&list_, 5, last), 1);
  EXPECT_EQ(list_.findByNum(&list_, 1), first);
  EXPECT_EQ(list_.findByNum(&list_, 2), entries_[0]);
  EXPECT_EQ(list_.findByNum(&list_, 5), last);
  TConvex* nowhere = entryNumber(30);
  EXPECT_EQ(list_.insert(&list_, 0, nowhere), 0);
  EXPECT_EQ(list_.insert(&list_, 7, nowhere), 0);
  detail::releaseElement(nowhere);
}

TEST_P(ListOfThree, SwitchesTwoPositions) {
  EXPECT_EQ(list_.switchPos(&list_, 1, 1), &list_);
  EXPECT_EQ(list_.findByNum(&list_, 1), entries_[0]);
  EXPECT_EQ(list_.switchPos(&list_, 0, 1), nullptr);
  EXPECT_EQ(list_.switchPos(&list_, 1, 4), nullptr);
  EXPECT_EQ(list_.findByNum(&list_, 1), entries_[0]);
  EXPECT_EQ(list_.switchPos(&list_, 1, 3), &list_);
  EXPECT_EQ(list_.findByNum(&list_, 1), entries_[2]);
  EXPECT_EQ(list_.findByNum(&list_, 3), entries_[0]);
}

TEST_P(ListOfThree, CopySharesTheElements) {
  list_.setMaxlen(7);
  ConvexList copy(list_);
  EXPECT_EQ(copy.getMaxlen(), 7);
  EXPECT_EQ(copy.findByNum(&copy, 2), entries_[1]);
  copy.setListData({});
  ConvexList assigned;
  assigned = list_;
  EXPECT_EQ(assigned.findByNum(&assigned, 3), entries_[2]);
  assigned.setListData({});
  EXPECT_EQ(list_.getListLen(), 3);
}

TEST_P(ListOfThree, DataIsACopyOfThePointers) {
  std::vector<void*> data = list_.getListData();
  data.pop_back();
  EXPECT_EQ(list_.getListLen(), 3);
  list_.setListData(data);
  EXPECT_EQ(list_.getListLen(), 2);
  detail::releaseElement(entries_[2]);
}

TEST_P(ListOfThree, InitReleasesEverything) {
  list_.init(&list_);
  EXPECT_EQ(list_.getListLen(), 0);
  EXPECT_EQ(list_.findByNum(&list_, 1), nullptr);
}

TEST_P(ListOfThree, IsUsedAgainAfterInit) {
  list_.init(&list_);
  EXPECT_EQ(list_.add(&list_, entryNumber(7)), 1);
  EXPECT_EQ(list_.findByNum(&list_, 1)->getEdgeNo(), 7);
  list_.init(&list_);
  detail::ListElements::append<TConvex>(list_, 2, [](int number) { return TConvex(number); });
  EXPECT_EQ(list_.getListLen(), 2);
}

INSTANTIATE_TEST_SUITE_P(, ListOfThree, testing::Bool(),
                         [](const auto& way) { return way.param ? "AtOnce" : "OneByOne"; });

TEST(SLType, NullListHasNoElements) {
  SLType list;
  TPoint p(0, 0, 0);
  EXPECT_EQ(list.add(nullptr, &p), 0);
  EXPECT_EQ(list.insert(nullptr, 1, &p), 0);
  EXPECT_EQ(list.deleteData(nullptr, 1), 0);
  EXPECT_EQ(list.findByNum(nullptr, 1), nullptr);
  EXPECT_EQ(list.switchPos(nullptr, 1, 1), nullptr);
}

TEST(TypedLists, FindTheirOwnElements) {
  TPoint a(0, 0, 0);
  TPoint b(1, 1, 1);
  EList edges;
  auto* edge = new TEdge(&a, &b);
  edges.add(&edges, edge);
  EXPECT_EQ(edges.findByNum(&edges, 1), edge);
  EXPECT_EQ(edges.findByNum(&edges, 2), nullptr);

  TList triangles;
  const int three[3] = {1, 2, 3};
  auto* triangle = new Triangle(three);
  triangles.add(&triangles, triangle);
  triangles.add(&triangles, nullptr);
  EXPECT_EQ(triangles.findByNum(&triangles, 1), triangle);
  EXPECT_EQ(triangles.findByNum(&triangles, 2), nullptr);

  ConvexList hull;
  auto* entry = new TConvex(5);
  hull.add(&hull, entry);
  EXPECT_EQ(hull.findByNum(&hull, 1), entry);
  EXPECT_EQ(hull.findByNum(&hull, 0), nullptr);
}

TEST(TypedLists, DumpsChangeNothing) {
  TPoint a(0, 0, 0);
  TPoint b(1, 1, 1);
  EList edges;
  edges.getAllNode(&edges);
  edges.add(&edges, new TEdge(&a, &b));
  edges.getAllNode(&edges);
  edges.getAllNode(nullptr);
  EXPECT_EQ(edges.getListLen(), 1);
  TList triangles;
  const int three[3] = {1, 2, 3};
  triangles.add(&triangles, new Triangle(three));
  triangles.getAllNode(&triangles);
  EXPECT_EQ(triangles.getListLen(), 1);
  ConvexList hull;
  hull.add(&hull, new TConvex(5));
  hull.getAllNode(&hull);
  EXPECT_EQ(hull.getListLen(), 1);
}

TEST(SLType, SwitchesElementsThatAreNull) {
  PList list;
  list.add(&list, nullptr);
  list.add(&list, pointNumber(1));
  EXPECT_EQ(list.switchPos(&list, 1, 2), &list);
  EXPECT_EQ(list.findByNum(&list, 2), nullptr);
  EXPECT_EQ(list.switchPos(&list, 0, 1), nullptr);
  EXPECT_EQ(list.switchPos(&list, 1, 3), nullptr);
}

}  // namespace
