// Flat functions on the boundary.
#include <climits>

#include "api/FlatTest.h"

namespace {

using FlatBoundary = FlatTest;

std::vector<std::string> names() {
  std::vector<std::string> list;
  for (const RangePoint* vertex : detail::flatState().rangePoints) list.emplace_back(vertex->name);
  return list;
}

using Names = std::vector<std::string>;

TEST_F(FlatBoundary, VerticesAreAddedReplacedAndRemoved) {
  EXPECT_EQ(1, addRangePoint("A", 1, 2, 3));
  EXPECT_EQ(1, addRangePoint("a vertex with a name of more than 23 bytes", 4, 5, 6));
  EXPECT_EQ(1, addRangePoint(nullptr, 7, 8, 9));
  EXPECT_EQ((Names{"A", "a vertex with a name of", ""}), names());
  const RangePoint& first = *detail::flatState().rangePoints[0];
  EXPECT_EQ(1.0, first.n);
  EXPECT_EQ(2.0, first.e);
  EXPECT_EQ(3.0, first.z);
  EXPECT_EQ(std::string(23, '\0'), std::string(first.name + 1, 23));

  EXPECT_EQ(1, updateRangePoint(1, "B", 10, 11, 12));
  EXPECT_EQ((Names{"A", "B", ""}), names());
  EXPECT_EQ(1, deleteRangePoint(0));
  EXPECT_EQ((Names{"B", ""}), names());
  EXPECT_EQ(12.0, detail::flatState().rangePoints[0]->z);
}

TEST_F(FlatBoundary, AnIndexEqualToTheLengthIsBad) {
  addRangePoint("A", 1, 2, 3);
  for (const unsigned int bad : {1u, static_cast<unsigned int>(INT_MIN), UINT_MAX}) {
    EXPECT_EQ(0, updateRangePoint(bad, "B", 1, 2, 3));
    EXPECT_EQ(0, deleteRangePoint(bad));
  }
  EXPECT_EQ(Names{"A"}, names());
}

TEST_F(FlatBoundary, AnEmptyOneHasNothingToDelete) {
  EXPECT_EQ(0, deleteRangePoint(0));
  EXPECT_EQ(0, updateRangePoint(0, "A", 1, 2, 3));
}

TEST_F(FlatBoundary, AFileReplacesIt) {
  addRangePoint("before", 1, 2, 3);
  fill("b.waa", "1\n0\nA,100,200,5\nB,110,200\n");
  registerAll();
  bool first = false, second = true;
  EXPECT_EQ(1, loadRangePointFile(path("b.waa").c_str(), &first, &second));
  EXPECT_TRUE(first);
  EXPECT_FALSE(second);
  EXPECT_EQ((Names{"A", "B"}), handed.vertices);
  EXPECT_EQ((Names{"A", "B"}), names());
  EXPECT_EQ(0.0, detail::flatState().rangePoints[1]->z);
  EXPECT_EQ(1, loadRangePointFile(path("b.waa").c_str(), nullptr, nullptr));
  setCallBack(nullptr, nullptr, nullptr, nullptr);
  EXPECT_EQ(1, loadRangePointFile(path("b.waa").c_str(), &first, &second));
}

TEST_F(FlatBoundary, AFileWithSwitchesAloneEmptiesIt) {
  addRangePoint("before", 1, 2, 3);
  fill("b.waa", "1\n1\n");
  registerAll();
  bool first = false, second = false;
  EXPECT_EQ(0, loadRangePointFile(path("b.waa").c_str(), &first, &second));
  EXPECT_TRUE(first && second);
  EXPECT_TRUE(names().empty());
  EXPECT_TRUE(handed.vertices.empty());
}

TEST_F(FlatBoundary, AnotherExtensionLeavesItAndAMissingFileEmptiesIt) {
  bool first = false, second = false;
  addRangePoint("A", 1, 2, 3);
  fill("b.txt", "1\n1\nB,1,2,3\n");
  EXPECT_EQ(0, loadRangePointFile(path("b.txt").c_str(), &first, &second));
  EXPECT_EQ(0, loadRangePointFile(nullptr, &first, &second));
  EXPECT_EQ(Names{"A"}, names());
  EXPECT_EQ(0, loadRangePointFile(path("absent.waa").c_str(), &first, &second));
  EXPECT_TRUE(names().empty());
}

TEST_F(FlatBoundary, SavingAndReadingBack) {
  addRangePoint("A", 100.25, 200.5, 3);
  addRangePoint("B", 1234567.891, 200.5, 3);
  EXPECT_EQ(1, saveRangePointFile(path("b.csv").c_str(), true, false));
  EXPECT_EQ("1\n0\nA,100.25,200.5,3\nB,1.23457e+06,200.5,3\n", contentsOf("b.csv"));
  bool first = false, second = true;
  ASSERT_EQ(1, loadRangePointFile(path("b.csv").c_str(), &first, &second));
  EXPECT_EQ(1234570.0, detail::flatState().rangePoints[1]->n);
  EXPECT_EQ(0, saveRangePointFile(path("absent/b.csv").c_str(), true, false));
  EXPECT_EQ(0, saveRangePointFile(nullptr, true, false));
}

}  // namespace
