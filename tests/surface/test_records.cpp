// The records that cross the library's boundary: names, comparison, text, defaults, layout.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <string>

#include <OrvikDTMAlgorithm/surface/Name.h>
#include <OrvikDTMAlgorithm/surface/RecordLayout.h>
#include <gtest/gtest.h>

namespace {

SurfacePoint pointAt(const char* name, double n, double e, double z) {
  SurfacePoint point;
  point.setSurfaceName("S");
  point.setSurfacePointName(name);
  point.setN(n);
  point.setE(e);
  point.setZ(z);
  return point;
}

TEST(Names, AreCutAfterTheirTwentyThirdByte) {
  const std::string letters = "abcdefghijklmnopqrstuvwxyz";
  for (std::size_t length : {0u, 1u, 22u, 23u, 24u, 26u}) {
    SurfacePoint point;
    point.setSurfacePointName(letters.substr(0, length).c_str());
    EXPECT_EQ(letters.substr(0, std::min<std::size_t>(length, 23)), point.getSurfacePointName());
  }
}

TEST(Names, AreFollowedByZeros) {
  SurfacePoint point;
  point.setSurfaceName("a long name");
  point.setSurfaceName("ab");
  const char expected[kNameSize] = {'a', 'b'};
  EXPECT_EQ(0, std::memcmp(expected, point.getSurfaceName(), sizeof expected));
}

TEST(Names, ANullNameIsEmpty) {
  SurfacePoint point;
  point.setSurfaceName("S");
  point.setSurfaceName(nullptr);
  EXPECT_STREQ("", point.getSurfaceName());
}

TEST(Names, ANameMayBeCopiedOntoItself) {
  SurfacePoint point;
  point.setSurfaceName("same");
  point.setSurfaceName(point.getSurfaceName());
  EXPECT_STREQ("same", point.getSurfaceName());
}

TEST(SurfacePoints, StartEmpty) {
  const SurfacePoint point;
  EXPECT_STREQ("", point.getSurfaceName());
  EXPECT_STREQ("", point.getSurfacePointName());
  EXPECT_EQ(0.0, point.getN());
  EXPECT_EQ(0.0, point.getE());
  EXPECT_EQ(0.0, point.getZ());
}

TEST(SurfacePoints, CloneSharesNothing) {
  SurfacePoint point = pointAt("P1", 1.0, 2.0, 3.0);
  const std::unique_ptr<SurfacePoint> copy(point.clone());
  point.setSurfacePointName("changed");
  point.setSurfaceName("changed");
  EXPECT_STREQ("S", copy->getSurfaceName());
  EXPECT_STREQ("P1", copy->getSurfacePointName());
  EXPECT_EQ(1.0, copy->getN());
  EXPECT_EQ(2.0, copy->getE());
  EXPECT_EQ(3.0, copy->getZ());
}

TEST(SurfacePoints, IsSame) {
  const struct {
    SurfacePoint a;
    SurfacePoint b;
    bool expected;
  } rows[] = {
      {pointAt("P1", 1, 2, 3), pointAt("P1", 1, 2, 3), true},
      {pointAt("ABCDEFGH1", 1, 2, 3), pointAt("ABCDEFGH2", 1, 2, 3), true},
      {pointAt("ABCDEFG1", 1, 2, 3), pointAt("ABCDEFG2", 1, 2, 3), false},
      {pointAt("P1", 1, 2, 3), pointAt("P10", 1, 2, 3), false},
      {pointAt("P1", 1, 2, 3), pointAt("P1", 1, 2, std::nextafter(3.0, 4.0)), false},
      {pointAt("P1", 1, 2, 3), pointAt("P1", 1, std::nextafter(2.0, 3.0), 3), false},
      {pointAt("P1", 1, 2, 3), pointAt("P1", std::nextafter(1.0, 2.0), 2, 3), false},
      {pointAt("P1", 0.0, 2, 3), pointAt("P1", -0.0, 2, 3), true},
      {pointAt("P1", std::nan(""), 2, 3), pointAt("P1", std::nan(""), 2, 3), false},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.expected, row.a.isSame(&row.b)) << row.a.toString() << " " << row.b.toString();
    EXPECT_EQ(row.expected, row.b.isSame(&row.a)) << row.a.toString() << " " << row.b.toString();
  }
  EXPECT_FALSE(pointAt("P1", 1, 2, 3).isSame(nullptr));
}

