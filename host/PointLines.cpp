#include "PointLines.h"

#include <array>
#include <string_view>

#include "TextLines.h"

namespace {

constexpr std::size_t kFieldsOfAPoint = 5;  // name, code, easting, northing, elevation
constexpr std::size_t kFirstNumber = 2;
constexpr std::array<NumberField, 3> kNumbers = {kEasting, kNorthing, kElevation};

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Takes a field off a line if it is a number as surveys are full of, digits with perhaps a minus and a point, of so few
// digits before the point that it is none too large. Other fields stay: there is more to ask about them.
bool takePlainNumber(std::string_view& rest, bool& more) {
  constexpr std::ptrdiff_t kMostWholeDigits = 12;
  const char* at = rest.data();
  const char* const end = at + rest.size();
  if (at != end && *at == '-') ++at;
  const char* const first = at;
  while (at != end && isDigit(*at)) ++at;
  if (at == first || at - first > kMostWholeDigits) return false;
  if (at != end && *at == '.') {
    do ++at;
    while (at != end && isDigit(*at));
  }
  if (at != end && *at != ',') return false;
  more = at != end;
  rest.remove_prefix(static_cast<std::size_t>(at - rest.data()) + (more ? 1 : 0));
  return true;
}

// Whether a line is a point whose numbers are all of that kind, which nothing can be wrong with.
bool isPlainPoint(std::string_view rest, bool& more) {
  std::string_view text;
  more = true;
  for (std::size_t i = 0; i < kFirstNumber; ++i) takeField(rest, text, more);
  for (std::size_t i = 0; i < kNumbers.size(); ++i) {
    if (!more || !takePlainNumber(rest, more)) return false;
  }
  return true;
}

void countPoint(bool more, LineCount& count) {
  ++count.points;
  if (more) ++count.withMore;
}

void checkLine(const TextLines& lines, LineCount& count) {
  bool more = true;
  if (isPlainPoint(lines.line(), more)) return countPoint(more, count);
  std::array<std::string_view, kFieldsOfAPoint> fields;
  std::string_view rest = lines.line();
  std::size_t filled = 0;
  more = true;
  while (filled < kFieldsOfAPoint && takeField(rest, fields[filled], more)) ++filled;
  if (filled < kFieldsOfAPoint) {
    ++count.skipped;
    count.semicolons = count.semicolons || lines.line().find(';') != std::string_view::npos;
    return;
  }
  for (std::size_t i = 0; i < kNumbers.size(); ++i) lines.requireNumber(fields[kFirstNumber + i], kNumbers[i]);
  countPoint(more, count);
}

}  // namespace

LineCount checkLines(const std::string& path) {
  TextLines lines(path);
  LineCount count;
  while (lines.next()) {
    if (!lines.line().empty()) checkLine(lines, count);
  }
  return count;
}
