// Surface files: every byte of them, what loading replaces and what a failure leaves, folders of files.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <locale>

#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/TList.h>

#include "io/SurfaceFiles.h"

#if !defined(_WIN32)
#include <sys/stat.h>
#endif

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kHead = 80;
constexpr std::size_t kPoint = 48;

class SurfaceFile : public InFolder {};

std::string textAt(const Block& block, std::size_t offset, std::size_t length) {
  return std::string(block.begin() + static_cast<std::ptrdiff_t>(offset),
                     block.begin() + static_cast<std::ptrdiff_t>(offset + length));
}

std::string padded(std::string text) {
  text.resize(24, '\0');
  return text;
}

// The surface that most tests save: four points, two triangles.
OwnedSurface& built(OwnedSurface& surface) {
  EXPECT_NE(nullptr, surface.getCEType());
  return surface;
}

void releaseAll(const std::vector<SurfacePoint*>& points) {
  for (const SurfacePoint* point : points) delete point;
}

// ---- saving

TEST_F(SurfaceFile, AnEmptySurfaceTakes85Bytes) {
  OwnedSurface surface;
  surface.setSurfaceName("S");
  ASSERT_TRUE(DTMFileOperation().saveSurfaces(path("a.ttin").c_str(), &surface));
  Block expected(85, 0);
  std::memcpy(expected.data(), "DTM\0\1S", 6);
  EXPECT_EQ(expected, bytesOf(path("a.ttin")));
}

TEST_F(SurfaceFile, EveryByteOfTheHeadAndThePoints) {
  OwnedSurface surface;
  surface.setSurfaceName("Quarry");
  surface.setSurfacePoints({newPoint("P1", {1.0, 2.0, -0.0}), newPoint("", {-2.0, 0.5, 3.0})});
  const Block block = surface.toBytes();
  ASSERT_EQ(kHead + 2 * kPoint, block.size());
  EXPECT_EQ(padded("Quarry"), textAt(block, 0, 24));
  EXPECT_EQ(std::string("\0\0\0\2\0\0\0\0", 8), textAt(block, 24, 8));
  EXPECT_EQ(std::string(48, '\0'), textAt(block, 32, 48)) << "two points have no statistics";
  EXPECT_EQ(padded("P1"), textAt(block, 80, 24));
  EXPECT_EQ(std::string("\x40\0\0\0\0\0\0\0", 8), textAt(block, 104, 8)) << "northing first";
  EXPECT_EQ(std::string("\x3F\xF0\0\0\0\0\0\0", 8), textAt(block, 112, 8));
  EXPECT_EQ(std::string("\x80\0\0\0\0\0\0\0", 8), textAt(block, 120, 8));
  EXPECT_EQ(padded(" "), textAt(block, 128, 24));
}

TEST_F(SurfaceFile, StatisticsStandInOrder) {
  OwnedSurface surface(risingSquare());
  const Block block = built(surface).toBytes();
  double values[6];
  for (std::size_t i = 0; i < 6; ++i) {
    std::uint64_t bits = 0;
    for (std::size_t k = 0; k < 8; ++k) bits = bits << 8 | block[32 + 8 * i + k];
    std::memcpy(&values[i], &bits, 8);
  }
  const double expected[] = {surface.getTwoDArea(), surface.getThreeDArea(),    surface.getMinElev(),
                             surface.getMaxElev(),  surface.getPerimeterTwoD(), surface.getPerimeterThreeD()};
  EXPECT_TRUE(std::equal(values, values + 6, expected));
  EXPECT_EQ(100.0, values[0]);
  EXPECT_EQ(std::string("\0\0\0\4\0\0\0\2", 8), textAt(block, 24, 8));
  const Block tin = surface.getCEType()->getBytes();
  EXPECT_EQ(tin, Block(block.begin() + kHead + 4 * kPoint, block.end()));
}

TEST_F(SurfaceFile, AnEmptyNameIsABlank) {
  OwnedSurface surface;
  surface.setSurfaceName("");
  const Block block = surface.toBytes();
  EXPECT_EQ(padded(" "), textAt(block, 0, 24));
  OwnedSurface read;
  ASSERT_TRUE(load(read, block));
  EXPECT_STREQ(" ", read.getSurfaceName());
}

TEST_F(SurfaceFile, WhatStandsBehindTheEndOfANameIsNotWritten) {
  OwnedSurface surface;
  std::memset(surface.getSurfaceName(), 'x', 24);
  EXPECT_EQ(std::string(24, 'x'), textAt(surface.toBytes(), 0, 24)) << "no end within the buffer";
  std::memcpy(surface.getSurfaceName(), "ab\0cd", 5);
  EXPECT_EQ(padded("ab"), textAt(surface.toBytes(), 0, 24));
}

