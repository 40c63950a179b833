// The lines of a text file that the library has no reader for, or for the look through one before the library reads it,
// and what a user is told of a line. A user who mistypes a coordinate wants to be told the file, the line and the
// field.
#pragma once

#include <cstddef>
#include <fstream>
#include <string>
#include <string_view>

#include <OrvikDTMAlgorithm/io/PointReader.h>

inline constexpr double kLargestCoordinate = orvik::kLargestCoordinate;
inline constexpr double kLargestElevation = orvik::kLargestElevation;

struct NumberField {
  const char* name;
  double largest;
  const char* largestText;
};
inline constexpr NumberField kEasting{"easting", kLargestCoordinate, "9.2e12"};
inline constexpr NumberField kNorthing{"northing", kLargestCoordinate, "9.2e12"};
inline constexpr NumberField kElevation{"elevation", kLargestElevation, "1e12"};

// What is told of a file, and of a line.
inline constexpr const char* kUnreadable = "cannot be read: check its permissions";
inline constexpr const char* kNoText = "is not plain text: save it as text in UTF-8";
inline constexpr const char* kLoneReturn = "a carriage return alone ends no line: save the file with line feeds";
std::string notANumber(const NumberField& expected, const std::string& field, long long line);
std::string tooLarge(const NumberField& expected, const std::string& field);

class TextLines {
 public:
  // Opens the file at a resolved path, or throws a Failure.
  explicit TextLines(const std::string& path);

  // Goes to the next line, without its line feed and the carriage returns before it; a byte order mark is no part of
  // the first. False at the end. Throws a Failure for a line that cannot be text.
  bool next();

  std::string_view line() const { return line_; }
  int number() const { return number_; }
  double done() const;  // the share of the file that lies behind, 0 to 1

  // "path:line: ", and an error about it.
  std::string where() const;
  [[noreturn]] void fail(const std::string& text) const;

  // The number in a field of this line, or a Failure that names the field.
  double requireNumber(std::string_view field, const NumberField& expected) const;

 private:
  bool readMore();
  void dropReturns();
  void requireText(std::string_view read) const;

  std::string path_;
  std::ifstream file_;
  double size_ = 0.0;
  double read_ = 0.0;      // bytes that have been in the buffer
  std::string buffer_;     // a part of the file: it stays small enough for the processor's cache
  bool returns_ = false;   // whether there are carriage returns in the buffer
  std::string_view rest_;  // of the buffer, behind the present line
  std::string_view line_;
  int number_ = 0;
};

// Takes the next field off a line; fields are separated by commas. False when there was none left.
bool takeField(std::string_view& rest, std::string_view& field, bool& more);
