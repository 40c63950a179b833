// ".sjw" triangle files.
#include "Exercise.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::OwnedSurface surface;
  if (!surface.tryParseSJW(fuzz::fileOf(data, size, ".sjw").c_str())) return 0;
  fuzz::query(surface);
  fuzz::saveAndLoad(surface);
  return 0;
}