TEST_F(SurfaceFile, ABuiltTinIsSavedAlthoughNobodyAskedForIt) {
  OwnedSurface surface(risingSquare());
  ASSERT_TRUE(DTMFileOperation().saveSurfaces(path("a.ttin").c_str(), &surface));
  OwnedSurface read;
  ASSERT_TRUE(DTMFileOperation().loadSurface(path("a.ttin").c_str(), 0, &read));
  EXPECT_EQ(2, read.getTrianglesNumber());
  EXPECT_FALSE(read.isNeedInit());
}

TEST_F(SurfaceFile, SavedAsItsBytes) {
  OwnedSurface surface(scattered(2000));
  ASSERT_TRUE(DTMFileOperation().saveSurfaces(path("a.ttin").c_str(), &surface));
  EXPECT_EQ(saved(surface), bytesOf(path("a.ttin")));
  EXPECT_EQ(1, std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
}

TEST_F(SurfaceFile, WhatCannotBeSaved) {
  OwnedSurface surface(risingSquare());
  DTMFileOperation files;
  EXPECT_FALSE(files.saveSurfaces(path("a.ttin").c_str(), nullptr));
  EXPECT_FALSE(fs::exists(path("a.ttin")));
  EXPECT_FALSE(files.saveSurfaces(nullptr, &surface));
  EXPECT_FALSE(files.saveSurfaces(path("absent/a.ttin").c_str(), &surface));
  EXPECT_FALSE(files.saveSurfaces(folder_.c_str(), &surface));
  EXPECT_FALSE(files.saveSurfaces("/dev/full", &surface)) << "it was opened, and that was all";
}

TEST_F(SurfaceFile, NullRecordsAreNoPoints) {
  OwnedSurface surface;
  surface.setSurfacePoints({nullptr, newPoint("P", {1, 2, 3})});
  const Block block = surface.toBytes();
  EXPECT_EQ(kHead + kPoint, block.size());
  EXPECT_EQ(std::string("\0\0\0\1", 4), textAt(block, 24, 4));
  EXPECT_EQ("Site,0,0,0,0,0,0,0,P,2.000000,1.000000,3.000000,", surface.toString());
}

// ---- loading

TEST_F(SurfaceFile, ComesBackWhole) {
  for (const auto& positions : {scattered(3), scattered(50), scattered(700), risingSquare()}) {
    OwnedSurface surface(positions);
    const Block block = built(surface).toBytes();
    OwnedSurface read;
    ASSERT_TRUE(load(read, block));
    EXPECT_STREQ("Site", read.getSurfaceName());
    EXPECT_EQ(namesOf(surface), namesOf(read));
    EXPECT_FALSE(read.isNeedInit());
    for (std::size_t i = 0; i < positions.size(); ++i) {
      EXPECT_TRUE(surface.getSurfacePoints()[i]->isSame(read.getSurfacePoints()[i]));
      EXPECT_STREQ("Site", read.getSurfacePoints()[i]->getSurfaceName());
    }
    EXPECT_EQ(surface.getRangeMinX(), read.getRangeMinX());
    EXPECT_EQ(surface.getRangeMaxX(), read.getRangeMaxX());
    EXPECT_EQ(surface.getRangeMinY(), read.getRangeMinY());
    EXPECT_EQ(surface.getRangeMaxY(), read.getRangeMaxY());
    EXPECT_EQ(surface.getThreeDArea(), read.getThreeDArea());
    EXPECT_EQ(surface.getPerimeterThreeD(), read.getPerimeterThreeD());
    EXPECT_EQ(surface.toString(), read.toString());
    EXPECT_EQ(block, read.toBytes());
    useEverything(read);
  }
}

TEST_F(SurfaceFile, AnyNumbersComeBackByteForByte) {
  std::mt19937_64 random(9);
  for (int i = 0; i < 200; ++i) {
    const int points = static_cast<int>(random() % 5);
    Block block(kHead + kPoint * static_cast<std::size_t>(points) + 12 + 56 * 3 + 12 * 2 + 4 * 3);
    for (unsigned char& byte : block) byte = static_cast<unsigned char>(random());
    putInt32(block, 24, points);
    const std::size_t tin = kHead + kPoint * static_cast<std::size_t>(points);
    const std::int32_t counts[] = {3, 3, 2};
    for (std::size_t k = 0; k < 3; ++k) putInt32(block, tin + 4 * k, counts[k]);
    for (std::size_t at = 0; at < tin; at += at == 0 ? kHead : kPoint) {
      std::fill_n(block.begin() + static_cast<std::ptrdiff_t>(at), 24, static_cast<unsigned char>(0));
      block[at] = 'n';
    }
    OwnedSurface read;
    ASSERT_TRUE(load(read, block));
    ASSERT_EQ(block, read.toBytes());
    useEverything(read);
  }
}

// Points, edges and triangles of many megabytes each, every number at random.
Block largeBlock() {
  constexpr std::int32_t kPoints = 150000;
  constexpr std::int32_t kHull = 1000;
  constexpr std::int32_t kEdges = 200000;
  constexpr std::int32_t kTriangles = 500000;
  const std::size_t tin = kHead + kPoint * kPoints;
  Block block(tin + 12 + 4 * kHull + 56 * kEdges + 12 * kTriangles);
  std::mt19937_64 random(21);
  for (std::size_t at = 0; at + 8 <= block.size(); at += 8) {
    const std::uint64_t bits = random();
    std::memcpy(block.data() + at, &bits, sizeof bits);
  }
  for (std::size_t at = 0; at < tin; at += at == 0 ? kHead : kPoint) {
    std::fill_n(block.begin() + static_cast<std::ptrdiff_t>(at), 24, static_cast<unsigned char>(0));
    block[at] = 'n';
  }
  putInt32(block, 24, kPoints);
  const std::int32_t counts[] = {kHull, kEdges, kTriangles};
  for (std::size_t k = 0; k < 3; ++k) putInt32(block, tin + 4 * k, counts[k]);
  return block;
}

TEST_F(SurfaceFile, LargeFilesComeBackByteForByte) {
  const Block block = largeBlock();
  Block file = {'D', 'T', 'M', 0, 1};
  file.insert(file.end(), block.begin(), block.end());
  OwnedSurface read;
  ASSERT_TRUE(DTMFileOperation().loadSurface(write("a.ttin", file).c_str(), 0, &read));
  EXPECT_EQ(block, read.toBytes());

  file.pop_back();
  OwnedSurface cut;
  ASSERT_TRUE(DTMFileOperation().loadSurface(write("cut.ttin", file).c_str(), 0, &cut));
  EXPECT_EQ(150000, cut.getPointsNumber());
  EXPECT_TRUE(cut.isNeedInit()) << "a TIN that is cut short is none";
}

TEST_F(SurfaceFile, ACallersBytesAreLeftAsTheyAre) {
  const Block block = largeBlock();
  const Block same = block;
  OwnedSurface read;
  ASSERT_TRUE(read.tryParse(same.data(), 1, static_cast<int>(same.size())));
  EXPECT_EQ(block, same);
  EXPECT_EQ(block, read.toBytes());
}

TEST_F(SurfaceFile, TheMagicIsNotCompared) {
  OwnedSurface surface(risingSquare());
  Block file = saved(surface);
  std::memcpy(file.data(), "xyz", 3);
  OwnedSurface read;
  EXPECT_TRUE(DTMFileOperation().loadSurface(write("a.ttin", file).c_str(), 0, &read));
  EXPECT_EQ(4, read.getPointsNumber());
}

TEST_F(SurfaceFile, OtherVersionsHoldNoTin) {
  OwnedSurface surface(risingSquare());
  const Block block = built(surface).toBytes();
  for (const int version : {0, 2, 256, 65535}) {
    OwnedSurface read;
    read.setRangeMinX(-7.0);
    read.setRangeMaxY(9.0);
    ASSERT_TRUE(load(read, block, version)) << version;
    EXPECT_EQ(4, read.getPointsNumber());
    EXPECT_EQ(100.0, read.getTwoDArea());
    EXPECT_EQ(-7.0, read.getRangeMinX());
    EXPECT_EQ(9.0, read.getRangeMaxY());
    EXPECT_TRUE(read.isNeedInit());
    EXPECT_NE(nullptr, read.getCEType());
  }
  Block file = saved(surface);
  file[3] = 1;  // version 257
  OwnedSurface read;
  ASSERT_TRUE(DTMFileOperation().loadSurface(write("a.ttin", file).c_str(), 0, &read));
  EXPECT_TRUE(read.isNeedInit());
}

TEST_F(SurfaceFile, WithoutATinItIsRebuiltFromThePoints) {
  OwnedSurface surface(risingSquare());
  const Block whole = built(surface).toBytes();
  const std::size_t tin = kHead + 4 * kPoint;
  for (const std::size_t length : {tin, tin + 1, tin + 12, whole.size() - 1}) {
    OwnedSurface read;
    read.setRangeMinX(-7.0);
    ASSERT_TRUE(load(read, Block(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length))));
    EXPECT_TRUE(read.isNeedInit());
    EXPECT_EQ(0.0, read.getRangeMinX());
    EXPECT_EQ(0.0, read.getRangeMaxY());
    EXPECT_EQ(100.0, read.getTwoDArea()) << "as in the file";
    ASSERT_NE(nullptr, read.getCEType());
    EXPECT_EQ(whole, read.toBytes());
    EXPECT_EQ(110.0, read.getRangeMaxX());
  }
}

