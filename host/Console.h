// What the program says besides its results: warnings and errors, as one line each on standard error.
#pragma once

#include <stdexcept>
#include <string>

namespace console {

// Exit statuses: the work is done; the work failed (file, data, disk); the command line makes no sense; what was to be
// checked has a fault.
inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kWrongUsage = 2;
inline constexpr int kFault = 3;

// The work cannot be done. The text says what is wrong, where, and what to do about it.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The command line makes no sense.
class WrongUsage : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The work is done, its results are printed, and they say that what was checked has a fault.
class Fault : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

void allowWarnings(bool allowed);
void warn(const std::string& text);
void error(const std::string& text);

// v with three decimals: millimetres, as surveyors read lengths.
std::string number(double v);

// "1 point", "2 points".
std::string counted(long long count, const std::string& noun);

// Takes the numbers of standard streams that are closed, before a file that is opened is given one and then the
// results: what is printed there fails.
void holdStreams();

// Throws a Failure when something printed so far could not be written.
void finish();

}  // namespace console
