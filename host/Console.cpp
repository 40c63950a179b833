#include "Console.h"

#include <fcntl.h>
#include <iostream>
#include <unistd.h>

#include <OrvikDTMAlgorithm/report/U.h>

#include "Progress.h"
#include "UserText.h"

namespace console {

namespace {

constexpr int kDecimals = 3;

bool warningsAllowed = true;

}  // namespace

void allowWarnings(bool allowed) { warningsAllowed = allowed; }

void warn(const std::string& text) {
  if (!warningsAllowed) return;
  progress::clear();
  std::cerr << "orvikdtm: warning: " << oneLine(text) << '\n';
}

void error(const std::string& text) {
  progress::clear();
  std::cerr << "orvikdtm: " << oneLine(text) << '\n';
}

std::string number(double v) { return U::roundHalfUp(kDecimals, v); }

std::string counted(long long count, const std::string& noun) {
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

// open() gives the lowest number that is free. The wrong direction makes every use of the stream fail.
void holdStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(stream, F_GETFD) < 0) open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
  }
}

void finish() {
  if (!std::cout.flush()) throw Failure("the results could not be written to standard output: is the disk full?");
}

}  // namespace console
