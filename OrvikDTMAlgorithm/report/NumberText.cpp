// Numbers as text: fixed and general notation. Built on std::to_chars, which knows no locale.
#include <algorithm>
#include <charconv>
#include <cstring>

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

namespace {

// The decimals of a text as one number, and how many of them there are.
constexpr double kUnitsOfText = 1e6;
constexpr std::uint32_t kUnitsPerOne = 1'000'000;

// The two digits of every number below a hundred, one after the other.
constexpr std::array<char, 200> kPairs = [] {
  std::array<char, 200> pairs{};
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    pairs[i] = static_cast<char>('0' + (i % 2 == 0 ? i / 20 : i / 2 % 10));
  }
  return pairs;
}();

void writePair(std::uint32_t belowHundred, char* out) { std::memcpy(out, &kPairs[2 * belowHundred], 2); }

void writeDecimals(std::uint32_t units, char* out) {
  writePair(units / 10'000, out);
  writePair(units / 100 % 100, out + 2);
  writePair(units % 100, out + 4);
}

// Writes a finite magnitude below 2^53 unless arithmetic cannot tell which way its last decimal is rounded; null then.
//
// The part behind the point is the exact difference of the magnitude and its whole part. Its product with a million is
// below 2^20 and so within 2^-34 of the exact one: unless its fraction is nearer than 2^-32 to one half it tells the
// millionths that the decimal text is rounded to.
char* writeMagnitude(double magnitude, bool negative, char* out) {
  constexpr double kTieMargin = 1.0 / 4294967296.0;  // 2^-32
  auto whole = static_cast<std::uint64_t>(magnitude);
  const double product = (magnitude - static_cast<double>(whole)) * kUnitsOfText;
  auto units = static_cast<std::uint32_t>(product);
  const double fraction = product - static_cast<double>(units);
  if (std::fabs(fraction - 0.5) < kTieMargin) return nullptr;
  if (fraction > 0.5) ++units;
  if (units == kUnitsPerOne) {
    units = 0;
    ++whole;
  }
  if (negative && (whole != 0 || units != 0)) *out++ = '-';
  constexpr std::size_t kDigitsOf64Bits = 20;
  out = std::to_chars(out, out + kDigitsOf64Bits, whole).ptr;
  *out++ = '.';
  writeDecimals(units, out);
  return out + kDecimalsOfText;
}

}  // namespace

char* writeText(double v, char* out) {
  constexpr double kFastBelow = 9007199254740992.0;  // 2^53
  const double magnitude = std::fabs(v);
  if (magnitude < kFastBelow) {
    if (char* end = writeMagnitude(magnitude, v < 0.0, out)) return end;
  }
  const std::string text = fixedText(v, kDecimalsOfText);
  return std::copy(text.begin(), text.end(), out);
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
