// The height of a point on the plane through three others. Private.
#pragma once

#include <cmath>
#include <utility>

#include <OrvikDTMAlgorithm/FloatingPoint.h>
#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

// A plane z = slopeX * (x - xA) + slopeY * (y - yA) + z0, relative to a first point A: far from the origin the
// coordinates themselves leave no digits for the plane.
struct Plane {
  double slopeX;
  double slopeY;
  double z0;
};

// Solves a 3 x 3 system given as an augmented matrix by Gauss-Jordan elimination, exchanging rows where a pivot is
// exactly 0. The solution then stands in the last column; false when there is none.
inline bool solve(double (&m)[3][4]) {
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

// The plane through A (at 0, 0), B (at bx, by) and C (at cx, cy); false when they are collinear.
inline bool planeByElimination(double za, double bx, double by, double zb, double cx, double cy, double zc,
                               Plane& plane) {
  double m[3][4] = {{0.0, 0.0, 1.0, za}, {bx, by, 1.0, zb}, {cx, cy, 1.0, zc}};
  if (!solve(m)) return false;
  plane = {m[0][3], m[1][3], m[2][3]};
  return true;
}

// The same, bit for bit, in less than half of the time: most of it goes into divisions, and five of the nine have a
// known result. A's row is (0, 0, 1, za), so when bx is not 0, B's becomes the first and A's the second.
//   1st column. A's row: factor 0 / bx, which is 0 * bx, a zero of the same sign, as bx is finite. Its other entries
//               stay 0, since 0 - (+-0) = 0, and 1, so that in the
//   2nd column  the pivot is C's entry, unless it is 0; the rows are exchanged, and A's factor is 0 / pivot, which is
//               0 * pivot. In the
//   3rd column  the pivot is A's 1: the factors are the entries themselves, as is the last entry divided by 1.
// Entries left of the pivot's column are never read again, so they are not computed.
inline bool planeThrough(double za, double bx, double by, double zb, double cx, double cy, double zc, Plane& plane) {
  const double f = cx / bx;
  const double pivot = cy - f * by;
  if (bx == 0.0 || pivot == 0.0 || !std::isfinite(bx) || !std::isfinite(by) || !std::isfinite(f) ||
      !std::isfinite(pivot)) {
    return planeByElimination(za, bx, by, zb, cx, cy, zc, plane);
  }
  const double one = 1.0 - f;      // C's entry in the third column,
  double last = zc - f * zb;       // and in the fourth
  double z0 = za - 0.0 * bx * zb;  // A's entry in the fourth
  const double g = by / pivot;     // B's factor in the second column
  const double third = 1.0 - g * one;
  double first = zb - g * last;
  z0 -= 0.0 * pivot * last;
  first -= third * z0;
  last -= one * z0;
  plane = {first / bx, last / pivot, z0};
  return true;
}

}  // namespace detail
}  // namespace OrvikDTM
