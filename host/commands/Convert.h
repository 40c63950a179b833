// `orvikdtm convert`: a surface from any format to a surface file or a triangle file.
#pragma once

#include "Command.h"

Command addConvert(CLI::App& app);
