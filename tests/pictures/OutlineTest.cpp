#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include "pictures/Chains.h"
#include "pictures/Model3D.h"
#include "pictures/Outline.h"
#include "pictures/Simplify.h"
#include "pictures/Svg.h"
#include "pictures/Triangles.h"

namespace {

using pictures::Outline;
using pictures::RasterPoint;
using Loops = std::vector<std::vector<RasterPoint>>;

constexpr int kSide = 12;

std::vector<RasterPoint> square(int i, int j) { return {{i, j}, {i + 1, j}, {i + 1, j + 1}, {i, j + 1}}; }

// Even-odd, at the middle of a square.
bool covers(const Loops& loops, int i, int j) {
  bool inside = false;
  for (const auto& loop : loops) {
    for (std::size_t k = 0; k < loop.size(); ++k) {
      const RasterPoint& a = loop[k];
      const RasterPoint& b = loop[(k + 1) % loop.size()];
      if ((a.y > j) != (b.y > j) && a.x > i) inside = !inside;
    }
  }
  return inside;
}

std::size_t corners(const Loops& loops) {
  std::size_t count = 0;
  for (const auto& loop : loops) count += loop.size();
  return count;
}

TEST(Outline, CoversWhatItsFacesCoverWithTheirOuterEdgesAlone) {
  std::mt19937 random(1);
  std::bernoulli_distribution coin;
  for (int round = 0; round < 30; ++round) {
    bool taken[kSide + 2][kSide + 2] = {};
    Outline in;
    Outline out;
    std::size_t shared = 0;
    std::size_t outer = 0;
    for (int i = 1; i <= kSide; ++i) {
      for (int j = 1; j <= kSide; ++j) {
        taken[i][j] = coin(random);
        (taken[i][j] ? in : out).add(square(i, j));
      }
    }
    for (int i = 1; i <= kSide; ++i) {
      for (int j = 1; j <= kSide; ++j) {
        const std::vector<std::pair<int, int>> neighbours{{i + 1, j}, {i - 1, j}, {i, j + 1}, {i, j - 1}};
        for (const auto& [k, l] : neighbours) {
          const bool isOutside = k < 1 || k > kSide || l < 1 || l > kSide;
          if (taken[i][j] && (isOutside || !taken[k][l])) ++outer;
          if (taken[i][j] && !isOutside && !taken[k][l]) ++shared;
        }
      }
    }
    in.settle();
    out.settle();
    const Loops loops = in.loops();
    EXPECT_EQ(corners(loops), outer);
    for (int i = 1; i <= kSide; ++i) {
      for (int j = 1; j <= kSide; ++j) EXPECT_EQ(covers(loops, i, j), taken[i][j]);
    }
    std::vector<pictures::Segment> border;
    in.addShared(out, border);
    EXPECT_EQ(border.size(), shared);
  }
}

TEST(Outline, PlacesKeepTheirCoordinates) {
  for (const RasterPoint& p : {RasterPoint{0, 0}, RasterPoint{-5, 7}, RasterPoint{100000000, -100000000}}) {
    EXPECT_EQ(pictures::pointOf(pictures::placeOf(p)), p);
  }
}

double distance(const RasterPoint& p, const RasterPoint& a, const RasterPoint& b) {
  double nearest = 1e300;
  for (int i = 0; i <= 1000; ++i) {  // slow and sure
    nearest = std::min(nearest, std::hypot(a.x + (b.x - a.x) * i / 1000.0 - p.x, a.y + (b.y - a.y) * i / 1000.0 - p.y));
  }
  return nearest;
}

TEST(Simplify, LeavesNoDroppedPointFartherThanTheTolerance) {
  std::mt19937 random(2);
  std::uniform_int_distribution<int> step(-9, 12);
  for (int round = 0; round < 10; ++round) {
    std::vector<RasterPoint> line{{0, 0}};
    for (int i = 0; i < 120; ++i) line.push_back({line.back().x + step(random), line.back().y + step(random)});
    const std::vector<RasterPoint> kept = pictures::simplified(line, 10.0);
    EXPECT_LT(kept.size(), line.size());
    EXPECT_EQ(kept.front(), line.front());
    EXPECT_EQ(kept.back(), line.back());
    std::size_t at = 0;
    for (const RasterPoint& p : line) {
      if (at + 1 < kept.size() && p == kept[at + 1]) ++at;
      const RasterPoint& next = at + 1 < kept.size() ? kept[at + 1] : kept[at];
      EXPECT_LE(distance(p, kept[at], next), 10.1);
    }
  }
}

TEST(Simplify, SpecksVanishAndSquaresStay) {
  EXPECT_TRUE(pictures::simplifiedLoop({{0, 0}, {4, 0}, {4, 4}, {0, 4}}, 5.0).empty());
  EXPECT_EQ(pictures::simplifiedLoop({{0, 0}, {50, 0}, {100, 0}, {100, 100}, {0, 100}}, 5.0).size(), 4U);
  EXPECT_TRUE(pictures::simplifiedLoop({{0, 0}, {50, 0}, {100, 0}, {50, 0}}, 5.0).empty());
}

TEST(Chains, TakeEverySegmentOnceAndEndAtJoints) {
  const auto lines = pictures::chained({{1, 2}, {3, 2}, {3, 4}, {3, 5}, {7, 8}, {8, 9}, {9, 7}});
  ASSERT_EQ(lines.size(), 4U);
  EXPECT_EQ(lines[0], (std::vector<pictures::Place>{1, 2, 3}));
  EXPECT_EQ(lines[3].size(), 4U);
  EXPECT_EQ(lines[3].front(), lines[3].back());
}

TEST(Triangles, AddUpToTheWholeOfAnyPolygonWithoutOverlap) {
  std::mt19937 random(4);
  std::uniform_real_distribution<double> radius(1.0, 9.0);
  for (int corners = 3; corners < 60; ++corners) {
    pictures::Loop loop;
    for (int i = 0; i < corners; ++i) {
      const double angle = 2.0 * 3.141592653589793 * i / corners;
      const double r = radius(random);
      loop.push_back({r * std::cos(angle), r * std::sin(angle), 0.0, 0.0});
    }
    double area = 0.0;
    for (const auto& [a, b, c] : pictures::trianglesOf(loop)) {
      const double one = pictures::doubleArea({a, b, c});
      EXPECT_GT(one, 0.0);
      area += one;
    }
    EXPECT_NEAR(area, pictures::doubleArea(loop), 1e-9);
  }
}

TEST(Svg, NumbersAreShortAndNeverMinusZero) {
  EXPECT_EQ(pictures::shortNumber(12.50, 2), "12.5");
  EXPECT_EQ(pictures::shortNumber(100.0, 2), "100");
  EXPECT_EQ(pictures::shortNumber(-0.001, 2), "0");
  EXPECT_EQ(pictures::shortNumber(1e300, 0).size(), 301U);
}

TEST(Svg, TextIsMadeFitForXml) {
  EXPECT_EQ(pictures::escaped("a<b>&\"c\" d\xC3\xA9"), "a&lt;b&gt;&amp;&quot;c&quot; d\xC3\xA9");
  EXPECT_EQ(pictures::escaped("\x01\xFF\xC3(\xED\xA0\x80\xEF\xBF\xBF"),
            std::string(3, '?') + "(" + std::string(6, '?'));
}

TEST(Svg, PathsGoFromPointToPoint) {
  EXPECT_EQ(pictures::loopsData({{{100, 200}, {150, 150}, {50, 150}}}), "M1 2l.5-.5-1 0z");
  EXPECT_EQ(pictures::linesData({{{0, 0}, {100, 0}}, {{0, 0}, {0, 25}}}), "M0 0l1 0M0 0l0 .25");
}

TEST(Base64, IsThatOfTheStandard) {
  const std::vector<std::pair<std::string, std::string>> known{{"", ""},
                                                               {"f", "Zg=="},
                                                               {"fo", "Zm8="},
                                                               {"foo", "Zm9v"},
                                                               {"foob", "Zm9vYg=="},
                                                               {"fooba", "Zm9vYmE="},
                                                               {"foobar", "Zm9vYmFy"},
                                                               {"\xFF\xFE", "//4="}};
  for (const auto& [bytes, text] : known) EXPECT_EQ(pictures::base64(bytes), text);
}

}  // namespace
