#include <OrvikDTMAlgorithm/report/U.h>

#include "HelpForms.h"

namespace {

std::string joined(const std::vector<std::string>& words, const std::string& between) {
  std::string out;
  for (const std::string& word : words) out.append(out.empty() ? "" : between).append(word);
  return out;
}

std::vector<std::string> namesOf(const std::vector<CommandWords>& commands) {
  std::vector<std::string> names;
  for (const CommandWords& command : commands) names.push_back(command.name);
  return names;
}

std::string switchesOf(const CommandWords& command) {
  std::vector<std::string> names;
  for (const OptionWords& option : command.options) {
    if (option.isPositional()) continue;
    names.insert(names.end(), option.names.begin(), option.names.end());
  }
  return joined(names, " ");
}

// ---- bash

// What comes after an option that takes a value.
std::string bashValue(const CommandWords& command, const OptionWords& option) {
  if (option.isPositional() || option.value.empty()) return "";
  std::vector<std::string> patterns;
  for (const std::string& name : option.names) patterns.push_back(command.name + ":" + name);
  std::string work = ":";
  if (option.takesFile()) work = "_orvikdtm_files";
  if (!option.choices().empty()) {
    work = "COMPREPLY=($(compgen -W '" + joined(option.choices(), " ") + "' -- \"$word\"))";
  }
  return std::string("    ").append(joined(patterns, "|")).append(") ").append(work).append("; return ;;\n");
}

// ---- zsh

// Inside '...[text]:value:action': quotes end the word, brackets and colons a part of it.
std::string zshEscaped(const std::string& text) {
  std::string out = U::replace(text, "\\", "\\\\");
  for (const char* c : {"[", "]", ":"}) out = U::replace(out, c, std::string("\\") + c);
  return U::replace(U::replace(out, "'", "'\\''"), "\n", " ");
}

std::string zshAction(const OptionWords& option) {
  if (option.takesFile()) return "_files";
  if (!option.choices().empty()) return std::string("(").append(joined(option.choices(), " ")).append(")");
  return " ";
}

std::string inQuotes(const std::string& text) {
  std::string out;
  return out.append(1, '\'').append(text).append(1, '\'');
}

std::string zshOption(const OptionWords& option) {
  if (option.isPositional())
    return inQuotes(std::string("::").append(zshEscaped(option.names.front())).append(":").append(zshAction(option)));
  const std::string text = std::string("[").append(zshEscaped(option.text)).append("]");
  std::vector<std::string> forms;
  for (const std::string& name : option.names) {
    std::string form = name + text;
    if (!option.value.empty()) form.append(":").append(zshEscaped(option.value)).append(":").append(zshAction(option));
    forms.push_back(inQuotes(form));
  }
  return joined(forms, " ");
}

std::string zshArguments(const CommandWords& command, const std::string& indent) {
  std::string out = indent + "_arguments";
  for (const OptionWords& option : command.options)
    out.append(" \\\n").append(indent).append("  ").append(zshOption(option));
  return out;
}

}  // namespace

std::string bashCompletion(const ProgramWords& words) {
  const std::string commands = joined(namesOf(words.commands), " ");
  std::string values;
  std::string switches;
  for (const CommandWords& command : words.commands) {
    for (const OptionWords& option : command.options) values += bashValue(command, option);
    switches += "    " + command.name + ") options='" + switchesOf(command) + "' ;;\n";
  }
  return "# Completion of orvikdtm for bash.\n"
         "_orvikdtm_files() {\n"
         "  compopt -o filenames\n"
         "  mapfile -t COMPREPLY < <(compgen -f -- \"$word\")\n"
         "}\n"
         "\n"
         "_orvikdtm() {\n"
         "  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command='' options i\n"
         "  COMPREPLY=()\n"
         "  for ((i = 1; i < COMP_CWORD; ++i)); do\n"
         "    case ${COMP_WORDS[i]} in " +
         joined(namesOf(words.commands), "|") +
         ") command=${COMP_WORDS[i]}; break ;; esac\n"
         "  done\n"
         "  case $command:$before in\n" +
         values +
         "  esac\n"
         "  case $command in\n" +
         switches + "    *) options='" + switchesOf(words.program) +
         "' ;;\n"
         "  esac\n"
         "  if [[ $word == -* ]]; then\n"
         "    COMPREPLY=($(compgen -W \"$options\" -- \"$word\"))\n"
         "  elif [[ -z $command ]]; then\n"
         "    COMPREPLY=($(compgen -W '" +
         commands +
         "' -- \"$word\"))\n"
         "  else\n"
         "    _orvikdtm_files\n"
         "  fi\n"
         "}\n"
         "complete -F _orvikdtm orvikdtm\n";
}

std::string zshCompletion(const ProgramWords& words) {
  std::string list;
  std::string cases;
  for (const CommandWords& command : words.commands) {
    list.append(4, ' ').append(inQuotes(command.name + ":" + zshEscaped(command.text))).append(1, '\n');
    cases += "    " + command.name + ")\n" + zshArguments(command, "      ") + " ;;\n";
  }
  return "#compdef orvikdtm\n"
         "# Completion of orvikdtm for zsh.\n"
         "_orvikdtm() {\n"
         "  local context state line\n"
         "  local -A opt_args\n"
         "  local -a commands\n"
         "  commands=(\n" +
         list +
         "  )\n"
         "  if (( CURRENT == 2 )); then\n" +
         zshArguments(words.program, "    ") +
         " \\\n"
         "      '1:command:->command'\n"
         "    _describe command commands\n"
         "    return\n"
         "  fi\n"
         "  local command=${words[2]}\n"
         "  words=(\"${(@)words[2,-1]}\")\n"
         "  (( CURRENT -= 1 ))\n"
         "  case $command in\n" +
         cases +
         "  esac\n"
         "}\n"
         "_orvikdtm \"$@\"\n";
}
