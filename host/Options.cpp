#include "Options.h"

#include <cmath>

#include <CLI/CLI.hpp>

#include "Console.h"
#include "Paths.h"
#include "TextLines.h"
#include "UserText.h"

namespace options {

CLI::Option* addSurface(CLI::App& command, const std::string& name, std::string& path, const std::string& what) {
  return addFile(command, name, path, what + ": .csv or .dat points, .ttin, .sjw or .xml (LandXML)");
}

CLI::Option* addFile(CLI::App& command, const std::string& name, std::string& path, const std::string& what) {
  return command.add_option(name, path, what)->type_name(kFile);
}

CLI::Option* addJson(CLI::App& command, bool& json) {
  return command.add_flag("--json", json, "Print the results as JSON, with every digit");
}

CLI::Option* addBoundary(CLI::App& command, std::string& path) {
  return addFile(command, "--range", path, "Boundary file, .waa or .csv: measure within this polygon only");
}

void addExample(CLI::App& command, const std::string& example) { command.footer("Example:\n  orvikdtm " + example); }

bool isGiven(const CLI::App& command, const std::string& name) { return command.count(name) > 0; }

double numberOf(const std::string& option, const std::string& text) {
  double value = 0.0;
  if (!parseNumber(text, value)) {
    throw console::WrongUsage(option + " " + quoted(text) + " is not a number: give one such as 82.5");
  }
  return value;
}

double elevationOf(const std::string& option, const std::string& text) {
  const double elevation = numberOf(option, text);
  if (std::fabs(elevation) > kLargestElevation) {
    throw console::WrongUsage(option + " " + quoted(text) + " is too large: give an elevation of at most 1e12");
  }
  return elevation;
}

std::string outputPath(const std::string& option, const std::string& text) {
  if (text.empty()) throw console::WrongUsage(option + " is empty: name the file to write");
  return resolvedPath(text);
}

}  // namespace options
