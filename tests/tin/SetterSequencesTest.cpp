// Lists that are replaced by none, by empty, shorter or foreign ones, between operations of every kind and in any
// order: nothing is read that is gone, and queries answer what the lists say.
#include <bit>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/DrawLine.h>
#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/surface/RangePoint.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>
#include <OrvikDTMAlgorithm/tin/Triangle3.h>
#include <OrvikDTMAlgorithm/tin/verifyTIN.h>
#include <gtest/gtest.h>

#include "Inputs.h"
#include "SlowLocation.h"
#include "TINSupport.h"

namespace {

using support::OwnedPoints;

TEST(Setters, QueryAfterTheHullIsTakenAway) {
  const OwnedPoints points(inputs::Positions{{0, 0, 1}, {10, 0, 1}, {10, 10, 1}, {0, 10, 1}});
  const auto tin = support::triangulate(points);
  const int found = tin->locateTri(5, 2);
  ASSERT_NE(found, 0);
  delete tin->getCList();
  tin->setCList(nullptr);
  EXPECT_EQ(tin->locateTri(5, 2), found) << "the hull stays as the first containment test made it";
  EXPECT_EQ(tin->locateTri(5, -2), 0);
}

TEST(Setters, QueryAfterTheHullIsShortened) {
  const OwnedPoints points(inputs::Positions{{0, 0, 1}, {10, 0, 1}, {10, 10, 1}, {0, 10, 1}});
  const auto tin = support::triangulate(points);
  EXPECT_NE(tin->locateTri(5, 2, 1), 0) << "this asks for no hull";
  ConvexList* hull = tin->getCList();
  while (hull->getListLen() > 2) hull->deleteData(hull, 1);
  EXPECT_EQ(tin->locateTri(5, 2), 0);
  EXPECT_NE(tin->locateTri1(5, 2), 0);
}

// Copies of a list's elements, the first `count` of them.
template <typename Element, typename List>
std::unique_ptr<List> shortened(const List& list, int count) {
  auto result = std::make_unique<List>();
  result->setMaxlen(std::max(list.getListLen(), 1));
  for (int number = 1; number <= std::min(count, list.getListLen()); ++number) {
    const Element* element = list.findByNum(&list, number);
    result->add(result.get(), element == nullptr ? nullptr : new Element(*element));
  }
  return result;
}

// Everything that can be set and asked of two networks, in random order. All lists are the fixture's, so that they can
// be set, shared and freed in any order.
class Sequence {
 public:
  Sequence(std::uint64_t seed, int size)
      : random_(seed), size_(size), points_(inputs::randomMillimetres(seed, size, 60, 0, 0)) {
    for (auto& tin : tins_) {
      tin = support::triangulate(points_);
      hulls_.emplace_back(tin->getCList());
      edges_.emplace_back(tin->getEList());
      triangles_.emplace_back(tin->getTList());
    }
  }

  ~Sequence() {
    for (auto& tin : tins_) {
      tin->setCList(nullptr);
      tin->setEList(nullptr);
      tin->setTList(nullptr);
    }
  }

  void run(int steps) {
    slow::Location reference(*tins_[0]);
    for (int step = 0; step < steps; ++step) {
      set();
      operate(*tins_[static_cast<std::size_t>(random_.between(0, 1))]);
      const double x = 60 * random_.unit();
      const double y = 60 * random_.unit();
      const int hint = static_cast<int>(random_.between(-1, 2 * size_));
      ASSERT_EQ(tins_[0]->locateTri(x, y, hint), reference.locateTri(x, y, hint)) << step;
      ASSERT_EQ(tins_[0]->locateTri(x, y), reference.locateTri(x, y)) << step;
      const double height = reference.getHeight(x, y);
      ASSERT_EQ(std::bit_cast<std::uint64_t>(tins_[0]->getHeight(x, y)), std::bit_cast<std::uint64_t>(height)) << step;
      ASSERT_EQ(tins_[0]->locateTri1(x, y), reference.locateTri1(x, y)) << step;
    }
  }

 private:
  void set() {
    CEType& tin = *tins_[static_cast<std::size_t>(random_.between(0, 1))];
    const auto count = static_cast<int>(random_.between(0, 2 * size_));
    switch (random_.between(0, 9)) {
      case 0:
        tin.setCList(any(hulls_));
        break;
      case 1:
        tin.setEList(any(edges_));
        break;
      case 2:
        tin.setTList(any(triangles_));
        break;
      case 3:
        hulls_.push_back(shortened<TConvex>(*hulls_[0], count));
        tin.setCList(hulls_.back().get());
        break;
      case 4:
        edges_.push_back(shortened<TEdge>(*edges_[0], count));
        tin.setEList(edges_.back().get());
        break;
      case 5:
        triangles_.push_back(shortened<Triangle>(*triangles_[0], count));
        tin.setTList(triangles_.back().get());
        break;
      case 6:
        cut(random_.between(0, 2) == 0   ? static_cast<SLType*>(tin.getCList())
            : random_.between(0, 1) == 0 ? static_cast<SLType*>(tin.getEList())
                                         : static_cast<SLType*>(tin.getTList()));
        break;
      case 7:
        tin.setCList(hulls_[0].get());
        tin.setEList(edges_[0].get());
        tin.setTList(triangles_[0].get());
        break;
      case 8: {
        RangePoint corners[] = {{"a", 5, 5, 0}, {"b", 5, 50, 0}, {"c", 50, 50, 0}, {"d", 50, 5, 0}};
        std::vector<RangePoint*> range;
        for (std::int64_t i = random_.between(0, 4); i > 0; --i) range.push_back(i == 3 ? nullptr : &corners[i - 1]);
        tin.setRangeList(range);
        break;
      }
      default:
        freeUnused();
    }
  }

