// The generators behind Inputs.h.
#include "Inputs.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace inputs {
namespace {

constexpr double kMillimetresPerUnit = 1000.0;

double millimetres(std::int64_t value) { return static_cast<double>(value) / kMillimetresPerUnit; }

// A gentle relief, so that heights are neither constant nor linear.
double relief(double x, double y, Random& random) {
  return 100.0 + 0.01 * x - 0.02 * y + millimetres(random.between(-2000, 2000));
}

Positions shuffled(Positions points, Random& random) {
  for (std::size_t i = points.size(); i > 1; --i) {
    std::swap(points[i - 1], points[static_cast<std::size_t>(random.between(0, static_cast<std::int64_t>(i) - 1))]);
  }
  return points;
}

int sideOfGrid(int size) { return std::max(2, static_cast<int>(std::lround(std::sqrt(static_cast<double>(size))))); }

Positions random1km(std::uint64_t seed, int size) { return randomMillimetres(seed, size, 1000, 0.0, 0.0); }
Positions randomDense(std::uint64_t seed, int size) { return randomMillimetres(seed, size, 10, 0.0, 0.0); }
Positions atProjected(std::uint64_t seed, int size) { return randomMillimetres(seed, size, 800, 500000.0, 3000000.0); }
Positions atZonePrefix(std::uint64_t seed, int size) {
  return randomMillimetres(seed, size, 800, 38500000.0, 3400000.0);
}
Positions aroundOrigin(std::uint64_t seed, int size) { return randomMillimetres(seed, size, 400, -200.0, -200.0); }
Positions allNegative(std::uint64_t seed, int size) { return randomMillimetres(seed, size, 300, -5000.0, -7000.0); }

Positions grid(std::uint64_t seed, int size) {
  Random random(seed);
  const int side = sideOfGrid(size);
  const double step = millimetres(random.between(1, 20) * 500);
  Positions points;
  for (int i = 0; i < side; ++i) {
    for (int j = 0; j < side; ++j) points.push_back({i * step, j * step, relief(i * step, j * step, random)});
  }
  return shuffled(points, random);
}

// Turned by an angle with rational sine and cosine, so that no library function of the machine takes part.
Positions rotatedGrid(std::uint64_t seed, int size) {
  constexpr int kTriples[4][3] = {{3, 4, 5}, {20, 21, 29}, {5, 12, 13}, {8, 15, 17}};
  Random random(seed);
  const int* t = kTriples[random.between(0, 3)];
  const double s = static_cast<double>(t[0]) / t[2];
  const double c = static_cast<double>(t[1]) / t[2];
  Positions points = grid(seed, size);
  const double x0 = millimetres(random.between(0, 1000000));
  for (Position& p : points) {
    const double x = p[0] * c - p[1] * s + x0;
    const double y = p[0] * s + p[1] * c + x0;
    p[0] = std::floor(x * kMillimetresPerUnit + 0.5) / kMillimetresPerUnit;
    p[1] = std::floor(y * kMillimetresPerUnit + 0.5) / kMillimetresPerUnit;
  }
  return points;
}

Positions collinearRunThenApex(std::uint64_t seed, int size) {
  Random random(seed);
  const std::int64_t dx = random.between(-3, 3);
  const std::int64_t dy = random.between(0, 3);
  Positions points;
  for (int i = 0; i + 1 < size; ++i) {
    const double x = static_cast<double>(i * dx);
    const double y = static_cast<double>(i * dy);
    points.push_back({x, y, relief(x, y, random)});
  }
  points.push_back(
      {static_cast<double>(random.between(-50, 50)) + 0.5, static_cast<double>(random.between(1, 90)), 7.0});
  return shuffled(points, random);
}

Positions allCollinear(std::uint64_t seed, int size) {
  Random random(seed);
  const std::int64_t dx = random.between(-2, 2);
  const std::int64_t dy = random.between(0, 2);
  Positions points;
  for (int i = 0; i < size; ++i) points.push_back({static_cast<double>(i * dx), static_cast<double>(i * dy), 1.0 * i});
  return shuffled(points, random);
}

Positions fewRays(std::uint64_t seed, int size) {
  constexpr int kDirections[8][2] = {{1, 0}, {3, 1}, {1, 1}, {1, 2}, {0, 1}, {-1, 3}, {-1, 1}, {-2, 1}};
  Random random(seed);
  Positions points = {{0.0, 0.0, 3.0}};
  for (int i = 1; i < size; ++i) {
    const int* d = kDirections[random.between(0, 7)];
    const double r = static_cast<double>(i) + (random.between(0, 1) == 0 ? 0.0 : 0.25);
    points.push_back({d[0] * r, d[1] * r, relief(r, r, random)});
  }
  return shuffled(points, random);
}

Positions withRepeats(std::uint64_t seed, int size, double x0, double y0) {
  Random random(seed);
  Positions points = randomMillimetres(seed, size, 100, x0, y0);
  points[0][0] = x0;
  points[0][1] = y0;
  for (int i = 0; i < size / 6 + 1; ++i) {
    Position copy = points[static_cast<std::size_t>(random.between(0, size - 1))];
    copy[2] += 0.25;
    points.push_back(copy);
  }
  return shuffled(points, random);
}

Positions repeatsAtOrigin(std::uint64_t seed, int size) { return withRepeats(seed, size, 0.0, 0.0); }
Positions repeatsElsewhere(std::uint64_t seed, int size) { return withRepeats(seed, size, 417.0, 233.0); }

Positions gridWithRepeatsAtOrigin(std::uint64_t seed, int size) {
  Random random(seed);
  Positions points = grid(seed, size);
  for (int i = 0; i < size / 5 + 1; ++i) {
    points.push_back(points[static_cast<std::size_t>(random.between(0, static_cast<std::int64_t>(points.size()) - 1))]);
  }
  return points;
}

Positions millimetreClusters(std::uint64_t seed, int size) {
  Random random(seed);
  Positions points;
  for (int i = 0; i < size; ++i) {
    const std::int64_t cx = random.between(0, 3) * 37000;
    const std::int64_t cy = random.between(0, 3) * 29000;
    points.push_back({millimetres(cx + random.between(0, 30)), millimetres(cy + random.between(0, 30)), 5.0 + i});
  }
  return points;
}

Positions manyDecimals(std::uint64_t seed, int size) {
  Random random(seed);
  Positions points;
  for (int i = 0; i < size; ++i) points.push_back({random.unit() * 300.0, random.unit() * 300.0, random.unit() * 30.0});
  return points;
}

// Coordinates that end in 5 behind the millimetres, where rounding has to decide.
Positions halfMillimetres(std::uint64_t seed, int size) {
  Random random(seed);
  Positions points;
  for (int i = 0; i < size; ++i) {
    points.push_back({static_cast<double>(random.between(-400000, 400000)) / 2000.0,
                      static_cast<double>(random.between(-400000, 400000)) / 2000.0, 1.0});
  }
  return points;
}

Positions onCircle(std::uint64_t seed, int size) {
  constexpr int kRadii[4] = {5, 65, 325, 1105};
  Random random(seed);
  const double cx = static_cast<double>(random.between(0, 20000));
  Positions all = shuffled(latticeCircle(kRadii[random.between(0, 3)], cx, cx / 2.0), random);
  if (static_cast<int>(all.size()) > size) all.resize(static_cast<std::size_t>(size));
  return all;
}

Positions circleFarFromCorner(std::uint64_t seed, int size) {
  Random random(seed);
  Positions all = shuffled(latticeCircle(65, 9500.0, 9800.0), random);
  if (static_cast<int>(all.size()) > size) all.resize(static_cast<std::size_t>(size));
  all.push_back({0.0, 0.0, 1.0});
  return all;
}

Positions crossSections(std::uint64_t seed, int size) {
  Random random(seed);
  Positions points;
  const int stations = std::max(2, size / 9);
  for (int s = 0; s < stations; ++s) {
    const std::int64_t y = s * 20000 + random.between(-300, 300);
    for (int k = -4; k <= 4; ++k) {
      const std::int64_t x = k * 5000 + random.between(-400, 400);
      points.push_back({500000.0 + millimetres(x), 3000000.0 + millimetres(y), 40.0 + 0.001 * k});
    }
  }
  return points;
}

Positions nearPointOne(std::uint64_t seed, int size) {
  Random random(seed);
  Positions points = randomMillimetres(seed, size, 50, 0.0, 0.0);
  points.push_back({0.0, 0.0, 0.0});
  for (int i = 0; i < 4; ++i)
    points.push_back({millimetres(random.between(0, 120)), millimetres(random.between(0, 120)), 1.0});
  return points;
}

// A square of one unit: every second try of the sweep stumbles over its own tolerance here.
Positions withinAUnit(std::uint64_t seed, int size) { return randomMillimetres(seed, size, 1, 0.0, 0.0); }

// Groups of five within five millimetres, at projected coordinates.
Positions groupsOfFive(std::uint64_t seed, int size) {
  constexpr int kGroup = 5;
  Random random(seed);
  Positions points;
  std::int64_t x = 0;
  std::int64_t y = 0;
  for (int i = 0; i < size; ++i) {
    if (i % kGroup == 0) {
      x = random.between(0, 80000);
      y = random.between(0, 80000);
    }
    points.push_back({417.0 + millimetres(x + random.between(0, 5)), 233.0 + millimetres(y + random.between(0, 5)),
                      millimetres(random.between(0, 19999))});
  }
  return points;
}

// Every position twice or more.
Positions repeatsEverywhere(std::uint64_t seed, int size) {
  Random random(seed);
  const Positions once = randomMillimetres(seed, std::max(2, size / 3), 60, 12.0, 900.0);
  Positions points = once;
  while (static_cast<int>(points.size()) < size || points.size() < 2 * once.size()) {
    Position copy = once[points.size() % once.size()];
    copy[2] += static_cast<double>(points.size());
    points.push_back(copy);
  }
  return shuffled(points, random);
}

Positions twoColumns(std::uint64_t seed, int size) {
  Random random(seed);
  Positions points;
  for (int i = 0; i < size; ++i)
    points.push_back({i % 2 == 0 ? 0.0 : 0.001, millimetres(random.between(0, 400)), 1.0 * i});
  return points;
}

// A straight run in one of eight directions and one point a millimetre beside it: at an end, or somewhere between.
Positions collinearButOne(std::uint64_t seed, int size) {
  constexpr int kDirections[8][2] = {{1, 0}, {0, 1}, {1, 1}, {-1, 1}, {3, 7}, {-5, 2}, {1000, 1}, {-1, 900}};
  Random random(seed);
  const int* d = kDirections[random.between(0, 7)];
  const std::int64_t ends[3] = {0, size - 1, random.between(0, size - 1)};
  const std::int64_t beside = ends[random.between(0, 2)];
  Positions points;
  for (std::int64_t i = 0; i < size; ++i) {
    const std::int64_t off = i == beside ? 1 : 0;
    points.push_back({50.0 + millimetres(i * d[0] + (d[1] != 0 ? off : 0)),
                      70.0 + millimetres(i * d[1] + (d[1] == 0 ? off : 0)), 1.0 * static_cast<double>(i)});
  }
  return shuffled(points, random);
}

// One point at the origin, all others within a few units of a place 38,500,000 away.
Positions outlierAtOrigin(std::uint64_t seed, int size) {
  Positions points = randomMillimetres(seed, std::max(2, size - 1), 3, 38500000.0, 38500000.0);
  points.push_back({0.0, 0.0, 1.0});
  return points;
}

// A site at projected coordinates, with points millimetres apart, in a row or turned, and one or two points at the
// origin or on an axis: the side tests of the construction are coarser than the site's triangles.
Positions siteAndStrays(std::uint64_t seed, int size) {
  constexpr double kSites[4][2] = {
      {500000.0, 4500000.0}, {350000.0, 5800000.0}, {38500000.0, 3400000.0}, {4500000.0, 4500000.0}};
  Random random(seed);
  const double* site = kSites[seed % 4];
  const double step = seed % 3 == 0 ? 0.001 : seed % 3 == 1 ? 0.1 : 1.0;
  Positions points;
  while (static_cast<int>(points.size()) < std::max(2, size - 1)) {
    if (points.size() % 4 == 0 || seed % 5 == 0) {
      points.push_back({site[0] + step * static_cast<double>(random.between(0, 300)),
                        site[1] + step * static_cast<double>(random.between(0, 300)), 1.0});
    } else {
      const Position& last = points.back();
      points.push_back({last[0] + 0.001 * static_cast<double>(random.between(-3, 3)),
                        last[1] + 0.001 * static_cast<double>(random.between(-3, 3)), 2.0});
    }
  }
  points.push_back({0.0, 0.0, 1.0});
  if (seed % 2 == 0) points.push_back({site[0], 0.0, 1.0});
  return points;
}

// So far from the smallest coordinates that relative to them whole groups of positions become one.
Positions groupBehindAFarOutlier(std::uint64_t seed, int size) {
  Positions points = randomMillimetres(seed, std::max(2, size - 1), seed % 2 == 0 ? 1 : 40, 0.0, 0.0);
  const double far = seed % 3 == 0 ? -9.1e12 : -3e10;
  points.push_back({far, seed % 5 == 0 ? 0.0 : far, 1.0});
  return points;
}

// Fractions of a unit at eastings of 4.45e12, where doubles are just near enough for millimetres.
Positions lastFullMillimetres(std::uint64_t seed, int size) {
  return randomMillimetres(seed, size, 4, 4450000000000.0, -3000.0);
}

// The largest coordinates that whole millimetres reach.
Positions nearTheLimit(std::uint64_t seed, int size) {
  constexpr std::int64_t kLimit = 9200000000000;
  Random random(seed);
  Positions points;
  for (int i = 0; i < size; ++i) {
    points.push_back({static_cast<double>(random.between(-kLimit, kLimit)),
                      static_cast<double>(random.between(-kLimit, kLimit)), 1.0 * i});
  }
  return points;
}

double wildValue(Random& random) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr double kMax = std::numeric_limits<double>::max();
  const double values[] = {kInfinity, -kInfinity, kMax, -kMax, 1e300, -1e300, 1e160, 9.3e12, -9.3e12, 1e-320, -0.0};
  return values[random.between(0, 10)];
}

