// The model itself: ownership, shallow copies, boundary, the hull polygon as far as queries show it, and the builder of
// topology from faces against a slow one that searches by looking at every edge.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>

#include <OrvikDTMAlgorithm/surface/RangePoint.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/Sweep.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>
#include <gtest/gtest.h>

#include "Inputs.h"
#include "LiteralTIN.h"
#include "TINSupport.h"

namespace {

using support::OwnedPoints;
using support::Tables;

using Faces = std::vector<std::array<int, 3>>;

// ---- ownership

TEST(CEType, NewModelIsEmpty) {
  CEType tin(nullptr, nullptr, nullptr);
  EXPECT_EQ(tin.getCList(), nullptr);
  EXPECT_TRUE(tin.getRangeList().empty());
  EXPECT_TRUE(tin.getTriangle3List().empty());
  EXPECT_EQ(tin.locateTri(0, 0), 0);
  EXPECT_EQ(tin.getHeight(0, 0), std::numeric_limits<double>::max());
}

TEST(CEType, CopyRefersToTheSameListsAndBoundary) {
  const OwnedPoints points(inputs::Positions{{0, 0, 0}, {4, 0, 0}, {0, 4, 0}});
  const auto tin = makeTIN(points, {{{1, 2, 1, 0}, {2, 3, 1, 0}, {3, 1, 1, 0}}, {{1, 2, 3}}, {1, 2, 3}});
  RangePoint corner{"a", 1, 2, 3};
  tin->setRangeList({&corner});
  CEType copy(*tin);
  EXPECT_EQ(copy.getCList(), tin->getCList());
  EXPECT_EQ(copy.getEList(), tin->getEList());
  EXPECT_EQ(copy.getTList(), tin->getTList());
  EXPECT_EQ(copy.getRangeList(), tin->getRangeList());
  CEType assigned(nullptr, nullptr, nullptr);
  assigned = *tin;
  EXPECT_EQ(assigned.getEList(), tin->getEList());
  EXPECT_EQ(assigned.getRangeList(), tin->getRangeList());
  const CEType& self = assigned;
  assigned = self;
  EXPECT_EQ(assigned.getRangeList(), tin->getRangeList());
  for (CEType* sharer : {&copy, &assigned}) {
    sharer->getRangeList().clear();
    sharer->setCList(nullptr);
    sharer->setEList(nullptr);
    sharer->setTList(nullptr);
  }
  EXPECT_EQ(tin->locateTri(1, 1), 1);
}

TEST(CEType, HeldPointsLiveAsLongAsTheModel) {
  auto held = std::make_shared<int>(1);
  const std::weak_ptr<int> watch = held;
  {
    CEType tin(nullptr, nullptr, nullptr);
    tin.holdPoints(std::move(held));
    EXPECT_FALSE(watch.expired());
  }
  EXPECT_TRUE(watch.expired());
}

// ---- boundary

TEST(CEType, BoundaryTakesEastingForXAndDropsHeights) {
  CEType tin(nullptr, nullptr, nullptr);
  RangePoint first{"first", 100, 200, 300};
  RangePoint second{"second", 1, 2, 3};
  tin.setRangeList({&first, nullptr, &second});
  ASSERT_EQ(tin.getRangeList().size(), 2u);
  EXPECT_TRUE(*tin.getRangeList()[0] == TPoint(200, 100, 0));
  EXPECT_TRUE(*tin.getRangeList()[1] == TPoint(2, 1, 0));
  tin.setRangeList({&second});
  ASSERT_EQ(tin.getRangeList().size(), 1u);
  tin.setRangeList({});
  EXPECT_TRUE(tin.getRangeList().empty());
}

// ---- the hull polygon, as location shows it

// Two triangles apart from each other; the hull list names only what a test puts there. A closed hull around the first
// one hides the second; a hull that cannot be closed hides nothing.
class TwoTriangles : public testing::Test {
 protected:
  std::unique_ptr<CEType> withHull(const std::vector<int>& hull) const {
    return makeTIN(points_, {{{1, 2, 1, 0},
                              {2, 3, 1, 0},
                              {3, 1, 1, 0},
                              {4, 5, 2, 0},
                              {5, 6, 2, 0},
                              {6, 4, 2, 0},
                              {2, 1, 0, 0},
                              {3, 7, 0, 0},
                              {3, 2, 0, 0}},
                             {{1, 2, 3}, {4, 5, 6}},
                             hull});
  }

