// What every fuzz target does with its input: puts it into a file, and uses the surface that was read from it in every
// way that a host would. A wrong result ends the process, as a sanitizer's finding does.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

namespace fuzz {

// A path of this process's own in the folder for temporary files (scripts/fuzz gives one in memory).
std::string scratchPath(const std::string& extension);

// The path of a file with these bytes.
std::string fileOf(const std::uint8_t* data, std::size_t size, const std::string& extension);

void require(bool holds, const char* what);

// A surface that releases its points and its TIN.
class OwnedSurface : public DTMSurface {
 public:
  ~OwnedSurface() { release(); }
};

// Statistics, heights, a fill and cut volume, a copy.
void query(DTMSurface& surface);

// Saves the surface, loads it again and saves that: the same bytes. Writes its triangles and reads them back.
void saveAndLoad(DTMSurface& surface);

}  // namespace fuzz
