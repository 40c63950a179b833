#include "Console.h"

#include <iostream>

#include <OrvikDTMAlgorithm/report/U.h>

#include "UserText.h"

namespace console {

namespace {
constexpr int kLabelWidth = 22;
constexpr int kDecimals = 3;
}  // namespace

void warn(const std::string& text) { std::cerr << "orvikdtm: warning: " << oneLine(text) << '\n'; }

void error(const std::string& text) { std::cerr << "orvikdtm: " << oneLine(text) << '\n'; }

void row(const std::string& label, const std::string& value) {
  std::cout << U::appentStr4Length(label, kLabelWidth) << oneLine(value) << '\n';
}

std::string number(double v) { return U::roundHalfUp(kDecimals, v); }

void finish() {
  if (!std::cout.flush()) throw Failure("the results could not be written to standard output: is the disk full?");
}

}  // namespace console
