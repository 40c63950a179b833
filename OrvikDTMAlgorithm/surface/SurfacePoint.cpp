// The survey point record.
#include <cstring>

#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/surface/Name.h>
#include <OrvikDTMAlgorithm/surface/SurfacePoint.h>

inline namespace OrvikDTM {
namespace {

// Names that agree in their first bytes name the same point. The zeros behind a shorter name take part, so "P1" is not
// "P10".
constexpr std::size_t kComparedNameBytes = 8;

}  // namespace

void SurfacePoint::setSurfaceName(const char* name) { copyName(surfaceName, name); }

void SurfacePoint::setSurfacePointName(const char* name) { copyName(pointName, name); }

SurfacePoint* SurfacePoint::clone() const {
  auto* copy = new SurfacePoint;
  copy->setSurfaceName(surfaceName);
  copy->setSurfacePointName(pointName);
  copy->n = n;
  copy->e = e;
  copy->z = z;
  return copy;
}

bool SurfacePoint::isSame(const SurfacePoint* other) const {
  return other != nullptr && std::memcmp(pointName, other->pointName, kComparedNameBytes) == 0 && e == other->e &&
         n == other->n && z == other->z;
}

std::string SurfacePoint::toString() const {
  std::string text = surfaceName;
  text.append(",").append(pointName);
  for (const double v : {n, e, z}) text.append(",").append(detail::generalText(v));
  return text;
}

}  // namespace OrvikDTM
