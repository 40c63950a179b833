#include "ContourLevels.h"

#include <algorithm>

#include "Console.h"
#include "Options.h"
#include "SurfaceAreas.h"
#include "UserText.h"

namespace {

constexpr double kMostLevels = 5000.0;
constexpr double kFittingLevels = 25.0;
constexpr double kLeastInterval = 1e-6;

}  // namespace

pictures::ContourLevels contourLevels(const std::string& interval, const std::string& base) {
  pictures::ContourLevels levels{options::elevationOf("--interval", interval)};
  if (levels.interval < kLeastInterval) {
    throw console::WrongUsage("--interval " + quoted(interval) + " is too small: give a height such as 0.5");
  }
  if (!base.empty()) levels.base = options::elevationOf("--base", base);
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

pictures::TerrainFacts terrainFacts(DTMSurface& surface, const std::string& name) {
  setExactAreas(surface);
  return {name, static_cast<std::size_t>(surface.getPointsNumber()), surface.getTwoDArea(), surface.getMinElev(),
          surface.getMaxElev()};
}
