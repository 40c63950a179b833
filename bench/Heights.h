// The places at which heights are asked for, the same for everybody who answers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace bench {

struct Place {
  double x;
  double y;
};

inline constexpr std::size_t kHeights = 1000000;

// Row by row, within the square that "uniform_1m" fills.
inline std::vector<Place> gridPlaces() {
  constexpr int kRows = 1000;
  std::vector<Place> places;
  places.reserve(kHeights);
  for (int row = 0; row < kRows; ++row) {
    for (int column = 0; column < kRows; ++column) places.push_back({1.25 + 0.9973 * column, 1.5 + 0.9971 * row});
  }
  return places;
}

// One anywhere, the next anywhere else.
inline std::vector<Place> randomPlaces() {
  std::vector<Place> places;
  places.reserve(kHeights);
  std::uint64_t state = 12345;
  const auto next = [&state] {
    constexpr double kSide = 997.0;
    state = state * 6364136223846793005u + 1442695040888963407u;
    return 1.0 + kSide * static_cast<double>(state >> 11) * 0x1p-53;
  };
  for (std::size_t i = 0; i < kHeights; ++i) {
    const double x = next();
    places.push_back({x, next()});
  }
  return places;
}

}  // namespace bench
