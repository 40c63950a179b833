// Memory that runs out in the middle of a flat function: the function fails or succeeds, nothing is left half done, and
// the same call succeeds afterwards.
#include <sstream>

#include <OrvikDTMAlgorithm/api/FlatState.h>

#include "memory/EveryAllocation.h"
#include "memory/SurfaceCase.h"

namespace memory {
namespace {

// What the callbacks were handed. Points are copies, which are the receiver's.
struct Received {
  int lines = 0;
  int surfaces = 0;
  int vertices = 0;
  int points = 0;
};

Received received;
bool keepsPoints = false;  // the points handed out are the surface's own

// A library of two surfaces and a boundary.
struct FlatCase {
  FlatCase() {
    forgetState();
    newDTMSurfaceLib();
    addSurface("Site", 2.0);
    addSurface("Design", -2.0);
    for (const RangePoint& v : boundary()) addRangePoint(v.name, v.n, v.e, v.z);
    setCallBack([](DrawLine*) { ++received.lines; },
                [](SurfacePoint* point) {
                  ++received.points;
                  if (!keepsPoints) freeSurfacePoint(point);
                },
                [](DTMSurface*) { ++received.surfaces; }, [](RangePoint*) { ++received.vertices; });
  }
  ~FlatCase() {
    forget();
    forgetState();
    keepsPoints = false;
  }
  FlatCase(const FlatCase&) = delete;
  FlatCase& operator=(const FlatCase&) = delete;

  static void addSurface(const char* name, double lift) {
    addDTMSurface(name);
    const unsigned int index = getSurface(1) == nullptr ? 0 : 1;
    for (SurfacePoint* point : newGround(9, lift)) {
      addSurfacePoint(index, point->getSurfacePointName(), point->getN(), point->getE(), point->getZ());
      delete point;
    }
  }

  static void forgetState() {
    detail::FlatState& state = detail::flatState();
    for (const auto& library : state.libraries) library->release();
    for (const RangePoint* vertex : state.rangePoints) delete vertex;
    state = {};
  }

  void forget() {
    received = {};
    height = 0.0;
    freeFillCutResult(result);
    result = nullptr;
  }

  std::string describe() {
    std::ostringstream seen;
    const detail::FlatState& state = detail::flatState();
    seen << state.libraries.size() << "\n";
    for (unsigned int i = 0; getSurface(i) != nullptr; ++i) seen << textOf(*getSurface(i)) << "\n";
    for (const RangePoint* v : state.rangePoints) seen << v->name << "," << v->n << "," << v->e << "," << v->z << ";";
    seen << received.lines << " " << received.surfaces << " " << received.vertices << " " << received.points;
    seen << " " << height << (result == nullptr ? "" : textOf(*result));
    if (writes) seen << textOfTargets();
    return seen.str();
  }

