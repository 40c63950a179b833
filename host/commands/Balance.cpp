#include "Balance.h"

#include <cmath>
#include <memory>

#include <CLI/CLI.hpp>

#include "BalanceLevel.h"
#include "BoundaryFile.h"
#include "Console.h"
#include "Options.h"
#include "Paths.h"
#include "Progress.h"
#include "Results.h"
#include "SurfaceFile.h"
#include "TextLines.h"
#include "UserText.h"

namespace {

struct BalanceOrder {
  std::string surface;
  std::string boundary;
  std::string factor = "1";
  std::string from;
  std::string to;
  std::string step;
  bool json = false;
};

struct Levels {
  double from = 0.0;
  double to = 0.0;
  double step = 0.0;

  double count() const { return std::floor((to - from) / step * (1.0 + kRounding)) + 1.0; }

 private:
  static constexpr double kRounding = 1e-12;  // a whole number of steps reaches its end
};

constexpr int kLevelDecimals = 6;
constexpr double kUsualRows = 10.0;
constexpr double kMostRows = 10000.0;
constexpr double kRead = 0.3;
constexpr double kFound = 0.7;

// The smallest of 1, 2 and 5 times a power of ten that is not below `least`.
double roundStep(double least) {
  const double power = std::pow(10.0, std::floor(std::log10(least)));
  for (const double times : {1.0, 2.0, 5.0}) {
    if (times * power >= least) return times * power;
  }
  return 10.0 * power;
}

double factorOf(const std::string& text) {
  constexpr double kLeast = 0.01;
  constexpr double kMost = 100.0;
  const double factor = options::numberOf("--factor", text);
  if (factor >= kLeast && factor <= kMost) return factor;
  throw console::WrongUsage("--factor " + quoted(text) + " is not likely: give one from 0.01 to 100, such as 1.15");
}

double stepOf(const std::string& text) {
  const double step = options::elevationOf("--step", text);
  if (!(step > 0.0)) throw console::WrongUsage("--step " + quoted(text) + " is not above 0");
  return step;
}

void requireOrder(double from, double to) {
  if (to < from) throw console::WrongUsage("the table's --from lies above its --to: exchange them");
}

// What was not given is chosen so that about ten round levels cover the surface.
Levels levelsOf(const BalanceOrder& order, const DTMSurface& surface) {
  const double lowest = order.from.empty() ? surface.getMinElev() : options::elevationOf("--from", order.from);
  const double highest = order.to.empty() ? surface.getMaxElev() : options::elevationOf("--to", order.to);
  requireOrder(lowest, highest);
  Levels levels;
  levels.step = 1.0;
  if (highest > lowest) levels.step = roundStep((highest - lowest) / kUsualRows);
  if (!order.step.empty()) levels.step = stepOf(order.step);
  levels.from = order.from.empty() ? std::floor(lowest / levels.step) * levels.step : lowest;
  levels.to = order.to.empty() ? std::ceil(highest / levels.step) * levels.step : highest;
  if (levels.count() > kMostRows) throw console::WrongUsage("the table would have too many rows: give a larger --step");
  return levels;
}

// What can be known to make no sense before the surface is read.
void checkNumbers(const BalanceOrder& order) {
  factorOf(order.factor);
  const double from = order.from.empty() ? -kLargestElevation : options::elevationOf("--from", order.from);
  const double to = order.to.empty() ? kLargestElevation : options::elevationOf("--to", order.to);
  requireOrder(from, to);
  if (!order.step.empty()) stepOf(order.step);
}

std::vector<Results::Row> rowsOf(CEType& tin, const Levels& levels) {
  std::vector<Results::Row> rows;
  const double count = levels.count();
  for (double i = 0.0; i < count; ++i) {
    progress::show("measuring the table", i / count);
    const double level = levels.from + i * levels.step;
    const CutFill at = cutFillAt(tin, level);
    rows.push_back({level, at.cut, at.fill, at.cut - at.fill});
  }
  return rows;
}

SurfacePtr read(const std::string& path) {
  const progress::Part part(0.0, kRead);
  return readSurface(path);
}

double solve(DTMSurface& surface, double factor) {
  const progress::Part part(kRead, kFound);
  return balanceLevel(*surface.getCEType(), surface.getMinElev(), surface.getMaxElev(), factor);
}

std::vector<Results::Row> table(DTMSurface& surface, const Levels& levels) {
  const progress::Part part(kFound, 1.0);
  return rowsOf(*surface.getCEType(), levels);
}

void balance(const BalanceOrder& order) {
  checkNumbers(order);
  const double factor = factorOf(order.factor);
  const std::string path = resolvedPath(order.surface);
  const Boundary boundary = readLimit(order.boundary);
  const SurfacePtr surface = read(path);
  const Levels levels = levelsOf(order, *surface);
  limitTo(boundary, order.boundary, *surface);
  if (cutFillAt(*surface->getCEType(), surface->getMinElev()).coverage == 0.0) {
    throw console::Failure(shownPath(order.boundary) + ": nothing of the surface lies within the boundary");
  }
  const double level = solve(*surface, factor);
  const CutFill at = cutFillAt(*surface->getCEType(), level);
  Results results;
  results.text("Surface", surfaceName(path));
  results.number("Balance level", level, kLevelDecimals);
  results.number("Factor", factor);
  results.number("Cut volume", at.cut);
  results.number("Fill volume", at.fill);
  results.number("Covered plan area", at.coverage);
  results.table("Levels", {"Level", "Cut", "Fill", "Cut less fill"}, table(*surface, levels));
  results.print(order.json);
}

}  // namespace

Command addBalance(CLI::App& app) {
  const auto order = std::make_shared<BalanceOrder>();
  CLI::App* const command =
      app.add_subcommand("balance", "Find the level at which cut makes fill, and tabulate level against cut and fill");
  options::addSurface(*command, "SURFACE", order->surface);
  options::addBoundary(*command, order->boundary);
  command->add_option("--factor", order->factor, "What a unit of cut makes of fill: 1.15 for ground that swells; 1")
      ->type_name(options::kNumber);
  command->add_option("--from", order->from, "First level of the table")->type_name(options::kElevation);
  command->add_option("--to", order->to, "Last level of the table")->type_name(options::kElevation);
  command->add_option("--step", order->step, "Between the levels of the table")->type_name(options::kNumber);
  options::addJson(*command, order->json);
  options::addExample(*command, "balance ground.csv --factor 1.1");
  return {command, {"SURFACE"}, [order] { balance(*order); }};
}
