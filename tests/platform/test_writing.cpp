// Writing files so that nothing is lost: a disk that is full, limits of the process, a process that is killed, signals,
// links, permissions, folders that allow no new file.
#if !defined(_WIN32)

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <OrvikDTMAlgorithm/platform/FileSink.h>
#include <OrvikDTMAlgorithm/platform/Platform.h>
#include <gtest/gtest.h>

namespace {

// How the system answers when it is asked to rename, or so many times to flush a file to the disk, and whether it says
// that its disks are full; 0 and false leave all as it is.
int renameFailsWith = 0;
int flushFailsWith = 0;
int flushesThatFail = 0;
bool disksAreFull = false;

}  // namespace

// These stand before those of the C library, so that the library under test asks them.
extern "C" int rename(const char* from, const char* to) noexcept {
  if (renameFailsWith == 0) return renameat(AT_FDCWD, from, AT_FDCWD, to);
  errno = renameFailsWith;
  return -1;
}

extern "C" int fsync(int file) {
  if (flushesThatFail == 0) return static_cast<int>(syscall(SYS_fsync, file));
  --flushesThatFail;
  errno = flushFailsWith;
  return -1;
}

extern "C" int statvfs(const char* path, struct statvfs* disk) noexcept {
  const int file = open(path, O_RDONLY | O_CLOEXEC);
  if (file < 0) return -1;
  const int result = fstatvfs(file, disk);
  close(file);
  if (disksAreFull) disk->f_bavail = 0;
  return result;
}

namespace {

namespace fs = std::filesystem;

constexpr const char* kOld = "the old contents";

class Writing : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = fs::temp_directory_path() / ("orvikdtm-writing-" + std::to_string(std::random_device()()));
    fs::create_directories(folder_);
    std::ofstream(target(), std::ios::binary) << kOld;
  }
  void TearDown() override {
    renameFailsWith = 0;
    flushesThatFail = 0;
    disksAreFull = false;
    fs::permissions(folder_, fs::perms::owner_all);
    fs::remove_all(folder_);
  }

  std::string path(const std::string& name) const { return (folder_ / name).string(); }
  std::string target() const { return path("file"); }

  static std::string contentsOf(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
  }

  std::size_t entries() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
  }

  static bool write(const std::string& path, const std::string& contents) {
    return detail::writeBinaryFile(path.c_str(), contents.size(),
                                   [&contents](detail::FileSink& sink) { sink.append(contents); });
  }

  fs::path folder_;
};

// What `work` returns in a process of its own, as its exit status.
template <typename Work>
int inChild(Work work) {
  const pid_t child = fork();
  if (child == 0) _exit(static_cast<int>(work()));
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// Root may write everywhere; the tests of what may not be written run as somebody else.
void giveUpPrivileges() {
  constexpr uid_t kNobody = 65534;
  if (geteuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0)) _exit(99);
}

TEST_F(Writing, PiecesOfEverySize) {
  std::string expected;
  std::mt19937 random(1);
  const auto fill = [&](detail::FileSink& sink) {
    expected.clear();
    for (int i = 0; i < 3000; ++i) {
      const std::size_t size = random() % (detail::FileSink::kLargestPiece + 1);
      const std::string piece(size, static_cast<char>('a' + i % 26));
      std::memcpy(sink.claim(size), piece.data(), size);
      expected += piece;
      if (i % 1000 == 999) {
        sink.append(piece);
        expected += piece;
      }
    }
  };
  ASSERT_TRUE(detail::writeBinaryFile(target().c_str(), 0, fill));
  EXPECT_EQ(expected, contentsOf(target()));
  EXPECT_EQ(1u, entries());
}

TEST_F(Writing, BytesStayAsTheyAre) {
  const std::string all("a\r\nb\nc\0\x1A\xFF", 10);
  ASSERT_TRUE(write(target(), all));
  EXPECT_EQ(all, contentsOf(target()));
}

TEST_F(Writing, ANewFileHasThePermissionsThatTheUserAllows) {
  const mode_t before = umask(027);
  ASSERT_TRUE(write(path("new"), "x"));
  umask(before);
  struct stat status {};
  ASSERT_EQ(0, stat(path("new").c_str(), &status));
  EXPECT_EQ(0640u, status.st_mode & 07777u);
}

