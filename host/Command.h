// One command of the program, as its own file in commands/ declares it: its words, its help, and its work.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

struct Command {
  CLI::App* app = nullptr;
  std::vector<std::string> required;  // the arguments without which the command makes no sense
  std::function<void()> run;
};
