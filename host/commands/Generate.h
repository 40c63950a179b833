// `orvikdtm generate`: the manual page, completions and documentation of the program itself, for those who package it.
#pragma once

#include "Command.h"

Command addGenerate(CLI::App& app);
