// Volume reports: the choice of form, and what the forms share. How a form is laid out stands in a file of its own.
#include <utility>

#include <OrvikDTMAlgorithm/io/DTMFileOperation.h>
#include <OrvikDTMAlgorithm/platform/Platform.h>
#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/report/U.h>
#include <OrvikDTMAlgorithm/report/VolumeReport.h>
#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/NameInUtf8.h>

inline namespace OrvikDTM {
namespace detail {
namespace {

constexpr int kValueDecimals = 4;

enum Form : int { kHtml = 0, kText = 1 };

// Lays a report out and writes it.
template <typename Layout>
bool writeReport(const FillCutResult* result, const DTMSurface* surface, std::string reference, const char* labels,
                 const char* path, const Layout& layOut) {
  if (result == nullptr || surface == nullptr || labels == nullptr || path == nullptr) return false;
  const VolumeReport report{*result, *surface, std::move(reference), Labels(labels)};
  return writeTextFile(path, layOut(report));
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

std::string referenceName(const DTMSurface& reference, int form) {
  const char* name = reference.getSurfaceName();
  return form == kHtml ? nameInUtf8(name) : name;
}

}  // namespace detail

using detail::htmlReport;
using detail::pageValue;
using detail::reportValue;
using detail::textReport;
using detail::writeReport;

bool DTMFileOperation::exportVolumeReport(const FillCutResult* result, const DTMSurface* surface, int form,
                                          double elevation, const char* labels, const char* path) {
  if (form == detail::kHtml) return exportVolumeHtmlReport(result, surface, elevation, labels, path);
  return form == detail::kText && exportVolumeTxtReport(result, surface, elevation, labels, path);
}

bool DTMFileOperation::exportVolumeReport(const FillCutResult* result, const DTMSurface* surface, int form,
                                          const char* refName, const char* labels, const char* path) {
  if (form == detail::kHtml) return exportVolumeHtmlReport(result, surface, refName, labels, path);
  return form == detail::kText && exportVolumeTxtReport(result, surface, refName, labels, path);
}

bool DTMFileOperation::exportVolumeHtmlReport(const FillCutResult* result, const DTMSurface* surface, double elevation,
                                              const char* labels, const char* path) {
  return writeReport(result, surface, pageValue(elevation), labels, path, htmlReport);
}

bool DTMFileOperation::exportVolumeHtmlReport(const FillCutResult* result, const DTMSurface* surface,
                                              const char* refName, const char* labels, const char* path) {
  return refName != nullptr && writeReport(result, surface, refName, labels, path, htmlReport);
}

bool DTMFileOperation::exportVolumeTxtReport(const FillCutResult* result, const DTMSurface* surface, double elevation,
                                             const char* labels, const char* path) {
  return writeReport(result, surface, reportValue(elevation), labels, path, textReport);
}

bool DTMFileOperation::exportVolumeTxtReport(const FillCutResult* result, const DTMSurface* surface,
                                             const char* refName, const char* labels, const char* path) {
  return refName != nullptr && writeReport(result, surface, refName, labels, path, textReport);
}

}  // namespace OrvikDTM