TEST_F(Writing, ThePermissionsStay) {
  for (const mode_t mode : {0600u, 0644u, 0666u, 0755u}) {
    ASSERT_EQ(0, chmod(target().c_str(), mode));
    ASSERT_TRUE(write(target(), "x"));
    struct stat status {};
    ASSERT_EQ(0, stat(target().c_str(), &status));
    EXPECT_EQ(mode, status.st_mode & 07777u);
  }
}

TEST_F(Writing, LinksAreFollowed) {
  fs::create_directories(folder_ / "sub");
  fs::create_symlink("../file", folder_ / "sub" / "relative");
  fs::create_symlink(folder_ / "sub" / "relative", folder_ / "link");
  ASSERT_TRUE(write(path("link"), "through two links"));
  EXPECT_EQ("through two links", contentsOf(target()));
  EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
  EXPECT_TRUE(fs::is_symlink(folder_ / "sub" / "relative"));

  fs::create_symlink("sub/not yet", folder_ / "dangling");
  ASSERT_TRUE(write(path("dangling"), "made"));
  EXPECT_EQ("made", contentsOf(path("sub/not yet")));
  EXPECT_TRUE(fs::is_symlink(folder_ / "dangling"));

  fs::create_symlink("round", folder_ / "round");
  EXPECT_FALSE(write(path("round"), "x"));
}

TEST_F(Writing, AFileInAFolderThatAllowsNoNewOneIsWrittenInPlace) {
  fs::permissions(target(), fs::perms::all);
  fs::permissions(folder_,
                  fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read | fs::perms::others_exec);
  const auto inPlace = [this] {
    giveUpPrivileges();
    return write(target(), "in place") && !write(path("new"), "x");
  };
  EXPECT_EQ(1, inChild(inPlace));
  EXPECT_EQ("in place", contentsOf(target()));
  EXPECT_EQ(1u, entries());
}

// Where only owners may remove files, another user's file that everybody may write stays the same file.
TEST_F(Writing, AFileOfAnotherUserInASharedFolderIsWrittenInPlace) {
  fs::permissions(target(), fs::perms::all);
  fs::permissions(folder_, fs::perms::all | fs::perms::sticky_bit);
  const auto inPlace = [this] {
    giveUpPrivileges();
    return write(target(), "in place");
  };
  EXPECT_EQ(1, inChild(inPlace));
  EXPECT_EQ("in place", contentsOf(target()));
  EXPECT_EQ(1u, entries());
}

TEST_F(Writing, AFileThatMayNotBeReplacedIsWrittenInPlaceWithNoOtherBesideIt) {
  for (const int refusal : {EPERM, EACCES, EBUSY, EXDEV}) {
    renameFailsWith = refusal;
    std::size_t fills = 0;
    std::size_t entriesAtTheSecond = 0;
    const auto fill = [&](detail::FileSink& sink) {
      if (++fills == 2) entriesAtTheSecond = entries();
      sink.append(std::to_string(refusal));
    };
    ASSERT_TRUE(detail::writeBinaryFile(target().c_str(), 0, fill)) << refusal;
    EXPECT_EQ(2u, fills);
    EXPECT_EQ(1u, entriesAtTheSecond) << "the room of the one beside it may be needed";
    EXPECT_EQ(std::to_string(refusal), contentsOf(target()));
  }
  EXPECT_EQ(1u, entries());
}

TEST_F(Writing, AFileThatCouldNotBeReplacedForAnotherReasonStays) {
  for (const int failure : {ENOSPC, EIO, EDQUOT, EROFS}) {
    renameFailsWith = failure;
    EXPECT_FALSE(write(target(), "x")) << failure;
    EXPECT_EQ(kOld, contentsOf(target())) << failure;
    EXPECT_EQ(1u, entries()) << failure;
  }
}

TEST_F(Writing, AFileIsNotEmptiedWhereTheNewContentsHaveNoRoom) {
  renameFailsWith = EPERM;
  disksAreFull = true;
  EXPECT_FALSE(write(target(), std::string(1'000'000, 'n')));
  EXPECT_EQ(kOld, contentsOf(target()));
  EXPECT_EQ(1u, entries());

  std::ofstream(target(), std::ios::binary) << std::string(2'000'000, 'o');
  EXPECT_TRUE(write(target(), std::string(1'000'000, 'n'))) << "the old contents make room";
  EXPECT_EQ(std::string(1'000'000, 'n'), contentsOf(target()));
}

