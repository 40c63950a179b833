// Sampled volumes of networks that were not constructed here: not Delaunay, with holes, in islands, with three faces on
// an edge, or overlapping themselves; and of levels within boundaries. Bit for bit against the slow comparison.
#include <array>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "Inputs.h"
#include "LiteralComparison.h"
#include "VolumeSupport.h"

namespace {

using inputs::Positions;
using support::expectSameComparison;
using support::expectSameLevel;
using support::MakeModel;
using support::Model;
using support::Polygon;

using Faces = std::vector<std::array<int, 3>>;

struct Import {
  Positions positions;
  Faces faces;

  MakeModel maker() const {
    return [*this] { return Model(positions, faces); };
  }
};

MakeModel constructed(const Positions& positions) {
  return [positions] { return Model(positions); };
}

constexpr int kSquares = 6;

// A lattice of squares at (x0, y0), each cut along either diagonal as it happens, from which `isThere` leaves some out.
template <typename IsThere>
Import lattice(std::uint64_t seed, double spacing, double x0, double y0, IsThere isThere) {
  inputs::Random random(seed);
  Import result;
  for (int i = 0; i <= kSquares; ++i) {
    for (int j = 0; j <= kSquares; ++j) {
      result.positions.push_back(
          {x0 + spacing * i, y0 + spacing * j, 5 + 0.001 * static_cast<double>(random.between(-2000, 2000))});
    }
  }
  for (int i = 0; i < kSquares; ++i) {
    for (int j = 0; j < kSquares; ++j) {
      const int a = i * (kSquares + 1) + j;
      const int b = a + kSquares + 1;
      const bool rising = random.between(0, 1) == 1;
      if (!isThere(i, j)) continue;
      result.faces.push_back(rising ? std::array<int, 3>{a, b, b + 1} : std::array<int, 3>{a, b, a + 1});
      result.faces.push_back(rising ? std::array<int, 3>{a, b + 1, a + 1} : std::array<int, 3>{b, b + 1, a + 1});
    }
  }
  return result;
}

bool isWhole(int, int) { return true; }
bool hasHole(int i, int j) { return i < 2 || i > 3 || j < 2 || j > 3; }
bool isIsland(int i, int j) { return i % 3 != 2 && j % 3 != 2; }
bool isComb(int i, int j) { return i % 2 == 0 || j == 0; }
bool isChequer(int i, int j) { return (i + j) % 2 == 0; }

constexpr bool (*kShapes[])(int, int) = {isWhole, hasHole, isIsland, isComb, isChequer};

// Where networks stand: at the origin and at projected coordinates.
constexpr double kPlaces[][2] = {{0, 0}, {38500000, 3400000}};

const Polygon kBoundary = {{0.5, 1}, {5.5, 0.5}, {5.25, 5}, {3, 2}, {1, 5.5}};

Polygon moved(const Polygon& polygon, double dx, double dy) {
  Polygon result = polygon;
  for (auto& vertex : result) vertex = {vertex[0] + dx, vertex[1] + dy};
  return result;
}

// Both ways round, without and with the boundary; returns how many pieces were drawn.
std::size_t expectSameBothWays(const MakeModel& one, const MakeModel& other, const Polygon& boundary) {
  std::size_t pieces = 0;
  for (const Polygon& within : {Polygon(), boundary}) {
    pieces += expectSameComparison(one, other, within).pieces.size();
    pieces += expectSameComparison(other, one, within).pieces.size();
  }
  return pieces;
}

TEST(ImportedVolume, HolesIslandsAndCombsAgainstAConstructedSurface) {
  for (const auto& place : kPlaces) {
    for (const auto& shape : kShapes) {
      const Import own = lattice(1, 1, place[0], place[1], shape);
      const MakeModel ground = constructed(inputs::randomMillimetres(2, 40, 6, place[0] + 0.3, place[1] - 0.2));
      EXPECT_GT(expectSameBothWays(own.maker(), ground, moved(kBoundary, place[0], place[1])), 400u);
    }
  }
}

// Corners on corners and sides on sides, and lattices that are off by a part of a square.
TEST(ImportedVolume, LatticesAgainstEachOther) {
  for (const auto& place : kPlaces) {
    for (const auto& shape : kShapes) {
      const Import own = lattice(3, 1, place[0], place[1], shape);
      for (const auto& [spacing, dx, dy] : {std::array{1.0, 0.0, 0.0}, {0.5, 1.0, 2.0}, {1.0, 0.25, 0.125}}) {
        const Import other = lattice(4, spacing, place[0] + dx, place[1] + dy, hasHole);
        EXPECT_GT(expectSameBothWays(own.maker(), other.maker(), moved(kBoundary, place[0], place[1])), 50u);
      }
    }
  }
}

TEST(ImportedVolume, IdenticalImportsGiveNothing) {
  for (const auto& shape : kShapes) {
    const Import import = lattice(5, 1, 38500000, 3400000, shape);
    const Model own = import.maker()();
    const Model reference = import.maker()();
    EXPECT_EQ(support::numbersOf(*support::fillCut(*own.tin, *reference.tin)), (std::array<double, 10>{}));
    EXPECT_TRUE(support::piecesOf(*own.tin).empty());
  }
}

TEST(ImportedVolume, ImportsApartGiveNothing) {
  for (const auto& place : kPlaces) {
    const Import own = lattice(6, 1, place[0], place[1], isIsland);
    const Import apart = lattice(7, 1, place[0] + 20, place[1] + 3, hasHole);
    const Import inTheHole = lattice(8, 0.25, place[0] + 2.25, place[1] + 2.25, isWhole);
    const Import around = lattice(9, 1, place[0], place[1], hasHole);
    EXPECT_EQ(expectSameBothWays(own.maker(), apart.maker(), moved(kBoundary, place[0], place[1])), 0u);
    EXPECT_EQ(expectSameBothWays(around.maker(), inTheHole.maker(), {}), 0u);
  }
}

// Faces that stand on sides which two others share already, in plan over their neighbours.
TEST(ImportedVolume, ThreeFacesOnAnEdge) {
  for (const auto& place : kPlaces) {
    for (const auto& shape : kShapes) {
      Import own = lattice(10, 1, place[0], place[1], shape);
      const auto corners = static_cast<int>(own.positions.size());
      own.positions.push_back({place[0] + 2.65, place[1] + 1.55, 9});
      own.positions.push_back({place[0] + 3.95, place[1] + 4.2, 1});
      own.faces.push_back({own.faces[2][0], own.faces[2][1], corners});
      own.faces.push_back({own.faces[7][2], own.faces[7][1], corners});
      own.faces.push_back({own.faces[9][0], own.faces[9][2], corners + 1});
      const MakeModel ground = constructed(inputs::randomMillimetres(11, 30, 6, place[0], place[1]));
      EXPECT_GT(expectSameBothWays(own.maker(), ground, moved(kBoundary, place[0], place[1])), 200u);
    }
  }
}

// Over few points, overlapping each other at random.
TEST(ImportedVolume, RandomFaces) {
  for (std::uint64_t seed = 1; seed <= 12; ++seed) {
    SCOPED_TRACE(seed);
    inputs::Random random(seed);
    const double* place = kPlaces[seed % 2];
    Import own;
    for (int i = 0; i < 10; ++i) {
      own.positions.push_back({place[0] + static_cast<double>(random.between(0, 6)),
                               place[1] + static_cast<double>(random.between(0, 6)), 10 * random.unit()});
    }
    const auto corner = [&random] { return static_cast<int>(random.between(0, 9)); };
    for (int i = 0; i < 12; ++i) own.faces.push_back({corner(), corner(), corner()});
    const MakeModel ground = constructed(inputs::randomMillimetres(seed, 25, 6, place[0], place[1]));
    expectSameBothWays(own.maker(), ground, moved(kBoundary, place[0], place[1]));
    expectSameBothWays(own.maker(), lattice(seed, 1, place[0], place[1], hasHole).maker(), {});
  }
}

// ---- a level within a boundary

const Polygon kPolygons[] = {kBoundary,
                             {{1, 1}, {4, 1}, {4, 4}, {1, 4}},
                             {{1, 4}, {4, 4}, {4, 1}, {1, 1}, {1, 4}},
                             {{0.5, 0.5}, {4.5, 4.5}, {4.5, 0.5}, {0.5, 4.5}},
                             {{2.5, 2.5}, {15, 2.5}, {15, 15}, {2.5, 15}},
                             {{0.5, 0.5}, {15, 1}, {2, 1.25}, {4.5, 2.5}, {1.5, 2.75}, {10, 4.5}}};

TEST(LevelWithinABoundary, AgreesWithTheSlowComparison) {
  for (const auto& place : kPlaces) {
    const MakeModel ground = constructed(inputs::randomMillimetres(12, 40, 6, place[0], place[1]));
    const MakeModel grid = lattice(13, 1, place[0], place[1], isWhole).maker();
    for (const Polygon& polygon : kPolygons) {
      for (const double level : {-1.0, 5.0, 9.75}) {
        EXPECT_GT(expectSameLevel(ground, level, moved(polygon, place[0], place[1])).pieces.size(), 5u);
        EXPECT_GT(expectSameLevel(grid, level, moved(polygon, place[0], place[1])).pieces.size(), 5u);
      }
    }
  }
}

TEST(LevelWithinABoundary, AgreesWithTheSlowComparisonOnImports) {
  for (const auto& place : kPlaces) {
    for (const auto& shape : kShapes) {
      const MakeModel own = lattice(14, 1, place[0], place[1], shape).maker();
      for (const Polygon& polygon : kPolygons) {
        expectSameLevel(own, 5.0, moved(polygon, place[0], place[1]));
      }
    }
  }
}

}  // namespace
