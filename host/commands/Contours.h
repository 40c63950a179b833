// `orvikdtm contours`: contour lines as a picture or as a drawing for CAD.
#pragma once

#include "Command.h"

Command addContours(CLI::App& app);
