// orvikdtm: terrain models from survey points at the command line. This file knows the command line; what a command
// does stands in commands/.
#include <algorithm>
#include <exception>
#include <new>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <OrvikDTMAlgorithm/tin/Surface.h>

#include "Console.h"
#include "UserText.h"
#include "commands/Contours.h"
#include "commands/Info.h"
#include "commands/Preview.h"
#include "commands/Volume.h"

namespace {

constexpr const char* kPointFileHelp = "Point file, .csv or .dat: name,code,easting,northing,elevation";

void addInfo(CLI::App& app, std::string& pointFile) {
  CLI::App* command = app.add_subcommand("info", "Print the statistics of a surface");
  command->add_option("FILE", pointFile, kPointFileHelp);
  command->footer("Example:\n  orvikdtm info ground.csv");
}

void addVolume(CLI::App& app, VolumeOrder& order) {
  CLI::App* command = app.add_subcommand("volume", "Compute fill and cut against a level and write a report");
  command->add_option("POINTS", order.pointFile, kPointFileHelp);
  command->add_option("--level", order.level, "Elevation to fill and cut to, required")->type_name("ELEVATION");
  command->add_option("--report", order.report, "Text file that the report is written to, required")->type_name("FILE");
  command->add_option("--method", order.method, "How volumes are computed, exact or sampled; exact when left out")
      ->type_name("METHOD");
  command
      ->add_option("--labels", order.labels,
                   "Wording of the report, twelve texts separated by commas: title, surface, level, volumes,\n"
                   "cut volume, fill volume, plan area, surface area, plan perimeter, surface perimeter,\n"
                   "cut areas, fill areas; English when left out")
      ->type_name("LABELS");
  command->add_option("--map", order.pictures.map, "Picture of cut and fill to write, .svg")->type_name("FILE");
  command->add_option("--html", order.pictures.html, "Page with report, map and 3-D view to write, .html")
      ->type_name("FILE");
  command->footer("Example:\n  orvikdtm volume ground.csv --level 82.5 --report volume.txt");
}

void addContours(CLI::App& app, ContoursOrder& order) {
  CLI::App* command = app.add_subcommand("contours", "Draw contour lines, as a picture or for CAD");
  command->add_option("POINTS", order.pointFile, kPointFileHelp);
  command->add_option("--interval", order.interval, "Height between two contours, required")->type_name("HEIGHT");
  command->add_option("--base", order.base, "Elevation that the contours are counted from; 0 when left out")
      ->type_name("ELEVATION");
  command->add_option("--output", order.output, "File to write, required: .svg a picture, .dxf lines for CAD")
      ->type_name("FILE");
  command->footer("Example:\n  orvikdtm contours ground.csv --interval 0.5 --output contours.dxf");
}

void addPreview(CLI::App& app, PreviewOrder& order) {
  CLI::App* command = app.add_subcommand("preview", "Draw the TIN with its hull and contours");
  command->add_option("POINTS", order.pointFile, kPointFileHelp);
  command->add_option("--interval", order.interval, "Height between two contours; a fitting one when left out")
      ->type_name("HEIGHT");
  command->add_option("--output", order.output, "Picture to write, required: .svg")->type_name("FILE");
  command->footer("Example:\n  orvikdtm preview ground.csv --output ground.svg");
}

CLI::App* commandOf(const CLI::App& app) {
  const std::vector<CLI::App*> commands = app.get_subcommands();
  return commands.empty() ? nullptr : commands.front();
}

// What was typed and means nothing is named before what is missing: a mistyped option is both. Options come first, for
// their values are left over with them.
void refuseExtras(std::vector<std::string> leftOver, bool hasCommand) {
  // "--" ends the options, and is left over itself.
  leftOver.erase(std::remove(leftOver.begin(), leftOver.end(), "--"), leftOver.end());
  const std::vector<std::string>& extras = leftOver;
  if (extras.empty()) return;
  const auto option = std::find_if(extras.begin(), extras.end(),
                                   [](const std::string& word) { return word.size() > 1 && word.front() == '-'; });
  if (option != extras.end()) throw console::WrongUsage("there is no option " + quoted(*option));
  if (!hasCommand) throw console::WrongUsage("there is no command " + quoted(extras.front()));
  std::string all;
  for (const std::string& word : extras) all.append(" ").append(quoted(word));
  throw console::WrongUsage("too many words:" + all);
}

void requireGiven(const CLI::App& command, const std::vector<std::string>& names) {
  for (const std::string& name : names) {
    if (command.count(name) == 0) throw console::WrongUsage(name + " is required");
  }
}

void checkWords(const CLI::App& app) {
  const CLI::App* const command = commandOf(app);
  refuseExtras(app.remaining(true), command != nullptr);
  if (command == nullptr) throw console::WrongUsage("A command, info, volume, contours or preview, is required");
  if (command->get_name() == "info") requireGiven(*command, {"FILE"});
  if (command->get_name() == "volume") requireGiven(*command, {"POINTS", "--level", "--report"});
  if (command->get_name() == "contours") requireGiven(*command, {"POINTS", "--interval", "--output"});
  if (command->get_name() == "preview") requireGiven(*command, {"POINTS", "--output"});
}

// False when the program was asked about itself, and has answered.
bool parse(CLI::App& app, int argc, char** argv) {
  std::string fault;
  try {
    app.parse(argc, argv);
    checkWords(app);
    return true;
  } catch (const CLI::ParseError& e) {
    if (e.get_exit_code() == console::kDone) return app.exit(e), false;  // --help, --version
    fault = e.what();
  } catch (const console::WrongUsage& e) {
    fault = e.what();
  }
  const CLI::App* const command = commandOf(app);
  const std::string asked = command == nullptr ? "" : command->get_name() + " ";
  throw console::WrongUsage(fault + ": see 'orvikdtm " + asked + "--help'");
}

int run(int argc, char** argv) {
  CLI::App app("Terrain models from survey points: statistics, earthwork volumes", "orvikdtm");
  app.set_version_flag("--version", "orvikdtm " ORVIKDTM_VERSION, "Print the version and exit");
  app.require_subcommand(0, 1);
  app.allow_extras();  // refused by checkWords(), in an order of our own
  app.footer("Example:\n  orvikdtm volume ground.csv --level 82.5 --report volume.txt");

  std::string pointFile;
  VolumeOrder order;
  order.labels = kEnglishLabels;
  order.method = kExactMethod;
  addInfo(app, pointFile);
  addVolume(app, order);
  ContoursOrder contoursOrder;
  addContours(app, contoursOrder);
  PreviewOrder previewOrder;
  addPreview(app, previewOrder);
  if (parse(app, argc, argv)) {
    if (commandOf(app)->get_name() == "info") info(pointFile);
    if (commandOf(app)->get_name() == "volume") volume(order);
    if (commandOf(app)->get_name() == "contours") contours(contoursOrder);
    if (commandOf(app)->get_name() == "preview") preview(previewOrder);
  }
  console::finish();
  return console::kDone;
}

int report(int status, const std::string& text) {
  console::error(text);
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  Surface::COMPAREUNSHIFTED = 1;  // a survey's repeated shots are repeats wherever the site lies
  try {
    return run(argc, argv);
  } catch (const console::WrongUsage& e) {
    return report(console::kWrongUsage, e.what());
  } catch (const std::bad_alloc&) {
    return report(console::kFailed, "not enough memory: close other programs, or use a part of the survey");
  } catch (const std::exception& e) {
    return report(console::kFailed, e.what());
  }
}
