#include "HelpForms.h"

namespace {

std::string block(const std::string& text) {
  return "```\n" + text.substr(0, text.find_last_not_of('\n') + 1) + "\n```\n";
}

}  // namespace

std::string documentation(const ProgramWords& words) {
  std::string page =
      "# orvikdtm at the command line\n\nThis page is what `--help` prints, written by `orvikdtm generate "
      "markdown`.\n\n" +
      block(words.program.help);
  for (const CommandWords& command : words.commands) {
    page += "\n## orvikdtm " + command.name + "\n\n" + block(command.help);
  }
  return page;
}
