// The TIN of a surface: built from the points when it is first needed, its statistics, and the queries that run on it.
#include <memory>

#include <OrvikDTMAlgorithm/report/U.h>
#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/surface/SurfacePoint.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>

#include "OrvikDTMAlgorithm/report/NumberText.h"

inline namespace OrvikDTM {
namespace {

constexpr std::size_t kPointsOfATriangle = 3;

// Coordinates that differ only beyond this decimal are the same position to the triangulation.
constexpr int kCoordinateDecimals = 4;

TPoint roundedForTIN(const SurfacePoint& point) {
  return TPoint(detail::roundThroughText(kCoordinateDecimals, point.getE()),
                detail::roundThroughText(kCoordinateDecimals, point.getN()), point.getZ());
}

// All points of one TIN in one block of memory, which the TIN then keeps.
std::shared_ptr<std::vector<TPoint>> roundedForTIN(const std::vector<SurfacePoint*>& points) {
  auto rounded = std::make_shared<std::vector<TPoint>>();
  rounded->reserve(points.size());
  for (const SurfacePoint* point : points) {
    if (point != nullptr) rounded->push_back(roundedForTIN(*point));
  }
  return rounded;
}

std::vector<TPoint*> pointersTo(std::vector<TPoint>& points) {
  std::vector<TPoint*> pointers;
  pointers.reserve(points.size());
  for (TPoint& point : points) pointers.push_back(&point);
  return pointers;
}

}  // namespace

std::vector<TPoint*> DTMSurface::getTPointList(std::vector<SurfacePoint*> points) const {
  std::vector<TPoint*> list;
  if (points.size() < kPointsOfATriangle) return list;
  list.reserve(points.size());
  for (const SurfacePoint* point : points) {
    if (point != nullptr) list.push_back(new TPoint(roundedForTIN(*point)));
  }
  return list;
}

CEType* DTMSurface::getCEType() {
  if (ceType != nullptr) return ceType;
  resetStatistics();
  if (surfacePoints.size() < kPointsOfATriangle) return nullptr;

  const auto points = roundedForTIN(surfacePoints);
  std::vector<TPoint*> pointers = pointersTo(*points);
  ceType = Surface::optimizeTIN(pointers);
  if (ceType == nullptr) return nullptr;
  ceType->holdPoints(points);
  refreshStatistics();
  return ceType;
}

void DTMSurface::rebuild() {
  dropModel();
  getCEType();
}

void DTMSurface::resetStatistics() {
  static const DTMSurface empty;
  copyStatistics(empty);
}

void DTMSurface::copyStatistics(const DTMSurface& source) {
  trianglesNumber = source.trianglesNumber;
  twoDArea = source.twoDArea;
  threeDArea = source.threeDArea;
  minElev = source.minElev;
  maxElev = source.maxElev;
  rangeMinX = source.rangeMinX;
  rangeMaxX = source.rangeMaxX;
  rangeMinY = source.rangeMinY;
  rangeMaxY = source.rangeMaxY;
  perimeterTwoD = source.perimeterTwoD;
  perimeterThreeD = source.perimeterThreeD;
}

void DTMSurface::refreshStatistics() {
  const TList* triangles = ceType->getTList();
  trianglesNumber = triangles == nullptr ? 0 : triangles->getListLen();
  twoDArea = ceType->getArea2D();
  threeDArea = ceType->getArea3D();
  const std::unique_ptr<double[]> heights(ceType->getMinMaxHeight());
  minElev = heights[0];
  maxElev = heights[1];
  perimeterTwoD = ceType->getTotalLength2D();
  perimeterThreeD = ceType->getTotalLength3D();
  const std::vector<double> extent = ceType->getRangeXY();  // largest y, smallest y, largest x, smallest x
  rangeMaxY = extent[0];
  rangeMinY = extent[1];
  rangeMaxX = extent[2];
  rangeMinX = extent[3];
}

int DTMSurface::setRangeList(const std::vector<RangePoint*>& range) {
  CEType* model = getCEType();
  if (model == nullptr) return 0;
  model->setRangeList(range);
  return 1;
}

int DTMSurface::checkSurfacePoint(double n, double e, double* z) {
  CEType* model = getCEType();
  if (model == nullptr) return 0;
  const double height = model->getHeight(e, n);
  if (U::isInf(height) != 0) return 0;
  if (z != nullptr) *z = height;
  return 1;
}

FillCutResult* DTMSurface::getFillCut(double elevation) {
  CEType* model = getCEType();
  FillCutResult* result = model == nullptr ? nullptr : model->getFillCut(elevation);
  if (result != nullptr) result->setSurfaceName(surfaceName);
  return result;
}

}  // namespace OrvikDTM
