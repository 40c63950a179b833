#include "UserText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
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
