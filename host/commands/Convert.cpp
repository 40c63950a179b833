#include "Convert.h"

#include <filesystem>
#include <fstream>
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

// A surface file is its header, "DTM" and a version of two bytes, and the surface's block.
constexpr std::uintmax_t kHeaderSize = 5;

SurfaceFormat outputFormat(const std::string& path) {
  if (U::endsWith(path, ".ttin")) return SurfaceFormat::kSurfaceFile;
  if (U::endsWith(path, ".sjw")) return SurfaceFormat::kTriangles;
  throw console::WrongUsage("OUTPUT " + shownPath(path) + ": the name must end in .ttin or .sjw");
}

// The library does not say whether a disk filled up meanwhile.
bool isWholeSurfaceFile(const std::string& path, DTMSurface& surface) {
  std::error_code ignored;
  return std::filesystem::file_size(path, ignored) == kHeaderSize + surface.toBytes().size();
}

bool isWholeTriangleFile(const std::string& path) {
  constexpr std::streamoff kEndWordSize = 3;
  std::ifstream file(path, std::ios::binary);
  file.seekg(-kEndWordSize, std::ios::end);
  std::string end;
  return std::getline(file, end) && end == "nil";
}

void writeSurfaceFile(DTMSurface& surface, const OutputFile& file) {
  if (!DTMFileOperation().saveSurfaces(file.draft().c_str(), &surface)) file.refuse();
  if (!isWholeSurfaceFile(file.draft(), surface)) file.refuseCut();
}

void writeTriangleFile(DTMSurface& surface, const OutputFile& file) {
  if (!surface.exportFileSJW(file.draft().c_str())) file.refuse();
  if (!isWholeTriangleFile(file.draft())) file.refuseCut();
}

void write(DTMSurface& surface, SurfaceFormat format, const std::string& output) {
  OutputFile file(output, kWhat);
  if (format == SurfaceFormat::kSurfaceFile) {
    writeSurfaceFile(surface, file);
  } else {
    writeTriangleFile(surface, file);
  }
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
