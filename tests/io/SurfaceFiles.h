// Files and surfaces for the tests of this room: a folder that goes with the test, blocks of a surface file made by
// hand, and everything that a host may do with a surface that was loaded.
#pragma once

#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <OrvikDTMAlgorithm/io/DTMFileOperation.h>
#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/surface/RangePoint.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <gtest/gtest.h>

#include "surface/Surfaces.h"

using Block = std::vector<unsigned char>;

class InFolder : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = std::filesystem::temp_directory_path() / ("orvikdtm-io-" + std::to_string(std::random_device()()));
    std::filesystem::create_directories(folder_);
  }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  std::string path(const std::string& name) const { return (folder_ / name).string(); }

  std::string write(const std::string& name, const Block& contents) const {
    std::ofstream(path(name), std::ios::binary)
        .write(reinterpret_cast<const char*>(contents.data()), static_cast<std::streamsize>(contents.size()));
    return path(name);
  }
  std::string write(const std::string& name, const std::string& contents) const {
    return write(name, Block(contents.begin(), contents.end()));
  }

  static Block bytesOf(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    const std::string contents = text.str();
    return Block(contents.begin(), contents.end());
  }

  std::filesystem::path folder_;
};

inline Block saved(DTMSurface& surface) {
  Block file = {'D', 'T', 'M', 0, 1};
  const Block block = surface.toBytes();
  file.insert(file.end(), block.begin(), block.end());
  return file;
}

inline bool load(DTMSurface& surface, const Block& block, int version = 1) {
  Block exact(block);
  exact.shrink_to_fit();  // sanitizers see what lies behind it
  return surface.tryParse(exact.data(), version, static_cast<int>(exact.size()));
}

// A block's number at an offset replaced.
inline void putInt32(Block& block, std::size_t offset, std::int32_t v) {
  for (std::size_t i = 0; i < 4; ++i) {
    block[offset + i] = static_cast<unsigned char>(static_cast<std::uint32_t>(v) >> (8 * (3 - i)));
  }
}

// What a host does with a surface; whatever the file holds, it must come to an end and touch nothing but the surface.
inline void useEverything(DTMSurface& surface) {
  CEType* tin = surface.getCEType();
  volatile double sum = surface.getTwoDArea() + surface.getRangeMinX() + surface.getMaxElev();
  double z = 0;
  for (int i = 0; i < 50; ++i) {
    if (surface.checkSurfacePoint(195.0 + 0.5 * i, 98.0 + 0.3 * i, &z) == 1) sum = sum + z;
  }
  const std::unique_ptr<FillCutResult> volume(surface.getFillCut(15.5));
  if (volume != nullptr) sum = sum + volume->getCutVolume();
  if (tin != nullptr) sum = sum + tin->getMeasures().area3D + static_cast<double>(tin->getOriginalList().size());
  const std::string text = surface.toString();
  const Block again = surface.toBytes();
  OwnedSurface reloaded;
  ASSERT_TRUE(load(reloaded, again));
  ASSERT_EQ(again, reloaded.toBytes());
}
