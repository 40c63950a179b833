// What a library of surfaces does with files: loading, saving, volume reports.
#include <memory>
#include <stdexcept>

#include <OrvikDTMAlgorithm/io/DTMFileOperation.h>
#include <OrvikDTMAlgorithm/report/VolumeReport.h>
#include <OrvikDTMAlgorithm/surface/DTMSurfaceLib.h>
#include <OrvikDTMAlgorithm/surface/SurfacePtr.h>
#include <OrvikDTMAlgorithm/surface/SurfacesOfLib.h>

inline namespace OrvikDTM {

using detail::forSurface;

namespace {

// A LandXML file without points or faces is only one more that cannot be loaded: a library reports by its results.
bool load(const char* path, int type, DTMSurface& surface) {
  try {
    return DTMFileOperation().loadSurface(path, type, &surface);
  } catch (const std::out_of_range&) {
    return false;
  }
}

}  // namespace

DTMSurface* DTMSurfaceLib::loadDTMSurface(const char* path, int type) {
  detail::SurfacePtr surface = detail::newSurface();
  if (!load(path, type, *surface)) return nullptr;
  surfaces_.push_back(surface.get());
  return surface.release();
}

int DTMSurfaceLib::saveSurface(unsigned int index, const char* path) {
  return forSurface(*this, index, [&](DTMSurface& s) { return DTMFileOperation().saveSurfaces(path, &s) ? 1 : 0; });
}

int DTMSurfaceLib::exportVolumeReport(int index, double elevation, int kind, const char* labels, const char* path) {
  const auto at = static_cast<unsigned int>(index);
  const std::unique_ptr<FillCutResult> result(getFillCut(at, elevation));
  if (result == nullptr) return 0;
  return DTMFileOperation().exportVolumeReport(result.get(), getSurface(at), kind, elevation, labels, path) ? 1 : 0;
}

int DTMSurfaceLib::exportVolumeReport(int index, unsigned int refIndex, int kind, const char* labels,
                                      const char* path) {
  const auto at = static_cast<unsigned int>(index);
  const std::unique_ptr<FillCutResult> result(getFillCut(at, refIndex));
  if (result == nullptr) return 0;
  const std::string refName = detail::referenceName(*getSurface(refIndex), kind);
  DTMFileOperation files;
  return files.exportVolumeReport(result.get(), getSurface(at), kind, refName.c_str(), labels, path) ? 1 : 0;
}

}  // namespace OrvikDTM
