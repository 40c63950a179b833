// Boundary files: two switches, then one vertex a line, "name,northing,easting[,elevation]". What the switches mean is
// the host's business.
#include <memory>

#include <OrvikDTMAlgorithm/io/DTMFileOperation.h>
#include <OrvikDTMAlgorithm/io/PointLines.h>
#include <OrvikDTMAlgorithm/platform/Platform.h>
#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/report/U.h>
#include <OrvikDTMAlgorithm/surface/Name.h>
#include <OrvikDTMAlgorithm/surface/RangePoint.h>
#include <OrvikDTMAlgorithm/surface/ReleasedMeanwhile.h>

inline namespace OrvikDTM {
namespace {

bool isRangePointFile(const char* path) {
  return path != nullptr && (U::endsWith(path, ".waa") || U::endsWith(path, ".csv"));
}

std::string lineOf(const RangePoint& vertex) {
  std::string line(vertex.name, strnlen(vertex.name, kNameSize));
  for (const double v : {vertex.n, vertex.e, vertex.z}) line.append(",").append(detail::generalText(v));
  return line.append("\n");
}

}  // namespace

bool DTMFileOperation::loadRangePointFile(const char* path, bool* first, bool* second, std::vector<RangePoint*>& out) {
  if (!isRangePointFile(path)) return false;
  for (const RangePoint* vertex : out) {
    detail::ReleasedMeanwhile::note(vertex);
    delete vertex;
  }
  out.clear();
  std::string contents;
  if (!detail::readWholeFile(path, contents)) return false;
  std::string_view rest = detail::withoutByteOrderMark(contents);
  detail::NoAccount none;
  for (bool* value : {first, second}) {
    const bool isOn = detail::takeSwitch(rest, none);
    if (value != nullptr) *value = isOn;
  }
  detail::readVertexLines(rest, none, [&out](const RangePoint& vertex) {
    auto record = std::make_unique<RangePoint>(vertex);
    out.push_back(record.get());
    record.release();
  });
  return true;
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
