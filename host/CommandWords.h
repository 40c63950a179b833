// The commands and options of the program as plain words, read off the tree that the command line is parsed with: what
// --help, the manual page, the completions and the documentation say is one and the same.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

struct OptionWords {
  std::vector<std::string> names;  // "--level"; one name without dashes for a positional argument
  std::string value;               // the kind of value; empty for a switch
  std::string text;                // what it does

  bool isPositional() const;
  bool takesFile() const;
  std::vector<std::string> choices() const;  // of a kind such as "exact|sampled"
};

struct CommandWords {
  std::string name;
  std::string text;
  std::string footer;
  std::string help;  // what --help prints
  std::vector<OptionWords> options;
};

struct ProgramWords {
  CommandWords program;
  std::vector<CommandWords> commands;  // without hidden ones
};

ProgramWords wordsOf(const CLI::App& program);
