// Equal cells over a box, and in which of them a point lies. Private.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>

#include <OrvikDTMAlgorithm/tin/BoxTree.h>
#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

class CellGrid {
 public:
  CellGrid() = default;  // no cells

  // About `cells` cells over `bounds`; none when the box has no extent, or none that can be divided.
  CellGrid(const Box& bounds, double cells) : bounds_(bounds) {
    const double width = bounds.maxX - bounds.minX;
    const double height = bounds.maxY - bounds.minY;
    if (!(width > 0 && height > 0) || !std::isfinite(width) || !std::isfinite(height)) return;
    const double columns = std::clamp(std::sqrt(cells) * std::sqrt(width / height), 1.0, std::max(cells, 1.0));
    columns_ = static_cast<std::size_t>(columns);
    rows_ = static_cast<std::size_t>(std::max(cells / columns, 1.0));
    perX_ = static_cast<double>(columns_) / width;
    perY_ = static_cast<double>(rows_) / height;
    if (!std::isfinite(perX_) || !std::isfinite(perY_)) columns_ = rows_ = 0;
  }

  std::size_t size() const { return columns_ * rows_; }
  std::size_t columns() const { return columns_; }
  std::size_t rows() const { return rows_; }

  bool covers(const Position& p) const {
    return size() > 0 && p.x >= bounds_.minX && p.x <= bounds_.maxX && p.y >= bounds_.minY && p.y <= bounds_.maxY;
  }

  // The cell of a point that the grid covers.
  std::size_t cellOf(const Position& p) const {
    return stepOf(p.y - bounds_.minY, perY_, rows_) * columns_ + stepOf(p.x - bounds_.minX, perX_, columns_);
  }

  // A box with every point that cellOf() puts into that cell. It is wider than the cell by more than the rounding of a
  // step, which is a few times 2^-53 of the coordinates.
  Box boxOf(std::size_t column, std::size_t row) const {
    constexpr double kSlack = 1e-12;
    const double slackX = kSlack * (std::fabs(bounds_.minX) + std::fabs(bounds_.maxX));
    const double slackY = kSlack * (std::fabs(bounds_.minY) + std::fabs(bounds_.maxY));
    const auto x = static_cast<double>(column);
    const auto y = static_cast<double>(row);
    return {bounds_.minX + x / perX_ - slackX, bounds_.minY + y / perY_ - slackY,
            bounds_.minX + (x + 1) / perX_ + slackX, bounds_.minY + (y + 1) / perY_ + slackY};
  }

 private:
  static std::size_t stepOf(double way, double perUnit, std::size_t steps) {
    return std::min(static_cast<std::size_t>(way * perUnit), steps - 1);
  }

  Box bounds_{};
  std::size_t columns_ = 0;
  std::size_t rows_ = 0;
  double perX_ = 0.0;
  double perY_ = 0.0;
};

}  // namespace detail
}  // namespace OrvikDTM
