// `orvikdtm diff`: what changed between two surfaces.
#pragma once

#include "Command.h"

Command addDiff(CLI::App& app);
