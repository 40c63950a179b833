// Editing the point list of a surface. Every edit makes the TIN stale; adding and replacing a point promise a new one.
#include <algorithm>
#include <utility>

#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/SurfacePoint.h>

inline namespace OrvikDTM {

void DTMSurface::setSurfacePoints(const std::vector<SurfacePoint*>& points) {
  if (points.empty()) return;
  keepPromise();
  surfacePoints = points;
  pointsNumber = getPointsNumber();
  if (std::none_of(points.begin(), points.end(), [this](const SurfacePoint* p) { return isInCallersArray(p); })) {
    arrayBegin = nullptr;
    arrayEnd = nullptr;
  }
}

int DTMSurface::addSurfacePoint(SurfacePoint* point, unsigned long long index) {
  if (point == nullptr) return 0;
  const auto position = static_cast<std::ptrdiff_t>(std::min<unsigned long long>(index, surfacePoints.size()));
  surfacePoints.insert(surfacePoints.begin() + position, point);
  try {
    promiseModel();
  } catch (...) {
    surfacePoints.erase(surfacePoints.begin() + position);
    throw;
  }
  point->setSurfaceName(surfaceName);
  ++pointsNumber;
  return 1;
}

int DTMSurface::updateSurfacePoint(unsigned int index, SurfacePoint* point) {
  if (point == nullptr || index >= surfacePoints.size()) return 0;
  SurfacePoint* replaced = std::exchange(surfacePoints[index], point);
  try {
    promiseModel();
  } catch (...) {
    surfacePoints[index] = replaced;
    throw;
  }
  point->setSurfaceName(surfaceName);
  if (replaced != point) releaseRecord(replaced);
  return 1;
}

int DTMSurface::deleteSurfacePoint(unsigned int index, unsigned long long count) {
  const std::size_t length = surfacePoints.size();
  if (index >= length || count == 0) return 0;
  keepPromise();  // the statistics go on describing the TIN before the deletion
  const auto releaseEnd = static_cast<std::size_t>(std::min<unsigned long long>(count, length));
  for (std::size_t i = index; i < releaseEnd; ++i) releaseRecord(surfacePoints[i]);

  const auto removed = static_cast<std::ptrdiff_t>(std::min<unsigned long long>(count, length - index));
  const auto first = surfacePoints.begin() + static_cast<std::ptrdiff_t>(index);
  surfacePoints.erase(first, first + removed);
  pointsNumber -= static_cast<int>(removed);
  dropModel();
  return 1;
}

void DTMSurface::dropLastPoints(std::size_t count) {
  for (; count > 0; --count) {
    releaseRecord(surfacePoints.back());
    surfacePoints.pop_back();
    --pointsNumber;
  }
  promiseModel();
}

int DTMSurface::updateDTMSurface(int count, SurfacePoint* points) {
  keepPromise();
  const int length = points == nullptr ? 0 : std::max(count, 0);
  std::vector<SurfacePoint*> listed;
  listed.reserve(static_cast<std::size_t>(length));
  for (int i = 0; i < length; ++i) listed.push_back(points + i);
  for (const SurfacePoint* point : surfacePoints) releaseRecord(point);
  surfacePoints.swap(listed);
  arrayBegin = points;
  arrayEnd = points + length;
  return 1;
}

}  // namespace OrvikDTM
