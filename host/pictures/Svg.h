// Writing SVG: elements, attributes, paths on a raster of hundredths. Numbers have few decimals and never depend on the
// locale.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Outline.h"

namespace pictures {

// Raster points to one unit of a picture. At the size of a screen a unit is about a pixel.
inline constexpr double kRaster = 100.0;

// v with at most `decimals` decimals, no zeros at their end and no sign on zero.
std::string shortNumber(double v, int decimals);

// v with three decimals, as the program prints it.
std::string millimetres(double v);

// The parts, one behind the other.
std::string joined(std::initializer_list<std::string_view> parts);

// `text` fit for element content and attribute values; bytes that XML or UTF-8 do not allow are "?".
std::string escaped(const std::string& text);

class Svg {
 public:
  using Attributes = std::initializer_list<std::pair<std::string_view, std::string>>;

  Svg(double width, double height, const std::string& title);

  void open(std::string_view element, Attributes attributes);
  void close(std::string_view element);
  void add(std::string_view element, Attributes attributes);
  void text(double x, double y, const std::string& words, Attributes attributes = {});

  // The whole picture. Nothing can be added after it.
  std::string finish();

 private:
  void begin(std::string_view element, Attributes attributes);

  std::string text_;
};

// A path's data: every loop closed, every line open.
std::string loopsData(const std::vector<std::vector<RasterPoint>>& loops);
std::string linesData(const std::vector<std::vector<RasterPoint>>& lines);

}  // namespace pictures