TEST_F(Writing, AFileInAFolderThatAllowsNoNewOneIsNotEmptiedWhereTheNewContentsHaveNoRoom) {
  fs::permissions(target(), fs::perms::all);
  fs::permissions(folder_,
                  fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read | fs::perms::others_exec);
  disksAreFull = true;
  const auto cutShort = [this] {
    giveUpPrivileges();
    return !write(target(), std::string(1'000'000, 'n'));
  };
  EXPECT_EQ(1, inChild(cutShort));
  EXPECT_EQ(kOld, contentsOf(target()));
}

TEST_F(Writing, AFileThatMayNotBeWrittenIsNotReplaced) {
  fs::permissions(target(), fs::perms::owner_read | fs::perms::others_read);
  fs::permissions(folder_, fs::perms::all);
  const auto refused = [this] {
    giveUpPrivileges();
    return !write(target(), "x");
  };
  EXPECT_EQ(1, inChild(refused));
  EXPECT_EQ(kOld, contentsOf(target()));
  EXPECT_EQ(1u, entries());
}

TEST_F(Writing, WhatIsNoOrdinaryFileIsWrittenInPlace) {
  EXPECT_TRUE(write("/dev/null", "x"));
  EXPECT_TRUE(fs::is_character_file("/dev/null"));

  ASSERT_EQ(0, mkfifo(path("pipe").c_str(), 0600));
  const pid_t reader = fork();
  if (reader == 0) _exit(contentsOf(path("pipe")) == "through a pipe" ? 0 : 1);
  EXPECT_TRUE(write(path("pipe"), "through a pipe"));
  int status = -1;
  waitpid(reader, &status, 0);
  EXPECT_EQ(0, status);
  EXPECT_TRUE(fs::is_fifo(folder_ / "pipe"));
}

TEST_F(Writing, WhereThereIsNoFolderNothingIsWritten) {
  for (const std::string& name : {path("absent/file"), path("file/file"), folder_.string(), std::string()}) {
    EXPECT_FALSE(write(name, "x")) << name;
  }
  EXPECT_EQ(kOld, contentsOf(target()));
  EXPECT_EQ(1u, entries());
}

TEST_F(Writing, AFillThatThrowsLeavesTheOldFile) {
  const auto fill = [](detail::FileSink& sink) {
    sink.append("half");
    throw std::bad_alloc();
  };
  EXPECT_THROW(detail::writeBinaryFile(target().c_str(), 0, fill), std::bad_alloc);
  EXPECT_EQ(kOld, contentsOf(target()));
  EXPECT_EQ(1u, entries());
}

// What a process of the tests comes back with.
constexpr int kFails = 0;
constexpr int kSucceeds = 1;
constexpr int kNotAllowed = 99;

bool limits(decltype(RLIMIT_FSIZE) resource, rlim_t most) {
  const rlimit limit{most, most};
  return setrlimit(resource, &limit) == 0;
}

// Without telling the size beforehand, byte by byte.
bool writeBytes(const std::string& path, const std::string& contents) {
  return detail::writeBinaryFile(path.c_str(), 0, [&contents](detail::FileSink& sink) {
    for (const char c : contents) *sink.claim(1) = static_cast<unsigned char>(c);
  });
}

// A disk with room for so many bytes of a file, in a process of its own: as much as is allowed is written, and then no
// more, as on a disk that is full. The process knows nothing of the signal that goes with the limit.
int writeWithRoomFor(rlim_t room, const std::string& path, const std::string& contents) {
  return inChild([&] {
    std::signal(SIGXFSZ, SIG_DFL);
    return limits(RLIMIT_FSIZE, room) ? int{writeBytes(path, contents)} : kNotAllowed;
  });
}

TEST_F(Writing, AFullDiskLeavesTheOldFile) {
  const std::string contents(100, 'n');
  for (rlim_t room = 0; room < contents.size(); ++room) {
    ASSERT_EQ(kFails, writeWithRoomFor(room, target(), contents)) << room;
    ASSERT_EQ(kOld, contentsOf(target())) << room;
    ASSERT_EQ(1u, entries()) << room;
  }
  ASSERT_EQ(kSucceeds, writeWithRoomFor(contents.size(), target(), contents));
  EXPECT_EQ(contents, contentsOf(target()));
}

