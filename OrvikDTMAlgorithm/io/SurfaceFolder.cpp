// The surface files of a folder: listing and removing them.
#include <OrvikDTMAlgorithm/io/DTMFileOperation.h>
#include <OrvikDTMAlgorithm/platform/Platform.h>
#include <OrvikDTMAlgorithm/report/U.h>

inline namespace OrvikDTM {

std::vector<std::string> DTMFileOperation::getSurfaceByPath(const char* folder, const char* extension) {
  std::vector<std::string> paths;
  if (folder == nullptr || extension == nullptr) return paths;
  for (const std::string& name : detail::namesInFolder(folder)) {
    if (U::endsWith(name, extension)) paths.push_back(std::string(folder) + "\\" + name);
  }
  return paths;
}

bool DTMFileOperation::deleteSurface(const char* path) {
  if (path == nullptr) return false;
  return !detail::pathExists(path) || detail::removeFile(path);
}

}  // namespace OrvikDTM
