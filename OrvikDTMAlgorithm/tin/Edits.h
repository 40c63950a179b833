// How elements of a TIN say that they are changed in place: every setter, every assignment, every change of a list. A
// query then knows from one number that nothing has changed anywhere, and otherwise whether something of its own has.
//
// Lists and elements note their changes themselves. A host has nothing to do with this, unless it writes elements in a
// way that is none of theirs (memcpy, a new element in the place of an old one): then CEType::setEList(getEList()).
#pragma once

#include <atomic>
#include <cstdint>

#include <OrvikDTMAlgorithm/Export.h>

inline namespace OrvikDTM {
namespace detail {

class ORVIKDTM_API Edits {
 public:
  // The element has been changed, or will be before the next query. Safe in any thread; throws nothing. Most changes
  // follow another of the same element, and cost a few loads.
  template <typename Element>
  static void note(const Element* element) noexcept {
    if (!isNoted(element)) add(element, element + 1);
  }

  // The same for one of the elements that the library lays side by side in blocks: it stands for its whole block.
  template <typename Element>
  static void noteInBlock(const Element* element) noexcept {
    if (!isNoted(element)) addBlockOf(element, element + 1, false);
  }

  // The caller gets a pointer into the element, and may write through it at any time from now on.
  template <typename Element>
  static void noteHandedOut(const Element* element) noexcept {
    if ((state_.load(std::memory_order_relaxed) & kHandedOut) == 0 || !isNoted(element)) {
      addBlockOf(element, element + 1, true);
    }
  }

  // Any of what lies from `begin` up to `end` has been changed.
  static void add(const void* begin, const void* end) noexcept;

  // Changes with every change that no query has seen yet, and with every query that sees some.
  static std::uint64_t state() { return state_.load(std::memory_order_relaxed); }

 private:
  friend class EditLog;

  // The state is a count of changes, times eight, and three flags.
  static constexpr std::uint64_t kSeen = 1;       // a query has seen all that are counted
  static constexpr std::uint64_t kChanging = 2;   // the range below is being written
  static constexpr std::uint64_t kHandedOut = 4;  // the latest change handed out pointers
  static constexpr std::uint64_t kOne = 8;

  // Whether the latest change covers the element and no query has seen it yet: then the next query of any TIN that has
  // the element will look at that change, as the element's own latest query came before it. The two ends are read
  // together or not at all: the state changes before either does.
  static bool isNoted(const void* element) noexcept {
    const std::uint64_t before = state_.load(std::memory_order_acquire);
    if ((before & (kSeen | kChanging)) != 0) return false;
    const auto address = reinterpret_cast<std::uintptr_t>(element);
    const bool isWithin = begin_.load(std::memory_order_acquire) <= address;
    return isWithin && address < end_.load(std::memory_order_acquire) &&
           state_.load(std::memory_order_relaxed) == before;
  }

  static void addBlockOf(const void* begin, const void* end, bool isHandedOut) noexcept;

  static std::atomic<std::uint64_t> state_;
  static std::atomic<std::uintptr_t> begin_;  // of the latest change
  static std::atomic<std::uintptr_t> end_;
};

}  // namespace detail
}  // namespace OrvikDTM
