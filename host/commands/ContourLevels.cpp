#include "ContourLevels.h"

#include <algorithm>

#include "Console.h"
#include "PointLines.h"
#include "UserText.h"

namespace {

constexpr double kMostLevels = 5000.0;
constexpr double kFittingLevels = 25.0;
constexpr double kLeastInterval = 1e-6;

double numberOf(const std::string& option, const std::string& text) {
  double value = 0.0;
  if (!parseNumber(text, value)) throw console::WrongUsage(option + " " + quoted(text) + " is not a number");
  if (value > kLargestElevation || value < -kLargestElevation) {
    throw console::WrongUsage(option + " " + quoted(text) + " is too large: give at most 1e12");
  }
  return value;
}

}  // namespace

pictures::ContourLevels contourLevels(const std::string& interval, const std::string& base) {
  pictures::ContourLevels levels{numberOf("--interval", interval)};
  if (levels.interval < kLeastInterval) {
    throw console::WrongUsage("--interval " + quoted(interval) + " is too small: give a step such as 0.5");
  }
  if (!base.empty()) levels.base = numberOf("--base", base);
  return levels;
}

void requireFewLevels(const pictures::PlanMesh& mesh, const pictures::ContourLevels& levels) {
  if (pictures::countLevels(mesh, levels) <= kMostLevels) return;
  throw console::WrongUsage("--interval gives more than 5000 contour levels: give a larger one");
}

pictures::ContourLevels fittingLevels(const DTMSurface& surface) {
  const double range = surface.getMaxElev() - surface.getMinElev();
  return {range > 0.0 ? pictures::roundStep(std::max(range / kFittingLevels, kLeastInterval)) : 1.0};
}

pictures::TerrainFacts terrainFacts(const DTMSurface& surface, const std::string& name) {
  return {name, surface.getSurfacePoints().size(), surface.getTwoDArea(), surface.getMinElev(), surface.getMaxElev()};
}