TEST_F(SurfaceFile, AnEmptyTinIsATin) {
  Block block = OwnedSurface().toBytes();
  block.insert(block.end(), 12, 0);
  OwnedSurface read;
  ASSERT_TRUE(load(read, block));
  EXPECT_FALSE(read.isNeedInit());
  EXPECT_EQ(block, read.toBytes());
}

TEST_F(SurfaceFile, BytesBehindTheTinAreIgnored) {
  OwnedSurface surface(risingSquare());
  const Block block = built(surface).toBytes();
  Block longer = block;
  longer.insert(longer.end(), 1000, 0xAB);
  OwnedSurface read;
  ASSERT_TRUE(load(read, longer));
  EXPECT_EQ(block, read.toBytes());
}

TEST_F(SurfaceFile, NamesAreCutAfter23Bytes) {
  Block block = OwnedSurface().toBytes();
  block.resize(kHead + kPoint, 0);
  putInt32(block, 24, 1);
  std::fill_n(block.begin(), 24, static_cast<unsigned char>('s'));
  std::fill_n(block.begin() + kHead, 24, static_cast<unsigned char>('p'));
  OwnedSurface read;
  ASSERT_TRUE(load(read, block));
  EXPECT_EQ(std::string(23, 's'), read.getSurfaceName());
  EXPECT_EQ(std::string(23, 's'), read.getSurfacePoints()[0]->getSurfaceName());
  EXPECT_EQ(std::string(23, 'p'), read.getSurfacePoints()[0]->getSurfacePointName());
}

