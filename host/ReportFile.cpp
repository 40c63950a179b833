#include "ReportFile.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

#include "Console.h"
#include "Paths.h"
#include "UserText.h"

namespace fs = std::filesystem;

namespace {

constexpr int kTextForm = 1;
constexpr int kReportLines = 22;

[[noreturn]] void refuse(const std::string& path, const std::string& why) {
  throw console::Failure(shownPath(path) + ": the report cannot be written: " + why);
}

[[noreturn]] void refuseCut(const std::string& path) {
  throw console::Failure(shownPath(path) + ": the report could not be written in full: is the disk full?");
}

// Where a new file comes to lie: a symbolic link to nothing is followed to the place that it names.
fs::path newFile(const std::string& path) {
  constexpr int kMostLinks = 40;
  fs::path file = path;
  std::error_code fault;
  for (int i = 0; i < kMostLinks && fs::is_symlink(file, fault); ++i) {
    file = file.parent_path() / fs::read_symlink(file, fault);
  }
  return file;
}

void requireFolder(const std::string& path) {
  fs::path folder = newFile(path).parent_path();
  if (folder.empty()) folder = ".";
  std::error_code fault;
  if (!fs::is_directory(folder, fault)) refuse(path, "there is no such folder: make it, or name another");
  if (access(folder.c_str(), W_OK | X_OK) != 0) refuse(path, "check the permissions of its folder");
}

bool isDevice(const std::string& path) {
  std::error_code fault;
  return fs::is_character_file(path, fault);
}

// A folder of our own for the time of a report.
class TemporaryFolder {
 public:
  TemporaryFolder() : path_((fs::temp_directory_path() / "orvikdtm-XXXXXX").string()) {
    if (mkdtemp(path_.data()) == nullptr) refuse(path_, "check the permissions of the folder for temporary files");
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::string file(const char* name) const { return (fs::path(path_) / name).string(); }

 private:
  std::string path_;
};

// Whether the results themselves go to that file: both would write over each other.
bool takesOutput(const std::string& path, int descriptor) {
  struct stat file {};
  struct stat output {};
  return stat(path.c_str(), &file) == 0 && fstat(descriptor, &output) == 0 && S_ISREG(output.st_mode) &&
         file.st_dev == output.st_dev && file.st_ino == output.st_ino;
}

// The library does not say whether a disk filled up meanwhile.
bool isWhole(const std::string& report) {
  std::ifstream file(report);
  return std::count(std::istreambuf_iterator<char>(file), {}, '\n') >= kReportLines;
}

void copyToDevice(const std::string& report, const std::string& device) {
  std::ofstream out(device);
  out << std::ifstream(report).rdbuf();
  if (!out.flush()) refuseCut(device);
}

}  // namespace

void requireReportTarget(const std::string& path) {
  std::error_code fault;
  const fs::file_status status = fs::status(path, fault);
  if (status.type() == fs::file_type::not_found) return requireFolder(path);
  if (fault) refuse(path, faultText(fault));
  if (fs::is_directory(status)) refuse(path, "it is a folder: name a file in it");
  if (!fs::is_regular_file(status) && !fs::is_character_file(status)) refuse(path, "it is not a file: name another");
  if (takesOutput(path, STDOUT_FILENO) || takesOutput(path, STDERR_FILENO)) {
    refuse(path, "the program's own output goes there: name another file");
  }
  if (access(path.c_str(), W_OK) != 0) refuse(path, "check its permissions");
}

void writeReport(const std::string& path, const FillCutResult& result, const DTMSurface& surface, double level,
                 const std::string& labels) {
  if (isDevice(path)) {  // it cannot be read back, so a whole report is made first and copied
    const TemporaryFolder folder;
    const std::string whole = folder.file("report.txt");
    writeReport(whole, result, surface, level, labels);
    return copyToDevice(whole, path);
  }
  if (!DTMFileOperation().exportVolumeReport(&result, &surface, kTextForm, level, labels.c_str(), path.c_str())) {
    refuse(path, "check its permissions and its folder");
  }
  if (!isWhole(path)) refuseCut(path);
}
