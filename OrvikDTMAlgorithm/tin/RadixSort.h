// A stable sort of numbers by 64-bit keys, a few times faster than comparing when there are many. Private.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

struct KeyedNumber {
  std::uint64_t key;
  Number number;
};

// Sorts by key, equal keys in their present order.
void radixSort(std::vector<KeyedNumber>& items);

}  // namespace detail
}  // namespace OrvikDTM
