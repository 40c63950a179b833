#include <algorithm>
#include <cmath>
#include <string>

#include <gtest/gtest.h>

#include "Meshes.h"
#include "pictures/Model3D.h"

namespace {

// The lengths, in bytes, of what stands in base64 behind each occurrence of the key.
std::vector<std::size_t> bytesBehind(const std::string& model, const std::string& key) {
  std::vector<std::size_t> lengths;
  const std::string start = "\"" + key + "\":\"";
  for (std::size_t at = model.find(start); at != std::string::npos; at = model.find(start, at + 1)) {
    const std::size_t begin = at + start.size();
    const std::size_t end = model.find('"', begin);
    const std::string text = model.substr(begin, end - begin);
    lengths.push_back(text.size() / 4 * 3 - static_cast<std::size_t>(std::count(text.begin(), text.end(), '=')));
  }
  return lengths;
}

struct Counts {
  std::size_t points;
  std::size_t triangles = 0;
};

// Of the ground; the reference comes last.
Counts countsOf(const std::string& model) {
  constexpr std::size_t kBytes = 6;  // three numbers of 16 bits
  std::vector<std::size_t> triangles = bytesBehind(model, "triangles");
  triangles.pop_back();
  Counts counts{bytesBehind(model, "positions").front() / kBytes};
  for (const std::size_t bytes : triangles) counts.triangles += bytes / kBytes;
  return counts;
}

double waves(double x, double y) { return 6.0 * std::sin(x / 9.0) + 4.0 * std::cos(y / 13.0); }

TEST(Model, OfASmallSurfaceHasEveryTriangle) {
  std::mt19937 random(1);
  const meshes::Terrain ground = meshes::scattered(random, 400, 0.0, 0.0, 100.0, waves);
  const pictures::FillCutScene scene = pictures::fillCutScene(*ground.tin, nullptr, -100.0);
  const Counts counts = countsOf(pictures::modelOf(scene));
  EXPECT_GE(counts.triangles, scene.ground.triangles.size());
  EXPECT_GE(counts.points, scene.ground.points.size());
}

TEST(Model, OfALargeSurfaceIsThinnedToWhatABrowserTakes) {
  std::mt19937 random(2);
  const meshes::Terrain ground = meshes::scattered(random, 60000, 0.0, 0.0, 1000.0, waves);
  const Counts counts = countsOf(pictures::modelOf(pictures::fillCutScene(*ground.tin, nullptr, 0.0)));
  EXPECT_LE(counts.triangles, 60000U);
  EXPECT_LE(counts.points, 65535U);
  EXPECT_GT(counts.triangles, 20000U);
}

TEST(Model, OfSurfacesThatDoNotMeetIsEmpty) {
  std::mt19937 random(3);
  const meshes::Terrain ground = meshes::scattered(random, 20, 0.0, 0.0, 100.0, waves);
  const meshes::Terrain far = meshes::scattered(random, 20, 500.0, 0.0, 100.0, waves);
  const Counts counts = countsOf(pictures::modelOf(pictures::fillCutScene(*ground.tin, far.tin.get(), 0.0)));
  EXPECT_EQ(counts.triangles, 0U);
}

}  // namespace