  OwnedPoints points_{
      inputs::Positions{{0, 0, 1}, {4, 0, 1}, {0, 4, 1}, {10, 10, 2}, {14, 10, 2}, {10, 14, 2}, {0, 0, 99}}};
};

TEST_F(TwoTriangles, ClosedHullHidesWhatLiesOutside) {
  const auto tin = withHull({1, 2, 3});
  EXPECT_EQ(tin->locateTri(1, 1), 1);
  EXPECT_EQ(tin->locateTri(11, 11), 0);
}

TEST_F(TwoTriangles, HullOfLessThanThreeEntriesContainsNothing) {
  for (const std::vector<int>& hull : {std::vector<int>{}, {1}, {1, 2}}) {
    const auto tin = withHull(hull);
    EXPECT_EQ(tin->locateTri(1, 1), 0);
    EXPECT_EQ(tin->locateTri(11, 11, 0), 0);
    EXPECT_EQ(tin->getHeight(1, 1), std::numeric_limits<double>::max());
    EXPECT_EQ(tin->locateTri1(1, 1), 1) << "the scan does not ask the hull";
    EXPECT_EQ(tin->locateTri(11, 11, 2), 2) << "nor does a walk from a given triangle";
  }
}

TEST_F(TwoTriangles, HullThatIsCompletedLaterIsTakenThen) {
  const auto tin = withHull({1, 2});
  EXPECT_EQ(tin->locateTri(1, 1), 0);
  ConvexList* hull = tin->getCList();
  hull->add(hull, new TConvex(3));
  EXPECT_EQ(tin->locateTri(1, 1), 1);
  EXPECT_EQ(tin->locateTri(11, 11), 0);
}

TEST_F(TwoTriangles, HullStaysAsTheFirstContainmentTestMadeIt) {
  const auto tin = withHull({1, 2, 3});
  EXPECT_EQ(tin->locateTri(1, 1), 1);
  delete tin->getCList();
  tin->setCList(nullptr);
  EXPECT_EQ(tin->locateTri(1, 1), 1);
  EXPECT_EQ(tin->locateTri(11, 11), 0);
  tin->setCList(new ConvexList);
  EXPECT_EQ(tin->locateTri(1, 1), 1);
  EXPECT_EQ(tin->getHeight(1, 1), 1.0);
}

TEST_F(TwoTriangles, HullThatReturnsToAnInnerVertexContainsEverything) {
  const auto tin = withHull({1, 2, 9});  // 1 -> 2 -> 3 -> 2
  EXPECT_EQ(tin->locateTri(1, 1), 1);
  EXPECT_EQ(tin->locateTri(11, 11), 2);
}

TEST_F(TwoTriangles, HullClosesInPlanWhateverTheHeight) {
  const auto tin = withHull({1, 2, 8});
  EXPECT_EQ(tin->locateTri(1, 1), 1);
  EXPECT_EQ(tin->locateTri(11, 11), 0);
}

TEST_F(TwoTriangles, HullThatBreaksOffContainsEverything) {
  const auto tin = withHull({1, 2, 4});
  EXPECT_EQ(tin->locateTri(1, 1), 1);
  EXPECT_EQ(tin->locateTri(11, 11), 2);
  EXPECT_EQ(tin->locateTri(50, 50), 0);
}

TEST_F(TwoTriangles, RingThatLeavesHullEdgesOverContainsEverything) {
  const auto tin = withHull({1, 2, 3, 4, 5, 6});
  EXPECT_EQ(tin->locateTri(1, 1), 1);
  EXPECT_EQ(tin->locateTri(11, 11), 2);
}

TEST_F(TwoTriangles, HullShortenedInPlaceIsSeenAfterAHintedQuery) {
  const auto tin = withHull({1, 2, 3, 4, 5, 6});
  EXPECT_EQ(tin->locateTri(1, 1, 1), 1);
  ConvexList* hull = tin->getCList();
  while (hull->getListLen() > 3) hull->deleteData(hull, hull->getListLen());
  EXPECT_EQ(tin->locateTri(11, 11), 0);
}

// ---- topology from faces

class SlowTopology {
 public:
  SlowTopology(const inputs::Positions& vertices, const Faces& faces) {
    for (const auto& v : vertices) points_.push_back({v[0], v[1], v[2]});
    for (const auto& face : faces) addFace(face);
    for (std::size_t k = 0; k < edges_.size(); ++k) {
      if (edges_[k].right == 0) tables_.hull.push_back(static_cast<int>(k) + 1);
    }
    for (const literal::Edge& e : edges_)
      tables_.edges.push_back({numberOf(e.start), numberOf(e.end), e.left, e.right});
  }

