// `orvikdtm info FILE`: the statistics of a surface.
#pragma once

#include <string>

void info(const std::string& pointFile);
