// What a sweep over the sides of a polygon need not look at band by band: neighbours between which nothing begins, ends
// or crosses from one northing to a much later one. A comb has thousands of such pairs at every northing. Private.
#pragma once

#include <cstdint>
#include <vector>

#include <OrvikDTMAlgorithm/tin/BoundaryParts.h>
#include <OrvikDTMAlgorithm/tin/Mesh.h>

inline namespace OrvikDTM {
namespace detail {

// A side, and the bands that it passes through: `first` and those after it, before `end`.
struct BandedSide {
  Number side;
  Number first;
  Number end;
};

// Two sides that are neighbours in all of the bands in question, with an even number of sides to the west of them in
// each: what they bound belongs to the polygon.
struct QuietPair {
  Number west;
  Number east;
};

class QuietPairs {
 public:
  // Band i lies between levels[i] and levels[i + 1]. Both must last as long as this.
  QuietPairs(const std::vector<BoundarySide>& sides, const std::vector<double>& levels)
      : sides_(sides), levels_(levels) {}

  // Takes quiet pairs out of the sides that pass through some of the bands [first, end), of which there are two or
  // more. At every northing in there all other sides are, as xAt() computes it, west of both or east of both, and the
  // west one is west of the east one: the others can be ordered without the pair, and the pair without the others.
  std::vector<QuietPair> takeFrom(std::vector<BandedSide>& atHand, Number first, Number end);

 private:
  // A side that passes through all bands, and where.
  struct Spanning {
    double low;
    double high;
    double slack;
    Number place;  // among the sides at hand
  };

  // A spanning side that no other spanning one comes near to, and how many of those are west of it.
  struct Clear {
    BandedSide side;
    double slack;
    Number rank;
    Number place;
    bool isDisturbed;
  };

  // A side that passes through some of the bands only, and how many clear ones are not certainly east of it.
  struct Partial {
    Number notEast;
    BandedSide side;
  };

  void gather(const std::vector<BandedSide>& atHand);
  void findClear(const std::vector<BandedSide>& atHand);
  void placePartial(const BandedSide& side);
  std::vector<QuietPair> pairUp(std::vector<bool>& isTaken);

  const std::vector<BoundarySide>& sides_;
  const std::vector<double>& levels_;
  Number first_ = 0;
  Number end_ = 0;
  std::vector<Spanning> spanning_;
  std::vector<Clear> clear_;
  std::vector<Partial> partial_;
};

}  // namespace detail
}  // namespace OrvikDTM
