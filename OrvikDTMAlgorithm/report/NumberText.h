// Private. Numbers to text and text to numbers without regard to the process locale, and the library's two roundings
// "through text" done by arithmetic: the construction rounds every coordinate and every direction that way.
#pragma once

#include <array>
#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <OrvikDTMAlgorithm/FloatingPoint.h>

inline namespace OrvikDTM {
namespace detail {

// The decimals that U::toString writes.
inline constexpr int kDecimalsOfText = 6;

// The powers of ten that are doubles.
inline constexpr std::array<double, 23> kExactPowersOfTen = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                             1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                             1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// The double nearest to 10^exponent: 0 and infinity beyond the range of doubles.
double nearestPowerOfTen(int exponent);

inline double powerOfTen(int exponent) {
  const auto index = static_cast<unsigned>(exponent);  // a negative exponent becomes a large index
  return index < kExactPowersOfTen.size() ? kExactPowersOfTen[index] : nearestPowerOfTen(exponent);
}

// The infinities and the two largest finite doubles, which mark a missing value. False for NaN.
inline bool isNoValue(double v) { return std::fabs(v) >= DBL_MAX; }

// U::round, save that a zero has no sign. Truncation is floor above zero and ceil below, and a double of 2^52 or more
// is a whole number already.
inline double roundHalfAway(double x) {
  constexpr double kWholeFrom = 4503599627370496.0;
  const double shifted = x > 0.0 ? x + 0.5 : x - 0.5;
  return std::fabs(shifted) < kWholeFrom ? static_cast<double>(static_cast<std::int64_t>(shifted)) : shifted;
}

// v rounded to `digits` decimals: the number that U::toString(digits, v) writes.
inline double roundTo(int digits, double v) {
  const double factor = powerOfTen(digits);
  return roundHalfAway(v * factor) / factor;
}

// v in fixed notation. NaN is "NaN", isNoValue() is the infinity sign in GBK ("-" before it below zero), and what
// prints as zero has no sign. A negative number of decimals counts as 0.
std::string fixedText(double v, int decimals);

// The same for values that are not special; an infinity is "inf".
std::string plainFixedText(double v, int decimals);

// The longest text that U::toString writes: sign, digits before the point, point and decimals of the largest doubles.
inline constexpr std::size_t kLongestText = 1 + 309 + 1 + kDecimalsOfText;

// Writes U::toString(v) to `out`, which has room for kLongestText characters, and returns where it ends: for files of
// many numbers, as it makes no string.
char* writeText(double v, char* out);

// v with six significant digits, as an output stream writes it by default.
std::string generalText(double v);

// Reads the digits, with at most one point among them and perhaps "-" before them, that [at, end) starts with, as files
// are full of, and returns where they end. Null when there are none, or so many that a double may not hold the number
// that they make; readNumber() knows better then. Otherwise that number and the power of ten by which it is divided are
// doubles, so their quotient is the double nearest to the decimal.
inline const char* readPlain(const char* at, const char* end, double& v) {
  constexpr std::ptrdiff_t kExactDigits = 15;
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  const bool negative = at != end && *at == '-';
  if (negative) ++at;
  const char* first = at;
  std::uint64_t digits = 0;
  for (; at != end && isDigit(*at); ++at) digits = digits * 10 + static_cast<std::uint64_t>(*at - '0');
  std::ptrdiff_t count = at - first;
  std::ptrdiff_t decimals = 0;
  if (at != end && *at == '.') {
    first = ++at;
    for (; at != end && isDigit(*at); ++at) digits = digits * 10 + static_cast<std::uint64_t>(*at - '0');
    decimals = at - first;
    count += decimals;
  }
  if (count == 0 || count > kExactDigits) return nullptr;
  const double magnitude = static_cast<double>(digits) / kExactPowersOfTen[static_cast<std::size_t>(decimals)];
  v = negative ? -magnitude : magnitude;
  return at;
}

// The number at the start of `text`, as the C library's atof reads it in the C locale: white space, sign, decimal or
// "0x" digits with an exponent, or the words inf, infinity, nan. 0 when there is none, infinity on overflow.
double readNumber(std::string_view text);

// The whole number at the start of `text`, as the C library's atoi reads it: white space, sign, digits. 0 when there is
// none; a number too large for the result is the largest or smallest there is.
long long readInteger(std::string_view text);

double readBackFixed(double v);

// The number that readNumber() reads from U::toString(digits, v), to the last bit; never -0.0.
//
// Let r be the whole number v * 10^digits rounded, and q the double r / 10^digits, which toString writes with six
// decimals. For digits 0 to 6 reading it back gives q:
// - Below 2^33 q differs from the decimal r / 10^digits by at most 2^-21 (half the spacing of doubles there), less than
//   half a millionth. That decimal has no more than six decimals, so it is the one that is printed; and q, being a
//   correctly rounded quotient of doubles, is the double nearest to it.
// - From 2^33 on the text is at most half a millionth from q, and the neighbours of q are at least 2^-19 away (that
//   below 2^33 itself does not matter: it is a whole number and printed exactly).
// The infinity sign is no number and reads as 0.
inline double roundThroughText(int digits, double v) {
  const double q = roundTo(digits, v);
  if (digits < 0 || digits > kDecimalsOfText) return readBackFixed(q);
  if (isNoValue(q)) return 0.0;
  return q + 0.0;  // -0.0 becomes 0.0
}

double readBackRoundUp10(double v);

// The number that readNumber() reads from U::roundUp(10, v), to the last bit; never -0.0.
//
// The text is the whole multiple m of 1e-10 nearest to w = v + 4e-11; m and 1e10 are doubles, so the double nearest to
// it is their quotient. The product w * 1e10 is less than 2^36 in the fast case and so within 2^-18 of the exact one:
// unless its fraction is nearer than 2^-16 to one half it tells m.
inline double roundUpThroughText10(double v) {
  constexpr double kUnitsPerOne = 1e10;
  constexpr double kLift = 4.0 / 1e11;
  constexpr double kFastBelow = 68719476736.0;  // 2^36
  constexpr double kTieMargin = 1.0 / 65536.0;  // 2^-16
  const double units = (v + kLift) * kUnitsPerOne;
  if (!(std::fabs(units) < kFastBelow)) return readBackRoundUp10(v);
  const auto whole = static_cast<std::int64_t>(units);
  const double fraction = units - static_cast<double>(whole);
  if (std::fabs(std::fabs(fraction) - 0.5) < kTieMargin) return readBackRoundUp10(v);
  const std::int64_t nearest = whole + (fraction > 0.5 ? 1 : 0) - (fraction < -0.5 ? 1 : 0);
  return static_cast<double>(nearest) / kUnitsPerOne;
}

}  // namespace detail
}  // namespace OrvikDTM
