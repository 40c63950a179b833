// How far sampled volumes lie from exact ones: a dozen pairs of surfaces, printed as the table of docs/volumes.md.
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <numbers>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

namespace {

using Terrain = std::function<double(double, double)>;

// A network and the points that it refers to.
struct Network {
  std::vector<TPoint> points;
  std::unique_ptr<CEType> tin;
};

std::unique_ptr<Network> networkOf(std::vector<TPoint> points) {
  auto network = std::make_unique<Network>();
  network->points = std::move(points);
  std::vector<TPoint*> pointers;
  for (TPoint& p : network->points) pointers.push_back(&p);
  network->tin.reset(Surface::optimizeTIN(pointers));
  return network;
}

// Random places in [x, x + width] x [y, y + height], corners included, on a terrain.
std::vector<TPoint> scattered(int count, std::uint64_t seed, double x, double y, double width, double height,
                              const Terrain& terrain) {
  std::mt19937_64 engine(seed);
  const auto unit = [&engine] { return static_cast<double>(engine() >> 11) * 0x1p-53; };
  std::vector<TPoint> points;
  for (const double u : {0.0, 1.0}) {
    for (const double v : {0.0, 1.0}) points.emplace_back(x + u * width, y + v * height, 0.0);
  }
  while (static_cast<int>(points.size()) < count) points.emplace_back(x + unit() * width, y + unit() * height, 0.0);
  for (TPoint& p : points) p.setZ(terrain(p.getX(), p.getY()));
  return points;
}

std::vector<TPoint> gridded(int side, double step, double angle, const Terrain& terrain) {
  std::vector<TPoint> points;
  for (int row = 0; row < side; ++row) {
    for (int column = 0; column < side; ++column) {
      const double x = step * (std::cos(angle) * column - std::sin(angle) * row);
      const double y = step * (std::sin(angle) * column + std::cos(angle) * row);
      points.emplace_back(x, y, terrain(x, y));
    }
  }
  return points;
}

double hills(double x, double y) { return 50.0 + 4.0 * std::sin(x / 30.0) * std::cos(y / 25.0); }
double cutHills(double x, double y) { return hills(x, y) + 1.5 * std::sin(x / 17.0 + y / 23.0) - 0.4; }
double pile(double x, double y) { return 50.0 + std::max(0.0, 8.0 - 0.5 * std::hypot(x - 50.0, y - 50.0)); }
double flat(double, double) { return 50.0; }

using Boundary = std::vector<RangePoint>;

RangePoint vertex(double x, double y) { return {{}, y, x, 0.0}; }

struct Pair {
  std::string name;
  std::unique_ptr<Network> ground;
  std::unique_ptr<Network> design;  // none: against the level
  double level = 0.0;
  Boundary boundary;
};

void setBoundary(CEType& tin, Boundary& boundary) {
  std::vector<RangePoint*> pointers;
  for (RangePoint& p : boundary) pointers.push_back(&p);
  tin.setRangeList(pointers);
}

std::vector<Pair> pairs() {
  const Boundary rectangle{vertex(20, 20), vertex(85, 20), vertex(85, 70), vertex(20, 70)};
  const Boundary concave{vertex(10, 10), vertex(90, 15), vertex(55, 50), vertex(90, 90), vertex(12, 85)};
  const auto square = [](int count, std::uint64_t seed, const Terrain& terrain) {
    return networkOf(scattered(count, seed, 0, 0, 100, 100, terrain));
  };
  const auto far = [](const Terrain& terrain) {
    return [terrain](double x, double y) { return terrain(x - 38500000.0, y - 2500000.0); };
  };
  std::vector<Pair> all;
  const auto add = [&all](std::string name, std::unique_ptr<Network> ground, std::unique_ptr<Network> design) {
    all.push_back({std::move(name), std::move(ground), std::move(design), 0.0, {}});
  };
  add("two surveys of 500 points", square(500, 1, hills), square(500, 2, cutHills));
  add("two surveys of 5,000 points", square(5000, 3, hills), square(5000, 4, cutHills));
  add("the same, within a rectangle", square(5000, 3, hills), square(5000, 4, cutHills));
  all.back().boundary = rectangle;
  add("the same, within a concave boundary", square(5000, 3, hills), square(5000, 4, cutHills));
  all.back().boundary = concave;
  add("5,000 points against a platform of 4", square(5000, 5, hills), networkOf(scattered(4, 6, 30, 30, 40, 40, flat)));
  add("a stockpile against its base of 4", square(2000, 7, pile), square(4, 8, flat));
  add("grids of 1 m, one turned", networkOf(gridded(71, 1.0, 0.0, hills)), networkOf(gridded(71, 1.0, 0.3, cutHills)));
  add("a corridor of 8 m across the site", square(5000, 9, hills),
      networkOf(scattered(400, 10, 0, 46, 100, 8, cutHills)));
  add("half overlapping", square(2000, 11, hills), networkOf(scattered(2000, 12, 50, 30, 100, 100, cutHills)));
  add("raised by 1 m", square(2000, 13, hills), square(2000, 13, [](double x, double y) { return hills(x, y) + 1.0; }));
  add("at easting 38,500,000", networkOf(scattered(2000, 14, 38500000, 2500000, 100, 100, far(hills))),
      networkOf(scattered(2000, 15, 38500000, 2500000, 100, 100, far(cutHills))));
  add("5,000 points against a level, within a rectangle", square(5000, 16, hills), nullptr);
  all.back().level = 50.0;
  all.back().boundary = rectangle;
  add("5,000 points against a level, within a concave boundary", square(5000, 17, hills), nullptr);
  all.back().level = 50.0;
  all.back().boundary = concave;
  add("200,000 rough points against a level, within a rectangle",
      square(200000, 18,
             [](double x, double y) { return hills(x, y) + 0.3 * std::sin(40.0 * x) * std::sin(37.0 * y); }),
      nullptr);
  all.back().level = 50.0;
  all.back().boundary = rectangle;
  return all;
}

struct Volumes {
  double fill;
  double cut;
};

Volumes volumesOf(FillCutResult* result) {
  const std::unique_ptr<FillCutResult> owned(result);
  return {owned->getFillVolume(), owned->getCutVolume()};
}

void print(Pair& pair) {
  CEType& ground = *pair.ground->tin;
  setBoundary(ground, pair.boundary);
  CEType* design = pair.design == nullptr ? nullptr : pair.design->tin.get();
  const Volumes exact = volumesOf(design ? ground.getFillCutExact(design) : ground.getFillCutExact(pair.level));
  const Volumes sampled = volumesOf(design ? ground.getFillCut(design) : ground.getFillCut(pair.level));
  const double off = std::fabs(sampled.fill - exact.fill) + std::fabs(sampled.cut - exact.cut);
  std::printf("| %s | %.3f | %.3f | %.3f | %.3f | %.3f %% |\n", pair.name.c_str(), exact.fill, exact.cut, sampled.fill,
              sampled.cut, 100.0 * off / (exact.fill + exact.cut));
}

}  // namespace

int main() {
  std::printf("| surfaces | fill, exact | cut, exact | fill, sampled | cut, sampled | off |\n");
  std::printf("|---|--:|--:|--:|--:|--:|\n");
  for (Pair& pair : pairs()) print(pair);
  return 0;
}
