// Lengths, areas and volumes of several triangles at once. Private.
#pragma once

#include <cstddef>

inline namespace OrvikDTM {
namespace detail {

// Triangles number by number: figures of one kind lie side by side, so that the processor can work out those of several
// triangles together.
struct TriangleFigures {
  static constexpr std::size_t kSize = 48;

  // Of the three corners, in their order.
  double x[3][kSize];
  double y[3][kSize];
  double z[3][kSize];

  double planArea[kSize];
  double spatialArea[kSize];
  double volume[kSize];   // of the prism between the triangle and the level
  double lowest[kSize];   // corner, or
  double highest[kSize];  // corner
  double sides[kSize];    // the product of the lengths in plan: positive where all three sides have one

  // Works out the figures of triangles begin to end - 1 from their corners.
  void workOut(double level, std::size_t begin, std::size_t end);
};

}  // namespace detail
}  // namespace OrvikDTM
