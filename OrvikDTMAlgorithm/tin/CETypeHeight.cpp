// Heights on the plane of the triangle that holds a point, one at a time and on a grid.
#include <cfloat>

#include <OrvikDTMAlgorithm/report/U.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/FlatTIN.h>
#include <OrvikDTMAlgorithm/tin/PolygonIndex.h>
#include <OrvikDTMAlgorithm/tin/RequireMemory.h>

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
  const std::size_t rows = static_cast<std::size_t>(nx) + 1;
  const std::size_t columns = ny < 0 ? 0 : static_cast<std::size_t>(ny) + 1;
  detail::requireMemory(rows, sizeof(std::vector<double>) + columns * sizeof(double));
  grid.assign(rows, std::vector<double>(columns, DBL_MAX));
  int hint = 1;
  for (std::size_t i = 0; i < rows; ++i) {
    const double x = static_cast<double>(i) * step + x0;
    for (std::size_t j = 0; j < columns; ++j) {
      const double y = static_cast<double>(j) * step + y0;
      if (clip && !boundary.contains({x, y})) continue;
      const int tri = locateTri(x, y, hint);
      hint = tri == 0 ? 1 : tri;
      grid[i][j] = getHeightByNumXY(tri, x, y);
    }
  }
  return grid;
}

}  // namespace OrvikDTM
