#include "VolumeReport.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "OutputFile.h"

namespace {

constexpr int kPage = 0;
constexpr int kText = 1;
constexpr int kTextLines = 22;
constexpr const char* kEndOfPage = "</html>";

bool isPage(const std::string& path) { return U::endsWith(path, ".html") || U::endsWith(path, ".htm"); }

// The library does not say whether a disk filled up meanwhile.
bool isWhole(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string report{std::istreambuf_iterator<char>(file), {}};
  if (isPage(path)) return report.find(kEndOfPage) != std::string::npos;
  return std::count(report.begin(), report.end(), '\n') >= kTextLines;
}

bool write(const std::string& path, const FillCutResult& result, const DTMSurface& surface,
           const MeasuredAgainst& against, const std::string& labels) {
  const int form = isPage(path) ? kPage : kText;
  DTMFileOperation files;
  if (against.surface.empty()) {
    return files.exportVolumeReport(&result, &surface, form, against.level, labels.c_str(), path.c_str());
  }
  return files.exportVolumeReport(&result, &surface, form, against.surface.c_str(), labels.c_str(), path.c_str());
}

}  // namespace

void writeReport(const std::string& path, const FillCutResult& result, const DTMSurface& surface,
                 const MeasuredAgainst& against, const std::string& labels) {
  OutputFile file(path, "report");
  if (!write(file.draft(), result, surface, against, labels)) file.refuse();
  if (!isWhole(file.draft())) file.refuseCut();
  file.finish();
}