  const Tables& tables() const { return tables_; }

 private:
  int numberOf(const literal::Point* p) const { return static_cast<int>(p - points_.data()) + 1; }

  // The slow order is for points that have a position; where others come, only the library says.
  static std::vector<literal::Point*> orderOf(const std::vector<literal::Point*>& corners) {
    const auto hasPosition = [](const literal::Point* p) { return !std::isnan(p->x) && !std::isnan(p->y); };
    if (std::all_of(corners.begin(), corners.end(), hasPosition)) return literal::sweepOrder(corners);
    std::vector<detail::Position> positions;
    for (const literal::Point* p : corners) positions.push_back({p->x, p->y});
    std::vector<literal::Point*> order;
    for (const detail::Number i : detail::sweepOrder(positions)) order.push_back(corners[i]);
    return order;
  }

  void addFace(const std::array<int, 3>& face) {
    std::vector<literal::Point*> corners;
    for (const int vertex : face) {
      if (vertex < 0 || vertex >= static_cast<int>(points_.size())) return;
      corners.push_back(&points_[static_cast<std::size_t>(vertex)]);
    }
    const std::vector<literal::Point*> p = orderOf(corners);
    if (p.empty()) return;
    const int triangle = static_cast<int>(tables_.triangles.size()) + 1;
    std::array<int, 3> numbers{};
    for (std::size_t i = 0; i < 3; ++i) numbers[i] = edgeNumber({p[i], p[(i + 1) % 3]}, triangle);
    tables_.triangles.push_back(numbers);
  }

  int edgeNumber(literal::Edge candidate, int triangle) {
    for (std::size_t k = 0; k < edges_.size(); ++k) {
      if (literal::isSameLine(edges_[k], candidate) == 0) continue;
      (edges_[k].left != 0 ? edges_[k].right : edges_[k].left) = triangle;
      return static_cast<int>(k) + 1;
    }
    candidate.left = triangle;
    edges_.push_back(candidate);
    return static_cast<int>(edges_.size());
  }

