#include <algorithm>
#include <cstdlib>

#include <OrvikDTMAlgorithm/tin/HullCells.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

Box boundsOf(const std::vector<Position>& points) {
  Box box{points[0].x, points[0].y, points[0].x, points[0].y};
  for (const Position& p : points) {
    box.minX = std::min(box.minX, p.x);
    box.minY = std::min(box.minY, p.y);
    box.maxX = std::max(box.maxX, p.x);
    box.maxY = std::max(box.maxY, p.y);
  }
  return box;
}

}  // namespace

HullCells::HullCells(const HullRing& ring, double cells) {
  if (ring.vertices().empty()) return;
  grid_ = CellGrid(boundsOf(ring.vertices()), cells);
  windings_.assign(grid_.size(), kMixed);
  for (std::size_t row = 0; row < grid_.rows(); ++row) {
    for (std::size_t column = 0; column < grid_.columns(); ++column) {
      const Box box = grid_.boxOf(column, row);
      if (ring.mayTouch(box)) continue;
      const HullRing::Place place = ring.placeOf({box.minX, box.minY});
      if (!place.onRing && std::abs(place.winding) < kMixed) {
        windings_[row * grid_.columns() + column] = static_cast<std::int8_t>(place.winding);
      }
    }
  }
}

}  // namespace detail
}  // namespace OrvikDTM
