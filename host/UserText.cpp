#include "UserText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <locale>
#include <sstream>

namespace {

constexpr std::size_t kQuotedBytes = 40;
constexpr std::size_t kPathBytes = 400;

bool isControl(char c) {
  constexpr unsigned char kFirstPrinted = 0x20;
  constexpr unsigned char kDelete = 0x7F;
  const auto byte = static_cast<unsigned char>(c);
  return byte < kFirstPrinted || byte == kDelete;
}

// Whether the byte goes on with a character that an earlier one began.
bool continuesCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

std::string shortened(const std::string& text, std::size_t bytes) {
  return oneLine(text.size() <= bytes ? text : cutAtCharacter(text, bytes) + "...");
}

std::string withoutBlanks(const std::string& text) {
  constexpr const char* kBlanks = " \t";
  const std::size_t first = text.find_first_not_of(kBlanks);
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// What std::from_chars leaves open: whether a number that no double holds is too large or too small.
bool isTooSmall(const std::string& number, double& value) {
  std::istringstream in(number);
  in.imbue(std::locale::classic());
  return static_cast<bool>(in >> value);
}

}  // namespace

std::string cutAtCharacter(const std::string& text, std::size_t bytes) {
  if (text.size() <= bytes) return text;
  std::size_t end = bytes;
  while (end > 0 && continuesCharacter(text[end])) --end;
  return text.substr(0, end);
}

std::string oneLine(std::string text) {
  std::replace_if(text.begin(), text.end(), isControl, '?');
  return text;
}

std::string quoted(const std::string& text) {
  return std::string("'").append(shortened(text, kQuotedBytes)).append("'");
}

std::string shownPath(const std::string& path) { return shortened(path, kPathBytes); }

bool parseNumber(const std::string& text, double& value) {
  const std::string number = withoutBlanks(text);
  const char* first = number.data();
  const char* const last = first + number.size();
  if (last - first > 1 && *first == '+' && first[1] != '-') ++first;
  const auto [end, fault] = std::from_chars(first, last, value);
  if (end != last) return false;
  if (fault == std::errc::result_out_of_range) return isTooSmall(number, value);
  return fault == std::errc() && std::isfinite(value);
}

// Up to fifteen digits and the powers of ten up to 10^15 are doubles, so one division rounds once, as reading would.
bool parsePlainNumber(std::string_view text, double& value) {
  constexpr std::size_t kMostDigits = 15;
  constexpr std::size_t kMostWholeDigits = 12;
  constexpr std::array<double, kMostDigits + 1> kPowers = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                           1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  const bool negative = !text.empty() && text.front() == '-';
  if (negative) text.remove_prefix(1);
  if (text.empty() || text.size() > kMostDigits + 1) return false;
  const std::size_t point = std::min(text.find('.'), text.size());
  const std::size_t decimals = point == text.size() ? 0 : text.size() - point - 1;
  if (point == 0 || point > kMostWholeDigits || point + decimals > kMostDigits) return false;
  std::int64_t digits = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (i == point) continue;
    if (text[i] < '0' || text[i] > '9') return false;
    digits = digits * 10 + (text[i] - '0');
  }
  const double magnitude = static_cast<double>(digits) / kPowers[decimals];
  value = negative ? -magnitude : magnitude;
  return true;
}
