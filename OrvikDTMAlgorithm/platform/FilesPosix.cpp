// Reading and writing files on POSIX systems.
#include <cerrno>
#include <climits>
#include <csignal>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <new>
#include <string_view>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <OrvikDTMAlgorithm/platform/Files.h>
#include <OrvikDTMAlgorithm/platform/Platform.h>

inline namespace OrvikDTM {
namespace detail {
namespace {

std::string folderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "" : path.substr(0, slash + 1);
}

// What a symbolic link holds; empty when `path` is none.
std::string linkAt(const std::string& path) {
  std::string target(PATH_MAX, '\0');
  const ssize_t length = readlink(path.c_str(), target.data(), target.size());
  target.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
  return target;
}

bool isSameFile(const std::string& a, const std::string& b) {
  struct stat statusA {};
  struct stat statusB {};
  return stat(a.c_str(), &statusA) == 0 && stat(b.c_str(), &statusB) == 0 && statusA.st_dev == statusB.st_dev &&
         statusA.st_ino == statusB.st_ino;
}

// A folder in which nothing can be made, while what is there may still be writable. Everything else that goes wrong is
// no reason to open, and by that to empty, the old file.
bool meansThatFolderRefuses(int error) {
  return error == EACCES || error == EPERM || error == EROFS || error == ENAMETOOLONG;
}

// Gives a new file the permissions of the one that it will replace, and its owner as far as this process may.
void takeOver(int file, const struct stat& from) {
  struct stat own {};
  const bool sameOwner = fstat(file, &own) == 0 && own.st_uid == from.st_uid && own.st_gid == from.st_gid;
  const bool taken = sameOwner || fchown(file, from.st_uid, from.st_gid) == 0 ||
                     fchown(file, static_cast<uid_t>(-1), from.st_gid) == 0;
  static_cast<void>(taken);
  constexpr mode_t kPermissions = 07777;
  fchmod(file, from.st_mode & kPermissions);
}

// Whether a file may not grow to so many bytes in this process.
bool isBeyondLimit(std::uintmax_t bytes) {
  struct rlimit limit {};
  return getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY && bytes > limit.rlim_cur;
}

// Blocks, for this thread, the signals of a refused write, which are sent to the thread that writes.
class WriteSignalsBlocked {
 public:
  WriteSignalsBlocked() {
    sigset_t both;
    sigemptyset(&both);
    for (const int signal : kSignals) sigaddset(&both, signal);
    pthread_sigmask(SIG_BLOCK, &both, &mask_);
    sigpending(&pending_);
  }
  ~WriteSignalsBlocked() {
    for (const int signal : kSignals) takeOff(signal);
    pthread_sigmask(SIG_SETMASK, &mask_, nullptr);
  }
  WriteSignalsBlocked(const WriteSignalsBlocked&) = delete;
  WriteSignalsBlocked& operator=(const WriteSignalsBlocked&) = delete;

 private:
  static constexpr int kSignals[] = {SIGXFSZ, SIGPIPE};

  // A signal that the host had blocked and that was pending before stays pending.
  void takeOff(int signal) const {
    sigset_t pending;
    if (sigpending(&pending) != 0 || sigismember(&pending, signal) != 1 || sigismember(&pending_, signal) == 1) return;
    sigset_t only;
    sigemptyset(&only);
    sigaddset(&only, signal);
#if defined(__APPLE__)
    int taken = 0;
    sigwait(&only, &taken);
#else
    constexpr timespec kAtOnce{};
    while (sigtimedwait(&only, nullptr, &kAtOnce) < 0 && errno == EINTR) continue;
#endif
  }

  sigset_t mask_;
  sigset_t pending_;
};

struct CloseFolder {
  void operator()(DIR* folder) const { closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

// Whether opening or reading what an entry of a folder leads to may never come to an end.
bool mayHaveNoEnd(DIR* folder, const dirent& entry) {
  if (entry.d_type == DT_REG || entry.d_type == DT_DIR) return false;
  struct stat status {};
  if (fstatat(dirfd(folder), entry.d_name, &status, 0) != 0) return false;
  return S_ISFIFO(status.st_mode) || S_ISCHR(status.st_mode) || S_ISBLK(status.st_mode) || S_ISSOCK(status.st_mode);
}

}  // namespace

File openFile(const std::string& path, const char* mode) {
  std::FILE* file = nullptr;
  do {
    errno = 0;
    file = std::fopen(path.c_str(), mode);
  } while (file == nullptr && errno == EINTR);  // opening a pipe waits for its other end
  return File(file);
}

std::size_t sizeOf(std::FILE* file) {
  struct stat status {};
  return fstat(fileno(file), &status) == 0 && status.st_size > 0 ? static_cast<std::size_t>(status.st_size) : 0;
}

bool reserveRoom(std::FILE* file, std::size_t bytes) {
#if defined(__linux__)
  if (bytes == 0) return true;
  if (fallocate(fileno(file), FALLOC_FL_KEEP_SIZE, 0, static_cast<off_t>(bytes)) == 0) return true;
  return errno != ENOSPC && errno != EDQUOT && errno != EFBIG;
#else
  static_cast<void>(file);
  static_cast<void>(bytes);
  return true;
#endif
}

// What has no storage behind it, such as a pipe, cannot be flushed and need not be.
bool flushToDisk(std::FILE* file) {
  if (std::fflush(file) != 0) return false;
  int failure = 0;
  do {
    failure = fsync(fileno(file)) == 0 ? 0 : errno;
  } while (failure == EINTR);
  return failure == 0 || failure == EINVAL || failure == EROFS || failure == ENOTSUP;
}

WayToWrite wayToWrite(const std::string& target) {
  if (target.empty()) return WayToWrite::kNone;
  struct stat status {};
  if (stat(target.c_str(), &status) != 0) return errno == ENOENT ? WayToWrite::kReplace : WayToWrite::kNone;
  if (S_ISDIR(status.st_mode) || faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) return WayToWrite::kNone;
  // Links of the kernel's own may lead to a file that has no name any more.
  const bool hasName = isSameFile(target, behindLinks(target));
  return S_ISREG(status.st_mode) && hasName ? WayToWrite::kReplace : WayToWrite::kInPlace;
}

std::string behindLinks(const std::string& path) {
  constexpr int kMostLinks = 40;  // as many as the system itself follows
  std::string reached = path;
  for (int links = 0; links < kMostLinks; ++links) {
    const std::string next = linkAt(reached);
    if (next.empty()) break;
    reached = next.front() == '/' ? next : folderOf(reached) + next;
  }
  return reached;
}

FileBeside createBeside(const std::string& target, const char* mode) {
  FileBeside beside;
  int file = -1;
  do {
    beside.path = folderOf(target) + ".orvikdtm-" + uniqueSuffix();
    constexpr mode_t kAsTheUserAllows = 0666;
    file = open(beside.path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kAsTheUserAllows);
  } while (file < 0 && (errno == EEXIST || errno == EINTR));
  if (file < 0) {
    beside.folderRefuses = meansThatFolderRefuses(errno);
    return beside;
  }
  struct stat old {};
  if (stat(target.c_str(), &old) == 0) takeOver(file, old);
  beside.file = File(fdopen(file, mode));
  if (!beside.file) {  // there was no memory for it
    close(file);
    unlink(beside.path.c_str());
    throw std::bad_alloc();
  }
  return beside;
}

Put putInPlace(const std::string& path, const std::string& target) {
  if (std::rename(path.c_str(), target.c_str()) == 0) return Put::kDone;
  const bool isRefused = errno == EPERM || errno == EACCES || errno == EBUSY || errno == EXDEV;
  return isRefused ? Put::kRefused : Put::kFailed;
}

bool hasRoomInPlaceOf(const std::string& target, std::uintmax_t bytes) {
  if (isBeyondLimit(bytes)) return false;
  constexpr std::uintmax_t kUnitOfBlocks = 512;
  struct stat old {};
  struct statvfs disk {};
  if (stat(target.c_str(), &old) != 0 || statvfs(target.c_str(), &disk) != 0) return true;
  if (disk.f_blocks == 0) return true;  // it does not count what it has
  const std::uintmax_t freed = static_cast<std::uintmax_t>(old.st_blocks) * kUnitOfBlocks;
  return bytes <= freed || (bytes - freed) / disk.f_frsize < disk.f_bavail;
}

bool withoutWriteSignals(const std::function<bool()>& work) {
  const WriteSignalsBlocked blocked;
  return work();
}

std::vector<std::string> namesInFolder(const char* path) {
  std::vector<std::string> names;
  const Folder folder(opendir(existingPath(path).c_str()));
  if (folder == nullptr && errno == ENOMEM) throw std::bad_alloc();
  while (const dirent* entry = folder == nullptr ? nullptr : readdir(folder.get())) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != ".." && !mayHaveNoEnd(folder.get(), *entry)) names.emplace_back(name);
  }
  return names;
}

}  // namespace detail
}  // namespace OrvikDTM
