// `orvikdtm height`: the height of a surface at one place, or at every point of a file.
#pragma once

#include "Command.h"

Command addHeight(CLI::App& app);
