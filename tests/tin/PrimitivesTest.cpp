// The value classes that every TIN is built from: their comparisons, side tests and angles, at and beside every
// tolerance, and against the slow construction's own versions on random edges.
#include <cmath>
#include <limits>

#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>
#include <OrvikDTMAlgorithm/tin/Triangle3.h>
#include <gtest/gtest.h>

#include "Inputs.h"
#include "LiteralTIN.h"

namespace {

TEST(TPoint, EqualsLooksAtThePlanOnly) {
  TPoint a(1, 2, 3);
  TPoint b(1, 2, 4);
  EXPECT_TRUE(a.equals(&b));
  EXPECT_FALSE(a == b);
  b.setZ(3);
  EXPECT_TRUE(a == b);
  b.setX(std::nextafter(1.0, 2.0));
  EXPECT_FALSE(a.equals(&b));
  EXPECT_FALSE(a.equals(nullptr));
}

TEST(TEdge, NewEdgeHasNoTriangles) {
  TPoint s(0, 0, 1);
  TPoint e(3, 4, 13);
  TEdge edge(&s, &e);
  EXPECT_EQ(edge.getLeftT(), 0);
  EXPECT_EQ(edge.getRightT(), 0);
  const int two[2] = {7, 9};
  edge.setTriNo(two);
  EXPECT_EQ(edge.getLeftT(), 7);
  EXPECT_EQ(edge.getRightT(), 9);
  edge.getTriNo()[1] = 11;
  EXPECT_EQ(edge.getRightT(), 11);
}

TEST(TEdge, LengthsAndHeights) {
  TPoint s(0, 0, 1);
  TPoint e(3, 4, 13);
  const TEdge edge(&s, &e);
  EXPECT_EQ(edge.getLength(), 5.0);
  EXPECT_EQ(edge.getLength2(), 25.0);
  EXPECT_EQ(edge.getLength3D(), 13.0);
  EXPECT_EQ(edge.getLength2_3D(), 169.0);
  EXPECT_EQ(edge.getMinZ(), 1.0);
  EXPECT_EQ(edge.getMaxZ(), 13.0);
  const TEdge reversed(&e, &s);
  EXPECT_EQ(reversed.getMinZ(), 1.0);
  EXPECT_EQ(reversed.getMaxZ(), 13.0);
}

struct AngleCase {
  double x1, y1, x2, y2, angle;
};

TEST(TEdge, AngleIsRoundedToTenDecimals) {
  const AngleCase cases[] = {
      {0, 0, 0, 0, 0.0},          {5, 5, 5, 5, 0.0},           {0, 0, -1, 0, 3.1415926536},
      {0, 0, 1, 1, 0.7853981634}, {0, 0, 1, -1, 0.7853981634}, {0, 0, 1, 0, 0.0},
      {0, 0, 0, 1, 1.5707963268}, {2, 3, 1, 4, 2.3561944902},  {0, 0, 0, -7, 1.5707963268},
  };
  for (const AngleCase& c : cases) {
    TPoint s(c.x1, c.y1, 0);
    TPoint e(c.x2, c.y2, 0);
    EXPECT_EQ(TEdge(&s, &e).getAngleByX(), c.angle) << c.x2 << "," << c.y2;
  }
  TPoint s(0, 0, 0);
  TPoint nan(std::numeric_limits<double>::quiet_NaN(), 1, 0);
  EXPECT_EQ(TEdge(&s, &nan).getAngleByX(), 0.0);
}

struct SideCase {
  double x1, y1, x2, y2, px, py;
  int side;
};

TEST(TEdge, SideOfAPoint) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  const SideCase cases[] = {
      {0, 0, 10, 0, 5, 1, -1},
      {0, 0, 10, 0, 5, -1, 1},
      {0, 0, 10, 0, 5, 0.00001, 0},
      {0, 0, 10, 0, 20, 0, 0},
      {0, 0, 10, 0, 5, 0.00003, -1},
      {0, 0, 10, 0, 5, -0.00003, 1},
      {0, 0, 0, 5, 0, 100, 0},
      {0, 0, 0, 5, -1, 0, -1},
      {0, 0, 0, 5, 1, 0, 1},
      {1, 1, 1, 1, 7, 9, 0},        // an edge without length has every point on its line
      {0, 0, 0.01, 0, 0, 0.02, 0},  // the tolerance is an area: 0.0002 of it lies far off a short edge
      {0, 0, 0.01, 0, 0.005, 0.0201, -1},
      {0, 0, 10, 3, kNaN, 1, -1},
  };
  for (const SideCase& c : cases) {
    TPoint s(c.x1, c.y1, 0);
    TPoint e(c.x2, c.y2, 0);
    const TPoint p(c.px, c.py, 0);
    const TEdge edge(&s, &e);
    EXPECT_EQ(edge.point2Line(&p), c.side) << c.px << "," << c.py;
    EXPECT_EQ(edge.isPointInEdge(&p), c.side == 0) << c.px << "," << c.py;
  }
}

