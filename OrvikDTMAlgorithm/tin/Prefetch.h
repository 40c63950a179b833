// Asking for memory before it is needed. Private.
#pragma once

#include <cstdint>

inline namespace OrvikDTM {
namespace detail {

// Loops over edges read their points, which lie in survey order, anywhere in memory: so many edges ahead is far enough
// for a point to have arrived when its turn comes.
inline constexpr int kPrefetchAhead = 16;

inline void prefetch(const void* address) {
#if defined(__GNUC__)
  __builtin_prefetch(address);
#else
  static_cast<void>(address);
#endif
}

// All of an object, which may lie across two cache lines, or not be there: an address is worked out all the same.
template <typename T>
void prefetchWhole(const T* object) {
  static_assert(sizeof(T) <= 64);
  prefetch(object);
  prefetch(reinterpret_cast<const void*>(reinterpret_cast<std::uintptr_t>(object) + sizeof(T) - 1));
}

}  // namespace detail
}  // namespace OrvikDTM
