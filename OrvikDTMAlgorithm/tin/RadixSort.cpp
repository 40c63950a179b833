#include <algorithm>
#include <utility>

#include <OrvikDTMAlgorithm/tin/RadixSort.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

constexpr unsigned kDigitBits = 11;  // 2048 counters stay in the first-level cache
constexpr std::size_t kDigits = std::size_t{1} << kDigitBits;
constexpr unsigned kKeyBits = 64;

// Below this many items comparing wins.
constexpr std::size_t kFewItems = 1500;

std::size_t digitOf(std::uint64_t key, unsigned shift) { return (key >> shift) & (kDigits - 1); }

// One pass by one digit from `from` to `to`.
void scatter(const std::vector<KeyedNumber>& from, std::vector<KeyedNumber>& to, unsigned shift) {
  std::array<std::size_t, kDigits> place{};
  for (const KeyedNumber& item : from) ++place[digitOf(item.key, shift)];
  std::size_t next = 0;
  for (std::size_t& p : place) next += std::exchange(p, next);
  for (const KeyedNumber& item : from) to[place[digitOf(item.key, shift)]++] = item;
}

}  // namespace

void radixSort(std::vector<KeyedNumber>& items) {
  if (items.size() < kFewItems) {
    std::stable_sort(items.begin(), items.end(),
                     [](const KeyedNumber& a, const KeyedNumber& b) { return a.key < b.key; });
    return;
  }
  std::uint64_t differing = 0;
  for (const KeyedNumber& item : items) differing |= item.key ^ items.front().key;
  std::vector<KeyedNumber> other(items.size());
  for (unsigned shift = 0; shift < kKeyBits; shift += kDigitBits) {
    if (digitOf(differing, shift) == 0) continue;
    scatter(items, other, shift);
    items.swap(other);
  }
}

}  // namespace detail
}  // namespace OrvikDTM
