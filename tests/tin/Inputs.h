// Survey-like and adversarial point sets for the tests of the triangulation. Every set is made from whole numbers by a
// generator of our own, so that it is the same on every machine and under every compiler.
#pragma once

#include <array>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

namespace inputs {

using Position = std::array<double, 3>;
using Positions = std::vector<Position>;

struct Input {
  std::string name;
  Positions points;
};

// A linear congruential generator of 64 bits; the upper ones are handed out.
class Random {
 public:
  explicit Random(std::uint64_t seed);
  std::uint32_t next();
  // A whole number in [low, high].
  std::int64_t between(std::int64_t low, std::int64_t high);
  // A double in [0, 1) with 53 random bits.
  double unit();

 private:
  std::uint64_t state_;
};

// A named kind of input: `make(seed, size)` gives about `size` points.
struct Kind {
  const char* name;
  Positions (*make)(std::uint64_t seed, int size);
};

inline void PrintTo(const Kind& kind, std::ostream* out) { *out << kind.name; }

// Kinds whose coordinates are ordinary numbers within 1e9 units.
const std::vector<Kind>& surveyKinds();

// Kinds whose extent is so large that a circle through their points takes more than 128 bits.
const std::vector<Kind>& wideKinds();

// Kinds with infinities, NaN and coordinates that no survey has.
const std::vector<Kind>& wildKinds();

// The kind of this name among all of them.
const Kind& kindNamed(const std::string& name);

// The kind's input, named "kind/seed/size".
Input make(const Kind& kind, std::uint64_t seed, int size);

// Points of whole millimetres on a square of `side` units at (x0, y0), heights in [0, 20).
Positions randomMillimetres(std::uint64_t seed, int size, int side, double x0, double y0);

// All whole-numbered positions on the circle of radius `radius` around (cx, cy).
Positions latticeCircle(int radius, double cx, double cy);

}  // namespace inputs
