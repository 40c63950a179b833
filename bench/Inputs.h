// The point clouds that everything is measured on. Each is made from its own seed, so that every run and every machine
// measures the same millimetres; z is a smooth terrain over x and y.
#pragma once

#include <array>
#include <string>
#include <vector>

#include <OrvikDTMAlgorithm/tin/TPoint.h>

namespace bench {

using Cloud = std::vector<TPoint>;

// The cloud of that name, made at each call; throws std::out_of_range for a name that is none.
//
//   uniform_<10k|100k|200k|500k|1m>   random positions on 1 km x 1 km; without a suffix any road may be taken
//   uniform_<10k|100k|200k>_sweep     with a seed on which the radial sweep stays valid, so its result is what is built
//   uniform_<100k>_exact              with a seed on which it does not, so the points are triangulated again, exactly
//   changed_<100k|1m>                 other random positions on the same square, on terrain that has been filled and
//   cut uniform_1m_offset                 uniform_1m moved by (500000, 3000000) grid_1m, grid_1m_rotated          1000
//   x 1000 at 1 m; turned by 0.3 rad and rounded to millimetres scan_lines_1m                     1000 lines of 1000
//   points flown to and fro, with some jitter clusters_1m                       1000 gaussian clusters of 1000 points
//   collinear_100k_apex               100,000 points on one sloping line, and one point off it
//   repeats_1m                        random positions, every twentieth of them a position that came before
Cloud makeCloud(const std::string& name);

// The same, made once and kept.
const Cloud& cloudNamed(const std::string& name);

// A copy of a cloud that a construction may change, and the pointers that it takes.
struct Survey {
  explicit Survey(Cloud cloud);
  Survey(const Survey&) = delete;
  Survey& operator=(const Survey&) = delete;

  Cloud points;
  std::vector<TPoint*> pointers;
};

// The inputs of a million points.
inline constexpr std::array<const char*, 7> kMillions = {
    "uniform_1m", "uniform_1m_offset", "grid_1m", "grid_1m_rotated", "scan_lines_1m", "clusters_1m", "repeats_1m"};

// All others on which a construction is timed.
inline constexpr std::array<const char*, 5> kSmaller = {"uniform_10k_sweep", "uniform_100k_sweep", "uniform_100k_exact",
                                                        "uniform_200k_sweep", "collinear_100k_apex"};

}  // namespace bench
