#include <algorithm>
#include <utility>

#include <OrvikDTMAlgorithm/tin/Orientation.h>
#include <OrvikDTMAlgorithm/tin/OverlapWalk.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

constexpr int kCorners = 3;

// Whether one side of the first triangle, which turns as `turn` says, has all of the second beyond it or on it.
bool hasBeyondASide(const Position (&p)[kCorners], int turn, const Position (&other)[kCorners]) {
  for (int i = 0; i < kCorners; ++i) {
    const Position& start = p[i];
    const Position& end = p[(i + 1) % kCorners];
    const bool isBeyond = std::all_of(std::begin(other), std::end(other), [&](const Position& corner) {
      return orientation(start, end, corner) * turn <= 0;
    });
    if (isBeyond) return true;
  }
  return false;
}

}  // namespace

OverlapWalk::OverlapWalk(std::shared_ptr<const FlatTIN> tin)
    : tin_(std::move(tin)),
      isPossible_(tin_->coversConvexOnce()),
      seenIn_(static_cast<std::size_t>(tin_->triangleCount()) + 1) {}

bool OverlapWalk::overlaps(const Facet& facet, int number) const {
  const FlatTIN::Corners* corners = tin_->corners(number);
  const int turn = tin_->turn(number);
  return corners != nullptr && turn != 0 && !hasBeyondASide(facet.p, facet.turn, corners->p) &&
         !hasBeyondASide(corners->p, turn, facet.p);
}

// The triangle at one of some places in the facet: its middle, and ever nearer to its corners, as a sliver may reach
// far beyond the network.
int OverlapWalk::firstOverlapping(const Facet& facet) {
  constexpr double kNearestToCorner = 1.0 / 128;
  const Position middle{(facet.p[0].x + facet.p[1].x + facet.p[2].x) / 3,
                        (facet.p[0].y + facet.p[1].y + facet.p[2].y) / 3};
  const auto overlappingAt = [&](double x, double y) {
    const int number = tin_->locate(x, y, lastLocated_);
    return number != 0 && overlaps(facet, number) ? number : 0;
  };
  int found = overlappingAt(middle.x, middle.y);
  for (double part = 0.5; part >= kNearestToCorner; part /= 2) {
    for (const Position& corner : facet.p) {
      if (found != 0) return found;
      found = overlappingAt(corner.x + (middle.x - corner.x) * part, corner.y + (middle.y - corner.y) * part);
    }
  }
  return found;
}

bool OverlapWalk::isNew(int number) {
  if (number == 0 || seenIn_[static_cast<std::size_t>(number)] == walk_) return false;
  seenIn_[static_cast<std::size_t>(number)] = walk_;
  return true;
}

// What lies in the facet and in the network is convex, and still hangs together without the network's vertices: from
// any triangle in there one comes to any other over edges that pass through it.
bool OverlapWalk::findAll(const Facet& facet) {
  found_.clear();
  ++walk_;
  const int first = firstOverlapping(facet);
  if (first == 0) return false;
  isNew(first);
  found_.push_back(first);
  for (std::size_t i = 0; i < found_.size(); ++i) {
    for (int which = 0; which < kCorners; ++which) {
      const int next = tin_->neighbour(found_[i], which);
      if (isNew(next) && overlaps(facet, next)) found_.push_back(next);
    }
  }
  return true;
}

}  // namespace detail
}  // namespace OrvikDTM
