// ".ttin" surface files.
#include "Exercise.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::OwnedSurface surface;
  DTMFileOperation files;
  if (!files.loadSurface(fuzz::fileOf(data, size, ".ttin").c_str(), 0, &surface)) return 0;
  fuzz::query(surface);
  fuzz::saveAndLoad(surface);
  return 0;
}
