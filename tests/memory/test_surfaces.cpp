// Memory that runs out in the middle of an operation on surfaces: the exception of the allocation is all that comes of
// it, or the operation's own failure.
#include <array>

#include "memory/EveryAllocation.h"
#include "memory/SurfaceCase.h"

namespace memory {
namespace {

using On = SurfaceCase;
using SurfaceOperation = Operation<SurfaceCase>;

class SurfacesWithoutMemory : public testing::TestWithParam<SurfaceOperation> {};

TEST_P(SurfacesWithoutMemory, StayAsTheyAre) { tryEveryAllocation(GetParam()); }

std::string nameOf(const testing::TestParamInfo<SurfaceOperation>& info) { return info.param.name; }

constexpr auto kAppend = ~0ull;

bool addSpare(On& on) {
  if (on.site().addSurfacePoint(on.spare.get(), kAppend) == 0) return false;
  static_cast<void>(on.spare.release());
  return true;
}

bool replaceBySpare(On& on) {
  if (on.site().updateSurfacePoint(2, on.spare.get()) == 0) return false;
  static_cast<void>(on.spare.release());
  return true;
}

void useArray(On& on) { on.site().updateDTMSurface(static_cast<int>(on.array.size()), on.array.data()); }

void limitSite(On& on) { on.site().setRangeList(on.vertices); }

const SurfaceOperation kEdits[] = {
    {"NewSurface", [](On& on) { return on.library.addDTMSurface("New") != nullptr; }},
    {"AddPoint", addSpare},
    {"DeletePoint", [](On& on) { return on.library.deleteSurfacePoint(0, 0) == 1; }, [](On& on) { addSpare(on); }},
    {"AddPointToArray", addSpare, useArray},
    {"ReplacePointOfArray", replaceBySpare, useArray},
    {"SetPoints",
     [](On& on) {
       on.site().setSurfacePoints(std::vector<SurfacePoint*>(on.site().getSurfacePoints()));
       return true;
     }},
    {"UseArray", [](On& on) { return useArray(on), true; }, [](On& on) { on.array.resize(100, on.array.front()); }},
    {"PointsForTriangulation",
     [](On& on) { return on.points = on.site().getTPointList(on.site().getSurfacePoints()), true; }},
    {"CopyOfPoints", [](On& on) { return on.library.getSurfacePoints(0, on.listed), true; }},
    {"Clone", [](On& on) { return (on.copy = on.site().clone()) != nullptr; }},
    {"Text", [](On& on) { return on.text = on.site().toString(), true; }, [](On& on) { on.site().getCEType(); }},
};

const SurfaceOperation kModels[] = {
    {"Build", [](On& on) { return on.site().getCEType() != nullptr; }},
    {"Statistics", [](On& on) { return on.numbers = {on.site().getTwoDArea()}, true; }, [](On& on) { addSpare(on); }},
    {"Height",
     [](On& on) {
       double z = 0.0;
       if (on.library.checkSurfacePoint(0, 2.0, 2.25, &z) == 0) return false;
       on.numbers = {z};
       return true;
     }},
    {"Preview", [](On& on) { return on.library.previewDTMSurface(0, 1, 4, 1, 4, on.lines); }},
    {"Boundary", [](On& on) { return on.site().setRangeList(on.vertices) == 1; }},
    {"OtherBoundary",
     [](On& on) {
       return on.site().setRangeList({on.vertices[0], on.vertices[2]}) == 1;
     },
     limitSite},
};

bool measureLevel(On& on) { return on.result.reset(on.library.getFillCut(0, 20.5)), on.result != nullptr; }

bool measureSurface(On& on) { return on.result.reset(on.library.getFillCut(0, 1u)), on.result != nullptr; }

bool listPieces(On& on) {
  for (const auto& piece : on.site().getCEType()->getTriangle3List()) {
    on.numbers.push_back(piece->getStatus() * piece->getP1()->getX());
  }
  return true;
}

void buildBoth(On& on) {
  on.site().getCEType();
  on.design().getCEType();
}

void buildAndLimit(On& on) {
  buildBoth(on);
  limitSite(on);
}

const SurfaceOperation kVolumes[] = {
    {"AgainstLevel", measureLevel},
    {"AgainstSurface", measureSurface, buildBoth},
    {"AgainstLevelWithinBoundary", measureLevel, buildAndLimit},
    {"AgainstSurfaceWithinBoundary", measureSurface, buildAndLimit},
    {"PiecesAgainstLevel", listPieces, measureLevel},
};

INSTANTIATE_TEST_SUITE_P(Edits, SurfacesWithoutMemory, testing::ValuesIn(kEdits), nameOf);
INSTANTIATE_TEST_SUITE_P(Models, SurfacesWithoutMemory, testing::ValuesIn(kModels), nameOf);
INSTANTIATE_TEST_SUITE_P(Volumes, SurfacesWithoutMemory, testing::ValuesIn(kVolumes), nameOf);

}  // namespace
}  // namespace memory
