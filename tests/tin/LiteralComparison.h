// A slow comparison of two surfaces, written independently of the library's: step by step, pieces in a plain deque,
// every corner located anew through the public operations. It shares no code with the library beyond those.
#pragma once

#include <array>
#include <vector>

#include <OrvikDTMAlgorithm/tin/CEType.h>

namespace literal {

using Corner = std::array<double, 3>;

struct ComparedPiece {
  Corner p1;
  Corner p2;
  Corner p3;
  int status;
  bool operator==(const ComparedPiece&) const = default;
};

struct Comparison {
  std::array<double, 10> numbers{};  // in the order of a fill/cut record
  std::vector<ComparedPiece> pieces;
  bool referenceWalked = false;
  bool sparse = false;
  bool onlyTouches = false;  // pieces were measured although nothing is common: they do not count
  long handled = 0;          // pieces whose corners were looked up in one of the three phases
};

// Both networks must be fresh: what they found last is triangle 1.
Comparison compare(CEType& own, CEType& reference);

}  // namespace literal
