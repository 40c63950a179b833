// The order of a face's corners is that of the sweep, whatever the face: plain ones, where it is told by a cross
// product alone, and those beside the margin, thin, flat, repeated, huge, tiny or without a position, where it is not.
#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include <OrvikDTMAlgorithm/tin/FaceOrder.h>
#include <OrvikDTMAlgorithm/tin/Sweep.h>
#include <gtest/gtest.h>

#include "Inputs.h"

namespace {

using Corners = std::array<detail::Position, 3>;

void expectOrderOfSweep(Corners corners) {
  std::array<int, 3> permutation = {0, 1, 2};
  do {
    Corners face;
    for (std::size_t i = 0; i < 3; ++i) face[i] = corners[static_cast<std::size_t>(permutation[i])];
    const std::vector<detail::Number> expected = detail::sweepOrder({face.begin(), face.end()});
    std::array<detail::Number, 3> order = {9, 9, 9};
    ASSERT_EQ(!expected.empty(), detail::faceOrder(face, order));
    if (expected.empty()) continue;
    const std::vector<detail::Number> ours(order.begin(), order.end());
    ASSERT_EQ(expected, ours) << face[0].x << ' ' << face[0].y << ", " << face[1].x << ' ' << face[1].y << ", "
                              << face[2].x << ' ' << face[2].y;
  } while (std::next_permutation(permutation.begin(), permutation.end()));
}

// A corner at (x, y), one at `length` from it in a direction, and one at another length where the direction is wider by
// `opening` (radians).
Corners faceAt(double x, double y, double direction, double opening, double length, double otherLength) {
  return {{{x, y},
           {x + length * std::cos(direction), y + length * std::sin(direction)},
           {x + otherLength * std::cos(direction + opening), y + otherLength * std::sin(direction + opening)}}};
}

class FaceOrder : public testing::Test {
 protected:
  double between(double low, double high) { return low + (high - low) * random_.unit(); }
  // A number whose logarithm is evenly spread.
  double spread(double low, double high) { return std::exp(between(std::log(low), std::log(high))); }

  inputs::Random random_{31};
};

TEST_F(FaceOrder, OrdinaryFaces) {
  for (int i = 0; i < 20000; ++i) {
    expectOrderOfSweep({{{between(-50, 50), between(-50, 50)},
                         {between(-50, 50), between(-50, 50)},
                         {between(-50, 50), between(-50, 50)}}});
    if (HasFatalFailure()) return;
  }
}

// The direction's own rounding is 1e-10, the margin of the cross product 1e-6, and what a cosine near 1 loses 3e-8.
TEST_F(FaceOrder, OpeningsAroundEveryMargin) {
  constexpr double kHalfTurn = 3.14159265358979323846;
  for (int i = 0; i < 40000; ++i) {
    const double nearAxis = spread(1e-12, 1e-3);
    const double direction = i % 3 == 0 ? nearAxis : i % 3 == 1 ? kHalfTurn - nearAxis : between(0, kHalfTurn);
    const double opening = spread(1e-13, 1e-3);
    expectOrderOfSweep(faceAt(0, 0, direction, opening, spread(1e-3, 1e4), spread(1e-3, 1e4)));
    expectOrderOfSweep(faceAt(between(0, 1e6), between(0, 1e7), direction, opening, spread(1e-3, 1e4), spread(1, 1e4)));
    if (HasFatalFailure()) return;
  }
}

TEST_F(FaceOrder, FlatAndRepeatedCorners) {
  for (int i = 0; i < 20000; ++i) {
    const auto coordinate = [this] { return static_cast<double>(random_.between(-2, 2)); };
    Corners face;
    for (detail::Position& p : face) p = {coordinate(), coordinate()};
    expectOrderOfSweep(face);
    if (HasFatalFailure()) return;
  }
}

TEST_F(FaceOrder, SizesThatNoSurveyHas) {
  for (const double size : {1e-320, 1e-300, 1e-160, 1e-100, 1e-50, 1e-49, 1e49, 1e50, 1e100, 1e154, 1e160, 1e300}) {
    for (int i = 0; i < 300; ++i) {
      Corners face;
      for (detail::Position& p : face) p = {size * between(-1, 1), size * between(-1, 1)};
      expectOrderOfSweep(face);
      face[0] = {face[0].x / 1e60, face[0].y / 1e60};
      expectOrderOfSweep(face);
      if (HasFatalFailure()) return;
    }
  }
}

TEST_F(FaceOrder, CoordinatesThatAreNoNumbers) {
  const double odd[] = {std::nan(""),
                        std::numeric_limits<double>::infinity(),
                        -std::numeric_limits<double>::infinity(),
                        std::numeric_limits<double>::max(),
                        -0.0,
                        0.0,
                        1.0};
  const auto any = [&] { return odd[random_.between(0, std::size(odd) - 1)]; };
  for (int i = 0; i < 20000; ++i) {
    Corners face;
    for (detail::Position& p : face) p = {any(), any()};
    expectOrderOfSweep(face);
    if (HasFatalFailure()) return;
  }
}

}  // namespace
