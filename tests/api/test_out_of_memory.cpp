// Memory that runs out in the middle of a flat function: the function fails or succeeds, nothing is left half done, and
// the same call succeeds afterwards. Each call is tried with its first allocation failing, its second, and so on until
// it does not reach the one that fails.
#include <cstdlib>
#include <new>

#include "api/FlatTest.h"

namespace {

constexpr long kUnlimited = -1;
long allocationsLeft = kUnlimited;
bool hasFailed = false;

void* allocate(std::size_t size, std::size_t alignment) {
  if (allocationsLeft == 0) {
    hasFailed = true;
    throw std::bad_alloc();
  }
  if (allocationsLeft > 0) --allocationsLeft;
  const std::size_t whole = (size / alignment + 1) * alignment;
  void* memory = alignment <= alignof(std::max_align_t) ? std::malloc(size + 1) : std::aligned_alloc(alignment, whole);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

void* operator new(std::size_t size) { return allocate(size, 1); }
void* operator new[](std::size_t size) { return allocate(size, 1); }
void* operator new(std::size_t size, std::align_val_t to) { return allocate(size, static_cast<std::size_t>(to)); }
void* operator new[](std::size_t size, std::align_val_t to) { return allocate(size, static_cast<std::size_t>(to)); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }

namespace {

int received = 0;

class OutOfMemory : public FlatTest {
 protected:
  void SetUp() override {
    FlatTest::SetUp();
    newDTMSurfaceLib();
    addSquare("Site", 15, 16);
    ASSERT_EQ(1, saveSurface(0, path("s.ttin").c_str()));
    fill("p.csv", "A,,101,201,15.1\nB,,102,202,15.2\n");
    fill("b.waa", "1\n1\nA,1,2,3\nB,4,5,6\n");
    setCallBack([](DrawLine*) { ++received; }, [](SurfacePoint*) { ++received; }, [](DTMSurface*) { ++received; },
                [](RangePoint*) { ++received; });
  }
  void TearDown() override {
    allocationsLeft = kUnlimited;
    FlatTest::TearDown();
  }

  // Runs `call` again and again, with ever more memory; `check` sees whether it failed for want of it.
  template <typename Call, typename Check>
  static void withEverMoreMemory(const Call& call, const Check& check) {
    int failures = 0;
    for (long allowed = 0;; ++allowed) {
      hasFailed = false;
      allocationsLeft = allowed;
      const auto result = call();
      allocationsLeft = kUnlimited;
      check(result, hasFailed);
      if (!hasFailed) break;
      ++failures;
      ASSERT_LT(failures, 100000);
    }
    EXPECT_GT(failures, 0);
  }

  static int surfaces() { return static_cast<int>(detail::flatState().current->getSurfacesNumber()); }
  static int points() { return getSurface(0)->getPointsNumber(); }
};

TEST_F(OutOfMemory, NewLibrary) {
  std::size_t libraries = 1;
  DTMSurfaceLib* current = detail::flatState().current;
  withEverMoreMemory([] { return newDTMSurfaceLib(); },
                     [&](DTMSurfaceLib* made, bool failed) {
                       EXPECT_EQ(failed, made == nullptr);
                       libraries += failed ? 0 : 1;
                       EXPECT_EQ(libraries, detail::flatState().libraries.size());
                       EXPECT_EQ(failed ? current : made, detail::flatState().current);
                     });
}

TEST_F(OutOfMemory, AddSurface) {
  withEverMoreMemory([] { return addDTMSurface("S"); },
                     [&](DTMSurface* made, bool failed) {
                       EXPECT_EQ(failed, made == nullptr);
                       EXPECT_EQ(failed ? 1 : 2, surfaces());
                     });
}

TEST_F(OutOfMemory, AddAndReplacePoints) {
  withEverMoreMemory([] { return addSurfacePoint(0, "P", 205, 105, 15.5); },
                     [&](int done, bool failed) {
                       EXPECT_EQ(failed ? 0 : 1, done);
                       EXPECT_EQ(failed ? 4 : 5, points());
                     });
  withEverMoreMemory([] { return updateSurfacePoint(0, 4, "Q", 205, 105, 15.5); },
                     [&](int done, bool failed) {
                       EXPECT_EQ(failed ? 0 : 1, done);
                       EXPECT_STREQ(failed ? "P" : "Q", getSurface(0)->getSurfacePoints()[4]->getSurfacePointName());
                     });
}

TEST_F(OutOfMemory, Boundary) {
  withEverMoreMemory([] { return addRangePoint("A", 1, 2, 3); },
                     [&](int done, bool failed) {
                       EXPECT_EQ(failed ? 0 : 1, done);
                       EXPECT_EQ(failed ? 0u : 1u, detail::flatState().rangePoints.size());
                     });
  withEverMoreMemory([] { return updateRangePoint(0, "B", 1, 2, 3); },
                     [&](int done, bool failed) {
                       EXPECT_EQ(failed ? 0 : 1, done);
                       EXPECT_STREQ(failed ? "A" : "B", detail::flatState().rangePoints[0]->name);
                     });
}

TEST_F(OutOfMemory, Preview) {
  withEverMoreMemory(
      [] {
        received = 0;
        return previewDTMSurface(0, 99, 111, 199, 211);
      },
      [&](int done, bool failed) {
        EXPECT_EQ(failed ? 0 : 1, done);
        EXPECT_EQ(failed ? 0 : 9, received);
      });
}

TEST_F(OutOfMemory, ListOfPoints) {
  withEverMoreMemory(
      [] {
        received = 0;
        return getSurfacePoints(0);
      },
      [&](int done, bool failed) {
        EXPECT_EQ(failed ? 0 : 1, done);
        EXPECT_EQ(failed ? 0 : 4, received);
      });
}

// Reading boundary files empties the boundary first; after a failure it holds what was read by then.
TEST_F(OutOfMemory, BoundaryFile) {
  const std::string file = path("b.waa");
  bool first = false, second = false;
  withEverMoreMemory(
      [&] {
        received = 0;
        return loadRangePointFile(file.c_str(), &first, &second);
      },
      [&](int done, bool failed) {
        EXPECT_EQ(failed ? 0 : 1, done);
        EXPECT_EQ(failed ? 0 : 2, received);
        EXPECT_LE(detail::flatState().rangePoints.size(), 2u);
      });
  EXPECT_EQ(2u, detail::flatState().rangePoints.size());
}

TEST_F(OutOfMemory, SurfaceFile) {
  const std::string file = path("s.ttin");
  withEverMoreMemory([&] { return loadDTMSurface(file.c_str(), 0); },
                     [&](DTMSurface* loaded, bool failed) {
                       EXPECT_EQ(failed, loaded == nullptr);
                       EXPECT_EQ(failed ? 1 : 2, surfaces());
                     });
}

TEST_F(OutOfMemory, Volume) {
  const std::string file = path("s.ttin");
  withEverMoreMemory([&] { return getFillCut(file.c_str(), 10.0, false); },
                     [&](FillCutResult* result, bool failed) {
                       EXPECT_EQ(failed, result == nullptr);
                       EXPECT_NEAR(550.0, result == nullptr ? 550.0 : result->getCutVolume(), 1e-9);
                       freeFillCutResult(result);
                     });
}

}  // namespace
