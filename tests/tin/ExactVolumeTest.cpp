// Volumes without sampling, against rational arithmetic on small networks, against quadrature, and by what must hold
// between any results: exchange, addition, splitting.
#include <cmath>
#include <limits>
#include <memory>
#include <numbers>

#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/surface/RangePoint.h>
#include <OrvikDTMAlgorithm/surface/RecordLayout.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/Facets.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/Triangle3.h>
#include <gtest/gtest.h>

#include "Inputs.h"
#include "RationalOverlay.h"
#include "TINSupport.h"

namespace {

using support::OwnedPoints;
using Boundary = std::vector<TPoint>;
using Faces = std::vector<std::array<int, 3>>;

constexpr double kFarEasting = 38500000.0;
constexpr double kFarNorthing = 3400000.0;

// A network and the points that it refers to.
struct Network {
  OwnedPoints points;
  std::unique_ptr<CEType> tin;
};

Network constructed(const inputs::Positions& positions) {
  Network n;
  n.points = OwnedPoints(positions);
  n.tin = support::triangulate(n.points);
  return n;
}

Network ofFaces(const inputs::Positions& positions, const Faces& faces) {
  Network n;
  n.points = OwnedPoints(positions);
  n.tin.reset(CEType::initCETypeFromFaces(n.points.pointers(), faces));
  return n;
}

std::vector<std::array<TPoint*, 3>> trianglesOf(const CEType& tin) {
  std::vector<std::array<TPoint*, 3>> result;
  for (int t = 1; t <= support::triangleCount(tin); ++t) {
    if (const auto corners = support::cornersOf(tin, t)) result.push_back(*corners);
  }
  return result;
}

void setBoundary(CEType& tin, const Boundary& boundary) {
  std::vector<RangePoint> range;
  for (const TPoint& p : boundary) range.push_back({"", p.getY(), p.getX(), 0});
  std::vector<RangePoint*> pointers;
  for (RangePoint& p : range) pointers.push_back(&p);
  tin.setRangeList(pointers);
}

struct Volumes {
  double fillArea;
  double cutArea;
  double fillSpatial;
  double cutSpatial;
  double fill;
  double cut;
  double coverage;
};

Volumes numbersOf(const FillCutResult& r, double coverage) {
  return {r.getFillTwoDArea(),
          r.getCutTwoDArea(),
          r.getFillThreeDArea(),
          r.getCutThreeDArea(),
          r.getFillVolume(),
          r.getCutVolume(),
          coverage};
}

Volumes exactVolumes(const Network& measured, const Network& reference) {
  double coverage = -1;
  const std::unique_ptr<FillCutResult> r(measured.tin->getFillCutExact(reference.tin.get(), &coverage));
  return numbersOf(*r, coverage);
}

Volumes exactVolumes(const Network& measured, double level) {
  double coverage = -1;
  const std::unique_ptr<FillCutResult> r(measured.tin->getFillCutExact(level, &coverage));
  return numbersOf(*r, coverage);
}

void expectZeros(const Volumes& v) {
  EXPECT_EQ(v.fillArea, 0.0);
  EXPECT_EQ(v.cutArea, 0.0);
  EXPECT_EQ(v.fillSpatial, 0.0);
  EXPECT_EQ(v.cutSpatial, 0.0);
  EXPECT_EQ(v.fill, 0.0);
  EXPECT_EQ(v.cut, 0.0);
}

void expectRational(const Volumes& v, const exact::FillCut& r, double relative) {
  const auto of = [](const exact::Rational& q) { return static_cast<double>(q); };
  const double area = relative * of(r.coverage);
  const double volume = relative * (of(r.fillVolume) + of(r.cutVolume));
  EXPECT_NEAR(v.coverage, of(r.coverage), area);
  EXPECT_NEAR(v.fillArea, of(r.fillArea), area);
  EXPECT_NEAR(v.cutArea, of(r.cutArea), area);
  EXPECT_NEAR(v.fill, of(r.fillVolume), volume);
  EXPECT_NEAR(v.cut, of(r.cutVolume), volume);
}

void expectNear(const Volumes& a, const Volumes& b, double relative) {
  const double area = relative * (a.coverage + 1);
  const double volume = relative * (a.fill + a.cut + 1);
  EXPECT_NEAR(a.coverage, b.coverage, area);
  EXPECT_NEAR(a.fillArea, b.fillArea, area);
  EXPECT_NEAR(a.cutArea, b.cutArea, area);
  EXPECT_NEAR(a.fillSpatial, b.fillSpatial, area);
  EXPECT_NEAR(a.cutSpatial, b.cutSpatial, area);
  EXPECT_NEAR(a.fill, b.fill, volume);
  EXPECT_NEAR(a.cut, b.cut, volume);
}

inputs::Positions lattice(std::uint64_t seed, int size, int side, double x0, double y0) {
  inputs::Random random(seed);
  inputs::Positions result;
  for (int i = 0; i < size; ++i) {
    result.push_back({x0 + static_cast<double>(random.between(0, side)),
                      y0 + static_cast<double>(random.between(0, side)), static_cast<double>(random.between(0, 6))});
  }
  return result;
}

inputs::Positions moved(inputs::Positions positions, double dx, double dy, double dz) {
  for (auto& p : positions) p = {p[0] + dx, p[1] + dy, p[2] + dz};
  return positions;
}

Boundary moved(Boundary boundary, double dx, double dy) {
  for (TPoint& p : boundary) p = {p.getX() + dx, p.getY() + dy, 0};
  return boundary;
}

// A star-shaped polygon, concave as a rule.
Boundary randomBoundary(std::uint64_t seed, int corners, double x, double y, double radius) {
  inputs::Random random(seed);
  Boundary result;
  for (int i = 0; i < corners; ++i) {
    const double angle = 2 * std::numbers::pi * i / corners;
    const double r = radius * (0.2 + 0.8 * random.unit());
    result.emplace_back(x + std::round(r * std::cos(angle) * 16) / 16, y + std::round(r * std::sin(angle) * 16) / 16,
                        0);
  }
  return result;
}

// The polygon as a hole in a rectangle around it, by a seam that runs to and fro.
Boundary complement(const Boundary& boundary, double x0, double y0, double x1, double y1) {
  Boundary result{{x0, y0, 0}, {x1, y0, 0}, {x1, y1, 0}, {x0, y1, 0}, {x0, y0, 0}};
  result.insert(result.end(), boundary.begin(), boundary.end());
  result.push_back(boundary.front());
  return result;
}

const double kOffsets[][2] = {{0, 0}, {500000, 3000000}, {kFarEasting, kFarNorthing}};

TEST(ExactVolume, AgreesWithRationalArithmeticOnLattices) {
  for (std::uint64_t seed = 1; seed <= 12; ++seed) {
    SCOPED_TRACE(seed);
    const double* offset = kOffsets[seed % 3];
    const Network a = constructed(lattice(seed, 14, 12, offset[0], offset[1]));
    const Network b = constructed(lattice(seed + 100, 14, 12, offset[0] + static_cast<double>(seed % 5),
                                          offset[1] - static_cast<double>(seed % 4)));
    expectRational(exactVolumes(a, b), exact::fillCut(trianglesOf(*a.tin), trianglesOf(*b.tin)), 1e-12);
  }
}

TEST(ExactVolume, AgreesWithRationalArithmeticWithinABoundary) {
  for (std::uint64_t seed = 1; seed <= 9; ++seed) {
    SCOPED_TRACE(seed);
    const double* offset = kOffsets[seed % 3];
    const Network a = constructed(lattice(seed, 10, 12, offset[0], offset[1]));
    const Network b = constructed(lattice(seed + 100, 10, 12, offset[0], offset[1]));
    Boundary boundary = moved(randomBoundary(seed, 9, 6, 6, 7), offset[0], offset[1]);
    if (seed % 2 == 0) std::reverse(boundary.begin(), boundary.end());
    const exact::FillCut expected = exact::fillCut(trianglesOf(*a.tin), trianglesOf(*b.tin), boundary);
    setBoundary(*a.tin, boundary);
    expectRational(exactVolumes(a, b), expected, 1e-12);
    boundary.push_back(boundary.front());
    setBoundary(*a.tin, boundary);
    expectRational(exactVolumes(a, b), expected, 1e-12);
  }
}

TEST(ExactVolume, AgreesWithTheIntegralOfTheHeightDifference) {
  const Network a = constructed(inputs::randomMillimetres(1, 60, 30, 0, 0));
  const Network b = constructed(inputs::randomMillimetres(2, 60, 30, 3, -4));
  const Volumes v = exactVolumes(a, b);
  constexpr double kStep = 0.05;
  double sum = 0;
  double fill = 0;
  for (double y = kStep / 2 - 4; y < 30; y += kStep) {
    for (double x = kStep / 2; x < 33; x += kStep) {
      const double d = a.tin->getHeight(x, y) - b.tin->getHeight(x, y);
      if (std::fabs(d) > 1e6) continue;  // outside one of the two
      sum += d * kStep * kStep;
      if (d < 0) fill -= d * kStep * kStep;
    }
  }
  EXPECT_NEAR(v.cut - v.fill, sum, 2e-3 * (v.cut + v.fill));
  EXPECT_NEAR(v.fill, fill, 2e-3 * (v.cut + v.fill));
}

TEST(ExactVolume, IdenticalNetworksGiveZeros) {
  for (const auto& offset : kOffsets) {
    const auto positions = inputs::randomMillimetres(3, 300, 200, offset[0], offset[1]);
    const Network a = constructed(positions);
    const Network b = constructed(positions);
    const Volumes v = exactVolumes(a, b);
    expectZeros(v);
    EXPECT_NEAR(v.coverage, a.tin->getArea2D(), 1e-9 * v.coverage);
    expectZeros(exactVolumes(a, a));
  }
}

// The same faces, numbered from other corners and turned the other way.
TEST(ExactVolume, IdenticalTrianglesInAnotherOrderGiveZeros) {
  const inputs::Positions p{{0.1, 0.2, 3.3}, {7.7, 0.3, 4.1}, {6.9, 8.8, 5.7}, {0.7, 9.1, 2.9}};
  const Network a = ofFaces(p, {{0, 1, 2}, {0, 2, 3}});
  const Network b = ofFaces(p, {{3, 2, 0}, {2, 1, 0}});
  expectZeros(exactVolumes(a, b));
}

TEST(ExactVolume, CopyRaisedGivesAreaTimesRise) {
  for (const auto& offset : kOffsets) {
    auto positions = inputs::randomMillimetres(4, 2000, 500, offset[0], offset[1]);
    for (auto& p : positions) p[2] = std::round(p[2] * 1024) / 1024;
    for (const double rise : {1.0, 0.25, 0.0009765625}) {
      const Network a = constructed(positions);
      const Network b = constructed(moved(positions, 0, 0, rise));
      exact::Rational area = 0;
      for (const auto& t : trianglesOf(*a.tin)) area += abs(exact::doubleArea(*t[0], *t[1], *t[2])) / 2;
      const double plan = static_cast<double>(area);
      const Volumes fill = exactVolumes(a, b);
      EXPECT_NEAR(fill.fill, plan * rise, 1e-12 * plan * rise);
      EXPECT_NEAR(fill.fillArea, plan, 1e-12 * plan);
      EXPECT_NEAR(fill.coverage, plan, 1e-12 * plan);
      EXPECT_NEAR(fill.fillSpatial, a.tin->getArea3D(), 1e-9 * plan);
      EXPECT_EQ(fill.cut, 0.0);
      EXPECT_EQ(fill.cutArea, 0.0);
      const Volumes cut = exactVolumes(b, a);
      EXPECT_NEAR(cut.cut, plan * rise, 1e-12 * plan * rise);
      EXPECT_EQ(cut.fill, 0.0);
    }
  }
}

TEST(ExactVolume, ExchangingTheSurfacesExchangesFillAndCut) {
  for (std::uint64_t seed = 1; seed <= 6; ++seed) {
    const double* offset = kOffsets[seed % 3];
    const Network a = constructed(inputs::randomMillimetres(seed, 400, 100, offset[0], offset[1]));
    const Network b = constructed(inputs::randomMillimetres(seed + 50, 250, 90, offset[0] + 20, offset[1] - 15));
    const Volumes ab = exactVolumes(a, b);
    const Volumes ba = exactVolumes(b, a);
    EXPECT_GT(ab.fill, 100.0);
    EXPECT_GT(ab.cut, 100.0);
    EXPECT_NEAR(ab.fill, ba.cut, 1e-12 * (ab.fill + ab.cut));
    EXPECT_NEAR(ab.cut, ba.fill, 1e-12 * (ab.fill + ab.cut));
    EXPECT_NEAR(ab.fillArea, ba.cutArea, 1e-12 * ab.coverage);
    EXPECT_NEAR(ab.cutArea, ba.fillArea, 1e-12 * ab.coverage);
    EXPECT_NEAR(ab.coverage, ba.coverage, 1e-12 * ab.coverage);
    EXPECT_NEAR(ab.coverage, ab.fillArea + ab.cutArea, 1e-12 * ab.coverage);
  }
}

TEST(ExactVolume, BoundaryAndItsComplementAddUpToTheWhole) {
  for (std::uint64_t seed = 1; seed <= 24; ++seed) {
    SCOPED_TRACE(seed);
    const double* offset = kOffsets[seed % 3];
    const Network a = constructed(inputs::randomMillimetres(seed, 200, 100, offset[0], offset[1]));
    const Network b = constructed(inputs::randomMillimetres(seed + 50, 200, 100, offset[0], offset[1]));
    const int corners = seed % 4 == 0 ? 900 : 3 + static_cast<int>(seed);
    const Boundary inner = moved(randomBoundary(seed, corners, 50, 50, 60), offset[0], offset[1]);
    const Boundary outer = complement(inner, offset[0] - 50, offset[1] - 50, offset[0] + 150, offset[1] + 150);
    const Volumes whole = exactVolumes(a, b);
    const Volumes wholeAtLevel = exactVolumes(a, 9.0);
    setBoundary(*a.tin, inner);
    Volumes sum = exactVolumes(a, b);
    Volumes sumAtLevel = exactVolumes(a, 9.0);
    EXPECT_GT(sum.coverage, 100.0);
    EXPECT_LT(sum.coverage, whole.coverage);
    setBoundary(*a.tin, outer);
    const auto add = [](Volumes& to, const Volumes& v) {
      to = {to.fillArea + v.fillArea,     to.cutArea + v.cutArea, to.fillSpatial + v.fillSpatial,
            to.cutSpatial + v.cutSpatial, to.fill + v.fill,       to.cut + v.cut,
            to.coverage + v.coverage};
    };
    add(sum, exactVolumes(a, b));
    add(sumAtLevel, exactVolumes(a, 9.0));
    expectNear(whole, sum, 1e-11);
    expectNear(wholeAtLevel, sumAtLevel, 1e-11);
  }
}

// Centroids and points on sides, with the heights of the planes, change nothing.
TEST(ExactVolume, SplittingTrianglesChangesNothing) {
  for (const auto& offset : kOffsets) {
    const auto positions = inputs::randomMillimetres(5, 120, 60, offset[0], offset[1]);
    const Network a = constructed(positions);
    const Network b = constructed(inputs::randomMillimetres(6, 120, 60, offset[0] + 5, offset[1] + 5));
    inputs::Positions fine;
    Faces faces;
    for (const auto& t : trianglesOf(*a.tin)) {
      const int base = static_cast<int>(fine.size());
      for (const TPoint* p : t) fine.push_back({p->getX(), p->getY(), p->getZ()});
      const auto between = [&](double u, double v, double w) {
        inputs::Position p{};
        for (std::size_t k = 0; k < 3; ++k) {
          const auto i = static_cast<std::size_t>(base);
          p[k] = fine[i][k] + (fine[i + 1][k] - fine[i][k]) * v / (u + v + w) +
                 (fine[i + 2][k] - fine[i][k]) * w / (u + v + w);
        }
        return p;
      };
      fine.push_back(between(1, 1, 1));
      fine.push_back(between(2, 1, 0));
      faces.insert(faces.end(), {{base, base + 4, base + 3},
                                 {base + 4, base + 1, base + 3},
                                 {base + 1, base + 2, base + 3},
                                 {base + 2, base, base + 3}});
    }
    const Network split = ofFaces(fine, faces);
    ASSERT_EQ(support::triangleCount(*split.tin), 4 * support::triangleCount(*a.tin));
    // Where eastings have few decimals, the points inserted lie beside their sides.
    const double relative = offset[0] > 1e7 ? 1e-8 : 1e-10;
    expectNear(exactVolumes(a, b), exactVolumes(split, b), relative);
    const Volumes swapped = exactVolumes(b, a);
    expectNear(swapped, exactVolumes(b, split), relative);
    expectNear(exactVolumes(a, 8.0), exactVolumes(split, 8.0), relative);
    expectZeros(exactVolumes(a, split));
  }
}

TEST(ExactVolume, LevelAgreesWithTheVolumeOfWholeTriangles) {
  for (std::uint64_t seed = 1; seed <= 4; ++seed) {
    const double* offset = kOffsets[seed % 3];
    const Network a = constructed(inputs::randomMillimetres(seed, 500, 200, offset[0], offset[1]));
    for (const double level : {-5.0, 3.0, 10.0, 12.345, 40.0}) {
      const std::unique_ptr<FillCutResult> other(a.tin->getFillCut(level));
      expectNear(numbersOf(*other, a.tin->getArea2D()), exactVolumes(a, level), 1e-9);
    }
  }
}

// Triangles of 10 km, some millimetres wide, whole and split, where Heron's formula is off by up to a hundredth.
TEST(ExactVolume, LevelAgreesWithRationalArithmeticOnSlivers) {
  for (const double* offset : kOffsets) {
    SCOPED_TRACE(offset[0]);
    inputs::Random random(14);
    inputs::Positions p;
    Faces faces;
    for (int i = 0; i < 30; ++i) {
      const auto height = [&random] { return static_cast<double>(random.between(0, 20)); };
      const double x = offset[0] + static_cast<double>(random.between(2000, 8000));
      const double y = offset[1] + i;
      p.push_back({offset[0], y, height()});
      p.push_back({offset[0] + 10000, y, height()});
      p.push_back({x, y + 0.001 * static_cast<double>(random.between(1, 3)), height()});
      faces.push_back({3 * i, 3 * i + 1, 3 * i + 2});
    }
    const Network slivers = ofFaces(p, faces);
    for (const double level : {-1.0, 7.0, 10.0, 21.0}) {
      const inputs::Positions around{{offset[0] - 100, offset[1] - 100, level},
                                     {offset[0] + 90000, offset[1] - 100, level},
                                     {offset[0] - 100, offset[1] + 90000, level}};
      const Network plane = ofFaces(around, {{0, 1, 2}});
      expectRational(exactVolumes(slivers, level), exact::fillCut(trianglesOf(*slivers.tin), trianglesOf(*plane.tin)),
                     1e-12);
    }
  }
}

// Infinite where that is infinite, no number where that is none.
TEST(ExactVolume, LevelsBeyondAllHeightsGiveTheKindOfTheVolumeOfWholeTriangles) {
  const Network a = constructed(inputs::randomMillimetres(6, 60, 50, 0, 0));
  const auto sameKind = [](double v, double w) {
    return std::isfinite(w) ? std::fabs(v - w) < 1e-6 : !(v < w || v > w);
  };
  const double infinity = std::numeric_limits<double>::infinity();
  for (const double level : {infinity, -infinity, 1e308, -1e308, std::nan("")}) {
    SCOPED_TRACE(level);
    const std::unique_ptr<FillCutResult> other(a.tin->getFillCut(level));
    const Volumes expected = numbersOf(*other, 0);
    for (const bool limited : {false, true}) {
      if (limited) setBoundary(*a.tin, {{-90, -90, 0}, {300, -80, 0}, {310, 290, 0}, {-80, 300, 0}, {20, 20, 0}});
      const Volumes v = exactVolumes(a, level);
      EXPECT_EQ(std::isnan(v.fill), std::isnan(expected.fill));
      EXPECT_EQ(std::isnan(v.cut), std::isnan(expected.cut));
      EXPECT_EQ(std::isinf(v.fill), std::isinf(expected.fill));
      EXPECT_EQ(std::isinf(v.cut), std::isinf(expected.cut));
      EXPECT_EQ(std::isnan(v.fillSpatial + v.fillArea), std::isnan(expected.fillSpatial + expected.fillArea));
      EXPECT_EQ(std::isnan(v.cutSpatial + v.cutArea), std::isnan(expected.cutSpatial + expected.cutArea));
      if (!limited) {
        EXPECT_TRUE(sameKind(v.fillArea, expected.fillArea) && sameKind(v.cutArea, expected.cutArea));
      }
      EXPECT_GT(v.coverage, 0.0);
      EXPECT_TRUE(std::isfinite(v.coverage));
    }
    a.tin->setRangeList({});
  }
}

TEST(ExactVolume, LevelAndAFlatSurfaceAgree) {
  const Network a = constructed(inputs::randomMillimetres(8, 300, 100, 0, 0));
  const Network flat = ofFaces({{-50, -50, 9}, {200, -50, 9}, {200, 200, 9}, {-50, 200, 9}}, {{0, 1, 2}, {0, 2, 3}});
  expectNear(exactVolumes(a, 9.0), exactVolumes(a, flat), 1e-12);
  setBoundary(*a.tin, randomBoundary(8, 40, 50, 50, 55));
  expectNear(exactVolumes(a, 9.0), exactVolumes(a, flat), 1e-12);
  const Volumes fromBelow = exactVolumes(flat, a);  // the boundary is that of the other
  EXPECT_GT(fromBelow.coverage, exactVolumes(a, flat).coverage);
}

TEST(ExactVolume, TriangleInTheLevelIsFillWithoutVolume) {
  const Network a = ofFaces({{0, 0, 5}, {6, 0, 5}, {0, 6, 5}}, {{0, 1, 2}});
  const Volumes v = exactVolumes(a, 5.0);
  EXPECT_EQ(v.fillArea, 18.0);
  EXPECT_EQ(v.fillSpatial, 18.0);
  EXPECT_EQ(v.fill, 0.0);
  EXPECT_EQ(v.cutArea, 0.0);
  EXPECT_EQ(v.coverage, 18.0);
}

TEST(ExactVolume, TriangleThatTouchesTheLevelIsNotSplit) {
  const Network a = ofFaces({{0, 0, 5}, {6, 0, 8}, {0, 6, 9}}, {{0, 1, 2}});
  const Volumes v = exactVolumes(a, 5.0);
  EXPECT_EQ(v.fillArea, 0.0);
  EXPECT_DOUBLE_EQ(v.cut, 18.0 * 7 / 3);
}

TEST(ExactVolume, CoincidenceEndsAtATenthOfAMicrometre) {
  const inputs::Positions p{{0, 0, 1}, {10, 0, 1}, {0, 10, 1}};
  const Network a = ofFaces(p, {{0, 1, 2}});
  const Network within = ofFaces(moved(p, 0, 0, 0.9e-7), {{0, 1, 2}});
  const Network beyond = ofFaces(moved(p, 0, 0, 1.1e-7), {{0, 1, 2}});
  expectZeros(exactVolumes(a, within));
  EXPECT_EQ(exactVolumes(a, within).coverage, 50.0);
  EXPECT_NEAR(exactVolumes(a, beyond).fill, 50 * 1.1e-7, 1e-13);
  EXPECT_EQ(exactVolumes(a, beyond).fillArea, 50.0);
}

TEST(ExactVolume, AreasAlongTheSurfaceAreThoseOfThisOne) {
  const Network slope = ofFaces({{0, 0, 0}, {4, 0, 3}, {0, 4, 0}}, {{0, 1, 2}});
  const Network flat = ofFaces({{0, 0, -1}, {4, 0, -1}, {0, 4, -1}}, {{0, 1, 2}});
  EXPECT_DOUBLE_EQ(exactVolumes(slope, flat).cutSpatial, 10.0);
  EXPECT_DOUBLE_EQ(exactVolumes(flat, slope).fillSpatial, 8.0);
}

TEST(ExactVolume, DisjointNestedAndTouchingNetworks) {
  const inputs::Positions square{{0, 0, 2}, {10, 0, 2}, {10, 10, 2}, {0, 10, 2}};
  const Faces halves{{0, 1, 2}, {0, 2, 3}};
  const Network a = ofFaces(square, halves);
  for (const auto& [dx, coverage] : {std::pair{30.0, 0.0}, std::pair{10.0, 0.0}, std::pair{9.0, 10.0}}) {
    const Volumes v = exactVolumes(a, ofFaces(moved(square, dx, 0, 3), halves));
    EXPECT_NEAR(v.coverage, coverage, 1e-12);
    EXPECT_NEAR(v.fill, coverage * 3, 1e-12);
  }
  const Network inner = ofFaces({{3, 3, 0}, {6, 3, 0}, {6, 6, 0}, {3, 6, 0}}, halves);
  EXPECT_DOUBLE_EQ(exactVolumes(a, inner).cut, 18.0);
  EXPECT_DOUBLE_EQ(exactVolumes(inner, a).fill, 18.0);
  EXPECT_DOUBLE_EQ(exactVolumes(inner, a).coverage, 9.0);
}

TEST(ExactVolume, HolesAndIslands) {
  // A ring around a hole, and an island apart.
  const inputs::Positions p{{0, 0, 1},   {30, 0, 1},  {30, 30, 1}, {0, 30, 1}, {10, 10, 1}, {20, 10, 1},
                            {20, 20, 1}, {10, 20, 1}, {50, 0, 1},  {60, 0, 1}, {50, 10, 1}};
  const Network ring =
      ofFaces(p, {{0, 1, 5}, {0, 5, 4}, {1, 2, 6}, {1, 6, 5}, {2, 3, 7}, {2, 7, 6}, {3, 0, 4}, {3, 4, 7}, {8, 9, 10}});
  const Network base = ofFaces({{-10, -10, 0}, {90, -10, 0}, {-10, 90, 0}}, {{0, 1, 2}});
  const Volumes v = exactVolumes(ring, base);
  EXPECT_NEAR(v.coverage, 850.0, 1e-10);
  EXPECT_NEAR(v.cut, 850.0, 1e-10);
  setBoundary(*ring.tin, {{5, 5, 0}, {55, 5, 0}, {55, 15, 0}, {5, 15, 0}});
  EXPECT_NEAR(exactVolumes(ring, base).cut, 250.0 - 50.0 + 25.0 - 12.5 + 0.0, 1e-10);
}

TEST(ExactVolume, BoundaryThatCrossesItselfCountsEvenOdd) {
  const Network a = ofFaces({{0, 0, 1}, {20, 0, 1}, {20, 20, 1}, {0, 20, 1}}, {{0, 1, 2}, {0, 2, 3}});
  const struct {
    Boundary boundary;
    double area;
  } rows[] = {
      {{{0, 0, 0}, {10, 10, 0}, {10, 0, 0}, {0, 10, 0}}, 50.0},  // bow tie
      {{{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}, {0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}}, 0.0},  // twice
      {{{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}, {0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}}, 84.0},  // a hole
      {{{0, 0, 0}, {10, 0, 0}, {20, 0, 0}}, 0.0},                                                            // a line
      {{{0, 0, 0}, {5, 0, 0}, {5, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 0, 0}}, 50.0},                         // repeats
      {{{-10, -10, 0}, {30, -10, 0}, {30, 10, 0}, {-10, 10, 0}}, 200.0},  // partly outside the surface
      {{{30, 30, 0}, {40, 30, 0}, {40, 40, 0}}, 0.0},                     // wholly outside
      {{{-99, -99, 0}, {99, -99, 0}, {99, 99, 0}, {-99, 99, 0}}, 400.0},  // wholly around
  };
  for (const auto& row : rows) {
    setBoundary(*a.tin, row.boundary);
    const Volumes v = exactVolumes(a, -1.0);
    EXPECT_NEAR(v.coverage, row.area, 1e-12);
    EXPECT_NEAR(v.cut, 2 * row.area, 1e-12);
  }
}

TEST(ExactVolume, TwoBoundaryPointsLimitNothing) {
  const Network a = ofFaces({{0, 0, 1}, {20, 0, 1}, {20, 20, 1}}, {{0, 1, 2}});
  setBoundary(*a.tin, {{0, 0, 0}, {1, 1, 0}});
  EXPECT_EQ(exactVolumes(a, 0.0).coverage, 200.0);
}

TEST(ExactVolume, BoundaryAndDrawingListStayAsTheyAre) {
  const Network a = constructed(inputs::randomMillimetres(9, 60, 40, 0, 0));
  const Network b = constructed(inputs::randomMillimetres(10, 60, 40, 0, 0));
  const std::unique_ptr<FillCutResult> drawn(a.tin->getFillCut(9.0));
  const auto before = a.tin->getTriangle3List();
  const Boundary boundary = randomBoundary(3, 12, 20, 20, 15);
  setBoundary(*a.tin, boundary);
  exactVolumes(a, b);
  exactVolumes(a, 5.0);
  EXPECT_EQ(a.tin->getTriangle3List(), before);
  ASSERT_EQ(a.tin->getRangeList().size(), boundary.size());
  for (std::size_t i = 0; i < boundary.size(); ++i) EXPECT_EQ(*a.tin->getRangeList()[i], boundary[i]);
}

TEST(ExactVolume, RecordHasTheNetworksOwnTotalsAndNoNames) {
  const Network a = constructed(inputs::randomMillimetres(9, 60, 40, 0, 0));
  const Network b = constructed(inputs::randomMillimetres(10, 60, 40, 0, 0));
  for (FillCutResult* r : {a.tin->getFillCutExact(b.tin.get()), a.tin->getFillCutExact(9.0)}) {
    const std::unique_ptr<FillCutResult> result(r);
    EXPECT_EQ(RecordLayout::twoDArea(*result), a.tin->getArea2D());
    EXPECT_EQ(RecordLayout::threeDArea(*result), a.tin->getArea3D());
    EXPECT_EQ(RecordLayout::perimeterTwoD(*result), a.tin->getTotalLength2D());
    EXPECT_EQ(RecordLayout::perimeterThreeD(*result), a.tin->getTotalLength3D());
    EXPECT_EQ(RecordLayout::fillPerimeterTwoD(*result), 0.0);
    EXPECT_EQ(RecordLayout::fillPerimeterThreeD(*result), 0.0);
    EXPECT_EQ(RecordLayout::cutPerimeterTwoD(*result), 0.0);
    EXPECT_EQ(RecordLayout::cutPerimeterThreeD(*result), 0.0);
    EXPECT_STREQ(RecordLayout::surfaceName(*result), "");
    EXPECT_STREQ(RecordLayout::refSurfaceName(*result), "");
  }
}

TEST(ExactVolume, NothingIsComparedWithNothing) {
  const Network a = ofFaces({{0, 0, 1}, {20, 0, 1}, {20, 20, 1}}, {{0, 1, 2}});
  double coverage = 7;
  EXPECT_EQ(a.tin->getFillCutExact(nullptr, &coverage), nullptr);
  EXPECT_EQ(coverage, 0.0);
  Network empty;
  empty.tin = std::make_unique<CEType>(nullptr, nullptr, nullptr);
  expectZeros(exactVolumes(empty, a));
  expectZeros(exactVolumes(a, empty));
  expectZeros(exactVolumes(empty, 3.0));
  EXPECT_EQ(exactVolumes(a, empty).coverage, 0.0);
}

TEST(ExactVolume, WhatDoesNotExistIsFlatOrIsNoNumberIsSkipped) {
  const double nan = std::nan("");
  const double infinite = std::numeric_limits<double>::infinity();
  const inputs::Positions p{{0, 0, 1},   {20, 0, 1},  {20, 20, 1}, {10, 0, 1},       {30, 0, 1},
                            {nan, 5, 1}, {5, nan, 1}, {5, 9, nan}, {infinite, 9, 1}, {9, 9, -infinite}};
  Faces faces{{0, 1, 2}, {0, 3, 1}, {1, 3, 4}};
  for (int odd = 5; odd < 10; ++odd) faces.push_back({0, 1, odd});
  const OwnedPoints points(p);
  support::Tables tables;
  for (const auto& face : faces) {
    const int edge = static_cast<int>(tables.edges.size()) + 1;
    for (std::size_t i = 0; i < 3; ++i) tables.edges.push_back({face[i] + 1, face[(i + 1) % 3] + 1, 0, 0});
    tables.triangles.push_back({edge, edge + 1, edge + 2});
  }
  tables.triangles.push_back({0, 1, 2});
  tables.triangles.push_back({1, 999, 2});
  tables.triangles.push_back({-4, 1, 2});
  Network broken;
  broken.tin = makeTIN(points, tables);
  const Network base = ofFaces({{-10, -10, 0}, {90, -10, 0}, {-10, 90, 0}}, {{0, 1, 2}});
  EXPECT_DOUBLE_EQ(exactVolumes(broken, base).cut, 200.0);
  EXPECT_DOUBLE_EQ(exactVolumes(base, broken).fill, 200.0);
  EXPECT_DOUBLE_EQ(exactVolumes(broken, 0.0).cut, 200.0);
  setBoundary(*broken.tin, {{-5, -5, 0}, {nan, 3, 0}, {50, -5, 0}, {3, infinite, 0}, {50, 50, 0}, {-5, 50, 0}});
  EXPECT_DOUBLE_EQ(exactVolumes(broken, 0.0).cut, 200.0);
  setBoundary(*broken.tin, {{nan, nan, 0}, {nan, nan, 0}, {nan, nan, 0}});
  expectZeros(exactVolumes(broken, 0.0));
}

// Slivers whose area is lost in rounding must not come out with wild heights.
TEST(ExactVolume, SliversCannotSpoilTheSum) {
  inputs::Random random(5);
  inputs::Positions p{{0, 0, 1}, {100, 0, 1}, {100, 100, 1}, {0, 100, 1}};
  Faces faces{{0, 1, 2}, {0, 2, 3}};
  for (int i = 0; i < 300; ++i) {
    const double x = 1 + 98 * random.unit();
    const double t = random.unit();
    const int base = static_cast<int>(p.size());
    p.push_back({x, x / 3, 0});
    p.push_back({x + 30, x / 3 + 30 * 0.7, 50});
    p.push_back({x + 30 * t, x / 3 + 30 * 0.7 * t, -50});  // on the line but for the rounding
    faces.push_back({base, base + 1, base + 2});
  }
  const Network slivers = ofFaces(p, faces);
  const Network base =
      ofFaces({{-900, -900, 0}, {900, -900, 0}, {-900, 900, 0}, {900, 900, 0}}, {{0, 1, 2}, {1, 2, 3}});
  const Volumes v = exactVolumes(slivers, base);
  EXPECT_NEAR(v.cut, 10000.0, 1e-8);
  EXPECT_NEAR(v.fill, 0.0, 1e-8);
}

// A needle far thinner than the last digit of what crosses it: its plane is steeper than any rounding can follow.
TEST(ExactVolume, NeedlesThinnerThanRoundingCannotSpoilTheSum) {
  inputs::Positions ground = inputs::randomMillimetres(12, 900, 100, -50, -50);
  for (auto& p : ground) p = {p[0] + p[1] / 3, p[1] - p[0] / 7, 0};
  const Network base = constructed(ground);
  for (const double thin : {1e-14, 1e-16, 1e-18, 1e-25, 1e-50, 1e-150, 1e-250}) {
    SCOPED_TRACE(thin);
    const Network needle = ofFaces(
        {{-99, -99, 1}, {99, -99, 1}, {99, 99, 1}, {-99, 99, 1}, {-50, thin, 0}, {1, 2 * thin, 50}, {50, -thin, 0}},
        {{0, 1, 2}, {0, 2, 3}, {4, 6, 5}});
    const Volumes v = exactVolumes(needle, base);
    EXPECT_NEAR(v.cut, v.cutArea, 1e-7);
    EXPECT_NEAR(v.fill, 0.0, 1e-8);
    EXPECT_NEAR(exactVolumes(base, needle).fill, v.cut, 1e-8);
  }
}

// What rounding puts beside a triangle must not be carried away along its slope.
TEST(ExactVolume, HeightsOnATriangleStayBetweenThoseOfItsCorners) {
  const Network steep = ofFaces({{0, 0, 10}, {1, 0, 60}, {1, 1e-6, -40}}, {{0, 1, 2}});
  detail::Facet facet{};
  ASSERT_TRUE(detail::Facet::make(*steep.tin, 1, facet));
  EXPECT_NEAR(facet.rise(0.5, 0, {0, 0}), 25.0, 1e-9);
  EXPECT_EQ(facet.rise(0.5, 1e-3, {0, 0}), -50.0);
  EXPECT_EQ(facet.rise(0.5, -1e-3, {0, 0}), 50.0);
}

TEST(ExactVolume, CoordinatesOfAnySizeComeToAnEnd) {
  for (const double size : {1e-200, 1e-20, 1e20, 1e70, 1e100, 1e200, 1e308}) {
    const Network a =
        ofFaces({{0, 0, size}, {size, 0, 0}, {0, size, 0}, {3, 4, 5}, {4, 4, 5}, {3, 5, 5}}, {{0, 1, 2}, {3, 4, 5}});
    const Network b = ofFaces({{0, 0, 0}, {size, 0, size}, {0, size, 0}, {3, 4, 5}}, {{0, 1, 2}, {0, 3, 1}});
    const Volumes v = exactVolumes(a, b);
    EXPECT_TRUE(std::isfinite(v.fill + v.cut + v.coverage)) << size;
    setBoundary(*a.tin, {{-size, -size, 0}, {size, -size / 2, 0}, {7, 7, 0}, {0, size, 0}});
    EXPECT_TRUE(std::isfinite(exactVolumes(a, b).coverage)) << size;
    EXPECT_TRUE(std::isfinite(exactVolumes(a, 3.0).coverage)) << size;
  }
}

}  // namespace
