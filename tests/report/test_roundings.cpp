// The arithmetic roundings must give what the detour through text gives, to the last bit.
#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/report/U.h>
#include <gtest/gtest.h>

#include "report/SlowText.h"

namespace {

void expectRoundThroughText(int digits, double v) {
  const std::string text = slow::toString(digits, v);
  ASSERT_EQ(text, U::toString(digits, v)) << digits << " " << std::hexfloat << v;
  ASSERT_PRED2(slow::sameBits, slow::read(text), detail::roundThroughText(digits, v))
      << digits << " " << std::hexfloat << v;
}

void expectRoundUpThroughText(double v) {
  const std::string text = slow::roundUp(10, v);
  ASSERT_EQ(text, U::roundUp(10, v)) << std::hexfloat << v;
  ASSERT_PRED2(slow::sameBits, slow::read(text), detail::roundUpThroughText10(v)) << std::hexfloat << v;
}

TEST(RoundThroughText, SpecialNumbers) {
  for (int digits = -3; digits <= 12; ++digits) {
    for (const double v : slow::specialNumbers()) expectRoundThroughText(digits, v);
  }
}

TEST(RoundThroughText, ExtremeDigitsGiveSomeText) {
  for (const int digits : {std::numeric_limits<int>::min(), -400, -308, 308, 400, std::numeric_limits<int>::max()}) {
    EXPECT_FALSE(U::toString(digits, 1.5).empty()) << digits;
    EXPECT_FALSE(U::toString(digits, -DBL_MAX).empty()) << digits;
  }
}

TEST(RoundThroughText, InfinitySignsReadAsZeroAndNaNStays) {
  constexpr double kInf = std::numeric_limits<double>::infinity();
  for (const double v : {kInf, -kInf, DBL_MAX, -DBL_MAX, 1e305}) {
    EXPECT_PRED2(slow::sameBits, 0.0, detail::roundThroughText(4, v)) << v;
  }
  EXPECT_TRUE(std::isnan(detail::roundThroughText(4, std::nan(""))));
}

TEST(RoundThroughText, ZeroHasNoSign) {
  for (const double v : {-0.0, -0.00001, -DBL_TRUE_MIN}) {
    EXPECT_PRED2(slow::sameBits, 0.0, detail::roundThroughText(4, v)) << v;
  }
}

TEST(RoundThroughText, RandomNumbersOfEverySize) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 100'000; ++i) {
    for (const int digits : {3, 4}) expectRoundThroughText(digits, slow::anyDouble(random));
  }
  for (int i = 0; i < 300'000; ++i) {
    for (const int digits : {0, 2, 3, 4, 6}) expectRoundThroughText(digits, slow::sized(random, -30, 60));
  }
}

TEST(RoundThroughText, NearTies) {
  std::mt19937_64 random(2);
  for (int i = 0; i < 300'000; ++i) {
    for (const int digits : {3, 4, 6}) {
      expectRoundThroughText(digits, slow::nearTie(random, digits, 40'000.0));
      expectRoundThroughText(digits, slow::nearTie(random, digits, 5e7));
    }
  }
}

// Where the spacing of doubles passes a millionth: the proof changes sides at 2^33.
TEST(RoundThroughText, AroundTheChangeOfProof) {
  std::mt19937_64 random(3);
  for (int i = 0; i < 200'000; ++i) {
    const double v = std::ldexp(std::uniform_real_distribution<double>(0.9, 1.1)(random), 30 + i % 6);
    for (const int digits : {0, 3, 4, 6}) {
      expectRoundThroughText(digits, v);
      expectRoundThroughText(digits, -v);
    }
  }
  for (int exponent = 28; exponent <= 54; ++exponent) {
    for (int steps = -3; steps <= 3; ++steps) {
      for (const int digits : {0, 3, 4, 6}) {
        expectRoundThroughText(digits, slow::neighbour(std::ldexp(1.0, exponent), steps));
      }
    }
  }
}

TEST(RoundThroughText, DigitsBeyondTheTextsOwnGoThroughIt) {
  std::mt19937_64 random(4);
  for (int i = 0; i < 50'000; ++i) {
    for (const int digits : {-2, 7, 9, 15}) expectRoundThroughText(digits, slow::sized(random, -20, 50));
  }
}

TEST(RoundUpThroughText, SpecialNumbers) {
  for (const double v : slow::specialNumbers()) expectRoundUpThroughText(v);
}

TEST(RoundUpThroughText, Directions) {
  std::mt19937_64 random(5);
  std::uniform_real_distribution<double> direction(0.0, 3.14159265358979323846);
  for (int i = 0; i < 1'000'000; ++i) expectRoundUpThroughText(direction(random));
  for (int i = 0; i < 300'000; ++i) {
    const double v = std::atan2(direction(random), direction(random) - 1.5);
    for (int steps = -1; steps <= 1; ++steps) expectRoundUpThroughText(slow::neighbour(v, steps));
  }
}

TEST(RoundUpThroughText, NearTies) {
  std::mt19937_64 random(6);
  for (int i = 0; i < 500'000; ++i) expectRoundUpThroughText(slow::nearTie(random, 10, 3.2) - 4e-11);
}

TEST(RoundUpThroughText, AroundTheEndOfTheFastRange) {
  std::mt19937_64 random(7);
  for (int i = 0; i < 200'000; ++i) {
    expectRoundUpThroughText(std::uniform_real_distribution<double>(6.8, 6.9)(random));
    expectRoundUpThroughText(slow::nearTie(random, 10, 6.9) - 4e-11);
  }
}

TEST(RoundUpThroughText, RandomNumbersOfEverySize) {
  std::mt19937_64 random(8);
  for (int i = 0; i < 200'000; ++i) {
    expectRoundUpThroughText(slow::anyDouble(random));
    expectRoundUpThroughText(slow::sized(random, -40, 70));
  }
}

TEST(RoundUpThroughText, ZeroHasNoSign) {
  for (const double v : {-4e-11, -5e-11, -4.4e-11}) {
    EXPECT_PRED2(slow::sameBits, 0.0, detail::roundUpThroughText10(v)) << v;
  }
}

}  // namespace
