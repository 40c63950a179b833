// Location by index and by short cuts against location by looking at every triangle: on every kind of network and place
// the two name the same triangle, one query after the other.
#include <bit>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <numbers>
#include <string>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/FlatTIN.h>
#include <OrvikDTMAlgorithm/tin/PlaneHeight.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>
#include <gtest/gtest.h>

#include "Inputs.h"
#include "SlowLocation.h"
#include "TINSupport.h"

namespace {

using inputs::Positions;
using support::OwnedPoints;
using Faces = std::vector<std::array<int, 3>>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct Place {
  double x;
  double y;
};

// Places of every kind: on vertices, on edges and beside them by less and more than what the area test forgives, within
// triangles, all over the extent and around it, far away, and none at all.
class Places {
 public:
  Places(const CEType& tin, std::uint64_t seed) : random_(seed) {
    EList* edges = tin.getEList();
    for (int k = 1; edges != nullptr && k <= edges->getListLen(); ++k) {
      const TEdge* e = edges->findByNum(edges, k);
      if (e == nullptr || e->getStartPoint() == nullptr || e->getEndPoint() == nullptr) continue;
      edges_.push_back(e);
      take(*e->getStartPoint());
      take(*e->getEndPoint());
    }
  }

  Place next() {
    if (edges_.empty()) return {random_.unit(), random_.unit()};
    const TEdge& e = *edges_[static_cast<std::size_t>(random_.between(0, static_cast<int>(edges_.size()) - 1))];
    const TPoint& s = *e.getStartPoint();
    const TPoint& t = *e.getEndPoint();
    switch (random_.between(0, 9)) {
      case 0:
        return {s.getX(), s.getY()};
      case 1:
        return {(s.getX() + t.getX()) / 2, (s.getY() + t.getY()) / 2};
      case 2:
        return beside(s, t, random_.unit(), 1e-4 * random_.unit());
      case 3:
        return beside(s, t, 3 * random_.unit() - 1, 1e-3 * random_.unit());
      case 4:
        return beside(s, t, random_.unit(), std::ldexp(1.0, -static_cast<int>(random_.between(0, 40))));
      case 5:
        return {within(lowX_, highX_, 0.0), within(lowY_, highY_, 0.0)};
      case 6:
        return {within(lowX_, highX_, 0.0), within(lowY_, highY_, 0.0)};
      case 7:
        return {within(lowX_, highX_, 0.5), within(lowY_, highY_, 0.5)};
      case 8:
        return {s.getX() + random_.unit() * 1e-3, t.getY() - random_.unit() * 1e-3};
      default:
        return farAway();
    }
  }

 private:
  void take(const TPoint& p) {
    if (!std::isfinite(p.getX()) || !std::isfinite(p.getY())) return;
    lowX_ = std::min(lowX_, p.getX());
    highX_ = std::max(highX_, p.getX());
    lowY_ = std::min(lowY_, p.getY());
    highY_ = std::max(highY_, p.getY());
  }

  // At a part of the edge's length along it, and off it so that the triangle over the edge has that area.
  Place beside(const TPoint& s, const TPoint& t, double along, double area) {
    const double dx = t.getX() - s.getX();
    const double dy = t.getY() - s.getY();
    const double square = dx * dx + dy * dy;
    const double off = square > 0 ? 2 * area / square * (random_.between(0, 1) == 0 ? 1 : -1) : 0;
    return {s.getX() + along * dx - off * dy, s.getY() + along * dy + off * dx};
  }

  double within(double low, double high, double margin) {
    return low + (high - low) * (random_.unit() * (1 + 2 * margin) - margin);
  }

  Place farAway() {
    const double far[] = {1e3, 6e4, 1e6, 1e9, 1e13, 1e17, 1e160, 1.7e308, kInfinity, kNaN};
    const double d = far[random_.between(0, 9)] * (random_.between(0, 1) == 0 ? 1 : -1);
    const bool alongX = random_.between(0, 1) == 0;
    return {alongX ? d : within(lowX_, highX_, 0.1), alongX ? within(lowY_, highY_, 0.1) : d * random_.unit()};
  }

  inputs::Random random_;
  std::vector<const TEdge*> edges_;
  double lowX_ = 1e300;
  double highX_ = -1e300;
  double lowY_ = 1e300;
  double highY_ = -1e300;
};

bool sameBits(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) || (std::isnan(a) && std::isnan(b));
}

