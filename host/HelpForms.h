// The words of the command line in the forms that other programs read.
#pragma once

#include <string>

#include "CommandWords.h"

std::string manualPage(const ProgramWords& words);
std::string bashCompletion(const ProgramWords& words);
std::string zshCompletion(const ProgramWords& words);
std::string documentation(const ProgramWords& words);
