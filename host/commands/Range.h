// `orvikdtm range`: checks a boundary file, or makes one.
#pragma once

#include "Command.h"

Command addRange(CLI::App& app);
