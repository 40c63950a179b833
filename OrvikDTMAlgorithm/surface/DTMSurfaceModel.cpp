// The TIN of a surface: built from the points when it is first needed, its statistics, and the queries that run on it.
#include <memory>

#include <OrvikDTMAlgorithm/report/U.h>
#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/surface/SurfacePoint.h>
#include <OrvikDTMAlgorithm/surface/SurveyedCoordinate.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/Construction.h>
#include <OrvikDTMAlgorithm/tin/LargeArrays.h>
#include <OrvikDTMAlgorithm/tin/NewObjects.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>

inline namespace OrvikDTM {
namespace {

constexpr std::size_t kPointsOfATriangle = 3;

TPoint roundedForTIN(const SurfacePoint& point) {
  return {detail::surveyedCoordinate(point.getE()), detail::surveyedCoordinate(point.getN()), point.getZ()};
}

// All points of one TIN in one block of memory, which the TIN then keeps.
std::shared_ptr<std::vector<TPoint>> roundedForTIN(const std::vector<SurfacePoint*>& points) {
  auto rounded = std::make_shared<std::vector<TPoint>>();
  detail::reserveLarge(*rounded, points.size());
  for (const SurfacePoint* point : points) {
    if (point != nullptr) rounded->push_back(roundedForTIN(*point));
  }
  return rounded;
}

std::vector<TPoint*> pointersTo(std::vector<TPoint>& points) {
  std::vector<TPoint*> pointers;
  detail::reserveLarge(pointers, points.size());
  for (TPoint& point : points) pointers.push_back(&point);
  return pointers;
}

}  // namespace

std::vector<TPoint*> DTMSurface::getTPointList(std::vector<SurfacePoint*> points) const {
  if (points.size() < kPointsOfATriangle) return {};
  detail::NewObjects<TPoint> list(points.size());
  for (const SurfacePoint* point : points) {
    if (point != nullptr) list.add(roundedForTIN(*point));
  }
  return list.take();
}

CEType* DTMSurface::getCEType() {
  keepPromise();
  if (ceType == nullptr) build(detail::hostsComparison());
  return ceType;
}

// The TIN and its statistics come together or not at all: when memory runs out both are as they were.
void DTMSurface::build(int compareUnshifted) const {
  std::unique_ptr<CEType> built;
  Statistics figures;
  if (surfacePoints.size() >= kPointsOfATriangle) {
    const auto points = roundedForTIN(surfacePoints);
    std::vector<TPoint*> pointers = pointersTo(*points);
    built.reset(detail::Construction::triangulate(pointers, compareUnshifted));
    if (built != nullptr) {
      built->holdPoints(points);
      figures = statisticsOf(*built);
    }
  }
  delete ceType;
  ceType = built.release();
  statistics = figures;
}

void DTMSurface::promiseModel() {
  const bool mayChangeUnseen = arrayBegin != arrayEnd;  // the records of a caller's array change and go as it likes
  if (mayChangeUnseen) {
    build(detail::hostsComparison());
    modelPromised = false;
    return;
  }
  dropModel();
  promisedComparison = detail::hostsComparison();
  modelPromised = true;
}

// What counts as a repeated position is settled by the edit, not by the look that has the TIN built.
void DTMSurface::buildPromised() const {
  build(promisedComparison);
  modelPromised = false;
}

DTMSurface::Statistics DTMSurface::statisticsOf(const CEType& model) {
  Statistics figures;
  const TList* triangles = model.getTList();
  figures.trianglesNumber = triangles == nullptr ? 0 : triangles->getListLen();
  const TINMeasures measures = model.getMeasures();
  figures.twoDArea = measures.area2D;
  figures.threeDArea = measures.area3D;
  figures.minElev = measures.lowest;
  figures.maxElev = measures.highest;
  figures.perimeterTwoD = measures.length2D;
  figures.perimeterThreeD = measures.length3D;
  figures.setExtentOf(&model);
  return figures;
}

void DTMSurface::Statistics::setExtentOf(const CEType* model) {
  // Largest y, smallest y, largest x, smallest x.
  const std::vector<double> extent = model == nullptr ? std::vector<double>(4, 0.0) : model->getRangeXY();
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
  model->toVertexPosition(&e, &n);
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

FillCutResult* DTMSurface::getFillCut(CEType* reference) {
  CEType* model = getCEType();
  FillCutResult* result = model == nullptr ? nullptr : model->getFillCut(reference);
  if (result != nullptr) result->setSurfaceName(surfaceName);
  return result;
}

}  // namespace OrvikDTM
