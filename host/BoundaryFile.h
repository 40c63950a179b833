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

// The boundary in the file, fit to measure within: a Failure when it encloses nothing, a warning for other faults.
Boundary readFitBoundary(const std::string& path);

// Limits what is measured on `surface` to the boundary in the file at a path as typed, and warns of vertices that lie
// outside the surface. Without a path nothing is limited.
void limitTo(const std::string& typedPath, DTMSurface& surface);

// Writes one, every coordinate with all its digits.
void writeBoundary(const std::string& path, const Boundary& boundary);
