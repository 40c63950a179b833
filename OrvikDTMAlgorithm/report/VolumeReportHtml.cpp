// The volume report as a page of HTML in UTF-8: a title and five tables of two columns, all on a single line. Labels
// and names go into the page as they are, so a caller may put mark-up of its own into them.
#include <OrvikDTMAlgorithm/report/GbkText.h>
#include <OrvikDTMAlgorithm/report/U.h>
#include <OrvikDTMAlgorithm/report/VolumeReport.h>
#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/surface/NameInUtf8.h>

inline namespace OrvikDTM {
namespace detail {
namespace {

// Everything before the title, and from the title to the page's heading. Hosts compare and parse these pieces.
constexpr const char* kBeforeTitle =
    "<html><head>"
    "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf8\" />"
    "<meta name = \"format-detection\" content = \"telephone=no, email=no, address=no\">"
    "<title>";
constexpr const char* kBeforeHeading =
    "</title>"
    "<style type=\"text/css\"><!--.STYLE4 {color: #FF0000}.STYLE5 {color: #225AD9}--></style>"
    "</head><body>"
    "<h3 align=\"center\" class=\"STYLE5\">";
constexpr const char* kAfterHeading = "</h3>";
constexpr const char* kPageEnd = "</body></html>";

constexpr const char* kTableStart = "<table border=1 width=100% cellpadding=2 rules=cols><tr>";
constexpr const char* kRowEnd = "</td></tr>";
constexpr const char* kTableEnd = "</td></tr></table>";
constexpr const char* kSpacer = "<br />";

constexpr const char* kInfinity = "\xE2\x88\x9E";  // the infinity sign in UTF-8

class HtmlPage {
 public:
  explicit HtmlPage(const Labels& labels) : labels_(labels) {
    const std::string title = labels_[Label::kTitle];
    page_ = kBeforeTitle + title + kBeforeHeading + title + kAfterHeading;
  }

  void section(const std::string& heading) { page_ += "<p>" + heading + "</p>"; }
  void section(Label label) { section(labels_[label]); }
  void spacer() { page_ += kSpacer; }
  void startTable() { page_ += kTableStart; }

  void row(Label label, const std::string& value) { cells(label, value, kRowEnd); }
  void row(Label label, double value) { row(label, pageValue(value)); }
  void lastRow(Label label, const std::string& value) { cells(label, value, kTableEnd); }
  void lastRow(Label label, double value) { lastRow(label, pageValue(value)); }

  std::string finished() const { return page_ + kPageEnd; }

 private:
  void cells(Label label, const std::string& value, const char* end) {
    page_ += "<th width=\"30%\" align=\"left\">" + labels_[label] + "</th>";
    page_ += "<td width=\"70%\" align=\"left\">" + value + end;
  }

  const Labels& labels_;
  std::string page_;
};

}  // namespace

std::string pageValue(double v) { return U::replace(reportValue(v), gbk::kInfinity, kInfinity); }

std::string htmlReport(const VolumeReport& report) {
  const FillCutResult& result = report.result;
  const DTMSurface& surface = report.surface;
  Labels labels = report.labels;
  labels.convertToUtf8();
  HtmlPage page(labels);

  page.startTable();
  page.row(Label::kSurfaceName, nameInUtf8(surface.getSurfaceName()));
  page.lastRow(Label::kReference, report.reference);
  page.spacer();
  page.spacer();

  page.section(Label::kVolumes);
  page.startTable();
  page.row(Label::kCutVolume, result.getCutVolume());
  page.lastRow(Label::kFillVolume, result.getFillVolume());

  page.section(labels.surfaceHeading());
  page.startTable();
  page.row(Label::kArea2D, surface.getTwoDArea());
  page.row(Label::kArea3D, surface.getThreeDArea());
  page.row(Label::kPerimeter2D, surface.getPerimeterTwoD());
  page.lastRow(Label::kPerimeter3D, surface.getPerimeterThreeD());

  page.section(Label::kCutAreas);
  page.startTable();
  page.row(Label::kArea2D, result.getCutTwoDArea());
  page.lastRow(Label::kArea3D, result.getCutThreeDArea());

  page.section(Label::kFillAreas);
  page.startTable();
  page.row(Label::kArea2D, result.getFillTwoDArea());
  page.lastRow(Label::kArea3D, result.getFillThreeDArea());
  return page.finished();
}

}  // namespace detail
}  // namespace OrvikDTM
