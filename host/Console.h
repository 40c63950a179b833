// What the program says: results on standard output, warnings and errors as one line each on standard error.
#pragma once

#include <stdexcept>
#include <string>

namespace console {

// Exit statuses: the work is done; the work failed (file, data, disk); the command line makes no sense.
inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kWrongUsage = 2;

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

void warn(const std::string& text);
void error(const std::string& text);

// One line of a result: the label, then the value in a column of its own.
void row(const std::string& label, const std::string& value);

// v with three decimals: millimetres, as surveyors read lengths.
std::string number(double v);

// Throws a Failure when something printed so far could not be written.
void finish();

}  // namespace console
