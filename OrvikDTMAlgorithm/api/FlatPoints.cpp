// Flat functions: the points of a surface of the current library.
#include <limits>
#include <memory>
#include <vector>

#include <OrvikDTMAlgorithm/api/FlatGuard.h>
#include <OrvikDTMAlgorithm/api/StillListed.h>
#include <OrvikDTMAlgorithm/surface/ListedPoints.h>

inline namespace OrvikDTM {

using detail::flatState;
using detail::handOut;
using detail::withLibrary;
using detail::withSurface;

namespace {

constexpr auto kAppend = std::numeric_limits<unsigned long long>::max();

std::unique_ptr<SurfacePoint> newPoint(const char* name, double n, double e, double z) {
  auto point = std::make_unique<SurfacePoint>();
  point->setSurfacePointName(name);
  point->setN(n);
  point->setE(e);
  point->setZ(z);
  return point;
}

// Appends a point, which is the surface's then.
int append(DTMSurface& surface, std::unique_ptr<SurfacePoint> point) {
  surface.addSurfacePoint(point.get(), kAppend);
  static_cast<void>(point.release());
  return 1;
}

// Whether a surface is still in its library, where it was as a rule.
bool holds(const DTMSurfaceLib& library, const DTMSurface* surface, unsigned int expected) {
  if (library.getSurface(expected) == surface) return true;
  for (unsigned int i = 0; i < library.getSurfacesNumber(); ++i) {
    if (library.getSurface(i) == surface) return true;
  }
  return false;
}

// Hands out a surface's own records. The callback may edit the surface, or delete it: what it has deleted is left out.
// Its edits are not looked at here but for the list, so any number of them costs no more than the host's own looks.
int handOutPoints(const DTMSurfaceLib& library, unsigned int index) {
  DTMSurface* surface = library.getSurface(index);
  if (surface == nullptr) return 0;
  const std::vector<SurfacePoint*> points = surface->getSurfacePoints();
  detail::StillListed stillListed;
  for (SurfacePoint* point : points) {
    if (!holds(library, surface, index)) break;
    if (point == nullptr || !stillListed.in(detail::ListedPoints::of(*surface), point)) continue;
    if (!handOut(&detail::Callbacks::surfacePoint, point)) break;
  }
  return points.empty() ? 0 : 1;
}

using Copies = std::vector<std::unique_ptr<SurfacePoint>>;

Copies copiesOf(const std::vector<SurfacePoint*>& points) {
  Copies copies;
  copies.reserve(points.size());
  for (const SurfacePoint* point : points) copies.emplace_back(point->clone());
  return copies;
}

// The points that a surface has just read, as copies for the callback. Without memory for them the surface does not
// keep the points either.
Copies copiesOfRead(const std::vector<SurfacePoint*>& points, DTMSurface& surface) {
  try {
    return copiesOf(points);
  } catch (...) {
    detail::ListedPoints::dropLast(surface, points.size());
    throw;
  }
}

// Hands out copies, which are the callback's. All were made before the first goes, since the callback may edit the
// surface; those that find no callback any more are freed.
void handOutCopies(Copies copies) {
  for (std::unique_ptr<SurfacePoint>& copy : copies) {
    if (flatState().callbacks.surfacePoint == nullptr) return;
    handOut(&detail::Callbacks::surfacePoint, copy.release());
  }
}

}  // namespace

int addSurfacePoint(unsigned int index, const char* pointName, double n, double e, double z) {
  return withSurface(index, [&](DTMSurface& surface) { return append(surface, newPoint(pointName, n, e, z)); });
}

int updateSurfacePoint(unsigned int index, unsigned int pointIndex, const char* pointName, double n, double e,
                       double z) {
  return withSurface(index, [&](DTMSurface& surface) {
    std::unique_ptr<SurfacePoint> point = newPoint(pointName, n, e, z);
    if (surface.updateSurfacePoint(pointIndex, point.get()) == 0) return 0;
    static_cast<void>(point.release());
    return 1;
  });
}

int deleteSurfacePoint(unsigned int index, unsigned int pointIndex) {
  return withSurface(index, [&](DTMSurface& surface) { return surface.deleteSurfacePoint(pointIndex, 1); });
}

int getSurfacePoints(unsigned int index) {
  return withLibrary([&](const DTMSurfaceLib& library) { return handOutPoints(library, index); });
}

int loadSurfacePointsFile(unsigned int index, const char* path) {
  return withSurface(index, [&](DTMSurface& surface) {
    std::vector<SurfacePoint*> read;
    surface.loadSurfacePointsFile(path, read);
    if (flatState().callbacks.surfacePoint != nullptr) handOutCopies(copiesOfRead(read, surface));
    return read.empty() ? 0 : 1;
  });
}

void freeSurfacePoint(SurfacePoint* point) {
  detail::ReleasedMeanwhile::note(point);
  delete point;
}

int checkSurfacePoint(unsigned int index, double n, double e, double* z) {
  return withSurface(index, [&](DTMSurface& surface) { return surface.checkSurfacePoint(n, e, z); });
}

}  // namespace OrvikDTM
