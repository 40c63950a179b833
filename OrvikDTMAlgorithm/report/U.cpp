// Comparing and rounding numbers, and numbers as text.
#include <cmath>
#include <limits>

#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/report/U.h>

inline namespace OrvikDTM {
namespace {

// Two numbers that differ by no more than this are equal, whatever their unit.
constexpr double kEqualWithin = 1e-8;

// roundUp() adds this many units of the first decimal that it drops.
constexpr double kRoundUpLift = 4.0;

// The decimals of the text that roundHalfUp() works on.
constexpr int kHalfUpDecimals = 20;

// Adds one unit of the last place to an unsigned decimal text.
void addOneUnit(std::string& text) {
  for (std::size_t at = text.size(); at-- > 0;) {
    if (text[at] == '.') continue;
    if (text[at] != '9') {
      ++text[at];
      return;
    }
    text[at] = '0';
  }
  text.insert(text.begin(), '1');
}

// Cuts an unsigned decimal text with a point after `decimals` decimals, half up.
std::string cutHalfUp(const std::string& text, std::size_t decimals) {
  const std::size_t point = text.find('.');
  const std::size_t firstDropped = point + 1 + decimals;
  if (firstDropped >= text.size()) return text + std::string(firstDropped - text.size(), '0');
  std::string kept = text.substr(0, decimals == 0 ? point : firstDropped);
  if (text[firstDropped] >= '5') addOneUnit(kept);
  return kept;
}

}  // namespace

bool U::isEqual(double a, double b) { return std::fabs(a - b) <= kEqualWithin; }

int U::isNaN(double v) { return std::isnan(v) ? 1 : 0; }

int U::isInf(double v) { return detail::isNoValue(v) ? 1 : 0; }

double U::round(double x) { return x > 0.0 ? std::floor(x + 0.5) : std::ceil(x - 0.5); }

std::string U::toString(double v) { return detail::fixedText(v, detail::kDecimalsOfText); }

std::string U::toString(int digits, double v) { return toString(detail::roundTo(digits, v)); }

std::string U::roundUp(int digits, double v) {
  if (std::isnan(v)) return "NaN";
  const int firstDropped = digits == std::numeric_limits<int>::max() ? digits : digits + 1;
  return detail::plainFixedText(v + kRoundUpLift / detail::powerOfTen(firstDropped), digits);
}

std::string U::roundHalfUp(int digits, double v) {
  if (std::isnan(v) || detail::isNoValue(v)) return toString(v);
  const std::string text = detail::plainFixedText(std::fabs(v), kHalfUpDecimals);
  const std::string rounded = cutHalfUp(text, digits > 0 ? static_cast<std::size_t>(digits) : 0);
  const bool isZero = rounded.find_first_not_of("0.") == std::string::npos;
  return v < 0.0 && !isZero ? "-" + rounded : rounded;
}

std::string U::intToString(int v) { return std::to_string(v); }

std::string U::l2kNonLocalized(double v) { return toString(v); }

}  // namespace OrvikDTM
