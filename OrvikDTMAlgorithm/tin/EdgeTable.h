// The edges of a mesh, found again by the two places that they join, in either direction. Private.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <OrvikDTMAlgorithm/tin/Mesh.h>
#include <OrvikDTMAlgorithm/tin/Prefetch.h>

inline namespace OrvikDTM {
namespace detail {

// Open addressing in one array, three quarters of which are filled at most. A slot holds the two places beside the
// edge's number, so that looking one edge up mostly means reading one line of memory, which prefetch() can ask for.
class EdgeTable {
 public:
  // Two places in either order.
  struct Key {
    Key() = default;
    Key(Number a, Number b) : low(std::min(a, b)), high(std::max(a, b)) {}
    Number low = 0;
    Number high = 0;
    bool operator==(const Key&) const = default;
  };

  explicit EdgeTable(std::size_t expectedEdges) {
    resize(std::bit_ceil(std::max(expectedEdges + expectedEdges / 3, kFewestSlots)));
  }

  void prefetch(const Key& key) const { detail::prefetch(&slots_[homeOf(key)]); }

  // The number of the edge with this key; 0 when it is new, and the caller then stores its number here. Valid until the
  // next call.
  Number& numberOf(const Key& key) {
    if (4 * (used_ + 1) > 3 * slots_.size()) grow();
    Slot& slot = slots_[slotOf(key)];
    if (slot.edge == 0) {
      slot.key = key;
      ++used_;
    }
    return slot.edge;
  }

 private:
  struct Slot {
    Key key;
    Number edge = 0;
  };

  static constexpr std::size_t kFewestSlots = 16;

  // Multiplying by an odd constant carries every bit upward, so the upper bits of the product tell the slot.
  std::size_t homeOf(const Key& key) const {
    std::uint64_t h = (std::uint64_t{key.low} << 32 | key.high) * 0x9E3779B97F4A7C15u;
    h ^= h >> 32;
    return static_cast<std::size_t>(h * 0xD6E8FEB86659FD93u >> homeShift_);
  }

  std::size_t slotOf(const Key& key) const {
    std::size_t at = homeOf(key);
    while (slots_[at].edge != 0 && slots_[at].key != key) at = (at + 1) & (slots_.size() - 1);
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
      if (slot.edge != 0) slots_[slotOf(slot.key)] = slot;
    }
  }

  std::vector<Slot> slots_;
  std::size_t used_ = 0;
  int homeShift_ = 0;
};

}  // namespace detail
}  // namespace OrvikDTM
