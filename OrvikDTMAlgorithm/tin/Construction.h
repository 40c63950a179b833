// The construction behind Surface::optimizeTIN(), and its way to the process-wide numbers of Surface. Private.
#pragma once

#include <atomic>
#include <vector>

#include <OrvikDTMAlgorithm/tin/Surface.h>

inline namespace OrvikDTM {
namespace detail {

class Construction {
 public:
  // As Surface::optimizeTIN(), with `compareUnshifted` in place of Surface::COMPAREUNSHIFTED.
  static CEType* triangulate(std::vector<TPoint*>& points, int compareUnshifted);
};

// Surface::COMPAREUNSHIFTED as the host has set it. To be read once, at the entry of an operation.
inline int hostsComparison() { return std::atomic_ref(Surface::COMPAREUNSHIFTED).load(std::memory_order_relaxed); }

// Stores a number that hosts may read after a construction. Constructions in other threads store theirs, so none reads
// it back.
inline void tellHosts(int& number, std::size_t value) {
  std::atomic_ref(number).store(static_cast<int>(value), std::memory_order_relaxed);
}

}  // namespace detail
}  // namespace OrvikDTM