TEST_F(Writing, AFullDiskLeavesTheOldFileHoweverLargeTheNewOne) {
  const std::string contents(5'000'000, 'n');
  for (rlim_t room = 1; room < contents.size(); room = room * 3 + 1) {
    ASSERT_EQ(kFails, writeWithRoomFor(room, target(), contents)) << room;
    ASSERT_EQ(kOld, contentsOf(target())) << room;
    ASSERT_EQ(1u, entries()) << room;
  }
}

TEST_F(Writing, AFullDiskLeavesNoNewFile) {
  EXPECT_EQ(kFails, writeWithRoomFor(5, path("new"), "more than that"));
  EXPECT_FALSE(fs::exists(path("new")));
  EXPECT_EQ(1u, entries());
}

TEST_F(Writing, AFileThatIsWrittenInPlaceIsNotEmptiedBeyondTheLimitOnFiles) {
  const auto refused = [this] {
    renameFailsWith = EPERM;
    if (!limits(RLIMIT_FSIZE, 1000)) return kNotAllowed;
    return write(target(), std::string(1001, 'n')) || !write(target(), std::string(1000, 'n')) ? kSucceeds : kFails;
  };
  EXPECT_EQ(kFails, inChild(refused));
  EXPECT_EQ(std::string(1000, 'n'), contentsOf(target()));
}

// Where the path has room for the file's name, but not for one beside it.
TEST_F(Writing, ANewFileThatIsCutShortInPlaceIsRemoved) {
  constexpr std::size_t kLongestPath = 4095;
  fs::path deep = folder_;
  while (deep.native().size() + 252 < kLongestPath - 2) deep /= std::string(250, 'd');
  deep /= std::string(kLongestPath - deep.native().size() - 3, 'e');
  fs::create_directories(deep);
  const std::string file = (deep / "f").string();
  ASSERT_EQ(kLongestPath, file.size());
  EXPECT_EQ(kFails, writeWithRoomFor(5, file, "more than that"));
  EXPECT_FALSE(fs::exists(file));
  EXPECT_EQ(kSucceeds, writeWithRoomFor(14, file, "more than that"));
  EXPECT_EQ("more than that", contentsOf(file));
}

TEST_F(Writing, WithoutADescriptorTheOldFileStays) {
  for (const std::string& name : {target(), path("new"), std::string("/dev/null")}) {
    const auto refused = [&] {
      if (!limits(RLIMIT_NOFILE, 0)) return kNotAllowed;
      return write(name, "x") ? kSucceeds : kFails;
    };
    EXPECT_EQ(kFails, inChild(refused)) << name;
  }
  EXPECT_EQ(kOld, contentsOf(target()));
  EXPECT_EQ(1u, entries());
}

TEST_F(Writing, AFileThatCouldNotBeFlushedToTheDiskIsNotPutInPlace) {
  for (const int failure : {EIO, ENOSPC, EDQUOT}) {
    flushFailsWith = failure;
    flushesThatFail = 1;
    EXPECT_FALSE(write(target(), "x")) << failure;
    EXPECT_EQ(kOld, contentsOf(target())) << failure;
    EXPECT_EQ(1u, entries()) << failure;
  }
}

TEST_F(Writing, AFlushThatWasInterruptedIsMadeAgain) {
  flushFailsWith = EINTR;
  flushesThatFail = 3;
  EXPECT_TRUE(write(target(), "x"));
  EXPECT_EQ("x", contentsOf(target()));
}

// ---- signals

volatile std::sig_atomic_t signalsHandled = 0;

void handle(int /*signal*/) { signalsHandled = signalsHandled + 1; }

void setHandler(int signal, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  sigaction(signal, &action, nullptr);
}

bool isPending(int signal) {
  sigset_t pending;
  return sigpending(&pending) == 0 && sigismember(&pending, signal) == 1;
}

sigset_t blocked() {
  sigset_t mask;
  pthread_sigmask(SIG_SETMASK, nullptr, &mask);
  return mask;
}

bool isBlocked(int signal) {
  const sigset_t mask = blocked();
  return sigismember(&mask, signal) == 1;
}

void block(int signal) {
  sigset_t one;
  sigemptyset(&one);
  sigaddset(&one, signal);
  pthread_sigmask(SIG_BLOCK, &one, nullptr);
}

// Checks inside a child: the line of the first that fails is its exit status.
#define REQUIRE(condition) \
  if (!(condition)) return __LINE__ % 256

