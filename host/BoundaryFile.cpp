#include "BoundaryFile.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "Console.h"
#include "LineNotices.h"
#include "OutputFile.h"
#include "Paths.h"
#include "UserText.h"

namespace {

constexpr std::size_t kVerticesOfAPolygon = 3;
void requireBoundaryFile(const std::string& path) {
  if (!U::endsWith(path, ".waa") && !U::endsWith(path, ".csv")) {
    throw console::Failure(shownPath(path) + ": not a boundary file: the name must end in .waa or .csv");
  }
  requireRegularFile(path);
}

std::string countText(std::size_t vertices) {
  return vertices == 1 ? "1 vertex" : std::to_string(vertices) + " vertices";
}

// Vertices are counted from 1 for users.
std::string sideText(std::size_t side, std::size_t vertices) {
  return std::to_string(side + 1) + "-" + std::to_string((side + 1) % vertices + 1);
}

std::string placeText(const PlanPoint& p) {
  return "easting " + console::number(p.x) + ", northing " + console::number(p.y);
}

void warnOfOutside(const std::string& path, const Polygon& polygon, DTMSurface& surface) {
  const auto isOutside = [&](const PlanPoint& p) { return surface.checkSurfacePoint(p.y, p.x, nullptr) == 0; };
  const auto outside = static_cast<std::size_t>(std::count_if(polygon.begin(), polygon.end(), isOutside));
  if (outside == 0) return;
  console::warn(shownPath(path) + ": " + std::to_string(outside) + " of " + countText(polygon.size()) +
                " outside the surface: nothing is measured there");
}

// Shortest text that reads back as v.
void appendNumber(std::string& text, double v) {
  std::array<char, 400> digits{};  // the largest double in fixed notation takes 309
  text.append(digits.data(),
              std::to_chars(digits.data(), digits.data() + digits.size(), v, std::chars_format::fixed).ptr);
}

void warnOfSwitches(const std::string& path, const orvik::BoundaryFile& file) {
  for (const orvik::LineNotice& notice : file.notices) {
    if (notice.fault != orvik::LineFault::NotASwitch) continue;
    console::warn(shownPath(path) + ":" + std::to_string(notice.line) + ": is " + quoted(notice.text) +
                  ", not a switch: taken for 0, write 0 or 1");
  }
}

}  // namespace

std::vector<RangePoint*> Boundary::pointers() const {
  std::vector<RangePoint*> list;
  for (const auto& point : points) list.push_back(point.get());
  return list;
}

Polygon Boundary::polygon() const {
  Polygon polygon;
  for (const auto& point : points) polygon.push_back({point->e, point->n});
  return opened(polygon);
}

Boundary readBoundary(const std::string& path) {
  requireBoundaryFile(path);
  orvik::BoundaryFile file = orvik::readBoundaryFile(path.c_str());
  requireUnderstood(path, file);
  if (file.skipped > 0) {
    console::warn(shownPath(path) + ": " + console::counted(file.skipped, "line") +
                  " skipped: a vertex needs name,northing,easting");
  }
  warnOfSwitches(path, file);
  return {file.first, file.second, std::move(file.vertices)};
}

std::string faultOf(const Boundary& boundary) {
  const Polygon polygon = boundary.polygon();
  if (polygon.size() < kVerticesOfAPolygon) {
    return "has " + countText(polygon.size()) + ": a boundary needs at least three";
  }
  if (isOnOneLine(polygon)) return "encloses nothing: all its vertices lie on one line";
  for (std::size_t i = 1; i < polygon.size(); ++i) {
    if (polygon[i] != polygon[i - 1]) continue;
    return "vertex " + std::to_string(i + 1) + " is at the place of the one before it: " + placeText(polygon[i]);
  }
  if (const std::optional<Crossing> crossing = findCrossing(polygon)) {
    return "crosses or touches itself: side " + sideText(crossing->first, polygon.size()) + " meets side " +
           sideText(crossing->second, polygon.size()) + " near " + placeText(polygon[crossing->first]);
  }
  return "";
}

Boundary readLimit(const std::string& typedPath) {
  if (typedPath.empty()) return {};
  const std::string path = resolvedPath(typedPath);
  Boundary boundary = readBoundary(path);
  const std::string fault = faultOf(boundary);
  const Polygon polygon = boundary.polygon();
  if (polygon.size() < kVerticesOfAPolygon || isOnOneLine(polygon)) {
    throw console::Failure(shownPath(path) + ": the boundary " + fault);
  }
  if (!fault.empty()) console::warn(shownPath(path) + ": the boundary " + fault);
  return boundary;
}

void limitTo(const Boundary& boundary, const std::string& typedPath, DTMSurface& surface) {
  if (boundary.points.empty()) return;
  warnOfOutside(resolvedPath(typedPath), boundary.polygon(), surface);
  surface.setRangeList(boundary.pointers());
}

void writeBoundary(const std::string& path, const Boundary& boundary) {
  std::string text;
  text.append(boundary.first ? "1\n" : "0\n").append(boundary.second ? "1\n" : "0\n");
  for (const auto& point : boundary.points) {
    text.append(point->name);
    for (const double v : {point->n, point->e, point->z}) appendNumber(text.append(1, ','), v);
    text.append(1, '\n');
  }
  writeText(path, "boundary", text);
}
