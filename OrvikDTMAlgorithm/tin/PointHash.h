// A hash of points for exact look-up by x, y and z. Private.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include <OrvikDTMAlgorithm/tin/TPoint.h>

inline namespace OrvikDTM {
namespace detail {

// Points that are equal (0 and -0 are) have equal hashes.
struct PointHash {
  std::size_t operator()(const TPoint& p) const {
    std::uint64_t h = 0;
    for (const double v : {p.getX(), p.getY(), p.getZ()}) {
      h = (h ^ std::bit_cast<std::uint64_t>(v + 0.0)) * 0x9E3779B97F4A7C15u;
      h ^= h >> 29;
    }
    return static_cast<std::size_t>(h);
  }
};

}  // namespace detail
}  // namespace OrvikDTM
