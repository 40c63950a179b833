// A list's elements in bulk: filling it with a great many at once, from one block, and reading them all. Private.
#pragma once

#include <algorithm>
#include <new>
#include <span>
#include <type_traits>

#include <OrvikDTMAlgorithm/tin/Edits.h>
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
    Edits::note(&list);
    list.holdByPointers();
    if (first > 1) list.listData_.reserve(list.listData_.size() + count);
    auto* const begin = static_cast<Element*>(allocateElements(count, sizeof(Element)));
    auto* element = begin;
    for (int number = first; number <= last; ++number, ++element) new (element) Element(make(number));
    if (first == 1) {
      list.run_ = {reinterpret_cast<std::byte*>(begin), count, sizeof(Element)};
    } else {
      for (element = begin; element < begin + count; ++element) list.listData_.push_back(element);
    }
  }

  // Calls read(elements) with the elements of a list as one of the two above, and returns what it returns. A null list
  // has none.
  template <typename Element, typename Read>
  static auto read(const SLType* list, Read read) {
    if (list != nullptr && list->run_.first != nullptr) {
      return read(SideBySide<Element>(list->run_.first, list->run_.length));
    }
    return read(ByPointers<Element>(list == nullptr ? std::span<void* const>() : std::span(list->listData_)));
  }
};

}  // namespace detail
}  // namespace OrvikDTM