  // A list that both networks have let go of may be freed at any time. The first two are those of the constructions.
  void freeUnused() {
    const auto drop = [this](auto& lists, auto get) {
      std::erase_if(lists, [&](const auto& list) {
        return list != lists.front() && list.get() != get(*tins_[0]) && list.get() != get(*tins_[1]);
      });
    };
    drop(hulls_, [](const CEType& tin) { return tin.getCList(); });
    drop(edges_, [](const CEType& tin) { return tin.getEList(); });
    drop(triangles_, [](const CEType& tin) { return tin.getTList(); });
  }

  void cut(SLType* list) {
    if (list == nullptr || list == hulls_[0].get() || list == edges_[0].get() || list == triangles_[0].get()) return;
    if (random_.between(0, 3) == 0) list->init(list);
    if (list->getListLen() > 0) list->deleteData(list, static_cast<int>(random_.between(1, list->getListLen())));
  }

  template <typename List>
  List* any(const std::vector<std::unique_ptr<List>>& lists) {
    const auto i = static_cast<std::size_t>(random_.between(0, static_cast<int>(lists.size())));
    return i == lists.size() ? nullptr : lists[i].get();
  }

  void operate(CEType& tin) {
    CEType& other = &tin == tins_[0].get() ? *tins_[1] : *tins_[0];
    switch (random_.between(0, 15)) {
      case 0:
        tin.proxyTri(-5, -5, 4, 4, 20 * random_.unit());
        break;
      case 1:
        delete[] tin.getRelateT(static_cast<int>(random_.between(-1, 2 * size_)));
        break;
      case 2: {
        double x = 1;
        double y = 2.5;
        tin.toVertexPosition(&x, &y);
        break;
      }
      case 3:
        tin.getMeasures();
        tin.getArea2D();
        tin.getTotalLength3D();
        delete[] tin.getMinMaxHeight();
        break;
      case 4:
        tin.getRangeXY();
        tin.getOriginalList();
        break;
      case 5:
        delete tin.getFillCut(20.0);
        break;
      case 6:
        delete tin.getFillCut(&other);
        break;
      case 7:
        delete tin.getFillCutExact(20.0);
        break;
      case 8:
        delete tin.getFillCutExact(&other);
        break;
      case 9:
        tin.getTriangle3List();
        break;
      case 10:
        EXPECT_FALSE(tin.getBytes().empty());
        break;
      case 11:
        EXPECT_FALSE(tin.getCASSsjw().empty());
        break;
      case 12:
        verifyTIN(tin);
        break;
      case 13:
        useCopy(tin);
        break;
      case 14:
        throughASurface(tin);
        break;
      default:
        delete tin.getFillCut(&tin);
    }
  }

  static void useCopy(CEType& tin) {
    CEType copy(tin);
    copy.locateTri(30, 30);
    copy.getHeight(10, 50);
    copy.getRangeList().clear();
    copy.setCList(nullptr);
    copy.setEList(nullptr);
    copy.setTList(nullptr);
    EXPECT_EQ(copy.locateTri(30, 30), 0);
  }

  // A surface over the same lists, as a host makes one.
  static void throughASurface(CEType& tin) {
    auto* model = new CEType(tin.getCList(), tin.getEList(), tin.getTList());
    DTMSurface surface;
    surface.setCEType(model);
    double z = 0;
    surface.checkSurfacePoint(30, 30, &z);
    std::vector<DrawLine*> lines;
    surface.drawSurface(10, 40, 10, 40, lines);
    for (const DrawLine* line : lines) delete line;
    EXPECT_FALSE(surface.toBytes().empty());
    model->setCList(nullptr);
    model->setEList(nullptr);
    model->setTList(nullptr);
    surface.release();
  }

  inputs::Random random_;
  int size_;
  OwnedPoints points_;
  std::vector<std::unique_ptr<ConvexList>> hulls_;
  std::vector<std::unique_ptr<EList>> edges_;
  std::vector<std::unique_ptr<TList>> triangles_;
  std::unique_ptr<CEType> tins_[2];
};

TEST(Setters, AnySequenceOfSettersAndOperations) {
  for (std::uint64_t seed = 1; seed <= 40; ++seed) {
    Sequence sequence(seed, 6 + static_cast<int>(seed % 25));
    sequence.run(80);
    if (testing::Test::HasFailure()) FAIL() << "seed " << seed;
  }
}

}  // namespace
