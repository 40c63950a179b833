// `orvikdtm preview`: a picture of the TIN with its hull and contours.
#pragma once

#include "Command.h"

Command addPreview(CLI::App& app);
