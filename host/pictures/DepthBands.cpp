#include "DepthBands.h"

#include <algorithm>
#include <cmath>

#include "Contours.h"

namespace pictures {

namespace {

struct Limits {
  double least;
  double most;
};

Limits limitsOf(const Loop& piece) {
  const auto [least, most] = std::minmax_element(
      piece.begin(), piece.end(), [](const DifferencePoint& a, const DifferencePoint& b) { return a.above < b.above; });
  return {least->above, most->above};
}

}  // namespace

double bandStep(const Pieces& pieces) {
  constexpr double kSteps = 6.0;  // so that all bands are used, however far the step is rounded up
  double most = 0.0;
  for (const DifferencePoint& p : pieces.points) most = std::max(most, std::fabs(p.above));
  return most > 0.0 ? roundStep(most / kSteps) : 1.0;
}

void forEachBandPart(const Pieces& pieces, double step, const std::function<void(const Band&, Loop&)>& take) {
  Loop part;
  Loop scratch;
  for (std::size_t i = 0; i < pieces.count(); ++i) {
    const Loop piece = pieces.piece(i);
    const Limits limits = limitsOf(piece);
    if (limits.least == 0.0 && limits.most == 0.0) {
      part = piece;
      take({Side::Same, 0}, part);
    }
    for (int depth = 0; depth < kBands; ++depth) {
      const double from = depth * step;
      const double to = from + step;
      const bool last = depth == kBands - 1;
      if (limits.most > from) {
        part = piece;
        clipAbove(part, from, scratch);
        if (!last) clipBelow(part, to, scratch);
        if (!part.empty()) take({Side::Cut, depth}, part);
      }
      if (limits.least < -from) {
        part = piece;
        clipBelow(part, -from, scratch);
        if (!last) clipAbove(part, -to, scratch);
        if (!part.empty()) take({Side::Fill, depth}, part);
      }
    }
  }
}

}  // namespace pictures
