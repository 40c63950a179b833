// Heights on the plane of a triangle.
#include <cfloat>
#include <utility>

#include <OrvikDTMAlgorithm/tin/FlatTIN.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

// Solves a 3 x 3 system given as an augmented matrix by Gauss-Jordan elimination, exchanging rows where a pivot is
// exactly 0. The solution then stands in the last column; false when there is none.
bool solve(double (&m)[3][4]) {
  for (int column = 0; column < 3; ++column) {
    int pivot = column;
    while (pivot < 3 && m[pivot][column] == 0.0) ++pivot;
    if (pivot == 3) return false;
    if (pivot != column) std::swap(m[pivot], m[column]);
    for (int row = 0; row < 3; ++row) {
      if (row == column) continue;
      const double factor = m[row][column] / m[column][column];
      for (int k = column; k < 4; ++k) m[row][k] -= factor * m[column][k];
    }
  }
  for (int row = 0; row < 3; ++row) m[row][3] /= m[row][row];
  return true;
}

// The height at (x, y) of the plane through three points, relative to the first of them: far from the origin the
// coordinates themselves leave no digits for the plane. 0 when the points are collinear.
double heightOnPlane(const FlatTIN::Corners& c, double x, double y) {
  for (int i = 0; i < 3; ++i) {
    if (c.p[i].x == x && c.p[i].y == y) return c.z[i];
  }
  const Position& a = c.p[0];
  double m[3][4] = {{0.0, 0.0, 1.0, c.z[0]},
                    {c.p[1].x - a.x, c.p[1].y - a.y, 1.0, c.z[1]},
                    {c.p[2].x - a.x, c.p[2].y - a.y, 1.0, c.z[2]}};
  if (!solve(m)) return 0.0;
  return m[0][3] * (x - a.x) + m[1][3] * (y - a.y) + m[2][3];
}

}  // namespace

double FlatTIN::height(int tri, double x, double y) const {
  const Corners* c = corners(tri);
  return c == nullptr ? DBL_MAX : heightOnPlane(*c, x, y);
}

}  // namespace detail
}  // namespace OrvikDTM
