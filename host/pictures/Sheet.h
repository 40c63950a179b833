// The sheet that every picture is drawn on: north up, the map at the left with a coordinate grid, at the right a column
// for title, north arrow, legend and scale bar. Coordinates are taken to be metres.
#pragma once

#include <string>
#include <vector>

#include "PlanMesh.h"
#include "Svg.h"

namespace pictures {

// Lines and borders of a map are simplified by at most this much, a twentieth of a unit of the picture: it takes twenty
// times the size of a screen before it could be seen.
inline constexpr double kUnseen = 5.0;  // raster units

class Sheet {
 public:
  // A sheet for a site; `extent` relative to `origin`.
  Sheet(const Box& extent, const Origin& origin, const std::string& title);

  Svg& svg() { return svg_; }
  RasterPoint at(double x, double y) const;
  std::vector<RasterPoint> at(const std::vector<Point>& points) const;

  // What is drawn between these two lies in the map, and a page may move and enlarge it. The second lays crosses of the
  // coordinate grid over it, and writes their values at the frame.
  void openMap();
  void closeMap();

  // The column at the right, from top to bottom.
  void heading(const std::string& words);
  void row(const std::string& label, const std::string& value);
  void swatch(const std::string& colour, const std::string& words);
  void lineSample(const std::string& colour, double width, const std::string& dashes, const std::string& words);
  void note(const std::string& words);

  // Title and north arrow at its top, scale bar at its foot.
  void drawTitle(const std::string& title, const std::string& subtitle);
  std::string finish();

 private:
  std::vector<double> gridValues(double low, double size) const;
  void drawCrosses();
  void drawFrame();
  void drawNorthArrow();
  void drawScaleBar();

  Box extent_;
  Origin origin_;
  double scale_;  // units of the picture to one of the site
  double left_;
  double top_;
  double bottom_;
  double column_;
  double cursor_ = 0.0;
  Svg svg_;
};

// A line on the map that keeps its width, in pixels, when the map is enlarged.
void addLines(Svg& svg, const std::string& name, const std::vector<std::vector<RasterPoint>>& lines,
              const std::string& colour, double width, const std::string& dashes = "none");
void addLoops(Svg& svg, const std::string& name, const std::vector<std::vector<RasterPoint>>& loops,
              const std::string& colour, double width, const std::string& dashes = "none");

// Raster lines, simplified by what cannot be seen; those of which nothing is left fall away.
std::vector<std::vector<RasterPoint>> seen(const std::vector<std::vector<RasterPoint>>& lines);
std::vector<std::vector<RasterPoint>> seenLoops(const std::vector<std::vector<RasterPoint>>& loops);

}  // namespace pictures
