// The look through a point file before the library reads it.
#pragma once

#include <string>

struct LineCount {
  int points = 0;
  int skipped = 0;          // neither a point nor empty
  int withMore = 0;         // points with more fields than a point has
  bool semicolons = false;  // in a line that was skipped
};

// Throws a Failure that names the first line with a number that cannot be one, or says that the file is no text.
LineCount checkLines(const std::string& path);
