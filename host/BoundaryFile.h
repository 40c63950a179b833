// Boundary files: two switches, then a vertex a line (name, northing, easting and perhaps elevation).
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

#include "Polygon.h"

struct Boundary {
  bool first = false;  // the two switches of the file
  bool second = false;
  std::vector<std::unique_ptr<RangePoint>> points;

  std::vector<RangePoint*> pointers() const;
  Polygon polygon() const;
};

// The boundary in the file at a resolved path, or a Failure that names the line and the field at fault. Warns of lines
// that hold no vertex.
Boundary readBoundary(const std::string& path);

// What is wrong with the polygon of a boundary; empty when nothing is.
std::string faultOf(const Boundary& boundary);

// The boundary in the file at a path as typed, fit to measure within: a Failure when it encloses nothing, a warning for
// other faults. Without a path one without points, which limits nothing. To be read before the surfaces: its faults
// are told before the long work.
Boundary readLimit(const std::string& typedPath);

// Limits what is measured on `surface` to the boundary of that file, and warns of vertices that lie outside the
// surface.
void limitTo(const Boundary& boundary, const std::string& typedPath, DTMSurface& surface);

// Writes one, every coordinate with all its digits.
void writeBoundary(const std::string& path, const Boundary& boundary);
