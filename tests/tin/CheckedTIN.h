// The library's construction held against the literal one: each helper runs both on the same positions and says where
// they first differ, or nothing when they agree to the last bit.
#pragma once

#include <ostream>
#include <string>

#include "Inputs.h"
#include "LiteralTIN.h"

namespace support {

// Which of its ways optimizeTIN() has to go on an input, by exact signs of the literal triangles on the rounded
// coordinates, after the sweep and again after the flips.
enum class Road {
  AsSwept,   // both are valid, and the flips end: the literal result, number for number
  Exact,     // they are not, and the positions are not collinear: triangulated again
  Empty,     // the accepted positions are collinear
  TooLarge,  // a coordinate that whole millimetres do not reach: the literal result, whatever it is
};

inline void PrintTo(Road road, std::ostream* out) {
  constexpr const char* kNames[] = {"as swept", "exact", "empty", "too large"};
  *out << kNames[static_cast<std::size_t>(road)];
}

Road roadOf(const inputs::Positions& positions, literal::Repeats repeats = literal::Repeats::AgainstShifted);

// optimizeTIN() against what its road promises: the literal network to the bit, with the invariants of a finished TIN;
// or a strictly Delaunay triangulation with all conventions; points and process-wide state afterwards in any case.
std::string checkedTIN(const inputs::Positions& positions, literal::Repeats repeats = literal::Repeats::AgainstShifted);

// How many inputs checkedTIN() has seen go this way.
int inputsThatTook(Road road);

// How many valid sweeps the flips have made invalid, or not come to an end with.
int inputsLeftByTheFlips();

// initPoins(), initCET() and buildTIN() one by one against the literal stages, on the positions as they stand; and
// verifyTIN() of the result against the exact check.
std::string checkedStages(const inputs::Positions& positions);

// The positions that the sweep gets to see: rounded, without repeats, relative to the smallest x and y.
inputs::Positions sweptPositions(const inputs::Positions& positions);

// The smallest part of `positions` found, by leaving out points one by one, for which `check` still says something.
inputs::Positions minimised(inputs::Positions positions, std::string (*check)(const inputs::Positions&));

// For a failure message: the positions as a table that can be pasted into a test.
std::string tableOf(const inputs::Positions& positions);

}  // namespace support