void expectTheTrianglesOfTheSlowWay(CEType& tin, std::uint64_t seed, int queries = 150) {
  slow::Location reference(tin);
  Places places(tin, seed);
  inputs::Random random(seed + 1);
  for (int i = 0; i < queries; ++i) {
    const Place p = places.next();
    const std::string where = "query " + std::to_string(i) + " at " + std::to_string(p.x) + "," + std::to_string(p.y);
    const int hint = static_cast<int>(random.between(-1, support::triangleCount(tin) + 1));
    ASSERT_EQ(tin.locateTri(p.x, p.y, hint), reference.locateTri(p.x, p.y, hint)) << where << " from " << hint;
    switch (random.between(0, 2)) {
      case 0:
        ASSERT_EQ(tin.locateTri1(p.x, p.y), reference.locateTri1(p.x, p.y)) << where;
        break;
      case 1:
        ASSERT_EQ(tin.locateTri(p.x, p.y), reference.locateTri(p.x, p.y)) << where;
        break;
      default:
        ASSERT_TRUE(sameBits(tin.getHeight(p.x, p.y), reference.getHeight(p.x, p.y))) << where;
    }
  }
}

// ---- constructed networks

class LocationOnEveryKind : public testing::TestWithParam<inputs::Kind> {};

TEST_P(LocationOnEveryKind, NamesTheTriangleOfTheSlowWay) {
  for (const int size : {3, 5, 40, 200}) {
    for (std::uint64_t seed = 1; seed <= 2; ++seed) {
      const OwnedPoints points(inputs::make(GetParam(), seed, size).points);
      const auto tin = support::triangulate(points);
      if (tin != nullptr) expectTheTrianglesOfTheSlowWay(*tin, seed);
      if (HasFatalFailure()) return;
    }
  }
}

TEST_P(LocationOnEveryKind, NamesTheTriangleOfTheSlowWayBeforeAnyFlip) {
  for (const int size : {7, 60}) {
    const OwnedPoints points(inputs::make(GetParam(), 9, size).points);
    const auto tin = support::sweep(points);
    if (tin != nullptr) expectTheTrianglesOfTheSlowWay(*tin, 9);
  }
}

const auto kKindName = [](const auto& row) {
  std::string name = row.param.name;
  for (char& c : name) {
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  }
  return name;
};

INSTANTIATE_TEST_SUITE_P(Survey, LocationOnEveryKind, testing::ValuesIn(inputs::surveyKinds()), kKindName);
INSTANTIATE_TEST_SUITE_P(Wide, LocationOnEveryKind, testing::ValuesIn(inputs::wideKinds()), kKindName);
INSTANTIATE_TEST_SUITE_P(Wild, LocationOnEveryKind, testing::ValuesIn(inputs::wildKinds()), kKindName);

TEST(LocationIndex, NamesTheTriangleOfTheSlowWayFarFromTheOrigin) {
  for (const double side : {1.0, 40.0, 2000.0}) {
    const OwnedPoints points(inputs::randomMillimetres(3, 400, static_cast<int>(side), 38500000, 3400000));
    expectTheTrianglesOfTheSlowWay(*support::triangulate(points), 3, 2000);
  }
}

TEST(LocationIndex, NamesTheTriangleOfTheSlowWayInAFan) {
  Positions positions;
  for (int i = 0; i < 2000; ++i) positions.push_back({0.05 * i, 0.02 * i, 1.0 * (i % 7)});
  positions.push_back({-300, 400, 5});
  const OwnedPoints points(positions);
  expectTheTrianglesOfTheSlowWay(*support::triangulate(points), 4, 2000);
}

// ---- imported and hand-made networks

std::unique_ptr<CEType> import(const OwnedPoints& points, const Faces& faces) {
  return std::unique_ptr<CEType>(CEType::initCETypeFromFaces(points.pointers(), faces));
}

// Slivers around a centre: boxes do not tell them apart, and queries go over to their sides after a while.
TEST(LocationIndex, NamesTheTriangleOfTheSlowWayAmongSlivers) {
  constexpr int kSpokes = 1200;
  constexpr double kFans[][2] = {{0, 100}, {38500000, 70}};  // where they are, and how far every second spoke reaches
  for (const auto& [x0, inner] : kFans) {
    OwnedPoints points;
    Faces faces;
    points.add(x0, 0, 9);
    for (int i = 0; i < kSpokes; ++i) {
      const double angle = 2 * std::numbers::pi * i / kSpokes;
      const double radius = i % 2 == 0 ? 100 : inner;
      points.add(x0 + radius * std::cos(angle), radius * std::sin(angle), i % 5);
      faces.push_back({0, 1 + i, 1 + (i + 1) % kSpokes});
    }
    expectTheTrianglesOfTheSlowWay(*import(points, faces), 6, 350);
    expectTheTrianglesOfTheSlowWay(*support::triangulate(points), 7, 350);
    if (HasFatalFailure()) return;
  }
}

