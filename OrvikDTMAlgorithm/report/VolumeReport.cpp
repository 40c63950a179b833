// Volume reports: the choice of form, and what the forms share. How a form is laid out stands in a file of its own.
#include <utility>

#include <OrvikDTMAlgorithm/io/DTMFileOperation.h>
#include <OrvikDTMAlgorithm/platform/Platform.h>
#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/report/U.h>
#include <OrvikDTMAlgorithm/report/VolumeReport.h>

inline namespace OrvikDTM {
namespace detail {
namespace {

constexpr int kValueDecimals = 4;

enum Form : int { kHtml = 0, kText = 1 };

bool writeReport(const FillCutResult* result, const DTMSurface* surface, int form, std::string reference,
                 const char* labels, const char* path) {
  if (result == nullptr || surface == nullptr || labels == nullptr || path == nullptr) return false;
  const VolumeReport report{*result, *surface, std::move(reference), Labels(labels)};
  if (form != kHtml && form != kText) return false;
  return writeTextFile(path, form == kHtml ? htmlReport(report) : textReport(report)) != Written::kNothing;
}

}  // namespace

Labels::Labels(const char* commaSeparated) : texts_(U::split(commaSeparated, ",")) {}

std::string Labels::operator[](Label label) const {
  const auto at = static_cast<std::size_t>(label);
  return at < texts_.size() ? texts_[at] : std::string();
}

void Labels::convertToUtf8() {
  for (std::string& text : texts_) text = U::ansiToUTF8(text);
}

std::string reportValue(double v) { return fixedText(roundTo(kValueDecimals, v), kValueDecimals); }

}  // namespace detail

bool DTMFileOperation::exportVolumeReport(const FillCutResult* result, const DTMSurface* surface, int form,
                                          double elevation, const char* labels, const char* path) {
  return detail::writeReport(result, surface, form, detail::reportValue(elevation), labels, path);
}

bool DTMFileOperation::exportVolumeReport(const FillCutResult* result, const DTMSurface* surface, int form,
                                          const char* refName, const char* labels, const char* path) {
  return refName != nullptr && detail::writeReport(result, surface, form, refName, labels, path);
}

}  // namespace OrvikDTM
