// Sums that lose no digits, where plain ones do.
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

}  // namespace
