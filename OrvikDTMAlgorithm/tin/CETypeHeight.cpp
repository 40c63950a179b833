// Heights on the plane of the triangle that holds a point, one at a time and on a grid.
#include <cfloat>
#include <cmath>
#include <utility>

#include <OrvikDTMAlgorithm/report/U.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>

inline namespace OrvikDTM {

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
double heightOnPlane(const TPoint& a, const TPoint& b, const TPoint& c, double x, double y) {
  for (const TPoint* corner : {&a, &b, &c}) {
    if (corner->getX() == x && corner->getY() == y) return corner->getZ();
  }
  double m[3][4] = {{0.0, 0.0, 1.0, a.getZ()},
                    {b.getX() - a.getX(), b.getY() - a.getY(), 1.0, b.getZ()},
                    {c.getX() - a.getX(), c.getY() - a.getY(), 1.0, c.getZ()}};
  if (!solve(m)) return 0.0;
  return m[0][3] * (x - a.getX()) + m[1][3] * (y - a.getY()) + m[2][3];
}

}  // namespace

double CEType::getHeight(double x, double y) { return getHeightByNumXY(locateTri(x, y), x, y); }

double CEType::getHeightByNumXY(int tri, double x, double y) const {
  Corners corners;
  if (!cornersOf(tri, corners)) return DBL_MAX;
  return heightOnPlane(*corners.p1, *corners.p2, *corners.p3, x, y);
}

int CEType::countInfinite(double x, double y, double z) const { return U::isInf(x) + U::isInf(y) + U::isInf(z); }

std::vector<std::vector<double>> CEType::proxyTri(double x0, double y0, int nx, int ny, double step) {
  std::vector<std::vector<double>> grid;
  if (nx < 0) return grid;
  const bool clip = rangeList_.size() > 2;
  const std::size_t columns = ny < 0 ? 0 : static_cast<std::size_t>(ny) + 1;
  grid.assign(static_cast<std::size_t>(nx) + 1, std::vector<double>(columns, DBL_MAX));
  int hint = 1;
  for (int i = 0; i <= nx; ++i) {
    const double x = i * step + x0;
    for (int j = 0; j <= ny; ++j) {
      const double y = j * step + y0;
      const TPoint p(x, y, 0.0);
      if (clip && !Surface::isPtInPolygon(&p, rangeList_)) continue;
      const int tri = locateTri(x, y, hint);
      hint = tri == 0 ? 1 : tri;
      grid[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)] = getHeightByNumXY(tri, x, y);
    }
  }
  return grid;
}

}  // namespace OrvikDTM
