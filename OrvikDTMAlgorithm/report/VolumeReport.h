// Private. What both forms of the volume report are made of: the caller's labels and the values to put beside them.
#pragma once

#include <string>
#include <vector>

#include <OrvikDTMAlgorithm/Export.h>

inline namespace OrvikDTM {

class DTMSurface;
class FillCutResult;

namespace detail {

// What a label is for; its number is its place in the caller's list.
enum class Label : std::size_t {
  kTitle,
  kSurfaceName,
  kReference,  // the level, or the surface measured against
  kVolumes,
  kCutVolume,
  kFillVolume,
  kArea2D,
  kArea3D,
  kPerimeter2D,
  kPerimeter3D,
  kCutAreas,
  kFillAreas,
};

// All wording of a report: twelve texts separated by commas. Absent ones are empty.
class Labels {
 public:
  explicit Labels(const char* commaSeparated);

  std::string operator[](Label label) const;

  // The heading of the surface's own measures: the label of its name with a colon.
  std::string surfaceHeading() const { return (*this)[Label::kSurfaceName] + ":"; }

  void convertToUtf8();

 private:
  std::vector<std::string> texts_;
};

// One report, ready to be laid out.
struct VolumeReport {
  const FillCutResult& result;
  const DTMSurface& surface;
  std::string reference;  // the level as text, or the name of the surface measured against
  Labels labels;
};

// A value of a report: rounded to four decimals, halves away from zero, and printed with exactly four. NaN and
// infinities as by U::toString.
std::string reportValue(double v);

// The same for the page, whose infinity sign is in UTF-8 like everything else there.
std::string pageValue(double v);

// The name of the surface measured against, as the report of that form wants it: in UTF-8 for the page, in its own
// bytes for the text.
std::string referenceName(const DTMSurface& reference, int form);

std::string textReport(const VolumeReport& report);
std::string htmlReport(const VolumeReport& report);

}  // namespace detail
}  // namespace OrvikDTM