// Random faces over few points: overlapping, three and more on an edge, flat, none a neighbour of the next.
TEST(LocationIndex, NamesTheTriangleOfTheSlowWayAmongRandomFaces) {
  for (std::uint64_t seed = 1; seed <= 60; ++seed) {
    inputs::Random random(seed);
    const double step = seed % 3 == 0 ? 0.001 : seed % 3 == 1 ? 1.0 : 12.345;
    const double offset = seed % 2 == 0 ? 38500000 : 0;
    OwnedPoints points;
    const int count = static_cast<int>(random.between(4, 20));
    for (int i = 0; i < count; ++i) {
      points.add(offset + step * static_cast<double>(random.between(0, 6)),
                 step * static_cast<double>(random.between(0, 6)), i);
    }
    Faces faces;
    for (int i = 0; i < 3 * count; ++i) {
      faces.push_back({static_cast<int>(random.between(0, count - 1)), static_cast<int>(random.between(0, count - 1)),
                       static_cast<int>(random.between(0, count - 1))});
    }
    expectTheTrianglesOfTheSlowWay(*import(points, faces), seed, 300);
    if (HasFatalFailure()) return;
  }
}

// A lattice of squares, each of two triangles, from which some are left out.
Faces latticeFaces(int side, const std::function<bool(int, int)>& isThere) {
  Faces faces;
  for (int i = 0; i + 1 < side; ++i) {
    for (int j = 0; j + 1 < side; ++j) {
      if (!isThere(i, j)) continue;
      const int a = i * side + j;
      faces.push_back({a, a + side, a + side + 1});
      faces.push_back({a, a + side + 1, a + 1});
    }
  }
  return faces;
}

OwnedPoints latticePoints(int side, double spacing, double x0) {
  Positions positions;
  for (int i = 0; i < side; ++i) {
    for (int j = 0; j < side; ++j) positions.push_back({x0 + spacing * i, spacing * j, 0.1 * i * j});
  }
  return OwnedPoints(positions);
}

TEST(LocationIndex, NamesTheTriangleOfTheSlowWayAroundHolesAndOnIslands) {
  constexpr int kSide = 12;
  const std::function<bool(int, int)> shapes[] = {
      [](int, int) { return true; },
      [](int i, int j) { return i < 4 || i > 6 || j < 4 || j > 6; },          // a hole
      [](int i, int j) { return i % 5 != 4 && j % 5 != 4; },                  // islands
      [](int i, int j) { return (i % 4 < 2) || j == 0; },                     // a comb: one ring, far from convex
      [](int i, int j) { return i + j < 9 && !(i == 2 && j > 1 && j < 5); },  // a slit that is open nowhere
      [](int i, int j) { return (i + j) % 2 == 0; }};                         // squares that meet at corners
  for (const auto& shape : shapes) {
    for (const double spacing : {0.001, 1.0, 250.0}) {
      for (const double x0 : {0.0, 38500000.0}) {
        const OwnedPoints points = latticePoints(kSide, spacing, x0);
        expectTheTrianglesOfTheSlowWay(*import(points, latticeFaces(kSide, shape)), 5, 500);
        if (HasFatalFailure()) return;
      }
    }
  }
}

// Numbers in the tables that name nothing or the wrong thing, points that are no places.
TEST(LocationIndex, NamesTheTriangleOfTheSlowWayInBrokenTables) {
  for (std::uint64_t seed = 1; seed <= 150; ++seed) {
    inputs::Random random(seed);
    OwnedPoints points(inputs::randomMillimetres(seed, 12, seed % 2 == 0 ? 100 : 1, 0, 0));
    const auto sound = support::triangulate(points);
    ASSERT_NE(sound, nullptr);
    support::Tables tables = support::tablesOf(*sound, points.pointers());
    const auto any = [&random](std::size_t count) {
      return static_cast<int>(random.between(-1, static_cast<int>(count) + 1));
    };
    for (int i = 0; i < 1 + static_cast<int>(seed % 5); ++i) {
      auto& edge = tables.edges[static_cast<std::size_t>(random.between(0, static_cast<int>(tables.edges.size()) - 1))];
      auto& tri =
          tables.triangles[static_cast<std::size_t>(random.between(0, static_cast<int>(tables.triangles.size()) - 1))];
      switch (random.between(0, 6)) {
        case 0:
          edge.left = any(tables.triangles.size());
          break;
        case 1:
          edge.right = any(tables.triangles.size());
          break;
        case 2:
          std::swap(edge.left, edge.right);
          break;
        case 3:
          edge.start = static_cast<int>(random.between(0, static_cast<int>(points.size())));
          break;
        case 4:
          tri[static_cast<std::size_t>(random.between(0, 2))] = any(tables.edges.size());
          break;
        case 5:
          tables.hull[static_cast<std::size_t>(random.between(0, 2))] = any(tables.edges.size());
          break;
        default:
          points[static_cast<std::size_t>(random.between(0, 11))]->setX(seed % 3 == 0   ? kNaN
                                                                        : seed % 3 == 1 ? kInfinity
                                                                                        : 1e300);
      }
    }
    expectTheTrianglesOfTheSlowWay(*makeTIN(points, tables), seed, 200);
    if (HasFatalFailure()) return;
  }
}

