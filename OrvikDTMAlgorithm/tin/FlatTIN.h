// A TIN as flat arrays, for what visits many triangles: location, heights, comparisons. It is a copy: it holds what the
// lists and points said when it was made and needs them no more. Private.
#pragma once

#include <memory>
#include <vector>

#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {

class CEType;

namespace detail {

class FlatTIN {
 public:
  // The corners as every operation takes them: the ends of the first edge, then the end of the second edge that is
  // neither.
  struct Corners {
    Position p[3];
    double z[3];
  };

  static std::shared_ptr<const FlatTIN> of(const CEType& tin);

  int triangleCount() const;

  // Null for a triangle that does not exist or whose first two edges cannot be measured.
  const Corners* corners(int tri) const;

  // The answers of CEType::locateTri and locateTri1, the same to the last triangle; `last` stands for the triangle
  // found last and is changed as theirs is.
  int locate(double x, double y, int& last) const;
  int locate(double x, double y, int start, int& last) const;
  int scan(double x, double y, int& last) const;

  // The height of the plane of triangle `tri`; DBL_MAX for 0 and for what does not exist.
  double height(int tri, double x, double y) const;

  // Whether the area test accepts (x, y) in the triangle.
  bool acceptsByArea(int tri, double x, double y) const;

  // Calls visit(tri) for a superset of the triangles whose boxes meet [minX, maxX] x [minY, maxY], each once.
  // ...
};

}  // namespace detail
}  // namespace OrvikDTM
