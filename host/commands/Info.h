// `orvikdtm info`: the statistics of a surface, and whether its TIN is valid.
#pragma once

#include "Command.h"

Command addInfo(CLI::App& app);
