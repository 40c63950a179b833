// Private. Lines and fields of a text that is wholly in memory, as views into it: nothing is copied or allocated.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

inline namespace OrvikDTM {
namespace detail {

// What some programs put before a text in UTF-8: no part of its first name.
inline std::string_view withoutByteOrderMark(std::string_view text) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  return text;
}

// Takes the first line off `text`, without its line break ("\n" or "\r\n"; the last line may have none). False when
// nothing is left.
inline bool takeLine(std::string_view& text, std::string_view& line) {
  if (text.empty()) return false;
  const std::size_t end = text.find('\n');
  line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return true;
}

// Fills `fields` with the first fields of a line, separated by commas or what is given, and returns how many it filled.
// The last one ends at its separator too: what follows it on the line is ignored.
template <std::size_t kCount>
std::size_t splitFields(std::string_view line, std::array<std::string_view, kCount>& fields, char separator = ',') {
  std::size_t filled = 0;
  while (filled < kCount) {
    const std::size_t end = line.find(separator);
    fields[filled++] = line.substr(0, end);
    if (end == std::string_view::npos) break;
    line.remove_prefix(end + 1);
  }
  return filled;
}

}  // namespace detail
}  // namespace OrvikDTM
