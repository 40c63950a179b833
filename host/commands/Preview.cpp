#include "Preview.h"

#include "Console.h"
#include "ContourLevels.h"
#include "Paths.h"
#include "SurveyFile.h"
#include "UserText.h"
#include "pictures/Contours.h"
#include "pictures/PictureFile.h"

void preview(const PreviewOrder& order) {
  if (!U::endsWith(order.output, ".svg")) {
    throw console::WrongUsage("--output " + quoted(order.output) + " is of no known kind: the name must end in .svg");
  }
  pictures::ContourLevels levels{0.0};
  if (!order.interval.empty()) levels = contourLevels(order.interval, "");
  const std::string points = resolvedPath(order.pointFile);
  const std::string output = resolvedPath(order.output);
  pictures::requirePictureTarget(output, "--output", points);

  const SurfacePtr surface = readSurvey(points);
  if (order.interval.empty()) levels = fittingLevels(*surface);
  const pictures::PlanMesh mesh = pictures::planMesh(*surface->getCEType(), pictures::originOf(*surface->getCEType()));
  requireFewLevels(mesh, levels);
  const std::vector<pictures::Contour> all = pictures::contours(mesh, levels);
  const pictures::TerrainFacts facts = terrainFacts(*surface, surfaceName(points));
  pictures::writePicture(output, pictures::tinPicture(mesh, facts, all, levels));
  console::row("Surface", surfaceName(points));
  console::row("Triangles", std::to_string(mesh.triangles.size()));
  console::row("Contour interval", console::number(levels.interval));
  console::row("Output", output);
}
