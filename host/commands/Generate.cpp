#include "Generate.h"

#include <iostream>
#include <memory>

#include <CLI/CLI.hpp>

#include "Console.h"
#include "HelpForms.h"
#include "Options.h"
#include "UserText.h"

namespace {

void generate(const std::string& form, const CLI::App& program) {
  const ProgramWords words = wordsOf(program);
  if (form == "man") {
    std::cout << manualPage(words);
  } else if (form == "bash") {
    std::cout << bashCompletion(words);
  } else if (form == "zsh") {
    std::cout << zshCompletion(words);
  } else if (form == "markdown") {
    std::cout << documentation(words);
  } else {
    throw console::WrongUsage("there is no form " + quoted(form) + ": it is man, bash, zsh or markdown");
  }
}

}  // namespace

Command addGenerate(CLI::App& app) {
  const auto form = std::make_shared<std::string>();
  CLI::App* const command = app.add_subcommand("generate", "Print the manual page, a completion or the documentation");
  command->group("");  // of no use to users
  command->add_option("FORM", *form, "What to print")->type_name("man|bash|zsh|markdown");
  options::addExample(*command, "generate man > orvikdtm.1");
  return {command, {"FORM"}, [form, &app] { generate(*form, app); }};
}
