// Numbers as text: fixed and general notation. Built on std::to_chars, which knows no locale.
#include <charconv>

#include <OrvikDTMAlgorithm/report/GbkText.h>
#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/report/U.h>

inline namespace OrvikDTM {
namespace detail {
namespace {

constexpr int kSignificantDigits = 6;

// Room for the sign, the 309 digits before the point of the largest double, and the point.
constexpr std::size_t kLongestWholePart = 320;

bool readsAsZero(const std::string& text) { return text.find_first_not_of("-0.") == std::string::npos; }

void dropSignOfZero(std::string& text) {
  if (!text.empty() && text.front() == '-' && readsAsZero(text)) text.erase(0, 1);
}

}  // namespace

double nearestPowerOfTen(int exponent) { return readNumber("1e" + std::to_string(exponent)); }

std::string plainFixedText(double v, int decimals) {
  const int kept = decimals > 0 ? decimals : 0;
  std::string text(kLongestWholePart + static_cast<std::size_t>(kept), '\0');
  const auto end = std::to_chars(text.data(), text.data() + text.size(), v, std::chars_format::fixed, kept).ptr;
  text.resize(static_cast<std::size_t>(end - text.data()));
  dropSignOfZero(text);
  return text;
}

std::string fixedText(double v, int decimals) {
  if (std::isnan(v)) return "NaN";
  if (isNoValue(v)) return std::string(v > 0.0 ? "" : "-") + gbk::kInfinity;
  return plainFixedText(v, decimals);
}

std::string generalText(double v) {
  char text[32];
  const auto end = std::to_chars(text, text + sizeof text, v, std::chars_format::general, kSignificantDigits).ptr;
  return std::string(text, end);
}

double readBackFixed(double v) { return readNumber(fixedText(v, kDecimalsOfText)); }

double readBackRoundUp10(double v) { return readNumber(U::roundUp(10, v)); }

}  // namespace detail
}  // namespace OrvikDTM
