// The look through a point file before the library reads it.
//
// The library reads what it can and takes a field that is no number for 0, which puts a point at the origin of the
// coordinate system. A user who mistypes a coordinate wants to be told.
#pragma once

#include <string>

inline constexpr double kLargestElevation = 1e12;

struct LineCount {
  int points = 0;
  int skipped = 0;          // neither a point nor empty
  int withMore = 0;         // points with more fields than a point has
  bool semicolons = false;  // in a line that was skipped
};

// Throws a Failure that names the first line with a number that cannot be one, or says that the file is no text.
LineCount checkLines(const std::string& path);
