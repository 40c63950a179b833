// Reads point files and boundary files (docs/point-files.md) for programs that want to know which lines could not be
// understood. DTMSurface::loadSurfacePointsFile() and DTMFileOperation::loadRangePointFile() read the same points from
// them, and say nothing.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <OrvikDTMAlgorithm/Export.h>
#include <OrvikDTMAlgorithm/surface/RangePoint.h>
#include <OrvikDTMAlgorithm/surface/SurfacePoint.h>

namespace orvik {

// What is wrong with a line.
enum class LineFault {
  TooFewFields,    // it is skipped
  NotANumber,      // a field is not a decimal number: taken as the number that it begins with, 0 if there is none
  TooLarge,        // a coordinate or elevation beyond kLargestCoordinate or kLargestElevation: taken as it is
  NotASwitch,      // a switch of a boundary file is neither "0" nor "1" nor empty: taken as "0"
  CarriageReturn,  // one that ends no line: taken as part of its field
  NotText          // a zero byte, in the first line that has one: taken as part of its field
};

// Positions beyond this, in coordinate units, cannot be triangulated exactly, and volumes below higher elevations lose
// their decimals.
inline constexpr double kLargestCoordinate = 9.2e12;
inline constexpr double kLargestElevation = 1e12;

// The numbers of a line.
enum class LineField { None, Easting, Northing, Elevation };

// One line that could not be understood.
struct LineNotice {
  long long line = 0;  // from 1
  LineFault fault = LineFault::TooFewFields;
  LineField field = LineField::None;  // None: the line as a whole
  std::string text;                   // the field or line, its first kNoticeText bytes
  double taken = 0.0;                 // the number that the field was taken for
};

inline constexpr std::size_t kNoticeText = 100;

// "line 5: the easting 'east' is not a number: taken as 0".
ORVIKDTM_API std::string toText(const LineNotice& notice);

// What a file's lines were like. All notices are counted; of each fault the first kMostNotices are listed.
struct LineReport {
  bool isRead = false;        // false: the file cannot be opened or read
  long long lines = 0;        // those that are not empty, without the switches of a boundary file
  long long skipped = 0;      // too few fields
  long long withMore = 0;     // more fields than are read
  long long noticeCount = 0;  // notices, listed or not
  std::vector<LineNotice> notices;
};

inline constexpr std::size_t kMostNotices = 100000;

struct PointFile : LineReport {
  std::vector<std::unique_ptr<SurfacePoint>> points;  // without the name of a surface
};

struct BoundaryFile : LineReport {
  bool first = false;  // the switches
  bool second = false;
  std::vector<std::unique_ptr<RangePoint>> vertices;
};

// Any extension will do. A null path cannot be read. Both throw std::bad_alloc where memory runs out.
ORVIKDTM_API PointFile readPointFile(const char* path);
ORVIKDTM_API BoundaryFile readBoundaryFile(const char* path);

}  // namespace orvik
