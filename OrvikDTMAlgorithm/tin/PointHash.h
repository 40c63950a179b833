// A hash of points for exact look-up by x, y and z. Private.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include <OrvikDTMAlgorithm/tin/TPoint.h>

inline namespace OrvikDTM {
namespace detail {

// A point's coordinates bit by bit: what is not equal, or equals nothing, is told apart too.
using PointWords = std::array<std::uint64_t, 3>;

inline PointWords wordsOf(const TPoint& p) {
  return {std::bit_cast<std::uint64_t>(p.getX()), std::bit_cast<std::uint64_t>(p.getY()),
          std::bit_cast<std::uint64_t>(p.getZ())};
}

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
