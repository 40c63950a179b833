// A list's elements in bulk: filling it with a great many at once, from one block, and reading them all. Private.
#pragma once

#include <algorithm>
#include <new>
#include <span>
#include <type_traits>

#include <OrvikDTMAlgorithm/tin/ElementBlocks.h>
#include <OrvikDTMAlgorithm/tin/Prefetch.h>
#include <OrvikDTMAlgorithm/tin/SLType.h>

inline namespace OrvikDTM {
namespace detail {

// The elements of a list by index from 0, for as long as it does not change: by the pointers in the list, or from their
// own place where they lie side by side, without a look at the list.
template <typename Element>
class ByPointers {
 public:
  explicit ByPointers(std::span<void* const> pointers) : pointers_(pointers) {}
  std::size_t size() const { return pointers_.size(); }
  const Element* operator[](std::size_t index) const { return static_cast<const Element*>(pointers_[index]); }

  // Asks for what operator[] reads.
  void prefetchEntry(std::size_t index) const { prefetch(&pointers_[index]); }

 private:
  std::span<void* const> pointers_;
};

template <typename Element>
class SideBySide {
 public:
  SideBySide(const void* first, std::size_t size) : first_(static_cast<const Element*>(first)), size_(size) {}
  std::size_t size() const { return size_; }
  const Element* operator[](std::size_t index) const { return first_ + index; }
  void prefetchEntry(std::size_t /*index*/) const {}

 private:
  const Element* first_;
  std::size_t size_;
};

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
    list.sideBySide_ = first == 1 ? element : nullptr;
    for (int number = first; number <= last; ++number, ++element) {
      list.listData_.push_back(new (element) Element(make(number)));
    }
  }

  // The first of the elements where they lie side by side, else null.
  static const void* sideBySide(const SLType* list) { return list == nullptr ? nullptr : list->sideBySide_; }

  // The elements as they lie in the list, which must not change meanwhile.
  static std::span<void* const> elementsOf(const SLType* list) {
    return list == nullptr ? std::span<void* const>() : std::span<void* const>(list->listData_);
  }
};

}  // namespace detail
}  // namespace OrvikDTM
