#include "Exercise.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <unistd.h>

namespace fuzz {

namespace {

constexpr int kHeights = 50;

std::string contentsOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

// Heights across the extent and beyond it, the corners included.
void readHeights(DTMSurface& surface) {
  const double width = surface.getRangeMaxX() - surface.getRangeMinX();
  const double height = surface.getRangeMaxY() - surface.getRangeMinY();
  for (int i = 0; i < kHeights; ++i) {
    const double alongX = -0.125 + 1.25 * (i % 11) / 10;
    const double alongY = -0.125 + 1.25 * (i % 7) / 6;
    double z = 0.0;
    const int found = surface.checkSurfacePoint(surface.getRangeMinY() + alongY * height,
                                                surface.getRangeMinX() + alongX * width, &z);
    require(found == 0 || found == 1, "a height is there or not");
  }
}

}  // namespace

std::string scratchPath(const std::string& extension) {
  static const std::string stem =
      (std::filesystem::temp_directory_path() / ("orvikdtm-fuzz-" + std::to_string(getpid()))).string();
  return stem + extension;
}

std::string fileOf(const std::uint8_t* data, std::size_t size, const std::string& extension) {
  std::string path = scratchPath(extension);
  std::ofstream file(path, std::ios::binary);
  for (std::size_t i = 0; i < size; ++i) file.put(static_cast<char>(data[i]));
  return path;
}

void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "Does not hold: %s\n", what);
  std::abort();
}

void query(DTMSurface& surface) {
  CEType* model = surface.getCEType();
  if (model == nullptr) return;
  surface.toString();
  model->getMeasures();
  model->getOriginalList();
  readHeights(surface);
  const std::unique_ptr<FillCutResult> result(surface.getFillCut((surface.getMinElev() + surface.getMaxElev()) / 2));
  require(result != nullptr, "a surface with a TIN has volumes");
  model->getTriangle3List();
  const std::unique_ptr<DTMSurface> copy(surface.clone());
  copy->release();
}

void saveAndLoad(DTMSurface& surface) {
  DTMFileOperation files;
  const std::string path = scratchPath("-saved.ttin");
  require(files.saveSurfaces(path.c_str(), &surface), "a surface can be saved");
  const std::string first = contentsOf(path);
  OwnedSurface again;
  require(files.loadSurface(path.c_str(), 0, &again), "what was saved can be loaded");
  require(files.saveSurfaces(path.c_str(), &again), "and saved again");
  require(first == contentsOf(path), "with the same bytes");

  const std::string triangles = scratchPath("-saved.sjw");
  if (!surface.exportFileSJW(triangles.c_str())) return;
  const std::unique_ptr<CEType> read(CEType::initCETypeFromSJW(triangles.c_str()));
  if (read != nullptr) read->getCASSsjw();
}

}  // namespace fuzz
