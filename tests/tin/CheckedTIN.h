// The library's construction held against the literal one: each helper runs both on the same positions and says where
// they first differ, or nothing when they agree to the last bit.
#pragma once

#include <string>

#include "Inputs.h"
#include "LiteralTIN.h"

namespace support {

// optimizeTIN() against the whole literal construction: result, numbers, points and process-wide state afterwards. On
// networks that are free of faults after the sweep, the invariants of a finished TIN are checked as well.
std::string checkedTIN(const inputs::Positions& positions, literal::Repeats repeats = literal::Repeats::AgainstShifted);

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
