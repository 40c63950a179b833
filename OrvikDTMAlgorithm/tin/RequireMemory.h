// Private. Requests that are larger than the machine fail before they have filled its memory.
#pragma once

#include <cstddef>
#include <limits>
#include <new>

inline namespace OrvikDTM {
namespace detail {

// Throws std::bad_alloc unless so many bytes can be had at once: for what is allocated piece by piece.
inline void requireMemory(std::size_t count, std::size_t bytesOfOne) {
  constexpr std::size_t kMost = std::numeric_limits<std::ptrdiff_t>::max();
  constexpr std::size_t kWorthAsking = std::size_t{64} << 20;
  if (bytesOfOne != 0 && count > kMost / bytesOfOne) throw std::bad_alloc();
  if (count * bytesOfOne >= kWorthAsking) ::operator delete(::operator new(count* bytesOfOne));
}

}  // namespace detail
}  // namespace OrvikDTM
