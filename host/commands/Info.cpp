#include "Info.h"

#include "Console.h"
#include "Paths.h"
#include "SurveyFile.h"

namespace {

std::string range(double low, double high) { return console::number(low) + " .. " + console::number(high); }

// Points beyond the first at a position: every position is one vertex of the TIN.
std::size_t repeats(DTMSurface& surface) {
  return surface.getSurfacePoints().size() - surface.getCEType()->getOriginalList().size();
}

}  // namespace

void info(const std::string& pointFile) {
  const std::string points = resolvedPath(pointFile);
  const SurfacePtr surface = readSurvey(points);
  console::row("Surface", surfaceName(points));
  console::row("Survey points", U::intToString(surface->getPointsNumber()));
  console::row("Repeated positions", std::to_string(repeats(*surface)));
  console::row("Triangles", U::intToString(surface->getTrianglesNumber()));
  console::row("Plan area", console::number(surface->getTwoDArea()));
  console::row("Surface area", console::number(surface->getThreeDArea()));
  console::row("Plan perimeter", console::number(surface->getPerimeterTwoD()));
  console::row("Surface perimeter", console::number(surface->getPerimeterThreeD()));
  console::row("Elevation", range(surface->getMinElev(), surface->getMaxElev()));
  console::row("Easting", range(surface->getRangeMinX(), surface->getRangeMaxX()));
  console::row("Northing", range(surface->getRangeMinY(), surface->getRangeMaxY()));
  console::row("Triangulation", toText(verifyTIN(*surface->getCEType())));
}
