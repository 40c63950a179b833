#include "BalanceLevel.h"

#include <cstdint>
#include <limits>
#include <memory>

#include <boost/math/tools/toms748_solve.hpp>

#include "Console.h"
#include "Progress.h"

namespace {

// An enclosing method halves its interval every few steps at the worst; doubles leave it no more than this many.
constexpr std::uintmax_t kMostSteps = 200;
constexpr double kUsualSteps = 12.0;

}  // namespace

CutFill cutFillAt(CEType& tin, double level) {
  CutFill at;
  const std::unique_ptr<FillCutResult> result(tin.getFillCutExact(level, &at.coverage));
  if (result == nullptr) throw console::Failure("the volume could not be computed: close other programs, try again");
  at.cut = result->getCutVolume();
  at.fill = result->getFillVolume();
  return at;
}

double balanceLevel(CEType& tin, double lowest, double highest, double factor) {
  double steps = 0.0;
  const auto surplus = [&](double level) {
    progress::show("looking for the balance", steps++ / kUsualSteps);
    const CutFill at = cutFillAt(tin, level);
    return factor * at.cut - at.fill;
  };
  const double atLowest = surplus(lowest);
  const double atHighest = surplus(highest);
  if (!(atLowest > 0.0)) return lowest;  // level ground
  if (!(atHighest < 0.0)) return highest;
  const boost::math::tools::eps_tolerance<double> lastDigits(std::numeric_limits<double>::digits);
  std::uintmax_t most = kMostSteps;
  const auto enclosed =
      boost::math::tools::toms748_solve(surplus, lowest, highest, atLowest, atHighest, lastDigits, most);
  return enclosed.first + (enclosed.second - enclosed.first) / 2.0;
}
