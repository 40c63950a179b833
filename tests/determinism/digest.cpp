// Prints one line for each family of inputs: how many TINs were built, how many triangles they have, and a digest of
// every bit of them. The same lines must come out of every compiler and at every optimisation level;
// scripts/check-determinism compares them.
#include <bit>
#include <cmath>
#include <cstdint>
#include <iostream>
#include <memory>
#include <numbers>
#include <vector>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

namespace {

// FNV-1a with 64 bits, over the eight bytes of every word.
class Digest {
 public:
  void add(std::uint64_t word) {
    constexpr std::uint64_t kPrime = 0x100000001b3;
    for (int i = 0; i < 8; ++i, word >>= 8) state_ = (state_ ^ (word & 0xff)) * kPrime;
  }
  void add(int number) { add(static_cast<std::uint64_t>(number)); }
  void add(double value) { add(std::bit_cast<std::uint64_t>(value)); }
  void add(const TPoint& p) {
    add(p.getX());
    add(p.getY());
    add(p.getZ());
  }
  std::uint64_t value() const { return state_; }

 private:
  std::uint64_t state_ = 0xcbf29ce484222325;
};

// A generator of our own: those of the standard library's distributions differ between libraries.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}
  double unit() {
    state_ = state_ * 6364136223846793005u + 1442695040888963407u;
    return static_cast<double>(state_ >> 11) * 0x1p-53;
  }
  double between(double low, double high) { return low + (high - low) * unit(); }
  int below(int n) { return static_cast<int>(unit() * n); }

  // Braces, here and below: they draw from left to right, while compilers differ about the arguments of a call.
  TPoint inBox(double x0, double x1, double y0, double y1, double z1) {
    return TPoint{between(x0, x1), between(y0, y1), between(0, z1)};
  }

 private:
  std::uint64_t state_;
};

using Points = std::vector<TPoint>;

Points scattered(Random& random, int n) {
  Points points;
  for (int i = 0; i < n; ++i) points.push_back(random.inBox(0, 1000, 0, 1000, 50));
  return points;
}

// Whole coordinates on few places: rows, columns, circles through four points, repeats.
Points gridded(Random& random, int n) {
  const int side = 2 + static_cast<int>(std::sqrt(n));
  Points points;
  for (int i = 0; i < n; ++i) {
    points.push_back(TPoint{10.0 * random.below(side), 10.0 * random.below(side), 1.0 * random.below(20)});
  }
  return points;
}

Points rotatedGrid(Random& random, int n) {
  Points points = gridded(random, n);
  const double angle = random.between(0, std::numbers::pi / 2);
  const double c = std::round(std::cos(angle) * 1e6) / 1e6;  // the last bits of a cosine differ between C libraries
  const double s = std::round(std::sin(angle) * 1e6) / 1e6;
  for (TPoint& p : points) p = TPoint(p.getX() * c - p.getY() * s, p.getX() * s + p.getY() * c, p.getZ());
  return points;
}

// Long runs on lines, as cross-sections are, and one point beside them.
Points collinear(Random& random, int n) {
  Points points;
  const int lines = 1 + random.below(3);
  for (int i = 0; i < n - 1; ++i) {
    const double along = random.below(4 * n);
    points.push_back(TPoint{along, 0.5 * along + 100.0 * random.below(lines), random.between(0, 9)});
  }
  points.push_back(TPoint{random.between(0, 100), 1000.0, 5.0});
  return points;
}

// A third of the shots again: to the last digit, or some millimetres off.
Points repeated(Random& random, int n) {
  Points points = scattered(random, std::max(2, n - n / 3));
  while (static_cast<int>(points.size()) < n) {
    const TPoint p = points[static_cast<std::size_t>(random.below(static_cast<int>(points.size())))];
    const double off = random.below(2) == 0 ? 0.0 : 0.001 * random.below(9);
    points.push_back(TPoint{p.getX() + off, p.getY() - off, p.getZ()});
  }
  return points;
}

Points projected(Random& random, int n) {
  Points points = scattered(random, n);
  for (TPoint& p : points) p = TPoint(p.getX() + 38'512'340.0, p.getY() + 3'414'180.0, p.getZ());
  return points;
}

void addTin(Digest& digest, const CEType& tin) {
  ConvexList* hull = tin.getCList();
  EList* edges = tin.getEList();
  TList* triangles = tin.getTList();
  for (int i = 1; i <= hull->getListLen(); ++i) digest.add(hull->findByNum(hull, i)->getEdgeNo());
  for (int i = 1; i <= edges->getListLen(); ++i) {
    const TEdge* edge = edges->findByNum(edges, i);
    digest.add(*edge->getStartPoint());
    digest.add(*edge->getEndPoint());
    digest.add(edge->getLeftT());
    digest.add(edge->getRightT());
  }
  for (int i = 1; i <= triangles->getListLen(); ++i) {
    for (int k = 0; k < 3; ++k) digest.add(triangles->findByNum(triangles, i)->getEno()[k]);
  }
}

// Beside the TIN itself: what is computed from it.
void addResults(Digest& digest, CEType& tin, Random& random) {
  digest.add(tin.getArea2D());
  digest.add(tin.getArea3D());
  const std::vector<double> range = tin.getRangeXY();
  for (int i = 0; i < 10; ++i) {
    const TPoint place = random.inBox(range[3], range[2], range[1], range[0], 0);
    digest.add(tin.getHeight(place.getX(), place.getY()));
  }
  const std::unique_ptr<FillCutResult> result(tin.getFillCut(7.3));
  digest.add(result->getCutVolume());
  digest.add(result->getFillVolume());
}

struct Family {
  const char* name;
  Points (*make)(Random& random, int n);
};

constexpr Family kFamilies[] = {{"scattered", scattered}, {"gridded", gridded},   {"rotated-grid", rotatedGrid},
                                {"collinear", collinear}, {"repeated", repeated}, {"projected", projected}};
constexpr int kSizes[] = {3, 4, 5, 6, 8, 11, 16, 24, 40, 70, 130, 300, 700, 1500, 3000};
constexpr int kRounds = 4;

void digestFamily(const Family& family) {
  Digest digest;
  Random random(20240417);
  long tins = 0;
  long triangles = 0;
  for (int round = 0; round < kRounds; ++round) {
    for (const int n : kSizes) {
      Surface::COMPAREUNSHIFTED = round % 2;
      Points points = family.make(random, n);
      std::vector<TPoint*> pointers;
      for (TPoint& p : points) pointers.push_back(&p);
      const std::unique_ptr<CEType> tin(Surface::optimizeTIN(pointers));
      addTin(digest, *tin);
      addResults(digest, *tin, random);
      ++tins;
      triangles += tin->getTList()->getListLen();
    }
  }
  std::cout << family.name << ": " << tins << " TINs, " << triangles << " triangles, " << std::hex << digest.value()
            << std::dec << '\n';
}

}  // namespace

int main() {
  for (const Family& family : kFamilies) digestFamily(family);
}
