// What callbacks leave behind: a host without any, one with all and one whose callbacks throw find the same libraries,
// surfaces, points, boundary, files and results.
#include <algorithm>
#include <map>
#include <stdexcept>

#include "api/FlatTest.h"

namespace {

constexpr const char* kLabels = "A,B,C,D,E,F,G,H,I,J,K,L";

std::string bytesOf(const void* record, std::size_t size) {
  return std::string(static_cast<const char*>(record), size);
}

// Every record that the flat interface holds, by its bytes, in order.
struct Holdings {
  std::size_t libraries = 0;
  std::ptrdiff_t current = 0;
  std::vector<std::string> names;  // of surfaces
  std::vector<std::vector<std::string>> points;
  std::vector<std::string> vertices;

  bool operator==(const Holdings&) const = default;
};

Holdings holdings() {
  const detail::FlatState& state = detail::flatState();
  Holdings held;
  held.libraries = state.libraries.size();
  const auto isCurrent = [&](const auto& library) { return library.get() == state.current; };
  held.current = std::find_if(state.libraries.begin(), state.libraries.end(), isCurrent) - state.libraries.begin();
  for (unsigned int i = 0; DTMSurface* surface = getSurface(i); ++i) {
    held.names.emplace_back(surface->getSurfaceName());
    held.points.emplace_back();
    for (const SurfacePoint* p : surface->getSurfacePoints())
      held.points.back().emplace_back(reinterpret_cast<const char*>(p), sizeof *p);
  }
  for (const RangePoint* vertex : state.rangePoints)
    held.vertices.emplace_back(reinterpret_cast<const char*>(vertex), sizeof *vertex);
  return held;
}

class CallbackState : public FlatTest {
 protected:
  void SetUp() override {
    FlatTest::SetUp();
    fill("points.csv", "A,,102,201,15.5\nB,,105,207,16\nC,,108,203,14\n");
    fill("boundary.waa", "1\n0\nA,201,101,0\nB,201,109,0\nC,209,109,0\nD,209,101,0\n");
  }
  void TearDown() override {
    freeCopies();
    FlatTest::TearDown();
  }

  void freeCopies() {
    for (SurfacePoint* copy : copies_) freeSurfacePoint(copy);
    copies_.clear();
  }

  int readPoints(unsigned int index) {
    const std::size_t before = handed.pointRecords.size();
    const int read = loadSurfacePointsFile(index, path("points.csv").c_str());
    copies_.insert(copies_.end(), handed.pointRecords.begin() + static_cast<std::ptrdiff_t>(before),
                   handed.pointRecords.end());
    return read;
  }

  int readBoundary() {
    bool first = false, second = true;
    return loadRangePointFile(path("boundary.waa").c_str(), &first, &second);
  }

  // A library of two squares and a point file, with what has been saved of it in a folder of its own, and a boundary.
  void setTheScene() {
    newDTMSurfaceLib();
    newDTMSurfaceLib();
    addSquare("Ground", 15, 16);
    addSquare("Design", 16, 15);
    readPoints(0);
    std::filesystem::create_directories(folder_ / "saved");
    for (const char* name : {"a.ttin", "b.ttin", "c.ttin"}) saveSurface(1, path(std::string("saved/") + name).c_str());
    addRangePoint("A", 200, 100, 0);
    addRangePoint("B", 200, 105, 0);
    addRangePoint("C", 210, 105, 0);
  }

  std::vector<SurfacePoint*> copies_;
};

// ---- with and without

// All that a host can see of a run: results in order, what the library holds at the end, and the files.
struct Seen {
  std::vector<std::string> results;
  Holdings held;
  std::map<std::string, std::string> files;

  bool operator==(const Seen&) const = default;

  void note(double result) { results.push_back(std::to_string(result)); }
  void note(FillCutResult* result) {
    results.push_back(result == nullptr ? "none" : bytesOf(result, sizeof *result));
    freeFillCutResult(result);
  }
};

class WithAndWithout : public CallbackState {
 protected:
  // Only the first point's record is released when it is deleted; this one's is left to whoever still knows it.
  static int deleteLaterPoint(unsigned int index, unsigned int point) {
    const DTMSurface* surface = getSurface(index);
    SurfacePoint* left = nullptr;
    if (surface != nullptr && point < surface->getSurfacePoints().size()) left = surface->getSurfacePoints()[point];
    const int deleted = deleteSurfacePoint(index, point);
    freeSurfacePoint(left);
    return deleted;
  }

  void editAndLook(Seen& seen) {
    for (unsigned int i = 0; i < 3; ++i) {
      seen.note(updateSurfacePoint(i, 1, "moved", 200.5, 110, 17));
      seen.note(deleteLaterPoint(i, 5));
      seen.note(getSurfacePoints(i));
      seen.note(previewDTMSurface(i, 99, 107, 199, 211));
      seen.note(previewDTMSurface(i, 500, 600, 500, 600));
      double z = -1.0;
      seen.note(checkSurfacePoint(i, 205, 105, &z));
      seen.note(z);
    }
  }

