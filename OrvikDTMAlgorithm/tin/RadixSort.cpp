#include <algorithm>
#include <array>
#include <bit>
#include <utility>

#include <OrvikDTMAlgorithm/tin/LargeArrays.h>
#include <OrvikDTMAlgorithm/tin/RadixSort.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

constexpr int kDigitBits = 11;  // 2048 counters stay in the first-level cache
constexpr std::size_t kDigits = std::size_t{1} << kDigitBits;

// Three digits tell millions of keys apart but for a few, which are compared.
constexpr int kSortedBits = 3 * kDigitBits;

// Below this many items comparing wins.
constexpr std::size_t kFewItems = 1500;

bool byKey(const KeyedNumber& a, const KeyedNumber& b) { return a.key < b.key; }

std::size_t digitOf(std::uint64_t key, int shift) { return (key >> shift) & (kDigits - 1); }

// One pass by one digit from `from` to `to`.
void scatter(const std::vector<KeyedNumber>& from, std::vector<KeyedNumber>& to, int shift) {
  std::array<std::size_t, kDigits> place{};
  for (const KeyedNumber& item : from) ++place[digitOf(item.key, shift)];
  std::size_t next = 0;
  for (std::size_t& p : place) next += std::exchange(p, next);
  for (const KeyedNumber& item : from) to[place[digitOf(item.key, shift)]++] = item;
}

// Sorts what has the same bits from `shift` on.
void sortRuns(std::vector<KeyedNumber>& items, int shift) {
  for (auto first = items.begin(); first != items.end();) {
    const auto last =
        std::find_if(first, items.end(), [&](const KeyedNumber& k) { return k.key >> shift != first->key >> shift; });
    sortStably(first, last, byKey);
    first = last;
  }
}

}  // namespace

void radixSort(std::vector<KeyedNumber>& items) {
  if (items.size() < kFewItems) {
    sortStably(items.begin(), items.end(), byKey);
    return;
  }
  std::uint64_t differing = 0;
  for (const KeyedNumber& item : items) differing |= item.key ^ items.front().key;
  const auto bits = static_cast<int>(std::bit_width(differing));
  const int lowest = std::max(bits - kSortedBits, 0);
  std::vector<KeyedNumber> other = largeVector<KeyedNumber>(items.size());
  for (int shift = lowest; shift < bits; shift += kDigitBits) {
    if (digitOf(differing, shift) == 0) continue;
    scatter(items, other, shift);
    items.swap(other);
  }
  if (lowest > 0) sortRuns(items, lowest);
}

}  // namespace detail
}  // namespace OrvikDTM
