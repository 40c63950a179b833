#include "VolumeSupport.h"

#include <OrvikDTMAlgorithm/surface/RangePoint.h>
#include <OrvikDTMAlgorithm/surface/RecordLayout.h>
#include <OrvikDTMAlgorithm/tin/Triangle3.h>
#include <gtest/gtest.h>

namespace support {

void setBoundary(CEType& tin, const Polygon& polygon) {
  std::vector<RangePoint> points(polygon.size());
  std::vector<RangePoint*> pointers;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    points[i].e = polygon[i][0];
    points[i].n = polygon[i][1];
    pointers.push_back(&points[i]);
  }
  tin.setRangeList(pointers);
}

Model::Model(const inputs::Positions& positions, const std::vector<std::array<int, 3>>& faces)
    : points(positions), tin(CEType::initCETypeFromFaces(points.pointers(), faces)) {}

std::unique_ptr<FillCutResult> fillCut(CEType& tin, CEType& reference) {
  return std::unique_ptr<FillCutResult>(tin.getFillCut(&reference));
}

std::array<double, 10> numbersOf(const FillCutResult& r) {
  return {RecordLayout::fillPerimeterTwoD(r),
          RecordLayout::fillPerimeterThreeD(r),
          RecordLayout::cutPerimeterTwoD(r),
          RecordLayout::cutPerimeterThreeD(r),
          r.getFillTwoDArea(),
          r.getFillThreeDArea(),
          r.getCutTwoDArea(),
          r.getCutThreeDArea(),
          r.getFillVolume(),
          r.getCutVolume()};
}

namespace {

literal::Corner cornerOf(const TPoint* p) { return {p->getX(), p->getY(), p->getZ()}; }

void expectSameResult(CEType& tin, const FillCutResult& result, const literal::Comparison& expected) {
  EXPECT_EQ(numbersOf(result), expected.numbers);
  EXPECT_TRUE(piecesOf(tin) == expected.pieces);
}

}  // namespace

std::vector<literal::ComparedPiece> piecesOf(CEType& tin) {
  std::vector<literal::ComparedPiece> pieces;
  for (const auto& t : tin.getTriangle3List()) {
    pieces.push_back({cornerOf(t->getP1()), cornerOf(t->getP2()), cornerOf(t->getP3()), t->getStatus()});
  }
  return pieces;
}

literal::Comparison expectSameComparison(const MakeModel& own, const MakeModel& reference, const Polygon& boundary) {
  const Model ours = own();
  const Model oursReference = reference();
  const Model slow = own();
  const Model slowReference = reference();
  setBoundary(*ours.tin, boundary);
  setBoundary(*slow.tin, boundary);
  const auto result = fillCut(*ours.tin, *oursReference.tin);
  const literal::Comparison expected = literal::compare(*slow.tin, *slowReference.tin);
  expectSameResult(*ours.tin, *result, expected);
  inputs::Random random(1);
  for (int i = 0; i < 20; ++i) {
    const auto last = static_cast<std::int64_t>(ours.points.size()) - 1;
    const TPoint& p = *ours.points[static_cast<std::size_t>(random.between(0, last))];
    EXPECT_EQ(ours.tin->locateTri(p.getX(), p.getY()), slow.tin->locateTri(p.getX(), p.getY()));
    EXPECT_EQ(oursReference.tin->locateTri(p.getX(), p.getY()), slowReference.tin->locateTri(p.getX(), p.getY()));
  }
  return expected;
}

literal::Comparison expectSameLevel(const MakeModel& own, double level, const Polygon& boundary) {
  const Model ours = own();
  const Model slow = own();
  setBoundary(*ours.tin, boundary);
  setBoundary(*slow.tin, boundary);
  const std::unique_ptr<FillCutResult> result(ours.tin->getFillCut(level));
  inputs::Positions corners;
  for (const auto& vertex : boundary) corners.push_back({vertex[0], vertex[1], level});
  const Model design(corners);
  const literal::Comparison expected = literal::compare(*slow.tin, *design.tin);
  expectSameResult(*ours.tin, *result, expected);
  return expected;
}

}  // namespace support
