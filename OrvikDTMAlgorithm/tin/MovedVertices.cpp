#include <cmath>

#include <OrvikDTMAlgorithm/tin/MovedVertices.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

constexpr double kThousandths = 1000;

// The origin may lie this much farther out than the vertices: it is the smallest coordinate before rounding.
constexpr double kRoundedOff = 0.001;

// Two roundings of numbers up to twice the largest coordinate, and as much again.
constexpr double kReach = 0x1p-51;

// Quotients of whole numbers by a thousand are the doubles nearest to them.
double toThousandths(double v) { return std::round(v * kThousandths) / kThousandths; }

TPoint keyOf(const Position& p) { return {p.x, p.y, 0.0}; }

}  // namespace

MovedVertices::MovedVertices(double largest) : reach_((largest + kRoundedOff) * kReach) {}

void MovedVertices::add(const Position& vertex) {
  const Position p{toThousandths(vertex.x), toThousandths(vertex.y)};
  if (samePosition(p, vertex)) return;
  if (std::fabs(vertex.x - p.x) <= reach_ && std::fabs(vertex.y - p.y) <= reach_) {
    byThousandths_.try_emplace(keyOf(p), vertex);
  }
}

void MovedVertices::keepPlaceOf(const Position& vertex) {
  if (!byThousandths_.empty()) byThousandths_.erase(keyOf(vertex));
}

const Position* MovedVertices::find(const Position& p) const {
  const auto found = byThousandths_.find(keyOf(p));
  return found == byThousandths_.end() ? nullptr : &found->second;
}

}  // namespace detail
}  // namespace OrvikDTM
