#include "PictureFile.h"

#include <filesystem>
#include <fstream>

#include "Console.h"
#include "ReportFile.h"
#include "UserText.h"

namespace fs = std::filesystem;

namespace pictures {

namespace {

void write(const fs::path& path, const std::string& text) {
  std::ofstream out(path, std::ios::binary);
  out.write(text.data(), static_cast<std::streamsize>(text.size()));
  out.close();
  if (!out) throw console::Failure(shownPath(path.string()) + ": could not be written in full: is the disk full?");
}

}  // namespace

void requirePictureTarget(const std::string& path, const std::string& option, const std::string& survey) {
  std::error_code ignored;
  if (fs::equivalent(path, survey, ignored)) {
    throw console::WrongUsage(option + " would overwrite the survey in " + shownPath(survey) + ": name another file");
  }
  requireReportTarget(path);
}

void writePicture(const std::string& path, const std::string& text) {
  std::error_code fault;
  const fs::path target = path;
  if (fs::exists(target, fault) && !fs::is_regular_file(target, fault)) return write(target, text);
  const fs::path whole = fs::is_symlink(target, fault) ? fs::weakly_canonical(target, fault) : target;
  const fs::path partial = whole.string() + ".part";
  try {
    write(partial, text);
    fs::rename(partial, whole);
  } catch (...) {
    fs::remove(partial, fault);
    throw;
  }
}

}  // namespace pictures