  void goThroughFiles(Seen& seen) {
    seen.note(saveSurface(0, path("ground.ttin").c_str()));
    seen.note(exportFileSJW(1, path("design.sjw").c_str()));
    getSurfaceByPath(path("saved").c_str(), ".TTIN");
    getSurfaceByPath(path("saved").c_str(), ".nothing");
    seen.note(loadDTMSurface(path("design.sjw").c_str(), 1) != nullptr);
    seen.note(readBoundary());
    seen.note(saveRangePointFile(path("copy.waa").c_str(), true, true));
    seen.note(deleteSurface(path("saved/b.ttin").c_str()));
  }

  void measure(Seen& seen) {
    const std::string ground = path("ground.ttin"), design = path("design.sjw");
    for (const bool limited : {false, true}) {
      seen.note(getFillCut(ground.c_str(), 15.5, limited));
      seen.note(getFillCut2(ground.c_str(), design.c_str(), limited));
      for (const int kind : {0, 1, 2}) {
        const std::string report = path("report" + std::to_string(kind) + (limited ? "limited" : ""));
        seen.note(exportVolumeReport(ground.c_str(), 15.5, limited, kind, kLabels, report.c_str()));
        seen.note(exportVolumeReport2(ground.c_str(), design.c_str(), limited, kind, kLabels, (report + "2").c_str()));
      }
    }
  }

  Seen walk() {
    Seen seen;
    setTheScene();
    seen.note(readPoints(1));
    editAndLook(seen);
    goThroughFiles(seen);
    measure(seen);
    seen.note(releaseDTMSurface(2));
    seen.held = holdings();
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_)) {
      const std::string name = std::filesystem::relative(entry.path(), folder_).string();
      seen.files[name] = entry.is_directory() ? "" : contentsOf(name);
    }
    return seen;
  }

  // The same from the start, in an empty folder.
  Seen walkAnew() {
    TearDown();
    SetUp();
    return walk();
  }
};

TEST_F(WithAndWithout, AHostWithoutCallbacksGetsTheSameResults) {
  const Seen without = walk();
  EXPECT_TRUE(handed.points.empty() && handed.lines.empty() && handed.surfaces.empty() && handed.vertices.empty());
  EXPECT_EQ(5u, without.held.names.size());
  EXPECT_EQ(4u, without.held.vertices.size());
  EXPECT_GT(without.files.size(), 12u);

  TearDown();
  SetUp();
  registerAll();
  const Seen with = walk();
  EXPECT_FALSE(handed.points.empty() || handed.lines.empty() || handed.surfaces.empty() || handed.vertices.empty());
  EXPECT_TRUE(with == without);
  EXPECT_TRUE(walkAnew() == without) << "callbacks are gone again";
}

// ---- callbacks that throw

class Throwing : public CallbackState {
 protected:
  static void throwAtCall(std::size_t call) {
    handed.onEach = [call, made = std::size_t{0}]() mutable {
      if (++made == call) throw std::runtime_error("the host's own");
    };
  }

  void SetUp() override {
    CallbackState::SetUp();
    setTheScene();
    registerAll();
  }
};

TEST_F(Throwing, WhatIsOnlyShownStaysAsItWas) {
  const Holdings before = holdings();
  const auto look = [](unsigned int index) {
    return getSurfacePoints(index) + previewDTMSurface(index, 99, 111, 199, 211);
  };
  std::size_t calls = 0;
  handed.onEach = [&] { ++calls; };
  ASSERT_EQ(2, look(0));
  for (std::size_t call = 1; call <= calls; ++call) {
    throwAtCall(call);
    EXPECT_EQ(1, look(0)) << "the one that was interrupted fails, the other does not";
    EXPECT_TRUE(holdings() == before) << call;
  }
  throwAtCall(calls + 1);
  EXPECT_EQ(2, look(0));
}

TEST_F(Throwing, WhatWasReadBeforeTheFirstCallStays) {
  CallbackState::forgetState();
  setTheScene();
  readPoints(1);
  readBoundary();
  const Holdings expected = holdings();
  constexpr std::size_t kPoints = 3, kVertices = 4;
  for (std::size_t call = 1; call <= kVertices; ++call) {
    CallbackState::forgetState();
    setTheScene();
    registerAll();
    throwAtCall(call);
    EXPECT_EQ(call <= kPoints ? 0 : 1, readPoints(1));
    throwAtCall(call);
    EXPECT_EQ(0, readBoundary());
    EXPECT_TRUE(holdings() == expected) << call;
  }
}

