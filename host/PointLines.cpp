#include "PointLines.h"

#include <array>
#include <string_view>

#include "TextLines.h"

namespace {

constexpr std::size_t kFieldsOfAPoint = 5;  // name, code, easting, northing, elevation
constexpr std::size_t kFirstNumber = 2;
constexpr std::array<NumberField, 3> kNumbers = {kEasting, kNorthing, kElevation};

void checkLine(const TextLines& lines, LineCount& count) {
  std::array<std::string_view, kFieldsOfAPoint> fields;
  std::string_view rest = lines.line();
  std::size_t filled = 0;
  bool more = true;
  while (filled < kFieldsOfAPoint && takeField(rest, fields[filled], more)) ++filled;
  if (filled < kFieldsOfAPoint) {
    ++count.skipped;
    count.semicolons = count.semicolons || lines.line().find(';') != std::string_view::npos;
    return;
  }
  for (std::size_t i = 0; i < kNumbers.size(); ++i) lines.requireNumber(fields[kFirstNumber + i], kNumbers[i]);
  ++count.points;
  if (more) ++count.withMore;
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
