#include "Sheet.h"

#include <algorithm>
#include <cmath>

#include "Contours.h"
#include "Simplify.h"

namespace pictures {

namespace {

// All in units of the picture.
constexpr double kMapSide = 1000.0;
constexpr double kMargin = 34.0;
constexpr double kColumn = 300.0;
constexpr double kLeastHeight = 600.0;
constexpr double kFootOfColumn = 40.0;
constexpr double kLine = 20.0;
constexpr double kSample = 34.0;
constexpr double kLongestBar = 220.0;
constexpr double kLeastGrid = 170.0;
constexpr const char* kGrey = "#666";

double scaleOf(const Box& extent) { return kMapSide / std::max(extent.width(), extent.height()); }
double mapWidth(const Box& extent) { return extent.width() * scaleOf(extent); }
double mapHeight(const Box& extent) { return extent.height() * scaleOf(extent); }
double sheetWidth(const Box& extent) { return mapWidth(extent) + kColumn + 3.0 * kMargin; }
double sheetHeight(const Box& extent) { return std::max(mapHeight(extent), kLeastHeight) + 2.0 * kMargin; }

// The largest round number that is not above `most`.
double roundLength(double most) {
  const double above = roundStep(most);
  if (above == most) return above;
  const double lower = roundStep(most / 2.5);
  return lower <= most ? lower : roundStep(most / 10.0);
}

std::string text(double v) { return shortNumber(v, 6); }

}  // namespace

Sheet::Sheet(const Box& extent, const Origin& origin, const std::string& title)
    : extent_(extent),
      origin_(origin),
      scale_(scaleOf(extent)),
      left_(kMargin),
      top_((sheetHeight(extent) - mapHeight(extent)) / 2.0),
      bottom_(sheetHeight(extent) - kMargin),
      column_(mapWidth(extent) + 2.0 * kMargin),
      cursor_(kMargin),
      svg_(sheetWidth(extent), sheetHeight(extent), title) {}

RasterPoint Sheet::at(double x, double y) const {
  const auto raster = [](double v) {
    constexpr double kFarAway = 1e8;  // a boundary may lie anywhere
    return static_cast<std::int32_t>(std::lround(std::clamp(v * kRaster, -kFarAway, kFarAway)));
  };
  return {raster(left_ + (x - extent_.minX) * scale_), raster(top_ + (extent_.maxY - y) * scale_)};
}

std::vector<RasterPoint> Sheet::at(const std::vector<Point>& points) const {
  std::vector<RasterPoint> raster;
  raster.reserve(points.size());
  for (const Point& p : points) raster.push_back(at(p.x, p.y));
  return raster;
}

void Sheet::openMap() {
  svg_.open("clipPath", {{"id", "frame"}});
  svg_.add("rect", {{"x", text(left_)},
                    {"y", text(top_)},
                    {"width", text(extent_.width() * scale_)},
                    {"height", text(extent_.height() * scale_)}});
  svg_.close("clipPath");
  svg_.open("g", {{"class", "frame"}, {"clip-path", "url(#frame)"}});
  constexpr int kDecimals = 9;
  // The place of a point (E, N) in the picture: x = left + (E - west) * scale, y = top + (north - N) * scale.
  svg_.open("g", {{"class", "map"},
                  {"data-scale", shortNumber(scale_, kDecimals)},
                  {"data-left", shortNumber(left_, kDecimals)},
                  {"data-top", shortNumber(top_, kDecimals)},
                  {"data-west", shortNumber(origin_.x + extent_.minX, kDecimals)},
                  {"data-north", shortNumber(origin_.y + extent_.maxY, kDecimals)}});
}

void Sheet::closeMap() {
  drawCrosses();
  svg_.close("g");
  svg_.close("g");
  drawFrame();
}

std::vector<double> Sheet::gridValues(double low, double size) const {
  const double step = roundStep(kLeastGrid / scale_);
  std::vector<double> values;
  for (double k = std::ceil(low / step); k * step <= low + size; ++k) values.push_back(k * step);
  return values;
}

void Sheet::drawCrosses() {
  constexpr double kArm = 5.0;
  const std::string arm = text(kArm);
  const std::string whole = text(2.0 * kArm);
  std::string crosses;
  for (const double e : gridValues(origin_.x + extent_.minX, extent_.width())) {
    for (const double n : gridValues(origin_.y + extent_.minY, extent_.height())) {
      const RasterPoint p = at(e - origin_.x, n - origin_.y);
      crosses += joined({"M", shortNumber(p.x / kRaster - kArm, 1), " ", shortNumber(p.y / kRaster, 1), "h", whole,
                         "m-", arm, " -", arm, "v", whole});
    }
  }
  svg_.add("path", {{"class", "grid"}, {"d", crosses}, {"stroke", kGrey}, {"stroke-width", "0.7"}, {"fill", "none"}});
}

void Sheet::drawFrame() {
  constexpr double kAway = 8.0;
  constexpr double kBelow = 14.0;
  constexpr int kDecimals = 3;
  const double foot = top_ + extent_.height() * scale_;
  svg_.add("rect", {{"x", text(left_)},
                    {"y", text(top_)},
                    {"width", text(extent_.width() * scale_)},
                    {"height", text(foot - top_)},
                    {"fill", "none"},
                    {"stroke", "#bbb"},
                    {"stroke-width", "0.7"}});
  svg_.open("g", {{"class", "coordinates"}, {"font-size", "10"}, {"fill", kGrey}, {"text-anchor", "middle"}});
  for (const double e : gridValues(origin_.x + extent_.minX, extent_.width())) {
    svg_.text(at(e - origin_.x, 0.0).x / kRaster, foot + kBelow, shortNumber(e, kDecimals));
  }
  const double x = left_ - kAway;
  for (const double n : gridValues(origin_.y + extent_.minY, extent_.height())) {
    const double y = at(0.0, n - origin_.y).y / kRaster;
    svg_.text(x, y, shortNumber(n, kDecimals),
              {{"transform", joined({"rotate(-90 ", shortNumber(x, 1), " ", shortNumber(y, 1), ")"})}});
  }
  svg_.close("g");
}

void Sheet::drawTitle(const std::string& title, const std::string& subtitle) {
  drawNorthArrow();
  svg_.text(column_, cursor_ + 14.0, title, {{"class", "title"}, {"font-size", "19"}, {"font-weight", "bold"}});
  svg_.text(column_, cursor_ + 34.0, subtitle, {{"class", "subtitle"}, {"fill", kGrey}});
  cursor_ += 52.0;
}

void Sheet::heading(const std::string& words) {
  cursor_ += 8.0;
  svg_.text(column_, cursor_ + 14.0, words, {{"font-weight", "bold"}});
  cursor_ += kLine;
}

void Sheet::row(const std::string& label, const std::string& value) {
  svg_.text(column_, cursor_ + 14.0, label);
  svg_.text(column_ + kColumn, cursor_ + 14.0, value, {{"class", "value"}, {"text-anchor", "end"}});
  cursor_ += kLine;
}

void Sheet::swatch(const std::string& colour, const std::string& words) {
  svg_.add("rect", {{"x", text(column_)},
                    {"y", text(cursor_ + 3.0)},
                    {"width", text(kSample)},
                    {"height", "13"},
                    {"fill", colour},
                    {"stroke", "#888"},
                    {"stroke-width", "0.5"}});
  svg_.text(column_ + kSample + 10.0, cursor_ + 14.0, words);
  cursor_ += kLine;
}

void Sheet::lineSample(const std::string& colour, double width, const std::string& dashes, const std::string& words) {
  svg_.add("path", {{"d", joined({"M", text(column_), " ", text(cursor_ + 9.5), "h", text(kSample)})},
                    {"stroke", colour},
                    {"stroke-width", text(width)},
                    {"stroke-dasharray", dashes}});
  svg_.text(column_ + kSample + 10.0, cursor_ + 14.0, words);
  cursor_ += kLine;
}

void Sheet::note(const std::string& words) {
  svg_.text(column_, cursor_ + 14.0, words, {{"font-size", "11"}, {"fill", kGrey}});
  cursor_ += kLine;
}

void Sheet::drawNorthArrow() {
  const double x = column_ + kColumn - 14.0;
  const double y = cursor_ + 16.0;
  const std::string tip = joined({"M", text(x), " ", text(y)});
  svg_.open("g", {{"class", "north"}});
  svg_.add("path", {{"d", tip + "v30l-9 9z"}, {"fill", "#222"}});
  svg_.add("path", {{"d", tip + "v30l9 9z"}, {"fill", "#fff"}, {"stroke", "#222"}, {"stroke-width", "0.8"}});
  svg_.text(x, y - 3.0, "N", {{"text-anchor", "middle"}, {"font-weight", "bold"}});
  svg_.close("g");
}

void Sheet::drawScaleBar() {
  constexpr int kParts = 4;
  constexpr double kHeight = 7.0;
  const double length = roundLength(kLongestBar / scale_);
  const double part = length * scale_ / kParts;
  const double y = bottom_ - kFootOfColumn + 12.0;
  svg_.open("g", {{"class", "scale-bar"}, {"data-length", text(length)}, {"font-size", "11"}});
  for (int i = 0; i < kParts; ++i) {
    svg_.add("rect", {{"x", text(column_ + i * part)},
                      {"y", text(y)},
                      {"width", text(part)},
                      {"height", text(kHeight)},
                      {"fill", i % 2 == 0 ? "#222" : "#fff"},
                      {"stroke", "#222"},
                      {"stroke-width", "0.7"}});
  }
  for (const double share : {0.0, 0.5, 1.0}) {
    const std::string unit = share == 1.0 ? " m" : "";
    svg_.text(column_ + share * kParts * part, y + 20.0, text(share * length) + unit,
              {{"data-share", text(share)}, {"text-anchor", share == 0.0 ? "start" : "middle"}});
  }
  svg_.close("g");
}

std::string Sheet::finish() {
  drawScaleBar();
  return svg_.finish();
}

namespace {

void addOutline(Svg& svg, const std::string& name, const std::string& data, const std::string& colour, double width,
                const std::string& dashes) {
  svg.add("path", {{"class", name},
                   {"d", data},
                   {"fill", "none"},
                   {"stroke", colour},
                   {"stroke-width", text(width)},
                   {"stroke-linejoin", "round"},
                   {"stroke-dasharray", dashes},
                   {"vector-effect", "non-scaling-stroke"}});
}

}  // namespace

void addLines(Svg& svg, const std::string& name, const std::vector<std::vector<RasterPoint>>& lines,
              const std::string& colour, double width, const std::string& dashes) {
  addOutline(svg, name, linesData(lines), colour, width, dashes);
}

void addLoops(Svg& svg, const std::string& name, const std::vector<std::vector<RasterPoint>>& loops,
              const std::string& colour, double width, const std::string& dashes) {
  addOutline(svg, name, loopsData(loops), colour, width, dashes);
}

std::vector<std::vector<RasterPoint>> seen(const std::vector<std::vector<RasterPoint>>& lines) {
  std::vector<std::vector<RasterPoint>> left;
  for (const auto& line : lines) {
    const bool closes = line.size() > 1 && line.front() == line.back();
    std::vector<RasterPoint> fewer;
    if (closes) {
      fewer = simplifiedLoop({line.begin(), line.end() - 1}, kUnseen);
      if (!fewer.empty()) fewer.push_back(fewer.front());
    } else {
      fewer = simplified(line, kUnseen);
    }
    if (fewer.size() > 1) left.push_back(std::move(fewer));
  }
  return left;
}

std::vector<std::vector<RasterPoint>> seenLoops(const std::vector<std::vector<RasterPoint>>& loops) {
  std::vector<std::vector<RasterPoint>> left;
  for (const auto& loop : loops) {
    std::vector<RasterPoint> fewer = simplifiedLoop(loop, kUnseen);
    if (!fewer.empty()) left.push_back(std::move(fewer));
  }
  return left;
}

}  // namespace pictures
