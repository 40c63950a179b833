#include "Preview.h"

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

namespace {

struct PreviewOrder {
  std::string surface;
  std::string output;
  std::string interval;
  bool json = false;
};

constexpr double kRead = 0.6;
constexpr double kTraced = 0.8;
constexpr const char* kWhat = "picture";

SurfacePtr read(const std::string& path) {
  const progress::Part part(0.0, kRead);
  return readSurface(path);
}

std::string outputOf(const PreviewOrder& order, const std::string& input) {
  std::string output = options::outputPath("OUTPUT", order.output);
  if (!U::endsWith(output, ".svg")) {
    throw console::WrongUsage("OUTPUT " + shownPath(output) + ": the name must end in .svg");
  }
  requireOtherFile("OUTPUT", output, input);
  requireTarget(output, kWhat);
  return output;
}

void draw(const PreviewOrder& order, const CLI::App& command) {
  const bool isGiven = options::isGiven(command, "--interval");
  pictures::ContourLevels levels{1.0};
  if (isGiven) levels = contourLevels(order.interval, "");
  const std::string path = resolvedPath(order.surface);
  const std::string output = outputOf(order, path);

  const SurfacePtr surface = read(path);
  if (!isGiven) levels = fittingLevels(*surface);
  progress::show("tracing contours", kRead);
  const pictures::PlanMesh mesh = pictures::planMesh(*surface->getCEType(), pictures::originOf(*surface->getCEType()));
  requireFewLevels(mesh, levels);
  const std::vector<pictures::Contour> contours = pictures::contours(mesh, levels);
  progress::show("writing " + output, kTraced);
  writeText(output, kWhat, pictures::tinPicture(mesh, terrainFacts(*surface, surfaceName(path)), contours, levels));
  Results results;
  results.text("Surface", surfaceName(path));
  results.count("Triangles", static_cast<long long>(mesh.triangles.size()));
  results.number("Contour interval", levels.interval);
  results.text("Output", output);
  results.print(order.json);
}

}  // namespace

Command addPreview(CLI::App& app) {
  const auto order = std::make_shared<PreviewOrder>();
  CLI::App* const command = app.add_subcommand("preview", "Draw the TIN with its hull and contours");
  options::addSurface(*command, "SURFACE", order->surface);
  options::addFile(*command, "OUTPUT", order->output, "Picture to write, .svg");
  command->add_option("--interval", order->interval, "Height between two contours; a fitting one when left out")
      ->type_name(options::kNumber);
  options::addJson(*command, order->json);
  options::addExample(*command, "preview ground.csv ground.svg");
  return {command, {"SURFACE", "OUTPUT"}, [order, command] { draw(*order, *command); }};
}
