// Private. Numbers as the surface files hold them: big-endian, at any address.
#pragma once

#include <bit>
#include <concepts>
#include <cstdint>
#include <cstring>

inline namespace OrvikDTM {
namespace detail {

inline constexpr std::size_t kInt32Bytes = 4;
inline constexpr std::size_t kDoubleBytes = 8;

// The same bytes in reverse order: one instruction where the processor has one.
template <std::unsigned_integral Word>
constexpr Word reversed(Word word) {
  constexpr int kBitsPerByte = 8;
  Word result = 0;
  for (std::size_t i = 0; i < sizeof(Word); ++i) {
    result = static_cast<Word>(result << kBitsPerByte | (word & 0xFF));
    word = static_cast<Word>(word >> kBitsPerByte);
  }
  return result;
}

template <typename Word>
Word betweenOrders(Word word) {
  return std::endian::native == std::endian::little ? reversed(word) : word;
}

template <typename Word>
Word readWord(const unsigned char* from) {
  Word word;
  std::memcpy(&word, from, sizeof word);
  return betweenOrders(word);
}

template <typename Word>
void writeWord(unsigned char* to, Word word) {
  word = betweenOrders(word);
  std::memcpy(to, &word, sizeof word);
}

inline std::int32_t readInt32(const unsigned char* from) {
  return static_cast<std::int32_t>(readWord<std::uint32_t>(from));
}

inline void writeInt32(unsigned char* to, std::int32_t v) { writeWord(to, static_cast<std::uint32_t>(v)); }

// Doubles bit for bit, whatever they mean: the sign of a zero and the payload of a NaN too.
inline double readDouble(const unsigned char* from) { return std::bit_cast<double>(readWord<std::uint64_t>(from)); }

inline void writeDouble(unsigned char* to, double v) { writeWord(to, std::bit_cast<std::uint64_t>(v)); }

}  // namespace detail
}  // namespace OrvikDTM