TEST_F(Writing, ARefusedWriteLeavesTheHostsSignalsAsTheyAre) {
  EXPECT_EQ(0, inChild([this] {
              setHandler(SIGXFSZ, handle);
              REQUIRE(limits(RLIMIT_FSIZE, 10));
              REQUIRE(!write(target(), "more than ten bytes") && !writeBytes(target(), "more than ten bytes"));
              REQUIRE(signalsHandled == 0);
              REQUIRE(!isBlocked(SIGXFSZ) && !isBlocked(SIGPIPE) && !isPending(SIGXFSZ));
              const int own = open(target().c_str(), O_WRONLY);
              REQUIRE(pwrite(own, "x", 1, 100) < 0 && signalsHandled == 1);
              return 0;
            }));
  EXPECT_EQ(0, inChild([this] {
              setHandler(SIGXFSZ, handle);
              block(SIGXFSZ);
              REQUIRE(limits(RLIMIT_FSIZE, 10));
              REQUIRE(!writeBytes(target(), "more than ten bytes"));
              REQUIRE(isBlocked(SIGXFSZ) && !isPending(SIGXFSZ));
              raise(SIGXFSZ);
              REQUIRE(!writeBytes(target(), "more than ten bytes"));
              REQUIRE(isBlocked(SIGXFSZ) && isPending(SIGXFSZ) && signalsHandled == 0);
              return 0;
            }));
  EXPECT_EQ(kOld, contentsOf(target()));
}

TEST_F(Writing, AFillThatThrowsLeavesTheHostsSignalsAsTheyAre) {
  const auto fill = [](detail::FileSink&) { throw std::bad_alloc(); };
  EXPECT_THROW(detail::writeBinaryFile(target().c_str(), 0, fill), std::bad_alloc);
  EXPECT_FALSE(isBlocked(SIGXFSZ));
  EXPECT_FALSE(isBlocked(SIGPIPE));
}

TEST_F(Writing, APipeWhoseReaderHasGoneIsAFailure) {
  ASSERT_EQ(0, mkfifo(path("pipe").c_str(), 0600));
  const pid_t reader = fork();
  if (reader == 0) {
    const int pipe = open(path("pipe").c_str(), O_RDONLY);
    char first = 0;
    _exit(read(pipe, &first, 1) == 1 ? 0 : 1);
  }
  EXPECT_EQ(kFails, inChild([this] {
              std::signal(SIGPIPE, SIG_DFL);
              return int{write(path("pipe"), std::string(1'000'000, 'x'))};
            }));
  int status = -1;
  waitpid(reader, &status, 0);
  EXPECT_EQ(0, status);
}

// Calls `move` for pieces of `contents`, with time between them for several of the other end's signals.
template <typename Move>
void slowly(const std::string& contents, const Move& move) {
  constexpr std::size_t kPiece = 50'000;
  for (std::size_t at = 0; at < contents.size(); at += kPiece) {
    usleep(2500);
    move(at, std::min(kPiece, contents.size() - at));
  }
}

// From now on a signal comes every millisecond, whose handler does not have interrupted calls made again.
void interruptOften() {
  setHandler(SIGALRM, handle);
  const itimerval often{{0, 1000}, {0, 1000}};
  setitimer(ITIMER_REAL, &often, nullptr);
}

