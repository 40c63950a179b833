// Heights on the plane of the triangle that holds a point, one at a time and on a grid.
#include <cfloat>

#include <OrvikDTMAlgorithm/report/U.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/FlatTIN.h>
#include <OrvikDTMAlgorithm/tin/PolygonIndex.h>

inline namespace OrvikDTM {

double CEType::getHeight(double x, double y) {
  const int tri = locateTri(x, y);
  return tri == 0 ? DBL_MAX : flat_->height(tri, x, y);
}

double CEType::getHeightByNumXY(int tri, double x, double y) const { return flat().height(tri, x, y); }

int CEType::countInfinite(double x, double y, double z) const { return U::isInf(x) + U::isInf(y) + U::isInf(z); }

std::vector<std::vector<double>> CEType::proxyTri(double x0, double y0, int nx, int ny, double step) {
  std::vector<std::vector<double>> grid;
  if (nx < 0) return grid;
  const bool clip = rangeList_.size() > 2;
  const detail::PolygonIndex boundary(clip ? rangeList_ : std::vector<TPoint*>());
  const std::size_t columns = ny < 0 ? 0 : static_cast<std::size_t>(ny) + 1;
  grid.assign(static_cast<std::size_t>(nx) + 1, std::vector<double>(columns, DBL_MAX));
  int hint = 1;
  for (int i = 0; i <= nx; ++i) {
    const double x = i * step + x0;
    for (int j = 0; j <= ny; ++j) {
      const double y = j * step + y0;
      if (clip && !boundary.contains({x, y})) continue;
      const int tri = locateTri(x, y, hint);
      hint = tri == 0 ? 1 : tri;
      grid[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)] = getHeightByNumXY(tri, x, y);
    }
  }
  return grid;
}

}  // namespace OrvikDTM
