// What the library's reader could not understand of a point file or a boundary file, as a user is told of it.
#pragma once

#include <string>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

// Throws a Failure when the file at a resolved path could not be read or is no text, and one that names the first line
// with a number that cannot be one. Lines that were skipped are no failure.
void requireUnderstood(const std::string& path, const orvik::LineReport& report);
