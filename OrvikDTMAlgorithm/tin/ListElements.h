// A list's elements in bulk: filling it with a great many at once, from one block, and reading them all. Private.
#pragma once

#include <algorithm>
#include <new>
#include <span>
#include <type_traits>
#include <utility>

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
  // All the memory that a list needs to have `last` elements, so that they can be changed and appended without asking
  // for more. A list that has more of them is made ready to be shortened.
  template <typename Element>
  class Room {
   public:
    Room(SLType& list, int last) : list_(list), first_(list.getListLen() + 1), last_(std::min(last, list.getMaxlen())) {
      static_assert(std::is_trivially_destructible_v<Element>);
      list.holdByPointers();
      if (last_ < first_) return;
      if (first_ > 1) list.listData_.reserve(list.listData_.size() + count());
      begin_ = static_cast<Element*>(allocateElements(count(), sizeof(Element)));
    }
    ~Room() {
      if (begin_ != nullptr) releaseRun(begin_, count());
    }
    Room(const Room&) = delete;
    Room& operator=(const Room&) = delete;

    // Appends make(i) as element number i, for i from length + 1 up to `last`; what the list does not accept is left
    // out. `make` does not throw.
    template <typename Make>
    void fill(Make make) {
      if (begin_ == nullptr) return;
      Edits::note(&list_);
      Element* const begin = std::exchange(begin_, nullptr);
      auto* element = begin;
      for (int number = first_; number <= last_; ++number, ++element) new (element) Element(make(number));
      if (first_ == 1) {
        list_.run_ = {reinterpret_cast<std::byte*>(begin), count(), sizeof(Element)};
      } else {
        for (element = begin; element < begin + count(); ++element) list_.listData_.push_back(element);
      }
    }

   private:
    std::size_t count() const { return static_cast<std::size_t>(last_ - first_ + 1); }

    SLType& list_;
    int first_;
    int last_;
    Element* begin_ = nullptr;
  };

  template <typename Element, typename Make>
  static void append(SLType& list, int last, Make make) {
    Room<Element>(list, last).fill(make);
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
