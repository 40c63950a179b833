// Boundary files, and volumes within the boundaries that they hold.
#include <memory>

#include "Exercise.h"

namespace {

using Range = std::vector<RangePoint*>;

void release(Range& range) {
  for (const RangePoint* point : range) delete point;
  range.clear();
}

void saveAndLoad(bool first, bool second, const Range& range) {
  DTMFileOperation files;
  const std::string path = fuzz::scratchPath("-saved.waa");
  fuzz::require(files.saveRangePointFile(path.c_str(), first, second, range), "a boundary can be saved");
  Range again;
  bool firstAgain = !first;
  bool secondAgain = !second;
  fuzz::require(files.loadRangePointFile(path.c_str(), &firstAgain, &secondAgain, again), "and loaded again");
  fuzz::require(first == firstAgain && second == secondAgain, "with the same switches");
  release(again);
}

// A hill of 5 x 5 points, 100 m wide.
void addHill(DTMSurface& surface) {
  for (int i = 0; i < 25; ++i) {
    auto* point = new SurfacePoint;
    point->setE(25.0 * (i % 5));
    point->setN(25.0 * (i / 5));
    point->setZ(i == 12 ? 10.0 : i % 3);
    surface.addSurfacePoint(point, static_cast<unsigned long long>(i));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  DTMFileOperation files;
  Range range;
  bool first = false;
  bool second = false;
  if (files.loadRangePointFile(fuzz::fileOf(data, size, ".waa").c_str(), &first, &second, range)) {
    fuzz::OwnedSurface surface;
    addHill(surface);
    fuzz::require(surface.setRangeList(range) == 1, "a surface takes a boundary");
    surface.getCEType()->proxyTri(-10.0, -10.0, 12, 12, 10.0);
    fuzz::query(surface);
    saveAndLoad(first, second, range);
  }
  release(range);
  return 0;
}
