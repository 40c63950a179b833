// One straight line of a surface's preview, in plan.
#pragma once

#include <cstdint>

#include <OrvikDTMAlgorithm/Export.h>

inline namespace OrvikDTM {

class ORVIKDTM_API DrawLine {
 public:
  // A line between two ends, x = easting, y = northing; ofHull false for an edge of the TIN, true for one of its outer
  // hull.
  DrawLine(double fromX, double fromY, double toX, double toY, bool ofHull)
      : startX(fromX), startY(fromY), endX(toX), endY(toY), flag(ofHull ? 1 : 0) {}

  double getStartX() const { return startX; }
  double getStartY() const { return startY; }
  double getEndX() const { return endX; }
  double getEndY() const { return endY; }

  double startX;
  double startY;
  double endX;
  double endY;
  std::int32_t flag;  // 0 an edge of the TIN, 1 an edge of the hull
};

}  // namespace OrvikDTM
