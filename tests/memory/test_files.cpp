// Memory that runs out while files are read and written: a file keeps what it held, nothing is left beside it, and what
// was to be filled from a file is as it was.
#include "memory/EveryAllocation.h"
#include "memory/SurfaceCase.h"

namespace memory {
namespace {

using On = SurfaceCase;
using FileOperation = Operation<SurfaceCase>;

class FilesWithoutMemory : public testing::TestWithParam<FileOperation> {};

TEST_P(FilesWithoutMemory, StayAsTheyAre) { tryEveryAllocation(GetParam()); }

std::string nameOf(const testing::TestParamInfo<FileOperation>& info) { return info.param.name; }

const char* const kLabels = "Report,Surface,Reference,Volumes,Cut,Fill,2D,3D,P2D,P3D,Cut areas,Fill areas";

// Files as they are used: built before, so that the file is what is tried.
void build(On& on) {
  on.site().getCEType();
  on.design().getCEType();
  on.startWriting();
}

template <typename Write>
FileOperation writing(const char* name, Write write) {
  return {name, [write](On& on) { return write(on, on.target().c_str()); }, build};
}

const FileOperation kWriters[] = {
    writing("Surface", [](On& on, const char* path) { return DTMFileOperation().saveSurfaces(path, &on.site()); }),
    writing("SurfaceOfLibrary", [](On& on, const char* path) { return on.library.saveSurface(0, path) == 1; }),
    writing("Sjw", [](On& on, const char* path) { return on.site().exportFileSJW(path); }),
    writing(
        "Boundary",
        [](On& on, const char* path) { return DTMFileOperation().saveRangePointFile(path, true, false, on.vertices); }),
    writing("PageAgainstLevel",
            [](On& on, const char* path) { return on.library.exportVolumeReport(0, 20.5, 0, kLabels, path) == 1; }),
    writing("TextAgainstLevel",
            [](On& on, const char* path) { return on.library.exportVolumeReport(0, 20.5, 1, kLabels, path) == 1; }),
    {"BytesOfSurface", [](On& on) { return on.bytes = on.site().toBytes(), true; }, build},
    {"Names",
     [](On& on) {
       on.names = DTMFileOperation().getSurfaceByPath(Files::all().folder().c_str(), ".ttin");
       return !on.names.empty();
     }},
    {"Delete", [](On& on) { return DTMFileOperation().deleteSurface(on.target().c_str()); },
     [](On& on) { on.startWriting(); }},
};

bool load(On& on, const char* name, int type) {
  return DTMFileOperation().loadSurface(Files::all().path(name).c_str(), type, &on.site());
}

void noteReplaced(On& on) { on.replaced = on.site().getSurfacePoints(); }

const FileOperation kReaders[] = {
    {"Surface", [](On& on) { return load(on, "stored.ttin", 0); }, noteReplaced},
    {"SurfaceOverPromise", [](On& on) { return load(on, "stored.ttin", 0); },
     [](On& on) {
       on.site().addSurfacePoint(on.spare.release(), 0);
       noteReplaced(on);
     }},
    {"Sjw", [](On& on) { return load(on, "stored.sjw", 1); }, noteReplaced},
    {"IntoLibrary",
     [](On& on) { return on.library.loadDTMSurface(Files::all().path("stored.ttin").c_str(), 0) != nullptr; }},
    {"Points",
     [](On& on) {
       on.site().loadSurfacePointsFile(Files::all().path("points.csv").c_str(), on.listed);
       return !on.listed.empty();
     }},
    {"Boundary",
     [](On& on) {
       bool first = false;
       bool second = false;
       const std::string path = Files::all().path("boundary.waa");
       return DTMFileOperation().loadRangePointFile(path.c_str(), &first, &second, on.vertices) && first && second;
     }},
    {"TinOfSjw",
     [](On& on) {
       on.tin.reset(CEType::initCETypeFromSJW(Files::all().path("stored.sjw").c_str()));
       return on.tin != nullptr;
     }},
};

INSTANTIATE_TEST_SUITE_P(Writers, FilesWithoutMemory, testing::ValuesIn(kWriters), nameOf);
INSTANTIATE_TEST_SUITE_P(Readers, FilesWithoutMemory, testing::ValuesIn(kReaders), nameOf);

#ifndef ORVIKDTM_SANITIZED

// The parser loses what it holds when it runs out of memory, so blocks are not counted here.
TEST(LandXmlWithoutMemory, LeavesTheSurface) {
  std::string before;
  {
    SurfaceCase untouched;
    before = untouched.describe();
  }
  bool hasFailed = true;
  for (long allowed = 0; hasFailed; ++allowed) {
    SurfaceCase on;
    noteReplaced(on);
    bool hasLoaded = false;
    limit(allowed, Failure::kOnce);
    try {
      hasLoaded = load(on, "stored.xml", 2);
    } catch (const std::bad_alloc&) {
    }
    hasFailed = unlimit();
    if (!hasLoaded) {
      expectSame(before, on.describe(), "after the failure");
      EXPECT_TRUE(load(on, "stored.xml", 2));
    }
    EXPECT_EQ(2, on.site().getTrianglesNumber());
    ASSERT_LT(allowed, 10000);
  }
}

#endif

}  // namespace
}  // namespace memory
