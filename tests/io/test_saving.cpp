// Everything that the library writes, on a disk that is full, in a process that is killed, and where only the file
// itself may be written: what lies at the target afterwards is the old file or the new one, whole.
#if !defined(_WIN32)

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

#if defined(__linux__)
#include <sched.h>
#include <sys/mount.h>
#endif

#include "io/Limits.h"
#include "io/SurfaceFiles.h"

namespace {

namespace fs = std::filesystem;

constexpr int kPassed = 0;
constexpr int kFailed = 1;
constexpr int kNotAllowed = 2;

// What a host may write, in two states of different lengths.
struct Contents {
  explicit Contents(const std::vector<Position>& positions)
      : surface(positions), result(surface.getFillCut(positions.front().z)) {
    for (const Position& at : positions) range.push_back(new RangePoint{"B", at.n, at.e, at.z});
  }
  ~Contents() {
    for (const RangePoint* vertex : range) delete vertex;
  }
  Contents(const Contents&) = delete;
  Contents& operator=(const Contents&) = delete;

  OwnedSurface surface;
  std::unique_ptr<FillCutResult> result;
  std::vector<RangePoint*> range;
};

struct Format {
  const char* name;
  bool (*write)(const char* path, Contents& contents);
};

void PrintTo(const Format& format, std::ostream* out) { *out << format.name; }

constexpr const char* kLabels = "A,B,C,D,E,F,G,H,I,J,K,L";

bool writeReport(int form, const char* path, Contents& contents) {
  return DTMFileOperation().exportVolumeReport(contents.result.get(), &contents.surface, form, 1.5, kLabels, path);
}

const Format kFormats[] = {
    {"ttin", [](const char* path, Contents& c) { return DTMFileOperation().saveSurfaces(path, &c.surface); }},
    {"sjw", [](const char* path, Contents& c) { return c.surface.exportFileSJW(path); }},
    {"waa",
     [](const char* path, Contents& c) { return DTMFileOperation().saveRangePointFile(path, true, false, c.range); }},
    {"html", [](const char* path, Contents& c) { return writeReport(0, path, c); }},
    {"txt", [](const char* path, Contents& c) { return writeReport(1, path, c); }},
};

std::string contentsOf(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

std::size_t entriesOf(const fs::path& folder) {
  return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

// Root may write everywhere; the tests of what may not be written run as somebody else.
bool givesUpPrivileges() {
  constexpr uid_t kNobody = 65534;
  return geteuid() != 0 || (setgid(kNobody) == 0 && setuid(kNobody) == 0);
}

// A disk of so many bytes at `folder`, seen by this process and its children alone, and gone with them. False where
// that is not allowed.
bool mountsDisk(const fs::path& folder, std::size_t bytes) {
#if defined(__linux__)
  const std::string size = "size=" + std::to_string(bytes);
  return unshare(CLONE_NEWNS) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
         mount("disk", folder.c_str(), "tmpfs", 0, size.c_str()) == 0;
#else
  static_cast<void>(folder);
  static_cast<void>(bytes);
  return false;
#endif
}

class Saving : public testing::TestWithParam<Format> {
 protected:
  static constexpr int kFewPoints = 12;
  static constexpr int kManyPoints = 200;

  Saving() : old_(scattered(kFewPoints)), new_(scattered(kManyPoints)) {}

  void SetUp() override {
    folder_ = fs::temp_directory_path() / ("orvikdtm-saving-" + std::to_string(std::random_device()()));
    fs::create_directories(folder_);
    oldBytes_ = bytesOf(old_);
    newBytes_ = bytesOf(new_);
    ASSERT_NE(oldBytes_, newBytes_);
    fs::remove(target());
  }
  void TearDown() override {
    fs::permissions(folder_, fs::perms::owner_all);
    fs::remove_all(folder_);
  }

  std::string target() const { return (folder_ / "target").string(); }
  bool save(Contents& contents) const { return GetParam().write(target().c_str(), contents); }

  std::string bytesOf(Contents& contents) const {
    EXPECT_TRUE(save(contents));
    return contentsOf(target());
  }

  // Saves the new contents over the old ones where there is room for `room` bytes, and tells whether all is well
  // afterwards.
  int savesOnFullDisk(std::size_t room) {
    const bool fits = room >= newBytes_.size();
    if (save(new_) != fits) return kFailed;
    const bool isWhole = contentsOf(target()) == (fits ? newBytes_ : oldBytes_);
    return isWhole && entriesOf(folder_) == 1 ? kPassed : kFailed;
  }

  int onLimitedFiles(std::size_t room) {
    return inChild([&] { return limitsFiles(room) ? savesOnFullDisk(room) : kNotAllowed; });
  }

  int onDisk(std::size_t pages) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return inChild([&] {
      if (!mountsDisk(folder_, pages * page)) return kNotAllowed;
      if (!save(old_) || contentsOf(target()) != oldBytes_) return kFailed;
      const std::size_t oldPages = (oldBytes_.size() + page - 1) / page;
      return savesOnFullDisk((pages - oldPages) * page);
    });
  }

  fs::path folder_;
  Contents old_;
  Contents new_;
  std::string oldBytes_;
  std::string newBytes_;
};

TEST_P(Saving, AFullDiskLeavesTheOldFile) {
  constexpr std::size_t kSteps = 37;
  ASSERT_TRUE(save(old_));
  for (std::size_t step = 0; step < kSteps; ++step) {
    ASSERT_EQ(kPassed, onLimitedFiles(newBytes_.size() * step / kSteps)) << step;
  }
  for (const std::size_t missing : {2u, 1u}) ASSERT_EQ(kPassed, onLimitedFiles(newBytes_.size() - missing));
  EXPECT_EQ(oldBytes_, contentsOf(target()));
  EXPECT_EQ(kPassed, onLimitedFiles(newBytes_.size()));
  EXPECT_EQ(newBytes_, contentsOf(target()));
}

// On a disk of the test's own, whose room is counted in pages. Where nobody may mount one, the limit on files stands
// in for it.
TEST_P(Saving, ASmallDiskLeavesTheOldFile) {
  const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  const std::size_t oldPages = (oldBytes_.size() + page - 1) / page;
  const std::size_t newPages = (newBytes_.size() + page - 1) / page;
  for (std::size_t free = 0; free <= newPages + 1; ++free) {
    int outcome = onDisk(oldPages + free);
    if (outcome == kNotAllowed) {
      ASSERT_TRUE(save(old_));
      outcome = onLimitedFiles(free * page);
    }
    ASSERT_EQ(kPassed, outcome) << free << " pages of " << newPages;
  }
}

TEST_P(Saving, AFullDiskLeavesNoNewFile) {
  const auto saves = [this] {
    if (!limitsFiles(newBytes_.size() / 2)) return kNotAllowed;
    return !save(new_) && entriesOf(folder_) == 0 ? kPassed : kFailed;
  };
  EXPECT_EQ(kPassed, inChild(saves));
}

TEST_P(Saving, ADeviceThatIsFullIsWrittenInPlace) {
  EXPECT_FALSE(GetParam().write("/dev/full", new_));
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

// Whatever the moment, and at most one file of each process that was killed is left over.
TEST_P(Saving, AKillLeavesTheOldFileOrTheNewOne) {
  constexpr int kPoints = 12'000;  // files of megabytes, written in several pieces
  constexpr std::size_t kKills = 30;
  constexpr unsigned kLatest = 20'000;  // microseconds
  Contents large(scattered(kPoints));
  const std::string largeBytes = bytesOf(large);
  ASSERT_TRUE(save(old_));
  std::mt19937 random(11);
  for (std::size_t kills = 1; kills <= kKills; ++kills) {
    const pid_t writer = fork();
    if (writer == 0) {
      for (;;) {
        save(large);
        save(old_);
      }
    }
    usleep(static_cast<useconds_t>(random() % kLatest));
    kill(writer, SIGKILL);
    waitpid(writer, nullptr, 0);
    const std::string left = contentsOf(target());
    ASSERT_TRUE(left == oldBytes_ || left == largeBytes) << left.size();
    ASSERT_LE(entriesOf(folder_), 1 + kills);
  }
  ASSERT_TRUE(save(large));
  EXPECT_EQ(largeBytes, contentsOf(target()));
}

TEST_P(Saving, WhereTheFolderAllowsNoNewFileTheTargetIsWritten) {
  ASSERT_TRUE(save(old_));
  fs::permissions(target(), fs::perms::all);
  fs::permissions(folder_,
                  fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read | fs::perms::others_exec);
  EXPECT_EQ(kPassed, inChild([this] {
              if (!givesUpPrivileges()) return kNotAllowed;
              const std::string beside = (folder_ / "new").string();
              return save(new_) && !GetParam().write(beside.c_str(), new_) ? kPassed : kFailed;
            }));
  EXPECT_EQ(newBytes_, contentsOf(target()));
  EXPECT_EQ(1u, entriesOf(folder_));
}

TEST_P(Saving, ATargetThatMayNotBeWrittenStays) {
  ASSERT_TRUE(save(old_));
  fs::permissions(target(), fs::perms::owner_read | fs::perms::others_read);
  fs::permissions(folder_, fs::perms::all);
  EXPECT_EQ(kPassed, inChild([this] {
              if (!givesUpPrivileges()) return kNotAllowed;
              return save(new_) ? kFailed : kPassed;
            }));
  EXPECT_EQ(oldBytes_, contentsOf(target()));
  EXPECT_EQ(1u, entriesOf(folder_));
}

TEST_P(Saving, WhereThereIsNoFolderNothingIsWritten) {
  for (const char* name : {"absent/file", "."}) {
    EXPECT_FALSE(GetParam().write((folder_ / name).c_str(), new_)) << name;
  }
  EXPECT_FALSE(GetParam().write(nullptr, new_));
  EXPECT_EQ(0u, entriesOf(folder_));
}

INSTANTIATE_TEST_SUITE_P(, Saving, testing::ValuesIn(kFormats),
                         [](const testing::TestParamInfo<Format>& format) { return std::string(format.param.name); });

}  // namespace

#endif
