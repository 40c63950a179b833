// At every surveyed position stands the surveyed height: in the surface as it was built, saved and loaded, saved again,
// copied and built anew, wherever the site lies.
#include <cmath>
#include <filesystem>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <utility>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <gtest/gtest.h>

#include "Surfaces.h"

namespace {

using Heights = std::map<std::pair<double, double>, std::set<double>>;

struct Site {
  double east;
  double north;
  int metres;  // how far it reaches
};

const Site kSites[] = {{0, 0, 10},
                       {2.1, 0.7, 12},
                       {0.001, 0.002, 1},
                       {-3.3, -8.9, 20},
                       {100.3, 200.9, 50},
                       {-5000.7, 12, 7000},
                       {1000.1, 77.7, 300},
                       {499123.456, 3414097.001, 800},
                       {38500000, 3400000, 2000}};

// Whole millimetres, some of them surveyed twice.
std::vector<Position> survey(const Site& site, unsigned seed, int count) {
  std::mt19937 random(seed);
  const auto upTo = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  std::vector<Position> positions;
  for (int i = 0; i < count; ++i) {
    const double e = std::round((site.east + upTo(1000 * site.metres + 1) / 1000.0) * 1000) / 1000;
    const double n = std::round((site.north + upTo(1000 * site.metres + 1) / 1000.0) * 1000) / 1000;
    positions.push_back({e, n, upTo(100000) / 1000.0});
  }
  positions.push_back({positions[1].e, positions[1].n, 123.4});
  return positions;
}

std::string expectSurveyedHeights(DTMSurface& surface, const std::vector<Position>& positions) {
  Heights heights;
  for (const Position& at : positions) heights[{at.e, at.n}].insert(at.z);
  for (const auto& [at, surveyed] : heights) {
    double z = -1.0;
    if (surface.checkSurfacePoint(at.second, at.first, &z) != 1) return "nothing at " + std::to_string(at.first);
    if (surveyed.count(z) == 0) return std::to_string(z) + " at " + std::to_string(at.first);
  }
  return "";
}

std::vector<double> answers(DTMSurface& surface, const std::vector<Position>& positions) {
  std::vector<double> all;
  for (const Position& at : positions) {
    double z = -1.0;
    surface.checkSurfacePoint(at.n, at.e, &z);
    all.push_back(z);
  }
  return all;
}

TEST(SurveyedPositions, AnswerTheirHeightsBeforeAndAfterSaving) {
  for (const Site& site : kSites) {
    for (unsigned seed = 1; seed <= 12; ++seed) {
      const std::vector<Position> positions = survey(site, seed, 15);
      SCOPED_TRACE(std::to_string(site.east) + " seed " + std::to_string(seed));
      OwnedSurface built(positions);
      ASSERT_EQ("", expectSurveyedHeights(built, positions));
      const std::vector<unsigned char> bytes = built.toBytes();

      OwnedSurface loaded;
      ASSERT_TRUE(loaded.tryParse(bytes.data(), 1, static_cast<int>(bytes.size())));
      ASSERT_EQ("", expectSurveyedHeights(loaded, positions));
      EXPECT_EQ(answers(built, positions), answers(loaded, positions));
      EXPECT_EQ(bytes, loaded.toBytes());

      const std::unique_ptr<DTMSurface, void (*)(DTMSurface*)> copy(loaded.clone(), [](DTMSurface* surface) {
        surface->release();
        delete surface;
      });
      ASSERT_EQ("", expectSurveyedHeights(*copy, positions));
    }
  }
}

TEST(SurveyedPositions, AnswerTheirHeightsInATriangleFile) {
  const std::string path = (std::filesystem::temp_directory_path() /
                            ("orvikdtm-surveyed-" + std::to_string(std::random_device()()) + ".sjw"))
                               .string();
  for (const Site& site : kSites) {
    const std::vector<Position> positions = survey(site, 5, 15);
    OwnedSurface built(positions);
    ASSERT_TRUE(built.exportFileSJW(path.c_str()));
    OwnedSurface read;
    ASSERT_TRUE(read.tryParseSJW(path.c_str()));
    EXPECT_EQ("", expectSurveyedHeights(read, positions)) << site.east;
  }
  std::filesystem::remove(path);
}

// The example that showed it: with a smallest easting of 2.1, 7.7 becomes 7.6999999999999993.
TEST(SurveyedPositions, AnswerOnTheHullOfALoadedSurface) {
  const std::vector<Position> positions = {{2.1, 0, 1}, {7.7, 0, 2}, {7.7, 9, 3}, {2.1, 9, 4}};
  OwnedSurface built(positions);
  const std::vector<unsigned char> bytes = built.toBytes();
  OwnedSurface loaded;
  ASSERT_TRUE(loaded.tryParse(bytes.data(), 1, static_cast<int>(bytes.size())));
  double z = 0;
  EXPECT_EQ(1, loaded.checkSurfacePoint(0, 7.7, &z));
  EXPECT_EQ(2.0, z);
  EXPECT_EQ(0, loaded.checkSurfacePoint(0, 7.701, &z)) << "a millimetre beside it is outside";
  EXPECT_EQ(0, loaded.checkSurfacePoint(-0.001, 7.7, &z));
}

TEST(SurveyedPositions, OnlyPositionsBesideAVertexAreMovedInALoadedSurface) {
  const std::vector<Position> positions = {{2.1, 0, 1}, {7.7, 0, 2}, {7.7, 9, 3}, {2.1, 9, 4}};
  OwnedSurface built(positions);
  const std::vector<unsigned char> bytes = built.toBytes();
  OwnedSurface loaded;
  ASSERT_TRUE(loaded.tryParse(bytes.data(), 1, static_cast<int>(bytes.size())));
  const CEType& tin = *loaded.getCEType();
  for (const auto& [e, n] :
       {std::pair(7.6, 1.0), std::pair(7.70025, 0.0), std::pair(7.7, 0.00025), std::pair(3.3, 3.3)}) {
    double x = e;
    double y = n;
    tin.toVertexPosition(&x, &y);
    EXPECT_EQ(e, x);
    EXPECT_EQ(n, y);
  }
}

// A vertex that is put at the surveyed position itself, after the construction or after loading, is found there.
TEST(SurveyedPositions, AreFoundWhereTheHostHasPutAVertex) {
  const std::vector<Position> positions = {{2.1, 0, 1}, {7.7, 0, 2}, {7.7, 9, 3}, {2.1, 9, 4}, {4.1, 4.4, 9}};
  OwnedSurface built(positions);
  const std::vector<unsigned char> bytes = built.toBytes();
  OwnedSurface loaded;
  ASSERT_TRUE(loaded.tryParse(bytes.data(), 1, static_cast<int>(bytes.size())));
  for (DTMSurface* surface : {static_cast<DTMSurface*>(&built), static_cast<DTMSurface*>(&loaded)}) {
    ASSERT_EQ("", expectSurveyedHeights(*surface, positions));
    CEType* tin = surface->getCEType();
    for (TPoint* p : tin->getOriginalList()) p->setZ(p->getZ() + 1);
    EList* edges = tin->getEList();
    for (int number = 1; number <= edges->getListLen(); ++number) {
      TEdge* edge = edges->findByNum(edges, number);
      for (TPoint* p : {edge->getStartPoint(), edge->getEndPoint()}) {
        p->setX(std::round(p->getX() * 1000) / 1000);
        if (p->getY() == 4.4) *p = TPoint(5.7, p->getY(), 30);
      }
    }
    double z = 0;
    EXPECT_EQ(1, surface->checkSurfacePoint(4.4, 5.7, &z));
    EXPECT_EQ(30.0, z);
  }
}

}  // namespace
