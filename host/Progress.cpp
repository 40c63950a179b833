#include "Progress.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <unistd.h>

#include "UserText.h"

namespace progress {

namespace {

constexpr std::size_t kStageWidth = 60;  // fits beside the percentage on a line of 80
constexpr const char* kClearLine = "\r\x1b[K";

struct State {
  bool allowed = false;
  bool shown = false;
  double from = 0.0;
  double to = 1.0;
};
State state;

}  // namespace

void allow(bool allowed) { state.allowed = allowed && isatty(STDERR_FILENO) != 0; }

void show(const std::string& stage, double done) {
  if (!state.allowed) return;
  const double whole = state.from + (state.to - state.from) * std::clamp(done, 0.0, 1.0);
  const std::string percent = std::to_string(std::lround(whole * 100.0));
  std::cerr << kClearLine << cutAtCharacter(oneLine(stage), kStageWidth) << "  " << percent << " %" << std::flush;
  state.shown = true;
}

void clear() {
  if (!state.shown) return;
  std::cerr << kClearLine << std::flush;
  state.shown = false;
}

Part::Part(double from, double to) : outerFrom_(state.from), outerTo_(state.to) {
  const double width = outerTo_ - outerFrom_;
  state.from = outerFrom_ + width * from;
  state.to = outerFrom_ + width * to;
}

Part::~Part() {
  state.from = outerFrom_;
  state.to = outerTo_;
}

}  // namespace progress
