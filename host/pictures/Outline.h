// The outline of many faces that lie side by side: what two faces share falls away, and the rest closes to loops. Drawn
// even-odd, the loops cover what the faces cover.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "Chains.h"

namespace pictures {

// A point of a picture on its raster, y down.
struct RasterPoint {
  std::int32_t x = 0;
  std::int32_t y = 0;

  bool operator==(const RasterPoint& other) const { return x == other.x && y == other.y; }
};

Place placeOf(const RasterPoint& p);
RasterPoint pointOf(Place place);

class Outline {
 public:
  // Adds a face, given by its corners in order.
  void add(const std::vector<RasterPoint>& face);

  // Cancels what lies on two faces. Everything below works on what was there then.
  void settle();

  bool empty() const { return sides_.empty(); }

  // Loops, the last point joined to the first.
  std::vector<std::vector<RasterPoint>> loops() const;

  // The edges that this outline has in one direction and `other` in the opposite one.
  void addShared(const Outline& other, std::vector<Segment>& shared) const;

 private:
  // An edge between two places, smaller first, and how often it is passed from `low` to `high`, less the way back.
  struct Side {
    Place low;
    Place high;
    std::int32_t net;
  };

  static bool comesBefore(const Side& a, const Side& b);

  std::vector<Side> sides_;
};

}  // namespace pictures