TEST_F(SurfaceFile, LoadingReplacesPointsAndTin) {
  OwnedSurface other(scattered(20));
  const Block block = built(other).toBytes();
  OwnedSurface surface(risingSquare());
  const std::vector<SurfacePoint*> before = surface.getSurfacePoints();
  surface.getCEType();
  ASSERT_TRUE(load(surface, block));
  EXPECT_EQ(20, surface.getPointsNumber());
  EXPECT_EQ(block, surface.toBytes());
  EXPECT_STREQ("P1", before[0]->getSurfacePointName()) << "the records are not released";
  releaseAll(before);

  OwnedSurface again(risingSquare());
  const std::vector<SurfacePoint*> replaced = again.getSurfacePoints();
  built(again);
  ASSERT_TRUE(load(again, block, 2));
  EXPECT_TRUE(again.isNeedInit()) << "the old TIN is that of other points";
  EXPECT_EQ(110.0, again.getRangeMaxX()) << "the extent stays";
  releaseAll(replaced);
}

// The state of a surface with its TIN, that a read leaves as it was: told through pointers, so that records and TIN are
// the same.
std::string stateOf(DTMSurface& surface) {
  std::ostringstream text;
  text << surface.getCEType() << surface.toString() << surface.getRangeMinX() << ' ' << surface.getRangeMaxX() << ' '
       << surface.getRangeMinY() << ' ' << surface.getRangeMaxY();
  for (const SurfacePoint* point : surface.getSurfacePoints()) text << ' ' << point;
  return text.str();
}

// What an empty surface's block may be followed by: nothing, a TIN without elements, one that is cut short, one
// triangle.
std::vector<Block> blocksWithoutPoints() {
  OwnedSurface empty;
  empty.setSurfaceName("Empty");
  Block block = empty.toBytes();
  block[32] = 0x40;  // a plan area of 7.0
  block[33] = 0x1C;
  Block withEmptyTIN = block;
  withEmptyTIN.insert(withEmptyTIN.end(), 12, 0);
  Block withCutTIN = block;
  withCutTIN.insert(withCutTIN.end(), 12, 1);
  OwnedSurface triangle({{0, 0, 1}, {10, 0, 2}, {0, 10, 3}});
  Block withTIN = block;
  const Block tin = built(triangle).getCEType()->getBytes();
  withTIN.insert(withTIN.end(), tin.begin(), tin.end());
  return {block, withEmptyTIN, withCutTIN, withTIN};
}

Block fileOf(const Block& block, int version) {
  Block file(5 + block.size());
  std::memcpy(file.data(), "DTM", 3);
  file[4] = static_cast<unsigned char>(version);
  std::copy(block.begin(), block.end(), file.begin() + 5);
  return file;
}

TEST_F(SurfaceFile, AFileWithoutPointsLeavesASurfaceThatHasSome) {
  DTMFileOperation files;
  for (const Block& block : blocksWithoutPoints()) {
    for (const int version : {1, 2}) {
      const std::string file = write("empty.ttin", fileOf(block, version));
      OwnedSurface surface(risingSquare());
      const std::string before = stateOf(surface);
      EXPECT_TRUE(files.loadSurface(file.c_str(), 0, &surface));
      EXPECT_EQ(before, stateOf(surface));

      OwnedSurface fresh(risingSquare());
      EXPECT_TRUE(files.loadSurface(file.c_str(), 0, &fresh));
      EXPECT_TRUE(fresh.isNeedInit()) << "no TIN comes from elsewhere";
      double z = 0.0;
      EXPECT_EQ(1, fresh.checkSurfacePoint(205, 105, &z));
      EXPECT_EQ(15.5, z);

      OwnedSurface edited(risingSquare());
      edited.addSurfacePoint(newPoint("Q", {300, 205, 99}), 4);
      EXPECT_TRUE(files.loadSurface(file.c_str(), 0, &edited));
      EXPECT_FALSE(edited.isNeedInit()) << "the promised TIN";
      EXPECT_EQ(5, edited.getPointsNumber());
      EXPECT_EQ(300.0, edited.getRangeMaxX());

      OwnedSurface none;
      EXPECT_TRUE(files.loadSurface(file.c_str(), 0, &none));
      EXPECT_STREQ("Empty", none.getSurfaceName());
      EXPECT_EQ(7.0, none.getTwoDArea());
    }
  }
}

