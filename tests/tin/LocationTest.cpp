// Location and heights: the triangle that is named must hold the point, by exact signs, on constructed, imported and
// hand-made networks; and what lies outside must be said to lie outside.
#include <algorithm>
#include <cfloat>
#include <cmath>
#include <limits>
#include <memory>

#include <OrvikDTMAlgorithm/surface/RangePoint.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>
#include <OrvikDTMAlgorithm/tin/verifyTIN.h>
#include <gtest/gtest.h>

#include "ExactPlane.h"
#include "Inputs.h"
#include "LiteralTIN.h"
#include "TINSupport.h"

inline namespace OrvikDTM {

// What is reached by no public operation yet.
struct CETypeInternals {
  static int countInfinite(const CEType& tin, double x, double y, double z) { return tin.countInfinite(x, y, z); }
};

}  // namespace OrvikDTM

namespace {

using exact::Place;
using support::OwnedPoints;

constexpr double kOutside = std::numeric_limits<double>::max();
using Faces = std::vector<std::array<int, 3>>;

Place placeIn(const CEType& tin, int triangle, const TPoint& p) {
  const auto corners = support::cornersOf(tin, triangle);
  return corners ? exact::placeIn(*corners, p) : Place::Outside;
}

TPoint inside(const std::array<TPoint*, 3>& t, inputs::Random& random) {
  double w[3];
  for (double& weight : w) weight = 0.02 + random.unit();
  const double sum = w[0] + w[1] + w[2];
  double x = 0.0;
  double y = 0.0;
  for (int i = 0; i < 3; ++i) {
    x += w[i] / sum * (t[static_cast<std::size_t>(i)]->getX() - t[0]->getX());
    y += w[i] / sum * (t[static_cast<std::size_t>(i)]->getY() - t[0]->getY());
  }
  return {t[0]->getX() + x, t[0]->getY() + y, 0};
}

void expectTrianglesFound(CEType& tin, std::uint64_t seed, bool walksReachEverything) {
  inputs::Random random(seed);
  const int count = support::triangleCount(tin);
  ASSERT_GT(count, 0);
  for (int round = 0; round < 3 * std::min(count, 400); ++round) {
    const int t = static_cast<int>(random.between(1, count));
    const auto corners = support::cornersOf(tin, t);
    ASSERT_TRUE(corners);
    const TPoint p = inside(*corners, random);
    if (exact::placeIn(*corners, p) != Place::Inside) continue;  // a sliver: the point was rounded out of it
    ASSERT_EQ(tin.locateTri(p.getX(), p.getY()), t);
    ASSERT_EQ(tin.locateTri1(p.getX(), p.getY()), t);
    const int hinted = tin.locateTri(p.getX(), p.getY(), static_cast<int>(random.between(1, count)));
    if (walksReachEverything) {
      ASSERT_EQ(hinted, t);
    } else {
      ASSERT_TRUE(hinted == 0 || hinted == t);
    }
  }
}

void expectVerticesFound(CEType& tin) {
  for (TPoint* p : tin.getOriginalList()) {
    const int t = tin.locateTri(p->getX(), p->getY());
    ASSERT_NE(t, 0) << p->getX() << "," << p->getY();
    ASSERT_EQ(placeIn(tin, t, *p), Place::OnBoundary);
    ASSERT_EQ(tin.getHeight(p->getX(), p->getY()), p->getZ());
  }
}

// Points that lie exactly on an edge, where the middle of the edge is a double; within rounding of it elsewhere.
void expectEdgesFound(CEType& tin) {
  EList* edges = tin.getEList();
  for (int k = 1; k <= edges->getListLen(); ++k) {
    const TEdge* e = edges->findByNum(edges, k);
    const TPoint middle((e->getStartPoint()->getX() + e->getEndPoint()->getX()) / 2,
                        (e->getStartPoint()->getY() + e->getEndPoint()->getY()) / 2, 0);
    const bool onEdge = exact::side(*e->getStartPoint(), *e->getEndPoint(), middle) == 0;
    const bool inner = e->getLeftT() != 0 && e->getRightT() != 0;
    if (!onEdge && !inner) continue;  // rounding may have moved it out of the network
    const int t = tin.locateTri(middle.getX(), middle.getY());
    ASSERT_NE(t, 0) << "edge " << k;
    ASSERT_NE(placeIn(tin, t, middle), Place::Outside) << "edge " << k;
  }
}

struct Site {
  const char* name;
  double x0;
  double y0;
  int size;
  int side;
};

void PrintTo(const Site& site, std::ostream* out) { *out << site.name; }

class ConstructedSite : public testing::TestWithParam<Site> {
 protected:
  void SetUp() override { ASSERT_TRUE(verifyTIN(*tin_, points_.pointers()).valid()); }

