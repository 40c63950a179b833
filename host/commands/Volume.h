// `orvikdtm volume`: fill and cut of a surface against a level or another surface, and reports of it.
#pragma once

#include "Command.h"

Command addVolume(CLI::App& app);
