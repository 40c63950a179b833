// A list's elements in bulk: filling it with a great many at once, from one block, and reading them all. Private.
#pragma once

#include <algorithm>
#include <new>
#include <span>
#include <type_traits>

#include <OrvikDTMAlgorithm/tin/ElementBlocks.h>
#include <OrvikDTMAlgorithm/tin/SLType.h>

inline namespace OrvikDTM {
namespace detail {

class ListElements {
 public:
  // make(i) gives element number i, for i from length + 1 up to `last`; what the list has no room for is left out.
  template <typename Element, typename Make>
  static void append(SLType& list, int last, Make make) {
    static_assert(std::is_trivially_destructible_v<Element>);
    const int first = list.getListLen() + 1;
    last = std::min(last, list.getMaxlen());
    if (last < first) return;
    const auto count = static_cast<std::size_t>(last - first + 1);
    list.listData_.reserve(list.listData_.size() + count);
    auto* element = static_cast<Element*>(allocateElements(count, sizeof(Element)));
    for (int number = first; number <= last; ++number, ++element) {
      list.listData_.push_back(new (element) Element(make(number)));
    }
  }

  // The elements as they lie in the list, which must not change meanwhile.
  static std::span<void* const> elementsOf(const SLType* list) {
    return list == nullptr ? std::span<void* const>() : std::span<void* const>(list->listData_);
  }
};

}  // namespace detail
}  // namespace OrvikDTM
