// The latest changes in place of elements of any TIN (Edits.h), as those see them who keep copies. Private.
//
// One process-wide log of memory ranges, under a lock. A query whose state is not the latest asks which ranges have
// been changed since; only when one of them is its own, or too many have been for the log, does it look at its
// elements.
#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <type_traits>

#include <OrvikDTMAlgorithm/tin/Edits.h>

inline namespace OrvikDTM {
namespace detail {

struct AddressRange {
  std::uintptr_t begin;
  std::uintptr_t end;

  bool meets(const AddressRange& other) const { return begin < other.end && other.begin < end; }
};

class EditLog {
 public:
  // No state that Edits::state() ever has.
  static constexpr std::uint64_t kNever = ~std::uint64_t{0};

  // Calls visit(range) for what has been changed since `seen`, and returns the present state. Ranges may be wider than
  // the change; all of memory stands for changes that the log has no longer. visit must not note a change.
  template <typename Visit>
  static std::uint64_t look(std::uint64_t seen, Visit visit) {
    const std::lock_guard<std::mutex> lock(mutex());
    const std::uint64_t now = countOf(Edits::state());
    const std::uint64_t count = now - countOf(seen);
    if (seen == kNever || count > kKept) {
      visit(AddressRange{0, ~std::uintptr_t{0}});
    } else {
      for (std::uint64_t i = countOf(seen); i < now; ++i) visit(latest_[i % kKept]);
    }
    return markSeen();
  }

  // The present state, for a copy that is made now.
  static std::uint64_t now() {
    return look(Edits::state(), [](const AddressRange&) {});
  }

  // Whether pointers have been handed out at all, and into the range.
  static bool isAnythingHandedOut() noexcept;
  static bool isHandedOut(const AddressRange& range) noexcept;

  // Nobody has pointers into memory that has just been allocated.
  static void forgetHandedOut(const AddressRange& fresh) noexcept;

 private:
  friend class Edits;

  static constexpr std::size_t kKept = 1024;

  // Changes so near to each other, in bytes, are one range: points that are gone through one by one.
  static constexpr std::uintptr_t kNear = 256;

  // So many ranges of handed-out memory are told apart; more are joined with their neighbours.
  static constexpr std::size_t kHandedOutRanges = 64;

  static std::mutex& mutex() noexcept;
  static std::uint64_t countOf(std::uint64_t state) { return state / Edits::kOne; }
  static std::uint64_t markSeen() noexcept;
  static void add(const AddressRange& range, bool isHandedOut) noexcept;
  static bool extendLatest(const AddressRange& range, std::uint64_t state) noexcept;
  static void addHandedOut(const AddressRange& range) noexcept;

  static AddressRange latest_[kKept];  // change number i, counted from 0, at i modulo their number
  static AddressRange handedOut_[kHandedOutRanges];
  static std::size_t handedOutCount_;
};

}  // namespace detail
}  // namespace OrvikDTM
