#include "CommandWords.h"

#include <CLI/CLI.hpp>

#include "Options.h"

namespace {

OptionWords wordsOf(const CLI::Option& option) {
  OptionWords words;
  for (const std::string& name : option.get_snames()) words.names.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) words.names.push_back("--" + name);
  if (words.names.empty()) words.names.push_back(option.get_name(true));
  if (option.get_items_expected_max() > 0) words.value = option.get_type_name();
  words.text = option.get_description();
  return words;
}

// What `--help` prints for it: App::help() would print that of the subcommand that is being run.
std::string helpOf(const CLI::App& command, const std::string& parent) {
  const std::string name = parent.empty() ? command.get_name() : parent + " " + command.get_name();
  return command.get_formatter()->make_help(&command, name, CLI::AppFormatMode::Normal);
}

CommandWords wordsOf(const CLI::App& command, const std::string& parent) {
  CommandWords words{command.get_name(), command.get_description(), command.get_footer(), helpOf(command, parent), {}};
  for (const CLI::Option* const option : command.get_options({})) words.options.push_back(wordsOf(*option));
  return words;
}

}  // namespace

bool OptionWords::isPositional() const { return names.front().front() != '-'; }

bool OptionWords::takesFile() const { return value == options::kFile; }

std::vector<std::string> OptionWords::choices() const {
  if (value.find('|') == std::string::npos) return {};
  return CLI::detail::split(value, '|');
}

ProgramWords wordsOf(const CLI::App& program) {
  ProgramWords words{wordsOf(program, ""), {}};
  const auto isShown = [](const CLI::App* command) { return !command->get_group().empty(); };
  for (const CLI::App* const command : program.get_subcommands(isShown)) {
    words.commands.push_back(wordsOf(*command, program.get_name()));
  }
  return words;
}