  std::vector<literal::Point> points_;
  std::vector<literal::Edge> edges_;
  Tables tables_;
};

void expectSameTopology(const inputs::Positions& vertices, const Faces& faces) {
  const OwnedPoints points(vertices);
  const std::unique_ptr<CEType> tin(CEType::initCETypeFromFaces(points.pointers(), faces));
  ASSERT_NE(tin, nullptr);
  const Tables ours = support::tablesOf(*tin, points.pointers());
  const SlowTopology slow(vertices, faces);
  const Tables& reference = slow.tables();
  ASSERT_EQ(ours.edges.size(), reference.edges.size());
  for (std::size_t i = 0; i < ours.edges.size(); ++i) {
    SCOPED_TRACE("edge " + std::to_string(i + 1));
    ASSERT_EQ(ours.edges[i].start, reference.edges[i].start);
    ASSERT_EQ(ours.edges[i].end, reference.edges[i].end);
    ASSERT_EQ(ours.edges[i].left, reference.edges[i].left);
    ASSERT_EQ(ours.edges[i].right, reference.edges[i].right);
  }
  EXPECT_EQ(ours.triangles, reference.triangles);
  EXPECT_EQ(ours.hull, reference.hull);
}

TEST(Topology, TwoFacesShareAnEdge) {
  const inputs::Positions square = {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}};
  expectSameTopology(square, {{0, 1, 2}, {0, 2, 3}});
  const OwnedPoints points(square);
  const std::unique_ptr<CEType> tin(CEType::initCETypeFromFaces(points.pointers(), {{0, 1, 2}, {0, 2, 3}}));
  EXPECT_EQ(support::triangleCount(*tin), 2);
  EXPECT_EQ(support::edgeCount(*tin), 5);
  EXPECT_EQ(support::hullCount(*tin), 4);
}

TEST(Topology, FacesMayRunEitherWay) {
  expectSameTopology({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}}, {{2, 1, 0}, {3, 0, 2}});
}

TEST(Topology, FacesOutOfRangeAreSkipped) {
  const inputs::Positions square = {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}};
  const Faces faces = {{0, 1, 4}, {-1, 1, 2}, {0, 1, 2}, {0, 1, 1000000}, {0, 2, 3}};
  expectSameTopology(square, faces);
  const OwnedPoints points(square);
  const std::unique_ptr<CEType> tin(CEType::initCETypeFromFaces(points.pointers(), faces));
  EXPECT_EQ(support::triangleCount(*tin), 2);
}

TEST(Topology, CollinearFacesAreSkipped) {
  expectSameTopology({{0, 0, 0}, {4, 4, 0}, {2, 2, 0}, {0, 4, 0}}, {{0, 1, 2}, {0, 2, 3}, {0, 0, 3}});
}

TEST(Topology, ThirdFaceOnAnEdgeTakesTheRightSlot) {
  expectSameTopology({{0, 0, 0}, {4, 0, 0}, {2, 3, 0}, {2, -3, 0}, {2, 5, 0}}, {{0, 1, 2}, {0, 1, 3}, {0, 1, 4}});
}

TEST(Topology, RepeatedFacesAreAllKept) {
  expectSameTopology({{0, 0, 0}, {4, 0, 0}, {2, 3, 0}}, Faces(500, {0, 1, 2}));
}

TEST(Topology, PositionsThatAreRepeatedAreOnePosition) {
  expectSameTopology({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {4, 4, 7}, {0, 0, 9}, {0, 4, 0}},
                     {{0, 1, 2}, {4, 3, 5}, {0, 4, 5}});
}

TEST(Topology, NoFacesGiveAnEmptyModel) {
  const std::unique_ptr<CEType> tin(CEType::initCETypeFromFaces({}, {}));
  ASSERT_NE(tin, nullptr);
  EXPECT_EQ(support::edgeCount(*tin), 0);
  EXPECT_EQ(support::triangleCount(*tin), 0);
  EXPECT_EQ(tin->getCList()->getMaxlen(), 100);
}

TEST(Topology, RandomFacesAgreeWithTheSlowBuilder) {
  inputs::Random random(21);
  for (int round = 0; round < 300; ++round) {
    const auto span = random.between(2, 9);
    inputs::Positions vertices;
    const auto count = random.between(3, 60);
    for (std::int64_t i = 0; i < count; ++i) {
      vertices.push_back({static_cast<double>(random.between(0, span)), static_cast<double>(random.between(0, span)),
                          static_cast<double>(i)});
    }
    Faces faces;
    const auto corner = [&] { return static_cast<int>(random.between(-1, count)); };
    for (int i = 0; i < 120; ++i) faces.push_back({corner(), corner(), corner()});
    expectSameTopology(vertices, faces);
    if (HasFatalFailure()) return;
  }
}

