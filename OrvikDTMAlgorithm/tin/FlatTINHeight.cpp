// Heights on the plane of a triangle.
#include <cfloat>

#include <OrvikDTMAlgorithm/tin/FlatTIN.h>
#include <OrvikDTMAlgorithm/tin/PlaneHeight.h>

inline namespace OrvikDTM {
namespace detail {

double FlatTIN::height(int tri, double x, double y) const {
  const Corners* c = corners(tri);
  if (c == nullptr) return DBL_MAX;
  for (int i = 0; i < 3; ++i) {
    if (c->p[i].x == x && c->p[i].y == y) return c->z[i];
  }
  const Position& a = c->p[0];
  const Position& b = c->p[1];
  const Position& d = c->p[2];
  Plane plane{};
  if (!planeThrough(c->z[0], b.x - a.x, b.y - a.y, c->z[1], d.x - a.x, d.y - a.y, c->z[2], plane)) return 0.0;
  return plane.slopeX * (x - a.x) + plane.slopeY * (y - a.y) + plane.z0;
}

}  // namespace detail
}  // namespace OrvikDTM
