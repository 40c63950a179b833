// A hash table of edges by the two places that they join. Private.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

// Two places, whichever way they were given.
struct PlacePair {
  PlacePair() = default;
  PlacePair(Number a, Number b) : low(std::min(a, b)), high(std::max(a, b)) {}
  bool operator==(const PlacePair&) const = default;
  Number low = 0;
  Number high = 0;
};

// Open addressing in one array, three quarters of which are filled at most.
class EdgeTable {
 public:
  EdgeTable() { resize(kFewestSlots); }

  // The number of the edge between two places; `next`, under which it is found from now on, when it is new.
  Number numberOf(const PlacePair& places, Number next) {
    if (4 * (used_ + 1) > 3 * slots_.size()) grow();
    Slot& slot = slots_[slotOf(places)];
    if (slot.edge != 0) return slot.edge;
    slot = {places, next};
    ++used_;
    return next;
  }

 private:
  struct Slot {
    PlacePair places;
    Number edge = 0;  // none: free
  };

  static constexpr std::size_t kFewestSlots = 16;

  // Multiplying by an odd number carries every bit upward, so the upper bits of the product tell the slot.
  std::size_t slotOf(const PlacePair& places) const {
    std::uint64_t h = (std::uint64_t{places.low} << 32 | places.high) * 0x9E3779B97F4A7C15u;
    h ^= h >> 32;
    std::size_t at = static_cast<std::size_t>(h * 0xD6E8FEB86659FD93u >> homeShift_);
    while (slots_[at].edge != 0 && slots_[at].places != places) at = (at + 1) & (slots_.size() - 1);
    return at;
  }

  void resize(std::size_t slotCount) {
    slots_.assign(slotCount, Slot{});
    homeShift_ = 64 - std::countr_zero(slotCount);
  }

  void grow() {
    std::vector<Slot> old;
    old.swap(slots_);
    resize(2 * old.size());
    for (const Slot& slot : old) {
      if (slot.edge != 0) slots_[slotOf(slot.places)] = slot;
    }
  }

  std::vector<Slot> slots_;
  std::size_t used_ = 0;
  int homeShift_ = 0;
};

}  // namespace detail
}  // namespace OrvikDTM
