// A set of positions and the index that each was given, compared by exact equality of x and y. Private.
#pragma once

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <OrvikDTMAlgorithm/tin/Mesh.h>
#include <OrvikDTMAlgorithm/tin/Prefetch.h>

inline namespace OrvikDTM {
namespace detail {

// Open addressing over indexes into the positions stored; a position with a NaN equals nothing, itself included. Beside
// an index stands a tag, 32 bits of the position's hash that do not tell the slot: only where it agrees is the position
// itself read.
class PositionSet {
 public:
  static constexpr Number kNone = 0xFFFFFFFFu;

  explicit PositionSet(std::size_t expected) : slots_(std::bit_ceil(2 * expected + 2)) { positions_.reserve(expected); }

  // The index under which the position stands, or kNone.
  Number find(const Position& p) const { return isNaN(p) ? kNone : slots_[slotOf(p, hashOf(p))].index; }

  // Asks for the memory that find() and insert() will read first.
  void prefetch(const Position& p) const { detail::prefetch(&slots_[homeOf(hashOf(p))]); }

  // The index of the position, which is stored first if it is new.
  Number insert(const Position& p) {
    if (isNaN(p)) {
      positions_.push_back(p);
      return static_cast<Number>(positions_.size() - 1);
    }
    if (2 * (positions_.size() + 1) > slots_.size()) grow();
    const std::uint64_t hash = hashOf(p);
    Slot& slot = slots_[slotOf(p, hash)];
    if (slot.index == kNone) {
      slot = {static_cast<Number>(positions_.size()), tagOf(hash)};
      positions_.push_back(p);
    }
    return slot.index;
  }

  std::size_t size() const { return positions_.size(); }
  const std::vector<Position>& positions() const { return positions_; }

 private:
  struct Slot {
    Number index = kNone;
    std::uint32_t tag = 0;
  };

  static bool isNaN(const Position& p) { return std::isnan(p.x) || std::isnan(p.y); }

  static std::uint64_t bitsOf(double v) { return std::bit_cast<std::uint64_t>(v + 0.0); }  // -0 and 0 are one

  static std::uint64_t mix(std::uint64_t h) {
    h ^= h >> 32;
    h *= 0xD6E8FEB86659FD93u;
    h ^= h >> 32;
    return h;
  }

  static std::uint64_t hashOf(const Position& p) { return mix(mix(bitsOf(p.x)) + bitsOf(p.y)); }

  // The lower bits tell the slot, the upper ones are the tag: they overlap only beyond 2^32 slots.
  std::size_t homeOf(std::uint64_t hash) const { return static_cast<std::size_t>(hash) & (slots_.size() - 1); }
  static std::uint32_t tagOf(std::uint64_t hash) { return static_cast<std::uint32_t>(hash >> 32); }

  std::size_t slotOf(const Position& p, std::uint64_t hash) const {
    std::size_t at = homeOf(hash);
    while (slots_[at].index != kNone && !holds(slots_[at], p, hash)) at = (at + 1) & (slots_.size() - 1);
    return at;
  }

  bool holds(const Slot& slot, const Position& p, std::uint64_t hash) const {
    return slot.tag == tagOf(hash) && samePosition(positions_[slot.index], p);
  }

  void grow() {
    slots_.assign(2 * slots_.size(), Slot{});
    for (Number i = 0; i < positions_.size(); ++i) {
      const Position& p = positions_[i];
      if (!isNaN(p)) slots_[slotOf(p, hashOf(p))] = {i, tagOf(hashOf(p))};
    }
  }

  std::vector<Slot> slots_;
  std::vector<Position> positions_;
};

}  // namespace detail
}  // namespace OrvikDTM
