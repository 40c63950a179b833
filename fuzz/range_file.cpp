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

// A hill of four triangles, 100 m wide: what is measured within a boundary is cut into pieces by the thousand.
void addHill(DTMSurface& surface) {
  constexpr double kCorners[][3] = {{0, 0, 1}, {100, 0, 2}, {100, 100, 0}, {0, 100, 1}, {45, 55, 10}};
  for (const auto& [e, n, z] : kCorners) {
    auto* point = new SurfacePoint;
    point->setE(e);
    point->setN(n);
    point->setZ(z);
    surface.addSurfacePoint(point, static_cast<unsigned long long>(surface.getPointsNumber()));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  DTMFileOperation files;
  Range range;
  bool first = false;
  bool second = false;
  const std::string path = fuzz::fileOf(data, size, ".waa");
  if (files.loadRangePointFile(path.c_str(), &first, &second, range)) {
    fuzz::require(orvik::readBoundaryFile(path.c_str()).vertices.size() == range.size(),
                  "both readers read the same vertices");
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
