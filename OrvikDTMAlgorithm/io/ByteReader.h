// Private. Bytes in memory, read from the front on and never beyond their end.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include <OrvikDTMAlgorithm/platform/Platform.h>

inline namespace OrvikDTM {
namespace detail {

// Records of one size, one behind the other. Where nobody reads the bytes again, their memory is given back on the way:
// what is made of a large file then lies in the memory that the file took, and does not come on top of it.
class RecordReader {
 public:
  RecordReader(const unsigned char* begin, std::size_t bytesOfOne, bool isLastToRead)
      : next_(begin), bytesOfOne_(bytesOfOne), kept_(isLastToRead ? begin : nullptr) {}

  // The next record; there must be one. The one before is gone.
  const unsigned char* next() {
    constexpr std::ptrdiff_t kWorthGivingBack = std::ptrdiff_t{4} << 20;
    if (kept_ != nullptr && next_ - kept_ >= kWorthGivingBack) giveBack();
    const unsigned char* record = next_;
    next_ += bytesOfOne_;
    return record;
  }

 private:
  void giveBack() {
    // Bytes that are read for the last time were given to the reader as ones that it may change.
    auto* passed = const_cast<unsigned char*>(kept_);
    kept_ = static_cast<unsigned char*>(giveBackLargePages(passed, static_cast<std::size_t>(next_ - kept_)));
  }

  const unsigned char* next_;
  std::size_t bytesOfOne_;
  const unsigned char* kept_;  // the first byte that was not given back; null where all are kept
};

class ByteReader {
 public:
  ByteReader(const unsigned char* begin, std::size_t length) : next_(begin), left_(length) {}

  // Reads a file for the last time: what `contents` holds afterwards is no longer the file.
  explicit ByteReader(Bytes& contents) : next_(contents.data()), left_(contents.size()), isLastToRead_(true) {}

  std::size_t left() const { return left_; }

  // The next `bytes` bytes, which are passed; null, and nothing is passed, when there are not so many.
  const unsigned char* take(std::size_t bytes) {
    if (bytes > left_) return nullptr;
    const unsigned char* taken = next_;
    next_ += bytes;
    left_ -= bytes;
    return taken;
  }

  // The next `count` records, likewise; nothing also when the count is negative.
  std::optional<RecordReader> takeRecords(std::int32_t count, std::size_t bytesOfOne) {
    if (count < 0 || static_cast<std::size_t>(count) > left_ / bytesOfOne) return std::nullopt;
    return RecordReader(take(static_cast<std::size_t>(count) * bytesOfOne), bytesOfOne, isLastToRead_);
  }

 private:
  const unsigned char* next_;
  std::size_t left_;
  bool isLastToRead_ = false;
};

}  // namespace detail
}  // namespace OrvikDTM