TEST_F(SurfaceFile, AFileWithoutPointsLeavesACallersArray) {
  SurfacePoint array[3];
  OwnedSurface surface;
  surface.updateDTMSurface(3, array);
  const std::string file = write("empty.ttin", fileOf(blocksWithoutPoints().front(), 1));
  EXPECT_TRUE(DTMFileOperation().loadSurface(file.c_str(), 0, &surface));
  EXPECT_EQ(1, surface.deleteSurfacePoint(0, 1)) << "and its record is not released";
  EXPECT_EQ(2, surface.getPointsNumber());
  surface.release();
}

TEST_F(SurfaceFile, ABlockWithoutPointsLeavesThePoints) {
  for (const int version : {1, 2}) {
    for (const Block& block : blocksWithoutPoints()) {
      OwnedSurface surface(risingSquare());
      const std::vector<SurfacePoint*> before = surface.getSurfacePoints();
      CEType* tin = surface.getCEType();
      ASSERT_TRUE(load(surface, block, version));
      EXPECT_EQ(before, surface.getSurfacePoints());
      EXPECT_STREQ("Empty", surface.getSurfaceName());
      EXPECT_EQ(7.0, surface.getTwoDArea());
      EXPECT_TRUE(version == 1 || tin == surface.getCEType()) << "still that of the points";
    }
  }
  OwnedSurface surface(risingSquare());
  built(surface);
  ASSERT_TRUE(load(surface, blocksWithoutPoints().front()));
  EXPECT_TRUE(surface.isNeedInit());
  EXPECT_EQ(2, built(surface).getTrianglesNumber()) << "built from the points that stayed";
}

TEST_F(SurfaceFile, ATruncatedFileLoadsOrLeavesTheSurface) {
  OwnedSurface other(scattered(6));
  other.setSurfaceName("Other");
  const Block whole = saved(built(other));
  const std::size_t shortest = 5 + kHead + 6 * kPoint;
  OwnedSurface kept(risingSquare());
  const std::string before = stateOf(kept);
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const std::string file =
        write("cut.ttin", Block(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)));
    if (length < shortest) {
      ASSERT_FALSE(DTMFileOperation().loadSurface(file.c_str(), 0, &kept)) << length;
      ASSERT_EQ(before, stateOf(kept)) << length;
      continue;
    }
    OwnedSurface surface(risingSquare());
    const std::vector<SurfacePoint*> replaced = surface.getSurfacePoints();
    built(surface);
    ASSERT_TRUE(DTMFileOperation().loadSurface(file.c_str(), 0, &surface)) << length;
    ASSERT_EQ(length < whole.size(), surface.isNeedInit()) << length;
    ASSERT_EQ(whole, saved(surface)) << length;
    releaseAll(replaced);
  }
}

TEST_F(SurfaceFile, CountsThatDoNotFitLeaveTheSurface) {
  OwnedSurface other(scattered(6));
  other.setSurfaceName("Other");
  const Block good = built(other).toBytes();
  OwnedSurface kept(risingSquare());
  const std::string before = stateOf(kept);
  for (const std::int32_t count : {-1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), 44'739'243,
                                   static_cast<std::int32_t>((good.size() - kHead) / kPoint + 1)}) {
    Block bad = good;
    putInt32(bad, 24, count);
    for (const int version : {1, 2}) {
      EXPECT_FALSE(DTMFileOperation().loadSurface(write("bad.ttin", fileOf(bad, version)).c_str(), 0, &kept)) << count;
      EXPECT_EQ(before, stateOf(kept)) << count;
    }
  }
}

TEST_F(SurfaceFile, ACallersArrayIsForgotten) {
  OwnedSurface other(scattered(5));
  const Block block = other.toBytes();
  SurfacePoint array[3];
  OwnedSurface surface;
  surface.updateDTMSurface(3, array);
  ASSERT_TRUE(load(surface, block));
  EXPECT_EQ(5, surface.getPointsNumber());
  EXPECT_EQ(1, surface.deleteSurfacePoint(0, 1)) << "and its record is released";
}

