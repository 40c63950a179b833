// The words of the command line: what the program and its commands are called, and what is wrong with what was typed.
#pragma once

#include <memory>
#include <vector>

#include "Command.h"

class CommandLine {
 public:
  CommandLine();
  ~CommandLine();
  CommandLine(const CommandLine&) = delete;
  CommandLine& operator=(const CommandLine&) = delete;

  // The command that was asked for; null when the program was asked about itself, and has answered. Throws WrongUsage.
  const Command* parse(int argc, char** argv);

 private:
  void checkWords() const;
  const Command* asked() const;

  std::unique_ptr<CLI::App> app_;
  std::vector<Command> commands_;
  bool quiet_ = false;
};
