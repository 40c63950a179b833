#include "Convert.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "Console.h"
#include "Options.h"
#include "OutputFile.h"
#include "Paths.h"
#include "Progress.h"
#include "Results.h"
#include "SurfaceFile.h"
#include "UserText.h"

namespace {

struct ConvertOrder {
  std::string surface;
  std::string output;
  bool json = false;
};

constexpr double kRead = 0.7;
constexpr const char* kWhat = "surface";

SurfaceFormat outputFormat(const std::string& path) {
  if (U::endsWith(path, ".ttin")) return SurfaceFormat::kSurfaceFile;
  if (U::endsWith(path, ".sjw")) return SurfaceFormat::kTriangles;
  throw console::WrongUsage("OUTPUT " + shownPath(path) + ": the name must end in .ttin or .sjw");
}

bool writeDraft(DTMSurface& surface, SurfaceFormat format, const std::string& draft) {
  if (format == SurfaceFormat::kSurfaceFile) return DTMFileOperation().saveSurfaces(draft.c_str(), &surface);
  return surface.exportFileSJW(draft.c_str());
}

void write(DTMSurface& surface, SurfaceFormat format, const std::string& output) {
  OutputFile file(output, kWhat);
  if (!writeDraft(surface, format, file.draft())) file.refuse();
  file.finish();
}

SurfacePtr read(const std::string& path) {
  const progress::Part part(0.0, kRead);
  return readSurface(path);
}

void convert(const ConvertOrder& order) {
  const std::string path = resolvedPath(order.surface);
  const std::string output = options::outputPath("OUTPUT", order.output);
  const SurfaceFormat format = outputFormat(output);
  requireOtherFile("OUTPUT", output, path);
  requireTarget(output, kWhat);
  const SurfacePtr surface = read(path);
  progress::show("writing " + output, kRead);
  write(*surface, format, output);
  Results results;
  results.text("Surface", surfaceName(path));
  results.count("Survey points", surface->getPointsNumber());
  results.count("Triangles", surface->getTrianglesNumber());
  results.text("Output", output);
  results.print(order.json);
}

}  // namespace

Command addConvert(CLI::App& app) {
  const auto order = std::make_shared<ConvertOrder>();
  CLI::App* const command = app.add_subcommand("convert", "Write a surface as a surface file or a triangle file");
  options::addSurface(*command, "SURFACE", order->surface);
  options::addFile(*command, "OUTPUT", order->output, "File to write: .ttin (points and TIN) or .sjw (triangles)");
  options::addJson(*command, order->json);
  options::addExample(*command, "convert ground.csv ground.ttin");
  return {command, {"SURFACE", "OUTPUT"}, [order] { convert(*order); }};
}
