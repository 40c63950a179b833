#include "OutputFile.h"

#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

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
  if (isReplaceable(target_)) folder_ = interrupts::makeFolder((folderOf(target_) / kFolderPattern).string());
  beside_ = !folder_.empty();
  if (!beside_) folder_ = interrupts::makeFolder((fs::temp_directory_path() / kFolderPattern).string());
  if (folder_.empty()) refuseTo(path_, what_, "check the permissions of the folder for temporary files");
  draft_ = (fs::path(folder_) / fs::path(target_).filename()).string();
}

OutputFile::~OutputFile() { interrupts::removeFolder(folder_); }

void OutputFile::refuse() const { refuseTo(path_, what_, "check its permissions and its folder"); }

void OutputFile::refuseCut() const {
  throw console::Failure(shownPath(path_) + ": the " + what_ + " could not be written in full: is the disk full?");
}

void OutputFile::finish() {
  const auto held = interrupts::hold();
  if (beside_) {
    move();
  } else {
    copy();
  }
}

void OutputFile::move() const {
  std::error_code fault;
  const fs::file_status old = fs::status(target_, fault);
  if (fs::exists(old)) fs::permissions(draft_, old.permissions(), fault);
  fs::rename(draft_, target_, fault);
  if (fault) refuse();
}

void OutputFile::copy() const {
  std::ifstream in(draft_, std::ios::binary);
  std::ofstream out(target_, std::ios::binary);
  if (!out) refuse();
  if (in.peek() != std::ifstream::traits_type::eof()) out << in.rdbuf();
  if (!out.flush()) refuseCut();
}

void writeText(const std::string& path, const std::string& what, const std::string& text) {
  OutputFile file(path, what);
  std::ofstream out(file.draft(), std::ios::binary);
  if (!out) file.refuse();
  out << text;
  out.close();
  if (!out) file.refuseCut();
  file.finish();
}
