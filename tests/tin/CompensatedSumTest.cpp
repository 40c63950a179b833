// Sums that lose no digits, where plain ones do.
#include <limits>

#include <OrvikDTMAlgorithm/tin/CompensatedSum.h>
#include <gtest/gtest.h>

namespace {

using detail::CompensatedSum;

TEST(CompensatedSum, KeepsWhatALargeTermHides) {
  CompensatedSum sum;
  for (const double term : {1.0, 1e17, 1.0, -1e17}) sum.add(term);
  EXPECT_EQ(sum.value(), 2.0);
}

TEST(CompensatedSum, MillionsOfTermsCostNoDigits) {
  constexpr int kTerms = 3'000'000;
  constexpr double kTerm = 0.1;
  CompensatedSum sum;
  double plain = 0;
  for (int i = 0; i < kTerms; ++i) {
    sum.add(kTerm);
    plain += kTerm;
  }
  EXPECT_EQ(sum.value(), kTerms * kTerm);
  EXPECT_NE(plain, kTerms * kTerm);
}

TEST(CompensatedSum, InfiniteTermsGiveWhatAPlainSumGives) {
  const double infinity = std::numeric_limits<double>::infinity();
  CompensatedSum sum;
  for (const double term : {1.0, infinity, 2.0, infinity}) sum.add(term);
  EXPECT_EQ(sum.value(), infinity);
  sum.add(-infinity);
  EXPECT_NE(sum.value(), sum.value());
  CompensatedSum overflowing;
  for (int i = 0; i < 3; ++i) overflowing.add(-1e308);
  EXPECT_EQ(overflowing.value(), -infinity);
}

}  // namespace