// ---- what the copy notices

TEST(LocationIndex, NoticesAListThatIsSetAgain) {
  const OwnedPoints points(Positions{{0, 0, 1}, {10, 0, 1}, {0, 10, 1}});
  const auto tin = support::triangulate(points);
  EXPECT_EQ(tin->getHeight(1, 1), 1.0);
  for (std::size_t i = 0; i < 3; ++i) points[i]->setZ(5);
  tin->setEList(tin->getEList());
  EXPECT_EQ(tin->getHeight(1, 1), 5.0);
}

TEST(LocationIndex, ScansInOrderWhenTheTriangleFoundLastIsGone) {
  const OwnedPoints points(Positions{{0, 0, 1}, {10, 0, 1}, {0, 10, 1}, {90, 90, 1}, {99, 90, 1}, {90, 99, 1}});
  Faces faces(39, {0, 1, 2});
  faces.push_back({3, 4, 5});
  const std::unique_ptr<CEType> tin(CEType::initCETypeFromFaces(points.pointers(), faces));
  ASSERT_EQ(tin->locateTri1(91, 91), 40);
  TList* triangles = tin->getTList();
  while (triangles->getListLen() > 10) triangles->deleteData(triangles, triangles->getListLen());
  EXPECT_EQ(tin->locateTri1(1, 1), 1);
  EXPECT_EQ(tin->locateTri1(91, 91), 0);
}

// ---- boxes

TEST(LocationIndex, VisitsEveryTriangleWhoseBoxMeetsABoxOnce) {
  for (const auto& kind : inputs::surveyKinds()) {
    const OwnedPoints points(inputs::make(kind, 5, 300).points);
    const auto tin = support::triangulate(points);
    if (tin == nullptr) continue;
    const auto flat = detail::FlatTIN::of(*tin);
    Places places(*tin, 8);
    for (int i = 0; i < 100; ++i) {
      const Place a = places.next();
      const Place b = places.next();
      if (!std::isfinite(a.x + a.y + b.x + b.y)) continue;
      const Place low{std::min(a.x, b.x), std::min(a.y, b.y)};
      const Place high{std::max(a.x, b.x), std::max(a.y, b.y)};
      std::vector<int> visits(static_cast<std::size_t>(flat->triangleCount()) + 1, 0);
      flat->visitBoxes(low.x, low.y, high.x, high.y,
                       [&visits](int tri) { ++visits.at(static_cast<std::size_t>(tri)); });
      for (int tri = 1; tri <= flat->triangleCount(); ++tri) {
        const auto corners = support::cornersOf(*tin, tri);
        if (!corners) continue;
        bool meets[4] = {false, false, false, false};
        for (const TPoint* p : *corners) {
          meets[0] |= p->getX() <= high.x;
          meets[1] |= p->getX() >= low.x;
          meets[2] |= p->getY() <= high.y;
          meets[3] |= p->getY() >= low.y;
        }
        const int count = visits[static_cast<std::size_t>(tri)];
        ASSERT_LE(count, 1) << kind.name << " " << tri;
        ASSERT_TRUE(count == 1 || !(meets[0] && meets[1] && meets[2] && meets[3])) << kind.name << " " << tri;
      }
    }
  }
}

// ---- planes

TEST(Plane, ShortEliminationGivesTheBitsOfTheLongOne) {
  inputs::Random random(77);
  const double odd[] = {0.0, -0.0, 1.0, -1.0, 1e-320, -5e-324, 1e200, -1e308, 1e308, kInfinity, -kInfinity, kNaN, 3.0};
  const auto number = [&]() -> double {
    switch (random.between(0, 3)) {
      case 0:
        return odd[random.between(0, 12)];
      case 1:
        return static_cast<double>(random.between(-5, 5));
      default:
        return (random.unit() - 0.5) * std::ldexp(1.0, static_cast<int>(random.between(-20, 20)));
    }
  };
  for (int i = 0; i < 400000; ++i) {
    double v[7];
    for (double& x : v) x = number();
    detail::Plane quick{0, 0, 0};
    detail::Plane full{0, 0, 0};
    ASSERT_EQ(detail::planeThrough(v[0], v[1], v[2], v[3], v[4], v[5], v[6], quick),
              detail::planeByElimination(v[0], v[1], v[2], v[3], v[4], v[5], v[6], full));
    ASSERT_TRUE(sameBits(quick.slopeX, full.slopeX) && sameBits(quick.slopeY, full.slopeY) &&
                sameBits(quick.z0, full.z0))
        << v[0] << " " << v[1] << " " << v[2] << " " << v[3] << " " << v[4] << " " << v[5] << " " << v[6];
  }
}

}  // namespace
