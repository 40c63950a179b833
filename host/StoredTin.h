// What a ".ttin" surface file says about its own TIN.
#pragma once

#include <string>

// Whether bytes behind the points of the file are not a whole TIN, because the file was cut short or is of a version
// that the library does not know. The library then triangulates the points, whatever the outline or the edges were.
bool isTinLost(const std::string& path);
