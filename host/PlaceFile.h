// Places in plan from a file, a place a line: "easting,northing", "name,easting,northing",
// "name,code,easting,northing", or a whole survey point, "name,code,easting,northing,elevation".
#pragma once

#include <optional>
#include <string>
#include <vector>

struct Place {
  std::string name;
  std::string code;
  std::string easting;  // as written, to be repeated digit for digit
  std::string northing;
  double x = 0.0;
  double y = 0.0;
};

// The places in the file at a resolved path, or a Failure that names the line and the field at fault.
std::vector<Place> readPlaces(const std::string& path);
