// A survey point of a TIN in projected plane coordinates: x = easting, y = northing, z = elevation.
#pragma once

#include <OrvikDTMAlgorithm/Export.h>
#include <OrvikDTMAlgorithm/tin/Edits.h>

inline namespace OrvikDTM {

class ORVIKDTM_API TPoint {
 public:
  TPoint(double x, double y, double z) : x_(x), y_(y), z_(z) {}
  TPoint(const TPoint&) = default;
  TPoint& operator=(const TPoint& other) noexcept {
    detail::Edits::note(this);
    x_ = other.x_;
    y_ = other.y_;
    z_ = other.z_;
    return *this;
  }

  double getX() const { return x_; }
  double getY() const { return y_; }
  double getZ() const { return z_; }
  void setX(double x) {
    detail::Edits::note(this);
    x_ = x;
  }
  void setY(double y) {
    detail::Edits::note(this);
    y_ = y;
  }
  void setZ(double z) {
    detail::Edits::note(this);
    z_ = z;
  }

  // True when the plan positions are exactly equal; z takes no part. False for a null pointer.
  bool equals(const TPoint* other) const { return other != nullptr && x_ == other->x_ && y_ == other->y_; }

  // True when x, y and z are all exactly equal.
  bool operator==(const TPoint& other) const { return x_ == other.x_ && y_ == other.y_ && z_ == other.z_; }

 private:
  double x_;
  double y_;
  double z_;
};

}  // namespace OrvikDTM
