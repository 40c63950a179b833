// The plane of one triangle of a flat TIN, for more than one height. Private.
#pragma once

#include <OrvikDTMAlgorithm/tin/FlatTIN.h>
#include <OrvikDTMAlgorithm/tin/PlaneHeight.h>

inline namespace OrvikDTM {
namespace detail {

class TrianglePlane {
 public:
  TrianglePlane() = default;

  // The corners must outlive it.
  explicit TrianglePlane(const FlatTIN::Corners& c) : corners_(&c) {
    const Position& a = c.p[0];
    isPlane_ =
        planeThrough(c.z[0], c.p[1].x - a.x, c.p[1].y - a.y, c.z[1], c.p[2].x - a.x, c.p[2].y - a.y, c.z[2], plane_);
  }

  // At a corner the corner's height, exactly; elsewhere 0 when the corners are collinear.
  double height(double x, double y) const {
    for (int i = 0; i < 3; ++i) {
      if (corners_->p[i].x == x && corners_->p[i].y == y) return corners_->z[i];
    }
    if (!isPlane_) return 0.0;
    return plane_.slopeX * (x - corners_->p[0].x) + plane_.slopeY * (y - corners_->p[0].y) + plane_.z0;
  }

 private:
  const FlatTIN::Corners* corners_ = nullptr;
  Plane plane_{};
  bool isPlane_ = false;
};

}  // namespace detail
}  // namespace OrvikDTM
