// The surface as an object: its name, its copies, and what it releases.
#include <functional>
#include <memory>

#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/Name.h>
#include <OrvikDTMAlgorithm/surface/ReleasedMeanwhile.h>
#include <OrvikDTMAlgorithm/surface/SurfacePoint.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>

inline namespace OrvikDTM {

void DTMSurface::setSurfaceName(const char* name) { copyName(surfaceName, name); }

void DTMSurface::release() {
  for (const SurfacePoint* point : surfacePoints) releaseRecord(point);
  surfacePoints = {};
  pointsNumber = 0;
  arrayBegin = nullptr;
  arrayEnd = nullptr;
  dropModel();
  statistics = {};
}

DTMSurface* DTMSurface::clone() const {
  const auto releaseAll = [](DTMSurface* unfinished) {
    unfinished->release();
    delete unfinished;
  };
  std::unique_ptr<DTMSurface, decltype(releaseAll)> copy(new DTMSurface, releaseAll);
  copy->setSurfaceName(surfaceName);
  copy->isDrawDTM = isDrawDTM;
  copy->statistics = latest();
  copy->surfacePoints.reserve(surfacePoints.size());
  for (const SurfacePoint* point : surfacePoints) {
    copy->surfacePoints.push_back(point == nullptr ? nullptr : point->clone());
  }
  copy->pointsNumber = pointsNumber;
  return copy.release();
}

// A promised TIN that is dropped before anybody looked is not built; what becomes of the statistics is the caller's.
void DTMSurface::dropModel() {
  modelPromised = false;
  delete ceType;
  ceType = nullptr;
}

void DTMSurface::setCEType(CEType* model) {
  keepPromise();
  if (model == ceType) return;
  delete ceType;
  ceType = model;
}

bool DTMSurface::isInCallersArray(const SurfacePoint* point) const {
  const std::less<> before;  // a total order, also of pointers into different arrays
  return !before(point, arrayBegin) && before(point, arrayEnd);
}

void DTMSurface::releaseRecord(const SurfacePoint* point) const {
  if (isInCallersArray(point)) return;
  detail::ReleasedMeanwhile::note(point);
  delete point;
}

}  // namespace OrvikDTM
