// Boundary files: two switches, then one vertex a line, "name,northing,easting[,elevation]". What the switches mean is
// the host's business.
#include <new>

#include <OrvikDTMAlgorithm/io/DTMFileOperation.h>
#include <OrvikDTMAlgorithm/io/PointLines.h>
#include <OrvikDTMAlgorithm/platform/Platform.h>
#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/report/U.h>
#include <OrvikDTMAlgorithm/surface/Name.h>
#include <OrvikDTMAlgorithm/surface/RangePoint.h>
#include <OrvikDTMAlgorithm/surface/ReleasedMeanwhile.h>
#include <OrvikDTMAlgorithm/tin/NewObjects.h>

inline namespace OrvikDTM {
namespace {

bool isRangePointFile(const char* path) {
  return path != nullptr && (U::endsWith(path, ".waa") || U::endsWith(path, ".csv"));
}

using NewVertices = detail::NewObjects<RangePoint>;

void releaseAll(std::vector<RangePoint*>& vertices) {
  for (const RangePoint* vertex : vertices) {
    detail::ReleasedMeanwhile::note(vertex);
    delete vertex;
  }
  vertices.clear();
}

std::string lineOf(const RangePoint& vertex) {
  std::string line(vertex.name, strnlen(vertex.name, kNameSize));
  for (const double v : {vertex.n, vertex.e, vertex.z}) line.append(",").append(detail::generalText(v));
  return line.append("\n");
}

// Everything is read before anything is released.
bool replaceBy(const char* path, bool* first, bool* second, std::vector<RangePoint*>& out) {
  std::string contents;
  if (!detail::readFittingFile(path, contents)) {
    releaseAll(out);
    return false;
  }
  std::string_view rest = detail::withoutByteOrderMark(contents);
  bool switches[2] = {};
  detail::NoAccount none;
  for (bool& value : switches) value = detail::takeSwitch(rest, none);
  NewVertices vertices(0);
  detail::readVertexLines(rest, none, [&vertices](const RangePoint& vertex) { vertices.add(vertex); });

  if (first != nullptr) *first = switches[0];
  if (second != nullptr) *second = switches[1];
  releaseAll(out);
  out = vertices.take();
  return true;
}

}  // namespace

bool DTMFileOperation::loadRangePointFile(const char* path, bool* first, bool* second, std::vector<RangePoint*>& out) {
  if (!isRangePointFile(path)) return false;
  try {
    return replaceBy(path, first, second, out);
  } catch (const std::bad_alloc&) {
    return false;
  }
}

bool DTMFileOperation::saveRangePointFile(const char* path, bool first, bool second,
                                          const std::vector<RangePoint*>& points) {
  std::string text;
  for (const bool value : {first, second}) text.append(value ? "1\n" : "0\n");
  for (const RangePoint* vertex : points) {
    if (vertex != nullptr) text += lineOf(*vertex);
  }
  return detail::writeTextFile(path, text);
}

}  // namespace OrvikDTM
