// The progress line of long work, on standard error and only where that is a terminal: the stage and how much of the
// whole is done. It is cleared before anything else is printed.
#pragma once

#include <string>

namespace progress {

void allow(bool allowed);

// Shows the stage, and that `done` (0 to 1) of the present part is done.
void show(const std::string& stage, double done);

void clear();

// While it lives, what is shown as 0 to 1 is the part from `from` to `to` of what was so before.
class Part {
 public:
  Part(double from, double to);
  ~Part();
  Part(const Part&) = delete;
  Part& operator=(const Part&) = delete;

 private:
  double outerFrom_;
  double outerTo_;
};

}  // namespace progress
