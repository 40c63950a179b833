// A set of positions and the index that each was given, compared by exact equality of x and y. Private.
#pragma once

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

// Open addressing over indexes into the positions stored; a position with a NaN equals nothing, itself included.
class PositionSet {
 public:
  static constexpr Number kNone = 0xFFFFFFFFu;

  explicit PositionSet(std::size_t expected) : slots_(std::bit_ceil(2 * expected + 2), kNone) {
    positions_.reserve(expected);
  }

  // The index under which the position stands, or kNone.
  Number find(const Position& p) const { return isNaN(p) ? kNone : slots_[slotOf(p)]; }

  // The index of the position, which is stored first if it is new.
  Number insert(const Position& p) {
    if (isNaN(p)) {
      positions_.push_back(p);
      return static_cast<Number>(positions_.size() - 1);
    }
    if (2 * (positions_.size() + 1) > slots_.size()) grow();
    Number& slot = slots_[slotOf(p)];
    if (slot == kNone) {
      slot = static_cast<Number>(positions_.size());
      positions_.push_back(p);
    }
    return slot;
  }

  std::size_t size() const { return positions_.size(); }
  const std::vector<Position>& positions() const { return positions_; }

 private:
  static bool isNaN(const Position& p) { return std::isnan(p.x) || std::isnan(p.y); }

  static std::uint64_t bitsOf(double v) { return std::bit_cast<std::uint64_t>(v + 0.0); }  // -0 and 0 are one

  static std::uint64_t mix(std::uint64_t h) {
    h ^= h >> 32;
    h *= 0xD6E8FEB86659FD93u;
    h ^= h >> 32;
    return h;
  }

  std::size_t slotOf(const Position& p) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = static_cast<std::size_t>(mix(mix(bitsOf(p.x)) + bitsOf(p.y))) & mask;
    while (slots_[at] != kNone && !samePosition(positions_[slots_[at]], p)) at = (at + 1) & mask;
    return at;
  }

  void grow() {
    slots_.assign(2 * slots_.size(), kNone);
    for (Number i = 0; i < positions_.size(); ++i) {
      if (!isNaN(positions_[i])) slots_[slotOf(positions_[i])] = i;
    }
  }

  std::vector<Number> slots_;
  std::vector<Position> positions_;
};

}  // namespace detail
}  // namespace OrvikDTM
