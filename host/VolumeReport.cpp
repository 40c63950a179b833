#include "VolumeReport.h"

#include "OutputFile.h"

namespace {

constexpr int kPage = 0;
constexpr int kText = 1;

bool isPage(const std::string& path) { return U::endsWith(path, ".html") || U::endsWith(path, ".htm"); }

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
  file.finish();
}
