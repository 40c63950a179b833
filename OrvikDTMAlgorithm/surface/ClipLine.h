// Private. Cutting a straight line to the rectangle of a view, for the preview.
#pragma once

inline namespace OrvikDTM {
namespace detail {

// A view: eastings minX to maxX, northings minY to maxY, bounds included.
struct ViewRectangle {
  double minX;
  double minY;
  double maxX;
  double maxY;
};

struct LineInPlan {
  double startX;
  double startY;
  double endX;
  double endY;
};

// Cuts `line` to `view`, keeping its direction. False, with `line` as it was, when there is nothing to draw.
//
// A cut with a side of the view is accepted when it lies in the line's own bounding box, exactly, and in the view
// within 1e-9; two cuts within 1e-9 of each other, at a corner, are one. Where a cut is missing that end stays as it
// was: a line that merely touches a corner is drawn from there to one of its given ends, and so may be, at large
// coordinates, one whose cut is rounded out of the view. A drawn line always has a point in the view; it may reach out
// of it.
bool clipLine(const ViewRectangle& view, LineInPlan& line);

}  // namespace detail
}  // namespace OrvikDTM
