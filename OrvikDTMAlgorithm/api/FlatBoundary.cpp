// Flat functions: the boundary that is being edited.
#include <memory>
#include <utility>
#include <vector>

#include <OrvikDTMAlgorithm/api/FlatGuard.h>
#include <OrvikDTMAlgorithm/api/StillListed.h>
#include <OrvikDTMAlgorithm/io/DTMFileOperation.h>
#include <OrvikDTMAlgorithm/surface/Name.h>

inline namespace OrvikDTM {

using detail::flatState;
using detail::guarded;
using detail::handOut;

namespace {

std::unique_ptr<RangePoint> newVertex(const char* name, double n, double e, double z) {
  auto vertex = std::make_unique<RangePoint>(RangePoint{{}, n, e, z});
  copyName(vertex->name, name);
  return vertex;
}

void release(const RangePoint* vertex) {
  detail::ReleasedMeanwhile::note(vertex);
  delete vertex;
}

void releaseAll(std::vector<RangePoint*>& vertices) {
  for (const RangePoint* vertex : vertices) release(vertex);
  vertices.clear();
}

// Vertices that are not the boundary's yet.
struct NewVertices {
  NewVertices() = default;
  ~NewVertices() { releaseAll(list); }
  NewVertices(const NewVertices&) = delete;
  NewVertices& operator=(const NewVertices&) = delete;

  std::vector<RangePoint*> list;
};

// Hands out the boundary's own records, which are these. The callback may edit the boundary: what it has deleted is
// left out.
void handOutVertices(const std::vector<RangePoint*>& vertices) {
  if (flatState().callbacks.rangePoint == nullptr) return;
  const std::vector<RangePoint*>& now = flatState().rangePoints;
  detail::StillListed stillListed;
  for (RangePoint* vertex : vertices) {
    if (stillListed.in(now, vertex) && !handOut(&detail::Callbacks::rangePoint, vertex)) return;
  }
}

}  // namespace

int addRangePoint(const char* name, double n, double e, double z) {
  return guarded([&] {
    std::unique_ptr<RangePoint> vertex = newVertex(name, n, e, z);
    flatState().rangePoints.push_back(vertex.get());
    static_cast<void>(vertex.release());  // the list's from here on
    return 1;
  });
}

int updateRangePoint(unsigned int index, const char* name, double n, double e, double z) {
  return guarded([&] {
    auto& vertices = flatState().rangePoints;
    if (index >= vertices.size()) return 0;
    release(std::exchange(vertices[index], newVertex(name, n, e, z).release()));
    return 1;
  });
}

int deleteRangePoint(unsigned int index) {
  auto& vertices = flatState().rangePoints;
  if (index >= vertices.size()) return 0;
  release(vertices[index]);
  vertices.erase(vertices.begin() + static_cast<std::ptrdiff_t>(index));
  return 1;
}

int loadRangePointFile(const char* path, bool* first, bool* second) {
  return guarded([&] {
    auto& vertices = flatState().rangePoints;
    bool switches[2] = {};
    NewVertices read;
    read.list.reserve(1);
    read.list.push_back(newVertex("", 0.0, 0.0, 0.0).release());  // goes unless the file is not even looked at
    if (!DTMFileOperation().loadRangePointFile(path, &switches[0], &switches[1], read.list)) {
      if (read.list.empty()) releaseAll(vertices);
      return 0;
    }
    const std::vector<RangePoint*> loaded = read.list;
    if (first != nullptr) *first = switches[0];
    if (second != nullptr) *second = switches[1];
    vertices.swap(read.list);
    releaseAll(read.list);
    handOutVertices(loaded);
    return loaded.empty() ? 0 : 1;
  });
}

int saveRangePointFile(const char* path, bool first, bool second) {
  return guarded(
      [&] { return DTMFileOperation().saveRangePointFile(path, first, second, flatState().rangePoints) ? 1 : 0; });
}

}  // namespace OrvikDTM
