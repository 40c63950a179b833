// The list of surfaces, and what becomes of them.
#include <memory>

#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/DTMSurfaceLib.h>

inline namespace OrvikDTM {

DTMSurfaceLib::~DTMSurfaceLib() {
  for (const DTMSurface* surface : surfaces_) delete surface;
}

void DTMSurfaceLib::release() {
  for (DTMSurface* surface : surfaces_) {
    surface->release();
    delete surface;
  }
  surfaces_ = {};
}

DTMSurface* DTMSurfaceLib::addDTMSurface(const char* name) {
  auto surface = std::make_unique<DTMSurface>();
  surface->setSurfaceName(name);
  surfaces_.push_back(surface.get());
  return surface.release();
}

int DTMSurfaceLib::deleteDTMSurface(unsigned int index) {
  const DTMSurface* surface = getSurface(index);
  if (surface == nullptr) return 0;
  surfaces_.erase(surfaces_.begin() + static_cast<std::ptrdiff_t>(index));
  delete surface;
  return 1;
}

int DTMSurfaceLib::releaseDTMSurface(unsigned int index) {
  if (DTMSurface* surface = getSurface(index)) surface->release();
  return deleteDTMSurface(index);
}

DTMSurface* DTMSurfaceLib::getSurface(unsigned int index) const {
  return index < surfaces_.size() ? surfaces_[index] : nullptr;
}

}  // namespace OrvikDTM
