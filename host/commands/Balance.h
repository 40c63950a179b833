// `orvikdtm balance`: the level at which cut makes fill, and a table of level against cut and fill.
#pragma once

#include "Command.h"

Command addBalance(CLI::App& app);
