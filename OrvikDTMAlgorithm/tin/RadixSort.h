// A stable sort of numbers by 64-bit keys, a few times faster than comparing when there are many. Private.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

// Sorts stably by comparing, without asking for memory when there are only a handful, as in most rows of a survey.
template <typename Iterator, typename Before>
void sortStably(Iterator first, Iterator last, Before before) {
  constexpr auto kHandful = 24;
  if (std::is_sorted(first, last, before)) return;
  if (last - first > kHandful) {
    std::stable_sort(first, last, before);
    return;
  }
  for (Iterator next = first + 1; next != last; ++next) {
    std::rotate(std::upper_bound(first, next, *next, before), next, next + 1);
  }
}

struct KeyedNumber {
  std::uint64_t key;
  Number number;
};

// Sorts by key, equal keys in their present order.
void radixSort(std::vector<KeyedNumber>& items);

}  // namespace detail
}  // namespace OrvikDTM
