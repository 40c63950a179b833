// Private. A file as a place for many small pieces of bytes: they are gathered in a buffer that stays in the
// processor's cache, so that a file of any size is made without a second copy of it in memory.
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

inline namespace OrvikDTM {
namespace detail {

class FileSink {
 public:
  // Writes to the file that it is given before the first piece, which stays its owner's. Nothing more than the buffer
  // is allocated, and that at once.
  FileSink();
  void writeTo(std::FILE* file);
  FileSink(const FileSink&) = delete;
  FileSink& operator=(const FileSink&) = delete;

  // Room for the next `bytes` bytes of the file, at most kLargestPiece, to be filled before the next call.
  unsigned char* claim(std::size_t bytes) {
    if (kCapacity - used_ < bytes) writeOut();
    unsigned char* piece = buffer_.get() + used_;
    used_ += bytes;
    return piece;
  }

  // Without a file: keeps the bytes, of which there will be `size`, in memory.
  void keep(std::size_t size) { kept_.reserve(size); }
  const std::string& kept() const { return kept_; }

  // Appends bytes, as many as there are.
  void append(std::string_view bytes);

  // Writes out what is left. False when anything could not be written, now or earlier.
  bool finish();

  static constexpr std::size_t kLargestPiece = 4096;

 private:
  static constexpr std::size_t kCapacity = std::size_t{1} << 20;

  void writeOut();
  void write(const void* bytes, std::size_t count);

  std::FILE* file_ = nullptr;
  std::unique_ptr<unsigned char[]> buffer_;
  std::size_t used_ = 0;
  bool failed_ = false;
  std::string kept_;
};

}  // namespace detail
}  // namespace OrvikDTM
