#include "Contours.h"

#include "Console.h"
#include "ContourLevels.h"
#include "Paths.h"
#include "SurveyFile.h"
#include "UserText.h"
#include "pictures/ContourDxf.h"
#include "pictures/Contours.h"
#include "pictures/PictureFile.h"

namespace {

bool isDrawing(const std::string& path) { return U::endsWith(path, ".dxf"); }

void requireEnding(const std::string& path) {
  if (isDrawing(path) || U::endsWith(path, ".svg")) return;
  throw console::WrongUsage("--output " + quoted(path) + " is of no known kind: the name must end in .svg or .dxf");
}

void print(const std::string& points, const std::vector<pictures::Contour>& all, const std::string& output) {
  std::size_t lines = 0;
  for (const pictures::Contour& contour : all) lines += contour.lines.size();
  console::row("Surface", surfaceName(points));
  console::row("Contour levels", std::to_string(all.size()));
  console::row("Contour lines", std::to_string(lines));
  console::row("Output", output);
}

}  // namespace

void contours(const ContoursOrder& order) {
  const pictures::ContourLevels levels = contourLevels(order.interval, order.base);
  requireEnding(order.output);
  const std::string points = resolvedPath(order.pointFile);
  const std::string output = resolvedPath(order.output);
  pictures::requirePictureTarget(output, "--output", points);

  const SurfacePtr surface = readSurvey(points);
  const pictures::PlanMesh mesh = pictures::planMesh(*surface->getCEType(), pictures::originOf(*surface->getCEType()));
  requireFewLevels(mesh, levels);
  const std::vector<pictures::Contour> all = pictures::contours(mesh, levels);
  const pictures::TerrainFacts facts = terrainFacts(*surface, surfaceName(points));
  pictures::writePicture(
      output, isDrawing(output) ? pictures::contourDxf(mesh, all) : pictures::contourPicture(mesh, facts, all, levels));
  print(points, all, output);
}
