// A sum that keeps what each addition rounds off, so that millions of terms cost no digits. Private.
#pragma once

#include <cmath>

#include <OrvikDTMAlgorithm/FloatingPoint.h>

inline namespace OrvikDTM {
namespace detail {

// Neumaier's summation: the error of the result is one rounding of it, and the number of terms enters only through the
// square of the rounding unit.
class CompensatedSum {
 public:
  void add(double term) {
    const double next = sum_ + term;
    lost_ += std::fabs(sum_) >= std::fabs(term) ? (sum_ - next) + term : (term - next) + sum_;
    sum_ = next;
  }

  // Nothing is lost where the terms or their sum are infinite or no numbers.
  double value() const { return std::isfinite(sum_) ? sum_ + lost_ : sum_; }

 private:
  double sum_ = 0.0;
  double lost_ = 0.0;
};

}  // namespace detail
}  // namespace OrvikDTM
