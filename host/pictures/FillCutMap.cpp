#include "FillCutMap.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <OrvikDTMAlgorithm/tin/TPoint.h>

#include "DepthBands.h"
#include "Sheet.h"

namespace pictures {

namespace {

constexpr std::array<const char*, kBands> kReds{"#fbc4b4", "#f0836b", "#d1422f", "#8f1414"};
constexpr std::array<const char*, kBands> kBlues{"#bcd5f0", "#7fb0de", "#3a7cc2", "#174a8c"};
constexpr const char* kGroundColour = "#f4f2ec";
constexpr const char* kGroundLine = "#8a8578";
constexpr const char* kZeroLine = "#111";
constexpr const char* kBoundaryLine = "#1a7f37";
constexpr const char* kBoundaryDashes = "10 3 2 3";
constexpr double kHullWidth = 1.0;
constexpr double kZeroWidth = 1.6;
constexpr double kBoundaryWidth = 1.8;

// The faces of the map, by side and depth, and each side as a whole.
struct Faces {
  std::array<Outline, kBands> cutBands;
  std::array<Outline, kBands> fillBands;
  Outline cut;
  Outline fill;
  Outline same;
  double sameArea = 0.0;
};

Faces facesOf(const Pieces& pieces, double step, const Sheet& sheet) {
  Faces faces;
  std::vector<RasterPoint> face;
  forEachBandPart(pieces, step, [&](const Band& band, Loop& part) {
    face.clear();
    for (const DifferencePoint& p : part) face.push_back(sheet.at(p.x, p.y));
    const auto depth = static_cast<std::size_t>(band.depth);
    if (band.side == Side::Same) {
      faces.same.add(face);
      faces.sameArea += std::fabs(doubleArea(part)) / 2.0;
    } else {
      (band.side == Side::Cut ? faces.cut : faces.fill).add(face);
      (band.side == Side::Cut ? faces.cutBands : faces.fillBands)[depth].add(face);
    }
  });
  for (Outline* outline : {&faces.cut, &faces.fill, &faces.same}) outline->settle();
  for (auto* bands : {&faces.cutBands, &faces.fillBands}) {
    for (Outline& outline : *bands) outline.settle();
  }
  return faces;
}

void addFace(Svg& svg, const std::string& name, const Outline& outline, const std::string& colour) {
  const auto loops = seenLoops(outline.loops());
  if (loops.empty()) return;
  // A thin line in the face's own colour closes the seam that drawing programs leave between faces.
  svg.add("path", {{"class", name},
                   {"d", loopsData(loops)},
                   {"fill", colour},
                   {"fill-rule", "evenodd"},
                   {"stroke", colour},
                   {"stroke-width", "0.4"},
                   {"stroke-linejoin", "round"}});
}

std::vector<std::vector<RasterPoint>> pointsOf(const std::vector<std::vector<Place>>& lines) {
  std::vector<std::vector<RasterPoint>> points;
  for (const auto& line : lines) {
    points.emplace_back();
    for (const Place place : line) points.back().push_back(pointOf(place));
  }
  return points;
}

// Where one side ends and another begins.
std::vector<std::vector<RasterPoint>> zeroLine(const Faces& faces) {
  std::vector<Segment> shared;
  faces.cut.addShared(faces.fill, shared);
  faces.cut.addShared(faces.same, shared);
  faces.fill.addShared(faces.same, shared);
  return seen(pointsOf(chained(shared)));
}

std::vector<std::vector<RasterPoint>> hullOf(const Sheet& sheet, const PlanMesh& ground) {
  std::vector<Segment> sides;
  for (const auto& [a, b] : ground.hull) sides.push_back({a, b});
  std::vector<std::vector<RasterPoint>> loops;
  for (const auto& line : chained(sides)) {
    loops.emplace_back();
    for (const Place number : line) loops.back().push_back(sheet.at(ground.points[number].x, ground.points[number].y));
  }
  return seen(loops);
}

std::string depthText(int depth, double step) {
  constexpr int kDecimals = 6;
  const std::string from = shortNumber(depth * step, kDecimals);
  return depth == kBands - 1 ? "over " + from + " m"
                             : from + " to " + shortNumber((depth + 1) * step, kDecimals) + " m";
}

void drawMap(Sheet& sheet, const FillCutScene& scene, const Faces& faces) {
  sheet.openMap();
  const auto hull = hullOf(sheet, scene.ground);
  sheet.svg().add("path",
                  {{"class", "ground"}, {"d", linesData(hull)}, {"fill", kGroundColour}, {"fill-rule", "evenodd"}});
  addFace(sheet.svg(), "same", faces.same, kSameColour);
  for (int depth = 0; depth < kBands; ++depth) {
    const auto i = static_cast<std::size_t>(depth);
    addFace(sheet.svg(), "cut", faces.cutBands[i], cutColour(depth));
    addFace(sheet.svg(), "fill", faces.fillBands[i], fillColour(depth));
  }
  addLines(sheet.svg(), "hull", hull, kGroundLine, kHullWidth);
  addLines(sheet.svg(), "zero", zeroLine(faces), kZeroLine, kZeroWidth);
  if (scene.boundary.size() > 2) {
    addLoops(sheet.svg(), "boundary", {sheet.at(scene.boundary)}, kBoundaryLine, kBoundaryWidth, kBoundaryDashes);
  }
  sheet.closeMap();
}

// What was compared, the boundary, and some ground around them: works in a corner of a large survey fill the map.
Box extentOf(const FillCutScene& scene) {
  constexpr double kAround = 0.1;  // of the larger side
  const Box ground = scene.ground.box();
  const double reach = kAround * std::max(ground.width(), ground.height());
  Box extent = Box::none();
  for (const DifferencePoint& p : scene.pieces.points) extent.add(p.x, p.y);
  for (const Point& p : scene.boundary) {  // a boundary may reach far away
    extent.add(std::clamp(p.x, ground.minX - reach, ground.maxX + reach),
               std::clamp(p.y, ground.minY - reach, ground.maxY + reach));
  }
  if (extent.empty()) return ground;
  const double around = kAround * std::max(extent.width(), extent.height());
  const Box wider{extent.minX - around, extent.minY - around, extent.maxX + around, extent.maxY + around};
  extent.add(std::clamp(wider.minX, ground.minX, ground.maxX), std::clamp(wider.minY, ground.minY, ground.maxY));
  extent.add(std::clamp(wider.maxX, ground.minX, ground.maxX), std::clamp(wider.maxY, ground.minY, ground.maxY));
  return extent;
}

void drawSide(Sheet& sheet, const std::string& name, double volume, double area, double surfaceArea) {
  sheet.heading(name);
  sheet.row("Volume", millimetres(volume) + " m³");
  sheet.row("Plan area", millimetres(area) + " m²");
  sheet.row("Surface area", millimetres(surfaceArea) + " m²");
}

void drawLegend(Sheet& sheet, const FillCutScene& scene, const Faces& faces, double step, const FillCutFacts& facts) {
  const FillCutResult& result = *facts.result;
  sheet.drawTitle("Cut and fill", facts.surface);
  sheet.note("against " + facts.reference);
  drawSide(sheet, "Cut", result.getCutVolume(), result.getCutTwoDArea(), result.getCutThreeDArea());
  for (int depth = 0; depth < kBands && !faces.cutBands[static_cast<std::size_t>(depth)].empty(); ++depth) {
    sheet.swatch(cutColour(depth), depthText(depth, step));
  }
  drawSide(sheet, "Fill", result.getFillVolume(), result.getFillTwoDArea(), result.getFillThreeDArea());
  for (int depth = 0; depth < kBands && !faces.fillBands[static_cast<std::size_t>(depth)].empty(); ++depth) {
    sheet.swatch(fillColour(depth), depthText(depth, step));
  }
  sheet.heading("Lines and areas");
  sheet.lineSample(kZeroLine, kZeroWidth, "none", "Zero line");
  if (scene.boundary.size() > 2) sheet.lineSample(kBoundaryLine, kBoundaryWidth, kBoundaryDashes, "Boundary");
  if (faces.sameArea > 0.0) sheet.swatch(kSameColour, "No difference: " + millimetres(faces.sameArea) + " m²");
  const bool isPart = scene.boundary.size() > 2 || !scene.reference.triangles.empty();
  if (isPart) sheet.swatch(kGroundColour, "Surveyed, not compared");
}

}  // namespace

const char* cutColour(int depth) { return kReds[static_cast<std::size_t>(depth)]; }

const char* fillColour(int depth) { return kBlues[static_cast<std::size_t>(depth)]; }

FillCutScene fillCutScene(CEType& ground, const CEType* reference, double level) {
  const Origin origin = originOf(ground);
  FillCutScene scene;
  scene.ground = planMesh(ground, origin);
  if (reference != nullptr) scene.reference = planMesh(*reference, origin);
  scene.level = level;
  for (const TPoint* p : ground.getRangeList()) {
    if (p != nullptr) scene.boundary.push_back({p->getX() - origin.x, p->getY() - origin.y, 0.0});
  }
  const Reference against{reference == nullptr ? nullptr : &scene.reference, level};
  scene.pieces = differencePieces(scene.ground, against, scene.boundary);
  return scene;
}

std::string fillCutMap(const FillCutScene& scene, const FillCutFacts& facts) {
  Sheet sheet(extentOf(scene), scene.ground.origin, "Cut and fill: " + facts.surface + " against " + facts.reference);
  const double step = bandStep(scene.pieces);
  const Faces faces = facesOf(scene.pieces, step, sheet);
  drawMap(sheet, scene, faces);
  drawLegend(sheet, scene, faces, step, facts);
  return sheet.finish();
}

}  // namespace pictures
