// Boundary files: two switches, then one vertex a line, "name,northing,easting[,elevation]". What the switches mean is
// the host's business.
#include <array>
#include <memory>

#include <OrvikDTMAlgorithm/io/DTMFileOperation.h>
#include <OrvikDTMAlgorithm/io/TextLines.h>
#include <OrvikDTMAlgorithm/platform/Platform.h>
#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/report/U.h>
#include <OrvikDTMAlgorithm/surface/Name.h>
#include <OrvikDTMAlgorithm/surface/RangePoint.h>
#include <OrvikDTMAlgorithm/surface/ReleasedMeanwhile.h>

inline namespace OrvikDTM {
namespace {

enum Column : std::size_t { kName, kNorthing, kEasting, kElevation, kColumns };

constexpr std::size_t kFewestFields = kEasting + 1;

bool isRangePointFile(const char* path) {
  return path != nullptr && (U::endsWith(path, ".waa") || U::endsWith(path, ".csv"));
}

void takeSwitch(std::string_view& text, bool* value) {
  std::string_view line;
  detail::takeLine(text, line);
  if (value != nullptr) *value = line == "1";
}

void appendVertex(std::string_view line, std::vector<RangePoint*>& out) {
  std::array<std::string_view, kColumns> fields;
  if (detail::splitFields(line, fields) < kFewestFields) return;
  auto vertex = std::make_unique<RangePoint>();
  copyName(vertex->name, fields[kName]);
  vertex->n = detail::readNumber(fields[kNorthing]);
  vertex->e = detail::readNumber(fields[kEasting]);
  vertex->z = detail::readNumber(fields[kElevation]);
  out.push_back(vertex.get());
  vertex.release();
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
  takeSwitch(rest, first);
  takeSwitch(rest, second);
  for (std::string_view line; detail::takeLine(rest, line);) appendVertex(line, out);
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
