// Private. Bytes in memory, read from the front on and never beyond their end.
#pragma once

#include <cstddef>
#include <cstdint>

inline namespace OrvikDTM {
namespace detail {

class ByteReader {
 public:
  ByteReader(const unsigned char* begin, std::size_t length) : next_(begin), left_(length) {}

  std::size_t left() const { return left_; }

  // The next `bytes` bytes, which are passed; null, and nothing is passed, when there are not so many. The number is
  // one that no sum of counts in a file overflows.
  const unsigned char* take(std::uint64_t bytes) {
    if (bytes > left_) return nullptr;
    const unsigned char* taken = next_;
    next_ += bytes;
    left_ -= static_cast<std::size_t>(bytes);
    return taken;
  }

 private:
  const unsigned char* next_;
  std::size_t left_;
};

}  // namespace detail
}  // namespace OrvikDTM