TEST(SurfacePoints, TheSurfaceTakesNoPartInIsSame) {
  const SurfacePoint a = pointAt("P1", 1, 2, 3);
  SurfacePoint b = a;
  b.setSurfaceName("another");
  EXPECT_TRUE(a.isSame(&b));
}

TEST(SurfacePoints, ToString) {
  const struct {
    SurfacePoint point;
    const char* expected;
  } rows[] = {
      {pointAt("P1", 100, 200.5, 3), "S,P1,100,200.5,3"},
      {pointAt("P1", 2500000, 1, 0), "S,P1,2.5e+06,1,0"},
      {pointAt("P1", 1234567.891, 0.00001234567, -123456.4), "S,P1,1.23457e+06,1.23457e-05,-123456"},
      {pointAt("", 1e300, 999999.5, 123456.5), "S,,1e+300,1e+06,123456"},
  };
  for (const auto& row : rows) EXPECT_EQ(row.expected, row.point.toString());
}

TEST(FillCutResults, StartAtZeroWithEmptyNames) {
  const FillCutResult result;
  EXPECT_EQ(0.0, result.getFillTwoDArea());
  EXPECT_EQ(0.0, result.getFillThreeDArea());
  EXPECT_EQ(0.0, result.getCutTwoDArea());
  EXPECT_EQ(0.0, result.getCutThreeDArea());
  EXPECT_EQ(0.0, result.getFillVolume());
  EXPECT_EQ(0.0, result.getCutVolume());
  EXPECT_STREQ("", RecordLayout::surfaceName(result));
  EXPECT_STREQ("", RecordLayout::refSurfaceName(result));
}

TEST(FillCutResults, SettersStoreUnchanged) {
  FillCutResult result;
  result.setFillPerimeterTwoD(1.5);
  result.setFillPerimeterThreeD(2.5);
  result.setCutPerimeterTwoD(3.5);
  result.setCutPerimeterThreeD(4.5);
  result.setFillTwoDArea(5.5);
  result.setFillThreeDArea(6.5);
  result.setCutTwoDArea(7.5);
  result.setCutThreeDArea(8.5);
  result.setFillVolume(9.5);
  result.setCutVolume(-10.5);
  result.setTwoDArea(11.5);
  result.setThreeDArea(12.5);
  result.setPerimeterTwoD(13.5);
  result.setPerimeterThreeD(14.5);
  result.setSurfaceName("ground");
  result.setRefSurfaceName("a design with a name too long");
  EXPECT_EQ(1.5, RecordLayout::fillPerimeterTwoD(result));
  EXPECT_EQ(2.5, RecordLayout::fillPerimeterThreeD(result));
  EXPECT_EQ(3.5, RecordLayout::cutPerimeterTwoD(result));
  EXPECT_EQ(4.5, RecordLayout::cutPerimeterThreeD(result));
  EXPECT_EQ(5.5, result.getFillTwoDArea());
  EXPECT_EQ(6.5, result.getFillThreeDArea());
  EXPECT_EQ(7.5, result.getCutTwoDArea());
  EXPECT_EQ(8.5, result.getCutThreeDArea());
  EXPECT_EQ(9.5, result.getFillVolume());
  EXPECT_EQ(-10.5, result.getCutVolume());
  EXPECT_EQ(11.5, RecordLayout::twoDArea(result));
  EXPECT_EQ(12.5, RecordLayout::threeDArea(result));
  EXPECT_EQ(13.5, RecordLayout::perimeterTwoD(result));
  EXPECT_EQ(14.5, RecordLayout::perimeterThreeD(result));
  EXPECT_STREQ("ground", RecordLayout::surfaceName(result));
  EXPECT_STREQ("a design with a name to", RecordLayout::refSurfaceName(result));
}

TEST(DrawLines, KeepTheirEndsAndFlag) {
  const DrawLine edge(1.0, 2.0, 3.0, 4.0, false);
  EXPECT_EQ(1.0, edge.getStartX());
  EXPECT_EQ(2.0, edge.getStartY());
  EXPECT_EQ(3.0, edge.getEndX());
  EXPECT_EQ(4.0, edge.getEndY());
  EXPECT_EQ(0, edge.flag);
  EXPECT_EQ(1, DrawLine(0.0, 0.0, 1.0, 1.0, true).flag);
}

}  // namespace
