// The bounded first-in, first-out queue of pieces, in a ring that grows to what it is used for and is used again. It
// bounds the work on one triangle, whatever the surfaces are like. Private.
#pragma once

#include <cstddef>
#include <vector>

#include <OrvikDTMAlgorithm/tin/Piece.h>

inline namespace OrvikDTM {
namespace detail {

class PieceQueue {
 public:
  static constexpr std::size_t kCapacity = 50000;

  bool empty() const { return count_ == 0; }
  std::size_t size() const { return count_; }
  const Piece& front() const { return ring_[first_]; }

  Piece takeFirst() {
    const Piece piece = ring_[first_];
    first_ = (first_ + 1) & (ring_.size() - 1);
    --count_;
    return piece;
  }

  // A piece offered to a full queue is dropped.
  void offer(const Piece& piece) {
    if (count_ == kCapacity) return;
    if (count_ == ring_.size()) grow();
    ring_[(first_ + count_) & (ring_.size() - 1)] = piece;
    ++count_;
  }

 private:
  void grow() {
    std::vector<Piece> larger(2 * ring_.size());
    for (std::size_t i = 0; i < count_; ++i) larger[i] = ring_[(first_ + i) & (ring_.size() - 1)];
    ring_.swap(larger);
    first_ = 0;
  }

  std::vector<Piece> ring_{std::vector<Piece>(256)};  // a power of two of places
  std::size_t first_ = 0;
  std::size_t count_ = 0;
};

}  // namespace detail
}  // namespace OrvikDTM
