// Files that are larger than memory, or have no end: they count as files that cannot be read. Each is all hole, so that
// it takes no room on the disk, and is read in a process of its own whose memory is limited. The address sanitizer
// reserves more than any such limit leaves.
#if !defined(_WIN32) && !defined(ORVIKDTM_SANITIZED)

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "io/SurfaceFiles.h"

namespace {

class HugeFiles : public InFolder {
 protected:
  static constexpr std::uintmax_t kSize = std::uintmax_t{1} << 36;
  static constexpr rlim_t kMemory = rlim_t{1} << 32;

  std::string huge(const std::string& name) const {
    write(name, std::string("x"));
    std::filesystem::resize_file(path(name), kSize);
    return path(name);
  }

  // Whether `work` succeeds in a process with little memory. 2 means that it threw.
  template <typename Work>
  static int inLittleMemory(Work work) {
    const pid_t child = fork();
    if (child == 0) {
      const rlimit limit{kMemory, kMemory};
      if (setrlimit(RLIMIT_AS, &limit) != 0) _exit(3);
      try {
        _exit(work() ? 1 : 0);
      } catch (...) {
        _exit(2);
      }
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
};

TEST_F(HugeFiles, CannotBeLoadedAndLeaveTheSurfaceAlone) {
  const std::string names[] = {"x.ttin", "x.sjw", "x.xml"};
  OwnedSurface surface(risingSquare());
  const Block before = surface.toBytes();
  for (int type = 0; type < 3; ++type) {
    const std::string file = huge(names[type]);
    const auto fails = [&] {
      return !DTMFileOperation().loadSurface(file.c_str(), type, &surface) && surface.toBytes() == before;
    };
    EXPECT_EQ(1, inLittleMemory(fails)) << names[type];
  }
}

TEST_F(HugeFiles, WithPointsLeaveTheTin) {
  OwnedSurface surface(risingSquare());
  const std::string file = huge("x.csv");
  const CEType* tin = surface.getCEType();
  const auto changesNothing = [&] {
    std::vector<SurfacePoint*> out;
    surface.loadSurfacePointsFile(file.c_str(), out);
    return out.empty() && surface.getCEType() == tin && surface.getPointsNumber() == 4;
  };
  EXPECT_EQ(1, inLittleMemory(changesNothing));
}

TEST_F(HugeFiles, WithABoundaryFail) {
  const std::string file = huge("x.waa");
  const auto fails = [&] {
    std::vector<RangePoint*> out;
    bool first = true;
    bool second = true;
    return !DTMFileOperation().loadRangePointFile(file.c_str(), &first, &second, out) && first && second;
  };
  EXPECT_EQ(1, inLittleMemory(fails));
}

// A device that gives bytes for ever counts as one that cannot be read.
TEST_F(HugeFiles, WithoutAnEndCannotBeRead) {
  const auto endless = [this](const char* name) {
    std::filesystem::create_symlink("/dev/zero", folder_ / name);
    return path(name);
  };
  OwnedSurface surface(risingSquare());
  const Block before = surface.toBytes();
  EXPECT_FALSE(DTMFileOperation().loadSurface(endless("x.ttin").c_str(), 0, &surface));
  std::vector<SurfacePoint*> out;
  surface.loadSurfacePointsFile(endless("x.csv").c_str(), out);
  EXPECT_TRUE(out.empty());
  EXPECT_EQ(before, surface.toBytes());
}

}  // namespace

#endif
