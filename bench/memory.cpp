// Peak memory while a TIN of a million points is built, the points and the published lists included.
#include "Inputs.h"
#include "Model.h"
#include "PeakMemory.h"

namespace bench {

namespace {

// The points where a host keeps them, and nothing beside: no second copy of the cloud.
void buildInChild(const std::string& cloud) {
  Cloud points = makeCloud(cloud);
  Survey survey(std::move(points));
  const std::unique_ptr<CEType> tin = build(survey);
}

[[maybe_unused]] const bool added = [] {
  addPeakMemory("ours", "uniform_1m", buildInChild);
  return true;
}();

}  // namespace

}  // namespace bench