Positions huge(std::uint64_t seed, int size) {
  Random random(seed);
  Positions points;
  for (int i = 0; i < size; ++i) points.push_back({(random.unit() - 0.5) * 1e13, (random.unit() - 0.5) * 1e13, 1.0});
  return points;
}

// Every third coordinate is wild.
Positions mostlyWild(std::uint64_t seed, int size) {
  Random random(seed);
  Positions points = randomMillimetres(seed, size, 90, -40.0, 0.0);
  for (Position& p : points) {
    for (std::size_t axis = 0; axis < 2; ++axis) {
      if (random.between(0, 2) == 0) p[axis] = wildValue(random);
    }
  }
  return points;
}

// Coordinates around 1e13, where doubles are farther apart than millimetres; in every second set all on one circle.
Positions beyondMillimetres(std::uint64_t seed, int size) {
  constexpr double kFar = 1e13;
  constexpr int kRadius = 1105;
  if (seed % 2 == 0) return randomMillimetres(seed, size, 500, kFar, kFar);
  Random random(seed);
  Positions all = shuffled(latticeCircle(kRadius, kFar, -kFar), random);
  if (static_cast<int>(all.size()) > size) all.resize(static_cast<std::size_t>(size));
  return all;
}

Positions withNaN(std::uint64_t seed, int size) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  Random random(seed);
  Positions points = randomMillimetres(seed, size, 90, 12.0, 34.0);
  for (int i = 0; i < size / 4 + 1; ++i) {
    points[static_cast<std::size_t>(random.between(0, size - 1))][static_cast<std::size_t>(random.between(0, 2))] =
        kNaN;
  }
  return points;
}