TEST_F(SurfaceFile, APromisedTinIsKeptWhereSomethingOfItStays) {
  OwnedSurface other(scattered(20));
  const Block block = built(other).toBytes();
  for (const int version : {1, 2}) {
    OwnedSurface surface(risingSquare());
    surface.addSurfacePoint(newPoint("Q", {300, 205, 99}), 4);
    const std::vector<SurfacePoint*> replaced = surface.getSurfacePoints();
    ASSERT_TRUE(load(surface, block, version));
    EXPECT_EQ(version == 1 ? other.getRangeMaxX() : 300.0, surface.getRangeMaxX());
    EXPECT_EQ(other.getMaxElev(), surface.getMaxElev());
    EXPECT_EQ(version != 1, surface.isNeedInit());
    releaseAll(replaced);
  }
  OwnedSurface edited(risingSquare());
  edited.addSurfacePoint(newPoint("Q", {300, 205, 99}), 4);
  Block broken = block;
  putInt32(broken, 24, -1);
  ASSERT_FALSE(load(edited, broken));
  EXPECT_FALSE(edited.isNeedInit());
  EXPECT_EQ(300.0, edited.getRangeMaxX());
  EXPECT_EQ(other.getMaxElev(), edited.getMaxElev()) << "stored before the failure";
}

TEST_F(SurfaceFile, AFailureLeavesPointsAndTin) {
  OwnedSurface other(scattered(20));
  other.setSurfaceName("Other");
  const Block good = built(other).toBytes();
  const std::int32_t counts[] = {-1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), 44'739'243,
                                 static_cast<std::int32_t>((good.size() - kHead) / kPoint + 1)};
  for (const std::int32_t count : counts) {
    OwnedSurface surface(risingSquare());
    CEType* tin = surface.getCEType();
    Block bad = good;
    putInt32(bad, 24, count);
    EXPECT_FALSE(load(surface, bad)) << count;
    EXPECT_EQ(4, surface.getPointsNumber());
    EXPECT_EQ(tin, surface.getCEType());
    EXPECT_STREQ("Other", surface.getSurfaceName());
    EXPECT_EQ(other.getTwoDArea(), surface.getTwoDArea());
    EXPECT_EQ(other.getTrianglesNumber(), surface.getTrianglesNumber());
    EXPECT_EQ(110.0, surface.getRangeMaxX());
  }
  OwnedSurface surface(risingSquare());
  const Block before = built(surface).toBytes();
  for (const std::size_t length : {0u, 1u, 79u}) {
    EXPECT_FALSE(load(surface, Block(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(length))));
  }
  EXPECT_FALSE(surface.tryParse(nullptr, 1, 100));
  EXPECT_FALSE(surface.tryParse(good.data(), 1, -1));
  EXPECT_EQ(before, surface.toBytes());
}

TEST_F(SurfaceFile, WhatCannotBeLoaded) {
  OwnedSurface surface(risingSquare());
  const Block file = saved(surface);
  const Block before = surface.toBytes();
  DTMFileOperation files;
  const std::string good = write("a.ttin", file);
  EXPECT_FALSE(files.loadSurface(write("a.bin", file).c_str(), 0, &surface));
  EXPECT_FALSE(files.loadSurface(write("ttin", file).c_str(), 0, &surface));
  EXPECT_FALSE(files.loadSurface(write("a.ttin ", file).c_str(), 0, &surface)) << "the extension is that of the path";
  EXPECT_FALSE(files.loadSurface(path("absent.ttin").c_str(), 0, &surface));
  EXPECT_FALSE(files.loadSurface(write("empty.ttin", Block()).c_str(), 0, &surface));
  EXPECT_FALSE(files.loadSurface(write("four.ttin", Block(4)).c_str(), 0, &surface));
  EXPECT_FALSE(files.loadSurface(write("84.ttin", Block(84)).c_str(), 0, &surface));
  for (const int type : {-1, 1, 2, 3, 100}) EXPECT_FALSE(files.loadSurface(good.c_str(), type, &surface)) << type;
  EXPECT_FALSE(files.loadSurface(nullptr, 0, &surface));
  EXPECT_FALSE(files.loadSurface(good.c_str(), 0, nullptr));
  fs::create_directories(folder_ / "folder.ttin");
  EXPECT_FALSE(files.loadSurface(path("folder.ttin").c_str(), 0, &surface));
  EXPECT_EQ(before, surface.toBytes());
}

TEST_F(SurfaceFile, ExtensionsMatchInAnyCaseAndBlanksAreTrimmed) {
  OwnedSurface surface(risingSquare());
  const Block file = saved(surface);
  OwnedSurface read;
  DTMFileOperation files;
  EXPECT_TRUE(files.loadSurface(write("A.TTIN", file).c_str(), 0, &read));
  const std::vector<SurfacePoint*> first = read.getSurfacePoints();
  EXPECT_TRUE(files.loadSurface(("  " + write("b.ttin", file)).c_str(), 0, &read));
  EXPECT_NE(first, read.getSurfacePoints());
  releaseAll(first);
}

