// Fill and cut against a design level.
#include <memory>

#include <OrvikDTMAlgorithm/tin/CETypeElements.h>
#include <OrvikDTMAlgorithm/tin/LevelSplit.h>
#include <OrvikDTMAlgorithm/tin/LevelSums.h>
#include <OrvikDTMAlgorithm/tin/Triangle3.h>

inline namespace OrvikDTM {

FillCutResult* CEType::getFillCut(double elevation) {
  triangle3List_.clear();
  triangle3Source_ = {};
  if (hasBoundary()) return getFillCutWithinBoundary(elevation);

  const detail::LevelSums sums = detail::sumAgainstLevel(triangleList_, edgeList_, elevation);
  TINMeasures totals;
  totals.area2D = sums.planArea;
  totals.area3D = sums.spatialArea;
  totals.length2D = getTotalLength2D();
  totals.length3D = getTotalLength3D();
  FillCutResult* result = detail::newResult(sums.volumes, totals);
  triangle3Source_.level = elevation;
  return result;
}

void CEType::appendLevelPieces(double level, std::vector<std::shared_ptr<Triangle3>>& pieces) const {
  const auto append = [&pieces](const TPoint& p, const TPoint& q, const TPoint& r, int status) {
    pieces.push_back(std::make_shared<Triangle3>(&p, &q, &r, status));
  };
  Corners c;
  for (int tri = 1; tri <= triangleCount(); ++tri) {
    if (!cornersOf(tri, c)) continue;
    const detail::Place place = detail::placeOf(level, c.p1->getZ(), c.p2->getZ(), c.p3->getZ());
    if (place != detail::Place::Both) {
      append(*c.p1, *c.p2, *c.p3, place == detail::Place::Cut ? detail::kCut : detail::kFill);
      continue;
    }
    const detail::Split s = detail::splitAt(level, *c.p1, *c.p2, *c.p3);
    append(*s.lone, s.onA, s.onB, s.loneStatus);
    append(*s.a, s.onA, s.onB, -s.loneStatus);
    append(*s.a, *s.b, s.onB, -s.loneStatus);
  }
}

}  // namespace OrvikDTM