Positions withWildValues(std::uint64_t seed, int size) {
  Random random(seed);
  Positions points = randomMillimetres(seed, size, 90, 0.0, 0.0);
  for (int i = 0; i < 3; ++i) {
    points[static_cast<std::size_t>(random.between(0, size - 1))][static_cast<std::size_t>(random.between(0, 1))] =
        wildValue(random);
  }
  return points;
}

}  // namespace

Random::Random(std::uint64_t seed) : state_(seed * 2862933555777941757ULL + 3037000493ULL) { next(); }

std::uint32_t Random::next() {
  state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
  return static_cast<std::uint32_t>(state_ >> 32);
}

std::int64_t Random::between(std::int64_t low, std::int64_t high) {
  const std::uint64_t drawn = (static_cast<std::uint64_t>(next()) << 32) | next();
  return low + static_cast<std::int64_t>(drawn % static_cast<std::uint64_t>(high - low + 1));
}

double Random::unit() {
  const std::uint64_t drawn = (static_cast<std::uint64_t>(next()) << 32) | next();
  return static_cast<double>(drawn >> 11) * 0x1.0p-53;
}

Positions randomMillimetres(std::uint64_t seed, int size, int side, double x0, double y0) {
  Random random(seed);
  Positions points;
  for (int i = 0; i < size; ++i) {
    const double x = millimetres(random.between(0, side * 1000LL));
    const double y = millimetres(random.between(0, side * 1000LL));
    points.push_back({x0 + x, y0 + y, millimetres(random.between(0, 19999))});
  }
  return points;
}