TEST_F(Writing, SignalsThatTheHostHandlesDoNotCutAFileShort) {
  const std::string contents(600'000, 'x');
  ASSERT_EQ(0, mkfifo(path("pipe").c_str(), 0600));
  const pid_t writer = fork();
  if (writer == 0) {
    interruptOften();
    _exit(write(path("pipe"), contents) && signalsHandled > 0 ? 0 : 1);
  }
  usleep(5000);
  std::string arrived(contents.size() + 1, '\0');
  std::ifstream pipe(path("pipe"), std::ios::binary);
  std::streamsize length = 0;
  slowly(arrived, [&](std::size_t, std::size_t bytes) {
    pipe.read(arrived.data() + length, static_cast<std::streamsize>(bytes));
    length += pipe.gcount();
  });
  arrived.resize(static_cast<std::size_t>(length));
  EXPECT_EQ(contents, arrived);
  int status = -1;
  waitpid(writer, &status, 0);
  EXPECT_EQ(0, status);
}

TEST_F(Writing, SignalsThatTheHostHandlesDoNotCutReadingShort) {
  const std::string contents(600'000, 'x');
  ASSERT_EQ(0, mkfifo(path("pipe").c_str(), 0600));
  const pid_t reader = fork();
  if (reader == 0) {
    interruptOften();
    std::string read;
    const bool whole = detail::readWholeFile(path("pipe").c_str(), read) && read == contents;
    _exit(whole && signalsHandled > 0 ? 0 : 1);
  }
  usleep(5000);
  const auto before = std::signal(SIGPIPE, SIG_IGN);  // a reader that gives up early is what would be found
  std::ofstream pipe(path("pipe"), std::ios::binary);
  slowly(contents, [&](std::size_t at, std::size_t bytes) {
    pipe.write(contents.data() + at, static_cast<std::streamsize>(bytes)).flush();
  });
  pipe.close();
  std::signal(SIGPIPE, before);
  int status = -1;
  waitpid(reader, &status, 0);
  EXPECT_EQ(0, status);
}

// Whatever the moment, the file is one that was complete, and at most the file of the killed process is left over.
TEST_F(Writing, AKillLeavesTheOldFileOrTheNewOne) {
  const std::string first(3'000'000, '1');
  const std::string second(2'000'001, '2');
  ASSERT_TRUE(write(target(), first));
  std::mt19937 random(7);
  std::size_t kills = 0;
  for (; kills < 40; ++kills) {
    const pid_t writer = fork();
    if (writer == 0) {
      for (;;) {
        write(target(), second);
        write(target(), first);
      }
    }
    usleep(static_cast<useconds_t>(random() % 12'000));
    kill(writer, SIGKILL);
    waitpid(writer, nullptr, 0);
    const std::string left = contentsOf(target());
    ASSERT_TRUE(left == first || left == second) << left.size();
    ASSERT_LE(entries(), 1 + kills + 1);
  }
  const std::size_t leftOver = entries();
  ASSERT_TRUE(write(target(), "after all"));
  EXPECT_EQ("after all", contentsOf(target()));
  EXPECT_EQ(leftOver, entries());
}

TEST_F(Writing, RemovesFilesAndListsFolders) {
  fs::create_directories(folder_ / "sub");
  EXPECT_TRUE(detail::pathExists(target().c_str()));
  EXPECT_TRUE(detail::removeFile(target().c_str()));
  EXPECT_FALSE(detail::pathExists(target().c_str()));
  EXPECT_FALSE(detail::removeFile(target().c_str()));
  EXPECT_FALSE(detail::removeFile(path("sub").c_str()));
  EXPECT_EQ((std::vector<std::string>{"sub"}), detail::namesInFolder(folder_.c_str()));
  EXPECT_TRUE(detail::namesInFolder(path("absent").c_str()).empty());
  EXPECT_FALSE(detail::pathExists(nullptr));
  EXPECT_FALSE(detail::pathExists(path("file/file").c_str()));
  EXPECT_FALSE(detail::pathExists(path(std::string(300, 'n')).c_str()));
}

TEST_F(Writing, WhereTheFolderMayNotBeSearchedThereMayBeAFile) {
  fs::permissions(folder_, fs::perms::none);
  EXPECT_EQ(1, inChild([this] {
              giveUpPrivileges();
              return detail::pathExists(target().c_str()) && !detail::removeFile(target().c_str());
            }));
}

// Whoever opened a listed pipe would wait until somebody writes to it.
TEST_F(Writing, PipesAndDevicesInAFolderAreNotListed) {
  const fs::path folder = folder_ / "sub";
  fs::create_directories(folder);
  ASSERT_EQ(0, mkfifo((folder / "pipe.ttin").c_str(), 0600));
  fs::create_symlink("pipe.ttin", folder / "link-to-pipe.ttin");
  fs::create_symlink("/dev/zero", folder / "endless.ttin");
  EXPECT_TRUE(detail::namesInFolder(folder.c_str()).empty());

  std::ofstream(folder / "a.ttin") << "a";
  fs::create_symlink("a.ttin", folder / "link.ttin");
  fs::create_symlink("nowhere", folder / "link-to-nothing.ttin");
  fs::create_symlink("loop.ttin", folder / "loop.ttin");
  std::vector<std::string> names = detail::namesInFolder(folder.c_str());
  std::sort(names.begin(), names.end());
  EXPECT_EQ((std::vector<std::string>{"a.ttin", "link-to-nothing.ttin", "link.ttin", "loop.ttin"}), names);
}

}  // namespace

#endif