TEST_F(SurfaceFile, EveryTruncationLoadsOrFails) {
  OwnedSurface surface(risingSquare());
  const Block file = saved(surface);
  for (std::size_t length = 0; length <= file.size(); ++length) {
    OwnedSurface read;
    const Block cut(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length));
    const bool loaded = DTMFileOperation().loadSurface(write("cut.ttin", cut).c_str(), 0, &read);
    ASSERT_EQ(length >= 5 + kHead + 4 * kPoint, loaded) << length;
    useEverything(read);
  }
}

TEST_F(SurfaceFile, EveryCorruptByteLoadsOrFails) {
  OwnedSurface surface(risingSquare());
  const Block block = built(surface).toBytes();
  for (std::size_t at = 0; at < block.size(); ++at) {
    for (const int change : {0x01, 0x03, 0x40, 0x7F, 0x80, 0xFF}) {
      Block corrupt = block;
      corrupt[at] = static_cast<unsigned char>(corrupt[at] ^ change);
      OwnedSurface read;
      load(read, corrupt);
      useEverything(read);
    }
  }
}

TEST_F(SurfaceFile, BrokenNumbersNameNothing) {
  OwnedSurface surface(scattered(12));
  Block block = built(surface).toBytes();
  const CEType& tin = *surface.getCEType();
  const std::size_t hullAt = kHead + 12 * kPoint + 12;
  const std::size_t edgesAt = hullAt + 4 * static_cast<std::size_t>(tin.getCList()->getListLen());
  const std::size_t trianglesAt = edgesAt + 56 * static_cast<std::size_t>(tin.getEList()->getListLen());
  const std::size_t end = block.size();
  std::mt19937_64 random(6);
  for (int round = 0; round < 300; ++round) {
    Block broken = block;
    for (int k = 0; k < 4; ++k) {
      constexpr std::int32_t kNumbers[] = {
          0, -1, 1, 2, 99, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
      const std::int32_t number = kNumbers[random() % std::size(kNumbers)];
      const std::size_t edge = random() % static_cast<std::size_t>(tin.getEList()->getListLen());
      const std::size_t places[] = {hullAt + random() % (edgesAt - hullAt) / 4 * 4, edgesAt + 56 * edge,
                                    edgesAt + 56 * edge + 4, trianglesAt + random() % (end - trianglesAt) / 4 * 4};
      putInt32(broken, places[random() % 4], number);
    }
    OwnedSurface read;
    ASSERT_TRUE(load(read, broken));
    ASSERT_EQ(broken, read.toBytes());
    useEverything(read);
  }
}

// ---- folders

TEST_F(SurfaceFile, ListsTheFilesOfAFolder) {
  for (const char* name : {"a.ttin", "b.ttin", "C.TTIN", "d.ttin.bak", "ttin", "e.sjw"}) write(name, Block());
  fs::create_directories(folder_ / "sub.ttin");
  const std::string folder = folder_.string();
  DTMFileOperation files;
  std::vector<std::string> found = files.getSurfaceByPath(folder.c_str(), ".ttin");
  std::sort(found.begin(), found.end());
  EXPECT_EQ(
      (std::vector<std::string>{folder + "\\C.TTIN", folder + "\\a.ttin", folder + "\\b.ttin", folder + "\\sub.ttin"}),
      found);
  EXPECT_EQ(7u, files.getSurfaceByPath(folder.c_str(), "").size());
  EXPECT_TRUE(files.getSurfaceByPath(folder.c_str(), ".none").empty());
  EXPECT_TRUE(files.getSurfaceByPath(path("absent").c_str(), ".ttin").empty());
  EXPECT_TRUE(files.getSurfaceByPath(path("a.ttin").c_str(), ".ttin").empty());
  EXPECT_TRUE(files.getSurfaceByPath(nullptr, ".ttin").empty());
  EXPECT_TRUE(files.getSurfaceByPath(folder.c_str(), nullptr).empty());
}

TEST_F(SurfaceFile, ListsInTheOrderOfTheSystem) {
  for (int i = 0; i < 30; ++i) write(std::to_string(i * 7919 % 1000) + ".ttin", Block());
  std::vector<std::string> expected;
  for (const auto& entry : fs::directory_iterator(folder_)) {
    expected.push_back(folder_.string() + "\\" + entry.path().filename().string());
  }
  EXPECT_EQ(expected, DTMFileOperation().getSurfaceByPath(folder_.c_str(), ".ttin"));
}

TEST_F(SurfaceFile, ListedPathsAreLoadedSavedAndRemoved) {
  OwnedSurface surface(risingSquare());
  write("a.ttin", saved(surface));
  DTMFileOperation files;
  const std::vector<std::string> found = files.getSurfaceByPath(folder_.c_str(), ".ttin");
  ASSERT_EQ(1u, found.size());
  {
    OwnedSurface read;
    EXPECT_TRUE(files.loadSurface(found[0].c_str(), 0, &read));
    read.setSurfaceName("changed");
    EXPECT_TRUE(files.saveSurfaces(found[0].c_str(), &read));
    EXPECT_EQ(saved(read), bytesOf(path("a.ttin")));
  }
  EXPECT_TRUE(files.deleteSurface(found[0].c_str()));
  EXPECT_FALSE(fs::exists(path("a.ttin")));
  EXPECT_EQ(0, std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
}

TEST_F(SurfaceFile, Deletes) {
  DTMFileOperation files;
  EXPECT_TRUE(files.deleteSurface(write("a.ttin", Block()).c_str()));
  EXPECT_FALSE(fs::exists(path("a.ttin")));
  EXPECT_TRUE(files.deleteSurface(path("a.ttin").c_str())) << "there is none any more";
  EXPECT_TRUE(files.deleteSurface(path("absent/a.ttin").c_str()));
  EXPECT_FALSE(files.deleteSurface(folder_.c_str())) << "a folder is no file";
  EXPECT_TRUE(fs::exists(folder_));
  EXPECT_FALSE(files.deleteSurface(nullptr));
}

// A link is deleted itself, what it leads to stays; one that leads nowhere is no missing file.
TEST_F(SurfaceFile, DeletesLinks) {
  DTMFileOperation files;
  const std::string kept = write("kept.ttin", Block());
  const std::string link = path("link.ttin");
  for (const std::string& target : {kept, path("nowhere.ttin"), link}) {
    fs::create_symlink(target, link);
    EXPECT_TRUE(files.deleteSurface((folder_.string() + "\\link.ttin").c_str())) << target;
    EXPECT_FALSE(fs::is_symlink(link)) << target;
  }
  EXPECT_TRUE(fs::exists(kept));
#if !defined(_WIN32)
  const std::string pipe = path("pipe.ttin");
  ASSERT_EQ(0, mkfifo(pipe.c_str(), 0600));
  EXPECT_FALSE(files.deleteSurface(pipe.c_str())) << "a pipe is no surface's file, nor is a device";
  EXPECT_TRUE(fs::exists(pipe));
  const std::string withBackslash = path("a\\b.ttin");  // a name of its own, not a path
  fs::create_symlink("nowhere.ttin", withBackslash);
  EXPECT_TRUE(files.deleteSurface(withBackslash.c_str()));
  EXPECT_FALSE(fs::is_symlink(withBackslash));
#endif
}

// ---- text

TEST_F(SurfaceFile, AsText) {
  OwnedSurface surface;
  EXPECT_EQ("Site,0,0,0,0,0,0,0,", surface.toString());
  surface.setSurfacePoints({newPoint("P1", {1234567.891, -0.0, 0.5})});
  surface.setTrianglesNumber(-3);
  surface.setTwoDArea(1234567.0);
  surface.setMinElev(0.1);
  EXPECT_EQ("Site,-3,1.23457e+06,0,0.1,0,0,0,P1,0.000000,1234567.891000,0.500000,", surface.toString());
}

// ---- locale

struct CommaDecimals : std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST_F(SurfaceFile, ACommaDecimalLocaleChangesNothing) {
  OwnedSurface surface(scattered(30));
  const Block file = saved(surface);
  const std::string text = surface.toString();
  std::vector<RangePoint*> boundary = {new RangePoint{"B", 1234.5, 0.25, 1e6}};
  const std::string points = write("p.csv", std::string("P1,,500.1,300.2,12.5\n"));
  const std::locale before = std::locale::global(std::locale(std::locale(), new CommaDecimals));
  DTMFileOperation files;
  EXPECT_EQ(text, surface.toString());
  EXPECT_TRUE(files.saveSurfaces(path("a.ttin").c_str(), &surface));
  OwnedSurface read;
  std::vector<SurfacePoint*> out;
  read.loadSurfacePointsFile(points.c_str(), out);
  EXPECT_TRUE(files.saveRangePointFile(path("b.waa").c_str(), true, false, boundary));
  bool first = false;
  bool second = true;
  EXPECT_TRUE(files.loadRangePointFile(path("b.waa").c_str(), &first, &second, boundary));
  std::locale::global(before);
  EXPECT_EQ(file, bytesOf(path("a.ttin")));
  const std::string expected = "1\n0\nB,1234.5,0.25,1e+06\n";
  EXPECT_EQ(Block(expected.begin(), expected.end()), bytesOf(path("b.waa")));
  ASSERT_EQ(1u, boundary.size());
  EXPECT_EQ(1234.5, boundary[0]->n);
  ASSERT_EQ(1u, out.size());
  EXPECT_EQ(500.1, out[0]->getE());
  for (const RangePoint* vertex : boundary) delete vertex;
}

}  // namespace