Positions latticeCircle(int radius, double cx, double cy) {
  Positions points;
  for (int x = -radius; x <= radius; ++x) {
    for (int y = -radius; y <= radius; ++y) {
      if (x * x + y * y == radius * radius) points.push_back({cx + x, cy + y, 0.5 * x});
    }
  }
  return points;
}

const std::vector<Kind>& surveyKinds() {
  static const std::vector<Kind> kinds = {
      {"random", random1km},
      {"dense", randomDense},
      {"projected", atProjected},
      {"zone-prefix", atZonePrefix},
      {"around-origin", aroundOrigin},
      {"negative", allNegative},
      {"grid", grid},
      {"rotated-grid", rotatedGrid},
      {"collinear-run-then-apex", collinearRunThenApex},
      {"all-collinear", allCollinear},
      {"few-rays", fewRays},
      {"repeats-at-origin", repeatsAtOrigin},
      {"repeats-elsewhere", repeatsElsewhere},
      {"grid-with-repeats-at-origin", gridWithRepeatsAtOrigin},
      {"millimetre-clusters", millimetreClusters},
      {"many-decimals", manyDecimals},
      {"half-millimetres", halfMillimetres},
      {"circle", onCircle},
      {"circle-far-from-corner", circleFarFromCorner},
      {"cross-sections", crossSections},
      {"near-point-one", nearPointOne},
      {"within-a-unit", withinAUnit},
      {"groups-of-five", groupsOfFive},
      {"repeats-everywhere", repeatsEverywhere},
      {"two-columns", twoColumns},
      {"collinear-but-one", collinearButOne},
  };
  return kinds;
}

