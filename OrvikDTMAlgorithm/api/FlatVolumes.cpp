// Flat functions: volumes between surface files, and their reports. The surfaces live for the time of one call.
#include <memory>

#include <OrvikDTMAlgorithm/api/FileKind.h>
#include <OrvikDTMAlgorithm/api/FlatGuard.h>
#include <OrvikDTMAlgorithm/io/DTMFileOperation.h>
#include <OrvikDTMAlgorithm/report/VolumeReport.h>
#include <OrvikDTMAlgorithm/surface/SurfacePtr.h>

inline namespace OrvikDTM {

using detail::guarded;
using detail::SurfacePtr;

namespace {

using ResultPtr = std::unique_ptr<FillCutResult>;

// The surface in a file; null when it cannot be loaded.
SurfacePtr surfaceIn(const char* path) {
  SurfacePtr surface = detail::newSurface();
  if (!DTMFileOperation().loadSurface(path, detail::kindOfPath(path), surface.get())) surface.reset();
  return surface;
}

void limit(DTMSurface& surface, bool useRange) {
  surface.setRangeList(useRange ? detail::flatState().rangePoints : std::vector<RangePoint*>());
}

ResultPtr againstLevel(const SurfacePtr& surface, double elevation, bool useRange) {
  if (surface == nullptr) return nullptr;
  limit(*surface, useRange);
  return ResultPtr(surface->getFillCut(elevation));
}

ResultPtr againstSurface(const SurfacePtr& surface, const SurfacePtr& reference, bool useRange) {
  if (surface == nullptr || reference == nullptr) return nullptr;
  limit(*surface, useRange);
  return ResultPtr(detail::fillCutBetween(*surface, *reference));
}

}  // namespace

FillCutResult* getFillCut(const char* path, double elevation, bool useRange) {
  return guarded([&] { return againstLevel(surfaceIn(path), elevation, useRange).release(); });
}

FillCutResult* getFillCut2(const char* path, const char* refPath, bool useRange) {
  return guarded([&] { return againstSurface(surfaceIn(path), surfaceIn(refPath), useRange).release(); });
}

void freeFillCutResult(FillCutResult* result) { delete result; }

int exportVolumeReport(const char* path, double elevation, bool useRange, int kind, const char* labels,
                       const char* reportPath) {
  return guarded([&] {
    const SurfacePtr surface = surfaceIn(path);
    const ResultPtr result = againstLevel(surface, elevation, useRange);
    DTMFileOperation files;
    return files.exportVolumeReport(result.get(), surface.get(), kind, elevation, labels, reportPath) ? 1 : 0;
  });
}

int exportVolumeReport2(const char* path, const char* refPath, bool useRange, int kind, const char* labels,
                        const char* reportPath) {
  return guarded([&] {
    const SurfacePtr surface = surfaceIn(path);
    const SurfacePtr reference = surfaceIn(refPath);
    const ResultPtr result = againstSurface(surface, reference, useRange);
    if (result == nullptr) return 0;
    const std::string refName = detail::referenceName(*reference, kind);
    DTMFileOperation files;
    return files.exportVolumeReport(result.get(), surface.get(), kind, refName.c_str(), labels, reportPath) ? 1 : 0;
  });
}

}  // namespace OrvikDTM
