// A surface from a file of any format that the library reads, or a Failure that tells the user what is wrong with the
// file.
#pragma once

#include <memory>
#include <string>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

// A surface is kept until the program ends: the system takes all its memory back at once, where releasing a million
// records one by one takes longer than measuring them.
struct KeepSurface {
  void operator()(DTMSurface* surface) const;
};
using SurfacePtr = std::unique_ptr<DTMSurface, KeepSurface>;

enum class SurfaceFormat { kPoints, kSurfaceFile, kTriangles, kLandXml };

// What the name of a file says about its format; throws a Failure for a name that says nothing.
SurfaceFormat formatOf(const std::string& path);

// The name of the surface of a file: the file's, without its extension. The surface itself may hold less of it.
std::string surfaceName(const std::string& path);

// The surface of the file at a resolved path, named after the file, with its TIN. Warns of lines that hold no point, of
// points that share a position, of points that are not in the TIN, and of a TIN that is not a valid triangulation.
SurfacePtr readSurface(const std::string& path);

// The same without the warnings about the TIN, for a command that prints what they would say.
SurfacePtr readSurfaceUnchecked(const std::string& path);
