#include <OrvikDTMAlgorithm/report/U.h>

#include "HelpForms.h"

namespace {

// Text for roff: no dash is a hyphen, no backslash an escape, and no line a request.
std::string escaped(const std::string& text) {
  std::string out;
  bool atStart = true;
  for (const char c : text) {
    if (atStart && (c == '.' || c == '\'')) out.append("\\&");
    if (c == '-') {
      out.append("\\-");
    } else if (c == '\\') {
      out.append("\\e");
    } else {
      out.append(1, c);
    }
    atStart = c == '\n';
  }
  return out;
}

std::string bold(const std::string& text) { return "\\fB" + escaped(text) + "\\fR"; }

std::string italic(const std::string& text) { return "\\fI" + escaped(text) + "\\fR"; }

std::string option(const OptionWords& words) {
  std::string line;
  for (const std::string& name : words.names) {
    line.append(line.empty() ? "" : ", ").append(words.isPositional() ? italic(name) : bold(name));
  }
  if (!words.value.empty() && !words.isPositional()) line.append(" ").append(italic(words.value));
  return ".TP\n" + line + "\n" + escaped(words.text) + "\n";
}

std::string verbatim(const std::string& text) { return ".nf\n" + escaped(text) + "\n.fi\n"; }

std::string command(const CommandWords& words) {
  std::string page = ".SS " + words.name + "\n" + escaped(words.text) + ".\n";
  for (const OptionWords& one : words.options) page += option(one);
  return page + ".PP\n" + verbatim(words.footer);
}

}  // namespace

std::string manualPage(const ProgramWords& words) {
  const std::string& name = words.program.name;
  std::string page = ".TH ORVIKDTM 1 \"\" \"" + name + " " ORVIKDTM_VERSION "\" \"User Commands\"\n";
  page += ".SH NAME\n" + name + " \\- " + escaped(words.program.text) + "\n";
  page += ".SH SYNOPSIS\n" + bold(name) + " " + italic("COMMAND") + " [" + italic("OPTIONS") + "] ...\n";
  page += ".SH OPTIONS\n";
  for (const OptionWords& one : words.program.options) page += option(one);
  page += ".SH COMMANDS\n";
  for (const CommandWords& one : words.commands) page += command(one);
  return page + ".SH NOTES\n" + verbatim(words.program.footer);
}
