// Options that several commands have, declared and read in one way.
#pragma once

#include <string>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace options {

// The kinds of values, as the help names them. Completion offers files for the first, and what stands between the bars
// for a kind such as "exact|sampled".
inline constexpr const char* kFile = "FILE";
inline constexpr const char* kElevation = "ELEVATION";
inline constexpr const char* kNumber = "NUMBER";

// The surface that a command works on, the positional argument `name`.
CLI::Option* addSurface(CLI::App& command, const std::string& name, std::string& path,
                        const std::string& what = "Surface");
CLI::Option* addFile(CLI::App& command, const std::string& name, std::string& path, const std::string& what);
CLI::Option* addJson(CLI::App& command, bool& json);
CLI::Option* addBoundary(CLI::App& command, std::string& path);

// "Example:" and the command line, as every help ends.
void addExample(CLI::App& command, const std::string& example);

bool isGiven(const CLI::App& command, const std::string& name);

// The number that `option` was given, or WrongUsage. An elevation is at most 1e12 from 0.
double numberOf(const std::string& option, const std::string& text);
double elevationOf(const std::string& option, const std::string& text);

// The resolved path of a file to write, or WrongUsage when the option is empty.
std::string outputPath(const std::string& option, const std::string& text);

}  // namespace options
