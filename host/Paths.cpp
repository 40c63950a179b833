#include "Paths.h"

#include <algorithm>
#include <filesystem>

#include "Console.h"
#include "UserText.h"

namespace fs = std::filesystem;

std::string resolvedPath(const std::string& path) {
  std::string resolved = path;
  std::error_code ignored;
  if (fs::path::preferred_separator == '/' && !fs::exists(path, ignored)) {
    std::replace(resolved.begin(), resolved.end(), '\\', '/');
  }
  return resolved;
}

std::string faultText(const std::error_code& fault) {
  if (fault == std::errc::permission_denied) return "cannot be reached: check the permissions of its folders";
  if (fault == std::errc::filename_too_long) return "the name is too long: shorten it";
  return "cannot be reached (" + fault.message() + "): check the name and the folder";
}

void requireRegularFile(const std::string& path) {
  std::error_code fault;
  const fs::file_status status = fs::status(path, fault);
  const std::string start = shownPath(path) + ": ";
  if (status.type() == fs::file_type::not_found) {
    throw console::Failure(start + "no such file: check the name and the folder");
  }
  if (fault) throw console::Failure(start + faultText(fault));
  if (fs::is_directory(status)) throw console::Failure(start + "is a folder: name a file in it");
  if (!fs::is_regular_file(status)) throw console::Failure(start + "is not a regular file: copy it to one");
}
