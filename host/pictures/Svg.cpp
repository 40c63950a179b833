#include "Svg.h"

#include <array>
#include <charconv>
#include <cmath>

#include <OrvikDTMAlgorithm/report/U.h>

#include "Utf8.h"

namespace pictures {

namespace {

// Without the zero before a decimal point.
std::string rasterNumber(std::int32_t v) {
  constexpr int kDecimals = 2;
  std::string number = shortNumber(v / kRaster, kDecimals);
  const std::size_t zero = number.find_first_not_of('-');
  if (number.compare(zero, 2, "0.") == 0) number.erase(zero, 1);
  return number;
}

// Coordinates from the point before, which are shorter; a minus sign separates as well as a blank.
void appendPath(std::string& data, const std::vector<RasterPoint>& points, bool closed) {
  RasterPoint at;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const RasterPoint& p = points[i];
    const std::string x = rasterNumber(i == 0 ? p.x : p.x - at.x);
    const std::string y = rasterNumber(i == 0 ? p.y : p.y - at.y);
    if (i < 2) {
      data += i == 0 ? 'M' : 'l';
    } else if (x.front() != '-') {
      data += ' ';
    }
    data += x;
    if (y.front() != '-') data += ' ';
    data += y;
    at = p;
  }
  if (closed) data += 'z';
}

std::string pathData(const std::vector<std::vector<RasterPoint>>& lines, bool closed) {
  std::string data;
  for (const auto& line : lines) appendPath(data, line, closed);
  return data;
}

}  // namespace

std::string shortNumber(double v, int decimals) {
  std::array<char, 400> digits{};  // the largest double has 309 digits before the point
  const auto [end, fault] =
      std::to_chars(digits.data(), digits.data() + digits.size(), v, std::chars_format::fixed, decimals);
  std::string text(digits.data(), fault == std::errc() ? end : digits.data());
  if (text.find('.') != std::string::npos) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
  }
  return text == "-0" ? "0" : text;
}

std::string millimetres(double v) {
  constexpr int kDecimals = 3;
  return U::roundHalfUp(kDecimals, v);
}

std::string joined(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (const std::string_view part : parts) text.append(part);
  return text;
}

std::string escaped(const std::string& text) {
  std::string safe;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = characterLength(text, at);
    const char c = text[at];
    if (length == 0 || static_cast<unsigned char>(c) < ' ') {
      safe += '?';
    } else if (c == '&') {
      safe += "&amp;";
    } else if (c == '<') {
      safe += "&lt;";
    } else if (c == '>') {
      safe += "&gt;";
    } else if (c == '"') {
      safe += "&quot;";
    } else {
      safe.append(text, at, length);
    }
    at += length == 0 ? 1 : length;
  }
  return safe;
}

Svg::Svg(double width, double height, const std::string& title) {
  constexpr int kDecimals = 1;
  const std::string w = shortNumber(width, kDecimals);
  const std::string h = shortNumber(height, kDecimals);
  open("svg", {{"xmlns", "http://www.w3.org/2000/svg"},
               {"width", w},
               {"height", h},
               {"viewBox", joined({"0 0 ", w, " ", h})},
               {"font-family", "Helvetica, Arial, 'Liberation Sans', 'DejaVu Sans', sans-serif"},
               {"font-size", "13"},
               {"fill", "#222"}});
  text_ += joined({"<title>", escaped(title), "</title>\n"});
  add("rect", {{"width", w}, {"height", h}, {"fill", "#fff"}});
}

void Svg::begin(std::string_view element, Attributes attributes) {
  text_.append("<").append(element);
  for (const auto& [name, value] : attributes) text_ += joined({" ", name, "=\"", escaped(value), "\""});
}

void Svg::open(std::string_view element, Attributes attributes) {
  begin(element, attributes);
  text_ += ">\n";
}

void Svg::close(std::string_view element) { text_.append("</").append(element).append(">\n"); }

void Svg::add(std::string_view element, Attributes attributes) {
  begin(element, attributes);
  text_ += "/>\n";
}

void Svg::text(double x, double y, const std::string& words, Attributes attributes) {
  constexpr int kDecimals = 1;
  text_ += joined({"<text x=\"", shortNumber(x, kDecimals), "\" y=\"", shortNumber(y, kDecimals), "\""});
  for (const auto& [name, value] : attributes) text_ += joined({" ", name, "=\"", escaped(value), "\""});
  text_ += joined({">", escaped(words), "</text>\n"});
}

std::string Svg::finish() {
  close("svg");
  return std::move(text_);
}

std::string loopsData(const std::vector<std::vector<RasterPoint>>& loops) { return pathData(loops, true); }

std::string linesData(const std::vector<std::vector<RasterPoint>>& lines) { return pathData(lines, false); }

}  // namespace pictures
