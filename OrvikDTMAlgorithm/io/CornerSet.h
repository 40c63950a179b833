// Private. The distinct corners of a list of triangles, and the position of each in the order of first use.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include <OrvikDTMAlgorithm/tin/PointHash.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>

inline namespace OrvikDTM {
namespace detail {

// Corners are the same when all their bits are: 0 and -0 are not, and a NaN is the same as itself.
//
// Open addressing over positions. Beside a position stands a tag, 32 bits of the corner's hash that do not tell the
// slot: only where it agrees is the corner itself read.
class CornerSet {
 public:
  int insert(const TPoint& corner) {
    if (2 * (points_.size() + 1) > slots_.size()) grow();
    const std::uint64_t hash = hashOf(corner);
    std::size_t at = homeOf(hash);
    for (; slots_[at].position != kEmpty; at = next(at)) {
      if (slots_[at].tag == tagOf(hash) && isSame(points_[static_cast<std::size_t>(slots_[at].position)], corner)) {
        return slots_[at].position;
      }
    }
    slots_[at] = {static_cast<std::int32_t>(points_.size()), tagOf(hash)};
    points_.push_back(corner);
    return slots_[at].position;
  }

  // The corners; the set is empty then.
  std::vector<TPoint> takePoints() {
    slots_ = std::vector<Slot>(kFewest);
    return std::exchange(points_, {});
  }

 private:
  static constexpr std::int32_t kEmpty = -1;
  static constexpr std::size_t kFewest = 64;  // a power of two, as every number of slots is

  struct Slot {
    std::int32_t position = kEmpty;
    std::uint32_t tag = 0;
  };

  static bool isSame(const TPoint& a, const TPoint& b) { return wordsOf(a) == wordsOf(b); }

  static std::uint64_t hashOf(const TPoint& p) {
    std::uint64_t h = 0;
    for (const double v : {p.getX(), p.getY(), p.getZ()}) {
      h = (h ^ std::bit_cast<std::uint64_t>(v)) * 0x9E3779B97F4A7C15u;
      h ^= h >> 32;
    }
    return h;
  }

  std::size_t homeOf(std::uint64_t hash) const { return static_cast<std::size_t>(hash) & (slots_.size() - 1); }
  std::size_t next(std::size_t at) const { return (at + 1) & (slots_.size() - 1); }
  static std::uint32_t tagOf(std::uint64_t hash) { return static_cast<std::uint32_t>(hash >> 32); }

  void grow() {
    slots_ = std::vector<Slot>(2 * slots_.size());
    for (std::size_t i = 0; i < points_.size(); ++i) {
      const std::uint64_t hash = hashOf(points_[i]);
      std::size_t at = homeOf(hash);
      while (slots_[at].position != kEmpty) at = next(at);
      slots_[at] = {static_cast<std::int32_t>(i), tagOf(hash)};
    }
  }

  std::vector<Slot> slots_ = std::vector<Slot>(kFewest);
  std::vector<TPoint> points_;
};

}  // namespace detail
}  // namespace OrvikDTM
