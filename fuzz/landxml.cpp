// LandXML files.
#include <stdexcept>

#include "Exercise.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::OwnedSurface surface;
  try {
    if (!surface.tryParseLandXML(fuzz::fileOf(data, size, ".xml").c_str())) return 0;
  } catch (const std::out_of_range&) {
    fuzz::require(surface.isNeedInit(), "an import that fails changes nothing");
    return 0;
  }
  fuzz::query(surface);
  fuzz::saveAndLoad(surface);
  return 0;
}
