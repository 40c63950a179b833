#include "Inputs.h"

#include <cmath>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <numbers>
#include <random>
#include <utility>

namespace bench {

namespace {

constexpr double kExtent = 1000.0;
constexpr double kMillimetresPerUnit = 1000.0;
constexpr double kFarEasting = 500000.0;
constexpr double kFarNorthing = 3000000.0;

double toMillimetre(double v) { return std::round(v * kMillimetresPerUnit) / kMillimetresPerUnit; }

TPoint onTerrain(double x, double y) {
  return {toMillimetre(x), toMillimetre(y), 50.0 + 10.0 * std::sin(x / 90.0) * std::cos(y / 70.0)};
}

// Random numbers that are the same with every standard library, which the distributions of <random> are not.
class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}

  // In [0, 1).
  double unit() { return static_cast<double>(engine_() >> 11) * 0x1p-53; }

  double between(double low, double high) { return low + (high - low) * unit(); }

  TPoint inSquare() {
    const double x = between(0, kExtent);
    const double y = between(0, kExtent);
    return onTerrain(x, y);
  }

  // Around 0, with standard deviation 1, in two independent coordinates.
  std::array<double, 2> gaussian() {
    const double radius = std::sqrt(-2.0 * std::log(1.0 - unit()));
    const double angle = 2.0 * std::numbers::pi * unit();
    return {radius * std::cos(angle), radius * std::sin(angle)};
  }

 private:
  std::mt19937_64 engine_;
};

Cloud uniform(std::size_t count, std::uint64_t seed) {
  Random random(seed);
  Cloud cloud;
  cloud.reserve(count);
  while (cloud.size() < count) cloud.push_back(random.inSquare());
  return cloud;
}

Cloud moved(Cloud cloud, double dx, double dy) {
  for (TPoint& p : cloud) p = {toMillimetre(p.getX() + dx), toMillimetre(p.getY() + dy), p.getZ()};
  return cloud;
}

// Another surface over the same ground: higher on the whole, lower in places.
Cloud changed(Cloud cloud) {
  for (TPoint& p : cloud) p.setZ(p.getZ() + 3.5 + 6.0 * std::sin(p.getX() / 40.0) * std::sin(p.getY() / 55.0));
  return cloud;
}

Cloud grid(int side, double angle) {
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  Cloud cloud;
  cloud.reserve(static_cast<std::size_t>(side) * static_cast<std::size_t>(side));
  for (int row = 0; row < side; ++row) {
    for (int column = 0; column < side; ++column)
      cloud.push_back(onTerrain(c * column - s * row, s * column + c * row));
  }
  return cloud;
}

Cloud scanLines(int lines, int pointsOfLine, std::uint64_t seed) {
  constexpr double kAlong = 0.1;  // jitter, in units
  constexpr double kAcross = 0.02;
  Random random(seed);
  Cloud cloud;
  cloud.reserve(static_cast<std::size_t>(lines) * static_cast<std::size_t>(pointsOfLine));
  for (int line = 0; line < lines; ++line) {
    for (int i = 0; i < pointsOfLine; ++i) {
      const double along = line % 2 == 0 ? i : pointsOfLine - 1 - i;
      const double x = along + random.between(-kAlong, kAlong);
      cloud.push_back(onTerrain(x, line + random.between(-kAcross, kAcross)));
    }
  }
  return cloud;
}

Cloud clusters(int count, int pointsOfCluster, std::uint64_t seed) {
  constexpr double kSpread = 3.0;
  Random random(seed);
  Cloud cloud;
  cloud.reserve(static_cast<std::size_t>(count) * static_cast<std::size_t>(pointsOfCluster));
  for (int cluster = 0; cluster < count; ++cluster) {
    const TPoint centre = random.inSquare();
    for (int i = 0; i < pointsOfCluster; ++i) {
      const auto [dx, dy] = random.gaussian();
      cloud.push_back(onTerrain(centre.getX() + kSpread * dx, centre.getY() + kSpread * dy));
    }
  }
  return cloud;
}

Cloud collinearAndApex(int count) {
  Cloud cloud;
  cloud.reserve(static_cast<std::size_t>(count) + 1);
  for (int i = 0; i < count; ++i) cloud.push_back(onTerrain(0.01 * i, 0.005 * i));
  cloud.push_back(onTerrain(400.0, 700.0));
  return cloud;
}

Cloud withRepeats(std::size_t count, std::uint64_t seed) {
  constexpr std::size_t kEvery = 20;
  Random random(seed);
  Cloud cloud;
  cloud.reserve(count);
  while (cloud.size() < count) {
    if (cloud.size() % kEvery == kEvery - 1) {
      const double place = random.between(0, static_cast<double>(cloud.size()));
      cloud.push_back(cloud[static_cast<std::size_t>(place)]);
    } else {
      cloud.push_back(random.inSquare());
    }
  }
  return cloud;
}

// The sweep's tolerances decide by the input's millimetres whether its result is valid, so the road that a random input
// takes is a matter of its seed. The benchmarks check that these still take the road that they are named for.
constexpr std::uint64_t kSweepSeed = 1;
constexpr std::uint64_t kExactSeed = 2;
constexpr std::uint64_t kSweepSeedOf200k = 895;

const std::map<std::string, std::function<Cloud()>>& makers() {
  static const std::map<std::string, std::function<Cloud()>> all = {
      {"uniform_10k_sweep", [] { return uniform(10'000, kSweepSeed); }},
      {"uniform_100k_sweep", [] { return uniform(100'000, kSweepSeed); }},
      {"uniform_100k_exact", [] { return uniform(100'000, kExactSeed); }},
      {"uniform_200k_sweep", [] { return uniform(200'000, kSweepSeedOf200k); }},
      {"uniform_20k", [] { return uniform(20'000, 3); }},
      {"uniform_500k", [] { return uniform(500'000, 4); }},
      {"uniform_1m", [] { return uniform(1'000'000, 5); }},
      {"changed_100k", [] { return changed(uniform(100'000, 9)); }},
      {"changed_1m", [] { return changed(uniform(1'000'000, 10)); }},
      {"uniform_1m_offset", [] { return moved(uniform(1'000'000, 5), kFarEasting, kFarNorthing); }},
      {"grid_1m", [] { return grid(1000, 0.0); }},
      {"grid_1m_rotated", [] { return grid(1000, 0.3); }},
      {"scan_lines_1m", [] { return scanLines(1000, 1000, 6); }},
      {"clusters_1m", [] { return clusters(1000, 1000, 7); }},
      {"collinear_100k_apex", [] { return collinearAndApex(100'000); }},
      {"repeats_1m", [] { return withRepeats(1'000'000, 8); }},
  };
  return all;
}

}  // namespace

Cloud makeCloud(const std::string& name) { return makers().at(name)(); }

const Cloud& cloudNamed(const std::string& name) {
  static std::map<std::string, Cloud> kept;
  const auto place = kept.find(name);
  return place != kept.end() ? place->second : kept.emplace(name, makeCloud(name)).first->second;
}

Survey::Survey(Cloud cloud) : points(std::move(cloud)) {
  pointers.reserve(points.size());
  for (TPoint& p : points) pointers.push_back(&p);
}

}  // namespace bench
