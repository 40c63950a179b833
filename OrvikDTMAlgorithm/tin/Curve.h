// A curve through the plane along which what is near mostly comes soon. Private.
#pragma once

#include <algorithm>
#include <cstdint>

inline namespace OrvikDTM {
namespace detail {

// The bits of a 32-bit number with a 0 before each.
inline std::uint64_t spreadBits(std::uint64_t v) {
  v = (v | v << 16) & 0x0000FFFF0000FFFFu;
  v = (v | v << 8) & 0x00FF00FF00FF00FFu;
  v = (v | v << 4) & 0x0F0F0F0F0F0F0F0Fu;
  v = (v | v << 2) & 0x3333333333333333u;
  return (v | v << 1) & 0x5555555555555555u;
}

// How far along the curve a place comes, in 2 * bits bits. The place is given in parts of a square's side, each taken
// to the nearest of 0 and 1 that is beyond them; what is not a number counts as 0.
inline std::uint64_t alongCurve(double partX, double partY, unsigned bits) {
  const double last = static_cast<double>((std::uint64_t{1} << bits) - 1);
  const auto step = [last](double part) {
    return static_cast<std::uint64_t>((part > 0.0 ? std::min(part, 1.0) : 0.0) * last);
  };
  return spreadBits(step(partX)) << 1 | spreadBits(step(partY));
}

}  // namespace detail
}  // namespace OrvikDTM
