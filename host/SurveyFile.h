// Survey points from a file to a surface with a TIN, or to a Failure that tells the user what is wrong with the file.
//
// The library reads what it can and takes a field that is no number for 0, which puts a point at the origin of the
// coordinate system. A user who mistypes a coordinate wants to be told, so the file is looked through first.
#pragma once

#include <memory>
#include <string>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

// The number that is the whole of `text`, blanks around it and a plus sign before it aside; false when there is none,
// or when it is not finite.
bool parseNumber(const std::string& text, double& value);

struct ReleaseSurface {
  void operator()(DTMSurface* surface) const {
    surface->release();
    delete surface;
  }
};
using SurfacePtr = std::unique_ptr<DTMSurface, ReleaseSurface>;

// The surface of the points in the file, named after the file, with its TIN. Lines that hold no point are reported in a
// warning, and so is a TIN that is not a valid triangulation.
SurfacePtr readSurvey(const std::string& path);
