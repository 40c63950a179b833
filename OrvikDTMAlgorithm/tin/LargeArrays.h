// Making room in vectors that may grow to many megabytes. Private.
#pragma once

#include <cstddef>
#include <vector>

#include <OrvikDTMAlgorithm/platform/Platform.h>

inline namespace OrvikDTM {
namespace detail {

// Reserves room for `count` elements in all, on large pages where that pays.
template <typename T>
void reserveLarge(std::vector<T>& items, std::size_t count) {
  constexpr std::size_t kWorthLargePages = std::size_t{4} << 20;
  items.reserve(count);
  const std::size_t bytes = count * sizeof(T);
  if (bytes >= kWorthLargePages) preferLargePages(items.data(), bytes);
}

// A vector of `count` equal elements.
template <typename T>
std::vector<T> largeVector(std::size_t count, const T& value = T()) {
  std::vector<T> items;
  reserveLarge(items, count);
  items.assign(count, value);
  return items;
}

// The elements of a vector by indexes into it.
template <typename T, typename Index>
std::vector<T> reordered(const std::vector<T>& items, const std::vector<Index>& order) {
  std::vector<T> result;
  reserveLarge(result, order.size());
  for (const Index i : order) result.push_back(items[i]);
  return result;
}

}  // namespace detail
}  // namespace OrvikDTM
