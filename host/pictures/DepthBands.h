// The pieces between two surfaces, cut once more into bands of equal depth: how deep the cut, how high the fill.
#pragma once

#include <functional>

#include "Difference.h"

namespace pictures {

enum class Side { Cut, Fill, Same };

struct Band {
  Side side = Side::Same;
  int depth = 0;  // from 0, the shallowest
};

inline constexpr int kBands = 4;  // on either side

// The depth of a band: a round number, at least a sixth of the greatest difference. The last band has no end.
double bandStep(const Pieces& pieces);

// Hands on each part of each piece that lies in one band. The loop may be changed.
void forEachBandPart(const Pieces& pieces, double step, const std::function<void(const Band&, Loop&)>& take);

}  // namespace pictures
