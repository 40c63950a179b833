#include "TerrainPicture.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "Chains.h"
#include "Sheet.h"

namespace pictures {

namespace {

constexpr std::size_t kMostEdges = 250000;
constexpr const char* kEdgeLine = "#9aa5ad";
constexpr const char* kHullLine = "#1f3b57";
constexpr const char* kContourLine = "#a8672f";
constexpr const char* kIndexLine = "#7a3e0c";
constexpr double kEdgeWidth = 0.5;
constexpr double kHullWidth = 1.8;
constexpr double kContourWidth = 0.8;
constexpr double kIndexWidth = 1.5;

std::vector<std::vector<RasterPoint>> pointsOf(const std::vector<std::vector<Place>>& lines) {
  std::vector<std::vector<RasterPoint>> points;
  points.reserve(lines.size());
  for (const auto& line : lines) {
    points.emplace_back();
    for (const Place place : line) points.back().push_back(pointOf(place));
  }
  return points;
}

Place snapped(const RasterPoint& p) {
  constexpr double kTenth = kRaster / 10.0;
  const auto snap = [](std::int32_t v) {
    return static_cast<std::int32_t>(std::lround(v / kTenth) * std::lround(kTenth));
  };
  return placeOf({snap(p.x), snap(p.y)});
}

std::vector<Segment> edgesToDraw(const Sheet& sheet, const PlanMesh& mesh) {
  std::vector<Segment> edges;
  for (const auto& [a, b] : mesh.edges) {
    const Place from = snapped(sheet.at(mesh.points[a].x, mesh.points[a].y));
    const Place to = snapped(sheet.at(mesh.points[b].x, mesh.points[b].y));
    if (from != to) edges.push_back({std::min(from, to), std::max(from, to)});
  }
  std::sort(edges.begin(), edges.end(),
            [](const Segment& a, const Segment& b) { return a.from != b.from ? a.from < b.from : a.to < b.to; });
  edges.erase(std::unique(edges.begin(), edges.end(),
                          [](const Segment& a, const Segment& b) { return a.from == b.from && a.to == b.to; }),
              edges.end());
  return edges;
}

void addHull(Sheet& sheet, const PlanMesh& mesh, double width) {
  std::vector<Segment> sides;
  for (const auto& [a, b] : mesh.hull) sides.push_back({a, b});
  std::vector<std::vector<RasterPoint>> lines;
  for (const auto& line : chained(sides)) {
    lines.emplace_back();
    for (const Place number : line) lines.back().push_back(sheet.at(mesh.points[number].x, mesh.points[number].y));
  }
  addLines(sheet.svg(), "hull", seen(lines), kHullLine, width);
}

double length(const std::vector<RasterPoint>& line) {
  double sum = 0.0;
  for (std::size_t i = 1; i < line.size(); ++i) {
    sum += std::hypot(static_cast<double>(line[i].x) - line[i - 1].x, static_cast<double>(line[i].y) - line[i - 1].y);
  }
  return sum;
}

// The level in the middle of a long line, along it, and never upside down.
void addLabel(Svg& svg, const std::vector<RasterPoint>& line, const std::string& level) {
  constexpr double kShortest = 140.0 * kRaster;
  constexpr int kDecimals = 1;
  const double whole = length(line);
  if (whole < kShortest) return;
  double left = whole / 2.0;
  std::size_t i = 1;
  for (; i + 1 < line.size(); ++i) {
    const double step = length({line[i - 1], line[i]});
    if (step >= left) break;
    left -= step;
  }
  const RasterPoint& a = line[i - 1];
  const RasterPoint& b = line[i];
  const double t = left / std::max(length({a, b}), 1.0);
  const double x = (a.x + (static_cast<double>(b.x) - a.x) * t) / kRaster;
  const double y = (a.y + (static_cast<double>(b.y) - a.y) * t) / kRaster;
  double angle = std::atan2(static_cast<double>(b.y) - a.y, static_cast<double>(b.x) - a.x) * 180.0 / std::numbers::pi;
  if (angle > 90.0) angle -= 180.0;
  if (angle < -90.0) angle += 180.0;
  svg.text(x, y, level,
           {{"dy", "3.5"},
            {"transform", "rotate(" + shortNumber(angle, kDecimals) + " " + shortNumber(x, kDecimals) + " " +
                              shortNumber(y, kDecimals) + ")"}});
}

std::string levelText(double level) {
  constexpr int kDecimals = 6;
  return shortNumber(level, kDecimals);
}

void addContours(Sheet& sheet, const std::vector<Contour>& contours) {
  std::vector<std::pair<std::string, std::vector<std::vector<RasterPoint>>>> labelled;
  for (const Contour& contour : contours) {
    std::vector<std::vector<RasterPoint>> lines;
    for (const ContourLine& line : contour.lines) lines.push_back(sheet.at(line.points));
    lines = seen(lines);
    if (lines.empty()) continue;
    const std::string level = levelText(contour.level);
    sheet.svg().add("path", {{"class", contour.index ? "contour index" : "contour"},
                             {"data-level", level},
                             {"d", linesData(lines)},
                             {"fill", "none"},
                             {"stroke", contour.index ? kIndexLine : kContourLine},
                             {"stroke-width", shortNumber(contour.index ? kIndexWidth : kContourWidth, 1)},
                             {"stroke-linejoin", "round"},
                             {"vector-effect", "non-scaling-stroke"}});
    if (contour.index) labelled.emplace_back(level, std::move(lines));
  }
  sheet.svg().open("g", {{"class", "labels"},
                         {"font-size", "10"},
                         {"text-anchor", "middle"},
                         {"fill", kIndexLine},
                         {"stroke", "#fff"},
                         {"stroke-width", "3"},
                         {"paint-order", "stroke"}});
  for (const auto& [level, lines] : labelled) {
    for (const auto& line : lines) addLabel(sheet.svg(), line, level);
  }
  sheet.svg().close("g");
}

void drawFacts(Sheet& sheet, const std::string& title, const PlanMesh& mesh, const TerrainFacts& facts) {
  sheet.drawTitle(title, facts.surface);
  sheet.heading("Surface");
  sheet.row("Survey points", std::to_string(facts.surveyPoints));
  sheet.row("Triangles", std::to_string(mesh.triangles.size()));
  sheet.row("Plan area", millimetres(facts.planArea) + " m²");
  sheet.row("Lowest", millimetres(facts.lowest) + " m");
  sheet.row("Highest", millimetres(facts.highest) + " m");
}

void drawContourLegend(Sheet& sheet, const ContourLevels& levels) {
  sheet.lineSample(kContourLine, kContourWidth, "none", "Contour, every " + levelText(levels.interval) + " m");
  sheet.lineSample(kIndexLine, kIndexWidth, "none", "Index contour, every fifth");
  if (levels.base != 0.0) sheet.note("counted from " + levelText(levels.base) + " m");
}

}  // namespace

std::string tinPicture(const PlanMesh& mesh, const TerrainFacts& facts, const std::vector<Contour>& contours,
                       const ContourLevels& levels) {
  Sheet sheet(mesh.box(), mesh.origin, "TIN: " + facts.surface);
  const std::vector<Segment> edges = edgesToDraw(sheet, mesh);
  const bool drawn = edges.size() <= kMostEdges;
  sheet.openMap();
  if (drawn) addLines(sheet.svg(), "edges", pointsOf(trails(edges)), kEdgeLine, kEdgeWidth);
  addContours(sheet, contours);
  addHull(sheet, mesh, kHullWidth);
  sheet.closeMap();
  drawFacts(sheet, "TIN and contours", mesh, facts);
  sheet.heading("Lines");
  if (drawn) sheet.lineSample(kEdgeLine, kEdgeWidth * 2.0, "none", "Edge of the TIN");
  sheet.lineSample(kHullLine, kHullWidth, "none", "Hull");
  drawContourLegend(sheet, levels);
  if (!drawn) sheet.note("The TIN's edges lie too close to be drawn.");
  return sheet.finish();
}

std::string contourPicture(const PlanMesh& mesh, const TerrainFacts& facts, const std::vector<Contour>& contours,
                           const ContourLevels& levels) {
  Sheet sheet(mesh.box(), mesh.origin, "Contours: " + facts.surface);
  sheet.openMap();
  addContours(sheet, contours);
  addHull(sheet, mesh, kContourWidth);
  sheet.closeMap();
  drawFacts(sheet, "Contours", mesh, facts);
  sheet.heading("Lines");
  drawContourLegend(sheet, levels);
  sheet.lineSample(kHullLine, kContourWidth, "none", "Hull");
  return sheet.finish();
}

}  // namespace pictures
