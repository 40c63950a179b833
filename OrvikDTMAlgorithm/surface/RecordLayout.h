// The records that cross the library's boundary are plain memory to hosts in other languages: their layout is a
// promise, kept by these assertions. Private: the library and its tests read here what a record has no getter for.
#pragma once

#include <cstddef>
#include <type_traits>

#include <OrvikDTMAlgorithm/surface/DrawLine.h>
#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/surface/RangePoint.h>
#include <OrvikDTMAlgorithm/surface/SurfacePoint.h>

inline namespace OrvikDTM {

struct RecordLayout {
  static const char* surfaceName(const FillCutResult& r) { return r.surfaceName; }
  static const char* refSurfaceName(const FillCutResult& r) { return r.refSurfaceName; }
  static double twoDArea(const FillCutResult& r) { return r.twoDArea; }
  static double threeDArea(const FillCutResult& r) { return r.threeDArea; }
  static double perimeterTwoD(const FillCutResult& r) { return r.perimeterTwoD; }
  static double perimeterThreeD(const FillCutResult& r) { return r.perimeterThreeD; }
  static double fillPerimeterTwoD(const FillCutResult& r) { return r.fillPerimeterTwoD; }
  static double fillPerimeterThreeD(const FillCutResult& r) { return r.fillPerimeterThreeD; }
  static double cutPerimeterTwoD(const FillCutResult& r) { return r.cutPerimeterTwoD; }
  static double cutPerimeterThreeD(const FillCutResult& r) { return r.cutPerimeterThreeD; }

  static_assert(std::is_standard_layout_v<SurfacePoint> && sizeof(SurfacePoint) == 72);
  static_assert(offsetof(SurfacePoint, surfaceName) == 0 && offsetof(SurfacePoint, pointName) == 24);
  static_assert(offsetof(SurfacePoint, n) == 48 && offsetof(SurfacePoint, e) == 56 && offsetof(SurfacePoint, z) == 64);

  static_assert(std::is_standard_layout_v<RangePoint> && sizeof(RangePoint) == 48 && offsetof(RangePoint, name) == 0);
  static_assert(offsetof(RangePoint, n) == 24 && offsetof(RangePoint, e) == 32 && offsetof(RangePoint, z) == 40);

  static_assert(std::is_standard_layout_v<FillCutResult> && sizeof(FillCutResult) == 160);
  static_assert(offsetof(FillCutResult, fillPerimeterTwoD) == 0 && offsetof(FillCutResult, fillPerimeterThreeD) == 8);
  static_assert(offsetof(FillCutResult, cutPerimeterTwoD) == 16 && offsetof(FillCutResult, cutPerimeterThreeD) == 24);
  static_assert(offsetof(FillCutResult, fillTwoDArea) == 32 && offsetof(FillCutResult, fillThreeDArea) == 40);
  static_assert(offsetof(FillCutResult, cutTwoDArea) == 48 && offsetof(FillCutResult, cutThreeDArea) == 56);
  static_assert(offsetof(FillCutResult, fillVolume) == 64 && offsetof(FillCutResult, cutVolume) == 72);
  static_assert(offsetof(FillCutResult, surfaceName) == 80);
  static_assert(offsetof(FillCutResult, twoDArea) == 104 && offsetof(FillCutResult, threeDArea) == 112);
  static_assert(offsetof(FillCutResult, perimeterTwoD) == 120 && offsetof(FillCutResult, perimeterThreeD) == 128);
  static_assert(offsetof(FillCutResult, refSurfaceName) == 136);

  static_assert(std::is_standard_layout_v<DrawLine> && sizeof(DrawLine) == 40);
  static_assert(offsetof(DrawLine, startX) == 0 && offsetof(DrawLine, startY) == 8);
  static_assert(offsetof(DrawLine, endX) == 16 && offsetof(DrawLine, endY) == 24 && offsetof(DrawLine, flag) == 32);
};

}  // namespace OrvikDTM
