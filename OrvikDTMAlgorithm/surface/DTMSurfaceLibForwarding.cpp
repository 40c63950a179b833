// What a library of surfaces hands on to the surface that an index names. The index is checked in one place.
#include <limits>

#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/DTMSurfaceLib.h>
#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/surface/SurfacesOfLib.h>

inline namespace OrvikDTM {

using detail::forSurface;

namespace {

constexpr auto kAppend = std::numeric_limits<unsigned long long>::max();

// A negative index of a point names none, as a large one does.
unsigned int unsignedIndex(int pointIndex) { return static_cast<unsigned int>(pointIndex); }

}  // namespace

bool DTMSurfaceLib::previewDTMSurface(unsigned int index, double minX, double maxX, double minY, double maxY,
                                      std::vector<DrawLine*>& lines) {
  return forSurface(*this, index, [&](DTMSurface& s) { return s.drawSurface(minX, maxX, minY, maxY, lines); });
}

int DTMSurfaceLib::exportFileSJW(unsigned int index, const char* path) {
  return forSurface(*this, index, [&](DTMSurface& s) { return s.exportFileSJW(path) ? 1 : 0; });
}

int DTMSurfaceLib::updateDTMSurface(unsigned int index, int count, SurfacePoint* points) {
  return forSurface(*this, index, [&](DTMSurface& s) { return s.updateDTMSurface(count, points); });
}

void DTMSurfaceLib::getSurfacePoints(unsigned int index, std::vector<SurfacePoint*>& out) {
  if (DTMSurface* surface = getSurface(index)) out = surface->getSurfacePoints();
}

int DTMSurfaceLib::addSurfacePoint(unsigned int index, SurfacePoint* point) {
  return forSurface(*this, index, [&](DTMSurface& s) { return s.addSurfacePoint(point, kAppend); });
}

int DTMSurfaceLib::updateSurfacePoint(unsigned int index, int pointIndex, SurfacePoint* point) {
  return forSurface(*this, index,
                    [&](DTMSurface& s) { return s.updateSurfacePoint(unsignedIndex(pointIndex), point); });
}

int DTMSurfaceLib::deleteSurfacePoint(unsigned int index, int pointIndex) {
  return forSurface(*this, index, [&](DTMSurface& s) { return s.deleteSurfacePoint(unsignedIndex(pointIndex), 1); });
}

void DTMSurfaceLib::loadSurfacePointsFile(unsigned int index, const char* path, std::vector<SurfacePoint*>& out) {
  if (DTMSurface* surface = getSurface(index)) surface->loadSurfacePointsFile(path, out);
}

int DTMSurfaceLib::checkSurfacePoint(unsigned int index, double n, double e, double* z) {
  return forSurface(*this, index, [&](DTMSurface& s) { return s.checkSurfacePoint(n, e, z); });
}

int DTMSurfaceLib::setRangeList(unsigned int index, const std::vector<RangePoint*>& range) {
  return forSurface(*this, index, [&](DTMSurface& s) { return s.setRangeList(range); });
}

FillCutResult* DTMSurfaceLib::getFillCut(unsigned int index, double elevation) {
  return forSurface(*this, index, [&](DTMSurface& s) { return s.getFillCut(elevation); });
}

FillCutResult* DTMSurfaceLib::getFillCut(unsigned int index, unsigned int refIndex) {
  DTMSurface* reference = getSurface(refIndex);
  if (reference == nullptr) return nullptr;
  return forSurface(*this, index, [&](DTMSurface& s) { return detail::fillCutBetween(s, *reference); });
}

}  // namespace OrvikDTM
