// Private. A block of bytes of known size as a place for many small pieces: what FileSink is to a file.
#pragma once

#include <cstddef>
#include <vector>

#include <OrvikDTMAlgorithm/tin/LargeArrays.h>

inline namespace OrvikDTM {
namespace detail {

class ByteVector {
 public:
  explicit ByteVector(std::size_t size) : bytes_(largeVector<unsigned char>(size)) {}

  // Room for the next `bytes` bytes of the block, which must not go beyond its size; at most kLargestPiece.
  unsigned char* claim(std::size_t bytes) {
    unsigned char* piece = bytes_.data() + used_;
    used_ += bytes;
    return piece;
  }

  static constexpr std::size_t kLargestPiece = 4096;

  std::vector<unsigned char> take() { return std::move(bytes_); }

 private:
  std::vector<unsigned char> bytes_;
  std::size_t used_ = 0;
};

}  // namespace detail
}  // namespace OrvikDTM
