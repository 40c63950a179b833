#include "OutputFile.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <string_view>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "Console.h"
#include "Interrupts.h"
#include "Paths.h"
#include "UserText.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* kFolderPattern = ".orvikdtm-XXXXXX";

[[noreturn]] void refuseTo(const std::string& path, const std::string& what, const std::string& why) {
  throw console::Failure(shownPath(path) + ": the " + what + " cannot be written: " + why);
}

// Where a file comes to lie: symbolic links are followed, also one to nothing.
fs::path followed(const std::string& path) {
  constexpr int kMostLinks = 40;
  fs::path file = path;
  std::error_code fault;
  for (int i = 0; i < kMostLinks && fs::is_symlink(file, fault); ++i) {
    file = file.parent_path() / fs::read_symlink(file, fault);
  }
  return file;
}

fs::path folderOf(const fs::path& file) { return file.parent_path().empty() ? "." : file.parent_path(); }

void requireFolder(const std::string& path, const std::string& what) {
  const fs::path folder = folderOf(followed(path));
  std::error_code fault;
  if (!fs::is_directory(folder, fault)) refuseTo(path, what, "there is no such folder: make it, or name another");
  if (access(folder.c_str(), W_OK | X_OK) != 0) refuseTo(path, what, "check the permissions of its folder");
}

// Whether the results themselves go to that file: both would write over each other.
bool takesOutput(const std::string& path, int descriptor) {
  struct stat file {};
  struct stat output {};
  return stat(path.c_str(), &file) == 0 && fstat(descriptor, &output) == 0 && S_ISREG(output.st_mode) &&
         file.st_dev == output.st_dev && file.st_ino == output.st_ino;
}

// Whether another file may take the place of the one at `target`: not that of a device, nor that of a file with a
// second name, which would go on naming the old one.
bool isReplaceable(const std::string& target) {
  struct stat file {};
  return stat(target.c_str(), &file) != 0 || (S_ISREG(file.st_mode) && file.st_nlink == 1);
}

// Whether what is written to one is lost when the other is written; a device takes both.
bool isOneFile(const std::string& path, const std::string& other) {
  std::error_code fault;
  if (fs::exists(path, fault)) return fs::is_regular_file(path, fault) && fs::equivalent(path, other, fault);
  const auto place = [&](const std::string& one) { return fs::weakly_canonical(fs::absolute(followed(one)), fault); };
  return place(path) == place(other);
}

