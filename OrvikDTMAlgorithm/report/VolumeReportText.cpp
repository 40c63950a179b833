// The volume report as a text: rows of padded cells, in the bytes in which labels and names were given.
#include <OrvikDTMAlgorithm/report/U.h>
#include <OrvikDTMAlgorithm/report/VolumeReport.h>
#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/FillCutResult.h>

inline namespace OrvikDTM {
namespace detail {
namespace {

constexpr int kCellWidth = 20;

class TextTable {
 public:
  explicit TextTable(const Labels& labels) : labels_(labels) {}

  void title() { text_ += "\t\t" + labels_[Label::kTitle] + "\n\n"; }
  void heading(const std::string& words) { text_ += cell(words) + "\n"; }
  void heading(Label label) { heading(labels_[label]); }
  void row(Label label, const std::string& value) { text_ += cell(labels_[label]) + cell(value) + "\n"; }
  void row(Label label, double value) { row(label, reportValue(value)); }
  void blankLine() { text_ += "\n"; }

  const std::string& text() const { return text_; }

 private:
  static std::string cell(const std::string& words) { return U::appentStr4Length(words, kCellWidth); }

  const Labels& labels_;
  std::string text_;
};

}  // namespace

std::string textReport(const VolumeReport& report) {
  const FillCutResult& result = report.result;
  const DTMSurface& surface = report.surface;
  TextTable table(report.labels);

  table.title();
  table.row(Label::kSurfaceName, surface.getSurfaceName());
  table.row(Label::kReference, report.reference);
  table.blankLine();
  table.heading(Label::kVolumes);
  table.row(Label::kCutVolume, result.getCutVolume());
  table.row(Label::kFillVolume, result.getFillVolume());
  table.blankLine();
  table.heading(report.labels.surfaceHeading());
  table.row(Label::kArea2D, surface.getTwoDArea());
  table.row(Label::kArea3D, surface.getThreeDArea());
  table.row(Label::kPerimeter2D, surface.getPerimeterTwoD());
  table.row(Label::kPerimeter3D, surface.getPerimeterThreeD());
  table.blankLine();
  table.heading(Label::kCutAreas);
  table.row(Label::kArea2D, result.getCutTwoDArea());
  table.row(Label::kArea3D, result.getCutThreeDArea());
  table.blankLine();
  table.heading(Label::kFillAreas);
  table.row(Label::kArea2D, result.getFillTwoDArea());
  table.row(Label::kArea3D, result.getFillThreeDArea());
  return table.text();
}

}  // namespace detail
}  // namespace OrvikDTM
