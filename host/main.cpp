// orvikdtm: terrain models from survey points at the command line. This file knows the command line; what a command
// does stands in commands/.
#include <exception>
#include <new>

#include <CLI/CLI.hpp>
#include <OrvikDTMAlgorithm/tin/Surface.h>

#include "Console.h"
#include "commands/Info.h"
#include "commands/Volume.h"

namespace {

constexpr const char* kPointFileHelp = "Point file, .csv or .dat: name,code,easting,northing,elevation";

void addInfo(CLI::App& app, std::string& pointFile) {
  CLI::App* command = app.add_subcommand("info", "Print the statistics of a surface");
  command->add_option("FILE", pointFile, kPointFileHelp)->required();
  command->footer("Example:\n  orvikdtm info ground.csv");
  command->callback([&pointFile] { info(pointFile); });
}

void addVolume(CLI::App& app, VolumeOrder& order) {
  CLI::App* command = app.add_subcommand("volume", "Compute fill and cut against a level and write a report");
  command->add_option("POINTS", order.pointFile, kPointFileHelp)->required();
  command->add_option("--level", order.level, "Elevation to fill and cut to")->required()->type_name("ELEVATION");
  command->add_option("--report", order.report, "Text file that the report is written to")
      ->required()
      ->type_name("FILE");
  command
      ->add_option("--labels", order.labels,
                   "Wording of the report, twelve texts separated by commas: title, surface, level, volumes,\n"
                   "cut volume, fill volume, plan area, surface area, plan perimeter, surface perimeter,\n"
                   "cut areas, fill areas; English when left out")
      ->type_name("LABELS");
  command->footer("Example:\n  orvikdtm volume ground.csv --level 82.5 --report volume.txt");
  command->callback([&order] { volume(order); });
}

int run(int argc, char** argv) {
  CLI::App app("Terrain models from survey points: statistics, earthwork volumes", "orvikdtm");
  app.set_version_flag("--version", "orvikdtm " ORVIKDTM_VERSION, "Print the version and exit");
  app.require_subcommand(0, 1);  // none: refused below, when what was typed in place of a command has been named
  app.footer("Example:\n  orvikdtm volume ground.csv --level 82.5 --report volume.txt");

  std::string pointFile;
  VolumeOrder order;
  order.labels = kEnglishLabels;
  addInfo(app, pointFile);
  addVolume(app, order);
  try {
    app.parse(argc, argv);
    if (app.get_subcommands().empty()) throw CLI::RequiredError("A command, info or volume,");
    console::finish();
    return console::kDone;
  } catch (const CLI::ParseError& e) {
    if (e.get_exit_code() == console::kDone) return app.exit(e);  // --help, --version
    throw console::WrongUsage(std::string(e.what()) + ": see 'orvikdtm --help'");
  }
}

int report(int status, const char* text) {
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
