#include "CommandLine.h"

#include <algorithm>

#include <CLI/CLI.hpp>

#include "Console.h"
#include "Progress.h"
#include "UserText.h"
#include "commands/AllCommands.h"

namespace {

constexpr const char* kSummary = "Terrain models from survey points: statistics, heights, earthwork volumes";
constexpr const char* kFooter =
    "Surfaces are read from .csv and .dat (points), .ttin, .sjw and .xml (LandXML).\n"
    "\n"
    "Exit status:\n"
    "  0  the work is done\n"
    "  1  it failed: a file, the data in it, or the disk\n"
    "  2  the command line makes no sense\n"
    "  3  what 'info' or 'range' was asked to check has a fault\n"
    "  130, 143, 129  interrupted (Ctrl-C), ended or hung up; no half-written file is left\n"
    "\n"
    "Example:\n"
    "  orvikdtm volume ground.csv --level 82.5 --report volume.txt";

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

}  // namespace

CommandLine::CommandLine() : app_(std::make_unique<CLI::App>(kSummary, "orvikdtm")) {
  app_->set_version_flag("--version", "orvikdtm " ORVIKDTM_VERSION, "Print the version and exit");
  app_->require_subcommand(0, 1);
  app_->allow_extras();  // refused by checkWords(), in an order of our own
  app_->footer(kFooter);
  commands_ = addAllCommands(*app_);
  for (const Command& command : commands_) {
    command.app->add_flag("--quiet", quiet_, "Show no progress and no warnings");
  }
}

CommandLine::~CommandLine() = default;

const Command* CommandLine::asked() const {
  const auto command =
      std::find_if(commands_.begin(), commands_.end(), [](const Command& one) { return one.app->parsed(); });
  return command == commands_.end() ? nullptr : &*command;
}

void CommandLine::checkWords() const {
  const Command* const command = asked();
  refuseExtras(app_->remaining(true), command != nullptr);
  if (command == nullptr) throw console::WrongUsage("A command is required, such as info or volume");
  for (const std::string& name : command->required) {
    if (command->app->count(name) == 0) throw console::WrongUsage(name + " is required");
  }
}

const Command* CommandLine::parse(int argc, char** argv) {
  std::string fault;
  try {
    app_->parse(argc, argv);
    checkWords();
    console::allowWarnings(!quiet_);
    progress::allow(!quiet_);
    return asked();
  } catch (const CLI::ParseError& e) {
    if (e.get_exit_code() == console::kDone) return app_->exit(e), nullptr;  // --help, --version
    fault = e.what();
  } catch (const console::WrongUsage& e) {
    fault = e.what();
  }
  const Command* const command = asked();
  const std::string name = command == nullptr ? "" : command->app->get_name() + " ";
  throw console::WrongUsage(fault + ": see 'orvikdtm " + name + "--help'");
}