  OwnedPoints points_{inputs::randomMillimetres(41, GetParam().size, GetParam().side, GetParam().x0, GetParam().y0)};
  std::unique_ptr<CEType> tin_ = support::triangulate(points_);
};

TEST_P(ConstructedSite, TrianglesAreFoundFromWithin) { expectTrianglesFound(*tin_, 1, true); }
TEST_P(ConstructedSite, VerticesAreFoundWithTheirOwnHeights) { expectVerticesFound(*tin_); }
TEST_P(ConstructedSite, EdgesAreFound) { expectEdgesFound(*tin_); }

TEST_P(ConstructedSite, PointsOutsideAreOutside) {
  inputs::Random random(9);
  const std::vector<double> extent = tin_->getRangeXY();
  for (int round = 0; round < 100; ++round) {
    const double far = 0.001 + 50 * random.unit();
    const double x = extent[3] + random.unit() * (extent[2] - extent[3]);
    EXPECT_EQ(tin_->locateTri(x, extent[0] + far), 0);
    EXPECT_EQ(tin_->locateTri(x, extent[1] - far), 0);
    EXPECT_EQ(tin_->getHeight(extent[2] + far, extent[0]), kOutside);
  }
}

INSTANTIATE_TEST_SUITE_P(Location, ConstructedSite,
                         testing::Values(Site{"AtTheOrigin", 0, 0, 500, 1000}, Site{"Dense", 0, 0, 60, 10},
                                         Site{"Projected", 500000, 3000000, 500, 1000},
                                         Site{"ZonePrefix", 38500000, 3400000, 500, 1000},
                                         Site{"ZonePrefixDense", 38500000, 3400000, 300, 3},
                                         Site{"Negative", -7000, -9000, 300, 100}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Location, GridsAreFoundOnVerticesAndEdges) {
  inputs::Positions positions;
  for (int i = 0; i < 12; ++i) {
    for (int j = 0; j < 12; ++j) positions.push_back({10.0 * i, 10.0 * j, 0.5 * i * j});
  }
  const OwnedPoints points(positions);
  const auto tin = support::triangulate(points);
  expectVerticesFound(*tin);
  expectEdgesFound(*tin);
  expectTrianglesFound(*tin, 5, true);
}

TEST(Location, PointBesideAMillimetreTriangleIsNotTakenForInsideIt) {
  // Triangle 1 is a millimetre wide, and any point near it is within an area of 0.0001 of it.
  const OwnedPoints points(
      inputs::Positions{{0, 0, 1}, {0.001, 0, 1}, {0, 0.001, 1}, {10, 0, 5}, {10, 10, 5}, {0, 10, 5}});
  const Faces faces = {{0, 1, 2}, {1, 3, 4}, {1, 4, 2}, {2, 4, 5}};
  const std::unique_ptr<CEType> tin(CEType::initCETypeFromFaces(points.pointers(), faces));
  expectTrianglesFound(*tin, 3, true);
  EXPECT_EQ(tin->locateTri(0.01, 0.005), tin->locateTri1(0.01, 0.005));
  EXPECT_NE(tin->locateTri(0.002, 0.0005), 1);
  EXPECT_NE(tin->locateTri1(0.002, 0.0005), 1);
}

// ---- imported networks

// The network of the sweep, before any flip, is full of slivers: walks over it go astray.
TEST(Location, TrianglesOfAnImportedNetworkThatIsNotDelaunayAreFound) {
  const inputs::Positions positions = inputs::randomMillimetres(17, 150, 100, 0, 0);
  const literal::Network net = literal::construct(positions, literal::Stop::AfterSweep);
  std::vector<const literal::Point*> at;
  OwnedPoints points;
  for (const literal::Point& p : net.points) {
    at.push_back(&p);
    points.add(p.x, p.y, p.z);
  }
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
  const std::unique_ptr<CEType> tin(CEType::initCETypeFromFaces(points.pointers(), faces));
  expectTrianglesFound(*tin, 2, false);
  expectVerticesFound(*tin);
}

// Eight triangles between two squares; the inner one is empty.
class RingAroundAHole : public testing::Test {
 protected:
  RingAroundAHole() {
    for (int i = 0; i < 4; ++i) points_.add(kOuter[i][0], kOuter[i][1], 1);
    for (int i = 0; i < 4; ++i) points_.add(kInner[i][0], kInner[i][1], 2);
    Faces faces;
    for (int i = 0; i < 4; ++i) {
      const int j = (i + 1) % 4;
      faces.push_back({i, j, 4 + i});
      faces.push_back({j, 4 + j, 4 + i});
    }
    tin_.reset(CEType::initCETypeFromFaces(points_.pointers(), faces));
  }

  static constexpr double kOuter[4][2] = {{0, 0}, {30, 0}, {30, 30}, {0, 30}};
  static constexpr double kInner[4][2] = {{10, 10}, {20, 10}, {20, 20}, {10, 20}};
  OwnedPoints points_;
  std::unique_ptr<CEType> tin_;
};

TEST_F(RingAroundAHole, TrianglesAreFoundAllAround) {
  expectTrianglesFound(*tin_, 4, false);
  expectVerticesFound(*tin_);
}

TEST_F(RingAroundAHole, HoleIsOutside) {
  EXPECT_EQ(tin_->locateTri(15, 15), 0);
  EXPECT_EQ(tin_->getHeight(12, 18), kOutside);
  EXPECT_EQ(tin_->locateTri(-1, 15), 0);
}

TEST(Location, IslandsAreFound) {
  const OwnedPoints points(inputs::Positions{
      {0, 0, 1}, {10, 0, 1}, {10, 10, 1}, {0, 10, 1}, {50, 50, 2}, {60, 50, 2}, {60, 60, 2}, {50, 60, 2}});
  const std::unique_ptr<CEType> tin(
      CEType::initCETypeFromFaces(points.pointers(), {{0, 1, 2}, {0, 2, 3}, {4, 5, 6}, {4, 6, 7}}));
  expectTrianglesFound(*tin, 6, false);
  expectVerticesFound(*tin);
  EXPECT_EQ(tin->locateTri(30, 30), 0);
  EXPECT_EQ(tin->getHeight(52, 57), 2.0);
}

// Every face twice, and a body: without three hull edges nothing lies within the hull, and only the scan and a walk
// from a given triangle, which do not ask it, find anything.
TEST(Location, ClosedNetworksContainNothing) {
  const OwnedPoints points(inputs::Positions{{0, 0, 1}, {30, 0, 2}, {30, 30, 3}, {0, 30, 4}, {5, 6, 10}});
  const std::vector<std::array<int, 3>> doubled = {{0, 1, 2}, {0, 2, 3}, {0, 1, 2}, {0, 2, 3}};
  const std::vector<std::array<int, 3>> body = {{0, 1, 3}, {0, 1, 4}, {1, 3, 4}, {3, 0, 4}};
  for (const auto& faces : {doubled, body}) {
    const std::unique_ptr<CEType> tin(CEType::initCETypeFromFaces(points.pointers(), faces));
    ASSERT_LT(support::hullCount(*tin), 3);
    for (const auto& [x, y] : {std::pair(1.0, 1.0), std::pair(5.0, 7.0), std::pair(25.0, 0.5), std::pair(0.0, 15.0),
                               std::pair(0.0, 0.0), std::pair(30.0, 0.0)}) {
      EXPECT_EQ(tin->locateTri(x, y), 0) << x << ' ' << y;
      EXPECT_EQ(tin->getHeight(x, y), kOutside) << x << ' ' << y;
      const int scanned = tin->locateTri1(x, y);
      EXPECT_NE(scanned, 0) << x << ' ' << y;
      EXPECT_EQ(tin->locateTri(x, y, scanned), scanned) << x << ' ' << y;
      EXPECT_EQ(tin->locateTri(x, y), 0) << x << ' ' << y << " after a query that found something";
    }
  }
}

// ---- the order of the scan

// Thirty triangles without neighbours; those in `stacked` lie one upon another at the origin.
std::unique_ptr<CEType> thirtyTriangles(OwnedPoints& points, const std::vector<int>& stacked) {
  support::Tables tables;
  for (int t = 1; t <= 30; ++t) {
    const bool atOrigin = std::find(stacked.begin(), stacked.end(), t) != stacked.end();
    const double x = atOrigin ? 0.0 : 10.0 * t;
    points.add(x, 0, 0);
    points.add(x + 4, 0, 0);
    points.add(x, 4, 0);
    const int first = 3 * (t - 1) + 1;
    tables.edges.push_back({first, first + 1, t, 0});
    tables.edges.push_back({first + 1, first + 2, t, 0});
    tables.edges.push_back({first + 2, first, t, 0});
    tables.triangles.push_back({first, first + 1, first + 2});
  }
  return makeTIN(points, tables);
}

TEST(Scan, BeginsTenBeforeTheTriangleFoundLast) {
  OwnedPoints points;
  const auto tin = thirtyTriangles(points, {5, 14, 15, 16, 20});
  EXPECT_EQ(tin->locateTri1(1, 1), 5);
  EXPECT_EQ(tin->locateTri1(251, 1), 25);
  EXPECT_EQ(tin->locateTri1(1, 1), 15);
  EXPECT_EQ(tin->locateTri1(1, 1), 15);  // the one found last comes first
}

TEST(Scan, BeginsAtTheFirstTriangleWhereThereAreNotTenBefore) {
  OwnedPoints points;
  const auto tin = thirtyTriangles(points, {1, 2, 28});
  EXPECT_EQ(tin->locateTri1(31, 1), 3);
  EXPECT_EQ(tin->locateTri1(1, 1), 1);
}

TEST(Scan, GoesRoundToTheTrianglesBeforeItsStart) {
  OwnedPoints points;
  const auto tin = thirtyTriangles(points, {4, 7});
  EXPECT_EQ(tin->locateTri1(251, 1), 25);
  EXPECT_EQ(tin->locateTri1(1, 1), 4);
  EXPECT_EQ(tin->locateTri1(-100, -100), 0);
  EXPECT_EQ(tin->locateTri1(1, 1), 4);  // a miss is not remembered
}

// ---- hints, neighbours, small change

class TwoHalvesOfASquare : public testing::Test {
 protected:
  OwnedPoints points_{inputs::Positions{{0, 0, 1}, {10, 0, 2}, {10, 10, 3}, {0, 10, 4}}};
  std::unique_ptr<CEType> tin_ = support::triangulate(points_);
};

TEST_F(TwoHalvesOfASquare, HintThatNamesNothing) {
  EXPECT_EQ(tin_->locateTri(5, 1, 3), 0);
  EXPECT_EQ(tin_->locateTri(5, 1, 0), tin_->locateTri(5, 1));
  EXPECT_EQ(tin_->locateTri(-5, 1, 1), 0);
  EXPECT_EQ(tin_->locateTri(-5, 1, 2), 0);
}

TEST_F(TwoHalvesOfASquare, NoTriangleHoldsWhatIsNotANumber) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(tin_->locateTri(nan, 1), 0);
  EXPECT_EQ(tin_->locateTri1(nan, 1), 0);
  EXPECT_EQ(tin_->locateTri(1, nan, 1), 0);
  EXPECT_EQ(tin_->locateTri(infinity, 1), 0);
  EXPECT_EQ(tin_->locateTri1(1, -infinity), 0);
  EXPECT_EQ(tin_->getHeight(nan, nan), kOutside);
}

TEST_F(TwoHalvesOfASquare, NeighboursAcrossTheEdges) {
  const int expected = 2;
  const std::unique_ptr<int[]> first(tin_->getRelateT(1));
  EXPECT_EQ(std::count(first.get(), first.get() + 3, 0), 2);
  EXPECT_EQ(std::count(first.get(), first.get() + 3, expected), 1);
  EXPECT_EQ(tin_->getZero(first[0], first[1], first[2]), 2);
  for (const int none : {0, 3, -1}) {
    const std::unique_ptr<int[]> nothing(tin_->getRelateT(none));
    EXPECT_EQ(std::count(nothing.get(), nothing.get() + 3, 0), 3);
  }
  EXPECT_EQ(tin_->getZero(0, 5, 0), 2);
  EXPECT_EQ(tin_->getZero(1, 2, 3), 0);
  EXPECT_EQ(tin_->getZero(0, 0, 0), 3);
}

TEST_F(TwoHalvesOfASquare, GridOfHeights) {
  const auto one = tin_->proxyTri(5, 1, 0, 0, 1);
  ASSERT_EQ(one.size(), 1u);
  ASSERT_EQ(one[0].size(), 1u);
  EXPECT_EQ(one[0][0], tin_->getHeight(5, 1));

  const auto grid = tin_->proxyTri(0, 0, 3, 5, 4.0);
  ASSERT_EQ(grid.size(), 4u);
  for (std::size_t i = 0; i < grid.size(); ++i) {
    ASSERT_EQ(grid[i].size(), 6u);
    for (std::size_t j = 0; j < grid[i].size(); ++j) {
      EXPECT_EQ(grid[i][j], tin_->getHeight(4.0 * static_cast<double>(i), 4.0 * static_cast<double>(j)));
    }
  }
  EXPECT_TRUE(tin_->proxyTri(0, 0, -1, 5, 1).empty());
  const auto rows = tin_->proxyTri(0, 0, 2, -1, 1);
  ASSERT_EQ(rows.size(), 3u);
  EXPECT_TRUE(rows[0].empty());
}

TEST_F(TwoHalvesOfASquare, GridIsClippedToABoundaryOfThreePointsOrMore) {
  RangePoint corners[3] = {{"a", 0, 0, 0}, {"b", 0, 5, 0}, {"c", 5, 0, 0}};
  tin_->setRangeList({&corners[0], &corners[1], &corners[2]});
  const auto clipped = tin_->proxyTri(1, 1, 1, 1, 6.0);
  EXPECT_NE(clipped[0][0], kOutside);
  EXPECT_EQ(clipped[1][1], kOutside);
  tin_->setRangeList({});
  const auto whole = tin_->proxyTri(1, 1, 4, 4, 2.0);
  for (RangePoint* second : {static_cast<RangePoint*>(nullptr), &corners[1], &corners[0]}) {
    tin_->setRangeList({&corners[0], second});
    EXPECT_EQ(tin_->proxyTri(1, 1, 4, 4, 2.0), whole);
  }
}

// ---- heights

void expectHeightsOfThePlane(const inputs::Positions& positions) {
  const OwnedPoints points(positions);
  const auto tin = support::triangulate(points);
  inputs::Random random(31);
  int compared = 0;
  for (int t = 1; t <= support::triangleCount(*tin); ++t) {
    const auto corners = support::cornersOf(*tin, t);
    ASSERT_TRUE(corners);
    const double area = static_cast<double>(exact::doubleArea(*(*corners)[0], *(*corners)[1], *(*corners)[2]));
    const double side =
        std::hypot((*corners)[1]->getX() - (*corners)[0]->getX(), (*corners)[1]->getY() - (*corners)[0]->getY());
    if (area < 1e-3 * side * side) continue;  // nearly flat: the plane itself is hardly determined
    const TPoint p = inside(*corners, random);
    if (exact::placeIn(*corners, p) != Place::Inside) continue;
    const double height = static_cast<double>(exact::height(*corners, p));
    ASSERT_NEAR(tin->getHeight(p.getX(), p.getY()), height, 1e-9 * std::max(1.0, std::fabs(height)));
    ++compared;
  }
  EXPECT_GT(compared, 100);
}

TEST(Heights, AreThoseOfThePlane) {
  expectHeightsOfThePlane(inputs::randomMillimetres(51, 300, 300, 0, 0));
  expectHeightsOfThePlane(inputs::randomMillimetres(52, 300, 300, 500000, 3000000));
  expectHeightsOfThePlane(inputs::randomMillimetres(53, 300, 300, 38500000, 3400000));
}

TEST(Heights, AreNotDisturbedByAZonePrefix) {
  // Binary fractions: the same points near the origin and far from it are the same numbers exactly.
  inputs::Random random(6);
  inputs::Positions near;
  inputs::Positions far;
  for (int i = 0; i < 200; ++i) {
    const double x = static_cast<double>(random.between(0, 8000)) / 8;
    const double y = static_cast<double>(random.between(0, 8000)) / 8;
    near.push_back({x, y, 0.01 * i});
    far.push_back({38500000 + x, 3400000 + y, 0.01 * i});
  }
  const OwnedPoints nearPoints(near);
  const OwnedPoints farPoints(far);
  const auto nearTin = support::triangulate(nearPoints);
  const auto farTin = support::triangulate(farPoints);
  for (int i = 0; i < 2000; ++i) {
    const double x = static_cast<double>(random.between(0, 8000)) / 8;
    const double y = static_cast<double>(random.between(0, 8000)) / 8;
    const double expected = nearTin->getHeight(x, y);
    const double height = farTin->getHeight(38500000 + x, 3400000 + y);
    ASSERT_EQ(expected == kOutside, height == kOutside);
    ASSERT_TRUE(expected == kOutside || std::fabs(height - expected) < 1e-9) << height << " for " << expected;
  }
}

TEST(Location, SurveyedPositionsLeadToTheirVertices) {
  for (const double offset : {0.0, 1000.0, -5000.0, 38500000.0}) {
    for (std::uint64_t seed = 1; seed <= 40; ++seed) {
      inputs::Random random(seed);
      OwnedPoints points;
      std::vector<TPoint> surveyed;
      for (int i = 0; i < 12; ++i) {
        const double x = offset + static_cast<double>(random.between(0, 9999999)) / 1000;
        const double y = offset + static_cast<double>(random.between(0, 9999999)) / 1000;
        surveyed.emplace_back(std::round(x * 1000) / 1000, std::round(y * 1000) / 1000, i);
        points.add(surveyed.back().getX(), surveyed.back().getY(), i);
      }
      const auto tin = triangulate(points);
      for (const TPoint& p : surveyed) {
        double x = p.getX();
        double y = p.getY();
        tin->toVertexPosition(&x, &y);
        EXPECT_EQ(tin->getHeight(x, y), p.getZ()) << offset << " " << seed;
        EXPECT_NEAR(x, p.getX(), 1e-8);
        double aside = p.getX() + 0.00025;
        tin->toVertexPosition(&aside, &y);
        EXPECT_EQ(aside, p.getX() + 0.00025);
      }
    }
  }
}

TEST(Location, CountsWhatStandsForNoValue) {
  const double inf = std::numeric_limits<double>::infinity();
  const double none = std::nan("");
  const CEType tin(nullptr, nullptr, nullptr);
  EXPECT_EQ(CETypeInternals::countInfinite(tin, none, DBL_MAX, 1), 1);
  EXPECT_EQ(CETypeInternals::countInfinite(tin, 1, 2, 3), 0);
  EXPECT_EQ(CETypeInternals::countInfinite(tin, inf, -inf, -DBL_MAX), 3);
}

}  // namespace
