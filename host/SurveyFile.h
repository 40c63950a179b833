// Survey points from a file to a surface with a TIN, or to a Failure that tells the user what is wrong with the file.
#pragma once

#include <memory>
#include <string>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

struct ReleaseSurface {
  void operator()(DTMSurface* surface) const {
    surface->release();
    delete surface;
  }
};
using SurfacePtr = std::unique_ptr<DTMSurface, ReleaseSurface>;

// The name of the surface of a file: the file's, without its extension. The surface itself may hold less of it.
std::string surfaceName(const std::string& path);

// The surface of the points in the file at a resolved path, named after the file, with its TIN. Lines that hold no
// point are reported in a warning, and so is a TIN that is not a valid triangulation.
SurfacePtr readSurvey(const std::string& path);
