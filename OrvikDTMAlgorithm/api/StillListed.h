// Private. Whether records that are handed out one by one are still in their list, which callbacks may edit meanwhile.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include <OrvikDTMAlgorithm/surface/ReleasedMeanwhile.h>

inline namespace OrvikDTM {
namespace detail {

// To be made before the first record is handed out, and asked for the records in the order of the list.
class StillListed {
 public:
  // Whether `list` still holds `record`. A newer record at its address is another one. Usually a record stands one
  // place behind the one asked for before, wherever that has moved to.
  template <typename Record>
  bool in(const std::vector<Record*>& list, const Record* record) {
    if (released.holds(record)) return false;
    auto at = list.begin() + static_cast<std::ptrdiff_t>(std::min(expected, list.size()));
    if (at == list.end() || *at != record) at = std::find(list.begin(), list.end(), record);
    if (at == list.end()) return false;
    expected = static_cast<std::size_t>(at - list.begin()) + 1;
    return true;
  }

 private:
  ReleasedMeanwhile released;
  std::size_t expected = 0;
};

}  // namespace detail
}  // namespace OrvikDTM
