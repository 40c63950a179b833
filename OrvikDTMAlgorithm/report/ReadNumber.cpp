// Text to number with the grammar of the C library's atof in the C locale. std::from_chars does the conversion; what it
// leaves out (white space, "+", the "0x" prefix, which way a number is out of range) is added here.
#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>

#include <OrvikDTMAlgorithm/report/LowerAscii.h>
#include <OrvikDTMAlgorithm/report/NumberText.h>

inline namespace OrvikDTM {
namespace detail {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isHexDigit(char c) { return isDigit(c) || (lowerAscii(c) >= 'a' && lowerAscii(c) <= 'f'); }

bool startsWithWord(std::string_view text, std::string_view word) {
  return text.size() >= word.size() && std::equal(word.begin(), word.end(), text.begin(),
                                                  [](char expected, char c) { return expected == lowerAscii(c); });
}

// What distinguishes decimal from hexadecimal numbers.
struct Notation {
  std::chars_format format;
  bool (*isDigit)(char);
  char exponentMark;
  int exponentPerDigit;  // by how much one digit before the point raises the exponent
};

constexpr Notation kDecimal{std::chars_format::general, isDigit, 'e', 1};
constexpr Notation kHexadecimal{std::chars_format::hex, isHexDigit, 'p', 4};

long long readExponent(std::string_view text) {
  constexpr long long kEnough = 1'000'000'000'000;  // no text is long enough to outweigh this
  std::size_t at = 0;
  const bool negative = !text.empty() && text[0] == '-';
  if (!text.empty() && (text[0] == '-' || text[0] == '+')) ++at;
  long long exponent = 0;
  for (; at < text.size() && isDigit(text[at]); ++at) exponent = std::min(exponent * 10 + (text[at] - '0'), kEnough);
  return negative ? -exponent : exponent;
}

// Whether a number that no double can hold is too large, rather than too small: the sign of its order of magnitude.
bool isTooLarge(std::string_view text, const Notation& notation) {
  long long digitsAboveOne = 0;  // less the zeros between the point and the first other digit
  bool afterPoint = false;
  bool significant = false;
  std::size_t at = 0;
  for (; at < text.size() && (notation.isDigit(text[at]) || (text[at] == '.' && !afterPoint)); ++at) {
    if (text[at] == '.') {
      afterPoint = true;
      continue;
    }
    significant = significant || text[at] != '0';
    if (!afterPoint && significant) ++digitsAboveOne;
    if (afterPoint && !significant) --digitsAboveOne;
  }
  long long exponent = 0;
  if (at < text.size() && lowerAscii(text[at]) == notation.exponentMark) exponent = readExponent(text.substr(at + 1));
  return digitsAboveOne * notation.exponentPerDigit + exponent > 0;
}

std::optional<double> readDigits(std::string_view text, const Notation& notation) {
  double v = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), v, notation.format);
  if (error == std::errc()) return v;
  if (error != std::errc::result_out_of_range) return std::nullopt;
  return isTooLarge(text, notation) ? kInfinity : 0.0;
}

bool hasHexDigits(std::string_view text) {
  if (!text.empty() && text[0] == '.') text.remove_prefix(1);
  return !text.empty() && isHexDigit(text[0]);
}

std::optional<double> readUnsigned(std::string_view text) {
  if (text.empty() || text[0] == '-') return std::nullopt;
  if (isDigit(text[0]) || text[0] == '.') {
    if (startsWithWord(text, "0x") && hasHexDigits(text.substr(2))) return readDigits(text.substr(2), kHexadecimal);
    return readDigits(text, kDecimal);
  }
  if (startsWithWord(text, "inf")) return kInfinity;
  if (startsWithWord(text, "nan")) return std::numeric_limits<double>::quiet_NaN();
  return std::nullopt;
}

std::string_view withoutLeadingSpace(std::string_view text) {
  while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
  return text;
}

}  // namespace

double readNumber(std::string_view text) {
  const char* const textEnd = text.data() + text.size();
  double plain = 0.0;
  if (!text.empty() && readPlain(text.data(), textEnd, plain) == textEnd) return plain;
  text = withoutLeadingSpace(text);
  const bool negative = !text.empty() && text.front() == '-';
  if (negative || (!text.empty() && text.front() == '+')) text.remove_prefix(1);
  const std::optional<double> v = readUnsigned(text);
  if (!v) return 0.0;
  return negative ? -*v : *v;
}

long long readInteger(std::string_view text) {
  text = withoutLeadingSpace(text);
  const bool plus = text.starts_with('+');
  if (plus) text.remove_prefix(1);
  const bool negative = text.starts_with('-');
  if (plus && negative) return 0;
  long long v = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), v);
  if (error != std::errc::result_out_of_range) return v;
  return negative ? std::numeric_limits<long long>::min() : std::numeric_limits<long long>::max();
}

}  // namespace detail
}  // namespace OrvikDTM
