// Heights on the plane of a triangle.
#include <cfloat>

#include <OrvikDTMAlgorithm/tin/FlatTIN.h>
#include <OrvikDTMAlgorithm/tin/TrianglePlane.h>

inline namespace OrvikDTM {
namespace detail {

double FlatTIN::height(int tri, double x, double y) const {
  const Corners* c = corners(tri);
  return c == nullptr ? DBL_MAX : TrianglePlane(*c).height(x, y);
}

}  // namespace detail
}  // namespace OrvikDTM
