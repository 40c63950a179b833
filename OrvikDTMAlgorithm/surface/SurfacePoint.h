// One named survey point of a surface. Northing comes before easting, in memory and in every text form.
#pragma once

#include <string>

#include <OrvikDTMAlgorithm/Export.h>
#include <OrvikDTMAlgorithm/surface/NameSize.h>

inline namespace OrvikDTM {

class ORVIKDTM_API SurfacePoint {
 public:
  // Empty names, coordinates 0.
  SurfacePoint() = default;
  SurfacePoint(const SurfacePoint&) = default;
  SurfacePoint& operator=(const SurfacePoint&) = default;
  SurfacePoint(SurfacePoint&&) = default;
  SurfacePoint& operator=(SurfacePoint&&) = default;
  ~SurfacePoint() = default;

  // The names: the record's own zero-terminated buffers. A name is cut after its 23rd byte.
  char* getSurfaceName() { return surfaceName; }
  const char* getSurfaceName() const { return surfaceName; }
  void setSurfaceName(const char* name);
  char* getSurfacePointName() { return pointName; }
  const char* getSurfacePointName() const { return pointName; }
  void setSurfacePointName(const char* name);

  // Easting (the TIN's x), northing (its y) and elevation.
  double getE() const { return e; }
  double getN() const { return n; }
  double getZ() const { return z; }
  void setE(double easting) { e = easting; }
  void setN(double northing) { n = northing; }
  void setZ(double elevation) { z = elevation; }

  // A new record with the same contents, the caller's.
  SurfacePoint* clone() const;

  // True when the first eight bytes of the point names and all three coordinates are exactly equal (names that differ
  // later count as the same; a NaN coordinate equals nothing). The surface's name takes no part. False for null.
  bool isSame(const SurfacePoint* other) const;

  // "surface,point,n,e,z", the numbers with six significant digits: "S,P1,100,200.5,3".
  std::string toString() const;

 private:
  friend struct RecordLayout;

  char surfaceName[kNameSize] = {};
  char pointName[kNameSize] = {};
  double n = 0.0;
  double e = 0.0;
  double z = 0.0;
};

}  // namespace OrvikDTM