TEST(TEdge, SameLineAndContainedPoint) {
  TPoint a(1, 2, 3);
  TPoint b(4, 5, 6);
  TPoint c(7, 8, 9);
  TPoint aAgain(1, 2, 30);
  const TEdge ab(&a, &b);
  EXPECT_EQ(ab.isSameLine(&ab), 1);
  const TEdge ba(&b, &aAgain);
  EXPECT_EQ(ab.isSameLine(&ba), -1);
  const TEdge ac(&a, &c);
  EXPECT_EQ(ab.isSameLine(&ac), 0);
  EXPECT_TRUE(ab.containPoint(&aAgain));
  EXPECT_TRUE(ab.containPoint(&b));
  const TPoint middle(2.5, 3.5, 0);
  EXPECT_FALSE(ab.containPoint(&middle));
}

TEST(Triangle, CopiesItsNumbers) {
  int three[3] = {4, 5, 6};
  Triangle t(three);
  three[0] = 99;
  EXPECT_EQ(t.getEno()[0], 4);
  t.setEno(three);
  EXPECT_EQ(t.getEno()[0], 99);
}

TEST(Triangle3, OwnsCopiesOfItsCorners) {
  TPoint a(1, 2, 3);
  TPoint b(4, 5, 6);
  TPoint c(7, 8, 9);
  Triangle3 t(&a, &b, &c, -1);
  a.setX(100);
  c.setZ(100);
  EXPECT_TRUE(*t.getP1() == TPoint(1, 2, 3));
  EXPECT_TRUE(*t.getP2() == TPoint(4, 5, 6));
  EXPECT_TRUE(*t.getP3() == TPoint(7, 8, 9));
  EXPECT_EQ(t.getStatus(), -1);
  t.setStatus(1);
  EXPECT_EQ(t.getStatus(), 1);
  TPoint* old = t.getP2();
  t.setP2(new TPoint(0, 0, 0));
  delete old;
  EXPECT_TRUE(*t.getP2() == TPoint(0, 0, 0));
}

TEST(TConvex, NamesAnEdge) {
  TConvex entry(17);
  EXPECT_EQ(entry.getEdgeNo(), 17);
  entry.setEdgeNo(4);
  EXPECT_EQ(entry.getEdgeNo(), 4);
}

// Quadrilaterals around the tolerances: on a fine lattice, where exact zeros and near misses abound, and far out.
inputs::Positions quadrilateral(inputs::Random& random) {
  const double scale = random.between(0, 2) == 0 ? 0.001 : (random.between(0, 1) == 0 ? 1.0 : 123.457);
  const double shift = random.between(0, 3) == 0 ? 9500.0 : 0.0;
  inputs::Positions p;
  for (int i = 0; i < 4; ++i) {
    p.push_back({shift + scale * static_cast<double>(random.between(-12, 12)),
                 shift + scale * static_cast<double>(random.between(-12, 12)), 0.0});
  }
  return p;
}

