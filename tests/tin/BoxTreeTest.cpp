// The tree over boxes, against asking every box.
#include <OrvikDTMAlgorithm/tin/BoxTree.h>
#include <gtest/gtest.h>

#include "Inputs.h"

namespace {

using detail::Box;
using detail::BoxTree;

std::vector<Box> randomBoxes(std::uint64_t seed, int count) {
  inputs::Random random(seed);
  std::vector<Box> boxes;
  for (int i = 0; i < count; ++i) {
    const double x = i % 50 == 0 ? 1e9 * random.unit() : static_cast<double>(random.between(0, 40));
    const double y = static_cast<double>(random.between(0, 40));
    boxes.push_back(
        {x, y, x + static_cast<double>(random.between(0, 3)), y + static_cast<double>(random.between(0, 9))});
  }
  return boxes;
}

TEST(BoxTree, FindsWhatAskingEveryBoxFinds) {
  for (const int count : {0, 1, 7, 8, 9, 100, 3000}) {
    const std::vector<Box> boxes = randomBoxes(static_cast<std::uint64_t>(count), count);
    const BoxTree tree(boxes);
    for (const Box& query : randomBoxes(99, 60)) {
      std::vector<int> found(boxes.size(), 0);
      tree.visitLeaves(query, [&](const BoxTree::Run& run) {
        for (std::size_t place = run.first; place < run.last; ++place) ++found[tree.order()[place]];
      });
      for (std::size_t i = 0; i < boxes.size(); ++i) {
        ASSERT_LE(found[i], 1);
        ASSERT_TRUE(found[i] == 1 || !boxes[i].meets(query));
      }
    }
  }
}

TEST(BoxTree, LeavesHoldAFewBoxesThatTheirBoxEncloses) {
  const std::vector<Box> boxes = randomBoxes(5, 2500);
  const BoxTree tree(boxes);
  std::size_t count = 0;
  for (std::size_t i = 0; i < tree.leafCount(); ++i) {
    const BoxTree::Run run = tree.leaf(i);
    EXPECT_LE(run.last - run.first, 8u);
    for (std::size_t place = run.first; place < run.last; ++place, ++count) {
      const Box& box = boxes[tree.order()[place]];
      const Box& leaf = tree.boxOfLeaf(i);
      EXPECT_TRUE(leaf.minX <= box.minX && leaf.minY <= box.minY && leaf.maxX >= box.maxX && leaf.maxY >= box.maxY);
    }
  }
  EXPECT_EQ(count, boxes.size());
}

}  // namespace