  double height = 0.0;
  FillCutResult* result = nullptr;
  bool writes = false;
};

using On = FlatCase;
using FlatOperation = Operation<FlatCase>;

class FlatWithoutMemory : public testing::TestWithParam<FlatOperation> {};

TEST_P(FlatWithoutMemory, FailsAndChangesNothing) { tryEveryAllocation(GetParam()); }

std::string nameOf(const testing::TestParamInfo<FlatOperation>& info) { return info.param.name; }

const char* const kLabels = "Report,Surface,Reference,Volumes,Cut,Fill,2D,3D,P2D,P3D,Cut areas,Fill areas";

// Paths as the host has them: made before.
const std::string& file(const char* name) {
  static const std::string stored = Files::all().path("stored.ttin");
  static const std::string sjw = Files::all().path("stored.sjw");
  static const std::string xml = Files::all().path("stored.xml");
  static const std::string points = Files::all().path("points.csv");
  static const std::string vertices = Files::all().path("boundary.waa");
  static const std::string target = Files::all().path("target/file.txt");
  const std::string_view wanted = name;
  if (wanted == "stored.sjw") return sjw;
  if (wanted == "stored.xml") return xml;
  if (wanted == "points.csv") return points;
  if (wanted == "boundary.waa") return vertices;
  return wanted == "target" ? target : stored;
}

void startWriting(On& on) {
  on.writes = true;
  resetTargets();
  file("target");
}

const char* path(const char* name) { return file(name).c_str(); }

bool keep(On& on, FillCutResult* result) {
  on.result = result;
  return result != nullptr;
}

const FlatOperation kSurfaces[] = {
    {"NewLibrary",
     [](On&) {
       DTMSurfaceLib* const before = detail::flatState().current;
       DTMSurfaceLib* const made = newDTMSurfaceLib();
       EXPECT_EQ(made == nullptr ? before : made, detail::flatState().current);
       setCurrentDTMSurfaceLib(0);
       return made != nullptr;
     }},
    {"AddSurface", [](On&) { return addDTMSurface("New") != nullptr; }},
    {"AddPoint", [](On&) { return addSurfacePoint(0, "New", 2.41, 2.515, 21.5) == 1; }},
    {"UpdatePoint", [](On&) { return updateSurfacePoint(0, 3, "New", 2.41, 2.515, 21.5) == 1; }},
    {"DeletePoint", [](On&) { return deleteSurfacePoint(0, 0) == 1; }},
    {"CheckPoint", [](On& on) { return checkSurfacePoint(0, 2.25, 2.0, &on.height) == 1; }},
    {"Preview", [](On&) { return previewDTMSurface(0, 1, 4, 1, 4) == 1; }},
    {"ListPoints", [](On&) { return getSurfacePoints(0) == 1; }, [](On&) { keepsPoints = true; }},
    {"LoadSurface", [](On&) { return loadDTMSurface(path("stored.ttin"), 0) != nullptr; }},
    {"LoadSjw", [](On&) { return loadDTMSurface(path("stored.sjw"), 1) != nullptr; }},
    {"LoadPoints", [](On&) { return loadSurfacePointsFile(0, path("points.csv")) == 1; }},
    {"SaveSurface", [](On&) { return saveSurface(0, path("target")) == 1; }, startWriting},
    {"ExportSjw", [](On&) { return exportFileSJW(0, path("target")) == 1; }, startWriting},
    {"DeleteFile", [](On&) { return deleteSurface(path("target")) == 1; }, startWriting},
};

const FlatOperation kBoundary[] = {
    {"AddVertex", [](On&) { return addRangePoint("New", 1, 2, 3) == 1; }},
    {"UpdateVertex", [](On&) { return updateRangePoint(1, "New", 1, 2, 3) == 1; }},
    {"LoadVertices",
     [](On&) {
       bool first = false;
       bool second = false;
       return loadRangePointFile(path("boundary.waa"), &first, &second) == 1;
     }},
    {"SaveVertices", [](On&) { return saveRangePointFile(path("target"), true, false) == 1; }, startWriting},
};

const FlatOperation kVolumes[] = {
    {"AgainstLevel", [](On& on) { return keep(on, getFillCut(path("stored.ttin"), 20.5, false)); }},
    {"AgainstLevelWithinBoundary", [](On& on) { return keep(on, getFillCut(path("stored.ttin"), 20.5, true)); }},
    {"AgainstSurface", [](On& on) { return keep(on, getFillCut2(path("stored.ttin"), path("stored.sjw"), false)); }},
    {"PageAgainstLevel",
     [](On&) { return exportVolumeReport(path("stored.ttin"), 20.5, false, 0, kLabels, path("target")) == 1; },
     startWriting},
    {"TextAgainstSurface",
     [](On&) {
       return exportVolumeReport2(path("stored.ttin"), path("stored.sjw"), false, 1, kLabels, path("target")) == 1;
     },
     startWriting},
};

INSTANTIATE_TEST_SUITE_P(Surfaces, FlatWithoutMemory, testing::ValuesIn(kSurfaces), nameOf);
INSTANTIATE_TEST_SUITE_P(Boundary, FlatWithoutMemory, testing::ValuesIn(kBoundary), nameOf);
INSTANTIATE_TEST_SUITE_P(Volumes, FlatWithoutMemory, testing::ValuesIn(kVolumes), nameOf);

// A folder is loaded file by file: what could be loaded is there, and the function returns.
TEST(FolderWithoutMemory, IsLoadedAsFarAsMemoryGoes) {
  const std::string folder = Files::all().folder().string();
  for (const Failure failure : {Failure::kOnce, Failure::kAlways}) {
    bool hasFailed = true;
    for (long allowed = 0; hasFailed; ++allowed) {
      FlatCase on;
      limit(allowed, failure);
      getSurfaceByPath(folder.c_str(), ".TTIN");
      hasFailed = unlimit();
      const int loaded = received.surfaces;
      EXPECT_TRUE(loaded == 0 || loaded == 1) << allowed;
      EXPECT_EQ(loaded == 1, getSurface(2) != nullptr) << allowed;
      EXPECT_TRUE(hasFailed || loaded == 1) << allowed;
      received = {};
      getSurfaceByPath(folder.c_str(), ".ttin");
      EXPECT_EQ(1, received.surfaces) << allowed;
      ASSERT_LT(allowed, 10000);
    }
  }
}

}  // namespace
}  // namespace memory
