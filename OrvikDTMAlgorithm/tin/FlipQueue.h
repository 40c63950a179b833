// The queue of edges that the flip stage is going to look at. Private.
#pragma once

#include <cstddef>
#include <memory>

#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

// First in, first out, over an array that is not wrapped round: once kLimit edges have been offered since the last
// reset, further ones are dropped. That bounds the work for one edge, and with it the whole stage: in cocircular points
// far from the origin rounding can make flips go round in a circle for ever.
class FlipQueue {
 public:
  void offer(Number edge) {
    if (tail_ < kLimit) edges_[tail_++] = edge;
  }

  bool empty() const { return head_ == tail_; }
  Number take() { return edges_[head_++]; }
  bool isFull() const { return tail_ == kLimit; }
  void reset() { head_ = tail_ = 0; }

 private:
  static constexpr std::size_t kLimit = 200000;

  // Not initialised: what small surfaces never use is never touched.
  std::unique_ptr<Number[]> edges_ = std::make_unique_for_overwrite<Number[]>(kLimit);
  std::size_t head_ = 0;
  std::size_t tail_ = 0;
};

}  // namespace detail
}  // namespace OrvikDTM