TEST(Predicates, AgreeWithTheLiteralOnesOnQuadrilaterals) {
  inputs::Random random(11);
  int flips = 0;
  for (int round = 0; round < 200000; ++round) {
    const inputs::Positions q = quadrilateral(random);
    TPoint p[4] = {{q[0][0], q[0][1], 0}, {q[1][0], q[1][1], 0}, {q[2][0], q[2][1], 0}, {q[3][0], q[3][1], 0}};
    literal::Point r[4];
    for (int i = 0; i < 4; ++i) r[i] = {q[static_cast<std::size_t>(i)][0], q[static_cast<std::size_t>(i)][1], 0};
    const TEdge edge(&p[0], &p[1]);
    const literal::Edge reference{&r[0], &r[1]};
    ASSERT_EQ(edge.point2Line(&p[2]), literal::point2Line(reference, r[2]));
    ASSERT_EQ(edge.isPointInEdge(&p[2]), literal::isPointInEdge(reference, r[2]));
    ASSERT_EQ(Surface::isConvex(&p[0], &p[1], &p[2], &p[3]), literal::isConvex(r[0], r[1], r[2], r[3]));
    const bool flip = Surface::isNeedTrans(&p[0], &p[1], &p[2], &p[3]);
    ASSERT_EQ(flip, literal::isNeedTrans(r[0], r[1], r[2], r[3]));
    flips += flip ? 1 : 0;
    ASSERT_EQ(edge.getAngleByX(), literal::angleByX(reference));
  }
  EXPECT_GT(flips, 1000);
}

TEST(Predicates, AnglesAgreeWithTheLiteralOnes) {
  inputs::Random random(12);
  for (int round = 0; round < 50000; ++round) {
    TPoint s(random.unit() * 1000, random.unit() * 1000, 0);
    TPoint e(random.unit() * 1000, random.unit() * 1000, 0);
    literal::Point rs{s.getX(), s.getY(), 0};
    literal::Point re{e.getX(), e.getY(), 0};
    ASSERT_EQ(TEdge(&s, &e).getAngleByX(), literal::angleByX({&rs, &re}));
  }
}

TEST(IsConvex, NeedsBothDiagonalsToCross) {
  const TPoint a(0, -1, 0);
  const TPoint b(-1, 0, 0);
  const TPoint c(1, 0, 0);
  const TPoint d(0, 1, 0);
  EXPECT_TRUE(Surface::isConvex(&a, &b, &c, &d));
  const TPoint beside(3, 1, 0);
  EXPECT_FALSE(Surface::isConvex(&a, &b, &c, &beside));
  const TPoint onLine(0.5, 0.00005, 0);  // 0.0001 off the diagonal, in area: within the tolerance
  EXPECT_FALSE(Surface::isConvex(&a, &b, &c, &onLine));
}

TEST(IsNeedTrans, ShorterDiagonalOfACircleWins) {
  const TPoint a(5, 0, 0);
  const TPoint b(9, 2, 0);
  const TPoint c(2, 1, 0);
  const TPoint d(8, 9, 0);
  EXPECT_TRUE(Surface::isNeedTrans(&c, &a, &d, &b));   // a-d is longer than c-b
  EXPECT_FALSE(Surface::isNeedTrans(&a, &b, &c, &d));  // b-c is the shorter one already
}

TEST(IsNeedTrans, TrianglesWithoutAreaNeverFlip) {
  const TPoint a(0, 0, 0);
  const TPoint b(1, 0, 0);
  const TPoint c(2, 0, 0);
  const TPoint d(3, 0, 0);
  EXPECT_FALSE(Surface::isNeedTrans(&a, &b, &c, &d));
}

}  // namespace
