#include "Contours.h"

#include <memory>
#include <vector>

#include <CLI/CLI.hpp>

#include "Console.h"
#include "ContourLevels.h"
#include "Options.h"
#include "OutputFile.h"
#include "Paths.h"
#include "Progress.h"
#include "Results.h"
#include "UserText.h"
#include "pictures/ContourDxf.h"

namespace {

struct ContoursOrder {
  std::string surface;
  std::string output;
  std::string interval;
  std::string base;
  bool json = false;
};

constexpr double kRead = 0.6;
constexpr double kTraced = 0.8;

enum class Form { kPicture, kDrawing };

Form formOf(const std::string& path) {
  if (U::endsWith(path, ".svg")) return Form::kPicture;
  if (U::endsWith(path, ".dxf")) return Form::kDrawing;
  throw console::WrongUsage("OUTPUT " + shownPath(path) + ": the name must end in .svg or .dxf");
}

const char* nameOf(Form form) { return form == Form::kPicture ? "picture" : "drawing"; }

SurfacePtr read(const std::string& path) {
  const progress::Part part(0.0, kRead);
  return readSurface(path);
}

long long countLines(const std::vector<pictures::Contour>& contours) {
  std::size_t lines = 0;
  for (const pictures::Contour& contour : contours) lines += contour.lines.size();
  return static_cast<long long>(lines);
}

void draw(const ContoursOrder& order) {
  const pictures::ContourLevels levels = contourLevels(order.interval, order.base);
  const std::string path = resolvedPath(order.surface);
  const std::string output = options::outputPath("OUTPUT", order.output);
  const Form form = formOf(output);
  requireOtherFile("OUTPUT", output, path);
  requireTarget(output, nameOf(form));

  const SurfacePtr surface = read(path);
  progress::show("tracing contours", kRead);
  const pictures::PlanMesh mesh = pictures::planMesh(*surface->getCEType(), pictures::originOf(*surface->getCEType()));
  requireFewLevels(mesh, levels);
  const std::vector<pictures::Contour> contours = pictures::contours(mesh, levels);
  progress::show("writing " + output, kTraced);
  writeText(output, nameOf(form),
            form == Form::kDrawing
                ? pictures::contourDxf(mesh, contours)
                : pictures::contourPicture(mesh, terrainFacts(*surface, surfaceName(path)), contours, levels));
  Results results;
  results.text("Surface", surfaceName(path));
  results.count("Contour levels", static_cast<long long>(contours.size()));
  results.count("Contour lines", countLines(contours));
  results.text("Output", output);
  results.print(order.json);
}

}  // namespace

Command addContours(CLI::App& app) {
  const auto order = std::make_shared<ContoursOrder>();
  CLI::App* const command = app.add_subcommand("contours", "Draw contour lines, as a picture or for CAD");
  options::addSurface(*command, "SURFACE", order->surface);
  options::addFile(*command, "OUTPUT", order->output, "File to write: .svg (a picture) or .dxf (polylines for CAD)");
  command->add_option("--interval", order->interval, "Height between two contours, required")
      ->type_name(options::kNumber);
  command->add_option("--base", order->base, "Elevation that contours are counted from; 0 when left out")
      ->type_name(options::kElevation);
  options::addJson(*command, order->json);
  options::addExample(*command, "contours ground.csv contours.dxf --interval 0.5");
  return {command, {"SURFACE", "OUTPUT", "--interval"}, [order] { draw(*order); }};
}
