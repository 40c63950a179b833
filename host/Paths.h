// Paths as the user typed them, and what is found there. Every path goes through resolvedPath() once, and what it gives
// is used from then on: for the checks and for the library.
#pragma once

#include <string>
#include <system_error>

// The path that the library makes of `path`: a backslash is a separator when there is no such file as it stands.
std::string resolvedPath(const std::string& path);

// What to tell about a path that could not be looked at, and what to do.
std::string faultText(const std::error_code& fault);

// Throws a Failure unless there is a regular file. A pipe would be waited for, and cannot be read twice.
void requireRegularFile(const std::string& path);
