// The text dumps of a TIN's lists, byte for byte: their words are GBK, and are written here as bytes of their own.
#include <memory>

#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/ListDumps.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>
#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::string>;

// Spelled out by character: ordinal sign, strip + side, full-width colon, and so on.
#define NUMBER "\xB5\xDA"
#define EDGE "\xCC\xF5\xB1\xDF"
#define COLON "\xA3\xBA"
#define START "(\xC6\xF0\xB5\xE3" COLON ")"
#define END "(\xD6\xD5\xB5\xE3" COLON ")"
#define ANGLE "(\xBC\xD0\xBD\xC7" COLON ")"
#define LEFT_AND_RIGHT "\xD7\xF3\xD3\xD2"
#define TRIANGLE "\xC8\xFD\xBD\xC7\xD0\xCE"
#define PIECES "\xB8\xF6"
#define CORRESPONDING "\xB6\xD4\xD3\xA6"
#define SIDE "\xB1\xDF"
#define HULL "\xCD\xB9\xBF\xC7"
#define ITS_NUMBER "\xB1\xE0\xBA\xC5"

TEST(ListDumps, EmptyListsAreTwoLines) {
  EList edges;
  TList triangles;
  ConvexList hull;
  EXPECT_EQ(detail::dumpOf(edges), (Lines{"------EList start------", "------EList end------"}));
  EXPECT_EQ(detail::dumpOf(triangles), (Lines{"------TList start------", "------TList end------"}));
  EXPECT_EQ(detail::dumpOf(hull), (Lines{"------ConvexList start------", "------ConvexList end------"}));
}

TEST(ListDumps, EdgesTakeTwoLinesEach) {
  TPoint a(0, 0, 3);
  TPoint b(1.5, 1.5, 4);
  TPoint c(-2, 0, 5);
  EList edges;
  edges.add(&edges, new TEdge(&a, &b));
  edges.findByNum(&edges, 1)->setLeftT(7);
  edges.add(&edges, new TEdge(&a, &c));
  edges.findByNum(&edges, 2)->setLeftT(1);
  edges.findByNum(&edges, 2)->setRightT(12);
  const Lines expected = {
      "------EList start------",
      NUMBER "1" EDGE START "0.000000 0.000000 " END "1.500000 1.500000 " ANGLE "0.785398",
      NUMBER "1" EDGE LEFT_AND_RIGHT TRIANGLE COLON "7 0",
      NUMBER "2" EDGE START "0.000000 0.000000 " END "-2.000000 0.000000 " ANGLE "3.141593",
      NUMBER "2" EDGE LEFT_AND_RIGHT TRIANGLE COLON "1 12",
      "------EList end------",
  };
  EXPECT_EQ(detail::dumpOf(edges), expected);
}

TEST(ListDumps, EdgeWithoutAPointIsLeftOut) {
  TPoint a(0, 0, 0);
  EList edges;
  edges.add(&edges, new TEdge(&a, nullptr));
  edges.add(&edges, new TEdge(&a, &a));
  const Lines lines = detail::dumpOf(edges);
  ASSERT_EQ(lines.size(), 4u);
  EXPECT_EQ(lines[1], NUMBER "2" EDGE START "0.000000 0.000000 " END "0.000000 0.000000 " ANGLE "0.000000");
}

TEST(ListDumps, TrianglesShowTheirEdges) {
  TList triangles;
  const int first[3] = {3, 2, 1};
  const int second[3] = {0, -5, 1000};
  triangles.add(&triangles, new Triangle(first));
  triangles.add(&triangles, nullptr);
  triangles.add(&triangles, new Triangle(second));
  const Lines expected = {
      "------TList start------",
      NUMBER "1" PIECES TRIANGLE CORRESPONDING SIDE COLON "3 2 1",
      NUMBER "3" PIECES TRIANGLE CORRESPONDING SIDE COLON "0 -5 1000",
      "------TList end------",
  };
  EXPECT_EQ(detail::dumpOf(triangles), expected);
}

TEST(ListDumps, HullEntriesShowTheirEdge) {
  ConvexList hull;
  hull.add(&hull, new TConvex(5));
  hull.add(&hull, new TConvex(12));
  const Lines expected = {
      "------ConvexList start------",
      HULL NUMBER "1" EDGE CORRESPONDING ITS_NUMBER "5",
      HULL NUMBER "2" EDGE CORRESPONDING ITS_NUMBER "12",
      "------ConvexList end------",
  };
  EXPECT_EQ(detail::dumpOf(hull), expected);
}

}  // namespace
