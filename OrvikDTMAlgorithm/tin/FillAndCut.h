// The sums of a volume computation, and the record that they end up in. Private.
#pragma once

#include <memory>

#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>

inline namespace OrvikDTM {
namespace detail {

// What a part of a surface is, as its status in the drawing list.
inline constexpr int kCut = 1;
inline constexpr int kFill = -1;

// Areas in plan and along the surface, and volume, of what lies on one side.
struct FillOrCut {
  double planArea = 0.0;
  double spatialArea = 0.0;
  double volume = 0.0;

  void add(double plan, double spatial, double content) {
    planArea += plan;
    spatialArea += spatial;
    volume += content;
  }
  void add(const FillOrCut& other) { add(other.planArea, other.spatialArea, other.volume); }
};

struct FillAndCut {
  FillOrCut fill;
  FillOrCut cut;

  void add(const FillAndCut& other) {
    fill.add(other.fill);
    cut.add(other.cut);
  }
  FillOrCut& on(int status) { return status == kCut ? cut : fill; }
};

// A new record of these sums with the totals of the measured surface.
inline FillCutResult* newResult(const FillAndCut& sums, const TINMeasures& totals) {
  auto result = std::make_unique<FillCutResult>();
  result->setFillTwoDArea(sums.fill.planArea);
  result->setFillThreeDArea(sums.fill.spatialArea);
  result->setFillVolume(sums.fill.volume);
  result->setCutTwoDArea(sums.cut.planArea);
  result->setCutThreeDArea(sums.cut.spatialArea);
  result->setCutVolume(sums.cut.volume);
  result->setTwoDArea(totals.area2D);
  result->setThreeDArea(totals.area3D);
  result->setPerimeterTwoD(totals.length2D);
  result->setPerimeterThreeD(totals.length3D);
  return result.release();
}

}  // namespace detail
}  // namespace OrvikDTM
