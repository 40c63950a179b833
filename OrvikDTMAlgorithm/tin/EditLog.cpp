#include <algorithm>
#include <new>

#include <OrvikDTMAlgorithm/tin/EditLog.h>
#include <OrvikDTMAlgorithm/tin/ElementBlocks.h>

inline namespace OrvikDTM {
namespace detail {

constinit std::atomic<std::uint64_t> Edits::state_{0};
constinit std::atomic<std::uintptr_t> Edits::begin_{0};
constinit std::atomic<std::uintptr_t> Edits::end_{0};

constinit AddressRange EditLog::latest_[kKept] = {};
constinit AddressRange EditLog::handedOut_[kHandedOutRanges] = {};
constinit std::size_t EditLog::handedOutCount_ = 0;

namespace {

AddressRange rangeOf(const void* begin, const void* end) {
  return {reinterpret_cast<std::uintptr_t>(begin), reinterpret_cast<std::uintptr_t>(end)};
}

AddressRange unionOf(const AddressRange& a, const AddressRange& b) {
  return {std::min(a.begin, b.begin), std::max(a.end, b.end)};
}

std::uintptr_t gapBetween(const AddressRange& a, const AddressRange& b) {
  if (a.meets(b)) return 0;
  return a.begin < b.begin ? b.begin - a.end : a.begin - b.end;
}

}  // namespace

void Edits::add(const void* begin, const void* end) noexcept { EditLog::add(rangeOf(begin, end), false); }

void Edits::addBlockOf(const void* begin, const void* end, bool isHandedOut) noexcept {
  AddressRange range = rangeOf(begin, end);
  const void* blockBegin = nullptr;
  const void* blockEnd = nullptr;
  if (findBlock(begin, blockBegin, blockEnd)) range = rangeOf(blockBegin, blockEnd);
  EditLog::add(range, isHandedOut);
}

// Never destroyed: a host's static objects may change elements after everything of ours has gone. Nothing is allocated,
// so that a change never fails.
std::mutex& EditLog::mutex() noexcept {
  alignas(std::mutex) static std::byte storage[sizeof(std::mutex)];
  static std::mutex* const made = new (storage) std::mutex;
  return *made;
}

std::uint64_t EditLog::markSeen() noexcept {
  const std::uint64_t seen = Edits::state_.load(std::memory_order_relaxed) | Edits::kSeen;
  Edits::state_.store(seen, std::memory_order_release);
  return seen;
}

void EditLog::add(const AddressRange& range, bool isHandedOut) noexcept {
  const std::lock_guard<std::mutex> lock(mutex());
  if (isHandedOut) addHandedOut(range);
  const std::uint64_t before = Edits::state_.load(std::memory_order_relaxed);
  const bool wasHandedOut = (before & Edits::kHandedOut) != 0;
  if (wasHandedOut == isHandedOut && extendLatest(range, before)) return;
  const std::uint64_t count = countOf(before);
  Edits::state_.store(before | Edits::kChanging, std::memory_order_relaxed);
  latest_[count % kKept] = range;
  Edits::begin_.store(range.begin, std::memory_order_release);
  Edits::end_.store(range.end, std::memory_order_release);
  Edits::state_.store((count + 1) * Edits::kOne | (isHandedOut ? Edits::kHandedOut : 0), std::memory_order_release);
}

// The latest change takes in another near it as long as no query has seen it.
bool EditLog::extendLatest(const AddressRange& range, std::uint64_t state) noexcept {
  const std::uint64_t count = countOf(state);
  if (count == 0 || (state & Edits::kSeen) != 0) return false;
  AddressRange& latest = latest_[(count - 1) % kKept];
  if (gapBetween(latest, range) > kNear) return false;
  latest = unionOf(latest, range);
  Edits::state_.store(state | Edits::kChanging, std::memory_order_relaxed);
  Edits::begin_.store(latest.begin, std::memory_order_release);
  Edits::end_.store(latest.end, std::memory_order_release);
  Edits::state_.store(state, std::memory_order_release);
  return true;
}

void EditLog::addHandedOut(const AddressRange& range) noexcept {
  AddressRange* const end = handedOut_ + handedOutCount_;
  AddressRange* const nearest = std::min_element(
      handedOut_, end, [&range](const auto& a, const auto& b) { return gapBetween(a, range) < gapBetween(b, range); });
  if (nearest != end && (handedOutCount_ == kHandedOutRanges || gapBetween(*nearest, range) <= kNear)) {
    *nearest = unionOf(*nearest, range);
  } else {
    handedOut_[handedOutCount_++] = range;
  }
}

bool EditLog::isAnythingHandedOut() noexcept {
  const std::lock_guard<std::mutex> lock(mutex());
  return handedOutCount_ != 0;
}

bool EditLog::isHandedOut(const AddressRange& range) noexcept {
  const std::lock_guard<std::mutex> lock(mutex());
  return std::any_of(handedOut_, handedOut_ + handedOutCount_,
                     [&range](const AddressRange& item) { return item.meets(range); });
}

void EditLog::forgetHandedOut(const AddressRange& fresh) noexcept {
  if (!isHandedOut(fresh)) return;
  const std::lock_guard<std::mutex> lock(mutex());
  std::size_t kept = 0;
  for (std::size_t i = 0; i < handedOutCount_; ++i) {
    AddressRange item = handedOut_[i];
    const bool beginsWithin = fresh.begin <= item.begin && item.begin < fresh.end;
    const bool endsWithin = fresh.begin < item.end && item.end <= fresh.end;
    if (beginsWithin && endsWithin) continue;
    if (beginsWithin) item.begin = fresh.end;
    if (endsWithin) item.end = fresh.begin;
    handedOut_[kept++] = item;
  }
  handedOutCount_ = kept;
  markSeen();  // what is handed out there from now on is no longer noted
}

}  // namespace detail
}  // namespace OrvikDTM
