#include "PointLines.h"

#include <array>
#include <cmath>
#include <fstream>
#include <string_view>
#include <vector>

#include <OrvikDTMAlgorithm/report/U.h>

#include "Console.h"
#include "UserText.h"

namespace {

constexpr std::size_t kFieldsOfAPoint = 5;  // name, code, easting, northing, elevation
constexpr std::size_t kFirstNumber = 2;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Rounded to four decimals a coordinate must be a whole number of 64 bits: beyond that the TIN is not exact.
constexpr double kLargestCoordinate = 9.2e12;

struct NumberField {
  const char* name;
  double largest;
  const char* largestText;
};
constexpr std::array<NumberField, 3> kNumbers = {{{"easting", kLargestCoordinate, "9.2e12"},
                                                  {"northing", kLargestCoordinate, "9.2e12"},
                                                  {"elevation", kLargestElevation, "1e12"}}};

// One line and where it stands, for messages.
struct Line {
  std::string text;
  std::string path;
  int number = 0;

  std::string where() const { return shownPath(path) + ":" + std::to_string(number) + ": "; }
};

void requireNumber(const Line& line, const std::string& field, const NumberField& expected) {
  double value = 0.0;
  const std::string what = line.where() + "the " + expected.name + " " + quoted(field);
  if (!parseNumber(field, value)) {
    const std::string header = line.number == 1 ? "; if line 1 is a header, remove it" : "";
    throw console::Failure(what + " is not a number: correct the line or take it out" + header);
  }
  if (std::fabs(value) > expected.largest) {
    throw console::Failure(what + " is too large: correct it, the largest is " + expected.largestText);
  }
}

void requireText(const Line& line) {
  if (line.text.find('\0') != std::string::npos) {
    throw console::Failure(shownPath(line.path) + ": is not plain text: save it as CSV in UTF-8");
  }
  if (line.text.find('\r') != std::string::npos) {
    throw console::Failure(line.where() + "a carriage return alone ends no line: save the file with line feeds");
  }
}

// Drops what is no part of the first line's text, and the carriage returns before a line feed.
void tidy(Line& line) {
  if (line.number == 1 && line.text.starts_with(kByteOrderMark)) line.text.erase(0, kByteOrderMark.size());
  while (!line.text.empty() && line.text.back() == '\r') line.text.pop_back();
}

void checkLine(const Line& line, LineCount& count) {
  const std::vector<std::string> fields = U::split(line.text, ",");
  if (fields.size() < kFieldsOfAPoint) {
    ++count.skipped;
    count.semicolons = count.semicolons || line.text.find(';') != std::string::npos;
    return;
  }
  for (std::size_t i = 0; i < kNumbers.size(); ++i) requireNumber(line, fields[kFirstNumber + i], kNumbers[i]);
  ++count.points;
  if (fields.size() > kFieldsOfAPoint) ++count.withMore;
}

}  // namespace

LineCount checkLines(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw console::Failure(shownPath(path) + ": cannot be read: check its permissions");
  LineCount count;
  Line line;
  line.path = path;
  while (std::getline(file, line.text)) {
    ++line.number;
    tidy(line);
    requireText(line);
    if (!line.text.empty()) checkLine(line, count);
  }
  if (file.bad()) throw console::Failure(shownPath(path) + ": reading stopped before its end: check the disk");
  return count;
}
