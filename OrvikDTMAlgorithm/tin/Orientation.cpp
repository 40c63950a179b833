#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>

#include <OrvikDTMAlgorithm/tin/Orientation.h>
#include <boost/multiprecision/cpp_int.hpp>

inline namespace OrvikDTM {
namespace detail {

namespace {

using boost::multiprecision::cpp_int;

// a - b == difference, without rounding.
bool isExactDifference(double a, double b, double difference) {
  const double bRecovered = a - difference;
  const double aRecovered = difference + bRecovered;
  return a - aRecovered == 0.0 && bRecovered - b == 0.0;
}

// Whether a * b and what its rounding cuts off are doubles of full precision.
bool productIsRepresentable(double a, double b) {
  const double p = a * b;
  constexpr double kSmallest = 1e-250;  // well above where the low half of a product would underflow
  constexpr double kLargest = 1e300;
  return a == 0.0 || b == 0.0 || (std::fabs(p) > kSmallest && std::fabs(p) < kLargest);
}

int signOf(double v) { return v > 0 ? 1 : v < 0 ? -1 : 0; }

// The doubles as whole multiples of one power of two, which does not change the sign of the answer.
struct ScaledNumbers {
  explicit ScaledNumbers(const std::array<double, 6>& values) {
    int smallest = std::numeric_limits<int>::max();
    std::array<int, 6> exponents{};
    std::array<std::int64_t, 6> mantissas{};
    for (std::size_t i = 0; i < values.size(); ++i) {
      mantissas[i] = static_cast<std::int64_t>(std::ldexp(std::frexp(values[i], &exponents[i]), 53));
      if (mantissas[i] != 0) smallest = std::min(smallest, exponents[i]);
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (mantissas[i] == 0) continue;
      number[i] = mantissas[i];
      number[i] <<= static_cast<unsigned>(exponents[i] - smallest);
    }
  }
  std::array<cpp_int, 6> number;
};

int orientationInWholeNumbers(const Position& a, const Position& b, const Position& c) {
  const ScaledNumbers s({a.x, a.y, b.x, b.y, c.x, c.y});
  const auto& n = s.number;
  const cpp_int det = (n[2] - n[0]) * (n[5] - n[1]) - (n[3] - n[1]) * (n[4] - n[0]);
  return det.sign();
}

}  // namespace

int exactOrientation(const Position& a, const Position& b, const Position& c) {
  for (const double v : {a.x, a.y, b.x, b.y, c.x, c.y}) {
    if (!std::isfinite(v)) return 0;
  }
  const double bx = b.x - a.x;
  const double by = b.y - a.y;
  const double cx = c.x - a.x;
  const double cy = c.y - a.y;
  const double left = bx * cy;
  const double right = by * cx;
  const bool differencesExact = isExactDifference(b.x, a.x, bx) && isExactDifference(b.y, a.y, by) &&
                                isExactDifference(c.x, a.x, cx) && isExactDifference(c.y, a.y, cy);
  if (!differencesExact || !productIsRepresentable(bx, cy) || !productIsRepresentable(by, cx)) {
    return orientationInWholeNumbers(a, b, c);
  }
  // Rounding is monotonic, so products that round differently differ that way; otherwise what rounding cut off decides.
  if (left != right) return left > right ? 1 : -1;
  return signOf(std::fma(bx, cy, -left) - std::fma(by, cx, -right));
}

}  // namespace detail
}  // namespace OrvikDTM
