// The library's number texts made the slow way, by the C library in the C locale, to compare the fast ways with; and
// the inputs on which they are most likely to differ.
#pragma once

#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace slow {

inline std::string printed(const char* format, int decimals, double v) {
  char text[700];
  std::snprintf(text, sizeof text, format, decimals, v);
  const bool isZero = text[0] == '-' && std::strspn(text + 1, "0.") == std::strlen(text + 1);
  return isZero ? text + 1 : text;
}

inline std::string toString(double v) {
  if (std::isnan(v)) return "NaN";
  if (std::isinf(v) || v == DBL_MAX || v == -DBL_MAX) return v > 0 ? "\xA1\xDE" : "-\xA1\xDE";
  return printed("%.*f", 6, v);
}

inline std::string toString(int digits, double v) {
  if (std::isnan(v)) return "NaN";
  const double factor = std::strtod(("1e" + std::to_string(digits)).c_str(), nullptr);
  const double s = v * factor;
  const double rounded = s > 0 ? std::floor(s + 0.5) : std::ceil(s - 0.5);
  return toString(rounded / factor);
}

inline std::string roundUp(int digits, double v) {
  if (std::isnan(v)) return "NaN";
  return printed("%.*f", digits, v + 4.0 / std::strtod(("1e" + std::to_string(digits + 1)).c_str(), nullptr));
}

inline double read(const std::string& text) { return std::strtod(text.c_str(), nullptr); }

inline bool sameBits(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) || (std::isnan(a) && std::isnan(b));
}

inline std::vector<double> specialNumbers() {
  constexpr double kInf = std::numeric_limits<double>::infinity();
  std::vector<double> numbers = {0.0,
                                 DBL_MAX,
                                 DBL_MIN,
                                 DBL_TRUE_MIN,
                                 DBL_EPSILON,
                                 kInf,
                                 1e305,
                                 1e300,
                                 1e22,
                                 4503599627370496.0,
                                 1e-6,
                                 5e-7,
                                 0.00005,
                                 1e15,
                                 1e16,
                                 9007199254740992.0,
                                 0.5,
                                 0.49999999999999994,
                                 1e-10,
                                 4e-11,
                                 6e-11,
                                 3.141592653589793116,
                                 1e-11,
                                 2.675,
                                 std::numeric_limits<double>::quiet_NaN()};
  const std::size_t positive = numbers.size();
  for (std::size_t i = 0; i < positive; ++i) numbers.push_back(-numbers[i]);
  return numbers;
}

// The double `steps` places above v (below it for negative steps).
inline double neighbour(double v, int steps) {
  const double to = steps > 0 ? HUGE_VAL : -HUGE_VAL;
  for (int i = std::abs(steps); i > 0; --i) v = std::nextafter(v, to);
  return v;
}

// Numbers of every size: uniform bit patterns, so half of them are beyond any coordinate.
inline double anyDouble(std::mt19937_64& random) { return std::bit_cast<double>(random()); }

// A number up to 2^exponent either side of zero, exponent drawn from [low, high].
inline double sized(std::mt19937_64& random, int low, int high) {
  const int exponent = std::uniform_int_distribution<int>(low, high)(random);
  return std::ldexp(std::uniform_real_distribution<double>(-1.0, 1.0)(random), exponent);
}

// Within three doubles of a half of a unit of `digits` decimals.
inline double nearTie(std::mt19937_64& random, int digits, double below) {
  const double factor = std::pow(10.0, digits);
  const double v = (std::floor(std::uniform_real_distribution<double>(-below, below)(random) * factor) + 0.5) / factor;
  return neighbour(v, std::uniform_int_distribution<int>(-3, 3)(random));
}

}  // namespace slow
