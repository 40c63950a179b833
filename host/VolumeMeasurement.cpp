#include "VolumeMeasurement.h"

#include <cmath>
#include <memory>

#include "Console.h"

namespace {

FillCutResult* exactly(VolumeMeasurement& work) {
  CEType* const ground = work.ground->getCEType();
  if (work.reference == nullptr) return ground->getFillCutExact(work.level, &work.coverage);
  return ground->getFillCutExact(work.reference->getCEType(), &work.coverage);
}

FillCutResult* bySampling(VolumeMeasurement& work) {
  if (work.reference == nullptr) return work.ground->getFillCut(work.level);
  return work.ground->getFillCut(work.reference->getCEType());
}

// Whether sampling measured nothing at all because nothing is there to measure. Surfaces that coincide have no volume
// either.
bool hasNothingToSample(VolumeMeasurement& work) {
  const FillCutResult& result = *work.result;
  if (result.getCutTwoDArea() != 0.0 || result.getFillTwoDArea() != 0.0) return false;
  const std::unique_ptr<FillCutResult> overlaid(exactly(work));
  return work.coverage == 0.0;
}

// Why nothing was measured.
std::string whatIsEmpty(const VolumeMeasurement& work) {
  const bool isLimited = !work.ground->getCEType()->getRangeList().empty();
  if (work.reference == nullptr)
    return isLimited ? "nothing of the surface lies within the boundary" : "it has no area";
  return isLimited ? "nothing lies within both surfaces and the boundary" : "the surfaces have no area in common";
}

void nameSurfaces(const VolumeMeasurement& work) {
  work.result->setSurfaceName(work.ground->getSurfaceName());
  if (work.reference != nullptr) work.result->setRefSurfaceName(work.reference->getSurfaceName());
}

void requireFinite(const VolumeMeasurement& work) {
  const FillCutResult& result = *work.result;
  for (const double v : {result.getCutVolume(), result.getFillVolume(), result.getCutTwoDArea(),
                         result.getCutThreeDArea(), result.getFillTwoDArea(), result.getFillThreeDArea()}) {
    if (std::isfinite(v)) continue;
    throw console::Failure(work.groundName + ": the volumes are not finite: look for points far from the others");
  }
}

}  // namespace

void measure(VolumeMeasurement& work) {
  work.result.reset(work.method == VolumeMethod::kExact ? exactly(work) : bySampling(work));
  if (work.result == nullptr) {
    throw console::Failure("the volume could not be computed: close other programs, try again");
  }
  nameSurfaces(work);
  requireFinite(work);
  if (work.method == VolumeMethod::kExact ? work.coverage == 0.0 : hasNothingToSample(work)) {
    console::warn(work.groundName + ": " + whatIsEmpty(work) + ", so all volumes are 0");
  }
}