TEST_F(Throwing, SurfacesAreLoadedUpToTheOneWhoseCallThrows) {
  const Holdings before = holdings();
  for (std::size_t call = 1; call <= 3; ++call) {
    throwAtCall(call);
    getSurfaceByPath(path("saved").c_str(), ".ttin");
    Holdings now = holdings();
    ASSERT_EQ(before.names.size() + call, now.names.size());
    while (now.names.size() > before.names.size()) {
      EXPECT_EQ("Design", now.names.back());
      EXPECT_EQ(before.points[1], now.points.back());
      ASSERT_EQ(1, releaseDTMSurface(static_cast<unsigned int>(now.names.size()) - 1));
      now = holdings();
    }
    EXPECT_TRUE(now == before) << call;
  }
}

// ---- callbacks that call back

class CallingBack : public Throwing {};

// Whatever a callback asks that changes nothing, it may ask while it is being shown anything.
TEST_F(CallingBack, QuestionsFromEveryCallbackChangeNothing) {
  const std::string saved = path("saved/a.ttin");
  handed.onEach = [&, depth = 0]() mutable {
    if (depth > 0) return;
    ++depth;
    const std::size_t lines = handed.lines.size();
    EXPECT_EQ(1, previewDTMSurface(1, 99, 111, 199, 211));
    EXPECT_EQ(lines + 9, handed.lines.size());
    const std::size_t points = handed.points.size();
    EXPECT_EQ(1, getSurfacePoints(1));
    EXPECT_EQ(points + 4, handed.points.size());
    double z = 0.0;
    EXPECT_EQ(1, checkSurfacePoint(1, 205, 105, &z));
    EXPECT_EQ(15.5, z);
    freeFillCutResult(getFillCut(saved.c_str(), 1.0, true));
    EXPECT_EQ(1, exportVolumeReport2(saved.c_str(), saved.c_str(), true, 1, kLabels, path("r").c_str()));
    EXPECT_EQ(1, saveSurface(1, path("again.ttin").c_str()));
    --depth;
  };
  const Holdings before = holdings();
  EXPECT_EQ(1, getSurfacePoints(0));
  EXPECT_EQ(7u + 7u * 4u, handed.points.size());
  EXPECT_TRUE(holdings() == before);
  EXPECT_EQ(1, previewDTMSurface(0, 99, 111, 199, 211));
  EXPECT_TRUE(holdings() == before);
  EXPECT_EQ(1, readBoundary());
  EXPECT_EQ(4u, handed.vertices.size());
  getSurfaceByPath(path("saved").c_str(), ".ttin");
  EXPECT_EQ(3u, handed.surfaces.size());
  for (unsigned int i = 0; i < 3; ++i) EXPECT_EQ(1, releaseDTMSurface(2));
  Holdings now = holdings();
  EXPECT_EQ(4u, now.vertices.size());
  now.vertices = before.vertices;
  EXPECT_TRUE(now == before);
}

// An inner call that fails by an exception of its callback fails alone: its guard keeps it from the outer one.
TEST_F(CallingBack, AnExceptionWithinAnInnerCallEndsThatAlone) {
  const Holdings before = holdings();
  handed.onEach = [depth = 0]() mutable {
    if (depth > 0) throw std::runtime_error("the host's own");
    ++depth;
    EXPECT_EQ(0, getSurfacePoints(1));
    EXPECT_EQ(0, previewDTMSurface(1, 99, 111, 199, 211));
    --depth;
  };
  EXPECT_EQ(1, previewDTMSurface(0, 99, 111, 199, 211));
  EXPECT_TRUE(holdings() == before);
}

// Each surface that is shown makes its host load the folder once more: every load is at the end of the list.
TEST_F(CallingBack, AFolderLoadedWhileItIsBeingLoaded) {
  handed.onEach = [&, calls = 0]() mutable {
    if (++calls == 2) getSurfaceByPath(path("saved").c_str(), ".ttin");
  };
  getSurfaceByPath(path("saved").c_str(), ".ttin");
  ASSERT_EQ(6u, handed.surfaces.size());
  for (unsigned int i = 0; i < 6; ++i) EXPECT_EQ(handed.surfaces[i], getSurface(2 + i));
  EXPECT_EQ(nullptr, getSurface(8));
}

TEST_F(CallingBack, APointFileReadWhileOneIsBeingRead) {
  const std::size_t had = getSurface(1)->getSurfacePoints().size();
  int inner = 0;
  handed.onEach = [&, calls = 0]() mutable {
    if (++calls == 2) inner = loadSurfacePointsFile(1, path("points.csv").c_str());
  };
  EXPECT_EQ(1, readPoints(1));
  EXPECT_EQ(1, inner);
  EXPECT_EQ((std::vector<std::string>{"A", "B", "A", "B", "C", "C"}), handed.points);
  EXPECT_EQ(had + 6, getSurface(1)->getSurfacePoints().size());
}

}  // namespace
