// Every command of the program, in the order in which the help lists them.
#pragma once

#include <vector>

#include "Command.h"

std::vector<Command> addAllCommands(CLI::App& app);