const std::vector<Kind>& wideKinds() {
  static const std::vector<Kind> kinds = {{"outlier-at-origin", outlierAtOrigin},
                                          {"site-and-strays", siteAndStrays},
                                          {"group-behind-a-far-outlier", groupBehindAFarOutlier},
                                          {"near-the-limit", nearTheLimit},
                                          {"last-full-millimetres", lastFullMillimetres}};
  return kinds;
}

const std::vector<Kind>& wildKinds() {
  static const std::vector<Kind> kinds = {{"huge", huge},
                                          {"beyond-millimetres", beyondMillimetres},
                                          {"nan", withNaN},
                                          {"wild-values", withWildValues},
                                          {"mostly-wild", mostlyWild}};
  return kinds;
}

const Kind& kindNamed(const std::string& name) {
  for (const auto* kinds : {&surveyKinds(), &wideKinds(), &wildKinds()}) {
    for (const Kind& kind : *kinds) {
      if (kind.name == name) return kind;
    }
  }
  throw std::invalid_argument("no kind of input is called " + name);
}

Input make(const Kind& kind, std::uint64_t seed, int size) {
  return {std::string(kind.name) + "/" + std::to_string(seed) + "/" + std::to_string(size), kind.make(seed, size)};
}

}  // namespace inputs
