// The lines of point files and boundary files: one reader, with or without an account of what it could not understand.
// Private.
#pragma once

#include <array>
#include <string_view>

#include <OrvikDTMAlgorithm/io/PointReader.h>
#include <OrvikDTMAlgorithm/io/TextLines.h>
#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/surface/Name.h>

inline namespace OrvikDTM {
namespace detail {

using orvik::LineField;

// For readers that need no account.
struct NoAccount {
  void beginSwitch(std::string_view) {}
  void beginLine(std::string_view) {}
  void skip() {}
  void noteRest(std::string_view) {}
  double number(std::string_view field, LineField) { return readNumber(field); }
};

// Of a point file: name, code, easting, northing, elevation.
inline constexpr std::size_t kFieldsOfPoint = 5;

// Calls take(point) for every point of the file's text.
template <typename Account, typename Take>
void readPointLines(std::string_view text, Account& account, Take take) {
  std::string_view rest = withoutByteOrderMark(text);
  std::array<std::string_view, kFieldsOfPoint> fields;
  for (std::string_view line; takeLine(rest, line);) {
    account.beginLine(line);
    if (splitFields(line, fields) < kFieldsOfPoint) {
      account.skip();
      continue;
    }
    account.noteRest(fields.back());
    SurfacePoint point;
    char name[kNameSize];
    copyName(name, fields[0]);
    point.setSurfacePointName(name);
    point.setE(account.number(fields[2], LineField::Easting));
    point.setN(account.number(fields[3], LineField::Northing));
    point.setZ(account.number(fields[4], LineField::Elevation));
    take(point);
  }
}

// Of a boundary file: name, northing, easting and perhaps elevation.
inline constexpr std::size_t kFieldsOfVertex = 4;
inline constexpr std::size_t kFewestFieldsOfVertex = 3;

// Takes a switch off the text of a boundary file.
template <typename Account>
bool takeSwitch(std::string_view& text, Account& account) {
  std::string_view line;
  takeLine(text, line);
  account.beginSwitch(line);
  return line == "1";
}

// Calls take(vertex) for every vertex of the text behind the switches.
template <typename Account, typename Take>
void readVertexLines(std::string_view rest, Account& account, Take take) {
  for (std::string_view line; takeLine(rest, line);) {
    account.beginLine(line);
    std::array<std::string_view, kFieldsOfVertex> fields;
    const std::size_t filled = splitFields(line, fields);
    if (filled < kFewestFieldsOfVertex) {
      account.skip();
      continue;
    }
    account.noteRest(fields[filled - 1]);
    RangePoint vertex{};
    copyName(vertex.name, fields[0]);
    vertex.n = account.number(fields[1], LineField::Northing);
    vertex.e = account.number(fields[2], LineField::Easting);
    if (filled == kFieldsOfVertex) vertex.z = account.number(fields[3], LineField::Elevation);
    take(vertex);
  }
}

}  // namespace detail
}  // namespace OrvikDTM
