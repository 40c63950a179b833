#include "SurveyFile.h"

#include <array>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <vector>

#include "Console.h"

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kFieldsOfAPoint = 5;  // name, code, easting, northing, elevation
constexpr std::size_t kFirstNumber = 2;
constexpr std::array<const char*, 3> kNumberNames = {"easting", "northing", "elevation"};
constexpr int kPointsOfASurface = 3;

struct LineCount {
  int points = 0;
  int skipped = 0;
};

void requirePointFile(const std::string& path) {
  if (!U::endsWith(path, ".csv") && !U::endsWith(path, ".dat")) {
    throw console::Failure(path + ": not a point file: the name must end in .csv or .dat");
  }
  std::error_code ignored;
  if (!fs::exists(path, ignored)) throw console::Failure(path + ": no such file: check the name and the folder");
  if (fs::is_directory(path, ignored)) throw console::Failure(path + ": is a folder: name a file in it");
}

// A point's line has its five fields, and the last three are numbers.
bool isPoint(const std::string& line, const std::string& where) {
  const std::vector<std::string> fields = U::split(line, ",");
  if (fields.size() < kFieldsOfAPoint) return false;
  for (std::size_t i = 0; i < kNumberNames.size(); ++i) {
    double value = 0.0;
    if (!parseNumber(fields[kFirstNumber + i], value)) {
      throw console::Failure(where + ": the " + kNumberNames[i] + " '" + fields[kFirstNumber + i] +
                             "' is not a number: correct the line or take it out");
    }
  }
  return true;
}

LineCount checkLines(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw console::Failure(path + ": cannot be read: check its permissions");
  LineCount count;
  std::string line;
  for (int number = 1; std::getline(file, line); ++number) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty()) continue;
    const bool point = isPoint(line, path + ":" + std::to_string(number));
    ++(point ? count.points : count.skipped);
  }
  if (file.bad()) throw console::Failure(path + ": reading stopped before its end: check the disk");
  return count;
}

void warnOfSkipped(const std::string& path, const LineCount& count) {
  if (count.skipped == 0) return;
  console::warn(path + ": " + std::to_string(count.skipped) + " of " + std::to_string(count.points + count.skipped) +
                " lines skipped: a point needs name,code,easting,northing,elevation");
}

void requirePoints(const std::string& path, const LineCount& count) {
  if (count.points == 0) {
    throw console::Failure(path + ": holds no survey points: a line reads name,code,easting,northing,elevation");
  }
  if (count.points < kPointsOfASurface) {
    throw console::Failure(path + ": holds " + std::to_string(count.points) +
                           " survey points: a surface needs at least three");
  }
}

void requireTriangles(const std::string& path, DTMSurface& surface) {
  if (surface.getCEType() == nullptr || surface.getTrianglesNumber() == 0) {
    throw console::Failure(path + ": all its points lie on one line or in one place: add points beside the line");
  }
}

void warnOfInvalid(const std::string& path, DTMSurface& surface) {
  const TINCheck check = verifyTIN(*surface.getCEType());
  if (!check.valid())
    console::warn(path + ": the TIN is not valid, so areas and volumes may be wrong: " + toText(check));
}

}  // namespace

bool parseNumber(const std::string& text, double& value) {
  const std::string trimmed = U::trim(text);
  const char* first = trimmed.data();
  const char* const last = first + trimmed.size();
  if (last - first > 1 && *first == '+' && first[1] != '-') ++first;
  const auto [end, fault] = std::from_chars(first, last, value);
  return fault == std::errc() && end == last && std::isfinite(value);
}

SurfacePtr readSurvey(const std::string& path) {
  requirePointFile(path);
  const LineCount count = checkLines(path);
  warnOfSkipped(path, count);
  requirePoints(path, count);

  SurfacePtr surface(new DTMSurface);
  surface->setSurfaceName(fs::path(path).stem().string().c_str());
  std::vector<SurfacePoint*> points;  // the surface's own records, listed a second time
  surface->loadSurfacePointsFile(path.c_str(), points);
  if (surface->getPointsNumber() != count.points) {
    throw console::Failure(path + ": changed while it was read, or memory ran out: try again");
  }
  requireTriangles(path, *surface);
  warnOfInvalid(path, *surface);
  return surface;
}