// Vertices of every awkward kind: on a small grid, all but in line, beside each other, without a position.
inputs::Position awkwardVertex(inputs::Random& random) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const auto x = static_cast<double>(random.between(0, 4));
  const auto y = static_cast<double>(random.between(0, 4));
  switch (random.between(0, 5)) {
    case 0:
      return {x, x * 0.3 + 1e-9 * y, 1};
    case 1:
      return {x + 1e-7 * y, y, 2};
    case 2:
      return {1e8 + x, y, 3};
    case 3:
      return random.between(0, 3) == 0 ? inputs::Position{nan, y, 4} : inputs::Position{x, -0.0, 4};
    default:
      return {x, y, 5};
  }
}

TEST(Topology, AwkwardFacesAgreeWithTheSlowBuilder) {
  inputs::Random random(22);
  for (int round = 0; round < 300; ++round) {
    inputs::Positions vertices;
    const auto count = random.between(3, 40);
    for (std::int64_t i = 0; i < count; ++i) vertices.push_back(awkwardVertex(random));
    Faces faces;
    const auto corner = [&] { return static_cast<int>(random.between(0, count - 1)); };
    for (int i = 0; i < 120; ++i) faces.push_back({corner(), corner(), corner()});
    expectSameTopology(vertices, faces);
    if (HasFatalFailure()) return;
  }
}

// All edges of a fan leave one vertex, wherever it stands in the list.
TEST(Topology, FansAroundOneVertexAgreeWithTheSlowBuilder) {
  constexpr int kBlades = 300;
  for (const int hub : {0, kBlades / 2, kBlades}) {
    inputs::Positions vertices;
    for (int i = 0; i < kBlades; ++i) vertices.push_back({100 * std::cos(0.02 * i), 100 * std::sin(0.02 * i), 0});
    vertices.insert(vertices.begin() + hub, {0, 0, 7});
    const auto onRing = [hub](int i) { return i < hub ? i : i + 1; };
    Faces faces;
    for (int step : {1, 7, 1}) {
      for (int i = 0; i + step < kBlades; ++i) faces.push_back({onRing(i), hub, onRing(i + step)});
    }
    expectSameTopology(vertices, faces);
  }
}

TEST(Topology, FacesOfMissingVerticesAreSkipped) {
  const OwnedPoints points(inputs::Positions{{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}});
  std::vector<TPoint*> vertices = points.pointers();
  vertices[3] = nullptr;
  const std::unique_ptr<CEType> tin(CEType::initCETypeFromFaces(vertices, {{0, 1, 2}, {0, 2, 3}}));
  EXPECT_EQ(support::triangleCount(*tin), 1);
  EXPECT_EQ(support::edgeCount(*tin), 3);
}

TEST(Topology, ManyFacesAgreeWithTheSlowBuilder) {
  const literal::Network net = literal::construct(inputs::randomMillimetres(8, 700, 100, 0, 0));
  inputs::Positions vertices;
  std::vector<const literal::Point*> at;
  for (const literal::Point& p : net.points) vertices.push_back({p.x, p.y, p.z});
  for (const literal::Point& p : net.points) at.push_back(&p);
  Faces faces;
  for (int t = 1; t <= net.triangles.length(); ++t) {
    std::vector<int> corners;
    for (const int e : net.triangles[t].edges) {
      for (const literal::Point* p : {net.edges[e].start, net.edges[e].end}) {
        const int number = static_cast<int>(std::find(at.begin(), at.end(), p) - at.begin());
        if (std::find(corners.begin(), corners.end(), number) == corners.end()) corners.push_back(number);
      }
    }
    faces.push_back({corners.at(0), corners.at(1), corners.at(2)});
  }
  expectSameTopology(vertices, faces);
}

}  // namespace