// A file that is open, closed when it goes.
class Descriptor {
 public:
  Descriptor(const std::string& path, int flags) : file_(open(path.c_str(), flags | O_CLOEXEC, kAsTheUserAllows)) {}
  ~Descriptor() {
    if (isOpen()) close(file_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  bool isOpen() const { return file_ >= 0; }
  int get() const { return file_; }

  off_t size() const {
    struct stat status {};
    return fstat(file_, &status) == 0 ? status.st_size : 0;
  }

  // Ends the file after `size` bytes, flushes it to the disk and closes it. False when that could not be done. A device
  // has no size and no disk.
  bool finishAt(off_t size) {
    struct stat status {};
    bool done = fstat(file_, &status) == 0;
    if (done && S_ISREG(status.st_mode)) done = ftruncate(file_, size) == 0 && flush();
    const int file = std::exchange(file_, -1);
    return close(file) == 0 && done;
  }

 private:
  static constexpr mode_t kAsTheUserAllows = 0666;

  bool flush() const {
    int failure = 0;
    do {
      failure = fsync(file_) == 0 ? 0 : errno;
    } while (failure == EINTR);
    return failure == 0 || failure == EINVAL || failure == ENOTSUP;
  }

  int file_;
};

bool writeAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(file, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) return false;
    if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

bool copyAll(int from, int to) {
  std::vector<char> piece(std::size_t{1} << 18U);
  for (;;) {
    const ssize_t taken = read(from, piece.data(), piece.size());
    if (taken == 0) return true;
    if (taken < 0 && errno != EINTR) return false;
    if (taken > 0 && !writeAll(to, {piece.data(), static_cast<std::size_t>(taken)})) return false;
  }
}

bool isFull(int error) { return error == ENOSPC || error == EDQUOT || error == EFBIG; }

// Whether an open file may grow to so many bytes: found out by asking for the room, which is then kept for it, or where
// the disk does not know how, by what it says is free.
bool hasRoom(int file, off_t size) {
  struct stat old {};
  if (size == 0 || fstat(file, &old) != 0 || !S_ISREG(old.st_mode)) return true;
  struct rlimit limit {};
  const auto bytes = static_cast<std::uintmax_t>(size);
  if (getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY && bytes > limit.rlim_cur) return false;
#if defined(__linux__)
  if (fallocate(file, FALLOC_FL_KEEP_SIZE, 0, size) == 0) return true;
  if (isFull(errno)) return false;
#endif
  constexpr std::uintmax_t kUnitOfBlocks = 512;
  struct statvfs disk {};
  if (fstatvfs(file, &disk) != 0 || disk.f_blocks == 0) return true;
  const std::uintmax_t own = static_cast<std::uintmax_t>(old.st_blocks) * kUnitOfBlocks;
  return bytes <= own || (bytes - own) / disk.f_frsize < disk.f_bavail;
}

}  // namespace

void requireTarget(const std::string& path, const std::string& what) {
  std::error_code fault;
  const fs::file_status status = fs::status(path, fault);
  if (status.type() == fs::file_type::not_found) return requireFolder(path, what);
  if (fault) refuseTo(path, what, faultText(fault));
  if (fs::is_directory(status)) refuseTo(path, what, "it is a folder: name a file in it");
  if (!fs::is_regular_file(status) && !fs::is_character_file(status)) {
    refuseTo(path, what, "it is not a file: name another");
  }
  if (takesOutput(path, STDOUT_FILENO) || takesOutput(path, STDERR_FILENO)) {
    refuseTo(path, what, "the program's own output goes there: name another file");
  }
  if (access(path.c_str(), W_OK) != 0) refuseTo(path, what, "check its permissions");
}

void requireOtherFile(const std::string& option, const std::string& path, const std::string& input) {
  std::error_code ignored;
  if (!fs::equivalent(path, input, ignored)) return;
  throw console::WrongUsage(option + " would overwrite the input in " + shownPath(input) + ": name another file");
}

void requireTwoFiles(const std::string& option, const std::string& path, const std::string& otherOption,
                     const std::string& otherPath) {
  if (path.empty() || otherPath.empty() || !isOneFile(path, otherPath)) return;
  throw console::WrongUsage(option + " and " + otherOption + " name the same file: name two");
}

OutputFile::OutputFile(const std::string& path, const std::string& what)
    : path_(path), what_(what), target_(followed(path).string()) {
  const std::string name = fs::path(target_).filename().string();
  if (isReplaceable(target_)) folder_ = interrupts::makeFolder((folderOf(target_) / kFolderPattern).string(), name);
  beside_ = !folder_.empty();
  if (!beside_) folder_ = interrupts::makeFolder((fs::temp_directory_path() / kFolderPattern).string(), name);
  if (folder_.empty() && isFull(errno)) refuseCut();
  if (folder_.empty()) refuseTo(path_, what_, "check the permissions of the folder for temporary files");
  draft_ = (fs::path(folder_) / name).string();
}

OutputFile::~OutputFile() { interrupts::removeFolder(folder_); }

// What is wrong with opening the draft can be found out; otherwise it was cut.
void OutputFile::refuse() const {
  const Descriptor draft(draft_, O_WRONLY | O_CREAT);
  if (!draft.isOpen()) refuseFor(errno);
  refuseCut();
}

void OutputFile::refuseCut() const {
  throw console::Failure(shownPath(path_) + ": the " + what_ + " could not be written in full: is the disk full?");
}

void OutputFile::refuseFor(int error) const {
  if (isFull(error)) refuseCut();
  if (error == EMFILE || error == ENFILE)
    refuseTo(path_, what_, "too many files are open: close some, or raise the limit");
  if (error == EACCES || error == EPERM || error == EROFS)
    refuseTo(path_, what_, "check its permissions and its folder");
  refuseTo(path_, what_, faultText(std::error_code(error, std::generic_category())));
}

void OutputFile::finish() {
  const auto held = interrupts::hold();
  if (beside_) {
    move();
  } else {
    copy();
  }
}

// The new file is not put in place where it could be read by more users than the old one.
void OutputFile::move() const {
  std::error_code fault;
  const fs::perms old = fs::status(target_, fault).permissions();
  if (old != fs::perms::unknown && fs::exists(target_, fault)) {
    fs::permissions(draft_, old, fault);
    if (fault && fs::status(draft_, fault).permissions() != old) refuseFor(EPERM);
  }
  fs::rename(draft_, target_, fault);
  if (fault) refuseFor(fault.value());
}

// The old file is overwritten from its start only once there is room for all of the new one.
void OutputFile::copy() const {
  std::error_code ignored;
  const bool isNew = !fs::exists(target_, ignored);
  Descriptor draft(draft_, O_RDONLY);
  Descriptor target(target_, O_WRONLY | O_CREAT);
  if (!draft.isOpen() || !target.isOpen()) refuseFor(errno);
  if (hasRoom(target.get(), draft.size()) && copyAll(draft.get(), target.get()) && target.finishAt(draft.size()))
    return;
  if (isNew) std::remove(target_.c_str());
  refuseCut();
}

void writeText(const std::string& path, const std::string& what, const std::string& text) {
  OutputFile file(path, what);
  Descriptor draft(file.draft(), O_WRONLY | O_CREAT);
  if (!draft.isOpen() || !writeAll(draft.get(), text) || !draft.finishAt(draft.size())) file.refuse();
  file.finish();
}
