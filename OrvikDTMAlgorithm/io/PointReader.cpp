#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

#include <OrvikDTMAlgorithm/io/PointLines.h>
#include <OrvikDTMAlgorithm/io/PointReader.h>
#include <OrvikDTMAlgorithm/platform/Platform.h>

namespace orvik {

namespace {

// A carriage return too many at the end of a line counts as a blank.
std::string_view withoutBlanks(std::string_view text) {
  constexpr std::string_view kBefore = " \t";
  constexpr std::string_view kBehind = " \t\r";
  text.remove_prefix(std::min(text.find_first_not_of(kBefore), text.size()));
  return text.substr(0, text.find_last_not_of(kBehind) + 1);
}

// Whether the field is a finite decimal number, blanks around it and a plus sign before it aside. `value` is what it
// reads as.
bool isDecimalNumber(std::string_view field, double value) {
  std::string_view text = withoutBlanks(field);
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  double ignored = 0.0;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), ignored);
  return fault != std::errc::invalid_argument && end == text.data() + text.size() && std::isfinite(value);
}

double largestOf(LineField field) { return field == LineField::Elevation ? kLargestElevation : kLargestCoordinate; }

constexpr std::size_t kFaults = 6;

// Fills in a report while lines are read.
class Account {
 public:
  Account(LineReport& report, std::string_view text)
      : report_(report),
        hasReturns_(text.find('\r') != std::string_view::npos),
        hasZeros_(text.find('\0') != std::string_view::npos) {}

  void beginSwitch(std::string_view line) {
    begin(line);
    if (line != "0" && line != "1" && !line.empty()) note(LineFault::NotASwitch, line);
  }

  void beginLine(std::string_view line) {
    begin(line);
    if (!withoutReturns(line).empty()) ++report_.lines;
  }

  void skip() {
    if (withoutReturns(line_).empty()) return;
    ++report_.skipped;
    note(LineFault::TooFewFields, line_);
  }

  void noteRest(std::string_view lastField) {
    if (lastField.data() + lastField.size() != line_.data() + line_.size()) ++report_.withMore;
  }

  double number(std::string_view text, LineField field) {
    const char* const end = text.data() + text.size();
    double value = 0.0;
    const bool isPlain = !text.empty() && detail::readPlain(text.data(), end, value) == end;
    if (!isPlain) {
      value = detail::readNumber(text);
      if (!isDecimalNumber(text, value)) {
        note(LineFault::NotANumber, text, field, value);
        return value;
      }
    }
    if (std::fabs(value) > largestOf(field)) note(LineFault::TooLarge, text, field, value);
    return value;
  }

 private:
  static std::string_view withoutReturns(std::string_view line) {
    return line.substr(0, line.find_last_not_of('\r') + 1);
  }

  void begin(std::string_view line) {
    ++number_;
    line_ = line;
    if (hasZeros_ && line.find('\0') != std::string_view::npos) {
      hasZeros_ = false;
      note(LineFault::NotText, line);
    }
    if (hasReturns_ && withoutReturns(line).find('\r') != std::string_view::npos) note(LineFault::CarriageReturn, line);
  }

  void note(LineFault fault, std::string_view text, LineField field = LineField::None, double taken = 0.0) {
    ++report_.noticeCount;
    if (++counts_[static_cast<std::size_t>(fault)] > kMostNotices) return;
    report_.notices.push_back({number_, fault, field, std::string(text.substr(0, kNoticeText)), taken});
  }

  LineReport& report_;
  bool hasReturns_;
  bool hasZeros_;
  long long number_ = 0;
  std::string_view line_;
  std::array<std::size_t, kFaults> counts_{};
};

const char* nameOf(LineField field) {
  switch (field) {
    case LineField::Easting:
      return "easting";
    case LineField::Northing:
      return "northing";
    case LineField::Elevation:
      return "elevation";
    case LineField::None:
      break;
  }
  return "line";
}

}  // namespace

std::string toText(const LineNotice& notice) {
  const std::string line = "line " + std::to_string(notice.line) + ": ";
  const std::string quoted = "'" + notice.text + "'";
  const std::string number = "the " + std::string(nameOf(notice.field)) + " " + quoted;
  const std::string taken = ": taken as " + detail::generalText(notice.taken);
  switch (notice.fault) {
    case LineFault::TooFewFields:
      return line + "too few fields in " + quoted + ": skipped";
    case LineFault::NotANumber:
      return line + number + " is not a number" + taken;
    case LineFault::TooLarge:
      return line + number + " is too large" + taken;
    case LineFault::NotASwitch:
      return line + quoted + " is not a switch: taken as 0";
    case LineFault::CarriageReturn:
      return line + "a carriage return ends no line: taken as part of its field";
    case LineFault::NotText:
      return line + "a zero byte: taken as part of its field";
  }
  return line + "unknown fault";
}

PointFile readPointFile(const char* path) {
  PointFile file;
  std::string text;
  file.isRead = detail::readWholeFile(path, text);
  Account account(file, text);
  detail::readPointLines(text, account, [&file](const SurfacePoint& point) {
    file.points.push_back(std::make_unique<SurfacePoint>(point));
  });
  return file;
}

BoundaryFile readBoundaryFile(const char* path) {
  BoundaryFile file;
  std::string text;
  file.isRead = detail::readWholeFile(path, text);
  if (!file.isRead) return file;
  Account account(file, text);
  std::string_view rest = detail::withoutByteOrderMark(text);
  file.first = detail::takeSwitch(rest, account);
  file.second = detail::takeSwitch(rest, account);
  detail::readVertexLines(rest, account, [&file](const RangePoint& vertex) {
    file.vertices.push_back(std::make_unique<RangePoint>(vertex));
  });
  return file;
}

}  // namespace orvik
